#include "commands.h"

#include "command_options.h"
#include "render.h"
#include "svg_document.h"
#include "svgpath.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/QFile>
#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QTextStream>
#include <QtCore/qnumeric.h>

#include <cmath>
#include <functional>
#include <cstdio>

void printError(const QString &message)
{
    std::fprintf(stderr, "zgtool: %s\n", qPrintable(message));
}

CommonOptions commonOptions(const CommandLine &line)
{
    CommonOptions common;
    common.pathData = line.argument(0);
    common.pngFile = line.value(QStringLiteral("png"));
    common.svgFile = line.value(QStringLiteral("svg"));
    common.outFile = line.value(QStringLiteral("out"));
    common.withOperands = line.isSet(QStringLiteral("with-operands"));
    return common;
}

bool readPath(const CommonOptions &common, ZDPath &path)
{
    if (common.pathData.isNull()) {
        printError(QStringLiteral("no path data given"));
        return false;
    }
    QString data;
    if (!readPathData(common.pathData, data))
        return false;
    QString error;
    if (!parseSvgPath(data, path, error)) {
        printError(QStringLiteral("path data: %1").arg(error));
        return false;
    }
    return true;
}

bool writePictures(const CommonOptions &common, const QVector<Sample> &samples)
{
    if (!common.pngFile.isEmpty() && !renderGrid(samples, QStringLiteral("zgtool"), common.pngFile)) {
        printError(QStringLiteral("cannot write %1").arg(common.pngFile));
        return false;
    }
    if (!common.svgFile.isEmpty() && !renderSvg(samples, common.svgFile)) {
        printError(QStringLiteral("cannot write %1").arg(common.svgFile));
        return false;
    }
    return true;
}

bool writeResult(const CommonOptions &common, const QVector<ZDPath> &results,
                 const QVector<ZDPath> &operands)
{
    if (common.outFile.isEmpty())
        return true;
    if (!writeSvgDocument(common.outFile, results, common.withOperands ? operands : QVector<ZDPath>())) {
        printError(QStringLiteral("cannot write %1").arg(common.outFile));
        return false;
    }
    return true;
}

int unknownOption(const QString &command, const QString &option)
{
    printError(QStringLiteral("%1: unknown option '%2'").arg(command, option));
    return 2;
}

QString pointText(const zgPoint &p)
{
    return QStringLiteral("%1 %2").arg(p.x, 0, 'g', 17).arg(p.y, 0, 'g', 17);
}

namespace {

void printOpenEnds(ZDPath &path)
{
    QPointF start, next;
    int index = 0;
    while (path.getOpenedStart(start, next, index) != -1)
        std::printf("open-start %s\n", qPrintable(pointText(zgPoint(start))));
    QPointF end, prev;
    int moveIndex = -1;
    index = 0;
    while (path.getOpenedEnd(end, prev, index, moveIndex) != -1)
        std::printf("open-end %s\n", qPrintable(pointText(zgPoint(end))));
}

} // namespace

namespace {

// A command line with one path argument and the picture options; with
// result set also --out and --with-operands.
CommandLine pathCommand(const QString &command, const QString &summary, bool result)
{
    CommandLine line(command, summary);
    line.addArgument(QStringLiteral("PATH"), QString::fromLatin1(kPathArgumentHelp));
    line.addPictureOptions();
    if (result)
        line.addResultOptions();
    return line;
}

} // namespace

