// Tests of ZDPath::wavePath: the seven wave kinds along each contour, appended
// to the output path. On a line from (0, 0) along +x the unit tangent is
// (1, 0) and the sideways normal (ty, -tx) is (0, -1), so "the side of the
// normal" is y < 0; the alternating kinds start with sign -1, on y > 0.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <QtCore/qnumeric.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

using drawingtest::Move;
using drawingtest::Line;
using drawingtest::Curve;
using drawingtest::CurveData;
using drawingtest::Close;
using drawingtest::expectIdentical;
using drawingtest::lineFrom;
using drawingtest::polyline;
using drawingtest::randomCurves;
using drawingtest::randomPoints;
using drawingtest::uniform;

namespace {

struct Expected
{
    int32_t type;
    double x;
    double y;
};

// A 100 x 100 square drawn clockwise on screen from (0, 0); the compound
// keeps its first closed contour in this direction.
ZDPath closedSquare()
{
    return polyline({{0, 0}, {100, 0}, {100, 100}, {0, 100}}, true);
}

// A 100 x 50 rectangle, length 300, corners at 100, 150 and 250.
ZDPath closedRectangle()
{
    return polyline({{0, 0}, {100, 0}, {100, 50}, {0, 50}}, true);
}

ZDPath waveOf(ZDPath source, int kind, double wavelength, double amplitude, double smoothness)
{
    ZDPath out;
    source.wavePath(out, kind, wavelength, amplitude, smoothness);
    return out;
}

void expectElements(const ZDPath &path, const std::vector<Expected> &expected, double tolerance)
{
    ASSERT_EQ(path.count(), int(expected.size()));
    for (int i = 0; i < path.count(); ++i) {
        const ZDPathElement &e = path.elements.at(i);
        EXPECT_EQ(e.type, expected[i].type) << "element " << i;
        EXPECT_NEAR(e.x, expected[i].x, tolerance) << "element " << i;
        EXPECT_NEAR(e.y, expected[i].y, tolerance) << "element " << i;
    }
}

// ---- An independent statement of the algorithm, through the public
// location query zgPath::getLocationAt, for the random inputs. ----

struct RefPlace
{
    bool found = false;
    QPointF point;
    QPointF tangent;
};

RefPlace refPlaceAt(zgPath *contour, double offset)
{
    RefPlace place;
    zgCurveLocation *location = contour->getLocationAt(offset);
    if (!location)
        return place;
    const zgPoint p = location->getPoint();
    const zgPoint t = location->getTangent();
    location->release();
    place.found = true;
    place.point = QPointF(p.x, p.y);
    place.tangent = QPointF(t.x, t.y);
    return place;
}

QPointF refSide(const RefPlace &place, double distance)
{
    return QPointF(place.point.x() + distance * place.tangent.y(),
                   place.point.y() - distance * place.tangent.x());
}

void refContour(ZDPath &out, zgPath *contour, int kind, double wavelength, double amplitude,
                double handle)
{
    const bool closed = contour->isClosed();
    const double len = contour->getLength();
    const double w = len / wavelength;
    long long n = std::llround(w);
    if (closed && (kind == 0 || kind == 3 || kind == 6) && n % 2 != 0)
        n = w <= double(n) ? n - 1 : n + 1;
    const double d = len / double(n);
    double pos = 0.0;
    double sign = -1.0;
    const zgPoint s = contour->getFirstSegment()->getPoint();
    const zgPoint e = contour->getLastSegment()->getPoint();
    const QPointF start(s.x, s.y);
    const QPointF end(e.x, e.y);
    out.moveTo(start);
    QPointF previous = start;
    QPointF first = start;
    QPointF firstIn = start;
    if (kind < 0 || kind > 6)
        return;

    auto square = [&](bool last) {
        const RefPlace place = refPlaceAt(contour, pos);
        if (!place.found)
            return;
        const QPointF a = refSide(place, amplitude * sign);
        const QPointF b = refSide(place, -amplitude * sign);
        if (last) {
            out.lineTo(a);
        } else if (pos != 0.0) {
            out.lineTo(a);
            out.lineTo(b);
        } else if (closed) {
            out.elements.removeLast();
            out.moveTo(a);
            out.lineTo(b);
        } else {
            out.lineTo(b);
        }
    };

    for (long long k = 0; k < n; ++k) {
        if (kind == 0 || kind == 3) {
            const RefPlace place = refPlaceAt(contour, pos <= 0.0 ? pos + d / 2 : pos + d);
            if (place.found) {
                const QPointF p = refSide(place, amplitude * sign);
                const QPointF in = p - handle * place.tangent;
                if (pos == 0.0 && closed) {
                    out.elements.removeLast();
                    out.moveTo(p);
                    first = p;
                    firstIn = in;
                } else if (kind == 0) {
                    out.cubicTo(previous, in, p);
                } else {
                    out.lineTo(p);
                }
                previous = p + handle * place.tangent;
            }
            pos += k == 0 ? d / 2 : d;
            sign = -sign;
        } else if (kind == 6) {
            square(false);
            sign = -sign;
            pos += d;
        } else {
            const RefPlace middle = refPlaceAt(contour, pos + d / 2);
            const RefPlace stepEnd = refPlaceAt(contour, pos + d);
            if (middle.found && stepEnd.found) {
                const double side = (kind == 1 || kind == 4) ? amplitude : -amplitude;
                const QPointF p = refSide(middle, side);
                if (kind <= 2) {
                    out.cubicTo(previous, p - handle * middle.tangent, p);
                    out.cubicTo(p + handle * middle.tangent, stepEnd.point, stepEnd.point);
                    previous = stepEnd.point;
                } else {
                    out.lineTo(p);
                    out.lineTo(stepEnd.point);
                }
            }
            pos += d;
        }
    }
    if (kind == 0)
        out.cubicTo(previous, closed ? firstIn : end, closed ? first : end);
    else if (kind == 3)
        out.lineTo(closed ? first : end);
    else if (kind == 6 && !closed) {
        square(true);
        out.lineTo(end);
    }
    if (closed)
        out.closeSubpath();
}

ZDPath referenceWave(ZDPath source, int kind, double wavelength, double amplitude, double smoothness)
{
    if (amplitude == -1.0)
        amplitude = wavelength * 0.5;
    ZDPath out;
    XPath compound;
    source.toXPath(compound, 0);
    for (zgPath *contour : compound.children)
        refContour(out, contour, kind, wavelength, amplitude, amplitude * smoothness);
    return out;
}

// ---- Random inputs, from fixed seeds. ----

double distanceToSegment(const QPointF &p, const QPointF &a, const QPointF &b)
{
    const QPointF ab = b - a;
    const double lengthSquared = QPointF::dotProduct(ab, ab);
    double t = lengthSquared > 0.0 ? QPointF::dotProduct(p - a, ab) / lengthSquared : 0.0;
    t = std::max(0.0, std::min(1.0, t));
    const QPointF nearest = a + t * ab;
    return std::hypot(p.x() - nearest.x(), p.y() - nearest.y());
}

double distanceToPolyline(const QPointF &p, const std::vector<QPointF> &points, bool closed)
{
    double best = std::numeric_limits<double>::infinity();
    const size_t count = points.size();
    for (size_t i = 0; i + 1 < count; ++i)
        best = std::min(best, distanceToSegment(p, points[i], points[i + 1]));
    if (closed)
        best = std::min(best, distanceToSegment(p, points.back(), points.front()));
    return best;
}

// Indices of the points that lie on the drawn line: moves, lines, closes
// and the end of each cubic; the others are control points.
std::vector<bool> onCurveMask(const ZDPath &path)
{
    std::vector<bool> mask(size_t(path.count()), true);
    for (int i = 0; i + 2 < path.count(); ++i) {
        if (path.elements.at(i).type == Curve) {
            mask[size_t(i)] = false;
            mask[size_t(i + 1)] = false;
            i += 2;
        }
    }
    return mask;
}

} // namespace

