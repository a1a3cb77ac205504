// ZDPath::setCornerRoundForConnectline: rounds the line-line corners of a
// connector at the places that a second path marks.
#include "effects/corner_round.h"
#include "effects/corner_round_elements.h"

#include <zgraphics/drawing.h>

#include <climits>
#include <cmath>

using namespace zgcorner;

namespace {

// True if marks holds an element of the same type as e whose point lies less
// than 0.1 from e's.
bool isMarkedBy(const ZDPathElement &e, const QVector<ZDPathElement> &marks)
{
    for (const ZDPathElement &mark : marks) {
        // 0.1: distance within which a mark names a corner.
        if (mark.type == e.type && sideLength(mark, e) < 0.1)
            return true;
    }
    return false;
}

// The radius at one corner: cut to half of a side shorter than twice it,
// the incoming side (d1) first, with no truncation.
double cutRadius(double radius, double d1, double d2)
{
    double r = radius;
    if (d1 < 2.0 * r)
        r = d1 * 0.5;
    if (d2 < 2.0 * r)
        r = d2 * 0.5;
    return r;
}

// Rounds the corner at the last output element, between the sides from
// previous to corner and from corner to next, unless they run straight on or
// double back.
void roundMarkedCorner(QVector<ZDPathElement> &out, const ZDPathElement &previous,
                       const ZDPathElement &corner, const ZDPathElement &next, double radius)
{
    const double a1 = directionOf(corner, previous);
    const double a2 = directionOf(corner, next);
    if (keepsLineCorner(a1, a2))
        return;
    const double r = cutRadius(radius, sideLength(previous, corner), sideLength(corner, next));
    const CornerVectors v = cornerVectors(r, a1, a2);
    const zgPoint c = pointOf(corner);
    const zgPoint start = c.add(v.in);
    out.last().x = start.x;
    out.last().y = start.y;
    const zgPoint control1 = lineControl(c, v.in);
    const zgPoint control2 = lineControl(c, v.out);
    const zgPoint end = c.add(v.out);
    out.append(ZDPathElement(control1.x, control1.y, ZDCurveToElement));
    out.append(ZDPathElement(control2.x, control2.y, ZDCurveToDataElement));
    out.append(ZDPathElement(end.x, end.y, ZDCurveToDataElement));
}

} // namespace

void ZDPath::setCornerRoundForConnectline(double radius, ZDPath &marks)
{
    if (radius == 0.0 || std::isnan(radius))
        return;
    const QVector<ZDPathElement> &in = elements;
    const QVector<ZDPathElement> &markList = marks.elements;
    QVector<ZDPathElement> out;
    // At most four elements for each one read: a line and its arc.
    out.reserve(in.size() > INT_MAX / 4 ? in.size() : 4 * in.size());
    for (int i = 0; i < in.size(); ++i) {
        // The first element counts as marked; any other is marked when its
        // predecessor, the corner, is named in marks.
        const bool marked = i == 0 || isMarkedBy(in.at(i - 1), markList);
        const int32_t type = in.at(i).type;
        if (!marked || type == ZDMoveToElement) {
            out.append(in.at(i));
            continue;
        }
        if (type != ZDLineToElement)
            continue; // a marked element of another kind is dropped
        if (i >= 2 && in.at(i - 1).type == ZDLineToElement && !out.isEmpty())
            roundMarkedCorner(out, in.at(i - 2), in.at(i - 1), in.at(i), radius);
        out.append(in.at(i));
    }
    if (!sameElements(out, elements))
        elements = out;
}
