// Set operations and relations of drawing paths: the booleans written back
// into the element list, the even-odd copy and test, cutting at a crossing,
// crossing points, the similar point, and the hit and bounds queries.
#include "drawing/drawing_test_support.h"
#include "model/model_test_support.h"

#include <zgraphics/model.h>

#include <gtest/gtest.h>

using namespace drawingtest;

namespace {

ZDPath square(double x, double y, double size)
{
    ZDPath path;
    path.addRect(QRectF(x, y, size, size));
    return path;
}

// Shoelace area of an element list of lines, contour by contour, with the
// sign of each contour.
double signedAreaOfLines(const ZDPath &path)
{
    double twice = 0.0;
    QPointF start, current;
    for (const ZDPathElement &e : path.elements) {
        if (e.type == Move) {
            start = current = e.toPoint();
        } else {
            const QPointF next = e.type == Close ? start : e.toPoint();
            twice += current.x() * next.y() - next.x() * current.y();
            current = next;
        }
    }
    return twice / 2.0;
}

} // namespace

TEST(SetOperations, UniteWritesTheResultBack)
{
    ZDPath a = square(0, 0, 10);
    ZDPath b = square(5, 5, 10);
    const ZDPath bBefore = b;
    a.unite(b);
    EXPECT_EQ(typesOf(a), (QVector<int32_t>{Move, Line, Line, Line, Line, Line, Line, Line, Line,
                                            Close}));
    EXPECT_DOUBLE_EQ(signedAreaOfLines(a), 175.0);
    expectSameElements(b, bBefore); // unchanged: cleanUp finds nothing to do
}

TEST(SetOperations, IntersectAndSubtract)
{
    ZDPath a = square(0, 0, 10);
    ZDPath b = square(5, 5, 10);
    ZDPath common = a;
    common.intersect(b, true);
    EXPECT_DOUBLE_EQ(signedAreaOfLines(common), 25.0);
    ZDPath unsorted = a;
    unsorted.intersect(b, false);
    EXPECT_DOUBLE_EQ(signedAreaOfLines(unsorted), 25.0);
    ZDPath difference = a;
    difference.subtract(b);
    EXPECT_DOUBLE_EQ(signedAreaOfLines(difference), 75.0);
}

TEST(SetOperations, UniteWithAnEmptyPathIsTheUnionWithNoChildren)
{
    ZDPath a = square(0, 0, 10);
    ZDPath empty;
    a.unite(empty);
    EXPECT_DOUBLE_EQ(signedAreaOfLines(a), 100.0);
    EXPECT_EQ(a.count(), 6);

    ZDPath nothing;
    ZDPath b = square(0, 0, 10);
    nothing.intersect(b, true);
    EXPECT_TRUE(nothing.isEmpty());
}

TEST(SetOperations, NullResultLeavesThePathCleanedUp)
{
    // An open line under unite: the operator gives null; the trailing bare
    // move goes by cleanUp, the rest stays.
    ZDPath line = pathOf({{-5, 5, Move}, {20, 5, Line}, {30, 30, Move}});
    ZDPath box = square(0, 0, 10);
    line.unite(box);
    expectElements(line, {{-5, 5, Move}, {20, 5, Line}});
}

TEST(SetOperations, SubtractCutsAnOpenLine)
{
    ZDPath line = lineFrom(-5, 5, 20, 5);
    ZDPath box = square(0, 0, 10);
    line.subtract(box);
    // The pieces beyond the last crossing first, then what remains.
    ASSERT_EQ(typesOf(line), (QVector<int32_t>{Move, Line, Move, Line}));
    const QVector<QPointF> expected = {QPointF(10, 5), QPointF(20, 5), QPointF(-5, 5),
                                       QPointF(0, 5)};
    for (int k = 0; k < 4; ++k) {
        // 1e-12: the cut points come from curve times.
        EXPECT_NEAR(line.elementAt(k).x, expected[k].x(), 1e-12) << k;
        EXPECT_NEAR(line.elementAt(k).y, expected[k].y(), 1e-12) << k;
    }
}