// ---- Kind 0: smooth wave ----

TEST(ZDPathWavePath, SmoothWaveOnOpenLinePutsExtremesAtHalfSteps)
{
    // len 100, w = 4, n = 4, d = 25: extremes at 12.5, 37.5, 62.5, 87.5,
    // alternating from y = +10; handle 10 * 0.5 = 5 along the tangent.
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 0, 25, 10, 0.5);
    expectElements(out,
                   {{Move, 0, 0},
                    {Curve, 0, 0}, {CurveData, 7.5, 10}, {CurveData, 12.5, 10},
                    {Curve, 17.5, 10}, {CurveData, 32.5, -10}, {CurveData, 37.5, -10},
                    {Curve, 42.5, -10}, {CurveData, 57.5, 10}, {CurveData, 62.5, 10},
                    {Curve, 67.5, 10}, {CurveData, 82.5, -10}, {CurveData, 87.5, -10},
                    {Curve, 92.5, -10}, {CurveData, 100, 0}, {CurveData, 100, 0}},
                   1e-9);
}

TEST(ZDPathWavePath, SmoothWaveOnClosedSquareStartsAndEndsAtFirstExtreme)
{
    // len 400, w = 5 is odd and not above 5: n = 4, d = 100, extremes at the
    // middle of each side. The first extreme replaces the start move.
    const ZDPath out = waveOf(closedSquare(), 0, 80, 10, 0.5);
    expectElements(out,
                   {{Move, 50, 10},
                    {Curve, 55, 10}, {CurveData, 110, 45}, {CurveData, 110, 50},
                    {Curve, 110, 55}, {CurveData, 55, 90}, {CurveData, 50, 90},
                    {Curve, 45, 90}, {CurveData, -10, 55}, {CurveData, -10, 50},
                    {Curve, -10, 45}, {CurveData, 45, 10}, {CurveData, 50, 10},
                    {Close, 50, 10}},
                   1e-9);
}

TEST(ZDPathWavePath, SmoothnessScalesTheHandleWithTheAmplitude)
{
    // amplitude 4, smoothness 2: handle 8, first cubic (0,0) (4.5,4) (12.5,4).
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 0, 25, 4, 2);
    ASSERT_EQ(out.count(), 16);
    EXPECT_NEAR(out.elements.at(2).x, 4.5, 1e-9);
    EXPECT_NEAR(out.elements.at(2).y, 4, 1e-9);
    EXPECT_NEAR(out.elements.at(4).x, 20.5, 1e-9);
    EXPECT_NEAR(out.elements.at(4).y, 4, 1e-9);
}

// ---- Kinds 1 and 2: arches ----

TEST(ZDPathWavePath, ArchesOnTheNormalSide)
{
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 1, 25, 10, 0.5);
    std::vector<Expected> expected{{Move, 0, 0}};
    for (int k = 0; k < 4; ++k) {
        const double x = 25.0 * k;
        const double previous = x; // the end of the arch before, or the start
        expected.push_back({Curve, previous, 0});
        expected.push_back({CurveData, x + 7.5, -10});
        expected.push_back({CurveData, x + 12.5, -10});
        expected.push_back({Curve, x + 17.5, -10});
        expected.push_back({CurveData, x + 25, 0});
        expected.push_back({CurveData, x + 25, 0});
    }
    expectElements(out, expected, 1e-9);
}

