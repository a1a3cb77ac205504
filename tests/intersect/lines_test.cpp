// Straight curves and the dispatcher: addLineIntersection,
// addCurveLineIntersections, and zgCurve::getIntersections with its box
// rejection, its choice of finder and its end-point fall-back; known answers
// for nine crossings, tangent arcs, meeting ends and extreme scales.
#include "intersect/crossing_fixtures.h"

#include <gtest/gtest.h>

#include <cmath>

using crossingtest::Contour;
using crossingtest::FreeCurve;
using crossingtest::noPoint;
using crossingtest::releaseAll;
using crossingtest::timeOn;
using crossingtest::values;

namespace {

// Runs the dispatcher on two free curves and hands back the list.
class Dispatch
{
public:
    Dispatch(const QVector<double> &a, const QVector<double> &b, opParam param = opParam())
        : m_a(a), m_b(b), m_param(param)
    {
        const QList<zgCurveLocation *> copy = zgCurve::getIntersections(
                a, b, m_a.get(), m_b.get(), m_list, m_param);
        m_copyMatches = copy == m_list;
    }
    ~Dispatch() { releaseAll(m_list); }

    int size() const { return m_list.size(); }
    zgCurveLocation *at(int i) const { return m_list.at(i); }
    double t(int i) const { return timeOn(m_list.at(i), m_a.get()); }
    double u(int i) const { return timeOn(m_list.at(i), m_b.get()); }
    zgCurve *a() const { return m_a.get(); }
    zgCurve *b() const { return m_b.get(); }
    bool copyMatches() const { return m_copyMatches; }

private:
    FreeCurve m_a;
    FreeCurve m_b;
    opParam m_param;
    QList<zgCurveLocation *> m_list;
    bool m_copyMatches = false;
};

// Finder runs on two free curves into a fresh list.
typedef void (*Finder)(QVector<double>, QVector<double>, zgCurve *, zgCurve *,
                       QList<zgCurveLocation *> &, opParam &);

QList<zgCurveLocation *> runFinder(Finder finder, const FreeCurve &a, const FreeCurve &b,
                                   opParam param = opParam())
{
    QList<zgCurveLocation *> list;
    finder(a.values(), b.values(), a.get(), b.get(), list, param);
    return list;
}

// The cubic y = 3 T3(x / 3) on x in [-3, 3]: zero at x = 0 and x = +-3 sqrt(3) / 2,
// that is at t = 0.5 and t = (1 +- sqrt(3) / 2) / 2.
const QVector<double> kChebyshev = values(-3, -3, -1, 15, 1, -15, 3, 3);
const double kRoot3 = std::sqrt(3.0);
const double kLowRoot = (1.0 - kRoot3 / 2.0) / 2.0;
const double kHighRoot = (1.0 + kRoot3 / 2.0) / 2.0;
// The x axis from -4 to 4, with handles at the thirds so that time and
// position along it agree.
const QVector<double> kAxis = values(-4, 0, -4.0 / 3.0, 0, 4.0 / 3.0, 0, 4, 0);

// Two scaled Chebyshev cubics, one turned a quarter turn and moved by
// (0.1, 0.05): nine crossings. Reference times and points by Newton's method.
const QVector<double> kNineA = values(-3, -3.3, -1, 16.5, 1, -16.5, 3, 3.3);
const QVector<double> kNineB = values(-3.2, -2.95, 16.6, -0.95, -16.4, 1.05, 3.4, 3.05);
const double kNine[9][4] = {
    { 0.006411342648762, 0.004058416893542, -2.961531944107428, -2.925649498638747 },
    { 0.092370020444669, 0.644750179808725, -2.445779877331988, 0.918501078852350 },
    { 0.139591052326823, 0.857069034066934, -2.162453686039061, 2.192414204401604 },
    { 0.359344777961772, 0.906853244755790, -0.843931332229369, 2.491119468534743 },
    { 0.495533218558945, 0.506405476877891, -0.026800688646328, 0.088432861267343 },
    { 0.636317197523538, 0.086402435040505, 0.817903185141231, -2.431585389756973 },
    { 0.862635331154625, 0.134281260823542, 2.175811986927749, -2.144312435058746 },
    { 0.912818901750294, 0.367565974501121, 2.476913410501762, -0.744604152993277 },
    { 0.994978157630572, 0.992613977231951, 2.969868945783434, 3.005683863391706 },
};
// The same pair unmoved, symmetric about the origin, which it crosses at
// t = u = 0.5 exactly.
const QVector<double> kNineSymmetricB = values(-3.3, -3, 16.5, -1, -16.5, 1, 3.3, 3);

const QVector<double> kArch = values(0, 0, 30, 60, 70, 60, 100, 0);
const QVector<double> kRiser = values(20, -10, 30, 40, 60, 30, 80, 70);
const double kRiserT = 0.58650344526090314;
const double kRiserU = 0.68512847967064694;

QVector<double> scaled(QVector<double> v, double factor)
{
    for (double &c : v)
        c *= factor;
    return v;
}

// A quarter-circle-like arc of radius 10 about (cx, 0) between the angles
// from and to (radians), as one cubic.
QVector<double> arc(double cx, double from, double to)
{
    const double r = 10.0;
    const double handle = 4.0 / 3.0 * std::tan((to - from) / 4.0) * r;
    const double x0 = cx + r * std::cos(from), y0 = r * std::sin(from);
    const double x3 = cx + r * std::cos(to), y3 = r * std::sin(to);
    return values(x0, y0, x0 - handle * std::sin(from), y0 + handle * std::cos(from),
                  x3 + handle * std::sin(to), y3 - handle * std::cos(to), x3, y3);
}

const double kPi = 3.14159265358979323846;

} // namespace