TEST(SetOperations, EvenOddAppendsTheOrientedContours)
{
    // One closed contour written by addRect (with its closing line): the
    // element count doubles.
    ZDPath path = square(0, 0, 10);
    const int before = path.count();
    path.evenOdd();
    EXPECT_EQ(path.count(), 2 * before);
    // Two counter-clockwise squares: the copies run clockwise, then
    // counter-clockwise, after the original elements.
    ZDPath two = pathOf({{0, 0, Move}, {0, 10, Line}, {10, 10, Line}, {10, 0, Line}, {0, 0, Close},
                         {20, 0, Move}, {20, 10, Line}, {30, 10, Line}, {30, 0, Line},
                         {20, 0, Close}});
    const ZDPath original = two;
    two.evenOdd();
    // Each copy: move, three lines, the closing line and the close.
    ASSERT_EQ(two.count(), 22);
    ZDPath firstCopy, secondCopy;
    firstCopy.elements = two.elements.mid(10, 6);
    secondCopy.elements = two.elements.mid(16, 6);
    EXPECT_GT(signedAreaOfLines(firstCopy), 0.0);
    EXPECT_LT(signedAreaOfLines(secondCopy), 0.0);
    ZDPath head;
    head.elements = two.elements.mid(0, 10);
    expectSameElements(head, original);
}

TEST(SetOperations, EvenOddDropsWhatCleanUpRemoves)
{
    ZDPath path = pathOf({{0, 0, Move}, {5, 5, Move}, {15, 5, Line}, {15, 15, Line},
                          {5, 5, Close}});
    path.evenOdd();
    // cleanUp took the first move; the copy has four elements plus close.
    EXPECT_EQ(path.count(), 4 + 5);
}

TEST(SetOperations, IsEvenOdd)
{
    EXPECT_FALSE(ZDPath().isEvenOdd());
    EXPECT_FALSE(square(0, 0, 10).isEvenOdd());
    ZDPath same = square(0, 0, 10);
    ZDPath other = square(20, 0, 10);
    same.addPath(other);
    EXPECT_FALSE(same.isEvenOdd());
    ZDPath mixed = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 10, Line}, {0, 0, Close},
                           {20, 0, Move}, {20, 10, Line}, {30, 10, Line}, {20, 0, Close}});
    EXPECT_TRUE(mixed.isEvenOdd());
    // Open subpaths do not count, whichever way they run.
    ZDPath openOnes = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 10, Line}, {0, 0, Close},
                              {20, 0, Move}, {20, 10, Line}, {30, 10, Line}});
    EXPECT_FALSE(openOnes.isEvenOdd());
    // A line before any move has no contour to go on: skipped.
    ZDPath headless = pathOf({{5, 5, Line}, {0, 0, Move}, {10, 0, Line}, {10, 10, Line},
                              {0, 0, Close}});
    EXPECT_FALSE(headless.isEvenOdd());
    EXPECT_EQ(headless.count(), 5); // the list is read as it stands
}

TEST(SetOperations, DividePathWithoutCrossing)
{
    ZDPath line = lineFrom(0, 5, 20, 5);
    ZDPath far = lineFrom(0, 50, 20, 50);
    QPointF point(7, 7);
    EXPECT_FALSE(line.dividePath(far, point, false));
    EXPECT_EQ(point, QPointF(7, 7));
    expectElements(line, {{0, 5, Move}, {20, 5, Line}});
}

TEST(SetOperations, DividePathKeepsEitherSide)
{
    zgtest::DeferredScope deferred; // the crossing locations are left allocated
    ZDPath cutter = lineFrom(10, 0, 10, 10);
    ZDPath behind = lineFrom(0, 5, 20, 5);
    QPointF point;
    EXPECT_TRUE(behind.dividePath(cutter, point, false));
    EXPECT_EQ(point, QPointF(10, 5));
    expectElements(behind, {{10, 5, Move}, {20, 5, Line}});

    ZDPath before = pathOf({{0, 5, Move}, {20, 5, Line}, {0, 30, Move}, {20, 30, Line}});
    EXPECT_TRUE(before.dividePath(cutter, point, true));
    expectElements(before, {{0, 5, Move}, {10, 5, Line}, {0, 30, Move}, {20, 30, Line}});
}

