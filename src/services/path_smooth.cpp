// Smoothing of contours: new handles through the existing points, one node at
// a time (Catmull-Rom, geometric) or for a whole range by a tridiagonal solve
// (asymmetric, continuous).
#include <zgraphics/model.h>

#include <QtCore/QVector>

#include <cmath>

namespace {

enum SmoothType { CatmullRom = 1, Geometric = 2, Asymmetric = 3, Continuous = 4 };

// The point of a neighbour, or fallback where there is none.
zgPoint pointOr(const zgSegment *segment, const zgPoint &fallback)
{
    return segment ? segment->point : fallback;
}

// (wa * a + wb * b + wc * c) / n - b, or (0, 0) for a denominator of exactly 0.
zgPoint weightedHandle(const zgPoint &a, double wa, const zgPoint &b, double wb, const zgPoint &c,
                       double wc, double n)
{
    if (n == 0.0)
        return zgPoint(0.0, 0.0);
    return zgPoint((wa * a.x + wb * b.x + wc * c.x) / n - b.x,
                   (wa * a.y + wb * b.y + wc * c.y) / n - b.y);
}

// The index of position j in a list of count entries, counting back from the
// end for a negative j and round the list for a closed contour.
int wrapIndex(qint64 j, int count)
{
    const qint64 wrapped = j % count;
    return int(wrapped < 0 ? wrapped + count : wrapped);
}

} // namespace

void zgSegment::smooth(bool first, bool last, int type, double factor)
{
    if (type != CatmullRom && type != Geometric)
        return;
    const zgSegment *previous = getPrevious();
    const zgSegment *next = getNext();
    const zgPoint p0 = pointOr(previous, point);
    const zgPoint p1 = point;
    const zgPoint p2 = pointOr(next, point);
    const double d1 = p0.getDistance(p1);
    const double d2 = p1.getDistance(p2);

    if (type == CatmullRom) {
        const double alpha = factor == -1.0 ? 0.5 : factor;
        const double d1a = std::pow(d1, alpha);
        const double d2a = std::pow(d2, alpha);
        const double d1s = d1a * d1a;
        const double d2s = d2a * d2a;
        if (!first && previous) {
            const double a = 2.0 * d2s + 3.0 * d2a * d1a + d1s;
            const double n = 3.0 * d2a * (d2a + d1a);
            handleIn = weightedHandle(p0, d2s, p1, a, p2, -d1s, n);
        }
        if (!last && next) {
            const double a = 2.0 * d1s + 3.0 * d1a * d2a + d2s;
            const double n = 3.0 * d1a * (d1a + d2a);
            handleOut = weightedHandle(p2, d1s, p1, a, p0, -d2s, n);
        }
        return;
    }

    if (!previous || !next)
        return;
    const double ratio = factor == -1.0 ? 0.4 : factor;
    const zgPoint vector = p0.subtract(p2);
    const double k = ratio * d1 / (d1 + d2);
    if (!first)
        handleIn = vector.multiply(k);
    if (!last)
        handleOut = vector.multiply(k - ratio);
}

void zgPath::smooth(int type, double factor, int from, int to)
{
    const int length = segments.size();
    if (length == 0)
        return;
    const bool loop = closed && from == 0 && to == -1;
    // 64 bits, so that moving a range back by the length cannot overflow.
    qint64 first = from;
    qint64 last = to == -1 ? length - 1 : to;
    if (last < first) {
        if (closed)
            first -= length;
        else
            std::swap(first, last);
    }

    if (type != Asymmetric && type != Continuous) {
        // Only indices that name a segment, directly or from the end.
        const qint64 begin = qMax(first, qint64(-length));
        const qint64 end = qMin(last, qint64(length - 1));
        for (qint64 i = begin; i <= end; ++i) {
            zgSegment *segment = segments.at(int(i < 0 ? i + length : i));
            segment->smooth(!loop && i == first, !loop && i == last, type, factor);
        }
        return;
    }

    const qint64 amount = last - first + 1;
    qint64 paddingLeft = 1;
    qint64 paddingRight = 1;
    if (loop) {
        paddingLeft = paddingRight = qMin(amount, qint64(4));
    } else if (!closed) {
        paddingLeft = qMin(qint64(1), first);
        paddingRight = qMin(qint64(1), length - last - 1);
    }
    // A range leaving an open contour has no place in the system; a closed
    // one wraps, but a range many times round it is not solved.
    if (paddingLeft < 0 || paddingRight < 0 || amount > 2 * qint64(length))
        return;
    // Tested before narrowing to int: a range that still runs backwards
    // after the wrap, by more than the int range, has a negative amount
    // that must not turn into a huge system.
    const qint64 rows = amount - 1 + paddingLeft + paddingRight;
    if (rows < 2)
        return;
    const int n = int(rows);

    QVector<zgPoint> knots(n + 1);
    for (int i = 0; i <= n; ++i)
        knots[i] = segments.at(wrapIndex(first - paddingLeft + i, length))->point;

    // Thomas algorithm on the rows (a, b, 1 | u k[i] + v k[i + 1]): the first
    // row is (2, 1 | k[0] + 2 k[1]), the inner ones (1, 4, 1 | 4 k[i] +
    // 2 k[i + 1]), and the last one depends on the type.
    QVector<double> rf(n);
    QVector<double> rx(n);
    QVector<double> ry(n);
    double f = 2.0;
    double x = knots[0].x + 2.0 * knots[1].x;
    double y = knots[0].y + 2.0 * knots[1].y;
    rf[0] = f;
    rx[0] = x;
    ry[0] = y;
    for (int i = 1; i < n; ++i) {
        double a = 1.0, b = 4.0, u = 4.0, v = 2.0;
        if (i == n - 1) {
            if (type == Asymmetric) {
                a = 1.0, b = 2.0, u = 3.0, v = 0.0;
            } else {
                a = 2.0, b = 7.0, u = 8.0, v = 1.0;
            }
        }
        const double m = a / f;
        f = rf[i] = b - m;
        x = rx[i] = u * knots[i].x + v * knots[i + 1].x - m * x;
        y = ry[i] = u * knots[i].y + v * knots[i + 1].y - m * y;
    }

    QVector<double> px(n + 1);
    QVector<double> py(n + 1);
    px[n - 1] = rx[n - 1] / rf[n - 1];
    py[n - 1] = ry[n - 1] / rf[n - 1];
    for (int i = n - 2; i >= 0; --i) {
        px[i] = (rx[i] - px[i + 1]) / rf[i];
        py[i] = (ry[i] - py[i + 1]) / rf[i];
    }
    px[n] = (3.0 * knots[n].x - px[n - 1]) * 0.5;
    py[n] = (3.0 * knots[n].y - py[n - 1]) * 0.5;

    // px[i], py[i] is the first control point after knot i: the handle-out of
    // its node, mirrored into the handle-in.
    const int max = n - int(paddingRight);
    qint64 j = first;
    for (int i = int(paddingLeft); i <= max; ++i, ++j) {
        zgSegment *segment = segments.at(wrapIndex(j, length));
        const zgPoint handle(px[i] - segment->point.x, py[i] - segment->point.y);
        if (loop || i < max)
            segment->setHandleOut(handle);
        if (loop || i > paddingLeft)
            segment->setHandleIn(handle.negate());
    }
}

void XPath::smooth(int type, double factor, int from, int to)
{
    for (zgPath *child : children) {
        if (child)
            child->smooth(type, factor, from, to);
    }
}
