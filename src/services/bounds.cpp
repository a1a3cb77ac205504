// Bounds of contours and compound paths: the dispatch of zgPath::getBounds,
// the tight bounds of the curves, the bounds of the anchor and handle points,
// and the union over the children of an XPath. The stroke bounds with their
// joins and caps are in stroke_bounds.cpp.
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>
#include <cmath>

zgRect zgPath::getBounds(const zgBoundOpt &options, const zgStyle &style, zgMatrix *matrix)
{
    if (options.handle)
        return getHandleBounds(segments, style, options, matrix);
    if (options.stroke)
        return getStrokeBounds(segments, closed, style, matrix);
    return getBounds(segments, closed, QVector<double>(), matrix);
}

zgRect zgPath::getBounds(const QList<zgSegment *> &segments, bool closed,
                         QVector<double> padding, zgMatrix *matrix)
{
    if (segments.isEmpty())
        return zgRect();

    QVector<double> prevCoords(6, 0.0);
    QVector<double> coords(6, 0.0);
    segments.first()->transformCoordinates(matrix, prevCoords);
    double min[2] = { prevCoords.at(0), prevCoords.at(1) };
    double max[2] = { prevCoords.at(0), prevCoords.at(1) };
    QVector<double> roots(2, 0.0);
    // An empty padding (or a missing entry) pads by nothing.
    const double coordPadding[2] = { padding.value(0, 0.0), padding.value(1, 0.0) };

    // The curve from the previous segment to this one: its start point and
    // handle-out, then this segment's handle-in and point.
    auto process = [&](zgSegment *segment) {
        segment->transformCoordinates(matrix, coords);
        for (int i = 0; i < 2; ++i) {
            zgCurve::addBounds(prevCoords.at(i), prevCoords.at(i + 4), coords.at(i + 2),
                               coords.at(i), i, coordPadding[i], min, max, roots);
        }
        std::swap(prevCoords, coords);
    };
    for (int i = 1; i < segments.size(); ++i)
        process(segments.at(i));
    if (closed)
        process(segments.first());

    return zgRect(min[0], min[1], max[0] - min[0], max[1] - min[1]);
}

zgRect zgPath::getHandleBounds(const QList<zgSegment *> &segments, const zgStyle &style,
                               const zgBoundOpt &options, zgMatrix *matrix)
{
    QVector<double> strokePadding;
    QVector<double> joinPadding;
    if (options.stroke && style.hasStroke) {
        zgMatrix strokeMatrix;
        if (matrix) {
            strokeMatrix = *matrix;
            strokeMatrix._shiftless();
        }
        const double strokeRadius = style.strokeWidth * 0.5;
        double joinRadius = strokeRadius;
        if (style.join == zgJoinMiter)
            joinRadius = strokeRadius * style.miterLimit;
        // The corner of a square cap lies on the diagonal of its square.
        if (style.cap == zgCapSquare)
            joinRadius = std::max(joinRadius, std::sqrt(2.0) * strokeRadius);
        if (!matrix) {
            strokePadding = { strokeRadius, strokeRadius };
            joinPadding = { joinRadius, joinRadius };
        } else {
            strokePadding = getStrokePadding(strokeRadius, &strokeMatrix);
            joinPadding = getStrokePadding(joinRadius, &strokeMatrix);
        }
    }
    const double pointPad[2] = { joinPadding.value(0, 0.0), joinPadding.value(1, 0.0) };
    const double handlePad[2] = { strokePadding.value(0, 0.0), strokePadding.value(1, 0.0) };

    double x1 = qInf();
    double y1 = qInf();
    double x2 = -qInf();
    double y2 = -qInf();
    QVector<double> coords(6, 0.0);
    for (zgSegment *segment : segments) {
        segment->transformCoordinates(matrix, coords);
        // Pairs 0: the point, 1: the handle-in, 2: the handle-out.
        for (int pair = 0; pair < 3; ++pair) {
            const double *pad = pair == 0 ? pointPad : handlePad;
            const double x = coords.at(pair * 2);
            const double y = coords.at(pair * 2 + 1);
            x1 = std::min(x1, x - pad[0]);
            x2 = std::max(x2, x + pad[0]);
            y1 = std::min(y1, y - pad[1]);
            y2 = std::max(y2, y + pad[1]);
        }
    }
    return zgRect(x1, y1, x2 - x1, y2 - y1);
}

zgRect XPath::getBounds(const zgBoundOpt &options, const zgStyle &style, zgMatrix *matrix)
{
    zgRect united;
    for (zgPath *child : children) {
        if (child)
            united = united.unite(child->getBounds(options, style, matrix));
    }
    return united;
}
