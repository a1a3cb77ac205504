// Small helpers shared by the fuzz harnesses.
#ifndef ZG_FUZZ_SUPPORT_H
#define ZG_FUZZ_SUPPORT_H

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/QSet>

#include <algorithm>
#include <cmath>
#include <cstdlib>

// Releases a list of locations handed to the caller together with their
// partners, each object once.
inline void releaseLocations(const QList<zgCurveLocation *> &locations)
{
    QSet<zgCurveLocation *> owned;
    for (zgCurveLocation *location : locations) {
        owned << location;
        if (zgCurveLocation *partner = location->intersection())
            owned << partner;
    }
    for (zgCurveLocation *location : qAsConst(owned))
        location->release();
}

// Ends the run with a finding when a documented property does not hold.
inline void require(bool condition)
{
    if (!condition)
        std::abort();
}

// Element types stay within the five kinds.
inline void requireWellFormed(const ZDPath &path)
{
    for (const ZDPathElement &e : path.elements)
        require(e.type >= ZDPathElement::ZDMoveToElement && e.type <= ZDPathElement::ZDCloseElement);
}

// The outline, wave, hand-drawn stroke and thick outline sample their path
// every step (or wavelength) units of arc length, so their work grows with length / step by
// design. A positive step is raised here to at least 1/2000 of the path's
// length (or, when the length is not finite, 1/500 of its largest finite
// coordinate), so that one input cannot take minutes; steps of 0 and below,
// NaN and every other parameter reach the library as decoded.
inline double boundedStep(double step, const ZDPath &path, double length)
{
    double largest = 0.0;
    for (const ZDPathElement &e : path.elements) {
        if (std::isfinite(e.x))
            largest = std::max(largest, std::fabs(e.x));
        if (std::isfinite(e.y))
            largest = std::max(largest, std::fabs(e.y));
    }
    const double shortest = std::isfinite(length) ? length / 2000.0 : largest / 500.0;
    return step > 0.0 && step < shortest ? shortest : step;
}

#endif
