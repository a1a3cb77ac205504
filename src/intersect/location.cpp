// zgCurveLocation: finding the curve again after edits, offsets, comparison,
// sorted insertion, the touching and crossing tests, division and splitting.
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>

namespace {

// The time that means "none".
const double kNoTime = -100.0;

int pathId(zgPath *path)
{
    return path ? path->id : 0;
}

// Whether a direction angle lies between two others, in degrees; the margin
// makes a direction that coincides with the upper bound count as inside.
bool inRange(double angle, double min, double max)
{
    if (min < max)
        return angle > min && angle < max + 1e-10;
    return angle > min + 1e-10 || angle < max;
}

} // namespace

void zgCurveLocation::setCurve(zgCurve *curve)
{
    if (!curve)
        return;
    path = curve->path();
    version = path ? path->version : 0;
    this->curve = curve;
    m_segmentM = nullptr;
    segment1 = curve->segment1();
    segment2 = curve->segment2();
}

void zgCurveLocation::setSegment(zgSegment *segment)
{
    if (zgCurve *segmentCurve = segment->getCurve())
        setCurve(segmentCurve);
    m_segmentM = segment;
    time = segment == segment1 ? 0.0 : 1.0;
    point = segment->point;
}

void zgCurveLocation::setSegmentPrev(zgSegment *segment)
{
    if (zgCurve *segmentCurve = segment->getCurvePrev())
        setCurve(segmentCurve);
    m_segmentM = segment;
    time = segment == segment1 ? 0.0 : 1.0;
    point = segment->point;
}

zgCurve *zgCurveLocation::getCurve()
{
    if (path && path->version != version) {
        curve = nullptr;
        time = kNoTime;
        offset = -1.0;
    }
    if (curve)
        return curve;

    // Places the location on the curve of a segment, if its point lies on it.
    auto tryOn = [this](zgSegment *segment) {
        if (!segment)
            return false;
        zgCurve *candidate = segment->getCurve();
        if (!candidate)
            return false;
        time = zgCurve::getTimeOf(candidate->getValues(nullptr), point);
        if (time == kNoTime)
            return false;
        setCurve(candidate);
        m_segmentM = segment;
        return true;
    };
    if (!tryOn(m_segmentM) && !tryOn(segment1))
        tryOn(segment2 ? segment2->getPrevious() : nullptr);
    return curve;
}

double zgCurveLocation::getTime()
{
    zgCurve *found = getCurve();
    if (found && time == kNoTime)
        time = zgCurve::getTimeOf(found->getValues(nullptr), point);
    return time;
}

int zgCurveLocation::getIndex()
{
    zgCurve *found = getCurve();
    return found ? found->index() : -1;
}

zgPath *zgCurveLocation::getPath()
{
    zgCurve *found = getCurve();
    return found ? found->path() : nullptr;
}

zgPoint zgCurveLocation::getTangent()
{
    const double t = getTime();
    if (t == kNoTime || !curve)
        return zgPoint(qQNaN(), qQNaN());
    return curve->getTangentAt(t, true);
}

zgPoint zgCurveLocation::getNormal()
{
    const double t = getTime();
    if (t == kNoTime || !curve)
        return zgPoint(qQNaN(), qQNaN());
    return curve->getNormalAt(t, true);
}

zgPoint zgCurveLocation::getWeightedTangent()
{
    const double t = getTime();
    if (t == kNoTime || !curve)
        return zgPoint(qQNaN(), qQNaN());
    return curve->getWeightedTangentAt(t, true);
}

zgPoint zgCurveLocation::getWeightedNormal()
{
    const double t = getTime();
    if (t == kNoTime || !curve)
        return zgPoint(qQNaN(), qQNaN());
    return curve->getWeightedNormalAt(t, true);
}

double zgCurveLocation::getCurvature()
{
    const double t = getTime();
    if (t == kNoTime || !curve)
        return qQNaN();
    return zgCurve::getCurvature(curve->getValues(nullptr), t);
}

double zgCurveLocation::getCurveOffset()
{
    const double t = getTime();
    if (t == kNoTime || !curve)
        return 0.0;
    return zgCurve::getLength(curve->getValues(nullptr), 0.0, t);
}

