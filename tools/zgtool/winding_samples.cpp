// zgtool's winding page: shapes over a grid of sample points, each point
// coloured by its winding number, ringed where it lies on the outline.
#include "samples.h"
#include "svgpath.h"

#include <zgraphics/model.h>

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace {

// The shapes live in 0..100; the picture maps them onto 440 pixels.
const double kScale = 4.0;
const double kMargin = 20.0;
const int kPictureSize = 440;
const int kGridStep = 5;

QPointF toPicture(double x, double y)
{
    return QPointF(kMargin + x * kScale, kMargin + y * kScale);
}

QColor windingColor(int winding)
{
    switch (winding) {
    case 0: return QColor(200, 200, 200);
    case 1: return QColor(30, 80, 200);
    case 2: return QColor(0, 160, 70);
    default: return QColor(220, 120, 0);
    }
}

// The outline of every child, curve by curve.
QPainterPath outlineOf(XPath &compound)
{
    QPainterPath outline;
    for (zgPath *child : compound.children) {
        const QList<zgCurve *> curves = child->getCurves();
        for (int i = 0; i < curves.size(); ++i) {
            const QVector<double> v = curves.at(i)->getValues(nullptr);
            if (i == 0)
                outline.moveTo(toPicture(v.at(0), v.at(1)));
            outline.cubicTo(toPicture(v.at(2), v.at(3)), toPicture(v.at(4), v.at(5)),
                            toPicture(v.at(6), v.at(7)));
        }
    }
    return outline;
}

QImage windingPicture(XPath &compound)
{
    QList<zgMono *> pieces;
    for (zgPath *child : compound.children)
        pieces.append(child->getMonoCurves());

    QImage image(kPictureSize, kPictureSize, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(60, 60, 60), 2));
    painter.drawPath(outlineOf(compound));
    for (int y = 0; y <= 100; y += kGridStep) {
        for (int x = 0; x <= 100; x += kGridStep) {
            const zgWinding winding = XPath::getWinding(zgPoint(x, y), pieces, false);
            const QPointF centre = toPicture(x, y);
            painter.setPen(Qt::NoPen);
            painter.setBrush(windingColor(winding.winding));
            painter.drawEllipse(centre, 5.0, 5.0);
            if (winding.onPath) {
                painter.setPen(QPen(QColor(220, 30, 30), 2));
                painter.setBrush(Qt::NoBrush);
                painter.drawEllipse(centre, 8.0, 8.0);
            }
        }
    }
    qDeleteAll(pieces);
    return image;
}

Sample windingCase(const QString &label, const QString &data)
{
    ZDPath path;
    QString error;
    parseSvgPath(data, path, error);
    XPath compound;
    ZDPath source = path;
    source.toXPath(compound, 0);
    Sample sample(label, path);
    sample.image = windingPicture(compound);
    return sample;
}

} // namespace

QVector<Sample> windingSamples()
{
    QVector<Sample> samples;
    // The inner square is turned against the outer one as it joins the
    // compound, so the hole winds 0.
    samples << windingCase(QStringLiteral("square with a hole"),
                           QStringLiteral("M 10 10 H 90 V 90 H 10 Z M 30 30 H 70 V 70 H 30 Z"));
    samples << windingCase(QStringLiteral("figure eight"),
                           QStringLiteral("M 50 50 C 80 20 100 15 100 50 C 100 85 80 80 50 50 "
                                          "C 20 20 0 15 0 50 C 0 85 20 80 50 50 Z"));
    // Winds as if closed by a straight line from its end to its start.
    samples << windingCase(QStringLiteral("open contour"),
                           QStringLiteral("M 15 10 C 15 70 35 95 55 95 C 85 95 90 60 90 30"));
    // Rows of the grid run along the horizontal edges.
    samples << windingCase(QStringLiteral("horizontal edges"),
                           QStringLiteral("M 10 90 V 30 H 40 V 60 H 60 V 10 H 90 V 90 Z"));
    samples << windingCase(QStringLiteral("self-overlapping star"),
                           QStringLiteral("M 50 5 L 77 90 L 5 37 L 95 37 L 23 90 Z"));
    return samples;
}
