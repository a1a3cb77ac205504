// zgtool's intersection cases and the crossing query behind them.
#include "samples.h"

#include <zgraphics/model.h>

#include <QtCore/QSet>

namespace {

zgRect plainBounds(const ZDPath &path)
{
    XPath xpath;
    ZDPath source = path;
    source.toXPath(xpath, 0);
    return xpath.getBounds(zgBoundOpt(), zgStyle(), nullptr);
}

Sample crossingCase(const QString &label, const ZDPath &first, const ZDPath &second)
{
    Sample sample;
    sample.label = label;
    sample.path = first;
    ZDPath copy = second;
    sample.path.addPath(copy, false);
    sample.marks = findCrossings(first, &second, nullptr);
    const zgRect a = plainBounds(first);
    const zgRect b = plainBounds(second);
    sample.boxes << QRectF(a.x, a.y, a.width, a.height) << QRectF(b.x, b.y, b.width, b.height);
    return sample;
}

ZDPath cubic(double x0, double y0, double x1, double y1, double x2, double y2, double x3, double y3)
{
    ZDPath path;
    path.moveTo(x0, y0);
    path.cubicTo(QPointF(x1, y1), QPointF(x2, y2), QPointF(x3, y3));
    return path;
}

ZDPath line(double x0, double y0, double x1, double y1)
{
    ZDPath path;
    path.moveTo(x0, y0);
    path.lineTo(x1, y1);
    return path;
}

} // namespace

QVector<QPointF> findCrossings(const ZDPath &path, const ZDPath *other, FILE *out)
{
    XPath first;
    XPath second;
    ZDPath source = path;
    source.toXPath(first, 0);
    if (other) {
        ZDPath otherSource = *other;
        otherSource.toXPath(second, 0);
    }
    const QList<zgCurveLocation *> crossings = first.getCrossings(other ? &second : nullptr);
    QVector<QPointF> points;
    QSet<zgCurveLocation *> owned;
    for (zgCurveLocation *location : crossings) {
        zgCurveLocation *partner = location->intersection();
        points << location->getPoint().toPt();
        if (out) {
            std::fprintf(out, "curve %d time %.17g point %.17g %.17g overlap %d",
                         location->getIndex(), location->getTime(), location->point.x,
                         location->point.y, location->overlap ? 1 : 0);
            if (partner)
                std::fprintf(out, " other-curve %d other-time %.17g", partner->getIndex(),
                             partner->getTime());
            std::fprintf(out, "\n");
        }
        owned << location;
        if (partner)
            owned << partner;
    }
    // The locations are nobody's: release each side once.
    for (zgCurveLocation *location : qAsConst(owned))
        location->release();
    return points;
}

QVector<Sample> intersectionSamples()
{
    QVector<Sample> samples;
    samples << crossingCase(QStringLiteral("crossing cubics"),
                            cubic(0, 0, 60, 200, 120, -100, 180, 100),
                            cubic(0, 100, 60, -100, 120, 200, 180, 0));
    // Mirrored about y = 25, where both have a horizontal tangent: they touch
    // without crossing, so no crossing is marked.
    samples << crossingCase(QStringLiteral("tangent curves (touch only)"),
                            cubic(0, 100, 40, 0, 120, 0, 160, 100),
                            cubic(0, -50, 40, 50, 120, 50, 160, -50));
    samples << crossingCase(QStringLiteral("overlapping lines"), line(0, 0, 120, 60),
                            line(40, 20, 160, 80));
    samples << crossingCase(QStringLiteral("line through a curve"),
                            cubic(0, 0, 50, 150, 100, -150, 150, 0), line(-10, 10, 160, -10));
    Sample loop;
    loop.label = QStringLiteral("self-looping cubic");
    loop.path = cubic(0, 0, 200, 150, -50, 150, 150, 0);
    loop.marks = findCrossings(loop.path, nullptr, nullptr);
    const zgRect box = plainBounds(loop.path);
    loop.boxes << QRectF(box.x, box.y, box.width, box.height);
    samples << loop;
    return samples;
}
