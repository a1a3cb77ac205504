// The boolean operators and crossing resolution under extreme input: NaN,
// infinite, huge (1e150) and tiny (1e-300) coordinates, an operand without
// children, and contours of one lone point. The closed route always gives a
// compound, well formed, and finite for finite operands; the open route
// gives null where the operators define it.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "extreme_input.h"
#include "model/model_test_support.h"

#include <gtest/gtest.h>

#include <memory>

using namespace extreme;

namespace {

using Result = std::unique_ptr<XPath>;

Result compoundOf(ZDPath path)
{
    Result xpath(new XPath());
    path.toXPath(*xpath);
    return xpath;
}

// A compound of one contour of a single segment at (x, y), closed or not.
Result lonePoint(double x, double y, bool closed)
{
    Result xpath(new XPath());
    zgPath *contour = new zgPath(xpath.get(), closed);
    contour->addSegment(new zgSegment(x, y));
    xpath->addChild(contour);
    return xpath;
}

struct Operand
{
    const char *name;
    Result xpath;
    bool finite;
};

std::vector<Operand> badOperands()
{
    std::vector<Operand> operands;
    operands.push_back({"nan corner", compoundOf(squareWithBadCorner(kNaN)), false});
    operands.push_back({"inf corner", compoundOf(squareWithBadCorner(kInf)), false});
    operands.push_back({"-inf corner", compoundOf(squareWithBadCorner(-kInf)), false});
    operands.push_back({"huge square", compoundOf(squarePath(0, 0, kHuge)), true});
    operands.push_back({"huge offset", compoundOf(squarePath(-kHuge, kHuge, 10)), true});
    operands.push_back({"tiny square", compoundOf(squarePath(0, 0, kTiny)), true});
    operands.push_back({"no children", Result(new XPath()), true});
    operands.push_back({"closed lone point", lonePoint(5, 5, true), true});
    operands.push_back({"nan lone point", lonePoint(kNaN, kNaN, true), false});
    return operands;
}

XPath *apply(XPath *a, XPath *b, int op)
{
    switch (op) {
    case XPath::opIntersect:
        return a->intersect(b, true);
    case XPath::opUnite:
        return a->unite(b);
    case XPath::opSubtract:
        return a->subtract(b);
    default:
        return a->exclude(b);
    }
}

} // namespace

TEST(BooleanExtremeInput, ClosedRouteGivesAWellFormedCompoundForEveryBadOperand)
{
    for (Operand &operand : badOperands()) {
        Result square = compoundOf(squarePath(5, 5, 10));
        for (int op = XPath::opIntersect; op <= XPath::opExclude; ++op) {
            Result forward(apply(operand.xpath.get(), square.get(), op));
            Result backward(apply(square.get(), operand.xpath.get(), op));
            Result alone(apply(operand.xpath.get(), nullptr, op));
            for (XPath *result : {forward.get(), backward.get(), alone.get()}) {
                ASSERT_NE(result, nullptr) << operand.name << " op " << op;
                EXPECT_TRUE(result->evenOdd);
                EXPECT_XPATH_WELL_FORMED(*result) << operand.name << " op " << op;
                if (operand.finite) {
                    EXPECT_XPATH_WELL_FORMED_FINITE(*result) << operand.name << " op " << op;
                }
            }
        }
        // divide: the difference and the intersection, both present.
        QList<XPath *> parts = operand.xpath->divide(square.get());
        ASSERT_EQ(parts.size(), 2) << operand.name;
        for (XPath *part : parts) {
            ASSERT_NE(part, nullptr) << operand.name;
            EXPECT_XPATH_WELL_FORMED(*part) << operand.name;
            delete part;
        }
    }
}

TEST(BooleanExtremeInput, OperandsWithoutChildren)
{
    Result empty(new XPath());
    Result square = compoundOf(squarePath(0, 0, 10));
    // Nothing with nothing: an empty compound, never null.
    for (int op = XPath::opIntersect; op <= XPath::opExclude; ++op) {
        Result result(apply(empty.get(), empty.get(), op));
        ASSERT_NE(result, nullptr);
        EXPECT_TRUE(result->isEmpty()) << op;
    }
    // Intersecting with nothing gives nothing; the other operators keep the square.
    Result common(square->intersect(empty.get(), true));
    EXPECT_TRUE(common->isEmpty());
    Result commonBack(empty->intersect(square.get(), true));
    EXPECT_TRUE(commonBack->isEmpty());
    Result less(empty->subtract(square.get()));
    EXPECT_TRUE(less->isEmpty());
    for (int op : {int(XPath::opUnite), int(XPath::opSubtract), int(XPath::opExclude)}) {
        Result result(apply(square.get(), empty.get(), op));
        ASSERT_EQ(result->children.size(), 1) << op;
        EXPECT_EQ(result->children.at(0)->segments.size(), 4) << op;
    }
}