double zgCurveLocation::getOffset()
{
    // The version check first: an edit of the contour throws the cached
    // offset away, so that it is measured again from the point.
    getCurve();
    if (offset != -1.0)
        return offset;
    double before = 0.0;
    zgPath *contour = getPath();
    const int curveIndex = getIndex();
    if (contour && curveIndex != -1) {
        const QList<zgCurve *> curves = contour->getCurves();
        for (int i = 0; i < curveIndex && i < curves.size(); ++i)
            before += curves.at(i)->getLength();
    }
    offset = before + getCurveOffset();
    return offset;
}

zgSegment *zgCurveLocation::getSegment()
{
    zgCurve *found = getCurve();
    // A location that no longer lies on its contour has no segment, whatever
    // it remembered.
    if (!found)
        return nullptr;
    if (m_segmentM)
        return m_segmentM;
    const double t = getTime();
    if (t == kNoTime)
        return nullptr;
    zgSegment *nearest;
    if (t == 0.0)
        nearest = found->segment1();
    else if (t == 1.0)
        nearest = found->segment2();
    else
        nearest = found->getPartLength(0.0, t) < found->getPartLength(t, 1.0)
                ? found->segment1() : found->segment2();
    m_segmentM = nearest;
    return nearest;
}

bool zgCurveLocation::equals(zgCurveLocation *other, bool ignoreOther)
{
    if (other == this)
        return true;
    if (!other)
        return false;
    zgCurve *curve1 = getCurve();
    zgCurve *curve2 = other->getCurve();
    zgPath *path1 = curve1 ? curve1->path() : nullptr;
    if (path1 != (curve2 ? curve2->path() : nullptr))
        return false;
    // Geometric tolerance: two places farther apart are different places.
    if (point.getDistance(other->point) > 2e-07)
        return false;

    // The end of a closed contour meets its start.
    int index1 = getIndex();
    int index2 = other->getIndex();
    if (curve1 && curve2 && curve1->isLast() && curve2->isFirst())
        index1 = -1;
    if (curve1 && curve2 && curve2->isLast() && curve1->isFirst())
        index2 = -1;
    // Curve time at the same place, across a joint.
    const bool sameTime = std::abs((getTime() + index1) - (other->getTime() + index2)) < 4e-07;
    if (!sameTime) {
        const double apart = std::abs(getOffset() - other->getOffset());
        const double turn = path1 ? path1->getLength() : 0.0;
        // Offsets equal, or a whole turn of the contour apart.
        if (apart >= 2e-07 && std::abs(turn - apart) >= 2e-07)
            return false;
    }
    if (ignoreOther)
        return true;
    if (m_intersection)
        return m_intersection->equals(other->intersection(), true);
    return !other->intersection();
}

zgCurveLocation *zgCurveLocation::insert(QList<zgCurveLocation *> &locations,
                                         zgCurveLocation *location, bool merge)
{
    if (!location)
        return nullptr;
    if (locations.isEmpty()) {
        locations.insert(0, location);
        return location;
    }
    if (merge) {
        // Only the leading run of entries at the location's own point is compared.
        for (zgCurveLocation *entry : qAsConst(locations)) {
            if (entry->point.getDistance(location->point) > 2e-07)
                break;
            const bool match = entry == location
                    || (entry->getPath() == location->getPath() && entry->equals(location, false));
            if (!match)
                continue;
            if (location->overlap) {
                entry->overlap = true;
                if (entry->intersection())
                    entry->intersection()->overlap = true;
            }
            return entry;
        }
    }
    // Binary search; an equal key goes behind the entries already there.
    // The location's own path and key are read once: the first read makes
    // them known, and later reads give the same.
    zgPath *locationPath = location->getPath();
    bool locationKeyKnown = false;
    double locationKey = 0.0;
    int low = 0;
    int high = locations.size() - 1;
    while (low <= high) {
        const int middle = (low + high) / 2;
        zgCurveLocation *entry = locations.at(middle);
        zgPath *entryPath = entry->getPath();
        if (locationPath == entryPath && !locationKeyKnown) {
            locationKey = location->getIndex() + location->getTime();
            locationKeyKnown = true;
        }
        const double diff = locationPath == entryPath
                ? locationKey - (entry->getIndex() + entry->getTime())
                : double(pathId(locationPath) - pathId(entryPath));
        if (diff >= 0.0)
            low = middle + 1;
        else
            high = middle - 1;
    }
    locations.insert(low, location);
    return location;
}

QList<zgCurveLocation *> zgCurveLocation::expand(QList<zgCurveLocation *> locations)
{
    QList<zgCurveLocation *> expanded = locations;
    for (int i = locations.size() - 1; i >= 0; --i) {
        if (zgCurveLocation *partner = locations.at(i)->intersection())
            insert(expanded, partner, false);
    }
    return expanded;
}

