// Tests of zgBezier: construction, splitting, pieces on an interval, the
// quarter-circle parameter search and the conversion of arcs to cubics.
#include <zgraphics/primitives.h>

#include <gtest/gtest.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

#include <cmath>

class zgBezierInternals
{
public:
    static double arcAngle(double angle) { return zgBezier::arcAngle(angle); }
};

namespace {

const double Kappa = 0.55228474983;

zgPoint cubicPoint(const zgPoint &p0, const zgPoint &p1, const zgPoint &p2, const zgPoint &p3,
                   double t)
{
    const double mt = 1 - t;
    const double a = mt * mt * mt;
    const double b = 3 * mt * mt * t;
    const double c = 3 * mt * t * t;
    const double d = t * t * t;
    return zgPoint(a * p0.x + b * p1.x + c * p2.x + d * p3.x,
                   a * p0.y + b * p1.y + c * p2.y + d * p3.y);
}

zgPoint bezierPoint(const zgBezier &b, double t)
{
    return cubicPoint(b.pt1(), b.pt2(), b.pt3(), b.pt4(), t);
}

void expectPointNear(const zgPoint &actual, const zgPoint &expected, double tolerance)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
}

void expectPointEq(const zgPoint &actual, const zgPoint &expected)
{
    EXPECT_DOUBLE_EQ(actual.x, expected.x);
    EXPECT_DOUBLE_EQ(actual.y, expected.y);
}

// The test rectangle: corner (10, 20), 100 x 50, centre (60, 45).
const zgRect TestRect(10, 20, 100, 50);

// The thirteen points of the ellipse in TestRect.
QVector<zgPoint> ellipseTable()
{
    const double w2k = 50 * Kappa;
    const double h2k = 25 * Kappa;
    return {zgPoint(110, 45),        zgPoint(110, 45 + h2k), zgPoint(60 + w2k, 70),
            zgPoint(60, 70),         zgPoint(60 - w2k, 70),  zgPoint(10, 45 + h2k),
            zgPoint(10, 45),         zgPoint(10, 45 - h2k),  zgPoint(60 - w2k, 20),
            zgPoint(60, 20),         zgPoint(60 + w2k, 20),  zgPoint(110, 45 - h2k),
            zgPoint(110, 45)};
}

// A circle of radius 50 about (50, 50).
const zgRect CircleRect(0, 0, 100, 100);

// Distance of p from the ellipse inscribed in rect, as a fraction of the radius.
double ellipseDeviation(const zgRect &rect, const zgPoint &p)
{
    const double u = (p.x - rect.x - rect.width / 2) / (rect.width / 2);
    const double v = (p.y - rect.y - rect.height / 2) / (rect.height / 2);
    return std::fabs(std::sqrt(u * u + v * v) - 1);
}

// The point mirrored about the horizontal axis through the centre of rect.
zgPoint mirrored(const zgRect &rect, const zgPoint &p)
{
    return zgPoint(p.x, 2 * rect.y + rect.height - p.y);
}

// Every cubic of the list from firstCubic on, the first one starting at
// start, has its sample points on the ellipse inscribed in rect within 1e-3
// of the radius.
void expectCubicsOnEllipse(const zgRect &rect, zgPoint start, const QVector<zgPoint> &curves,
                           int firstCubic = 0)
{
    ASSERT_EQ(curves.size() % 3, 0);
    for (int i = 0; i < curves.size(); i += 3) {
        const zgPoint c1 = curves.at(i);
        const zgPoint c2 = curves.at(i + 1);
        const zgPoint end = curves.at(i + 2);
        if (i / 3 >= firstCubic) {
            for (double t : {0.0, 0.25, 0.5, 0.75, 1.0})
                EXPECT_LT(ellipseDeviation(rect, cubicPoint(start, c1, c2, end, t)), 1e-3)
                    << "cubic " << i / 3 << " at t = " << t;
        }
        start = end;
    }
}

void expectCubicsOnEllipse(zgPoint start, const QVector<zgPoint> &curves, int firstCubic = 0)
{
    expectCubicsOnEllipse(TestRect, start, curves, firstCubic);
}

bool allFinite(const QVector<zgPoint> &points)
{
    for (const zgPoint &p : points) {
        if (!qIsFinite(p.x) || !qIsFinite(p.y))
            return false;
    }
    return true;
}

// Collects the warnings given while it lives.
class WarningCatcher
{
public:
    WarningCatcher() { m_previous = qInstallMessageHandler(&WarningCatcher::handler); }
    ~WarningCatcher() { qInstallMessageHandler(m_previous); }
    static QStringList &warnings()
    {
        static QStringList list;
        return list;
    }

private:
    static void handler(QtMsgType type, const QMessageLogContext &, const QString &message)
    {
        if (type == QtWarningMsg)
            warnings().append(message);
    }
    QtMessageHandler m_previous;
};

