// zgPath: one contour. Its segment list, the curve list built on demand and
// kept in step with it, copying, and orientation.
#include "model/lifetime.h"

bool zgPath::s_canDelete = true;
int zgPath::s_maxID = 0;
QList<zgPath *> zgPath::s_pathList;

zgPath::zgPath(XPath *parent, bool closed)
    : closed(closed), flags(0), refCount(0), id(++s_maxID), index(0), length(0.0), area(0.0),
      parent(parent), version(0)
{
    zgLifetime::track(s_pathList, this);
}

zgPath::~zgPath()
{
    parent = nullptr;
    clearCurves();
    clearSegments();
    clearMonos();
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

zgPath *zgPath::clone() const
{
    zgPath *copy = new zgPath(nullptr, false);
    copy->assign(this);
    return copy;
}

void zgPath::assign(const zgPath *other)
{
    if (!other)
        return;
    closed = other->closed;
    const QList<zgSegment *> source = other->segments; // other may be this contour
    for (int i = 0; i < source.size(); ++i) {
        zgSegment *segment = source.at(i)->clone();
        segment->path = this;
        segment->index = i;
        segment->addRef();
        segments.append(segment);
    }
    ++version;
}

bool zgPath::equals(const zgPath *other) const
{
    return other && closed == other->closed && zgSegment::segsEquals(segments, other->segments);
}

void zgPath::setSegments(const QList<zgSegment *> &list)
{
    clearSegments();
    clearCurves();
    if (list.isEmpty())
        return;
    QList<zgSegment *> added = list;
    addSegments(added, -1);
}

zgSegment *zgPath::addSegment(zgSegment *segment)
{
    QList<zgSegment *> list{segment};
    const QList<zgSegment *> added = addSegments(list, -1);
    return added.value(0);
}

zgSegment *zgPath::insertSegment(int i, zgSegment *segment)
{
    QList<zgSegment *> list{segment};
    const QList<zgSegment *> added = addSegments(list, i);
    return added.value(0);
}

// Inserts items into target at position, keeping their order, with a
// reference on each.
template <class T>
static void insertCounted(QList<T *> &target, int position, const QList<T *> &items)
{
    for (int k = items.size() - 1; k >= 0; --k) {
        items.at(k)->addRef();
        target.insert(position, items.at(k));
    }
}

QList<zgSegment *> zgPath::addSegments(QList<zgSegment *> &list, int index,
                                        const QList<zgCurve *> &curvesIn)
{
    list.removeAll(nullptr);
    const int n = list.size();
    const int count = segments.size();
    const int base = (index < 0 || index > count) ? count : index;
    // A segment that belongs to a contour already is copied, not taken.
    for (int i = 0; i < n; ++i) {
        if (list.at(i)->path)
            list[i] = list.at(i)->clone();
        zgSegment *segment = list.at(i);
        segment->path = this;
        segment->index = base + i;
        segment->addRef();
    }
    if (base == count) {
        segments.append(list);
    } else {
        for (int i = n - 1; i >= 0; --i)
            segments.insert(base, list.at(i));
        for (int i = base + n; i < segments.size(); ++i)
            segments.at(i)->index = i;
    }
    if (n > 0)
        ++version;

    if (!curves.isEmpty()) {
        const int segmentCount = segments.size();
        const int total = (!closed && segmentCount > 0) ? segmentCount - 1 : segmentCount;
        // On an open contour a segment added at the end needs the curve
        // before it.
        const int start = (base > 0 && base + n - 1 == total) ? base - 1 : base;
        const int end = qMin(start + n, total);
        const int position = qBound(0, start, curves.size());
        insertCounted(curves, position, curvesIn);
        for (int i = position + curvesIn.size(); i < end; ++i) {
            zgCurve *curve = new zgCurve(this, nullptr, nullptr);
            curve->addRef();
            curves.insert(qMin(i, curves.size()), curve);
        }
        _adjustCurves(start, end);
    }
    // The curves came with a reference of the caller's; give it back.
    for (zgCurve *curve : curvesIn) {
        if (curve)
            curve->release();
    }
    return list;
}

bool zgPath::removeSegment(int i)
{
    return removeSegments(i, i + 1);
}

bool zgPath::removeSegments(int from, int to)
{
    QList<zgSegment *> removedSegments;
    QList<zgCurve *> removedCurves;
    return removeSegments(removedSegments, removedCurves, from, to, true) > 0;
}

int zgPath::removeSegments(QList<zgSegment *> &outSegments, QList<zgCurve *> &outCurves,
                           int from, int to, bool release)
{
    const int oldCount = segments.size();
    if (to == -1 || to > oldCount)
        to = oldCount;
    if (from < 0)
        from = 0;
    if (from >= to)
        return 0;
    const QList<zgSegment *> removed = segments.mid(from, to - from);
    outSegments.append(removed);
    segments.erase(segments.begin() + from, segments.begin() + to);
    for (zgSegment *segment : removed) {
        segment->index = 0;
        segment->path = nullptr;
    }
    for (int i = from; i < segments.size(); ++i)
        segments.at(i)->index = i;
    ++version;

    if (!curves.isEmpty()) {
        int start = from;
        int amount = removed.size();
        if (!closed && from > 0 && to == oldCount)
            start = from - 1; // the curve that ended at the old last segment goes
        else if (!closed && from == 0 && to == oldCount)
            amount -= 1;      // an open contour had one curve less than segments
        start = qBound(0, start, curves.size());
        amount = qBound(0, amount, curves.size() - start);
        const QList<zgCurve *> removedCurves = curves.mid(start, amount);
        curves.erase(curves.begin() + start, curves.begin() + start + amount);
        for (zgCurve *curve : removedCurves)
            curve->m_path = nullptr;
        outCurves.append(removedCurves);
        if (release) {
            for (int i = removedCurves.size() - 1; i >= 0; --i)
                removedCurves.at(i)->release();
            outCurves.clear();
        }
        _adjustCurves(start, start);
    }
    if (release) {
        for (int i = removed.size() - 1; i >= 0; --i)
            removed.at(i)->release();
        outSegments.clear();
    }
    return removed.size();
}

QList<zgCurve *> zgPath::getCurves()
{
    if (curves.isEmpty()) {
        const int count = int(_countCurves());
        const int segmentCount = segments.size();
        for (int i = 0; i < count; ++i) {
            zgSegment *next = segments.at(i + 1 < segmentCount ? i + 1 : 0);
            zgCurve *curve = new zgCurve(this, segments.at(i), next);
            curve->addRef();
            curves.append(curve);
        }
    }
    return curves;
}

double zgPath::_countCurves() const
{
    const int count = segments.size();
    return (!closed && count > 0) ? count - 1 : count;
}

void zgPath::_adjustCurves(int from, int to)
{
    const int segmentCount = segments.size();
    if (segmentCount == 0)
        return;
    for (int i = qMax(from, 0); i < to && i < curves.size(); ++i) {
        zgCurve *curve = curves.at(i);
        curve->m_path = this;
        curve->setSegment1(segments.at(qMin(i, segmentCount - 1)));
        curve->setSegment2(segments.at(i + 1 < segmentCount ? i + 1 : 0));
        curve->_changed();
    }
    // The curve before the range now ends at its first segment.
    const int j = (closed && from == 0) ? segmentCount : from;
    if (j - 1 >= 0 && j - 1 < curves.size()) {
        zgCurve *curve = curves.at(j - 1);
        curve->setSegment2(segments.at(from >= 0 && from < segmentCount ? from : 0));
        curve->_changed();
    }
    // The curve after the range starts at its end.
    if (to >= 0 && to < curves.size() && to < segmentCount) {
        zgCurve *curve = curves.at(to);
        curve->setSegment1(segments.at(to));
        curve->_changed();
    }
}

zgSegment *zgPath::getFirstSegment() const
{
    return segments.isEmpty() ? nullptr : segments.first();
}

zgSegment *zgPath::getLastSegment() const
{
    return segments.isEmpty() ? nullptr : segments.last();
}

zgSegment *zgPath::getCurrentSegment() const
{
    return getLastSegment();
}

zgCurve *zgPath::getFirstCurve()
{
    const QList<zgCurve *> list = getCurves();
    return list.isEmpty() ? nullptr : list.first();
}

zgCurve *zgPath::getLastCurve()
{
    const QList<zgCurve *> list = getCurves();
    return list.isEmpty() ? nullptr : list.last();
}

void zgPath::clearSegments()
{
    const QList<zgSegment *> old = segments;
    segments = QList<zgSegment *>();
    for (zgSegment *segment : old)
        segment->release();
    ++version;
}

void zgPath::clearCurves()
{
    const QList<zgCurve *> old = curves;
    curves = QList<zgCurve *>();
    for (zgCurve *curve : old)
        curve->release();
    ++version;
}

void zgPath::clearMonos()
{
    for (zgMono *&mono : monos) {
        delete mono;
        mono = nullptr;
    }
    monos = QList<zgMono *>();
}

void zgPath::clearHandles()
{
    for (zgSegment *segment : segments)
        segment->clearHandles();
}

bool zgPath::hasHandles() const
{
    for (const zgSegment *segment : segments) {
        if (segment->hasHandles())
            return true;
    }
    return false;
}

void zgPath::setClosed(bool closed)
{
    if (this->closed == closed)
        return;
    this->closed = closed;
    ++version;
    if (curves.isEmpty() || segments.isEmpty())
        return;
    const int wanted = int(_countCurves());
    while (curves.size() > wanted)
        curves.takeLast()->release();
    if (closed) {
        zgCurve *curve = new zgCurve(this, segments.last(), segments.first());
        curve->addRef();
        curves.append(curve);
    }
}

void zgPath::remove()
{
    if (parent)
        parent->removeChild(this);
}

bool zgPath::transformContent(const zgMatrix *matrix)
{
    QVector<double> coords(6);
    for (zgSegment *segment : segments)
        segment->transformCoordinates(matrix, coords, true);
    return true;
}

bool zgPath::isClockwise()
{
    if (isFlags(ClockwiseFlag | CounterClockwiseFlag))
        return isFlags(ClockwiseFlag);
    return getArea() >= 0.0;
}

void zgPath::setClockwise(bool clockwise)
{
    if (!closed)
        return;
    if (isClockwise() != clockwise)
        reverse();
    addFlags(clockwise ? ClockwiseFlag : CounterClockwiseFlag);
    removeFlags(clockwise ? CounterClockwiseFlag : ClockwiseFlag);
}

void zgPath::reverse()
{
    std::reverse(segments.begin(), segments.end());
    for (int i = 0; i < segments.size(); ++i) {
        segments.at(i)->reverse();
        segments.at(i)->index = i;
    }
    clearCurves();
    const bool wasClockwise = isFlags(ClockwiseFlag);
    const bool wasCounterClockwise = isFlags(CounterClockwiseFlag);
    if (wasClockwise != wasCounterClockwise) {
        removeFlags(ClockwiseFlag | CounterClockwiseFlag);
        addFlags(wasClockwise ? CounterClockwiseFlag : ClockwiseFlag);
    }
    ++version;
}