TEST(ZDPathWavePath, ArchesOnTheOtherSide)
{
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 2, 50, 10, 0.5);
    expectElements(out,
                   {{Move, 0, 0},
                    {Curve, 0, 0}, {CurveData, 20, 10}, {CurveData, 25, 10},
                    {Curve, 30, 10}, {CurveData, 50, 0}, {CurveData, 50, 0},
                    {Curve, 50, 0}, {CurveData, 70, 10}, {CurveData, 75, 10},
                    {Curve, 80, 10}, {CurveData, 100, 0}, {CurveData, 100, 0}},
                   1e-9);
}

TEST(ZDPathWavePath, ArchesOnClosedContourKeepAnOddCountAndClose)
{
    // Only kinds 0, 3 and 6 are made even: kind 1 on the rectangle (len 300)
    // with w = 5 keeps n = 5, d = 60; the last arch ends on the start.
    const ZDPath out = waveOf(closedRectangle(), 1, 60, 5, 0.5);
    ASSERT_EQ(out.count(), 1 + 5 * 6 + 1);
    EXPECT_EQ(out.elements.at(0).type, Move);
    EXPECT_EQ(out.elements.last().type, Close);
    EXPECT_NEAR(out.elements.at(out.count() - 2).x, 0, 1e-9);
    EXPECT_NEAR(out.elements.at(out.count() - 2).y, 0, 1e-9);
    // The first arch peaks at 30 on the top side, on the normal side y < 0.
    EXPECT_NEAR(out.elements.at(3).x, 30, 1e-9);
    EXPECT_NEAR(out.elements.at(3).y, -5, 1e-9);
}

// ---- Kind 3: zigzag ----

TEST(ZDPathWavePath, ZigzagOnOpenLine)
{
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 3, 25, 10, 0.5);
    expectElements(out,
                   {{Move, 0, 0}, {Line, 12.5, 10}, {Line, 37.5, -10}, {Line, 62.5, 10},
                    {Line, 87.5, -10}, {Line, 100, 0}},
                   1e-9);
}

TEST(ZDPathWavePath, ZigzagOnClosedContourWithOddCountAboveWGoesUp)
{
    // len 300, w = 5.2: n = 5 is odd and w is above it, so n = 6, d = 50:
    // extremes at 25, 75, 125, 175, 225, 275, none on a corner.
    const ZDPath out = waveOf(closedRectangle(), 3, 300 / 5.2, 10, 0.5);
    expectElements(out,
                   {{Move, 25, 10}, {Line, 75, -10}, {Line, 90, 25}, {Line, 75, 60},
                    {Line, 25, 40}, {Line, -10, 25}, {Line, 25, 10}, {Close, 25, 10}},
                   1e-9);
}

TEST(ZDPathWavePath, ZigzagOnClosedContourWithOddCountNotAboveWGoesDown)
{
    // w = 4.8: n = 5, w below it, so n = 4, d = 75: extremes at 37.5, 112.5,
    // 187.5, 262.5.
    const ZDPath out = waveOf(closedRectangle(), 3, 62.5, 10, 0.5);
    expectElements(out,
                   {{Move, 37.5, 10}, {Line, 110, 12.5}, {Line, 62.5, 40}, {Line, -10, 37.5},
                    {Line, 37.5, 10}, {Close, 37.5, 10}},
                   1e-9);
    // w exactly 5 counts as "at most n": n = 4 as well.
    EXPECT_EQ(waveOf(closedRectangle(), 3, 60, 10, 0.5).count(), 6);
}

TEST(ZDPathWavePath, OpenContourKeepsAnOddCount)
{
    // The same rectangle left open: w = 5 stays 5 (len 250 / 50).
    const ZDPath open = polyline({{0, 0}, {100, 0}, {100, 50}, {0, 50}}, false);
    EXPECT_EQ(waveOf(open, 3, 50, 10, 0.5).count(), 1 + 5 + 1);
    EXPECT_EQ(waveOf(open, 0, 50, 10, 0.5).count(), 1 + 5 * 3 + 3);
}

TEST(ZDPathWavePath, CountRoundsHalvesAwayFromZero)
{
    // 100 / 40 = 2.5 rounds to 3; 100 / 40.0001 just below 2.5 rounds to 2.
    EXPECT_EQ(waveOf(lineFrom(0, 0, 100, 0), 3, 40, 10, 0.5).count(), 1 + 3 + 1);
    EXPECT_EQ(waveOf(lineFrom(0, 0, 100, 0), 3, 40.0001, 10, 0.5).count(), 1 + 2 + 1);
}

// ---- Kinds 4 and 5: teeth ----

TEST(ZDPathWavePath, TeethOnTheNormalSide)
{
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 4, 25, 10, 0.5);
    expectElements(out,
                   {{Move, 0, 0}, {Line, 12.5, -10}, {Line, 25, 0}, {Line, 37.5, -10}, {Line, 50, 0},
                    {Line, 62.5, -10}, {Line, 75, 0}, {Line, 87.5, -10}, {Line, 100, 0}},
                   1e-9);
}

TEST(ZDPathWavePath, TeethOnTheOtherSideOfAVerticalLine)
{
    // Tangent (0, 1), normal (1, 0): kind 5 goes to x = -10.
    const ZDPath out = waveOf(lineFrom(0, 0, 0, 100), 5, 50, 10, 0.5);
    expectElements(out,
                   {{Move, 0, 0}, {Line, -10, 25}, {Line, 0, 50}, {Line, -10, 75}, {Line, 0, 100}},
                   1e-9);
}

// ---- Kind 6: square wave ----

TEST(ZDPathWavePath, SquareWaveOnOpenLine)
{
    // Boundaries at 0, 25, 50, 75; the first rises to b = the normal side,
    // the finish reaches a at 100 and drops onto the end.
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 6, 25, 10, 0.5);
    expectElements(out,
                   {{Move, 0, 0}, {Line, 0, -10}, {Line, 25, -10}, {Line, 25, 10}, {Line, 50, 10},
                    {Line, 50, -10}, {Line, 75, -10}, {Line, 75, 10}, {Line, 100, 10},
                    {Line, 100, 0}},
                   1e-9);
}

