#include "commands.h"

#include "command_options.h"
#include "render.h"
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

// Reads the value after an option; false with a message if there is none.
bool takeValue(const QStringList &args, int &i, QString &value)
{
    if (i + 1 >= args.size()) {
        printError(QStringLiteral("option %1 needs a value").arg(args.at(i)));
        return false;
    }
    value = args.at(++i);
    return true;
}

bool takeNumber(const QStringList &args, int &i, double &value)
{
    QString text;
    if (!takeValue(args, i, text))
        return false;
    bool ok = false;
    value = text.toDouble(&ok);
    if (!ok || !std::isfinite(value)) {
        printError(QStringLiteral("option %1: '%2' is not a finite number").arg(args.at(i - 1), text));
        return false;
    }
    return true;
}

// Handles --png, --svg and the positional path data; false for anything else.
bool takeCommon(const QStringList &args, int &i, CommonOptions &common, bool &error)
{
    const QString &arg = args.at(i);
    error = false;
    if (arg == QLatin1String("--png"))
        error = !takeValue(args, i, common.pngFile);
    else if (arg == QLatin1String("--svg"))
        error = !takeValue(args, i, common.svgFile);
    else if (!arg.startsWith(QLatin1String("--")) && common.pathData.isNull())
        common.pathData = arg;
    else
        return false;
    return true;
}

bool readPath(const CommonOptions &common, ZDPath &path)
{
    QString data = common.pathData;
    if (data.isNull()) {
        printError(QStringLiteral("no path data given"));
        return false;
    }
    if (data == QLatin1String("-")) {
        QTextStream in(stdin);
        data = in.readAll();
    }
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

int runMeasure(const QStringList &args)
{
    CommonOptions common;
    double offset = qQNaN();
    double fraction = qQNaN();
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        if (args.at(i) == QLatin1String("--at-length")) {
            if (!takeNumber(args, i, offset))
                return 2;
        } else if (args.at(i) == QLatin1String("--at-fraction")) {
            if (!takeNumber(args, i, fraction))
                return 2;
        } else if (!takeCommon(args, i, common, error)) {
            return unknownOption(QStringLiteral("measure"), args.at(i));
        } else if (error) {
            return 2;
        }
    }
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
    CommonOptions common;
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        if (!takeCommon(args, i, common, error))
            return unknownOption(QStringLiteral("reverse"), args.at(i));
        if (error)
            return 2;
    }
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
    return writePictures(common, {input, result}) ? 0 : 1;
}

int runShorten(const QStringList &args)
{
    CommonOptions common;
    double startLength = 0.0;
    double endLength = 0.0;
    bool outerOnly = false;
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        if (args.at(i) == QLatin1String("--start")) {
            if (!takeNumber(args, i, startLength))
                return 2;
        } else if (args.at(i) == QLatin1String("--end")) {
            if (!takeNumber(args, i, endLength))
                return 2;
        } else if (args.at(i) == QLatin1String("--outer-only")) {
            outerOnly = true;
        } else if (!takeCommon(args, i, common, error)) {
            return unknownOption(QStringLiteral("shorten"), args.at(i));
        } else if (error) {
            return 2;
        }
    }
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    ZDPath shortened = path;
    const bool found = shortened.setLineHead(startLength, endLength, outerOnly);
    std::printf("%s\n", qPrintable(toSvgPath(shortened)));
    if (!found)
        std::fprintf(stderr, "zgtool: shorten: no open end was shortened\n");
    Sample input{QStringLiteral("input"), path, {}};
    Sample result{QStringLiteral("shortened"), shortened, {}};
    for (const ZDPathElement &e : qAsConst(shortened.elements)) {
        if (e.auxX != 0.0 || e.auxY != 0.0)
            result.marks << QPointF(e.auxX, e.auxY); // where the end was before
    }
    return writePictures(common, {input, result}) ? 0 : 1;
}

int runConvert(const QStringList &args)
{
    CommonOptions common;
    QString target = QStringLiteral("svg");
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        if (args.at(i) == QLatin1String("--to")) {
            if (!takeValue(args, i, target))
                return 2;
        } else if (!takeCommon(args, i, common, error)) {
            return unknownOption(QStringLiteral("convert"), args.at(i));
        } else if (error) {
            return 2;
        }
    }
    if (target != QLatin1String("svg") && target != QLatin1String("elements")
            && target != QLatin1String("xpath") && target != QLatin1String("painter")) {
        printError(QStringLiteral("convert: unknown target '%1' (svg, elements, xpath, painter)").arg(target));
        return 2;
    }
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
                                  Sample{QStringLiteral("converted"), result, {}}}) ? 0 : 1;
}

