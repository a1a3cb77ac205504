// Containment and stroke hits against independent answers on seeded random
// shapes: QPainterPath's own fill test for polygons, and the exact distance
// to the polygon edges for a round stroke.
#include <zgraphics/model.h>

#include <QtGui/QPainterPath>
#include <QtGui/QPainterPathStroker>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace {

using Polygon = QVector<QPointF>;

double distanceToEdge(const QPointF &p, const QPointF &a, const QPointF &b)
{
    const QPointF ab = b - a;
    const double lengthSquared = ab.x() * ab.x() + ab.y() * ab.y();
    double u = 0.0;
    if (lengthSquared > 0.0)
        u = std::clamp(((p.x() - a.x()) * ab.x() + (p.y() - a.y()) * ab.y()) / lengthSquared, 0.0,
                       1.0);
    return std::hypot(p.x() - a.x() - u * ab.x(), p.y() - a.y() - u * ab.y());
}

// Distance to the polygon's edges; an open polygon has no closing edge.
double distanceToOutline(const QPointF &p, const Polygon &polygon, bool closed)
{
    double best = std::numeric_limits<double>::infinity();
    const int count = closed ? polygon.size() : polygon.size() - 1;
    for (int i = 0; i < count; ++i)
        best = std::min(best,
                        distanceToEdge(p, polygon.at(i), polygon.at((i + 1) % polygon.size())));
    return best;
}

Polygon randomPolygon(std::mt19937 &random, bool onGrid)
{
    std::uniform_int_distribution<int> count(3, 9);
    std::uniform_int_distribution<int> grid(0, 20);
    std::uniform_real_distribution<double> real(0.0, 20.0);
    Polygon polygon;
    const int n = count(random);
    for (int i = 0; i < n; ++i) {
        if (onGrid)
            polygon << QPointF(grid(random), grid(random));
        else
            polygon << QPointF(real(random), real(random));
    }
    return polygon;
}

zgPath *contourOf(const Polygon &polygon, bool closed)
{
    zgPath *path = new zgPath(nullptr, closed);
    for (const QPointF &p : polygon)
        path->addSegment(new zgSegment(p.x(), p.y()));
    return path;
}

// The compound's contours as they stand after joining it (the orientation
// rule may have turned some), as one QPainterPath.
QPainterPath painterPathOf(const XPath &compound)
{
    QPainterPath path;
    for (const zgPath *child : compound.children) {
        for (int i = 0; i < child->segments.size(); ++i) {
            const zgPoint p = child->segments.at(i)->point;
            if (i == 0)
                path.moveTo(p.x, p.y);
            else
                path.lineTo(p.x, p.y);
        }
        path.closeSubpath();
    }
    return path;
}

} // namespace

TEST(ContainsOracle, RandomPolygonCompoundsAgreeWithQPainterPath)
{
    int compared = 0;
    int inside = 0;
    int disagreements = 0;
    for (int c = 0; c < 300; ++c) {
        std::mt19937 random(7000u + unsigned(c));
        XPath compound;
        QVector<Polygon> polygons;
        const int children = 1 + c % 3;
        for (int i = 0; i < children; ++i) {
            polygons << randomPolygon(random, c % 2 == 0);
            compound.addChild(contourOf(polygons.last(), true));
        }
        QPainterPath oddEven = painterPathOf(compound);
        oddEven.setFillRule(Qt::OddEvenFill);
        QPainterPath winding = oddEven;
        winding.setFillRule(Qt::WindingFill);
        std::uniform_real_distribution<double> coordinate(-2.0, 22.0);
        std::uniform_int_distribution<int> half(-4, 44);
        for (int k = 0; k < 300; ++k) {
            // Half of the points on the half-unit grid, so on the corner and
            // edge ordinates of the grid polygons.
            const QPointF p = k % 2 ? QPointF(coordinate(random), coordinate(random))
                                    : QPointF(half(random) * 0.5, half(random) * 0.5);
            bool nearOutline = false;
            for (const zgPath *child : compound.children) {
                Polygon polygon;
                for (const zgSegment *segment : child->segments)
                    polygon << QPointF(segment->point.x, segment->point.y);
                // 1e-6: nearer than this the point is on the outline.
                nearOutline = nearOutline || distanceToOutline(p, polygon, true) <= 1e-6;
            }
            if (nearOutline)
                continue;
            ++compared;
            const zgPoint point(p.x(), p.y());
            const bool evenOddAnswer = compound.contains(point, zgStyle(true, true, true));
            const bool nonZeroAnswer = compound.contains(point, zgStyle(true, true, false));
            inside += nonZeroAnswer ? 1 : 0;
            if (evenOddAnswer != oddEven.contains(p) || nonZeroAnswer != winding.contains(p)) {
                ++disagreements;
                ADD_FAILURE() << "case " << c << " point (" << p.x() << ", " << p.y() << ")";
            }
        }
    }
    std::printf("containment oracle: %d points compared, %d inside, %d disagreements\n",
                compared, inside, disagreements);
    EXPECT_GT(compared, 80000);
    EXPECT_GT(inside, 10000);
    EXPECT_EQ(disagreements, 0);
}