TEST(ZDPathWavePath, SquareWaveOnClosedSquareRestartsAtTheFirstJump)
{
    // n = 4, d = 100: boundaries at the corners, each taken on the side that
    // starts there. The start move is replaced by a at 0; closeSubpath adds a
    // line back to it.
    const ZDPath out = waveOf(closedSquare(), 6, 100, 10, 0.5);
    expectElements(out,
                   {{Move, 0, 10}, {Line, 0, -10}, {Line, 110, 0}, {Line, 90, 0}, {Line, 100, 90},
                    {Line, 100, 110}, {Line, -10, 100}, {Line, 10, 100}, {Line, 0, 10},
                    {Close, 0, 10}},
                   1e-9);
}

// ---- Short contours: n = 0 ----

TEST(ZDPathWavePath, ContourShorterThanHalfAWavelengthWritesStartAndFinish)
{
    // len 10, wavelength 25: w = 0.4, n = 0.
    const ZDPath line = lineFrom(0, 0, 10, 0);
    expectElements(waveOf(line, 0, 25, 10, 0.5),
                   {{Move, 0, 0}, {Curve, 0, 0}, {CurveData, 10, 0}, {CurveData, 10, 0}}, 1e-12);
    expectElements(waveOf(line, 3, 25, 10, 0.5), {{Move, 0, 0}, {Line, 10, 0}}, 1e-12);
    // Kind 6 finishes with squareStep(true) at pos 0 (a, with sign -1) and the end.
    expectElements(waveOf(line, 6, 25, 10, 0.5), {{Move, 0, 0}, {Line, 0, 10}, {Line, 10, 0}}, 1e-9);
    for (int kind : {1, 2, 4, 5})
        expectElements(waveOf(line, kind, 25, 10, 0.5), {{Move, 0, 0}}, 0.0);
}

TEST(ZDPathWavePath, HalfAWavelengthGivesOneStep)
{
    // w = 0.5 exactly rounds to 1: one extreme at d / 2 = 6.25.
    expectElements(waveOf(lineFrom(0, 0, 12.5, 0), 3, 25, 10, 0.5),
                   {{Move, 0, 0}, {Line, 6.25, 10}, {Line, 12.5, 0}}, 1e-9);
}

TEST(ZDPathWavePath, ShortClosedContourClosesOnItsStart)
{
    // A 10 x 10 square with wavelength 100: n = 0.
    const ZDPath small = polyline({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    expectElements(waveOf(small, 0, 100, 10, 0.5),
                   {{Move, 0, 0}, {Curve, 0, 0}, {CurveData, 0, 0}, {CurveData, 0, 0}, {Close, 0, 0}},
                   0.0);
    expectElements(waveOf(small, 3, 100, 10, 0.5), {{Move, 0, 0}, {Line, 0, 0}, {Close, 0, 0}}, 0.0);
    // closeSubpath does nothing on a list of one element.
    expectElements(waveOf(small, 6, 100, 10, 0.5), {{Move, 0, 0}}, 0.0);
}

// ---- Closed alternating kinds close without a jump ----

TEST(ZDPathWavePath, ClosedAlternatingKindsGetAnEvenCountAndCloseWithoutAJump)
{
    std::mt19937 random(1909);
    for (int trial = 0; trial < 30; ++trial) {
        const std::vector<QPointF> points = randomPoints(random, 3 + trial % 5);
        ZDPath polygon = polyline(points, true);
        const double wavelength = uniform(random, 20, 200);
        const double amplitude = 7;
        // Kind 3: move, n - 1 lines, the line back to the first extreme
        // (snapped onto it by closeSubpath), close.
        const ZDPath zigzag = waveOf(polygon, 3, wavelength, amplitude, 0.5);
        ASSERT_GE(zigzag.count(), 4) << "trial " << trial;
        const int n = zigzag.count() - 2;
        EXPECT_EQ(n % 2, 0) << "trial " << trial;
        // Each extreme lies on the other side of the contour than the one
        // before, the first one included after the last: no jump at the start.
        XPath compound;
        polygon.toXPath(compound, 0);
        zgPath *contour = compound.children.at(0);
        const double d = contour->getLength() / n;
        for (int k = 0; k < n; ++k) {
            const RefPlace place = refPlaceAt(contour, d / 2 + k * d);
            ASSERT_TRUE(place.found);
            const QPointF offset = zigzag.elements.at(k).toPoint() - place.point;
            const double side = offset.x() * place.tangent.y() - offset.y() * place.tangent.x();
            EXPECT_NEAR(side, (k % 2 == 0) ? -amplitude : amplitude, 1e-6) << "trial " << trial;
        }
        // Kind 0: move, n - 1 cubics, the closing cubic, close.
        const ZDPath smooth = waveOf(polygon, 0, wavelength, amplitude, 0.5);
        EXPECT_EQ(smooth.count(), 1 + 3 * n + 1) << "trial " << trial;
        EXPECT_EQ(smooth.elements.last().type, Close);
        // Kind 6: move a, line b, two lines per further step, line back, close.
        const ZDPath square = waveOf(polygon, 6, wavelength, amplitude, 0.5);
        EXPECT_EQ(square.count(), 2 + 2 * (n - 1) + 2) << "trial " << trial;
    }
}

// ---- Amplitude ----

TEST(ZDPathWavePath, AmplitudeMinusOneMeansHalfTheWavelength)
{
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 3, 25, -1.0, 0.5);
    expectElements(out,
                   {{Move, 0, 0}, {Line, 12.5, 12.5}, {Line, 37.5, -12.5}, {Line, 62.5, 12.5},
                    {Line, 87.5, -12.5}, {Line, 100, 0}},
                   1e-9);
    // The handle follows the replaced amplitude: 12.5 * 0.4 = 5.
    const ZDPath smooth = waveOf(lineFrom(0, 0, 100, 0), 0, 25, -1.0, 0.4);
    EXPECT_NEAR(smooth.elements.at(2).x, 7.5, 1e-9);
    EXPECT_NEAR(smooth.elements.at(2).y, 12.5, 1e-9);
}

TEST(ZDPathWavePath, OtherNegativeAmplitudesFlipTheSides)
{
    // -1.0000001 is not the marker value: it is used as it is.
    const ZDPath nearMarker = waveOf(lineFrom(0, 0, 100, 0), 3, 25, -1.0000001, 0.5);
    ASSERT_EQ(nearMarker.count(), 6);
    EXPECT_NEAR(nearMarker.elements.at(1).y, -1.0000001, 1e-12);
    for (int kind = 0; kind <= 6; ++kind) {
        const ZDPath up = waveOf(lineFrom(0, 0, 100, 0), kind, 25, 6, 0.5);
        const ZDPath down = waveOf(lineFrom(0, 0, 100, 0), kind, 25, -6, 0.5);
        ASSERT_EQ(up.count(), down.count()) << "kind " << kind;
        // The drawn points mirror; the handle, amplitude * smoothness, turns
        // round with the amplitude, so control points mirror only with the
        // smoothness negated as well.
        const ZDPath downSameHandle = waveOf(lineFrom(0, 0, 100, 0), kind, 25, -6, -0.5);
        const std::vector<bool> onCurve = onCurveMask(up);
        for (int i = 0; i < up.count(); ++i) {
            if (onCurve[size_t(i)]) {
                EXPECT_NEAR(up.elements.at(i).x, down.elements.at(i).x, 1e-9) << "kind " << kind;
                EXPECT_NEAR(up.elements.at(i).y, -down.elements.at(i).y, 1e-9) << "kind " << kind;
            }
            EXPECT_NEAR(up.elements.at(i).x, downSameHandle.elements.at(i).x, 1e-9) << "kind " << kind;
            EXPECT_NEAR(up.elements.at(i).y, -downSameHandle.elements.at(i).y, 1e-9) << "kind " << kind;
        }
    }
    // Kind 0, amplitude -6, smoothness 0.5: handle -3, so the control point
    // before the first extreme (12.5, -6) lies at 12.5 + 3.
    const ZDPath reversed = waveOf(lineFrom(0, 0, 100, 0), 0, 25, -6, 0.5);
    EXPECT_NEAR(reversed.elements.at(2).x, 15.5, 1e-9);
    EXPECT_NEAR(reversed.elements.at(2).y, -6, 1e-9);
}

TEST(ZDPathWavePath, ZeroAmplitudeStaysOnTheLine)
{
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 3, 25, 0, 0.5);
    ASSERT_EQ(out.count(), 6);
    for (const ZDPathElement &e : out.elements)
        EXPECT_EQ(e.y, 0.0);
}

