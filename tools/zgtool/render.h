// Rendering of drawing paths for zgtool.
#ifndef ZGTOOL_RENDER_H
#define ZGTOOL_RENDER_H

#include "samples.h"

#include <QtCore/QString>
#include <QtGui/QPainterPath>

#include <cstdio>

// Draws each sample in a labelled cell of a grid and saves the picture as PNG.
// Returns false if the file could not be written.
bool renderGrid(const QVector<Sample> &samples, const QString &title, const QString &fileName);

// Writes the samples side by side as an SVG document. Returns false if the
// file could not be written.
bool renderSvg(const QVector<Sample> &samples, const QString &fileName);

// Prints a sample's element list, one element per line.
void printElements(const Sample &sample, FILE *out);

#endif