const char *const NaNWarning =
    "Arc to bezier, adding arc where a parameter is NaN, results are undefined";

} // namespace

// ---------------------------------------------------------------------------
// Construction and splitting

TEST(BezierTest, FromPointsKeepsTheFourPoints)
{
    const zgBezier b = zgBezier::fromPoints(zgPoint(1, 2), zgPoint(3, 4), zgPoint(5, 6),
                                            zgPoint(7, 8));
    EXPECT_EQ(b.x1, 1.0);
    EXPECT_EQ(b.y1, 2.0);
    EXPECT_EQ(b.x4, 7.0);
    EXPECT_EQ(b.y4, 8.0);
    expectPointEq(b.pt1(), zgPoint(1, 2));
    expectPointEq(b.pt2(), zgPoint(3, 4));
    expectPointEq(b.pt3(), zgPoint(5, 6));
    expectPointEq(b.pt4(), zgPoint(7, 8));
}

TEST(BezierTest, DefaultIsAllZero)
{
    const zgBezier b;
    expectPointEq(b.pt1(), zgPoint(0, 0));
    expectPointEq(b.pt4(), zgPoint(0, 0));
}

TEST(BezierTest, ParameterSplitLeftAtHalf)
{
    zgBezier b = zgBezier::fromPoints(zgPoint(0, 0), zgPoint(1, 2), zgPoint(3, 2), zgPoint(4, 0));
    zgBezier left;
    b.parameterSplitLeft(0.5, left);

    expectPointEq(left.pt1(), zgPoint(0, 0));
    expectPointEq(left.pt2(), zgPoint(0.5, 1));
    expectPointEq(left.pt3(), zgPoint(1.25, 1.5));
    expectPointEq(left.pt4(), zgPoint(2, 1.5));

    expectPointEq(b.pt1(), zgPoint(2, 1.5));
    expectPointEq(b.pt2(), zgPoint(2.75, 1.5));
    expectPointEq(b.pt3(), zgPoint(3.5, 1));
    expectPointEq(b.pt4(), zgPoint(4, 0));
}

TEST(BezierTest, ParameterSplitLeftPiecesFollowTheCurve)
{
    const zgBezier original =
        zgBezier::fromPoints(zgPoint(-3, 7), zgPoint(10, 40), zgPoint(25, -12), zgPoint(31, 5));
    zgBezier right = original;
    zgBezier left;
    const double t = 0.3;
    right.parameterSplitLeft(t, left);

    // The split point is stored in both pieces and lies on the curve.
    expectPointEq(left.pt4(), right.pt1());
    expectPointNear(left.pt4(), bezierPoint(original, t), 1e-12);
    // Each piece traces its part of the original.
    for (double s : {0.2, 0.5, 0.9}) {
        expectPointNear(bezierPoint(left, s), bezierPoint(original, s * t), 1e-12);
        expectPointNear(bezierPoint(right, s), bezierPoint(original, t + s * (1 - t)), 1e-12);
    }
}

TEST(BezierTest, ParameterSplitLeftIntoItselfKeepsTheLeftPiece)
{
    zgBezier b = zgBezier::fromPoints(zgPoint(0, 0), zgPoint(1, 2), zgPoint(3, 2), zgPoint(4, 0));
    b.parameterSplitLeft(0.5, b);
    expectPointEq(b.pt1(), zgPoint(0, 0));
    expectPointEq(b.pt2(), zgPoint(0.5, 1));
    expectPointEq(b.pt3(), zgPoint(1.25, 1.5));
    expectPointEq(b.pt4(), zgPoint(2, 1.5));
}

TEST(BezierTest, BezierOnIntervalWholeRangeIsAnExactCopy)
{
    const zgBezier b =
        zgBezier::fromPoints(zgPoint(0.1, 0.2), zgPoint(1.3, 2.7), zgPoint(3.1, 2.9), zgPoint(4, 0));
    const zgBezier copy = b.bezierOnInterval(0, 1);
    EXPECT_EQ(copy.x1, b.x1);
    EXPECT_EQ(copy.y2, b.y2);
    EXPECT_EQ(copy.x3, b.x3);
    EXPECT_EQ(copy.y4, b.y4);
}

TEST(BezierTest, BezierOnIntervalFollowsTheCurve)
{
    const zgBezier b =
        zgBezier::fromPoints(zgPoint(-3, 7), zgPoint(10, 40), zgPoint(25, -12), zgPoint(31, 5));
    const double t0 = 0.25;
    const double t1 = 0.8;
    const zgBezier piece = b.bezierOnInterval(t0, t1);
    for (double s : {0.0, 0.3, 0.6, 1.0})
        expectPointNear(bezierPoint(piece, s), bezierPoint(b, t0 + s * (t1 - t0)), 1e-12);
}