// addLineIntersection ---------------------------------------------------------

TEST(AddLineIntersection, CrossingChordsGiveOnePairWithTimesFromThePoint)
{
    FreeCurve a(values(0, 0, 0, 0, 10, 10, 10, 10)), b(values(0, 10, 0, 10, 10, 0, 10, 0));
    QList<zgCurveLocation *> list = runFinder(zgCurve::addLineIntersection, a, b);
    ASSERT_EQ(list.size(), 1);
    EXPECT_NEAR(list.at(0)->point.x, 5.0, 1e-12);
    EXPECT_NEAR(list.at(0)->point.y, 5.0, 1e-12);
    EXPECT_NEAR(timeOn(list.at(0), a.get()), 0.5, 1e-9);
    EXPECT_NEAR(timeOn(list.at(0), b.get()), 0.5, 1e-9);
    EXPECT_FALSE(list.at(0)->overlap);
    releaseAll(list);
}

TEST(AddLineIntersection, HandlesOnTheChordChangeTheTimeNotThePoint)
{
    // Handles at a quarter: the crossing at the middle of the chord is still
    // at time 0.5 by symmetry, and at (5, 5).
    FreeCurve a(values(0, 0, 2.5, 2.5, 7.5, 7.5, 10, 10)), b(values(0, 10, 0, 10, 8, 2, 10, 0));
    QList<zgCurveLocation *> list = runFinder(zgCurve::addLineIntersection, a, b);
    ASSERT_EQ(list.size(), 1);
    EXPECT_NEAR(list.at(0)->point.x, 5.0, 1e-12);
    EXPECT_NEAR(timeOn(list.at(0), a.get()), 0.5, 1e-9);
    const double u = timeOn(list.at(0), b.get());
    EXPECT_GT(u, 0.5 + 1e-3); // the second curve is slow at its start
    EXPECT_NEAR(zgCurve::getPoint(b.values(), u).getDistance(zgPoint(5, 5)), 0.0, 2e-07);
    releaseAll(list);
}

