// Shared pieces of the corner rounding effects.
#ifndef ZG_EFFECTS_CORNER_ROUND_H
#define ZG_EFFECTS_CORNER_ROUND_H

#include <zgraphics/primitives.h>

#include <cmath>

namespace zgcorner {

// The straight-through angle.
constexpr double kStraightAngle = 3.141592653589793;
// Fraction of the corner vector at which a control point stands, from the
// corner, on a straight side. Deliberately not the circle constant.
constexpr double kLineHandle = 0.448;
// The factor by which a control point on a curved side, measured from the
// split point, stands farther out.
constexpr double kCurveHandleFactor = 1.5;

// The two vectors from a corner along its sides: vIn towards the incoming
// side (angle a1) and vOut towards the outgoing one (angle a2), each r long.
struct CornerVectors
{
    zgPoint in;
    zgPoint out;
};

// A component below 0.01 in absolute value is taken as exactly 0, so that
// sides along the axes give exactly axis-parallel vectors.
inline double dropSmall(double component)
{
    return std::fabs(component) < 0.01 ? 0.0 : component;
}

inline CornerVectors cornerVectors(double r, double a1, double a2)
{
    CornerVectors v;
    v.in = zgPoint(dropSmall(r * std::cos(a1)), dropSmall(r * std::sin(a1)));
    v.out = zgPoint(dropSmall(r * std::cos(a2)), dropSmall(r * std::sin(a2)));
    return v;
}

// A control point on a straight side: corner + 0.448 v.
inline zgPoint lineControl(const zgPoint &corner, const zgPoint &v)
{
    return zgPoint(corner.x + v.x * kLineHandle, corner.y + v.y * kLineHandle);
}

// The handle on a curved side, from the split point: v * 0.448 * 1.5.
inline zgPoint curveHandle(const zgPoint &v)
{
    return zgPoint(v.x * kLineHandle * kCurveHandleFactor, v.y * kLineHandle * kCurveHandleFactor);
}

} // namespace zgcorner

#endif // ZG_EFFECTS_CORNER_ROUND_H
