// ZDPath::getLength reads the curves from the elements instead of building
// the object graph. These tests hold it to the sum over the curves of a
// conversion by toXPath, bit for bit, on seeded element lists of every kind:
// lines, cubics, several subpaths of both orientations, closing points
// within the joining tolerance, repeated closes, elements after a close,
// cubics cut short, stray control points, degenerate, NaN and huge values.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <gtest/gtest.h>

#include <algorithm>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>

namespace {

const double kPi = 3.14159265358979323846;

// The length as the sum over the curves of a conversion, in list order.
double graphLength(ZDPath path)
{
    XPath xpath;
    path.toXPath(xpath, 0);
    double sum = 0.0;
    for (zgCurve *curve : xpath.getCurves())
        sum += curve->getLength();
    return sum;
}

bool cleanUpKeeps(const ZDPath &path)
{
    ZDPath cleaned = path;
    cleaned.cleanUp();
    if (cleaned.elements.size() != path.elements.size())
        return false;
    for (int i = 0; i < path.elements.size(); ++i) {
        if (cleaned.elements.at(i).type != path.elements.at(i).type)
            return false;
    }
    return true;
}

// getPointAt through a conversion, on a list that cleanUp leaves alone.
zgPoint graphPointAt(ZDPath path, double t)
{
    XPath xpath;
    path.toXPath(xpath, 0);
    const QList<zgCurve *> curves = xpath.getCurves();
    double total = 0.0;
    for (zgCurve *curve : curves)
        total += curve->getLength();
    const double target = total * t;
    double sum = 0.0;
    for (zgCurve *curve : curves) {
        const double length = curve->getLength();
        if (target <= sum + length)
            return curve->getPointAt(t == 1.0 ? length : std::min(target - sum, length), false);
        sum += length;
    }
    return zgPoint(qQNaN(), qQNaN());
}

// getTangentAt through a conversion, on a list that cleanUp leaves alone.
zgPoint graphTangentAt(ZDPath path, const zgPoint &point)
{
    XPath xpath;
    path.toXPath(xpath, 0);
    const QList<zgCurve *> curves = xpath.getCurves();
    double length = -1.0;
    double before = 0.0;
    for (zgCurve *curve : curves) {
        const double t = curve->getTimeOf(point);
        if (t != -100.0) {
            length = before + curve->getPartLength(0.0, t);
            break;
        }
        before += curve->getLength();
    }
    if (length == -1.0)
        return zgPoint(qQNaN(), qQNaN());
    double sum = 0.0;
    for (zgCurve *curve : curves) {
        const double curveLength = curve->getLength();
        if (sum + curveLength >= length)
            return curve->getTangentAt(std::min(length - sum, curveLength), false);
        sum += curveLength;
    }
    return zgPoint(qQNaN(), qQNaN());
}

bool sameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// A coordinate: mostly ordinary, sometimes on a small grid so that points
// repeat, sometimes huge, tiny or NaN.
double coordinate(std::mt19937_64 &random, bool wild)
{
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const double kind = unit(random);
    if (kind < 0.15)
        return std::floor(unit(random) * 4.0) * 10.0;
    if (wild && kind < 0.18)
        return std::numeric_limits<double>::quiet_NaN();
    if (wild && kind < 0.21)
        return (unit(random) - 0.5) * 1e15;
    if (wild && kind < 0.24)
        return unit(random) * 1e-9;
    return (unit(random) - 0.5) * 400.0;
}

ZDPathElement elementOf(std::mt19937_64 &random, int type, bool wild)
{
    const double x = coordinate(random, wild);
    return ZDPathElement(x, coordinate(random, wild), type);
}

// A random element list: moves, lines, cubics (some cut short or with
// stray control points), closes, and ends that come back within a unit of
// the start.
ZDPath randomElements(std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    std::uniform_int_distribution<int> pick(0, 99);
    const bool wild = pick(random) < 30;
    const int count = 1 + pick(random) % 40;
    ZDPath path;
    double startX = 0.0;
    double startY = 0.0;
    for (int k = 0; k < count; ++k) {
        const int roll = pick(random);
        if (roll < 10) {
            path.elements.append(elementOf(random, ZDMoveToElement, wild));
            startX = path.elements.last().x;
            startY = path.elements.last().y;
        } else if (roll < 40) {
            path.elements.append(elementOf(random, ZDLineToElement, wild));
        } else if (roll < 70) {
            path.elements.append(elementOf(random, ZDCurveToElement, wild));
            path.elements.append(elementOf(random, ZDCurveToDataElement, wild));
            if (pick(random) < 95)
                path.elements.append(elementOf(random, ZDCurveToDataElement, wild));
        } else if (roll < 80) {
            // Back to within the joining tolerance of the start, then close.
            std::uniform_real_distribution<double> near(-0.7, 0.7);
            path.elements.append(ZDPathElement(startX + near(random), startY + near(random),
                                               ZDLineToElement));
            path.elements.append(ZDPathElement(0.0, 0.0, ZDCloseElement));
        } else if (roll < 90) {
            path.elements.append(ZDPathElement(0.0, 0.0, ZDCloseElement));
        } else {
            path.elements.append(elementOf(random, ZDCurveToDataElement, wild));
        }
    }
    return path;
}

void addPolygon(ZDPath &path, int sides, double cx, double cy, double radius, bool turnLeft)
{
    for (int k = 0; k <= sides; ++k) {
        const double angle = (turnLeft ? 1.0 : -1.0) * 2.0 * kPi * k / sides;
        const QPointF point(cx + radius * std::cos(angle), cy + radius * std::sin(angle));
        if (k == 0)
            path.moveTo(point);
        else
            path.lineTo(point);
    }
    path.closeSubpath();
}

} // namespace

