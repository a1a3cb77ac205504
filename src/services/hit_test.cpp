// Hit tests: what a point touches on a compound path or a contour, fill,
// stroke or bare curve. The stroke is never built: a hit on it is a distance
// test against the nearest curve point, with joins and caps as little
// polygons.
#include <zgraphics/model.h>

// The stroke query of one contour: the stroke's shape as the hit test reads
// it, and the polygon that collects a join or a cap.
class zgPath::StrokeHit
{
public:
    StrokeHit(zgPath *contour, const zgPoint &point, const zgHitOpt &options,
              const zgStyle &style)
        : m_contour(contour), m_point(point), m_style(style), m_tolerance(options.tolerance),
          m_join(style.join), m_cap(style.cap), m_miterLimit(style.miterLimit),
          m_strokePadding(options.tolerance), m_radius(strokeRadius(options, style))
    {
        // The polygon is a counted contour of this call alone.
        m_area.addRef();
        if (m_radius == -1.0)
            return;
        if (m_radius <= 0.0) {
            m_join = zgJoinRound;
            m_cap = zgCapRound;
        } else {
            m_miterLimit *= m_radius;
            m_strokePadding = m_tolerance + m_radius;
        }
    }

    // Half the stroke width when the stroke is asked; 0 for bare curves, and
    // for a fill hit with a tolerance; -1 for no stroke query at all.
    static double strokeRadius(const zgHitOpt &options, const zgStyle &style)
    {
        if (options.stroke)
            return style.strokeWidth * 0.5;
        if ((options.fill && options.tolerance > 0.0) || options.curves)
            return 0.0;
        return -1.0;
    }

    // The nearest location if it lies on the stroke, else null (the others
    // released). The caller releases the result.
    zgCurveLocation *nearestOnStroke()
    {
        if (!(m_radius >= 0.0))
            return nullptr;
        zgCurveLocation *location = m_contour->getNearestLocation(m_point);
        if (!location)
            return nullptr;
        // Exact times: only a location that is a segment tests the join or
        // cap there.
        const double t = location->getTime();
        const bool atSegment = t == 0.0 || (t == 1.0 && m_contour->segments.size() > 1);
        const bool onStroke = atSegment ? checkSegmentStroke(location->getSegment())
                                        : m_point.getDistance(location->point) <= m_strokePadding;
        if (onStroke)
            return location;
        location->release();
        return nullptr;
    }

private:
    bool withinRoundStroke(const zgSegment *segment) const
    {
        return m_point.getDistance(segment->point) <= m_strokePadding;
    }

    // Whether the point hits the stroke at a segment: a round join or cap is
    // a distance test, the others the polygon of the join or cap, or within
    // tolerance of its outline.
    bool checkSegmentStroke(zgSegment *segment)
    {
        if (!segment)
            return false;
        if (m_join == zgJoinRound && m_cap == zgCapRound)
            return withinRoundStroke(segment);
        const auto addToArea = [this](zgPoint p) { m_area.addSegment(new zgSegment(p.x, p.y)); };
        const int count = m_contour->segments.size();
        const bool isEnd = !m_contour->closed
                && (segment->index < 1 || segment->index >= count - 1);
        if (isEnd) {
            if (m_cap != zgCapRound)
                zgPath::addSquareCap(segment, m_cap, m_radius, nullptr, nullptr, addToArea, true);
        } else if (m_join != zgJoinRound
                   && (segment->handleIn.isZero() || segment->handleOut.isZero())) {
            zgPath::addBevelJoin(segment, m_join, m_radius, m_miterLimit, nullptr, nullptr,
                                 addToArea, true);
        }
        if (m_area.segments.isEmpty())
            return withinRoundStroke(segment);
        if (m_area.contains(m_point, m_style))
            return true;
        zgCurveLocation *nearest = m_area.getNearestLocation(m_point);
        const bool nearOutline = nearest && nearest->point.getDistance(m_point) <= m_tolerance;
        if (nearest)
            nearest->release();
        return nearOutline;
    }

    zgPath *m_contour;
    zgPoint m_point;
    zgStyle m_style;
    double m_tolerance;
    zgJoin m_join;
    zgCap m_cap;
    double m_miterLimit;
    double m_strokePadding;
    double m_radius;
    zgPath m_area;
};

namespace {

// The fill hit on a contour: even-odd, whatever the caller's style says.
bool hitsContourFill(zgPath *contour, const zgPoint &point, const zgHitOpt &options)
{
    const zgStyle fillStyle(options.styleFill, true, true, 1.0, zgCapButt, zgJoinBevel, 10.0);
    return contour->contains(point, fillStyle);
}

zgHitResult fillHit(zgPath *contour)
{
    zgHitResult result;
    result.type = zgHitFill;
    result.path = contour;
    result.compound = contour->parent;
    return result;
}

} // namespace

zgHitResult zgPath::_hitTestSelf(const zgPoint &point, const zgHitOpt &options,
                                 const zgStyle &style)
{
    StrokeHit stroke(this, point, options, style);
    zgCurveLocation *location = stroke.nearestOnStroke();
    zgHitResult result;
    if (!location) {
        if (options.fill && hitsContourFill(this, point, options))
            result = fillHit(this);
    } else if (!options.stroke && !options.curves) {
        // Within tolerance of the outline with only the fill asked.
        result = fillHit(this);
    } else {
        result.type = options.stroke ? zgHitStroke : zgHitCurve;
        result.path = this;
        result.compound = parent;
        result.point = location->point;
    }
    if (location)
        location->release();
    return result;
}

zgHitResult XPath::hitTest(const zgPoint &point, const zgStyle &style, const zgHitOpt &options)
{
    if (children.isEmpty())
        return zgHitResult();
    if (options.fill && contains(point, style)) {
        zgHitResult result;
        result.type = zgHitFill;
        result.compound = this;
        return result;
    }
    return hitTestChildren(point, style, options);
}

zgHitResult XPath::hitTestChildren(const zgPoint &point, const zgStyle &style,
                                   const zgHitOpt &options)
{
    // The fill of the whole compound has been tested already.
    zgHitOpt childOptions = options;
    childOptions.fill = false;
    zgHitResult result;
    for (zgPath *child : children) {
        result = child->_hitTestSelf(point, childOptions, style);
        if (result.type != zgHitNone)
            break;
    }
    return result;
}

zgHitResult XPath::hitTestSelf(const zgPoint &point, const zgStyle &style,
                               const zgHitOpt &options)
{
    zgHitResult result;
    if (options.fill && contains(point, style)) {
        result.type = zgHitFill;
        result.compound = this;
    }
    return result;
}
