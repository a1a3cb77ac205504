// Tests of ZDPath::manualPath: every step units of arc length a point of the
// source moves sideways, along (ty, -tx), by perlinNoise_1D(s * 0.05) times
// the amplitude; the result replaces the object.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <QtCore/QLineF>
#include <QtCore/qnumeric.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

using drawingtest::Move;
using drawingtest::Line;
using drawingtest::Close;
using drawingtest::expectIdentical;
using drawingtest::lineFrom;
using drawingtest::polyline;
using drawingtest::randomCurves;
using drawingtest::randomPoints;
using drawingtest::uniform;

namespace {

// Value noise written out from its definition, apart from the library: the
// 32-bit hash, the cosine blend with pi as 3.1415927f, four octaves of
// frequency 2^i and weight 0.1^i.
double hashNoise(int32_t n)
{
    uint32_t k = uint32_t(n);
    k ^= k << 13;
    const uint32_t bits = (((k * k * 15731u) + 789221u) * k + 0xD208DD0Du) & 0x7FFFFFFFu;
    return 1.0 - double(bits) / 1073741824.0;
}

double blendedNoise(double v)
{
    const int32_t cell = int32_t(v);
    const double t = v - cell;
    const double f = (1.0 - std::cos(t * double(3.1415927f))) * 0.5;
    return hashNoise(cell) * (1.0 - f) + hashNoise(cell + 1) * f;
}

double noiseAt(double v)
{
    double sum = 0.0;
    double weight = 1.0;
    double frequency = 1.0;
    for (int octave = 0; octave < 4; ++octave) {
        sum += blendedNoise(v * frequency) * weight;
        frequency *= 2.0;
        weight *= 0.1;
    }
    return sum;
}

// The sideways offset of the sample at arc length s.
double offsetAt(double s, double amplitude)
{
    return noiseAt(s * 0.05) * amplitude;
}

ZDPath handDrawn(ZDPath source, double amplitude, double step)
{
    ZDPath result;
    result.manualPath(source, amplitude, step);
    return result;
}

void expectPoint(const ZDPathElement &e, int32_t type, double x, double y, double tolerance)
{
    EXPECT_EQ(e.type, type);
    EXPECT_NEAR(e.x, x, tolerance);
    EXPECT_NEAR(e.y, y, tolerance);
}

// The sample offsets step, 2 step, ... below len, summed as the walk sums them.
std::vector<double> sampleOffsets(double len, double step)
{
    std::vector<double> offsets;
    for (double s = step; s < len; s += step)
        offsets.push_back(s);
    return offsets;
}

} // namespace

// ---- Replacing the object ----

TEST(ZDPathManualPath, EmptySourceLeavesTheObjectUnchanged)
{
    ZDPath target = lineFrom(1, 2, 3, 4);
    ZDPath empty;
    target.manualPath(empty, 10, 5);
    ASSERT_EQ(target.count(), 2);
    EXPECT_EQ(target.elements.at(0).x, 1.0);
    EXPECT_EQ(target.elements.at(1).y, 4.0);
}

TEST(ZDPathManualPath, NonEmptySourceReplacesTheObject)
{
    ZDPath target = lineFrom(1, 2, 3, 4);
    target.lineTo(7, 7);
    ZDPath source = lineFrom(0, 0, 100, 0);
    target.manualPath(source, 10, 200);
    ASSERT_EQ(target.count(), 2);
    expectPoint(target.elements.at(0), Move, 0, 0, 0.0);
    expectPoint(target.elements.at(1), Line, 100, 0, 0.0);
}

TEST(ZDPathManualPath, SourceWithoutContoursEmptiesTheObject)
{
    // A lone move is an empty subpath: no contour, an empty result list.
    ZDPath target = lineFrom(1, 2, 3, 4);
    ZDPath source;
    source.moveTo(5, 5);
    target.manualPath(source, 10, 5);
    EXPECT_TRUE(target.isEmpty());
}

TEST(ZDPathManualPath, SourceMayBeTheObjectItself)
{
    ZDPath path = lineFrom(0, 0, 100, 0);
    path.manualPath(path, 10, 50);
    ASSERT_EQ(path.count(), 3);
    expectPoint(path.elements.at(1), Line, 50, -offsetAt(50, 10), 1e-9);
}