TEST(AddLineIntersection, CrossingBeyondAnEndDoesNotCount)
{
    FreeCurve a(values(0, 0, 0, 0, 1, 1, 1, 1)), b(values(0, 10, 0, 10, 10, 0, 10, 0));
    EXPECT_TRUE(runFinder(zgCurve::addLineIntersection, a, b).isEmpty());
}

TEST(AddLineIntersection, ParallelChordsGiveNothing)
{
    FreeCurve a(values(0, 0, 0, 0, 10, 0, 10, 0)), b(values(0, 1, 0, 1, 10, 1, 10, 1));
    EXPECT_TRUE(runFinder(zgCurve::addLineIntersection, a, b).isEmpty());
    // Collinear: still parallel for the chord crossing.
    FreeCurve c(values(5, 0, 5, 0, 15, 0, 15, 0));
    EXPECT_TRUE(runFinder(zgCurve::addLineIntersection, a, c).isEmpty());
}

TEST(AddLineIntersection, MeetingAtAnEndIsReported)
{
    FreeCurve a(values(0, 0, 0, 0, 10, 0, 10, 0)), b(values(10, 0, 10, 0, 10, 10, 10, 10));
    QList<zgCurveLocation *> list = runFinder(zgCurve::addLineIntersection, a, b);
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(timeOn(list.at(0), a.get()), 1.0);
    EXPECT_EQ(timeOn(list.at(0), b.get()), 0.0);
    releaseAll(list);
    // Adjacent curves joined there do not report it.
    opParam joined;
    joined.joinedAtEnd = true;
    EXPECT_TRUE(runFinder(zgCurve::addLineIntersection, a, b, joined).isEmpty());
}

TEST(AddLineIntersection, NearlyParallelLines)
{
    // A crossing angle of 2e-07 radians is still a crossing.
    FreeCurve a(values(0, 0, 0, 0, 100, 1e-05, 100, 1e-05));
    FreeCurve b(values(0, 1e-05, 0, 1e-05, 100, 0, 100, 0));
    QList<zgCurveLocation *> list = runFinder(zgCurve::addLineIntersection, a, b);
    ASSERT_EQ(list.size(), 1);
    EXPECT_NEAR(list.at(0)->point.x, 50.0, 1e-6);
    EXPECT_NEAR(list.at(0)->point.y, 5e-06, 1e-12);
    releaseAll(list);
    // A cross product of the chords within 1e-12 counts as parallel.
    FreeCurve c(values(0, 0, 0, 0, 1, 1e-13, 1, 1e-13));
    FreeCurve d(values(0, 1e-13, 0, 1e-13, 1, 0, 1, 0));
    EXPECT_TRUE(runFinder(zgCurve::addLineIntersection, c, d).isEmpty());
}

// addCurveLineIntersections ---------------------------------------------------

TEST(AddCurveLineIntersections, CubicAndLineCrossThreeTimes)
{
    FreeCurve curve(kChebyshev), line(kAxis);
    QList<zgCurveLocation *> list = runFinder(zgCurve::addCurveLineIntersections, curve, line);
    ASSERT_EQ(list.size(), 3);
    const double expected[3] = { kLowRoot, 0.5, kHighRoot };
    for (int i = 0; i < 3; ++i) {
        const double t = timeOn(list.at(i), curve.get());
        EXPECT_NEAR(t, expected[i], 1e-12);
        const double x = 3.0 * (2.0 * expected[i] - 1.0);
        EXPECT_NEAR(timeOn(list.at(i), line.get()), (x + 4.0) / 8.0, 1e-9);
        EXPECT_NEAR(list.at(i)->point.x, x, 1e-9);
        EXPECT_NEAR(list.at(i)->point.y, 0.0, 1e-9);
        EXPECT_EQ(list.at(i)->curve, curve.get());
    }
    releaseAll(list);
}