int runMeasure(const QStringList &args)
{
    CommandLine line = pathCommand(QStringLiteral("measure"),
            QStringLiteral("Prints the length of PATH, its open ends, and with --at-length or "
                           "--at-fraction the point, unit tangent and normal at that place."), false);
    line.addOption(QStringLiteral("at-length"), QStringLiteral("L"),
                   QStringLiteral("arc length from the start, in path units"));
    line.addOption(QStringLiteral("at-fraction"), QStringLiteral("F"),
                   QStringLiteral("share of the length, 0 to 1 (used before --at-length)"));
    double offset = qQNaN();
    double fraction = qQNaN();
    if (!line.parse(args) || !line.number(QStringLiteral("at-length"), offset)
            || !line.number(QStringLiteral("at-fraction"), fraction))
        return line.exitCode();
    const CommonOptions common = commonOptions(line);
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    const double length = path.getLength();
    std::printf("length %.17g\n", length);
    Sample sample{QStringLiteral("measured"), path, {}};
    if (!std::isnan(offset) || !std::isnan(fraction)) {
        const double share = !std::isnan(fraction) ? fraction : (length > 0.0 ? offset / length : qQNaN());
        const zgPoint point = path.getPointAt(share);
        if (point.isNaN()) {
            printError(QStringLiteral("measure: no point at that place (the path is %1 long)").arg(length));
            return 1;
        }
        const zgPoint tangent = path.getTangentAt(point);
        // The sideways normal of a unit tangent (tx, ty) is (ty, -tx).
        const zgPoint normal(tangent.y, -tangent.x);
        std::printf("point %s\n", qPrintable(pointText(point)));
        std::printf("tangent %s\n", qPrintable(pointText(tangent)));
        std::printf("normal %s\n", qPrintable(pointText(normal)));
        sample.marks << point.toPt();
    }
    printOpenEnds(path);
    return writePictures(common, {sample}) ? 0 : 1;
}

int runReverse(const QStringList &args)
{
    CommandLine line = pathCommand(QStringLiteral("reverse"),
            QStringLiteral("Prints PATH with every subpath reversed."), true);
    if (!line.parse(args))
        return line.exitCode();
    const CommonOptions common = commonOptions(line);
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    ZDPath reversed = path;
    reversed.reverse();
    std::printf("%s\n", qPrintable(toSvgPath(reversed)));
    Sample input{QStringLiteral("input"), path, {}};
    Sample result{QStringLiteral("reversed"), reversed, {}};
    if (!reversed.isEmpty())
        result.marks << reversed.elements.first().toPoint();
    return writePictures(common, {input, result}) && writeResult(common, {reversed}, {path}) ? 0 : 1;
}

int runShorten(const QStringList &args)
{
    CommandLine line = pathCommand(QStringLiteral("shorten"),
            QStringLiteral("Shortens the open ends of PATH for line heads and prints the result."), true);
    line.addOption(QStringLiteral("start"), QStringLiteral("L"),
                   QStringLiteral("length taken off the start of each open subpath, in path units"),
                   QStringLiteral("0"));
    line.addOption(QStringLiteral("end"), QStringLiteral("L"),
                   QStringLiteral("length taken off the end, in path units"), QStringLiteral("0"));
    line.addOption(QStringLiteral("outer-only"), QString(),
                   QStringLiteral("move only the path's own first and last points"));
    double startLength = 0.0;
    double endLength = 0.0;
    if (!line.parse(args) || !line.number(QStringLiteral("start"), startLength)
            || !line.number(QStringLiteral("end"), endLength))
        return line.exitCode();
    const CommonOptions common = commonOptions(line);
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    ZDPath shortened = path;
    const bool found = shortened.setLineHead(startLength, endLength, line.isSet(QStringLiteral("outer-only")));
    std::printf("%s\n", qPrintable(toSvgPath(shortened)));
    if (!found)
        std::fprintf(stderr, "zgtool: shorten: no open end was shortened\n");
    Sample input{QStringLiteral("input"), path, {}};
    Sample result{QStringLiteral("shortened"), shortened, {}};
    for (const ZDPathElement &e : qAsConst(shortened.elements)) {
        if (e.auxX != 0.0 || e.auxY != 0.0)
            result.marks << QPointF(e.auxX, e.auxY); // where the end was before
    }
    return writePictures(common, {input, result}) && writeResult(common, {shortened}, {path}) ? 0 : 1;
}

