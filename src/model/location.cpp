#include "model/lifetime.h"

QList<zgCurveLocation *> zgCurveLocation::s_curveLocationList;

zgCurveLocation::zgCurveLocation() : overlap(false), refCount(0)
{
    zgLifetime::track(s_curveLocationList, this);
}

zgCurveLocation::~zgCurveLocation()
{
    zgLifetime::untrack(s_curveLocationList, this);
}

void zgCurveLocation::addRef()
{
    zgLifetime::addRef(this);
}

void zgCurveLocation::release()
{
    zgLifetime::release(this);
}
