// The common stretch of two curves that lie on each other.
#include <zgraphics/model.h>

#include <cmath>

namespace {

// The time that means "none".
const double kNoTime = -100.0;

zgPoint startOf(const QVector<double> &v)
{
    return zgPoint(v.at(0), v.at(1));
}

zgPoint endOf(const QVector<double> &v)
{
    return zgPoint(v.at(6), v.at(7));
}

double squaredChord(const QVector<double> &v)
{
    const double dx = v.at(6) - v.at(0);
    const double dy = v.at(7) - v.at(1);
    return dx * dx + dy * dy;
}

// Geometric tolerance: a point this close to the line lies on it.
bool isOnLine(const zgLine &line, double x, double y)
{
    return line.getDistance(zgPoint(x, y)) < 2e-07;
}

bool controlPointsOnLine(const zgLine &line, const QVector<double> &v)
{
    return isOnLine(line, v.at(2), v.at(3)) && isOnLine(line, v.at(4), v.at(5));
}

// Whether the two curves may share a stretch at all: straight and curved
// never do; curved ones whose handles all lie on one line count as collinear.
bool mayOverlap(const QVector<double> &v1, const QVector<double> &v2)
{
    const bool straight1 = zgCurve::isStraight(v1);
    const bool straight2 = zgCurve::isStraight(v2);
    const bool straightBoth = straight1 && straight2;
    // The longer chord is the base line.
    const bool firstShorter = squaredChord(v1) < squaredChord(v2);
    const QVector<double> &l1 = firstShorter ? v2 : v1;
    const QVector<double> &l2 = firstShorter ? v1 : v2;
    const zgLine line(startOf(l1), endOf(l1), false);

    const bool endsOnLine = isOnLine(line, l2.at(0), l2.at(1)) && isOnLine(line, l2.at(6), l2.at(7));
    if (!endsOnLine) {
        if (straightBoth)
            return false;
    } else if (!straightBoth && controlPointsOnLine(line, l1) && controlPointsOnLine(line, l2)) {
        return true;
    }
    return straight1 == straight2;
}

// The pairs (time on v1, time on v2) of the ends of either curve that lie on
// the other, at most two, the second apart from the first in both times.
QVector<QVector<double>> findEndPairs(const QVector<double> &v1, const QVector<double> &v2)
{
    const QVector<double> v[2] = { v1, v2 };
    QVector<QVector<double>> pairs;
    for (int i = 0; i < 2; ++i) {
        for (int e = 0; e < 2 && pairs.size() < 2; ++e) {
            const zgPoint end = e == 0 ? startOf(v[i]) : endOf(v[i]);
            const double t = zgCurve::getTimeOf(v[1 - i], end);
            if (t != kNoTime) {
                const QVector<double> pair = i == 0 ? QVector<double> { double(e), t }
                                                    : QVector<double> { t, double(e) };
                // 4e-07: a pair this close to the first one is the same end,
                // and so tiny overlaps do not count.
                if (pairs.isEmpty()
                    || (std::fabs(pair.at(0) - pairs.at(0).at(0)) > 4e-07
                        && std::fabs(pair.at(1) - pairs.at(0).at(1)) > 4e-07))
                    pairs.append(pair);
            }
            // No end of the first curve lies on the second and the start of
            // the second does not lie on the first: they cannot overlap.
            if (i == 1 && pairs.isEmpty())
                return pairs;
        }
    }
    return pairs;
}

} // namespace

QVector<QVector<double>> zgCurve::getOverlaps(QVector<double> v1, QVector<double> v2)
{
    if (v1.size() < 8 || v2.size() < 8)
        return {};
    if (!mayOverlap(v1, v2))
        return {};
    const QVector<QVector<double>> pairs = findEndPairs(v1, v2);
    if (pairs.size() != 2)
        return {};
    if (!(isStraight(v1) && isStraight(v2))) {
        // End points alone do not make an overlap: the handles of the common
        // stretch must agree, within the geometric tolerance.
        const QVector<double> o1 = getPart(v1, pairs.at(0).at(0), pairs.at(1).at(0));
        const QVector<double> o2 = getPart(v2, pairs.at(0).at(1), pairs.at(1).at(1));
        for (int k = 2; k <= 5; ++k) {
            if (std::fabs(o1.at(k) - o2.at(k)) > 2e-07)
                return {};
        }
    }
    return pairs;
}
