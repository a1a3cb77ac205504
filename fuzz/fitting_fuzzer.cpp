// Fitting: cubics through points, B-splines to Beziers, degree elevation,
// the B-spline engine behind them (its documented exceptions caught), knot
// paths and the curve stepper, on decoded points and parameters.
#include "fuzz_input.h"
#include "fuzz_support.h"

#include "spline/bspline.h"

#include <stdexcept>
#include <vector>

namespace {

QVector<QPointF> points(FuzzInput &in, int most)
{
    QVector<QPointF> result;
    const int n = in.choice(most + 1);
    for (int i = 0; i < n; ++i)
        result << in.point();
    return result;
}

void fitting(FuzzInput &in)
{
    try {
        int degree = 0;
        ZDPath::bezierFitting(points(in, 40), degree);
    } catch (const std::runtime_error &) {
    }
    try {
        QVector<double> knots;
        const int knotCount = in.choice(24);
        for (int i = 0; i < knotCount; ++i)
            knots << in.coordinate();
        int degree = in.choice(7) - 1;
        ZDPath::bsplineToBezier(points(in, 16), knots, degree);
    } catch (const std::runtime_error &) {
    }
    QVector<QPointF> raised = points(in, 12);
    ZDPath::BezierElevate(raised);
}

void engine(FuzzInput &in)
{
    try {
        BSpline spline(in.choice(24), in.choice(4), in.choice(8), in.choice(4) - 1);
        std::vector<double> values(in.choice(80));
        for (double &v : values)
            v = in.coordinate();
        if (in.flag())
            spline.setControlPoints(values);
        else
            spline.setKnots(values);
        spline.getControlPoints();
        spline.toBeziers();
    } catch (const std::runtime_error &) {
    }
}

void knots(FuzzInput &in)
{
    QVector<QPointF> chain = points(in, 24);
    ZDPath::knotsPath(chain, in.flag(), in.flag());
}

// The stepper's walk and searches take one step per unit of its count,
// which grows with the curve's size times the scale by design: the harness
// walks at most 20000 steps and searches only walks of at most 100000.
void stepper(FuzzInput &in)
{
    ZDCurve curve(in.point(), in.point(), in.point(), in.point());
    if (in.flag()) {
        curve.approximation_scale(in.parameter(-1, 8));
        curve.init(in.point(), in.point(), in.point(), in.point());
    }
    double x = 0.0, y = 0.0;
    for (int i = 0; i < 20000 && curve.vertex(&x, &y); ++i) {
    }
    curve.reset();
    QPointF p;
    for (int i = 0; i < 20000 && curve.vertexn(p); ++i) {
    }
    if (curve.stepNum() > 100000)
        return;
    const QPointF probe = in.point();
    curve.getstep(probe.x(), probe.y());
    curve.frontPtAtDist(in.parameter(-10, 200));
    curve.backPtAtDist(in.parameter(-10, 200));
    QPointF first[4], second[4];
    curve.splitcurve(first, second, in.parameter(-0.5, 1.5));
    curve.splitcurve(first, second, probe.x(), probe.y());
    ZDCurve copy;
    copy = curve;
    ZDCurve moved;
    moved = std::move(copy);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    fitting(in);
    engine(in);
    knots(in);
    stepper(in);
    return 0;
}
