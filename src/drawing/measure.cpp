// Measures of a drawing path along its length: the length, the point and the
// tangent read the curves from the elements, the others through a local XPath.
#include "drawing/element_curves.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>

namespace {

zgPoint noPoint()
{
    return zgPoint(qQNaN(), qQNaN());
}

// The offset of target into a curve of the given length that starts at sum.
// Rounding can put target - sum a little past the curve's end on a long path
// even where target <= sum + length; the end is meant there, so the offset
// is held to the length, which the curve takes as its end exactly.
double offsetInto(double target, double sum, double length)
{
    return std::min(target - sum, length);
}

// Whether a second clean-up would change a list that toXPath has cleaned
// once. It does only in a few degenerate orders (a move closed at once
// before other elements), and there a second conversion sees other curves
// than the first. Tried on a shared copy, which stays shared unless changed.
bool cleanUpWouldChange(const ZDPath &path)
{
    ZDPath probe(path);
    const bool startsWithMove = probe.elements.isEmpty()
            || probe.elements.constFirst().type == ZDMoveToElement;
    probe.cleanUp();
    return !startsWithMove || probe.elements.size() != path.elements.size();
}

// Length from the start of the curves to point on the first curve that
// holds it; -1.0 if none does.
double lengthTo(const QList<zgCurve *> &curves, const zgPoint &point)
{
    if (curves.isEmpty())
        return -1.0;
    double sum = 0.0;
    for (zgCurve *curve : curves) {
        if (!curve)
            continue;
        const double t = curve->getTimeOf(point);
        if (t != -100.0)
            return sum + curve->getPartLength(0.0, t);
        sum += curve->getLength();
    }
    return -1.0;
}

} // namespace

double ZDPath::getLength()
{
    // The curves that toXPath would make, read from the elements: the same
    // values and order give the same sum, without building the graph.
    cleanUp();
    double sum = 0.0;
    zgForEachElementCurve(elements, [&sum](const QVector<double> &values) {
        sum += zgCurve::getLength(values, 0.0, 1.0);
        return true;
    });
    return sum;
}

double ZDPath::getLength(const zgPoint &point)
{
    XPath xpath;
    toXPath(xpath, 0);
    return lengthTo(xpath.getCurves(), point);
}

double ZDPath::getPathProportionFromPoint(const zgPoint &point)
{
    XPath xpath;
    toXPath(xpath, 0);
    double found = -1.0;
    double sum = 0.0;
    for (zgCurve *curve : xpath.getCurves()) {
        if (!curve)
            continue;
        // A later curve that also holds the point wins: a joint counts at the later curve.
        const double t = curve->getTimeOf(point);
        if (t != -100.0)
            found = curve->getPartLength(0.0, t) + sum;
        sum += curve->getLength();
    }
    if (found == -1.0 || sum == 0.0)
        return -1.0;
    return found / sum;
}

zgPoint ZDPath::getPointAt(double t)
{
    if (!(t >= 0.0 && t <= 1.0))
        return noPoint();
    const double target = getLength() * t;
    // The walk runs on the curves of the list as a second toXPath would
    // clean it; mostly the ones just measured.
    const bool otherCurves = cleanUpWouldChange(*this);
    if (otherCurves)
        cleanUp();
    // The whole length ends where the curve that reaches it ends, however
    // the sums rounded on the way.
    const bool wholeLength = t == 1.0 && !otherCurves;
    zgPoint found = noPoint();
    double sum = 0.0;
    zgForEachElementCurve(elements, [&](const QVector<double> &values) {
        const double length = zgCurve::getLength(values, 0.0, 1.0);
        if (target <= sum + length) {
            const double offset = wholeLength ? length : offsetInto(target, sum, length);
            found = zgCurve::getPoint(values, zgCurve::getTimeAt(values, offset, -100.0));
            return false;
        }
        sum += length;
        return true;
    });
    return found;
}

