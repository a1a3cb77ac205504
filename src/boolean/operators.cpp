// The boolean operators on compound paths: working copies of both operands,
// their crossings divided into segments, winding propagated over the
// stretches between crossings, and the wanted stretches traced into the
// result.
#include <zgraphics/model.h>

namespace {

// Flag word bits of a contour: no segment (overlapsOnly) or no wanted
// segment (validOverlapsOnly) lies off an overlap.
const uint32_t overlapsOnly = 0x4;
const uint32_t validOverlapsOnly = 0x8;

bool isRealCrossing(zgCurveLocation *location)
{
    return location->overlap || location->isCrossing();
}

// Each child's segments in order, and their monotone pieces, with both
// overlap flags set on every child.
void collectForBoolean(XPath *path, QList<zgSegment *> &segments, QList<zgMono *> &records)
{
    if (!path)
        return;
    for (zgPath *child : path->children) {
        segments.append(child->segments);
        records.append(child->getMonoCurves());
        child->addFlags(overlapsOnly | validOverlapsOnly);
    }
}

void destroyCopy(XPath *copy)
{
    if (!copy)
        return;
    copy->clearPath();
    delete copy;
}

} // namespace

XPath *XPath::unite(XPath *path)
{
    return computeBoolean(this, path, 2, true);
}

XPath *XPath::intersect(XPath *path, bool sort)
{
    return computeBoolean(this, path, opIntersect, sort);
}

XPath *XPath::subtract(XPath *path)
{
    return computeBoolean(this, path, opSubtract, true);
}

XPath *XPath::exclude(XPath *path)
{
    return computeBoolean(this, path, opExclude, true);
}

QList<XPath *> XPath::divide(XPath *path)
{
    XPath *outside = computeBoolean(this, path, opSubtract, true);
    XPath *inside = computeBoolean(this, path, opIntersect, true);
    return QList<XPath *>{outside, inside};
}

XPath *XPath::preparePath(XPath *path, bool resolve, bool sort)
{
    XPath *copy = new XPath();
    copy->evenOdd = true;
    copy->assign(path);
    copy->evenOdd = true;
    copy->reduce(true);
    if (resolve)
        copy->resolveCrossings(sort);
    return copy;
}

XPath *XPath::createResult(QVector<zgPath *> paths, bool simplify, XPath *, XPath *)
{
    XPath *result = new XPath();
    result->evenOdd = true;
    result->addChildren(paths, -1);
    if (simplify)
        result->reduce(true);
    return result;
}

XPath *XPath::computeBoolean(XPath *path1, XPath *path2, int op, bool sort)
{
    if (path1 && path1->children.size() == 1 && !path1->children.first()->closed)
        return computeOpenBoolean(path1, path2, op);

    XPath *p1 = preparePath(path1, true, sort);
    XPath *p2 = (path2 && path2 != path1) ? preparePath(path2, true, sort) : nullptr;
    if (p2) {
        const bool opposite = op == opSubtract || op == opExclude;
        if (opposite != (p1->isClockwise() != p2->isClockwise()))
            p2->reverse();
    }

    QList<zgCurveLocation *> locations = zgCurveLocation::expand(
            p1->getIntersections(p2, isRealCrossing, false));
    // Unowned until the segments link to them; held here so that each dies
    // with its last holder when the copies go.
    const QList<zgCurveLocation *> held = locations;
    for (zgCurveLocation *location : held)
        location->addRef();
    locations = divideLocations(locations, 0);

    QList<zgSegment *> segments;
    QList<zgMono *> records;
    collectForBoolean(p1, segments, records);
    collectForBoolean(p2, segments, records);

    for (zgCurveLocation *location : locations) {
        if (zgSegment *segment = location->segmentM())
            propagateWinding(segment, p1, p2, records, op);
    }
    for (zgSegment *segment : segments) {
        if (segment->winding == -1)
            propagateWinding(segment, p1, p2, records, op);
        zgCurveLocation *inter = segment->intersection();
        if (inter && inter->overlap)
            continue;
        segment->path->removeFlags(overlapsOnly);
        const bool wanted = (segment->winding == 1 && op > opIntersect)
                || (op == opIntersect && segment->winding == 2);
        if (wanted)
            segment->path->removeFlags(validOverlapsOnly);
    }
    const QVector<zgPath *> traced = tracePaths(segments, op);

    destroyCopy(p1);
    destroyCopy(p2);
    qDeleteAll(records);
    for (zgCurveLocation *location : held)
        location->release();
    return createResult(traced, true, path1, path2);
}
