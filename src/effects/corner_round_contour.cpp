// ZDPath::setCornerRound2: rounded corners computed on the contours of the
// path's XPath, measured along the curves.
//
// Nodes where the path runs straight through are smooth; a run of them is
// one side of a corner. A corner node K is rounded by cutting each side at
// the arc length r from K, taking out the nodes between the cuts and K,
// giving the two cut nodes handles along the tangents there, and at last
// removing K, so that one cubic joins the two cuts.
#include "effects/corner_round.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/QSet>

#include <cmath>

using namespace zgcorner;

namespace {

double angleOf(const zgPoint &v)
{
    return std::atan2(v.y, v.x);
}

// A time that getTimeAt found; -100.0 and NaN are none.
bool isCurveTime(double t)
{
    return t >= 0.0 && t <= 1.0;
}

// Where a walk from a corner reached the radius: the time on the curve it
// ended in, and that curve's parts before and after the time. Empty parts
// mean that the walk did not reach the radius.
struct SideSplit
{
    double t = -100.0;
    QVector<QVector<double>> parts;

    bool found() const { return !parts.isEmpty(); }

    // The unit tangent at the split, pointing along the curve: at the end of
    // the part before a split at the curve's very end, else at the start of
    // the part after it.
    zgPoint tangent() const
    {
        // 0.9999999: a time this close to 1 leaves no part after it.
        if (t > 0.9999999)
            return zgCurve::getTangent(parts.at(0), 1.0);
        return zgCurve::getTangent(parts.at(1), 0.0);
    }
};

// The rounding of one contour.
class ContourRounder
{
public:
    ContourRounder(zgPath *contour, double radius) : m_contour(contour), m_radius(radius) {}
    ~ContourRounder();
    ContourRounder(const ContourRounder &) = delete;
    ContourRounder &operator=(const ContourRounder &) = delete;

    void run();

private:
    zgPath *m_contour;
    double m_radius;
    QSet<zgSegment *> m_skip;       // smooth nodes and the ends of arcs
    QList<zgSegment *> m_removal;   // rounded corners, taken out at the end
    // Every listed segment is held by one extra reference, so that a segment
    // taken out of the contour by a walk stays valid (and its address unused)
    // while it is listed.
    QList<zgSegment *> m_held;

    int walkLimit() const { return m_contour->segments.size() + 1; }
    void hold(zgSegment *segment);
    void addSkip(zgSegment *segment);
    bool isSkipped(zgSegment *segment) const { return m_skip.contains(segment); }

