// zgPoint: a point that doubles as a vector.
#include <zgraphics/primitives.h>

#include <QtCore/QtGlobal>
#include <QtCore/QtNumeric>

#include <cmath>

namespace {

// The library's zero test on a single coordinate or difference.
bool isNearZero(double value)
{
    // 1e-12: a difference this small counts as zero.
    return -1e-12 <= value && value <= 1e-12;
}

// qRound converts to int; a value outside that range (or NaN) would be
// undefined behaviour there, so it is passed through unrounded.
double roundCoordinate(double value)
{
    // 2147483647: the largest int; beyond it qRound cannot represent the result.
    if (!(std::fabs(value) < 2147483647.0))
        return value;
    return double(qRound(value));
}

} // namespace

zgPoint zgPoint::add(const zgPoint &p) const
{
    return zgPoint(x + p.x, y + p.y);
}

zgPoint zgPoint::subtract(const zgPoint &p) const
{
    return zgPoint(x - p.x, y - p.y);
}

zgPoint zgPoint::multiply(double s) const
{
    return zgPoint(x * s, y * s);
}

zgPoint zgPoint::divide(double s) const
{
    return zgPoint(x / s, y / s);
}

zgPoint zgPoint::negate() const
{
    return zgPoint(-x, -y);
}

double zgPoint::dot(const zgPoint &p) const
{
    return x * p.x + y * p.y;
}

double zgPoint::cross(const zgPoint &p) const
{
    return x * p.y - y * p.x;
}

double zgPoint::getLength() const
{
    return std::sqrt(x * x + y * y);
}

double zgPoint::getDistance(const zgPoint &p, bool squared) const
{
    const double dx = p.x - x;
    const double dy = p.y - y;
    const double squaredDistance = dx * dx + dy * dy;
    return squared ? squaredDistance : std::sqrt(squaredDistance);
}

zgPoint zgPoint::normalize(double length) const
{
    const double current = getLength();
    const double scale = current != 0.0 ? length / current : 0.0;
    return zgPoint(x * scale, y * scale);
}

void zgPoint::setLength(double length)
{
    // Deliberately unguarded: the zero vector becomes (NaN, NaN).
    const double scale = length / getLength();
    x *= scale;
    y *= scale;
}

double zgPoint::getAngle(const zgPoint *other) const
{
    return getAngleInRadians(other) * 180.0 / M_PI;
}

double zgPoint::getAngleInRadians(const zgPoint *other) const
{
    if (!other)
        return isZero() ? 0.0 : std::atan2(y, x);
    const double lengthProduct = getLength() * other->getLength();
    // 1e-12: one of the vectors has no length, so no angle is defined.
    if (-1e-12 <= lengthProduct && lengthProduct <= 1e-12)
        return qSNaN();
    const double cosine = qBound(-1.0, dot(*other) / lengthProduct, 1.0);
    return std::acos(cosine);
}

void zgPoint::setAngle(double degrees)
{
    setAngleInRadians(degrees * M_PI / 180.0);
}

void zgPoint::setAngleInRadians(double radians)
{
    if (isZero())
        return;
    const double length = getLength();
    x = std::cos(radians) * length;
    y = std::sin(radians) * length;
}

double zgPoint::getDirectedAngle(const zgPoint &p) const
{
    return std::atan2(cross(p), dot(p)) * 180.0 / M_PI;
}

double zgPoint::getQuadrant() const
{
    if (x >= 0.0)
        return y >= 0.0 ? 1.0 : 4.0;
    return y >= 0.0 ? 2.0 : 3.0;
}

zgPoint zgPoint::rotate(double degrees, const zgPoint *center) const
{
    if (degrees == 0.0)
        return *this;
    const double radians = degrees * M_PI / 180.0;
    const double sine = std::sin(radians);
    const double cosine = std::cos(radians);
    const zgPoint pivot = center ? *center : zgPoint();
    const zgPoint offset = subtract(pivot);
    return zgPoint(cosine * offset.x - sine * offset.y + pivot.x,
                   sine * offset.x + cosine * offset.y + pivot.y);
}

void zgPoint::project(const zgPoint &onto)
{
    if (onto.isZero()) {
        *this = onto.multiply(0.0);
        return;
    }
    const double scale = dot(onto) / onto.dot(onto);
    *this = onto.multiply(scale);
}

void zgPoint::round()
{
    x = roundCoordinate(x);
    y = roundCoordinate(y);
}

zgPoint zgPoint::transform(const zgMatrix *matrix) const
{
    if (!matrix)
        return *this;
    return zgPoint(matrix->a * x + matrix->c * y + matrix->tx,
                   matrix->b * x + matrix->d * y + matrix->ty);
}

void zgPoint::translated(double dx, double dy)
{
    x += dx;
    y += dy;
}

void zgPoint::set(double newX, double newY)
{
    x = newX;
    y = newY;
}

bool zgPoint::isInside(const zgRect &rect) const
{
    return rect.containsPt(*this);
}

bool zgPoint::isZero() const
{
    return isNearZero(x) && isNearZero(y);
}

bool zgPoint::isNaN() const
{
    return qIsNaN(x) || qIsNaN(y);
}

bool zgPoint::operator==(const zgPoint &p) const
{
    return isNearZero(x - p.x) && isNearZero(y - p.y);
}

bool zgPoint::equals(const zgPoint &p, double tolerance) const
{
    return std::fabs(x - p.x) < tolerance && std::fabs(y - p.y) < tolerance;
}

bool zgPoint::isClose(const zgPoint &p, double tolerance) const
{
    return getDistance(p) <= tolerance;
}

bool zgPoint::isCollinear(const zgPoint &p) const
{
    return isCollinear(x, y, p.x, p.y);
}

bool zgPoint::isCollinear(double x1, double y1, double x2, double y2)
{
    const double lengthProduct = std::sqrt((x1 * x1 + y1 * y1) * (x2 * x2 + y2 * y2));
    // 1e-07: the sine of the angle between the vectors that still counts as parallel.
    return std::fabs(x1 * y2 - y1 * x2) <= lengthProduct * 1e-07;
}

bool zgPoint::isOrthogonal(const zgPoint &p) const
{
    return isOrthogonal(x, y, p.x, p.y);
}

bool zgPoint::isOrthogonal(double x1, double y1, double x2, double y2)
{
    const double lengthProduct = std::sqrt((x1 * x1 + y1 * y1) * (x2 * x2 + y2 * y2));
    // 1e-07: the cosine of the angle between the vectors that still counts as square.
    return std::fabs(x1 * x2 + y1 * y2) <= lengthProduct * 1e-07;
}

zgPoint zgPoint::random()
{
    // Two separate statements fix the draw order: y takes the first number.
    const double randomY = qrand();
    const double randomX = qrand();
    return zgPoint(randomX, randomY);
}

QString zgPoint::toString() const
{
    return QStringLiteral("x: %1, y: %2")
        .arg(x, 0, 'g', -1, QLatin1Char(' '))
        .arg(y, 0, 'g', -1, QLatin1Char(' '));
}
