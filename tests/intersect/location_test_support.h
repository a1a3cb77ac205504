// Helpers shared by the location tests: owning handles for counted objects,
// contours with built curves, and point checks.
#ifndef ZGRAPHICS_TESTS_INTERSECT_LOCATION_SUPPORT_H
#define ZGRAPHICS_TESTS_INTERSECT_LOCATION_SUPPORT_H

#include "model/model_test_support.h"

#include <gtest/gtest.h>

#include <QtCore/qnumeric.h>

#include <memory>

namespace zgtest {

// Gives one reference back when the handle goes; an object nobody else
// holds (count 0 or 1) dies with it.
struct Releaser
{
    template <class T>
    void operator()(T *object) const
    {
        if (object)
            object->release();
    }
};

template <class T>
using Owned = std::unique_ptr<T, Releaser>;

inline zgPoint nanPoint()
{
    return zgPoint(qQNaN(), qQNaN());
}

inline void expectPoint(const zgPoint &actual, double x, double y, double tolerance = 1e-12)
{
    EXPECT_NEAR(actual.x, x, tolerance);
    EXPECT_NEAR(actual.y, y, tolerance);
}

// A heap contour of straight segments at the points, with its curves built.
// Count 0: the first release destroys it.
inline zgPath *builtContour(const QVector<zgPoint> &points, bool closed)
{
    zgPath *path = newContour(points, closed);
    path->getCurves();
    return path;
}

// A new location on curve at time t, its point computed from the curve.
inline zgCurveLocation *locationAt(zgCurve *curve, double t)
{
    return new zgCurveLocation(curve, t, nanPoint(), false, 0.0);
}

// Makes a and b each other's intersection.
inline void pair(zgCurveLocation *a, zgCurveLocation *b)
{
    a->setIntersection(b);
    b->setIntersection(a);
}

} // namespace zgtest

#endif
