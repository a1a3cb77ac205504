// ZDPath::wavePath: regular wave shapes drawn along each contour of a path.
//
// A contour of length len gets n steps of length d = len / n. The sideways
// direction at a point with unit tangent (tx, ty) is the normal (ty, -tx);
// `sign` (starting at -1) picks the side of the alternating kinds.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "effects/contour_walk.h"

#include <QtCore/QtGlobal>

#include <cmath>

namespace {

enum WaveKind {
    SmoothWave = 0,     // cubics, alternating sides
    ArchesOnNormal = 1, // cubics, all on the side of the normal
    ArchesOpposite = 2, // cubics, all on the other side
    Zigzag = 3,         // lines, alternating sides
    TeethOnNormal = 4,  // lines, all on the side of the normal
    TeethOpposite = 5,  // lines, all on the other side
    SquareWave = 6      // lines, alternating sides
};

bool isKnownKind(int kind)
{
    return kind >= SmoothWave && kind <= SquareWave;
}

// Kinds 0, 3 and 6 alternate sides at every step, so an odd number of their
// steps cannot close: the bits of those kinds.
bool alternatesSides(int kind)
{
    const unsigned alternatingKinds = 0x49;
    return isKnownKind(kind) && ((alternatingKinds >> kind) & 1u) != 0;
}

// The most steps one contour's wave takes: a finer wave is drawn with this
// many steps, so that a tiny wavelength cannot make the work and the output
// grow without bound. Even, so that a capped closed wave still closes.
const qint64 kMaxWaveSteps = 100000;

// The number of steps on a contour with len / wavelength = w: w rounded half
// away from zero, made even on a closed contour of an alternating kind by
// going to the nearer side of w. 0 when w is NaN or infinite, where no count
// could be drawn; kMaxWaveSteps when w is above it. A negative w (a negative
// wavelength) makes no steps, like 0.
qint64 stepCount(double w, bool closed, int kind)
{
    if (!std::isfinite(w) || w < -double(kMaxWaveSteps))
        return 0;
    if (w > double(kMaxWaveSteps))
        return kMaxWaveSteps;
    qint64 n = qint64(std::round(w));
    if (closed && alternatesSides(kind) && n % 2 != 0)
        n = (w <= double(n)) ? n - 1 : n + 1;
    return n;
}

QPointF toQPointF(const zgPoint &p)
{
    return QPointF(p.x, p.y);
}

// Draws the wave of one contour into out.
class WaveBuilder
{
public:
    WaveBuilder(ZDPath &out, zgPath *contour, int kind, double amplitude, double handle)
        : m_out(out), m_contour(contour), m_walk(contour), m_kind(kind), m_amplitude(amplitude),
          m_handle(handle), m_closed(contour->isClosed())
    {
    }

    void run(double wavelength);

private:
    // A place on the contour: its point and unit tangent.
    struct Place
    {
        QPointF point;
        QPointF tangent;
    };

    bool placeAt(double offset, Place &place);
    // place's point moved by distance along the normal (ty, -tx).
    static QPointF sideways(const Place &place, double distance);

    void smoothStep(bool firstStep);
    void zigzagStep(bool firstStep);
    void archStep(double side);
    void toothStep(double side);
    void squareStep(bool last);
    void finish();
    // Takes off the move that opened the contour's wave and opens it at p.
    void restartAt(const QPointF &p);

    ZDPath &m_out;
    zgPath *m_contour;
    zgContourWalk m_walk;
    const int m_kind;
    const double m_amplitude;
    const double m_handle;
    const bool m_closed;

