// ZDPath::parallelPath beside QPainterPathStroker at the same width (twice
// the offset distance), on the same closed smooth paths: a blob of 8 cubics
// ("small") and one of 3000 cubics about 10 units each ("large"). parallelPath
// writes one offset side as a polyline sampled every kStep units of arc
// length; the stroker writes both sides as cubics. Each half reports the
// elements of its result ("elements") and, as its error, the largest
// departure of its result's vertices from the distance: for parallelPath the
// polyline's vertices, for the stroker the vertices of its result flattened
// by QPainterPath::toSubpathPolygons. Distances are measured in long double
// from the source cubics, on at most kErrorVertices vertices spread over the
// result.
#include "bench_support.h"
#include "ratio_table.h"

#include <zgraphics/drawing.h>

#include <QtGui/QPainterPath>
#include <QtGui/QPainterPathStroker>
#include <QtGui/QPolygonF>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace {

const double kDistance = 4.0;
const double kStep = 2.0;
const int kErrorVertices = 1500;

enum class Size { Small, Large };

// A closed star-shaped blob through `count` points, joined by Catmull-Rom
// cubics, so that its joints are smooth.
struct Blob
{
    ZDPath path;
    QPainterPath painterPath;
    zgbench::ReferencePath reference;
    std::vector<std::array<zgbench::RefPoint, 2>> boxes; // min and max of each cubic's control points
};

Blob makeBlob(int count)
{
    const double pi = 3.14159265358979323846;
    // About 10 units of outline per cubic.
    const double radius = std::max(100.0, count * 10.0 / (2.0 * pi));
    std::vector<QPointF> points;
    for (int i = 0; i < count; ++i) {
        const double a = 2.0 * pi * i / count;
        const double r = radius * (1.0 + 0.15 * std::sin(3.0 * a) + 0.05 * std::cos(7.0 * a));
        points.emplace_back(r * std::cos(a), r * std::sin(a));
    }
    Blob blob;
    blob.path.moveTo(points[0]);
    blob.reference.moveTo(points[0].x(), points[0].y());
    for (int i = 0; i < count; ++i) {
        const QPointF &p0 = points[(i + count - 1) % count];
        const QPointF &p1 = points[i];
        const QPointF &p2 = points[(i + 1) % count];
        const QPointF &p3 = points[(i + 2) % count];
        const QPointF c1 = p1 + (p2 - p0) / 6.0;
        const QPointF c2 = p2 - (p3 - p1) / 6.0;
        blob.path.cubicTo(c1, c2, p2);
        blob.reference.cubicTo(c1.x(), c1.y(), c2.x(), c2.y(), p2.x(), p2.y());
    }
    blob.path.closeSubpath();
    blob.path.toPainterPath(blob.painterPath);
    for (const zgbench::RefPiece &piece : blob.reference.pieces()) {
        std::array<zgbench::RefPoint, 2> box{piece.p[0], piece.p[0]};
        for (const zgbench::RefPoint &p : piece.p) {
            box[0] = {std::min(box[0].x, p.x), std::min(box[0].y, p.y)};
            box[1] = {std::max(box[1].x, p.x), std::max(box[1].y, p.y)};
        }
        blob.boxes.push_back(box);
    }
    return blob;
}

const Blob &blobOf(Size size)
{
    static const Blob small = makeBlob(8);
    static const Blob large = makeBlob(3000);
    return size == Size::Small ? small : large;
}

const char *nameOf(Size size)
{
    return size == Size::Small ? "small" : "large";
}