TEST(BezierTest, BezierOnIntervalHalves)
{
    const zgBezier b = zgBezier::fromPoints(zgPoint(0, 0), zgPoint(1, 2), zgPoint(3, 2), zgPoint(4, 0));
    const zgBezier leftHalf = b.bezierOnInterval(0, 0.5);
    expectPointNear(leftHalf.pt2(), zgPoint(0.5, 1), 1e-15);
    expectPointNear(leftHalf.pt3(), zgPoint(1.25, 1.5), 1e-15);
    expectPointNear(leftHalf.pt4(), zgPoint(2, 1.5), 1e-15);

    const zgBezier rightHalf = b.bezierOnInterval(0.5, 1);
    expectPointNear(rightHalf.pt1(), zgPoint(2, 1.5), 1e-15);
    expectPointNear(rightHalf.pt2(), zgPoint(2.75, 1.5), 1e-15);
    expectPointNear(rightHalf.pt3(), zgPoint(3.5, 1), 1e-15);
    expectPointNear(rightHalf.pt4(), zgPoint(4, 0), 1e-15);
}

TEST(BezierTest, BezierOnIntervalLeavesTheOriginal)
{
    const zgBezier b = zgBezier::fromPoints(zgPoint(0, 0), zgPoint(1, 2), zgPoint(3, 2), zgPoint(4, 0));
    b.bezierOnInterval(0.2, 0.7);
    expectPointEq(b.pt1(), zgPoint(0, 0));
    expectPointEq(b.pt4(), zgPoint(4, 0));
}

// ---------------------------------------------------------------------------
// arcAngle

TEST(BezierArcAngleTest, EndsOfTheQuarter)
{
    EXPECT_EQ(zgBezierInternals::arcAngle(0), 0.0);
    EXPECT_EQ(zgBezierInternals::arcAngle(90), 1.0);
}

TEST(BezierArcAngleTest, HalfQuarterIsHalfWithinRounding)
{
    EXPECT_NEAR(zgBezierInternals::arcAngle(45), 0.5, 1e-12);
}

TEST(BezierArcAngleTest, ZeroBoundIsInclusiveAt1e12)
{
    EXPECT_EQ(zgBezierInternals::arcAngle(1e-12), 0.0);
    EXPECT_EQ(zgBezierInternals::arcAngle(-1e-12), 0.0);
    // Just above the bound the search runs and gives a tiny positive time.
    const double t = zgBezierInternals::arcAngle(2e-12);
    EXPECT_GT(t, 0.0);
    EXPECT_NEAR(t, 2.1645104988554284e-14, 1e-20);
}

TEST(BezierArcAngleTest, NinetyWithin1e12RelativeGivesOne)
{
    EXPECT_EQ(zgBezierInternals::arcAngle(90 - 5e-11), 1.0);
    EXPECT_EQ(zgBezierInternals::arcAngle(90 + 5e-11), 1.0);
    // 1e-9 away the relative difference is above 1e-12 and the search runs.
    const double t = zgBezierInternals::arcAngle(90 - 1e-9);
    EXPECT_NE(t, 1.0);
    EXPECT_NEAR(t, 0.9999999999894659, 1e-13);
}

TEST(BezierArcAngleTest, NewtonStepsGiveTheStatedValues)
{
    // Values of the two-times-two Newton steps and their mean.
    EXPECT_NEAR(zgBezierInternals::arcAngle(30), 0.32993130359806633, 1e-13);
    EXPECT_NEAR(zgBezierInternals::arcAngle(60), 0.6701093066589305, 1e-13);
    EXPECT_NEAR(zgBezierInternals::arcAngle(1e-9), 1.0822552494287628e-11, 1e-18);
}

TEST(BezierArcAngleTest, PointOfQuarterCubicHasTheAngle)
{
    const zgPoint p0(1, 0);
    const zgPoint p1(1, Kappa);
    const zgPoint p2(Kappa, 1);
    const zgPoint p3(0, 1);
    for (double angle : {10.0, 30.0, 45.0, 60.0, 80.0}) {
        const zgPoint p = cubicPoint(p0, p1, p2, p3, zgBezierInternals::arcAngle(angle));
        const double found = std::atan2(p.y, p.x) * 180 / M_PI;
        // Two Newton steps on each axis leave a few hundredths of a degree.
        EXPECT_NEAR(found, angle, 0.05) << "angle " << angle;
    }
}

// ---------------------------------------------------------------------------
// arcToBezier: invalid input

