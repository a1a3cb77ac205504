// ZDCurve: one cubic walked in equal parameter steps by forward differencing.
#include <zgraphics/drawing.h>

#include <QtCore/qnumeric.h>

#include <cmath>

namespace {

// The most steps of a walk: a larger product of the polygon's length and the
// scale is cut to this, so that a walk or a search over the steps stays
// within about a million additions per axis (a scale of 1e300 would
// otherwise walk for a minute).
const int32_t kMaxSteps = 1 << 20;

} // namespace

ZDCurve::ZDCurve(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                 double y4)
    : scale(1.0)
{
    init(x1, y1, x2, y2, x3, y3, x4, y4);
}

ZDCurve::ZDCurve(QPointF p1, QPointF p2, QPointF p3, QPointF p4)
    : scale(1.5)
{
    init(p1, p2, p3, p4);
}

void ZDCurve::init(QPointF p1, QPointF p2, QPointF p3, QPointF p4)
{
    init(p1.x(), p1.y(), p2.x(), p2.y(), p3.x(), p3.y(), p4.x(), p4.y());
}

void ZDCurve::init(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                   double y4)
{
    start[0] = x1;
    start[1] = y1;
    end[0] = x4;
    end[1] = y4;
    control1[0] = x2;
    control1[1] = y2;
    control2[0] = x3;
    control2[1] = y3;

    const double len = std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1))
        + std::sqrt((x3 - x2) * (x3 - x2) + (y3 - y2) * (y3 - y2))
        + std::sqrt((x4 - x3) * (x4 - x3) + (y4 - y3) * (y4 - y3));
    const double steps = len * scale;
    if (!(steps >= 2.0))
        stepCount = 2; // also a NaN product
    else if (steps >= double(kMaxSteps))
        stepCount = kMaxSteps;
    else
        stepCount = int(steps);
    step = stepCount;

    const double s = 1.0 / stepCount;
    const double s2 = s * s;
    const double s3 = s2 * s;
    const double ax = x1 - 2.0 * x2 + x3;
    const double ay = y1 - 2.0 * y2 + y3;
    const double bx = 3.0 * (x2 - x3) - x1 + x4;
    const double by = 3.0 * (y2 - y3) - y1 + y4;

    fx = x1;
    fy = y1;
    dfx = 3.0 * s * (x2 - x1) + 3.0 * s2 * ax + s3 * bx;
    dfy = 3.0 * s * (y2 - y1) + 3.0 * s2 * ay + s3 * by;
    ddfx = 6.0 * s2 * ax + 6.0 * s3 * bx;
    ddfy = 6.0 * s2 * ay + 6.0 * s3 * by;
    dddfx = 6.0 * s3 * bx;
    dddfy = 6.0 * s3 * by;

    savedFx = fx;
    savedFy = fy;
    savedDfx = dfx;
    savedDfy = dfy;
    savedDdfx = ddfx;
    savedDdfy = ddfy;
}

void ZDCurve::reset()
{
    stepCount = 0;
    step = -1;
}

void ZDCurve::advance()
{
    fx += dfx;
    fy += dfy;
    dfx += ddfx;
    dfy += ddfy;
    ddfx += dddfx;
    ddfy += dddfy;
}

bool ZDCurve::vertex(double *x, double *y)
{
    if (step < 0)
        return false;
    double px = fx;
    double py = fy;
    if (step == stepCount) {
        px = start[0];
        py = start[1];
    } else if (step == 0) {
        px = end[0];
        py = end[1];
    } else {
        advance();
        px = fx;
        py = fy;
    }
    if (x)
        *x = px;
    if (y)
        *y = py;
    --step;
    return true;
}

bool ZDCurve::vertexn(QPointF &p)
{
    if (step > stepCount)
        return false;
    if (step == 0) {
        p = QPointF(start[0], start[1]);
    } else if (step == stepCount) {
        p = QPointF(end[0], end[1]);
    } else {
        fx -= dfx;
        fy -= dfy;
        dfx -= ddfx;
        dfy -= ddfy;
        ddfx -= dddfx;
        ddfy -= dddfy;
        p = QPointF(fx, fy);
    }
    ++step;
    return true;
}

int ZDCurve::getstep(double x, double y)
{
    step = stepCount;
    // Far beyond any Manhattan distance of interest.
    double nearest = 10000000000.0;
    int index = -1;
    double px = 0.0;
    double py = 0.0;
    while (vertex(&px, &py)) {
        const double distance = std::abs(px - x) + std::abs(py - y);
        if (distance < nearest) {
            nearest = distance;
            index = step;
        }
    }
    // 4.0: the reach of a pick, in Manhattan distance.
    return nearest < 4.0 ? index : -1;
}

int ZDCurve::frontPtAtDist(double dist)
{
    step = stepCount;
    if (step >= 0)
        --step; // the start point is skipped
    return indexAtDist(start, dist);
}

int ZDCurve::backPtAtDist(double dist)
{
    step = stepCount;
    return indexAtDist(end, dist);
}

int ZDCurve::indexAtDist(const double *anchor, double dist)
{
    // Far beyond any difference of squares of interest.
    double best = 10000000000.0;
    int index = -1;
    double px = 0.0;
    double py = 0.0;
    while (vertex(&px, &py)) {
        const double dx = px - anchor[0];
        const double dy = py - anchor[1];
        const double manhattan = std::abs(dx) + std::abs(dy);
        if (!(manhattan > dist && manhattan < 2.0 * dist))
            continue;
        const double miss = std::abs(dx * dx + dy * dy - dist * dist);
        if (miss < best) {
            best = miss;
            index = step;
        }
    }
    return index;
}

bool ZDCurve::splitcurve(QPointF *first, QPointF *second, double t)
{
    if (!(t >= 0.0 && t <= 1.0) || !first || !second)
        return false;
    // Reversed weights: t of the earlier point, 1 - t of the later one.
    const auto mix = [t](const QPointF &earlier, const QPointF &later) {
        return earlier * t + later * (1.0 - t);
    };
    const QPointF p0(start[0], start[1]);
    const QPointF p1(control1[0], control1[1]);
    const QPointF p2(control2[0], control2[1]);
    const QPointF p3(end[0], end[1]);
    const QPointF q0 = mix(p0, p1);
    const QPointF q1 = mix(p1, p2);
    const QPointF q2 = mix(p2, p3);
    const QPointF r0 = mix(q0, q1);
    const QPointF r1 = mix(q1, q2);
    const QPointF split = mix(r0, r1);
    first[0] = p0;
    first[1] = q0;
    first[2] = r0;
    first[3] = split;
    second[0] = split;
    second[1] = r1;
    second[2] = q2;
    second[3] = p3;
    return true;
}

bool ZDCurve::splitcurve(QPointF *first, QPointF *second, double x, double y)
{
    const int index = getstep(x, y);
    if (index == -1)
        return false;
    return splitcurve(first, second, double(index) / double(stepCount));
}
