// Built-in sample shapes of zgtool.
#ifndef ZGTOOL_SAMPLES_H
#define ZGTOOL_SAMPLES_H

#include <zgraphics/drawing.h>

#include <QtCore/QPointF>
#include <QtCore/QString>
#include <QtCore/QVector>

struct Sample
{
    QString label;
    ZDPath path;
    QVector<QPointF> marks; // points to mark on the drawing, e.g. measured places
};

// Rectangles, polygons, the continuation and closing rules, arcs and ellipses.
QVector<Sample> buildingSamples();

#endif
