// Flattening contours into chords within a flatness.
#include "curve/curve_test_util.h"
#include "services/services_test_support.h"

#include <cmath>
#include <cstdio>

using namespace zgtest;

// Reaches the private leaf walk of zgPath::flatten.
class zgFlattenInternals
{
public:
    static QVector<zgFlatPart> parts(const QVector<double> &values, double flatness, int index = 0)
    {
        QVector<zgFlatPart> parts;
        double length = 0.0;
        zgPath::addFlatParts(parts, length, flatness, values, index, 0.0, 1.0);
        return parts;
    }
};

namespace {

// An S-shaped cubic with no straight piece.
const QVector<double> kWave = curvetest::values(0, 0, 30, 100, 70, -100, 100, 0);

zgPoint curvePoint(const QVector<double> &v, double t)
{
    long double x = 0, y = 0;
    curvetest::bernstein(v, t, x, y);
    return zgPoint(double(x), double(y));
}

// An open contour of one cubic given by its 8 values.
void setCubic(zgPath &path, const QVector<double> &v)
{
    path.addSegment(new zgSegment(zgPoint(v[0], v[1]), zgPoint(), zgPoint(v[2] - v[0], v[3] - v[1])));
    path.addSegment(new zgSegment(zgPoint(v[6], v[7]), zgPoint(v[4] - v[6], v[5] - v[7]), zgPoint()));
}

// Largest distance from the cubic v to the segment a-b, by dense sampling.
double deviationFromChord(const QVector<double> &v)
{
    const zgPoint a(v[0], v[1]);
    const zgPoint b(v[6], v[7]);
    const zgPoint ab = b.subtract(a);
    const double ab2 = ab.dot(ab);
    double worst = 0.0;
    for (int i = 0; i <= 200; ++i) {
        const zgPoint p = curvePoint(v, i / 200.0);
        double s = ab2 > 0.0 ? p.subtract(a).dot(ab) / ab2 : 0.0;
        s = qBound(0.0, s, 1.0);
        worst = qMax(worst, p.getDistance(a.add(ab.multiply(s))));
    }
    return worst;
}

bool hasNoHandles(const zgPath &path)
{
    for (const zgSegment *segment : path.segments) {
        if (segment->hasHandles())
            return false;
    }
    return true;
}

} // namespace

TEST(PathFlatten, FlatnessZeroCutsEachCurveInto256Chords)
{
    zgPath path;
    setCubic(path, kWave);
    path.flatten(0.0);
    ASSERT_EQ(path.segments.size(), 257);
    for (int k = 0; k <= 256; ++k) {
        const zgPoint expected = curvePoint(kWave, k / 256.0);
        expectPoint(path.segments.at(k)->point, expected.x, expected.y, 1e-9);
    }
    EXPECT_TRUE(hasNoHandles(path));
    EXPECT_FALSE(path.closed);
    expectConsistent(path);
}

TEST(PathFlatten, LeavesCarryTimesOffsetsAndIndex)
{
    const QVector<zgFlatPart> parts = zgFlattenInternals::parts(kWave, 0.0, 7);
    ASSERT_EQ(parts.size(), 256);
    double running = 0.0;
    for (int k = 0; k < 256; ++k) {
        const zgFlatPart &part = parts.at(k);
        EXPECT_EQ(part.index, 7);
        EXPECT_DOUBLE_EQ(part.time, (k + 1) / 256.0);
        const zgPoint from = curvePoint(kWave, k / 256.0);
        const zgPoint to = curvePoint(kWave, (k + 1) / 256.0);
        running += from.getDistance(to);
        EXPECT_NEAR(part.offset, running, 1e-9);
        ASSERT_EQ(part.values.size(), 8);
        EXPECT_NEAR(part.values[6], to.x, 1e-9);
        EXPECT_NEAR(part.values[7], to.y, 1e-9);
    }
}

