// Helpers shared by the object-model tests: a scope that runs the library in
// deferred mode and frees what it tracked, and contour builders.
#ifndef ZGRAPHICS_TESTS_MODEL_SUPPORT_H
#define ZGRAPHICS_TESTS_MODEL_SUPPORT_H

#include <zgraphics/model.h>

#include <QtCore/QSet>

namespace zgtest {

// Switches to deferred mode (release only marks, constructors track) for its
// lifetime. On leaving it frees every object listed since it began, still in
// deferred mode so that destructors only mark their neighbours, contours
// before curves before segments before locations, and then switches back to
// the immediate mode. Declare it first in a test, so that stack objects of
// the test are gone (and have left the lists) before it cleans up.
class DeferredScope
{
public:
    DeferredScope()
        : m_paths(toSet(zgPath::s_pathList)), m_curves(toSet(zgCurve::s_curveList)),
          m_segments(toSet(zgSegment::s_segmentList)),
          m_locations(toSet(zgCurveLocation::s_curveLocationList))
    {
        zgPath::s_canDelete = false;
    }

    ~DeferredScope()
    {
        disposeNew(zgPath::s_pathList, m_paths);
        disposeNew(zgCurve::s_curveList, m_curves);
        disposeNew(zgSegment::s_segmentList, m_segments);
        disposeNew(zgCurveLocation::s_curveLocationList, m_locations);
        zgPath::s_canDelete = true;
    }

    DeferredScope(const DeferredScope &) = delete;
    DeferredScope &operator=(const DeferredScope &) = delete;

private:
    template <class T>
    static QSet<T *> toSet(const QList<T *> &list)
    {
        return QSet<T *>(list.begin(), list.end());
    }

    template <class T>
    static void disposeNew(QList<T *> &list, const QSet<T *> &before)
    {
        const QList<T *> current = list;
        for (T *object : current) {
            if (!before.contains(object) && list.contains(object))
                delete object;
        }
    }

    QSet<zgPath *> m_paths;
    QSet<zgCurve *> m_curves;
    QSet<zgSegment *> m_segments;
    QSet<zgCurveLocation *> m_locations;
};

// Appends straight segments at the given points.
inline void addPoints(zgPath &path, const QVector<zgPoint> &points)
{
    for (const zgPoint &point : points)
        path.addSegment(new zgSegment(point.x, point.y));
}

// The square (x, y), (x + size, y), (x + size, y + size), (x, y + size):
// positive area, so clockwise.
inline QVector<zgPoint> squarePoints(double x, double y, double size)
{
    return {zgPoint(x, y), zgPoint(x + size, y), zgPoint(x + size, y + size),
            zgPoint(x, y + size)};
}

// A new heap contour of the given points, count 0.
inline zgPath *newContour(const QVector<zgPoint> &points, bool closed)
{
    zgPath *path = new zgPath(nullptr, closed);
    addPoints(*path, points);
    return path;
}

} // namespace zgtest

#endif
