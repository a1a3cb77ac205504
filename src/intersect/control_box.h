// Internal: the box of a curve that the pair test of the intersection code
// uses, and that test itself, shared by the dispatcher and the path sweep so
// that the sweep never drops a pair the test would keep.
#ifndef ZGRAPHICS_INTERSECT_CONTROL_BOX_H
#define ZGRAPHICS_INTERSECT_CONTROL_BOX_H

#include <QtCore/QVector>

#include <algorithm>

// Box of a curve built from its end values and the three-quarter points of
// its control values: tighter than the control polygon, and still holding
// the curve. A NaN control value may or may not reach the box, as min and
// max pass it over unless it comes first.
struct zgControlBox
{
    double minX, maxX, minY, maxY;

    explicit zgControlBox(const QVector<double> &v)
    {
        range(v, 0, minX, maxX);
        range(v, 1, minY, maxY);
    }

    // Whether the box of other touches this one on both axes, with the
    // geometric tolerance 2e-07 as margin. Strict comparisons: a NaN edge
    // touches nothing.
    bool touchedBy(const zgControlBox &other) const
    {
        return other.minX < maxX + 2e-07 && other.maxX > minX - 2e-07
                && other.minY < maxY + 2e-07 && other.maxY > minY - 2e-07;
    }

private:
    static void range(const QVector<double> &v, int coord, double &min, double &max)
    {
        const double p0 = v.at(coord);
        const double p1 = (3.0 * v.at(coord + 2) + p0) / 4.0;
        const double p3 = v.at(coord + 6);
        const double p2 = (3.0 * v.at(coord + 4) + p3) / 4.0;
        min = std::min({ p0, p1, p2, p3 });
        max = std::max({ p0, p1, p2, p3 });
    }
};

#endif // ZGRAPHICS_INTERSECT_CONTROL_BOX_H