TEST(AddCurveLineIntersections, LineFirstKeepsTheOrderOfTheArguments)
{
    FreeCurve line(kAxis), curve(kChebyshev);
    QList<zgCurveLocation *> list = runFinder(zgCurve::addCurveLineIntersections, line, curve);
    ASSERT_EQ(list.size(), 3);
    // The listed side lies on the first argument, the line, sorted by its time.
    EXPECT_EQ(list.at(0)->curve, line.get());
    EXPECT_NEAR(timeOn(list.at(0), curve.get()), kLowRoot, 1e-12);
    EXPECT_NEAR(timeOn(list.at(2), curve.get()), kHighRoot, 1e-12);
    EXPECT_LT(list.at(0)->time, list.at(1)->time);
    releaseAll(list);
}

TEST(AddCurveLineIntersections, RootsBeyondTheLineArePassedOver)
{
    FreeCurve curve(kChebyshev), line(values(-1, 0, -1, 0, 1, 0, 1, 0));
    QList<zgCurveLocation *> list = runFinder(zgCurve::addCurveLineIntersections, curve, line);
    ASSERT_EQ(list.size(), 1);
    EXPECT_NEAR(list.at(0)->time, 0.5, 1e-12);
    EXPECT_NEAR(timeOn(list.at(0), line.get()), 0.5, 1e-9);
    releaseAll(list);
}

TEST(AddCurveLineIntersections, EndTimesAreIncluded)
{
    // The curve ends on the line through (3, 3).
    FreeCurve curve(kChebyshev), line(values(0, 3, 0, 3, 6, 3, 6, 3));
    QList<zgCurveLocation *> list = runFinder(zgCurve::addCurveLineIntersections, curve, line);
    ASSERT_GE(list.size(), 1);
    zgCurveLocation *last = list.last();
    EXPECT_NEAR(last->time, 1.0, 1e-12);
    EXPECT_NEAR(timeOn(last, line.get()), 0.5, 1e-9);
    releaseAll(list);
}

TEST(AddCurveLineIntersections, JoinedAtEndDropsAHitAtTheStartOfTheSecond)
{
    // The line starts at the middle crossing (0, 0).
    FreeCurve curve(kChebyshev), line(values(0, 0, 0, 0, 4, 0, 4, 0));
    QList<zgCurveLocation *> open = runFinder(zgCurve::addCurveLineIntersections, curve, line);
    ASSERT_EQ(open.size(), 2);
    EXPECT_EQ(timeOn(open.at(0), line.get()), 0.0);
    releaseAll(open);
    opParam joined;
    joined.joinedAtEnd = true;
    QList<zgCurveLocation *> list =
            runFinder(zgCurve::addCurveLineIntersections, curve, line, joined);
    ASSERT_EQ(list.size(), 1);
    EXPECT_NEAR(list.at(0)->time, kHighRoot, 1e-12);
    releaseAll(list);
}

TEST(AddCurveLineIntersections, TangentLineTouchesOnce)
{
    // The arch peaks at y = 45 at t = 0.5; the double root is listed once.
    FreeCurve curve(kArch), line(values(0, 45, 0, 45, 100, 45, 100, 45));
    QList<zgCurveLocation *> list = runFinder(zgCurve::addCurveLineIntersections, curve, line);
    ASSERT_EQ(list.size(), 1);
    EXPECT_NEAR(list.at(0)->time, 0.5, 1e-7);
    EXPECT_NEAR(list.at(0)->point.y, 45.0, 1e-9);
    releaseAll(list);
}

// getIntersections: dispatch ------------------------------------------------------

TEST(GetIntersections, ReturnsACopyOfTheList)
{
    Dispatch run(kArch, kRiser);
    EXPECT_TRUE(run.copyMatches());
    ASSERT_EQ(run.size(), 1);
}

