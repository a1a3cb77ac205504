// zgtool's boolean sub-commands: unite, intersect, subtract, exclude and
// divide of two paths, their crossing points, and the even-odd copy.
#include "commands.h"

#include "render.h"
#include "svgpath.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/QTextStream>

#include <cstdio>
#include <functional>

namespace {

struct BooleanArgs
{
    QStringList paths;
    QString pngFile;
    QString svgFile;
};

void printError(const QString &message)
{
    std::fprintf(stderr, "zgtool: %s\n", qPrintable(message));
}

// Reads count positional paths and the --png and --svg options; returns 0,
// or the exit code of a usage error.
int parseArgs(const QString &command, const QStringList &args, int count, BooleanArgs &out)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString &arg = args.at(i);
        if (arg == QLatin1String("--png") || arg == QLatin1String("--svg")) {
            if (i + 1 >= args.size()) {
                printError(QStringLiteral("option %1 needs a value").arg(arg));
                return 2;
            }
            (arg == QLatin1String("--png") ? out.pngFile : out.svgFile) = args.at(++i);
        } else if (arg.startsWith(QLatin1String("--")) || out.paths.size() == count) {
            printError(QStringLiteral("%1: unknown option '%2'").arg(command, arg));
            return 2;
        } else {
            out.paths.append(arg);
        }
    }
    if (out.paths.size() != count) {
        printError(count == 1 ? QStringLiteral("%1: a path is needed").arg(command)
                              : QStringLiteral("%1: two paths are needed").arg(command));
        return 2;
    }
    return 0;
}

// Parses path data ("-" reads standard input); false with a message.
bool readPath(const QString &given, ZDPath &path)
{
    QString data = given;
    if (data == QLatin1String("-"))
        data = QTextStream(stdin).readAll();
    QString error;
    if (!parseSvgPath(data, path, error)) {
        printError(QStringLiteral("path data: %1").arg(error));
        return false;
    }
    return true;
}

bool readPaths(const BooleanArgs &args, QVector<ZDPath> &paths)
{
    for (const QString &data : args.paths) {
        ZDPath path;
        if (!readPath(data, path))
            return false;
        paths.append(path);
    }
    return true;
}

bool writeSamples(const BooleanArgs &args, const QVector<Sample> &samples)
{
    if (!args.pngFile.isEmpty() && !renderGrid(samples, QStringLiteral("zgtool"), args.pngFile)) {
        printError(QStringLiteral("cannot write %1").arg(args.pngFile));
        return false;
    }
    if (!args.svgFile.isEmpty() && !renderSvg(samples, args.svgFile)) {
        printError(QStringLiteral("cannot write %1").arg(args.svgFile));
        return false;
    }
    return true;
}

// One picture cell per result: the result filled by the even-odd rule over
// both operands in grey.
bool writePictures(const BooleanArgs &args, const QVector<ZDPath> &operands,
                   const QVector<QPair<QString, ZDPath>> &results)
{
    QVector<Sample> samples;
    for (const auto &result : results) {
        Sample sample(result.first, result.second);
        for (ZDPath operand : operands)
            sample.source.addPath(operand, false);
        sample.showPoints = false;
        samples.append(sample);
    }
    return writeSamples(args, samples);
}

// The operator on the compounds of the two paths: the result as SVG path
// data, or "null" when the operator gives none (an open path under unite or
// exclude, or cut by an open path).
int runOperator(const QString &command, const QStringList &arguments,
                const std::function<XPath *(XPath &, XPath &)> &op)
{
    BooleanArgs args;
    if (const int code = parseArgs(command, arguments, 2, args))
        return code;
    QVector<ZDPath> paths;
    if (!readPaths(args, paths))
        return 1;
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
    return writePictures(args, paths, {{command, elements}}) ? 0 : 1;
}

} // namespace

int runUnite(const QStringList &args)
{
    return runOperator(QStringLiteral("unite"), args,
                       [](XPath &a, XPath &b) { return a.unite(&b); });
}

int runBooleanIntersect(const QStringList &args)
{
    return runOperator(QStringLiteral("intersect"), args,
                       [](XPath &a, XPath &b) { return a.intersect(&b, true); });
}

int runSubtract(const QStringList &args)
{
    return runOperator(QStringLiteral("subtract"), args,
                       [](XPath &a, XPath &b) { return a.subtract(&b); });
}

int runExclude(const QStringList &args)
{
    return runOperator(QStringLiteral("exclude"), args,
                       [](XPath &a, XPath &b) { return a.exclude(&b); });
}

int runDivide(const QStringList &arguments)
{
    BooleanArgs args;
    if (const int code = parseArgs(QStringLiteral("divide"), arguments, 2, args))
        return code;
    QVector<ZDPath> paths;
    if (!readPaths(args, paths))
        return 1;
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
    return writePictures(args, paths, results) ? 0 : 1;
}

int runCrossPoints(const QStringList &arguments)
{
    BooleanArgs args;
    if (const int code = parseArgs(QStringLiteral("crosspoints"), arguments, 2, args))
        return code;
    QVector<ZDPath> paths;
    if (!readPaths(args, paths))
        return 1;
    ZDPath first = paths.at(0);
    ZDPath second = paths.at(1);
    const QVector<QPointF> points = first.crossPoints(second);
    for (const QPointF &point : points)
        std::printf("point %.17g %.17g\n", point.x(), point.y());
    const QPointF best = first.bestCrossPoint(second);
    std::printf("crosspoints %d best %.17g %.17g\n", points.size(), best.x(), best.y());
    ZDPath both = first;
    both.addPath(second, false);
    return writeSamples(args, {Sample(QStringLiteral("crosspoints"), both, points)}) ? 0 : 1;
}

int runEvenOdd(const QStringList &arguments)
{
    BooleanArgs args;
    if (const int code = parseArgs(QStringLiteral("evenodd"), arguments, 1, args))
        return code;
    QVector<ZDPath> paths;
    if (!readPaths(args, paths))
        return 1;
    ZDPath path = paths.at(0);
    std::printf("mixed-orientation %d\n", path.isEvenOdd() ? 1 : 0);
    path.evenOdd();
    std::printf("%s\n", qPrintable(toSvgPath(path)));
    return writePictures(args, paths, {{QStringLiteral("evenodd"), path}}) ? 0 : 1;
}