namespace {

// Parses a second positional path given after the first.
bool takeSecondPath(const QStringList &args, int &i, CommonOptions &common, QString &second)
{
    const QString &arg = args.at(i);
    if (arg.startsWith(QLatin1String("--")) || common.pathData.isNull() || !second.isNull())
        return false;
    second = arg;
    return true;
}

int runCrossings(const QString &command, const QStringList &args, bool withOther)
{
    CommonOptions common;
    QString secondData;
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        if (withOther && takeSecondPath(args, i, common, secondData))
            continue;
        if (!takeCommon(args, i, common, error))
            return unknownOption(command, args.at(i));
        if (error)
            return 2;
    }
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    ZDPath other;
    if (withOther) {
        CommonOptions second;
        second.pathData = secondData;
        if (secondData.isNull()) {
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
    CommonOptions common;
    double width = 0.0;
    double miterLimit = 10.0;
    zgCap cap = zgCapButt;
    zgJoin join = zgJoinBevel;
    bool handle = false;
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        const QString &arg = args.at(i);
        QString value;
        if (arg == QLatin1String("--stroke")) {
            if (!takeNumber(args, i, width))
                return 2;
        } else if (arg == QLatin1String("--miter-limit")) {
            if (!takeNumber(args, i, miterLimit))
                return 2;
        } else if (arg == QLatin1String("--cap")) {
            if (!takeValue(args, i, value))
                return 2;
            if (value == QLatin1String("butt")) cap = zgCapButt;
            else if (value == QLatin1String("square")) cap = zgCapSquare;
            else if (value == QLatin1String("round")) cap = zgCapRound;
            else return unknownOption(QStringLiteral("bounds --cap"), value);
        } else if (arg == QLatin1String("--join")) {
            if (!takeValue(args, i, value))
                return 2;
            if (value == QLatin1String("bevel")) join = zgJoinBevel;
            else if (value == QLatin1String("miter")) join = zgJoinMiter;
            else if (value == QLatin1String("round")) join = zgJoinRound;
            else return unknownOption(QStringLiteral("bounds --join"), value);
        } else if (arg == QLatin1String("--handle")) {
            handle = true;
        } else if (!takeCommon(args, i, common, error)) {
            return unknownOption(QStringLiteral("bounds"), arg);
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
    if (handle)
        report("handle-bounds", zgBoundOpt(false, false, false, true));
    return writePictures(common, {sample}) ? 0 : 1;
}

int runEffect(const QString &command, const QStringList &args,
              const QVector<QPair<QString, double *>> &numbers, QStringList flags,
              QSet<QString> *flagsSeen, const std::function<ZDPath(ZDPath &)> &effect)
{
    CommonOptions common;
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        bool handled = false;
        for (const auto &number : numbers) {
            if (args.at(i) == number.first) {
                if (!takeNumber(args, i, *number.second))
                    return 2;
                handled = true;
                break;
            }
        }
        if (handled)
            continue;
        if (flags.contains(args.at(i))) {
            flagsSeen->insert(args.at(i));
            continue;
        }
        if (!takeCommon(args, i, common, error))
            return unknownOption(command, args.at(i));
        if (error)
            return 2;
    }
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    ZDPath input = path;
    const ZDPath result = effect(path);
    std::printf("%s\n", qPrintable(toSvgPath(result)));
    Sample sample(command, result);
    sample.source = input;
    sample.showPoints = false;
    return writePictures(common, {sample}) ? 0 : 1;
}

int runRound(const QStringList &args)
{
    double radius = 10.0;
    QSet<QString> seen;
    return runEffect(QStringLiteral("round"), args, {{QStringLiteral("--radius"), &radius}},
                     {QStringLiteral("--connector"), QStringLiteral("--contours")}, &seen,
                     [&](ZDPath &path) {
                         if (seen.contains(QStringLiteral("--connector"))) {
                             ZDPath marks = path; // every corner named
                             path.setCornerRoundForConnectline(radius, marks);
                         } else if (seen.contains(QStringLiteral("--contours"))) {
                             path.setCornerRound2(radius);
                         } else {
                             path.setCornerRound(radius);
                         }
                         return path;
                     });
}

int runParallel(const QStringList &args)
{
    double distance = 10.0;
    double step = 1.0;
    QSet<QString> seen;
    return runEffect(QStringLiteral("parallel"), args,
                     {{QStringLiteral("--distance"), &distance}, {QStringLiteral("--step"), &step}}, {},
                     &seen, [&](ZDPath &path) {
                         ZDPath out;
                         path.parallelPath(out, distance, step);
                         return out;
                     });
}

int runWave(const QStringList &args)
{
    double kind = 0.0;
    double wavelength = 20.0;
    double amplitude = 5.0;
    double smoothness = 0.5;
    QSet<QString> seen;
    return runEffect(QStringLiteral("wave"), args,
                     {{QStringLiteral("--kind"), &kind}, {QStringLiteral("--wavelength"), &wavelength},
                      {QStringLiteral("--amplitude"), &amplitude},
                      {QStringLiteral("--smoothness"), &smoothness}},
                     {}, &seen, [&](ZDPath &path) {
                         ZDPath out;
                         path.wavePath(out, int(qBound(-1.0, kind, 7.0)), wavelength, amplitude,
                                       smoothness);
                         return out;
                     });
}

int runHandDrawn(const QStringList &args)
{
    double amplitude = 5.0;
    double step = 5.0;
    QSet<QString> seen;
    return runEffect(QStringLiteral("handdrawn"), args,
                     {{QStringLiteral("--amplitude"), &amplitude}, {QStringLiteral("--step"), &step}},
                     {}, &seen, [&](ZDPath &path) {
                         ZDPath out;
                         out.manualPath(path, amplitude, step);
                         return out;
                     });
}

int runNoise(const QStringList &args)
{
    QString fileName = QStringLiteral("zgtool-noise.png");
    double width = 400;
    double height = 300;
    for (int i = 0; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--png")) {
            if (!takeValue(args, i, fileName))
                return 2;
        } else if (args.at(i) == QLatin1String("--width")) {
            if (!takeNumber(args, i, width))
                return 2;
        } else if (args.at(i) == QLatin1String("--height")) {
            if (!takeNumber(args, i, height))
                return 2;
        } else {
            return unknownOption(QStringLiteral("noise"), args.at(i));
        }
    }
    if (width < 1 || height < 1 || width > 10000 || height > 10000) {
        printError(QStringLiteral("noise: width and height must lie in 1 to 10000"));
        return 2;
    }
    QImage image(int(width), int(height), QImage::Format_ARGB32);
    image.fill(Qt::white);
    if (!Noise::perlinNoise(image).save(fileName, "PNG")) {
        printError(QStringLiteral("cannot write %1").arg(fileName));
        return 1;
    }
    std::printf("# picture: %s\n", qPrintable(fileName));
    return 0;
}