int runConvert(const QStringList &args)
{
    CommandLine line = pathCommand(QStringLiteral("convert"),
            QStringLiteral("Prints PATH as SVG path data or as its element list, or after a round "
                           "trip through the object graph or a QPainterPath."), true);
    line.addOption(QStringLiteral("to"), QStringLiteral("FORMAT"),
                   QStringLiteral("svg (path data), elements (the element list), xpath (through "
                                  "the object graph) or painter (through a QPainterPath)"),
                   QStringLiteral("svg"));
    if (!line.parse(args))
        return line.exitCode();
    const QString target = line.value(QStringLiteral("to"));
    if (target != QLatin1String("svg") && target != QLatin1String("elements")
            && target != QLatin1String("xpath") && target != QLatin1String("painter")) {
        printError(QStringLiteral("convert: unknown target '%1' (svg, elements, xpath, painter)").arg(target));
        return 2;
    }
    const CommonOptions common = commonOptions(line);
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    ZDPath result = path;
    if (target == QLatin1String("xpath")) {
        XPath xpath;
        ZDPath source = path;
        source.toXPath(xpath, 0);
        result = ZDPath();
        result.fromXPath(xpath, 0, -1);
    } else if (target == QLatin1String("painter")) {
        QPainterPath painterPath;
        path.toPainterPath(painterPath);
        result = ZDPath();
        result.fromPainterPath(painterPath);
    }
    if (target == QLatin1String("elements"))
        printElements(Sample{QStringLiteral("elements"), result, {}}, stdout);
    else
        std::printf("%s\n", qPrintable(toSvgPath(result)));
    return writePictures(common, {Sample{QStringLiteral("input"), path, {}},
                                  Sample{QStringLiteral("converted"), result, {}}})
                    && writeResult(common, {result}, {path}) ? 0 : 1;
}

namespace {

int runCrossings(const QString &command, const QStringList &args, bool withOther)
{
    CommandLine line(command, withOther
            ? QStringLiteral("Prints the crossings and overlap ends of two paths: curve index, "
                             "time, point, overlap flag, and the curve and time on the other path.")
            : QStringLiteral("Prints the crossings of PATH with itself."));
    line.addArgument(withOther ? QStringLiteral("PATH1") : QStringLiteral("PATH"),
                     QString::fromLatin1(kPathArgumentHelp));
    if (withOther)
        line.addArgument(QStringLiteral("PATH2"), QStringLiteral("the other path, in the same forms"));
    line.addPictureOptions();
    if (!line.parse(args))
        return line.exitCode();
    const CommonOptions common = commonOptions(line);
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    ZDPath other;
    if (withOther) {
        CommonOptions second;
        second.pathData = line.argument(1);
        if (second.pathData.isNull()) {
            printError(QStringLiteral("%1: two paths are needed").arg(command));
            return 2;
        }
        if (!readPath(second, other))
            return 1;
    }
    const QVector<QPointF> points = findCrossings(path, withOther ? &other : nullptr, stdout);
    std::printf("crossings %d\n", points.size());
    Sample sample(withOther ? QStringLiteral("crossings") : QStringLiteral("self-crossings"), path,
                  points);
    if (withOther)
        sample.path.addPath(other, false);
    return writePictures(common, {sample}) ? 0 : 1;
}

} // namespace

int runIntersect(const QStringList &args)
{
    return runCrossings(QStringLiteral("crossings"), args, true);
}

int runSelf(const QStringList &args)
{
    return runCrossings(QStringLiteral("self"), args, false);
}

