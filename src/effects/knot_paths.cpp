// Knot paths: chains of cubics through their knots with continuous first and
// second derivatives, as connectors use them, and the smoothing of a drawing
// path's contours.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtGui/QTransform>

#include <cmath>

namespace {

// Half the height of the S that a reshaped chain makes, in path units.
const double kSHeight = 30.0;

QPointF mapAbout(const QPointF &point, const QPointF &center, double degrees)
{
    QTransform rotation;
    rotation.translate(center.x(), center.y());
    rotation.rotate(degrees, Qt::ZAxis);
    rotation.translate(-center.x(), -center.y());
    return rotation.map(point);
}

QVector<QPointF> everyThirdPoint(const QVector<QPointF> &points)
{
    QVector<QPointF> knots;
    for (int i = 0; i < points.size(); i += 3)
        knots.append(points.at(i));
    return knots;
}

// Four knots from the first to the last knot with an S between them: the
// middle knots at 0.3 and 0.7 of the way, 30 units to either side of the line.
QVector<QPointF> sKnots(const QVector<QPointF> &knots)
{
    const QPointF a = knots.first();
    const QPointF b = knots.last();
    const QPointF delta = b - a;
    const double d = std::hypot(delta.x(), delta.y());
    const double degrees = std::atan2(delta.y(), delta.x()) * (180.0 / 3.141592653589793);
    const QPointF p1(a.x() + 0.3 * d, a.y() - kSHeight);
    const QPointF p2(a.x() + 0.7 * d, a.y() + kSHeight);
    return {a, mapAbout(p1, a, degrees), mapAbout(p2, a, degrees), b};
}

// Moves c off end by ox and oy along each axis on the side it lies; c stays
// where it equals end.
void snap(QPointF &c, const QPointF &end, double ox, double oy)
{
    if (end.x() < c.x())
        c.setX(end.x() + ox);
    if (c.x() < end.x())
        c.setX(end.x() - ox);
    if (end.y() < c.y())
        c.setY(end.y() + oy);
    if (c.y() < end.y())
        c.setY(end.y() - oy);
}

void snapX(QPointF &c, const QPointF &end, double ox)
{
    if (end.x() < c.x())
        c.setX(end.x() + ox);
    if (c.x() < end.x())
        c.setX(end.x() - ox);
}

void snapY(QPointF &c, const QPointF &end, double oy)
{
    if (end.y() < c.y())
        c.setY(end.y() + oy);
    if (c.y() < end.y())
        c.setY(end.y() - oy);
}

// The control polygon A, c1, c2, B of a chain, reshaped by the directions of
// its end handles; t1 and t2 are the times at which the middle knots are taken
// on it. False when no case applies (NaN coordinates).
bool controlPolygon(const QPointF &A, const QPointF &B, QPointF &c1, QPointF &c2, double &t1,
                    double &t2)
{
    const QPointF u = c1 - A;
    const QPointF w = c2 - B;
    const QPointF D = B - A;
    const double dx = std::abs(A.x() - B.x());
    const double dy = std::abs(A.y() - B.y());
    t1 = 0.3;
    t2 = 0.7;

    // Handles turned against each other.
    if (w.x() * u.x() < 0.0 || w.y() * u.y() < 0.0) {
        const double o = 0.6 * qMax(dx, dy);
        snap(c1, A, o, o);
        snap(c2, B, o, o);
        t1 = 0.28;
        t2 = 0.72;
        return true;
    }
    if ((D.x() * u.x() > 0.0 && D.y() * w.y() < 0.0) || (D.y() * u.y() > 0.0 && D.x() * w.x() < 0.0)) {
        snap(c1, A, 0.8 * dx, 0.8 * dy);
        snap(c2, B, 0.8 * dx, 0.8 * dy);
        return true;
    }
    // Handles turned the same way.
    if (w.x() * u.x() > 0.0 || w.y() * u.y() > 0.0) {
        const double ox = (0.8 * dx + 0.2 * dy) * 0.68;
        const double oy = (0.2 * dx + 0.8 * dy) * 0.68;
        snap(c1, A, ox, oy);
        snap(c2, B, ox, oy);
        t1 = 0.38;
        t2 = 0.62;
        return true;
    }
    const bool uxBack = D.x() * u.x() <= 0.0;
    const bool wxBack = -D.x() * w.x() <= 0.0;
    const bool uyBack = D.y() * u.y() <= 0.0;
    const bool wyBack = -D.y() * w.y() <= 0.0;
    if (uxBack && wxBack && uyBack && wyBack) {
        const double ox = (0.8 * dx + 0.2 * dy) * 0.85;
        const double oy = (0.2 * dx + 0.8 * dy) * 0.85;
        snap(c1, A, ox, oy);
        snap(c2, B, ox, oy);
        t1 = 0.35;
        t2 = 0.65;
        return true;
    }
    if (uxBack && wxBack && uyBack && -D.y() * w.y() > 0.0) {
        if (c2.y() > B.y()) {
            c2.setY(B.y() + 0.6 * dy);
            c1.setY(A.y() - 0.4 * dx);
        } else if (c2.y() < B.y()) {
            c2.setY(B.y() - 0.6 * dy);
            c1.setY(A.y() + 0.4 * dx);
        }
        snapX(c1, A, 0.8 * dx);
        return true;
    }
    if (uxBack && wxBack && D.y() * u.y() > 0.0) {
        if (c1.y() > A.y()) {
            c1.setY(A.y() + 0.6 * dy);
            c2.setY(B.y() - 0.4 * dx);
        } else if (c1.y() < A.y()) {
            c1.setY(A.y() - 0.6 * dy);
            c2.setY(B.y() + 0.4 * dx);
        }
        snapX(c2, B, 0.8 * dx);
        return true;
    }
    if (uxBack && -D.x() * w.x() > 0.0) {
        if (c2.x() > B.x()) {
            c2.setX(B.x() + 0.6 * dx);
            c1.setX(A.x() - 0.4 * dy);
        } else if (c2.x() < B.x()) {
            c2.setX(B.x() - 0.6 * dx);
            c1.setX(A.x() + 0.4 * dy);
        }
        snapY(c1, A, 0.8 * dy);
        return true;
    }
    if (D.x() * u.x() > 0.0) {
        if (c1.x() > A.x()) {
            c1.setX(A.x() + 0.6 * dx);
            c2.setX(B.x() - 0.4 * dy);
        } else if (c1.x() < A.x()) {
            c1.setX(A.x() - 0.6 * dx);
            c2.setX(B.x() + 0.4 * dy);
        }
        snapY(c2, B, 0.8 * dy);
        return true;
    }
    return false;
}

// Four knots from the first and last points with the middle two taken from
// the end handles. The middle knots stay at the origin for a list of three
// points, and for one where no case of the control polygon applies.
QVector<QPointF> keptEndKnots(const QVector<QPointF> &points)
{
    const QPointF A = points.first();
    const QPointF B = points.last();
    QPointF p(0.0, 0.0);
    QPointF q(0.0, 0.0);
    if (points.size() == 2) {
        p = A + 0.25 * (B - A);
        q = A + 0.75 * (B - A);
    } else if (points.size() > 3) {
        QPointF c1 = points.at(1);
        QPointF c2 = points.at(points.size() - 2);
        double t1 = 0.0;
        double t2 = 0.0;
        if (controlPolygon(A, B, c1, c2, t1, t2)) {
            const QVector<double> values = {A.x(), A.y(), c1.x(), c1.y(), c2.x(), c2.y(), B.x(), B.y()};
            const zgCurve curve(values, nullptr);
            p = curve.getPointAtTime(t1).toPt();
            q = curve.getPointAtTime(t2).toPt();
        }
    }
    return {A, p, q, B};
}

// The chain through knots (at least 3) with continuous first and second
// derivatives: the first control points of its pieces from a tridiagonal
// system, solved for x and y at once, each inner knot's handles mirrored.
QVector<QPointF> chainThrough(const QVector<QPointF> &k)
{
    const int n = k.size() - 1;
    QVector<QPointF> rhs(n);
    QVector<double> diag(n);
    QVector<QPointF> sol(n + 1);
    rhs[0] = k[0] + 2.0 * k[1];
    diag[0] = 2.0;
    for (int i = 1; i < n; ++i) {
        const bool inner = i < n - 1;
        const double m = (inner ? 1.0 : 2.0) / diag[i - 1];
        diag[i] = (inner ? 4.0 : 7.0) - m;
        rhs[i] = (inner ? 2.0 : 1.0) * k[i + 1] + (inner ? 4.0 : 8.0) * k[i] - m * rhs[i - 1];
    }
    sol[n - 1] = rhs[n - 1] / diag[n - 1];
    for (int i = n - 2; i >= 0; --i)
        sol[i] = (rhs[i] - sol[i + 1]) / diag[i];
    sol[n] = (3.0 * k[n] - sol[n - 1]) * 0.5;

    QVector<QPointF> chain;
    chain.reserve(3 * n + 1);
    for (int i = 0; i <= n; ++i) {
        const QPointF v = sol[i] - k[i];
        if (i != 0)
            chain.append(k[i] - v);
        chain.append(k[i]);
        if (i < n)
            chain.append(k[i] + v);
    }
    return chain;
}

} // namespace

void ZDPath::knotsPath(QVector<QPointF> &points, bool reshape, bool keepEnds)
{
    QVector<QPointF> knots;
    if (!reshape) {
        knots = everyThirdPoint(points);
    } else if (!keepEnds) {
        knots = points.size() == 2 ? points : everyThirdPoint(points);
        if (knots.size() < 2)
            return;
        knots = sKnots(knots);
    } else {
        if (points.size() < 2)
            return;
        knots = keptEndKnots(points);
    }
    if (knots.size() < 3)
        return;
    points = chainThrough(knots);
}

void ZDPath::smooth(int type)
{
    XPath xpath;
    toXPath(xpath, 0);
    xpath.smooth(type, 0.5, 0, -1);
    if (!isEmpty())
        reset();
    fromXPath(xpath);
}
