// Drawing paths from flat lists of Bezier control points.
#ifndef ZGTOOL_BEZIER_PATH_H
#define ZGTOOL_BEZIER_PATH_H

#include <zgraphics/drawing.h>

#include <QtCore/QPointF>
#include <QtCore/QVector>

// One subpath of cubics through the pieces of points, degree + 1 points per
// piece. Lines and quadratics are raised to cubics by degree elevation; a
// degree above 3 gives an empty path.
ZDPath bezierPath(const QVector<QPointF> &points, int degree);

// A move and lines through points.
ZDPath polylinePath(const QVector<QPointF> &points);

#endif
