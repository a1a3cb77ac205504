// The path services under extreme input: contours of NaN, infinite, huge
// (1e150) and tiny (1e-300) points, empty contours and contours of one lone
// segment, and bad offsets, indices, tolerances and factors, for bounds,
// hit tests, winding and containment, flattening, simplification,
// smoothing, measures along a contour and path editing. Each case asserts
// the defined failure value (null, a NaN point, zgHitNone, false, an
// unchanged contour) or a well-formed result.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "boolean/winding_test_support.h"
#include "extreme_input.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>

using namespace extreme;

namespace {

// A closed square with a curved side, scaled, with one coordinate set to bad
// if badAt >= 0 (0: x of the second point, 1: y of the third).
zgPath *curvedSquare(double scale, int badAt = -1, double bad = 0.0)
{
    zgPath *path = new zgPath(nullptr, true);
    path->addSegment(new zgSegment(0, 0));
    path->addSegment(new zgSegment(zgPoint(100 * scale, 0), zgPoint(0, 0),
                                   zgPoint(30 * scale, 30 * scale)));
    path->addSegment(new zgSegment(zgPoint(100 * scale, 100 * scale),
                                   zgPoint(30 * scale, -30 * scale), zgPoint(0, 0)));
    path->addSegment(new zgSegment(0, 100 * scale));
    if (badAt == 0)
        path->segments.at(1)->point.x = bad;
    if (badAt == 1)
        path->segments.at(2)->point.y = bad;
    return path;
}

zgPath *lone(double x, double y, bool closed)
{
    zgPath *path = new zgPath(nullptr, closed);
    path->addSegment(new zgSegment(x, y));
    return path;
}

struct Contour
{
    const char *name;
    zgPath *path;
    bool finite;
};

QVector<Contour> contours()
{
    return {{"nan", curvedSquare(1, 0, kNaN), false},
            {"inf", curvedSquare(1, 0, kInf), false},
            {"-inf", curvedSquare(1, 1, -kInf), false},
            {"huge", curvedSquare(1e148), true},
            {"tiny", curvedSquare(1e-302), true},
            {"empty", new zgPath(nullptr, true), true},
            {"open lone", lone(3, 4, false), true},
            {"closed lone", lone(3, 4, true), true}};
}

bool finiteSegments(zgPath *path)
{
    for (zgSegment *s : path->segments) {
        if (!finitePoint(s->point) || !finitePoint(s->handleIn) || !finitePoint(s->handleOut))
            return false;
    }
    return true;
}

} // namespace

// ---- Bounds ------------------------------------------------------------------

TEST(ServicesExtremeInput, BoundsOfEmptyAndLoneContours)
{
    zgStyle style;
    zgBoundOpt plain;
    Held empty(new zgPath(nullptr, false));
    const zgRect none = empty->getBounds(plain, style, nullptr);
    EXPECT_EQ(none.x, zgRect().x);
    EXPECT_EQ(none.width, zgRect().width);
    zgBoundOpt handles;
    handles.handle = true;
    const zgRect noHandles = empty->getBounds(handles, style, nullptr);
    EXPECT_EQ(noHandles.x, kInf);
    EXPECT_EQ(noHandles.width, -kInf);
    for (bool closed : {false, true}) {
        Held point(lone(3, 4, closed));
        const zgRect at = point->getBounds(plain, style, nullptr);
        EXPECT_EQ(at.x, 3.0);
        EXPECT_EQ(at.y, 4.0);
        EXPECT_EQ(at.width, 0.0);
        EXPECT_EQ(at.height, 0.0);
    }
}

TEST(ServicesExtremeInput, BoundsOfBadContours)
{
    zgStyle style;
    style.hasStroke = true;
    for (const Contour &c : contours()) {
        Held path(c.path);
        for (bool handle : {false, true}) {
            for (bool stroke : {false, true}) {
                zgBoundOpt options;
                options.handle = handle;
                options.stroke = stroke;
                const zgRect r = path->getBounds(options, style, nullptr);
                if (c.finite && !path->isEmpty()) {
                    EXPECT_TRUE(std::isfinite(r.x) && std::isfinite(r.width)) << c.name;
                    EXPECT_GE(r.width, 0.0) << c.name;
                }
            }
        }
        // A matrix of huge or NaN scale.
        for (double bad : {kNaN, kHuge}) {
            zgMatrix matrix(bad, 0, 0, bad, 0, 0);
            zgBoundOpt options;
            path->getBounds(options, style, &matrix);
        }
    }
    // Tight bounds of the curve array itself.
    for (double bad : allExtremes()) {
        const zgRect r = zgCurve::getBounds({0, 0, bad, 10, 20, bad, 30, 0});
        SCOPED_TRACE(testing::Message() << bad << " " << r.x << " " << r.y << " " << r.width << " " << r.height);
        if (std::isfinite(bad)) {
            EXPECT_TRUE(std::isfinite(r.width) && std::isfinite(r.height)) << bad;
            EXPECT_LE(r.x, 0.0);
            // At 1e150 the width of the box rounds away the 30.
            EXPECT_GE(r.x + r.width, 30.0 - 1e-9 - 1e-15 * r.width);
        }
    }
}