TEST(ZDPathManualPath, SourceIsCleanedUpByTheConversion)
{
    ZDPath source;
    source.moveTo(50, 50);
    source.moveTo(0, 0);
    source.lineTo(100, 0);
    const ZDPath result = handDrawn(source, 10, 200);
    EXPECT_EQ(result.count(), 2);
    ZDPath target;
    target.manualPath(source, 10, 200);
    EXPECT_EQ(source.count(), 2);
}

// ---- Samples ----

TEST(ZDPathManualPath, HorizontalLineMovesSamplesAlongTheNormal)
{
    // Tangent (1, 0): a sample at s goes to (s, -offset).
    const ZDPath result = handDrawn(lineFrom(0, 0, 100, 0), 10, 10);
    ASSERT_EQ(result.count(), 1 + 9 + 1);
    expectPoint(result.elements.at(0), Move, 0, 0, 0.0);
    for (int k = 1; k <= 9; ++k)
        expectPoint(result.elements.at(k), Line, 10.0 * k, -offsetAt(10.0 * k, 10), 1e-9);
    expectPoint(result.elements.at(10), Line, 100, 0, 0.0);
}

TEST(ZDPathManualPath, VerticalLineMovesSamplesAcross)
{
    // Tangent (0, 1): a sample at s goes to (offset, s).
    const ZDPath result = handDrawn(lineFrom(0, 0, 0, 60), 4, 15);
    ASSERT_EQ(result.count(), 1 + 3 + 1);
    for (int k = 1; k <= 3; ++k)
        expectPoint(result.elements.at(k), Line, offsetAt(15.0 * k, 4), 15.0 * k, 1e-9);
}

TEST(ZDPathManualPath, NoiseIsReadAtOneTwentiethOfTheArcLength)
{
    // Samples at whole multiples of 20 sit on noise cells: only the hashes
    // of the octaves count there.
    const ZDPath result = handDrawn(lineFrom(0, 0, 50, 0), 1, 20);
    ASSERT_EQ(result.count(), 4);
    const double atOne = hashNoise(1) + 0.1 * hashNoise(2) + 0.01 * hashNoise(4) + 0.001 * hashNoise(8);
    EXPECT_NEAR(result.elements.at(1).y, -atOne, 1e-12);
    const double atTwo = hashNoise(2) + 0.1 * hashNoise(4) + 0.01 * hashNoise(8) + 0.001 * hashNoise(16);
    EXPECT_NEAR(result.elements.at(2).y, -atTwo, 1e-12);
}

TEST(ZDPathManualPath, ClosedContourEndsOnItsStartAndCloses)
{
    // Square of length 400, step 30: samples at 30 ... 390, the line back
    // to the start (snapped by closeSubpath) and the close element.
    ZDPath square = polyline({{0, 0}, {100, 0}, {100, 100}, {0, 100}}, true);
    const ZDPath result = handDrawn(square, 5, 30);
    ASSERT_EQ(result.count(), 1 + 13 + 1 + 1);
    expectPoint(result.elements.at(0), Move, 0, 0, 0.0);
    expectPoint(result.elements.at(1), Line, 30, -offsetAt(30, 5), 1e-9);
    // 120: 20 down the right side, tangent (0, 1).
    expectPoint(result.elements.at(4), Line, 100 + offsetAt(120, 5), 20, 1e-9);
    // 240: 40 along the bottom from the right, tangent (-1, 0).
    expectPoint(result.elements.at(8), Line, 60, 100 + offsetAt(240, 5), 1e-9);
    // 390: 10 above the start on the left side, tangent (0, -1).
    expectPoint(result.elements.at(13), Line, -offsetAt(390, 5), 10, 1e-9);
    expectPoint(result.elements.at(14), Line, 0, 0, 0.0);
    expectPoint(result.elements.at(15), Close, 0, 0, 0.0);
}

