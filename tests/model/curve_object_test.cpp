// zgCurve as an object: construction and counting, clone, topology in a
// contour, handles and caches, the object forms of the curve mathematics,
// removal, division, parts and the debug text.
#include "model/model_test_support.h"

#include <gtest/gtest.h>

using zgtest::DeferredScope;

namespace {

void expectPoint(const zgPoint &actual, double x, double y, double tolerance = 1e-12)
{
    EXPECT_NEAR(actual.x, x, tolerance);
    EXPECT_NEAR(actual.y, y, tolerance);
}

// The arch (0, 0) (0, 10) (10, 10) (10, 0).
QVector<double> archValues()
{
    return {0, 0, 0, 10, 10, 10, 10, 0};
}

// A free curve held by the test (count 1); free it with release().
zgCurve *newFreeCurve(const QVector<double> &values)
{
    zgCurve *curve = new zgCurve(values, nullptr);
    curve->addRef();
    return curve;
}

TEST(CurveObject, DefaultConstructorHasNothing)
{
    zgCurve curve;
    EXPECT_EQ(curve.refCount, 0);
    EXPECT_EQ(curve.path(), nullptr);
    EXPECT_EQ(curve.segment1(), nullptr);
    EXPECT_EQ(curve.segment2(), nullptr);
    EXPECT_DOUBLE_EQ(curve.length, 0.0);
    EXPECT_TRUE(curve.bounds == zgRect());
    EXPECT_EQ(curve.index(), -1);
    EXPECT_FALSE(curve.hasHandles());
}

TEST(CurveObject, SegmentConstructorCountsEachSegment)
{
    zgSegment *a = new zgSegment(0, 0);
    zgSegment *b = new zgSegment(1, 0);
    a->addRef();
    b->addRef();
    zgPath path;
    {
        zgCurve curve(&path, a, b);
        EXPECT_EQ(curve.path(), &path);
        EXPECT_EQ(a->refCount, 2);
        EXPECT_EQ(b->refCount, 2);
        zgCurve half(nullptr, a, nullptr);
        EXPECT_EQ(a->refCount, 3);
    }
    // Destruction gave both references back.
    EXPECT_EQ(a->refCount, 1);
    EXPECT_EQ(b->refCount, 1);
    a->release();
    b->release();
}

TEST(CurveObject, ValuesConstructorBuildsTwoCountedSegments)
{
    zgPath path;
    zgCurve *curve = new zgCurve(QVector<double>{1, 2, 3, 5, 7, 11, 13, 17}, &path);
    curve->addRef();
    EXPECT_EQ(curve->path(), &path);
    zgSegment *s1 = curve->segment1();
    zgSegment *s2 = curve->segment2();
    expectPoint(s1->point, 1, 2);
    expectPoint(s1->handleOut, 2, 3);
    EXPECT_TRUE(s1->handleIn.isZero());
    expectPoint(s2->point, 13, 17);
    expectPoint(s2->handleIn, -6, -6);
    EXPECT_TRUE(s2->handleOut.isZero());
    EXPECT_EQ(s1->refCount, 1);
    EXPECT_EQ(s2->refCount, 1);
    EXPECT_EQ(s1->path, nullptr);
    EXPECT_EQ(curve->getValues(), (QVector<double>{1, 2, 3, 5, 7, 11, 13, 17}));
    curve->release();
}

TEST(CurveObject, ValuesConstructorReadsMissingValuesAsZero)
{
    zgCurve *curve = newFreeCurve(QVector<double>{4, 5});
    expectPoint(curve->getPoint1(), 4, 5);
    expectPoint(curve->segment1()->handleOut, -4, -5);
    expectPoint(curve->getPoint2(), 0, 0);
    curve->release();
}

TEST(CurveObject, ValuesConstructorIsTrackedWithItsSegments)
{
    DeferredScope deferred;
    const int curves = zgCurve::s_curveList.size();
    const int segments = zgSegment::s_segmentList.size();
    zgCurve *curve = new zgCurve(archValues(), nullptr);
    EXPECT_EQ(zgCurve::s_curveList.size(), curves + 1);
    EXPECT_EQ(zgSegment::s_segmentList.size(), segments + 2);
    EXPECT_TRUE(zgSegment::s_segmentList.contains(curve->segment2()));
}

TEST(CurveObject, CopyAndAssignmentAreShallow)
{
    DeferredScope deferred;
    zgCurve *curve = new zgCurve(archValues(), nullptr);
    curve->addRef();
    curve->length = 12.5;
    const int listed = zgCurve::s_curveList.size();
    zgCurve copy(*curve);
    EXPECT_EQ(zgCurve::s_curveList.size(), listed);
    EXPECT_EQ(copy.refCount, 1);
    EXPECT_EQ(copy.segment1(), curve->segment1());
    EXPECT_EQ(curve->segment1()->refCount, 1); // no reference taken
    EXPECT_DOUBLE_EQ(copy.length, 12.5);
    zgCurve assigned;
    assigned = *curve;
    EXPECT_EQ(assigned.segment2(), curve->segment2());
    EXPECT_EQ(assigned.refCount, 1);
    // Both copies release the shared segments on destruction: in deferred
    // mode that only marks them.
}

TEST(CurveObject, CloneSharesSegmentsWithEmptyCaches)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
    zgCurve *curve = path.getCurves().at(0);
    curve->getLength();
    zgCurve *copy = curve->clone();
    copy->addRef();
    EXPECT_NE(copy, curve);
    EXPECT_EQ(copy->path(), &path);
    EXPECT_EQ(copy->segment1(), curve->segment1());
    EXPECT_EQ(copy->segment2(), curve->segment2());
    EXPECT_DOUBLE_EQ(copy->length, 0.0);
    EXPECT_EQ(curve->segment1()->refCount, 3); // contour, curve, clone
    // A change through the clone shows in the original.
    copy->segment1()->setPoint(zgPoint(-5, 1));
    expectPoint(curve->getPoint1(), -5, 1);
    copy->release();
    EXPECT_EQ(curve->segment1()->refCount, 2);
}

