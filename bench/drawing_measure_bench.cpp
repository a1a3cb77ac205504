// Measures along a drawing path and its painter-path conversions, each timed
// against the nearest QPainterPath operation on the same path:
//
//   getLength        ZDPath::getLength()          QPainterPath::length()
//   getPointAt       ZDPath::getPointAt(t)        QPainterPath::pointAtPercent(t)
//   getTangentAt     ZDPath::getTangentAt(point)  QPainterPath::angleAtPercent(t)
//   getTangentEnd    ZDPath::getTangent(0, false) QPainterPath::angleAtPercent(1)
//   toPainterPath    ZDPath::toPainterPath        QPainterPath built by moveTo/lineTo/cubicTo
//   fromPainterPath  ZDPath::fromPainterPath      copy of the QPainterPath's elements
//
// on a small path (a dozen lines and cubics) and a large one (3000 pieces).
// Errors are measured against the long double reference of bench_support.h:
// lengths and points in path units, tangents in degrees, conversions as the
// largest coordinate difference from the source (infinite for a wrong element
// count or type).
#include "bench_support.h"
#include "ratio_table.h"

#include <zgraphics/drawing.h>
#include <zgraphics/primitives.h>

#include <QtGui/QPainterPath>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using zgbench::Real;

// One element of the source geometry, in the element coding of both
// ZDPath and QPainterPath: 0 move, 1 line, 2 and 3 the three points of a cubic.
struct SourceElement
{
    int type;
    double x;
    double y;
};

// A path with every form the benchmarks need, all built from one element list.
struct MeasureInput
{
    std::vector<SourceElement> source;
    ZDPath drawing;
    QPainterPath painter;
    zgbench::ReferencePath reference;
    std::vector<double> shares;
    std::vector<zgbench::RefPlace> places; // the reference place of each share
};

// Uniform in [0, 1) from the 53 high bits, the same on every platform.
double unit(std::mt19937_64 &random)
{
    return double(random() >> 11) * 0x1.0p-53;
}

// An open wave going right: every piece starts where the last ended, every
// fourth is a line, and the control points of a cubic step right in x, so
// that x grows strictly along the path: no cusps, no self-crossing, and each
// piece at least 20 units wide (well above the joining tolerance of 1).
std::vector<SourceElement> makeWave(int pieceCount, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    std::vector<SourceElement> elements;
    double x = 10.0;
    double y = 100.0;
    elements.push_back({0, x, y});
    for (int k = 0; k < pieceCount; ++k) {
        const double dx = 20.0 + 30.0 * unit(random);
        const double dy = (unit(random) - 0.5) * 60.0 - 0.2 * (y - 100.0); // drifts back to 100
        const double endX = x + dx;
        const double endY = y + dy;
        if (k % 4 == 3) {
            elements.push_back({1, endX, endY});
        } else {
            const double c1x = x + dx * (0.15 + 0.2 * unit(random));
            const double c1y = y + (unit(random) - 0.5) * 80.0;
            const double c2x = x + dx * (0.6 + 0.25 * unit(random));
            const double c2y = endY + (unit(random) - 0.5) * 80.0;
            elements.push_back({2, c1x, c1y});
            elements.push_back({3, c2x, c2y});
            elements.push_back({3, endX, endY});
        }
        x = endX;
        y = endY;
    }
    return elements;
}

// Appends the source to a QPainterPath the way a Qt user draws it.
void drawInto(QPainterPath &path, const std::vector<SourceElement> &source)
{
    const size_t n = source.size();
    for (size_t i = 0; i < n; ++i) {
        const SourceElement &e = source[i];
        if (e.type == 0) {
            path.moveTo(e.x, e.y);
        } else if (e.type == 1) {
            path.lineTo(e.x, e.y);
        } else if (e.type == 2 && i + 2 < n) {
            path.cubicTo(e.x, e.y, source[i + 1].x, source[i + 1].y, source[i + 2].x, source[i + 2].y);
            i += 2;
        }
    }
}

MeasureInput makeInput(int pieceCount, std::uint64_t seed)
{
    MeasureInput input;
    input.source = makeWave(pieceCount, seed);
    const std::vector<SourceElement> &source = input.source;
    for (size_t i = 0; i < source.size(); ++i) {
        const SourceElement &e = source[i];
        if (e.type == 0) {
            input.drawing.moveTo(e.x, e.y);
            input.reference.moveTo(e.x, e.y);
        } else if (e.type == 1) {
            input.drawing.lineTo(e.x, e.y);
            input.reference.lineTo(e.x, e.y);
        } else if (e.type == 2) {
            const SourceElement &c2 = source[i + 1];
            const SourceElement &end = source[i + 2];
            input.drawing.cubicTo(QPointF(e.x, e.y), QPointF(c2.x, c2.y), QPointF(end.x, end.y));
            input.reference.cubicTo(e.x, e.y, c2.x, c2.y, end.x, end.y);
            i += 2;
        }
    }
    drawInto(input.painter, source);
    input.shares = {0.05, 0.2, 0.35, 0.5, 0.65, 0.8, 0.95};
    for (double share : input.shares)
        input.places.push_back(input.reference.placeAtShare(share));
    return input;
}