TEST(ElementLength, SameBitsAsTheSumOverConvertedCurves)
{
    int nonZero = 0;
    int notANumber = 0;
    for (std::uint64_t seed = 1; seed <= 4000; ++seed) {
        ZDPath path = randomElements(seed);
        const double expected = graphLength(path);
        const double length = path.getLength();
        ASSERT_TRUE(sameBits(length, expected))
                << "seed " << seed << ": " << length << " instead of " << expected;
        nonZero += length != 0.0 && !std::isnan(length);
        notANumber += std::isnan(length);
    }
    // The inputs reach real lengths and NaN alike.
    EXPECT_GT(nonZero, 2500);
    EXPECT_GT(notANumber, 50);
}

TEST(ElementLength, PointsAndTangentsAsThroughAConversion)
{
    int points = 0;
    int tangents = 0;
    for (std::uint64_t seed = 1; seed <= 3000; ++seed) {
        ZDPath path = randomElements(seed);
        // Cleaned until a further clean-up changes nothing: a close right
        // after the first element can leave a list that the next one cuts again.
        for (int round = 0; round < 100 && !cleanUpKeeps(path); ++round)
            path.cleanUp();
        if (!cleanUpKeeps(path))
            continue;
        const double t = seed % 7 == 0 ? 1.0 : double(seed % 101) / 100.0;
        ZDPath measured = path;
        const zgPoint point = measured.getPointAt(t);
        const zgPoint expected = graphPointAt(path, t);
        ASSERT_TRUE(sameBits(point.x, expected.x) && sameBits(point.y, expected.y))
                << "seed " << seed << ": " << point.x << ", " << point.y << " against "
                << expected.x << ", " << expected.y;
        points += point.isNaN() ? 0 : 1;
        const zgPoint onPath = point.isNaN() ? zgPoint(0.0, 0.0) : point;
        const zgPoint tangent = measured.getTangentAt(onPath);
        const zgPoint expectedTangent = graphTangentAt(path, onPath);
        ASSERT_TRUE(sameBits(tangent.x, expectedTangent.x)
                    && sameBits(tangent.y, expectedTangent.y))
                << "seed " << seed;
        tangents += tangent.isNaN() ? 0 : 1;
    }
    EXPECT_GT(points, 2000);
    EXPECT_GT(tangents, 1500);
}

TEST(ElementLength, PolygonsOfBothTurnsInSeveralSubpaths)
{
    for (int sides = 3; sides <= 300; sides += 7) {
        ZDPath path;
        addPolygon(path, sides, 100.0, 100.0, 80.0, sides % 2 == 0);
        addPolygon(path, sides + 1, 120.0, 90.0, 30.0, sides % 3 == 0);
        addPolygon(path, 4, 0.0, 0.0, 5.0, true);
        path.lineTo(QPointF(500.0, 500.0));
        const double expected = graphLength(path);
        EXPECT_TRUE(sameBits(path.getLength(), expected)) << sides << " sides";
        // The perimeter of the first polygon alone is below that of its circle.
        ZDPath single;
        addPolygon(single, sides, 100.0, 100.0, 80.0, true);
        EXPECT_LT(single.getLength(), 2.0 * kPi * 80.0);
        EXPECT_GT(single.getLength(), 2.0 * kPi * 80.0 * std::cos(kPi / sides));
    }
}

TEST(ElementLength, CloseThatMergesAndCloseTwice)
{
    // The last point within one unit of the first merges into it, and its
    // handle in goes to the first; a second close merges the next one too.
    ZDPath path;
    path.moveTo(QPointF(0.0, 0.0));
    path.lineTo(QPointF(100.0, 0.0));
    path.lineTo(QPointF(100.0, 100.0));
    path.lineTo(QPointF(0.5, 0.5));
    path.cubicTo(QPointF(0.2, 0.9), QPointF(0.9, 0.2), QPointF(0.3, 0.3));
    path.closeSubpath();
    path.elements.append(ZDPathElement(0.0, 0.0, ZDCloseElement));
    path.lineTo(QPointF(-50.0, 0.0));
    EXPECT_TRUE(sameBits(path.getLength(), graphLength(path)));
}

TEST(ElementLength, EmptyAndSinglePointPaths)
{
    ZDPath empty;
    EXPECT_EQ(empty.getLength(), 0.0);
    ZDPath point;
    point.moveTo(QPointF(3.0, 4.0));
    EXPECT_EQ(point.getLength(), 0.0);
    ZDPath closedPoint;
    closedPoint.moveTo(QPointF(3.0, 4.0));
    closedPoint.lineTo(QPointF(3.5, 4.0));
    closedPoint.closeSubpath();
    EXPECT_TRUE(sameBits(closedPoint.getLength(), graphLength(closedPoint)));
}
