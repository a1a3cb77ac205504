// Winding numbers: contours cut into y-monotone pieces, and the count of
// signed crossings of a horizontal ray through a point.
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>
#include <cmath>
#include <limits>

// Monotone pieces -------------------------------------------------------------

QList<zgMono *> zgPath::getMonoCurves()
{
    if (!monos.isEmpty())
        return monos;
    QList<zgMono *> pieces;
    zgMono *lastNonHorizontal = nullptr;
    const QList<zgCurve *> contourCurves = getCurves();
    for (const zgCurve *curve : contourCurves)
        addMonoCurve(zgCurve::getValues(curve->segment1(), curve->segment2(), nullptr), pieces,
                     lastNonHorizontal);
    if (!closed && segments.size() > 1) {
        // An open contour winds as if a straight line closed it.
        const zgPoint last = segments.last()->point;
        const zgPoint first = segments.first()->point;
        const QVector<double> closing = { last.x, last.y, last.x, last.y,
                                          first.x, first.y, first.x, first.y };
        addMonoCurve(closing, pieces, lastNonHorizontal);
    }
    if (!pieces.isEmpty())
        pieces.first()->last = lastNonHorizontal;
    return pieces;
}

void zgPath::addMonoCurve(const QVector<double> &values, QList<zgMono *> &monos,
                          zgMono *&lastNonHorizontal)
{
    if (zgCurve::getLength(values, 0.0, 1.0) == 0.0)
        return;
    if (zgCurve::isStraight(values)) {
        insertMonoCurve(values, monos, lastNonHorizontal);
        return;
    }
    const double y0 = values.at(1);
    const double y1 = values.at(3);
    const double y2 = values.at(5);
    const double y3 = values.at(7);
    const bool firstFalls = y0 >= y1;
    const bool middleFalls = y1 >= y2;
    const bool lastFalls = y2 >= y3;
    if (firstFalls == middleFalls && middleFalls == lastFalls) {
        // A monotone control polygon makes a monotone curve.
        insertMonoCurve(values, monos, lastNonHorizontal);
        return;
    }
    // The zeros of dy/dt, away from the ends: 4e-07 and 0.9999996 are the
    // times that count as the ends themselves.
    const double a = 3.0 * (y1 - y2) - y0 + y3;
    const double b = 2.0 * (y0 + y2) - 4.0 * y1;
    const double c = y1 - y0;
    QVector<double> roots;
    const int count = zgNumeric::solveQuadratic(a, b, c, roots, 4e-07, 0.9999996);
    if (count < 1) {
        insertMonoCurve(values, monos, lastNonHorizontal);
        return;
    }
    std::sort(roots.begin(), roots.begin() + count);
    const double t1 = roots.at(0);
    const QVector<QVector<double>> halves = zgCurve::subdivide(values, t1);
    insertMonoCurve(halves.at(0), monos, lastNonHorizontal);
    QVector<double> rest = halves.at(1);
    if (count > 1) {
        // The second extreme, as a time on the part after the first one.
        const double t2 = roots.at(1);
        const QVector<QVector<double>> parts = zgCurve::subdivide(rest, (t2 - t1) / (1.0 - t1));
        insertMonoCurve(parts.at(0), monos, lastNonHorizontal);
        rest = parts.at(1);
    }
    insertMonoCurve(rest, monos, lastNonHorizontal);
}

void zgPath::insertMonoCurve(const QVector<double> &values, QList<zgMono *> &monos,
                             zgMono *&lastNonHorizontal)
{
    const double x0 = values.at(0);
    const double y0 = values.at(1);
    const double x3 = values.at(6);
    const double y3 = values.at(7);
    // Unguarded on purpose: a vertical piece gives an infinite slope, and a
    // piece whose ends coincide gives NaN; both fail the test below and so
    // count as rising or falling (NaN as rising).
    const double slope = std::abs((y0 - y3) / (x0 - x3));
    int32_t winding = 0;
    // 2e-07: a rise below this per unit of run is horizontal.
    if (!(slope < 2e-07))
        winding = y0 > y3 ? -1 : 1;
    zgMono *mono = new zgMono(values, winding);
    monos.append(mono);
    if (winding != 0)
        lastNonHorizontal = mono;
}

QList<zgMono *> XPath::getMonoCurves()
{
    QList<zgMono *> pieces;
    for (zgPath *child : children)
        pieces.append(child->getMonoCurves());
    return pieces;
}

// Winding query ---------------------------------------------------------------

