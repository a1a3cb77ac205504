// zgNumeric: tolerance tests, the quadratic and cubic solvers with their
// accurate discriminant, Gauss-Legendre integration, safeguarded Newton root
// finding and the point on an inscribed ellipse.
//
// The solvers are tuned for robustness in floating point: coefficients are
// scaled by powers of two when they are very small or very large, the
// discriminant is computed in split precision when it would cancel, and roots
// a hair outside their interval are kept and clamped back into it.
#include <zgraphics/primitives.h>

#include <QtCore/QtGlobal>
#include <QtCore/QtNumeric>

#include <algorithm>
#include <cmath>

namespace {

// Writes value at entry index of roots, or appends it when roots is shorter:
// the vector never shrinks, and only the returned count says what is valid.
void storeRoot(QVector<double> &roots, int index, double value)
{
    if (index < roots.size())
        roots[index] = value;
    else
        roots.append(value);
}

// Without bounds every finite root counts. With bounds a root may lie up to
// the general epsilon outside [min, max].
bool isAcceptedRoot(double root, bool bounded, double min, double max)
{
    if (!qIsFinite(root))
        return false;
    // 1e-12: roots this close outside the interval are kept and clamped.
    return !bounded || (min - 1e-12 < root && root < max + 1e-12);
}

// The cubic a*x^3 + b*x^2 + c*x + d at one x, by Horner's scheme, with the
// quantities the deflation and the Newton step reuse.
struct CubicEvaluation
{
    double b1; // coefficient of x in the deflated quadratic
    double c2; // constant of the deflated quadratic
    double qd; // derivative of the cubic at x
    double q;  // value of the cubic at x
};

CubicEvaluation evaluateCubic(double a, double b, double c, double d, double x)
{
    CubicEvaluation e;
    const double tmp = a * x;
    e.b1 = tmp + b;
    e.c2 = e.b1 * x + c;
    e.qd = (tmp + e.b1) * x + e.c2;
    e.q = e.c2 * x + d;
    return e;
}

} // namespace

bool zgNumeric::isZero(double v)
{
    // 1e-12: the general epsilon of the library.
    return -1e-12 <= v && v <= 1e-12;
}

double zgNumeric::clamp(double v, double min, double max)
{
    if (v < min)
        return min;
    return v <= max ? v : max;
}

double zgNumeric::log2(double v)
{
    return std::log(v) / std::log(2.0);
}

double zgNumeric::distance(const QPointF &a, const QPointF &b)
{
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    return std::sqrt(dx * dx + dy * dy);
}

bool zgNumeric::pointEquate1(const QPointF &a, const QPointF &b)
{
    // 1.0: the joining tolerance of drawing paths, strict on both axes.
    return std::fabs(b.x() - a.x()) < 1.0 && std::fabs(b.y() - a.y()) < 1.0;
}

double *zgNumeric::split(double v)
{
    // 134217729 = 2^27 + 1: leaves 26 significant bits in the high part, so
    // that products of two high parts are exact. The two operations on x are
    // what rounds the low bits away; they must stay as written.
    const double x = v * 134217729.0;
    const double hi = (v - x) + x;
    double *parts = new double[2];
    parts[0] = hi;
    parts[1] = v - hi;
    return parts;
}

double zgNumeric::getNormalizationFactor(const double *values, int n)
{
    double greatest = 0.0;
    for (int i = 0; i < n; ++i) {
        if (values[i] > greatest)
            greatest = values[i];
    }
    // An infinite coefficient has no power of two to bring it into range.
    if (greatest == 0.0 || !qIsFinite(greatest))
        return 0.0;
    // 1e-08 and 1e+08: the range in which coefficients are used as they are.
    if (greatest < 1e-08 || greatest > 1e+08)
        return std::pow(2.0, -qRound(log2(greatest)));
    return 0.0;
}

