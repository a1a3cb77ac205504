// Option reading and output shared by the zgtool sub-commands.
#ifndef ZGTOOL_COMMAND_OPTIONS_H
#define ZGTOOL_COMMAND_OPTIONS_H

#include "samples.h"

#include <zgraphics/drawing.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

// The options every command shares, and the positional path data.
struct CommonOptions
{
    QString pathData;
    QString pngFile;
    QString svgFile;
};

// "zgtool: message" on standard error.
void printError(const QString &message);
// Reads the value after the option at i (moving i onto it); false with a
// message if there is none.
bool takeValue(const QStringList &args, int &i, QString &value);
// The same for a finite number.
bool takeNumber(const QStringList &args, int &i, double &value);
// Handles --png, --svg and the positional path data; false for anything
// else. error tells that an option lacked its value.
bool takeCommon(const QStringList &args, int &i, CommonOptions &common, bool &error);
// Parses the path data (- reads standard input); false with a message.
bool readPath(const CommonOptions &common, ZDPath &path);
// Draws the samples into the --png and --svg files that were asked for.
bool writePictures(const CommonOptions &common, const QVector<Sample> &samples);
// The message for an unknown option; returns the usage exit code 2.
int unknownOption(const QString &command, const QString &option);
// "x y" with round-trip precision.
QString pointText(const zgPoint &p);

#endif