TEST(CurveObject, SettersCountAndKeepTheCaches)
{
    zgCurve *curve = newFreeCurve(archValues());
    curve->length = 3.0;
    zgSegment *old1 = curve->segment1();
    old1->addRef();
    zgSegment *replacement = new zgSegment(4, 4);
    curve->setSegment1(replacement);
    EXPECT_EQ(replacement->refCount, 1);
    EXPECT_EQ(old1->refCount, 1);
    EXPECT_DOUBLE_EQ(curve->length, 3.0); // no _changed
    curve->setSegment1(replacement); // the same again: kept alive
    EXPECT_EQ(replacement->refCount, 1);
    curve->setSegment2(nullptr);
    EXPECT_EQ(curve->segment2(), nullptr);
    curve->setSegment2(old1);
    EXPECT_EQ(old1->refCount, 2);
    old1->release();
    curve->release();
}

TEST(CurveObject, PointsLineAndValues)
{
    zgCurve *curve = newFreeCurve(QVector<double>{1, 2, 3, 4, 5, 6, 7, 8});
    expectPoint(curve->getPoint1(), 1, 2);
    expectPoint(curve->getPoint2(), 7, 8);
    const QVector<zgPoint> points = curve->getPoints();
    ASSERT_EQ(points.size(), 4);
    expectPoint(points.at(1), 3, 4);
    expectPoint(points.at(2), 5, 6);
    const zgLine line = curve->getLine();
    expectPoint(line.point, 1, 2);
    expectPoint(line.vector, 6, 6);
    zgMatrix matrix;
    matrix.translate(10, 0);
    EXPECT_EQ(curve->getValues(&matrix), (QVector<double>{11, 2, 13, 4, 15, 6, 17, 8}));
    EXPECT_EQ(curve->getValues(nullptr), (QVector<double>{1, 2, 3, 4, 5, 6, 7, 8}));
    curve->release();
}

TEST(CurveObject, IndexFirstAndLast)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    const QList<zgCurve *> curves = path.getCurves();
    EXPECT_EQ(curves.at(1)->index(), 1);
    EXPECT_TRUE(curves.at(0)->isFirst());
    EXPECT_FALSE(curves.at(0)->isLast());
    EXPECT_TRUE(curves.at(1)->isLast());
    zgCurve *free = newFreeCurve(archValues());
    free->segment1()->index = 0;
    EXPECT_FALSE(free->isFirst()); // no path
    EXPECT_FALSE(free->isLast());
    free->release();
}

