// The intersections of one pair of curves: box rejection, overlaps, and the
// choice of the finder by straightness.
#include "intersect/control_box.h"
#include "intersect/pair_finders.h"

#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>

namespace {

// The end points that coincide (2e-07), for a pair where the finder saw nothing.
void addEndPointMeetings(QVector<double> v1, QVector<double> v2, zgCurve *c1, zgCurve *c2,
                         QList<zgCurveLocation *> &locations, opParam &param)
{
    const zgPoint start1(v1.at(0), v1.at(1));
    const zgPoint end1(v1.at(6), v1.at(7));
    const zgPoint start2(v2.at(0), v2.at(1));
    const zgPoint end2(v2.at(6), v2.at(7));
    if (start1.isClose(start2, 2e-07))
        zgCurve::addLocation(locations, param, v1, c1, 0.0, start1, v2, c2, 0.0, start2, false);
    if (!param.joinedAtStart && start1.isClose(end2, 2e-07))
        zgCurve::addLocation(locations, param, v1, c1, 0.0, start1, v2, c2, 1.0, end2, false);
    if (!param.joinedAtEnd && end1.isClose(start2, 2e-07))
        zgCurve::addLocation(locations, param, v1, c1, 1.0, end1, v2, c2, 0.0, start2, false);
    if (end1.isClose(end2, 2e-07))
        zgCurve::addLocation(locations, param, v1, c1, 1.0, end1, v2, c2, 1.0, end2, false);
}

} // namespace

void zgFindPairIntersections(const QVector<double> &v1, const QVector<double> &v2, zgCurve *c1,
                             zgCurve *c2, QList<zgCurveLocation *> &locations, opParam &param,
                             bool straight1, bool straight2)
{
    if (straight1 && straight2) {
        zgCurve::addLineIntersection(v1, v2, c1, c2, locations, param);
        return;
    }
    const int sizeBefore = locations.size();
    if (!straight1 && !straight2)
        zgCurve::addCurveIntersections(v1, v2, c1, c2, locations, param, 0.0, 1.0, 0.0, 1.0,
                                       false, 0.0, 0);
    else
        zgCurve::addCurveLineIntersections(v1, v2, c1, c2, locations, param);
    // Curves that only touch at their ends escape the finders.
    if (locations.size() == sizeBefore)
        addEndPointMeetings(v1, v2, c1, c2, locations, param);
}

QList<zgCurveLocation *> zgCurve::getIntersections(QVector<double> v1, QVector<double> v2,
                                                   zgCurve *c1, zgCurve *c2,
                                                   QList<zgCurveLocation *> &locations,
                                                   opParam &param)
{
    if (v2.isEmpty())
        return getSelfIntersection(v1, c1, locations, param);
    if (v1.size() < 8 || v2.size() < 8)
        return locations;
    if (!zgControlBox(v1).touchedBy(zgControlBox(v2)))
        return locations;

    const QVector<QVector<double>> overlaps = getOverlaps(v1, v2);
    if (!overlaps.isEmpty()) {
        const zgPoint noPoint(qQNaN(), qQNaN());
        for (const QVector<double> &pair : overlaps)
            addLocation(locations, param, v1, c1, pair.at(0), noPoint, v2, c2, pair.at(1),
                        noPoint, true);
        return locations;
    }

    zgFindPairIntersections(v1, v2, c1, c2, locations, param, isStraight(v1), isStraight(v2));
    return locations;
}

QList<zgCurveLocation *> zgCurve::getIntersectionscurve(zgCurve *other)
{
    opParam param;
    QList<zgCurveLocation *> list;
    // An empty second array asks for the loop of this curve.
    const QVector<double> v2 = other && other != this ? other->getValues(nullptr)
                                                      : QVector<double>();
    return getIntersections(getValues(nullptr), v2, this, other, list, param);
}
