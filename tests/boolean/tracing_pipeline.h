// The steps of a boolean before and after the tracer, as the tests drive
// them: orientation of the second operand, crossings, division, collection
// with the overlap flags, windings (from the oracle or from the engine), and
// a check of a traced result against the regions of the operands.
#ifndef ZGRAPHICS_TESTS_BOOLEAN_TRACING_PIPELINE_H
#define ZGRAPHICS_TESTS_BOOLEAN_TRACING_PIPELINE_H

#include "boolean/tracing_test_support.h"
#include "boolean/winding_oracle.h"

#include <cmath>
#include <memory>
#include <random>

namespace tracingtest {

using windingoracle::Polygon;

// One boolean run on two compounds (second may be null), up to the tracer.
class Pipeline
{
public:
    Pipeline(XPath &first, XPath *second, int op) : m_first(first), m_second(second), m_op(op)
    {
        if (second) {
            const bool reverse = op == XPath::opSubtract || op == XPath::opExclude;
            if (reverse != (first.isClockwise() != second->isClockwise()))
                second->reverse();
        }
        locations = zgCurveLocation::expand(first.getCrossings(second));
        m_held.reset(new HeldLocations(locations));
        zgTracingInternals::divideLocations(locations, 0);
        collect(first);
        if (second)
            collect(*second);
    }

    // Every segment's winding and onPath as the engine should find them,
    // from the oracle.
    void setOracleWindings()
    {
        QVector<Polygon> all = windingoracle::flatten(m_first);
        const QVector<Polygon> firstOnly = all;
        const QVector<Polygon> secondOnly = m_second ? windingoracle::flatten(*m_second)
                                                     : QVector<Polygon>();
        all += secondOnly;
        for (zgSegment *segment : segments) {
            const windingoracle::StretchWinding side = windingoracle::sideWinding(all, segment);
            segment->winding = side.winding;
            segment->onPath = side.onPath;
            if (m_op == XPath::opSubtract && m_second && subtractDrops(segment, firstOnly, secondOnly)) {
                segment->winding = 0;
                segment->onPath = false;
            }
        }
    }

    // Every segment's winding and onPath from the engine: once from each
    // location's segment in list order, then for every segment left
    // without one.
    void setEngineWindings()
    {
        QList<zgMono *> monos = zgTracingInternals::getMonoCurves(m_first);
        if (m_second)
            monos += zgTracingInternals::getMonoCurves(*m_second);
        for (zgCurveLocation *location : locations)
            zgTracingInternals::propagateWinding(location->segmentM(), &m_first, m_second, monos,
                                                 m_op);
        for (zgSegment *segment : segments) {
            if (segment->winding == -1)
                zgTracingInternals::propagateWinding(segment, &m_first, m_second, monos, m_op);
        }
        qDeleteAll(monos);
    }

    // The flags of the collection after the windings are known: a contour
    // keeps OverlapsOnlyFlag only if all its segments lie on overlaps, and
    // ValidOverlapsOnlyFlag only if all its valid ones do.
    void clearFlags()
    {
        for (zgSegment *segment : segments) {
            zgCurveLocation *inter = segment->intersection();
            if (inter && inter->overlap)
                continue;
            segment->path->removeFlags(zgPath::OverlapsOnlyFlag);
            if ((segment->winding == 1 && m_op > XPath::opIntersect)
                || (m_op == XPath::opIntersect && segment->winding == 2))
                segment->path->removeFlags(zgPath::ValidOverlapsOnlyFlag);
        }
    }

    QVector<zgPath *> trace() { return zgTracingInternals::tracePaths(segments, m_op); }

    QList<zgCurveLocation *> locations;
    QList<zgSegment *> segments;

private:
    void collect(XPath &compound)
    {
        for (zgPath *child : compound.children) {
            segments += child->segments;
            child->addFlags(zgPath::OverlapsOnlyFlag | zgPath::ValidOverlapsOnlyFlag);
        }
    }

