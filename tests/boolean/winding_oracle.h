// An independent winding oracle for the tracing tests: contours flattened by
// their own Bezier evaluation, winding numbers by signed ray crossings, and
// the winding that the engine gives a stretch of outline derived from the
// winding numbers just beside it.
#ifndef ZGRAPHICS_TESTS_BOOLEAN_WINDING_ORACLE_H
#define ZGRAPHICS_TESTS_BOOLEAN_WINDING_ORACLE_H

#include <zgraphics/model.h>

#include <QtCore/QVector>

#include <algorithm>
#include <cmath>
#include <limits>

namespace windingoracle {

typedef QVector<zgPoint> Polygon;

inline zgPoint bezier(const zgPoint &p0, const zgPoint &p1, const zgPoint &p2, const zgPoint &p3,
                      double t)
{
    const double u = 1.0 - t;
    const double a = u * u * u, b = 3.0 * u * u * t, c = 3.0 * u * t * t, d = t * t * t;
    return zgPoint(a * p0.x + b * p1.x + c * p2.x + d * p3.x,
                   a * p0.y + b * p1.y + c * p2.y + d * p3.y);
}

// The cubic from segment a to segment b at time t.
inline zgPoint pointBetween(const zgSegment *a, const zgSegment *b, double t)
{
    const zgPoint p0 = a->point;
    const zgPoint p1(a->point.x + a->handleOut.x, a->point.y + a->handleOut.y);
    const zgPoint p2(b->point.x + b->handleIn.x, b->point.y + b->handleIn.y);
    return bezier(p0, p1, p2, b->point, t);
}

// A closed contour as a polygon of pieces per curve (one per straight one).
inline Polygon flatten(const zgPath *path, int piecesPerCurve = 256)
{
    Polygon polygon;
    const int n = path->segments.size();
    for (int i = 0; i < n; ++i) {
        const zgSegment *a = path->segments.at(i);
        const zgSegment *b = path->segments.at((i + 1) % n);
        const bool straight = !a->hasHandles() && !b->hasHandles();
        const int pieces = straight ? 1 : piecesPerCurve;
        for (int k = 0; k < pieces; ++k)
            polygon.append(pointBetween(a, b, double(k) / pieces));
    }
    return polygon;
}

inline QVector<Polygon> flatten(const XPath &compound, int piecesPerCurve = 256)
{
    QVector<Polygon> polygons;
    for (const zgPath *child : compound.children)
        polygons.append(flatten(child, piecesPerCurve));
    return polygons;
}

// The winding number about point: each edge crossing the horizontal line
// through it to its right counts +1 if y grows along it, -1 if it falls.
inline int windingNumber(const QVector<Polygon> &polygons, const zgPoint &point)
{
    int winding = 0;
    for (const Polygon &polygon : polygons) {
        for (int i = 0; i < polygon.size(); ++i) {
            const zgPoint &a = polygon.at(i);
            const zgPoint &b = polygon.at((i + 1) % polygon.size());
            const bool rises = a.y <= point.y && b.y > point.y;
            const bool falls = b.y <= point.y && a.y > point.y;
            if (!rises && !falls)
                continue;
            const double x = a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x);
            if (x > point.x)
                winding += rises ? 1 : -1;
        }
    }
    return winding;
}

inline double distanceToSegment(const zgPoint &p, const zgPoint &a, const zgPoint &b)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double squared = dx * dx + dy * dy;
    double t = squared > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / squared : 0.0;
    t = std::max(0.0, std::min(1.0, t));
    return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

inline double distanceToOutline(const QVector<Polygon> &polygons, const zgPoint &point)
{
    double distance = std::numeric_limits<double>::infinity();
    for (const Polygon &polygon : polygons) {
        for (int i = 0; i < polygon.size(); ++i)
            distance = std::min(distance, distanceToSegment(point, polygon.at(i),
                                                            polygon.at((i + 1) % polygon.size())));
    }
    return distance;
}

struct StretchWinding
{
    int winding;
    bool onPath;
};

// The winding the engine gives the outline at the middle of segment's curve:
// the larger magnitude of the winding numbers just to either side, and on
// the path when exactly one of them is 0.
inline StretchWinding sideWinding(const QVector<Polygon> &polygons, const zgSegment *segment)
{
    const zgSegment *next = segment->getNext();
    const zgPoint middle = pointBetween(segment, next, 0.5);
    const zgPoint before = pointBetween(segment, next, 0.5 - 1e-4);
    const zgPoint after = pointBetween(segment, next, 0.5 + 1e-4);
    double nx = after.y - before.y, ny = before.x - after.x;
    const double norm = std::hypot(nx, ny);
    // 1e-3: far beyond the flattening error, well inside every test shape.
    nx *= 1e-3 / norm;
    ny *= 1e-3 / norm;
    const int left = windingNumber(polygons, zgPoint(middle.x - nx, middle.y - ny));
    const int right = windingNumber(polygons, zgPoint(middle.x + nx, middle.y + ny));
    return {std::max(std::abs(left), std::abs(right)), (left == 0) != (right == 0)};
}

} // namespace windingoracle

#endif
