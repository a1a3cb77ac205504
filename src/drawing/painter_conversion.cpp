// ZDPath: removal of empty subpaths, the bridges to and from QPainterPath,
// and the rounding of points to integers.
#include <zgraphics/drawing.h>

#include <QtCore/QPoint>

#include <climits>
#include <cmath>

namespace {

// qRound's rule (v + 0.5 truncated for v >= 0; for negative v the fraction
// above the integer below is rounded the same way, so -2.5 gives -2), kept to
// the 32-bit range: values beyond it are clamped and NaN gives 0.
// The rule is worked in doubles and only the clamped result is converted:
// next to either end of the range qRound's own int conversions (of v + 0.5,
// and of v - 1 for negative v) fall outside int, although the rounded value
// itself is still inside.
int roundToInt(double v)
{
    if (qIsNaN(v))
        return 0;
    if (v >= double(INT_MAX))
        return INT_MAX;
    if (v <= double(INT_MIN))
        return INT_MIN;
    double rounded;
    if (v >= 0.0) {
        rounded = std::trunc(v + 0.5);
    } else {
        const double below = std::trunc(v - 1);
        rounded = std::trunc(v - below + 0.5) + below;
    }
    return int(qBound(double(INT_MIN), rounded, double(INT_MAX)));
}

QPointF pointOf(const ZDPathElement &e)
{
    return QPointF(e.x, e.y);
}

} // namespace

void ZDPath::cleanUp()
{
    if (elements.isEmpty())
        return;
    if (elements.constFirst().type != ZDMoveToElement)
        elements.first().type = ZDMoveToElement;

    int32_t previousType = ZDMoveToElement;
    int i = 1;
    while (i < elements.size()) {
        const int32_t type = elements.at(i).type;
        if (previousType == ZDMoveToElement && type == ZDMoveToElement) {
            // Two moves: the earlier one starts nothing. The later move now
            // sits at i - 1 and stays the element before.
            elements.remove(i - 1);
            continue;
        }
        if (previousType == ZDMoveToElement && type == ZDCloseElement) {
            // A move closed at once is an empty subpath: both go, and the
            // scan goes on with the element that followed them.
            elements.remove(i - 1, 2);
            previousType = ZDCloseElement;
            --i;
            continue;
        }
        previousType = type;
        ++i;
    }

    if (!elements.isEmpty() && elements.constLast().type == ZDMoveToElement)
        elements.removeLast();
}

void ZDPath::fromPainterPath(const QPainterPath &path)
{
    const int n = path.elementCount();
    elements.reserve(elements.size() + n);
    for (int i = 0; i < n; ++i) {
        const QPainterPath::Element &e = path.elementAt(i);
        elements.append(ZDPathElement(e.x, e.y, int32_t(e.type)));
    }
}

void ZDPath::toPainterPath(QPainterPath &out) const
{
    out = QPainterPath();
    const int n = elements.size();
    for (int i = 0; i < n; ++i) {
        const ZDPathElement &e = elements.at(i);
        switch (e.type) {
        case ZDMoveToElement:
            out.moveTo(pointOf(e));
            break;
        case ZDLineToElement:
            out.lineTo(pointOf(e));
            break;
        case ZDCurveToElement:
            // The two followers are the second control point and the end,
            // whatever their types; a cubic cut short draws nothing.
            if (i + 2 < n) {
                out.cubicTo(pointOf(e), pointOf(elements.at(i + 1)), pointOf(elements.at(i + 2)));
                i += 2;
            }
            break;
        case ZDCloseElement:
            out.closeSubpath();
            break;
        default:
            // A lone type 3 element, or an unknown type.
            break;
        }
    }
}

void ZDPath::toPainterPathWithRoundValue(QPainterPath &out) const
{
    // The rounded points of all elements but the close ones.
    QVector<QPoint> rounded;
    rounded.reserve(elements.size());
    for (const ZDPathElement &e : elements) {
        if (e.type != ZDCloseElement)
            rounded.append(QPoint(roundToInt(e.x), roundToInt(e.y)));
    }

    out = QPainterPath();
    const int n = elements.size();
    const int pointCount = rounded.size();
    // The running index into `rounded`. It can run ahead of the points (a
    // cubic cut short still takes three) or behind them (a lone type 3 takes
    // none); a point it would read past the end is not drawn.
    int next = 0;
    for (int i = 0; i < n; ++i) {
        switch (elements.at(i).type) {
        case ZDMoveToElement:
            if (next < pointCount)
                out.moveTo(QPointF(rounded.at(next)));
            next += 1;
            break;
        case ZDLineToElement:
            if (next < pointCount)
                out.lineTo(QPointF(rounded.at(next)));
            next += 1;
            break;
        case ZDCurveToElement:
            if (i + 2 < n) {
                if (next + 2 < pointCount)
                    out.cubicTo(QPointF(rounded.at(next)), QPointF(rounded.at(next + 1)),
                                QPointF(rounded.at(next + 2)));
                i += 2;
            }
            next += 3;
            break;
        case ZDCloseElement:
            out.closeSubpath();
            break;
        default:
            break;
        }
    }
}

void ZDPath::roundData()
{
    for (ZDPathElement &e : elements) {
        if (e.type == ZDCloseElement)
            continue;
        e.x = roundToInt(e.x);
        e.y = roundToInt(e.y);
    }
}
