// Cutting a cubic, solving one of its coordinates, and the classification
// tests (straight, linear, handles, flat), bounds and signed area, all on the
// 8-value array.
#include "curve/values.h"

#include <zgraphics/model.h>

#include <algorithm>

QVector<QVector<double>> zgCurve::subdivide(QVector<double> values, double t)
{
    const zgCurveValues v(values);
    const double u = 1.0 - t;
    // de Casteljau: p4..p6 on the control polygon, p7 and p8 between those,
    // p9 the point at t.
    const double x4 = u * v.x0 + t * v.x1, y4 = u * v.y0 + t * v.y1;
    const double x5 = u * v.x1 + t * v.x2, y5 = u * v.y1 + t * v.y2;
    const double x6 = u * v.x2 + t * v.x3, y6 = u * v.y2 + t * v.y3;
    const double x7 = u * x4 + t * x5, y7 = u * y4 + t * y5;
    const double x8 = u * x5 + t * x6, y8 = u * y5 + t * y6;
    const double x9 = u * x7 + t * x8, y9 = u * y7 + t * y8;
    const QVector<double> before = { v.x0, v.y0, x4, y4, x7, y7, x9, y9 };
    const QVector<double> after = { x9, y9, x8, y8, x6, y6, v.x3, v.y3 };
    return { before, after };
}

QVector<double> zgCurve::getPart(QVector<double> values, double from, double to)
{
    const bool flip = from > to;
    if (flip)
        std::swap(from, to);
    if (from > 0.0)
        values = subdivide(values, from).at(1);
    // The remaining range is rescaled with from as given, also when the first
    // cut did not happen (from at or below 0).
    if (to < 1.0)
        values = subdivide(values, (to - from) / (1.0 - from)).at(0);
    if (flip) {
        const zgCurveValues v(values);
        values = { v.x3, v.y3, v.x2, v.y2, v.x1, v.y1, v.x0, v.y0 };
    }
    return values;
}

int zgCurve::solveCubic(QVector<double> values, double coord, double val,
                        QVector<double> &roots, double min, double max)
{
    // The coordinate is a double cut to an integer; one that would index
    // outside the array solves nothing.
    if (!(coord > -1.0 && coord + 6.0 < values.size()))
        return 0;
    const double v0 = values.at(int(coord));
    const double v1 = values.at(int(coord + 2.0));
    const double v2 = values.at(int(coord + 4.0));
    const double v3 = values.at(int(coord + 6.0));
    // Strict: a value equal to one of the four may still be reached.
    const bool aboveAll = val > v0 && val > v1 && val > v2 && val > v3;
    const bool belowAll = val < v0 && val < v1 && val < v2 && val < v3;
    if (aboveAll || belowAll)
        return 0;
    const double c = 3.0 * (v1 - v0);
    const double b = 3.0 * (v2 - v1) - c;
    const double a = v3 - v0 - c - b;
    return zgNumeric::solveCubic(a, b, c, v0 - val, roots, min, max);
}

bool zgCurve::isStraight(const zgLine &line, const zgPoint &h1, const zgPoint &h2)
{
    if (h1.isZero() && h2.isZero())
        return true;
    const zgPoint v = line.getVector();
    if (v.isZero())
        return false;
    const zgPoint start = line.getPoint();
    const zgPoint end(start.x + v.x, start.y + v.y);
    // 2e-07: a control point this far off the chord makes the curve bend.
    if (line.getDistance(zgPoint(start.x + h1.x, start.y + h1.y)) >= 2e-07)
        return false;
    if (line.getDistance(zgPoint(end.x + h2.x, end.y + h2.y)) >= 2e-07)
        return false;
    // The handles, as fractions of the chord, must point inwards and must not
    // reach past the other end; otherwise the curve doubles back on itself.
    const double div = v.x * v.x + v.y * v.y;
    const double s1 = (v.x * h1.x + v.y * h1.y) / div;
    const double s2 = (v.x * h2.x + v.y * h2.y) / div;
    return s1 >= 0.0 && s1 <= 1.0 && s2 >= -1.0 && s2 <= 0.0;
}

namespace {

// The chord and the two relative handles of the values.
struct zgChordAndHandles
{
    zgLine line;
    zgPoint h1;
    zgPoint h2;

    explicit zgChordAndHandles(const zgCurveValues &v)
        : line(v.x0, v.y0, v.x3, v.y3, false), h1(v.x1 - v.x0, v.y1 - v.y0),
          h2(v.x2 - v.x3, v.y2 - v.y3)
    {
    }
};

} // namespace

bool zgCurve::isStraight(QVector<double> values)
{
    const zgChordAndHandles c{ zgCurveValues(values) };
    return isStraight(c.line, c.h1, c.h2);
}

