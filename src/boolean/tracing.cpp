// The tracer of the boolean engine: walks the divided working outlines into
// new closed contours, keeping the stretches that the operator wants and
// changing outline at crossings.
#include <zgraphics/model.h>

namespace {

// Whether a segment may be taken at a crossing.
bool isValidSegment(const zgSegment *segment, int op)
{
    switch (op) {
    case XPath::opNone:
        return true;
    case XPath::opIntersect:
        return segment->winding == 2;
    case XPath::opUnite:
        return segment->winding == 1 || segment->onPath;
    default:
        return segment->winding == 1;
    }
}

// Whether a contour may start at a segment: as at a crossing, except that
// lying on the other outline does not count.
bool isStartWanted(const zgSegment *segment, int op)
{
    if (op == XPath::opNone)
        return true;
    return segment->winding == (op == XPath::opIntersect ? 2 : 1);
}

// The contour under construction and the two segments at which it began.
struct Trace
{
    zgPath *path = nullptr;
    zgSegment *start = nullptr;
    zgSegment *otherStart = nullptr;
    zgPoint handleIn;

    // start and otherStart are null before the first segment is added, and
    // then match nothing.
    bool isStart(const zgSegment *segment) const
    {
        return segment && (segment == start || segment == otherStart);
    }
};

// The contours of seg and of the location hung on it, when they are equal
// segment by segment; the shortcut of identical contours needs both.
zgPath *identicalContour(const zgSegment *seg)
{
    zgCurveLocation *inter = seg->intersection();
    zgSegment *across = inter ? inter->segmentM() : nullptr;
    zgPath *other = across ? across->path : nullptr;
    if (!other || !zgSegment::segsEquals(seg->path->segments, other->segments))
        return nullptr;
    return other;
}

// Whether the chain location loc, seen from seg, leads somewhere the trace may
// go: back to its start, or onto an untaken valid stretch.
bool isTakenAtCrossing(zgCurveLocation *loc, const zgSegment *seg, const Trace &trace, int op)
{
    zgSegment *s = loc->segmentM();
    if (!s || s == seg)
        return false;
    zgSegment *n = s->getNext();
    if (!n)
        return false; // the end of an open contour leads nowhere
    if (trace.isStart(s) || trace.isStart(n))
        return true;
    if (s->visited || n->visited || !isValidSegment(s, op))
        return false;
    if (isValidSegment(n, op))
        return true;
    zgCurveLocation *ni = n->intersection();
    zgSegment *beyond = ni ? ni->segmentM() : nullptr;
    return beyond && !beyond->visited && isValidSegment(beyond, op);
}

// The location of the crossing at which the trace goes on: the first one on
// inter's chain that isTakenAtCrossing accepts, else inter itself.
zgCurveLocation *chooseCrossing(zgCurveLocation *inter, const zgSegment *seg,
                                const Trace &trace, int op)
{
    if (!inter->next())
        return inter;
    for (zgCurveLocation *loc = inter; loc; loc = loc->next()) {
        if (isTakenAtCrossing(loc, seg, trace, op))
            return loc;
    }
    return inter;
}

// The segment on which the trace goes on from seg, which may be other.
zgSegment *switchTarget(zgSegment *seg, zgSegment *other, int op)
{
    const bool segWanted = (!seg->visited && op == XPath::opNone)
                           || (op == XPath::opIntersect && seg->winding == 2)
                           || (op > XPath::opIntersect && seg->winding == 1);
    if (!other || other->visited)
        return seg;
    const bool otherWanted = op == XPath::opNone
                             || (op == XPath::opIntersect && other->winding == 2)
                             || (op > XPath::opIntersect && other->winding == 1)
                             || (op == XPath::opUnite && other->onPath && !segWanted);
    if (!otherWanted)
        return seg;
    if (op == XPath::opIntersect || op == XPath::opSubtract)
        seg->visited = true;
    return other;
}

// Closes the traced contour; false if it is a sliver to be dropped.
bool closeTrace(Trace &trace)
{
    trace.path->getFirstSegment()->setHandleIn(trace.handleIn);
    trace.path->setClosed(true);
    const double area = trace.path->getArea(true, false);
    // 1e-12: a short loop of no area is a sliver left by coinciding outlines.
    return trace.path->segments.size() > 8 || area < -1e-12 || area > 1e-12;
}

// Adds a copy of cur to the traced contour and returns the segment at which
// the walk goes on.
zgSegment *addToTrace(Trace &trace, zgSegment *cur, zgSegment *other)
{
    if (!trace.path) {
        trace.path = new zgPath(nullptr, false);
        trace.start = cur;
        trace.otherStart = other;
    }
    zgSegment *next = cur->getNext();
    const zgPoint handleOut = next ? cur->handleOut : zgPoint(0.0, 0.0);
    trace.path->addSegment(new zgSegment(cur->point, trace.handleIn, handleOut));
    cur->visited = true;
    if (!next)
        return cur->path->getFirstSegment(); // the open end: go on at the start
    trace.handleIn = next->handleIn;
    return next;
}

} // namespace

QVector<zgPath *> XPath::tracePaths(QList<zgSegment *> segments, int op)
{
    QVector<zgPath *> result;
    for (zgSegment *first : segments) {
        if (first->visited)
            continue;
        zgPath *contour = first->path;

        if (contour && contour->isFlags(zgPath::OverlapsOnlyFlag)) {
            if (zgPath *other = identicalContour(first)) {
                if ((op == opIntersect || op == opUnite) && contour->getArea(true, false) != 0.0) {
                    zgPath *copy = new zgPath(nullptr, false);
                    copy->assign(contour);
                    result.append(copy);
                }
                for (int i = 0; i < contour->segments.size(); ++i) {
                    contour->segments.at(i)->visited = true;
                    other->segments.at(i)->visited = true;
                }
                continue;
            }
        }

        if (op != opNone && !isStartWanted(first, op))
            continue;
        zgCurveLocation *firstInter = first->intersection();
        const bool validOverlapsOnly = contour && contour->isFlags(zgPath::ValidOverlapsOnlyFlag);
        if (!validOverlapsOnly && firstInter && firstInter->overlap)
            continue;

        Trace trace;
        zgSegment *seg = first;
        zgCurveLocation *inter = firstInter;
        bool closed = false;
        for (;;) {
            zgSegment *other = nullptr;
            if (inter) {
                inter = chooseCrossing(inter, seg, trace, op);
                other = inter->segmentM();
            }

            if (trace.isStart(seg)) {
                seg->visited = true;
                closed = true;
                break;
            }
            if (other && trace.isStart(other)) {
                other->visited = true;
                closed = true;
                break;
            }

            zgSegment *cur = switchTarget(seg, other, op);
            if (cur->visited || !cur->path) {
                cur->visited = true;
                break;
            }
            if (op != opNone && cur->path->isFlags(zgPath::ValidOverlapsOnlyFlag)
                && !isValidSegment(cur, op))
                break;

            seg = addToTrace(trace, cur, other);
            inter = seg->intersection();
        }

        if (closed && trace.path && closeTrace(trace))
            result.append(trace.path);
        else if (trace.path)
            trace.path->release();
    }
    return result;
}