// ---- Hit test, winding and containment ----------------------------------------

TEST(ServicesExtremeInput, HitTestsOfBadPointsFindNothing)
{
    Held square(curvedSquare(1));
    zgStyle style;
    zgHitOpt options(true, true, false, true, 1.0);
    zgtest::IntendedLeakScope leaks; // the contour's getWinding leaves its pieces allocated
    for (double bad : nonFinite()) {
        for (const zgPoint &p : {zgPoint(bad, 50), zgPoint(50, bad), zgPoint(bad, bad)}) {
            EXPECT_FALSE(square->contains(p, style)) << bad;
            EXPECT_EQ(square->_hitTestSelf(p, options, style).type, zgHitNone) << bad;
            EXPECT_EQ(square->getWinding(p, false), 0) << bad;
            EXPECT_EQ(square->getWinding(p, true), 0) << bad;
        }
    }
    EXPECT_FALSE(square->contains(zgPoint(kHuge, 50), style));
    EXPECT_EQ(square->_hitTestSelf(zgPoint(kHuge, 50), options, style).type, zgHitNone);
    EXPECT_TRUE(square->contains(zgPoint(kTiny, 50), style));
    // A NaN or infinite tolerance: the call returns.
    for (double tolerance : nonFinite()) {
        zgHitOpt odd(true, true, false, true, tolerance);
        square->_hitTestSelf(zgPoint(50, 150), odd, style);
    }
}

TEST(ServicesExtremeInput, HitTestsOfEmptyAndLoneContours)
{
    zgStyle style;
    zgHitOpt options(true, true, false, true, 1.0);
    Held empty(new zgPath(nullptr, true));
    zgtest::IntendedLeakScope leaks; // the contour's getWinding leaves its pieces allocated
    EXPECT_EQ(empty->_hitTestSelf(zgPoint(0, 0), options, style).type, zgHitNone);
    EXPECT_FALSE(empty->contains(zgPoint(0, 0), style));
    EXPECT_EQ(empty->getWinding(zgPoint(0, 0), false), 0);
    EXPECT_EQ(empty->getNearestLocation(zgPoint(0, 0)), nullptr);
    XPath none;
    EXPECT_EQ(none.hitTest(zgPoint(0, 0), style, options).type, zgHitNone);
    EXPECT_FALSE(none.contains(zgPoint(0, 0), style));
    // An open lone point has no curve and no area.
    Held point(lone(3, 4, false));
    EXPECT_FALSE(point->contains(zgPoint(3, 4), style));
    EXPECT_EQ(point->getNearestLocation(zgPoint(3, 4)), nullptr);
}

TEST(ServicesExtremeInput, HitTestsOfBadContoursReturn)
{
    zgStyle style;
    zgHitOpt options(true, true, false, true, 1.0);
    for (const Contour &c : contours()) {
        Held path(c.path);
        path->contains(zgPoint(50, 50), style);
        const zgHitResult hit = path->_hitTestSelf(zgPoint(50, 50), options, style);
        if (c.finite && hit.type != zgHitNone && hit.type != zgHitFill) {
            EXPECT_TRUE(finitePoint(hit.point)) << c.name;
        }
        {
            zgtest::IntendedLeakScope leaks; // its pieces are left allocated
            path->getWinding(zgPoint(50, 50), true);
        }
        zgCurveLocation *nearest = path->getNearestLocation(zgPoint(50, 50));
        if (nearest) {
            if (c.finite) {
                EXPECT_TRUE(finitePoint(nearest->point)) << c.name;
            }
            nearest->release();
        }
        path->getInteriorPoint(true);
        path->getInteriorPoint(false);
    }
}

// ---- Flattening and simplification ------------------------------------------------

TEST(ServicesExtremeInput, FlatteningIsBoundedForEveryFlatness)
{
    // At most 256 chords a curve, whatever the flatness.
    for (double flatness : allExtremes()) {
        Held square(curvedSquare(1));
        square->flatten(flatness);
        EXPECT_LE(square->segments.size(), 3 + 256) << flatness;
        EXPECT_GE(square->segments.size(), 4) << flatness;
        EXPECT_TRUE(finiteSegments(square.get())) << flatness;
        EXPECT_TRUE(square->isClosed());
    }
    // A flatness of 0 and a NaN one both cut the curved side into 256.
    Held nan(curvedSquare(1));
    nan->flatten(kNaN);
    EXPECT_EQ(nan->segments.size(), 3 + 256);
}

