// Element-list helpers of the corner rounding effects.
#ifndef ZG_EFFECTS_CORNER_ROUND_ELEMENTS_H
#define ZG_EFFECTS_CORNER_ROUND_ELEMENTS_H

#include "effects/corner_round.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/QVector>

#include <cmath>

namespace zgcorner {

inline zgPoint pointOf(const ZDPathElement &e)
{
    return zgPoint(e.x, e.y);
}

// Point k (0 to 3) of an 8-value curve array.
inline zgPoint valuePoint(const QVector<double> &values, int k)
{
    return zgPoint(values.at(2 * k), values.at(2 * k + 1));
}

// The direction from one element's point to another's, in radians.
inline double directionOf(const ZDPathElement &from, const ZDPathElement &to)
{
    return std::atan2(to.y - from.y, to.x - from.x);
}

inline double angleOf(const zgPoint &v)
{
    return std::atan2(v.y, v.x);
}

// The length of a straight side, by a plain square root.
inline double sideLength(const ZDPathElement &a, const ZDPathElement &b)
{
    const double dx = a.x - b.x;
    const double dy = a.y - b.y;
    return std::sqrt(dx * dx + dy * dy);
}

// A corner between two straight sides, with a1 towards the incoming side and
// a2 towards the outgoing one, stays sharp when the sides double back (the
// angles agree) or run straight on (they differ by pi). The test is on the
// raw difference of the two atan2 results, with no wrapping.
inline bool keepsLineCorner(double a1, double a2)
{
    const double d = a2 - a1;
    // 0.001 rad: angle tolerance of both tests.
    return std::fabs(d) < 0.001 || std::fabs(std::fabs(d) - kStraightAngle) < 0.001;
}

// Equal element by element in all five fields.
inline bool sameElements(const QVector<ZDPathElement> &a, const QVector<ZDPathElement> &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        const ZDPathElement &p = a.at(i);
        const ZDPathElement &q = b.at(i);
        if (p.type != q.type || p.x != q.x || p.y != q.y || p.auxX != q.auxX || p.auxY != q.auxY)
            return false;
    }
    return true;
}

// A free cubic on two new segments, built from the start point, the two
// control points and the end point of a drawing path's curve: the first
// segment's handle out reaches the first control point, the second's handle
// in the second one. Released when it goes out of scope.
class TemporaryCurve
{
public:
    TemporaryCurve(const ZDPathElement &start, const ZDPathElement &control1,
                   const ZDPathElement &control2, const ZDPathElement &end)
    {
        const zgPoint p0 = pointOf(start);
        const zgPoint p3 = pointOf(end);
        zgSegment *first = new zgSegment(p0, zgPoint(), pointOf(control1).subtract(p0));
        zgSegment *second = new zgSegment(p3, pointOf(control2).subtract(p3), zgPoint());
        m_curve = new zgCurve(nullptr, first, second);
    }
    ~TemporaryCurve() { m_curve->release(); }
    TemporaryCurve(const TemporaryCurve &) = delete;
    TemporaryCurve &operator=(const TemporaryCurve &) = delete;

    zgCurve *operator->() const { return m_curve; }
    zgCurve *get() const { return m_curve; }

private:
    zgCurve *m_curve;
};

} // namespace zgcorner

#endif // ZG_EFFECTS_CORNER_ROUND_ELEMENTS_H