// Distance from p to one cubic: 64 samples, then golden-section search
// around the best one.
zgbench::Real distanceToPiece(const zgbench::RefPiece &piece, const zgbench::RefPoint &p)
{
    const int samples = 64;
    int best = 0;
    zgbench::Real bestDistance = std::numeric_limits<zgbench::Real>::infinity();
    for (int i = 0; i <= samples; ++i) {
        const zgbench::Real d = zgbench::distance(piece.pointAt(zgbench::Real(i) / samples), p);
        if (d < bestDistance) {
            bestDistance = d;
            best = i;
        }
    }
    zgbench::Real low = std::max(0.0L, (best - 1.0L) / samples);
    zgbench::Real high = std::min(1.0L, (best + 1.0L) / samples);
    const zgbench::Real golden = 0.61803398874989484820L;
    for (int i = 0; i < 80; ++i) {
        const zgbench::Real a = high - golden * (high - low);
        const zgbench::Real b = low + golden * (high - low);
        if (zgbench::distance(piece.pointAt(a), p) < zgbench::distance(piece.pointAt(b), p))
            high = b;
        else
            low = a;
    }
    return std::min(bestDistance, zgbench::distance(piece.pointAt(0.5L * (low + high)), p));
}

// Distance from p to the source, skipping cubics whose control box lies
// farther than the best distance so far.
zgbench::Real distanceToSource(const Blob &blob, const zgbench::RefPoint &p)
{
    zgbench::Real best = std::numeric_limits<zgbench::Real>::infinity();
    const auto &pieces = blob.reference.pieces();
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto &box = blob.boxes[i];
        const zgbench::Real dx = std::max({box[0].x - p.x, 0.0L, p.x - box[1].x});
        const zgbench::Real dy = std::max({box[0].y - p.y, 0.0L, p.y - box[1].y});
        if (std::hypot(dx, dy) < best)
            best = std::min(best, distanceToPiece(pieces[i], p));
    }
    return best;
}

// The largest | distance from the source - kDistance | over up to
// kErrorVertices of the points, spread evenly.
double offsetError(const Blob &blob, const std::vector<QPointF> &points)
{
    if (points.empty())
        return NAN;
    const std::size_t stride = std::max<std::size_t>(1, points.size() / kErrorVertices);
    zgbench::Real worst = 0.0L;
    for (std::size_t i = 0; i < points.size(); i += stride) {
        const zgbench::RefPoint p{points[i].x(), points[i].y()};
        worst = std::max(worst, std::fabs(distanceToSource(blob, p) - kDistance));
    }
    return double(worst);
}

void zgParallelPath(benchmark::State &state, Size size)
{
    const Blob &blob = blobOf(size);
    ZDPath source = blob.path;
    ZDPath out;
    for (auto _ : state) {
        out.reset();
        source.parallelPath(out, kDistance, kStep);
        benchmark::DoNotOptimize(out.elements.constData());
    }
    std::vector<QPointF> vertices;
    for (const ZDPathElement &e : out.elements)
        vertices.push_back(e.toPoint());
    state.counters["elements"] = out.count();
    state.counters[zgbench::errorCounter()] = offsetError(blob, vertices);
}

void qtStroker(benchmark::State &state, Size size)
{
    const Blob &blob = blobOf(size);
    QPainterPathStroker stroker;
    stroker.setWidth(2.0 * kDistance);
    stroker.setJoinStyle(Qt::MiterJoin);
    stroker.setCapStyle(Qt::FlatCap);
    QPainterPath stroke;
    for (auto _ : state) {
        stroke = stroker.createStroke(blob.painterPath);
        benchmark::DoNotOptimize(stroke.elementCount());
    }
    std::vector<QPointF> vertices;
    for (const QPolygonF &polygon : stroke.toSubpathPolygons())
        vertices.insert(vertices.end(), polygon.begin(), polygon.end());
    state.counters["elements"] = stroke.elementCount();
    state.counters[zgbench::errorCounter()] = offsetError(blob, vertices);
}

bool registerParallelOutlinePairs()
{
    for (Size size : {Size::Small, Size::Large}) {
        zgbench::registerPair(
            "parallelPath", nameOf(size), "units",
            [size](benchmark::State &s) { zgParallelPath(s, size); },
            [size](benchmark::State &s) { qtStroker(s, size); });
    }
    return true;
}

const bool parallelOutlinePairsRegistered = registerParallelOutlinePairs();

} // namespace