int runBounds(const QStringList &args)
{
    CommandLine line = pathCommand(QStringLiteral("bounds"),
            QStringLiteral("Prints the bounds of PATH (x y width height), its stroke bounds for "
                           "a stroke of width W, and its handle bounds."), false);
    line.addOption(QStringLiteral("stroke"), QStringLiteral("W"),
                   QStringLiteral("stroke width in path units; above 0 adds the stroke bounds"),
                   QStringLiteral("0"));
    line.addOption(QStringLiteral("cap"), QStringLiteral("CAP"),
                   QStringLiteral("line cap: butt, square or round"), QStringLiteral("butt"));
    line.addOption(QStringLiteral("join"), QStringLiteral("JOIN"),
                   QStringLiteral("line join: bevel, miter or round"), QStringLiteral("bevel"));
    line.addOption(QStringLiteral("miter-limit"), QStringLiteral("M"),
                   QStringLiteral("miter limit, in stroke widths"), QStringLiteral("10"));
    line.addOption(QStringLiteral("handle"), QString(),
                   QStringLiteral("also print the bounds of all control points"));
    double width = 0.0;
    double miterLimit = 10.0;
    if (!line.parse(args) || !line.number(QStringLiteral("stroke"), width)
            || !line.number(QStringLiteral("miter-limit"), miterLimit))
        return line.exitCode();
    zgCap cap = zgCapButt;
    const QString capName = line.value(QStringLiteral("cap"));
    if (capName == QLatin1String("square")) cap = zgCapSquare;
    else if (capName == QLatin1String("round")) cap = zgCapRound;
    else if (capName != QLatin1String("butt")) return unknownOption(QStringLiteral("bounds --cap"), capName);
    zgJoin join = zgJoinBevel;
    const QString joinName = line.value(QStringLiteral("join"));
    if (joinName == QLatin1String("miter")) join = zgJoinMiter;
    else if (joinName == QLatin1String("round")) join = zgJoinRound;
    else if (joinName != QLatin1String("bevel")) return unknownOption(QStringLiteral("bounds --join"), joinName);
    const CommonOptions common = commonOptions(line);
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    XPath xpath;
    ZDPath source = path;
    source.toXPath(xpath, 0);
    const zgStyle style(true, width > 0.0, true, width, cap, join, miterLimit);
    Sample sample(QStringLiteral("bounds"), path);
    auto report = [&](const char *name, const zgBoundOpt &options) {
        const zgRect r = xpath.getBounds(options, style, nullptr);
        std::printf("%s %.17g %.17g %.17g %.17g\n", name, r.x, r.y, r.width, r.height);
        sample.boxes << QRectF(r.x, r.y, r.width, r.height);
    };
    report("bounds", zgBoundOpt());
    if (width > 0.0)
        report("stroke-bounds", zgBoundOpt(true, false, false, false));
    if (line.isSet(QStringLiteral("handle")))
        report("handle-bounds", zgBoundOpt(false, false, false, true));
    return writePictures(common, {sample}) ? 0 : 1;
}

CommandLine effectCommand(const QString &command, const QString &summary)
{
    return pathCommand(command, summary, true);
}

int runEffect(CommandLine &line, const std::function<ZDPath(ZDPath &)> &effect)
{
    const CommonOptions common = commonOptions(line);
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    ZDPath input = path;
    const ZDPath result = effect(path);
    std::printf("%s\n", qPrintable(toSvgPath(result)));
    Sample sample(line.command(), result);
    sample.source = input;
    sample.showPoints = false;
    return writePictures(common, {sample}) && writeResult(common, {result}, {input}) ? 0 : 1;
}

int runRound(const QStringList &args)
{
    CommandLine line = effectCommand(QStringLiteral("round"),
            QStringLiteral("Rounds the corners of PATH (setCornerRound; with --connector the "
                           "line-line corners of a connector, with --contours setCornerRound2)."));
    line.addOption(QStringLiteral("radius"), QStringLiteral("R"),
                   QStringLiteral("corner radius, in path units"), QStringLiteral("10"));
    line.addOption(QStringLiteral("connector"), QString(),
                   QStringLiteral("round as a connector line, every corner named"));
    line.addOption(QStringLiteral("contours"), QString(),
                   QStringLiteral("round every contour with setCornerRound2"));
    double radius = 10.0;
    if (!line.parse(args) || !line.number(QStringLiteral("radius"), radius))
        return line.exitCode();
    return runEffect(line, [&](ZDPath &path) {
        if (line.isSet(QStringLiteral("connector"))) {
            ZDPath marks = path; // every corner named
            path.setCornerRoundForConnectline(radius, marks);
        } else if (line.isSet(QStringLiteral("contours"))) {
            path.setCornerRound2(radius);
        } else {
            path.setCornerRound(radius);
        }
        return path;
    });
}

int runParallel(const QStringList &args)
{
    CommandLine line = effectCommand(QStringLiteral("parallel"),
            QStringLiteral("Prints the parallel outline of PATH at distance D, curves sampled every S."));
    line.addOption(QStringLiteral("distance"), QStringLiteral("D"),
                   QStringLiteral("distance to the side of the normal (ty, -tx), in path units"),
                   QStringLiteral("10"));
    line.addOption(QStringLiteral("step"), QStringLiteral("S"),
                   QStringLiteral("sampling step along curves, in path units"), QStringLiteral("1"));
    double distance = 10.0;
    double step = 1.0;
    if (!line.parse(args) || !line.number(QStringLiteral("distance"), distance)
            || !line.number(QStringLiteral("step"), step))
        return line.exitCode();
    return runEffect(line, [&](ZDPath &path) {
        ZDPath out;
        path.parallelPath(out, distance, step);
        return out;
    });
}