TEST(GetIntersections, TwoCubicsWithNineCrossings)
{
    Dispatch run(kNineA, kNineB);
    ASSERT_EQ(run.size(), 9);
    for (int i = 0; i < 9; ++i) {
        EXPECT_NEAR(run.t(i), kNine[i][0], 1e-9) << i;
        EXPECT_NEAR(run.u(i), kNine[i][1], 1e-9) << i;
        const zgPoint expected(kNine[i][2], kNine[i][3]);
        EXPECT_NEAR(run.at(i)->point.getDistance(expected), 0.0, 1e-7) << i;
        EXPECT_NEAR(run.at(i)->intersection()->point.getDistance(expected), 0.0, 1e-7) << i;
    }
}

TEST(GetIntersections, CrossingOnAHalvingPointIsListedOncePerBranch)
{
    // The symmetric pair crosses at t = u = 0.5, where the halving of both
    // curves cuts. Four branches of the search end on that point. The merge
    // of the insertion compares only the leading run of entries at the
    // point, and the list starts with the crossing near the start, so none
    // of the four merges: twelve entries for nine crossings.
    Dispatch run(kNineA, kNineSymmetricB);
    ASSERT_EQ(run.size(), 12);
    int atCentre = 0;
    for (int i = 0; i < run.size(); ++i) {
        if (run.at(i)->point.getDistance(zgPoint(0, 0)) < 1e-9) {
            ++atCentre;
            EXPECT_EQ(run.t(i), 0.5);
            EXPECT_EQ(run.u(i), 0.5);
        }
    }
    EXPECT_EQ(atCentre, 4);
    EXPECT_EQ(run.at(4)->point, run.at(7)->point);
    EXPECT_LT(run.t(3), 0.5);
    EXPECT_GT(run.t(8), 0.5);
}

TEST(GetIntersections, CubicAndLineThroughTheDispatcher)
{
    Dispatch run(kAxis, kChebyshev);
    ASSERT_EQ(run.size(), 3);
    EXPECT_NEAR(run.u(0), kLowRoot, 1e-12);
    EXPECT_NEAR(run.u(1), 0.5, 1e-12);
    EXPECT_NEAR(run.u(2), kHighRoot, 1e-12);
}

TEST(GetIntersections, BoxRejectionIsStrictWithAMarginOf2e07)
{
    // The first curve ends at x = 0 and lies left of it, the second starts at
    // x = gap and lies right of it; the ends are gap apart.
    const QVector<double> left = values(-10, 5, -8, 10, -2, -4, 0, 0);
    for (double gap : { 2e-07, 1e-07 }) {
        const QVector<double> right = values(gap, 0, 2, 4, 8, -10, 10, 5);
        Dispatch run(left, right);
        if (gap == 2e-07) {
            // The ends are 2e-07 apart, close by the end-point test, but the
            // boxes do not overlap with the strict margin.
            EXPECT_EQ(run.size(), 0);
        } else {
            ASSERT_EQ(run.size(), 1);
            EXPECT_EQ(run.t(0), 1.0);
            EXPECT_EQ(run.u(0), 0.0);
        }
    }
    // The same on the y axis.
    const QVector<double> below = values(5, -10, 10, -8, -4, -2, 0, 0);
    Dispatch far(below, values(0, 2e-07, 4, 2, -10, 8, 5, 10));
    EXPECT_EQ(far.size(), 0);
    Dispatch near(below, values(0, 1e-07, 4, 2, -10, 8, 5, 10));
    EXPECT_EQ(near.size(), 1);
}

TEST(GetIntersections, BoxOfTheThreeQuarterPoints)
{
    // The arch's control box reaches y = 60, the box of its three-quarter
    // points only 45, which is the true top of the curve.
    Dispatch above(kArch, values(0, 46, 0, 46, 100, 46, 100, 46));
    EXPECT_EQ(above.size(), 0);
    Dispatch touching(kArch, values(0, 45, 0, 45, 100, 45, 100, 45));
    ASSERT_EQ(touching.size(), 1);
    EXPECT_NEAR(touching.t(0), 0.5, 1e-7);
}

