// Option reading and output shared by the zgtool sub-commands.
#ifndef ZGTOOL_COMMAND_OPTIONS_H
#define ZGTOOL_COMMAND_OPTIONS_H

#include "command_line.h"
#include "samples.h"

#include <zgraphics/drawing.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

// The options every path command shares, and the positional path argument.
struct CommonOptions
{
    QString pathData;
    QString pngFile;
    QString svgFile;
    QString outFile;
    bool withOperands = false;
};

// The shared options of a parsed command line and its first argument.
CommonOptions commonOptions(const CommandLine &line);
// "zgtool: message" on standard error.
void printError(const QString &message);
// The path data an argument stands for: the text of standard input for -,
// the content of a file (path data, or the shapes of an SVG document as
// path data, with the elements not read listed on standard error; FILE#ID
// reads only the element of that id), else the argument itself. False with a one-line message.
bool readPathData(const QString &argument, QString &data);
// Parses the path argument (see readPathData); false with a message.
bool readPath(const CommonOptions &common, ZDPath &path);
// Draws the samples into the --png and --svg files that were asked for.
bool writePictures(const CommonOptions &common, const QVector<Sample> &samples);
// Writes the results into the --out document if one was asked for, over the
// operands with --with-operands.
bool writeResult(const CommonOptions &common, const QVector<ZDPath> &results,
                 const QVector<ZDPath> &operands);
// The message for an unknown option; returns the usage exit code 2.
int unknownOption(const QString &command, const QString &option);
// "x y" with round-trip precision.
QString pointText(const zgPoint &p);

#endif
