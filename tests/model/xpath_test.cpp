// XPath: children and their counts, the orientation rule, copying, removal,
// curves and orientation of the whole.
#include "model/model_test_support.h"

#include <gtest/gtest.h>

namespace {

zgPath *newSquare(double x, double y, double size, bool clockwise = true)
{
    QVector<zgPoint> points = zgtest::squarePoints(x, y, size);
    if (!clockwise)
        std::reverse(points.begin(), points.end());
    return zgtest::newContour(points, true);
}

// The first point after the start tells the direction of a square built by
// newSquare: (x + size, y) clockwise, (x + size, y + size) after reversal.
zgPoint secondPoint(const zgPath *path)
{
    return path->segments.at(1)->point;
}

void expectNumbered(const XPath &compound)
{
    for (int i = 0; i < compound.children.size(); ++i)
        EXPECT_EQ(compound.children.at(i)->index, i) << "child " << i;
}

TEST(XPath, DefaultsAndShallowCopy)
{
    XPath compound;
    EXPECT_TRUE(compound.evenOdd);
    EXPECT_TRUE(compound.isEmpty());
    EXPECT_TRUE(compound.bounds == zgRect());
    EXPECT_EQ(compound.getFirstChild(), nullptr);
    EXPECT_EQ(compound.getLastChild(), nullptr);

    compound.addChild(newSquare(0, 0, 10));
    XPath *copy = new XPath(compound);
    EXPECT_EQ(copy->children, compound.children);
    EXPECT_EQ(compound.children.at(0)->refCount, 1); // no reference taken
    copy->children.clear(); // the copy must not release what it never took
    delete copy;
}

TEST(XPath, AddChildSetsParentCountAndPlace)
{
    XPath compound;
    zgPath *a = newSquare(0, 0, 10);
    zgPath *b = newSquare(20, 0, 10);
    zgPath *c = newSquare(40, 0, 10);
    compound.addChild(a);
    compound.addChild(b);
    compound.addChild(c, 1);
    EXPECT_EQ(compound.children, (QVector<zgPath *>{a, c, b}));
    expectNumbered(compound);
    for (zgPath *child : compound.children) {
        EXPECT_EQ(child->parent, &compound);
        EXPECT_EQ(child->refCount, 1);
    }
    EXPECT_EQ(compound.getFirstChild(), a);
    EXPECT_EQ(compound.getLastChild(), b);
    compound.addChild(nullptr); // ignored
    EXPECT_EQ(compound.children.size(), 3);
}

TEST(XPath, TwoClockwiseSquaresKeepTheFirstAndReverseTheSecond)
{
    XPath compound;
    zgPath *first = newSquare(0, 0, 10);
    zgPath *second = newSquare(2, 2, 5);
    compound.addChild(first);
    compound.addChild(second);
    EXPECT_EQ(first->flags, 0x1u);
    EXPECT_TRUE(secondPoint(first) == zgPoint(10, 0));
    EXPECT_EQ(second->flags, 0x2u);
    EXPECT_TRUE(secondPoint(second) == zgPoint(7, 7)); // reversed
    EXPECT_TRUE(compound.isClockwise());
}

TEST(XPath, AFirstCounterClockwiseSquareIsTurned)
{
    XPath compound;
    zgPath *first = newSquare(0, 0, 10, false);
    compound.addChild(first);
    EXPECT_EQ(first->flags, 0x1u);
    EXPECT_TRUE(secondPoint(first) == zgPoint(10, 0));
}

TEST(XPath, OpenChildrenAreLeftAlone)
{
    XPath compound;
    zgPath *open = zgtest::newContour(zgtest::squarePoints(0, 0, 10), false);
    open->addFlags(0x4);
    compound.addChild(newSquare(0, 0, 1));
    compound.addChild(open, 0);
    EXPECT_EQ(open->flags, 0x4u);
    EXPECT_TRUE(secondPoint(open) == zgPoint(10, 0));
    compound.removeChild(compound.children.at(1));
    EXPECT_EQ(open->flags, 0x4u);
}

TEST(XPath, AFlaggedChildIsTakenAsItIs)
{
    XPath compound;
    compound.addChild(newSquare(0, 0, 10));
    zgPath *flagged = newSquare(2, 2, 5);
    flagged->addFlags(zgPath::ClockwiseFlag);
    compound.addChild(flagged);
    // The rule is broken: the child stays clockwise at place 1.
    EXPECT_EQ(flagged->flags, 0x1u);
    EXPECT_TRUE(secondPoint(flagged) == zgPoint(7, 2));
    EXPECT_TRUE(flagged->isClockwise());

    // A removal of any sibling corrects it.
    zgPath *sibling = newSquare(50, 50, 1);
    compound.addChild(sibling);
    compound.removeChild(sibling);
    EXPECT_EQ(flagged->flags, 0x2u);
    EXPECT_FALSE(flagged->isClockwise());
    EXPECT_TRUE(secondPoint(flagged) == zgPoint(7, 7));
}

TEST(XPath, AddChildrenKeepsTheirOrderAndOrientsTheUnflagged)
{
    XPath compound;
    zgPath *a = newSquare(0, 0, 10);
    compound.addChild(a);
    zgPath *b = newSquare(20, 0, 10);
    zgPath *c = newSquare(40, 0, 10, false);
    zgPath *d = newSquare(60, 0, 10);
    d->addFlags(zgPath::ClockwiseFlag);
    compound.addChildren({b, c, d}, 0);
    EXPECT_EQ(compound.children, (QVector<zgPath *>{b, c, d, a}));
    expectNumbered(compound);
    // Their parent is not touched.
    EXPECT_EQ(b->parent, nullptr);
    EXPECT_EQ(b->refCount, 1);
    // b comes to place 0: clockwise; c at place 1 was counter-clockwise
    // already; d is flagged and stays; a keeps its flag from before.
    EXPECT_EQ(b->flags, 0x1u);
    EXPECT_TRUE(secondPoint(b) == zgPoint(30, 0));
    EXPECT_EQ(c->flags, 0x2u);
    EXPECT_TRUE(secondPoint(c) == zgPoint(50, 10));
    EXPECT_EQ(d->flags, 0x1u);
    EXPECT_EQ(a->flags, 0x1u);

    compound.addChildren({}, -1);
    EXPECT_EQ(compound.children.size(), 4);
}

TEST(XPath, AddChildrenAppendsWithMinusOne)
{
    XPath compound;
    zgPath *a = newSquare(0, 0, 10);
    zgPath *b = newSquare(20, 0, 10);
    compound.addChildren({a, nullptr, b}, -1);
    EXPECT_EQ(compound.children, (QVector<zgPath *>{a, b}));
    EXPECT_EQ(a->flags, 0x1u);
    EXPECT_EQ(b->flags, 0x2u);
}

TEST(XPath, SetChildrenReleasesTheOldOnesFirst)
{
    XPath compound;
    zgPath *old = newSquare(0, 0, 10);
    zgPath *both = newSquare(20, 0, 10);
    compound.addChild(old);
    compound.addChild(both);
    old->addRef();
    both->addRef(); // held by the test too, as it stands in both lists
    zgPath *fresh = newSquare(40, 0, 10);
    compound.setChildren({both, fresh});
    EXPECT_EQ(compound.children, (QVector<zgPath *>{both, fresh}));
    EXPECT_EQ(old->refCount, 1);
    EXPECT_EQ(both->refCount, 2);
    expectNumbered(compound);
    old->release();
    both->release();
}

TEST(XPath, RemoveChildReleasesItOnce)
{
    XPath compound;
    zgPath *child = newSquare(0, 0, 10);
    compound.addChild(child);
    child->addRef();
    compound.removeChild(child);
    EXPECT_TRUE(compound.isEmpty());
    EXPECT_EQ(child->refCount, 1);
    child->release();
    compound.removeChild(nullptr); // nothing
}

TEST(XPath, RemoveChildOfAStrangerStillReleasesIt)
{
    XPath compound;
    compound.addChild(newSquare(0, 0, 10));
    zgPath *stranger = newSquare(20, 0, 10);
    stranger->addRef();
    stranger->addRef();
    compound.removeChild(stranger);
    EXPECT_EQ(stranger->refCount, 1);
    EXPECT_EQ(compound.children.size(), 1);
    stranger->release();
}

TEST(XPath, RemovingTheFirstOfThreeTurnsTheSecondClockwise)
{
    XPath compound;
    zgPath *first = newSquare(0, 0, 10);
    zgPath *second = newSquare(20, 0, 10);
    zgPath *third = newSquare(40, 0, 10);
    compound.addChild(first);
    compound.addChild(second);
    compound.addChild(third);
    EXPECT_TRUE(secondPoint(second) == zgPoint(30, 10)); // counter-clockwise
    compound.removeChild(first);
    EXPECT_EQ(second->index, 0);
    EXPECT_EQ(second->flags, 0x1u);
    EXPECT_TRUE(secondPoint(second) == zgPoint(30, 0)); // reversed back
    EXPECT_EQ(third->index, 1);
    EXPECT_EQ(third->flags, 0x2u);
    EXPECT_TRUE(secondPoint(third) == zgPoint(50, 10)); // untouched
}

TEST(XPath, RemoveChildrenTakesARange)
{
    XPath compound;
    QVector<zgPath *> squares;
    for (int i = 0; i < 4; ++i)
        squares.append(newSquare(20 * i, 0, 10));
    compound.addChildren(squares, -1);
    zgPath *kept = squares.at(3);
    squares.at(1)->addRef();
    compound.removeChildren(1, 3);
    EXPECT_EQ(compound.children, (QVector<zgPath *>{squares.at(0), kept}));
    EXPECT_EQ(squares.at(1)->refCount, 1);
    expectNumbered(compound);
    squares.at(1)->release();

    compound.removeChildren(1, 1); // an empty range
    EXPECT_EQ(compound.children.size(), 2);
    compound.removeChildren(0, 1);
    EXPECT_EQ(compound.children, (QVector<zgPath *>{kept}));
    EXPECT_EQ(kept->flags, 0x1u); // now first: turned clockwise
    EXPECT_TRUE(secondPoint(kept) == zgPoint(70, 0));
    compound.removeChildren(0);
    EXPECT_TRUE(compound.isEmpty());
}

TEST(XPath, ClearPathReleasesEveryChild)
{
    XPath compound;
    zgPath *a = newSquare(0, 0, 10);
    zgPath *b = newSquare(20, 0, 10);
    compound.addChildren({a, b}, -1);
    a->addRef();
    b->addRef();
    compound.clearPath();
    EXPECT_TRUE(compound.isEmpty());
    EXPECT_EQ(a->refCount, 1);
    EXPECT_EQ(b->refCount, 1);
    {
        XPath holder;
        holder.addChildren({a, b}, -1);
        EXPECT_EQ(a->refCount, 2);
    } // the destructor goes through clearPath
    EXPECT_EQ(a->refCount, 1);
    EXPECT_EQ(b->refCount, 1);
    a->release();
    b->release();
}

TEST(XPath, CloneAndAssignCopyDeeply)
{
    XPath source;
    source.evenOdd = false;
    source.bounds = zgRect(1, 2, 3, 4);
    source.addChild(newSquare(0, 0, 10));
    source.addChild(newSquare(2, 2, 5));
    source.addChild(zgtest::newContour({zgPoint(0, 0), zgPoint(5, 5)}, false));
    XPath *copy = source.clone();
    EXPECT_FALSE(copy->evenOdd);
    EXPECT_TRUE(copy->bounds == zgRect(1, 2, 3, 4));
    ASSERT_EQ(copy->children.size(), 3);
    for (int i = 0; i < 3; ++i) {
        zgPath *child = copy->children.at(i);
        EXPECT_NE(child, source.children.at(i));
        EXPECT_TRUE(child->equals(source.children.at(i)));
        EXPECT_EQ(child->parent, copy);
        EXPECT_EQ(child->index, i);
        EXPECT_EQ(child->refCount, 1);
        EXPECT_EQ(child->flags, 0u); // flags are not copied
        EXPECT_NE(child->segments.at(0), source.children.at(i)->segments.at(0));
    }
    // Existing children stay: assign appends.
    copy->assign(&source);
    EXPECT_EQ(copy->children.size(), 6);
    EXPECT_EQ(copy->children.at(4)->index, 1); // its place in the source
    delete copy;
}

TEST(XPath, GetCurvesConcatenatesTheChildren)
{
    XPath compound;
    compound.addChild(newSquare(0, 0, 10));
    compound.addChild(zgtest::newContour({zgPoint(0, 0), zgPoint(5, 5), zgPoint(9, 9)}, false));
    compound.addChild(new zgPath(nullptr, false));
    const QList<zgCurve *> curves = compound.getCurves();
    ASSERT_EQ(curves.size(), 6);
    EXPECT_EQ(curves.at(0), compound.children.at(0)->curves.at(0));
    EXPECT_EQ(curves.at(4), compound.children.at(1)->curves.at(0));
    EXPECT_EQ(curves.at(0)->refCount, 1); // held by its contour only
}

TEST(XPath, ClockwiseOfAnEmptyCompound)
{
    XPath compound;
    EXPECT_FALSE(compound.isClockwise());
    compound.setClockwise(false);
    compound.setClockwise(true); // reverses no children
    EXPECT_TRUE(compound.isEmpty());
    compound.reverse();
}

TEST(XPath, SetClockwiseReversesAllChildren)
{
    XPath compound;
    zgPath *outer = newSquare(0, 0, 10);
    zgPath *inner = newSquare(2, 2, 5);
    compound.addChild(outer);
    compound.addChild(inner);
    compound.setClockwise(true); // already so: nothing
    EXPECT_EQ(outer->flags, 0x1u);
    compound.setClockwise(false);
    EXPECT_FALSE(compound.isClockwise());
    EXPECT_EQ(outer->flags, 0x2u);
    EXPECT_EQ(inner->flags, 0x1u);
    EXPECT_EQ(compound.children, (QVector<zgPath *>{outer, inner})); // order kept
    EXPECT_TRUE(secondPoint(outer) == zgPoint(10, 10));
}

TEST(XPath, OrientationWithoutFlagsReadsTheArea)
{
    XPath compound;
    zgPath *degenerate = zgtest::newContour({zgPoint(0, 0), zgPoint(10, 0)}, true);
    compound.addChild(degenerate); // zero area counts as clockwise: no reversal
    EXPECT_TRUE(secondPoint(degenerate) == zgPoint(10, 0));
    EXPECT_EQ(degenerate->flags, 0x1u);
}

} // namespace
