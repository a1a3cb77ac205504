// Measures of a drawing path along its length, through a local XPath.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>

namespace {

zgPoint noPoint()
{
    return zgPoint(qQNaN(), qQNaN());
}

double totalLength(const QList<zgCurve *> &curves)
{
    double sum = 0.0;
    for (zgCurve *curve : curves) {
        if (curve)
            sum += curve->getLength();
    }
    return sum;
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
    XPath xpath;
    toXPath(xpath, 0);
    return totalLength(xpath.getCurves());
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
    XPath xpath;
    toXPath(xpath, 0);
    const double target = totalLength(xpath.getCurves()) * t;
    // The walk runs on a conversion of the list as a second toXPath would
    // clean it; mostly the one just made.
    const bool otherCurves = cleanUpWouldChange(*this);
    if (otherCurves)
        toXPath(xpath, 0);
    // The whole length ends where the curve that reaches it ends, however
    // the sums rounded on the way.
    const bool wholeLength = t == 1.0 && !otherCurves;
    double sum = 0.0;
    for (zgCurve *curve : xpath.getCurves()) {
        if (!curve)
            continue;
        const double length = curve->getLength();
        if (target <= sum + length) {
            const double offset = wholeLength ? length : offsetInto(target, sum, length);
            return curve->getPointAt(offset, false);
        }
        sum += length;
    }
    return noPoint();
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
    XPath xpath;
    toXPath(xpath, 0);
    const double length = lengthTo(xpath.getCurves(), point);
    if (length == -1.0)
        return noPoint();
    // The walk runs on a conversion of the list as a second toXPath would
    // clean it; mostly the one just made.
    if (cleanUpWouldChange(*this))
        toXPath(xpath, 0);
    double sum = 0.0;
    for (zgCurve *curve : xpath.getCurves()) {
        if (!curve)
            continue;
        const double curveLength = curve->getLength();
        if (sum + curveLength >= length)
            return curve->getTangentAt(offsetInto(length, sum, curveLength), false);
        sum += curveLength;
    }
    return noPoint();
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