TEST(ZDPathManualPath, EveryContourIsDrawnInTurn)
{
    ZDPath source = lineFrom(0, 0, 100, 0);
    ZDPath second = lineFrom(0, 50, 0, 150);
    source.addPath(second);
    const ZDPath result = handDrawn(source, 3, 40);
    ASSERT_EQ(result.count(), 4 + 4);
    expectPoint(result.elements.at(0), Move, 0, 0, 0.0);
    expectPoint(result.elements.at(1), Line, 40, -offsetAt(40, 3), 1e-9);
    expectPoint(result.elements.at(3), Line, 100, 0, 0.0);
    expectPoint(result.elements.at(4), Move, 0, 50, 0.0);
    // The noise restarts with the arc length of each contour.
    expectPoint(result.elements.at(5), Line, offsetAt(40, 3), 90, 1e-9);
    expectPoint(result.elements.at(7), Line, 0, 150, 0.0);
}

TEST(ZDPathManualPath, SamplesOnlyBelowTheLength)
{
    // Step equal to the length: none; just below it: one.
    EXPECT_EQ(handDrawn(lineFrom(0, 0, 100, 0), 10, 100).count(), 2);
    const ZDPath one = handDrawn(lineFrom(0, 0, 100, 0), 10, 99.999);
    ASSERT_EQ(one.count(), 3);
    EXPECT_NEAR(one.elements.at(1).x, 99.999, 1e-9);
    EXPECT_EQ(handDrawn(lineFrom(0, 0, 100, 0), 10, 1000).count(), 2);
}

TEST(ZDPathManualPath, AmplitudeScalesAndItsSignFlips)
{
    const ZDPath plus = handDrawn(lineFrom(0, 0, 100, 0), 6, 7);
    const ZDPath minus = handDrawn(lineFrom(0, 0, 100, 0), -6, 7);
    const ZDPath flat = handDrawn(lineFrom(0, 0, 100, 0), 0, 7);
    ASSERT_EQ(plus.count(), minus.count());
    ASSERT_EQ(plus.count(), flat.count());
    for (int i = 0; i < plus.count(); ++i) {
        EXPECT_DOUBLE_EQ(plus.elements.at(i).x, minus.elements.at(i).x);
        EXPECT_DOUBLE_EQ(plus.elements.at(i).y, -minus.elements.at(i).y);
        EXPECT_EQ(flat.elements.at(i).y, 0.0);
    }
}

// ---- Determinism and fixed ends ----

TEST(ZDPathManualPath, SameResultAtEachCall)
{
    std::mt19937 random(5150);
    int checkedStarts = 0;
    for (int trial = 0; trial < 10; ++trial) {
        std::vector<QPointF> points;
        ZDPath source;
        if (trial % 2) {
            source = randomCurves(random, 3, trial % 4 == 1);
        } else {
            points = randomPoints(random, 9);
            source = polyline(points, trial % 4 == 0);
        }
        const ZDPath first = handDrawn(source, 8, 6);
        expectIdentical(first, handDrawn(source, 8, 6));
        // On an open polyline whose first side is longer than the step, the
        // result starts at its first point and takes its first sample 6
        // along that side, moved sideways by the noise at 6 * 0.05.
        if (trial % 4 == 2 && QLineF(points[0], points[1]).length() > 6) {
            const QPointF side = points[1] - points[0];
            const double length = std::hypot(side.x(), side.y());
            const double ux = side.x() / length, uy = side.y() / length;
            const double offset = offsetAt(6, 8);
            ASSERT_GE(first.count(), 2);
            expectPoint(first.elements.at(0), Move, points[0].x(), points[0].y(), 0.0);
            expectPoint(first.elements.at(1), Line, points[0].x() + 6 * ux + offset * uy,
                        points[0].y() + 6 * uy - offset * ux, 1e-9);
            ++checkedStarts;
        }
        // A second call on the same object gives the same list again.
        ZDPath target;
        ZDPath copy = source;
        target.manualPath(copy, 8, 6);
        target.manualPath(copy, 8, 6);
        expectIdentical(first, target);
    }
    EXPECT_GE(checkedStarts, 1);
}

TEST(ZDPathManualPath, EndsOfAnOpenLineStayFixed)
{
    std::mt19937 random(8);
    for (int trial = 0; trial < 20; ++trial) {
        const std::vector<QPointF> points = randomPoints(random, 2 + trial % 8);
        const ZDPath result = handDrawn(polyline(points, false), uniform(random, -30, 30), uniform(random, 1, 40));
        ASSERT_GE(result.count(), 2);
        expectPoint(result.elements.first(), Move, points.front().x(), points.front().y(), 0.0);
        expectPoint(result.elements.last(), Line, points.back().x(), points.back().y(), 0.0);
    }
}