// ---- Other kinds, direction of the effect ----

TEST(ZDPathWavePath, UnknownKindWritesOnlyTheStartOfEachContour)
{
    // A closed contour writes no close element either.
    ZDPath source = closedSquare();
    ZDPath line = lineFrom(20, 30, 100, 30);
    source.addPath(line);
    for (int kind : {7, -1, 100, INT_MIN, INT_MAX}) {
        expectElements(waveOf(source, kind, 25, 10, 0.5), {{Move, 0, 0}, {Move, 20, 30}}, 0.0);
    }
    ZDPath moved = lineFrom(3, 4, 100, 0);
    expectElements(waveOf(moved, 9, 25, 10, 0.5), {{Move, 3, 4}}, 0.0);
}

TEST(ZDPathWavePath, AppendsToOutAndLeavesTheSourceAlone)
{
    ZDPath source = lineFrom(0, 0, 100, 0);
    ZDPath out = lineFrom(-5, -5, -1, -1);
    source.wavePath(out, 3, 25, 10, 0.5);
    ASSERT_EQ(out.count(), 2 + 6);
    EXPECT_EQ(out.elements.at(0).x, -5.0);
    EXPECT_EQ(out.elements.at(1).x, -1.0);
    EXPECT_EQ(out.elements.at(2).type, Move);
    EXPECT_EQ(out.elements.at(2).x, 0.0);
    ASSERT_EQ(source.count(), 2);
    EXPECT_EQ(source.elements.at(1).x, 100.0);
}

TEST(ZDPathWavePath, SourceIsCleanedUpByTheConversion)
{
    // The contours come from toXPath, which removes the empty subpath.
    ZDPath source;
    source.moveTo(50, 50);
    source.moveTo(0, 0);
    source.lineTo(100, 0);
    const ZDPath out = waveOf(source, 3, 25, 10, 0.5);
    EXPECT_EQ(out.count(), 6);
    ZDPath kept = source;
    ZDPath ignored;
    kept.wavePath(ignored, 3, 25, 10, 0.5);
    ASSERT_EQ(kept.count(), 2);
    EXPECT_EQ(kept.elements.at(0).x, 0.0);
}

TEST(ZDPathWavePath, EveryContourGetsItsOwnWave)
{
    ZDPath source = lineFrom(0, 0, 100, 0);
    ZDPath second = lineFrom(0, 50, 0, 150);
    source.addPath(second);
    const ZDPath out = waveOf(source, 4, 50, 10, 0.5);
    expectElements(out,
                   {{Move, 0, 0}, {Line, 25, -10}, {Line, 50, 0}, {Line, 75, -10}, {Line, 100, 0},
                    {Move, 0, 50}, {Line, 10, 75}, {Line, 0, 100}, {Line, 10, 125}, {Line, 0, 150}},
                   1e-9);
}

