// zgPoint and zgSize: arithmetic, angles, the mutating members and the
// tolerance tests, each bound checked on both sides.
#include <zgraphics/primitives.h>

#include <QtCore/QtNumeric>
#include <QtCore/QtGlobal>

#include <gtest/gtest.h>

#include <cstring>

#include <cmath>
#include <limits>

namespace {

const double kPi = 3.14159265358979323846;

TEST(Point, DefaultIsOriginAndConvertsWithQPointF)
{
    const zgPoint origin;
    EXPECT_EQ(origin.x, 0.0);
    EXPECT_EQ(origin.y, 0.0);

    const zgPoint fromQt(QPointF(1.5, -2.25));
    EXPECT_EQ(fromQt.x, 1.5);
    EXPECT_EQ(fromQt.y, -2.25);
    EXPECT_EQ(fromQt.toPt(), QPointF(1.5, -2.25));
    EXPECT_EQ(sizeof(zgPoint), sizeof(QPointF));
}

TEST(Point, ComponentwiseArithmetic)
{
    const zgPoint a(3.0, -4.0);
    const zgPoint b(0.5, 2.0);
    const zgPoint sum = a.add(b);
    EXPECT_DOUBLE_EQ(sum.x, 3.5);
    EXPECT_DOUBLE_EQ(sum.y, -2.0);
    const zgPoint difference = a.subtract(b);
    EXPECT_DOUBLE_EQ(difference.x, 2.5);
    EXPECT_DOUBLE_EQ(difference.y, -6.0);
    const zgPoint scaled = a.multiply(-2.0);
    EXPECT_DOUBLE_EQ(scaled.x, -6.0);
    EXPECT_DOUBLE_EQ(scaled.y, 8.0);
    const zgPoint divided = a.divide(4.0);
    EXPECT_DOUBLE_EQ(divided.x, 0.75);
    EXPECT_DOUBLE_EQ(divided.y, -1.0);
    const zgPoint negated = a.negate();
    EXPECT_DOUBLE_EQ(negated.x, -3.0);
    EXPECT_DOUBLE_EQ(negated.y, 4.0);
    // None of them touches the object.
    EXPECT_EQ(a.x, 3.0);
    EXPECT_EQ(a.y, -4.0);
}

TEST(Point, DivideByZeroIsUnguarded)
{
    const zgPoint divided = zgPoint(1.0, -1.0).divide(0.0);
    EXPECT_TRUE(std::isinf(divided.x) && divided.x > 0);
    EXPECT_TRUE(std::isinf(divided.y) && divided.y < 0);
    EXPECT_TRUE(zgPoint(0.0, 0.0).divide(0.0).isNaN());
}

TEST(Point, DotCrossLengthDistance)
{
    const zgPoint a(3.0, 4.0);
    const zgPoint b(-2.0, 5.0);
    EXPECT_DOUBLE_EQ(a.dot(b), 14.0);
    EXPECT_DOUBLE_EQ(a.cross(b), 23.0);
    EXPECT_DOUBLE_EQ(b.cross(a), -23.0);
    EXPECT_DOUBLE_EQ(a.getLength(), 5.0);
    EXPECT_DOUBLE_EQ(a.getDistance(zgPoint(6.0, 8.0)), 5.0);
    EXPECT_DOUBLE_EQ(a.getDistance(zgPoint(6.0, 8.0), true), 25.0);
}

TEST(Point, NormalizeOfZeroIsZeroButSetLengthGivesNaN)
{
    const zgPoint zero(0.0, 0.0);
    const zgPoint normalized = zero.normalize(5.0);
    EXPECT_EQ(normalized.x, 0.0);
    EXPECT_EQ(normalized.y, 0.0);

    zgPoint mutated(0.0, 0.0);
    mutated.setLength(5.0);
    EXPECT_TRUE(qIsNaN(mutated.x));
    EXPECT_TRUE(qIsNaN(mutated.y));
}

TEST(Point, NormalizeAndSetLength)
{
    const zgPoint unit = zgPoint(3.0, 4.0).normalize();
    EXPECT_NEAR(unit.x, 0.6, 1e-15);
    EXPECT_NEAR(unit.y, 0.8, 1e-15);
    const zgPoint ten = zgPoint(3.0, 4.0).normalize(10.0);
    EXPECT_NEAR(ten.x, 6.0, 1e-14);
    EXPECT_NEAR(ten.y, 8.0, 1e-14);
    // A tiny but non-zero vector is still scaled.
    const zgPoint tiny = zgPoint(1e-13, 0.0).normalize(2.0);
    EXPECT_NEAR(tiny.x, 2.0, 1e-12);

    zgPoint p(0.0, -2.0);
    p.setLength(7.0);
    EXPECT_NEAR(p.x, 0.0, 1e-15);
    EXPECT_NEAR(p.y, -7.0, 1e-14);
}

TEST(Point, AngleOfSingleVector)
{
    EXPECT_EQ(zgPoint(1e-13, 0.0).getAngleInRadians(nullptr), 0.0);
    EXPECT_EQ(zgPoint(2e-12, 0.0).getAngleInRadians(nullptr), 0.0);
    EXPECT_NEAR(zgPoint(0.0, 2e-12).getAngleInRadians(nullptr), kPi / 2, 1e-15);
    // Within the zero box the direction is not asked of atan2.
    EXPECT_EQ(zgPoint(-1e-12, 1e-12).getAngleInRadians(nullptr), 0.0);
    EXPECT_NEAR(zgPoint(-1.0, 0.0).getAngleInRadians(), kPi, 1e-15);
    EXPECT_NEAR(zgPoint(1.0, -1.0).getAngle(), -45.0, 1e-12);
    EXPECT_NEAR(zgPoint(0.0, 3.0).getAngle(nullptr), 90.0, 1e-12);
}

TEST(Point, AngleBetweenVectors)
{
    const zgPoint a(1.0, 0.0);
    const zgPoint b(0.0, -2.0);
    EXPECT_NEAR(a.getAngleInRadians(&b), kPi / 2, 1e-15);
    EXPECT_NEAR(a.getAngle(&b), 90.0, 1e-12);
    const zgPoint opposite(-3.0, 0.0);
    EXPECT_NEAR(a.getAngle(&opposite), 180.0, 1e-12);
    // Unsigned: both directions give the same angle.
    const zgPoint below(1.0, -1.0);
    const zgPoint above(1.0, 1.0);
    EXPECT_NEAR(a.getAngle(&below), 45.0, 1e-12);
    EXPECT_NEAR(a.getAngle(&above), 45.0, 1e-12);
    // The quotient is clamped: for these parallel vectors rounding puts it
    // just above 1, where acos alone would give NaN.
    const zgPoint first(9 * 0.1, 9 * 0.3);
    const zgPoint second(9 * 0.7, 9 * 2.1);
    const double rawQuotient = first.dot(second) / (first.getLength() * second.getLength());
    ASSERT_GT(rawQuotient, 1.0);
    EXPECT_EQ(first.getAngleInRadians(&second), 0.0);
}

TEST(Point, AngleIsNaNWhenLengthProductIsZero)
{
    const zgPoint a(1.0, 0.0);
    const zgPoint zero;
    const double undefined = a.getAngleInRadians(&zero);
    EXPECT_TRUE(qIsNaN(undefined));
    quint64 bits;
    std::memcpy(&bits, &undefined, sizeof bits);
    EXPECT_EQ(bits & (quint64(1) << 51), 0u) << "the signalling NaN has its quiet bit clear";
    EXPECT_TRUE(qIsNaN(a.getAngle(&zero)));
    // Length product 1e-12 exactly: still within the zero bound.
    const zgPoint small(1e-12, 0.0);
    EXPECT_TRUE(qIsNaN(a.getAngleInRadians(&small)));
    // Just above the bound an angle exists.
    const zgPoint larger(0.0, 2e-12);
    EXPECT_NEAR(a.getAngleInRadians(&larger), kPi / 2, 1e-12);
}

TEST(Point, SetAngleKeepsLength)
{
    zgPoint p(0.0, 2.0);
    p.setAngle(180.0);
    EXPECT_NEAR(p.x, -2.0, 1e-15);
    EXPECT_NEAR(p.y, 0.0, 1e-15);
    p.setAngleInRadians(kPi / 4);
    EXPECT_NEAR(p.x, std::sqrt(2.0), 1e-15);
    EXPECT_NEAR(p.y, std::sqrt(2.0), 1e-15);

    zgPoint nearZero(1e-12, -1e-12);
    nearZero.setAngle(90.0);
    EXPECT_EQ(nearZero.x, 1e-12);
    EXPECT_EQ(nearZero.y, -1e-12);

    zgPoint justAbove(2e-12, 0.0);
    justAbove.setAngle(90.0);
    EXPECT_NEAR(justAbove.x, 0.0, 1e-27);
    EXPECT_NEAR(justAbove.y, 2e-12, 1e-27);
}

TEST(Point, DirectedAngle)
{
    const zgPoint a(1.0, 0.0);
    EXPECT_NEAR(a.getDirectedAngle(zgPoint(0.0, 1.0)), 90.0, 1e-12);
    EXPECT_NEAR(a.getDirectedAngle(zgPoint(0.0, -1.0)), -90.0, 1e-12);
    EXPECT_NEAR(a.getDirectedAngle(zgPoint(-1.0, 1e-300)), 180.0, 1e-12);
    EXPECT_NEAR(a.getDirectedAngle(zgPoint(-1.0, -1e-300)), -180.0, 1e-12);
    EXPECT_NEAR(zgPoint(1.0, 1.0).getDirectedAngle(zgPoint(1.0, 0.0)), -45.0, 1e-12);
}

TEST(Point, Quadrant)
{
    EXPECT_EQ(zgPoint(0.0, 0.0).getQuadrant(), 1.0);
    EXPECT_EQ(zgPoint(2.0, 3.0).getQuadrant(), 1.0);
    EXPECT_EQ(zgPoint(0.0, -0.5).getQuadrant(), 4.0);
    EXPECT_EQ(zgPoint(-1e-300, 0.0).getQuadrant(), 2.0);
    EXPECT_EQ(zgPoint(-1.0, -1.0).getQuadrant(), 3.0);
}

TEST(Point, Rotate)
{
    const zgPoint p(2.0, 0.0);
    const zgPoint quarter = p.rotate(90.0);
    EXPECT_NEAR(quarter.x, 0.0, 1e-15);
    EXPECT_NEAR(quarter.y, 2.0, 1e-15);

    const zgPoint center(1.0, 1.0);
    const zgPoint aboutCenter = p.rotate(-90.0, &center);
    // Offset (1, -1) rotated by -90 degrees is (-1, -1).
    EXPECT_NEAR(aboutCenter.x, 0.0, 1e-15);
    EXPECT_NEAR(aboutCenter.y, 0.0, 1e-15);

    const zgPoint same = zgPoint(0.1, 0.7).rotate(0.0, &center);
    EXPECT_EQ(same.x, 0.1);
    EXPECT_EQ(same.y, 0.7);
    // A full turn is computed, so it is only close.
    const zgPoint full = zgPoint(0.1, 0.7).rotate(360.0, &center);
    EXPECT_NEAR(full.x, 0.1, 1e-14);
    EXPECT_NEAR(full.y, 0.7, 1e-14);
    EXPECT_EQ(p.x, 2.0);
}

TEST(Point, ProjectChangesTheObject)
{
    zgPoint p(3.0, 4.0);
    p.project(zgPoint(2.0, 0.0));
    EXPECT_DOUBLE_EQ(p.x, 3.0);
    EXPECT_DOUBLE_EQ(p.y, 0.0);

    zgPoint q(1.0, 3.0);
    q.project(zgPoint(1.0, 1.0));
    EXPECT_DOUBLE_EQ(q.x, 2.0);
    EXPECT_DOUBLE_EQ(q.y, 2.0);

    zgPoint onZero(5.0, 6.0);
    onZero.project(zgPoint(1e-12, -1e-12));
    EXPECT_EQ(onZero.x, 0.0);
    EXPECT_EQ(onZero.y, 0.0);

    // Just outside the zero box the projection is computed.
    zgPoint onTiny(5.0, 6.0);
    onTiny.project(zgPoint(2e-12, 0.0));
    EXPECT_NEAR(onTiny.x, 5.0, 1e-12);
    EXPECT_EQ(onTiny.y, 0.0);
}

TEST(Point, RoundKeepsDoubles)
{
    // qRound takes halves upward, also below zero.
    zgPoint p(2.5, -2.5);
    p.round();
    EXPECT_EQ(p.x, 3.0);
    EXPECT_EQ(p.y, -2.0);
    zgPoint q(1.49, -7.51);
    q.round();
    EXPECT_EQ(q.x, 1.0);
    EXPECT_EQ(q.y, -8.0);
}

TEST(Point, RoundDoesNotCrashOnUnsupportedValues)
{
    zgPoint p(qQNaN(), 1e300);
    p.round();
    EXPECT_TRUE(qIsNaN(p.x));
    EXPECT_EQ(p.y, 1e300);
}

TEST(Point, TransformByMatrixFields)
{
    const zgPoint p(2.0, 3.0);
    const zgPoint copy = p.transform(nullptr);
    EXPECT_EQ(copy.x, 2.0);
    EXPECT_EQ(copy.y, 3.0);
    const zgMatrix matrix(1.0, 2.0, 3.0, 4.0, 5.0, 6.0);
    const zgPoint mapped = p.transform(&matrix);
    EXPECT_DOUBLE_EQ(mapped.x, 1.0 * 2 + 3.0 * 3 + 5.0);
    EXPECT_DOUBLE_EQ(mapped.y, 2.0 * 2 + 4.0 * 3 + 6.0);
}

TEST(Point, TranslatedAndSetChangeTheObject)
{
    zgPoint p(1.0, 2.0);
    p.translated(0.5, -4.0);
    EXPECT_DOUBLE_EQ(p.x, 1.5);
    EXPECT_DOUBLE_EQ(p.y, -2.0);
    p.set(-7.0, 8.0);
    EXPECT_EQ(p.x, -7.0);
    EXPECT_EQ(p.y, 8.0);
}

TEST(Point, IsZeroBounds)
{
    EXPECT_TRUE(zgPoint(1e-12, -1e-12).isZero());
    EXPECT_FALSE(zgPoint(1.1e-12, 0.0).isZero());
    EXPECT_FALSE(zgPoint(0.0, -1.1e-12).isZero());
    EXPECT_FALSE(zgPoint(qQNaN(), 0.0).isZero());
}

TEST(Point, IsNaN)
{
    EXPECT_FALSE(zgPoint(1.0, 2.0).isNaN());
    EXPECT_TRUE(zgPoint(qQNaN(), 2.0).isNaN());
    EXPECT_TRUE(zgPoint(1.0, qQNaN()).isNaN());
    EXPECT_FALSE(zgPoint(qInf(), 0.0).isNaN());
}

TEST(Point, EqualityWithinZeroTolerance)
{
    EXPECT_TRUE(zgPoint(1.0, 2.0) == zgPoint(1.0 + 0.5e-12, 2.0 - 0.5e-12));
    EXPECT_FALSE(zgPoint(0.0, 0.0) == zgPoint(2e-12, 0.0));
    EXPECT_FALSE(zgPoint(0.0, 0.0) == zgPoint(0.0, -2e-12));
    EXPECT_TRUE(zgPoint(0.0, 0.0) != zgPoint(0.0, -2e-12));
    EXPECT_FALSE(zgPoint(0.0, 0.0) != zgPoint(0.0, 1e-12));
}

TEST(Point, EqualsIsAStrictBox)
{
    const zgPoint p(0.0, 0.0);
    EXPECT_TRUE(p.equals(zgPoint(0.99, -0.99), 1.0));
    EXPECT_FALSE(p.equals(zgPoint(1.0, 0.0), 1.0));
    EXPECT_FALSE(p.equals(zgPoint(0.0, -1.0), 1.0));
    // A box, not a circle: the corner at distance 1.4 is still inside.
    EXPECT_TRUE(p.equals(zgPoint(0.99, 0.99), 1.0));
}

TEST(Point, IsCloseIsAnInclusiveCircle)
{
    const zgPoint p(1.0, 1.0);
    EXPECT_TRUE(p.isClose(zgPoint(4.0, 5.0), 5.0));
    EXPECT_FALSE(p.isClose(zgPoint(4.0, 5.0), 4.999999));
    EXPECT_FALSE(p.isClose(zgPoint(1.99, 1.99), 1.0));
    EXPECT_TRUE(p.isClose(p, 0.0));
}

TEST(Point, CollinearBound)
{
    EXPECT_TRUE(zgPoint(1.0, 2.0).isCollinear(zgPoint(-2.0, -4.0)));
    EXPECT_TRUE(zgPoint::isCollinear(1.0, 0.0, 1.0, 0.9e-7));
    EXPECT_FALSE(zgPoint::isCollinear(1.0, 0.0, 1.0, 1.1e-7));
    EXPECT_FALSE(zgPoint(1.0, 0.0).isCollinear(zgPoint(0.0, 1.0)));
    // A zero vector is collinear with everything.
    EXPECT_TRUE(zgPoint(0.0, 0.0).isCollinear(zgPoint(3.0, 7.0)));
    EXPECT_TRUE(zgPoint::isCollinear(3.0, 7.0, 0.0, 0.0));
}

TEST(Point, CollinearBoundScalesWithBothLengths)
{
    // The bound is on the sine of the angle, |cross| <= |a| |b| 1e-07, so it
    // holds at any length and in any direction: vectors of lengths 5 and
    // 1e6 along (3, 4), one turned by an angle of sine 0.9e-07 (within) or
    // 1.1e-07 (beyond), both ways.
    const double ux = 0.6, uy = 0.8;
    for (double sine : {0.9e-07, -0.9e-07, 1.1e-07, -1.1e-07}) {
        SCOPED_TRACE(sine);
        const double cosine = std::sqrt(1.0 - sine * sine);
        const double tx = 1e6 * (cosine * ux - sine * uy);
        const double ty = 1e6 * (sine * ux + cosine * uy);
        const bool within = std::fabs(sine) < 1e-07;
        EXPECT_EQ(zgPoint(5 * ux, 5 * uy).isCollinear(zgPoint(tx, ty)), within);
        EXPECT_EQ(zgPoint::isCollinear(tx, ty, -5 * ux, -5 * uy), within);
    }
    // Exactly at the bound the comparison includes it: with a zero vector
    // both sides are 0.
    EXPECT_TRUE(zgPoint::isCollinear(4.0, 0.0, 0.0, 0.0));
}

TEST(Point, OrthogonalBound)
{
    EXPECT_TRUE(zgPoint(1.0, 2.0).isOrthogonal(zgPoint(-4.0, 2.0)));
    EXPECT_TRUE(zgPoint::isOrthogonal(1.0, 0.0, 0.9e-7, 1.0));
    EXPECT_FALSE(zgPoint::isOrthogonal(1.0, 0.0, 1.1e-7, 1.0));
    EXPECT_FALSE(zgPoint(1.0, 1.0).isOrthogonal(zgPoint(1.0, 0.0)));
    // A zero vector is orthogonal to everything, and collinear too.
    EXPECT_TRUE(zgPoint(0.0, 0.0).isOrthogonal(zgPoint(3.0, 7.0)));
    EXPECT_TRUE(zgPoint::isOrthogonal(3.0, 7.0, 0.0, 0.0));
}

TEST(Point, IsInsideIsStrict)
{
    const zgRect rect(1.0, 1.0, 2.0, 2.0);
    EXPECT_TRUE(zgPoint(2.0, 2.0).isInside(rect));
    EXPECT_FALSE(zgPoint(1.0, 1.0).isInside(rect));
    EXPECT_FALSE(zgPoint(3.0, 2.0).isInside(rect));
    EXPECT_FALSE(zgPoint(2.0, 3.0).isInside(rect));
}

TEST(Point, RandomDrawsYFirstUnscaled)
{
    qsrand(1234);
    const double first = qrand();
    const double second = qrand();
    qsrand(1234);
    const zgPoint p = zgPoint::random();
    EXPECT_EQ(p.y, first);
    EXPECT_EQ(p.x, second);
    EXPECT_EQ(p.x, std::floor(p.x));
}

TEST(Point, ToString)
{
    EXPECT_EQ(zgPoint(1.5, -2.0).toString(), QStringLiteral("x: 1.5, y: -2"));
    EXPECT_EQ(zgPoint(0.1, 1e20).toString(), QStringLiteral("x: 0.1, y: 1e+20"));
    // Six significant digits, as %g.
    EXPECT_EQ(zgPoint(1.0 / 3, 1234567).toString(), QStringLiteral("x: 0.333333, y: 1.23457e+06"));
}

TEST(Size, DefaultSetAddMultiply)
{
    zgSize size;
    EXPECT_EQ(size.width, 0.0);
    EXPECT_EQ(size.height, 0.0);
    size.set(2.0, 3.0);
    size.add(0.5, -1.0);
    EXPECT_DOUBLE_EQ(size.width, 2.5);
    EXPECT_DOUBLE_EQ(size.height, 2.0);
    size.multiply(2.0, -3.0);
    EXPECT_DOUBLE_EQ(size.width, 5.0);
    EXPECT_DOUBLE_EQ(size.height, -6.0);
}

TEST(Size, EqualityWithinZeroTolerance)
{
    EXPECT_TRUE(zgSize(1.0, 2.0) == zgSize(1.0 + 0.5e-12, 2.0));
    EXPECT_FALSE(zgSize(0.0, 0.0) == zgSize(2e-12, 0.0));
    EXPECT_FALSE(zgSize(0.0, 0.0) == zgSize(0.0, 2e-12));
}

} // namespace
