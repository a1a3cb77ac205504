// zgtool sub-commands of the smoothing effects: smooth, knots and thick.
#include "command_line.h"
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
    CommandLine line = effectCommand(QStringLiteral("smooth"),
            QStringLiteral("Sets new handles through the points of every contour of PATH."));
    line.addOption(QStringLiteral("type"), QStringLiteral("T"),
                   QStringLiteral("1 Catmull-Rom, 2 geometric, 3 asymmetric, 4 continuous"),
                   QStringLiteral("4"));
    double type = 4.0;
    if (!line.parse(args) || !line.number(QStringLiteral("type"), type))
        return line.exitCode();
    return runEffect(line, [&](ZDPath &path) {
        path.smooth(int(qBound(-1.0, type, 5.0)));
        return path;
    });
}

int runKnots(const QStringList &args)
{
    CommandLine line = effectCommand(QStringLiteral("knots"),
            QStringLiteral("The chain of cubics through the knots of the first subpath of PATH, its "
                           "points taken as knot, handle, handle, knot, ..."));
    line.addOption(QStringLiteral("reshape"), QString(),
                   QStringLiteral("make a new S from the first to the last knot"));
    line.addOption(QStringLiteral("keep-ends"), QString(),
                   QStringLiteral("with --reshape, shape the S by the end handles"));
    if (!line.parse(args))
        return line.exitCode();
    return runEffect(line, [&](ZDPath &path) {
        QVector<QPointF> points = firstSubpathPoints(path);
        ZDPath::knotsPath(points, line.isSet(QStringLiteral("reshape")),
                          line.isSet(QStringLiteral("keep-ends")));
        return chainPath(points);
    });
}

int runThick(const QStringList &args)
{
    CommandLine line = effectCommand(QStringLiteral("thick"),
            QStringLiteral("The outline of a stroke along the first contour of PATH, tapering "
                           "from one half width to another."));
    line.addOption(QStringLiteral("start"), QStringLiteral("W"),
                   QStringLiteral("half width at the start, in path units"), QStringLiteral("10"));
    line.addOption(QStringLiteral("end"), QStringLiteral("W"),
                   QStringLiteral("half width at the end, in path units"), QStringLiteral("2"));
    line.addOption(QStringLiteral("step"), QStringLiteral("S"),
                   QStringLiteral("sampling step along curves, in path units"), QStringLiteral("2"));
    double startWidth = 10.0;
    double endWidth = 2.0;
    double step = 2.0;
    if (!line.parse(args) || !line.number(QStringLiteral("start"), startWidth)
            || !line.number(QStringLiteral("end"), endWidth) || !line.number(QStringLiteral("step"), step))
        return line.exitCode();
    return runEffect(line, [&](ZDPath &path) {
        ZDPath out;
        out.thickPath(path, startWidth, endWidth, step);
        return out;
    });
}
