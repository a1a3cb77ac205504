// Inner steps of ZDPath::bezierFitting, exported so that they can be checked
// on their own.
#ifndef ZGRAPHICS_SPLINE_FITTING_H
#define ZGRAPHICS_SPLINE_FITTING_H

#include <zgraphics/primitives.h>

#include <QtCore/QPointF>
#include <QtCore/QVector>

#include <vector>

// The four cubic B-spline basis functions that are non-zero on the knot
// span starting at knots[span] (span is truncated to an integer), evaluated
// at t by the Cox-de Boor recursion: out[j] is N(span - 3 + j, 3)(t). A term
// whose knot difference is exactly 0.0 counts as 0.0. knots must hold
// span + 5 values at least. At t == knots[span] out[3] is 0.0.
ZG_EXPORT void basisFunctions(double t, double span, const QVector<double> &knots, std::vector<double> &out);

// Tangents at a, b and c of the polyline a, b, c. The tangent at b blends the
// unit chords, the nearer neighbour weighing more; the tangents at a and c
// are it mirrored about their chords. Coincident neighbours give NaN
// coordinates.
ZG_EXPORT void threePointTangents(const QPointF &a, const QPointF &b, const QPointF &c, QPointF &tangentA,
                                  QPointF &tangentB, QPointF &tangentC);

// The knots of the fit through points: their cumulative chord lengths from
// 0.0, the first and the last standing four times (points.size() + 6 values).
ZG_EXPORT QVector<double> fittingKnots(const QVector<QPointF> &points);

// The control points (points.size() + 2) of the clamped cubic on knots that
// passes through every point and whose end derivatives follow the
// three-point tangents. points needs 3 values at least.
//
// By one dense LU factorisation with partial pivoting of the whole system,
// rows in their documented order.
ZG_EXPORT QVector<QPointF> fittingControlPointsDense(const QVector<QPointF> &points, const QVector<double> &knots);
// By elimination with partial pivoting on the same system with its rows
// reordered into tridiagonal form, in linear time. Empty when a pivot is
// exactly zero.
ZG_EXPORT QVector<QPointF> fittingControlPointsBanded(const QVector<QPointF> &points, const QVector<double> &knots);

#endif // ZGRAPHICS_SPLINE_FITTING_H