TEST(ServicesExtremeInput, FlatteningOfBadContours)
{
    for (const Contour &c : contours()) {
        Held path(c.path);
        path->flatten(0.25);
        EXPECT_LE(path->segments.size(), 4 * 256 + 1) << c.name;
        for (zgSegment *s : path->segments) {
            EXPECT_EQ(s->handleIn.x, 0.0) << c.name;
            EXPECT_EQ(s->handleOut.y, 0.0) << c.name;
        }
        if (c.finite) {
            EXPECT_TRUE(finiteSegments(path.get())) << c.name;
        }
    }
    // A lone point has no chord: the contour ends up empty.
    Held point(lone(3, 4, false));
    point->flatten(0.25);
    EXPECT_TRUE(point->isEmpty());
}

TEST(ServicesExtremeInput, SimplificationOfEmptyAndBadContours)
{
    Held empty(new zgPath(nullptr, false));
    EXPECT_FALSE(empty->simplify(2.5));
    EXPECT_TRUE(empty->isEmpty());
    for (const Contour &c : contours()) {
        for (double tolerance : {2.5, kNaN, kInf, kHuge, kTiny}) {
            Held path(c.path->clone());
            path->simplify(tolerance);
            if (c.finite) {
                EXPECT_TRUE(finiteSegments(path.get())) << c.name << " " << tolerance;
            }
        }
        c.path->addRef();
        c.path->release();
    }
}

// ---- Smoothing -------------------------------------------------------------------

TEST(ServicesExtremeInput, SmoothingWithIndicesOutsideTheContour)
{
    for (int type = 1; type <= 4; ++type) {
        for (int from : {INT_MIN, -1000, -1, 0, 1000, INT_MAX}) {
            for (int to : {INT_MIN, -1000, -1, 2, 1000, INT_MAX}) {
                Held square(curvedSquare(1));
                SCOPED_TRACE(testing::Message() << type << " " << from << " " << to);
                square->smooth(type, -1.0, from, to);
                EXPECT_EQ(square->segments.size(), 4);
                EXPECT_TRUE(finiteSegments(square.get()))
                    << type << " " << from << " " << to;
            }
        }
    }
}

TEST(ServicesExtremeInput, RangeRunningBackwardsBeyondTheIntRangeChangesNothing)
{
    // from 1000 to INT_MIN on a closed contour: after the wrap the range
    // still runs backwards, so there is no system to solve (this used to
    // narrow a negative row count into a huge one and fail to allocate).
    for (int type : {3, 4}) {
        for (int from : {1000, INT_MAX}) {
            for (int to : {INT_MIN, -1000}) {
                Held square(curvedSquare(1));
                const zgPoint before = square->segments.at(1)->handleOut;
                square->smooth(type, -1.0, from, to);
                EXPECT_EQ(square->segments.at(1)->handleOut.x, before.x);
                EXPECT_EQ(square->segments.at(1)->handleOut.y, before.y);
                EXPECT_EQ(square->segments.at(0)->handleOut.x, 0.0);
            }
        }
    }
}

TEST(ServicesExtremeInput, SmoothingWithBadFactorsAndContours)
{
    for (int type = 0; type <= 5; ++type) {
        for (double factor : allExtremes()) {
            Held square(curvedSquare(1));
            square->smooth(type, factor, 0, -1);
            EXPECT_EQ(square->segments.size(), 4);
            // The range types do not read the factor.
            if (type >= 3) {
                EXPECT_TRUE(finiteSegments(square.get())) << type << " " << factor;
            }
        }
        for (const Contour &c : contours()) {
            Held path(c.path->clone());
            path->smooth(type, -1.0, 0, -1);
            if (c.finite && type != 2 && std::string(c.name) != "tiny") {
                EXPECT_TRUE(finiteSegments(path.get())) << c.name << " " << type;
            }
            c.path->addRef();
            c.path->release();
        }
    }
}

// ---- Measures along a contour and editing ------------------------------------------

