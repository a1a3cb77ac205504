#include "bezier_path.h"

ZDPath bezierPath(const QVector<QPointF> &points, int degree)
{
    ZDPath path;
    if (degree < 1 || degree > 3)
        return path;
    for (int first = 0; first + degree < points.size(); first += degree + 1) {
        QVector<QPointF> piece = points.mid(first, degree + 1);
        while (piece.size() < 4)
            piece = ZDPath::BezierElevate(piece);
        if (path.isEmpty()) {
            path.moveTo(piece[0]);
        } else {
            const ZDPathElement &end = path.elements.last();
            if (end.x != piece[0].x() || end.y != piece[0].y())
                path.lineTo(piece[0]); // the pieces of a broken spline need not meet
        }
        path.cubicTo(piece[1], piece[2], piece[3]);
    }
    return path;
}

ZDPath polylinePath(const QVector<QPointF> &points)
{
    ZDPath path;
    for (int i = 0; i < points.size(); ++i) {
        if (i == 0)
            path.moveTo(points[i]);
        else
            path.lineTo(points[i]);
    }
    return path;
}
