// ZDPath::parallelPath: the polyline at a constant distance from a path.
//
// Each subpath gives one offset polyline. Straight sides are offset exactly;
// curves are sampled at even steps of arc length, each sample being the
// curve point moved by the distance along the normal (ty, -tx) of its unit
// tangent. Corners are joined by a miter (cut square past the miter limit),
// and on their inner side the two offset sides are trimmed where they cross.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <cmath>

namespace {

// Bounds each walk along a curve, so that a coordinate range too vast for
// its step (or a length that has overflowed) cannot hold the call forever.
// A million samples on one curve lies far beyond any drawing use.
constexpr int kMaxSamplesPerWalk = 1 << 20;

// One side of a corner: the line through the corner (for a line element the
// element itself, for a curve the tangent at the corner as its vector) and,
// for a curve, the curve itself. Curves are made for the corner and released
// with it.
struct CornerSide
{
    zgLine line;
    zgCurve *curve = nullptr;    // forward, from the element list
    zgCurve *reversed = nullptr; // the same cubic backwards, for an incoming curve
    // For an outgoing side: the line's end, or the curve's first control point.
    zgPoint nextPoint;

    CornerSide() = default;
    CornerSide(const CornerSide &) = delete;
    CornerSide &operator=(const CornerSide &) = delete;
    ~CornerSide()
    {
        if (curve)
            curve->release();
        if (reversed)
            reversed->release();
    }

    bool isCurve() const { return curve != nullptr; }
};

// The samples of an inner trim walk: the crossing is put halfway between the
// first sample past the other side and the one before it. The first sample
// stands in for its own predecessor, so a walk that crosses at once gives
// that sample itself.
class TrimWalk
{
public:
    const zgPoint &take(const zgPoint &sample)
    {
        m_previous = m_count == 0 ? sample : m_last;
        m_last = sample;
        ++m_count;
        return m_last;
    }

    zgPoint crossing() const
    {
        return zgPoint((m_previous.x + m_last.x) * 0.5, (m_previous.y + m_last.y) * 0.5);
    }

private:
    zgPoint m_previous;
    zgPoint m_last;
    int m_count = 0;
};

// Calls visit(s) for s = from, from + step, ... while s is below end (or at
// most end, if inclusive) and until visit returns true. Nothing runs for a
// step that is not above 0 or an end that is not finite; the walk also ends
// where adding the step no longer moves s, and after kMaxSamplesPerWalk
// samples, so its work stays bounded.
template <class Visit>
void walkArcLength(double from, double end, double step, bool inclusive, Visit visit)
{
    if (!(step > 0.0) || !std::isfinite(end))
        return;
    double s = from;
    for (int samples = 0; samples < kMaxSamplesPerWalk; ++samples) {
        if (!(inclusive ? s <= end : s < end))
            return;
        if (visit(s))
            return;
        const double next = s + step;
        if (!(next > s))
            return;
        s = next;
    }
}

QVector<double> reversedValues(const QVector<double> &values)
{
    return QVector<double>{values[6], values[7], values[4], values[5],
                           values[2], values[3], values[0], values[1]};
}

class ParallelOutliner
{
public:
    ParallelOutliner(const QVector<ZDPathElement> &elements, ZDPath &out, double distance,
                     double step)
        : m_elements(elements), m_out(out), m_distance(distance), m_step(step)
    {
    }

    void run();

private:
    zgPoint pointOf(int i) const { return zgPoint(m_elements.at(i).x, m_elements.at(i).y); }
    int typeOf(int i) const { return m_elements.at(i).type; }
    int count() const { return m_elements.size(); }

    // Building the sides of a corner.
    void setLineSide(CornerSide &side, int from, int to) const;
    void setIncomingCurve(CornerSide &side, int start) const;
    void setOutgoingCurve(CornerSide &side, int start) const;

    // The geometric helpers.
    zgLine offsetLine(const zgLine &line) const;
    zgPoint offsetPointAt(zgCurve *curve, double s, double distance);
    double miterLimit() const;
    bool isOnOffsetSide(const zgLine &line, const zgPoint &p) const;
    bool isBeyond(const zgLine &line, const zgPoint &p) const;
    bool isInnerLineCorner(const CornerSide &in, const CornerSide &out) const;
    bool isInnerCurveCorner(const CornerSide &in, const CornerSide &out) const;

    // Writing.
    void lineTo(const zgPoint &p) { m_out.lineTo(p.x, p.y); }
    void appendClose(const zgPoint &p);
    void setOutPoint(int index, const zgPoint &p);
    void setCorner(const zgPoint &x, bool pending);
    double emissionStart(zgCurve *curve) const;
    void emitSamples(zgCurve *curve, double from, double end);
    void emitToLength(zgCurve *curve);
    void emitSingleCurve(zgCurve *curve);