TEST(ServicesExtremeInput, MeasuresAtBadOffsets)
{
    Held square(curvedSquare(1));
    for (double offset : {kNaN, kInf, -kInf, kHuge, -kHuge}) {
        EXPECT_EQ(square->getLocationAt(offset), nullptr) << offset;
        EXPECT_TRUE(nanPoint(square->getPointAt(offset))) << offset;
        EXPECT_TRUE(nanPoint(square->getTangentAt(offset))) << offset;
        EXPECT_TRUE(nanPoint(square->getNormalAt(offset))) << offset;
        EXPECT_TRUE(std::isnan(square->getCurvatureAt(offset))) << offset;
        EXPECT_EQ(square->splitAt(offset), nullptr) << offset;
        EXPECT_EQ(square->segments.size(), 4);
    }
    // A tiny offset is the start.
    const zgPoint start = square->getPointAt(kTiny);
    EXPECT_NEAR(start.x, 0.0, 1e-12);
    EXPECT_NEAR(start.y, 0.0, 1e-12);
    // A point off the contour, or no point at all.
    for (double bad : nonFinite()) {
        EXPECT_EQ(square->getLocationOf(zgPoint(bad, 0)), nullptr) << bad;
        EXPECT_EQ(square->getOffsetOf(zgPoint(bad, 0)), 0.0) << bad;
    }
}

TEST(ServicesExtremeInput, MeasuresOfEmptyAndLoneContours)
{
    for (bool closed : {false, true}) {
        Held empty(new zgPath(nullptr, closed));
        EXPECT_EQ(empty->getLength(), 0.0);
        EXPECT_EQ(empty->getArea(), 0.0);
        EXPECT_EQ(empty->getLocationAt(0.0), nullptr);
        EXPECT_TRUE(nanPoint(empty->getPointAt(0.0)));
        EXPECT_EQ(empty->splitAt(0.0), nullptr);
        EXPECT_EQ(empty->split(0, 0.5), nullptr);
        Held point(lone(3, 4, closed));
        EXPECT_EQ(point->getLength(), 0.0);
        EXPECT_EQ(point->getArea(), 0.0);
    }
    // An open lone point has no curve to split; a closed one has the curve
    // from its point to itself, and is opened there: it is the result.
    Held open(lone(3, 4, false));
    EXPECT_EQ(open->split(0, 0.5), nullptr);
    Held closed(lone(3, 4, true));
    EXPECT_EQ(closed->split(0, 0.5), closed.get());
    EXPECT_FALSE(closed->isClosed());
}

TEST(ServicesExtremeInput, EditingWithBadIndicesTimesAndFactors)
{
    Held square(curvedSquare(1));
    for (int index : {-1, 4, INT_MAX, INT_MIN}) {
        EXPECT_EQ(square->split(index, 0.5), nullptr) << index;
    }
    for (double time : {kNaN, kInf, -kInf, kHuge, -kTiny}) {
        EXPECT_EQ(square->split(1, time), nullptr) << time;
    }
    EXPECT_EQ(square->segments.size(), 4);
    EXPECT_EQ(square->splitAt(nullptr), nullptr);
    zgCurveLocation nowhere;
    EXPECT_EQ(square->splitAt(&nowhere), nullptr);

    // Blending: nothing without both ends; a NaN factor reaches the points.
    Held target(curvedSquare(2));
    Held blend(new zgPath(nullptr, false));
    blend->interpolate(nullptr, target.get(), 0.5);
    EXPECT_TRUE(blend->isEmpty());
    Held empty(new zgPath(nullptr, false));
    blend->interpolate(square.get(), empty.get(), 0.5);
    EXPECT_TRUE(blend->isEmpty());
    for (double factor : allExtremes()) {
        Held mixed(new zgPath(nullptr, false));
        mixed->interpolate(square.get(), target.get(), factor);
        ASSERT_EQ(mixed->segments.size(), 4) << factor;
        EXPECT_TRUE(mixed->isClosed());
        if (std::isfinite(factor)) {
            EXPECT_TRUE(finiteSegments(mixed.get())) << factor;
        }
    }

    // Joining with bad tolerances, and a lone point.
    for (double tolerance : allExtremes()) {
        Held a(curvedSquare(1));
        a->setClosed(false);
        Held b(lone(0, 0, false));
        a->join(b.get(), tolerance);
        a->join(nullptr, tolerance);
        // Huge tolerances let every pair of ends meet and merge.
        EXPECT_GE(a->segments.size(), 1) << tolerance;
        EXPECT_TRUE(finiteSegments(a.get())) << tolerance;
    }
}

TEST(ServicesExtremeInput, CompoundEditingAtBadOffsets)
{
    XPath compound;
    ZDPath source = squarePath(0, 0, 10);
    source.toXPath(compound);
    for (double offset : {kNaN, kInf, -kInf, kHuge, -kHuge}) {
        EXPECT_EQ(compound.splitAt(offset), nullptr) << offset;
    }
    XPath empty;
    EXPECT_EQ(empty.splitAt(0.0), nullptr);
    empty.flatten(0.5);
    EXPECT_FALSE(empty.simplify(1.0));
    empty.smooth(4, 0.5, 0, -1);
    EXPECT_TRUE(empty.isEmpty());
}
