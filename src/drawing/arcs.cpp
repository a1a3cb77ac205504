// ZDPath: elliptical arcs and whole ellipses, appended as cubics.
#include <zgraphics/drawing.h>

#include <QtCore/QLineF>

void ZDPath::arcTo(const QRectF &rect, double startAngle, double sweepLength)
{
    if (rect.isEmpty())
        return;

    QVector<QPointF> points;
    const QPointF start = zgBezier::arcToBezier(rect, startAngle, sweepLength, points);

    if (elements.isEmpty() || elements.constLast().type == ZDCloseElement) {
        moveTo(start);
    } else {
        const ZDPathElement &last = elements.constLast();
        // A move already at the arc's start is kept as the arc's start; any
        // other gap, however small, gets its line.
        const bool onMove = last.type == ZDMoveToElement
            && QLineF(last.toPoint(), start).length() < 0.0001;
        if (!onMove)
            lineTo(start);
    }

    // Control, control, end triples; only complete ones are read.
    for (int i = 1; i + 1 < points.size(); i += 3)
        cubicTo(points.at(i - 1), points.at(i), points.at(i + 1));
}

void ZDPath::arcTo(double x, double y, double w, double h, double startAngle, double sweepLength)
{
    arcTo(QRectF(x, y, w, h), startAngle, sweepLength);
}

void ZDPath::ellipse(const QRectF &rect)
{
    if (rect.isEmpty())
        return;

    // The full turn from the right middle gives the start and twelve points.
    QVector<QPointF> points;
    const QPointF start = zgBezier::arcToBezier(rect, 0, -360.0, points);

    // A bare move at the end is replaced by the ellipse's own.
    if (!elements.isEmpty() && elements.constLast().type == ZDMoveToElement)
        elements.removeLast();

    moveTo(start);
    for (int i = 0; i + 2 < points.size(); i += 3)
        cubicTo(points.at(i), points.at(i + 1), points.at(i + 2));
    elements.append(ZDPathElement(start.x(), start.y(), ZDCloseElement));
}
