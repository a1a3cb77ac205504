// zgMatrix: composition order, the transforms, inversion, the predicates,
// the mapping of points, coordinates and rectangles, and the debug text.
#include <zgraphics/primitives.h>

#include <QtCore/QStringList>
#include <QtCore/QtNumeric>

#include <gtest/gtest.h>

#include <cmath>

namespace {

const double kTight = 1e-12;

void expectMatrixNear(const zgMatrix &m, double a, double b, double c, double d, double tx,
                      double ty, double tolerance = kTight)
{
    EXPECT_NEAR(m.a, a, tolerance);
    EXPECT_NEAR(m.b, b, tolerance);
    EXPECT_NEAR(m.c, c, tolerance);
    EXPECT_NEAR(m.d, d, tolerance);
    EXPECT_NEAR(m.tx, tx, tolerance);
    EXPECT_NEAR(m.ty, ty, tolerance);
}

void expectPointNear(const zgPoint &p, double x, double y, double tolerance = kTight)
{
    EXPECT_NEAR(p.x, x, tolerance);
    EXPECT_NEAR(p.y, y, tolerance);
}

// Collects the texts of Qt warnings while alive.
class WarningCollector
{
public:
    WarningCollector()
    {
        s_messages.clear();
        m_previous = qInstallMessageHandler(&WarningCollector::handle);
    }
    ~WarningCollector() { qInstallMessageHandler(m_previous); }

    static QStringList s_messages;

private:
    static void handle(QtMsgType type, const QMessageLogContext &, const QString &text)
    {
        if (type == QtWarningMsg)
            s_messages << text;
    }

    QtMessageHandler m_previous;
};

QStringList WarningCollector::s_messages;

// A general matrix used by several tests.
zgMatrix sampleMatrix()
{
    return zgMatrix(2.0, 0.5, -1.0, 3.0, 4.0, -5.0);
}

} // namespace

TEST(Matrix, DefaultIsIdentity)
{
    const zgMatrix m;
    EXPECT_EQ(m.a, 1.0);
    EXPECT_EQ(m.b, 0.0);
    EXPECT_EQ(m.c, 0.0);
    EXPECT_EQ(m.d, 1.0);
    EXPECT_EQ(m.tx, 0.0);
    EXPECT_EQ(m.ty, 0.0);
    EXPECT_TRUE(m.isIdentity());
}

TEST(Matrix, SetStoresSixValuesInOrderAndResetRestoresIdentity)
{
    zgMatrix m;
    m.set(1.5, 2.5, 3.5, 4.5, 5.5, 6.5);
    expectMatrixNear(m, 1.5, 2.5, 3.5, 4.5, 5.5, 6.5, 0.0);
    m.reset();
    EXPECT_TRUE(m.isIdentity());
}

TEST(Matrix, MapsPointByDefinition)
{
    const zgMatrix m = sampleMatrix();
    // x' = 2*3 - 1*7 + 4 = 3, y' = 0.5*3 + 3*7 - 5 = 17.5
    expectPointNear(m.transformPoint(zgPoint(3.0, 7.0)), 3.0, 17.5, 0.0);
    expectPointNear(m.transformXY(3.0, 7.0), 3.0, 17.5, 0.0);
}

TEST(Matrix, AppendFormulas)
{
    zgMatrix m = sampleMatrix();
    const zgMatrix other(0.5, -2.0, 1.5, 0.25, 3.0, 7.0);
    m.append(other);
    expectMatrixNear(m, 2.0 * 0.5 + -1.0 * -2.0, 0.5 * 0.5 + 3.0 * -2.0,
                     2.0 * 1.5 + -1.0 * 0.25, 0.5 * 1.5 + 3.0 * 0.25,
                     2.0 * 3.0 + -1.0 * 7.0 + 4.0, 0.5 * 3.0 + 3.0 * 7.0 - 5.0);
}

TEST(Matrix, AppendedMatrixActsFirst)
{
    zgMatrix m = sampleMatrix();
    const zgMatrix other(0.5, -2.0, 1.5, 0.25, 3.0, 7.0);
    const zgPoint p(-1.25, 2.5);
    const zgPoint expected = sampleMatrix().transformPoint(other.transformPoint(p));
    m.append(other);
    expectPointNear(m.transformPoint(p), expected.x, expected.y);
}

