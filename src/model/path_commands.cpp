// zgPath drawing commands: moves, lines, cubic and quadratic curves, arcs
// and ellipses, all appended through addSegment and addSegments.
#include <zgraphics/model.h>

#include <QtCore/qmath.h>

#include <cmath>

void zgPath::moveTo(double x, double y)
{
    moveToPt(zgPoint(x, y));
}

void zgPath::moveToPt(const zgPoint &point)
{
    if (segments.size() == 1)
        removeSegment(0);
    if (segments.isEmpty())
        addSegment(new zgSegment(point, zgPoint(), zgPoint()));
}

void zgPath::lineTo(double x, double y)
{
    lineToPt(zgPoint(x, y));
}

void zgPath::lineToPt(const zgPoint &point)
{
    addSegment(new zgSegment(point, zgPoint(), zgPoint()));
}

void zgPath::lineBy(const zgPoint &vector)
{
    const zgSegment *current = getLastSegment();
    if (!current)
        return;
    lineToPt(current->point.add(vector));
}

void zgPath::cubicCurveTo(const zgPoint &control1, const zgPoint &control2, const zgPoint &to)
{
    zgSegment *current = getLastSegment();
    if (!current)
        return;
    current->handleOut = control1.subtract(current->point);
    addSegment(new zgSegment(to, control2.subtract(to), zgPoint()));
}

void zgPath::cubicCurveBy(const zgPoint &control1, const zgPoint &control2, const zgPoint &to)
{
    const zgSegment *current = getLastSegment();
    if (!current)
        return;
    const zgPoint origin = current->point;
    cubicCurveTo(origin.add(control1), origin.add(control2), origin.add(to));
}

void zgPath::quadraticCurveTo(const zgPoint &handle, const zgPoint &to)
{
    const zgSegment *current = getLastSegment();
    if (!current)
        return;
    // The cubic with the same shape has its controls a third of the way
    // from the quadratic's handle to each end.
    const double third = 1.0 / 3.0;
    const zgPoint control1 = handle.add(current->point.subtract(handle).multiply(third));
    const zgPoint control2 = handle.add(to.subtract(handle).multiply(third));
    cubicCurveTo(control1, control2, to);
}

void zgPath::quadraticCurveBy(const zgPoint &handle, const zgPoint &to)
{
    const zgSegment *current = getLastSegment();
    if (!current)
        return;
    const zgPoint origin = current->point;
    quadraticCurveTo(origin.add(handle), origin.add(to));
}

void zgPath::curveTo(const zgPoint &through, const zgPoint &to, double t)
{
    const zgSegment *current = getLastSegment();
    if (!current)
        return;
    const double t1 = 1.0 - t;
    const zgPoint handle = through.subtract(current->point.multiply(t1 * t1))
                               .subtract(to.multiply(t * t))
                               .divide(2.0 * t * t1);
    // At t = 0 or 1 the division is by zero: no curve passes there.
    if (handle.isNaN() || !qIsFinite(handle.x) || !qIsFinite(handle.y))
        return;
    quadraticCurveTo(handle, to);
}

void zgPath::curveBy(const zgPoint &through, const zgPoint &to, double t)
{
    const zgSegment *current = getLastSegment();
    if (!current)
        return;
    const zgPoint origin = current->point;
    curveTo(origin.add(through), origin.add(to), t);
}

void zgPath::arcBy(const zgPoint &to, const zgSize &radius, double rotation, bool clockwise,
                   bool large)
{
    const zgSegment *current = getLastSegment();
    if (!current)
        return;
    arcTo(current->point.add(to), radius, rotation, clockwise, large);
}

namespace {

// The geometry of an arc: the centre, the vector from it to the start, the
// swept angle in degrees, and the ellipse's frame.
struct ArcFrame
{
    zgPoint center;
    zgPoint vector;
    double extent = 0.0;
    zgMatrix matrix;
};

// The ellipse of the radii through from and to (radii grown if too small).
ArcFrame ellipseFrame(const zgPoint &from, const zgPoint &to, const zgPoint &middle,
                      const zgSize &radius, double rotation, bool clockwise, bool large)
{
    ArcFrame frame;
    const zgPoint local = from.subtract(middle).rotate(-rotation);
    const double x = local.x;
    const double y = local.y;
    double rx = qAbs(radius.width);
    double ry = qAbs(radius.height);
    double factor = std::sqrt(x * x / (rx * rx) + y * y / (ry * ry));
    // Squares of coordinates beyond about 1e154 overflow: the same factor
    // from the quotients, which stay finite.
    if (std::isinf(factor))
        factor = std::hypot(x / rx, y / ry);
    if (factor > 1.0) {
        rx *= factor;
        ry *= factor;
    }
    const double rx2 = rx * rx;
    const double ry2 = ry * ry;
    double g = (rx2 * ry2 - rx2 * y * y - ry2 * x * x) / (rx2 * y * y + ry2 * x * x);
    // With radii beyond about 1e77 the fourth powers overflow and g comes
    // out NaN for finite input: the same quotient divided through by
    // rx2 * ry2, which stays finite.
    if (std::isnan(g) && std::isfinite(x) && std::isfinite(y) && std::isfinite(rx)
            && std::isfinite(ry)) {
        const double ux = x / rx;
        const double uy = y / ry;
        g = (1.0 - uy * uy - ux * ux) / (uy * uy + ux * ux);
    }
    // 1e-12: a centre this close to the chord's middle is taken as on it.
    if (qAbs(g) < 1e-12)
        g = 0.0;
    // A negative g gives a NaN centre here, which is not reported.
    const double sign = (clockwise != large) ? 1.0 : -1.0;
    const zgPoint offset = zgPoint(rx * y / ry, -ry * x / rx).multiply(sign * std::sqrt(g));
    frame.center = offset.rotate(rotation).add(middle);
    frame.matrix.translate(frame.center);
    frame.matrix.rotate(rotation);
    frame.matrix.scale(rx, ry);
    frame.vector = frame.matrix.inverseTransform(from);
    frame.extent = frame.vector.getDirectedAngle(frame.matrix.inverseTransform(to));
    if (!clockwise && frame.extent > 0.0)
        frame.extent -= 360.0;
    else if (clockwise && frame.extent < 0.0)
        frame.extent += 360.0;
    return frame;
}

} // namespace

