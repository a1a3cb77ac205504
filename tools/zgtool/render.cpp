#include "render.h"

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

    const QPainterPath shape = toDisplayPath(sample.path);
    const QRectF area = cell.adjusted(16, kLabelHeight + 8, -16, -16);
    const QTransform transform = fitTransform(shape.boundingRect(), area);
    painter.setPen(QPen(QColor(30, 80, 200), 2));
    painter.setBrush(QColor(30, 80, 200, 40));
    painter.drawPath(transform.map(shape));

    // Element points: moves green, line and curve ends red, control points grey.
    for (int i = 0; i < sample.path.count(); ++i) {
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
}

} // namespace

QPainterPath toDisplayPath(const ZDPath &path)
{
    QPainterPath result;
    const int count = path.count();
    for (int i = 0; i < count; ++i) {
        const ZDPathElement &e = path.elements.at(i);
        switch (e.type) {
        case ZDMoveToElement:
            result.moveTo(e.x, e.y);
            break;
        case ZDLineToElement:
            result.lineTo(e.x, e.y);
            break;
        case ZDCurveToElement:
            if (i + 2 < count) {
                result.cubicTo(e.toPoint(), path.elements.at(i + 1).toPoint(),
                               path.elements.at(i + 2).toPoint());
                i += 2;
            }
            break;
        case ZDCloseElement:
            result.closeSubpath();
            break;
        default:
            break;
        }
    }
    return result;
}

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

void printElements(const Sample &sample, FILE *out)
{
    std::fprintf(out, "# %s: %d elements\n", qPrintable(sample.label), sample.path.count());
    for (const ZDPathElement &e : sample.path.elements)
        std::fprintf(out, "%-10s %.17g %.17g\n", typeName(e.type), e.x, e.y);
}