TEST(BezierArcToBezierTest, NaNParameterWarnsAndGivesOrigin)
{
    const double nan = qQNaN();
    const zgRect rects[] = {zgRect(nan, 20, 100, 50), zgRect(10, nan, 100, 50),
                            zgRect(10, 20, nan, 50), zgRect(10, 20, 100, nan)};
    for (const zgRect &rect : rects) {
        WarningCatcher catcher;
        WarningCatcher::warnings().clear();
        QVector<zgPoint> curves {zgPoint(1, 2)};
        const zgPoint start = zgBezier::arcToBezier(rect, 0, 90, curves);
        expectPointEq(start, zgPoint(0, 0));
        EXPECT_EQ(curves.size(), 1);
        ASSERT_EQ(WarningCatcher::warnings().size(), 1);
        EXPECT_EQ(WarningCatcher::warnings().first(), QString(NaNWarning));
    }
    for (int which = 0; which < 2; ++which) {
        WarningCatcher catcher;
        WarningCatcher::warnings().clear();
        QVector<zgPoint> curves;
        const zgPoint start = which == 0 ? zgBezier::arcToBezier(TestRect, nan, 90, curves)
                                         : zgBezier::arcToBezier(TestRect, 0, nan, curves);
        expectPointEq(start, zgPoint(0, 0));
        EXPECT_TRUE(curves.isEmpty());
        ASSERT_EQ(WarningCatcher::warnings().size(), 1);
        EXPECT_EQ(WarningCatcher::warnings().first(), QString(NaNWarning));
    }
}

TEST(BezierArcToBezierTest, NaNWarningComesOnceThroughTheQPointFForm)
{
    WarningCatcher catcher;
    WarningCatcher::warnings().clear();
    QVector<QPointF> curves;
    const QPointF start = zgBezier::arcToBezier(QRectF(0, 0, 10, 10), qQNaN(), 90, curves);
    EXPECT_EQ(start, QPointF(0, 0));
    EXPECT_TRUE(curves.isEmpty());
    ASSERT_EQ(WarningCatcher::warnings().size(), 1);
    EXPECT_EQ(WarningCatcher::warnings().first(), QString(NaNWarning));
}

TEST(BezierArcToBezierTest, FlatRectangleGivesOriginWithoutWarning)
{
    WarningCatcher catcher;
    WarningCatcher::warnings().clear();
    QVector<zgPoint> curves;
    zgPoint start = zgBezier::arcToBezier(zgRect(10, 20, 1e-13, 50), 0, 90, curves);
    expectPointEq(start, zgPoint(0, 0));
    EXPECT_TRUE(curves.isEmpty());
    start = zgBezier::arcToBezier(zgRect(10, 20, 100, 1e-13), 0, 90, curves);
    expectPointEq(start, zgPoint(0, 0));
    EXPECT_TRUE(curves.isEmpty());
    start = zgBezier::arcToBezier(zgRect(10, 20, -100, 50), 0, 90, curves);
    expectPointEq(start, zgPoint(0, 0));
    EXPECT_TRUE(curves.isEmpty());
    EXPECT_TRUE(WarningCatcher::warnings().isEmpty());
}

TEST(BezierArcToBezierTest, ExtentOfExactly1e12IsNotFlat)
{
    QVector<zgPoint> curves;
    zgBezier::arcToBezier(zgRect(10, 20, 1e-12, 50), 0, 360, curves);
    EXPECT_EQ(curves.size(), 12);
    curves.clear();
    zgBezier::arcToBezier(zgRect(10, 20, 100, 1e-12), 0, -360, curves);
    EXPECT_EQ(curves.size(), 12);
}

TEST(BezierArcToBezierTest, InfiniteStartGivesOriginAndNothing)
{
    QVector<zgPoint> curves;
    const zgPoint start = zgBezier::arcToBezier(TestRect, qInf(), 90, curves);
    expectPointEq(start, zgPoint(0, 0));
    EXPECT_TRUE(curves.isEmpty());
}

TEST(BezierArcToBezierTest, HugeStartAngleStaysFinite)
{
    // 1e300 + 90 is 1e300 in doubles: start and end fall in one quarter at
    // equal times, so the arc is empty and its start point is returned. The
    // start angle, reduced by whole turns, leaves 0: the right middle.
    QVector<zgPoint> curves;
    expectPointEq(zgBezier::arcToBezier(TestRect, 1e300, 90, curves), zgPoint(110, 45));
    EXPECT_TRUE(curves.isEmpty());

    // At -1e17 a sweep of -270 still resolves: four pieces, starting and
    // ending on the true ellipse points, with the quarter points between
    // them on the ellipse and every value finite.
    const zgPoint start = zgBezier::arcToBezier(TestRect, -1e17, -270, curves);
    ASSERT_EQ(curves.size(), 4 * 3);
    expectPointEq(start, zgNumeric::ellipsePoint(TestRect, -1e17));
    expectPointEq(curves.last(), zgNumeric::ellipsePoint(TestRect, -1e17 - 270));
    for (const zgPoint &p : curves)
        EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
    for (int i : {2, 5, 8, 11}) {
        const double u = (curves.at(i).x - 60) / 50, v = (curves.at(i).y - 45) / 25;
        EXPECT_NEAR(u * u + v * v, 1.0, 1e-12) << "point " << i;
    }
    const double u = (start.x - 60) / 50, v = (start.y - 45) / 25;
    EXPECT_NEAR(u * u + v * v, 1.0, 1e-12);
}

