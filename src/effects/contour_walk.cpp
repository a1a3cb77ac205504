// zgContourWalk: locations along a contour in one pass over its curves.
#include "effects/contour_walk.h"

#include <QtCore/qnumeric.h>

#include <cmath>
#include <limits>

zgContourWalk::zgContourWalk(zgPath *contour)
    : m_contour(contour), m_curves(contour->getCurves())
{
    restart();
}

void zgContourWalk::restart()
{
    m_index = 0;
    m_curveStart = 0.0;
    m_lastOffset = -std::numeric_limits<double>::infinity();
}

zgCurveLocation *zgContourWalk::locationAt(double offset)
{
    // Offsets counted back from the end go through the contour itself.
    if (offset < 0.0)
        return m_contour->getLocationAt(offset);
    // A smaller offset, or one after a NaN, may lie on an earlier curve.
    if (!(offset >= m_lastOffset))
        restart();
    m_lastOffset = offset;

    // The running length keeps whole units only, exactly as getLocationAt
    // sums it: the fraction is dropped after every curve. The sums do not
    // depend on the offset, so a curve passed for one offset is passed for
    // every larger one.
    const int count = m_curves.size();
    while (m_index < count) {
        zgCurve *curve = m_curves.at(m_index);
        const double curveEnd = std::trunc(m_curveStart + curve->getLength());
        if (curveEnd > offset) {
            const double t = zgCurve::getTimeAt(curve->getValues(nullptr), offset - m_curveStart, -100.0);
            return curve->getLocationAtTime(t);
        }
        m_curveStart = curveEnd;
        ++m_index;
    }
    if (count > 0 && offset <= m_contour->getLength())
        return new zgCurveLocation(m_curves.last(), 1.0, zgPoint(qQNaN(), qQNaN()), false, 0.0);
    return nullptr;
}

bool zgContourWalk::pointAndTangentAt(double offset, zgPoint &point, zgPoint &tangent)
{
    zgCurveLocation *location = locationAt(offset);
    if (!location)
        return false;
    point = location->getPoint();
    tangent = location->getTangent();
    location->release();
    return true;
}
