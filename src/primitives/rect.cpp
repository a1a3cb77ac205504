// zgRect: an axis-aligned rectangle stored as corner and extent.
#include <zgraphics/primitives.h>

#include <QtCore/QtGlobal>

#include <algorithm>
#include <cmath>

namespace {

bool isNearZero(double value)
{
    // 1e-12: a difference this small counts as zero.
    return -1e-12 <= value && value <= 1e-12;
}

// A rectangle without positive extent in both directions takes no part in a union.
bool isAbsent(const zgRect &r)
{
    return r.width <= 0.0 || r.height <= 0.0;
}

zgRect fromSides(double left, double top, double right, double bottom)
{
    return zgRect(left, top, right - left, bottom - top);
}

} // namespace

zgRect::zgRect(const zgPoint &p1, const zgPoint &p2)
    : x(std::min(p1.x, p2.x)),
      y(std::min(p1.y, p2.y)),
      width(std::fabs(p2.x - p1.x)),
      height(std::fabs(p2.y - p1.y))
{
}

zgPoint zgRect::topLeft() const
{
    return zgPoint(left(), top());
}

zgPoint zgRect::topRight() const
{
    return zgPoint(right(), top());
}

zgPoint zgRect::bottomLeft() const
{
    return zgPoint(left(), bottom());
}

zgPoint zgRect::bottomRight() const
{
    return zgPoint(right(), bottom());
}

zgPoint zgRect::center() const
{
    return zgPoint(x + width * 0.5, y + height * 0.5);
}

zgSize zgRect::size() const
{
    return zgSize(width, height);
}

void zgRect::set(double newX, double newY, double w, double h)
{
    x = newX;
    y = newY;
    width = w;
    height = h;
}

void zgRect::reset()
{
    set(0.0, 0.0, 0.0, 0.0);
}

void zgRect::translate(double dx, double dy)
{
    x += dx;
    y += dy;
}

void zgRect::adjust(double dx1, double dy1, double dx2, double dy2)
{
    x += dx1;
    y += dy1;
    width += dx2 - dx1;
    height += dy2 - dy1;
}

void zgRect::expand(double dw, double dh)
{
    x -= dw * 0.5;
    y -= dh * 0.5;
    width += dw;
    height += dh;
}

zgRect zgRect::setCenter(const zgPoint &p) const
{
    return zgRect(p.x - width * 0.5, p.y - height * 0.5, width, height);
}

zgRect zgRect::include(const zgPoint &p) const
{
    return fromSides(std::min(left(), p.x), std::min(top(), p.y),
                     std::max(right(), p.x), std::max(bottom(), p.y));
}

zgRect zgRect::intersect(const zgRect &r) const
{
    return fromSides(std::max(left(), r.left()), std::max(top(), r.top()),
                     std::min(right(), r.right()), std::min(bottom(), r.bottom()));
}

zgRect zgRect::unite(const zgRect &r) const
{
    if (isAbsent(r))
        return *this;
    if (isAbsent(*this))
        return r;
    return fromSides(std::min(left(), r.left()), std::min(top(), r.top()),
                     std::max(right(), r.right()), std::max(bottom(), r.bottom()));
}

bool zgRect::containsPt(const zgPoint &p) const
{
    return p.x > left() && p.x < right() && p.y > top() && p.y < bottom();
}

bool zgRect::containsRect(const zgRect &r) const
{
    return r.left() >= left() && r.right() <= right() && r.top() >= top()
        && r.bottom() <= bottom();
}

bool zgRect::intersects(const zgRect &r) const
{
    return r.right() > left() && r.left() < right() && r.bottom() > top()
        && r.top() < bottom();
}

bool zgRect::touches(const zgRect &r) const
{
    return r.right() >= left() && r.left() <= right() && r.bottom() >= top()
        && r.top() <= bottom();
}

bool zgRect::isEmpty() const
{
    // 1e-12: an extent this small counts as none.
    return width < 1e-12 || height < 1e-12;
}

double zgRect::getArea() const
{
    return width * height;
}

bool zgRect::operator==(const zgRect &r) const
{
    return isNearZero(x - r.x) && isNearZero(y - r.y) && isNearZero(width - r.width)
        && isNearZero(height - r.height);
}

int zgRect::nearSide(const QPointF &p) const
{
    const zgPoint middle = center();
    // 3.0: a point this close to the centre on both axes is near no edge.
    if (std::fabs(p.x() - middle.x) < 3.0 && std::fabs(p.y() - middle.y) < 3.0)
        return 0;
    // Distances to the infinite lines of top, bottom, left and right, in the
    // order that breaks ties.
    const double distances[4] = {std::fabs(p.y() - top()), std::fabs(p.y() - bottom()),
                                 std::fabs(p.x() - left()), std::fabs(p.x() - right())};
    const double nearest = *std::min_element(distances, distances + 4);
    for (int side = 0; side < 4; ++side) {
        // 0.0001: distances this close are a tie, won by the earlier edge.
        if (std::fabs(distances[side] - nearest) < 0.0001)
            return side + 1;
    }
    // Only a NaN coordinate gets here: no edge is nearest.
    return 0;
}

QString zgRect::toString() const
{
    return QStringLiteral("x: %1, y: %2, width: %3, height: %4")
        .arg(x, 0, 'g', -1, QLatin1Char(' '))
        .arg(y, 0, 'g', -1, QLatin1Char(' '))
        .arg(width, 0, 'g', -1, QLatin1Char(' '))
        .arg(height, 0, 'g', -1, QLatin1Char(' '));
}