// ---------------------------------------------------------------------------
// arcToBezier: full ellipses

TEST(BezierArcToBezierTest, FullTurnPositiveGivesPointsElevenDownToZero)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    const zgPoint start = zgBezier::arcToBezier(TestRect, 0, 360, curves);
    expectPointEq(start, table.at(12));
    ASSERT_EQ(curves.size(), 12);
    for (int i = 0; i < 12; ++i)
        expectPointEq(curves.at(i), table.at(11 - i));
    expectPointEq(curves.last(), zgPoint(110, 45));
}

TEST(BezierArcToBezierTest, FullTurnNegativeGivesPointsOneUpToTwelve)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    const zgPoint start = zgBezier::arcToBezier(TestRect, 0, -360, curves);
    expectPointEq(start, table.at(0));
    ASSERT_EQ(curves.size(), 12);
    for (int i = 0; i < 12; ++i)
        expectPointEq(curves.at(i), table.at(i + 1));
}

TEST(BezierArcToBezierTest, FullTurnsRunInOppositeOrder)
{
    QVector<zgPoint> forward;
    QVector<zgPoint> backward;
    const zgPoint forwardStart = zgBezier::arcToBezier(TestRect, 0, 360, forward);
    const zgPoint backwardStart = zgBezier::arcToBezier(TestRect, 0, -360, backward);
    // The point sequences start..end of the two turns are each other's reverse.
    QVector<zgPoint> forwardPath {forwardStart};
    forwardPath += forward;
    QVector<zgPoint> backwardPath {backwardStart};
    backwardPath += backward;
    ASSERT_EQ(forwardPath.size(), 13);
    ASSERT_EQ(backwardPath.size(), 13);
    for (int i = 0; i < 13; ++i)
        expectPointEq(forwardPath.at(i), backwardPath.at(12 - i));
}

TEST(BezierArcToBezierTest, FullTurnCubicsLieOnTheEllipse)
{
    QVector<zgPoint> curves;
    zgPoint start = zgBezier::arcToBezier(TestRect, 0, 360, curves);
    expectCubicsOnEllipse(start, curves);
    curves.clear();
    start = zgBezier::arcToBezier(TestRect, 0, -360, curves);
    expectCubicsOnEllipse(start, curves);
}

TEST(BezierArcToBezierTest, SweepIsClampedTo360)
{
    QVector<zgPoint> full;
    QVector<zgPoint> over;
    const zgPoint fullStart = zgBezier::arcToBezier(TestRect, 0, 360, full);
    const zgPoint overStart = zgBezier::arcToBezier(TestRect, 0, 400, over);
    expectPointEq(overStart, fullStart);
    ASSERT_EQ(over.size(), full.size());
    for (int i = 0; i < full.size(); ++i)
        expectPointEq(over.at(i), full.at(i));

    full.clear();
    over.clear();
    zgBezier::arcToBezier(TestRect, 0, -360, full);
    zgBezier::arcToBezier(TestRect, 0, -1000, over);
    ASSERT_EQ(over.size(), full.size());
    for (int i = 0; i < full.size(); ++i)
        expectPointEq(over.at(i), full.at(i));
}

TEST(BezierArcToBezierTest, SweepClampAwayFromZeroStart)
{
    QVector<zgPoint> full;
    QVector<zgPoint> over;
    const zgPoint fullStart = zgBezier::arcToBezier(TestRect, 30, 360, full);
    const zgPoint overStart = zgBezier::arcToBezier(TestRect, 30, 500, over);
    expectPointEq(overStart, fullStart);
    ASSERT_EQ(over.size(), full.size());
    EXPECT_EQ(full.size(), 15);
    for (int i = 0; i < full.size(); ++i)
        expectPointEq(over.at(i), full.at(i));
}

TEST(BezierArcToBezierTest, FullTurnFromThreeSixtyTakesTheGeneralRoute)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    const zgPoint start = zgBezier::arcToBezier(TestRect, 360, 360, curves);
    expectPointEq(start, zgNumeric::ellipsePoint(TestRect, 360));
    ASSERT_EQ(curves.size(), 12);
    for (int i = 0; i < 11; ++i)
        expectPointNear(curves.at(i), table.at(11 - i), 1e-12);
    expectPointEq(curves.last(), zgNumeric::ellipsePoint(TestRect, 720));
    expectPointNear(curves.last(), table.at(0), 1e-12);
}

