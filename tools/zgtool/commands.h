// zgtool sub-commands on paths given as SVG path data, files or SVG
// documents. Each takes the arguments after its name and returns the
// process exit code: 0 on success, 1 for bad data, 2 for bad usage.
#ifndef ZGTOOL_COMMANDS_H
#define ZGTOOL_COMMANDS_H

#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <functional>

class CommandLine;
class ZDPath;

// The command line of an effect: PATH, the picture options, --out and
// --with-operands. The command adds its own options and parses it.
CommandLine effectCommand(const QString &command, const QString &summary);
// Reads the path of a parsed effect command line; the effect then turns it
// into the result, which is printed, drawn beside the input and written to
// the --out document.
int runEffect(CommandLine &line, const std::function<ZDPath(ZDPath &)> &effect);

int runMeasure(const QStringList &args);
int runReverse(const QStringList &args);
int runShorten(const QStringList &args);
int runConvert(const QStringList &args);
int runIntersect(const QStringList &args);
int runSelf(const QStringList &args);
int runBounds(const QStringList &args);
int runRound(const QStringList &args);
int runParallel(const QStringList &args);
int runWave(const QStringList &args);
int runHandDrawn(const QStringList &args);
int runNoise(const QStringList &args);
int runFit(const QStringList &args);
int runBspline(const QStringList &args);
// Boolean operators of two paths, their crossing points, the even-odd copy.
int runUnite(const QStringList &args);
int runBooleanIntersect(const QStringList &args);
int runSubtract(const QStringList &args);
int runExclude(const QStringList &args);
int runDivide(const QStringList &args);
int runCrossPoints(const QStringList &args);
int runEvenOdd(const QStringList &args);
// Winding, containment and hit tests of points.
int runContains(const QStringList &args);
// Smoothing, knot paths and thick outline.
int runSmooth(const QStringList &args);
int runKnots(const QStringList &args);
int runThick(const QStringList &args);
// Flattening, simplification and the curve stepper.
int runFlatten(const QStringList &args);
int runSimplify(const QStringList &args);
int runStep(const QStringList &args);

#endif