TEST(GetIntersections, ThreeQuarterBoxCanMissTheTopOfACurve)
{
    // The first curve's y control values are 0, 130, 100, 100: it rises to
    // about 100.92 near t = 0.55, while its three-quarter points stop at 100.
    // The second curve runs at y = 100.5 to 100.575 and crosses it twice, but
    // the boxes are apart by the rule, so the dispatcher reports nothing.
    const QVector<double> rising = values(0, 0, 30, 130, 70, 100, 100, 100);
    const QVector<double> flat = values(0, 100.5, 30, 100.6, 70, 100.6, 100, 100.5);
    FreeCurve a(rising), b(flat);
    QList<zgCurveLocation *> clipped;
    opParam param;
    zgCurve::addCurveIntersections(rising, flat, a.get(), b.get(), clipped, param, 0.0, 1.0, 0.0,
                                   1.0, false, 0.0, 0);
    EXPECT_EQ(clipped.size(), 2);
    releaseAll(clipped);
    Dispatch run(rising, flat);
    EXPECT_EQ(run.size(), 0);
}

TEST(GetIntersections, CurvesMeetingAtTheirEnds)
{
    // A corner: the clipping finds the common point itself.
    const QVector<double> hump = values(0, 0, 10, 20, 30, 20, 40, 0);
    Dispatch corner(hump, values(40, 0, 40, 30, 60, 30, 70, 0));
    ASSERT_EQ(corner.size(), 1);
    EXPECT_NEAR(corner.t(0), 1.0, 1e-9);
    EXPECT_NEAR(corner.u(0), 0.0, 1e-9);
    EXPECT_NEAR(corner.at(0)->point.getDistance(zgPoint(40, 0)), 0.0, 1e-9);
    // Joined at that end, the pair is the joint of a contour and is not reported.
    opParam joined;
    joined.joinedAtEnd = true;
    Dispatch adjacent(hump, values(40, 0, 40, 30, 60, 30, 70, 0), joined);
    EXPECT_EQ(adjacent.size(), 0);
}

TEST(GetIntersections, EndToEndTouchMissedByClippingIsCaughtAtTheEnds)
{
    // Two arcs of circles that touch from outside at (10, 0), both starting
    // there: tangent at the common point.
    const QVector<double> first = arc(0.0, 0.0, kPi / 2.0);
    const QVector<double> second = arc(20.0, kPi, kPi / 2.0);
    FreeCurve a(first), b(second);
    QList<zgCurveLocation *> clipped;
    opParam param;
    zgCurve::addCurveIntersections(first, second, a.get(), b.get(), clipped, param, 0.0, 1.0,
                                   0.0, 1.0, false, 0.0, 0);
    EXPECT_TRUE(clipped.isEmpty());

    Dispatch run(first, second);
    ASSERT_EQ(run.size(), 1);
    EXPECT_EQ(run.t(0), 0.0);
    EXPECT_EQ(run.u(0), 0.0);
    EXPECT_EQ(run.at(0)->point, zgPoint(10, 0));
}

TEST(GetIntersections, TangentArcsTouchingInTheirMiddlesReachTheDepthLimit)
{
    // The same circles with arcs from -45 to 45 degrees about the touching
    // point. The clipping halves the ranges at each step and runs into the
    // depth limit before they shrink to 1e-09; the ends are far apart, so
    // nothing is reported.
    const QVector<double> first = arc(0.0, -kPi / 4.0, kPi / 4.0);
    const QVector<double> second = arc(20.0, kPi + kPi / 4.0, kPi - kPi / 4.0);
    EXPECT_NEAR(zgCurve::getPoint(first, 0.5).getDistance(zgPoint(10, 0)), 0.0, 1e-12);
    EXPECT_NEAR(zgCurve::getPoint(second, 0.5).getDistance(zgPoint(10, 0)), 0.0, 1e-12);
    Dispatch run(first, second);
    EXPECT_EQ(run.size(), 0);
    // Moved 1e-03 into each other, the circles cross twice near the point.
    QVector<double> moved = second;
    for (int i = 0; i < 8; i += 2)
        moved[i] -= 1e-03;
    Dispatch crossing(first, moved);
    ASSERT_EQ(crossing.size(), 2);
    EXPECT_NEAR(crossing.at(0)->point.x, 10.0 - 5e-04, 1e-6);
    EXPECT_NEAR(crossing.at(1)->point.x, 10.0 - 5e-04, 1e-6);
}