TEST(StrokeHitOracle, RoundStrokeIsTheDistanceToTheOutline)
{
    // With round joins and caps a stroke hit is a distance of at most
    // radius + tolerance from the outline.
    int compared = 0;
    int hits = 0;
    int disagreements = 0;
    for (int c = 0; c < 300; ++c) {
        std::mt19937 random(9000u + unsigned(c));
        const bool closed = c % 2 == 0;
        const Polygon polygon = randomPolygon(random, c % 3 == 0);
        XPath compound;
        compound.addChild(contourOf(polygon, closed));
        zgPath *path = compound.children.first();
        std::uniform_real_distribution<double> width(0.0, 4.0);
        const zgStyle style(true, true, true, width(random), zgCapRound, zgJoinRound);
        const zgHitOpt options(false, true, false, true, 0.25);
        const double padding = style.strokeWidth * 0.5 + options.tolerance;
        std::uniform_real_distribution<double> coordinate(-3.0, 23.0);
        for (int k = 0; k < 300; ++k) {
            const QPointF p(coordinate(random), coordinate(random));
            const double distance = distanceToOutline(p, polygon, closed);
            // 1e-9: on the edge of the stroke the answer is either.
            if (std::abs(distance - padding) <= 1e-9)
                continue;
            ++compared;
            const bool expected = distance <= padding;
            const zgHitResult hit = path->_hitTestSelf(zgPoint(p.x(), p.y()), options, style);
            hits += hit.type == zgHitStroke ? 1 : 0;
            if ((hit.type == zgHitStroke) != expected) {
                ++disagreements;
                ADD_FAILURE() << "case " << c << " point (" << p.x() << ", " << p.y()
                              << "): distance " << distance << ", padding " << padding;
            }
        }
    }
    std::printf("round stroke oracle: %d points compared, %d hits, %d disagreements\n",
                compared, hits, disagreements);
    EXPECT_GT(compared, 80000);
    EXPECT_GT(hits, 10000);
    EXPECT_EQ(disagreements, 0);
}

namespace {

double cross(const QPointF &a, const QPointF &b) { return a.x() * b.y() - a.y() * b.x(); }
double dot(const QPointF &a, const QPointF &b) { return a.x() * b.x() + a.y() * b.y(); }

QPointF unit(const QPointF &v)
{
    const double length = std::hypot(v.x(), v.y());
    return v / length;
}

// Inside or on a convex polygon given in either turning order.
bool inConvex(const QPointF &p, const QVector<QPointF> &corners)
{
    bool anyPositive = false;
    bool anyNegative = false;
    for (int i = 0; i < corners.size(); ++i) {
        const QPointF &a = corners.at(i);
        const QPointF &b = corners.at((i + 1) % corners.size());
        const double side = cross(b - a, p - a);
        anyPositive = anyPositive || side > 0.0;
        anyNegative = anyNegative || side < 0.0;
    }
    return !(anyPositive && anyNegative);
}

// The stroke of a polygon as the union of its pieces, written from the
// geometry of a stroke: a band of half-width r along each edge, at each
// corner the join on the outer side of the turn, at each open end the cap.
class StrokePieces
{
public:
    StrokePieces(const Polygon &polygon, bool closed, const zgStyle &style)
        : m_polygon(polygon), m_closed(closed), m_style(style), m_r(style.strokeWidth * 0.5)
    {
    }

