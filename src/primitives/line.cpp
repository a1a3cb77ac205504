// zgLine: a line stored as a start point and a vector.
#include <zgraphics/primitives.h>

#include <QtCore/QtNumeric>

#include <cmath>

namespace {

// The two parameters of the crossing of p1 + u1*v1 with p2 + u2*v2.
struct LineCrossing
{
    bool parallel;
    double u1; // on the first line
    double u2; // on the second line
};

LineCrossing crossLines(double p1x, double p1y, double v1x, double v1y,
                        double p2x, double p2y, double v2x, double v2y)
{
    const double cross = v1x * v2y - v1y * v2x;
    // 1e-12: vectors whose cross product is this small are parallel.
    if (-1e-12 <= cross && cross <= 1e-12)
        return {true, 0.0, 0.0};
    const double dx = p1x - p2x;
    const double dy = p1y - p2y;
    return {false, (dy * v2x - dx * v2y) / cross, (dy * v1x - dx * v1y) / cross};
}

bool isInRange(double u)
{
    // 1e-12 either side of [0, 1]: a crossing just past an end still counts.
    return u > -1e-12 && u < 1.000000000001;
}

double clampUnit(double u)
{
    return u < 0.0 ? 0.0 : (u > 1.0 ? 1.0 : u);
}

zgPoint pointAt(double px, double py, double vx, double vy, double u)
{
    return zgPoint(px + u * vx, py + u * vy);
}

zgPoint noPoint()
{
    return zgPoint(qQNaN(), qQNaN());
}

int signOf(double value)
{
    return (value > 0.0) - (value < 0.0);
}

} // namespace

zgLine::zgLine(const zgPoint &p1, const zgPoint &p2, bool asVector)
    : point(p1), vector(asVector ? p2 : p2.subtract(p1))
{
}

zgLine::zgLine(double x1, double y1, double x2, double y2, bool asVector)
    : point(x1, y1), vector(asVector ? x2 : x2 - x1, asVector ? y2 : y2 - y1)
{
}

double zgLine::getLength() const
{
    return vector.getLength();
}

zgLine zgLine::getColline(double distance) const
{
    const double length = getLength();
    const zgPoint unit = length > 0.0 ? vector.divide(length) : zgPoint();
    const zgPoint offset(unit.y * distance, -unit.x * distance);
    const zgPoint start = point.add(offset);
    const zgPoint end = point.add(vector).add(offset);
    return zgLine(start, end, false);
}

int zgLine::getSide(const zgPoint &p, bool isInfinite) const
{
    return getSide(point.x, point.y, vector.x, vector.y, p.x, p.y, true, isInfinite);
}

int zgLine::getSide(double px, double py, double vx, double vy, double x, double y,
                    bool asVector, bool isInfinite)
{
    if (!asVector) {
        vx -= px;
        vy -= py;
    }
    const double dx = x - px;
    const double dy = y - py;
    const double cross = dx * vy - dy * vx;
    if (cross != 0.0 || isInfinite)
        return signOf(cross);
    // On the carrier line of a finite line: where along it? A zero-length
    // line gives NaN here, which compares neither way and yields 0.
    const double t = (dx * vx + dy * vy) / (vx * vx + vy * vy);
    if (t < 0.0)
        return -1;
    if (t > 1.0)
        return 1;
    return 0;
}

double zgLine::getSignedDistance(double px, double py, double vx, double vy,
                                 double x, double y, bool asVector)
{
    if (!asVector) {
        vx -= px;
        vy -= py;
    }
    if (vx == 0.0)
        return vy > 0.0 ? x - px : px - x;
    if (vy == 0.0)
        return vx >= 0.0 ? py - y : y - py;
    return ((x - px) * vy - (y - py) * vx) / std::sqrt(vx * vx + vy * vy);
}

double zgLine::getDistance(const zgPoint &p) const
{
    return std::fabs(getSignedDistance(point.x, point.y, vector.x, vector.y, p.x, p.y, true));
}

bool zgLine::isCollinear(const zgLine &line) const
{
    return vector.isCollinear(line.vector);
}

bool zgLine::isOrthogonal(const zgLine &line) const
{
    return vector.isOrthogonal(line.vector);
}

zgPoint zgLine::intersect(double p1x, double p1y, double v1x, double v1y,
                          double p2x, double p2y, double v2x, double v2y,
                          bool asVector, bool isInfinite)
{
    double u1 = 0.0;
    double u2 = 0.0;
    return intersect1(u1, u2, p1x, p1y, v1x, v1y, p2x, p2y, v2x, v2y, asVector, isInfinite);
}

zgPoint zgLine::intersect1(double &u1, double &u2,
                           double p1x, double p1y, double v1x, double v1y,
                           double p2x, double p2y, double v2x, double v2y,
                           bool asVector, bool isInfinite)
{
    if (!asVector) {
        v1x -= p1x;
        v1y -= p1y;
        v2x -= p2x;
        v2y -= p2y;
    }
    const LineCrossing crossing = crossLines(p1x, p1y, v1x, v1y, p2x, p2y, v2x, v2y);
    if (crossing.parallel)
        return noPoint();
    u1 = crossing.u1;
    u2 = crossing.u2;
    if (isInfinite)
        return pointAt(p1x, p1y, v1x, v1y, u1);
    if (!isInRange(u1) || !isInRange(u2))
        return noPoint();
    u1 = clampUnit(u1);
    return pointAt(p1x, p1y, v1x, v1y, u1);
}

zgPoint zgLine::intersect2(double p1x, double p1y, double v1x, double v1y,
                           double p2x, double p2y, double v2x, double v2y,
                           bool asVector, bool isInfinite1, bool isInfinite2)
{
    if (!asVector) {
        v1x -= p1x;
        v1y -= p1y;
        v2x -= p2x;
        v2y -= p2y;
    }
    const LineCrossing crossing = crossLines(p1x, p1y, v1x, v1y, p2x, p2y, v2x, v2y);
    if (crossing.parallel)
        return noPoint();
    if (isInfinite1 && isInfinite2)
        return pointAt(p1x, p1y, v1x, v1y, crossing.u1);
    if (isInfinite1) {
        if (!isInRange(crossing.u2))
            return noPoint();
        return pointAt(p2x, p2y, v2x, v2y, clampUnit(crossing.u2));
    }
    if (!isInRange(crossing.u1))
        return noPoint();
    if (!isInfinite2 && !isInRange(crossing.u2))
        return noPoint();
    return pointAt(p1x, p1y, v1x, v1y, clampUnit(crossing.u1));
}

zgPoint zgLine::intersect(const zgLine &line, bool isInfinite) const
{
    return intersect(point.x, point.y, vector.x, vector.y, line.point.x, line.point.y,
                     line.vector.x, line.vector.y, true, isInfinite);
}

zgPoint zgLine::intersect1(double &u1, double &u2, const zgLine &line, bool isInfinite) const
{
    return intersect1(u1, u2, point.x, point.y, vector.x, vector.y, line.point.x, line.point.y,
                      line.vector.x, line.vector.y, true, isInfinite);
}

zgPoint zgLine::intersect2(const zgLine &line, bool isInfinite1, bool isInfinite2) const
{
    return intersect2(point.x, point.y, vector.x, vector.y, line.point.x, line.point.y,
                      line.vector.x, line.vector.y, true, isInfinite1, isInfinite2);
}