TEST(BezierArcToBezierTest, CurvesAreAppended)
{
    QVector<zgPoint> curves {zgPoint(-1, -1), zgPoint(-2, -2)};
    zgBezier::arcToBezier(TestRect, 0, 360, curves);
    ASSERT_EQ(curves.size(), 14);
    expectPointEq(curves.at(0), zgPoint(-1, -1));
    expectPointEq(curves.at(1), zgPoint(-2, -2));
    expectPointEq(curves.at(2), ellipseTable().at(11));

    curves = {zgPoint(-1, -1)};
    zgBezier::arcToBezier(TestRect, 0, 180, curves);
    ASSERT_EQ(curves.size(), 7);
    expectPointEq(curves.at(0), zgPoint(-1, -1));
    expectPointEq(curves.last(), zgNumeric::ellipsePoint(TestRect, 180));
}

// ---------------------------------------------------------------------------
// arcToBezier: quarters and partial arcs

TEST(BezierArcToBezierTest, PositiveQuarterTakesTheUpperQuarterAndEndsAtEllipsePoint)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    const zgPoint start = zgBezier::arcToBezier(TestRect, 0, 90, curves);
    expectPointEq(start, zgNumeric::ellipsePoint(TestRect, 0));
    expectPointNear(start, zgPoint(110, 45), 1e-12);
    ASSERT_EQ(curves.size(), 3);
    // The piece is points 12 to 9, reversed; its end is replaced by the true end.
    expectPointEq(curves.at(0), table.at(11));
    expectPointEq(curves.at(1), table.at(10));
    expectPointEq(curves.at(2), zgNumeric::ellipsePoint(TestRect, 90));
}

TEST(BezierArcToBezierTest, NegativeQuarterTakesTheLowerQuarterAndEndsAtEllipsePoint)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    const zgPoint start = zgBezier::arcToBezier(TestRect, 0, -90, curves);
    expectPointEq(start, zgNumeric::ellipsePoint(TestRect, 0));
    ASSERT_EQ(curves.size(), 3);
    // The piece is points 0 to 3 in order.
    expectPointEq(curves.at(0), table.at(1));
    expectPointEq(curves.at(1), table.at(2));
    expectPointEq(curves.at(2), zgNumeric::ellipsePoint(TestRect, -90));
}

TEST(BezierArcToBezierTest, QuarterPiecesFollowTheSegments)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    // 90 to 180: one piece, points 9 to 6.
    zgBezier::arcToBezier(TestRect, 90, 90, curves);
    ASSERT_EQ(curves.size(), 3);
    expectPointEq(curves.at(0), table.at(8));
    expectPointEq(curves.at(1), table.at(7));
    expectPointEq(curves.at(2), zgNumeric::ellipsePoint(TestRect, 180));

    // -90 to -180: one piece, points 3 to 6.
    curves.clear();
    zgBezier::arcToBezier(TestRect, -90, -90, curves);
    ASSERT_EQ(curves.size(), 3);
    expectPointEq(curves.at(0), table.at(4));
    expectPointEq(curves.at(1), table.at(5));
    expectPointEq(curves.at(2), zgNumeric::ellipsePoint(TestRect, -180));
}

TEST(BezierArcToBezierTest, HalfTurnsLieOnTheEllipse)
{
    const struct {
        double start;
        double sweep;
    } arcs[] = {{0, 180}, {0, -180}, {180, 180}, {180, -180}, {-180, 360}, {540, -360}};
    for (const auto &arc : arcs) {
        QVector<zgPoint> curves;
        const zgPoint start = zgBezier::arcToBezier(TestRect, arc.start, arc.sweep, curves);
        EXPECT_EQ(curves.size(), int(std::fabs(arc.sweep) / 90) * 3);
        expectPointEq(start, zgNumeric::ellipsePoint(TestRect, arc.start));
        expectPointEq(curves.last(), zgNumeric::ellipsePoint(TestRect, arc.start + arc.sweep));
        expectCubicsOnEllipse(start, curves);
    }
}

TEST(BezierArcToBezierTest, PartialArcPiecesLieOnTheEllipse)
{
    QVector<zgPoint> curves;
    // 30 to 180: a cut piece from 30 to 90, then 90 to 180.
    const zgPoint start = zgBezier::arcToBezier(TestRect, 30, 150, curves);
    ASSERT_EQ(curves.size(), 6);
    expectPointEq(start, zgNumeric::ellipsePoint(TestRect, 30));
    expectPointEq(curves.last(), zgNumeric::ellipsePoint(TestRect, 180));
    // The cut piece ends on the top middle, and the whole second piece lies
    // on the ellipse.
    expectPointNear(curves.at(2), zgPoint(60, 20), 1e-12);
    expectCubicsOnEllipse(start, curves, 1);
    // The cut piece's control points lie towards the top, between its ends.
    EXPECT_LT(curves.at(0).y, 45.0);
    EXPECT_GT(curves.at(0).x, curves.at(1).x);
    EXPECT_GT(curves.at(1).x, 60.0);
}

