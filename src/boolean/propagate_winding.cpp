// Winding propagation: the winding number of a stretch of divided outline,
// measured once at half its length and written on all its segments.
#include <zgraphics/model.h>

#include <cmath>

namespace {

// One curve of a stretch, with the segment it starts at.
struct chainEntry
{
    zgSegment *segment;
    zgCurve *curve;
    double length;
};

// The curves from segment up to the next segment that carries a location,
// or round to segment again, or past the end of an open contour (whose last
// segment answers with the last curve once more).
QVector<chainEntry> stretchFrom(zgSegment *segment, double &total)
{
    QVector<chainEntry> chain;
    total = 0.0;
    zgSegment *current = segment;
    do {
        zgCurve *curve = current->getCurve();
        if (!curve)
            break;
        // The cache is shared with other stretches that ask the same curve.
        if (curve->length == 0.0)
            curve->length = zgCurve::getLength(curve->getValues(nullptr), 0.0, 1.0);
        chain.append({current, curve, curve->length});
        total += curve->length;
        current = current->getNext();
    } while (current && !current->intersection() && current != segment);
    return chain;
}

bool belongsTo(const XPath *compound, zgPath *contour)
{
    return compound && contour && compound->children.contains(contour);
}

} // namespace

void XPath::propagateWinding(zgSegment *segment, XPath *path1, XPath *path2,
                             QList<zgMono *> monoCurves, int op)
{
    double total = 0.0;
    const QVector<chainEntry> chain = stretchFrom(segment, total);
    zgWinding winding(0, false);
    double half = total * 0.5;
    for (const chainEntry &entry : chain) {
        if (half > entry.length) {
            half -= entry.length;
            continue;
        }
        const QVector<double> values = entry.curve->getValues(nullptr);
        double t = zgCurve::getTimeAt(values, half, -100.0);
        // 1e-07 and 0.0001: keep the sample off the ends of the curve, where
        // curves join, and off its middle, where the middle of a stretch of
        // two equal curves would land on their common vertex.
        if (std::fabs(t) < 1e-07)
            t += 0.0001;
        if (std::fabs(t - 1.0) < 1e-07 || std::fabs(t - 0.5) < 1e-07)
            t -= 0.0001;
        const zgPoint point = entry.curve->getPointAtTime(t);
        const zgPoint tangent = entry.curve->getTangentAtTime(t);
        // 1e-07: a tangent this flat is horizontal for the ray.
        const bool horizontal = std::fabs(tangent.y) < 1e-07;
        zgPath *contour = entry.curve->path();
        if (op == opSubtract && path2
            && ((belongsTo(path1, contour) && path2->getWinding(point, horizontal) != 0)
                || (belongsTo(path2, contour) && path1->getWinding(point, horizontal) == 0))) {
            // Minuend outline inside the subtrahend, subtrahend outline
            // outside the minuend: dropped whatever the total count.
            winding = zgWinding(0, false);
        } else {
            winding = getWinding(point, monoCurves, horizontal);
        }
        break;
    }
    for (int i = chain.size() - 1; i >= 0; --i) {
        chain.at(i).segment->winding = winding.winding;
        chain.at(i).segment->onPath = winding.onPath;
    }
}