// ---- Arc length, not curve time; the location rule ----

TEST(ZDPathWavePath, StepsFollowArcLengthOnACurve)
{
    // A straight cubic with uneven speed: arc length 100, points (s, 0).
    ZDPath source;
    source.moveTo(0, 0);
    source.cubicTo(QPointF(10, 0), QPointF(20, 0), QPointF(100, 0));
    expectElements(waveOf(source, 3, 25, 10, 0.5),
                   {{Move, 0, 0}, {Line, 12.5, 10}, {Line, 37.5, -10}, {Line, 62.5, 10},
                    {Line, 87.5, -10}, {Line, 100, 0}},
                   1e-6);
}

TEST(ZDPathWavePath, LocationsUseTheWholeUnitRunningLength)
{
    // Sides 10.5 and 20: the running length after the first is 10, so the
    // extreme at 22.875 lies 12.875 along the second side, not 12.375.
    const ZDPath source = polyline({{0, 0}, {10.5, 0}, {10.5, 20}}, false);
    expectElements(waveOf(source, 3, 15.25, 10, 0.5),
                   {{Move, 0, 0}, {Line, 7.625, 10}, {Line, 20.5, 12.875}, {Line, 10.5, 20}}, 1e-9);
}

TEST(ZDPathWavePath, AStepEndingPastTheLengthWritesNothing)
{
    // d = 100 / 6 summed six times exceeds the length 100 by one ulp, so the
    // last tooth finds no location at its end and the last square-wave
    // boundary none at all.
    const double wavelength = 100.0 / 6;
    double pos = 0.0;
    for (int k = 0; k < 6; ++k)
        pos += wavelength;
    ZDPath source = lineFrom(0, 0, 100, 0);
    ASSERT_EQ(source.getLength(), 100.0);
    ASSERT_GT(pos, 100.0);

    const ZDPath teeth = waveOf(source, 4, wavelength, 3, 0.5);
    ASSERT_EQ(teeth.count(), 1 + 5 * 2);
    EXPECT_NEAR(teeth.elements.last().x, 500.0 / 6, 1e-9);
    EXPECT_NEAR(teeth.elements.last().y, 0, 1e-9);

    const ZDPath square = waveOf(source, 6, wavelength, 3, 0.5);
    ASSERT_EQ(square.count(), 2 + 5 * 2 + 1);
    EXPECT_NEAR(square.elements.at(square.count() - 2).x, 500.0 / 6, 1e-9);
    EXPECT_NEAR(square.elements.at(square.count() - 2).y, 3, 1e-9);
    EXPECT_EQ(square.elements.last().x, 100.0);
    EXPECT_EQ(square.elements.last().y, 0.0);
}

// ---- Degenerate input ----

TEST(ZDPathWavePath, EmptyOrPointOnlyPathAppendsNothing)
{
    ZDPath out = lineFrom(1, 2, 3, 4);
    ZDPath empty;
    empty.wavePath(out, 0, 25, 10, 0.5);
    EXPECT_EQ(out.count(), 2);
    ZDPath point;
    point.moveTo(5, 5);
    point.wavePath(out, 3, 25, 10, 0.5);
    EXPECT_EQ(out.count(), 2);
}

TEST(ZDPathWavePath, ZeroLengthContourGetsStartAndFinish)
{
    const ZDPath dot = lineFrom(5, 5, 5, 5);
    expectElements(waveOf(dot, 0, 10, 3, 0.5),
                   {{Move, 5, 5}, {Curve, 5, 5}, {CurveData, 5, 5}, {CurveData, 5, 5}}, 0.0);
    expectElements(waveOf(dot, 3, 10, 3, 0.5), {{Move, 5, 5}, {Line, 5, 5}}, 0.0);
    EXPECT_EQ(waveOf(dot, 6, 10, 3, 0.5).count(), 3);
    // A closed contour reduced to one segment.
    ZDPath tiny;
    tiny.moveTo(0, 0);
    tiny.lineTo(0.5, 0.5);
    tiny.closeSubpath();
    expectElements(waveOf(tiny, 0, 10, 3, 0.5),
                   {{Move, 0, 0}, {Curve, 0, 0}, {CurveData, 0, 0}, {CurveData, 0, 0}, {Close, 0, 0}},
                   0.0);
}

TEST(ZDPathWavePath, CoincidentPointsDoNotDisturbTheWave)
{
    // The zero-length curve between the two (50, 0) never holds a location.
    const ZDPath doubled = polyline({{0, 0}, {50, 0}, {50, 0}, {100, 0}}, false);
    expectElements(waveOf(doubled, 3, 25, 10, 0.5),
                   {{Move, 0, 0}, {Line, 12.5, 10}, {Line, 37.5, -10}, {Line, 62.5, 10},
                    {Line, 87.5, -10}, {Line, 100, 0}},
                   1e-9);
    const ZDPath square = waveOf(doubled, 6, 25, 10, 0.5);
    const ZDPath straight = waveOf(lineFrom(0, 0, 100, 0), 6, 25, 10, 0.5);
    ASSERT_EQ(square.count(), straight.count());
    for (int i = 0; i < square.count(); ++i) {
        EXPECT_NEAR(square.elements.at(i).x, straight.elements.at(i).x, 1e-9);
        EXPECT_NEAR(square.elements.at(i).y, straight.elements.at(i).y, 1e-9);
    }
}