TEST(SetOperations, CrossPointsAndBest)
{
    ZDPath a = lineFrom(0, 0, 100, 100);
    ZDPath b = lineFrom(0, 100, 100, 0);
    EXPECT_EQ(a.crossPoints(b), (QVector<QPointF>{QPointF(50, 50)}));
    EXPECT_EQ(a.bestCrossPoint(b), QPointF(50, 50));
    ZDPath far = lineFrom(0, 200, 100, 200);
    EXPECT_TRUE(a.crossPoints(far).isEmpty());
    EXPECT_EQ(a.bestCrossPoint(far), QPointF(0, 0));
    // Touching is no crossing.
    ZDPath touching = lineFrom(100, 100, 200, 0);
    EXPECT_TRUE(a.crossPoints(touching).isEmpty());
}

TEST(SetOperations, SimilarPointNearThePath)
{
    ZDPath oldPath = lineFrom(0, 0, 100, 0);
    ZDPath newPath = lineFrom(0, 50, 200, 50);
    const QPointF mapped =
            ZDPath::getSimilarPoint(oldPath, newPath, zgPoint(25, 0.5), QRectF(0, 0, 40, 40));
    EXPECT_NEAR(mapped.x(), 50.0, 1e-9);
    EXPECT_NEAR(mapped.y(), 50.0, 1e-9);
    ZDPath empty;
    EXPECT_EQ(ZDPath::getSimilarPoint(empty, newPath, zgPoint(3, 4), QRectF()), QPointF(3, 4));
    EXPECT_EQ(ZDPath::getSimilarPoint(oldPath, empty, zgPoint(3, 4), QRectF()), QPointF(3, 4));
}

TEST(SetOperations, SimilarPointKeepsABoxOffThePath)
{
    // 20 above the middle of a line, with a box of 10 by 10 (plus 5): the
    // box comes to rest with its lower side on the line.
    ZDPath oldPath = lineFrom(0, 0, 100, 0);
    ZDPath newPath = lineFrom(0, 0, 100, 0);
    const QPointF moved =
            ZDPath::getSimilarPoint(oldPath, newPath, zgPoint(50, 20), QRectF(0, 0, 10, 10));
    EXPECT_NEAR(moved.x(), 50.0, 1e-9);
    EXPECT_NEAR(moved.y(), 7.5, 1e-9);
}

TEST(SetOperations, Intersects)
{
    ZDPath a = square(0, 0, 10);
    ZDPath b = square(5, 5, 10);
    ZDPath c = square(50, 50, 10);
    EXPECT_TRUE(a.intersects(b));
    EXPECT_FALSE(a.intersects(c));
}

TEST(SetOperations, ContainsPtAndHitTest)
{
    ZDPath box = square(0, 0, 10);
    EXPECT_TRUE(box.containsPt(zgPoint(5, 5), true, false, 0.0));
    EXPECT_FALSE(box.containsPt(zgPoint(15, 5), true, false, 0.0));
    // Stroke of the default style: width 1, so 0.3 off the outline hits.
    EXPECT_TRUE(box.containsPt(zgPoint(10.3, 5), false, true, 0.0));
    EXPECT_FALSE(box.containsPt(zgPoint(10.7, 5), false, true, 0.0));
    EXPECT_EQ(box.hitTest(zgPoint(5, 5), zgStyle(), zgHitOpt()).type, zgHitFill);
    const zgHitResult stroke = box.hitTest(zgPoint(10.2, 5), zgStyle(), zgHitOpt());
    EXPECT_EQ(stroke.type, zgHitStroke);
    EXPECT_NEAR(stroke.point.x, 10.0, 1e-9);
    EXPECT_EQ(ZDPath().hitTest(zgPoint(0, 0), zgStyle(), zgHitOpt()).type, zgHitNone);
}

TEST(SetOperations, Bounds)
{
    ZDPath box = square(2, 3, 10);
    const zgRect tight = box.getBounds(zgBoundOpt(), zgStyle(), nullptr);
    EXPECT_DOUBLE_EQ(tight.x, 2.0);
    EXPECT_DOUBLE_EQ(tight.y, 3.0);
    EXPECT_DOUBLE_EQ(tight.width, 10.0);
    EXPECT_DOUBLE_EQ(tight.height, 10.0);
    zgMatrix twice;
    twice.scale(2.0, 2.0);
    const zgRect scaled = box.getBounds(zgBoundOpt(), zgStyle(), &twice);
    EXPECT_DOUBLE_EQ(scaled.width, 20.0);
}
