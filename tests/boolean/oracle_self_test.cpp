// The oracle of the operator tests checked on shapes with known answers.
#include "boolean/boolean_oracle.h"

#include <gtest/gtest.h>

#include <memory>

using namespace booleanoracle;

TEST(Oracle, RectangleAreaAndContainment)
{
    const Shape square = {rectangle(10, 20, 30, 40)};
    EXPECT_DOUBLE_EQ(evenOddArea(square), 1200.0);
    EXPECT_TRUE(containsEvenOdd(square, 25, 30));
    EXPECT_FALSE(containsEvenOdd(square, 45, 30));
    EXPECT_FALSE(containsEvenOdd(square, 25, 61));
}

TEST(Oracle, CircleOfFourCubics)
{
    const Shape disc = {circle(0, 0, 10)};
    // The four-cubic circle is 0.027 % too wide at most: its area is within
    // 1e-3 relative of pi r^2.
    EXPECT_NEAR(evenOddArea(disc), M_PI * 100.0, M_PI * 100.0 * 1e-3);
    EXPECT_TRUE(containsEvenOdd(disc, 9.9, 0.5));
    EXPECT_FALSE(containsEvenOdd(disc, 7.1, 7.1));
    EXPECT_TRUE(containsEvenOdd(disc, 7.0, 7.0));
}

TEST(Oracle, HoleCountsNegativeEitherWay)
{
    const Loop outer = rectangle(0, 0, 100, 100);
    const Loop inner = rectangle(25, 25, 50, 50);
    EXPECT_DOUBLE_EQ(evenOddArea({outer, inner}), 7500.0);
    EXPECT_DOUBLE_EQ(evenOddArea({outer, reversed(inner)}), 7500.0);
    EXPECT_FALSE(containsEvenOdd({outer, inner}, 50, 50));
    EXPECT_TRUE(containsEvenOdd({outer, inner}, 10, 50));
}

TEST(Oracle, ClearanceFromEdges)
{
    const Shape disc = {circle(0, 0, 10)};
    EXPECT_FALSE(isClearOf(disc, 10.0 + 5e-7, 0.0, 1e-6));
    EXPECT_TRUE(isClearOf(disc, 10.0 + 5e-6, 0.0, 1e-6));
}

TEST(Oracle, RoundTripThroughTheObjectGraph)
{
    Families random(7u);
    const Shape blob = random.blob(50, 50);
    std::unique_ptr<XPath> path(toXPath(blob));
    const Shape back = fromXPath(*path);
    ASSERT_EQ(back.size(), 1);
    EXPECT_NEAR(evenOddArea(back), evenOddArea(blob), 1e-9 * std::fabs(evenOddArea(blob)));
}