    int edgeCount() const { return m_closed ? m_polygon.size() : m_polygon.size() - 1; }

    bool inBand(const QPointF &p, int edge) const
    {
        const QPointF a = m_polygon.at(edge);
        const QPointF b = m_polygon.at((edge + 1) % m_polygon.size());
        const QPointF ab = b - a;
        const double u = dot(p - a, ab) / dot(ab, ab);
        return u >= 0.0 && u <= 1.0 && std::abs(cross(unit(ab), p - a)) <= m_r;
    }

    bool isEnd(int vertex) const
    {
        return !m_closed && (vertex == 0 || vertex == m_polygon.size() - 1);
    }

    // The join or cap at a vertex.
    bool inCorner(const QPointF &p, int vertex) const
    {
        const QPointF v = m_polygon.at(vertex);
        const int n = m_polygon.size();
        if (isEnd(vertex)) {
            const QPointF outwards = vertex == 0 ? unit(v - m_polygon.at(1))
                                                 : unit(v - m_polygon.at(n - 2));
            if (m_style.cap == zgCapRound)
                return std::hypot(p.x() - v.x(), p.y() - v.y()) <= m_r;
            if (m_style.cap == zgCapButt)
                return false;
            const double along = dot(p - v, outwards);
            return along >= 0.0 && along <= m_r && std::abs(cross(outwards, p - v)) <= m_r;
        }
        if (m_style.join == zgJoinRound)
            return std::hypot(p.x() - v.x(), p.y() - v.y()) <= m_r;
        const QPointF d1 = unit(v - m_polygon.at((vertex + n - 1) % n));
        const QPointF d2 = unit(m_polygon.at((vertex + 1) % n) - v);
        const double turn = cross(d1, d2);
        // The outer side is the one the outline turns away from.
        const double side = turn > 0.0 ? -1.0 : 1.0;
        const QPointF n1 = QPointF(-d1.y(), d1.x()) * (side * m_r);
        const QPointF n2 = QPointF(-d2.y(), d2.x()) * (side * m_r);
        if (m_style.join == zgJoinMiter) {
            // The outer edges meet where v + n1 + a d1 = v + n2 + b d2.
            const double a = cross(n2 - n1, d2) / cross(d1, d2);
            const QPointF corner = v + n1 + d1 * a;
            const double reach = std::hypot(corner.x() - v.x(), corner.y() - v.y());
            if (reach <= m_style.miterLimit * m_r)
                return inConvex(p, {v, v + n1, corner, v + n2});
        }
        return inConvex(p, {v, v + n1, v + n2});
    }

    bool inStroke(const QPointF &p) const
    {
        for (int edge = 0; edge < edgeCount(); ++edge) {
            if (inBand(p, edge))
                return true;
        }
        for (int vertex = 0; vertex < m_polygon.size(); ++vertex) {
            if (inCorner(p, vertex))
                return true;
        }
        return false;
    }

private:
    Polygon m_polygon;
    bool m_closed;
    zgStyle m_style;
    double m_r;
};

} // namespace

