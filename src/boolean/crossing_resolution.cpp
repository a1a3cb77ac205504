// Crossing resolution: self-overlaps removed, self-crossings traced into
// simple loops, loops nested by containment and oriented against their
// containers.
#include <zgraphics/model.h>

#include <QtCore/QHash>

#include <algorithm>
#include <cmath>

namespace {

// The contour's monotone pieces, deleted with the object unless they are the
// contour's own member list.
class MonoPieces
{
public:
    explicit MonoPieces(zgPath *contour)
        : m_owned(contour->monos.isEmpty()), m_records(contour->getMonoCurves()) {}
    ~MonoPieces()
    {
        if (m_owned)
            qDeleteAll(m_records);
    }
    MonoPieces(const MonoPieces &) = delete;
    MonoPieces &operator=(const MonoPieces &) = delete;

    const QList<zgMono *> &records() const { return m_records; }

private:
    bool m_owned;
    QList<zgMono *> m_records;
};

// The tight bounds; a flat box is given a side of one unit, so that a
// horizontal or vertical line weighs by its length.
zgRect correctedBounds(zgPath *contour)
{
    zgRect bounds = contour->getBounds(zgBoundOpt(), zgStyle(), nullptr);
    if (bounds.width > 0.0 && bounds.height == 0.0)
        bounds.height = 1.0;
    else if (bounds.width == 0.0 && bounds.height > 0.0)
        bounds.width = 1.0;
    return bounds;
}

// The containment test of the fill: inside the handle bounds, then a
// winding, taken modulo 2 under the even-odd rule, that is not 0.
bool containsPoint(zgPath *contour, const zgPoint &point, bool evenOdd, const MonoPieces &pieces)
{
    const zgBoundOpt handleOnly(false, false, true, true);
    const zgStyle style(true, true, evenOdd);
    if (!point.isInside(contour->getBounds(handleOnly, style, nullptr)))
        return false;
    int winding = XPath::getWinding(point, pieces.records(), false).winding;
    if (evenOdd)
        winding &= 1;
    return winding != 0;
}

bool containsPoint(zgPath *contour, const zgPoint &point, bool evenOdd)
{
    const MonoPieces pieces(contour);
    return containsPoint(contour, point, evenOdd, pieces);
}

// Orients each loop against its nearest container, found among the loops
// before it, and like the first loop when none holds it. Under the non-zero
// rule a loop that, with its first container, still winds non-zero on both
// is dropped. Open loops keep their direction.
QVector<zgPath *> fixNesting(const QVector<zgPath *> &paths, bool evenOdd)
{
    zgPath *first = paths.first();
    QVector<zgPath *> items{first};
    QVector<int> winding;
    QVector<bool> excluded(paths.size(), false);
    for (zgPath *path : paths)
        winding.append(path->isClockwise() ? 1 : -1);
    for (int i = 1; i < paths.size(); ++i) {
        zgPath *path = paths.at(i);
        const zgPoint point = path->getInteriorPoint(evenOdd);
        bool isContained = false;
        zgPath *container = nullptr;
        for (int j = i - 1; j >= 0 && !container && !excluded.at(i); --j) {
            if (!containsPoint(paths.at(j), point, evenOdd))
                continue;
            if (!evenOdd && !isContained) {
                winding[i] += winding.at(j);
                if (winding.at(i) != 0 && winding.at(j) != 0) {
                    excluded[i] = true;
                    break;
                }
            }
            isContained = true;
            if (!excluded.at(j))
                container = paths.at(j);
        }
        if (excluded.at(i))
            continue;
        const bool wanted = container ? !container->isClockwise() : first->isClockwise();
        if (path->closed)
            path->setClockwise(wanted);
        items.append(path);
    }
    return items;
}

} // namespace

zgPoint zgPath::getInteriorPoint(bool evenOdd)
{
    zgPoint point = correctedBounds(this).center();
    const MonoPieces pieces(this);
    if (containsPoint(this, point, evenOdd, pieces))
        return point;
    // The horizontal line through the centre: the x of every crossing with a
    // piece that spans py, counting the upper end of a rising piece and the
    // lower end of a falling one.
    const double py = point.y;
    QVector<double> crossings;
    QVector<double> roots;
    for (zgMono *record : pieces.records()) {
        const QVector<double> &values = record->values;
        const bool spans = record->winding == 1 ? (values[1] < py && py <= values[7])
                                                : (values[7] <= py && py < values[1]);
        if (!spans)
            continue;
        const int count = zgCurve::solveCubic(values, 1, py, roots, 0, 1);
        for (int k = count - 1; k >= 0; --k)
            crossings.append(zgCurve::getPoint(values, roots.at(k)).x);
    }
    if (crossings.size() > 1) {
        std::sort(crossings.begin(), crossings.end());
        point.x = (crossings.at(0) + crossings.at(1)) * 0.5;
    }
    return point;
}

