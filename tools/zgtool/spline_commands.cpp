// zgtool fit and bspline: cubic fitting through points and the conversion of
// B-splines into Bezier pieces.
#include "bezier_path.h"
#include "command_options.h"
#include "commands.h"
#include "render.h"
#include "svgpath.h"

#include <zgraphics/drawing.h>

#include <QtCore/QRegularExpression>

#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace {

// The command line of fit (withKnots false) or bspline.
CommandLine splineCommand(const QString &command, const QString &summary, bool withKnots)
{
    CommandLine line(command, summary);
    line.addArgument(QStringLiteral("POINTS"),
                     QStringLiteral("\"x,y x,y ...\", or path data (given, in a file, in an SVG "
                                    "document, or - for standard input) whose vertices are taken"));
    if (withKnots) {
        line.addOption(QStringLiteral("knots"), QStringLiteral("K"),
                       QStringLiteral("knot vector, numbers separated by spaces or commas "
                                      "(default clamped and uniform)"));
        line.addOption(QStringLiteral("degree"), QStringLiteral("D"),
                       QStringLiteral("degree of the B-spline, a whole number from 1 to 20"),
                       QStringLiteral("3"));
    }
    line.addPictureOptions();
    line.addResultOptions();
    return line;
}

// Parses the command line and reads the points' text. False when the
// command is to stop, with exitCode set: after the help, a usage error or
// unreadable input.
bool readOptions(CommandLine &line, const QStringList &args, QString &data, int &exitCode)
{
    if (!line.parse(args)) {
        exitCode = line.exitCode();
        return false;
    }
    exitCode = 1;
    if (line.argument(0).isNull()) {
        printError(QStringLiteral("%1: no points given").arg(line.command()));
        return false;
    }
    return readPathData(line.argument(0), data);
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

} // namespace

int runFit(const QStringList &args)
{
    CommandLine line = splineCommand(QStringLiteral("fit"),
            QStringLiteral("The cubic through every point (bezierFitting): prints the Bezier "
                           "control points and the curve as SVG path data."), false);
    QString data;
    int code = 0;
    if (!readOptions(line, args, data, code))
        return code;
    QVector<QPointF> points;
    QString error;
    if (!parsePoints(data, points, error)) {
        printError(QStringLiteral("fit: %1").arg(error));
        return 1;
    }
    if (points.size() < 3) {
        printError(QStringLiteral("fit: needs 3 points at least, got %1").arg(points.size()));
        return 1;
    }
    int degree = 0;
    QVector<QPointF> beziers;
    try {
        beziers = ZDPath::bezierFitting(points, degree);
    } catch (const std::runtime_error &e) {
        printError(QStringLiteral("fit: %1").arg(QString::fromUtf8(e.what())));
        return 1;
    }
    const ZDPath curve = bezierPath(beziers, degree);
    printBeziers(beziers, degree, curve);
    Sample sample(QStringLiteral("fit through %1 points").arg(points.size()), curve, points);
    sample.source = polylinePath(points);
    sample.showPoints = false;
    const CommonOptions common = commonOptions(line);
    return writePictures(common, {sample}) && writeResult(common, {curve}, {sample.source}) ? 0 : 1;
}

int runBspline(const QStringList &args)
{
    CommandLine line = splineCommand(QStringLiteral("bspline"),
            QStringLiteral("The B-spline of the control points POINTS on the knots K as Bezier "
                           "pieces."), true);
    QString data;
    int code = 0;
    if (!readOptions(line, args, data, code))
        return code;
    double degreeValue = 3.0;
    if (!line.number(QStringLiteral("degree"), degreeValue))
        return line.exitCode();
    if (degreeValue < 1 || degreeValue > 20 || degreeValue != std::floor(degreeValue)) {
        printError(QStringLiteral("option --degree: '%1' is not a whole number from 1 to 20")
                           .arg(line.value(QStringLiteral("degree"))));
        return 2;
    }
    const QString knotText = line.value(QStringLiteral("knots"));
    QVector<QPointF> control;
    QVector<double> knots;
    QString error;
    if (!parsePoints(data, control, error) || !parseNumbers(knotText, knots, error)) {
        printError(QStringLiteral("bspline: %1").arg(error));
        return 1;
    }
    int degree = int(degreeValue);
    if (!line.isSet(QStringLiteral("knots"))) {
        // Clamped, one unit between inner knots, with the count of a cubic
        // (the count the conversion asks for).
        for (int i = 0; i < control.size() + 4; ++i)
            knots << qBound(0, i - degree, control.size() - degree);
    }
    QVector<QPointF> beziers;
    try {
        beziers = ZDPath::bsplineToBezier(control, knots, degree);
    } catch (const std::runtime_error &e) {
        printError(QStringLiteral("bspline: %1").arg(QString::fromUtf8(e.what())));
        return 1;
    }
    if (beziers.isEmpty()) {
        printError(QStringLiteral("bspline: more than 50000 knots"));
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
    const CommonOptions common = commonOptions(line);
    return writePictures(common, {sample}) && writeResult(common, {pieces}, {sample.source}) ? 0 : 1;
}