    // Outline of the minuend inside the subtrahend, and of the subtrahend
    // outside the minuend.
    bool subtractDrops(const zgSegment *segment, const QVector<Polygon> &firstOnly,
                       const QVector<Polygon> &secondOnly) const
    {
        const zgPoint middle = windingoracle::pointBetween(segment, segment->getNext(), 0.5);
        if (m_first.children.contains(segment->path))
            return windingoracle::windingNumber(secondOnly, middle) != 0;
        return windingoracle::windingNumber(firstOnly, middle) == 0;
    }

    XPath &m_first;
    XPath *m_second;
    int m_op;
    std::unique_ptr<HeldLocations> m_held;
};

// Whether a point lies in the region that op makes of the regions a and b
// (non-zero rule each); opNone keeps the even-odd sum of both.
inline bool expectedInside(int op, int windingA, int windingB)
{
    const bool a = windingA != 0;
    const bool b = windingB != 0;
    switch (op) {
    case XPath::opIntersect:
        return a && b;
    case XPath::opUnite:
        return a || b;
    case XPath::opSubtract:
        return a && !b;
    case XPath::opExclude:
        return a != b;
    default:
        return ((windingA + windingB) & 1) != 0;
    }
}

struct RegionAgreement
{
    int agreed = 0;
    int sampled = 0;
};

// Samples a grid over rect and compares the even-odd fill of the traced
// contours with the region op makes of the operands' outlines a and b, at
// points further than 5e-2 from every outline (the flattening of the result
// is coarse). Points that disagree are appended to disagreements if given.
inline RegionAgreement compareRegions(const QVector<zgPath *> &traced, const QVector<Polygon> &a,
                                      const QVector<Polygon> &b, int op, const zgRect &rect,
                                      int steps, QVector<zgPoint> *disagreements = nullptr)
{
    QVector<Polygon> result;
    for (const zgPath *path : traced)
        result.append(windingoracle::flatten(path, 32));
    RegionAgreement agreement;
    for (int i = 0; i <= steps; ++i) {
        for (int j = 0; j <= steps; ++j) {
            // The small offsets keep grid points off the axis-parallel edges.
            const zgPoint point(rect.x + rect.width * (i + 0.0137) / steps,
                                rect.y + rect.height * (j + 0.0291) / steps);
            // 5e-2: points this close to an outline are left out.
            if (windingoracle::distanceToOutline(a, point) < 5e-2
                || windingoracle::distanceToOutline(b, point) < 5e-2
                || windingoracle::distanceToOutline(result, point) < 5e-2)
                continue;
            const bool expected = expectedInside(op, windingoracle::windingNumber(a, point),
                                                 windingoracle::windingNumber(b, point));
            const bool actual = (windingoracle::windingNumber(result, point) & 1) != 0;
            ++agreement.sampled;
            if (expected == actual)
                ++agreement.agreed;
            else if (disagreements)
                disagreements->append(point);
        }
    }
    return agreement;
}

// A random star-shaped closed contour of 3 to 8 points about a center in
// (30..70)^2, at radii 15 to 40; curved, its handles lie along the circle's
// tangent at 0.15 of the radius, which keeps the outline simple.
inline zgPath *randomStarContour(std::mt19937 &random, bool curved)
{
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const zgPoint center(30.0 + 40.0 * unit(random), 30.0 + 40.0 * unit(random));
    const int count = 3 + int(unit(random) * 6);
    zgPath *shape = new zgPath(nullptr, true);
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * M_PI * (i + 0.8 * unit(random)) / count;
        const double radius = 15.0 + 25.0 * unit(random);
        const zgPoint point(center.x + radius * std::cos(angle),
                            center.y + radius * std::sin(angle));
        const double reach = curved ? 0.15 * radius : 0.0;
        const zgPoint handle(-reach * std::sin(angle), reach * std::cos(angle));
        shape->addSegment(new zgSegment(point, handle.negate(), handle));
    }
    return shape;
}

} // namespace tracingtest

#endif