TEST(CurveObject, NextAndPreviousDoNotBuildTheList)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    zgCurve *outside = new zgCurve(&path, path.segments.at(0), path.segments.at(1));
    outside->addRef();
    EXPECT_EQ(outside->getNext(), nullptr);
    EXPECT_EQ(outside->getPrevious(), nullptr);
    EXPECT_TRUE(path.curves.isEmpty());
    outside->release();
}

TEST(CurveObject, NextAndPreviousOnOpenAndClosedContours)
{
    zgPath open;
    zgtest::addPoints(open, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    const QList<zgCurve *> openCurves = open.getCurves();
    EXPECT_EQ(openCurves.at(0)->getNext(), openCurves.at(1));
    EXPECT_EQ(openCurves.at(1)->getNext(), nullptr);
    EXPECT_EQ(openCurves.at(0)->getPrevious(), nullptr);
    EXPECT_EQ(openCurves.at(1)->getPrevious(), openCurves.at(0));

    zgPath closed(nullptr, true);
    zgtest::addPoints(closed, {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0)});
    const QList<zgCurve *> closedCurves = closed.getCurves();
    EXPECT_EQ(closedCurves.at(2)->getNext(), closedCurves.at(0));
    EXPECT_EQ(closedCurves.at(0)->getPrevious(), closedCurves.at(2));
}

TEST(CurveObject, NextOfTheOnlyCurve)
{
    zgPath open;
    zgtest::addPoints(open, {zgPoint(0, 0), zgPoint(1, 0)});
    zgCurve *openCurve = open.getCurves().at(0);
    EXPECT_EQ(openCurve->getNext(), nullptr);
    EXPECT_EQ(openCurve->getPrevious(), nullptr);

    zgPath closed(nullptr, true);
    zgtest::addPoints(closed, {zgPoint(0, 0)});
    ASSERT_EQ(closed.getCurves().size(), 1);
    zgCurve *closedCurve = closed.curves.at(0);
    EXPECT_EQ(closedCurve->getNext(), closedCurve);
    EXPECT_EQ(closedCurve->getPrevious(), closedCurve);
}

TEST(CurveObject, HandlesAreTheInnerPair)
{
    zgCurve *curve = newFreeCurve({0, 0, 0, 0, 10, 0, 10, 0});
    EXPECT_FALSE(curve->hasHandles());
    curve->segment1()->handleIn = zgPoint(5, 5); // outer handles don't count
    curve->segment2()->handleOut = zgPoint(5, 5);
    EXPECT_FALSE(curve->hasHandles());
    curve->segment2()->handleIn = zgPoint(0, 2e-12);
    EXPECT_TRUE(curve->hasHandles());
    curve->segment2()->handleIn = zgPoint(0, 1e-12);
    EXPECT_FALSE(curve->hasHandles());
    curve->segment1()->handleOut = zgPoint(1, 0);
    EXPECT_TRUE(curve->hasHandles());
    curve->length = 7.0;
    curve->clearHandles();
    EXPECT_FALSE(curve->hasHandles());
    expectPoint(curve->segment1()->handleIn, 5, 5);
    EXPECT_DOUBLE_EQ(curve->length, 7.0); // no _changed
    curve->release();
}

TEST(CurveObject, ChangedClearsLengthAndBounds)
{
    zgCurve *curve = newFreeCurve(archValues());
    curve->length = 4.0;
    curve->bounds = zgRect(1, 2, 3, 4);
    curve->_changed();
    EXPECT_DOUBLE_EQ(curve->length, 0.0);
    EXPECT_TRUE(curve->bounds == zgRect());
    curve->release();
}

TEST(CurveObject, LengthIsCachedUntilChanged)
{
    zgCurve *curve = newFreeCurve({0, 0, 0, 0, 30, 40, 30, 40});
    EXPECT_DOUBLE_EQ(curve->getLength(), 50.0);
    EXPECT_DOUBLE_EQ(curve->length, 50.0);
    curve->segment2()->setPoint(zgPoint(60, 80));
    EXPECT_DOUBLE_EQ(curve->getLength(), 50.0); // stale but cached
    curve->length = 0.0;
    EXPECT_NEAR(curve->getLength(), 100.0, 1e-9);
    curve->release();
}