TEST(ZDPathManualPath, SamplesLieAtTheNoiseOffsetOnRandomPaths)
{
    // Each sample is the point at its arc length moved along the normal by
    // exactly noise * amplitude; with the octave weights 1 + 0.1 + 0.01 +
    // 0.001 that is never more than 1.111 |amplitude| from the source.
    std::mt19937 random(31337);
    for (int trial = 0; trial < 16; ++trial) {
        const bool closed = trial % 3 == 0;
        ZDPath source = (trial % 2) ? randomCurves(random, 1 + trial % 4, closed)
                                    : polyline(randomPoints(random, 2 + trial % 7), closed);
        const double amplitude = uniform(random, -20, 20);
        const double step = uniform(random, 2, 25);
        const ZDPath result = handDrawn(source, amplitude, step);

        XPath compound;
        source.toXPath(compound, 0);
        ASSERT_EQ(compound.children.size(), 1);
        zgPath *contour = compound.children.at(0);
        const std::vector<double> offsets = sampleOffsets(contour->getLength(), step);
        ASSERT_EQ(result.count(), int(offsets.size()) + 2 + (closed ? 1 : 0)) << "trial " << trial;
        for (size_t k = 0; k < offsets.size(); ++k) {
            zgCurveLocation *location = contour->getLocationAt(offsets[k]);
            ASSERT_NE(location, nullptr);
            const zgPoint on = location->getPoint();
            const zgPoint tangent = location->getTangent();
            location->release();
            const QPointF sample = result.elements.at(int(k) + 1).toPoint();
            const double dx = sample.x() - on.x;
            const double dy = sample.y() - on.y;
            const double expected = offsetAt(offsets[k], amplitude);
            // Along the normal (ty, -tx), not along the tangent.
            EXPECT_NEAR(dx * tangent.y - dy * tangent.x, expected, 1e-9) << "trial " << trial;
            EXPECT_NEAR(dx * tangent.x + dy * tangent.y, 0.0, 1e-9) << "trial " << trial;
            EXPECT_LE(std::hypot(dx, dy), 1.111 * std::fabs(amplitude) + 1e-9);
        }
    }
}

// ---- Degenerate input ----

TEST(ZDPathManualPath, StepThatDoesNotAdvanceTakesNoSamples)
{
    for (double step : {0.0, -5.0, qQNaN(), -qInf()}) {
        const ZDPath result = handDrawn(lineFrom(0, 0, 100, 0), 10, step);
        ASSERT_EQ(result.count(), 2);
        expectPoint(result.elements.at(1), Line, 100, 0, 0.0);
    }
    ZDPath square = polyline({{0, 0}, {100, 0}, {100, 100}, {0, 100}}, true);
    const ZDPath closed = handDrawn(square, 10, 0);
    ASSERT_EQ(closed.count(), 3);
    expectPoint(closed.elements.at(1), Line, 0, 0, 0.0);
    expectPoint(closed.elements.at(2), Close, 0, 0, 0.0);
}

TEST(ZDPathManualPath, SmallStepWorkGrowsWithTheSampleCount)
{
    const ZDPath result = handDrawn(lineFrom(0, 0, 100, 0), 2, 0.001);
    const int samples = int(sampleOffsets(100, 0.001).size());
    EXPECT_GE(samples, 99999);
    EXPECT_EQ(result.count(), samples + 2);
}