TEST(PathFlatten, HalvesUntilFlatEnough)
{
    // A symmetric arch with its control points 100 above the thirds of the
    // chord: 3 * 100 <= 4 * flatness holds from a flatness of 75 on.
    const QVector<double> arch = curvetest::values(0, 0, 30, 100, 60, 100, 90, 0);
    EXPECT_EQ(zgFlattenInternals::parts(arch, 75.0).size(), 1);
    // One halving: each half's control points stand 25 off its thirds.
    const QVector<zgFlatPart> two = zgFlattenInternals::parts(arch, 74.9);
    ASSERT_EQ(two.size(), 2);
    EXPECT_DOUBLE_EQ(two.at(0).time, 0.5);
    EXPECT_DOUBLE_EQ(two.at(1).time, 1.0);
    expectPoint(zgPoint(two.at(0).values[6], two.at(0).values[7]), 45.0, 75.0);
    // Each level cuts the deviation about four times: a finer flatness never
    // gives fewer leaves.
    int previous = 0;
    for (double flatness : {50.0, 10.0, 1.0, 0.1, 0.01}) {
        const int count = zgFlattenInternals::parts(arch, flatness).size();
        EXPECT_GE(count, previous) << flatness;
        previous = count;
    }
    EXPECT_LE(previous, 256);
}

TEST(PathFlatten, StraightCurvesStayOnePiece)
{
    // A long line, and a curve whose handles lie on its chord.
    zgPath line;
    addPoints(line, {zgPoint(0, 0), zgPoint(100000, 0)});
    line.flatten(0.0);
    expectPoints(line, {zgPoint(0, 0), zgPoint(100000, 0)});

    zgPath straight;
    setCubic(straight, curvetest::values(0, 0, 10, 10, 50, 50, 90, 90));
    straight.flatten(0.0);
    expectPoints(straight, {zgPoint(0, 0), zgPoint(90, 90)});
    EXPECT_TRUE(hasNoHandles(straight));
}

TEST(PathFlatten, ZeroLengthCurvesVanish)
{
    zgPath path;
    addPoints(path, {zgPoint(0, 0), zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 0), zgPoint(10, 5)});
    path.flatten(1.0);
    expectPoints(path, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 5)});
    expectConsistent(path);
}

TEST(PathFlatten, ContourOfZeroLengthPartsEndsEmpty)
{
    zgPath open;
    addPoints(open, {zgPoint(3, 4), zgPoint(3, 4), zgPoint(3, 4)});
    open.flatten(1.0);
    EXPECT_TRUE(open.isEmpty());

    zgPath single(nullptr, true);
    addPoints(single, {zgPoint(3, 4)});
    single.flatten(1.0);
    EXPECT_TRUE(single.isEmpty());
    EXPECT_TRUE(single.closed);

    zgPath empty;
    empty.flatten(1.0);
    EXPECT_TRUE(empty.isEmpty());
}

TEST(PathFlatten, ClosedContourGetsNoRepeatedEnd)
{
    // A square whose closing side is straight and whose first side bows out.
    zgPath path(nullptr, true);
    path.addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(30, -40)));
    path.addSegment(new zgSegment(zgPoint(100, 0), zgPoint(-30, -40), zgPoint()));
    addPoints(path, {zgPoint(100, 100), zgPoint(0, 100)});
    path.flatten(0.0);
    // 256 chords for the bowed side, one for each of the three straight ones.
    ASSERT_EQ(path.segments.size(), 256 + 3);
    EXPECT_TRUE(path.closed);
    expectPoint(path.segments.first()->point, 0, 0);
    expectPoint(path.segments.at(256)->point, 100, 0);
    expectPoint(path.segments.last()->point, 0, 100);
    expectConsistent(path);
}

TEST(PathFlatten, ClosedSingleSegmentWithHandlesIsALoop)
{
    // The closing curve runs from the segment back to itself.
    zgPath path(nullptr, true);
    path.addSegment(new zgSegment(zgPoint(0, 0), zgPoint(-50, 50), zgPoint(50, 50)));
    path.flatten(0.0);
    ASSERT_EQ(path.segments.size(), 256);
    const QVector<double> loop = curvetest::values(0, 0, 50, 50, -50, 50, 0, 0);
    for (int k = 0; k < 256; ++k) {
        const zgPoint expected = curvePoint(loop, k / 256.0);
        expectPoint(path.segments.at(k)->point, expected.x, expected.y, 1e-9);
    }
}