TEST(Matrix, PrependFormulas)
{
    zgMatrix m = sampleMatrix();
    const zgMatrix other(0.5, -2.0, 1.5, 0.25, 3.0, 7.0);
    m.prepend(other);
    expectMatrixNear(m, 0.5 * 2.0 + 1.5 * 0.5, -2.0 * 2.0 + 0.25 * 0.5,
                     0.5 * -1.0 + 1.5 * 3.0, -2.0 * -1.0 + 0.25 * 3.0,
                     0.5 * 4.0 + 1.5 * -5.0 + 3.0, -2.0 * 4.0 + 0.25 * -5.0 + 7.0);
}

TEST(Matrix, PrependedMatrixActsLast)
{
    zgMatrix m = sampleMatrix();
    const zgMatrix other(0.5, -2.0, 1.5, 0.25, 3.0, 7.0);
    const zgPoint p(-1.25, 2.5);
    const zgPoint expected = other.transformPoint(sampleMatrix().transformPoint(p));
    m.prepend(other);
    expectPointNear(m.transformPoint(p), expected.x, expected.y);
}

TEST(Matrix, TranslateThenScaleScalesFirst)
{
    zgMatrix m;
    m.translate(1.0, 0.0);
    m.scale(2.0, 2.0);
    expectPointNear(m.transformPoint(zgPoint(1.0, 1.0)), 3.0, 2.0, 0.0);
}

TEST(Matrix, TranslateIsAppendOfTranslation)
{
    zgMatrix m = sampleMatrix();
    m.translate(2.0, -3.0);
    // tx' = 2*2 + -3*-1 + 4 = 11, ty' = 2*0.5 + -3*3 - 5 = -13
    expectMatrixNear(m, 2.0, 0.5, -1.0, 3.0, 11.0, -13.0, 0.0);
    zgMatrix byPoint = sampleMatrix();
    byPoint.translate(zgPoint(2.0, -3.0));
    EXPECT_TRUE(byPoint == m);
}

TEST(Matrix, Rotate90MapsXAxisToYAxis)
{
    zgMatrix m;
    m.rotate(90.0);
    const zgPoint p = m.transformPoint(zgPoint(1.0, 0.0));
    EXPECT_NEAR(p.x, 6.123233995736766e-17, 1e-30);
    EXPECT_EQ(p.y, 1.0);
    // a is the cosine and b the sine of the angle.
    EXPECT_NEAR(m.a, 6.123233995736766e-17, 1e-30);
    EXPECT_EQ(m.b, 1.0);
    EXPECT_EQ(m.c, -1.0);
    EXPECT_NEAR(m.d, 6.123233995736766e-17, 1e-30);
}

TEST(Matrix, RotateFormulasOnGeneralMatrix)
{
    zgMatrix m = sampleMatrix();
    m.rotate(30.0);
    const double s = std::sin(30.0 * 0.017453292519943295);
    const double k = std::cos(30.0 * 0.017453292519943295);
    expectMatrixNear(m, 2.0 * k + -1.0 * s, 0.5 * k + 3.0 * s, -1.0 * k - 2.0 * s,
                     3.0 * k - 0.5 * s, 4.0, -5.0);
}

TEST(Matrix, RotateAtKeepsCenterFixed)
{
    zgMatrix m;
    const zgPoint center(10.0, 5.0);
    m.rotateAt(90.0, center);
    expectPointNear(m.transformPoint(center), 10.0, 5.0);
    // (11, 5) is one unit right of the centre and turns to one unit below it.
    expectPointNear(m.transformPoint(zgPoint(11.0, 5.0)), 10.0, 6.0);
}

TEST(Matrix, ScaleAboutPointLeavesItFixed)
{
    zgMatrix m;
    const zgPoint p(4.0, -7.0);
    m.scale(2.0, 3.0, &p);
    expectPointNear(m.transformPoint(p), 4.0, -7.0, 0.0);
    expectPointNear(m.transformPoint(zgPoint(5.0, -6.0)), 6.0, -4.0, 0.0);
}

