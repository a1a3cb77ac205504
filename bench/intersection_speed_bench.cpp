// Growth of the intersection sweep and cost of the drawing-path measures.
//
//   crossingsFlower/n     XPath::getCrossings of two flower outlines of n
//                         cubic petals, the second turned by half a petal
//   crossingsRandom/n     XPath::getCrossings of two random walks of n cubics
//   selfFlower/n          XPath::getCrossings(nullptr): the crossings of
//   selfRandom/n          one path with itself
//   walk*/n               the same four inputs through a plain walk over
//                         all curve pairs with the same pair finder: the
//                         sweep's reference, timed in the same run
//   measure*/sides        ZDPath::getLength, getPointAt, getTangentAt on a
//                         closed regular polygon, beside QPainterPath::length,
//                         pointAtPercent, angleAtPercent on the same polygon
//
// n is 10, 64, 512 and 4096 for the crossings; the polygons have 5, 50 and
// 500 sides. Paths are converted with toXPath outside the timed loop; the
// timed loop includes the release of every returned location and of its
// partner, which a caller must pay. Counter "crossings" is the count found.
// The program prints the time per call; the growth exponent k of time ~ n^k
// between two sizes is log(t2 / t1) / log(n2 / n1).
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>
#include <zgraphics/primitives.h>

#include <QtGui/QPainterPath>
#include <QtGui/QPolygonF>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <random>