QPointF ZDPath::pointAtPercent(double p)
{
    XPath xpath;
    toXPath(xpath, 0);
    zgPath *child = xpath.getFirstChild();
    if (!child)
        return QPointF(0.0, 0.0);
    zgCurveLocation *location = child->getLocationAt(child->getLength() * p);
    if (!location)
        return QPointF(0.0, 0.0);
    const QPointF point = location->getPoint().toPt();
    // The caller never sees the location, so it is given back here.
    location->release();
    return point;
}

zgPoint ZDPath::getPointFromCurveProportion(int i, double p)
{
    XPath xpath;
    toXPath(xpath, 0);
    const QList<zgCurve *> curves = xpath.getCurves();
    if (i < 0 || i >= curves.size() || !curves.at(i))
        return noPoint();
    zgCurve *curve = curves.at(i);
    return curve->getPointAt(curve->getLength() * p, false);
}

zgPoint ZDPath::getNearestPoint(const zgPoint &point)
{
    XPath xpath;
    toXPath(xpath, 0);
    zgPoint nearest = noPoint();
    // Points farther than this from the query are never taken.
    double best = 100000000.0;
    for (zgCurve *curve : xpath.getCurves()) {
        if (!curve)
            continue;
        const QVector<double> values = curve->getValues(nullptr);
        const zgPoint candidate = zgCurve::getPoint(values, zgCurve::getNearestTime(values, point));
        if (candidate.isNaN())
            continue;
        const double distance = candidate.getDistance(point);
        if (distance < best) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

zgPoint ZDPath::getTangentAt(const zgPoint &point)
{
    cleanUp();
    // getLength(point) on the curves of the elements.
    double length = -1.0;
    double before = 0.0;
    zgForEachElementCurve(elements, [&](const QVector<double> &values) {
        const double t = zgCurve::getTimeOf(values, point);
        if (t != -100.0) {
            length = before + zgCurve::getLength(values, 0.0, t);
            return false;
        }
        before += zgCurve::getLength(values, 0.0, 1.0);
        return true;
    });
    if (length == -1.0)
        return noPoint();
    // The walk runs on the curves of the list as a second toXPath would
    // clean it; mostly the ones just measured.
    if (cleanUpWouldChange(*this))
        cleanUp();
    zgPoint found = noPoint();
    double sum = 0.0;
    zgForEachElementCurve(elements, [&](const QVector<double> &values) {
        const double curveLength = zgCurve::getLength(values, 0.0, 1.0);
        if (sum + curveLength >= length) {
            const double offset = offsetInto(length, sum, curveLength);
            found = zgCurve::getTangent(values, zgCurve::getTimeAt(values, offset, -100.0));
            return false;
        }
        sum += curveLength;
        return true;
    });
    return found;
}

double ZDPath::getTangent(int start, bool atStart)
{
    XPath xpath;
    toXPath(xpath, start);
    zgPath *child = xpath.getFirstChild();
    if (!child)
        return 0.0;
    const double offset = atStart ? 0.0 : child->getLength();
    return child->getTangentAt(offset).getAngle(nullptr);
}

bool ZDPath::isClockWise()
{
    zgPath contour(nullptr, false);
    const int count = elements.size();
    for (int i = 0; i < count; ++i) {
        const ZDPathElement &e = elements.at(i);
        if (e.type == ZDMoveToElement && i > 0)
            break;
        switch (e.type) {
        case ZDMoveToElement:
            contour.moveTo(e.x, e.y);
            break;
        case ZDLineToElement:
            contour.lineTo(e.x, e.y);
            break;
        case ZDCurveToElement:
            if (i + 2 < count) {
                contour.cubicCurveTo(zgPoint(e.x, e.y),
                                     zgPoint(elements.at(i + 1).x, elements.at(i + 1).y),
                                     zgPoint(elements.at(i + 2).x, elements.at(i + 2).y));
                i += 2;
            }
            break;
        case ZDCloseElement:
            contour.setClosed(true);
            contour.join(&contour, 1.0); // as toXPath does
            break;
        default:
            break;
        }
    }
    return contour.isClockwise();
}