TEST(CurveObject, ZeroLengthIsMeasuredEveryTime)
{
    zgCurve *curve = newFreeCurve({3, 3, 3, 3, 3, 3, 3, 3});
    EXPECT_DOUBLE_EQ(curve->getLength(), 0.0);
    curve->segment2()->setPoint(zgPoint(3, 13));
    // The cache read as empty, so the new geometry is measured.
    EXPECT_NEAR(curve->getLength(), 10.0, 1e-12);
    curve->release();
}

TEST(CurveObject, PartLengthAndOffsetAtTime)
{
    zgCurve *curve = newFreeCurve(archValues());
    const QVector<double> values = archValues();
    EXPECT_NEAR(curve->getPartLength(0.25, 0.75), zgCurve::getLength(values, 0.25, 0.75), 1e-12);
    EXPECT_NEAR(curve->getOffsetAtTime(0.5), zgCurve::getLength(values, 0.0, 0.5), 1e-12);
    EXPECT_NEAR(2.0 * curve->getOffsetAtTime(0.5), curve->getLength(), 1e-9); // symmetric arch
    EXPECT_DOUBLE_EQ(curve->length, curve->getLength()); // only getLength caches
    curve->release();
}

TEST(CurveObject, StraightAndLinear)
{
    zgCurve *thirds = newFreeCurve({0, 0, 3, 0, 6, 0, 9, 0});
    EXPECT_TRUE(thirds->isStraight());
    EXPECT_TRUE(thirds->isLinear());
    zgCurve *quarters = newFreeCurve({0, 0, 2, 0, 6, 0, 8, 0});
    EXPECT_TRUE(quarters->isStraight());
    EXPECT_FALSE(quarters->isLinear());
    zgCurve *backwards = newFreeCurve({0, 0, -1, 0, 6, 0, 8, 0});
    EXPECT_FALSE(backwards->isStraight());
    zgCurve *arch = newFreeCurve(archValues());
    EXPECT_FALSE(arch->isStraight());
    EXPECT_FALSE(arch->isLinear());
    for (zgCurve *curve : {thirds, quarters, backwards, arch})
        curve->release();
}

TEST(CurveObject, HorizontalAndVerticalWithinTheTangentTolerance)
{
    zgCurve *flat = newFreeCurve({0, 0, 0, 0, 10, 1e-07, 10, 1e-07}); // slope 1e-08
    EXPECT_TRUE(flat->isHorizontal());
    EXPECT_FALSE(flat->isVertical());
    zgCurve *justBelow = newFreeCurve({0, 0, 0, 0, 1, 0.99e-07, 1, 0.99e-07});
    EXPECT_TRUE(justBelow->isHorizontal());
    zgCurve *justAbove = newFreeCurve({0, 0, 0, 0, 1, 1.01e-07, 1, 1.01e-07});
    EXPECT_FALSE(justAbove->isHorizontal());
    zgCurve *upright = newFreeCurve({0, 0, 0, 0, 0.99e-07, 1, 0.99e-07, 1});
    EXPECT_TRUE(upright->isVertical());
    EXPECT_FALSE(upright->isHorizontal());
    zgCurve *leaning = newFreeCurve({0, 0, 0, 0, 1.01e-07, 1, 1.01e-07, 1});
    EXPECT_FALSE(leaning->isVertical());
    // Horizontal at its middle, but not straight.
    zgCurve *arch = newFreeCurve(archValues());
    EXPECT_FALSE(arch->isHorizontal());
    for (zgCurve *curve : {flat, justBelow, justAbove, upright, leaning, arch})
        curve->release();
}

TEST(CurveObject, HorizontalReadsTheTangentAtTheMiddle)
{
    // A straight diagonal whose handles reach the opposite ends: its speed
    // is zero at the middle, so the unit tangent there is (0, 0).
    zgCurve *curve = newFreeCurve({0, 0, 10, 10, 0, 0, 10, 10});
    ASSERT_TRUE(curve->isStraight());
    EXPECT_TRUE(curve->isHorizontal());
    EXPECT_TRUE(curve->isVertical());
    curve->release();
}