TEST(ZDPathWavePath, WavelengthWithoutAFiniteCountMakesNoSteps)
{
    const ZDPath line = lineFrom(0, 0, 100, 0);
    // 0 (infinite w), negative (negative n, also one beyond the step cap),
    // NaN and infinite (w = 0): start and finish only.
    for (double wavelength : {0.0, -25.0, -1e-8, qQNaN(), qInf(), -qInf()}) {
        expectElements(waveOf(line, 3, wavelength, 10, 0.5), {{Move, 0, 0}, {Line, 100, 0}}, 0.0);
        expectElements(waveOf(line, 0, wavelength, 10, 0.5),
                       {{Move, 0, 0}, {Curve, 0, 0}, {CurveData, 100, 0}, {CurveData, 100, 0}}, 0.0);
        EXPECT_EQ(waveOf(line, 1, wavelength, 10, 0.5).count(), 1);
    }
}

TEST(ZDPathWavePath, SmallWavelengthWorkGrowsWithTheCount)
{
    // 100 / 0.001: n = 100000 zigzag steps.
    const ZDPath out = waveOf(lineFrom(0, 0, 100, 0), 3, 0.001, 0.5, 0.5);
    ASSERT_EQ(out.count(), 100000 + 2);
    EXPECT_NEAR(out.elements.at(1).x, 0.0005, 1e-9);
    EXPECT_NEAR(out.elements.at(1).y, 0.5, 1e-9);
    EXPECT_NEAR(out.elements.at(100000).x, 100 - 0.0005, 1e-7);
}

TEST(ZDPathWavePath, StepCountIsCappedAtOneHundredThousand)
{
    // Below the cap the count is len / wavelength: 99998 zigzag steps.
    const ZDPath below = waveOf(lineFrom(0, 0, 99998, 0), 3, 1, 0.5, 0.5);
    ASSERT_EQ(below.count(), 99998 + 2);
    EXPECT_NEAR(below.elements.at(1).x, 0.5, 1e-9);
    EXPECT_NEAR(below.elements.at(99998).x, 99997.5, 1e-9);
    // At the cap.
    EXPECT_EQ(waveOf(lineFrom(0, 0, 100000, 0), 3, 1, 0.5, 0.5).count(), 100000 + 2);
    // Above it, up to a count far beyond the int range, the wave takes
    // 100000 steps of len / 100000: extremes at 0.0005, 0.0015, ...
    for (double wavelength : {0.0009, 1e-8, 1e-300}) {
        const ZDPath capped = waveOf(lineFrom(0, 0, 100, 0), 3, wavelength, 0.5, 0.5);
        ASSERT_EQ(capped.count(), 100000 + 2) << wavelength;
        EXPECT_NEAR(capped.elements.at(1).x, 0.0005, 1e-9);
        EXPECT_NEAR(capped.elements.at(1).y, 0.5, 1e-9);
        EXPECT_NEAR(capped.elements.at(2).x, 0.0015, 1e-9);
        EXPECT_NEAR(capped.elements.at(2).y, -0.5, 1e-9);
        EXPECT_EQ(capped.elements.last().x, 100.0);
    }
    // Every kind, and a closed alternating wave, which the even cap closes.
    for (int kind = 0; kind <= 6; ++kind) {
        const ZDPath out = waveOf(closedSquare(), kind, 1e-300, 0.5, 0.5);
        ASSERT_GT(out.count(), 100000) << kind;
        EXPECT_LE(out.count(), 6 * 100000 + 4) << kind;
        EXPECT_EQ(out.elements.last().type, Close) << kind;
        for (const ZDPathElement &e : out.elements) {
            ASSERT_TRUE(std::isfinite(e.x) && std::isfinite(e.y)) << kind;
        }
    }
    // Square wave, closed: a jump of two lines at each of the 100000 steps.
    EXPECT_EQ(waveOf(closedSquare(), 6, 1e-300, 0.5, 0.5).count(), 2 * 100000 + 1);
}

TEST(ZDPathWavePath, NanAndInfiniteInputGiveADefinedResult)
{
    ZDPath nanStart;
    nanStart.moveTo(qQNaN(), 0);
    nanStart.lineTo(100, 0);
    const ZDPath fromNan = waveOf(nanStart, 3, 10, 3, 0.5);
    ASSERT_EQ(fromNan.count(), 2);
    EXPECT_TRUE(std::isnan(fromNan.elements.at(0).x));
    EXPECT_EQ(fromNan.elements.at(1).x, 100.0);

    const ZDPath toInfinity = waveOf(lineFrom(0, 0, qInf(), 0), 6, 10, 3, 0.5);
    ASSERT_EQ(toInfinity.count(), 2);
    EXPECT_TRUE(std::isinf(toInfinity.elements.at(1).x));

    // A NaN amplitude reaches only the displaced points.
    const ZDPath nanAmplitude = waveOf(lineFrom(0, 0, 100, 0), 4, 25, qQNaN(), 0.5);
    ASSERT_EQ(nanAmplitude.count(), 9);
    EXPECT_TRUE(std::isnan(nanAmplitude.elements.at(1).y));
    EXPECT_EQ(nanAmplitude.elements.at(2).y, 0.0);
}

TEST(ZDPathWavePath, HugeCoordinates)
{
    // len 1e150, wavelength 1e149: ten zigzag steps of amplitude 1e148.
    const ZDPath out = waveOf(lineFrom(0, 0, 1e150, 0), 3, 1e149, 1e148, 0.5);
    ASSERT_EQ(out.count(), 12);
    EXPECT_NEAR(out.elements.at(1).x, 0.5e149, 1e140);
    EXPECT_NEAR(out.elements.at(1).y, 1e148, 1e140);
    EXPECT_NEAR(out.elements.at(2).y, -1e148, 1e140);
    EXPECT_EQ(out.elements.at(11).x, 1e150);
}

// ---- Properties on random input ----

