#include "model/lifetime.h"

bool zgPath::s_canDelete = true;
int zgPath::s_maxID = 0;
QList<zgPath *> zgPath::s_pathList;

zgPath::zgPath(XPath *parent, bool closed)
    : closed(closed), flags(0), refCount(0), id(++s_maxID), index(0), length(0.0), area(0.0),
      parent(parent)
{
    zgLifetime::track(s_pathList, this);
}

zgPath::~zgPath()
{
    parent = nullptr;
    for (zgCurve *curve : curves)
        curve->release();
    curves = QList<zgCurve *>();
    for (zgSegment *segment : segments)
        segment->release();
    segments = QList<zgSegment *>();
    zgLifetime::untrack(s_pathList, this);
}

void zgPath::addRef()
{
    zgLifetime::addRef(this);
}

void zgPath::release()
{
    zgLifetime::release(this);
}
