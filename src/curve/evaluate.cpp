// Evaluation of a cubic on its 8-value array: points, derivatives, normals
// and curvature, all from the one evaluator _evaluate.
#include "curve/values.h"

#include <zgraphics/model.h>

#include <cmath>

QVector<double> zgCurve::getValues(const zgSegment *segment1, const zgSegment *segment2,
                                   const zgMatrix *matrix)
{
    const zgPoint point1 = segment1 ? segment1->point : zgPoint();
    const zgPoint handle1 = segment1 ? zgPoint(point1.x + segment1->handleOut.x,
                                               point1.y + segment1->handleOut.y)
                                     : point1;
    const zgPoint point2 = segment2 ? segment2->point : zgPoint();
    const zgPoint handle2 = segment2 ? zgPoint(point2.x + segment2->handleIn.x,
                                               point2.y + segment2->handleIn.y)
                                     : point2;
    QVector<double> values = { point1.x, point1.y, handle1.x, handle1.y,
                               handle2.x, handle2.y, point2.x, point2.y };
    if (matrix)
        matrix->transformCoords(values, 4);
    return values;
}

namespace {

// The derivative B'(t) of the polynomial form. Near the ends it is taken from
// the handles directly, so that a time a hair inside an end gives exactly the
// end tangent.
zgPoint derivative(const zgCurveValues &v, double t, double ax, double bx, double cx, double ay,
                   double by, double cy)
{
    // 4e-07 and 0.9999996 (= 1 - 4e-07): a time this close to an end counts as the end.
    if (t < 4e-07)
        return zgPoint(cx, cy);
    if (t <= 0.9999996)
        return zgPoint((3.0 * ax * t + 2.0 * bx) * t + cx, (3.0 * ay * t + 2.0 * by) * t + cy);
    return zgPoint(3.0 * (v.x3 - v.x2), 3.0 * (v.y3 - v.y2));
}

} // namespace

zgPoint zgCurve::_evaluate(QVector<double> values, double t, int type, bool normalized)
{
    // A NaN time is no time within 0 to 1 either.
    if (!(t >= 0.0 && t <= 1.0))
        return zgPoint(qQNaN(), qQNaN());

    zgCurveValues v(values);
    // A handle within 1e-12 of zero is no handle: its control point is snapped
    // onto the end point, for every later step.
    if (zgNumeric::isZero(v.x1 - v.x0) && zgNumeric::isZero(v.y1 - v.y0)) {
        v.x1 = v.x0;
        v.y1 = v.y0;
    }
    if (zgNumeric::isZero(v.x2 - v.x3) && zgNumeric::isZero(v.y2 - v.y3)) {
        v.x2 = v.x3;
        v.y2 = v.y3;
    }

    const double cx = 3.0 * (v.x1 - v.x0);
    const double bx = 3.0 * (v.x2 - v.x1) - cx;
    const double ax = v.x3 - v.x0 - cx - bx;
    const double cy = 3.0 * (v.y1 - v.y0);
    const double by = 3.0 * (v.y2 - v.y1) - cy;
    const double ay = v.y3 - v.y0 - cy - by;

    if (type == 0) {
        // The ends are returned exactly as stored, free of polynomial rounding.
        const double x = t == 0.0 ? v.x0 : t == 1.0 ? v.x3 : ((ax * t + bx) * t + cx) * t + v.x0;
        const double y = t == 0.0 ? v.y0 : t == 1.0 ? v.y3 : ((ay * t + by) * t + cy) * t + v.y0;
        return zgPoint(x, y);
    }

    zgPoint d = derivative(v, t, ax, bx, cx, ay, by, cy);
    if (normalized) {
        // A zero handle at an end leaves no derivative there: the direction
        // between the two control points stands in for it.
        const bool atEnd = t < 4e-07 || t > 0.9999996;
        if (d.x == 0.0 && d.y == 0.0 && atEnd)
            d = zgPoint(v.x2 - v.x1, v.y2 - v.y1);
        const double speed = std::sqrt(d.x * d.x + d.y * d.y);
        if (speed != 0.0)
            d = zgPoint(d.x / speed, d.y / speed);
    }

    if (type == 3) {
        const double denominator = std::pow(d.x * d.x + d.y * d.y, 1.5);
        if (denominator == 0.0)
            return zgPoint(0.0, 0.0);
        const double cross = d.x * (6.0 * ay * t + 2.0 * by) - d.y * (6.0 * ax * t + 2.0 * bx);
        return zgPoint(cross / denominator, 0.0);
    }
    if (type == 2)
        return zgPoint(d.y, -d.x);
    return d;
}

zgPoint zgCurve::getPoint(QVector<double> values, double t)
{
    return _evaluate(values, t, 0, false);
}

zgPoint zgCurve::getTangent(QVector<double> values, double t)
{
    return _evaluate(values, t, 1, true);
}

zgPoint zgCurve::getNormal(QVector<double> values, double t)
{
    return _evaluate(values, t, 2, true);
}

zgPoint zgCurve::getWeightedTangent(QVector<double> values, double t)
{
    return _evaluate(values, t, 1, false);
}

zgPoint zgCurve::getWeightedNormal(QVector<double> values, double t)
{
    return _evaluate(values, t, 2, false);
}

double zgCurve::getCurvature(QVector<double> values, double t)
{
    return _evaluate(values, t, 3, false).x;
}