enum class Size { Small, Large };

const MeasureInput &inputOf(Size size)
{
    if (size == Size::Small) {
        static const MeasureInput small = makeInput(12, 20240611);
        return small;
    }
    static const MeasureInput large = makeInput(3000, 77);
    return large;
}

const char *nameOf(Size size)
{
    return size == Size::Small ? "small" : "large";
}

double failed()
{
    return std::numeric_limits<double>::quiet_NaN();
}

// The larger of two errors; a failure (NaN) in either stays a failure.
double worseOf(double worst, double error)
{
    return std::isnan(worst) || std::isnan(error) ? failed() : std::fmax(worst, error);
}

void setError(benchmark::State &state, double error)
{
    state.counters[zgbench::errorCounter()] = error;
}

double pointError(double x, double y, const zgbench::RefPoint &reference)
{
    if (std::isnan(x) || std::isnan(y))
        return failed();
    return double(zgbench::distance(zgbench::RefPoint{x, y}, reference));
}

double angleError(double angle, const zgbench::RefPoint &referenceDirection)
{
    if (std::isnan(angle))
        return failed();
    return double(zgbench::angleDifference(angle, zgbench::screenAngle(referenceDirection)));
}

// A zgraphics tangent vector as the screen angle of QLineF::angle.
double screenAngleOf(const zgPoint &tangent)
{
    if (tangent.isNaN())
        return failed();
    return double(zgbench::screenAngle(zgbench::RefPoint{tangent.x, tangent.y}));
}

// The largest coordinate difference between a converted element list and the
// source; infinite if the count or a type differs.
template <class Element, class TypeOf>
double conversionError(const std::vector<SourceElement> &source, int count,
                       const Element &elementAt, const TypeOf &typeOf)
{
    if (count != int(source.size()))
        return std::numeric_limits<double>::infinity();
    double worst = 0.0;
    for (int i = 0; i < count; ++i) {
        const auto &e = elementAt(i);
        if (typeOf(e) != source[size_t(i)].type)
            return std::numeric_limits<double>::infinity();
        worst = std::fmax(worst, std::fabs(e.x - source[size_t(i)].x));
        worst = std::fmax(worst, std::fabs(e.y - source[size_t(i)].y));
    }
    return worst;
}

double painterError(const std::vector<SourceElement> &source, const QPainterPath &path)
{
    return conversionError(
        source, path.elementCount(), [&path](int i) { return path.elementAt(i); },
        [](const QPainterPath::Element &e) { return int(e.type); });
}

// --- getLength ---------------------------------------------------------------

void zgGetLength(benchmark::State &state, Size size)
{
    ZDPath path = inputOf(size).drawing;
    double length = 0.0;
    for (auto _ : state) {
        length = path.getLength();
        benchmark::DoNotOptimize(length);
    }
    setError(state, double(std::fabs(length - inputOf(size).reference.length())));
}

void qtLength(benchmark::State &state, Size size)
{
    const QPainterPath &path = inputOf(size).painter;
    double length = 0.0;
    for (auto _ : state) {
        length = path.length();
        benchmark::DoNotOptimize(length);
    }
    setError(state, double(std::fabs(length - inputOf(size).reference.length())));
}

// --- point at a share of the length -------------------------------------------

void zgGetPointAt(benchmark::State &state, Size size)
{
    const MeasureInput &input = inputOf(size);
    ZDPath path = input.drawing;
    const size_t n = input.shares.size();
    size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(path.getPointAt(input.shares[k]));
        k = (k + 1) % n;
    }
    double worst = 0.0;
    for (size_t i = 0; i < n; ++i) {
        const zgPoint p = path.getPointAt(input.shares[i]);
        worst = worseOf(worst, pointError(p.x, p.y, input.places[i].point));
    }
    setError(state, worst);
}

void qtPointAtPercent(benchmark::State &state, Size size)
{
    const MeasureInput &input = inputOf(size);
    const QPainterPath &path = input.painter;
    const size_t n = input.shares.size();
    size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(path.pointAtPercent(input.shares[k]));
        k = (k + 1) % n;
    }
    double worst = 0.0;
    for (size_t i = 0; i < n; ++i) {
        const QPointF p = path.pointAtPercent(input.shares[i]);
        worst = worseOf(worst, pointError(p.x(), p.y(), input.places[i].point));
    }
    setError(state, worst);
}

// --- tangent inside the path ---------------------------------------------------
// zgraphics finds the place by the point on the path (the reference point,
// rounded to double); Qt by the share of the length.

std::vector<zgPoint> referencePointsOf(const MeasureInput &input)
{
    std::vector<zgPoint> points;
    for (const zgbench::RefPlace &place : input.places)
        points.emplace_back(double(place.point.x), double(place.point.y));
    return points;
}