TEST(CurveObject, CollinearNeedsTwoStraightCurvesWithParallelLines)
{
    zgCurve *a = newFreeCurve({0, 0, 0, 0, 10, 0, 10, 0});
    zgCurve *b = newFreeCurve({20, 5, 20, 5, 30, 5, 30, 5});
    zgCurve *c = newFreeCurve({0, 0, 0, 0, 0, 10, 0, 10});
    zgCurve *arch = newFreeCurve(archValues());
    EXPECT_TRUE(a->isCollinear(b));
    EXPECT_FALSE(a->isCollinear(c));
    EXPECT_FALSE(a->isCollinear(arch));
    EXPECT_FALSE(arch->isCollinear(a));
    EXPECT_FALSE(a->isCollinear(nullptr));
    for (zgCurve *curve : {a, b, c, arch})
        curve->release();
}

TEST(CurveObject, AreaIsTheStaticFormOnTheValues)
{
    zgCurve *curve = newFreeCurve(archValues());
    EXPECT_DOUBLE_EQ(curve->getArea(), zgCurve::getArea(archValues()));
    EXPECT_NE(curve->getArea(), 0.0);
    curve->release();
}

TEST(CurveObject, TimeFormsCallTheStaticFunctions)
{
    zgCurve *curve = newFreeCurve(archValues());
    const QVector<double> values = archValues();
    const double t = 0.3;
    expectPoint(curve->getPointAtTime(t), zgCurve::getPoint(values, t).x,
                zgCurve::getPoint(values, t).y);
    expectPoint(curve->getTangentAtTime(t), zgCurve::getTangent(values, t).x,
                zgCurve::getTangent(values, t).y);
    expectPoint(curve->getNormalAtTime(t), zgCurve::getNormal(values, t).x,
                zgCurve::getNormal(values, t).y);
    expectPoint(curve->getWeightedTangentAtTime(t), zgCurve::getWeightedTangent(values, t).x,
                zgCurve::getWeightedTangent(values, t).y);
    expectPoint(curve->getWeightedNormalAtTime(t), zgCurve::getWeightedNormal(values, t).x,
                zgCurve::getWeightedNormal(values, t).y);
    EXPECT_DOUBLE_EQ(curve->getCurvatureAtTime(t), zgCurve::getCurvature(values, t));
    expectPoint(curve->getPointAtTime(0.5), 5, 7.5);
    EXPECT_TRUE(curve->getPointAtTime(1.5).isNaN());
    curve->release();
}

// A straight curve with its handles at the thirds: time and arc length agree.
QVector<double> linearValues()
{
    return {0, 0, 10.0 / 3.0, 0, 20.0 / 3.0, 0, 10, 0};
}

TEST(CurveObject, AtFormsTakeATimeOrAnOffset)
{
    zgCurve *curve = newFreeCurve(linearValues());
    expectPoint(curve->getPointAt(0.25, true), 2.5, 0);
    expectPoint(curve->getPointAt(4.0, false), 4, 0, 1e-9);
    // A negative offset measures from the end.
    expectPoint(curve->getPointAt(-4.0, false), 6, 0, 1e-9);
    // An offset as long as the curve, backwards: the start point.
    expectPoint(curve->getPointAt(-10.0, false), 0, 0);
    expectPoint(curve->getTangentAt(4.0, false), 1, 0);
    expectPoint(curve->getNormalAt(0.5, true), 0, -1);
    expectPoint(curve->getWeightedTangentAt(0.5, true), 10, 0, 1e-12);
    expectPoint(curve->getWeightedNormalAt(5.0, false), 0, -10, 1e-9);
    EXPECT_DOUBLE_EQ(curve->getCurvatureAt(5.0, false), 0.0);
    curve->release();
}

TEST(CurveObject, OffsetsBeyondTheCurveGiveNaN)
{
    zgCurve *curve = newFreeCurve({0, 0, 0, 0, 10, 0, 10, 0});
    EXPECT_TRUE(curve->getPointAt(10.5, false).isNaN());
    EXPECT_TRUE(curve->getTangentAt(-10.5, false).isNaN());
    EXPECT_TRUE(curve->getNormalAt(11.0, false).isNaN());
    EXPECT_TRUE(curve->getWeightedTangentAt(11.0, false).isNaN());
    EXPECT_TRUE(curve->getWeightedNormalAt(11.0, false).isNaN());
    EXPECT_TRUE(qIsNaN(curve->getCurvatureAt(11.0, false)));
    curve->release();
}

