// Tests of the bounds of contours and compound paths: plain, stroke and
// handle bounds, the stroke padding under a matrix, the join and cap point
// generators, and the union over the children of an XPath.
#include <zgraphics/model.h>

#include <QtGui/QPainterPath>
#include <QtGui/QPainterPathStroker>
#include <QtGui/QTransform>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

// Reaches the private static bounds functions of zgPath.
class zgBoundsInternals
{
public:
    static zgRect plain(zgPath *path, QVector<double> padding, zgMatrix *matrix)
    {
        return zgPath::getBounds(path->segments, path->closed, padding, matrix);
    }
    static zgRect stroke(zgPath *path, const zgStyle &style, zgMatrix *matrix)
    {
        return zgPath::getStrokeBounds(path->segments, path->closed, style, matrix);
    }
    static zgRect handle(zgPath *path, const zgStyle &style, const zgBoundOpt &options,
                         zgMatrix *matrix)
    {
        return zgPath::getHandleBounds(path->segments, style, options, matrix);
    }
    static zgRect plainOf(const QList<zgSegment *> &segments, bool closed)
    {
        return zgPath::getBounds(segments, closed, QVector<double>(), nullptr);
    }
    static zgRect strokeOf(const QList<zgSegment *> &segments, bool closed, const zgStyle &style)
    {
        return zgPath::getStrokeBounds(segments, closed, style, nullptr);
    }
    static zgRect handleOf(const QList<zgSegment *> &segments, const zgStyle &style,
                           const zgBoundOpt &options)
    {
        return zgPath::getHandleBounds(segments, style, options, nullptr);
    }
    static QVector<double> padding(double radius, zgMatrix *matrix)
    {
        return zgPath::getStrokePadding(radius, matrix);
    }
    static QVector<zgPoint> bevel(zgSegment *segment, zgJoin join, double radius,
                                  double miterLimit, zgMatrix *matrix, zgMatrix *strokeMatrix,
                                  bool area)
    {
        QVector<zgPoint> points;
        zgPath::addBevelJoin(segment, join, radius, miterLimit, matrix, strokeMatrix,
                             [&points](zgPoint p) { points.append(p); }, area);
        return points;
    }
    static QVector<zgPoint> cap(zgSegment *segment, zgCap cap, double radius, zgMatrix *matrix,
                                zgMatrix *strokeMatrix, bool area)
    {
        QVector<zgPoint> points;
        zgPath::addSquareCap(segment, cap, radius, matrix, strokeMatrix,
                             [&points](zgPoint p) { points.append(p); }, area);
        return points;
    }
};

namespace {

using B = zgBoundsInternals;

// A node of a test contour; handles relative to the point.
struct Node
{
    zgPoint point;
    zgPoint in;
    zgPoint out;
};

Node node(double x, double y)
{
    return { zgPoint(x, y), zgPoint(), zgPoint() };
}

Node node(double x, double y, double inX, double inY, double outX, double outY)
{
    return { zgPoint(x, y), zgPoint(inX, inY), zgPoint(outX, outY) };
}

struct ReleaseContour
{
    void operator()(zgPath *path) const { path->release(); }
};
using Contour = std::unique_ptr<zgPath, ReleaseContour>;

// A heap contour held by the returned pointer, released at its end.
Contour makeContour(const QVector<Node> &nodes, bool closed)
{
    zgPath *path = new zgPath(nullptr, closed);
    path->addRef();
    for (const Node &n : nodes)
        path->addSegment(new zgSegment(n.point, n.in, n.out));
    return Contour(path);
}

// Bounds of a rectangle compare with a stated tolerance on each side.
void expectRect(const zgRect &actual, double x, double y, double w, double h, double tolerance)
{
    EXPECT_NEAR(actual.x, x, tolerance) << actual.toString().toStdString();
    EXPECT_NEAR(actual.y, y, tolerance) << actual.toString().toStdString();
    EXPECT_NEAR(actual.width, w, tolerance) << actual.toString().toStdString();
    EXPECT_NEAR(actual.height, h, tolerance) << actual.toString().toStdString();
}

void expectPoint(const zgPoint &actual, double x, double y, double tolerance)
{
    EXPECT_NEAR(actual.x, x, tolerance) << actual.toString().toStdString();
    EXPECT_NEAR(actual.y, y, tolerance) << actual.toString().toStdString();
}

zgStyle strokeStyle(double width, zgCap cap, zgJoin join, double miterLimit = 10.0)
{
    return zgStyle(true, true, true, width, cap, join, miterLimit);
}

const zgBoundOpt kPlain;
const zgBoundOpt kStroke(true, false, false, false);
const zgBoundOpt kHandle(false, false, false, true);
const zgBoundOpt kHandleStroke(true, false, false, true);

// The eight values of curve i of a contour (the last one closing it).
QVector<double> curveValues(zgPath *path, int i)
{
    const QList<zgSegment *> &s = path->segments;
    const zgSegment *a = s.at(i);
    const zgSegment *b = s.at((i + 1) % s.size());
    return { a->point.x, a->point.y, a->point.x + a->handleOut.x, a->point.y + a->handleOut.y,
             b->point.x + b->handleIn.x, b->point.y + b->handleIn.y, b->point.x, b->point.y };
}

int curveCount(zgPath *path)
{
    const int n = path->segments.size();
    return path->closed ? n : n - 1;
}

// Coordinate coord of the cubic at t, in Bernstein form and long double.
long double bernstein(const QVector<double> &v, int coord, long double t)
{
    const long double u = 1.0L - t;
    return u * u * u * v[coord] + 3.0L * u * u * t * v[coord + 2]
        + 3.0L * u * t * t * v[coord + 4] + t * t * t * v[coord + 6];
}

// The extreme (sign +1: largest, -1: smallest) of one coordinate over the
// cubic: a dense scan, then a golden-section search around the best sample,
// on which the coordinate is unimodal.
long double extreme(const QVector<double> &v, int coord, int sign)
{
    const int samples = 4000;
    int best = 0;
    for (int i = 1; i <= samples; ++i) {
        if (sign * bernstein(v, coord, (long double)i / samples)
            > sign * bernstein(v, coord, (long double)best / samples))
            best = i;
    }
    long double lo = std::max(0.0L, (long double)(best - 1) / samples);
    long double hi = std::min(1.0L, (long double)(best + 1) / samples);
    const long double ratio = (std::sqrt(5.0L) - 1.0L) / 2.0L;
    for (int i = 0; i < 200; ++i) {
        const long double m1 = hi - ratio * (hi - lo);
        const long double m2 = lo + ratio * (hi - lo);
        if (sign * bernstein(v, coord, m1) > sign * bernstein(v, coord, m2))
            hi = m2;
        else
            lo = m1;
    }
    return bernstein(v, coord, (lo + hi) / 2.0L);
}

QPainterPath toPainterPath(zgPath *path)
{
    QPainterPath painterPath;
    if (path->segments.isEmpty())
        return painterPath;
    painterPath.moveTo(path->segments.first()->point.toPt());
    for (int i = 0; i < curveCount(path); ++i) {
        const QVector<double> v = curveValues(path, i);
        painterPath.cubicTo(v[2], v[3], v[4], v[5], v[6], v[7]);
    }
    if (path->closed)
        painterPath.closeSubpath();
    return painterPath;
}

// The outline of the stroke by QPainterPathStroker, mapped by matrix. A
// miter join goes in as Qt::SvgMiterJoin: it falls back to a bevel beyond
// the limit and measures the limit in half widths, as the library does,
// whereas Qt::MiterJoin clips the miter and counts the limit in full widths.
QRectF strokerBounds(zgPath *path, const zgStyle &style, const zgMatrix *matrix = nullptr,
                     double miterLimitScale = 1.0)
{
    QPainterPathStroker stroker;
    stroker.setWidth(style.strokeWidth);
    stroker.setCapStyle(style.cap == zgCapButt     ? Qt::FlatCap
                            : style.cap == zgCapSquare ? Qt::SquareCap
                                                       : Qt::RoundCap);
    stroker.setJoinStyle(style.join == zgJoinBevel     ? Qt::BevelJoin
                             : style.join == zgJoinMiter ? Qt::SvgMiterJoin
                                                         : Qt::RoundJoin);
    stroker.setMiterLimit(style.miterLimit * miterLimitScale);
    stroker.setCurveThreshold(0.001);
    QPainterPath outline = stroker.createStroke(toPainterPath(path));
    if (matrix) {
        const QTransform transform(matrix->a, matrix->b, matrix->c, matrix->d, matrix->tx,
                                   matrix->ty);
        outline = transform.map(outline);
    }
    return outline.boundingRect();
}

// Seeded random contours: anchors on a ring of radius 40 to 100 in order of
// angle. Curved ones get handles that point toward the neighbours, each
// coordinate a random fraction (0.05 to 0.45) of the way, so that every
// control point lies in the box of its curve's ends: the curves are bent but
// monotone in x and y, and their extremes lie at the anchors.
class ContourRandom
{
public:
    explicit ContourRandom(unsigned seed) : m_engine(seed) {}