TEST(BooleanExtremeInput, OpenRouteGivesNullWhereDefined)
{
    // One open contour under unite or exclude, or against a null or open
    // second operand: null. Under intersect or subtract with a closed shape:
    // a compound.
    for (double bad : allExtremes()) {
        Result open = compoundOf(linePath(bad, 5));
        Result square = compoundOf(squarePath(0, 0, 10));
        EXPECT_EQ(Result(open->unite(square.get())), nullptr) << bad;
        EXPECT_EQ(Result(open->exclude(square.get())), nullptr) << bad;
        EXPECT_EQ(Result(open->intersect(nullptr, true)), nullptr) << bad;
        Result openOther = compoundOf(linePath(5, bad));
        EXPECT_EQ(Result(open->subtract(openOther.get())), nullptr) << bad;
        Result inside(open->intersect(square.get(), true));
        ASSERT_NE(inside, nullptr) << bad;
        EXPECT_XPATH_WELL_FORMED(*inside) << bad;
        Result outside(open->subtract(square.get()));
        ASSERT_NE(outside, nullptr) << bad;
        EXPECT_XPATH_WELL_FORMED(*outside) << bad;
    }
    // An open lone point: its midpoint has no location, so the NaN point is
    // outside every shape: kept by subtract, dropped by intersect.
    Result lone = lonePoint(5, 5, false);
    Result square = compoundOf(squarePath(0, 0, 10));
    Result inside(lone->intersect(square.get(), true));
    ASSERT_NE(inside, nullptr);
    EXPECT_TRUE(inside->isEmpty());
    Result outside(lone->subtract(square.get()));
    ASSERT_NE(outside, nullptr);
    EXPECT_EQ(outside->children.size(), 1);
}

TEST(BooleanExtremeInput, HugeAndTinyOperandsGiveFiniteResultsInsideTheirBounds)
{
    for (double size : {kHuge, 1e-150, kTiny}) {
        Result a = compoundOf(squarePath(0, 0, size));
        Result b = compoundOf(squarePath(0, 0, size));
        for (int op = XPath::opIntersect; op <= XPath::opExclude; ++op) {
            Result result(apply(a.get(), b.get(), op));
            ASSERT_NE(result, nullptr);
            EXPECT_XPATH_WELL_FORMED_FINITE(*result) << size << " op " << op;
            for (zgPath *child : result->children) {
                for (zgSegment *segment : child->segments) {
                    EXPECT_GE(segment->point.x, 0.0);
                    EXPECT_LE(segment->point.x, size);
                }
            }
        }
    }
}

TEST(BooleanExtremeInput, ResolveCrossingsAndCrossingsOfBadCompounds)
{
    for (Operand &operand : badOperands()) {
        Result copy(operand.xpath->clone());
        EXPECT_EQ(copy->resolveCrossings(true), copy.get()) << operand.name;
        EXPECT_XPATH_WELL_FORMED(*copy) << operand.name;
        if (operand.finite) {
            EXPECT_XPATH_WELL_FORMED_FINITE(*copy) << operand.name;
        }
        Result square = compoundOf(squarePath(5, 5, 10));
        QList<zgCurveLocation *> crossings = operand.xpath->getCrossings(square.get());
        for (zgCurveLocation *location : crossings) {
            if (operand.finite) {
                EXPECT_TRUE(finitePoint(location->point)) << operand.name;
            }
            zgCurveLocation *partner = location->intersection();
            location->release();
            if (partner)
                partner->release();
        }
        QList<zgCurveLocation *> own = operand.xpath->getCrossings(nullptr);
        for (zgCurveLocation *location : own) {
            zgCurveLocation *partner = location->intersection();
            location->release();
            if (partner)
                partner->release();
        }
    }
    Result empty(new XPath());
    EXPECT_TRUE(empty->getCrossings(empty.get()).isEmpty());
    EXPECT_EQ(empty->resolveCrossings(false), empty.get());
    EXPECT_TRUE(empty->isEmpty());
}

TEST(BooleanExtremeInput, DeferredModeGivesTheSameShapeOfResults)
{
    // With release only marking, the bad operands run through the same
    // steps; every object is left to the tracked lists and swept at the end.
    zgtest::DeferredScope deferred;
    for (Operand &operand : badOperands()) {
        Result square = compoundOf(squarePath(5, 5, 10));
        for (int op = XPath::opIntersect; op <= XPath::opExclude; ++op) {
            Result result(apply(operand.xpath.get(), square.get(), op));
            ASSERT_NE(result, nullptr) << operand.name << " op " << op;
            EXPECT_XPATH_WELL_FORMED(*result) << operand.name << " op " << op;
        }
    }
}
