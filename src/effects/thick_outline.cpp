// ZDPath::thickPath: the outline of a tapered stroke along a path, its half
// width running linearly from the start to the end, with round caps.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "effects/contour_walk.h"

#include <QtGui/QTransform>

#include <cmath>

namespace {

// The most samples taken on one curve: a longer curve is sampled more
// coarsely, so that huge coordinates still end in bounded time.
const double kMaxSamplesPerCurve = 100000.0;

QPointF pointOf(const ZDPathElement &element)
{
    return QPointF(element.x, element.y);
}

QPointF mapAbout(const QPointF &point, const QPointF &center, double degrees)
{
    QTransform rotation;
    rotation.translate(center.x(), center.y());
    rotation.rotate(degrees, Qt::ZAxis);
    rotation.translate(-center.x(), -center.y());
    return rotation.map(point);
}

// The point on the line from b through a that lies beyond a at distance k.
QPointF prolonged(const QPointF &a, const QPointF &b, double k)
{
    const QPointF delta = a - b;
    const double e = std::hypot(delta.x(), delta.y());
    const double r = k / (e + k);
    return (a - r * b) / (1.0 - r);
}

// The elements of the first subpath of a cleaned-up path.
int firstSubpathEnd(const ZDPath &path)
{
    int end = 1;
    while (end < path.count() && path.elementAt(end).type != ZDMoveToElement)
        ++end;
    return end - 1;
}

// The two sides of the stroke as they grow along the contour.
class ThickSides
{
public:
    ThickSides(zgPath *contour, double startWidth, double endWidth)
        : m_walk(contour), m_startWidth(startWidth), m_endWidth(endWidth),
          m_length(contour->getLength())
    {
    }

    double length() const { return m_length; }

    // The pair of side points at arc length s: the half width interpolated at
    // s as it stands, then s cut to the length. Without a location the pair
    // stays as it was.
    void pairAt(double &s)
    {
        const double w = m_startWidth - (m_startWidth - m_endWidth) * s / m_length;
        if (s > m_length)
            s = m_length;
        zgPoint point;
        zgPoint tangent;
        if (!m_walk.pointAndTangentAt(s, point, tangent))
            return;
        leftPoint = QPointF(point.x - tangent.y * w, point.y + tangent.x * w);
        rightPoint = QPointF(point.x + tangent.y * w, point.y - tangent.x * w);
    }

    // The direction of the contour at arc length s in degrees; NaN without a
    // location there.
    double angleAt(double s)
    {
        zgPoint point;
        zgPoint tangent(qQNaN(), qQNaN());
        m_walk.pointAndTangentAt(s, point, tangent);
        return tangent.getAngle();
    }

    QPointF leftPoint;
    QPointF rightPoint;

private:
    zgContourWalk m_walk;
    double m_startWidth;
    double m_endWidth;
    double m_length;
};

// Samples a curve of length len from arc length s on into both sides: every
// d units (step, halved while that gives fewer than 4 samples and d stays at 2
// or more), each side smoothed as a polyline and joined to what it continues.
void sampleCurve(ThickSides &sides, double &s, double len, double step, ZDPath &left, ZDPath &right)
{
    ZDPath leftSamples;
    ZDPath rightSamples;
    leftSamples.moveTo(sides.leftPoint);
    rightSamples.moveTo(sides.rightPoint);
    const double end = s + len;
    double d = step;
    double n = len / d;
    while (n < 4.0 && d >= 2.0) {
        d *= 0.5;
        n = len / d;
    }
    if (n > kMaxSamplesPerCurve)
        d = len / kMaxSamplesPerCurve;
    sides.pairAt(s);
    // 0.1: the last sample is not repeated for a remainder shorter than that.
    while (s < end - 0.1 && s < sides.length() - 0.1) {
        const double next = s + d;
        // A step too small to move s any more ends the sampling.
        if (!(next > s))
            break;
        s = next > end ? end : next;
        sides.pairAt(s);
        leftSamples.lineTo(sides.leftPoint);
        rightSamples.lineTo(sides.rightPoint);
    }
    leftSamples.smooth(4);
    left.addPath(leftSamples, true);
    rightSamples.smooth(4);
    right.addPath(rightSamples, true);
}

// A round cap from the end a of side from to the end of side to, around p in
// the direction degrees: the sides prolonged by k and three points 1.2 width
// ahead of p, 0.55 width to either side. sign 1 is the end cap, -1 the start.
ZDPath capPath(const QPointF &fromEnd, const QPointF &fromHandle, const QPointF &toEnd,
               const QPointF &toHandle, const QPointF &p, double width, double degrees, double sign)
{
    const double ahead = sign * 1.2 * width;
    const double side = sign * 0.55 * width;
    const QPointF first = mapAbout(QPointF(p.x() + ahead, p.y() + side), p, degrees);
    const QPointF middle = mapAbout(QPointF(p.x() + ahead, p.y()), p, degrees);
    const QPointF last = mapAbout(QPointF(p.x() + ahead, p.y() - side), p, degrees);
    ZDPath cap;
    cap.moveTo(fromEnd);
    cap.cubicTo(fromHandle, first, middle);
    cap.cubicTo(last, toHandle, toEnd);
    return cap;
}

} // namespace