namespace {

const double kPi = 3.14159265358979323846;

// A closed outline of n cubic petals around (500, 500): each petal leaves
// the inner circle, bulges out to the outer one and comes back, and the
// whole flower is turned by phase (in petals).
ZDPath flowerOutline(int petals, double phase)
{
    const double inner = 300.0;
    const double outer = 450.0;
    ZDPath path;
    const double step = 2.0 * kPi / petals;
    auto at = [&](double radius, double angle) {
        return QPointF(500.0 + radius * std::cos(angle), 500.0 + radius * std::sin(angle));
    };
    path.moveTo(at(inner, phase * step));
    for (int k = 0; k < petals; ++k) {
        const double a0 = (k + phase) * step;
        path.cubicTo(at(outer, a0 + 0.1 * step), at(outer, a0 + 0.9 * step),
                     at(inner, a0 + step));
    }
    path.closeSubpath();
    return path;
}

// An open random walk of n cubics in the square 0..1000, with steps that
// shrink as 1 / sqrt(n) so that the crossing count grows about as n.
ZDPath randomWalk(int pieces, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const double stepLength = 2000.0 / std::sqrt(double(pieces));
    auto clamp = [](double v) { return std::min(1000.0, std::max(0.0, v)); };
    auto near = [&](const QPointF &p) {
        const double angle = 2.0 * kPi * unit(random);
        const double length = stepLength * (0.3 + 0.7 * unit(random));
        return QPointF(clamp(p.x() + length * std::cos(angle)),
                       clamp(p.y() + length * std::sin(angle)));
    };
    ZDPath path;
    QPointF current(1000.0 * unit(random), 1000.0 * unit(random));
    path.moveTo(current);
    for (int k = 0; k < pieces; ++k) {
        const QPointF c1 = near(current);
        const QPointF c2 = near(c1);
        current = near(c2);
        path.cubicTo(c1, c2, current);
    }
    return path;
}

void releaseAll(const QList<zgCurveLocation *> &locations)
{
    for (zgCurveLocation *location : locations) {
        if (zgCurveLocation *other = location->intersection())
            other->release();
        location->release();
    }
}

bool isCrossingOrOverlap(zgCurveLocation *location)
{
    return location->overlap || location->isCrossing();
}

// getCrossings by the walk over all pairs of curves: every pair goes to the
// pair finder, whose box test rejects the pairs apart. The rejection of
// whole paths by their bounds is left out: these inputs overlap.
QList<zgCurveLocation *> walkAllPairs(XPath &path, XPath *other)
{
    const bool self = !other;
    const QList<zgCurve *> curves1 = path.getCurves();
    const QList<zgCurve *> curves2 = self ? curves1 : other->getCurves();
    QVector<QVector<double>> values2;
    for (zgCurve *curve : curves2)
        values2.append(curve->getValues(nullptr));
    QList<QList<zgCurveLocation *>> groups;
    zgPath *lastContour = nullptr;
    for (int i = 0; i < curves1.size(); ++i) {
        zgCurve *curve1 = curves1.at(i);
        const QVector<double> values1 = self ? values2.at(i) : curve1->getValues(nullptr);
        if (groups.isEmpty() || curve1->path() != lastContour) {
            lastContour = curve1->path();
            groups.append(QList<zgCurveLocation *>());
        }
        QList<zgCurveLocation *> &locations = groups.last();
        if (self) {
            opParam param;
            param.filter = isCrossingOrOverlap;
            param.joinedAtStart = curves1.size() == 1 && zgNumeric::isZero(values1[0] - values1[6])
                    && zgNumeric::isZero(values1[1] - values1[7]);
            zgCurve::getSelfIntersection(values1, curve1, locations, param);
        }
        for (int j = self ? i + 1 : 0; j < curves2.size(); ++j) {
            opParam param;
            param.filter = isCrossingOrOverlap;
            if (self) {
                param.joinedAtStart = curve1->getPrevious() == curves2.at(j);
                param.joinedAtEnd = curve1->getNext() == curves2.at(j);
            }
            zgCurve::getIntersections(values1, values2.at(j), curve1, curves2.at(j), locations,
                                      param);
        }
    }
    QList<zgCurveLocation *> result;
    for (const QList<zgCurveLocation *> &group : qAsConst(groups))
        result.append(group);
    return result;
}

void runCrossings(benchmark::State &state, ZDPath first, ZDPath second, bool self,
                  bool walk = false)
{
    XPath path1;
    first.toXPath(path1, 0);
    XPath path2;
    second.toXPath(path2, 0);
    XPath *other = self ? nullptr : &path2;
    int found = 0;
    for (auto _ : state) {
        const QList<zgCurveLocation *> locations = walk ? walkAllPairs(path1, other)
                                                        : path1.getCrossings(other);
        found = locations.size();
        releaseAll(locations);
    }
    state.counters["crossings"] = found;
}

void crossingsFlower(benchmark::State &state)
{
    const int n = int(state.range(0));
    runCrossings(state, flowerOutline(n, 0.0), flowerOutline(n, 0.5), false);
}

void crossingsRandom(benchmark::State &state)
{
    const int n = int(state.range(0));
    runCrossings(state, randomWalk(n, 11), randomWalk(n, 23), false);
}

void selfFlower(benchmark::State &state)
{
    const int n = int(state.range(0));
    runCrossings(state, flowerOutline(n, 0.0), ZDPath(), true);
}

void selfRandom(benchmark::State &state)
{
    const int n = int(state.range(0));
    runCrossings(state, randomWalk(n, 37), ZDPath(), true);
}

void walkFlower(benchmark::State &state)
{
    const int n = int(state.range(0));
    runCrossings(state, flowerOutline(n, 0.0), flowerOutline(n, 0.5), false, true);
}

void walkRandom(benchmark::State &state)
{
    const int n = int(state.range(0));
    runCrossings(state, randomWalk(n, 11), randomWalk(n, 23), false, true);
}

void walkSelfFlower(benchmark::State &state)
{
    const int n = int(state.range(0));
    runCrossings(state, flowerOutline(n, 0.0), ZDPath(), true, true);
}

void walkSelfRandom(benchmark::State &state)
{
    const int n = int(state.range(0));
    runCrossings(state, randomWalk(n, 37), ZDPath(), true, true);
}

QPolygonF regularPolygon(int sides)
{
    QPolygonF polygon;
    for (int k = 0; k < sides; ++k) {
        const double angle = 2.0 * kPi * k / sides;
        polygon << QPointF(200.0 + 150.0 * std::cos(angle), 200.0 + 150.0 * std::sin(angle));
    }
    polygon << polygon.first();
    return polygon;
}

ZDPath polygonPath(int sides)
{
    ZDPath path;
    path.addPolygon(regularPolygon(sides));
    return path;
}

QPainterPath polygonPainterPath(int sides)
{
    QPainterPath path;
    path.addPolygon(regularPolygon(sides));
    return path;
}

void measureLengthZg(benchmark::State &state)
{
    ZDPath path = polygonPath(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(path.getLength());
}

void measureLengthQt(benchmark::State &state)
{
    const QPainterPath path = polygonPainterPath(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(path.length());
}

void measurePointZg(benchmark::State &state)
{
    ZDPath path = polygonPath(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(path.getPointAt(0.618));
}

void measurePointQt(benchmark::State &state)
{
    const QPainterPath path = polygonPainterPath(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(path.pointAtPercent(0.618));
}

void measureTangentZg(benchmark::State &state)
{
    ZDPath path = polygonPath(int(state.range(0)));
    const zgPoint onPath = path.getPointAt(0.618);
    for (auto _ : state)
        benchmark::DoNotOptimize(path.getTangentAt(onPath));
}

void measureTangentQt(benchmark::State &state)
{
    const QPainterPath path = polygonPainterPath(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(path.angleAtPercent(0.618));
}

void crossingSizes(benchmark::internal::Benchmark *b)
{
    b->Arg(10)->Arg(64)->Arg(512)->Arg(4096)->Unit(benchmark::kMicrosecond);
}

void polygonSizes(benchmark::internal::Benchmark *b)
{
    b->Arg(5)->Arg(50)->Arg(500)->Unit(benchmark::kMicrosecond);
}

} // namespace

BENCHMARK(crossingsFlower)->Apply(crossingSizes);
BENCHMARK(crossingsRandom)->Apply(crossingSizes);
BENCHMARK(selfFlower)->Apply(crossingSizes);
BENCHMARK(selfRandom)->Apply(crossingSizes);
BENCHMARK(walkFlower)->Apply(crossingSizes);
BENCHMARK(walkRandom)->Apply(crossingSizes);
BENCHMARK(walkSelfFlower)->Apply(crossingSizes);
BENCHMARK(walkSelfRandom)->Apply(crossingSizes);
BENCHMARK(measureLengthZg)->Apply(polygonSizes);
BENCHMARK(measureLengthQt)->Apply(polygonSizes);
BENCHMARK(measurePointZg)->Apply(polygonSizes);
BENCHMARK(measurePointQt)->Apply(polygonSizes);
BENCHMARK(measureTangentZg)->Apply(polygonSizes);
BENCHMARK(measureTangentQt)->Apply(polygonSizes);
