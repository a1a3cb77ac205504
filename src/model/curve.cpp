// zgCurve as an object: the cubic between two segments, its place in the
// contour, its cached length, removal, division and parts. The mathematics
// on the 8-value array lives in src/curve/.
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

zgCurve::zgCurve(const QVector<double> &values, zgPath *path) : zgCurve()
{
    const zgPoint point1(values.value(0), values.value(1));
    const zgPoint point2(values.value(6), values.value(7));
    const zgPoint handleOut(values.value(2) - point1.x, values.value(3) - point1.y);
    const zgPoint handleIn(values.value(4) - point2.x, values.value(5) - point2.y);
    m_path = path;
    m_segment1 = new zgSegment(point1, zgPoint(), handleOut);
    m_segment2 = new zgSegment(point2, handleIn, zgPoint());
    m_segment1->addRef();
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

zgCurve *zgCurve::clone() const
{
    return new zgCurve(m_path, m_segment1, m_segment2);
}

void zgCurve::setSegment1(zgSegment *segment)
{
    if (segment)
        segment->addRef();
    if (m_segment1)
        m_segment1->release();
    m_segment1 = segment;
}

void zgCurve::setSegment2(zgSegment *segment)
{
    if (segment)
        segment->addRef();
    if (m_segment2)
        m_segment2->release();
    m_segment2 = segment;
}

int zgCurve::index() const
{
    return m_segment1 ? m_segment1->index : -1;
}

zgPoint zgCurve::getPoint1() const
{
    return m_segment1 ? m_segment1->point : zgPoint();
}

zgPoint zgCurve::getPoint2() const
{
    return m_segment2 ? m_segment2->point : zgPoint();
}

QVector<zgPoint> zgCurve::getPoints() const
{
    const QVector<double> values = getValues(nullptr);
    QVector<zgPoint> points;
    points.reserve(4);
    for (int i = 0; i < 8; i += 2)
        points.append(zgPoint(values.at(i), values.at(i + 1)));
    return points;
}

zgLine zgCurve::getLine() const
{
    return zgLine(getPoint1(), getPoint2(), false);
}

QVector<double> zgCurve::getValues(const zgMatrix *matrix) const
{
    return getValues(m_segment1, m_segment2, matrix);
}

bool zgCurve::isFirst() const
{
    return m_path && m_segment1 && m_segment1->index == 0;
}

bool zgCurve::isLast() const
{
    return m_path && m_segment1 && m_segment1->index == m_path->curves.size() - 1;
}

zgCurve *zgCurve::getNext() const
{
    if (!m_path || !m_segment1 || m_path->curves.isEmpty())
        return nullptr;
    const QList<zgCurve *> &curves = m_path->curves;
    const int next = m_segment1->index + 1;
    if (next >= 0 && next < curves.size())
        return curves.at(next);
    if (next >= curves.size() && m_path->closed)
        return curves.first();
    return nullptr;
}

zgCurve *zgCurve::getPrevious() const
{
    if (!m_path || !m_segment1 || m_path->curves.isEmpty())
        return nullptr;
    const QList<zgCurve *> &curves = m_path->curves;
    const int previous = m_segment1->index - 1;
    if (previous >= 0 && previous < curves.size())
        return curves.at(previous);
    if (previous < 0 && m_path->closed)
        return curves.last();
    return nullptr;
}

bool zgCurve::hasHandles() const
{
    const bool outZero = !m_segment1 || m_segment1->handleOut.isZero();
    const bool inZero = !m_segment2 || m_segment2->handleIn.isZero();
    return !(outZero && inZero);
}

void zgCurve::clearHandles()
{
    if (m_segment1)
        m_segment1->handleOut = zgPoint();
    if (m_segment2)
        m_segment2->handleIn = zgPoint();
}

void zgCurve::_changed()
{
    length = 0.0;
    bounds = zgRect();
}

double zgCurve::getLength()
{
    // 0 means not known, so a curve of true length 0 is measured each time.
    if (length == 0.0)
        length = getLength(getValues(nullptr), 0.0, 1.0);
    return length;
}

double zgCurve::getPartLength(double from, double to) const
{
    return getLength(getValues(nullptr), from, to);
}

// The handles of the member tests: segment1's handleOut and segment2's handleIn.
static zgPoint handle1Of(const zgSegment *segment1)
{
    return segment1 ? segment1->handleOut : zgPoint();
}

static zgPoint handle2Of(const zgSegment *segment2)
{
    return segment2 ? segment2->handleIn : zgPoint();
}

bool zgCurve::isLinear() const
{
    return isLinear(getLine(), handle1Of(m_segment1), handle2Of(m_segment2));
}

bool zgCurve::isStraight() const
{
    return isStraight(getLine(), handle1Of(m_segment1), handle2Of(m_segment2));
}

bool zgCurve::isHorizontal() const
{
    // 1e-07: a tangent this close to the x axis counts as horizontal.
    return isStraight() && qAbs(_evaluate(getValues(nullptr), 0.5, 1, true).y) < 1e-07;
}

bool zgCurve::isVertical() const
{
    // 1e-07: a tangent this close to the y axis counts as vertical.
    return isStraight() && qAbs(_evaluate(getValues(nullptr), 0.5, 1, true).x) < 1e-07;
}

bool zgCurve::isCollinear(const zgCurve *other) const
{
    if (!other)
        return false;
    return isStraight() && other->isStraight() && getLine().isCollinear(other->getLine());
}

double zgCurve::getArea() const
{
    return getArea(getValues(nullptr));
}

zgPoint zgCurve::getPointAtTime(double t) const
{
    return getPoint(getValues(nullptr), t);
}

zgPoint zgCurve::getTangentAtTime(double t) const
{
    return getTangent(getValues(nullptr), t);
}

zgPoint zgCurve::getNormalAtTime(double t) const
{
    return getNormal(getValues(nullptr), t);
}

zgPoint zgCurve::getWeightedTangentAtTime(double t) const
{
    return getWeightedTangent(getValues(nullptr), t);
}

zgPoint zgCurve::getWeightedNormalAtTime(double t) const
{
    return getWeightedNormal(getValues(nullptr), t);
}

double zgCurve::getCurvatureAtTime(double t) const
{
    return getCurvature(getValues(nullptr), t);
}

// A curve time from a time or an arc length offset (negative: from the end);
// -100.0 for an offset beyond the curve.
static double timeOf(const QVector<double> &values, double location, bool isTime)
{
    return isTime ? location : zgCurve::getTimeAt(values, location, -100.0);
}

zgPoint zgCurve::getPointAt(double location, bool isTime) const
{
    const QVector<double> values = getValues(nullptr);
    return getPoint(values, timeOf(values, location, isTime));
}

zgPoint zgCurve::getTangentAt(double location, bool isTime) const
{
    const QVector<double> values = getValues(nullptr);
    return getTangent(values, timeOf(values, location, isTime));
}

zgPoint zgCurve::getNormalAt(double location, bool isTime) const
{
    const QVector<double> values = getValues(nullptr);
    return getNormal(values, timeOf(values, location, isTime));
}

zgPoint zgCurve::getWeightedTangentAt(double location, bool isTime) const
{
    const QVector<double> values = getValues(nullptr);
    return getWeightedTangent(values, timeOf(values, location, isTime));
}

zgPoint zgCurve::getWeightedNormalAt(double location, bool isTime) const
{
    const QVector<double> values = getValues(nullptr);
    return getWeightedNormal(values, timeOf(values, location, isTime));
}

double zgCurve::getCurvatureAt(double location, bool isTime) const
{
    const QVector<double> values = getValues(nullptr);
    return getCurvature(values, timeOf(values, location, isTime));
}

double zgCurve::getTimeAt(double offset, double start) const
{
    return getTimeAt(getValues(nullptr), offset, start);
}

double zgCurve::getTimeOf(const zgPoint &point) const
{
    return getTimeOf(getValues(nullptr), point);
}

double zgCurve::getOffsetAtTime(double t) const
{
    return getLength(getValues(nullptr), 0.0, t);
}

bool zgCurve::remove()
{
    if (!m_path || !m_segment1 || !m_segment2)
        return false;
    // The removal may destroy this curve: work on local copies from here on.
    zgSegment *segment1 = m_segment1;
    zgSegment *segment2 = m_segment2;
    const zgPoint savedHandle = segment1->handleOut;
    segment1->handleOut = segment2->handleOut;
    const bool removed = segment2->remove();
    if (!removed)
        segment1->handleOut = savedHandle;
    return removed;
}

zgCurve *zgCurve::divideAtTime(double t, bool setHandles)
{
    // 4e-07: a time this close to an end would make a degenerate piece.
    if (!(t >= 4e-07 && t <= 0.9999996) || !m_segment1 || !m_segment2)
        return nullptr;
    const QVector<QVector<double>> parts = subdivide(getValues(nullptr), t);
    const QVector<double> &left = parts.at(0);
    const QVector<double> &right = parts.at(1);
    const bool withHandles = setHandles || hasHandles();
    if (withHandles) {
        m_segment1->handleOut = zgPoint(left[2] - left[0], left[3] - left[1]);
        m_segment2->handleIn = zgPoint(right[4] - right[6], right[5] - right[7]);
    }
    const zgPoint point(left[6], left[7]);
    zgSegment *segment = new zgSegment(point, zgPoint(), zgPoint());
    if (withHandles) {
        segment->handleIn = zgPoint(left[4] - point.x, left[5] - point.y);
        segment->handleOut = zgPoint(right[2] - point.x, right[3] - point.y);
    }
    if (m_path) {
        // The contour keeps its curve list right, the closing curve included.
        m_path->insertSegment(m_segment1->index + 1, segment);
        return getNext();
    }
    // A free curve: this curve ends at the new segment without taking a
    // reference on it, and the new curve takes one on it and on the old end.
    zgSegment *oldSegment2 = m_segment2;
    m_segment2 = segment;
    _changed();
    return new zgCurve(nullptr, segment, oldSegment2);
}

zgCurve *zgCurve::divide(double value, bool isTime)
{
    return divideAtTime(timeOf(getValues(nullptr), value, isTime), false);
}

zgCurve *zgCurve::getPart(double from, double to) const
{
    return new zgCurve(getPart(getValues(nullptr), from, to), nullptr);
}

QString zgCurve::toString() const
{
    QString text = QStringLiteral("point1: ") + getPoint1().toString();
    const zgPoint handle1 = handle1Of(m_segment1);
    const zgPoint handle2 = handle2Of(m_segment2);
    if (!handle1.isZero())
        text += QStringLiteral(" handle1: ") + handle1.toString();
    if (!handle2.isZero())
        text += QStringLiteral(" handle2: ") + handle2.toString();
    text += QStringLiteral(" point2: ") + getPoint2().toString();
    return text;
}