TEST(Matrix, ScaleWithoutCenterMultipliesColumns)
{
    zgMatrix m = sampleMatrix();
    m.scale(2.0, -3.0);
    expectMatrixNear(m, 4.0, 1.0, 3.0, -9.0, 4.0, -5.0, 0.0);
}

TEST(Matrix, ShearUsesOldValues)
{
    zgMatrix m = sampleMatrix();
    m.shear(0.5, 2.0);
    // a' = a + c*shy, b' = b + d*shy, c' = c + a*shx, d' = d + b*shx
    expectMatrixNear(m, 2.0 + -1.0 * 2.0, 0.5 + 3.0 * 2.0, -1.0 + 2.0 * 0.5,
                     3.0 + 0.5 * 0.5, 4.0, -5.0, 0.0);
}

TEST(Matrix, ShearAboutPointLeavesItFixed)
{
    zgMatrix m;
    const zgPoint p(3.0, 2.0);
    m.shear(0.5, 0.25, &p);
    expectPointNear(m.transformPoint(p), 3.0, 2.0);
    // (4, 2): x' = 3 + 1 + 0*0.5, y' = 2 + 1*0.25
    expectPointNear(m.transformPoint(zgPoint(4.0, 2.0)), 4.0, 2.25);
}

TEST(Matrix, SkewIsShearWithTangentsOfDegrees)
{
    zgMatrix skewed = sampleMatrix();
    const zgPoint center(1.0, -2.0);
    skewed.skew(30.0, -15.0, &center);
    zgMatrix sheared = sampleMatrix();
    sheared.shear(std::tan(30.0 * 0.017453292519943295), std::tan(-15.0 * 0.017453292519943295),
                  &center);
    EXPECT_TRUE(skewed == sheared);
    zgMatrix fortyFive;
    fortyFive.skew(45.0, 0.0);
    EXPECT_NEAR(fortyFive.c, 1.0, kTight);
    EXPECT_EQ(fortyFive.b, 0.0);
}

TEST(Matrix, InvertFormulasAndRoundTrip)
{
    zgMatrix m = sampleMatrix();
    const double det = 3.0 * 2.0 - -1.0 * 0.5; // 6.5
    m.invert();
    expectMatrixNear(m, 3.0 / det, -0.5 / det, 1.0 / det, 2.0 / det,
                     (-5.0 * -1.0 - 4.0 * 3.0) / det, (4.0 * 0.5 - -5.0 * 2.0) / det);
    const zgPoint p(2.5, -1.5);
    const zgPoint back = m.transformPoint(sampleMatrix().transformPoint(p));
    expectPointNear(back, 2.5, -1.5);
}

TEST(Matrix, InvertWithInfiniteTranslationLeavesMatrixAlone)
{
    zgMatrix m(2.0, 0.0, 0.0, 2.0, qInf(), 1.0);
    m.invert();
    EXPECT_EQ(m.a, 2.0);
    EXPECT_EQ(m.d, 2.0);
    EXPECT_EQ(m.tx, qInf());
    EXPECT_EQ(m.ty, 1.0);
    const zgPoint p(3.0, 4.0);
    const zgPoint same = m.inverseTransform(p);
    EXPECT_EQ(same.x, 3.0);
    EXPECT_EQ(same.y, 4.0);
}

TEST(Matrix, InvertWithNaNDeterminantOrNaNShiftLeavesMatrixAlone)
{
    zgMatrix nanDet(qQNaN(), 0.0, 0.0, 1.0, 1.0, 2.0);
    nanDet.invert();
    EXPECT_TRUE(qIsNaN(nanDet.a));
    EXPECT_EQ(nanDet.d, 1.0);
    EXPECT_EQ(nanDet.tx, 1.0);
    zgMatrix nanShift(2.0, 0.0, 0.0, 2.0, 1.0, qQNaN());
    nanShift.invert();
    EXPECT_EQ(nanShift.a, 2.0);
    EXPECT_EQ(nanShift.tx, 1.0);
    const zgPoint same = nanShift.inverseTransform(zgPoint(5.0, 6.0));
    EXPECT_EQ(same.x, 5.0);
    EXPECT_EQ(same.y, 6.0);
}