TEST(ZDPathManualPath, SampleCountIsCappedAtTwoToTheTwentieth)
{
    const double cap = 1 << 20;
    // Below the cap every step is sampled: len / step = 2^20 - 16.
    const double len = 1024;
    const double fineStep = len / (cap - 16);
    const ZDPath below = handDrawn(lineFrom(0, 0, len, 0), 2, fineStep);
    EXPECT_EQ(below.count(), int(sampleOffsets(len, fineStep).size()) + 2);
    EXPECT_NEAR(below.elements.at(1).x, fineStep, 1e-12);
    EXPECT_NEAR(below.elements.at(1).y, -offsetAt(fineStep, 2), 1e-12);
    // Above it, down to a step of 1e-300, every len / 2^20.
    for (double step : {len / (cap + 16), 1e-9, 1e-300}) {
        const ZDPath capped = handDrawn(lineFrom(0, 0, len, 0), 2, step);
        EXPECT_EQ(capped.count(), int(sampleOffsets(len, len / cap).size()) + 2) << step;
        EXPECT_NEAR(capped.elements.at(1).x, len / cap, 1e-12);
        EXPECT_NEAR(capped.elements.at(1).y, -offsetAt(len / cap, 2), 1e-12);
        EXPECT_EQ(capped.elements.last().x, len);
        EXPECT_EQ(capped.elements.last().y, 0.0);
    }
}

TEST(ZDPathManualPath, ZeroLengthAndCoincidentPoints)
{
    const ZDPath dot = handDrawn(lineFrom(5, 5, 5, 5), 10, 1);
    ASSERT_EQ(dot.count(), 2);
    expectPoint(dot.elements.at(0), Move, 5, 5, 0.0);
    expectPoint(dot.elements.at(1), Line, 5, 5, 0.0);

    // The zero-length piece at (50, 0) holds no sample.
    const ZDPath doubled = handDrawn(polyline({{0, 0}, {50, 0}, {50, 0}, {100, 0}}, false), 10, 25);
    const ZDPath straight = handDrawn(lineFrom(0, 0, 100, 0), 10, 25);
    ASSERT_EQ(doubled.count(), straight.count());
    for (int i = 0; i < doubled.count(); ++i) {
        EXPECT_NEAR(doubled.elements.at(i).x, straight.elements.at(i).x, 1e-9);
        EXPECT_NEAR(doubled.elements.at(i).y, straight.elements.at(i).y, 1e-9);
    }

    // A closed contour reduced to one segment.
    ZDPath tiny;
    tiny.moveTo(0, 0);
    tiny.lineTo(0.5, 0.5);
    tiny.closeSubpath();
    const ZDPath closed = handDrawn(tiny, 10, 1);
    ASSERT_EQ(closed.count(), 3);
    expectPoint(closed.elements.at(2), Close, 0, 0, 0.0);
}

TEST(ZDPathManualPath, NanAndInfiniteCoordinatesTakeNoSamples)
{
    ZDPath nanStart;
    nanStart.moveTo(qQNaN(), 0);
    nanStart.lineTo(100, 0);
    const ZDPath fromNan = handDrawn(nanStart, 10, 1);
    ASSERT_EQ(fromNan.count(), 2);
    EXPECT_TRUE(std::isnan(fromNan.elements.at(0).x));
    expectPoint(fromNan.elements.at(1), Line, 100, 0, 0.0);

    const ZDPath toInfinity = handDrawn(lineFrom(0, 0, qInf(), 0), 10, 1);
    ASSERT_EQ(toInfinity.count(), 2);
    EXPECT_TRUE(std::isinf(toInfinity.elements.at(1).x));

    // A NaN amplitude reaches the samples only.
    const ZDPath nanAmplitude = handDrawn(lineFrom(0, 0, 100, 0), qQNaN(), 30);
    ASSERT_EQ(nanAmplitude.count(), 5);
    EXPECT_TRUE(std::isnan(nanAmplitude.elements.at(1).y));
    expectPoint(nanAmplitude.elements.at(4), Line, 100, 0, 0.0);
}

TEST(ZDPathManualPath, HugeCoordinates)
{
    const std::vector<double> offsets = sampleOffsets(1e150, 1e149);
    const ZDPath result = handDrawn(lineFrom(0, 0, 1e150, 0), 1e148, 1e149);
    ASSERT_EQ(result.count(), int(offsets.size()) + 2);
    EXPECT_NEAR(result.elements.at(1).x, 1e149, 1e140);
    // Noise at 1e149 * 0.05 lies beyond the int range, where the noise is
    // read at the lowest int: still a value within 1.111 of 0.
    EXPECT_LE(std::fabs(result.elements.at(1).y), 1.111e148);
    EXPECT_EQ(result.elements.last().x, 1e150);
}
