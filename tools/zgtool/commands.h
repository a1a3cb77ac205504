// zgtool sub-commands on paths given as SVG path data. Each returns the
// process exit code: 0 on success, 1 for bad data, 2 for bad usage.
#ifndef ZGTOOL_COMMANDS_H
#define ZGTOOL_COMMANDS_H

#include <QtCore/QStringList>

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
// Flattening, simplification and the curve stepper.
int runFlatten(const QStringList &args);
int runSimplify(const QStringList &args);
int runStep(const QStringList &args);

#endif
