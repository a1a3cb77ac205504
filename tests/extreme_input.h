// Helpers of the extreme-input tests of every subsystem: the bad values fed
// to each operation, paths built from them, and checks that an element list
// or a compound path is well formed.
#ifndef ZGRAPHICS_TESTS_EXTREME_INPUT_H
#define ZGRAPHICS_TESTS_EXTREME_INPUT_H

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/QVector>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace extreme {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();
const double kHuge = 1e150;
const double kTiny = 1e-300;

// The values that no coordinate or parameter of an ordinary call takes.
inline QVector<double> nonFinite()
{
    return {kNaN, kInf, -kInf};
}

// The finite extremes: huge and tiny magnitudes of either sign.
inline QVector<double> finiteExtremes()
{
    return {kHuge, -kHuge, kTiny, -kTiny};
}

inline QVector<double> allExtremes()
{
    return nonFinite() + finiteExtremes();
}

inline bool isFinite(double v)
{
    return std::isfinite(v);
}

inline bool finitePoint(const zgPoint &p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}

inline bool nanPoint(const zgPoint &p)
{
    return std::isnan(p.x) && std::isnan(p.y);
}

// A closed square drawn with move, three lines and close, whose corner
// (x0 + size, y0) is replaced by (badX, y0) when badX is given.
inline ZDPath squarePath(double x0, double y0, double size)
{
    ZDPath path;
    path.moveTo(x0, y0);
    path.lineTo(x0 + size, y0);
    path.lineTo(x0 + size, y0 + size);
    path.lineTo(x0, y0 + size);
    path.elements.append(ZDPathElement(x0, y0, ZDCloseElement));
    return path;
}

// The 0..10 square with one coordinate of its second corner set to bad.
inline ZDPath squareWithBadCorner(double bad)
{
    ZDPath path = squarePath(0, 0, 10);
    path.elements[1].y = bad;
    return path;
}

// An open line from (0, 0) to (x, y).
inline ZDPath linePath(double x, double y)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(x, y);
    return path;
}

// A path of one lone move.
inline ZDPath singlePoint(double x = 3, double y = 4)
{
    ZDPath path;
    path.moveTo(x, y);
    return path;
}

// Why the element list is not well formed, or an empty string: it starts
// with a move, every first control point is followed by two more elements
// of type 3, no type 3 stands alone, and every type is known. With
// requireFinite, every coordinate is a finite number.
inline std::string malformation(const ZDPath &path, bool requireFinite)
{
    const int n = path.count();
    if (n > 0 && path.elementAt(0).type != ZDMoveToElement)
        return "first element is not a move";
    for (int i = 0; i < n; ++i) {
        const ZDPathElement &e = path.elementAt(i);
        if (requireFinite && !(std::isfinite(e.x) && std::isfinite(e.y)))
            return "element " + std::to_string(i) + " is not finite";
        if (e.type < ZDMoveToElement || e.type > ZDCloseElement)
            return "element " + std::to_string(i) + " has an unknown type";
        if (e.type == ZDCurveToElement) {
            if (i + 2 >= n || path.elementAt(i + 1).type != ZDCurveToDataElement
                    || path.elementAt(i + 2).type != ZDCurveToDataElement)
                return "cubic at " + std::to_string(i) + " is cut short";
            i += 2;
            continue;
        }
        if (e.type == ZDCurveToDataElement)
            return "lone type 3 at " + std::to_string(i);
    }
    return std::string();
}

#define EXPECT_WELL_FORMED(path) EXPECT_EQ(extreme::malformation((path), false), std::string())
#define EXPECT_WELL_FORMED_FINITE(path) EXPECT_EQ(extreme::malformation((path), true), std::string())

// Why a compound path is not well formed, or an empty string: every child
// exists, has its compound as parent and at least one segment, each segment
// belongs to it, and its curve count matches its segments and closed flag.
// With requireFinite, every point and handle is finite.
inline std::string malformation(const XPath &xpath, bool requireFinite)
{
    for (int c = 0; c < xpath.children.size(); ++c) {
        const zgPath *child = xpath.children.at(c);
        const std::string where = "child " + std::to_string(c);
        if (!child)
            return where + " is null";
        for (const zgSegment *segment : child->segments) {
            if (!segment)
                return where + " has a null segment";
            if (segment->path != child)
                return where + " has a segment of another contour";
            if (requireFinite
                    && !(finitePoint(segment->point) && finitePoint(segment->handleIn)
                         && finitePoint(segment->handleOut)))
                return where + " has a point that is not finite";
        }
    }
    return std::string();
}

#define EXPECT_XPATH_WELL_FORMED(xpath) EXPECT_EQ(extreme::malformation((xpath), false), std::string())
#define EXPECT_XPATH_WELL_FORMED_FINITE(xpath)                                                     \
    EXPECT_EQ(extreme::malformation((xpath), true), std::string())

// Holds one counted contour for a test.
class Held
{
public:
    explicit Held(zgPath *path) : m_path(path) { m_path->addRef(); }
    ~Held() { m_path->release(); }
    Held(const Held &) = delete;
    Held &operator=(const Held &) = delete;
    zgPath *operator->() const { return m_path; }
    zgPath *get() const { return m_path; }

private:
    zgPath *m_path;
};

} // namespace extreme

#endif // ZGRAPHICS_TESTS_EXTREME_INPUT_H
