// Blending contours and compound paths segment by segment.
#include "services/services_test_support.h"

using namespace zgtest;

// Reaches the private blend of XPath.
class XPathInternals
{
public:
    static void interpolate(XPath &target, XPath *from, XPath *to, double factor)
    {
        target.interpolate(from, to, factor);
    }
};

namespace {

// The square of side size at the origin with a handle pair on every
// segment: handle in (-h, 0), handle out (h, 0).
zgPath *newSquareWithHandles(double size, double h, bool closed)
{
    zgPath *path = newContour(squarePoints(0.0, 0.0, size), closed);
    for (zgSegment *segment : path->segments) {
        segment->setHandleIn(zgPoint(-h, 0.0));
        segment->setHandleOut(zgPoint(h, 0.0));
    }
    return path;
}

void expectHandles(const zgPath &path, double h)
{
    for (const zgSegment *segment : path.segments) {
        expectPoint(segment->handleIn, -h, 0.0);
        expectPoint(segment->handleOut, h, 0.0);
    }
}

} // namespace

TEST(PathInterpolate, HalfwayBetweenTwoContoursWithFromsClosedFlag)
{
    zgPath *from = newSquareWithHandles(10.0, 2.0, true);
    zgPath *to = newSquareWithHandles(20.0, 4.0, false);
    from->addRef();
    to->addRef();
    zgPath target;
    addPoints(target, {zgPoint(7, 7), zgPoint(8, 8), zgPoint(9, 9), zgPoint(1, 1)});
    target.interpolate(from, to, 0.5);
    expectPoints(target, squarePoints(0.0, 0.0, 15.0));
    expectHandles(target, 3.0);
    EXPECT_TRUE(target.closed);
    expectConsistent(target);
    // from and to are untouched.
    expectPoints(*from, squarePoints(0.0, 0.0, 10.0));
    expectPoints(*to, squarePoints(0.0, 0.0, 20.0));
    to->release();
    from->release();
}

TEST(PathInterpolate, FactorEndsAndExtrapolation)
{
    zgPath *from = newSquareWithHandles(10.0, 2.0, false);
    zgPath *to = newSquareWithHandles(20.0, 4.0, true);
    from->addRef();
    to->addRef();
    zgPath target;
    target.interpolate(from, to, 0.0);
    expectPoints(target, squarePoints(0.0, 0.0, 10.0));
    EXPECT_FALSE(target.closed);
    target.interpolate(from, to, 1.0);
    expectPoints(target, squarePoints(0.0, 0.0, 20.0));
    expectHandles(target, 4.0);
    EXPECT_FALSE(target.closed);
    // (1 - 2) * from + 2 * to.
    target.interpolate(from, to, 2.0);
    expectPoints(target, squarePoints(0.0, 0.0, 30.0));
    expectHandles(target, 6.0);
    to->release();
    from->release();
}

TEST(PathInterpolate, TheSegmentCountFollowsFrom)
{
    zgPath *from = newSquareWithHandles(10.0, 0.0, false);
    zgPath *to = newSquareWithHandles(20.0, 0.0, false);
    from->addRef();
    to->addRef();
    // An empty contour gets new segments.
    zgPath empty;
    empty.interpolate(from, to, 0.5);
    expectPoints(empty, squarePoints(0.0, 0.0, 15.0));
    for (zgSegment *segment : empty.segments)
        EXPECT_EQ(segment->refCount, 1);
    // A longer one loses the surplus, with its built curves.
    zgPath longer(nullptr, true);
    addPoints(longer, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0), zgPoint(3, 0), zgPoint(4, 0),
                       zgPoint(5, 0)});
    longer.getCurves();
    longer.interpolate(from, to, 0.5);
    expectPoints(longer, squarePoints(0.0, 0.0, 15.0));
    EXPECT_FALSE(longer.closed);
    expectConsistent(longer);
    EXPECT_EQ(longer.curves.size(), 3);
    to->release();
    from->release();
}

TEST(PathInterpolate, MismatchedEmptyOrNullInputsChangeNothing)
{
    zgPath *square = newSquareWithHandles(10.0, 0.0, true);
    zgPath *triangle = newContour({zgPoint(0, 0), zgPoint(5, 0), zgPoint(0, 5)}, false);
    zgPath *empty = new zgPath(nullptr, true);
    square->addRef();
    triangle->addRef();
    empty->addRef();
    zgPath target;
    addPoints(target, {zgPoint(7, 7), zgPoint(8, 8)});
    target.interpolate(square, triangle, 0.5);
    target.interpolate(empty, empty, 0.5);
    target.interpolate(square, empty, 0.5);
    target.interpolate(empty, square, 0.5);
    target.interpolate(nullptr, square, 0.5);
    target.interpolate(square, nullptr, 0.5);
    expectPoints(target, {zgPoint(7, 7), zgPoint(8, 8)});
    EXPECT_FALSE(target.closed);
    empty->release();
    triangle->release();
    square->release();
}

