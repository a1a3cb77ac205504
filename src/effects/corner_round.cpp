// ZDPath::setCornerRound: rounded corners computed on the flat element list.
//
// The elements are read in order into a new list. A corner is rounded by
// moving the corner element back along the incoming side and appending one
// cubic (types 2, 3, 3) that ends along the outgoing side; a curved side is
// cut at the arc's end and the arc's control point there stands on the
// curve's tangent.
#include "effects/corner_round.h"
#include "effects/corner_round_elements.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <climits>
#include <cmath>

using namespace zgcorner;

namespace {

// The radius at one corner: the radius truncated toward zero, then cut to
// the truncated half of a side shorter than twice it, the incoming side
// (d1) first. Kept in a double so that no value overflows an integer.
double truncatedRadius(double radius, double d1, double d2)
{
    double r = std::trunc(radius);
    if (d1 < 2.0 * r)
        r = std::trunc(d1 * 0.5);
    if (d2 < 2.0 * r)
        r = std::trunc(d2 * 0.5);
    return r;
}

// A time that getTimeAt found; -100.0 and NaN are none.
bool isCurveTime(double t)
{
    return t >= 0.0 && t <= 1.0;
}

// The rounding pass of setCornerRound. moveIn is the input index of the last
// move element and moveOut the index of its copy in the output.
class ElementRounder
{
public:
    ElementRounder(const QVector<ZDPathElement> &input, double radius)
        : m_in(input), m_radius(radius)
    {
    }

    QVector<ZDPathElement> run();

private:
    const QVector<ZDPathElement> &m_in;
    QVector<ZDPathElement> m_out;
    double m_radius;
    int m_moveIn = -1;
    int m_moveOut = -1;

    int32_t typeAt(int i) const { return m_in.at(i).type; }
    void copy(int i) { m_out.append(m_in.at(i)); }
    void copyCurve(int i);
    void make(const zgPoint &p, int32_t type) { m_out.append(ZDPathElement(p.x, p.y, type)); }
    void setOutPoint(int k, const zgPoint &p);
    zgPoint appendLineArc(const zgPoint &corner, const CornerVectors &v);
    QVector<QVector<double>> appendLineCurveArc(const ZDPathElement &previous,
                                                const ZDPathElement &corner, zgCurve *curve);

    void line(int i);
    int curve(int i);
    void close(int i);

