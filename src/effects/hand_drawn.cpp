// ZDPath::manualPath: a hand-drawn look for a path, from one-dimensional
// noise of the arc length. The noise has no seed, so equal input gives equal
// output.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>
#include <zgraphics/primitives.h>

#include "effects/contour_walk.h"

#include <cmath>

namespace {

// The noise is read at this many noise units per unit of arc length: one
// noise cell spans 20 units of the path.
const double kNoisePerLength = 0.05;

QPointF toQPointF(const zgPoint &p)
{
    return QPointF(p.x, p.y);
}

// The most samples one contour takes, as in the parallel outline: a step
// below len / kMaxSamplesPerContour samples every len / kMaxSamplesPerContour
// instead, so that a tiny step cannot make the work grow without bound.
const double kMaxSamplesPerContour = 1 << 20;

// The samples between the ends of a contour: every step units of arc length
// the contour's point moved sideways, along the normal (ty, -tx), by the noise
// at that length times amplitude. A sample without a location repeats the one
// before it, (0, 0) for the first. No samples for a step that is not above 0
// or a length that is not finite; the sampling stops where adding step no
// longer moves the offset.
void appendSamples(ZDPath &line, zgPath *contour, double len, double amplitude, double step)
{
    if (!(step > 0.0) || !std::isfinite(len))
        return;
    if (len / step > kMaxSamplesPerContour)
        step = len / kMaxSamplesPerContour;
    zgContourWalk walk(contour);
    QPointF sample(0.0, 0.0);
    double s = step;
    while (s < len) {
        const double offset = zgNumeric::perlinNoise_1D(s * kNoisePerLength) * amplitude;
        zgPoint point;
        zgPoint tangent;
        if (walk.pointAndTangentAt(s, point, tangent))
            sample = QPointF(point.x + tangent.y * offset, point.y - tangent.x * offset);
        line.lineTo(sample);
        const double next = s + step;
        if (!(next > s))
            break;
        s = next;
    }
}

// The hand-drawn copy of one contour: a move at its first point, the samples,
// a line to its last point (its first point again if it is closed) and, on a
// closed contour, closeSubpath.
ZDPath handDrawnContour(zgPath *contour, double amplitude, double step)
{
    const double len = contour->getLength();
    const QPointF first = toQPointF(contour->getFirstSegment()->getPoint());
    const bool closed = contour->isClosed();
    const QPointF end = closed ? first : toQPointF(contour->getLastSegment()->getPoint());

    ZDPath line;
    line.moveTo(first);
    appendSamples(line, contour, len, amplitude, step);
    line.lineTo(end);
    if (closed)
        line.closeSubpath();
    return line;
}

bool sameElement(const ZDPathElement &a, const ZDPathElement &b)
{
    return a.x == b.x && a.y == b.y && a.auxX == b.auxX && a.auxY == b.auxY && a.type == b.type;
}

bool sameElements(const QVector<ZDPathElement> &a, const QVector<ZDPathElement> &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (!sameElement(a.at(i), b.at(i)))
            return false;
    }
    return true;
}

} // namespace

void ZDPath::manualPath(ZDPath &src, double amplitude, double step)
{
    if (src.isEmpty())
        return;
    XPath contours;
    src.toXPath(contours, 0);

    QVector<ZDPathElement> result;
    for (zgPath *contour : contours.children) {
        if (!contour || contour->isEmpty())
            continue;
        const ZDPath line = handDrawnContour(contour, amplitude, step);
        for (const ZDPathElement &element : line.elements)
            result.append(element);
    }
    // An equal list is kept as it is, without a write to this path.
    if (!sameElements(result, elements))
        elements = result;
}
