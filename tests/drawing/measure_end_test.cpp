// The ends of long paths: getPointAt and getTangentAt where the offset into
// the last curve (or any curve) rounds a little past its end, and the one
// conversion per call of those two measures held to the two conversions it
// replaced, on seeded paths.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

using namespace drawingtest;

namespace {

const double kPi = 3.14159265358979323846;

// A flower outline of n cubic petals around (cx, cy); an open one stops a
// petal short, so that its end is no other point of it.
void addFlower(ZDPath &path, int petals, double cx, double cy, double phase, bool closed = true)
{
    const double step = 2.0 * kPi / petals;
    auto at = [&](double radius, double angle) {
        return QPointF(cx + radius * std::cos(angle), cy + radius * std::sin(angle));
    };
    path.moveTo(at(300.0, phase * step));
    for (int k = 0; k < (closed ? petals : petals - 1); ++k) {
        const double a = (k + phase) * step;
        path.cubicTo(at(450.0, a + 0.1 * step), at(450.0, a + 0.9 * step), at(300.0, a + step));
    }
    if (closed)
        path.closeSubpath();
}

// Two flower outlines of 4096 cubic petals each, one path.
ZDPath twoFlowers(bool closed)
{
    ZDPath path;
    addFlower(path, 4096, 500.0, 500.0, 0.0, closed);
    addFlower(path, 4096, 520.0, 480.0, 0.5, closed);
    return path;
}

zgPoint endOfLastCurve(ZDPath path)
{
    XPath xpath;
    path.toXPath(xpath, 0);
    const QList<zgCurve *> curves = xpath.getCurves();
    return zgCurve::getPoint(curves.last()->getValues(nullptr), 1.0);
}

zgPoint tangentAtEndOfLastCurve(ZDPath path)
{
    XPath xpath;
    path.toXPath(xpath, 0);
    const QList<zgCurve *> curves = xpath.getCurves();
    return zgCurve::getTangent(curves.last()->getValues(nullptr), 1.0);
}

bool sameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

} // namespace

TEST(MeasureEnd, PointAtOneIsTheEndOfTheLastCurveOnTwoFlowersOf4096Petals)
{
    for (bool closed : { true, false }) {
        ZDPath path = twoFlowers(closed);
        const zgPoint end = endOfLastCurve(path);
        const zgPoint point = path.getPointAt(1.0);
        ASSERT_FALSE(point.isNaN()) << "closed " << closed;
        // The end is reached at a time of exactly 1.0: the end point itself.
        EXPECT_EQ(point.x, end.x) << "closed " << closed;
        EXPECT_EQ(point.y, end.y) << "closed " << closed;
        EXPECT_TRUE(path.getPointAt(1.0000001).isNaN());
    }
}

TEST(MeasureEnd, TangentAtTheEndOfTwoOpenFlowersOf4096PetalsIsTheLastCurvesEndTangent)
{
    ZDPath path = twoFlowers(false);
    const zgPoint expected = tangentAtEndOfLastCurve(path);
    const zgPoint tangent = path.getTangentAt(endOfLastCurve(path));
    ASSERT_FALSE(tangent.isNaN());
    // Within 4e-07 of its end a curve's tangent is taken from its last
    // handle, so an offset that rounds to just before the end gives the
    // end tangent too.
    EXPECT_EQ(tangent.x, expected.x);
    EXPECT_EQ(tangent.y, expected.y);
}

// A closed path ends where it starts: the length to its end point is the
// length to its start, since the first curve holds that point, and the
// tangent is the one at the start of the first curve.
TEST(MeasureEnd, TangentAtTheEndOfAClosedFlowerIsTheTangentAtItsStart)
{
    ZDPath path;
    addFlower(path, 4096, 500.0, 500.0, 0.25);
    XPath xpath;
    path.toXPath(xpath, 0);
    const QVector<double> first = xpath.getCurves().first()->getValues(nullptr);
    const zgPoint tangent = path.getTangentAt(zgCurve::getPoint(first, 0.0));
    const zgPoint expected = zgCurve::getTangent(first, 0.0);
    EXPECT_EQ(tangent.x, expected.x);
    EXPECT_EQ(tangent.y, expected.y);
}

// Every joint of a long path, taken as a share of the whole length, rounds
// to an offset on one side or the other of the joint; each gives a point,
// and that point is the joint within what the rounding of the share allows.
TEST(MeasureEnd, SharesAtEveryJointOfALongPathGiveTheJoint)
{
    ZDPath path;
    addFlower(path, 4096, 500.0, 500.0, 0.25);
    XPath xpath;
    path.toXPath(xpath, 0);
    const QList<zgCurve *> curves = xpath.getCurves();
    double total = 0.0;
    for (zgCurve *curve : curves)
        total += curve->getLength();
    double sum = 0.0;
    int checked = 0;
    for (int k = 0; k < curves.size(); k += 7) {
        // Joints every seventh curve keep the test short.
        for (int j = k == 0 ? 0 : k - 7; j < k; ++j)
            sum += curves.at(j)->getLength();
        const zgPoint joint = zgCurve::getPoint(curves.at(k)->getValues(nullptr), 0.0);
        const zgPoint point = path.getPointAt(sum / total);
        ASSERT_FALSE(point.isNaN()) << "joint " << k;
        // 1e-6: the share carries a relative error of about 1e-16 of a
        // length near 1.6e6, and the offset search its own 1e-12.
        EXPECT_NEAR(point.x, joint.x, 1e-6) << "joint " << k;
        EXPECT_NEAR(point.y, joint.y, 1e-6) << "joint " << k;
        ++checked;
    }
    EXPECT_GT(checked, 500);
}

