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
int runOnContours(const QString &command, const QStringList &args, const QString &option,
                  double value, const std::function<bool(XPath &, double)> &operation)
{
    CommonOptions common;
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        if (args.at(i) == option) {
            if (!takeNumber(args, i, value))
                return 2;
        } else if (!takeCommon(args, i, common, error)) {
            return unknownOption(command, args.at(i));
        } else if (error) {
            return 2;
        }
    }
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
    return writePictures(common, {sample}) ? 0 : 1;
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
    return runOnContours(QStringLiteral("flatten"), args, QStringLiteral("--flatness"), 1.0,
                         [](XPath &xpath, double flatness) {
                             xpath.flatten(flatness);
                             return true;
                         });
}

int runSimplify(const QStringList &args)
{
    return runOnContours(QStringLiteral("simplify"), args, QStringLiteral("--tolerance"), 2.5,
                         [](XPath &xpath, double tolerance) { return xpath.simplify(tolerance); });
}

int runStep(const QStringList &args)
{
    CommonOptions common;
    double scale = 1.0;
    double atX = qQNaN();
    double atY = qQNaN();
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        if (args.at(i) == QLatin1String("--scale")) {
            if (!takeNumber(args, i, scale))
                return 2;
        } else if (args.at(i) == QLatin1String("--at")) {
            if (!takeNumber(args, i, atX) || !takeNumber(args, i, atY))
                return 2;
        } else if (!takeCommon(args, i, common, error)) {
            return unknownOption(QStringLiteral("step"), args.at(i));
        } else if (error) {
            return 2;
        }
    }
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