TEST(GetIntersections, FilteredHitStillLetsTheEndsBeTried)
{
    // A curve that leaves the start of a quarter circle along its tangent and
    // crosses it further on. The clipping finds the inner crossing and not
    // the tangent start; the list has grown, so the ends are not tried.
    const QVector<double> quarter = arc(0.0, 0.0, kPi / 2.0);
    const QVector<double> second = values(10, 0, 10, 5, 0, 5, 5, 15);
    Dispatch plain(quarter, second);
    ASSERT_EQ(plain.size(), 1);
    double t = plain.t(0), u = plain.u(0);
    ASSERT_TRUE(crossingtest::polishCrossing(quarter, second, t, u));
    EXPECT_NEAR(plain.t(0), t, 1e-9);
    EXPECT_NEAR(plain.u(0), u, 1e-9);
    // A filter that takes only exact end times refuses that crossing; the list
    // does not grow, so the end-point pairs are tried and the start is found.
    opParam param;
    param.filter = [](zgCurveLocation *location) {
        return location->time == 0.0 || location->time == 1.0;
    };
    Dispatch filtered(quarter, second, param);
    ASSERT_EQ(filtered.size(), 1);
    EXPECT_EQ(filtered.t(0), 0.0);
    EXPECT_EQ(filtered.u(0), 0.0);
    EXPECT_EQ(filtered.at(0)->point, zgPoint(10, 0));
}

TEST(GetIntersections, EndPointPairsFollowTheJoins)
{
    // A closed lens of two arcs: start meets end and end meets start.
    const QVector<double> upper = values(0, 0, 10, 10, 30, 10, 40, 0);
    const QVector<double> lower = values(40, 0, 30, -10, 10, -10, 0, 0);
    Dispatch both(upper, lower);
    ASSERT_EQ(both.size(), 2);
    EXPECT_NEAR(both.t(0), 0.0, 1e-9);
    EXPECT_NEAR(both.u(0), 1.0, 1e-9);
    EXPECT_NEAR(both.t(1), 1.0, 1e-9);
    EXPECT_NEAR(both.u(1), 0.0, 1e-9);
    opParam start;
    start.joinedAtStart = true;
    Dispatch joinedStart(upper, lower, start);
    ASSERT_EQ(joinedStart.size(), 1);
    EXPECT_NEAR(joinedStart.t(0), 1.0, 1e-9);
    opParam all;
    all.joinedAtStart = true;
    all.joinedAtEnd = true;
    Dispatch joinedBoth(upper, lower, all);
    EXPECT_EQ(joinedBoth.size(), 0);
}

TEST(GetIntersections, StraightPairHasNoEndPointFallBack)
{
    // Chords that miss each other by 1e-07 at an end: the line road reports
    // nothing and does not try the ends, though they are close.
    Dispatch run(values(0, 0, 0, 0, 10, 0, 10, 0), values(10, 1e-07, 10, 1e-07, 10, 10, 10, 10));
    EXPECT_EQ(run.size(), 0);
    // A curved partner at the same place is caught by the ends.
    Dispatch curved(values(0, 0, 0, 0, 10, 0, 10, 0),
                    values(10, 1e-07, 14, 3, 6, 7, 10, 10));
    ASSERT_EQ(curved.size(), 1);
    EXPECT_EQ(curved.t(0), 1.0);
    EXPECT_EQ(curved.u(0), 0.0);
}

