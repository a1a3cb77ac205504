// zgtool's gallery page of smoothing, knot paths and tapered strokes.
#include "samples.h"

namespace {

ZDPath straightLine()
{
    ZDPath path;
    path.moveTo(0, 60);
    path.lineTo(200, 60);
    return path;
}

ZDPath zigzag()
{
    ZDPath path;
    path.moveTo(0, 90);
    path.lineTo(50, 30);
    path.lineTo(100, 90);
    path.lineTo(150, 30);
    path.lineTo(200, 90);
    return path;
}

// The chain as a path: a move, then a cubic for each following triple.
ZDPath chainPath(const QVector<QPointF> &points)
{
    ZDPath path;
    path.moveTo(points.first());
    for (int i = 1; i + 2 < points.size(); i += 3)
        path.cubicTo(points.at(i), points.at(i + 1), points.at(i + 2));
    return path;
}

// The control polygon of a chain, drawn as lines.
ZDPath polygonPath(const QVector<QPointF> &points)
{
    ZDPath path;
    path.moveTo(points.first());
    for (int i = 1; i < points.size(); ++i)
        path.lineTo(points.at(i));
    return path;
}

Sample knotSample(const QString &label, const QVector<QPointF> &input, bool reshape, bool keepEnds)
{
    QVector<QPointF> points = input;
    ZDPath::knotsPath(points, reshape, keepEnds);
    Sample sample = effect(label, polygonPath(input), chainPath(points));
    for (int i = 0; i < points.size(); i += 3)
        sample.marks.append(points.at(i));
    return sample;
}

} // namespace

QVector<Sample> smoothingSamples()
{
    QVector<Sample> samples;

    const char *const typeNames[] = {"Catmull-Rom", "geometric", "asymmetric", "continuous"};
    for (int type = 1; type <= 4; ++type) {
        ZDPath smoothed = polyline();
        smoothed.smooth(type);
        samples << effect(QStringLiteral("smooth %1: %2").arg(type).arg(typeNames[type - 1]),
                          polyline(), smoothed);
    }
    ZDPath closedSource;
    closedSource.addPolygon(QPolygonF({QPointF(20, 20), QPointF(180, 10), QPointF(150, 110),
                                       QPointF(60, 80)}));
    closedSource.closeSubpath();
    ZDPath closedSmoothed = closedSource;
    closedSmoothed.smooth(4);
    samples << effect(QStringLiteral("smooth 4, closed loop"), closedSource, closedSmoothed);

    const QVector<QPointF> chain = {QPointF(0, 100), QPointF(10, 10),  QPointF(40, 10),
                                    QPointF(60, 40), QPointF(80, 70),  QPointF(90, 110),
                                    QPointF(130, 20), QPointF(150, 0), QPointF(180, 0),
                                    QPointF(200, 90)};
    samples << knotSample(QStringLiteral("knots through the knots"), chain, false, false);
    samples << knotSample(QStringLiteral("knots: new S (30 units)"),
                          {QPointF(0, 90), QPointF(200, 30)}, true, false);
    samples << knotSample(QStringLiteral("knots: S, end handles"),
                          {QPointF(0, 100), QPointF(60, 100), QPointF(140, 10), QPointF(200, 10)},
                          true, true);
    samples << knotSample(QStringLiteral("knots: handles turned back"),
                          {QPointF(0, 60), QPointF(-40, 60), QPointF(240, 60), QPointF(200, 20)},
                          true, true);

    struct Taper
    {
        const char *name;
        double start;
        double end;
    };
    const Taper tapers[] = {{"2 to 12", 2.0, 12.0}, {"12 to a point", 12.0, 0.0}, {"constant 8", 8.0, 8.0}};
    const struct
    {
        const char *name;
        ZDPath (*make)();
    } lines[] = {{"line", straightLine}, {"curve", curvedLine}, {"zigzag", zigzag}};
    for (const auto &line : lines) {
        for (const Taper &taper : tapers) {
            ZDPath source = line.make();
            ZDPath outline;
            outline.thickPath(source, taper.start, taper.end, 2.0);
            samples << effect(QStringLiteral("thick %1 %2").arg(line.name).arg(taper.name),
                              line.make(), outline);
        }
    }
    return samples;
}
