// Helpers of the curve intersection tests: free curves and contours that
// clean up after themselves, release of result lists, and reference
// computations done without the library (Bernstein form in long double,
// Newton's method on the pair of curves).
#ifndef ZGRAPHICS_TESTS_INTERSECT_CROSSING_FIXTURES_H
#define ZGRAPHICS_TESTS_INTERSECT_CROSSING_FIXTURES_H

#include <zgraphics/model.h>

#include <QtCore/QList>
#include <QtCore/QVector>
#include <QtCore/qnumeric.h>

#include <cmath>

namespace crossingtest {

inline QVector<double> values(double x0, double y0, double x1, double y1, double x2, double y2,
                              double x3, double y3)
{
    return { x0, y0, x1, y1, x2, y2, x3, y3 };
}

inline zgPoint noPoint()
{
    return zgPoint(qQNaN(), qQNaN());
}

// A free curve (no contour) held for the length of a test.
class FreeCurve
{
public:
    explicit FreeCurve(const QVector<double> &v) : m_curve(new zgCurve(v, nullptr))
    {
        m_curve->addRef();
    }
    ~FreeCurve() { m_curve->release(); }
    FreeCurve(const FreeCurve &) = delete;
    FreeCurve &operator=(const FreeCurve &) = delete;

    zgCurve *get() const { return m_curve; }
    QVector<double> values() const { return m_curve->getValues(nullptr); }

private:
    zgCurve *m_curve;
};

// An open or closed contour of straight and curved pieces, held for the
// length of a test. Points are given as (x, y, inX, inY, outX, outY) with
// relative handles.
class Contour
{
public:
    explicit Contour(bool closed = false) : m_path(new zgPath(nullptr, closed))
    {
        m_path->addRef();
    }
    ~Contour() { m_path->release(); }
    Contour(const Contour &) = delete;
    Contour &operator=(const Contour &) = delete;

    void add(double x, double y, double inX = 0.0, double inY = 0.0, double outX = 0.0,
             double outY = 0.0)
    {
        m_path->addSegment(new zgSegment(zgPoint(x, y), zgPoint(inX, inY), zgPoint(outX, outY)));
    }
    zgPath *get() const { return m_path; }
    zgCurve *curve(int i) const { return m_path->getCurves().at(i); }

private:
    zgPath *m_path;
};

// Releases every listed location and its partner, which is never listed
// itself, and empties the list.
inline void releaseAll(QList<zgCurveLocation *> &locations)
{
    for (zgCurveLocation *location : locations) {
        zgCurveLocation *partner = location->intersection();
        location->release();
        if (partner)
            partner->release();
    }
    locations.clear();
}

// The time of a location pair on curve c, whichever side of the pair lies on it.
inline double timeOn(zgCurveLocation *location, zgCurve *c)
{
    if (location->curve == c)
        return location->time;
    return location->intersection()->time;
}

// Point and derivative of a cubic in long double, from the Bernstein form.
inline void bernstein(const QVector<double> &v, long double t, long double &x, long double &y,
                      long double &dx, long double &dy)
{
    const long double u = 1.0L - t;
    const long double b0 = u * u * u, b1 = 3.0L * u * u * t, b2 = 3.0L * u * t * t,
                      b3 = t * t * t;
    x = b0 * v[0] + b1 * v[2] + b2 * v[4] + b3 * v[6];
    y = b0 * v[1] + b1 * v[3] + b2 * v[5] + b3 * v[7];
    const long double d0 = 3.0L * u * u, d1 = 6.0L * u * t, d2 = 3.0L * t * t;
    dx = d0 * (v[2] - v[0]) + d1 * (v[4] - v[2]) + d2 * (v[6] - v[4]);
    dy = d0 * (v[3] - v[1]) + d1 * (v[5] - v[3]) + d2 * (v[7] - v[5]);
}

inline zgPoint pointOf(const QVector<double> &v, double t)
{
    long double x, y, dx, dy;
    bernstein(v, t, x, y, dx, dy);
    return zgPoint(double(x), double(y));
}

// Newton's method on a(t) = b(u) from a first guess; false if the steps do
// not settle, the result lies outside the unit square or the system is
// singular.
inline bool polishCrossing(const QVector<double> &a, const QVector<double> &b, double &t,
                           double &u)
{
    long double lt = t, lu = u;
    bool settled = false;
    for (int i = 0; i < 60 && !settled; ++i) {
        long double ax, ay, adx, ady, bx, by, bdx, bdy;
        bernstein(a, lt, ax, ay, adx, ady);
        bernstein(b, lu, bx, by, bdx, bdy);
        const long double fx = ax - bx, fy = ay - by;
        const long double det = -adx * bdy + bdx * ady;
        if (det == 0.0L)
            return false;
        const long double stepT = (-fx * bdy + bdx * fy) / det;
        const long double stepU = (adx * fy - ady * fx) / det;
        lt -= stepT;
        lu -= stepU;
        settled = std::fabs(double(stepT)) < 1e-15 && std::fabs(double(stepU)) < 1e-15;
    }
    t = double(lt);
    u = double(lu);
    const double margin = 1e-12;
    return settled && t >= -margin && t <= 1.0 + margin && u >= -margin && u <= 1.0 + margin;
}

} // namespace crossingtest

#endif // ZGRAPHICS_TESTS_INTERSECT_CROSSING_FIXTURES_H
