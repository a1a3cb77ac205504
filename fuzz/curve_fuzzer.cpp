// Curve mathematics on raw 8-value arrays, the numeric solvers, arcs and the
// affine matrix, on decoded values.
#include "fuzz_input.h"
#include "fuzz_support.h"

namespace {

void evaluation(const QVector<double> &v, FuzzInput &in)
{
    const double t = in.parameter(-0.5, 1.5);
    zgCurve::getPoint(v, t);
    zgCurve::getTangent(v, t);
    zgCurve::getNormal(v, t);
    zgCurve::getWeightedTangent(v, t);
    zgCurve::getWeightedNormal(v, t);
    zgCurve::getCurvature(v, t);
    zgCurve::_evaluate(v, t, in.choice(5), in.flag());
    const QVector<QVector<double>> halves = zgCurve::subdivide(v, t);
    require(halves.size() == 2);
    zgCurve::getPart(v, in.parameter(-0.5, 1.5), in.parameter(-0.5, 1.5));
}

void classification(const QVector<double> &v, FuzzInput &in)
{
    QVector<double> roots;
    zgCurve::solveCubic(v, in.choice(2), in.coordinate(), roots, 0.0, 1.0);
    zgCurve::isStraight(v);
    zgCurve::isLinear(v);
    zgCurve::hasHandles(v);
    zgCurve::isFlatEnough(v, in.parameter(-1, 4));
    zgCurve::getBounds(v);
    zgCurve::getArea(v);
}

void lengths(const QVector<double> &v, FuzzInput &in)
{
    zgCurve::getLength(v, in.parameter(-0.5, 1.5), in.parameter(-0.5, 1.5));
    zgCurve::getTimeAt(v, in.parameter(-100, 100), in.flag() ? -100.0 : in.parameter(0, 1));
    const zgPoint probe(in.coordinate(), in.coordinate());
    zgCurve::getTimeOf(v, probe);
    zgCurve::getNearestTime(v, probe);
}

void intersections(const QVector<double> &v1, const QVector<double> &v2)
{
    QList<zgCurveLocation *> locations;
    opParam param;
    zgCurve::getIntersections(v1, v2, nullptr, nullptr, locations, param);
    releaseLocations(locations);

    QList<zgCurveLocation *> loops;
    opParam selfParam;
    zgCurve::getIntersections(v1, QVector<double>(), nullptr, nullptr, loops, selfParam);
    releaseLocations(loops);
    zgCurve::getOverlaps(v1, v2);
}

void numerics(FuzzInput &in)
{
    QVector<double> roots;
    zgNumeric::solveQuadratic(in.coordinate(), in.coordinate(), in.coordinate(), roots,
                              in.parameter(-2, 0), in.parameter(0, 2));
    zgNumeric::solveCubic(in.coordinate(), in.coordinate(), in.coordinate(), in.coordinate(),
                          roots, in.parameter(-2, 0), in.parameter(0, 2));
    const double a = in.coordinate();
    const double b = in.coordinate();
    zgNumeric::integrate([a](double x) { return a * x * x; }, a, b, in.choice(20));
    zgNumeric::findRoot([a](double x) { return x * x - a; }, [](double x) { return 2 * x; },
                        in.coordinate(), in.parameter(-10, 0), in.parameter(0, 10), in.choice(40),
                        in.parameter(0, 1e-6));
}

void arcsAndMatrix(FuzzInput &in)
{
    const zgRect rect(in.coordinate(), in.coordinate(), in.coordinate(), in.coordinate());
    QVector<zgPoint> curves;
    zgBezier::arcToBezier(rect, in.coordinate(), in.coordinate(), curves);
    zgNumeric::ellipsePoint(rect, in.coordinate());

    zgMatrix m(in.coordinate(), in.coordinate(), in.coordinate(), in.coordinate(),
               in.coordinate(), in.coordinate());
    m.rotate(in.coordinate());
    m.scale(in.parameter(-3, 3), in.parameter(-3, 3));
    m.skew(in.parameter(-60, 60), in.parameter(-60, 60));
    zgMatrix inverse = m;
    inverse.invert();
    m.transformBounds(rect);
    m.inverseTransform(zgPoint(in.coordinate(), in.coordinate()));
    QVector<double> coords(8, 1.0);
    m.transformCoords(coords, in.choice(6));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    const QVector<double> v1 = in.curveValues();
    const QVector<double> v2 = in.curveValues();
    evaluation(v1, in);
    classification(v1, in);
    lengths(v1, in);
    intersections(v1, v2);
    numerics(in);
    arcsAndMatrix(in);
    return 0;
}
