// zgtool flatten, simplify and step: polylines from curves, cubics fitted
// through polylines, and the forward-differencing walk of one cubic.
#include "commands.h"

#include "command_options.h"
#include "svgpath.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <cstdio>
#include <functional>

namespace {

// Reads the path and one numeric option, runs the contour operation on the
// path's object graph, prints the result as SVG path data and draws source
// and result.
int runOnContours(const QString &command, const QString &summary, const QStringList &args,
                  const QString &option, const QString &optionHelp, const QString &defaultValue,
                  const std::function<bool(XPath &, double)> &operation)
{
    CommandLine line(command, summary);
    line.addArgument(QStringLiteral("PATH"), QString::fromLatin1(kPathArgumentHelp));
    line.addOption(option, option.left(1).toUpper(), optionHelp, defaultValue);
    line.addPictureOptions();
    line.addResultOptions();
    double value = 0.0;
    if (!line.parse(args) || !line.number(option, value))
        return line.exitCode();
    const CommonOptions common = commonOptions(line);
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    XPath xpath;
    ZDPath source = path;
    source.toXPath(xpath, 0);
    const bool changed = operation(xpath, value);
    ZDPath result;
    result.fromXPath(xpath, 0, -1);
    std::printf("%s\n", qPrintable(toSvgPath(result)));
    if (!changed)
        std::fprintf(stderr, "zgtool: %s: no contour changed\n", qPrintable(command));
    Sample sample(command, result);
    sample.source = path;
    return writePictures(common, {sample}) && writeResult(common, {result}, {path}) ? 0 : 1;
}

// The first cubic of path as start, two control points and end; false if
// the path holds none.
bool firstCubic(const ZDPath &path, QPointF points[4])
{
    for (int i = 1; i + 2 < path.count(); ++i) {
        if (path.elementAt(i).type == ZDCurveToElement
                && path.elementAt(i + 1).type == ZDCurveToDataElement
                && path.elementAt(i + 2).type == ZDCurveToDataElement) {
            for (int k = 0; k < 4; ++k)
                points[k] = path.elementAt(i - 1 + k).toPoint();
            return true;
        }
    }
    return false;
}

ZDPath cubicPath(const QPointF *points)
{
    ZDPath path;
    path.moveTo(points[0]);
    path.cubicTo(points[1], points[2], points[3]);
    return path;
}

} // namespace

int runFlatten(const QStringList &args)
{
    return runOnContours(QStringLiteral("flatten"),
                         QStringLiteral("Replaces the curves of PATH by chords."), args,
                         QStringLiteral("flatness"),
                         QStringLiteral("largest distance of a chord from its curve, in path units"),
                         QStringLiteral("1"), [](XPath &xpath, double flatness) {
                             xpath.flatten(flatness);
                             return true;
                         });
}

int runSimplify(const QStringList &args)
{
    return runOnContours(QStringLiteral("simplify"),
                         QStringLiteral("Fits few cubics through the points of PATH."), args,
                         QStringLiteral("tolerance"),
                         QStringLiteral("bound of the squared miss, in squared path units, "
                                        "truncated to an integer"),
                         QStringLiteral("2.5"),
                         [](XPath &xpath, double tolerance) { return xpath.simplify(tolerance); });
}

int runStep(const QStringList &args)
{
    CommandLine line(QStringLiteral("step"),
            QStringLiteral("Walks the first cubic of PATH in steps and prints the points; with "
                           "--at also the nearest step and the split there."));
    line.addArgument(QStringLiteral("PATH"), QString::fromLatin1(kPathArgumentHelp));
    line.addOption(QStringLiteral("scale"), QStringLiteral("S"),
                   QStringLiteral("steps per unit of control-polygon length"), QStringLiteral("1"));
    line.addOption(QStringLiteral("at"), QStringLiteral("X Y"),
                   QStringLiteral("a point to find the nearest step to and split at"));
    line.addPictureOptions();
    double scale = 1.0;
    if (!line.parse(args) || !line.number(QStringLiteral("scale"), scale))
        return line.exitCode();
    QVector<QPointF> at;
    if (!line.points(QStringLiteral("at"), at))
        return line.exitCode();
    const double atX = at.isEmpty() ? qQNaN() : at.last().x();
    const double atY = at.isEmpty() ? qQNaN() : at.last().y();
    const CommonOptions common = commonOptions(line);
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    QPointF controls[4];
    if (!firstCubic(path, controls)) {
        printError(QStringLiteral("step: the path holds no cubic"));
        return 1;
    }
    ZDCurve curve;
    curve.approximation_scale(scale);
    curve.init(controls[0], controls[1], controls[2], controls[3]);
    std::printf("steps %d\n", curve.stepNum());
    Sample walked(QStringLiteral("step"), cubicPath(controls));
    walked.showPoints = false;
    double x = 0.0;
    double y = 0.0;
    while (curve.vertex(&x, &y)) {
        std::printf("point %s\n", qPrintable(pointText(zgPoint(x, y))));
        walked.marks << QPointF(x, y);
    }
    QVector<Sample> samples{walked};
    if (!qIsNaN(atX)) {
        // The walk has used up the differences: start afresh for the search.
        curve.init(controls[0], controls[1], controls[2], controls[3]);
        QPointF first[4];
        QPointF second[4];
        const bool split = curve.splitcurve(first, second, atX, atY);
        if (!split) {
            std::printf("nearest-step -1\n");
        } else {
            // splitcurve searched with the same walk: repeat it for the index.
            curve.init(controls[0], controls[1], controls[2], controls[3]);
            std::printf("nearest-step %d\n", curve.getstep(atX, atY));
            std::printf("first %s\n", qPrintable(toSvgPath(cubicPath(first))));
            std::printf("second %s\n", qPrintable(toSvgPath(cubicPath(second))));
            ZDPath halves = cubicPath(first);
            ZDPath secondPath = cubicPath(second);
            halves.addPath(secondPath, false);
            Sample splitSample(QStringLiteral("split"), halves, {QPointF(atX, atY), first[3]});
            splitSample.source = cubicPath(controls);
            samples << splitSample;
        }
    }
    return writePictures(common, samples) ? 0 : 1;
}
