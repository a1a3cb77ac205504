// Internal: named access to the eight values of a cubic.
#ifndef ZGRAPHICS_CURVE_VALUES_H
#define ZGRAPHICS_CURVE_VALUES_H

#include <QtCore/QVector>
#include <QtCore/qnumeric.h>

// The four control points of a curve read from its 8-value array. A short
// array is a caller's fault; its missing entries read as NaN, so that the
// result is NaN instead of a read past the end.
struct zgCurveValues
{
    double x0, y0, x1, y1, x2, y2, x3, y3;

    explicit zgCurveValues(const QVector<double> &values)
    {
        double *fields[8] = { &x0, &y0, &x1, &y1, &x2, &y2, &x3, &y3 };
        for (int i = 0; i < 8; ++i)
            *fields[i] = i < values.size() ? values.at(i) : qQNaN();
    }

    QVector<double> toVector() const { return { x0, y0, x1, y1, x2, y2, x3, y3 }; }
};

#endif // ZGRAPHICS_CURVE_VALUES_H
