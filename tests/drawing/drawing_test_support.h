// Helpers shared by the ZDPath tests: element-type shorthands, element lists
// written as initializer lists, and comparisons of element lists.
#ifndef ZGRAPHICS_TESTS_DRAWING_SUPPORT_H
#define ZGRAPHICS_TESTS_DRAWING_SUPPORT_H

#include <zgraphics/drawing.h>

#include <QtCore/QPointF>
#include <QtCore/QVector>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <random>
#include <vector>

namespace drawingtest {

inline constexpr int32_t Move = ZDMoveToElement;
inline constexpr int32_t Line = ZDLineToElement;
inline constexpr int32_t Curve = ZDCurveToElement;
inline constexpr int32_t CurveData = ZDCurveToDataElement;
inline constexpr int32_t Close = ZDCloseElement;

// One element of a list: its point, its type and its aux point.
struct Elem
{
    double x;
    double y;
    int32_t type;
    double auxX = 0.0;
    double auxY = 0.0;
};

// A path holding exactly the listed points and types (aux points zero).
inline ZDPath pathOf(std::initializer_list<Elem> items)
{
    ZDPath path;
    for (const Elem &s : items)
        path.elements.append(ZDPathElement(s.x, s.y, s.type));
    return path;
}

namespace detail {

// Compares the element list with expected: the points as doubles, or within
// tolerance if one is given, the types exactly, and the aux points exactly
// if withAux.
inline void expectElementList(const ZDPath &path, std::initializer_list<Elem> expected,
                              bool withAux, const double *tolerance)
{
    ASSERT_EQ(path.count(), int(expected.size()));
    int i = 0;
    for (const Elem &s : expected) {
        const ZDPathElement &e = path.elements.at(i);
        if (tolerance) {
            EXPECT_NEAR(e.x, s.x, *tolerance) << "element " << i;
            EXPECT_NEAR(e.y, s.y, *tolerance) << "element " << i;
        } else {
            EXPECT_DOUBLE_EQ(e.x, s.x) << "element " << i;
            EXPECT_DOUBLE_EQ(e.y, s.y) << "element " << i;
        }
        EXPECT_EQ(e.type, s.type) << "element " << i;
        if (withAux) {
            EXPECT_EQ(e.auxX, s.auxX) << "element " << i;
            EXPECT_EQ(e.auxY, s.auxY) << "element " << i;
        }
        ++i;
    }
}

} // namespace detail

// Points as doubles and types exactly; the aux points are not looked at.
inline void expectElements(const ZDPath &path, std::initializer_list<Elem> expected)
{
    detail::expectElementList(path, expected, false, nullptr);
}

// Points as doubles, types and aux points (zero unless listed) exactly.
inline void expectElementsWithAux(const ZDPath &path, std::initializer_list<Elem> expected)
{
    detail::expectElementList(path, expected, true, nullptr);
}

// Points within tolerance, types and aux points (zero unless listed) exactly.
inline void expectElementsWithAux(const ZDPath &path, std::initializer_list<Elem> expected,
                                  double tolerance)
{
    detail::expectElementList(path, expected, true, &tolerance);
}

// The points and types of expected exactly, and no aux points in actual.
inline void expectSameElements(const ZDPath &actual, const ZDPath &expected)
{
    ASSERT_EQ(actual.count(), expected.count());
    for (int i = 0; i < actual.count(); ++i) {
        const ZDPathElement &a = actual.elements.at(i);
        const ZDPathElement &e = expected.elements.at(i);
        EXPECT_EQ(a.x, e.x) << "element " << i;
        EXPECT_EQ(a.y, e.y) << "element " << i;
        EXPECT_EQ(a.type, e.type) << "element " << i;
        EXPECT_EQ(a.auxX, 0.0) << "element " << i;
        EXPECT_EQ(a.auxY, 0.0) << "element " << i;
    }
}

// Types equal and points bitwise equal, NaN included.
inline void expectIdentical(const ZDPath &a, const ZDPath &b)
{
    ASSERT_EQ(a.count(), b.count());
    for (int i = 0; i < a.count(); ++i) {
        const ZDPathElement &p = a.elements.at(i);
        const ZDPathElement &q = b.elements.at(i);
        EXPECT_EQ(p.type, q.type) << "element " << i;
        EXPECT_EQ(std::memcmp(&p.x, &q.x, sizeof(double)), 0) << "element " << i;
        EXPECT_EQ(std::memcmp(&p.y, &q.y, sizeof(double)), 0) << "element " << i;
    }
}

inline void expectElement(const ZDPath &path, int index, double x, double y, int32_t type)
{
    ASSERT_LT(index, path.count());
    const ZDPathElement &e = path.elements.at(index);
    EXPECT_DOUBLE_EQ(e.x, x) << "element " << index;
    EXPECT_DOUBLE_EQ(e.y, y) << "element " << index;
    EXPECT_EQ(e.type, type) << "element " << index;
}

inline QVector<int32_t> typesOf(const ZDPath &path)
{
    QVector<int32_t> types;
    for (const ZDPathElement &e : path.elements)
        types.append(e.type);
    return types;
}

// A path of one line.
inline ZDPath lineFrom(double x1, double y1, double x2, double y2)
{
    ZDPath path;
    path.moveTo(x1, y1);
    path.lineTo(x2, y2);
    return path;
}

// Lines through the points, closed if asked.
inline ZDPath polyline(const std::vector<QPointF> &points, bool closed)
{
    ZDPath path;
    path.moveTo(points.front());
    for (size_t i = 1; i < points.size(); ++i)
        path.lineTo(points[i]);
    if (closed)
        path.closeSubpath();
    return path;
}

inline double uniform(std::mt19937 &random, double low, double high)
{
    return std::uniform_real_distribution<double>(low, high)(random);
}

// count random points in [-300, 300] x [-300, 300].
inline std::vector<QPointF> randomPoints(std::mt19937 &random, int count)
{
    std::vector<QPointF> points;
    for (int i = 0; i < count; ++i)
        points.emplace_back(uniform(random, -300, 300), uniform(random, -300, 300));
    return points;
}

// A path of count random cubics, open or closed.
inline ZDPath randomCurves(std::mt19937 &random, int count, bool closed)
{
    ZDPath path;
    path.moveTo(uniform(random, -200, 200), uniform(random, -200, 200));
    for (int i = 0; i < count; ++i) {
        const QPointF c1(uniform(random, -200, 200), uniform(random, -200, 200));
        const QPointF c2(uniform(random, -200, 200), uniform(random, -200, 200));
        const QPointF end(uniform(random, -200, 200), uniform(random, -200, 200));
        path.cubicTo(c1, c2, end);
    }
    if (closed)
        path.closeSubpath();
    return path;
}

} // namespace drawingtest

#endif
