// zgCurveLocation: construction, lifetime and the plain accessors. The
// location operations (finding the curve again, comparison, insertion,
// crossing tests, division) are in src/intersect/location.cpp.
#include "model/lifetime.h"

#include <QtCore/qnumeric.h>

QList<zgCurveLocation *> zgCurveLocation::s_curveLocationList;

zgCurveLocation::zgCurveLocation()
    : overlap(false), refCount(0), version(0), path(nullptr), curve(nullptr), offset(-1.0),
      time(-100.0), distance(0.0), m_intersection(nullptr), m_next(nullptr),
      m_previous(nullptr), m_segmentM(nullptr), segment1(nullptr), segment2(nullptr)
{
    zgLifetime::track(s_curveLocationList, this);
}

zgCurveLocation::zgCurveLocation(zgCurve *curve, double time, const zgPoint &point, bool overlap,
                                 double distance)
    : zgCurveLocation()
{
    // A time at the very end of a curve stands for the start of the next one.
    if (curve && time > 0.9999996) {
        zgCurve *next = curve->getNext();
        if (next) {
            curve = next;
            time = 0.0;
        }
    }
    if (curve) {
        this->curve = curve;
        path = curve->path();
        version = path ? path->version : 0;
        segment1 = curve->segment1();
        segment2 = curve->segment2();
    }
    this->time = time;
    offset = -1.0;
    if (!point.isNaN())
        this->point = point;
    else if (curve)
        this->point = zgCurve::_evaluate(curve->getValues(nullptr), time, 0, false);
    else
        this->point = point;
    this->overlap = overlap;
    this->distance = distance;
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