TEST(CurveObject, TimeAtTimeOfAndTheirDefaults)
{
    zgCurve *curve = newFreeCurve(linearValues());
    EXPECT_NEAR(curve->getTimeAt(2.5), 0.25, 1e-9);
    EXPECT_NEAR(curve->getTimeAt(-2.5), 0.75, 1e-9);
    EXPECT_DOUBLE_EQ(curve->getTimeAt(0.0, 0.3), 0.3);
    EXPECT_DOUBLE_EQ(curve->getTimeAt(20.0, 0.0), -100.0);
    EXPECT_NEAR(curve->getTimeOf(zgPoint(7, 0)), 0.7, 1e-9);
    EXPECT_DOUBLE_EQ(curve->getTimeOf(zgPoint(7, 1)), -100.0);
    curve->release();
}

TEST(CurveObject, RemoveWithoutPathIsFalse)
{
    zgCurve *curve = newFreeCurve(archValues());
    const zgPoint handle = curve->segment1()->handleOut;
    EXPECT_FALSE(curve->remove());
    expectPoint(curve->segment1()->handleOut, handle.x, handle.y);
    curve->release();
}

TEST(CurveObject, RemoveJoinsTheNextCurveWithTheOutgoingHandle)
{
    zgPath path;
    path.addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(1, 1)));
    path.addSegment(new zgSegment(zgPoint(10, 0), zgPoint(-1, 1), zgPoint(2, 2)));
    path.addSegment(new zgSegment(zgPoint(20, 0), zgPoint(-3, 3), zgPoint()));
    const QList<zgCurve *> curves = path.getCurves();
    zgSegment *first = path.segments.at(0);
    zgSegment *last = path.segments.at(2);
    EXPECT_TRUE(curves.at(0)->remove());
    ASSERT_EQ(path.segments.size(), 2);
    ASSERT_EQ(path.curves.size(), 1);
    expectPoint(first->handleOut, 2, 2); // the removed segment's outgoing handle
    EXPECT_EQ(path.curves.at(0)->segment1(), first);
    EXPECT_EQ(path.curves.at(0)->segment2(), last);
    EXPECT_EQ(first->refCount, 2);
    EXPECT_EQ(last->refCount, 2);
}

TEST(CurveObject, RemoveOfTheLastCurveOfAnOpenContourDropsIt)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0)});
    zgCurve *last = path.getCurves().at(1);
    EXPECT_TRUE(last->remove()); // the curve itself goes with its end
    EXPECT_EQ(path.segments.size(), 2);
    ASSERT_EQ(path.curves.size(), 1);
    EXPECT_EQ(path.curves.at(0)->segment2(), path.segments.at(1));
}

TEST(CurveObject, FailedRemovePutsTheHandleBack)
{
    zgPath path;
    zgSegment *start = path.addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(1, 0)));
    zgSegment *stranger = new zgSegment(zgPoint(5, 5), zgPoint(), zgPoint(9, 9));
    zgCurve *curve = new zgCurve(&path, start, stranger); // segment2 is in no contour
    curve->addRef();
    EXPECT_FALSE(curve->remove());
    expectPoint(start->handleOut, 1, 0);
    curve->release();
}

TEST(CurveObject, DivideRefusesTimesNearTheEnds)
{
    zgCurve *curve = newFreeCurve(archValues());
    zgSegment *end = curve->segment2();
    EXPECT_EQ(curve->divideAtTime(3e-07, false), nullptr);
    EXPECT_EQ(curve->divideAtTime(1.0 - 3e-07, true), nullptr);
    EXPECT_EQ(curve->divideAtTime(-0.5, true), nullptr);
    EXPECT_EQ(curve->divideAtTime(qQNaN(), true), nullptr);
    EXPECT_EQ(curve->segment2(), end);
    EXPECT_EQ(curve->getValues(), archValues());
    curve->release();
}

TEST(CurveObject, DivideAcceptsTheBoundaryTimes)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
    zgCurve *curve = path.getCurves().at(0);
    EXPECT_NE(curve->divideAtTime(4e-07, false), nullptr);
    EXPECT_NE(curve->divideAtTime(0.9999996, false), nullptr);
    EXPECT_EQ(path.segments.size(), 4);
}