    double m_d = 0.0;      // the step length
    double m_pos = 0.0;    // arc length reached
    double m_sign = -1.0;  // the side of the next alternating step
    QPointF m_previous;    // the current outgoing control point
    QPointF m_first;       // where a closed wave starts and ends
    QPointF m_firstIn;     // the incoming control point at m_first
    QPointF m_end;         // the contour's last point
};

void WaveBuilder::run(double wavelength)
{
    const double len = m_contour->getLength();
    const qint64 n = stepCount(len / wavelength, m_closed, m_kind);
    m_d = len / double(n);

    const QPointF start = toQPointF(m_contour->getFirstSegment()->getPoint());
    m_end = toQPointF(m_contour->getLastSegment()->getPoint());
    m_out.moveTo(start);
    m_previous = start;
    // A closed wave whose first extreme finds no place starts and ends here.
    m_first = start;
    m_firstIn = start;
    if (!isKnownKind(m_kind))
        return;

    for (qint64 step = 0; step < n; ++step) {
        switch (m_kind) {
        case SmoothWave:
            smoothStep(step == 0);
            break;
        case Zigzag:
            zigzagStep(step == 0);
            break;
        case ArchesOnNormal:
            archStep(1.0);
            break;
        case ArchesOpposite:
            archStep(-1.0);
            break;
        case TeethOnNormal:
            toothStep(1.0);
            break;
        case TeethOpposite:
            toothStep(-1.0);
            break;
        default:
            squareStep(false);
            m_sign = -m_sign;
            m_pos += m_d;
            break;
        }
    }
    finish();
    if (m_closed)
        m_out.closeSubpath();
}

bool WaveBuilder::placeAt(double offset, Place &place)
{
    zgPoint point;
    zgPoint tangent;
    if (!m_walk.pointAndTangentAt(offset, point, tangent))
        return false;
    place.point = toQPointF(point);
    place.tangent = toQPointF(tangent);
    return true;
}

QPointF WaveBuilder::sideways(const Place &place, double distance)
{
    const double tx = place.tangent.x();
    const double ty = place.tangent.y();
    return QPointF(place.point.x() + distance * ty, place.point.y() + distance * -tx);
}

void WaveBuilder::restartAt(const QPointF &p)
{
    m_out.elements.removeLast();
    m_out.moveTo(p);
}

// Kind 0: one extreme per step, at d / 2, 3 d / 2, 5 d / 2, ... reached by a
// cubic whose handles lie along the tangent.
void WaveBuilder::smoothStep(bool firstStep)
{
    const double offset = m_pos > 0.0 ? m_pos + m_d : m_pos + m_d / 2.0;
    Place place;
    if (placeAt(offset, place)) {
        const QPointF p = sideways(place, m_amplitude * m_sign);
        const QPointF in = p - m_handle * place.tangent;
        const QPointF next = p + m_handle * place.tangent;
        if (m_pos == 0.0 && m_closed) {
            restartAt(p);
            m_first = p;
            m_firstIn = in;
        } else {
            m_out.cubicTo(m_previous, in, p);
        }
        m_previous = next;
    }
    m_pos += firstStep ? m_d / 2.0 : m_d;
    m_sign = -m_sign;
}

// Kind 3: the extremes of kind 0 joined by lines.
void WaveBuilder::zigzagStep(bool firstStep)
{
    const double offset = m_pos > 0.0 ? m_pos + m_d : m_pos + m_d / 2.0;
    Place place;
    if (placeAt(offset, place)) {
        const QPointF p = sideways(place, m_amplitude * m_sign);
        if (m_pos == 0.0 && m_closed) {
            restartAt(p);
            m_first = p;
        } else {
            m_out.lineTo(p);
        }
    }
    m_pos += firstStep ? m_d / 2.0 : m_d;
    m_sign = -m_sign;
}

// Kinds 1 and 2: an arch out to the middle of the step and back onto the
// contour at its end, as two cubics written element by element.
void WaveBuilder::archStep(double side)
{
    Place middle;
    Place stepEnd;
    if (placeAt(m_pos + m_d / 2.0, middle) && placeAt(m_pos + m_d, stepEnd)) {
        const QPointF p = sideways(middle, m_amplitude * side);
        const QPointF q = stepEnd.point;
        const QPointF in = p - m_handle * middle.tangent;
        const QPointF out = p + m_handle * middle.tangent;
        QVector<ZDPathElement> &elements = m_out.elements;
        elements.append(ZDPathElement(m_previous.x(), m_previous.y(), ZDCurveToElement));
        elements.append(ZDPathElement(in.x(), in.y(), ZDCurveToDataElement));
        elements.append(ZDPathElement(p.x(), p.y(), ZDCurveToDataElement));
        elements.append(ZDPathElement(out.x(), out.y(), ZDCurveToElement));
        elements.append(ZDPathElement(q.x(), q.y(), ZDCurveToDataElement));
        elements.append(ZDPathElement(q.x(), q.y(), ZDCurveToDataElement));
        m_previous = q;
    }
    m_pos += m_d;
}

// Kinds 4 and 5: a tooth out to the middle of the step and back onto the
// contour at its end.
void WaveBuilder::toothStep(double side)
{
    Place middle;
    Place stepEnd;
    if (placeAt(m_pos + m_d / 2.0, middle) && placeAt(m_pos + m_d, stepEnd)) {
        m_out.lineTo(sideways(middle, m_amplitude * side));
        m_out.lineTo(stepEnd.point);
    }
    m_pos += m_d;
}

// Kind 6: at each step boundary a jump across the contour from side a to
// side b; the first boundary of an open contour rises from the contour to b,
// and the last one (last set) only reaches a.
void WaveBuilder::squareStep(bool last)
{
    Place place;
    if (!placeAt(m_pos, place))
        return;
    const QPointF a = sideways(place, m_amplitude * m_sign);
    const QPointF b = sideways(place, -(m_amplitude * m_sign));
    if (last) {
        m_out.lineTo(a);
    } else if (m_pos != 0.0) {
        m_out.lineTo(a);
        m_out.lineTo(b);
    } else if (m_closed) {
        restartAt(a);
        m_out.lineTo(b);
    } else {
        m_out.lineTo(b);
    }
}

void WaveBuilder::finish()
{
    switch (m_kind) {
    case SmoothWave:
        if (m_closed)
            m_out.cubicTo(m_previous, m_firstIn, m_first);
        else
            m_out.cubicTo(m_previous, m_end, m_end);
        break;
    case Zigzag:
        m_out.lineTo(m_closed ? m_first : m_end);
        break;
    case SquareWave:
        if (!m_closed) {
            squareStep(true);
            m_out.lineTo(m_end);
        }
        break;
    default:
        break;
    }
}

} // namespace

void ZDPath::wavePath(ZDPath &out, int kind, double wavelength, double amplitude, double smoothness)
{
    if (amplitude == -1.0)
        amplitude = wavelength * 0.5;
    const double handle = amplitude * smoothness;

    XPath contours;
    toXPath(contours, 0);
    for (zgPath *contour : contours.children) {
        if (!contour || contour->isEmpty())
            continue;
        WaveBuilder(out, contour, kind, amplitude, handle).run(wavelength);
    }
}
