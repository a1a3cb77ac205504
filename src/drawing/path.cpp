// ZDPath: the element list, its building operations and its transformations.
#include <zgraphics/drawing.h>

namespace {

void appendElement(QVector<ZDPathElement> &elements, double x, double y, int32_t type)
{
    elements.append(ZDPathElement(x, y, type));
}

// The continuation rule of the add operations for a piece starting at
// `start`: a move on an empty list or after a close element; nothing when the
// last element lies within one unit of the start on both axes (the piece then
// continues from that element as it is); otherwise a line to the start.
void continueAt(QVector<ZDPathElement> &elements, const QPointF &start)
{
    if (elements.isEmpty() || elements.constLast().type == ZDCloseElement) {
        appendElement(elements, start.x(), start.y(), ZDMoveToElement);
        return;
    }
    if (zgNumeric::pointEquate1(elements.constLast().toPoint(), start))
        return;
    appendElement(elements, start.x(), start.y(), ZDLineToElement);
}

} // namespace

ZDPath::ZDPath(const QRectF &rect)
{
    moveTo(rect.left(), rect.top());
    lineTo(rect.right(), rect.top());
    lineTo(rect.right(), rect.bottom());
    lineTo(rect.left(), rect.bottom());
    closeSubpath();
}

// resize(0) detaches a shared list into a new one of the same capacity and
// otherwise keeps the allocation.
void ZDPath::reset()
{
    if (elements.isEmpty())
        return;
    elements.resize(0);
}

void ZDPath::setBackX(double x)
{
    if (elements.isEmpty())
        return;
    elements.last().x = x;
}

void ZDPath::setBackY(double y)
{
    if (elements.isEmpty())
        return;
    elements.last().y = y;
}

void ZDPath::moveTo(double x, double y)
{
    appendElement(elements, x, y, ZDMoveToElement);
}

void ZDPath::moveTo(const QPointF &p)
{
    moveTo(p.x(), p.y());
}

void ZDPath::lineTo(double x, double y)
{
    appendElement(elements, x, y, ZDLineToElement);
}

void ZDPath::lineTo(const QPointF &p)
{
    lineTo(p.x(), p.y());
}

void ZDPath::cubicTo(const QPointF &c1, const QPointF &c2, const QPointF &end)
{
    appendElement(elements, c1.x(), c1.y(), ZDCurveToElement);
    appendElement(elements, c2.x(), c2.y(), ZDCurveToDataElement);
    appendElement(elements, end.x(), end.y(), ZDCurveToDataElement);
}

void ZDPath::addLine(const QPointF &p1, const QPointF &p2)
{
    continueAt(elements, p1);
    lineTo(p2);
}

void ZDPath::addLine(double x1, double y1, double x2, double y2)
{
    addLine(QPointF(x1, y1), QPointF(x2, y2));
}

void ZDPath::addLines(const QPointF *pts, int n)
{
    if (!pts)
        return;
    continueAt(elements, pts[0]);
    for (int i = 1; i < n; ++i)
        lineTo(pts[i]);
}

void ZDPath::addLines(const QPoint *pts, int n)
{
    if (!pts)
        return;
    continueAt(elements, QPointF(pts[0]));
    for (int i = 1; i < n; ++i)
        lineTo(QPointF(pts[i]));
}

void ZDPath::addBezier(const QPointF &p1, const QPointF &c1, const QPointF &c2, const QPointF &p2)
{
    continueAt(elements, p1);
    cubicTo(c1, c2, p2);
}

// pts[0] is the start, then control, control, end triples: a cubic for each
// i = 3, 6, 9, ... below n. Points after the last whole triple are not read
// (with n = 5, pts[1] to pts[3] make a cubic and pts[4] is left over).
void ZDPath::addBeziers(const QPointF *pts, int n)
{
    if (!pts)
        return;
    continueAt(elements, pts[0]);
    for (int i = 3; i < n; i += 3)
        cubicTo(pts[i - 2], pts[i - 1], pts[i]);
}

void ZDPath::addPath(ZDPath &other, bool connect)
{
    if (other.elements.isEmpty())
        return;
    // The access detaches other; a shared copy of its list is then read, which
    // also makes addPath(*this) safe.
    other.elements.detach();
    const QVector<ZDPathElement> source = other.elements;

    const ZDPathElement &first = source.first();
    if (elements.isEmpty() || !connect) {
        elements.append(first);
    } else if (!zgNumeric::pointEquate1(elements.constLast().toPoint(), first.toPoint())) {
        ZDPathElement joint = first;
        joint.type = ZDLineToElement;
        elements.append(joint);
    }
    for (int i = 1; i < source.size(); ++i)
        elements.append(source.at(i));
}

void ZDPath::addPolygon(const QPolygonF &polygon)
{
    if (polygon.isEmpty())
        return;
    const bool hangsOnMove = !elements.isEmpty() && elements.constLast().type == ZDMoveToElement;
    const QPointF &first = polygon.first();
    appendElement(elements, first.x(), first.y(), hangsOnMove ? ZDLineToElement : ZDMoveToElement);
    for (int i = 1; i < polygon.size(); ++i)
        lineTo(polygon.at(i));
}

void ZDPath::addRect(const QRectF &rect)
{
    moveTo(rect.left(), rect.top());
    lineTo(rect.right(), rect.top());
    lineTo(rect.right(), rect.bottom());
    lineTo(rect.left(), rect.bottom());
    closeSubpath();
}

void ZDPath::closeSubpath()
{
    if (elements.size() < 2 || elements.constLast().type == ZDCloseElement)
        return;

    // The subpath starts at the nearest move before the end; without one, at the origin.
    QPointF start(0, 0);
    for (int i = elements.size() - 1; i >= 0; --i) {
        if (elements.at(i).type == ZDMoveToElement) {
            start = elements.at(i).toPoint();
            break;
        }
    }

    ZDPathElement &last = elements.last();
    if (zgNumeric::pointEquate1(last.toPoint(), start)) {
        // The ends meet exactly; the last element keeps its type.
        last.x = start.x();
        last.y = start.y();
    } else {
        lineTo(start);
    }
    appendElement(elements, start.x(), start.y(), ZDCloseElement);
}

void ZDPath::translate(double dx, double dy)
{
    for (ZDPathElement &e : elements) {
        e.x += dx;
        e.y += dy;
    }
}

void ZDPath::transform(const QTransform &matrix)
{
    for (ZDPathElement &e : elements) {
        const QPointF mapped = matrix.map(QPointF(e.x, e.y));
        e.x = mapped.x();
        e.y = mapped.y();
    }
}

void ZDPath::scale(double sx, double sy)
{
    QTransform matrix;
    matrix.scale(sx, sy);
    transform(matrix);
}