    void lineAfterLine(int i);
    void lineAfterCurve(int i);
    void curveAfterLine(int i);
    void closeLineLine(int i);
    void closeLineCurve(int i);
    void closeCurveLine(int i);
};

QVector<ZDPathElement> ElementRounder::run()
{
    const int n = m_in.size();
    // Each element gives at most four (a corner adds an arc of three);
    // reserving that once spares the regrowth of long lists.
    m_out.reserve(n > INT_MAX / 4 ? n : 4 * n);
    for (int i = 0; i < n; ++i) {
        switch (typeAt(i)) {
        case ZDMoveToElement:
            copy(i);
            m_moveIn = i;
            m_moveOut = m_out.size() - 1;
            break;
        case ZDLineToElement:
            line(i);
            break;
        case ZDCurveToElement:
            i = curve(i);
            break;
        case ZDCloseElement:
            close(i);
            break;
        default:
            // A type 3 element met on its own, or an unknown type: dropped.
            break;
        }
    }
    return m_out;
}

void ElementRounder::copyCurve(int i)
{
    copy(i);
    copy(i + 1);
    copy(i + 2);
}

void ElementRounder::setOutPoint(int k, const zgPoint &p)
{
    m_out[k].x = p.x;
    m_out[k].y = p.y;
}

// The arc of a corner between two straight sides: the last output element
// (the corner) moves to corner + vIn, and the cubic runs to corner + vOut,
// which is returned.
zgPoint ElementRounder::appendLineArc(const zgPoint &corner, const CornerVectors &v)
{
    setOutPoint(m_out.size() - 1, corner.add(v.in));
    make(lineControl(corner, v.in), ZDCurveToElement);
    make(lineControl(corner, v.out), ZDCurveToDataElement);
    const zgPoint end = corner.add(v.out);
    make(end, ZDCurveToDataElement);
    return end;
}

void ElementRounder::line(int i)
{
    if (i == 0) {
        copy(i); // no corner before the first element
        return;
    }
    switch (typeAt(i - 1)) {
    case ZDMoveToElement:
        copy(i);
        break;
    case ZDLineToElement:
        lineAfterLine(i);
        break;
    case ZDCurveToDataElement:
        lineAfterCurve(i);
        break;
    default:
        break; // after a close or a lone control point the line is dropped
    }
}

// Returns the index of the last element used.
int ElementRounder::curve(int i)
{
    const int n = m_in.size();
    if (i + 2 >= n) {
        // A cubic cut short by the end of the list goes out as it stands.
        for (int k = i; k < n; ++k)
            copy(k);
        return n - 1;
    }
    const int32_t before = i > 0 ? typeAt(i - 1) : int32_t(ZDMoveToElement);
    if (before == ZDMoveToElement || before == ZDCurveToDataElement) {
        copyCurve(i); // a corner between two curves stays sharp
        return i + 2;
    }
    if (before != ZDLineToElement)
        return i; // dropped; its two followers are then dropped one by one
    curveAfterLine(i);
    return i + 2;
}

void ElementRounder::lineAfterLine(int i)
{
    const ZDPathElement &corner = m_in.at(i - 1);
    const ZDPathElement &next = m_in.at(i);
    // 0.001: a line to a point this close to the corner repeats the corner.
    if (std::fabs(next.y - corner.y) < 0.001 && std::fabs(next.x - corner.x) < 0.001)
        return;
    if (i >= 2 && !m_out.isEmpty()) {
        const ZDPathElement &previous = m_in.at(i - 2);
        const double a1 = directionOf(corner, previous);
        const double a2 = directionOf(corner, next);
        if (!keepsLineCorner(a1, a2)) {
            const double r = truncatedRadius(m_radius, sideLength(previous, corner),
                                             sideLength(corner, next));
            appendLineArc(pointOf(corner), cornerVectors(r, a1, a2));
        }
    }
    copy(i);
}

void ElementRounder::lineAfterCurve(int i)
{
    if (i < 4 || m_out.size() < 3) {
        copy(i);
        return;
    }
    const ZDPathElement &corner = m_in.at(i - 1);
    const ZDPathElement &next = m_in.at(i);
    const TemporaryCurve curve(m_in.at(i - 4), m_in.at(i - 3), m_in.at(i - 2), corner);
    const double ac = angleOf(curve->getTangentAtTime(1.0));
    const double a2 = directionOf(corner, next);
    // 0.001 rad: the line continues the curve.
    if (std::fabs(a2 - ac) < 0.001) {
        copy(i);
        return;
    }
    const double r = truncatedRadius(m_radius, curve->getLength(), sideLength(corner, next));
    const QVector<double> values = curve->getValues(nullptr);
    const double t = zgCurve::getTimeAt(values, -r, -100.0);
    if (!isCurveTime(t)) {
        copy(i); // no place on the curve: the corner stays sharp
        return;
    }
    const QVector<QVector<double>> parts = zgCurve::subdivide(values, t);
    const double a1 = angleOf(zgCurve::getTangent(parts.at(1), 0.0));
    const CornerVectors v = cornerVectors(r, a1, a2);
    const zgPoint split = valuePoint(parts.at(1), 0);
    const int last = m_out.size() - 1;
    setOutPoint(last - 2, valuePoint(parts.at(0), 1));
    setOutPoint(last - 1, valuePoint(parts.at(0), 2));
    setOutPoint(last, split);
    const zgPoint c = pointOf(corner);
    make(split.add(curveHandle(v.in)), ZDCurveToElement);
    make(lineControl(c, v.out), ZDCurveToDataElement);
    make(c.add(v.out), ZDCurveToDataElement);
    copy(i);
}

// The arc of a corner between a line (previous to corner) and a curve that
// starts at the corner: the last output point moves back along the line and
// the arc runs to the point r along the curve. Returns the curve's two parts
// at that point, or nothing (and writes nothing) if the corner stays sharp:
// the curve turns back along the line, or no time is found at r.
QVector<QVector<double>> ElementRounder::appendLineCurveArc(const ZDPathElement &previous,
                                                            const ZDPathElement &corner,
                                                            zgCurve *curve)
{
    const double a1 = directionOf(corner, previous);
    const double ac = angleOf(curve->getTangentAtTime(0.0));
    // 0.001 rad: a1 looks back along the line and ac forward along the
    // curve, so this holds when the curve turns back along the line.
    if (std::fabs(a1 - ac) < 0.001)
        return {};
    const double r = truncatedRadius(m_radius, sideLength(previous, corner), curve->getLength());
    const QVector<double> values = curve->getValues(nullptr);
    const double t = zgCurve::getTimeAt(values, r, -100.0);
    if (!isCurveTime(t))
        return {};
    const QVector<QVector<double>> parts = zgCurve::subdivide(values, t);
    const double a2 = angleOf(zgCurve::getTangent(parts.at(1), 0.0)) + kStraightAngle;
    const CornerVectors v = cornerVectors(r, a1, a2);
    const zgPoint split = valuePoint(parts.at(0), 3);
    const zgPoint c = pointOf(corner);
    setOutPoint(m_out.size() - 1, c.add(v.in));
    make(lineControl(c, v.in), ZDCurveToElement);
    make(split.add(curveHandle(v.out)), ZDCurveToDataElement);
    make(split, ZDCurveToDataElement);
    return parts;
}

void ElementRounder::curveAfterLine(int i)
{
    if (i < 2 || m_out.isEmpty()) {
        copyCurve(i);
        return;
    }
    const ZDPathElement &previous = m_in.at(i - 2);
    const ZDPathElement &corner = m_in.at(i - 1);
    const TemporaryCurve curve(corner, m_in.at(i), m_in.at(i + 1), m_in.at(i + 2));
    const QVector<QVector<double>> parts = appendLineCurveArc(previous, corner, curve.get());
    if (parts.isEmpty()) {
        copyCurve(i);
        return;
    }
    make(valuePoint(parts.at(1), 1), ZDCurveToElement);
    make(valuePoint(parts.at(1), 2), ZDCurveToDataElement);
    make(valuePoint(parts.at(1), 3), ZDCurveToDataElement);
}

// The corner at a closed subpath's start, between its last side (ending at
// element i - 1) and its first side (starting at the move, moveIn).
void ElementRounder::close(int i)
{
    const int first = m_moveIn + 1;
    const int32_t firstType = typeAt(first < i ? first : i);
    const int32_t lastType = i > 0 ? typeAt(i - 1) : int32_t(ZDCloseElement);
    if (firstType == ZDLineToElement && lastType == ZDLineToElement)
        closeLineLine(i);
    else if (firstType == ZDCurveToElement && lastType == ZDLineToElement)
        closeLineCurve(i);
    else if (firstType == ZDLineToElement && lastType == ZDCurveToDataElement)
        closeCurveLine(i);
    else if (firstType == ZDCurveToElement && lastType == ZDCurveToDataElement)
        copy(i); // a corner between two curves stays sharp
    // Anything else: the close element is dropped.
}

void ElementRounder::closeLineLine(int i)
{
    if (m_moveOut < 0 || i < 2) {
        copy(i); // no subpath start to move
        return;
    }
    const ZDPathElement &previous = m_in.at(i - 2);
    const ZDPathElement &corner = m_in.at(i - 1);
    const ZDPathElement &next = m_in.at(m_moveIn + 1);
    const double a1 = directionOf(corner, previous);
    const double a2 = directionOf(corner, next);
    if (keepsLineCorner(a1, a2)) {
        copy(i);
        return;
    }
    const double r = truncatedRadius(m_radius, sideLength(previous, corner), sideLength(corner, next));
    const zgPoint end = appendLineArc(pointOf(corner), cornerVectors(r, a1, a2));
    setOutPoint(m_moveOut, end);
    make(end, ZDCloseElement);
}

void ElementRounder::closeLineCurve(int i)
{
    if (m_moveOut < 0 || i < 2 || m_moveIn + 3 >= m_in.size() || m_out.size() <= m_moveOut + 2) {
        copy(i);
        return;
    }
    const ZDPathElement &previous = m_in.at(i - 2);
    const ZDPathElement &corner = m_in.at(i - 1);
    const TemporaryCurve curve(m_in.at(m_moveIn), m_in.at(m_moveIn + 1), m_in.at(m_moveIn + 2),
                               m_in.at(m_moveIn + 3));
    const QVector<QVector<double>> parts = appendLineCurveArc(previous, corner, curve.get());
    if (parts.isEmpty()) {
        copy(i);
        return;
    }
    const zgPoint split = valuePoint(parts.at(0), 3);
    // The first curve now runs from the split point.
    setOutPoint(m_moveOut, split);
    setOutPoint(m_moveOut + 1, valuePoint(parts.at(1), 1));
    setOutPoint(m_moveOut + 2, valuePoint(parts.at(1), 2));
    make(split, ZDCloseElement);
}

void ElementRounder::closeCurveLine(int i)
{
    if (m_moveOut < 0 || i < 4 || m_out.size() < 3) {
        copy(i);
        return;
    }
    const ZDPathElement &corner = m_in.at(m_moveIn);
    const ZDPathElement &next = m_in.at(m_moveIn + 1);
    const TemporaryCurve curve(m_in.at(i - 4), m_in.at(i - 3), m_in.at(i - 2), m_in.at(i - 1));
    const double ac = angleOf(curve->getTangentAtTime(1.0));
    const double a2 = directionOf(corner, next);
    // 0.001 rad: the first line continues the last curve.
    if (std::fabs(a2 - ac) < 0.001) {
        copy(i);
        return;
    }
    const double r = truncatedRadius(m_radius, curve->getLength(), sideLength(corner, next));
    const QVector<double> values = curve->getValues(nullptr);
    const double t = zgCurve::getTimeAt(values, -r, -100.0);
    if (!isCurveTime(t)) {
        copy(i);
        return;
    }
    const QVector<QVector<double>> parts = zgCurve::subdivide(values, t);
    const double a1 = angleOf(zgCurve::getTangent(parts.at(1), 0.0));
    const CornerVectors v = cornerVectors(r, a1, a2);
    const zgPoint split = valuePoint(parts.at(0), 3);
    const int last = m_out.size() - 1;
    setOutPoint(last - 2, valuePoint(parts.at(0), 1));
    setOutPoint(last - 1, valuePoint(parts.at(0), 2));
    setOutPoint(last, split);
    const zgPoint c = pointOf(corner);
    make(split.add(curveHandle(v.in)), ZDCurveToElement);
    make(lineControl(c, v.out), ZDCurveToDataElement);
    const zgPoint end = c.add(v.out);
    make(end, ZDCurveToDataElement);
    setOutPoint(m_moveOut, end);
    make(end, ZDCloseElement);
}

} // namespace

void ZDPath::setCornerRound(double radius)
{
    // A NaN radius has no integer part: nothing to round with.
    if (radius == 0.0 || std::isnan(radius))
        return;
    const QVector<ZDPathElement> rounded = ElementRounder(elements, radius).run();
    if (!sameElements(rounded, elements))
        elements = rounded;
}
