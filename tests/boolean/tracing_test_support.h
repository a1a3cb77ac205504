// Helpers of the division and tracing tests: access to the private steps of
// the boolean engine, compounds of hand-built contours, and reference
// counting of the location lists.
#ifndef ZGRAPHICS_TESTS_BOOLEAN_TRACING_SUPPORT_H
#define ZGRAPHICS_TESTS_BOOLEAN_TRACING_SUPPORT_H

#include "model/model_test_support.h"

#include <zgraphics/model.h>

#include <QtCore/QList>
#include <QtCore/QVector>
#include <QtCore/qnumeric.h>

#include <cmath>

// Reaches the private steps of the boolean engine.
class zgTracingInternals
{
public:
    static QList<zgCurveLocation *> divideLocations(QList<zgCurveLocation *> locations, int mode)
    {
        return XPath::divideLocations(locations, mode);
    }
    static void linkIntersections(zgCurveLocation *from, zgCurveLocation *to)
    {
        XPath::linkIntersections(from, to);
    }
    static void propagateWinding(zgSegment *segment, XPath *path1, XPath *path2,
                                 QList<zgMono *> monoCurves, int op)
    {
        XPath::propagateWinding(segment, path1, path2, monoCurves, op);
    }
    static QVector<zgPath *> tracePaths(QList<zgSegment *> segments, int op)
    {
        return XPath::tracePaths(segments, op);
    }
    static QList<zgMono *> getMonoCurves(XPath &compound) { return compound.getMonoCurves(); }
};

namespace tracingtest {

// A new location on curve at time t, its point computed from the curve.
inline zgCurveLocation *locationAt(zgCurve *curve, double t)
{
    return new zgCurveLocation(curve, t, zgPoint(qQNaN(), qQNaN()), false, 0.0);
}

// Makes a and b each other's partner.
inline void pair(zgCurveLocation *a, zgCurveLocation *b)
{
    a->setIntersection(b);
    b->setIntersection(a);
}

// A location at time t on curve with a fresh empty partner.
inline zgCurveLocation *locationWithPartner(zgCurve *curve, double t)
{
    zgCurveLocation *location = locationAt(curve, t);
    pair(location, new zgCurveLocation());
    return location;
}

// Holds one reference on each location of a list and on each partner that is
// not listed, for the length of a test: division hangs locations on segments,
// which take and drop references of their own, and chains hold none.
class HeldLocations
{
public:
    explicit HeldLocations(const QList<zgCurveLocation *> &locations)
    {
        for (zgCurveLocation *location : locations) {
            hold(location);
            hold(location->intersection());
        }
    }
    ~HeldLocations()
    {
        for (zgCurveLocation *location : m_held)
            location->release();
    }
    HeldLocations(const HeldLocations &) = delete;
    HeldLocations &operator=(const HeldLocations &) = delete;

private:
    void hold(zgCurveLocation *location)
    {
        if (!location || m_held.contains(location))
            return;
        location->addRef();
        m_held.append(location);
    }

    QList<zgCurveLocation *> m_held;
};

// The locations of the chain that holds location, from its head.
inline QList<zgCurveLocation *> chainOf(zgCurveLocation *location)
{
    QList<zgCurveLocation *> chain;
    if (!location)
        return chain;
    zgCurveLocation *head = location;
    while (head->previous())
        head = head->previous();
    for (zgCurveLocation *loc = head; loc; loc = loc->next())
        chain.append(loc);
    return chain;
}

// Records the orientation the contour really has, so that addChild keeps
// its direction and the indices of its points.
inline void adopt(XPath &compound, zgPath *contour)
{
    contour->addFlags(contour->isClockwise() ? zgPath::ClockwiseFlag
                                             : zgPath::CounterClockwiseFlag);
    compound.addChild(contour);
}

inline void addPolygon(XPath &compound, const QVector<zgPoint> &points, bool closed = true)
{
    adopt(compound, zgtest::newContour(points, closed));
}

// A closed circle of four cubics about center, clockwise in the y-down sense
// of the other shapes (positive area).
inline zgPath *newCircle(const zgPoint &center, double radius)
{
    // 0.5522847498: the handle length of a quarter circle per unit radius.
    const double k = 0.5522847498 * radius;
    zgPath *path = new zgPath(nullptr, true);
    const double cx = center.x;
    const double cy = center.y;
    path->addSegment(new zgSegment(zgPoint(cx + radius, cy), zgPoint(0, -k), zgPoint(0, k)));
    path->addSegment(new zgSegment(zgPoint(cx, cy + radius), zgPoint(k, 0), zgPoint(-k, 0)));
    path->addSegment(new zgSegment(zgPoint(cx - radius, cy), zgPoint(0, k), zgPoint(0, -k)));
    path->addSegment(new zgSegment(zgPoint(cx, cy - radius), zgPoint(-k, 0), zgPoint(k, 0)));
    return path;
}

// The area of a closed contour summed afresh: getArea adds its sum to the
// cache, which isClockwise() or the tracer may have filled, so the cache is
// emptied first.
inline double plainArea(zgPath *path)
{
    path->area = 0.0;
    return path->getArea(false, true);
}

// All segments of a compound, child by child.
inline QList<zgSegment *> segmentsOf(const XPath &compound)
{
    QList<zgSegment *> segments;
    for (zgPath *child : compound.children)
        segments += child->segments;
    return segments;
}

// Releases every contour of a tracer result.
inline void releasePaths(const QVector<zgPath *> &paths)
{
    for (zgPath *path : paths)
        path->release();
}

} // namespace tracingtest

#endif