double zgNumeric::getDiscriminant(double a, double b, double c)
{
    const double p = b * b;
    const double q = a * c;
    double D = p - q;
    // The subtraction lost too many bits: redo the small parts exactly from
    // the halves of a, b and c. The parentheses fix the order of rounding.
    if (3.0 * std::fabs(D) < p + q) {
        double *aParts = split(a);
        double *bParts = split(b);
        double *cParts = split(c);
        const double ah = aParts[0], al = aParts[1];
        const double bh = bParts[0], bl = bParts[1];
        const double ch = cParts[0], cl = cParts[1];
        delete[] aParts;
        delete[] bParts;
        delete[] cParts;
        const double dp = ((2.0 * bh) * bl + (bh * bh - p)) + bl * bl;
        const double dq = ((ah * ch - q) + ah * cl + al * ch) + al * cl;
        D = (dp - dq) + D;
    }
    return D;
}

int zgNumeric::solveQuadratic(double a, double b, double c, QVector<double> &roots,
                              double min, double max)
{
    const bool bounded = !(min == 0.0 && max == 0.0);
    double x1 = qQNaN();
    double x2 = qQNaN();
    // 1e-12: below this a coefficient counts as zero.
    if (std::fabs(a) < 1e-12) {
        if (std::fabs(b) < 1e-12)
            return std::fabs(c) < 1e-12 ? -1 : 0;
        x1 = -c / b;
    } else {
        double halfB = -0.5 * b;
        double D = getDiscriminant(a, halfB, c);
        // 1.12e-16: machine epsilon; a discriminant this small may only be
        // rounding noise of badly scaled coefficients, so scale and retry.
        if (D != 0.0 && std::fabs(D) < 1.12e-16) {
            const double magnitudes[3] = { std::fabs(a), std::fabs(halfB), std::fabs(c) };
            const double factor = getNormalizationFactor(magnitudes, 3);
            if (factor != 0.0) {
                a *= factor;
                halfB *= factor;
                c *= factor;
                D = getDiscriminant(a, halfB, c);
            }
        }
        // -1.12e-16: a discriminant this little below zero is taken as zero.
        if (D >= -1.12e-16) {
            const double Q = D < 0.0 ? 0.0 : std::sqrt(D);
            const double R = halfB < 0.0 ? halfB - Q : halfB + Q;
            if (R == 0.0) {
                x1 = c / a;
                x2 = -x1;
            } else {
                x1 = R / a;
                x2 = c / R;
            }
        }
    }
    int count = 0;
    if (isAcceptedRoot(x1, bounded, min, max))
        storeRoot(roots, count++, bounded ? clamp(x1, min, max) : x1);
    if (x2 != x1 && isAcceptedRoot(x2, bounded, min, max))
        storeRoot(roots, count++, bounded ? clamp(x2, min, max) : x2);
    return count;
}

int zgNumeric::solveCubic(double a, double b, double c, double d, QVector<double> &roots,
                          double min, double max)
{
    const double magnitudes[4] = { std::fabs(a), std::fabs(b), std::fabs(c), std::fabs(d) };
    const double factor = getNormalizationFactor(magnitudes, 4);
    if (factor != 0.0) {
        a *= factor;
        b *= factor;
        c *= factor;
        d *= factor;
    }

    // The real root found directly (infinite: none), and the quadratic that
    // remains after dividing it out.
    double x;
    double qa = a;
    double qb;
    double qc;
    // 1e-12: below this a coefficient counts as zero.
    if (std::fabs(a) < 1e-12) {
        qa = b;
        qb = c;
        qc = d;
        x = qInf();
    } else if (std::fabs(d) < 1e-12) {
        qb = b;
        qc = c;
        x = 0.0;
    } else {
        // Start at the inflection point and step towards the root from the
        // side on which Newton's method converges monotonically.
        x = -(b / a) / 3.0;
        CubicEvaluation e = evaluateCubic(a, b, c, d, x);
        const double t = e.q / a;
        const double r = std::pow(std::fabs(t), 1.0 / 3.0);
        const double s = t < 0.0 ? -1.0 : 1.0;
        const double td = -e.qd / a;
        // 1.324717957244746: bound factor of the first step, so that it
        // cannot overshoot the root.
        const double rd = td > 0.0 ? 1.324717957244746 * std::max(r, std::sqrt(td)) : r;
        double x0 = x - s * rd;
        if (x0 != x) {
            do {
                x = x0;
                e = evaluateCubic(a, b, c, d, x);
                // 1.0000000000000002: the double next above 1, damps the step
                // so that rounding cannot carry it past the root.
                x0 = e.qd == 0.0 ? x : x - (e.q / e.qd) / 1.0000000000000002;
            } while (s * x0 > s * x);
            // For large roots the deflated constant is more accurate from d.
            if (std::fabs(a) * x * x > std::fabs(d / x)) {
                e.c2 = -d / x;
                e.b1 = (e.c2 - c) / x;
            }
        }
        qb = e.b1;
        qc = e.c2;
    }

    int count = solveQuadratic(qa, qb, qc, roots, min, max);
    const bool bounded = !(min == 0.0 && max == 0.0);
    if (count >= 0 && isAcceptedRoot(x, bounded, min, max)) {
        bool isNew = true;
        for (int i = 0; i < count; ++i) {
            if (roots[i] == x)
                isNew = false;
        }
        if (isNew)
            storeRoot(roots, count++, bounded ? clamp(x, min, max) : x);
    }
    return count;
}