bool zgCurve::isLinear(const zgLine &line, const zgPoint &h1, const zgPoint &h2)
{
    const zgPoint v = line.getVector();
    const double thirdX = v.x / 3.0;
    const double thirdY = v.y / 3.0;
    // 1e-12: the handles must sit on the thirds of the chord up to rounding.
    return zgNumeric::isZero(h1.x - thirdX) && zgNumeric::isZero(h1.y - thirdY)
        && zgNumeric::isZero(-h2.x - thirdX) && zgNumeric::isZero(-h2.y - thirdY);
}

bool zgCurve::isLinear(QVector<double> values)
{
    const zgChordAndHandles c{ zgCurveValues(values) };
    return isLinear(c.line, c.h1, c.h2);
}

bool zgCurve::hasHandles(QVector<double> values)
{
    const zgCurveValues v(values);
    // 1e-12: a handle this short is no handle.
    return !zgNumeric::isZero(v.x0 - v.x1) || !zgNumeric::isZero(v.y0 - v.y1)
        || !zgNumeric::isZero(v.x2 - v.x3) || !zgNumeric::isZero(v.y2 - v.y3);
}

bool zgCurve::isFlatEnough(QVector<double> values, double flatness)
{
    const zgCurveValues v(values);
    // How far the control points stand from the points at the thirds of the
    // chord, times three; 16 flatness^2 bounds the squared deviation.
    const double ux = 3.0 * v.x1 - 2.0 * v.x0 - v.x3;
    const double uy = 3.0 * v.y1 - 2.0 * v.y0 - v.y3;
    const double vx = 3.0 * v.x2 - 2.0 * v.x3 - v.x0;
    const double vy = 3.0 * v.y2 - 2.0 * v.y3 - v.y0;
    return std::max(ux * ux, vx * vx) + std::max(uy * uy, vy * vy)
        <= 16.0 * flatness * flatness;
}

zgRect zgCurve::getBounds(QVector<double> values)
{
    const zgCurveValues v(values);
    double min[2] = { v.x0, v.y0 };
    double max[2] = { v.x0, v.y0 };
    QVector<double> roots(2, 0.0);
    addBounds(v.x0, v.x1, v.x2, v.x3, 0, 0.0, min, max, roots);
    addBounds(v.y0, v.y1, v.y2, v.y3, 1, 0.0, min, max, roots);
    return zgRect(min[0], min[1], max[0] - min[0], max[1] - min[1]);
}

namespace {

// Widens [min, max] by the value w padded by p on each side.
void addValue(double w, double p, double &min, double &max)
{
    if (w - p < min)
        min = w - p;
    if (w + p > max)
        max = w + p;
}

} // namespace

void zgCurve::addBounds(double v0, double v1, double v2, double v3, int coord, double padding,
                        double *min, double *max, QVector<double> &roots)
{
    if (!min || !max || coord < 0 || coord > 1)
        return;
    const double p = padding * 0.5;
    const double minV = min[coord] - p;
    const double maxV = max[coord] + p;
    const auto inside = [minV, maxV](double w) { return w >= minV && w <= maxV; };
    if (inside(v0) && inside(v1) && inside(v2) && inside(v3))
        return;

    // Both control values between the ends: the cubic is monotone and its
    // extremes are its ends.
    if ((v1 < v0) != (v1 < v3) && (v2 < v0) != (v2 < v3)) {
        addValue(v0, p, min[coord], max[coord]);
        addValue(v3, p, min[coord], max[coord]);
        return;
    }

    // Zeros of the derivative, divided by 3, in the power basis.
    const double a = 3.0 * (v1 - v2) - v0 + v3;
    const double b = 2.0 * (v0 + v2) - 4.0 * v1;
    const double c = v1 - v0;
    const int count = zgNumeric::solveQuadratic(a, b, c, roots, 0.0, 0.0);
    // The start is taken to be in the bounds already; the end goes in
    // unpadded on this path.
    addValue(v3, 0.0, min[coord], max[coord]);
    for (int i = 0; i < count && i < roots.size(); ++i) {
        const double t = roots.at(i);
        // 4e-07 and 0.9999996: an extreme this close to an end is the end.
        if (t > 4e-07 && t < 0.9999996) {
            const double u = 1.0 - t;
            const double w = u * u * u * v0 + 3.0 * u * u * t * v1 + 3.0 * u * t * t * v2
                + t * t * t * v3;
            addValue(w, p, min[coord], max[coord]);
        }
    }
}

double zgCurve::getArea(QVector<double> values)
{
    const zgCurveValues v(values);
    return 3.0
        * ((v.y3 - v.y0) * (v.x1 + v.x2) - (v.x3 - v.x0) * (v.y1 + v.y2) + v.y1 * (v.x0 - v.x2)
           - v.x1 * (v.y0 - v.y2) + v.y3 * (v.x2 + v.x0 / 3.0) - v.x3 * (v.y2 + v.y0 / 3.0))
        / 20.0;
}
