// XPath::getIntersections and getCrossings: every pair of curves of two
// compound paths, or of one with itself, whose boxes touch, after a
// rejection of the whole paths by their bounds.
#include "intersect/box_index.h"
#include "intersect/pair_finders.h"
#include "intersect/separation.h"

#include <zgraphics/model.h>

namespace {

// The union of a compound's contour bounds, with a flat contour widened to
// one unit so that it still has an area for the touch test.
zgRect sweepBounds(const XPath &path, zgRect (*contourBounds)(const zgPath *))
{
    zgRect united;
    for (const zgPath *child : path.children) {
        if (!child)
            continue;
        zgRect bounds = contourBounds(child);
        if (bounds.width > 0.0 && bounds.height == 0.0)
            bounds.height = 1.0;
        else if (bounds.width == 0.0 && bounds.height > 0.0)
            bounds.width = 1.0;
        united = united.unite(bounds);
    }
    return united;
}

// Both coordinates of the two end points agree within 1e-12: a single curve
// that closes on itself.
bool closesOnItself(const QVector<double> &values)
{
    return zgNumeric::isZero(values.at(0) - values.at(6))
            && zgNumeric::isZero(values.at(1) - values.at(7));
}

} // namespace

QList<zgCurveLocation *> XPath::getIntersections(XPath *other,
                                                 std::function<bool(zgCurveLocation *)> filter,
                                                 bool firstOnly)
{
    const bool self = !other || other == this;
    if (!self) {
        auto contourBounds = [](const zgPath *contour) {
            return zgPath::getBounds(contour->segments, contour->closed, QVector<double>{0.0, 0.0},
                                     nullptr);
        };
        if (!sweepBounds(*this, contourBounds).touches(sweepBounds(*other, contourBounds)))
            return QList<zgCurveLocation *>();
    }

    const QList<zgCurve *> curves1 = getCurves();
    const QList<zgCurve *> curves2 = self ? curves1 : other->getCurves();
    const int length1 = curves1.size();
    const int length2 = curves2.size();
    QVector<QVector<double>> values2;
    values2.reserve(length2);
    std::vector<zgControlBox> boxes2;
    boxes2.reserve(length2);
    std::vector<zgCurveHull> hulls2;
    hulls2.reserve(length2);
    for (zgCurve *curve : curves2) {
        values2.append(curve->getValues(nullptr));
        boxes2.emplace_back(values2.last());
        hulls2.emplace_back(values2.last());
    }
    // Pairs whose boxes do not touch are passed over unseen: the pair test
    // would reject them with no effect. The others run in the order of the
    // two nested loops over all pairs.
    const zgControlBoxIndex index2(boxes2);

    std::vector<int> partners;

    // One list per contour of this compound keeps each contour's sorted order apart.
    QList<QList<zgCurveLocation *>> groups;
    zgPath *lastContour = nullptr;
    for (int i = 0; i < length1; ++i) {
        zgCurve *curve1 = curves1.at(i);
        const QVector<double> values1 = self ? values2.at(i) : curve1->getValues(nullptr);
        if (groups.isEmpty() || curve1->path() != lastContour) {
            lastContour = curve1->path();
            groups.append(QList<zgCurveLocation *>());
        }
        QList<zgCurveLocation *> &locations = groups.last();
        if (self) {
            opParam param;
            param.filter = filter;
            param.joinedAtStart = length1 == 1 && closesOnItself(values1);
            zgCurve::getSelfIntersection(values1, curve1, locations, param);
        }
        const int firstPartner = self ? i + 1 : 0;
        // The first pair of the first curve would end the search before it is compared.
        if (firstOnly && firstPartner < length2)
            return locations;
        const zgControlBox box1 = self ? boxes2.at(i) : zgControlBox(values1);
        const zgCurveHull hull1 = self ? hulls2.at(i) : zgCurveHull(values1);
        index2.touching(box1, firstPartner, partners);
        for (int j : partners) {
            zgCurve *curve2 = curves2.at(j);
            opParam param;
            param.filter = filter;
            if (self) {
                param.joinedAtStart = curve1->getPrevious() == curve2;
                param.joinedAtEnd = curve1->getNext() == curve2;
            }
            const zgCurveHull &hull2 = hulls2.at(j);
            const QVector<double> &curveValues2 = values2.at(j);
            if (hull1.endsMayLieOn(hull2)) {
                zgCurve::getIntersections(values1, curveValues2, curve1, curve2, locations, param);
            } else if (hull1.straight() || hull2.straight()) {
                // Apart, the line and the curve and line finders match
                // nothing, and neither do the end points.
                if (!hull1.apartFrom(hull2))
                    zgFindPairIntersections(values1, curveValues2, curve1, curve2, locations,
                                            param, hull1.straight(), hull2.straight());
            } else {
                // The clipping runs whatever the distance: where both curves
                // lie on one line, it can pair points far apart.
                zgFindPairIntersections(values1, curveValues2, curve1, curve2, locations, param,
                                        false, false);
            }
        }
    }

    QList<zgCurveLocation *> result;
    for (const QList<zgCurveLocation *> &group : qAsConst(groups))
        result.append(group);
    return result;
}

QList<zgCurveLocation *> XPath::getCrossings(XPath *other)
{
    return getIntersections(other, [](zgCurveLocation *location) {
        return location->overlap || location->isCrossing();
    }, false);
}
