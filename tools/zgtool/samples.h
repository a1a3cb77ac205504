// Built-in sample shapes of zgtool.
#ifndef ZGTOOL_SAMPLES_H
#define ZGTOOL_SAMPLES_H

#include <zgraphics/drawing.h>

#include <QtCore/QString>
#include <QtCore/QVector>

struct Sample
{
    QString label;
    ZDPath path;
};

// Rectangles, polygons, the continuation and closing rules, arcs and ellipses.
QVector<Sample> buildingSamples();

#endif
