// Separating axes between the control polygons of two curves.
#include "intersect/separation.h"

#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>
#include <cmath>

zgCurveHull::zgCurveHull(const QVector<double> &values)
    : m_axisCount(0), m_scale(0.0), m_straight(zgCurve::isStraight(values))
{
    bool hasNaN = false;
    for (int k = 0; k < 4; ++k) {
        m_x[k] = values.at(2 * k);
        m_y[k] = values.at(2 * k + 1);
        hasNaN = hasNaN || std::isnan(m_x[k]) || std::isnan(m_y[k]);
        m_scale = std::max({ m_scale, std::fabs(m_x[k]), std::fabs(m_y[k]) });
    }
    if (hasNaN)
        m_scale = qQNaN();
    m_minX = std::min({ m_x[0], m_x[1], m_x[2], m_x[3] });
    m_maxX = std::max({ m_x[0], m_x[1], m_x[2], m_x[3] });
    m_minY = std::min({ m_y[0], m_y[1], m_y[2], m_y[3] });
    m_maxY = std::max({ m_y[0], m_y[1], m_y[2], m_y[3] });

    const int from[kAxes] = { 0, 0, 1, 2 };
    const int to[kAxes] = { 3, 1, 2, 3 };
    for (int a = 0; a < kAxes; ++a) {
        const double dx = m_x[to[a]] - m_x[from[a]];
        const double dy = m_y[to[a]] - m_y[from[a]];
        const double length = std::hypot(dx, dy);
        if (!(length > 0.0 && length < HUGE_VAL))
            continue;
        const double nx = -dy / length;
        const double ny = dx / length;
        double low = HUGE_VAL;
        double high = -HUGE_VAL;
        for (int k = 0; k < 4; ++k) {
            const double p = nx * m_x[k] + ny * m_y[k];
            low = std::min(low, p);
            high = std::max(high, p);
        }
        m_normalX[m_axisCount] = nx;
        m_normalY[m_axisCount] = ny;
        m_low[m_axisCount] = low;
        m_high[m_axisCount] = high;
        ++m_axisCount;
    }
}

bool zgCurveHull::apartAlongOwnAxes(const zgCurveHull &other, double margin) const
{
    for (int a = 0; a < m_axisCount; ++a) {
        const double nx = m_normalX[a];
        const double ny = m_normalY[a];
        double low = HUGE_VAL;
        double high = -HUGE_VAL;
        for (int k = 0; k < 4; ++k) {
            const double p = nx * other.m_x[k] + ny * other.m_y[k];
            low = std::min(low, p);
            high = std::max(high, p);
        }
        if (low - m_high[a] > margin || m_low[a] - high > margin)
            return true;
    }
    return false;
}

double zgCurveHull::marginWith(const zgCurveHull &other) const
{
    // Beyond 1e100 the products of the projections may overflow; NaN fails too.
    if (!(m_scale < 1e100 && other.m_scale < 1e100))
        return qQNaN();
    return 1e-06 + 1e-10 * std::max(m_scale, other.m_scale);
}

bool zgCurveHull::pointApart(double x, double y, double margin) const
{
    if (x - m_maxX > margin || m_minX - x > margin || y - m_maxY > margin || m_minY - y > margin)
        return true;
    for (int a = 0; a < m_axisCount; ++a) {
        const double p = m_normalX[a] * x + m_normalY[a] * y;
        if (p - m_high[a] > margin || m_low[a] - p > margin)
            return true;
    }
    return false;
}

bool zgCurveHull::closesOnItself() const
{
    return zgPoint(m_x[0], m_y[0]).isClose(zgPoint(m_x[3], m_y[3]), 1e-12);
}

bool zgCurveHull::endsMayLieOn(const zgCurveHull &other) const
{
    const double margin = marginWith(other);
    if (std::isnan(margin))
        return true;
    int near = int(!other.pointApart(m_x[0], m_y[0], margin))
            + int(!other.pointApart(m_x[3], m_y[3], margin))
            + int(!pointApart(other.m_x[0], other.m_y[0], margin))
            + int(!pointApart(other.m_x[3], other.m_y[3], margin));
    // An end of this curve equal to an end of the other gives the same pair
    // of end times from either side, so the two count once; not so where a
    // curve closes on itself within 1e-12, as getTimeOf then answers 0.0 for
    // its end.
    if (!closesOnItself() && !other.closesOnItself()) {
        for (int a = 0; a < 4; a += 3) {
            for (int b = 0; b < 4; b += 3) {
                if (m_x[a] == other.m_x[b] && m_y[a] == other.m_y[b])
                    --near;
            }
        }
    }
    return near >= 2;
}

bool zgCurveHull::apartFrom(const zgCurveHull &other) const
{
    const double margin = marginWith(other);
    if (std::isnan(margin))
        return false;
    if (other.m_minX - m_maxX > margin || m_minX - other.m_maxX > margin
            || other.m_minY - m_maxY > margin || m_minY - other.m_maxY > margin)
        return true;
    return apartAlongOwnAxes(other, margin) || other.apartAlongOwnAxes(*this, margin);
}