TEST(ZDPathWavePath, DeterministicOnRandomPaths)
{
    std::mt19937 random(4242);
    for (int trial = 0; trial < 10; ++trial) {
        const ZDPath source = (trial % 2) ? randomCurves(random, 4, trial % 4 == 1)
                                          : polyline(randomPoints(random, 12), trial % 4 == 0);
        for (int kind = 0; kind <= 6; ++kind) {
            const ZDPath out = waveOf(source, kind, 31, 6, 0.7);
            expectIdentical(out, waveOf(source, kind, 31, 6, 0.7));
            // And the value itself, from the reference walk.
            const ZDPath expected = referenceWave(source, kind, 31, 6, 0.7);
            ASSERT_EQ(out.count(), expected.count()) << "trial " << trial << " kind " << kind;
            for (int i = 0; i < out.count(); ++i) {
                EXPECT_EQ(out.elements.at(i).type, expected.elements.at(i).type);
                EXPECT_DOUBLE_EQ(out.elements.at(i).x, expected.elements.at(i).x);
                EXPECT_DOUBLE_EQ(out.elements.at(i).y, expected.elements.at(i).y);
            }
        }
    }
}

TEST(ZDPathWavePath, MatchesTheLocationQueryOnRandomPaths)
{
    std::mt19937 random(77);
    for (int trial = 0; trial < 24; ++trial) {
        const bool closed = trial % 3 == 0;
        const ZDPath source = (trial % 2) ? randomCurves(random, 1 + trial % 5, closed)
                                          : polyline(randomPoints(random, 2 + trial % 9), closed);
        const double wavelength = uniform(random, 5, 120);
        const double amplitude = uniform(random, -20, 20);
        const double smoothness = uniform(random, 0, 1.5);
        for (int kind = 0; kind <= 6; ++kind) {
            const ZDPath out = waveOf(source, kind, wavelength, amplitude, smoothness);
            const ZDPath expected = referenceWave(source, kind, wavelength, amplitude, smoothness);
            ASSERT_EQ(out.count(), expected.count()) << "trial " << trial << " kind " << kind;
            for (int i = 0; i < out.count(); ++i) {
                EXPECT_EQ(out.elements.at(i).type, expected.elements.at(i).type);
                EXPECT_DOUBLE_EQ(out.elements.at(i).x, expected.elements.at(i).x);
                EXPECT_DOUBLE_EQ(out.elements.at(i).y, expected.elements.at(i).y);
            }
        }
    }
}

TEST(ZDPathWavePath, PointsStayWithinTheAmplitudeOfRandomPolylines)
{
    // Every drawn point is a point of the source moved by at most |amplitude|
    // along the normal; a control point of kinds 0 to 2 moves by the normal
    // and by the handle along the tangent, at most sqrt(a^2 + h^2) in all.
    std::mt19937 random(2024);
    for (int trial = 0; trial < 20; ++trial) {
        const bool closed = trial % 2 == 0;
        const std::vector<QPointF> points = randomPoints(random, 3 + trial % 10);
        const ZDPath source = polyline(points, closed);
        const double amplitude = uniform(random, -25, 25);
        const double smoothness = uniform(random, 0, 2);
        const double wavelength = uniform(random, 10, 80);
        const double handleBound = std::hypot(amplitude, amplitude * smoothness);
        for (int kind = 0; kind <= 6; ++kind) {
            const ZDPath out = waveOf(source, kind, wavelength, amplitude, smoothness);
            const std::vector<bool> onCurve = onCurveMask(out);
            for (int i = 0; i < out.count(); ++i) {
                const double distance = distanceToPolyline(out.elements.at(i).toPoint(), points, closed);
                const double bound = onCurve[size_t(i)] ? std::fabs(amplitude) : handleBound;
                EXPECT_LE(distance, bound + 1e-9) << "trial " << trial << " kind " << kind << " i " << i;
            }
        }
    }
}

TEST(ZDPathWavePath, CurvesStayWithinTheAmplitudeOfAStraightSource)
{
    // On a straight source the handles lie along the line, so every control
    // point, and with it every point of the drawn cubics, is within
    // |amplitude| of the line.
    std::mt19937 random(99);
    for (int trial = 0; trial < 20; ++trial) {
        const QPointF a(uniform(random, -200, 200), uniform(random, -200, 200));
        const QPointF b(uniform(random, -200, 200), uniform(random, -200, 200));
        const double amplitude = uniform(random, -15, 15);
        const double smoothness = uniform(random, 0, 3);
        const QPointF direction = (b - a) / std::hypot(b.x() - a.x(), b.y() - a.y());
        const auto lineDistance = [&](const QPointF &p) {
            const QPointF r = p - a;
            return std::fabs(r.x() * direction.y() - r.y() * direction.x());
        };
        for (int kind = 0; kind <= 2; ++kind) {
            const ZDPath out = waveOf(lineFrom(a.x(), a.y(), b.x(), b.y()), kind, 17, amplitude, smoothness);
            for (int i = 1; i + 2 < out.count(); i += 3) {
                ASSERT_EQ(out.elements.at(i).type, Curve);
                const QPointF p0 = out.elements.at(i - 1).toPoint();
                const QPointF p1 = out.elements.at(i).toPoint();
                const QPointF p2 = out.elements.at(i + 1).toPoint();
                const QPointF p3 = out.elements.at(i + 2).toPoint();
                for (int k = 0; k <= 32; ++k) {
                    const double t = k / 32.0;
                    const double s = 1 - t;
                    const QPointF p = s * s * s * p0 + 3 * s * s * t * p1 + 3 * s * t * t * p2 + t * t * t * p3;
                    EXPECT_LE(lineDistance(p), std::fabs(amplitude) + 1e-9) << "kind " << kind;
                }
            }
        }
    }
}