TEST(StrokeHitOracle, JoinsAndCapsAgainstTheStrokePieces)
{
    // Every hit is inside the stroke; a point of the stroke is missed only
    // when it lies outside the piece of its nearest outline point (its band,
    // or the join or cap of the nearest corner), since one piece is tested
    // per hit test. QPainterPathStroker (its miter limit also counted in
    // half widths, with the miter that falls back to a bevel) checks the
    // pieces themselves.
    struct Shape
    {
        zgCap cap;
        zgJoin join;
        Qt::PenCapStyle qtCap;
        Qt::PenJoinStyle qtJoin;
    };
    const Shape shapes[] = {
        {zgCapButt, zgJoinBevel, Qt::FlatCap, Qt::BevelJoin},
        {zgCapSquare, zgJoinMiter, Qt::SquareCap, Qt::SvgMiterJoin},
        {zgCapButt, zgJoinMiter, Qt::FlatCap, Qt::SvgMiterJoin},
        {zgCapSquare, zgJoinBevel, Qt::SquareCap, Qt::BevelJoin},
    };
    int compared = 0;
    int hits = 0;
    int strokePoints = 0;
    int missedOtherPiece = 0;
    int unexplained = 0;
    int stroker = 0;
    for (int c = 0; c < 400; ++c) {
        std::mt19937 random(11000u + unsigned(c));
        const bool closed = c % 2 == 0;
        const Polygon polygon = randomPolygon(random, false);
        const Shape &shape = shapes[c % 4];
        std::uniform_real_distribution<double> width(0.5, 4.0);
        std::uniform_real_distribution<double> limit(1.0, 12.0);
        const zgStyle style(true, true, true, width(random), shape.cap, shape.join, limit(random));
        const StrokePieces pieces(polygon, closed, style);
        XPath compound;
        compound.addChild(contourOf(polygon, closed));
        zgPath *path = compound.children.first();

        QPainterPath qtPath;
        qtPath.moveTo(polygon.first());
        for (int i = 1; i < polygon.size(); ++i)
            qtPath.lineTo(polygon.at(i));
        if (closed)
            qtPath.closeSubpath();
        QPainterPathStroker qtStroker;
        qtStroker.setWidth(style.strokeWidth);
        qtStroker.setCapStyle(shape.qtCap);
        qtStroker.setJoinStyle(shape.qtJoin);
        qtStroker.setMiterLimit(style.miterLimit);
        const QPainterPath outline = qtStroker.createStroke(qtPath);

        const zgHitOpt options(false, true, false, true, 0.0);
        std::uniform_real_distribution<double> coordinate(-3.0, 23.0);
        for (int k = 0; k < 300; ++k) {
            const QPointF p(coordinate(random), coordinate(random));
            const zgPoint point(p.x(), p.y());
            ++compared;
            const bool inStroke = pieces.inStroke(p);
            strokePoints += inStroke ? 1 : 0;
            if (outline.contains(p) != inStroke) {
                ++stroker;
                ADD_FAILURE() << "stroker differs, case " << c << " (" << p.x() << ", " << p.y()
                              << ")";
            }
            const bool hit = path->_hitTestSelf(point, options, style).type == zgHitStroke;
            hits += hit ? 1 : 0;
            if (hit == inStroke)
                continue;
            // The piece of the nearest outline point.
            zgCurveLocation *nearest = path->getNearestLocation(point);
            const double t = nearest->getTime();
            const int index = nearest->getIndex();
            nearest->release();
            const bool atCorner = t == 0.0 || t == 1.0;
            const int corner = t == 1.0 ? index + 1 : index;
            const bool inNearestPiece = atCorner ? pieces.inCorner(p, corner)
                                                 : pieces.inBand(p, index);
            if (!hit && !inNearestPiece) {
                ++missedOtherPiece;
            } else {
                ++unexplained;
                ADD_FAILURE() << "case " << c << " (" << p.x() << ", " << p.y() << "): hit "
                              << hit << ", in the stroke " << inStroke;
            }
        }
    }
    std::printf("stroke pieces oracle: %d points compared, %d in the stroke, %d hits; %d stroke "
                "points missed because another piece holds them, %d unexplained; the stroker "
                "differs from the pieces at %d points\n",
                compared, strokePoints, hits, missedOtherPiece, unexplained, stroker);
    EXPECT_GT(strokePoints, 15000);
    EXPECT_EQ(unexplained, 0);
    EXPECT_LT(missedOtherPiece, compared / 500);
}