    void findSmoothNodes();
    void roundCorner(zgSegment *corner);
    double lengthBefore(zgSegment *corner);
    double lengthAfter(zgSegment *corner);
    SideSplit splitBefore(zgSegment *corner, double r);
    SideSplit splitAfter(zgSegment *corner, double r);
    void removeBetween(zgSegment *from, zgSegment *to);
};

ContourRounder::~ContourRounder()
{
    for (zgSegment *segment : qAsConst(m_held))
        segment->release();
}

void ContourRounder::hold(zgSegment *segment)
{
    segment->addRef();
    m_held.append(segment);
}

void ContourRounder::addSkip(zgSegment *segment)
{
    if (m_skip.contains(segment))
        return;
    m_skip.insert(segment);
    hold(segment);
}

void ContourRounder::run()
{
    if (m_contour->segments.size() < 3 || m_contour->getLength() <= m_radius)
        return;
    findSmoothNodes();

    // The last segment as the contour starts: never rounded, and the end of
    // the pass, even where a later division appends after it.
    zgSegment *last = m_contour->getLastSegment();
    hold(last);
    zgSegment *corner = m_contour->getFirstSegment();
    while (corner && corner != last) {
        if (!isSkipped(corner))
            roundCorner(corner);
        zgSegment *next = corner->getNext();
        // Past the end of the list: a walk has taken the last segment out.
        if (!next || next->index <= corner->index)
            break;
        corner = next;
    }

    for (zgSegment *segment : qAsConst(m_removal))
        segment->remove();
}

// A node whose two directions, its handles or else the vectors to its
// neighbours, are opposite within 0.001 rad is smooth.
void ContourRounder::findSmoothNodes()
{
    const QList<zgSegment *> segments = m_contour->segments;
    for (zgSegment *segment : segments) {
        zgPoint in = segment->handleIn;
        const zgSegment *previous = segment->getPrevious();
        if (in.isZero() && previous)
            in = previous->point.subtract(segment->point);
        zgPoint out = segment->handleOut;
        const zgSegment *next = segment->getNext();
        if (out.isZero() && next)
            out = next->point.subtract(segment->point);
        const double d = angleOf(in) - angleOf(out);
        // 0.001 rad: the node runs straight through.
        if (std::fabs(std::fabs(d) - kStraightAngle) < 0.001)
            addSkip(segment);
    }
}

void ContourRounder::roundCorner(zgSegment *corner)
{
    if (!corner->getPrevious() || !corner->getNext())
        return;
    const double lengthIn = lengthBefore(corner);
    const double lengthOut = lengthAfter(corner);
    double r = m_radius;
    if (lengthIn < 2.0 * r)
        r = lengthIn * 0.5;
    if (lengthOut < 2.0 * r)
        r = lengthOut * 0.5;

    SideSplit before;
    SideSplit after;
    if (r > 0.0) {
        before = splitBefore(corner, r);
        after = splitAfter(corner, r);
    }
    zgSegment *previous = corner->getPrevious();
    zgSegment *next = corner->getNext();
    if (!previous || !next)
        return;

    const double a1 = before.found() ? angleOf(before.tangent()) : 0.0;
    const double a2 = after.found() ? angleOf(after.tangent()) + kStraightAngle : 0.0;
    const CornerVectors v = cornerVectors(r, a1, a2);
    previous->setHandleOut(curveHandle(v.in));
    next->setHandleIn(curveHandle(v.out));
    addSkip(previous);
    addSkip(next);
    hold(corner);
    m_removal.append(corner);
}

// The length of the side before the corner: the curve ending at it, and the
// curves before that while their start is a smooth node.
double ContourRounder::lengthBefore(zgSegment *corner)
{
    double length = 0.0;
    zgSegment *end = corner;
    for (int step = 0; step < walkLimit(); ++step) {
        zgSegment *start = end->getPrevious();
        zgCurve *curve = start ? start->getCurve() : nullptr;
        if (!curve)
            break;
        length += curve->getLength();
        if (start == corner || !isSkipped(start))
            break;
        end = start;
    }
    return length;
}

// The same forwards: the curve starting at the corner, and the curves after
// it while their end is a smooth node.
double ContourRounder::lengthAfter(zgSegment *corner)
{
    double length = 0.0;
    zgSegment *start = corner;
    for (int step = 0; step < walkLimit(); ++step) {
        zgSegment *end = start->getNext();
        zgCurve *curve = end ? start->getCurve() : nullptr;
        if (!curve)
            break;
        length += curve->getLength();
        if (end == corner || !isSkipped(end))
            break;
        start = end;
    }
    return length;
}

// Walks back from the corner, curve by curve, until the arc length r is
// reached; divides the curve there and takes out the nodes between the
// division and the corner.
SideSplit ContourRounder::splitBefore(zgSegment *corner, double r)
{
    SideSplit split;
    double total = 0.0;
    zgSegment *end = corner;
    for (int step = 0; step < walkLimit(); ++step) {
        zgSegment *start = end->getPrevious();
        zgCurve *curve = start ? start->getCurve() : nullptr;
        if (!curve)
            break;
        total += curve->getLength();
        if (total >= r) {
            const QVector<double> values = curve->getValues(nullptr);
            const double t = zgCurve::getTimeAt(values, total - r, -100.0);
            if (!isCurveTime(t))
                break;
            split.t = t;
            split.parts = zgCurve::subdivide(values, t);
            const zgCurve *rest = curve->divideAtTime(t, false);
            zgSegment *kept;
            // 1e-07: the split falls on the curve's end, which is kept.
            if (1.0 - t < 1e-07)
                kept = end;
            else if (rest)
                kept = rest->segment1();
            else
                kept = t < 0.5 ? start : end; // too close to an end to divide
            if (kept != corner)
                removeBetween(kept, corner);
            break;
        }
        end = start;
    }
    return split;
}

// The same forwards, with the offset r less the length before the curve.
SideSplit ContourRounder::splitAfter(zgSegment *corner, double r)
{
    SideSplit split;
    double before = 0.0;
    zgSegment *start = corner;
    for (int step = 0; step < walkLimit(); ++step) {
        zgSegment *end = start->getNext();
        zgCurve *curve = end ? start->getCurve() : nullptr;
        if (!curve)
            break;
        const double length = curve->getLength();
        if (before + length >= r) {
            const QVector<double> values = curve->getValues(nullptr);
            const double t = zgCurve::getTimeAt(values, r - before, -100.0);
            if (!isCurveTime(t))
                break;
            split.t = t;
            split.parts = zgCurve::subdivide(values, t);
            const zgCurve *rest = curve->divideAtTime(t, false);
            zgSegment *kept;
            // 1e-07: the split falls on the curve's start, which is kept.
            if (t < 1e-07)
                kept = start;
            else if (rest)
                kept = rest->segment1();
            else
                kept = t < 0.5 ? start : end; // too close to an end to divide
            if (kept != corner)
                removeBetween(corner, kept);
            break;
        }
        before += length;
        start = end;
    }
    return split;
}

// Takes out of the contour every segment strictly between from and to,
// going forwards from from.
void ContourRounder::removeBetween(zgSegment *from, zgSegment *to)
{
    QList<zgSegment *> between;
    zgSegment *segment = from->getNext();
    for (int step = 0; segment && segment != to && segment != from && step < walkLimit(); ++step) {
        between.append(segment);
        segment = segment->getNext();
    }
    if (segment != to)
        return; // to does not follow from: nothing lies between them
    for (zgSegment *s : qAsConst(between))
        s->remove();
}

} // namespace

void ZDPath::setCornerRound2(double radius)
{
    // 1.0: the smallest radius worth rounding; NaN is none.
    if (!(radius >= 1.0))
        return;
    XPath xpath;
    toXPath(xpath, 0);
    for (zgPath *child : qAsConst(xpath.children)) {
        if (child)
            ContourRounder(child, radius).run();
    }
    if (!elements.isEmpty())
        reset();
    fromXPath(xpath, 0, -1);
}