    // Corners.
    void outerJoin(const CornerSide &in, const CornerSide &out, bool lineCorner, bool dotTest);
    zgPoint squareCut(const CornerSide &in, const CornerSide &out, const zgPoint &e1,
                      const zgPoint &s2);
    void trimCurveIntoLine(const CornerSide &in, const CornerSide &out);
    void trimCurveIntoCurve(const CornerSide &in, const CornerSide &out);
    void trimLineIntoCurve(const CornerSide &in, const CornerSide &out);
    void curveCorner(const CornerSide &in, const CornerSide &out);

    // The element loop.
    void onLine(int i);
    void onCurve(int i);
    void onClose(int i);
    bool endsCurve(int i) const { return i >= 0 && i == m_lastCurveEnd; }

    const QVector<ZDPathElement> m_elements;
    ZDPath &m_out;
    const double m_distance;
    const double m_step;

    zgPoint m_current;        // the last offset point written by a join or a subpath start
    bool m_pending = false;   // the next curve starts after an inner trim point
    int m_moveIn = -1;        // input index of the last move
    int m_lastCurveEnd = -1;  // input index of the end element of the last cubic read
    zgPoint m_lastOffsetPoint; // the result of the last offsetPointAt that found its place
};

void ParallelOutliner::setLineSide(CornerSide &side, int from, int to) const
{
    side.line = zgLine(pointOf(from), pointOf(to), false);
    side.nextPoint = pointOf(to);
}

// The cubic whose start is element `start`: forward and reversed, with the
// tangent line at its end, the corner.
void ParallelOutliner::setIncomingCurve(CornerSide &side, int start) const
{
    const QVector<double> values{pointOf(start).x,     pointOf(start).y,
                                 pointOf(start + 1).x, pointOf(start + 1).y,
                                 pointOf(start + 2).x, pointOf(start + 2).y,
                                 pointOf(start + 3).x, pointOf(start + 3).y};
    side.curve = new zgCurve(values, nullptr);
    side.reversed = new zgCurve(reversedValues(values), nullptr);
    side.line = zgLine(pointOf(start + 3), side.curve->getTangentAtTime(1.0), true);
}

// The cubic whose start is element `start`, with the tangent line at its start.
void ParallelOutliner::setOutgoingCurve(CornerSide &side, int start) const
{
    const QVector<double> values{pointOf(start).x,     pointOf(start).y,
                                 pointOf(start + 1).x, pointOf(start + 1).y,
                                 pointOf(start + 2).x, pointOf(start + 2).y,
                                 pointOf(start + 3).x, pointOf(start + 3).y};
    side.curve = new zgCurve(values, nullptr);
    side.line = zgLine(pointOf(start), side.curve->getTangentAtTime(0.0), true);
    side.nextPoint = pointOf(start + 1);
}

// The line moved sideways by the distance; a zero vector stays zero and so
// gives a zero-length line at the start point.
zgLine ParallelOutliner::offsetLine(const zgLine &line) const
{
    const double length = line.vector.getLength();
    const zgPoint unit = length == 0.0 ? zgPoint() : line.vector.divide(length);
    const zgPoint shift(m_distance * unit.y, -m_distance * unit.x);
    return zgLine(line.point.add(shift), line.vector, true);
}

// The offset point at arc length s from the curve's start. A sample that
// finds no place on the curve repeats the last point found.
zgPoint ParallelOutliner::offsetPointAt(zgCurve *curve, double s, double distance)
{
    const double t = zgCurve::getTimeAt(curve->getValues(nullptr), s, -100.0);
    zgCurveLocation *location = curve->getLocationAtTime(t);
    if (!location)
        return m_lastOffsetPoint;
    const zgPoint tangent = location->getTangent();
    const zgPoint point = location->getPoint();
    location->release();
    m_lastOffsetPoint = zgPoint(point.x + distance * tangent.y, point.y - distance * tangent.x);
    return m_lastOffsetPoint;
}

// Computed with the library's tangent at each corner: tan(pi / 4) rounds to
// just below 1, so a right-angle miter, |distance| from the side's end,
// stays within the limit.
double ParallelOutliner::miterLimit() const
{
    return std::fabs(m_distance) / std::tan(0.7853981633974483);
}

// Whether p lies on the side of line that the distance's sign selects.
bool ParallelOutliner::isOnOffsetSide(const zgLine &line, const zgPoint &p) const
{
    const int side = line.getSide(p, false);
    return (m_distance > 0.0 && side >= 1) || (m_distance < 0.0 && side < 0);
}

// Whether p has crossed to the offset side of line by at least |distance|.
bool ParallelOutliner::isBeyond(const zgLine &line, const zgPoint &p) const
{
    return isOnOffsetSide(line, p) && line.getDistance(p) >= std::fabs(m_distance);
}

// At a corner of two lines: the outgoing line turns to the offset side, or
// runs along the incoming one.
bool ParallelOutliner::isInnerLineCorner(const CornerSide &in, const CornerSide &out) const
{
    const int side = in.line.getSide(out.nextPoint, false);
    return (m_distance > 0.0 && side >= 0) || (m_distance < 0.0 && side <= 0);
}

// At a corner with a curve: the corner is inner when the outgoing side turns
// towards the offset. A fold-back straight along the incoming tangent is
// told apart by the curvature at the corner, of the outgoing curve if there
// is one, else of the incoming curve.
bool ParallelOutliner::isInnerCurveCorner(const CornerSide &in, const CornerSide &out) const
{
    const int side = in.line.getSide(out.nextPoint, true);
    const bool foldsBack = side == 0 && in.line.vector.dot(out.line.vector) < 0.0;
    const double curvature = out.isCurve() ? out.curve->getCurvatureAtTime(0.0)
                                           : in.curve->getCurvatureAtTime(1.0);
    const bool left = side > 0 || (foldsBack && curvature > 0.0);
    const bool right = side < 0 || (foldsBack && curvature < 0.0);
    return (m_distance > 0.0 && left) || (m_distance < 0.0 && right);
}

void ParallelOutliner::appendClose(const zgPoint &p)
{
    m_out.elements.append(ZDPathElement(p.x, p.y, ZDCloseElement));
}

// Writes the point of an output element by an index counted on the input;
// nothing when the output has no such element.
void ParallelOutliner::setOutPoint(int index, const zgPoint &p)
{
    if (index < 0 || index >= m_out.elements.size())
        return;
    m_out.elements[index].x = p.x;
    m_out.elements[index].y = p.y;
}

void ParallelOutliner::setCorner(const zgPoint &x, bool pending)
{
    m_current = x;
    m_pending = pending;
}

// Where a curve's samples begin: at its start, or one step past the point of
// the curve nearest to an inner trim point that cut into it.
double ParallelOutliner::emissionStart(zgCurve *curve) const
{
    if (!m_pending)
        return 0.0;
    const double t = zgCurve::getNearestTime(curve->getValues(nullptr), m_current);
    return curve->getPartLength(0.0, t) + m_step;
}

// lineTo the samples at from, from + step, ... while below end.
void ParallelOutliner::emitSamples(zgCurve *curve, double from, double end)
{
    walkArcLength(from, end, m_step, false, [&](double s) {
        lineTo(offsetPointAt(curve, s, m_distance));
        return false;
    });
}

// The samples of a curve followed by its offset end point.
void ParallelOutliner::emitToLength(zgCurve *curve)
{
    const double length = curve->getLength();
    emitSamples(curve, emissionStart(curve), length);
    lineTo(offsetPointAt(curve, length, m_distance));
}

// A subpath of one curve: a move to its offset start, the samples from one
// step on, and its offset end.
void ParallelOutliner::emitSingleCurve(zgCurve *curve)
{
    const zgPoint start = offsetPointAt(curve, 0.0, m_distance);
    m_out.moveTo(start.x, start.y);
    const double length = curve->getLength();
    emitSamples(curve, m_step, length);
    lineTo(offsetPointAt(curve, length, m_distance));
}

// The miter point of the two offset sides, or the square cut where the miter
// runs past the limit or the path folds back. lineCorner enables the inner
// corner test of two lines; dotTest the fold-back test of collinear sides.
void ParallelOutliner::outerJoin(const CornerSide &in, const CornerSide &out, bool lineCorner,
                                 bool dotTest)
{
    const zgLine o1 = offsetLine(in.line);
    const zgLine o2 = offsetLine(out.line);
    // The end of the incoming offset side at the corner.
    const zgPoint e1 = in.isCurve() ? o1.point : o1.point.add(o1.vector);
    const zgPoint s2 = o2.point;
    zgPoint x;
    if (!in.line.isCollinear(out.line)) {
        // Taken on the outgoing side, whose start lies near the miter point:
        // the miter of an axis-aligned right angle then comes out exact, at
        // |distance| from e1, within the limit.
        x = o2.intersect(o1, true);
        if (!(lineCorner && isInnerLineCorner(in, out)) && miterLimit() < x.getDistance(e1, false))
            x = squareCut(in, out, e1, s2);
    } else if (dotTest && in.line.vector.dot(out.line.vector) <= 0.0) {
        x = squareCut(in, out, e1, s2);
    } else {
        x = s2;
    }
    lineTo(x);
    setCorner(x, false);
}

// Prolongs both offset sides by |distance|: writes the end of the first and
// returns the start of the second. The directions come from the angles of
// the side lines, so a zero vector reads as direction (1, 0).
zgPoint ParallelOutliner::squareCut(const CornerSide &in, const CornerSide &out,
                                    const zgPoint &e1, const zgPoint &s2)
{
    const double reach = std::fabs(m_distance);
    const double a1 = std::atan2(in.line.vector.y, in.line.vector.x);
    const double a2 = std::atan2(out.line.vector.y, out.line.vector.x);
    lineTo(zgPoint(e1.x + reach * std::cos(a1), e1.y + reach * std::sin(a1)));
    return zgPoint(s2.x - reach * std::cos(a2), s2.y - reach * std::sin(a2));
}

// Inner corner from an incoming curve into an outgoing line: walks the curve
// backwards from the corner, on the same side, until its offset has crossed
// the offset of the line, and ends the curve's samples there.
void ParallelOutliner::trimCurveIntoLine(const CornerSide &in, const CornerSide &out)
{
    const double length = in.reversed->getLength();
    zgPoint x = m_current;
    TrimWalk walk;
    double end = in.curve->getLength();
    walkArcLength(0.0, length, m_step, true, [&](double s) {
        // The reversed curve's normal points the other way: flip the distance.
        const zgPoint p = walk.take(offsetPointAt(in.reversed, s, -m_distance));
        if (isBeyond(out.line, p)) {
            x = walk.crossing();
            end = length - s;
            return true;
        }
        return false;
    });
    emitSamples(in.curve, emissionStart(in.curve), end);
    lineTo(x);
    setCorner(x, false);
}

// Inner corner between two curves: walks the outgoing curve until its offset
// lies on the offset side of the incoming tangent and at least |distance|
// from the incoming curve; the incoming curve's samples end at the place
// nearest to that sample.
void ParallelOutliner::trimCurveIntoCurve(const CornerSide &in, const CornerSide &out)
{
    zgPoint x = m_current;
    TrimWalk walk;
    double end = in.curve->getLength();
    walkArcLength(0.0, out.curve->getLength(), m_step, true, [&](double s) {
        const zgPoint p = walk.take(offsetPointAt(out.curve, s, m_distance));
        if (isOnOffsetSide(in.line, p)) {
            zgCurveLocation *nearest = in.curve->getNearestLocation(p);
            const bool crossed = std::fabs(m_distance) <= nearest->distance;
            if (crossed)
                end = in.curve->getPartLength(0.0, nearest->getTime());
            nearest->release();
            if (crossed) {
                x = walk.crossing();
                return true;
            }
        }
        return false;
    });
    emitSamples(in.curve, emissionStart(in.curve), end);
    lineTo(x);
    setCorner(x, true);
}

// Inner corner from an incoming line into an outgoing curve: walks the curve
// until its offset has crossed the offset of the line.
void ParallelOutliner::trimLineIntoCurve(const CornerSide &in, const CornerSide &out)
{
    zgPoint x = m_current;
    TrimWalk walk;
    walkArcLength(0.0, out.curve->getLength(), m_step, true, [&](double s) {
        const zgPoint p = walk.take(offsetPointAt(out.curve, s, m_distance));
        if (isBeyond(in.line, p)) {
            x = walk.crossing();
            return true;
        }
        return false;
    });
    lineTo(x);
    setCorner(x, true);
}

// A corner with a curve on at least one side: trimmed on the inner side;
// on the outer side an incoming curve is written to its end and the sides
// are joined.
void ParallelOutliner::curveCorner(const CornerSide &in, const CornerSide &out)
{
    const bool inner = isInnerCurveCorner(in, out);
    if (inner) {
        if (!out.isCurve())
            trimCurveIntoLine(in, out);
        else if (in.isCurve())
            trimCurveIntoCurve(in, out);
        else
            trimLineIntoCurve(in, out);
        return;
    }
    if (in.isCurve())
        emitToLength(in.curve);
    outerJoin(in, out, false, true);
}

void ParallelOutliner::onLine(int i)
{
    if (i < 1)
        return;
    CornerSide out;
    setLineSide(out, i - 1, i);
    const int previousType = typeOf(i - 1);
    if (previousType == ZDMoveToElement) {
        m_current = offsetLine(out.line).point;
        m_out.moveTo(m_current.x, m_current.y);
    } else if (previousType == ZDLineToElement && i >= 2) {
        CornerSide in;
        setLineSide(in, i - 2, i - 1);
        outerJoin(in, out, true, true);
    } else if (endsCurve(i - 1)) {
        CornerSide in;
        setIncomingCurve(in, i - 4);
        curveCorner(in, out);
    }
    const bool endsSubpath = i == count() - 1 || typeOf(i + 1) == ZDMoveToElement;
    if (endsSubpath) {
        const zgLine o = offsetLine(out.line);
        lineTo(o.point.add(o.vector));
        m_pending = false;
    }
}

// Element i is the first control point of a cubic that starts at element
// i - 1; elements i + 1 and i + 2 complete it.
void ParallelOutliner::onCurve(int i)
{
    const int previousType = typeOf(i - 1);
    const bool endsSubpath = i == count() - 3 || (i + 3 < count() && typeOf(i + 3) == ZDMoveToElement);
    CornerSide out;
    setOutgoingCurve(out, i - 1);
    if (previousType == ZDMoveToElement) {
        m_pending = false;
        m_current = offsetLine(out.line).point;
        if (endsSubpath) {
            emitSingleCurve(out.curve);
            return;
        }
        m_out.moveTo(m_current.x, m_current.y);
        return;
    }
    if (previousType == ZDLineToElement && i >= 2) {
        CornerSide in;
        setLineSide(in, i - 2, i - 1);
        curveCorner(in, out);
    } else if (endsCurve(i - 1)) {
        CornerSide in;
        setIncomingCurve(in, i - 4);
        curveCorner(in, out);
    } else {
        return;
    }
    if (endsSubpath)
        emitToLength(out.curve);
}

// The corner where a closed subpath meets its start, between its last
// element and the first after its move.
void ParallelOutliner::onClose(int i)
{
    const int first = m_moveIn + 1;
    if (m_moveIn < 0 || first >= i)
        return;
    const bool firstIsLine = typeOf(first) == ZDLineToElement;
    const bool firstIsCurve = typeOf(first) == ZDCurveToElement && first + 2 < count();
    const bool lastIsLine = typeOf(i - 1) == ZDLineToElement && i >= 2;
    const bool lastIsCurve = endsCurve(i - 1);
    CornerSide in;
    CornerSide out;
    if (firstIsLine && (lastIsLine || lastIsCurve)) {
        setLineSide(out, m_moveIn, first);
        if (lastIsLine) {
            setLineSide(in, i - 2, i - 1);
            outerJoin(in, out, true, false);
        } else {
            setIncomingCurve(in, i - 4);
            curveCorner(in, out);
        }
        appendClose(m_current);
        setOutPoint(m_moveIn, m_current);
        return;
    }
    if (!firstIsCurve || !(lastIsLine || lastIsCurve))
        return;
    setOutgoingCurve(out, m_moveIn);
    if (lastIsLine)
        setLineSide(in, i - 2, i - 1);
    else
        setIncomingCurve(in, i - 4);
    // An inner corner ends at its trim point; an outer one goes on from the
    // join back to the start of the first curve's offset.
    const bool inner = isInnerCurveCorner(in, out);
    curveCorner(in, out);
    if (inner) {
        appendClose(m_current);
        return;
    }
    const zgPoint s2 = offsetLine(out.line).point;
    lineTo(s2);
    appendClose(s2);
}

void ParallelOutliner::run()
{
    for (int i = 0; i < count(); ++i) {
        switch (typeOf(i)) {
        case ZDMoveToElement:
            m_moveIn = i;
            m_pending = false;
            break;
        case ZDLineToElement:
            onLine(i);
            break;
        case ZDCurveToElement:
            // A cubic cut short at the end of the list, or with no start
            // point before it, is skipped.
            if (i + 2 >= count())
                return;
            if (i >= 1) {
                onCurve(i);
                m_lastCurveEnd = i + 2;
            }
            i += 2;
            break;
        case ZDCloseElement:
            onClose(i);
            break;
        default:
            break;
        }
    }
}

} // namespace

void ZDPath::parallelPath(ZDPath &out, double distance, double step)
{
    if (distance == 0.0) {
        out = *this;
        return;
    }
    // A shared copy of the list keeps the input intact when out is this path.
    ParallelOutliner outliner(elements, out, distance, step);
    outliner.run();
}
