// zgtool sub-commands of the smoothing effects: smooth, knots and thick.
#include "commands.h"

#include <zgraphics/drawing.h>

#include <QtCore/QPointF>

namespace {

// The points of the first subpath's elements in order, close elements left
// out: a move and cubics give the layout knot, handle, handle, knot, ...
QVector<QPointF> firstSubpathPoints(const ZDPath &path)
{
    QVector<QPointF> points;
    for (int i = 0; i < path.count(); ++i) {
        const ZDPathElement &e = path.elementAt(i);
        if (i > 0 && e.type == ZDMoveToElement)
            break;
        if (e.type != ZDCloseElement)
            points.append(e.toPoint());
    }
    return points;
}

// A move at the first point and a cubic for each following triple; a
// remainder of one or two points becomes lines.
ZDPath chainPath(const QVector<QPointF> &points)
{
    ZDPath path;
    if (points.isEmpty())
        return path;
    path.moveTo(points.first());
    int i = 1;
    for (; i + 2 < points.size(); i += 3)
        path.cubicTo(points.at(i), points.at(i + 1), points.at(i + 2));
    for (; i < points.size(); ++i)
        path.lineTo(points.at(i));
    return path;
}

} // namespace

int runSmooth(const QStringList &args)
{
    double type = 4.0;
    QSet<QString> seen;
    return runEffect(QStringLiteral("smooth"), args, {{QStringLiteral("--type"), &type}}, {}, &seen,
                     [&](ZDPath &path) {
                         path.smooth(int(qBound(-1.0, type, 5.0)));
                         return path;
                     });
}

int runKnots(const QStringList &args)
{
    QSet<QString> seen;
    return runEffect(QStringLiteral("knots"), args, {},
                     {QStringLiteral("--reshape"), QStringLiteral("--keep-ends")}, &seen,
                     [&](ZDPath &path) {
                         QVector<QPointF> points = firstSubpathPoints(path);
                         ZDPath::knotsPath(points, seen.contains(QStringLiteral("--reshape")),
                                           seen.contains(QStringLiteral("--keep-ends")));
                         return chainPath(points);
                     });
}

int runThick(const QStringList &args)
{
    double startWidth = 10.0;
    double endWidth = 2.0;
    double step = 2.0;
    QSet<QString> seen;
    return runEffect(QStringLiteral("thick"), args,
                     {{QStringLiteral("--start"), &startWidth}, {QStringLiteral("--end"), &endWidth},
                      {QStringLiteral("--step"), &step}},
                     {}, &seen, [&](ZDPath &path) {
                         ZDPath out;
                         out.thickPath(path, startWidth, endWidth, step);
                         return out;
                     });
}