int runWave(const QStringList &args)
{
    CommandLine line = effectCommand(QStringLiteral("wave"),
            QStringLiteral("Prints the wavy line of the given kind along PATH."));
    line.addOption(QStringLiteral("kind"), QStringLiteral("K"),
                   QStringLiteral("wave kind, 0 to 6"), QStringLiteral("0"));
    line.addOption(QStringLiteral("wavelength"), QStringLiteral("W"),
                   QStringLiteral("wavelength, in path units"), QStringLiteral("20"));
    line.addOption(QStringLiteral("amplitude"), QStringLiteral("A"),
                   QStringLiteral("amplitude, in path units"), QStringLiteral("5"));
    line.addOption(QStringLiteral("smoothness"), QStringLiteral("S"),
                   QStringLiteral("smoothness of the wave, 0 to 1"), QStringLiteral("0.5"));
    double kind = 0.0;
    double wavelength = 20.0;
    double amplitude = 5.0;
    double smoothness = 0.5;
    if (!line.parse(args) || !line.number(QStringLiteral("kind"), kind)
            || !line.number(QStringLiteral("wavelength"), wavelength)
            || !line.number(QStringLiteral("amplitude"), amplitude)
            || !line.number(QStringLiteral("smoothness"), smoothness))
        return line.exitCode();
    return runEffect(line, [&](ZDPath &path) {
        ZDPath out;
        path.wavePath(out, int(qBound(-1.0, kind, 7.0)), wavelength, amplitude, smoothness);
        return out;
    });
}

int runHandDrawn(const QStringList &args)
{
    CommandLine line = effectCommand(QStringLiteral("handdrawn"),
            QStringLiteral("Prints a hand-drawn copy of PATH."));
    line.addOption(QStringLiteral("amplitude"), QStringLiteral("A"),
                   QStringLiteral("largest sideways shift, in path units"), QStringLiteral("5"));
    line.addOption(QStringLiteral("step"), QStringLiteral("S"),
                   QStringLiteral("distance between shifted points, in path units"), QStringLiteral("5"));
    double amplitude = 5.0;
    double step = 5.0;
    if (!line.parse(args) || !line.number(QStringLiteral("amplitude"), amplitude)
            || !line.number(QStringLiteral("step"), step))
        return line.exitCode();
    return runEffect(line, [&](ZDPath &path) {
        ZDPath out;
        out.manualPath(path, amplitude, step);
        return out;
    });
}

int runNoise(const QStringList &args)
{
    CommandLine line(QStringLiteral("noise"),
                     QStringLiteral("Draws a noise curve into an image and writes it as PNG."));
    line.addOption(QStringLiteral("width"), QStringLiteral("W"),
                   QStringLiteral("image width, 1 to 10000 pixels"), QStringLiteral("400"));
    line.addOption(QStringLiteral("height"), QStringLiteral("H"),
                   QStringLiteral("image height, 1 to 10000 pixels"), QStringLiteral("300"));
    line.addOption(QStringLiteral("png"), QStringLiteral("FILE"), QStringLiteral("the picture"),
                   QStringLiteral("zgtool-noise.png"));
    double width = 400;
    double height = 300;
    if (!line.parse(args) || !line.number(QStringLiteral("width"), width)
            || !line.number(QStringLiteral("height"), height))
        return line.exitCode();
    if (width < 1 || height < 1 || width > 10000 || height > 10000) {
        printError(QStringLiteral("noise: width and height must lie in 1 to 10000"));
        return 2;
    }
    const QString fileName = line.value(QStringLiteral("png"));
    QImage image(int(width), int(height), QImage::Format_ARGB32);
    image.fill(Qt::white);
    if (!Noise::perlinNoise(image).save(fileName, "PNG")) {
        printError(QStringLiteral("cannot write %1").arg(fileName));
        return 1;
    }
    std::printf("# picture: %s\n", qPrintable(fileName));
    return 0;
}