TEST(CurveObject, DivideAStraightCurveWithoutHandles)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(9, 0)});
    zgCurve *curve = path.getCurves().at(0);
    zgCurve *after = curve->divideAtTime(1.0 / 3.0, false);
    ASSERT_NE(after, nullptr);
    ASSERT_EQ(path.segments.size(), 3);
    zgSegment *inserted = path.segments.at(1);
    // Without handles the control points sit on the ends: time 1/3 is 7/3
    // along the chord.
    expectPoint(inserted->point, 7.0 / 3.0, 0);
    EXPECT_FALSE(inserted->hasHandles());
    EXPECT_FALSE(curve->hasHandles());
    EXPECT_EQ(after, path.curves.at(1));
    EXPECT_EQ(after->segment1(), inserted);
    EXPECT_EQ(curve->segment2(), inserted);
    EXPECT_EQ(inserted->refCount, 3);
}

TEST(CurveObject, DivideAStraightCurveWithHandlesSet)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(9, 0)});
    zgCurve *curve = path.getCurves().at(0);
    curve->divideAtTime(1.0 / 3.0, true);
    zgSegment *inserted = path.segments.at(1);
    // The handles follow the line: on the parameter grid of the old curve,
    // whose control points sat on its ends.
    expectPoint(inserted->point, 7.0 / 3.0, 0, 1e-12);
    expectPoint(inserted->handleIn, 1.0 - 7.0 / 3.0, 0, 1e-12);
    expectPoint(inserted->handleOut, 5.0 - 7.0 / 3.0, 0, 1e-12);
    EXPECT_TRUE(path.segments.at(0)->handleOut.isZero());
    EXPECT_TRUE(path.segments.at(2)->handleIn.isZero());
}

TEST(CurveObject, DivideACurveKeepsItsHandles)
{
    zgPath path;
    path.addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(0, 10)));
    path.addSegment(new zgSegment(zgPoint(10, 0), zgPoint(0, 10), zgPoint()));
    zgCurve *curve = path.getCurves().at(0);
    curve->length = 99.0;
    zgCurve *after = curve->divideAtTime(0.5, false); // handles follow anyway
    ASSERT_NE(after, nullptr);
    zgSegment *inserted = path.segments.at(1);
    expectPoint(path.segments.at(0)->handleOut, 0, 5);
    expectPoint(inserted->point, 5, 7.5);
    expectPoint(inserted->handleIn, -2.5, 0);
    expectPoint(inserted->handleOut, 2.5, 0);
    expectPoint(path.segments.at(2)->handleIn, 0, 5);
    EXPECT_DOUBLE_EQ(curve->length, 0.0); // told by the contour
    EXPECT_NEAR(curve->getLength() + after->getLength(),
                zgCurve::getLength(archValues(), 0.0, 1.0), 1e-9);
}

TEST(CurveObject, DivideTheClosingCurveOfAClosedContour)
{
    zgPath path(nullptr, true);
    zgtest::addPoints(path, zgtest::squarePoints(0, 0, 10));
    const QList<zgCurve *> curves = path.getCurves();
    zgCurve *closing = curves.at(3);
    zgCurve *after = closing->divideAtTime(0.5, false);
    ASSERT_EQ(path.segments.size(), 5);
    ASSERT_EQ(path.curves.size(), 5);
    zgSegment *inserted = path.segments.at(4);
    expectPoint(inserted->point, 0, 5);
    EXPECT_EQ(inserted->index, 4);
    EXPECT_EQ(closing->segment2(), inserted);
    EXPECT_EQ(after, path.curves.at(4));
    EXPECT_EQ(after->segment1(), inserted);
    EXPECT_EQ(after->segment2(), path.segments.at(0));
    for (zgSegment *segment : path.segments)
        EXPECT_EQ(segment->refCount, 3);
}