namespace {

// The ray form: signed crossings left and right of the point, each counted
// once even where two pieces meet at the ray's ordinate.
zgWinding getRayWinding(const zgPoint &point, const QList<zgMono *> &curves)
{
    const double px = point.x;
    const double py = point.y;
    // 2e-07: a crossing this close in x lies on the point itself.
    const double xBefore = px - 2e-07;
    const double xAfter = px + 2e-07;
    int windLeft = 0;
    int windRight = 0;
    int windLeftOnCurve = 0;
    int windRightOnCurve = 0;
    int prevWinding = 0;
    double prevXEnd = 0.0;
    bool isOnCurve = false;
    QVector<double> roots;
    for (int i = 0; i < curves.size(); ++i) {
        const zgMono *mono = curves.at(i);
        const QVector<double> &values = mono->values;
        if (mono->last) {
            // A new contour: its first piece continues from its last one.
            prevWinding = mono->last->winding;
            prevXEnd = mono->last->values.at(6);
            isOnCurve = false;
        }
        const double yStart = values.at(1);
        const double yEnd = values.at(7);
        const bool spansPoint = (yStart <= py && py <= yEnd) || (yEnd <= py && py <= yStart);
        if (spansPoint && mono->winding != 0) {
            double x = qQNaN();
            if (py == yStart)
                x = values.at(0);
            else if (py == yEnd)
                x = values.at(6);
            else if (zgCurve::solveCubic(values, 1.0, py, roots, 0.0, 1.0) == 1)
                x = zgCurve::getPoint(values, roots.at(0)).x;
            if (x >= xBefore && x <= xAfter) {
                isOnCurve = true;
            } else if (!qIsNaN(x)) {
                // At its start the piece repeats the crossing at the end of
                // the previous one, unless the outline turns back through
                // the ray there.
                const bool turnsBack = !((px - x) * (px - prevXEnd) >= 0.0);
                const bool repeatsPrevious = py == yStart
                        && (mono->winding == prevWinding || turnsBack);
                if (!repeatsPrevious) {
                    if (x < xBefore)
                        windLeft += mono->winding;
                    else
                        windRight += mono->winding;
                }
            }
            prevWinding = mono->winding;
            prevXEnd = values.at(6);
        } else if (spansPoint && (px - values.at(6)) * (px - values.at(0)) <= 0.0) {
            isOnCurve = true;
        }
        const bool endsLoop = i == curves.size() - 1 || curves.at(i + 1)->last;
        if (isOnCurve && endsLoop) {
            ++windLeftOnCurve;
            --windRightOnCurve;
        }
    }
    if (windLeft == 0 && windRight == 0) {
        windLeft = windLeftOnCurve;
        windRight = windRightOnCurve;
    }
    return zgWinding(std::max(std::abs(windLeft), std::abs(windRight)),
                     (windLeft == 0) != (windRight == 0));
}

// The shift form: the ray form asked halfway to the nearest outline above
// and below the point on its vertical.
zgWinding getShiftedWinding(const zgPoint &point, const QList<zgMono *> &curves)
{
    const double px = point.x;
    const double py = point.y;
    const double infinity = std::numeric_limits<double>::infinity();
    double yTop = -infinity;
    double yBottom = infinity;
    QVector<double> roots;
    for (const zgMono *mono : curves) {
        // A count of -1 (every time solves, a vertical piece on the line)
        // lists no root.
        const int count = zgCurve::solveCubic(mono->values, 0.0, px, roots, 0.0, 1.0);
        for (int j = count - 1; j >= 0; --j) {
            const double y = zgCurve::getPoint(mono->values, roots.at(j)).y;
            // 2e-07: outline this close to the point is the point's own.
            if (y < py - 2e-07 && y > yTop)
                yTop = y;
            else if (y > py + 2e-07)
                yBottom = std::min(yBottom, y);
        }
    }
    yTop = (yTop + py) * 0.5;
    yBottom = (yBottom + py) * 0.5;
    int windLeft = 0;
    int windRight = 0;
    if (yTop > -infinity)
        windLeft = getRayWinding(zgPoint(px, yTop), curves).winding;
    if (yBottom < infinity)
        windRight = getRayWinding(zgPoint(px, yBottom), curves).winding;
    return zgWinding(std::max(windLeft, windRight), (windLeft == 0) != (windRight == 0));
}

} // namespace

zgWinding XPath::getWinding(const zgPoint &point, QList<zgMono *> curves, bool horizontal)
{
    return horizontal ? getShiftedWinding(point, curves) : getRayWinding(point, curves);
}

int XPath::getWinding(const zgPoint &point, bool horizontal)
{
    const QList<zgMono *> pieces = getMonoCurves();
    const int winding = getWinding(point, pieces, horizontal).winding;
    for (zgMono *piece : pieces) {
        // A child that keeps pieces in its own list hands out those records
        // themselves; they stay the child's.
        const bool keptByChild = std::any_of(children.cbegin(), children.cend(),
                                             [piece](const zgPath *child) {
                                                 return child->monos.contains(piece);
                                             });
        if (!keptByChild)
            delete piece;
    }
    return winding;
}

int zgPath::getWinding(const zgPoint &point, bool horizontal)
{
    // The pieces are left allocated.
    return XPath::getWinding(point, getMonoCurves(), horizontal).winding;
}