TEST(PathFlatten, NegativeAndNaNFlatness)
{
    // A negative flatness acts as its magnitude (it is squared); NaN is
    // never flat enough, so only the shortest span stops the halving.
    const QVector<zgFlatPart> positive = zgFlattenInternals::parts(kWave, 2.0);
    const QVector<zgFlatPart> negative = zgFlattenInternals::parts(kWave, -2.0);
    ASSERT_EQ(positive.size(), negative.size());
    EXPECT_LT(positive.size(), 256);
    EXPECT_EQ(zgFlattenInternals::parts(kWave, qQNaN()).size(), 256);
    // An infinite flatness takes every curve in one chord.
    EXPECT_EQ(zgFlattenInternals::parts(kWave, qInf()).size(), 1);
}

TEST(PathFlatten, HugeAndNonFiniteCoordinatesEndInBoundedTime)
{
    zgPath huge;
    setCubic(huge, curvetest::values(0, 0, 1e300, -1e300, -1e300, 1e300, 1e300, 1e300));
    huge.flatten(1.0);
    EXPECT_LE(huge.segments.size(), 257);
    EXPECT_GE(huge.segments.size(), 2);
    expectPoint(huge.segments.first()->point, 0, 0);

    // A NaN end gives NaN chords, which are not longer than 0 and drop out.
    zgPath nan;
    setCubic(nan, curvetest::values(0, 0, 10, 10, 20, 10, qQNaN(), 0));
    nan.flatten(1.0);
    EXPECT_TRUE(nan.isEmpty());
}

TEST(PathFlatten, CompoundFlattensEveryChild)
{
    XPath xpath;
    zgPath *first = new zgPath(nullptr, false);
    setCubic(*first, kWave);
    zgPath *second = newContour({zgPoint(0, 0), zgPoint(0, 0), zgPoint(5, 5)}, false);
    xpath.addChild(first);
    xpath.addChild(second);
    xpath.flatten(0.0);
    EXPECT_EQ(first->segments.size(), 257);
    expectPoints(*second, {zgPoint(0, 0), zgPoint(5, 5)});
}

TEST(PathFlatten, LeavesNoCountedObjectsBehind)
{
    expectNoSurvivors(countSurvivors([] {
        zgPath *path = newContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 0)}, true);
        path->addRef();
        path->segments.at(0)->setHandleOut(zgPoint(3, 9));
        path->getCurves();
        path->flatten(0.5);
        path->release();
    }));
}

// Every leaf of seeded random curves starts and ends on the source curve,
// and stands within the flatness of its chord unless it is a shortest span.
TEST(PathFlatten, SeededLeavesLieOnTheCurveWithinTheFlatness)
{
    curvetest::CurveRandom random(6301u);
    int leaves = 0;
    int shortest = 0;
    int withinFlatness = 0;
    double worstOnCurve = 0.0;
    double worstRatio = 0.0;
    for (int n = 0; n < 200; ++n) {
        const QVector<double> v = n % 10 == 9 ? random.straight() : random.curved();
        for (double flatness : {0.01, 0.1, 1.0, 5.0}) {
            const QVector<zgFlatPart> parts = zgFlattenInternals::parts(v, flatness);
            double t1 = 0.0;
            for (const zgFlatPart &part : parts) {
                ++leaves;
                const zgPoint from = curvePoint(v, t1);
                const zgPoint to = curvePoint(v, part.time);
                worstOnCurve = qMax(worstOnCurve, from.getDistance(zgPoint(part.values[0], part.values[1])));
                worstOnCurve = qMax(worstOnCurve, to.getDistance(zgPoint(part.values[6], part.values[7])));
                const double deviation = deviationFromChord(part.values);
                if (deviation <= flatness) {
                    ++withinFlatness;
                    worstRatio = qMax(worstRatio, deviation / flatness);
                } else {
                    // Only the shortest span may stand farther off.
                    EXPECT_DOUBLE_EQ(part.time - t1, 1.0 / 256.0) << n << " " << flatness;
                    ++shortest;
                }
                t1 = part.time;
            }
        }
    }
    EXPECT_LT(worstOnCurve, 1e-9);
    EXPECT_EQ(withinFlatness + shortest, leaves);
    std::printf("flatten: %d leaves, %d within the flatness (worst %.3f of it), %d at the "
                "shortest span beyond it, worst end off the curve %.2e\n",
                leaves, withinFlatness, worstRatio, shortest, worstOnCurve);
}