void ZDPath::thickPath(ZDPath &src, double startWidth, double endWidth, double step)
{
    if (!(step > 0.0) || !std::isfinite(step))
        return;
    XPath xpath;
    src.toXPath(xpath, 0);
    zgPath *contour = xpath.getFirstChild();
    if (!contour)
        return;
    // The ends of the source's first subpath, read before this path (which
    // may be src) is replaced.
    const QPointF sourceStart = pointOf(src.elementAt(0));
    const QPointF sourceEnd = pointOf(src.elementAt(firstSubpathEnd(src)));

    ThickSides sides(contour, startWidth, endWidth);
    ZDPath left;
    ZDPath right;
    double s = 0.0;
    sides.pairAt(s);
    left.moveTo(sides.leftPoint);
    right.moveTo(sides.rightPoint);
    for (zgCurve *curve : contour->getCurves()) {
        const double len = curve->getLength();
        if (curve->isStraight()) {
            s += len;
            sides.pairAt(s);
            left.lineTo(sides.leftPoint);
            right.lineTo(sides.rightPoint);
        } else {
            sampleCurve(sides, s, len, step, left, right);
        }
    }

    // Both caps need two elements on each side for their direction.
    const bool sidesHaveDirection = left.count() > 1 && right.count() > 1;
    ZDPath startCap;
    if (sidesHaveDirection) {
        // The sides are prolonged by 1.2 * 0.6 of the width into the cap.
        const double k = startWidth * 1.2 * 0.6;
        const QPointF leftHandle = prolonged(pointOf(left.elementAt(0)), pointOf(left.elementAt(1)), k);
        const QPointF rightHandle = prolonged(pointOf(right.elementAt(0)), pointOf(right.elementAt(1)), k);
        startCap = capPath(pointOf(right.elementAt(0)), rightHandle, pointOf(left.elementAt(0)),
                           leftHandle, sourceStart, startWidth, sides.angleAt(0.0), -1.0);
    }
    ZDPath endCap;
    if (sidesHaveDirection && endWidth > 0.0) {
        const double k = endWidth * 1.2 * 0.6;
        const int l = left.count() - 1;
        const int r = right.count() - 1;
        const QPointF leftHandle = prolonged(pointOf(left.elementAt(l)), pointOf(left.elementAt(l - 1)), k);
        const QPointF rightHandle = prolonged(pointOf(right.elementAt(r)), pointOf(right.elementAt(r - 1)), k);
        endCap = capPath(pointOf(left.elementAt(l)), leftHandle, pointOf(right.elementAt(r)), rightHandle,
                         sourceEnd, endWidth, sides.angleAt(sides.length()), 1.0);
    }

    if (!isEmpty())
        reset();
    addPath(startCap, true);
    addPath(left, true);
    addPath(endCap, true);
    right.reverse();
    addPath(right, true);
    closeSubpath();
}