TEST(GetIntersections, TinyCoordinates)
{
    for (double factor : { 1e-07, 1e-08 }) {
        Dispatch run(scaled(kArch, factor), scaled(kRiser, factor));
        ASSERT_EQ(run.size(), 1) << factor;
        EXPECT_NEAR(run.t(0), kRiserT, 1e-9);
        EXPECT_NEAR(run.u(0), kRiserU, 1e-9);
        const zgPoint expected = crossingtest::pointOf(scaled(kArch, factor), kRiserT);
        EXPECT_NEAR(run.at(0)->point.getDistance(expected), 0.0, factor * 1e-7);
    }
}

TEST(GetIntersections, HugeCoordinates)
{
    for (double factor : { 1e4, 1e5 }) {
        Dispatch run(scaled(kArch, factor), scaled(kRiser, factor));
        ASSERT_EQ(run.size(), 1) << factor;
        EXPECT_NEAR(run.t(0), kRiserT, 1e-9);
        EXPECT_NEAR(run.u(0), kRiserU, 1e-9);
        const zgPoint expected = crossingtest::pointOf(scaled(kArch, factor), kRiserT);
        // The times are as good as at any scale; the points follow the speed.
        EXPECT_NEAR(run.at(0)->point.getDistance(expected), 0.0, factor * 1e-7);
        EXPECT_NEAR(run.at(0)->point.getDistance(run.at(0)->intersection()->point), 0.0,
                    factor * 1e-7);
    }
}

TEST(GetIntersections, CurvesOfAContourAreListedByIndex)
{
    // A closed contour: the arch, then straight curves (100, 0) - (80, 70) -
    // (20, -10) - back to the start. The third curve crosses the arch.
    Contour contour(true);
    contour.add(0, 0, 0, 0, 30, 60);
    contour.add(100, 0, -30, 60, 0, 0);
    contour.add(80, 70);
    contour.add(20, -10);
    zgCurve *first = contour.curve(0);
    zgCurve *third = contour.curve(2);
    ASSERT_EQ(first->getValues(), kArch);
    opParam param;
    QList<zgCurveLocation *> list;
    zgCurve::getIntersections(third->getValues(), first->getValues(), third, first, list,
                              param);
    ASSERT_EQ(list.size(), 1);
    // The listed side is the one on the curve of lower index.
    EXPECT_EQ(list.at(0)->curve, first);
    EXPECT_EQ(list.at(0)->intersection()->curve, third);
    double t = list.at(0)->time, u = list.at(0)->intersection()->time;
    ASSERT_TRUE(crossingtest::polishCrossing(first->getValues(), third->getValues(), t, u));
    EXPECT_NEAR(list.at(0)->time, t, 1e-9);
    releaseAll(list);
}

TEST(GetIntersectionsCurve, OtherCurveGivesTheirCrossings)
{
    FreeCurve a(kArch), b(kRiser);
    QList<zgCurveLocation *> list = a.get()->getIntersectionscurve(b.get());
    ASSERT_EQ(list.size(), 1);
    EXPECT_NEAR(timeOn(list.at(0), a.get()), kRiserT, 1e-9);
    EXPECT_NEAR(timeOn(list.at(0), b.get()), kRiserU, 1e-9);
    releaseAll(list);
}

TEST(GetIntersections, ShortOrEmptyArraysAreHarmless)
{
    FreeCurve a(kArch);
    opParam param;
    QList<zgCurveLocation *> list;
    zgCurve::getIntersections(values(0, 0, 1, 1, 2, 2, 3, 3).mid(0, 5), kArch, a.get(),
                              a.get(), list, param);
    zgCurve::getIntersections(kArch, QVector<double>{ 1.0, 2.0 }, a.get(), a.get(), list, param);
    zgCurve::getIntersections(QVector<double>(), QVector<double>(), nullptr, nullptr, list,
                              param);
    EXPECT_TRUE(list.isEmpty());
}