    double uniform(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }

    QVector<Node> nodes(int count, bool curved)
    {
        QVector<zgPoint> points;
        const double step = 2.0 * M_PI / count;
        for (int i = 0; i < count; ++i) {
            const double angle = step * i + uniform(-0.3, 0.3) * step;
            const double radius = uniform(40.0, 100.0);
            points.append(zgPoint(radius * std::cos(angle), radius * std::sin(angle)));
        }
        QVector<Node> result;
        for (int i = 0; i < count; ++i) {
            Node n = { points[i], zgPoint(), zgPoint() };
            if (curved) {
                n.in = towards(points[i], points[(i + count - 1) % count]);
                n.out = towards(points[i], points[(i + 1) % count]);
            }
            result.append(n);
        }
        return result;
    }

private:
    zgPoint towards(const zgPoint &from, const zgPoint &to)
    {
        const double fx = uniform(0.05, 0.45);
        const double fy = uniform(0.05, 0.45);
        return zgPoint((to.x - from.x) * fx, (to.y - from.y) * fy);
    }

    std::mt19937 m_engine;
};

// Plain bounds ------------------------------------------------------------

TEST(PathBounds, EmptyContourGivesDefaultRectForPlainAndStroke)
{
    for (bool closed : { false, true }) {
        Contour path = makeContour({}, closed);
        const zgStyle style = strokeStyle(4.0, zgCapSquare, zgJoinMiter);
        expectRect(path->getBounds(kPlain, style, nullptr), 0, 0, 0, 0, 0.0);
        expectRect(path->getBounds(kStroke, style, nullptr), 0, 0, 0, 0, 0.0);
        zgMatrix matrix(2, 0, 0, 2, 5, 7);
        expectRect(path->getBounds(kStroke, style, &matrix), 0, 0, 0, 0, 0.0);
    }
}

TEST(PathBounds, EmptyContourHandleBoundsAreInfinite)
{
    Contour path = makeContour({}, true);
    const zgRect r = path->getBounds(kHandleStroke, zgStyle(), nullptr);
    EXPECT_EQ(r.x, qInf());
    EXPECT_EQ(r.y, qInf());
    EXPECT_EQ(r.width, -qInf());
    EXPECT_EQ(r.height, -qInf());
    EXPECT_FALSE(r.containsPt(zgPoint(0, 0)));
}

TEST(PathBounds, SingleSegmentHasZeroSizeAtItsPointOpenOrClosed)
{
    for (bool closed : { false, true }) {
        Contour path = makeContour({ node(3, -4) }, closed);
        expectRect(path->getBounds(kPlain, zgStyle(), nullptr), 3, -4, 0, 0, 0.0);
    }
}

TEST(PathBounds, ClosedSingleSegmentIsACurveToItself)
{
    // The handles make the curve from the point back to itself a loop; open,
    // the contour has no curve at all.
    const QVector<Node> nodes = { node(0, 0, -10, 10, 10, 10) };
    Contour open = makeContour(nodes, false);
    expectRect(open->getBounds(kPlain, zgStyle(), nullptr), 0, 0, 0, 0, 0.0);
    Contour closed = makeContour(nodes, true);
    // x(t) = 30t(1-t)^2 - 30t^2(1-t), y(t) = 30t(1-t): y peaks at 7.5.
    const zgRect r = closed->getBounds(kPlain, zgStyle(), nullptr);
    EXPECT_NEAR(r.y, 0.0, 1e-12);
    EXPECT_NEAR(r.height, 7.5, 1e-12);
    // Symmetric in x about 0: t(1-t)(1-2t) peaks at sqrt(3)/18.
    EXPECT_NEAR(r.x, -30.0 * std::sqrt(3.0) / 18.0, 1e-12);
    EXPECT_NEAR(r.width, 60.0 * std::sqrt(3.0) / 18.0, 1e-12);
}

TEST(PathBounds, OpenAndClosedDifferByTheClosingCurve)
{
    // The closing curve from (10, 0) back to (0, 0) bulges down to y = -7.5.
    const QVector<Node> nodes = { node(0, 0, 0, -10, 0, 0), node(10, 0, 0, 0, 0, -10) };
    Contour open = makeContour(nodes, false);
    Contour closed = makeContour(nodes, true);
    expectRect(open->getBounds(kPlain, zgStyle(), nullptr), 0, 0, 10, 0, 1e-12);
    expectRect(closed->getBounds(kPlain, zgStyle(), nullptr), 0, -7.5, 10, 7.5, 1e-12);
}

TEST(PathBounds, NullMatrixAgreesWithIdentityAndMatrixMapsTheCurves)
{
    const QVector<Node> nodes = { node(0, 0, 0, 0, 5, -5), node(10, 0, 0, -5, 0, 5),
                                  node(10, 10) };
    Contour path = makeContour(nodes, true);
    zgMatrix identity;
    const zgRect plain = path->getBounds(kPlain, zgStyle(), nullptr);
    const zgRect same = path->getBounds(kPlain, zgStyle(), &identity);
    EXPECT_TRUE(plain == same);

    // The matrix maps the curves before their bounds are taken: the bounds
    // of the mapped contour, not the mapped bounds.
    zgMatrix matrix;
    matrix.translate(100, 50);
    matrix.rotate(30);
    matrix.scale(2, 0.5);
    const zgRect mapped = path->getBounds(kPlain, zgStyle(), &matrix);
    Contour moved = makeContour(nodes, true);
    moved->transformContent(&matrix);
    const zgRect expected = moved->getBounds(kPlain, zgStyle(), nullptr);
    expectRect(mapped, expected.x, expected.y, expected.width, expected.height, 1e-12);
    const zgRect mappedBox = matrix.transformBounds(plain);
    EXPECT_GT(mapped.getArea(), 0.0);
    EXPECT_LT(mapped.getArea(), mappedBox.getArea() - 1.0);
    // The segments themselves stay as they were.
    expectPoint(path->segments.at(1)->point, 10, 0, 0.0);
}

TEST(PathBounds, PaddingWidensOnlyInteriorExtremesByHalf)
{
    // A hump from (0, 0) to (20, 0) with its top at y = 7.5, t = 0.5.
    Contour path = makeContour({ node(0, 0, 0, 0, 0, 10), node(20, 0, 0, 10, 0, 0) }, false);
    // y: the top is widened by half of 4; the ends are not padded.
    expectRect(B::plain(path.get(), { 6.0, 4.0 }, nullptr), 0, 0, 20, 9.5, 1e-12);
    // An empty padding and a zero one agree.
    expectRect(B::plain(path.get(), {}, nullptr), 0, 0, 20, 7.5, 1e-12);
    expectRect(B::plain(path.get(), { 0.0, 0.0 }, nullptr), 0, 0, 20, 7.5, 1e-12);
}

TEST(PathBounds, RandomContoursAreTightAroundDenseSamples)
{
    ContourRandom random(20240611u);
    for (int trial = 0; trial < 60; ++trial) {
        const bool closed = trial % 2 == 0;
        QVector<Node> nodes;
        for (int i = 0; i < 2 + trial % 5; ++i) {
            nodes.append(node(random.uniform(-100, 100), random.uniform(-100, 100),
                              random.uniform(-80, 80), random.uniform(-80, 80),
                              random.uniform(-80, 80), random.uniform(-80, 80)));
        }
        Contour path = makeContour(nodes, closed);
        const zgRect r = path->getBounds(kPlain, zgStyle(), nullptr);
        long double minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
        for (int i = 0; i < curveCount(path.get()); ++i) {
            const QVector<double> v = curveValues(path.get(), i);
            minX = std::min(minX, extreme(v, 0, -1));
            maxX = std::max(maxX, extreme(v, 0, 1));
            minY = std::min(minY, extreme(v, 1, -1));
            maxY = std::max(maxY, extreme(v, 1, 1));
        }
        // 1e-9: the bounds are the exact extremes, up to the rounding of the
        // root solver, on coordinates of about 100.
        SCOPED_TRACE(trial);
        EXPECT_NEAR(r.left(), (double)minX, 1e-9);
        EXPECT_NEAR(r.top(), (double)minY, 1e-9);
        EXPECT_NEAR(r.right(), (double)maxX, 1e-9);
        EXPECT_NEAR(r.bottom(), (double)maxY, 1e-9);
    }
}

// Stroke bounds -----------------------------------------------------------

// An open corner (0, 0) - (10, 0) - (10, 10), stroke width 2 (radius 1).
QVector<Node> corner()
{
    return { node(0, 0), node(10, 0), node(10, 10) };
}

TEST(PathStrokeBounds, BevelJoinAndButtCapsAddTheOffsets)
{
    Contour path = makeContour(corner(), false);
    // Join: (10, -1) and (11, 0); caps: (0, +-1) and (9..11, 10).
    expectRect(path->getBounds(kStroke, strokeStyle(2, zgCapButt, zgJoinBevel), nullptr), 0, -1,
               11, 11, 1e-12);
}

TEST(PathStrokeBounds, SquareCapsGrowOutOfTheLineAtBothEnds)
{
    Contour path = makeContour(corner(), false);
    expectRect(path->getBounds(kStroke, strokeStyle(2, zgCapSquare, zgJoinBevel), nullptr), -1,
               -1, 12, 12, 1e-12);
}

TEST(PathStrokeBounds, RoundJoinAndCapsAddPaddingSquares)
{
    Contour path = makeContour(corner(), false);
    // Squares of the full width centred on (0, 0), (10, 0) and (10, 10).
    expectRect(path->getBounds(kStroke, strokeStyle(2, zgCapRound, zgJoinRound), nullptr), -1,
               -1, 12, 12, 1e-12);
}

TEST(PathStrokeBounds, RoundJoinReachesHalfTheWidthOnEachSide)
{
    // A closed triangle: each corner contributes a square of side 3 centred
    // on it, so the bounds are the triangle's, 1.5 wider on every side.
    Contour path = makeContour({ node(0, 0), node(10, 0), node(5, 8) }, true);
    expectRect(path->getBounds(kStroke, strokeStyle(3, zgCapButt, zgJoinRound), nullptr), -1.5,
               -1.5, 13, 11, 1e-12);
}

// A sharp open corner (0, 0) - (10, 0) - (0, 5) with radius 1: the miter
// corner lies at 1 / sin(theta / 2) = 4.3525 from the node, at x = 14.236.
QVector<Node> sharpCorner()
{
    return { node(0, 0), node(10, 0), node(0, 5) };
}

double sharpMiterDistance()
{
    return 1.0 / std::sin(std::atan2(5.0, 10.0) / 2.0);
}

TEST(PathStrokeBounds, MiterWithinTheLimitAddsItsCorner)
{
    Contour path = makeContour(sharpCorner(), false);
    const double limit = sharpMiterDistance() + 1e-6; // just within
    const zgRect r = path->getBounds(kStroke, strokeStyle(2, zgCapButt, zgJoinMiter, limit),
                                     nullptr);
    const double cornerX = 10.0 + sharpMiterDistance() * std::cos(std::atan2(5.0, 10.0) / 2.0);
    EXPECT_NEAR(r.right(), cornerX, 1e-9);
    EXPECT_NEAR(r.top(), -1.0, 1e-12);
}

TEST(PathStrokeBounds, MiterBeyondTheLimitFallsBackToTheBevel)
{
    Contour path = makeContour(sharpCorner(), false);
    const double limit = sharpMiterDistance() - 1e-6; // just beyond
    const zgRect miter = path->getBounds(kStroke, strokeStyle(2, zgCapButt, zgJoinMiter, limit),
                                         nullptr);
    const zgRect bevel = path->getBounds(kStroke, strokeStyle(2, zgCapButt, zgJoinBevel), nullptr);
    // The bevel's farther offset: (10, 0) + the unit normal of the second
    // edge, (5, 10) / sqrt(125).
    EXPECT_NEAR(miter.right(), 10.0 + 5.0 / std::sqrt(125.0), 1e-12);
    expectRect(miter, bevel.x, bevel.y, bevel.width, bevel.height, 0.0);
}

TEST(PathStrokeBounds, MiterLimitIsTimesTheRadius)
{
    // Width 4 puts the corner at twice the distance; a limit that held for
    // width 2 holds for width 4 too, since it scales with the radius.
    Contour path = makeContour(sharpCorner(), false);
    const double limit = sharpMiterDistance() + 1e-6;
    const zgRect r = path->getBounds(kStroke, strokeStyle(4, zgCapButt, zgJoinMiter, limit),
                                     nullptr);
    const double cornerX
        = 10.0 + 2.0 * sharpMiterDistance() * std::cos(std::atan2(5.0, 10.0) / 2.0);
    EXPECT_NEAR(r.right(), cornerX, 1e-9);
}

// A hump whose top (10, 10) is a node with the given handles.
QVector<Node> hump(const zgPoint &handleIn, const zgPoint &handleOut)
{
    return { node(0, 0), { zgPoint(10, 10), handleIn, handleOut }, node(20, 0) };
}

// A cusp at (0, 0), the leftmost point: the curve comes in from the right
// and leaves to the right, with the given handles at the cusp.
QVector<Node> cusp(const zgPoint &handleIn, const zgPoint &handleOut)
{
    return { node(10, 5), { zgPoint(0, 0), handleIn, handleOut }, node(10, -5) };
}

TEST(PathStrokeBounds, CollinearHandlesMakeASmoothNodeThatJoinsRound)
{
    const zgStyle bevel = strokeStyle(2, zgCapButt, zgJoinBevel);
    const zgStyle miter = strokeStyle(2, zgCapButt, zgJoinMiter);
    const zgStyle round = strokeStyle(2, zgCapButt, zgJoinRound);
    // Handles in one direction are collinear too: the round square at the
    // cusp reaches x = -1, where a bevel would add (0, 1) and (0, -1) only.
    Contour smooth = makeContour(cusp(zgPoint(5, 0), zgPoint(5, 0)), false);
    EXPECT_NEAR(smooth->getBounds(kStroke, bevel, nullptr).left(), -1.0, 1e-12);
    EXPECT_NEAR(smooth->getBounds(kStroke, miter, nullptr).left(), -1.0, 1e-12);
    // Opposite handles of different lengths: the same rectangle as a round join.
    Contour hill = makeContour(hump(zgPoint(-2, 0), zgPoint(7, 0)), false);
    const zgRect asRound = hill->getBounds(kStroke, round, nullptr);
    const zgRect asBevel = hill->getBounds(kStroke, bevel, nullptr);
    expectRect(asBevel, asRound.x, asRound.y, asRound.width, asRound.height, 0.0);
    EXPECT_NEAR(asBevel.bottom(), 11.0, 1e-12);
}

TEST(PathStrokeBounds, NodeWithOneHandleOrBentHandlesIsNotSmooth)
{
    const zgStyle bevel = strokeStyle(2, zgCapButt, zgJoinBevel);
    // Bent handles, a cross of 5 against lengths of 5 and 5.1: the bevel's
    // offsets (0, -1) and (-1, 5) / sqrt(26).
    Contour bent = makeContour(cusp(zgPoint(5, 0), zgPoint(5, 1)), false);
    EXPECT_NEAR(bent->getBounds(kStroke, bevel, nullptr).left(), -1.0 / std::sqrt(26.0), 1e-12);
    // One handle zero: the second curve leaves toward its far control
    // point, (10, -5); the offsets (0, 1) and (-1, -2) / sqrt(5).
    Contour oneHandle = makeContour(cusp(zgPoint(5, 0), zgPoint(0, 0)), false);
    EXPECT_NEAR(oneHandle->getBounds(kStroke, bevel, nullptr).left(), -1.0 / std::sqrt(5.0),
                1e-12);
    // Round joins give the square whatever the handles.
    Contour roundBent = makeContour(cusp(zgPoint(5, 0), zgPoint(5, 1)), false);
    EXPECT_NEAR(
        roundBent->getBounds(kStroke, strokeStyle(2, zgCapButt, zgJoinRound), nullptr).left(),
        -1.0, 1e-12);
}

TEST(PathStrokeBounds, HasStrokeClearGivesPlainBoundsWithZeroPadding)
{
    Contour path = makeContour(hump(zgPoint(-5, 0), zgPoint(5, 0)), true);
    zgStyle style = strokeStyle(6, zgCapSquare, zgJoinMiter);
    style.hasStroke = false;
    const zgRect stroke = path->getBounds(kStroke, style, nullptr);
    const zgRect plain = B::plain(path.get(), { 0.0, 0.0 }, nullptr);
    expectRect(stroke, plain.x, plain.y, plain.width, plain.height, 0.0);
    expectRect(stroke, 0, 0, 20, 10, 1e-12);
    zgMatrix matrix(0, 2, -2, 0, 1, 1);
    const zgRect mapped = B::stroke(path.get(), style, &matrix);
    const zgRect mappedPlain = B::plain(path.get(), { 0.0, 0.0 }, &matrix);
    expectRect(mapped, mappedPlain.x, mappedPlain.y, mappedPlain.width, mappedPlain.height, 0.0);
}

TEST(PathStrokeBounds, SingleSegmentOpenContourHasNoCaps)
{
    // Open with one segment: the count of joins and caps is zero.
    Contour path = makeContour({ node(5, 5) }, false);
    expectRect(path->getBounds(kStroke, strokeStyle(4, zgCapSquare, zgJoinMiter), nullptr), 5, 5,
               0, 0, 0.0);
}

TEST(PathStrokeBounds, ClosedContourJoinsAtTheFirstSegmentToo)
{
    // A closed square with miter joins: every corner, the first included,
    // adds its miter corner at 1 beyond both sides.
    Contour path = makeContour({ node(0, 0), node(10, 0), node(10, 10), node(0, 10) }, true);
    expectRect(path->getBounds(kStroke, strokeStyle(2, zgCapSquare, zgJoinMiter), nullptr), -1,
               -1, 12, 12, 1e-12);
    // Open, the first and last nodes get caps instead: butt caps at (0, 0)
    // going right and at (0, 10) going left stay within x >= 0.
    Contour open = makeContour({ node(0, 0), node(10, 0), node(10, 10), node(0, 10) }, false);
    expectRect(open->getBounds(kStroke, strokeStyle(2, zgCapButt, zgJoinMiter), nullptr), 0, -1,
               11, 12, 1e-12);
}

TEST(PathStrokeBounds, MatrixDistortsTheStroke)
{
    Contour path = makeContour(corner(), false);
    // Scale x by 3 and y by 2, then move: the round squares become 6 by 4.
    zgMatrix matrix;
    matrix.translate(100, 200);
    matrix.scale(3, 2);
    const zgRect r = path->getBounds(kStroke, strokeStyle(2, zgCapRound, zgJoinRound), &matrix);
    expectRect(r, 100 - 3, 200 - 2, 30 + 6, 20 + 4, 1e-12);
    // Bevel and butt: the offsets are mapped by the linear part only.
    const zgRect b = path->getBounds(kStroke, strokeStyle(2, zgCapButt, zgJoinBevel), &matrix);
    expectRect(b, 100, 200 - 2, 30 + 3, 20 + 2, 1e-12);
}

// Each side of r lies outside q or within tolerance inside it.
void expectContains(const zgRect &r, const QRectF &q, double tolerance)
{
    EXPECT_LE(r.left(), q.left() + tolerance);
    EXPECT_LE(r.top(), q.top() + tolerance);
    EXPECT_GE(r.right(), q.right() - tolerance);
    EXPECT_GE(r.bottom(), q.bottom() - tolerance);
}

// Each side of r lies inside q or within tolerance outside it.
void expectWithin(const zgRect &r, const QRectF &q, double tolerance)
{
    EXPECT_GE(r.left(), q.left() - tolerance);
    EXPECT_GE(r.top(), q.top() - tolerance);
    EXPECT_LE(r.right(), q.right() + tolerance);
    EXPECT_LE(r.bottom(), q.bottom() + tolerance);
}

const zgCap kCaps[] = { zgCapButt, zgCapSquare, zgCapRound };
const zgJoin kJoins[] = { zgJoinBevel, zgJoinMiter, zgJoinRound };

// Tolerance 0.02 in the stroker tests: QPainterPathStroker approximates round
// caps and joins and the offset curves by pieces, flattened at a threshold
// of 0.001; the largest shortfall seen is about 0.001.
// The bounds also lie within the outline's bounds where every extreme they
// take is one of the outline: on polygons, whose ends are not padded and
// whose joins and caps give outline points, and on curves with round joins
// and caps, whose padded ends are the extremes of the round pieces. With
// other joins or caps a padded end of a curve can stand beyond the outline.
void checkAgainstStroker(bool curved, unsigned seed)
{
    ContourRandom random(seed);
    for (int trial = 0; trial < 24; ++trial) {
        const bool closed = trial % 2 == 1;
        Contour path = makeContour(random.nodes(3 + trial % 4, curved), closed);
        for (zgCap cap : kCaps) {
            for (zgJoin join : kJoins) {
                const double miterLimit = random.uniform(1.0, 6.0);
                const zgStyle style = strokeStyle(random.uniform(1.0, 8.0), cap, join, miterLimit);
                SCOPED_TRACE(testing::Message() << "trial " << trial << " cap " << cap
                                                << " join " << join);
                const zgRect bounds = path->getBounds(kStroke, style, nullptr);
                const QRectF outline = strokerBounds(path.get(), style);
                expectContains(bounds, outline, 0.02);
                if (!curved || (cap == zgCapRound && join == zgJoinRound))
                    expectWithin(bounds, outline, 0.02);
            }
        }
    }
}

TEST(PathStrokeBounds, ContainsTheStrokerOutlineOfPolygons)
{
    checkAgainstStroker(false, 77u);
}

TEST(PathStrokeBounds, ContainsTheStrokerOutlineOfMonotoneCurves)
{
    checkAgainstStroker(true, 78u);
}

TEST(PathStrokeBounds, IsTightForPolygonsWithMiterJoinsAndSquareCaps)
{
    // Straight edges: every extreme of the outline is a join or cap point,
    // and the bounds take exactly those.
    ContourRandom random(79u);
    for (int trial = 0; trial < 12; ++trial) {
        Contour path = makeContour(random.nodes(3 + trial % 4, false), trial % 2 == 1);
        const zgStyle style = strokeStyle(random.uniform(1.0, 8.0), zgCapSquare, zgJoinMiter,
                                          random.uniform(1.0, 6.0));
        const zgRect r = path->getBounds(kStroke, style, nullptr);
        const QRectF q = strokerBounds(path.get(), style);
        SCOPED_TRACE(trial);
        // 1e-6: Qt computes its miter and cap points on its own.
        EXPECT_NEAR(r.left(), q.left(), 1e-6);
        EXPECT_NEAR(r.top(), q.top(), 1e-6);
        EXPECT_NEAR(r.right(), q.right(), 1e-6);
        EXPECT_NEAR(r.bottom(), q.bottom(), 1e-6);
    }
}

TEST(PathStrokeBounds, ContainsTheMappedStrokerOutlineUnderAConformalMatrix)
{
    // A quarter turn with a uniform scale of 2.5 and a shift keeps the curves
    // monotone and maps the stroke onto the stroke of the mapped contour.
    // The miter corner's distance is measured after the mapping against the
    // unmapped limit, so the stroker gets the limit over 2.5.
    const double tolerance = 0.05; // the stroker's 0.02, scaled by 2.5
    zgMatrix matrix(0, 2.5, -2.5, 0, -30, 60);
    ContourRandom random(4242u);
    for (int trial = 0; trial < 16; ++trial) {
        const bool curved = trial % 4 >= 2;
        Contour path = makeContour(random.nodes(3 + trial % 3, curved), trial % 2 == 1);
        for (zgCap cap : kCaps) {
            for (zgJoin join : kJoins) {
                const zgStyle style = strokeStyle(random.uniform(1.0, 6.0), cap, join,
                                                  random.uniform(1.0, 6.0));
                SCOPED_TRACE(testing::Message() << "trial " << trial << " cap " << cap
                                                << " join " << join);
                const zgRect bounds = path->getBounds(kStroke, style, &matrix);
                const QRectF outline = strokerBounds(path.get(), style, &matrix, 1.0 / 2.5);
                expectContains(bounds, outline, tolerance);
                if (!curved || (cap == zgCapRound && join == zgJoinRound))
                    expectWithin(bounds, outline, tolerance);
            }
        }
    }
}

TEST(PathStrokeBounds, ContainsTheMappedStrokerOutlineUnderAnUnevenScale)
{
    // x' = -3y, y' = 2x, shifted: the stroke is distorted into ellipses. The
    // bevel offsets, the butt ends and the padding squares map exactly; the
    // miter corner and the square cap are built square to the mapped
    // normals and are left out here.
    const double tolerance = 0.06; // the stroker's 0.02, scaled by 3
    zgMatrix matrix(0, 2, -3, 0, 15, -40);
    const zgCap caps[] = { zgCapButt, zgCapRound };
    const zgJoin joins[] = { zgJoinBevel, zgJoinRound };
    ContourRandom random(4343u);
    for (int trial = 0; trial < 16; ++trial) {
        const bool curved = trial % 4 >= 2;
        Contour path = makeContour(random.nodes(3 + trial % 3, curved), trial % 2 == 1);
        for (zgCap cap : caps) {
            for (zgJoin join : joins) {
                const zgStyle style = strokeStyle(random.uniform(1.0, 6.0), cap, join);
                SCOPED_TRACE(testing::Message() << "trial " << trial << " cap " << cap
                                                << " join " << join);
                const zgRect bounds = path->getBounds(kStroke, style, &matrix);
                const QRectF outline = strokerBounds(path.get(), style, &matrix);
                expectContains(bounds, outline, tolerance);
                if (!curved || (cap == zgCapRound && join == zgJoinRound))
                    expectWithin(bounds, outline, tolerance);
            }
        }
    }
}

TEST(PathStrokeBounds, CurveWithinThePaddedBoxIsNotPadded)
{
    // Two humps on y = 0 with tops 7.5 and 8 (handles 10 and 32/3 high),
    // width 4: the first top is padded to 9.5; the second curve's control
    // values all lie within 9.5 + 2, so it leaves the box alone and its
    // padded top, 10, is not reached.
    Contour path = makeContour({ node(0, 0, 0, 0, 0, 10), node(20, 0, 0, 10, 0, 32.0 / 3.0),
                                 node(40, 0, 0, 32.0 / 3.0, 0, 0) },
                               false);
    expectRect(path->getBounds(kPlain, zgStyle(), nullptr), 0, 0, 40, 8, 1e-12);
    const zgRect r = path->getBounds(kStroke, strokeStyle(4, zgCapRound, zgJoinRound), nullptr);
    EXPECT_NEAR(r.bottom(), 9.5, 1e-12);
    EXPECT_NEAR(r.top(), -2.0, 1e-12);
}

TEST(PathStrokeBounds, MiterAgreesWithTheStrokerOnBothSidesOfTheLimit)
{
    // Qt::SvgMiterJoin uses the same rule; its right edge is the miter
    // corner within the limit and the bevel beyond it.
    Contour path = makeContour(sharpCorner(), false);
    for (double delta : { 1e-3, -1e-3 }) {
        const zgStyle style = strokeStyle(2, zgCapButt, zgJoinMiter, sharpMiterDistance() + delta);
        const zgRect r = path->getBounds(kStroke, style, nullptr);
        const QRectF q = strokerBounds(path.get(), style);
        EXPECT_NEAR(r.right(), q.right(), 1e-6) << delta;
    }
}

// Handle bounds -----------------------------------------------------------

TEST(PathHandleBounds, AnchorsAndHandlesWithoutPadding)
{
    Contour path = makeContour({ node(0, 0, -3, 0, 2, 8), node(10, 0, 0, -6, 1, 1) }, false);
    // Points (0, 0), (-3, 0), (2, 8), (10, 0), (10, -6), (11, 1).
    expectRect(path->getBounds(kHandle, strokeStyle(4, zgCapSquare, zgJoinMiter), nullptr), -3,
               -6, 14, 14, 0.0);
}

TEST(PathHandleBounds, WinOverStrokeAndIncludeThePadding)
{
    Contour path = makeContour({ node(0, 0, -3, 0, 2, 8), node(10, 0, 0, -6, 1, 1) }, false);
    const zgStyle style = strokeStyle(4, zgCapButt, zgJoinBevel);
    // Anchors padded by the radius 2, handles by the radius 2 too.
    const zgRect r = path->getBounds(kHandleStroke, style, nullptr);
    expectRect(r, -5, -8, 18, 18, 0.0);
    const zgRect strokeOnly = path->getBounds(kStroke, style, nullptr);
    EXPECT_FALSE(r == strokeOnly);
    const zgRect direct = B::handle(path.get(), style, kHandleStroke, nullptr);
    expectRect(r, direct.x, direct.y, direct.width, direct.height, 0.0);
}

TEST(PathHandleBounds, AnchorPaddingFollowsJoinAndCap)
{
    // One anchor without handles, so that only the anchor's padding shows.
    Contour path = makeContour({ node(0, 0) }, false);
    // Miter: radius 2 times the limit 3.
    expectRect(path->getBounds(kHandleStroke, strokeStyle(4, zgCapButt, zgJoinMiter, 3), nullptr),
               -6, -6, 12, 12, 1e-12);
    // Square cap: sqrt(2) times the radius, when that is larger.
    const double s = 2.0 * std::sqrt(2.0);
    expectRect(path->getBounds(kHandleStroke, strokeStyle(4, zgCapSquare, zgJoinBevel), nullptr),
               -s, -s, 2 * s, 2 * s, 1e-12);
    // ... and not when the miter reaches farther.
    expectRect(path->getBounds(kHandleStroke, strokeStyle(4, zgCapSquare, zgJoinMiter, 3), nullptr),
               -6, -6, 12, 12, 1e-12);
    // A miter limit below sqrt(2) with a square cap: the cap's reach wins.
    expectRect(path->getBounds(kHandleStroke, strokeStyle(4, zgCapSquare, zgJoinMiter, 1.2),
                               nullptr),
               -s, -s, 2 * s, 2 * s, 1e-12);
    // Round join and cap: the radius.
    expectRect(path->getBounds(kHandleStroke, strokeStyle(4, zgCapRound, zgJoinRound), nullptr),
               -2, -2, 4, 4, 1e-12);
    // A handle at (10, 0) gets the stroke radius, 2, while the anchor gets
    // the miter's 6.
    Contour withHandle = makeContour({ node(0, 0, 0, 0, 10, 0) }, false);
    expectRect(withHandle->getBounds(kHandleStroke, strokeStyle(4, zgCapButt, zgJoinMiter, 3),
                                     nullptr),
               -6, -6, 18, 12, 1e-12);
}

TEST(PathHandleBounds, NoPaddingWhenStrokeOptionOrHasStrokeIsClear)
{
    Contour path = makeContour({ node(0, 0, -3, 0, 2, 8), node(10, 0, 0, -6, 1, 1) }, false);
    zgStyle noStroke = strokeStyle(4, zgCapSquare, zgJoinMiter);
    noStroke.hasStroke = false;
    expectRect(path->getBounds(kHandleStroke, noStroke, nullptr), -3, -6, 14, 14, 0.0);
    expectRect(B::handle(path.get(), noStroke, kHandleStroke, nullptr), -3, -6, 14, 14, 0.0);
}

TEST(PathHandleBounds, MatrixMapsThePointsAndThePadding)
{
    Contour path = makeContour({ node(0, 0), node(10, 0, 0, 0, 0, 5) }, false);
    zgMatrix matrix;
    matrix.translate(50, 50);
    matrix.scale(2, 3);
    // Points (50, 50), (70, 50), (70, 65); radius 0.5 becomes (1, 1.5).
    expectRect(path->getBounds(kHandleStroke, strokeStyle(1, zgCapButt, zgJoinBevel), &matrix),
               49, 48.5, 22, 18, 1e-12);
    expectRect(path->getBounds(kHandle, zgStyle(), &matrix), 50, 50, 20, 15, 0.0);
}

TEST(PathHandleBounds, ContainThePlainAndStrokeBounds)
{
    ContourRandom random(99u);
    for (int trial = 0; trial < 20; ++trial) {
        Contour path = makeContour(random.nodes(3 + trial % 4, true), trial % 2 == 0);
        const zgStyle style = strokeStyle(3, zgCapRound, zgJoinRound);
        const zgRect handle = path->getBounds(kHandleStroke, style, nullptr);
        const zgRect stroke = path->getBounds(kStroke, style, nullptr);
        EXPECT_TRUE(handle.containsRect(stroke)) << trial;
        const zgRect bare = path->getBounds(kHandle, style, nullptr);
        EXPECT_TRUE(bare.containsRect(path->getBounds(kPlain, style, nullptr))) << trial;
        // And no larger than the anchors and handle ends widened by the
        // radius 1.5, which round joins and caps keep for both.
        double left = qInf(), top = qInf(), right = -qInf(), bottom = -qInf();
        for (const zgSegment *segment : path->segments) {
            const zgPoint p = segment->point;
            for (const zgPoint &q : { p, p.add(segment->handleIn), p.add(segment->handleOut) }) {
                left = std::min(left, q.x - 1.5);
                right = std::max(right, q.x + 1.5);
                top = std::min(top, q.y - 1.5);
                bottom = std::max(bottom, q.y + 1.5);
            }
        }
        expectRect(handle, left, top, right - left, bottom - top, 1e-12);
    }
}

// Stroke padding ------------------------------------------------------------

TEST(StrokePadding, NullMatrixGivesTheRadius)
{
    const QVector<double> p = B::padding(2.5, nullptr);
    ASSERT_EQ(p.size(), 2);
    EXPECT_EQ(p[0], 2.5);
    EXPECT_EQ(p[1], 2.5);
}

TEST(StrokePadding, ScaleGivesTheScaledRadii)
{
    zgMatrix matrix(2, 0, 0, 3, 0, 0);
    const QVector<double> p = B::padding(1.5, &matrix);
    ASSERT_EQ(p.size(), 2);
    EXPECT_NEAR(p[0], 3.0, 1e-12);
    EXPECT_NEAR(p[1], 4.5, 1e-12);
}

TEST(StrokePadding, RotatedEllipseGivesTheHalfExtentsOfItsBox)
{
    // Scale by (a, b), then rotate by phi: the ellipse's box has the half
    // extents sqrt(a^2 cos^2 + b^2 sin^2) and sqrt(a^2 sin^2 + b^2 cos^2).
    for (double phi : { 20.0, 65.0, -40.0, 150.0 }) {
        zgMatrix matrix;
        matrix.rotate(phi);
        matrix.scale(4, 1);
        const double c = std::cos(phi * M_PI / 180.0), s = std::sin(phi * M_PI / 180.0);
        const QVector<double> p = B::padding(0.5, &matrix);
        EXPECT_NEAR(p[0], 0.5 * std::sqrt(16 * c * c + s * s), 1e-12) << phi;
        EXPECT_NEAR(p[1], 0.5 * std::sqrt(16 * s * s + c * c), 1e-12) << phi;
    }
}

TEST(StrokePadding, ZeroRadiusGivesZero)
{
    zgMatrix matrix(1, 2, 3, 4, 0, 0);
    const QVector<double> p = B::padding(0.0, &matrix);
    EXPECT_EQ(p[0], 0.0);
    EXPECT_EQ(p[1], 0.0);
}

// Join and cap points -------------------------------------------------------

TEST(BevelJoin, BoundsCaseGivesBothOffsetsOfABevel)
{
    Contour path = makeContour(corner(), false);
    const QVector<zgPoint> p = B::bevel(path->segments.at(1), zgJoinBevel, 1, 10, nullptr,
                                        nullptr, false);
    ASSERT_EQ(p.size(), 2);
    expectPoint(p[0], 10, -1, 1e-12);
    expectPoint(p[1], 11, 0, 1e-12);
}

TEST(BevelJoin, OffsetsGoToTheOuterSideOfEitherTurn)
{
    // Turning the other way: (0, 0) - (10, 0) - (10, -10); the outer side
    // of the turn is now at +y.
    Contour path = makeContour({ node(0, 0), node(10, 0), node(10, -10) }, false);
    const QVector<zgPoint> p = B::bevel(path->segments.at(1), zgJoinBevel, 1, 10, nullptr,
                                        nullptr, false);
    ASSERT_EQ(p.size(), 2);
    expectPoint(p[0], 10, 1, 1e-12);
    expectPoint(p[1], 11, 0, 1e-12);
}

TEST(BevelJoin, MiterWithinTheLimitGivesOnlyTheCorner)
{
    Contour path = makeContour(corner(), false);
    // The corner (11, -1) is sqrt(2) from the node.
    const QVector<zgPoint> p = B::bevel(path->segments.at(1), zgJoinMiter, 1,
                                        std::sqrt(2.0) + 1e-9, nullptr, nullptr, false);
    ASSERT_EQ(p.size(), 1);
    expectPoint(p[0], 11, -1, 1e-12);
}

TEST(BevelJoin, MiterBeyondTheLimitGivesTheOffsets)
{
    Contour path = makeContour(corner(), false);
    const QVector<zgPoint> p = B::bevel(path->segments.at(1), zgJoinMiter, 1,
                                        std::sqrt(2.0) - 1e-9, nullptr, nullptr, false);
    ASSERT_EQ(p.size(), 2);
    expectPoint(p[0], 10, -1, 1e-12);
    expectPoint(p[1], 11, 0, 1e-12);
}

TEST(BevelJoin, AreaCaseGivesThePolygon)
{
    Contour path = makeContour(corner(), false);
    const QVector<zgPoint> miter = B::bevel(path->segments.at(1), zgJoinMiter, 1, 10, nullptr,
                                            nullptr, true);
    ASSERT_EQ(miter.size(), 4);
    expectPoint(miter[0], 10, 0, 0.0);
    expectPoint(miter[1], 10, -1, 1e-12);
    expectPoint(miter[2], 11, -1, 1e-12);
    expectPoint(miter[3], 11, 0, 1e-12);
    const QVector<zgPoint> beyond = B::bevel(path->segments.at(1), zgJoinMiter, 1, 1, nullptr,
                                             nullptr, true);
    ASSERT_EQ(beyond.size(), 3);
    expectPoint(beyond[2], 11, 0, 1e-12);
    const QVector<zgPoint> bevel = B::bevel(path->segments.at(1), zgJoinBevel, 1, 10, nullptr,
                                            nullptr, true);
    ASSERT_EQ(bevel.size(), 3);
    expectPoint(bevel[0], 10, 0, 0.0);
    expectPoint(bevel[1], 10, -1, 1e-12);
    expectPoint(bevel[2], 11, 0, 1e-12);
}

TEST(BevelJoin, StraightNodeHasNoMiterCorner)
{
    // Parallel outer edges: no corner, so even a miter gives the offsets.
    Contour path = makeContour({ node(0, 0), node(5, 0), node(10, 0) }, false);
    const QVector<zgPoint> p = B::bevel(path->segments.at(1), zgJoinMiter, 1, 10, nullptr,
                                        nullptr, false);
    ASSERT_EQ(p.size(), 2);
    expectPoint(p[0], 5, -1, 1e-12);
    expectPoint(p[1], 5, -1, 1e-12);
}

TEST(BevelJoin, MatrixMapsThePointAndStrokeMatrixTheNormals)
{
    Contour path = makeContour(corner(), false);
    zgMatrix matrix(2, 0, 0, 3, 100, 100);
    zgMatrix strokeMatrix(2, 0, 0, 3, 0, 0);
    const QVector<zgPoint> p = B::bevel(path->segments.at(1), zgJoinBevel, 1, 10, &matrix,
                                        &strokeMatrix, false);
    ASSERT_EQ(p.size(), 2);
    expectPoint(p[0], 120, 97, 1e-12);
    expectPoint(p[1], 122, 100, 1e-12);
}

TEST(BevelJoin, NoCurveBeforeGivesNothing)
{
    Contour path = makeContour(corner(), false);
    EXPECT_TRUE(B::bevel(path->segments.at(0), zgJoinBevel, 1, 10, nullptr, nullptr, true)
                    .isEmpty());
    zgSegment loose(1, 1);
    EXPECT_TRUE(B::bevel(&loose, zgJoinBevel, 1, 10, nullptr, nullptr, false).isEmpty());
}

TEST(SquareCap, ButtCapGivesTheTwoOffsets)
{
    Contour path = makeContour(corner(), false);
    const QVector<zgPoint> start = B::cap(path->segments.first(), zgCapButt, 1, nullptr, nullptr,
                                          false);
    ASSERT_EQ(start.size(), 2);
    expectPoint(start[0], 0, -1, 1e-12);
    expectPoint(start[1], 0, 1, 1e-12);
    const QVector<zgPoint> end = B::cap(path->segments.last(), zgCapButt, 1, nullptr, nullptr,
                                        false);
    ASSERT_EQ(end.size(), 2);
    expectPoint(end[0], 11, 10, 1e-12);
    expectPoint(end[1], 9, 10, 1e-12);
}

TEST(SquareCap, GrowsOutOfTheLineAtTimeZeroAndAtTimeOne)
{
    Contour path = makeContour(corner(), false);
    // Start, time 0: pushed back along the first edge, to x = -1.
    const QVector<zgPoint> start = B::cap(path->segments.first(), zgCapSquare, 1, nullptr,
                                          nullptr, false);
    ASSERT_EQ(start.size(), 2);
    expectPoint(start[0], -1, -1, 1e-12);
    expectPoint(start[1], -1, 1, 1e-12);
    // End, time 1: pushed forward along the last edge, to y = 11.
    const QVector<zgPoint> end = B::cap(path->segments.last(), zgCapSquare, 1, nullptr, nullptr,
                                        false);
    ASSERT_EQ(end.size(), 2);
    expectPoint(end[0], 11, 11, 1e-12);
    expectPoint(end[1], 9, 11, 1e-12);
}

TEST(SquareCap, AreaCaseGivesTheFourCorners)
{
    Contour path = makeContour(corner(), false);
    const QVector<zgPoint> p = B::cap(path->segments.first(), zgCapSquare, 2, nullptr, nullptr,
                                      true);
    ASSERT_EQ(p.size(), 4);
    expectPoint(p[0], 0, 2, 1e-12);
    expectPoint(p[1], 0, -2, 1e-12);
    expectPoint(p[2], -2, -2, 1e-12);
    expectPoint(p[3], -2, 2, 1e-12);
}

TEST(SquareCap, MatrixMapsThePointAndStrokeMatrixTheNormal)
{
    Contour path = makeContour(corner(), false);
    zgMatrix matrix(2, 0, 0, 3, 100, 100);
    zgMatrix strokeMatrix(2, 0, 0, 3, 0, 0);
    const QVector<zgPoint> p = B::cap(path->segments.last(), zgCapSquare, 1, &matrix,
                                      &strokeMatrix, false);
    ASSERT_EQ(p.size(), 2);
    // Point (120, 130), normal (2, 0), pushed by that normal turned: (0, 2).
    expectPoint(p[0], 122, 132, 1e-12);
    expectPoint(p[1], 118, 132, 1e-12);
}

TEST(SquareCap, SegmentWithoutCurveGivesNaNOffsets)
{
    zgSegment loose(3, 4);
    const QVector<zgPoint> p = B::cap(&loose, zgCapButt, 1, nullptr, nullptr, false);
    ASSERT_EQ(p.size(), 2);
    EXPECT_TRUE(p[0].isNaN());
    EXPECT_TRUE(p[1].isNaN());
}

// Free lists of segments ----------------------------------------------------

TEST(PathBounds, EmptySegmentListsGiveTheDocumentedRectangles)
{
    const QList<zgSegment *> none;
    expectRect(B::plainOf(none, true), 0, 0, 0, 0, 0.0);
    expectRect(B::strokeOf(none, true, zgStyle()), 0, 0, 0, 0, 0.0);
    expectRect(B::strokeOf(none, false, zgStyle()), 0, 0, 0, 0, 0.0);
    const zgRect handle = B::handleOf(none, zgStyle(), kHandleStroke);
    EXPECT_EQ(handle.x, qInf());
    EXPECT_EQ(handle.width, -qInf());
}

// Compound paths ------------------------------------------------------------

TEST(XPathBounds, NoChildrenGiveTheZeroRectangle)
{
    XPath compound;
    expectRect(compound.getBounds(kStroke, zgStyle(), nullptr), 0, 0, 0, 0, 0.0);
}

TEST(XPathBounds, UnitesTheChildrenAndIgnoresEmptyFirstChild)
{
    XPath compound;
    compound.addChild(new zgPath(nullptr, true)); // empty: default rectangle, no area
    zgPath *a = new zgPath(nullptr, true);
    a->addSegment(new zgSegment(10, 10));
    a->addSegment(new zgSegment(20, 10));
    a->addSegment(new zgSegment(20, 30));
    compound.addChild(a);
    zgPath *b = new zgPath(nullptr, true);
    b->addSegment(new zgSegment(-5, 40));
    b->addSegment(new zgSegment(0, 40));
    b->addSegment(new zgSegment(0, 45));
    compound.addChild(b);
    // The empty child's zero rectangle at the origin does not widen the union.
    expectRect(compound.getBounds(kPlain, zgStyle(), nullptr), -5, 10, 25, 35, 0.0);
    // Stroke bounds of each child, then their union.
    const zgStyle style = strokeStyle(2, zgCapButt, zgJoinRound);
    expectRect(compound.getBounds(kStroke, style, nullptr), -6, 9, 27, 37, 1e-12);
    zgMatrix matrix(1, 0, 0, 1, 100, 0);
    expectRect(compound.getBounds(kPlain, zgStyle(), &matrix), 95, 10, 25, 35, 0.0);
}

TEST(XPathBounds, ChildrenWithoutAreaDoNotCount)
{
    XPath compound;
    zgPath *flat = new zgPath(nullptr, false);
    flat->addSegment(new zgSegment(-50, 0));
    flat->addSegment(new zgSegment(50, 0));
    compound.addChild(flat);
    zgPath *box = new zgPath(nullptr, true);
    box->addSegment(new zgSegment(0, 0));
    box->addSegment(new zgSegment(1, 0));
    box->addSegment(new zgSegment(1, 1));
    compound.addChild(box);
    // The horizontal line has plain bounds of height 0 and is left out.
    expectRect(compound.getBounds(kPlain, zgStyle(), nullptr), 0, 0, 1, 1, 0.0);
    // With a round-capped stroke it gains height and counts: (-51, -1) to
    // (51, 1), united with the triangle's (-1, -1) to (2, 2).
    expectRect(compound.getBounds(kStroke, strokeStyle(2, zgCapRound, zgJoinRound), nullptr),
               -51, -1, 102, 3, 1e-12);
}

} // namespace
