// The option and result records: defaults, constructor argument orders and
// the hit result's link to the compound path.
#include <zgraphics/model.h>
#include <zgraphics/primitives.h>

#include <gtest/gtest.h>

#include <cstddef>

#include <type_traits>

namespace {

TEST(Records, EnumValuesAndWidth)
{
    EXPECT_EQ(zgCapButt, 0);
    EXPECT_EQ(zgCapSquare, 1);
    EXPECT_EQ(zgCapRound, 2);
    EXPECT_EQ(zgJoinBevel, 0);
    EXPECT_EQ(zgJoinMiter, 1);
    EXPECT_EQ(zgJoinRound, 2);
    EXPECT_EQ(zgHitNone, 0);
    EXPECT_EQ(zgHitStroke, 1);
    EXPECT_EQ(zgHitFill, 2);
    EXPECT_EQ(zgHitCurve, 3);
    EXPECT_EQ(sizeof(zgCap), 4u);
    EXPECT_EQ(sizeof(zgJoin), 4u);
    EXPECT_TRUE((std::is_same<decltype(zgHitResult::type), int32_t>::value));
}

TEST(Records, StyleDefaults)
{
    const zgStyle style;
    EXPECT_TRUE(style.hasFill);
    EXPECT_TRUE(style.hasStroke);
    EXPECT_TRUE(style.evenOdd);
    EXPECT_EQ(style.strokeWidth, 1.0);
    EXPECT_EQ(style.cap, zgCapButt);
    EXPECT_EQ(style.join, zgJoinBevel);
    EXPECT_EQ(style.miterLimit, 10.0);
}

TEST(Records, StyleArgumentsInFieldOrder)
{
    const zgStyle style(false, false, false, 3.5, zgCapRound, zgJoinMiter, 4.0);
    EXPECT_FALSE(style.hasFill);
    EXPECT_FALSE(style.hasStroke);
    EXPECT_FALSE(style.evenOdd);
    EXPECT_EQ(style.strokeWidth, 3.5);
    EXPECT_EQ(style.cap, zgCapRound);
    EXPECT_EQ(style.join, zgJoinMiter);
    EXPECT_EQ(style.miterLimit, 4.0);

    const zgStyle partly(true, false);
    EXPECT_TRUE(partly.hasFill);
    EXPECT_FALSE(partly.hasStroke);
    EXPECT_TRUE(partly.evenOdd);
    EXPECT_EQ(partly.strokeWidth, 1.0);
}

TEST(Records, BoundOptDefaultClearsAll)
{
    const zgBoundOpt options;
    EXPECT_FALSE(options.handle);
    EXPECT_FALSE(options.stroke);
    EXPECT_FALSE(options.reservedA);
    EXPECT_FALSE(options.reservedB);
}

TEST(Records, BoundOptConstructorTakesHandleLast)
{
    const zgBoundOpt handleOnly(false, false, false, true);
    EXPECT_TRUE(handleOnly.handle);
    EXPECT_FALSE(handleOnly.stroke);
    EXPECT_FALSE(handleOnly.reservedA);
    EXPECT_FALSE(handleOnly.reservedB);

    const zgBoundOpt strokeOnly(true, false, false, false);
    EXPECT_TRUE(strokeOnly.stroke);
    EXPECT_FALSE(strokeOnly.handle);

    const zgBoundOpt reservedAOnly(false, true, false, false);
    EXPECT_TRUE(reservedAOnly.reservedA);
    EXPECT_FALSE(reservedAOnly.reservedB);

    const zgBoundOpt reservedBOnly(false, false, true, false);
    EXPECT_TRUE(reservedBOnly.reservedB);
    EXPECT_FALSE(reservedBOnly.reservedA);
}

TEST(Records, BoundOptRecordOrder)
{
    // The record holds handle, stroke, reservedA, reservedB in that order.
    zgBoundOpt options;
    bool *fields = reinterpret_cast<bool *>(&options);
    EXPECT_EQ(fields + 0, &options.handle);
    EXPECT_EQ(fields + 1, &options.stroke);
    EXPECT_EQ(fields + 2, &options.reservedA);
    EXPECT_EQ(fields + 3, &options.reservedB);
}

TEST(Records, HitOptDefaults)
{
    const zgHitOpt options;
    EXPECT_EQ(options.tolerance, 0.1);
    EXPECT_TRUE(options.fill);
    EXPECT_TRUE(options.stroke);
    EXPECT_FALSE(options.curves);
    EXPECT_TRUE(options.styleFill);
}

TEST(Records, HitOptToleranceIsTheFirstField)
{
    EXPECT_EQ(offsetof(zgHitOpt, tolerance), 0u);
}

TEST(Records, HitOptConstructorTakesToleranceLast)
{
    const zgHitOpt options(false, true, true, false, 2.5);
    EXPECT_EQ(options.tolerance, 2.5);
    EXPECT_FALSE(options.fill);
    EXPECT_TRUE(options.stroke);
    EXPECT_TRUE(options.curves);
    EXPECT_FALSE(options.styleFill);

    const zgHitOpt other(true, false, false, true, 0.0);
    EXPECT_EQ(other.tolerance, 0.0);
    EXPECT_TRUE(other.fill);
    EXPECT_FALSE(other.stroke);
    EXPECT_FALSE(other.curves);
    EXPECT_TRUE(other.styleFill);
}

TEST(Records, HitResultDefault)
{
    const zgHitResult result;
    EXPECT_EQ(result.type, zgHitNone);
    EXPECT_EQ(result.compound, nullptr);
    EXPECT_EQ(result.path, nullptr);
    EXPECT_EQ(result.segment, nullptr);
    EXPECT_EQ(result.point.x, 0.0);
    EXPECT_EQ(result.point.y, 0.0);
}

TEST(Records, HitResultTakesCompoundFromPath)
{
    XPath compound;
    zgPath contour(&compound);
    zgSegment segment(1.0, 2.0);
    const zgHitResult result(zgHitStroke, &contour, &segment, zgPoint(3.0, 4.0));
    EXPECT_EQ(result.type, zgHitStroke);
    EXPECT_EQ(result.compound, &compound);
    EXPECT_EQ(result.path, &contour);
    EXPECT_EQ(result.segment, &segment);
    EXPECT_EQ(result.point.x, 3.0);
    EXPECT_EQ(result.point.y, 4.0);

    zgPath loose;
    const zgHitResult noSegment(zgHitFill, &loose, nullptr, zgPoint());
    EXPECT_EQ(noSegment.type, zgHitFill);
    EXPECT_EQ(noSegment.compound, nullptr);
    EXPECT_EQ(noSegment.path, &loose);
    EXPECT_EQ(noSegment.segment, nullptr);
}

TEST(Records, HitResultWithNullPathDoesNotCrash)
{
    const zgHitResult result(zgHitCurve, nullptr, nullptr, zgPoint(1.0, 1.0));
    EXPECT_EQ(result.compound, nullptr);
    EXPECT_EQ(result.path, nullptr);
}

} // namespace
