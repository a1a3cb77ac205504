#include "model/lifetime.h"

QList<zgCurve *> zgCurve::s_curveList;

zgCurve::zgCurve()
    : refCount(0), m_path(nullptr), length(0.0), m_segment1(nullptr), m_segment2(nullptr)
{
    zgLifetime::track(s_curveList, this);
}

zgCurve::zgCurve(zgPath *path, zgSegment *segment1, zgSegment *segment2) : zgCurve()
{
    m_path = path;
    m_segment1 = segment1;
    m_segment2 = segment2;
    if (m_segment1)
        m_segment1->addRef();
    if (m_segment2)
        m_segment2->addRef();
}

zgCurve::~zgCurve()
{
    if (m_segment1)
        m_segment1->release();
    if (m_segment2)
        m_segment2->release();
    m_segment1 = nullptr;
    m_segment2 = nullptr;
    m_path = nullptr;
    zgLifetime::untrack(s_curveList, this);
}

void zgCurve::addRef()
{
    zgLifetime::addRef(this);
}

void zgCurve::release()
{
    zgLifetime::release(this);
}