TEST(PathInterpolate, ThePointsMoveUnderCachedCurveLengths)
{
    // The curves are not told: a built curve keeps its cached length.
    zgPath *from = newContour({zgPoint(0, 0), zgPoint(10, 0)}, false);
    zgPath *to = newContour({zgPoint(0, 0), zgPoint(30, 0)}, false);
    from->addRef();
    to->addRef();
    zgPath target;
    addPoints(target, {zgPoint(0, 0), zgPoint(4, 0)});
    ASSERT_NEAR(target.getCurves().first()->getLength(), 4.0, 1e-12);
    target.interpolate(from, to, 0.5);
    expectPoints(target, {zgPoint(0, 0), zgPoint(20, 0)});
    EXPECT_NEAR(target.getCurves().first()->getLength(), 4.0, 1e-12);
    to->release();
    from->release();
}

TEST(PathInterpolate, AContourMayBlendIntoItself)
{
    zgPath *to = newSquareWithHandles(20.0, 0.0, false);
    to->addRef();
    zgPath target;
    addPoints(target, squarePoints(0.0, 0.0, 10.0));
    target.interpolate(&target, to, 0.5);
    expectPoints(target, squarePoints(0.0, 0.0, 15.0));
    to->release();
}

// --- XPath::interpolate --------------------------------------------------------

namespace {

// Two open children: a square of side size and a line from (0, 50) to
// (size, 50).
void addChildren(XPath &compound, double size)
{
    compound.addChild(newContour(squarePoints(0.0, 0.0, size), false));
    compound.addChild(newContour({zgPoint(0, 50), zgPoint(size, 50)}, false));
}

} // namespace

TEST(XPathInterpolate, AnEmptyCompoundGetsBlendedChildren)
{
    XPath from;
    XPath to;
    addChildren(from, 10.0);
    addChildren(to, 20.0);
    XPath target;
    XPathInternals::interpolate(target, &from, &to, 0.5);
    ASSERT_EQ(target.children.size(), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(target.children.at(i)->parent, &target);
        EXPECT_EQ(target.children.at(i)->index, i);
        EXPECT_EQ(target.children.at(i)->refCount, 1);
    }
    expectPoints(*target.children.at(0), squarePoints(0.0, 0.0, 15.0));
    expectPoints(*target.children.at(1), {zgPoint(0, 50), zgPoint(15, 50)});
}

TEST(XPathInterpolate, SurplusChildrenAreRemoved)
{
    XPath from;
    XPath to;
    addChildren(from, 10.0);
    addChildren(to, 20.0);
    XPath target;
    addChildren(target, 1.0);
    target.addChild(newContour({zgPoint(9, 9), zgPoint(8, 8)}, false));
    zgPath *kept = target.children.at(0);
    XPathInternals::interpolate(target, &from, &to, 0.25);
    ASSERT_EQ(target.children.size(), 2);
    EXPECT_EQ(target.children.at(0), kept);
    expectPoints(*target.children.at(0), squarePoints(0.0, 0.0, 12.5));
    expectPoints(*target.children.at(1), {zgPoint(0, 50), zgPoint(12.5, 50)});
}

TEST(XPathInterpolate, EachChildTakesItsClosedFlagFromFrom)
{
    XPath from;
    XPath to;
    from.addChild(newContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10)}, true));
    to.addChild(newContour({zgPoint(0, 0), zgPoint(20, 0), zgPoint(20, 20)}, false));
    XPath target;
    XPathInternals::interpolate(target, &from, &to, 0.5);
    ASSERT_EQ(target.children.size(), 1);
    EXPECT_TRUE(target.children.first()->closed);
    expectPoints(*target.children.first(), {zgPoint(0, 0), zgPoint(15, 0), zgPoint(15, 15)});
}

TEST(XPathInterpolate, MismatchedEmptyOrNullInputsChangeNothing)
{
    XPath one;
    one.addChild(newContour({zgPoint(0, 0), zgPoint(1, 0)}, false));
    XPath two;
    addChildren(two, 10.0);
    XPath none;
    XPath target;
    addChildren(target, 3.0);
    XPathInternals::interpolate(target, &one, &two, 0.5);
    XPathInternals::interpolate(target, &none, &none, 0.5);
    XPathInternals::interpolate(target, nullptr, &two, 0.5);
    XPathInternals::interpolate(target, &two, nullptr, 0.5);
    ASSERT_EQ(target.children.size(), 2);
    expectPoints(*target.children.at(0), squarePoints(0.0, 0.0, 3.0));
    expectPoints(*target.children.at(1), {zgPoint(0, 50), zgPoint(3, 50)});
}

TEST(PathInterpolateCounts, NoObjectOutlivesABlend)
{
    expectNoSurvivors(countSurvivors([] {
        XPath from;
        XPath to;
        addChildren(from, 10.0);
        addChildren(to, 20.0);
        XPath grown;
        XPathInternals::interpolate(grown, &from, &to, 0.5);
        XPath shrunk;
        addChildren(shrunk, 1.0);
        addChildren(shrunk, 2.0);
        shrunk.getCurves();
        XPathInternals::interpolate(shrunk, &from, &to, 0.5);
        EXPECT_EQ(shrunk.children.size(), 2);
        zgPath single;
        addPoints(single, squarePoints(0.0, 0.0, 5.0));
        addPoints(single, squarePoints(9.0, 9.0, 5.0));
        single.getCurves();
        single.interpolate(from.children.first(), to.children.first(), 0.5);
        EXPECT_EQ(single.segments.size(), 4);
    }));
}
