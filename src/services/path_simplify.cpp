// Simplification: few cubics fitted by least squares through the points of a
// contour, in place of its segments.
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <climits>
#include <cmath>

namespace {

// The point at u of the Bezier curve of the given degree (at most 3) on
// controls, by de Casteljau's rule; u outside 0 to 1 extrapolates.
zgPoint deCasteljau(const zgPoint *controls, int degree, double u)
{
    zgPoint p[4];
    for (int i = 0; i <= degree; ++i)
        p[i] = controls[i];
    const double v = 1.0 - u;
    for (int level = degree; level > 0; --level) {
        for (int i = 0; i < level; ++i)
            p[i] = zgPoint(p[i].x * v + p[i + 1].x * u, p[i].y * v + p[i + 1].y * u);
    }
    return p[0];
}

// The tolerance truncated toward zero to an int. A NaN counts as 0 and a
// value beyond the int range as the nearest int, where a plain conversion
// would be undefined.
int truncatedError(double tolerance)
{
    if (qIsNaN(tolerance))
        return 0;
    if (tolerance >= double(INT_MAX))
        return INT_MAX;
    if (tolerance <= double(INT_MIN))
        return INT_MIN;
    return int(tolerance);
}

// A range of points still to fit, with the tangents at its ends.
struct zgFitSpan
{
    int first;
    int last;
    zgPoint tan1;
    zgPoint tan2;
};

// Fits span with one curve if it can: -1 when a curve was added, else the
// index of the point at which the span is to be split.
int fitOrSplit(zgSegmentFitter &fitter, int error, const zgFitSpan &span)
{
    const zgPoint &pt1 = fitter.points.at(span.first);
    const zgPoint &pt2 = fitter.points.at(span.last);
    if (span.last - span.first == 1) {
        const double third = pt1.getDistance(pt2) / 3.0;
        fitter.addCurve({pt1, pt1.add(span.tan1.normalize(third)),
                         pt2.add(span.tan2.normalize(third)), pt2});
        return -1;
    }
    QVector<double> u = fitter.parameterizeByChord(span.first, span.last);
    // Computed in doubles, so that the square of a large error cannot
    // overflow; wherever the int product exists the two agree.
    const double errorValue = error;
    double maxError = qMax(errorValue, errorValue * errorValue);
    bool inOrder = true;
    int split = -1;
    for (int pass = 0; pass < 5; ++pass) {
        const QVector<zgPoint> curve =
            fitter.generateCurve(span.first, span.last, u, span.tan1, span.tan2);
        const QPair<int, double> worst = fitter.findMaxError(span.first, span.last, curve, u);
        split = worst.first;
        // A squared distance against the error as it stands, deliberately.
        if (worst.second < error && inOrder) {
            fitter.addCurve(curve);
            return -1;
        }
        if (worst.second >= maxError)
            break;
        inOrder = fitter.reparameterize(span.first, span.last, u, curve);
        maxError = worst.second;
    }
    // Only NaN distances leave the start index standing, which need not lie
    // inside the span; the middle keeps the split progressing.
    if (split <= span.first || split >= span.last)
        split = span.first + (span.last - span.first) / 2;
    return split;
}

} // namespace

zgSegmentFitter::zgSegmentFitter(const zgPath *path)
{
    if (!path)
        return;
    for (const zgSegment *segment : path->segments) {
        const zgPoint &point = segment->point;
        // 1e-12: a point this close to the last one kept adds nothing to fit.
        if (points.isEmpty() || std::abs(point.x - points.last().x) > 1e-12
                || std::abs(point.y - points.last().y) > 1e-12)
            points.append(point);
    }
    closed = path->closed;
    if (closed && !points.isEmpty()) {
        points.prepend(points.last());
        points.append(points.at(1));
    }
}

QList<zgSegment *> zgSegmentFitter::fit(double tolerance)
{
    segments.clear();
    const int n = points.size();
    if (n == 0)
        return segments;
    segments.append(new zgSegment(points.at(0).x, points.at(0).y));
    if (n > 1) {
        const int error = truncatedError(tolerance);
        fitRange(error, 0, n - 1, points.at(1).subtract(points.at(0)),
                 points.at(n - 2).subtract(points.at(n - 1)));
    }
    if (closed) {
        segments.takeFirst()->release();
        if (!segments.isEmpty())
            segments.takeLast()->release();
    }
    return segments;
}

void zgSegmentFitter::fitRange(int error, int first, int last, const zgPoint &tan1,
                               const zgPoint &tan2)
{
    if (first < 0 || last >= points.size() || last <= first)
        return;
    // The spans still to fit, the next one on top: the left half of a split
    // is fitted before the right half, as a recursion would, but a dense
    // polyline can split thousands of times in a row without deepening the
    // call stack.
    QVector<zgFitSpan> pending{{first, last, tan1, tan2}};
    while (!pending.isEmpty()) {
        const zgFitSpan span = pending.takeLast();
        const int split = fitOrSplit(*this, error, span);
        if (split < 0)
            continue;
        const zgPoint tanCenter = points.at(split - 1).subtract(points.at(split + 1));
        pending.append({split, span.last, tanCenter.negate(), span.tan2});
        pending.append({span.first, split, span.tan1, tanCenter});
    }
}

QVector<double> zgSegmentFitter::parameterizeByChord(int first, int last) const
{
    const int m = last - first;
    QVector<double> u(m + 1, 0.0);
    for (int i = 1; i <= m; ++i)
        u[i] = u.at(i - 1) + points.at(first + i).getDistance(points.at(first + i - 1));
    for (int i = 1; i <= m; ++i)
        u[i] /= u.at(m);
    return u;
}