TEST(BezierArcToBezierTest, PartialArcOnCircleFromMirroredStart)
{
    // On a circle the cut piece begins at the point of the start angle on the
    // upper half (the pieces turn towards smaller y for a positive sweep),
    // which is ellipsePoint's point mirrored about the centre line.
    QVector<zgPoint> curves;
    const zgPoint start = zgBezier::arcToBezier(CircleRect, 30, 150, curves);
    ASSERT_EQ(curves.size(), 6);
    expectPointEq(start, zgNumeric::ellipsePoint(CircleRect, 30));
    expectPointNear(start, zgPoint(50 + 50 * std::cos(M_PI / 6), 50 + 25), 1e-9);
    expectCubicsOnEllipse(CircleRect, mirrored(CircleRect, start), curves);
}

TEST(BezierArcToBezierTest, ArcCutInsideOneQuarter)
{
    QVector<zgPoint> curves;
    // 20 to 70 lies in the first quarter: one piece cut at both ends.
    const zgPoint start = zgBezier::arcToBezier(CircleRect, 20, 50, curves);
    ASSERT_EQ(curves.size(), 3);
    expectPointEq(start, zgNumeric::ellipsePoint(CircleRect, 20));
    expectPointEq(curves.at(2), zgNumeric::ellipsePoint(CircleRect, 70));
    // The control points belong to the upper-half arc from 20 to 70 degrees.
    const zgPoint upperStart = mirrored(CircleRect, start);
    const zgPoint upperEnd = mirrored(CircleRect, curves.at(2));
    const zgPoint c1 = curves.at(0);
    const zgPoint c2 = curves.at(1);
    for (double t : {0.25, 0.5, 0.75})
        EXPECT_LT(ellipseDeviation(CircleRect, cubicPoint(upperStart, c1, c2, upperEnd, t)), 1e-3);
    // Handles along the tangents, a third of the arc's chord long.
    const double handle = 50 * 4.0 / 3.0 * std::tan(50.0 / 4 * M_PI / 180);
    EXPECT_NEAR(std::hypot(c1.x - upperStart.x, c1.y - upperStart.y), handle, 0.05);
    EXPECT_NEAR(std::hypot(c2.x - upperEnd.x, c2.y - upperEnd.y), handle, 0.05);
}

TEST(BezierArcToBezierTest, NegativePartialArcOverSeveralQuarters)
{
    QVector<zgPoint> curves;
    // 0 to -200: pieces 0..-90, -90..-180, and a cut piece -180..-200.
    const zgPoint start = zgBezier::arcToBezier(TestRect, 0, -200, curves);
    ASSERT_EQ(curves.size(), 9);
    expectPointEq(start, zgNumeric::ellipsePoint(TestRect, 0));
    expectPointEq(curves.last(), zgNumeric::ellipsePoint(TestRect, -200));
    const QVector<zgPoint> table = ellipseTable();
    for (int i = 0; i < 6; ++i)
        expectPointEq(curves.at(i), table.at(i + 1));
    // All but the last piece, whose true end replaces the cut point, lie on the ellipse.
    expectCubicsOnEllipse(start, curves.mid(0, 6));
}

// ---------------------------------------------------------------------------
// arcToBezier: snapping at quarter boundaries

TEST(BezierArcToBezierTest, StartJustBeforeQuarterEndMovesToNextQuarter)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    // The start's fraction is 1 within 1e-12: the first quarter is skipped.
    zgBezier::arcToBezier(TestRect, 90 - 1e-11, 90, curves);
    ASSERT_EQ(curves.size(), 3);
    EXPECT_TRUE(allFinite(curves));
    expectPointEq(curves.at(0), table.at(8));
    expectPointEq(curves.at(1), table.at(7));

    // 1e-9 before, the fraction is further than 1e-12 from 1: a tiny first piece.
    curves.clear();
    zgBezier::arcToBezier(TestRect, 90 - 1e-9, 90, curves);
    ASSERT_EQ(curves.size(), 6);
    EXPECT_TRUE(allFinite(curves));
    for (int i = 0; i < 3; ++i)
        expectPointNear(curves.at(i), table.at(9), 1e-6);
    expectPointNear(curves.at(3), table.at(8), 1e-6);
}

