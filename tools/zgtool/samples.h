// Built-in sample shapes of zgtool.
#ifndef ZGTOOL_SAMPLES_H
#define ZGTOOL_SAMPLES_H

#include <zgraphics/drawing.h>

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <QtGui/QImage>

#include <cstdio>

struct Sample
{
    Sample() = default;
    Sample(const QString &label, const ZDPath &path, const QVector<QPointF> &marks = {})
        : label(label), path(path), marks(marks) {}

    QString label;
    ZDPath path;
    QVector<QPointF> marks; // points to mark on the drawing, e.g. measured places
    QVector<QRectF> boxes;  // rectangles to draw, e.g. bounds
    ZDPath source;          // a path drawn thin and grey under the result, if any
    QImage image;           // a picture shown instead of a path, if not null
    bool showPoints = true; // mark the element points
};

// Rectangles, polygons, the continuation and closing rules, arcs and ellipses.
QVector<Sample> buildingSamples();

// Intersection cases: crossing cubics, tangent curves, overlapping lines, a
// self-looping cubic, each with its crossings marked and its bounds drawn.
QVector<Sample> intersectionSamples();

// The line-shape effects: rounded polyline and connector, parallel outlines
// at several distances, each wave kind, a hand-drawn line, a noise image.
QVector<Sample> effectSamples();

// Shapes and the page cell shared by the effect pages: a zigzag polyline, a
// wavy cubic, and a result drawn over its source in grey without points.
ZDPath polyline();
ZDPath curvedLine();
Sample effect(const QString &label, const ZDPath &source, const ZDPath &result);

// Spline fitting: curves fitted through a few points and through a noisy
// stroke, a B-spline cut into Beziers, degree elevation.
QVector<Sample> fittingSamples();
// Boolean operators: six operand pairs, each with the result of unite,
// intersect, subtract and exclude filled over both operands in grey.
QVector<Sample> booleanSamples();
// A square with a hole, a figure eight, an open contour, a contour with
// horizontal edges and a star, over a grid of points coloured by winding.
QVector<Sample> windingSamples();
// Smoothing types on one polyline and a closed loop, the knot path modes, and
// tapered strokes (widening, narrowing to a point, constant) on a straight
// line, a curve and a zigzag.
QVector<Sample> smoothingSamples();
// A curve flattened at three flatnesses, a freehand stroke and its
// simplification at two tolerances, and a stepped cubic with its points.
QVector<Sample> flattenSamples();

// The crossings of path with other (or with itself if other is null), as
// (this-side location, partner) point pairs' first points; prints each
// location to out if out is not null.
QVector<QPointF> findCrossings(const ZDPath &path, const ZDPath *other, FILE *out);

#endif
