// The boolean engine on two decoded paths: the compound operators, crossing
// resolution and reduction, and the set operations and relations of drawing
// paths.
#include "fuzz_input.h"
#include "fuzz_support.h"

#include <QtCore/QSet>

#include <sanitizer/lsan_interface.h>

namespace {

// Deletes the tracked objects that were not there before; a destructor
// takes an object out of its list, and may delete objects it owns.
template <class T>
void sweep(QList<T *> &tracked, const QSet<T *> &before)
{
    const QList<T *> current = tracked;
    for (T *object : current) {
        if (!before.contains(object) && tracked.contains(object))
            delete object;
    }
}

// Runs work with releases deferred, then destroys the tracked objects it
// left allocated: the contours of the intersection that ZDPath::intersects
// keeps, and the crossing locations of ZDPath::dividePath, are left behind
// by design.
template <class Work>
void withLeftoversSwept(Work work)
{
    const QSet<zgPath *> paths(zgPath::s_pathList.begin(), zgPath::s_pathList.end());
    const QSet<zgCurve *> curves(zgCurve::s_curveList.begin(), zgCurve::s_curveList.end());
    const QSet<zgSegment *> segments(zgSegment::s_segmentList.begin(),
                                     zgSegment::s_segmentList.end());
    const QSet<zgCurveLocation *> locations(zgCurveLocation::s_curveLocationList.begin(),
                                            zgCurveLocation::s_curveLocationList.end());
    zgPath::s_canDelete = false;
    work();
    sweep(zgPath::s_pathList, paths);
    sweep(zgCurve::s_curveList, curves);
    sweep(zgSegment::s_segmentList, segments);
    sweep(zgCurveLocation::s_curveLocationList, locations);
    zgPath::s_canDelete = true;
}

void compoundOperators(const ZDPath &a, const ZDPath &b, FuzzInput &in)
{
    XPath first;
    XPath second;
    ZDPath(a).toXPath(first, 0);
    ZDPath(b).toXPath(second, 0);
    first.evenOdd = in.flag();
    second.evenOdd = in.flag();
    XPath *other = in.choice(8) == 0 ? nullptr : &second;
    delete first.unite(other);
    delete first.intersect(other, in.flag());
    delete first.subtract(other);
    delete first.exclude(other);
    for (XPath *piece : first.divide(other))
        delete piece;

    XPath resolved;
    ZDPath(a).toXPath(resolved, 0);
    resolved.evenOdd = in.flag();
    resolved.reduce(in.flag());
    resolved.resolveCrossings(in.flag());
    for (zgPath *contour : qAsConst(resolved.children))
        contour->getInteriorPoint(in.flag());
}

void drawingOperations(const ZDPath &a, const ZDPath &b, FuzzInput &in)
{
    ZDPath other = b;
    ZDPath united = a;
    united.unite(other);
    ZDPath intersected = a;
    intersected.intersect(other, in.flag());
    ZDPath subtracted = a;
    subtracted.subtract(other);
    ZDPath evenOdd = a;
    evenOdd.evenOdd();
    evenOdd.isEvenOdd();
    requireWellFormed(united);
    requireWellFormed(intersected);
    requireWellFormed(subtracted);

    ZDPath path = a;
    path.crossPoints(other);
    path.bestCrossPoint(other);
    const zgPoint point(in.coordinate(), in.coordinate());
    path.containsPt(point, in.flag(), in.flag(), in.parameter(-1, 10));
    path.hitTest(point, zgStyle(), zgHitOpt());
    path.getBounds(zgBoundOpt(in.flag(), false, false, in.flag()), zgStyle(), nullptr);
    ZDPath::getSimilarPoint(path, other, point, QRectF(0, 0, in.parameter(0, 40), in.parameter(0, 40)));

    withLeftoversSwept([&] {
        ZDPath cut = a;
        QPointF at;
        cut.dividePath(other, at, in.flag());
        ZDPath probe = a;
        // The compound of the answer itself is not tracked: kept out of the
        // leak check alone.
        __lsan::ScopedDisabler leftAllocated;
        probe.intersects(other);
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    const ZDPath a = in.path();
    const ZDPath b = in.path();
    compoundOperators(a, b, in);
    drawingOperations(a, b, in);
    return 0;
}
