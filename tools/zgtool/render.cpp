#include "render.h"
#include "svgpath.h"

#include <QtCore/QFile>
#include <QtCore/QTextStream>

#include <QtGui/QFont>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <cmath>

namespace {

const int kCellSize = 220;
const int kColumns = 3;
const int kTitleHeight = 36;
const int kLabelHeight = 22;

const char *typeName(int type)
{
    switch (type) {
    case ZDMoveToElement: return "move";
    case ZDLineToElement: return "line";
    case ZDCurveToElement: return "curve";
    case ZDCurveToDataElement: return "curve-data";
    case ZDCloseElement: return "close";
    }
    return "unknown";
}

// Scales the path's bounding box into the drawing area of a cell.
QTransform fitTransform(const QRectF &bounds, const QRectF &area)
{
    const double width = qMax(bounds.width(), 1.0);
    const double height = qMax(bounds.height(), 1.0);
    const double scale = qMin(area.width() / width, area.height() / height);
    QTransform transform;
    transform.translate(area.center().x(), area.center().y());
    transform.scale(scale, scale);
    transform.translate(-bounds.center().x(), -bounds.center().y());
    return transform;
}

void drawSample(QPainter &painter, const Sample &sample, const QRectF &cell)
{
    painter.setPen(QPen(QColor(200, 200, 200), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(cell.adjusted(2, 2, -2, -2));
    painter.setPen(Qt::black);
    painter.drawText(QRectF(cell.left(), cell.top() + 4, cell.width(), kLabelHeight),
                     Qt::AlignHCenter, sample.label);

    if (!sample.image.isNull()) {
        const QRectF area = cell.adjusted(16, kLabelHeight + 8, -16, -16);
        const QImage scaled = sample.image.scaled(area.size().toSize(), Qt::KeepAspectRatio);
        painter.drawImage(QPointF(area.center().x() - scaled.width() / 2.0,
                                  area.center().y() - scaled.height() / 2.0), scaled);
        return;
    }
    QPainterPath shape;
    sample.path.toPainterPath(shape);
    QPainterPath sourceShape;
    sample.source.toPainterPath(sourceShape);
    const QRectF area = cell.adjusted(16, kLabelHeight + 8, -16, -16);
    QRectF bounds = shape.controlPointRect() | sourceShape.controlPointRect();
    for (const QPointF &mark : sample.marks)
        bounds |= QRectF(mark, QSizeF(0.001, 0.001));
    for (const QRectF &box : sample.boxes)
        bounds |= box;
    const QTransform transform = fitTransform(bounds, area);
    if (!sample.source.isEmpty()) {
        painter.setPen(QPen(QColor(170, 170, 170), 1));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(transform.map(sourceShape));
    }
    // Only closed shapes get a fill: open lines read better without one.
    bool closed = false;
    for (const ZDPathElement &e : sample.path.elements)
        closed = closed || e.type == ZDCloseElement;
    painter.setPen(QPen(QColor(30, 80, 200), 2));
    painter.setBrush(closed ? QBrush(QColor(30, 80, 200, 40)) : QBrush(Qt::NoBrush));
    painter.drawPath(transform.map(shape));

    // Element points: moves green, line and curve ends red, control points grey.
    for (int i = 0; sample.showPoints && i < sample.path.count(); ++i) {
        const ZDPathElement &e = sample.path.elements.at(i);
        const bool control = e.type == ZDCurveToElement
                || (e.type == ZDCurveToDataElement && i + 1 < sample.path.count()
                    && sample.path.elements.at(i + 1).type == ZDCurveToDataElement);
        const QColor color = e.type == ZDMoveToElement ? QColor(0, 160, 0)
                : control ? QColor(150, 150, 150) : QColor(210, 30, 30);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(transform.map(e.toPoint()), 3.0, 3.0);
    }
    // Boxes: dashed green rectangles.
    painter.setPen(QPen(QColor(0, 150, 70), 1, Qt::DashLine));
    painter.setBrush(Qt::NoBrush);
    for (const QRectF &box : sample.boxes)
        painter.drawRect(transform.mapRect(box));
    // Marks: orange rings.
    painter.setPen(QPen(QColor(240, 130, 0), 2));
    painter.setBrush(Qt::NoBrush);
    for (const QPointF &mark : sample.marks)
        painter.drawEllipse(transform.map(mark), 5.0, 5.0);
}

} // namespace

bool renderGrid(const QVector<Sample> &samples, const QString &title, const QString &fileName)
{
    const int rows = (samples.size() + kColumns - 1) / kColumns;
    QImage image(kColumns * kCellSize, kTitleHeight + rows * kCellSize, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(14);
    painter.setFont(font);
    painter.drawText(QRectF(0, 8, image.width(), kTitleHeight), Qt::AlignHCenter, title);
    for (int i = 0; i < samples.size(); ++i) {
        const QRectF cell((i % kColumns) * kCellSize, kTitleHeight + (i / kColumns) * kCellSize,
                          kCellSize, kCellSize);
        drawSample(painter, samples.at(i), cell);
    }
    painter.end();
    return image.save(fileName, "PNG");
}

bool renderSvg(const QVector<Sample> &samples, const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        return false;
    const int rows = (samples.size() + kColumns - 1) / kColumns;
    QTextStream out(&file);
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << kColumns * kCellSize
        << "\" height=\"" << rows * kCellSize << "\">\n";
    for (int i = 0; i < samples.size(); ++i) {
        const Sample &sample = samples.at(i);
        QPainterPath shape;
        sample.path.toPainterPath(shape);
        const QRectF cell((i % kColumns) * kCellSize, (i / kColumns) * kCellSize, kCellSize, kCellSize);
        QRectF bounds = shape.controlPointRect();
        for (const QPointF &mark : sample.marks)
            bounds |= QRectF(mark, QSizeF(0.001, 0.001));
        for (const QRectF &box : sample.boxes)
            bounds |= box;
        const QTransform t = fitTransform(bounds, cell.adjusted(16, kLabelHeight + 8, -16, -16));
        out << "  <g>\n    <text x=\"" << cell.center().x() << "\" y=\"" << cell.top() + 18
            << "\" text-anchor=\"middle\" font-family=\"sans-serif\" font-size=\"14\">"
            << sample.label.toHtmlEscaped() << "</text>\n";
        out << "    <g transform=\"matrix(" << t.m11() << ' ' << t.m12() << ' ' << t.m21() << ' '
            << t.m22() << ' ' << t.dx() << ' ' << t.dy() << ")\">\n";
        out << "      <path d=\"" << toSvgPath(sample.path) << "\" fill=\"rgba(30,80,200,0.15)\" "
            << "stroke=\"rgb(30,80,200)\" stroke-width=\"2\" vector-effect=\"non-scaling-stroke\"/>\n";
        for (const QRectF &box : sample.boxes)
            out << "      <rect x=\"" << box.x() << "\" y=\"" << box.y() << "\" width=\"" << box.width()
                << "\" height=\"" << box.height() << "\" fill=\"none\" stroke=\"rgb(0,150,70)\" "
                << "stroke-dasharray=\"4 3\" vector-effect=\"non-scaling-stroke\"/>\n";
        for (const QPointF &mark : sample.marks)
            out << "      <circle cx=\"" << mark.x() << "\" cy=\"" << mark.y()
                << "\" r=\"3\" fill=\"none\" stroke=\"rgb(240,130,0)\" "
                << "vector-effect=\"non-scaling-stroke\"/>\n";
        out << "    </g>\n  </g>\n";
    }
    out << "</svg>\n";
    return out.status() == QTextStream::Ok;
}

void printElements(const Sample &sample, FILE *out)
{
    std::fprintf(out, "# %s: %d elements\n", qPrintable(sample.label), sample.path.count());
    for (const ZDPathElement &e : sample.path.elements)
        std::fprintf(out, "%-10s %.17g %.17g\n", typeName(e.type), e.x, e.y);
}
