// ZDPath::thickPath and ZDPath::smooth on a path of 3000 curves, beside the
// nearest Qt operations on the same input.
//
// The source is an open arc of a circle: 300 degrees in 3000 cubics of about
// 10 units each, so that the distance of any point from it is known exactly
// (its distance from the centre less the radius, within the arc's angles).
//
// - thickPath at a constant half width of kHalfWidth, curves sampled every
//   kStep units, beside QPainterPathStroker at width 2 * kHalfWidth with round
//   caps and joins. The error of each is the largest departure from the half
//   width of its result's vertices, flattened by toSubpathPolygons, away from
//   the caps.
// - smooth(4) of the 3000-point polyline through the arc's joints, beside the
//   usual Qt smoothing of a polyline by quadratics through the midpoints of
//   its sides. The error of each is the largest distance of its flattened
//   result from the circle the points were taken from.
#include "ratio_table.h"

#include <zgraphics/drawing.h>

#include <QtGui/QPainterPath>
#include <QtGui/QPainterPathStroker>
#include <QtGui/QPolygonF>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

const int kCurves = 3000;
const double kHalfWidth = 4.0;
const double kStep = 2.0;
const double kPi = 3.14159265358979323846;
const double kSweep = 300.0 * kPi / 180.0;
// About 10 units of arc per curve.
const double kRadius = kCurves * 10.0 / kSweep;

QPointF onCircle(double angle)
{
    return QPointF(kRadius * std::cos(angle), kRadius * std::sin(angle));
}

// The arc as cubics: each piece of angle a has handles of length
// 4/3 tan(a / 4) times the radius along the tangents.
ZDPath arcOfCubics()
{
    const double a = kSweep / kCurves;
    const double handle = 4.0 / 3.0 * std::tan(a / 4.0) * kRadius;
    ZDPath path;
    path.moveTo(onCircle(0.0));
    for (int i = 0; i < kCurves; ++i) {
        const double a0 = i * a;
        const double a1 = (i + 1) * a;
        const QPointF t0(-std::sin(a0), std::cos(a0));
        const QPointF t1(-std::sin(a1), std::cos(a1));
        path.cubicTo(onCircle(a0) + handle * t0, onCircle(a1) - handle * t1, onCircle(a1));
    }
    return path;
}

QVector<QPointF> arcJoints()
{
    QVector<QPointF> points;
    for (int i = 0; i <= kCurves; ++i)
        points.append(onCircle(i * kSweep / kCurves));
    return points;
}

ZDPath polylineOf(const QVector<QPointF> &points)
{
    ZDPath path;
    path.moveTo(points.first());
    for (int i = 1; i < points.size(); ++i)
        path.lineTo(points.at(i));
    return path;
}

// Quadratics through the midpoints of the sides, with the inner points as
// their controls.
QPainterPath midpointSmoothed(const QVector<QPointF> &points)
{
    QPainterPath path(points.first());
    for (int i = 1; i + 1 < points.size(); ++i)
        path.quadTo(points.at(i), (points.at(i) + points.at(i + 1)) / 2.0);
    path.lineTo(points.last());
    return path;
}

std::vector<QPointF> flattened(const QPainterPath &path)
{
    std::vector<QPointF> vertices;
    for (const QPolygonF &polygon : path.toSubpathPolygons())
        vertices.insert(vertices.end(), polygon.begin(), polygon.end());
    return vertices;
}

std::vector<QPointF> flattened(const ZDPath &path)
{
    QPainterPath painterPath;
    path.toPainterPath(painterPath);
    return flattened(painterPath);
}

// The largest | distance from the circle - expected | over the vertices whose
// angle lies on the arc, margin units of arc in from its ends.
double radialError(const std::vector<QPointF> &vertices, double expected, double margin)
{
    const double inset = margin / kRadius;
    double worst = 0.0;
    for (const QPointF &p : vertices) {
        double angle = std::atan2(p.y(), p.x());
        if (angle < 0.0)
            angle += 2.0 * kPi;
        if (angle < inset || angle > kSweep - inset)
            continue;
        const double offset = std::abs(std::hypot(p.x(), p.y()) - kRadius);
        worst = std::max(worst, std::abs(offset - expected));
    }
    return worst;
}

// Away from the caps: the caps reach 1.2 half widths beyond the ends.
const double kCapMargin = 2.0 * kHalfWidth;

void zgThickPath(benchmark::State &state)
{
    const ZDPath source = arcOfCubics();
    ZDPath out;
    for (auto _ : state) {
        ZDPath src = source;
        out.thickPath(src, kHalfWidth, kHalfWidth, kStep);
        benchmark::DoNotOptimize(out.elements.constData());
    }
    state.counters["elements"] = out.count();
    state.counters[zgbench::errorCounter()] = radialError(flattened(out), kHalfWidth, kCapMargin);
}

void qtStroker(benchmark::State &state)
{
    QPainterPath source;
    arcOfCubics().toPainterPath(source);
    QPainterPathStroker stroker;
    stroker.setWidth(2.0 * kHalfWidth);
    stroker.setCapStyle(Qt::RoundCap);
    stroker.setJoinStyle(Qt::RoundJoin);
    QPainterPath stroke;
    for (auto _ : state) {
        stroke = stroker.createStroke(source);
        benchmark::DoNotOptimize(stroke.elementCount());
    }
    state.counters["elements"] = stroke.elementCount();
    state.counters[zgbench::errorCounter()] = radialError(flattened(stroke), kHalfWidth, kCapMargin);
}

void zgSmooth(benchmark::State &state)
{
    const ZDPath source = polylineOf(arcJoints());
    ZDPath out;
    for (auto _ : state) {
        out = source;
        out.smooth(4);
        benchmark::DoNotOptimize(out.elements.constData());
    }
    state.counters["elements"] = out.count();
    state.counters[zgbench::errorCounter()] = radialError(flattened(out), 0.0, 0.0);
}

void qtMidpointQuads(benchmark::State &state)
{
    const QVector<QPointF> points = arcJoints();
    QPainterPath out;
    for (auto _ : state) {
        out = midpointSmoothed(points);
        benchmark::DoNotOptimize(out.elementCount());
    }
    state.counters["elements"] = out.elementCount();
    state.counters[zgbench::errorCounter()] = radialError(flattened(out), 0.0, 0.0);
}

const bool thickOutlinePairsRegistered =
    (zgbench::registerPair("thickPath", "3000 curves", "units", zgThickPath, qtStroker),
     zgbench::registerPair("smooth(4)", "3000 points", "units", zgSmooth, qtMidpointQuads), true);

} // namespace
