// Boolean operators against QPainterPath::united, intersected and subtracted
// (exclude against united less intersected) on the same inputs: two flowers
// of n cubic petals turned by half a petal, two smooth random blobs of 1,000
// cubics about one centre, and two squares offset by half their side. The
// error is the result's area (exact integrals over its pieces, even-odd)
// against a reference: for the flowers and blobs, which are star-shaped about
// the origin, half the integral of r(theta)^2 over the larger (union) or
// smaller (intersection) radius, by Gauss-Legendre between the known kinks or
// on a very fine grid; for the squares the exact areas.
#include "bench_support.h"
#include "ratio_table.h"

#include "../tests/boolean/boolean_oracle.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtGui/QPainterPath>

#include <functional>
#include <map>
#include <memory>
#include <random>

namespace {

using booleanoracle::Loop;
using booleanoracle::Piece;
using booleanoracle::Shape;

enum Op { Unite, Intersect, Subtract, Exclude };

// A star-shaped operand: its loop, and its radius as a function of the angle.
struct Operand
{
    Shape shape;
    std::function<double(double)> radius;
    QPainterPath painter;
    std::unique_ptr<XPath> path;
};

// The distance from the origin to the loop along the direction theta: the
// piece whose polar angles span theta, then bisection on it (the polar angle
// grows along every piece of these loops).
double radiusAlong(const Loop &loop, double theta)
{
    const double twoPi = 2 * M_PI;
    auto angleOf = [](double x, double y) {
        const double a = std::atan2(y, x);
        return a < 0 ? a + 2 * M_PI : a;
    };
    theta = std::fmod(std::fmod(theta, twoPi) + twoPi, twoPi);
    for (const Piece &p : loop) {
        double a0 = angleOf(p.x[0], p.y[0]);
        double a1 = angleOf(p.x[3], p.y[3]);
        double t = theta;
        if (a1 < a0) { // the piece passes angle 0
            a1 += twoPi;
            if (t < a0)
                t += twoPi;
        }
        if (t < a0 || t > a1)
            continue;
        double lo = 0.0, hi = 1.0;
        for (int k = 0; k < 60; ++k) {
            const double m = 0.5 * (lo + hi);
            double am = angleOf(p.xAt(m), p.yAt(m));
            if (am < a0 - 1e-9)
                am += twoPi;
            (am < t ? lo : hi) = m;
        }
        const double m = 0.5 * (lo + hi);
        return std::hypot(p.xAt(m), p.yAt(m));
    }
    return 0.0;
}

// Half the integral of f(theta)^2 from a to b, by 20-point Gauss-Legendre
// on each of pieces equal parts.
double polarArea(const std::function<double(double)> &f, double a, double b, int pieces)
{
    static const auto &rule = zgbench::GaussLegendre10::rule();
    double sum = 0.0;
    const double h = (b - a) / pieces;
    for (int i = 0; i < pieces; ++i) {
        const double lo = a + i * h;
        // Two halves of 10 points each.
        for (int half = 0; half < 2; ++half) {
            const double l = lo + half * h / 2, r = l + h / 2;
            for (int k = 0; k < zgbench::GaussLegendre10::N; ++k) {
                const double x = 0.5 * (l + r) + 0.5 * (r - l) * double(rule.nodes[k]);
                const double v = f(x);
                sum += double(rule.weights[k]) * 0.5 * (r - l) * 0.5 * v * v;
            }
        }
    }
    return sum;
}

// A flower of n cubic petals between the points at radius 100 and angles
// 2 pi k / n (plus turn), bulging out to radius 140.
Shape flower(int n, double turn)
{
    Loop loop;
    const double step = 2 * M_PI / n;
    for (int k = 0; k < n; ++k) {
        const double a0 = turn + k * step, a3 = a0 + step;
        const double a1 = a0 + step / 3, a2 = a0 + 2 * step / 3;
        const double outer = 140.0 / std::cos(step / 6); // control points
        loop.append(Piece::curve(100 * std::cos(a0), 100 * std::sin(a0), outer * std::cos(a1),
                                 outer * std::sin(a1), outer * std::cos(a2), outer * std::sin(a2),
                                 100 * std::cos(a3), 100 * std::sin(a3)));
    }
    return {loop};
}

// A smooth closed ring of n cubics about the origin with a random radius of
// a few low harmonics.
Shape blob(int n, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> amplitude(2.0, 8.0), phase(0, 2 * M_PI);
    double amp[5], ph[5];
    for (int j = 0; j < 5; ++j) {
        amp[j] = amplitude(random);
        ph[j] = phase(random);
    }
    QVector<double> xs, ys;
    for (int k = 0; k < n; ++k) {
        const double a = 2 * M_PI * k / n;
        double r = 100;
        for (int j = 0; j < 5; ++j)
            r += amp[j] * std::sin((j + 2) * a + ph[j]);
        xs.append(r * std::cos(a));
        ys.append(r * std::sin(a));
    }
    Loop loop;
    for (int k = 0; k < n; ++k) {
        const int p = (k + n - 1) % n, q = (k + 1) % n, s = (k + 2) % n;
        loop.append(Piece::curve(xs[k], ys[k], xs[k] + (xs[q] - xs[p]) / 6,
                                 ys[k] + (ys[q] - ys[p]) / 6, xs[q] - (xs[s] - xs[k]) / 6,
                                 ys[q] - (ys[s] - ys[k]) / 6, xs[q], ys[q]));
    }
    return {loop};
}

QPainterPath painterOf(const Shape &shape)
{
    QPainterPath path;
    for (const Loop &loop : shape) {
        path.moveTo(loop.first().x[0], loop.first().y[0]);
        for (const Piece &p : loop) {
            if (p.cubic)
                path.cubicTo(p.x[1], p.y[1], p.x[2], p.y[2], p.x[3], p.y[3]);
            else
                path.lineTo(p.x[3], p.y[3]);
        }
        path.closeSubpath();
    }
    return path;
}

Operand makeOperand(const Shape &shape)
{
    Operand operand;
    operand.shape = shape;
    const Loop loop = shape.first();
    operand.radius = [loop](double theta) { return radiusAlong(loop, theta); };
    operand.painter = painterOf(shape);
    operand.path.reset(booleanoracle::toXPath(shape));
    return operand;
}

struct Case
{
    Operand a;
    Operand b;
    double reference[4]; // unite, intersect, subtract, exclude
};

// The reference areas of two operands star-shaped about the origin, with
// kinks only at multiples of kinkStep (or anywhere, with a fine grid).
void polarReferences(Case &c, double kinkStep, int piecesPerStep)
{
    const auto ra = c.a.radius, rb = c.b.radius;
    const int steps = int(std::lround(2 * M_PI / kinkStep));
    const double areaA = polarArea(ra, 0, 2 * M_PI, steps * piecesPerStep);
    const double areaB = polarArea(rb, 0, 2 * M_PI, steps * piecesPerStep);
    const double united = polarArea([&](double t) { return std::max(ra(t), rb(t)); }, 0,
                                    2 * M_PI, steps * piecesPerStep);
    const double common = areaA + areaB - united;
    c.reference[Unite] = united;
    c.reference[Intersect] = common;
    c.reference[Subtract] = areaA - common;
    c.reference[Exclude] = united - common;
}

Case &flowers(int n)
{
    static std::map<int, std::unique_ptr<Case>> cache;
    std::unique_ptr<Case> &c = cache[n];
    if (!c) {
        c.reset(new Case{makeOperand(flower(n, 0.0)), makeOperand(flower(n, M_PI / n)), {}});
        // Petal joints and crossings fall on multiples of a quarter petal.
        polarReferences(*c, 2 * M_PI / n / 4, n >= 512 ? 1 : 4);
    }
    return *c;
}

Case &blobs()
{
    static std::unique_ptr<Case> c;
    if (!c) {
        c.reset(new Case{makeOperand(blob(1000, 11u)), makeOperand(blob(1000, 12u)), {}});
        // Crossings fall anywhere: a grid of 200,000 parts.
        polarReferences(*c, 2 * M_PI / 1000, 200);
    }
    return *c;
}

Case &squares()
{
    static std::unique_ptr<Case> c;
    if (!c) {
        const Shape a = {booleanoracle::rectangle(0, 0, 100, 100)};
        const Shape b = {booleanoracle::rectangle(50, 0, 100, 100)};
        c.reset(new Case{makeOperand(a), makeOperand(b), {15000, 5000, 5000, 10000}});
    }
    return *c;
}

int curveCount(const Shape &shape)
{
    int count = 0;
    for (const Loop &loop : shape)
        count += loop.size();
    return count;
}

void zgOperator(benchmark::State &state, Case &c, Op op)
{
    Shape result;
    for (auto _ : state) {
        XPath *out = op == Unite ? c.a.path->unite(c.b.path.get())
                : op == Intersect ? c.a.path->intersect(c.b.path.get(), true)
                : op == Subtract  ? c.a.path->subtract(c.b.path.get())
                                  : c.a.path->exclude(c.b.path.get());
        state.PauseTiming();
        result = booleanoracle::fromXPath(*out);
        delete out;
        state.ResumeTiming();
    }
    state.counters["curves"] = curveCount(result);
    state.counters[zgbench::errorCounter()] =
            std::fabs(booleanoracle::evenOddArea(result) - c.reference[op]);
}

void qtOperator(benchmark::State &state, Case &c, Op op)
{
    QPainterPath out;
    for (auto _ : state) {
        out = op == Unite ? c.a.painter.united(c.b.painter)
                : op == Intersect ? c.a.painter.intersected(c.b.painter)
                : op == Subtract  ? c.a.painter.subtracted(c.b.painter)
                                  : c.a.painter.united(c.b.painter)
                                            .subtracted(c.a.painter.intersected(c.b.painter));
        benchmark::DoNotOptimize(out);
    }
    ZDPath elements;
    elements.fromPainterPath(out);
    const Shape result = booleanoracle::fromElements(elements);
    state.counters["curves"] = curveCount(result);
    state.counters[zgbench::errorCounter()] =
            std::fabs(booleanoracle::evenOddArea(result) - c.reference[op]);
}

bool registerBooleanPairs()
{
    const char *const names[4] = {"unite", "intersect", "subtract", "exclude"};
    const char *unit = "area (qt exclude: united less intersected)";
    std::vector<std::pair<std::string, std::function<Case &()>>> cases;
    for (int n : {16, 64, 512, 4096})
        cases.push_back({"flower" + std::to_string(n), [n]() -> Case & { return flowers(n); }});
    cases.push_back({"blobs1000", []() -> Case & { return blobs(); }});
    cases.push_back({"squares", []() -> Case & { return squares(); }});
    for (const auto &entry : cases) {
        const auto make = entry.second;
        for (int op = 0; op < 4; ++op) {
            zgbench::registerPair(
                    names[op], entry.first, unit,
                    [make, op](benchmark::State &s) { zgOperator(s, make(), Op(op)); },
                    [make, op](benchmark::State &s) { qtOperator(s, make(), Op(op)); }, 0.1);
        }
    }
    return true;
}

const bool booleanPairsRegistered = registerBooleanPairs();

} // namespace
