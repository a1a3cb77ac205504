// Small helpers shared by the fuzz harnesses.
#ifndef ZG_FUZZ_SUPPORT_H
#define ZG_FUZZ_SUPPORT_H

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtCore/QSet>

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

#endif
