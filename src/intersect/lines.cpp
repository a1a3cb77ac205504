// Intersections that involve straight curves: two chords, and a curve with a
// straight curve.
#include <zgraphics/model.h>

#include <cmath>

namespace {

// The time that means "none".
const double kNoTime = -100.0;

} // namespace

void zgCurve::addLineIntersection(QVector<double> v1, QVector<double> v2, zgCurve *c1,
                                  zgCurve *c2, QList<zgCurveLocation *> &locations,
                                  opParam &param)
{
    if (v1.size() < 8 || v2.size() < 8)
        return;
    // The chords as finite lines: a crossing beyond an end does not count.
    const zgPoint crossing = zgLine::intersect(v1.at(0), v1.at(1), v1.at(6), v1.at(7),
                                               v2.at(0), v2.at(1), v2.at(6), v2.at(7),
                                               false, false);
    if (crossing.isNaN())
        return;
    // Both times are recovered from the point.
    addLocation(locations, param, v1, c1, kNoTime, crossing, v2, c2, kNoTime, crossing, false);
}

void zgCurve::addCurveLineIntersections(QVector<double> v1, QVector<double> v2, zgCurve *c1,
                                        zgCurve *c2, QList<zgCurveLocation *> &locations,
                                        opParam &param)
{
    if (v1.size() < 8 || v2.size() < 8)
        return;
    const bool flip = isStraight(v1);
    const QVector<double> curved = flip ? v2 : v1;
    const QVector<double> straight = flip ? v1 : v2;

    // Turn the curve so that the line lies on the x axis; only the heights
    // above it are needed, stored in both coordinate slots.
    const double lx1 = straight.at(0);
    const double ly1 = straight.at(1);
    const double angle = std::atan2(-(straight.at(7) - ly1), straight.at(6) - lx1);
    const double s = std::sin(angle);
    const double c = std::cos(angle);
    QVector<double> heights(8);
    for (int k = 0; k < 4; ++k) {
        const double r = (curved.at(2 * k) - lx1) * s + (curved.at(2 * k + 1) - ly1) * c;
        heights[2 * k] = r;
        heights[2 * k + 1] = r;
    }

    // The end times are kept on purpose; addLocation filters them.
    QVector<double> roots;
    const int count = solveCubic(heights, 1.0, 0.0, roots, 0.0, 1.0);
    for (int i = 0; i < count && i < roots.size(); ++i) {
        const double tc = roots.at(i);
        const zgPoint pc = _evaluate(curved, tc, 0, false);
        const double tl = getTimeOf(straight, pc);
        if (tl == kNoTime)
            continue; // beyond the ends of the line
        const zgPoint pl = _evaluate(straight, tl, 0, false);
        const double t1 = flip ? tl : tc;
        const double t2 = flip ? tc : tl;
        const zgPoint point1 = flip ? pl : pc;
        const zgPoint point2 = flip ? pc : pl;
        // 4e-07: the joined end of a very short curve would report its own start.
        if (param.joinedAtEnd && !(t2 > 4e-07))
            continue;
        addLocation(locations, param, v1, c1, t1, point1, v2, c2, t2, point2, false);
    }
}
