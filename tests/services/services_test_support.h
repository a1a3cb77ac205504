// Helpers shared by the contour service tests: a census of counted objects
// that tells which ones a scenario leaves alive, and contour builders.
#ifndef ZGRAPHICS_TESTS_SERVICES_SUPPORT_H
#define ZGRAPHICS_TESTS_SERVICES_SUPPORT_H

#include "model/model_test_support.h"

#include <QtCore/QSet>

#include <gtest/gtest.h>

namespace zgtest {

// The counted objects a scenario left alive, class by class.
struct Survivors
{
    int paths = 0;
    int curves = 0;
    int segments = 0;
    int locations = 0;

    int total() const { return paths + curves + segments + locations; }
};

// Deletes the objects of list that are not in before (only the released
// ones if releasedOnly); true if one was deleted.
template <class T>
bool deleteNew(QList<T *> &list, const QSet<T *> &before, bool releasedOnly)
{
    bool deleted = false;
    const QList<T *> current = list;
    for (T *object : current) {
        if (before.contains(object) || !list.contains(object))
            continue;
        if (releasedOnly && object->refCount > -2)
            continue;
        delete object;
        deleted = true;
    }
    return deleted;
}

template <class T>
int countNew(const QList<T *> &list, const QSet<T *> &before)
{
    int count = 0;
    for (T *object : list) {
        if (!before.contains(object))
            ++count;
    }
    return count;
}

// Runs scenario in deferred mode and then plays the immediate mode's
// destruction through: every object the scenario made whose count ended
// released (-2 or below) is deleted, which releases its neighbours, until
// nothing more dies. What is left was still held, or never released, when
// the scenario ended: a leak in the immediate mode. The survivors are freed
// too, and the immediate mode is restored.
template <class Scenario>
Survivors countSurvivors(Scenario scenario)
{
    const QSet<zgPath *> paths(zgPath::s_pathList.begin(), zgPath::s_pathList.end());
    const QSet<zgCurve *> curves(zgCurve::s_curveList.begin(), zgCurve::s_curveList.end());
    const QSet<zgSegment *> segments(zgSegment::s_segmentList.begin(),
                                     zgSegment::s_segmentList.end());
    const QSet<zgCurveLocation *> locations(zgCurveLocation::s_curveLocationList.begin(),
                                            zgCurveLocation::s_curveLocationList.end());
    zgPath::s_canDelete = false;
    scenario();

    bool died = true;
    while (died) {
        died = deleteNew(zgPath::s_pathList, paths, true);
        died = deleteNew(zgCurve::s_curveList, curves, true) || died;
        died = deleteNew(zgSegment::s_segmentList, segments, true) || died;
        died = deleteNew(zgCurveLocation::s_curveLocationList, locations, true) || died;
    }
    Survivors survivors;
    survivors.paths = countNew(zgPath::s_pathList, paths);
    survivors.curves = countNew(zgCurve::s_curveList, curves);
    survivors.segments = countNew(zgSegment::s_segmentList, segments);
    survivors.locations = countNew(zgCurveLocation::s_curveLocationList, locations);

    deleteNew(zgPath::s_pathList, paths, false);
    deleteNew(zgCurve::s_curveList, curves, false);
    deleteNew(zgSegment::s_segmentList, segments, false);
    deleteNew(zgCurveLocation::s_curveLocationList, locations, false);
    zgPath::s_canDelete = true;
    return survivors;
}

inline void expectNoSurvivors(const Survivors &survivors)
{
    EXPECT_EQ(survivors.paths, 0);
    EXPECT_EQ(survivors.curves, 0);
    EXPECT_EQ(survivors.segments, 0);
    EXPECT_EQ(survivors.locations, 0);
}

inline void expectPoint(const zgPoint &actual, double x, double y, double tolerance = 1e-9)
{
    EXPECT_NEAR(actual.x, x, tolerance);
    EXPECT_NEAR(actual.y, y, tolerance);
}

inline void expectNaNPoint(const zgPoint &actual)
{
    EXPECT_TRUE(qIsNaN(actual.x));
    EXPECT_TRUE(qIsNaN(actual.y));
}

// The points of a contour's segments, in order.
inline QVector<zgPoint> pointsOf(const zgPath &path)
{
    QVector<zgPoint> points;
    for (const zgSegment *segment : path.segments)
        points.append(segment->point);
    return points;
}

inline void expectPoints(const zgPath &path, const QVector<zgPoint> &expected,
                         double tolerance = 1e-9)
{
    const QVector<zgPoint> actual = pointsOf(path);
    ASSERT_EQ(actual.size(), expected.size());
    for (int i = 0; i < actual.size(); ++i) {
        EXPECT_NEAR(actual.at(i).x, expected.at(i).x, tolerance) << "segment " << i;
        EXPECT_NEAR(actual.at(i).y, expected.at(i).y, tolerance) << "segment " << i;
    }
}

// Each segment's path and index, and a built curve list that runs from
// segment i to segment i + 1 (the last of a closed contour to segment 0).
inline void expectConsistent(zgPath &path)
{
    for (int i = 0; i < path.segments.size(); ++i) {
        EXPECT_EQ(path.segments.at(i)->path, &path) << "segment " << i;
        EXPECT_EQ(path.segments.at(i)->index, i) << "segment " << i;
    }
    if (path.curves.isEmpty())
        return;
    const int n = path.segments.size();
    ASSERT_EQ(path.curves.size(), int(path._countCurves()));
    for (int i = 0; i < path.curves.size(); ++i) {
        EXPECT_EQ(path.curves.at(i)->path(), &path) << "curve " << i;
        EXPECT_EQ(path.curves.at(i)->segment1(), path.segments.at(i)) << "curve " << i;
        EXPECT_EQ(path.curves.at(i)->segment2(), path.segments.at((i + 1) % n)) << "curve " << i;
    }
}

} // namespace zgtest

#endif // ZGRAPHICS_TESTS_SERVICES_SUPPORT_H