QVector<zgPoint> zgSegmentFitter::generateCurve(int first, int last, const QVector<double> &u,
                                                const zgPoint &tan1, const zgPoint &tan2) const
{
    const zgPoint &pt1 = points.at(first);
    const zgPoint &pt2 = points.at(last);
    double c00 = 0.0, c01 = 0.0, c11 = 0.0, x0 = 0.0, x1 = 0.0;
    for (int i = 0; i <= last - first; ++i) {
        const double s = u.at(i);
        const double t = 1.0 - s;
        const double b = 3.0 * s * t;
        const double b0 = t * t * t;
        const double b1 = b * t;
        const double b2 = b * s;
        const double b3 = s * s * s;
        const zgPoint a1 = tan1.normalize(b1);
        const zgPoint a2 = tan2.normalize(b2);
        const zgPoint tmp = points.at(first + i)
                                .subtract(pt1.multiply(b0 + b1))
                                .subtract(pt2.multiply(b2 + b3));
        c00 += a1.dot(a1);
        c01 += a1.dot(a2);
        c11 += a2.dot(a2);
        x0 += a1.dot(tmp);
        x1 += a2.dot(tmp);
    }

    const double det = c00 * c11 - c01 * c01;
    double alpha1 = 0.0;
    double alpha2 = 0.0;
    // 1e-12: below this the two handle lengths are not independent.
    if (std::abs(det) > 1e-12) {
        alpha1 = (c11 * x0 - c01 * x1) / det;
        alpha2 = (c00 * x1 - c01 * x0) / det;
    } else {
        // One length for both handles, from whichever row is not zero.
        const double c0 = c00 + c01;
        const double c1 = c01 + c11;
        if (std::abs(c0) > 1e-12)
            alpha1 = alpha2 = x0 / c0;
        else if (std::abs(c1) > 1e-12)
            alpha1 = alpha2 = x1 / c1;
    }

    const double segLength = pt1.getDistance(pt2);
    // Handles shorter than this, relative to the chord, or pointing
    // backwards, fall back to a third of the chord.
    const double eps = segLength * 1e-12;
    zgPoint handle1;
    zgPoint handle2;
    bool fallback = alpha1 < eps || alpha2 < eps;
    if (!fallback) {
        const zgPoint line = pt2.subtract(pt1);
        handle1 = tan1.normalize(alpha1);
        handle2 = tan2.normalize(alpha2);
        // The control points would cross each other.
        fallback = handle1.dot(line) - handle2.dot(line) > segLength * segLength;
    }
    if (fallback) {
        alpha1 = alpha2 = segLength / 3.0;
        handle1 = tan1.normalize(alpha1);
        handle2 = tan2.normalize(alpha2);
    }
    return {pt1, pt1.add(handle1), pt2.add(handle2), pt2};
}

QPair<int, double> zgSegmentFitter::findMaxError(int first, int last,
                                                 const QVector<zgPoint> &curve,
                                                 const QVector<double> &u) const
{
    int index = (last - first + 1) / 2;
    double maxDist = 0.0;
    for (int i = first + 1; i < last; ++i) {
        const zgPoint v = deCasteljau(curve.constData(), 3, u.at(i - first)).subtract(points.at(i));
        const double dist = v.x * v.x + v.y * v.y;
        if (dist >= maxDist) {
            maxDist = dist;
            index = i;
        }
    }
    return qMakePair(index, maxDist);
}

bool zgSegmentFitter::reparameterize(int first, int last, QVector<double> &u,
                                     const QVector<zgPoint> &curve) const
{
    for (int i = first; i <= last; ++i)
        u[i - first] = newtonStep(curve, points.at(i), u.at(i - first));
    for (int i = 1; i <= last - first; ++i) {
        if (u.at(i) <= u.at(i - 1))
            return false;
    }
    return true;
}

double zgSegmentFitter::newtonStep(const QVector<zgPoint> &curve, const zgPoint &point, double u)
{
    zgPoint curve1[3];
    zgPoint curve2[2];
    for (int i = 0; i <= 2; ++i)
        curve1[i] = curve.at(i + 1).subtract(curve.at(i)).multiply(3.0);
    for (int i = 0; i <= 1; ++i)
        curve2[i] = curve1[i + 1].subtract(curve1[i]).multiply(2.0);
    const zgPoint pt = deCasteljau(curve.constData(), 3, u);
    const zgPoint pt1 = deCasteljau(curve1, 2, u);
    const zgPoint pt2 = deCasteljau(curve2, 1, u);
    const zgPoint diff = pt.subtract(point);
    const double df = pt1.dot(pt1) + diff.dot(pt2);
    // 1e-06: too flat a denominator would throw the parameter far off.
    if (std::abs(df) < 1e-06)
        return u;
    return u - diff.dot(pt1) / df;
}

void zgSegmentFitter::addCurve(const QVector<zgPoint> &curve)
{
    if (segments.isEmpty())
        segments.append(new zgSegment(curve.at(0).x, curve.at(0).y));
    segments.last()->handleOut = curve.at(1).subtract(curve.at(0));
    segments.append(new zgSegment(curve.at(3), curve.at(2).subtract(curve.at(3)), zgPoint()));
}

bool zgPath::simplify(double tolerance)
{
    zgSegmentFitter fitter(this);
    const QList<zgSegment *> list = fitter.fit(tolerance);
    if (list.isEmpty())
        return false;
    setSegments(list);
    return true;
}

bool XPath::simplify(double tolerance)
{
    bool changed = false;
    for (zgPath *child : children) {
        zgSegmentFitter fitter(child);
        QList<zgSegment *> list = fitter.fit(tolerance);
        if (list.isEmpty())
            continue;
        child->clearSegments();
        child->clearCurves();
        child->addSegments(list, -1);
        changed = true;
    }
    return changed;
}