void zgPath::arcTo(const zgPoint &to, const zgSize &radius, double rotation, bool clockwise,
                   bool large)
{
    zgSegment *current = getLastSegment();
    if (!current)
        return;
    const zgPoint from = current->point;
    const zgPoint middle = from.add(to).divide(2.0);
    const zgPoint through = middle.add(middle.subtract(from).rotate(clockwise ? -90.0 : 90.0));
    if (zgNumeric::isZero(radius.width) || zgNumeric::isZero(radius.height)) {
        lineToPt(to);
        return;
    }
    ArcFrame frame = ellipseFrame(from, to, middle, radius, rotation, clockwise, large);

    // The circle through from, through and to takes the place of the
    // ellipse's centre, start vector and extent; the ellipse's frame stays.
    if (!through.isNaN()) {
        const zgLine l1(from.add(through).divide(2.0), through.subtract(from).rotate(90.0), true);
        const zgLine l2(through.add(to).divide(2.0), to.subtract(through).rotate(90.0), true);
        const zgLine line(from, to, false);
        const int throughSide = line.getSide(through, false);
        frame.center = l1.intersect(l2, true);
        if (frame.center.isNaN() && throughSide == 0) {
            lineToPt(to);
            return;
        }
        frame.vector = from.subtract(frame.center);
        frame.extent = frame.vector.getDirectedAngle(to.subtract(frame.center));
        const int centerSide = line.getSide(frame.center, false);
        if (centerSide == 0)
            frame.extent = throughSide * qAbs(frame.extent);
        else if (centerSide == throughSide)
            frame.extent += frame.extent < 0.0 ? 360.0 : -360.0;
    }

    const double absExtent = qAbs(frame.extent);
    int count = 0;
    if (absExtent >= 360.0)
        count = 4;
    else if (qIsFinite(absExtent))
        count = int(std::ceil(absExtent / 90.0));
    const double inc = frame.extent / count;
    const double half = inc * M_PI / 360.0;
    // The plain tangent-half-angle quotient, without the usual factor of 4/3.
    const double z = std::sin(half) / (1.0 + std::cos(half));
    const bool mapped = !frame.matrix.isIdentity();

    QList<zgSegment *> collected;
    zgPoint vector = frame.vector;
    for (int i = 0; i <= count; ++i) {
        zgPoint pt = to;
        zgPoint out;
        if (i < count) {
            out = vector.rotate(90.0).multiply(z);
            if (mapped) {
                pt = frame.matrix.transformPoint(vector);
                out = frame.matrix.transformPoint(vector.add(out)).subtract(pt);
            } else {
                pt = frame.center.add(vector);
            }
        }
        if (i == 0) {
            current->handleOut = out;
        } else {
            zgPoint in = vector.rotate(-90.0).multiply(z);
            if (mapped)
                in = frame.matrix.transformPoint(vector.add(in)).subtract(pt);
            collected.append(new zgSegment(pt, in, out));
        }
        vector = vector.rotate(inc);
    }
    addSegments(collected, -1);
}

void zgPath::arcTo2(const zgRect &rect, double startAngle, double sweepLength)
{
    if (rect.isEmpty())
        return;
    QVector<zgPoint> points;
    const zgPoint start = zgBezier::arcToBezier(rect, -startAngle, -sweepLength, points);
    const zgSegment *last = getLastSegment();
    // 0.1: an arc that starts this close to the current point continues it.
    if (!last || !start.isClose(last->point, 0.1))
        lineToPt(start);
    for (int i = 0; i + 2 < points.size(); i += 3)
        cubicCurveTo(points.at(i), points.at(i + 1), points.at(i + 2));
}

void zgPath::ellipse(const zgRect &rect)
{
    if (rect.isEmpty())
        return;
    QVector<zgPoint> points;
    const zgPoint start = zgBezier::arcToBezier(rect, 0.0, -360.0, points);
    if (points.size() != 12)
        return;
    // A lone segment (a bare move) is dropped from the list without a
    // release: whoever holds it keeps it.
    if (segments.size() == 1) {
        segments.removeFirst();
        ++version;
    }
    if (segments.isEmpty())
        lineToPt(start);
    for (int i = 0; i < 12; i += 3)
        cubicCurveTo(points.at(i), points.at(i + 1), points.at(i + 2));
}

void zgPath::closePath(double tolerance)
{
    setClosed(true);
    zgSegment *first = getFirstSegment();
    zgSegment *last = getLastSegment();
    if (!first || first == last || !first->point.isClose(last->point, tolerance))
        return;
    first->handleIn = last->handleIn;
    last->remove();
    setClosed(true);
}
