// Internal: whether the control polygons of two curves lie apart by more
// than every tolerance of the pair finder, so that the finders that match
// points (overlaps, lines, curve and line, end points) cannot report them.
#ifndef ZGRAPHICS_INTERSECT_SEPARATION_H
#define ZGRAPHICS_INTERSECT_SEPARATION_H

#include <QtCore/QVector>

// The control polygon of one curve, measured once for all the pairs it
// takes part in.
class zgCurveHull
{
public:
    explicit zgCurveHull(const QVector<double> &values);

    // Whether some axis (x, y, or the normal of a chord or of a leg of
    // either polygon) has the two polygons' projections more than a margin
    // apart. The margin, 1e-06 plus 1e-10 of the largest coordinate, is far
    // above the point tolerance 2e-07 and the rounding of the projections
    // and of the curve points that the finders compute. False for NaN,
    // infinite or huge coordinates, where rounding has no bound.
    bool apartFrom(const zgCurveHull &other) const;

    // Whether at least two of the four end points of the two curves lie
    // within the margin of apartFrom of the other curve's polygon. Where
    // fewer do, getOverlaps finds fewer than two ends of one curve on the
    // other, and so no overlap.
    bool endsMayLieOn(const zgCurveHull &other) const;

    // zgCurve::isStraight of the values.
    bool straight() const { return m_straight; }

private:
    // The chord and the three legs, as unit normals; a leg of length 0 or
    // with a NaN coordinate is no axis.
    static const int kAxes = 4;

    bool apartAlongOwnAxes(const zgCurveHull &other, double margin) const;
    bool pointApart(double x, double y, double margin) const;
    // The end point lies within 1e-12 of the start.
    bool closesOnItself() const;
    // 1e-06 plus 1e-10 of the largest coordinate of both; NaN where a
    // coordinate is NaN, infinite or beyond 1e100.
    double marginWith(const zgCurveHull &other) const;

    double m_x[4];
    double m_y[4];
    double m_normalX[kAxes];
    double m_normalY[kAxes];
    double m_low[kAxes];
    double m_high[kAxes];
    int m_axisCount;
    double m_minX, m_maxX, m_minY, m_maxY;
    double m_scale;  // largest absolute coordinate; NaN if any is NaN
    bool m_straight;
};

#endif // ZGRAPHICS_INTERSECT_SEPARATION_H
