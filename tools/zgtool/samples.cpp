#include "samples.h"

#include <QtGui/QPolygonF>

#include <cmath>

namespace {

ZDPath rectangles()
{
    ZDPath path;
    path.addRect(QRectF(10, 10, 120, 70));
    path.addRect(QRectF(40, 100, 60, 0.5)); // under one unit high: the last corner snaps
    return path;
}

ZDPath polygons()
{
    ZDPath path;
    QPolygonF star;
    for (int i = 0; i < 10; ++i) {
        const double radius = i % 2 ? 25.0 : 60.0;
        const double angle = i * 36.0 * M_PI / 180.0 - M_PI / 2;
        star << QPointF(75 + radius * std::cos(angle), 70 + radius * std::sin(angle));
    }
    star << star.first();
    path.addPolygon(star);
    path.closeSubpath();
    return path;
}

ZDPath continuation()
{
    ZDPath path;
    path.addLine(10, 20, 60, 20);
    path.addLine(60.5, 20.5, 60, 80);   // within one unit: continues
    path.addLine(70, 80, 130, 80);      // ten units away: joined by a line
    path.addBezier(QPointF(130, 80), QPointF(150, 40), QPointF(100, 0), QPointF(140, 20));
    return path;
}

ZDPath closing()
{
    ZDPath path;
    path.moveTo(10, 120);
    path.lineTo(70, 10);
    path.lineTo(130, 120);
    path.lineTo(10.5, 119.5); // within one unit of the start: snapped onto it
    path.closeSubpath();
    path.moveTo(40, 100);
    path.lineTo(100, 100);
    path.lineTo(70, 50);      // far from the start: a closing line is added
    path.closeSubpath();
    return path;
}

ZDPath arcs()
{
    ZDPath path;
    path.moveTo(10, 70);
    path.arcTo(QRectF(10, 10, 120, 120), 180, -135);
    path.arcTo(QRectF(40, 40, 60, 60), 90, 270);
    return path;
}

ZDPath ellipses()
{
    ZDPath path;
    path.ellipse(QRectF(10, 20, 120, 60));
    path.moveTo(0, 0); // a bare move is replaced by the next ellipse
    path.ellipse(QRectF(50, 90, 40, 40));
    return path;
}

// A wavy line with marks at every tenth of its length.
Sample measured()
{
    Sample sample;
    sample.label = QStringLiteral("marks at equal distances");
    sample.path.moveTo(10, 80);
    sample.path.cubicTo(QPointF(40, 0), QPointF(70, 160), QPointF(100, 80));
    sample.path.cubicTo(QPointF(115, 40), QPointF(130, 40), QPointF(140, 60));
    sample.path.lineTo(140, 130);
    ZDPath measuring = sample.path;
    for (int i = 0; i <= 10; ++i)
        sample.marks << measuring.getPointAt(i / 10.0).toPt();
    return sample;
}

} // namespace

QVector<Sample> buildingSamples()
{
    return {
        {QStringLiteral("rectangles"), rectangles(), {}},
        {QStringLiteral("polygon"), polygons(), {}},
        {QStringLiteral("continuation rule"), continuation(), {}},
        {QStringLiteral("closing rule"), closing(), {}},
        {QStringLiteral("arcs"), arcs(), {}},
        {QStringLiteral("ellipses"), ellipses(), {}},
        measured(),
    };
}