TEST(CurveObject, DivideAFreeCurveSharesTheNewSegmentUncounted)
{
    zgCurve *curve = newFreeCurve(archValues());
    curve->length = 5.0;
    curve->bounds = zgRect(0, 0, 1, 1);
    zgSegment *oldEnd = curve->segment2();
    zgCurve *after = curve->divideAtTime(0.5, false);
    ASSERT_NE(after, nullptr);
    after->addRef();
    zgSegment *inserted = curve->segment2();
    EXPECT_NE(inserted, oldEnd);
    expectPoint(inserted->point, 5, 7.5);
    EXPECT_EQ(after->path(), nullptr);
    EXPECT_EQ(after->segment1(), inserted);
    EXPECT_EQ(after->segment2(), oldEnd);
    EXPECT_DOUBLE_EQ(curve->length, 0.0);
    EXPECT_TRUE(curve->bounds == zgRect());
    // One reference for two holders; the old end kept this curve's reference
    // and gained the new curve's.
    EXPECT_EQ(inserted->refCount, 1);
    EXPECT_EQ(oldEnd->refCount, 2);
    // Balance the counts by hand before letting both curves go.
    inserted->addRef();
    oldEnd->release();
    curve->release();
    after->release();
}

TEST(CurveObject, DivideByOffset)
{
    zgPath path;
    zgtest::addPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
    zgCurve *curve = path.getCurves().at(0);
    EXPECT_EQ(curve->divide(12.0, false), nullptr); // beyond the curve
    EXPECT_NE(curve->divide(4.0, false), nullptr);
    expectPoint(path.segments.at(1)->point, 4, 0, 1e-9);
    EXPECT_NE(curve->divide(0.5, true), nullptr);
    expectPoint(path.segments.at(1)->point, 2, 0, 1e-9);
    EXPECT_FALSE(path.segments.at(1)->hasHandles()); // setHandles false
    EXPECT_EQ(path.segments.size(), 4);
}

TEST(CurveObject, GetPartIsAFreeCurveWithItsOwnSegments)
{
    zgPath path;
    path.addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(0, 10)));
    path.addSegment(new zgSegment(zgPoint(10, 0), zgPoint(0, 10), zgPoint()));
    zgCurve *curve = path.getCurves().at(0);
    zgCurve *part = curve->getPart(0.25, 0.75);
    part->addRef();
    EXPECT_EQ(part->path(), nullptr);
    EXPECT_NE(part->segment1(), curve->segment1());
    EXPECT_EQ(part->segment1()->refCount, 1);
    EXPECT_EQ(part->getValues(), zgCurve::getPart(archValues(), 0.25, 0.75));
    zgCurve *reversed = curve->getPart(0.75, 0.25);
    reversed->addRef();
    expectPoint(reversed->getPoint1(), part->getPoint2().x, part->getPoint2().y);
    part->release();
    reversed->release();
}

TEST(CurveObject, ToStringWithAndWithoutHandles)
{
    zgCurve *curve = newFreeCurve({1, 2, 1, 2, 5, 6, 7, 8});
    const QString plain = QStringLiteral("point1: ") + zgPoint(1, 2).toString() +
                          QStringLiteral(" handle2: ") + zgPoint(-2, -2).toString() +
                          QStringLiteral(" point2: ") + zgPoint(7, 8).toString();
    EXPECT_EQ(curve->toString(), plain);
    curve->segment1()->handleOut = zgPoint(3, 0);
    const QString full = QStringLiteral("point1: ") + zgPoint(1, 2).toString() +
                         QStringLiteral(" handle1: ") + zgPoint(3, 0).toString() +
                         QStringLiteral(" handle2: ") + zgPoint(-2, -2).toString() +
                         QStringLiteral(" point2: ") + zgPoint(7, 8).toString();
    EXPECT_EQ(curve->toString(), full);
    curve->release();
}

TEST(CurveObject, DestructionReleasesBothSegments)
{
    DeferredScope deferred;
    zgCurve *curve = new zgCurve(archValues(), nullptr);
    zgSegment *s1 = curve->segment1();
    zgSegment *s2 = curve->segment2();
    const int listed = zgCurve::s_curveList.size();
    curve->release(); // deferred: marked, still listed
    EXPECT_EQ(curve->refCount, -2);
    EXPECT_EQ(zgCurve::s_curveList.size(), listed);
    delete curve; // the destructor runs in deferred mode: it leaves the list
    EXPECT_EQ(zgCurve::s_curveList.size(), listed - 1);
    EXPECT_EQ(s1->refCount, -2);
    EXPECT_EQ(s2->refCount, -2);
}

} // namespace