bool zgCurveLocation::isTouching()
{
    if (!m_intersection)
        return false;
    if (!getTangent().isCollinear(m_intersection->getTangent()))
        return false;
    zgCurve *curve1 = getCurve();
    zgCurve *curve2 = m_intersection->getCurve();
    if (curve1 && curve2 && curve1->isStraight() && curve2->isStraight()) {
        // Straight lines with a real intersection cross, whatever their tangents say.
        return curve1->getLine().intersect(curve2->getLine(), false).isNaN();
    }
    return true;
}

bool zgCurveLocation::isCrossing()
{
    zgCurveLocation *inter = m_intersection;
    if (!inter)
        return false;
    const double a = getTime();
    const double b = inter->getTime();
    // Curve time away from both ends.
    const bool aInside = a > 4e-07 && a < 0.9999996;
    const bool bInside = b > 4e-07 && b < 0.9999996;
    if (aInside && bInside)
        return !isTouching();

    zgCurve *c2 = getCurve();
    zgCurve *c1 = c2;
    zgCurve *c4 = inter->getCurve();
    zgCurve *c3 = c4;
    if (a <= 4e-07 && c1)
        c1 = c1->getPrevious();
    if (b <= 4e-07 && c3)
        c3 = c3->getPrevious();
    if (a >= 0.9999996 && c2)
        c2 = c2->getNext();
    if (b >= 0.9999996 && c4)
        c4 = c4->getNext();
    if (!c1 || !c2 || !c3 || !c4)
        return false;

    // Sample the neighbouring curves at a sixty-fourth of the shortest of them.
    QVector<double> lengths;
    if (!aInside)
        lengths << c1->getLength() << c2->getLength();
    if (!bInside)
        lengths << c3->getLength() << c4->getLength();
    const double sampleOffset = *std::min_element(lengths.cbegin(), lengths.cend()) * 0.015625;

    const zgPoint pt = point;
    zgPoint v1, v2, v3, v4;
    if (aInside) {
        v2 = zgCurve::_evaluate(c2->getValues(nullptr), a, 1, true);
        v1 = v2.negate();
    } else {
        v2 = c2->getPointAt(sampleOffset, false).subtract(pt);
        v1 = c1->getPointAt(-sampleOffset, false).subtract(pt);
    }
    if (bInside) {
        v4 = zgCurve::_evaluate(c4->getValues(nullptr), b, 1, true);
        v3 = v4.negate();
    } else {
        v4 = c4->getPointAt(sampleOffset, false).subtract(pt);
        v3 = c3->getPointAt(-sampleOffset, false).subtract(pt);
    }
    const double a1 = v1.getAngle(nullptr);
    const double a2 = v2.getAngle(nullptr);
    const double a3 = v3.getAngle(nullptr);
    const double a4 = v4.getAngle(nullptr);
    if (aInside)
        return inRange(a1, a3, a4) != inRange(a2, a3, a4)
                && inRange(a1, a4, a3) != inRange(a2, a4, a3);
    return inRange(a3, a1, a2) != inRange(a4, a1, a2)
            && inRange(a3, a2, a1) != inRange(a4, a2, a1);
}

zgCurve *zgCurveLocation::divide()
{
    zgCurve *found = getCurve();
    if (!found)
        return nullptr;
    zgCurve *after = found->divideAtTime(getTime(), false);
    if (after)
        setSegment(after->segment1());
    return after;
}

zgPath *zgCurveLocation::split()
{
    zgCurve *found = getCurve();
    if (!found)
        return nullptr;
    zgCurveLocation *fresh = found->getLocationAtTime(getTime());
    zgPath *piece = found->splitAt(fresh);
    if (fresh)
        fresh->release();
    return piece;
}

QString zgCurveLocation::toString()
{
    QString text = QStringLiteral("point: ") + point.toString();
    text += QStringLiteral(" index: %1 %2").arg(getIndex(), 0, 10, QLatin1Char(' '))
                    .arg(refCount, 0, 10, QLatin1Char(' '));
    text += QStringLiteral(" time: %1").arg(getTime(), 0, 'g');
    text += QStringLiteral(" distance: %1").arg(distance, 0, 'g');
    text += QStringLiteral(" segment1: ") + (segment1 ? segment1->toString() : QString());
    text += QStringLiteral(" segment2: ") + (segment2 ? segment2->toString() : QString());
    return text;
}