double zgNumeric::findRoot(std::function<double(double)> f, std::function<double(double)> df,
                           double x, double a, double b, int n, double tolerance)
{
    for (int i = 0; i < n; ++i) {
        const double fx = f(x);
        const double dx = fx / df(x);
        double nx = x - dx;
        if (std::fabs(dx) < tolerance)
            return nx;
        // Narrow the bracket to the side of x that holds the root, and bisect
        // when the Newton step would leave it.
        if (fx > 0.0) {
            b = x;
            if (nx <= a)
                nx = (x + a) * 0.5;
        } else {
            a = x;
            if (nx >= b)
                nx = (x + b) * 0.5;
        }
        x = nx;
    }
    return x;
}

double zgNumeric::integrate(std::function<double(double)> f, double a, double b, int n)
{
    // Orders outside the tables are taken as the nearest order there is,
    // rather than read past them.
    const int order = std::min(std::max(n, 2), 16);
    const double *x = abscissas[order - 2];
    const double *w = weights[order - 2];
    const double A = (b - a) * 0.5;
    const double B = A + a;
    int i = 0;
    double sum = 0.0;
    if (order % 2 == 1) {
        sum = w[0] * f(B);
        i = 1;
    }
    const int nodeCount = (order + 1) / 2;
    for (; i < nodeCount; ++i) {
        const double Ax = A * x[i];
        // Two statements: the right node is evaluated before the left one.
        const double right = f(B + Ax);
        const double left = f(B - Ax);
        sum += w[i] * (right + left);
    }
    return A * sum;
}

zgPoint zgNumeric::ellipsePoint(const zgRect &rect, double angle)
{
    // 0.1: the least height, so that a flat rectangle still has an ellipse.
    const double h = rect.height < 0.1 ? 0.1 : rect.height;
    const double w = rect.width;
    if (angle > 360.0 || angle < -360.0)
        angle -= 360.0 * std::trunc(angle / 360.0);
    if (angle < -180.0)
        angle += 360.0;
    if (angle > 180.0)
        angle -= 360.0;
    // The angle holds in the rectangle's picture; t is the ellipse parameter
    // that gives it, moved to the half plane of the angle.
    const double r = angle * M_PI / 180.0;
    double t = std::atan(std::tan(r) * w / h);
    if (r < 0.0 && t > 0.0)
        t -= M_PI;
    if (r > 0.0 && t < 0.0)
        t += M_PI;
    return zgPoint(std::cos(t) * w / 2.0 + rect.x + w / 2.0,
                   std::sin(t) * h / 2.0 + rect.y + h / 2.0);
}

QPointF zgNumeric::ellipsePoint(const QRectF &rect, double angle)
{
    return ellipsePoint(zgRect(rect.x(), rect.y(), rect.width(), rect.height()), angle).toPt();
}
