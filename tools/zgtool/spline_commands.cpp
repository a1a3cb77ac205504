// zgtool fit and bspline: cubic fitting through points and the conversion of
// B-splines into Bezier pieces.
#include "bezier_path.h"
#include "commands.h"
#include "render.h"
#include "svgpath.h"

#include <zgraphics/drawing.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTextStream>

#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace {

struct SplineOptions
{
    QString data;   // the positional argument
    QString knots;  // --knots
    double degree = 3.0;
    QString pngFile;
    QString svgFile;
};

void printSplineError(const QString &message)
{
    std::fprintf(stderr, "zgtool: %s\n", qPrintable(message));
}

// Reads the options of fit (withKnots false) or bspline; 0, or the exit code.
int readOptions(const QString &command, const QStringList &args, bool withKnots, SplineOptions &options)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString &arg = args.at(i);
        const bool takesValue = arg == QLatin1String("--png") || arg == QLatin1String("--svg")
                || (withKnots && (arg == QLatin1String("--knots") || arg == QLatin1String("--degree")));
        if (takesValue) {
            if (i + 1 >= args.size()) {
                printSplineError(QStringLiteral("option %1 needs a value").arg(arg));
                return 2;
            }
            const QString value = args.at(++i);
            if (arg == QLatin1String("--png")) {
                options.pngFile = value;
            } else if (arg == QLatin1String("--svg")) {
                options.svgFile = value;
            } else if (arg == QLatin1String("--knots")) {
                options.knots = value;
            } else {
                bool ok = false;
                options.degree = value.toDouble(&ok);
                if (!ok || options.degree < 1 || options.degree > 20 || options.degree != std::floor(options.degree)) {
                    printSplineError(QStringLiteral("option --degree: '%1' is not a whole number from 1 to 20").arg(value));
                    return 2;
                }
            }
        } else if (!arg.startsWith(QLatin1String("--")) && options.data.isNull()) {
            options.data = arg;
        } else {
            printSplineError(QStringLiteral("%1: unknown option '%2'").arg(command, arg));
            return 2;
        }
    }
    if (options.data.isNull()) {
        printSplineError(QStringLiteral("%1: no points given").arg(command));
        return 1;
    }
    if (options.data == QLatin1String("-"))
        options.data = QTextStream(stdin).readAll();
    return 0;
}

// Numbers separated by commas or white space; false with a message on
// anything else or on a number that is not finite.
bool parseNumbers(const QString &text, QVector<double> &numbers, QString &error)
{
    const QStringList parts = text.split(QRegularExpression(QStringLiteral("[\\s,]+")), Qt::SkipEmptyParts);
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = false;
        const double value = parts.at(i).toDouble(&ok);
        if (!ok || !std::isfinite(value)) {
            error = QStringLiteral("number %1 ('%2') is not a finite number").arg(i + 1).arg(parts.at(i));
            return false;
        }
        numbers << value;
    }
    return true;
}

// "x,y x,y ..." or SVG path data, whose vertices are taken (the ends of
// lines and curves, not their control points).
bool parsePoints(const QString &text, QVector<QPointF> &points, QString &error)
{
    const bool plainList = !text.contains(QRegularExpression(QStringLiteral("[A-DF-Za-df-z]")));
    if (plainList) {
        QVector<double> numbers;
        if (!parseNumbers(text, numbers, error))
            return false;
        if (numbers.size() % 2 != 0) {
            error = QStringLiteral("%1 numbers do not make x,y pairs").arg(numbers.size());
            return false;
        }
        for (int i = 0; i + 1 < numbers.size(); i += 2)
            points << QPointF(numbers[i], numbers[i + 1]);
        return true;
    }
    ZDPath path;
    if (!parseSvgPath(text, path, error))
        return false;
    for (int i = 0; i < path.count(); ++i) {
        const ZDPathElement &e = path.elements.at(i);
        const bool curveEnd = e.type == ZDCurveToDataElement
                && (i + 1 == path.count() || path.elements.at(i + 1).type != ZDCurveToDataElement);
        if (e.type == ZDMoveToElement || e.type == ZDLineToElement || curveEnd)
            points << e.toPoint();
    }
    return true;
}

QString pointText(const QPointF &p)
{
    return QStringLiteral("%1 %2").arg(p.x(), 0, 'g', 17).arg(p.y(), 0, 'g', 17);
}

