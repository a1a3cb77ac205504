// zgtool's gallery of boolean operators: each operand pair with the result
// of unite, intersect, subtract and exclude filled by the even-odd rule.
#include "samples.h"

#include <zgraphics/model.h>

#include <cmath>

namespace {

ZDPath rectangle(double x, double y, double w, double h)
{
    ZDPath path;
    path.addRect(QRectF(x, y, w, h));
    return path;
}

ZDPath circle(double cx, double cy, double r)
{
    ZDPath path;
    path.ellipse(QRectF(cx - r, cy - r, 2 * r, 2 * r));
    return path;
}

ZDPath star(double cx, double cy, double outer, double inner, int points, double turn)
{
    ZDPath path;
    for (int k = 0; k < 2 * points; ++k) {
        const double r = k % 2 ? inner : outer;
        const double a = turn + M_PI * k / points;
        const QPointF p(cx + r * std::cos(a), cy + r * std::sin(a));
        if (k == 0)
            path.moveTo(p);
        else
            path.lineTo(p);
    }
    path.closeSubpath();
    return path;
}

// A square frame: an outline with a square hole.
ZDPath frame()
{
    ZDPath path = rectangle(0, 0, 120, 120);
    ZDPath hole = rectangle(30, 30, 60, 60);
    path.addPath(hole, false);
    return path;
}

ZDPath crossingPolyline()
{
    ZDPath path;
    path.moveTo(-20, 100);
    path.lineTo(40, 10);
    path.lineTo(90, 110);
    path.lineTo(150, 20);
    return path;
}

void addOperators(QVector<Sample> &samples, const QString &name, const ZDPath &a, const ZDPath &b)
{
    const QStringList operators = {QStringLiteral("unite"), QStringLiteral("intersect"),
                                   QStringLiteral("subtract"), QStringLiteral("exclude")};
    for (int op = 0; op < operators.size(); ++op) {
        ZDPath first = a;
        ZDPath second = b;
        XPath x;
        XPath y;
        first.toXPath(x);
        second.toXPath(y);
        XPath *result = op == 0 ? x.unite(&y)
                : op == 1       ? x.intersect(&y, true)
                : op == 2       ? x.subtract(&y)
                                : x.exclude(&y);
        Sample sample;
        sample.label = name + QStringLiteral(": ") + operators.at(op)
                + (result ? QString() : QStringLiteral(" (null)"));
        if (result)
            sample.path.fromXPath(*result);
        delete result;
        sample.source = a;
        ZDPath other = b;
        sample.source.addPath(other, false);
        sample.showPoints = false;
        samples.append(sample);
    }
}

} // namespace

QVector<Sample> booleanSamples()
{
    QVector<Sample> samples;
    addOperators(samples, QStringLiteral("rectangles"), rectangle(0, 0, 100, 70),
                 rectangle(50, 35, 100, 70));
    addOperators(samples, QStringLiteral("circle, square"), circle(60, 60, 50),
                 rectangle(60, 60, 90, 90));
    addOperators(samples, QStringLiteral("stars"), star(70, 70, 70, 30, 5, -M_PI / 2),
                 star(110, 80, 60, 25, 6, 0.0));
    addOperators(samples, QStringLiteral("frame, bar"), frame(), rectangle(-20, 50, 160, 20));
    addOperators(samples, QStringLiteral("shared edge"), rectangle(0, 0, 80, 80),
                 rectangle(80, 0, 80, 80));
    addOperators(samples, QStringLiteral("polyline, circle"), crossingPolyline(), circle(60, 60, 50));
    return samples;
}
