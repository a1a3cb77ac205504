// zgSegment: a node of a contour, a point with two handles relative to it.
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

zgSegment &zgSegment::operator=(const zgSegment &other)
{
    path = other.path;
    visited = other.visited;
    index = other.index;
    point = other.point;
    handleIn = other.handleIn;
    handleOut = other.handleOut;
    // The new chain head first, so that assigning a segment to itself (or to
    // one sharing the head) cannot free it on the way.
    setIntersection(other.m_intersection);
    return *this;
}

void zgSegment::addRef()
{
    zgLifetime::addRef(this);
}

void zgSegment::release()
{
    zgLifetime::release(this);
}

bool zgSegment::operator==(const zgSegment &other) const
{
    // zgPoint's operator== is the inclusive 1e-12 test per coordinate.
    return point == other.point && handleIn == other.handleIn && handleOut == other.handleOut;
}

bool zgSegment::segsEquals(const QList<zgSegment *> &a, const QList<zgSegment *> &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (a.at(i) == b.at(i))
            continue;
        if (!a.at(i) || !b.at(i) || !(*a.at(i) == *b.at(i)))
            return false;
    }
    return true;
}

zgSegment *zgSegment::clone() const
{
    return new zgSegment(point, handleIn, handleOut);
}

bool zgSegment::hasHandles() const
{
    return !(handleIn.isZero() && handleOut.isZero());
}

void zgSegment::clearHandles()
{
    handleIn = zgPoint();
    handleOut = zgPoint();
}

void zgSegment::reverse()
{
    qSwap(handleIn, handleOut);
}

zgSegment zgSegment::reversed() const
{
    return zgSegment(point, handleOut, handleIn);
}

bool zgSegment::isFirst() const
{
    return path && index == 0;
}

bool zgSegment::isLast() const
{
    return path && index == path->segments.size() - 1;
}

zgSegment *zgSegment::getNext() const
{
    if (!path || path->segments.isEmpty())
        return nullptr;
    const QList<zgSegment *> &segments = path->segments;
    const int next = index + 1;
    if (next >= 0 && next < segments.size())
        return segments.at(next);
    if (next >= segments.size() && path->closed)
        return segments.first();
    return nullptr;
}

zgSegment *zgSegment::getPrevious() const
{
    if (!path || path->segments.isEmpty())
        return nullptr;
    const QList<zgSegment *> &segments = path->segments;
    const int previous = index - 1;
    if (previous >= 0 && previous < segments.size())
        return segments.at(previous);
    if (previous < 0 && path->closed)
        return segments.last();
    return nullptr;
}

// Entry i of the contour's curve list, built if need be; null out of range.
static zgCurve *curveOf(zgPath *path, int i)
{
    const QList<zgCurve *> curves = path->getCurves();
    if (i < 0 || i >= curves.size())
        return nullptr;
    return curves.at(i);
}

zgCurve *zgSegment::getCurve() const
{
    if (!path)
        return nullptr;
    int i = index;
    const int count = path->segments.size();
    // The last segment of an open contour has no curve of its own: it answers
    // with the curve that ends at it.
    if (!path->closed && i > 0 && i == count - 1)
        i = count - 2;
    return curveOf(path, i);
}

zgCurve *zgSegment::getCurvePrev() const
{
    if (!path)
        return nullptr;
    int i = index;
    const int count = path->segments.size();
    if (!path->closed && i > 0 && i < count)
        --i;
    else if (path->closed && i == 0)
        i = count - 1;
    return curveOf(path, i);
}

void zgSegment::setIntersection(zgCurveLocation *location)
{
    if (location)
        location->addRef();
    if (m_intersection)
        m_intersection->release();
    m_intersection = location;
}

bool zgSegment::remove()
{
    if (!path)
        return false;
    return path->removeSegments(index, index + 1);
}

void zgSegment::interpolate(const zgSegment *from, const zgSegment *to, double factor)
{
    if (!from || !to)
        return;
    const double keep = 1.0 - factor;
    point = zgPoint(keep * from->point.x + factor * to->point.x,
                    keep * from->point.y + factor * to->point.y);
    handleIn = zgPoint(keep * from->handleIn.x + factor * to->handleIn.x,
                       keep * from->handleIn.y + factor * to->handleIn.y);
    handleOut = zgPoint(keep * from->handleOut.x + factor * to->handleOut.x,
                        keep * from->handleOut.y + factor * to->handleOut.y);
}

void zgSegment::transform(const zgMatrix *matrix)
{
    QVector<double> coords(6);
    transformCoordinates(matrix, coords, true);
}

void zgSegment::transformCoordinates(const zgMatrix *matrix, QVector<double> &coords,
                                     bool change)
{
    if (coords.size() < 6)
        coords.resize(6);
    coords[0] = point.x;
    coords[1] = point.y;
    coords[2] = point.x + handleIn.x;
    coords[3] = point.y + handleIn.y;
    coords[4] = point.x + handleOut.x;
    coords[5] = point.y + handleOut.y;
    if (!matrix)
        return;
    matrix->transformCoords(coords, 3);
    if (!change)
        return;
    point = zgPoint(coords[0], coords[1]);
    handleIn = zgPoint(coords[2] - point.x, coords[3] - point.y);
    handleOut = zgPoint(coords[4] - point.x, coords[5] - point.y);
}

QString zgSegment::toString() const
{
    const QLatin1Char fill(' ');
    QString text = QStringLiteral("point: ") + point.toString();
    if (!handleIn.isZero())
        text += QStringLiteral(", handleIn: ") + handleIn.toString();
    if (!handleOut.isZero())
        text += QStringLiteral(", handleOut: ") + handleOut.toString();
    text += QStringLiteral(", winding: %1").arg(winding, 0, 10, fill);
    text += QStringLiteral(", contour: %1").arg(int(onPath), 0, 10, fill);
    text += QStringLiteral(", visited: %1 %2 %3")
                .arg(int(visited), 0, 10, fill)
                .arg(index, 0, 10, fill)
                .arg(refCount, 0, 10, fill);
    return text;
}

zgCurveLocation *zgSegment::getLocation() const
{
    zgCurve *curve = getCurve();
    if (!curve)
        return nullptr;
    const double time = curve->segment1() == this ? 0.0 : 1.0;
    return new zgCurveLocation(curve, time, zgPoint(qQNaN(), qQNaN()), false, 0.0);
}
