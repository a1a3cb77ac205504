// The crossing of a looping cubic with itself.
#include <zgraphics/model.h>

#include <cmath>

QList<zgCurveLocation *> zgCurve::getSelfIntersection(QVector<double> v1, zgCurve *c1,
                                                      QList<zgCurveLocation *> &locations,
                                                      opParam &param)
{
    if (v1.size() < 8)
        return locations;
    const double x0 = v1.at(0), y0 = v1.at(1), x1 = v1.at(2), y1 = v1.at(3);
    const double x2 = v1.at(4), y2 = v1.at(5), x3 = v1.at(6), y3 = v1.at(7);

    // Control points on one side of the chord, turning the same way: no loop.
    const zgLine chord(x0, y0, x3, y3, false);
    const int side1 = chord.getSide(zgPoint(x1, y1), true);
    const int side2 = chord.getSide(zgPoint(x2, y2), true);
    const double edgeSum = (y1 - y3) * (x0 - x2) + (x1 - x3) * (y2 - y0);
    if (side1 == side2 && side1 * edgeSum > 0.0)
        return locations;

    // A loop exists only where the discriminant of the curve's inflections is
    // negative.
    const double ax = x3 - 3.0 * x2 + 3.0 * x1 - x0;
    const double bx = x2 - 2.0 * x1 + x0;
    const double cx = x1 - x0;
    const double ay = y3 - 3.0 * y2 + 3.0 * y1 - y0;
    const double by = y2 - 2.0 * y1 + y0;
    const double cy = y1 - y0;
    const double ac = ay * cx - cy * ax;
    const double discriminant = ac * ac - 4.0 * (ay * bx - by * ax) * (by * cx - cy * bx);
    if (!(discriminant < 0.0))
        return locations;

    // The extrema of the squared speed; the one of highest curvature lies on
    // the loop.
    QVector<double> roots;
    const int count = zgNumeric::solveCubic(ax * ax + ay * ay, 3.0 * (ax * bx + ay * by),
                                            2.0 * (bx * bx + by * by) + ax * cx + ay * cy,
                                            bx * cx + by * cy, roots, 0.0, 1.0);
    if (count <= 0)
        return locations;
    // The curvature is taken on the curve as it stands, not on the values given.
    const QVector<double> current = c1 ? c1->getValues(nullptr) : v1;
    double splitTime = 0.5;
    double highest = 0.0;
    for (int i = 0; i < count && i < roots.size(); ++i) {
        const double curvature = std::fabs(getCurvature(current, roots.at(i)));
        if (curvature > highest) {
            highest = curvature;
            splitTime = roots.at(i);
        }
    }

    // The two halves meet as joined curves; their times are mapped back.
    const QVector<QVector<double>> parts = subdivide(v1, splitTime);
    param.joinedAtEnd = true;
    param.splitRemap = true;
    param.splitTime = splitTime;
    getIntersections(parts.at(0), parts.at(1), c1, c1, locations, param);
    return locations;
}
