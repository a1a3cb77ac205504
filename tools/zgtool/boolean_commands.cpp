// zgtool's boolean sub-commands: unite, intersect, subtract, exclude and
// divide of two paths, their crossing points, and the even-odd copy.
#include "commands.h"

#include "command_options.h"
#include "svgpath.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <cstdio>
#include <functional>

namespace {

// A command line of count paths with the picture options, and with result
// set the result options.
CommandLine booleanCommand(const QString &command, const QString &summary, int count, bool result)
{
    CommandLine line(command, summary);
    line.addArgument(count == 1 ? QStringLiteral("PATH") : QStringLiteral("PATH1"),
                     QString::fromLatin1(kPathArgumentHelp));
    if (count == 2)
        line.addArgument(QStringLiteral("PATH2"), QStringLiteral("the second operand, in the same forms"));
    line.addPictureOptions();
    if (result)
        line.addResultOptions();
    return line;
}

// Parses the command line, which must name count paths, and reads them.
// False when the command is to stop, with exitCode set: after the help, a
// usage error or bad data.
bool readPaths(CommandLine &line, const QStringList &args, int count, CommonOptions &common,
               QVector<ZDPath> &paths, int &exitCode)
{
    if (!line.parse(args)) {
        exitCode = line.exitCode();
        return false;
    }
    exitCode = 2;
    if (line.argumentCount() != count) {
        printError(count == 1 ? QStringLiteral("%1: a path is needed").arg(line.command())
                              : QStringLiteral("%1: two paths are needed").arg(line.command()));
        return false;
    }
    exitCode = 1;
    common = commonOptions(line);
    for (int i = 0; i < count; ++i) {
        common.pathData = line.argument(i);
        ZDPath path;
        if (!readPath(common, path))
            return false;
        paths.append(path);
    }
    exitCode = 0;
    return true;
}

// One picture cell per result: the result filled by the even-odd rule over
// both operands in grey.
bool writeResults(const CommonOptions &common, const QVector<ZDPath> &operands,
                  const QVector<QPair<QString, ZDPath>> &results)
{
    QVector<Sample> samples;
    QVector<ZDPath> paths;
    for (const auto &result : results) {
        paths << result.second;
        Sample sample(result.first, result.second);
        for (ZDPath operand : operands)
            sample.source.addPath(operand, false);
        sample.showPoints = false;
        samples.append(sample);
    }
    return writePictures(common, samples) && writeResult(common, paths, operands);
}

// The operator on the compounds of the two paths: the result as SVG path
// data, or "null" when the operator gives none (an open path under unite or
// exclude, or cut by an open path).
int runOperator(const QString &command, const QString &summary, const QStringList &args,
                const std::function<XPath *(XPath &, XPath &)> &op)
{
    CommandLine line = booleanCommand(command, summary, 2, true);
    CommonOptions common;
    QVector<ZDPath> paths;
    int code = 0;
    if (!readPaths(line, args, 2, common, paths, code))
        return code;
    XPath first;
    XPath second;
    paths[0].toXPath(first);
    paths[1].toXPath(second);
    XPath *result = op(first, second);
    ZDPath elements;
    if (result)
        elements.fromXPath(*result);
    std::printf("%s\n", result ? qPrintable(toSvgPath(elements)) : "null");
    delete result;
    return writeResults(common, paths, {{command, elements}}) ? 0 : 1;
}

} // namespace

int runUnite(const QStringList &args)
{
    return runOperator(QStringLiteral("unite"),
                       QStringLiteral("Prints the union of two paths as SVG path data, or null for "
                                      "an open PATH1 or PATH2."),
                       args, [](XPath &a, XPath &b) { return a.unite(&b); });
}

int runBooleanIntersect(const QStringList &args)
{
    return runOperator(QStringLiteral("intersect"),
                       QStringLiteral("Prints the intersection of two paths as SVG path data, or "
                                      "null for an open PATH2."),
                       args, [](XPath &a, XPath &b) { return a.intersect(&b, true); });
}

int runSubtract(const QStringList &args)
{
    return runOperator(QStringLiteral("subtract"),
                       QStringLiteral("Prints PATH1 minus PATH2 as SVG path data, or null for an "
                                      "open PATH2."),
                       args, [](XPath &a, XPath &b) { return a.subtract(&b); });
}

int runExclude(const QStringList &args)
{
    return runOperator(QStringLiteral("exclude"),
                       QStringLiteral("Prints the parts of two paths inside exactly one of them as "
                                      "SVG path data, or null for an open PATH1 or PATH2."),
                       args, [](XPath &a, XPath &b) { return a.exclude(&b); });
}

int runDivide(const QStringList &args)
{
    CommandLine line = booleanCommand(QStringLiteral("divide"),
            QStringLiteral("Prints PATH1 outside PATH2 and PATH1 inside PATH2."), 2, true);
    CommonOptions common;
    QVector<ZDPath> paths;
    int code = 0;
    if (!readPaths(line, args, 2, common, paths, code))
        return code;
    XPath first;
    XPath second;
    paths[0].toXPath(first);
    paths[1].toXPath(second);
    const QList<XPath *> parts = first.divide(&second);
    QVector<QPair<QString, ZDPath>> results;
    const QStringList names = {QStringLiteral("outside"), QStringLiteral("inside")};
    for (int k = 0; k < parts.size(); ++k) {
        ZDPath elements;
        if (parts.at(k))
            elements.fromXPath(*parts.at(k));
        std::printf("%s %s\n", qPrintable(names.at(k)),
                    parts.at(k) ? qPrintable(toSvgPath(elements)) : "null");
        results.append({names.at(k), elements});
        delete parts.at(k);
    }
    return writeResults(common, paths, results) ? 0 : 1;
}

int runCrossPoints(const QStringList &args)
{
    CommandLine line = booleanCommand(QStringLiteral("crosspoints"),
            QStringLiteral("Prints the crossing points of two paths and the first one as the best."),
            2, false);
    CommonOptions common;
    QVector<ZDPath> paths;
    int code = 0;
    if (!readPaths(line, args, 2, common, paths, code))
        return code;
    ZDPath first = paths.at(0);
    ZDPath second = paths.at(1);
    const QVector<QPointF> points = first.crossPoints(second);
    for (const QPointF &point : points)
        std::printf("point %.17g %.17g\n", point.x(), point.y());
    const QPointF best = first.bestCrossPoint(second);
    std::printf("crosspoints %d best %.17g %.17g\n", points.size(), best.x(), best.y());
    ZDPath both = first;
    both.addPath(second, false);
    return writePictures(common, {Sample(QStringLiteral("crosspoints"), both, points)}) ? 0 : 1;
}

int runEvenOdd(const QStringList &args)
{
    CommandLine line = booleanCommand(QStringLiteral("evenodd"),
            QStringLiteral("Tells whether the closed subpaths of PATH run different ways, then "
                           "prints PATH followed by its contours in compound orientation."), 1, true);
    CommonOptions common;
    QVector<ZDPath> paths;
    int code = 0;
    if (!readPaths(line, args, 1, common, paths, code))
        return code;
    ZDPath path = paths.at(0);
    std::printf("mixed-orientation %d\n", path.isEvenOdd() ? 1 : 0);
    path.evenOdd();
    std::printf("%s\n", qPrintable(toSvgPath(path)));
    return writeResults(common, paths, {{QStringLiteral("evenodd"), path}}) ? 0 : 1;
}