TEST(BezierArcToBezierTest, EndJustAfterQuarterStartStaysInPreviousQuarter)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    zgBezier::arcToBezier(TestRect, 0, 90 + 1e-11, curves);
    ASSERT_EQ(curves.size(), 3);
    expectPointEq(curves.at(0), table.at(11));
    expectPointEq(curves.at(1), table.at(10));

    curves.clear();
    zgBezier::arcToBezier(TestRect, 0, 90 + 1e-9, curves);
    ASSERT_EQ(curves.size(), 6);
    EXPECT_TRUE(allFinite(curves));
    expectPointEq(curves.at(0), table.at(11));
    expectPointEq(curves.at(1), table.at(10));
    // A tiny piece from the top middle.
    expectPointNear(curves.at(3), table.at(9), 1e-6);
    expectPointNear(curves.at(4), table.at(9), 1e-6);
}

TEST(BezierArcToBezierTest, NegativeSweepFromQuarterBoundarySnapsItsStart)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    // From 90 downward: the start's fraction 0 becomes 1 and moves a quarter back.
    zgBezier::arcToBezier(TestRect, 90, -90, curves);
    ASSERT_EQ(curves.size(), 3);
    expectPointEq(curves.at(0), table.at(10));
    expectPointEq(curves.at(1), table.at(11));
    expectPointEq(curves.at(2), zgNumeric::ellipsePoint(TestRect, 0));
}

// ---------------------------------------------------------------------------
// arcToBezier: empty arcs

TEST(BezierArcToBezierTest, ZeroSweepAtQuarterBoundaryGivesTheCornerPoint)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    // Sweep 0 counts as negative; from 90 the quarter is empty: point 3q = 9.
    zgPoint start = zgBezier::arcToBezier(TestRect, 90, 0, curves);
    expectPointEq(start, table.at(9));
    EXPECT_TRUE(curves.isEmpty());

    // From 0 the segment number becomes -1, taken modulo 4 as 3: point 0.
    start = zgBezier::arcToBezier(TestRect, 0, 0, curves);
    expectPointEq(start, table.at(0));
    EXPECT_TRUE(curves.isEmpty());

    // From 270: point 3.
    start = zgBezier::arcToBezier(TestRect, 270, 0, curves);
    expectPointEq(start, table.at(3));
    EXPECT_TRUE(curves.isEmpty());
}

TEST(BezierArcToBezierTest, TinyPositiveSweepAtQuarterEndGivesTheCornerPoint)
{
    const QVector<zgPoint> table = ellipseTable();
    QVector<zgPoint> curves;
    // Start moves into quarter 2, end stays in quarter 1: point 3q + 3 with q = 1.
    const zgPoint start = zgBezier::arcToBezier(TestRect, 180 - 1e-11, 5e-12, curves);
    expectPointEq(start, table.at(6));
    EXPECT_TRUE(curves.isEmpty());
}

TEST(BezierArcToBezierTest, EqualTimesInOneQuarterGiveTheStartPoint)
{
    QVector<zgPoint> curves;
    zgPoint start = zgBezier::arcToBezier(TestRect, 30, 0, curves);
    expectPointEq(start, zgNumeric::ellipsePoint(TestRect, 30));
    EXPECT_TRUE(curves.isEmpty());

    // A sweep of 1e-12 degrees leaves the times equal within 1e-12 relative.
    start = zgBezier::arcToBezier(TestRect, 30, 1e-12, curves);
    expectPointEq(start, zgNumeric::ellipsePoint(TestRect, 30));
    EXPECT_TRUE(curves.isEmpty());

    // A sweep of 1e-6 degrees does not.
    start = zgBezier::arcToBezier(TestRect, 30, 1e-6, curves);
    EXPECT_EQ(curves.size(), 3);
    EXPECT_TRUE(allFinite(curves));
}

// ---------------------------------------------------------------------------
// arcToBezier: QPointF form

TEST(BezierArcToBezierTest, QPointFFormMatchesTheZgForm)
{
    QVector<zgPoint> zgCurves;
    const zgPoint zgStart = zgBezier::arcToBezier(TestRect, 30, 250, zgCurves);
    QVector<QPointF> qtCurves {QPointF(7, 7)};
    const QPointF qtStart =
        zgBezier::arcToBezier(QRectF(10, 20, 100, 50), 30, 250, qtCurves);
    EXPECT_EQ(qtStart.x(), zgStart.x);
    EXPECT_EQ(qtStart.y(), zgStart.y);
    ASSERT_EQ(qtCurves.size(), zgCurves.size() + 1);
    EXPECT_EQ(qtCurves.first(), QPointF(7, 7));
    for (int i = 0; i < zgCurves.size(); ++i) {
        EXPECT_EQ(qtCurves.at(i + 1).x(), zgCurves.at(i).x);
        EXPECT_EQ(qtCurves.at(i + 1).y(), zgCurves.at(i).y);
    }
}