namespace {

// Partner and chain pointers hold no reference. Before the held locations
// are released, those that only this hold keeps alive are taken out of their
// partner and their chain, so that no location left on a segment points at
// freed memory when a later division walks its chain.
void forgetDying(const QList<zgCurveLocation *> &held)
{
    QHash<zgCurveLocation *, int> holds;
    for (zgCurveLocation *location : held)
        ++holds[location];
    for (zgCurveLocation *location : held) {
        if (location->refCount > holds.value(location))
            continue;
        zgCurveLocation *partner = location->intersection();
        if (partner && partner->intersection() == location)
            partner->setIntersection(nullptr);
        zgCurveLocation *previous = location->previous();
        zgCurveLocation *next = location->next();
        if (previous && previous->next() == location)
            previous->setNext(next);
        if (next && next->previous() == location)
            next->setPrevious(previous);
        location->setPrevious(nullptr);
        location->setNext(nullptr);
    }
}

} // namespace

XPath *XPath::resolveCrossings(bool sort)
{
    QVector<zgPath *> paths = children;
    const QVector<zgPath *> before = children;
    bool hasOverlaps = false;
    bool hasCrossings = false;
    QList<zgCurveLocation *> locations = getIntersections(
            nullptr,
            [&hasOverlaps, &hasCrossings](zgCurveLocation *location) {
                if (location->overlap)
                    hasOverlaps = true;
                const bool crossing = location->isCrossing();
                if (crossing)
                    hasCrossings = true;
                return location->overlap || crossing;
            },
            false);
    locations = zgCurveLocation::expand(locations);
    // The locations come unowned; hold them while segments link to them and
    // are cut away, so that each dies with its last holder at the end.
    for (zgCurveLocation *location : locations)
        location->addRef();

    // The segments at the overlaps are held too, until the crossings are
    // divided: a removed segment must stay readable while locations still
    // name it, which is how the division tells that their curve has gone.
    QList<zgSegment *> held;
    if (hasOverlaps) {
        const QList<zgCurveLocation *> overlaps = divideLocations(locations, 1);
        for (zgCurveLocation *location : overlaps) {
            if (zgSegment *segment = location->segmentM()) {
                segment->addRef();
                held.append(segment);
            }
        }
        for (int k = overlaps.size() - 1; k >= 0; --k) {
            zgSegment *segment = overlaps.at(k)->segmentM();
            if (!segment || !segment->path)
                continue;
            zgSegment *previous = segment->getPrevious();
            zgSegment *next = segment->getNext();
            const bool insideOverlap = previous && next && previous->intersection()
                    && previous->intersection()->overlap && next->intersection()
                    && next->intersection()->overlap;
            if (!insideOverlap)
                continue;
            segment->remove();
            previous->setHandleOut(zgPoint(0.0, 0.0));
            next->setHandleIn(zgPoint(0.0, 0.0));
            zgCurve *curve = previous->getCurve();
            // An exact 0.0: the two ends of the leftover line coincide.
            if (curve && curve->isStraight() && curve->getLength() == 0.0)
                previous->remove();
        }
    }

    bool changed = false;
    if (hasCrossings) {
        divideLocations(locations, hasOverlaps ? 2 : 0);
        QList<zgSegment *> segments;
        for (zgPath *child : children)
            segments.append(child->segments);
        paths = tracePaths(segments, 0);
        changed = true;
    } else if (hasOverlaps) {
        // Without a trace the contours stay, and their segments still link
        // to the overlap locations, some of which name removed segments.
        // Those links mean nothing outside this resolution: cleared, so that
        // the operator that follows starts from unlinked outlines.
        for (zgPath *child : qAsConst(children)) {
            for (zgSegment *segment : qAsConst(child->segments))
                segment->setIntersection(nullptr);
        }
    }
    forgetDying(locations);
    for (zgCurveLocation *location : locations)
        location->release();
    for (zgSegment *segment : held)
        segment->release();

    if (paths.size() < 2 && !changed)
        return this;
    const QVector<zgPath *> traced = changed ? paths : before;
    if (paths.size() >= 2) {
        if (sort) {
            QVector<double> areas;
            for (zgPath *path : paths)
                areas.append(correctedBounds(path).getArea());
            QVector<int> order(paths.size());
            for (int k = 0; k < order.size(); ++k)
                order[k] = k;
            std::stable_sort(order.begin(), order.end(),
                             [&areas](int a, int b) { return areas.at(a) > areas.at(b); });
            QVector<zgPath *> sorted;
            for (int k : order)
                sorted.append(paths.at(k));
            paths = sorted;
        }
        paths = fixNesting(paths, evenOdd);
    }

    // Every contour of the list as it came out of the trace (or the children
    // before sorting) is held across setChildren, which drops the old
    // children, and released afterwards: kept contours end with the one
    // reference of this compound, and contours dropped from the list die here.
    for (zgPath *path : traced)
        path->addRef();
    setChildren(paths);
    for (zgPath *path : traced)
        path->release();
    return this;
}