TEST(Matrix, InvertOfSingularMatrixIsNotCaught)
{
    zgMatrix m(1.0, 2.0, 2.0, 4.0, 1.0, 1.0);
    EXPECT_TRUE(m.isSingular());
    m.invert();
    // Division by a det of 0: infinities and NaNs.
    EXPECT_FALSE(qIsFinite(m.a));
    EXPECT_FALSE(qIsFinite(m.b));
    EXPECT_FALSE(qIsFinite(m.tx));
}

TEST(Matrix, InverseTransformUndoesTransformWithoutChangingMatrix)
{
    const zgMatrix m = sampleMatrix();
    const zgPoint p(-3.0, 8.0);
    const zgPoint back = m.inverseTransform(m.transformPoint(p));
    expectPointNear(back, -3.0, 8.0);
    expectMatrixNear(m, 2.0, 0.5, -1.0, 3.0, 4.0, -5.0, 0.0);
}

TEST(Matrix, IsIdentityIsExact)
{
    zgMatrix m;
    EXPECT_TRUE(m.isIdentity());
    EXPECT_FALSE(m._orNullIfIdentity());
    m.a = 1.0000000000001;
    EXPECT_FALSE(m.isIdentity());
    EXPECT_TRUE(m._orNullIfIdentity());
    zgMatrix shifted;
    shifted.ty = 1e-300;
    EXPECT_FALSE(shifted.isIdentity());
}

TEST(Matrix, ShiftlessClearsTranslationOnly)
{
    zgMatrix m = sampleMatrix();
    m._shiftless();
    expectMatrixNear(m, 2.0, 0.5, -1.0, 3.0, 0.0, 0.0, 0.0);
}

TEST(Matrix, InvertibilityConditions)
{
    EXPECT_TRUE(sampleMatrix().isInvertible());
    EXPECT_FALSE(sampleMatrix().isSingular());
    // det = d*a - c*b = 0
    EXPECT_FALSE(zgMatrix(1.0, 2.0, 3.0, 6.0, 0.0, 0.0).isInvertible());
    EXPECT_TRUE(zgMatrix(1.0, 2.0, 3.0, 6.0, 0.0, 0.0).isSingular());
    EXPECT_FALSE(zgMatrix(qQNaN(), 0.0, 0.0, 1.0, 0.0, 0.0).isInvertible());
    EXPECT_FALSE(zgMatrix(1.0, 0.0, 0.0, 1.0, qInf(), 0.0).isInvertible());
    EXPECT_FALSE(zgMatrix(1.0, 0.0, 0.0, 1.0, 0.0, -qInf()).isInvertible());
    EXPECT_FALSE(zgMatrix(1.0, 0.0, 0.0, 1.0, 0.0, qQNaN()).isInvertible());
    // A tiny but nonzero determinant still counts as invertible.
    EXPECT_TRUE(zgMatrix(1e-100, 0.0, 0.0, 1e-100, 0.0, 0.0).isInvertible());
    // One whose determinant underflows to 0 does not.
    EXPECT_FALSE(zgMatrix(1e-200, 0.0, 0.0, 1e-200, 0.0, 0.0).isInvertible());
}

TEST(Matrix, EqualityIsExact)
{
    const zgMatrix m = sampleMatrix();
    zgMatrix same = sampleMatrix();
    EXPECT_TRUE(m == same);
    same.ty += 1e-13;
    EXPECT_FALSE(m == same);
}

TEST(Matrix, TransformPointsInPlace)
{
    const zgMatrix m = sampleMatrix();
    QVector<zgPoint> points;
    points << zgPoint(0.0, 0.0) << zgPoint(3.0, 7.0);
    m.transformPoints(points);
    ASSERT_EQ(points.size(), 2);
    expectPointNear(points[0], 4.0, -5.0, 0.0);
    expectPointNear(points[1], 3.0, 17.5, 0.0);
}

