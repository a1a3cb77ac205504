// zgMatrix: the 2D affine transform of the object model.
//
// A point maps as x' = a*x + c*y + tx, y' = b*x + d*y + ty. Every composing
// operation multiplies on the right, so the transform given acts on a point
// first and the existing one after it.
#include <zgraphics/primitives.h>

#include <QtCore/QtGlobal>
#include <QtCore/QtNumeric>

#include <algorithm>
#include <cmath>

namespace {

// Degrees to radians.
const double kRadiansPerDegree = 0.017453292519943295;

} // namespace

void zgMatrix::set(double newA, double newB, double newC, double newD, double newTx,
                   double newTy)
{
    a = newA;
    b = newB;
    c = newC;
    d = newD;
    tx = newTx;
    ty = newTy;
}

void zgMatrix::reset()
{
    set(1.0, 0.0, 0.0, 1.0, 0.0, 0.0);
}

void zgMatrix::append(const zgMatrix &m)
{
    const zgMatrix old = *this;
    a = old.a * m.a + old.c * m.b;
    b = old.b * m.a + old.d * m.b;
    c = old.a * m.c + old.c * m.d;
    d = old.b * m.c + old.d * m.d;
    tx = old.a * m.tx + old.c * m.ty + old.tx;
    ty = old.b * m.tx + old.d * m.ty + old.ty;
}

void zgMatrix::prepend(const zgMatrix &m)
{
    const zgMatrix old = *this;
    a = m.a * old.a + m.c * old.b;
    b = m.b * old.a + m.d * old.b;
    c = m.a * old.c + m.c * old.d;
    d = m.b * old.c + m.d * old.d;
    tx = m.a * old.tx + m.c * old.ty + m.tx;
    ty = m.b * old.tx + m.d * old.ty + m.ty;
}

void zgMatrix::translate(double dx, double dy)
{
    tx += dx * a + dy * c;
    ty += dx * b + dy * d;
}

void zgMatrix::rotate(double angle)
{
    const double radians = angle * kRadiansPerDegree;
    const double sine = std::sin(radians);
    const double cosine = std::cos(radians);
    const zgMatrix old = *this;
    a = old.a * cosine + old.c * sine;
    b = old.b * cosine + old.d * sine;
    c = old.c * cosine - old.a * sine;
    d = old.d * cosine - old.b * sine;
}

void zgMatrix::rotateAt(double angle, const zgPoint &center)
{
    translate(center);
    rotate(angle);
    translate(-center.x, -center.y);
}

void zgMatrix::scale(double sx, double sy, const zgPoint *center)
{
    if (center)
        translate(*center);
    a *= sx;
    b *= sx;
    c *= sy;
    d *= sy;
    if (center)
        translate(-center->x, -center->y);
}

void zgMatrix::shear(double shx, double shy, const zgPoint *center)
{
    if (center)
        translate(*center);
    const zgMatrix old = *this;
    a = old.a + old.c * shy;
    b = old.b + old.d * shy;
    c = old.c + old.a * shx;
    d = old.d + old.b * shx;
    if (center)
        translate(-center->x, -center->y);
}

void zgMatrix::skew(double skewX, double skewY, const zgPoint *center)
{
    shear(std::tan(skewX * kRadiansPerDegree), std::tan(skewY * kRadiansPerDegree), center);
}

void zgMatrix::invert()
{
    const double det = d * a - c * b;
    if (qIsNaN(det) || !qIsFinite(tx) || !qIsFinite(ty))
        return;
    // A det of exactly 0 is let through on purpose: callers ask isInvertible.
    const zgMatrix old = *this;
    a = old.d / det;
    b = -old.b / det;
    c = -old.c / det;
    d = old.a / det;
    tx = (old.ty * old.c - old.tx * old.d) / det;
    ty = (old.tx * old.b - old.ty * old.a) / det;
}

bool zgMatrix::isIdentity() const
{
    return a == 1.0 && b == 0.0 && c == 0.0 && d == 1.0 && tx == 0.0 && ty == 0.0;
}

bool zgMatrix::_orNullIfIdentity() const
{
    return !isIdentity();
}

void zgMatrix::_shiftless()
{
    tx = 0.0;
    ty = 0.0;
}

bool zgMatrix::isInvertible() const
{
    const double det = d * a - c * b;
    return det != 0.0 && !qIsNaN(det) && qIsFinite(tx) && qIsFinite(ty);
}

bool zgMatrix::isSingular() const
{
    return !isInvertible();
}

bool zgMatrix::operator==(const zgMatrix &m) const
{
    return a == m.a && b == m.b && c == m.c && d == m.d && tx == m.tx && ty == m.ty;
}

zgPoint zgMatrix::transformPoint(const zgPoint &p) const
{
    return transformXY(p.x, p.y);
}

zgPoint zgMatrix::transformXY(double x, double y) const
{
    return zgPoint(a * x + c * y + tx, b * x + d * y + ty);
}

void zgMatrix::transformPoints(QVector<zgPoint> &points) const
{
    for (zgPoint &point : points)
        point = transformPoint(point);
}

void zgMatrix::transformCoords(QVector<double> &coords, int count) const
{
    // Never reach past the end of coords, whatever count says.
    const int pairs = std::min(count, int(coords.size() / 2));
    for (int i = 0; i < pairs; ++i) {
        const zgPoint mapped = transformXY(coords[2 * i], coords[2 * i + 1]);
        coords[2 * i] = mapped.x;
        coords[2 * i + 1] = mapped.y;
    }
}

void zgMatrix::transformCorners(const zgRect &rect, QVector<double> &coords) const
{
    const double right = rect.x + rect.width;
    const double bottom = rect.y + rect.height;
    coords.clear();
    coords << rect.x << rect.y << right << rect.y << right << bottom << rect.x << bottom;
    transformCoords(coords, 4);
}

zgRect zgMatrix::transformBounds(const zgRect &rect) const
{
    QVector<double> corners;
    transformCorners(rect, corners);
    double minX = corners[0];
    double maxX = corners[0];
    double minY = corners[1];
    double maxY = corners[1];
    for (int i = 1; i < 4; ++i) {
        const double x = corners[2 * i];
        const double y = corners[2 * i + 1];
        minX = std::min(minX, x);
        maxX = std::max(maxX, x);
        minY = std::min(minY, y);
        maxY = std::max(maxY, y);
    }
    return zgRect(minX, minY, maxX - minX, maxY - minY);
}

zgPoint zgMatrix::inverseTransform(const zgPoint &p) const
{
    const double det = d * a - c * b;
    if (qIsNaN(det) || !qIsFinite(tx) || !qIsFinite(ty))
        return p;
    const double x = p.x - tx;
    const double y = p.y - ty;
    return zgPoint((x * d - y * c) / det, (y * a - x * b) / det);
}

QString zgMatrix::toString() const
{
    // "4%" is no placeholder: d lands in %5, tx in %6, and ty finds no place
    // (QString::arg warns about it). The debug text has always read this way.
    return QStringLiteral("a: %1, b: %2, c: %3, d: 4%, tx: %5, ty: %6")
        .arg(a, 0, 'g', -1, QLatin1Char(' '))
        .arg(b, 0, 'g', -1, QLatin1Char(' '))
        .arg(c, 0, 'g', -1, QLatin1Char(' '))
        .arg(d, 0, 'g', -1, QLatin1Char(' '))
        .arg(tx, 0, 'g', -1, QLatin1Char(' '))
        .arg(ty, 0, 'g', -1, QLatin1Char(' '));
}