void zgGetTangentAt(benchmark::State &state, Size size)
{
    const MeasureInput &input = inputOf(size);
    ZDPath path = input.drawing;
    const std::vector<zgPoint> points = referencePointsOf(input);
    const size_t n = points.size();
    size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(path.getTangentAt(points[k]));
        k = (k + 1) % n;
    }
    double worst = 0.0;
    for (size_t i = 0; i < n; ++i) {
        const double error = angleError(screenAngleOf(path.getTangentAt(points[i])),
                                        input.places[i].derivative);
        worst = worseOf(worst, error);
    }
    setError(state, worst);
}

void qtAngleAtPercent(benchmark::State &state, Size size)
{
    const MeasureInput &input = inputOf(size);
    const QPainterPath &path = input.painter;
    const size_t n = input.shares.size();
    size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(path.angleAtPercent(input.shares[k]));
        k = (k + 1) % n;
    }
    double worst = 0.0;
    for (size_t i = 0; i < n; ++i) {
        const double error = angleError(path.angleAtPercent(input.shares[i]), input.places[i].derivative);
        worst = worseOf(worst, error);
    }
    setError(state, worst);
}

// --- tangent at the end --------------------------------------------------------

void zgGetTangentEnd(benchmark::State &state, Size size)
{
    ZDPath path = inputOf(size).drawing;
    double angle = 0.0;
    for (auto _ : state) {
        angle = path.getTangent(0, false);
        benchmark::DoNotOptimize(angle);
    }
    // getTangent gives atan2(y, x) in y-down coordinates: the screen angle is its negation.
    setError(state, angleError(-angle, inputOf(size).reference.endDerivative()));
}

void qtAngleAtEnd(benchmark::State &state, Size size)
{
    const QPainterPath &path = inputOf(size).painter;
    double angle = 0.0;
    for (auto _ : state) {
        angle = path.angleAtPercent(1.0);
        benchmark::DoNotOptimize(angle);
    }
    setError(state, angleError(angle, inputOf(size).reference.endDerivative()));
}

// --- to a painter path -----------------------------------------------------------

void zgToPainterPath(benchmark::State &state, Size size)
{
    const ZDPath &path = inputOf(size).drawing;
    QPainterPath out;
    for (auto _ : state) {
        path.toPainterPath(out);
        benchmark::DoNotOptimize(out.elementCount());
    }
    setError(state, painterError(inputOf(size).source, out));
}

void qtBuildPainterPath(benchmark::State &state, Size size)
{
    const std::vector<SourceElement> &source = inputOf(size).source;
    QPainterPath out;
    for (auto _ : state) {
        out = QPainterPath();
        drawInto(out, source);
        benchmark::DoNotOptimize(out.elementCount());
    }
    setError(state, painterError(source, out));
}

// --- from a painter path ---------------------------------------------------------

void zgFromPainterPath(benchmark::State &state, Size size)
{
    const QPainterPath &painter = inputOf(size).painter;
    ZDPath out;
    for (auto _ : state) {
        out = ZDPath();
        out.fromPainterPath(painter);
        benchmark::DoNotOptimize(out.elements.constData());
    }
    setError(state, conversionError(
                        inputOf(size).source, out.count(), [&out](int i) { return out.elementAt(i); },
                        [](const ZDPathElement &e) { return int(e.type); }));
}

void qtCopyElements(benchmark::State &state, Size size)
{
    const QPainterPath &painter = inputOf(size).painter;
    QVector<QPainterPath::Element> out;
    for (auto _ : state) {
        out = QVector<QPainterPath::Element>();
        const int n = painter.elementCount();
        out.reserve(n); // as fromPainterPath reserves
        for (int i = 0; i < n; ++i)
            out.append(painter.elementAt(i));
        benchmark::DoNotOptimize(out.constData());
    }
    setError(state, conversionError(
                        inputOf(size).source, out.size(), [&out](int i) { return out.at(i); },
                        [](const QPainterPath::Element &e) { return int(e.type); }));
}

// --- registration ----------------------------------------------------------------

using Half = void (*)(benchmark::State &, Size);

void registerBothSizes(const char *pair, const char *errorUnit, Half zgHalf, Half qtHalf)
{
    for (Size size : {Size::Small, Size::Large}) {
        zgbench::registerPair(
            pair, nameOf(size), errorUnit, [zgHalf, size](benchmark::State &s) { zgHalf(s, size); },
            [qtHalf, size](benchmark::State &s) { qtHalf(s, size); });
    }
}

bool registerMeasurePairs()
{
    registerBothSizes("getLength", "units", zgGetLength, qtLength);
    registerBothSizes("getPointAt", "units", zgGetPointAt, qtPointAtPercent);
    registerBothSizes("getTangentAt", "deg", zgGetTangentAt, qtAngleAtPercent);
    registerBothSizes("getTangentEnd", "deg", zgGetTangentEnd, qtAngleAtEnd);
    registerBothSizes("toPainterPath", "units", zgToPainterPath, qtBuildPainterPath);
    registerBothSizes("fromPainterPath", "units", zgFromPainterPath, qtCopyElements);
    return true;
}

const bool measurePairsRegistered = registerMeasurePairs();

} // namespace
