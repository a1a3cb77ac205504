// zgtool: the command-line face of zgraphics.
//
// With no arguments it builds the built-in sample drawing paths, writes them
// as a labelled PNG grid and prints their element lists.
#include "command_line.h"
#include "commands.h"
#include "render.h"
#include "samples.h"

#include <QtCore/QStringList>
#include <QtGui/QGuiApplication>

#include <zgraphics/version.h>

#include <cstdio>
#include <cstring>

#include <unistd.h>

namespace {

const char *const kUsage =
    "usage: zgtool [command] [options]\n"
    "       zgtool help COMMAND | zgtool COMMAND --help   the options of a command\n"
    "       zgtool --version\n"
    "\n"
    "commands:\n"
    "  samples [--out FILE]   build the built-in sample drawing paths (rectangles,\n"
    "                         polygons, the continuation and closing rules, arcs and\n"
    "                         ellipses), write them as a PNG grid to FILE\n"
    "                         (default zgtool-samples.png) and print their elements.\n"
    "                         This is the default command.\n"
    "  measure PATH [--at-length L | --at-fraction F]\n"
    "                         print the length of PATH, its open ends, and the\n"
    "                         point, unit tangent and normal at an arc length L or\n"
    "                         a share F (0 to 1) of the length\n"
    "  reverse PATH           print PATH with every subpath reversed\n"
    "  shorten PATH [--start L] [--end L] [--outer-only]\n"
    "                         shorten the open ends of PATH by L for line heads and\n"
    "                         print the result (--outer-only: only the path's own\n"
    "                         first and last points move)\n"
    "  convert PATH [--to svg|elements|xpath|painter]\n"
    "                         print PATH as SVG path data (default) or its element\n"
    "                         list, or after a round trip through the object graph\n"
    "                         (xpath) or a QPainterPath (painter)\n"
    "  crossings PATH1 PATH2  print the crossings and overlap ends of two paths:\n"
    "                         curve index, time, point, overlap flag, and the\n"
    "                         curve and time on the other path\n"
    "  self PATH              print the crossings of PATH with itself\n"
    "  unite | intersect | subtract | exclude PATH1 PATH2\n"
    "                         the boolean of two paths as SVG path data, or null\n"
    "                         (an open PATH1 under unite or exclude, or an open\n"
    "                         PATH2); pictures fill the result by the even-odd rule\n"
    "  divide PATH1 PATH2     PATH1 outside PATH2 and PATH1 inside PATH2\n"
    "  crosspoints PATH1 PATH2\n"
    "                         the crossing points of two paths and the first one\n"
    "  evenodd PATH           whether the closed subpaths run different ways, then\n"
    "                         PATH followed by its contours in compound orientation\n"
    "  bounds PATH [--stroke W] [--cap butt|square|round]\n"
    "         [--join bevel|miter|round] [--miter-limit M] [--handle]\n"
    "                         print the bounds (x y width height), the stroke\n"
    "                         bounds for a stroke of width W, and the handle bounds\n"
    "  round PATH [--radius R] [--connector | --contours]\n"
    "                         round the corners of PATH (setCornerRound; with\n"
    "                         --connector the line-line corners of a connector,\n"
    "                         with --contours setCornerRound2)\n"
    "  parallel PATH [--distance D] [--step S]\n"
    "                         the parallel outline at distance D, sampled every S\n"
    "  wave PATH [--kind 0..6] [--wavelength W] [--amplitude A] [--smoothness S]\n"
    "                         the wavy line of the given kind\n"
    "  handdrawn PATH [--amplitude A] [--step S]\n"
    "                         a hand-drawn copy of PATH\n"
    "  contains PATH --point X Y [--point X Y ...] [--stroke W] [--tolerance T]\n"
    "           [--nonzero]\n"
    "                         for each point: its winding number, whether it is on\n"
    "                         the outline, whether the path contains it (even-odd,\n"
    "                         or non-zero), and the hit test result for the default\n"
    "                         options, the stroke (width W, default 1), the bare\n"
    "                         curves and the fill, each within T (default 0.1)\n"
    "  smooth PATH [--type 1..4]\n"
    "                         new handles through the points of every contour:\n"
    "                         1 Catmull-Rom, 2 geometric, 3 asymmetric, 4 continuous\n"
    "  knots PATH [--reshape] [--keep-ends]\n"
    "                         the chain of cubics through the knots of PATH's first\n"
    "                         subpath (its points taken as knot, handle, handle,\n"
    "                         knot, ...); --reshape makes a new S from the first to\n"
    "                         the last knot, with --keep-ends shaped by the end handles\n"
    "  thick PATH [--start W] [--end W] [--step S]\n"
    "                         the outline of a stroke tapering from half width W to\n"
    "                         W along the first contour, curves sampled every S\n"
    "  flatten PATH [--flatness F]\n"
    "                         replace curves by chords within F (default 1)\n"
    "  simplify PATH [--tolerance T]\n"
    "                         fit few cubics through the points of PATH; T is\n"
    "                         truncated to an integer and bounds the squared miss\n"
    "                         (default 2.5)\n"
    "  step PATH [--scale S] [--at X Y]\n"
    "                         walk the first cubic of PATH in steps (S steps per\n"
    "                         unit of control-polygon length, default 1) and print\n"
    "                         the points; with --at the nearest step and the split\n"
    "  noise [--width W] [--height H] [--png FILE]\n"
    "                         a noise curve drawn into an image (default\n"
    "                         zgtool-noise.png)\n"
    "  fit POINTS             the cubic through every point (bezierFitting): prints\n"
    "                         the Bezier control points and the curve as SVG path\n"
    "                         data\n"
    "  bspline POINTS [--knots K] [--degree D]\n"
    "                         the B-spline of control points POINTS on the knots K\n"
    "                         (numbers; default clamped and uniform) as Bezier pieces\n"
    "  --help                 show this text\n"
    "\n"
    "PATH is SVG path data (M L H V C S Q T A Z, absolute or relative), a file,\n"
    "or - to read path data from standard input. A file holds path data or an\n"
    "SVG document, whose path, rect, circle, ellipse, line, polyline and polygon\n"
    "elements become subpaths with their transforms applied (FILE#ID reads one\n"
    "element). Quadratics and arcs become cubics. Output paths are SVG path data\n"
    "with 17 significant digits.\n"
    "POINTS is \"x,y x,y ...\" or path data in the same forms, whose vertices are\n"
    "taken.\n"
    "Every path command also takes --png FILE and --svg FILE, which draw the input\n"
    "and the result side by side; commands with a result path take --out FILE.svg\n"
    "[--with-operands], which writes the result (over the input in grey) as an\n"
    "SVG document in the path's own coordinates.\n"
    "Exit codes: 0 success, 1 bad path data or unwritable file, 2 bad usage.\n";

int usageError(const QString &message)
{
    std::fprintf(stderr, "zgtool: %s (see 'zgtool --help')\n", qPrintable(message));
    return 2;
}

int runSamples(const QStringList &args)
{
    CommandLine line(QStringLiteral("samples"),
                     QStringLiteral("Builds the built-in sample drawing paths, writes them and one "
                                    "page per topic as PNG grids and prints their elements."));
    line.addOption(QStringLiteral("out"), QStringLiteral("FILE"),
                   QStringLiteral("the first picture; the topic pages go beside it as FILE-TOPIC.png"),
                   QStringLiteral("zgtool-samples.png"));
    if (!line.parse(args))
        return line.exitCode();
    const QString fileName = line.value(QStringLiteral("out"));
    const QVector<Sample> samples = buildingSamples();
    for (const Sample &sample : samples)
        printElements(sample, stdout);
    // Further pages go beside the first: name-intersections.png and so on.
    QString base = fileName;
    if (base.endsWith(QLatin1String(".png"), Qt::CaseInsensitive))
        base.chop(4);
    // One page per topic: the file suffix, the page title and its samples.
    struct Page
    {
        QString suffix;
        QString title;
        QVector<Sample> (*samples)();
    };
    const Page pages[] = {
        {QStringLiteral("-intersections"),
         QStringLiteral("intersections (marked) and bounds (dashed)"), intersectionSamples},
        {QStringLiteral("-effects"), QStringLiteral("line-shape effects (source in grey)"),
         effectSamples},
        {QStringLiteral("-winding"),
         QStringLiteral("winding: 0 grey, 1 blue, 2 green; ringed: on the path"), windingSamples},
        {QStringLiteral("-fitting"),
         QStringLiteral("spline fitting (points and polygons in grey)"), fittingSamples},
        {QStringLiteral("-smoothing"),
         QStringLiteral("smoothing, knot paths and tapered strokes (source in grey)"), smoothingSamples},
        {QStringLiteral("-flatten"),
         QStringLiteral("flattening, simplification (source in grey), stepping"), flattenSamples},
        {QStringLiteral("-booleans"),
         QStringLiteral("booleans: results filled even-odd, operands in grey"), booleanSamples},
    };
    QStringList pictures{fileName};
    bool written = renderGrid(samples, QStringLiteral("zgraphics drawing paths"), fileName);
    for (const Page &page : pages) {
        const QString pageFile = base + page.suffix + QStringLiteral(".png");
        written = written && renderGrid(page.samples(), page.title, pageFile);
        pictures << pageFile;
    }
    if (!written) {
        std::fprintf(stderr, "zgtool: cannot write %s\n", qPrintable(fileName));
        return 1;
    }
    for (const QString &picture : qAsConst(pictures))
        std::fprintf(stdout, "# picture: %s\n", qPrintable(picture));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    // Text needs a GUI application; the offscreen platform needs no display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QByteArray("/tmp/zgtool-runtime-") + QByteArray::number(getuid()));
    QGuiApplication app(argc, argv);

    QStringList args = app.arguments().mid(1);
    QString command = args.isEmpty() ? QStringLiteral("samples") : args.takeFirst();
    if (command == QLatin1String("--version")) {
        std::printf("zgtool %s\n", ZGRAPHICS_VERSION_STR);
        return 0;
    }
    if (command == QLatin1String("help") && !args.isEmpty()) {
        command = args.takeFirst(); // help COMMAND is COMMAND --help
        args = QStringList{QStringLiteral("--help")};
    }
    if (command == QLatin1String("--help") || command == QLatin1String("-h")
            || command == QLatin1String("help")) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (command == QLatin1String("samples"))
        return runSamples(args);
    if (command == QLatin1String("measure"))
        return runMeasure(args);
    if (command == QLatin1String("reverse"))
        return runReverse(args);
    if (command == QLatin1String("shorten"))
        return runShorten(args);
    if (command == QLatin1String("convert"))
        return runConvert(args);
    if (command == QLatin1String("crossings"))
        return runIntersect(args);
    if (command == QLatin1String("unite"))
        return runUnite(args);
    if (command == QLatin1String("intersect"))
        return runBooleanIntersect(args);
    if (command == QLatin1String("subtract"))
        return runSubtract(args);
    if (command == QLatin1String("exclude"))
        return runExclude(args);
    if (command == QLatin1String("divide"))
        return runDivide(args);
    if (command == QLatin1String("crosspoints"))
        return runCrossPoints(args);
    if (command == QLatin1String("evenodd"))
        return runEvenOdd(args);
    if (command == QLatin1String("self"))
        return runSelf(args);
    if (command == QLatin1String("bounds"))
        return runBounds(args);
    if (command == QLatin1String("round"))
        return runRound(args);
    if (command == QLatin1String("parallel"))
        return runParallel(args);
    if (command == QLatin1String("wave"))
        return runWave(args);
    if (command == QLatin1String("handdrawn"))
        return runHandDrawn(args);
    if (command == QLatin1String("noise"))
        return runNoise(args);
    if (command == QLatin1String("fit"))
        return runFit(args);
    if (command == QLatin1String("bspline"))
        return runBspline(args);
    if (command == QLatin1String("contains"))
        return runContains(args);
    if (command == QLatin1String("smooth"))
        return runSmooth(args);
    if (command == QLatin1String("knots"))
        return runKnots(args);
    if (command == QLatin1String("thick"))
        return runThick(args);
    if (command == QLatin1String("flatten"))
        return runFlatten(args);
    if (command == QLatin1String("simplify"))
        return runSimplify(args);
    if (command == QLatin1String("step"))
        return runStep(args);
    return usageError(QStringLiteral("unknown command '%1'").arg(command));
}
