// zgtool's gallery of spline fitting: curves through points, a B-spline cut
// into Beziers, and degree elevation.
#include "bezier_path.h"
#include "samples.h"

#include <cmath>

namespace {

// A freehand-like stroke: a wave with a fixed pseudo-random jitter (a small
// linear congruential sequence, so that the page is the same every time).
QVector<QPointF> noisyStroke()
{
    QVector<QPointF> points;
    quint32 state = 12345u;
    auto jitter = [&state]() {
        state = state * 1103515245u + 12345u;
        return ((state >> 16) & 0x7FFF) / 32767.0 - 0.5;
    };
    for (int i = 0; i < 28; ++i) {
        const double x = i * 7.5 + jitter() * 4.0;
        const double y = 40.0 * std::sin(i * 0.23) + jitter() * 10.0;
        points << QPointF(x, y);
    }
    return points;
}

Sample fitted(const QString &label, const QVector<QPointF> &points)
{
    int degree = 0;
    const QVector<QPointF> beziers = ZDPath::bezierFitting(points, degree);
    Sample sample(label, bezierPath(beziers, degree), points);
    sample.source = polylinePath(points);
    sample.showPoints = false;
    return sample;
}

} // namespace

QVector<Sample> fittingSamples()
{
    QVector<Sample> samples;
    samples << fitted(QStringLiteral("fit through 3 points"),
                      {QPointF(0, 100), QPointF(60, 0), QPointF(200, 80)});
    samples << fitted(QStringLiteral("fit through 7 points"),
                      {QPointF(0, 60), QPointF(30, 10), QPointF(80, 20), QPointF(100, 90), QPointF(150, 100),
                       QPointF(170, 30), QPointF(200, 0)});
    samples << fitted(QStringLiteral("fit of a noisy stroke (28 points)"), noisyStroke());

    // A cubic B-spline on uneven knots, and its Bezier pieces with their
    // control points; the joints are marked.
    const QVector<QPointF> control = {QPointF(0, 100), QPointF(20, 0), QPointF(80, 10), QPointF(100, 90),
                                      QPointF(140, 110), QPointF(180, 20), QPointF(200, 60)};
    const QVector<double> knots = {0, 0, 0, 0, 1, 1.5, 3, 4, 4, 4, 4};
    int degree = 3;
    const QVector<QPointF> pieces = ZDPath::bsplineToBezier(control, knots, degree);
    QVector<QPointF> joints;
    for (int i = 0; i < pieces.size(); i += 4)
        joints << pieces[i];
    joints << pieces.last();
    Sample bspline(QStringLiteral("B-spline as %1 Beziers").arg(pieces.size() / 4), bezierPath(pieces, 3), joints);
    bspline.source = polylinePath(control);
    samples << bspline;

    // Degree elevation: a quadratic drawn as the cubic it is raised to, and
    // a cubic with the control polygon of its degree-4 form.
    QVector<QPointF> quadratic = {QPointF(0, 100), QPointF(100, -60), QPointF(200, 100)};
    const QVector<QPointF> raised = ZDPath::BezierElevate(quadratic);
    Sample quadraticSample(QStringLiteral("quadratic raised to a cubic"), bezierPath(raised, 3), raised);
    quadraticSample.source = polylinePath(quadratic);
    samples << quadraticSample;

    QVector<QPointF> cubic = {QPointF(0, 100), QPointF(40, 0), QPointF(160, 0), QPointF(200, 100)};
    const QVector<QPointF> quartic = ZDPath::BezierElevate(cubic);
    Sample cubicSample(QStringLiteral("cubic and its degree-4 polygon"), bezierPath(cubic, 3), quartic);
    cubicSample.source = polylinePath(cubic);
    ZDPath polygon = polylinePath(quartic);
    cubicSample.path.addPath(polygon);
    cubicSample.showPoints = false;
    samples << cubicSample;
    return samples;
}
