#include "model/lifetime.h"

QList<zgSegment *> zgSegment::s_segmentList;

zgSegment::zgSegment()
    : visited(false), onPath(0), refCount(0), index(-1), winding(-1), path(nullptr),
      m_intersection(nullptr)
{
    zgLifetime::track(s_segmentList, this);
}

zgSegment::zgSegment(double x, double y) : zgSegment()
{
    point = zgPoint(x, y);
}

zgSegment::zgSegment(const zgPoint &point, const zgPoint &handleIn, const zgPoint &handleOut)
    : zgSegment()
{
    this->point = point;
    this->handleIn = handleIn;
    this->handleOut = handleOut;
}

zgSegment::~zgSegment()
{
    path = nullptr;
    if (m_intersection) {
        m_intersection->release();
        m_intersection = nullptr;
    }
    zgLifetime::untrack(s_segmentList, this);
}

void zgSegment::addRef()
{
    zgLifetime::addRef(this);
}

void zgSegment::release()
{
    zgLifetime::release(this);
}