// Prints the degree, one line per piece and the pieces as SVG path data.
void printBeziers(const QVector<QPointF> &points, int degree, const ZDPath &path)
{
    std::printf("degree %d\n", degree);
    const int perPiece = degree + 1;
    std::printf("pieces %d\n", perPiece > 0 ? points.size() / perPiece : 0);
    for (int first = 0; perPiece > 0 && first + perPiece <= points.size(); first += perPiece) {
        QStringList coordinates;
        for (int i = first; i < first + perPiece; ++i)
            coordinates << pointText(points[i]);
        std::printf("bezier %d %s\n", first / perPiece, qPrintable(coordinates.join(QLatin1Char(' '))));
    }
    if (path.isEmpty())
        std::printf("# no SVG path for degree %d\n", degree);
    else
        std::printf("%s\n", qPrintable(toSvgPath(path)));
}

int writeSplinePictures(const SplineOptions &options, const QVector<Sample> &samples)
{
    if (!options.pngFile.isEmpty() && !renderGrid(samples, QStringLiteral("zgtool"), options.pngFile)) {
        printSplineError(QStringLiteral("cannot write %1").arg(options.pngFile));
        return 1;
    }
    if (!options.svgFile.isEmpty() && !renderSvg(samples, options.svgFile)) {
        printSplineError(QStringLiteral("cannot write %1").arg(options.svgFile));
        return 1;
    }
    return 0;
}

} // namespace

int runFit(const QStringList &args)
{
    SplineOptions options;
    if (const int code = readOptions(QStringLiteral("fit"), args, false, options))
        return code;
    QVector<QPointF> points;
    QString error;
    if (!parsePoints(options.data, points, error)) {
        printSplineError(QStringLiteral("fit: %1").arg(error));
        return 1;
    }
    if (points.size() < 3) {
        printSplineError(QStringLiteral("fit: needs 3 points at least, got %1").arg(points.size()));
        return 1;
    }
    int degree = 0;
    QVector<QPointF> beziers;
    try {
        beziers = ZDPath::bezierFitting(points, degree);
    } catch (const std::runtime_error &e) {
        printSplineError(QStringLiteral("fit: %1").arg(QString::fromUtf8(e.what())));
        return 1;
    }
    const ZDPath curve = bezierPath(beziers, degree);
    printBeziers(beziers, degree, curve);
    Sample sample(QStringLiteral("fit through %1 points").arg(points.size()), curve, points);
    sample.source = polylinePath(points);
    sample.showPoints = false;
    return writeSplinePictures(options, {sample});
}

int runBspline(const QStringList &args)
{
    SplineOptions options;
    if (const int code = readOptions(QStringLiteral("bspline"), args, true, options))
        return code;
    QVector<QPointF> control;
    QVector<double> knots;
    QString error;
    if (!parsePoints(options.data, control, error) || !parseNumbers(options.knots, knots, error)) {
        printSplineError(QStringLiteral("bspline: %1").arg(error));
        return 1;
    }
    int degree = int(options.degree);
    if (options.knots.isNull()) {
        // Clamped, one unit between inner knots, with the count of a cubic
        // (the count the conversion asks for).
        for (int i = 0; i < control.size() + 4; ++i)
            knots << qBound(0, i - degree, control.size() - degree);
    }
    QVector<QPointF> beziers;
    try {
        beziers = ZDPath::bsplineToBezier(control, knots, degree);
    } catch (const std::runtime_error &e) {
        printSplineError(QStringLiteral("bspline: %1").arg(QString::fromUtf8(e.what())));
        return 1;
    }
    if (beziers.isEmpty()) {
        printSplineError(QStringLiteral("bspline: more than 50000 knots"));
        return 1;
    }
    const ZDPath pieces = bezierPath(beziers, degree);
    printBeziers(beziers, degree, pieces);
    QVector<QPointF> joints;
    for (int i = 0; i < beziers.size(); i += degree + 1)
        joints << beziers[i];
    joints << beziers.last();
    Sample sample(QStringLiteral("B-spline as %1 Beziers").arg(beziers.size() / (degree + 1)), pieces, joints);
    sample.source = polylinePath(control);
    return writeSplinePictures(options, {sample});
}