namespace {

// getPointAt as two conversions: the whole length from one, the walk on
// another, with the end held as getPointAt holds it: the offset never past
// the curve's end, and the whole length (where both conversions saw the
// same list) at the end of the curve that reaches it.
zgPoint pointAtByTwoConversions(ZDPath &path, double t)
{
    if (!(t >= 0.0 && t <= 1.0))
        return zgPoint(qQNaN(), qQNaN());
    const double target = path.getLength() * t;
    const QVector<ZDPathElement> cleanedOnce = path.elements;
    XPath xpath;
    path.toXPath(xpath, 0);
    const bool sameList = path.elements.size() == cleanedOnce.size()
            && (path.elements.isEmpty() || path.elements.first().type == cleanedOnce.first().type);
    double sum = 0.0;
    for (zgCurve *curve : xpath.getCurves()) {
        const double length = curve->getLength();
        if (target <= sum + length)
            return curve->getPointAt(t == 1.0 && sameList ? length
                                                          : std::min(target - sum, length),
                                     false);
        sum += length;
    }
    return zgPoint(qQNaN(), qQNaN());
}

zgPoint tangentAtByTwoConversions(ZDPath &path, const zgPoint &point)
{
    const double length = path.getLength(point);
    if (length == -1.0)
        return zgPoint(qQNaN(), qQNaN());
    XPath xpath;
    path.toXPath(xpath, 0);
    double sum = 0.0;
    for (zgCurve *curve : xpath.getCurves()) {
        const double curveLength = curve->getLength();
        if (sum + curveLength >= length)
            return curve->getTangentAt(std::min(length - sum, curveLength), false);
        sum += curveLength;
    }
    return zgPoint(qQNaN(), qQNaN());
}

// Random lists of moves, lines, cubics and closes in any order, so that
// some clean up differently the second time (a move closed at once before
// a line).
ZDPath randomList(std::mt19937 &random)
{
    std::uniform_int_distribution<int> count(1, 14);
    std::uniform_int_distribution<int> kind(0, 9);
    std::uniform_real_distribution<double> coordinate(0.0, 100.0);
    ZDPath path;
    const int n = count(random);
    for (int i = 0; i < n; ++i) {
        const int k = kind(random);
        const double x = coordinate(random);
        const double y = coordinate(random);
        if (k == 0)
            path.elements.append(ZDPathElement(x, y, ZDMoveToElement));
        else if (k == 1)
            path.elements.append(ZDPathElement(x, y, ZDCloseElement));
        else if (k < 6)
            path.elements.append(ZDPathElement(x, y, ZDLineToElement));
        else {
            path.elements.append(ZDPathElement(x, y, ZDCurveToElement));
            path.elements.append(ZDPathElement(coordinate(random), y, ZDCurveToDataElement));
            path.elements.append(ZDPathElement(x, coordinate(random), ZDCurveToDataElement));
        }
    }
    return path;
}

} // namespace

TEST(MeasureEnd, OneConversionGivesWhatTwoConversionsGave)
{
    std::mt19937 random(4242);
    std::uniform_real_distribution<double> share(-0.05, 1.05);
    int points = 0;
    int tangents = 0;
    int cleanedTwiceDiffer = 0;
    for (int n = 0; n < 3000; ++n) {
        const ZDPath source = randomList(random);
        ZDPath once = source;
        once.cleanUp();
        ZDPath twice = once;
        twice.cleanUp();
        const bool differ = once.elements.size() != twice.elements.size()
                || (!once.elements.isEmpty()
                    && once.elements.first().type != twice.elements.first().type);
        cleanedTwiceDiffer += differ ? 1 : 0;
        const double t = n % 10 == 0 ? 1.0 : share(random);
        ZDPath actualPath = source;
        ZDPath expectedPath = source;
        const zgPoint actual = actualPath.getPointAt(t);
        const zgPoint expected = pointAtByTwoConversions(expectedPath, t);
        ASSERT_TRUE(sameBits(actual.x, expected.x) && sameBits(actual.y, expected.y))
                << "case " << n << ": " << actual.x << ", " << actual.y << " against "
                << expected.x << ", " << expected.y;
        // The path is left as the two conversions left it.
        expectSameElements(actualPath, expectedPath);
        points += actual.isNaN() ? 0 : 1;

        const zgPoint onPath = expected.isNaN() ? zgPoint(50.0, 50.0) : expected;
        ZDPath tangentPath = source;
        ZDPath expectedTangentPath = source;
        const zgPoint tangent = tangentPath.getTangentAt(onPath);
        const zgPoint expectedTangent = tangentAtByTwoConversions(expectedTangentPath, onPath);
        ASSERT_TRUE(sameBits(tangent.x, expectedTangent.x)
                    && sameBits(tangent.y, expectedTangent.y))
                << "case " << n;
        expectSameElements(tangentPath, expectedTangentPath);
        tangents += tangent.isNaN() ? 0 : 1;
    }
    EXPECT_GT(points, 1500);
    EXPECT_GT(tangents, 1000);
    // Lists that a second clean-up changes must be among them.
    EXPECT_GT(cleanedTwiceDiffer, 10);
}
