// zgtool's gallery of flattening, simplification and the curve stepper.
#include "samples.h"

#include <zgraphics/model.h>

#include <cmath>
#include <functional>
#include <random>

namespace {

ZDPath wavyCurve()
{
    ZDPath path;
    path.moveTo(0, 100);
    path.cubicTo(QPointF(40, -60), QPointF(120, 220), QPointF(200, 40));
    return path;
}

// A freehand stroke: a few hundred points along a loose spiral with a
// little hand tremor, from a fixed seed so that every run draws the same.
ZDPath freehandStroke()
{
    std::mt19937 engine(2024u);
    std::uniform_real_distribution<double> tremor(-1.5, 1.5);
    ZDPath path;
    for (int i = 0; i < 300; ++i) {
        const double t = i / 299.0;
        const double angle = t * 3.5 * M_PI;
        const double radius = 20.0 + 80.0 * t;
        const QPointF point(100.0 + radius * std::cos(angle) + tremor(engine),
                            100.0 + radius * std::sin(angle) + tremor(engine));
        if (i == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    return path;
}

// path after op on its object graph, with path drawn grey beneath it.
Sample onContours(const QString &label, const ZDPath &path, const std::function<void(XPath &)> &op)
{
    XPath xpath;
    ZDPath source = path;
    source.toXPath(xpath, 0);
    op(xpath);
    ZDPath result;
    result.fromXPath(xpath, 0, -1);
    Sample sample(label, result);
    sample.source = path;
    return sample;
}

int curveCount(const ZDPath &path)
{
    int count = 0;
    for (const ZDPathElement &e : path.elements)
        count += e.type == ZDCurveToElement ? 1 : 0;
    return count;
}

} // namespace

QVector<Sample> flattenSamples()
{
    QVector<Sample> samples;
    for (double flatness : {10.0, 2.0, 0.25}) {
        Sample flat = onContours(QString(), wavyCurve(),
                                 [flatness](XPath &xpath) { xpath.flatten(flatness); });
        flat.label = QStringLiteral("flatness %1: %2 chords").arg(flatness).arg(flat.path.count() - 1);
        samples << flat;
    }

    Sample stroke(QStringLiteral("freehand stroke, 300 points"), freehandStroke());
    stroke.showPoints = false;
    samples << stroke;
    for (double tolerance : {2.0, 12.0}) {
        Sample fitted = onContours(QString(), freehandStroke(),
                                   [tolerance](XPath &xpath) { xpath.simplify(tolerance); });
        fitted.label = QStringLiteral("tolerance %1: %2 cubics")
                           .arg(tolerance)
                           .arg(curveCount(fitted.path));
        fitted.showPoints = tolerance > 5.0; // dense nodes would hide the curve
        samples << fitted;
    }

    const QPointF controls[4] = {QPointF(0, 100), QPointF(40, -60), QPointF(120, 220),
                                 QPointF(200, 40)};
    ZDCurve curve;
    curve.approximation_scale(0.03);
    curve.init(controls[0], controls[1], controls[2], controls[3]);
    Sample stepped(QStringLiteral("stepped cubic: %1 steps").arg(curve.stepNum()), wavyCurve());
    stepped.showPoints = false;
    double x = 0.0;
    double y = 0.0;
    while (curve.vertex(&x, &y))
        stepped.marks << QPointF(x, y);
    samples << stepped;
    return samples;
}