TEST(Matrix, TransformCoordsMapsOnlyCountPairs)
{
    const zgMatrix m = sampleMatrix();
    QVector<double> coords;
    coords << 0.0 << 0.0 << 3.0 << 7.0 << 1.0 << 1.0;
    m.transformCoords(coords, 2);
    ASSERT_EQ(coords.size(), 6);
    EXPECT_EQ(coords[0], 4.0);
    EXPECT_EQ(coords[1], -5.0);
    EXPECT_EQ(coords[2], 3.0);
    EXPECT_EQ(coords[3], 17.5);
    EXPECT_EQ(coords[4], 1.0);
    EXPECT_EQ(coords[5], 1.0);
}

TEST(Matrix, TransformCoordsNeverReadsPastTheEnd)
{
    const zgMatrix m(1.0, 0.0, 0.0, 1.0, 10.0, 0.0);
    QVector<double> coords;
    coords << 1.0 << 2.0 << 3.0;
    m.transformCoords(coords, 5);
    ASSERT_EQ(coords.size(), 3);
    EXPECT_EQ(coords[0], 11.0);
    EXPECT_EQ(coords[2], 3.0);
    m.transformCoords(coords, -1);
    EXPECT_EQ(coords[0], 11.0);
}

TEST(Matrix, TransformCornersEmptiesAndWritesFourMappedCorners)
{
    zgMatrix m;
    m.translate(1.0, 2.0);
    QVector<double> coords;
    coords << 99.0 << 99.0 << 99.0;
    m.transformCorners(zgRect(10.0, 20.0, 30.0, 40.0), coords);
    const QVector<double> expected{ 11.0, 22.0, 41.0, 22.0, 41.0, 62.0, 11.0, 62.0 };
    EXPECT_EQ(coords, expected);
}

TEST(Matrix, TransformBoundsOfRotatedSquareIsDiamondBox)
{
    zgMatrix m;
    m.rotate(45.0);
    const zgRect bounds = m.transformBounds(zgRect(0.0, 0.0, 10.0, 10.0));
    const double half = 10.0 / std::sqrt(2.0);
    // Corners go to (0,0), (7.07,7.07), (0,14.14), (-7.07,7.07).
    EXPECT_NEAR(bounds.x, -half, 1e-12);
    EXPECT_NEAR(bounds.y, 0.0, 1e-12);
    EXPECT_NEAR(bounds.width, 2.0 * half, 1e-12);
    EXPECT_NEAR(bounds.height, 2.0 * half, 1e-12);
}

TEST(Matrix, TransformBoundsOfRotatedRectangle)
{
    zgMatrix m;
    m.rotate(45.0);
    const zgRect bounds = m.transformBounds(zgRect(0.0, 0.0, 20.0, 10.0));
    const double r = std::sqrt(0.5);
    // Corners: (0,0), (20r,20r), (10r,30r), (-10r,10r).
    EXPECT_NEAR(bounds.x, -10.0 * r, 1e-12);
    EXPECT_NEAR(bounds.y, 0.0, 1e-12);
    EXPECT_NEAR(bounds.width, 30.0 * r, 1e-12);
    EXPECT_NEAR(bounds.height, 30.0 * r, 1e-12);
}

TEST(Matrix, ToStringShiftsValuesPastMisplacedPercent)
{
    const zgMatrix m(1.5, -2.0, 0.25, 3.0, 10.0, 20.0);
    WarningCollector warnings;
    // d sits under the label tx, tx under ty, and ty is dropped.
    EXPECT_EQ(m.toString(), QStringLiteral("a: 1.5, b: -2, c: 0.25, d: 4%, tx: 3, ty: 10"));
    ASSERT_EQ(WarningCollector::s_messages.size(), 1);
    EXPECT_TRUE(WarningCollector::s_messages.first().contains(QStringLiteral("Argument missing")));
}

TEST(Matrix, ToStringUsesSixSignificantDigits)
{
    const zgMatrix m(1.0 / 3.0, 1e21, 0.0, 123456789.0, 1e-5, 7.0);
    WarningCollector warnings;
    EXPECT_EQ(m.toString(),
              QStringLiteral("a: 0.333333, b: 1e+21, c: 0, d: 4%, tx: 1.23457e+08, ty: 1e-05"));
    const zgMatrix identity;
    EXPECT_EQ(identity.toString(), QStringLiteral("a: 1, b: 0, c: 0, d: 4%, tx: 1, ty: 0"));
}
