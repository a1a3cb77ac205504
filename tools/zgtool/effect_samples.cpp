// zgtool's gallery of line-shape effects.
#include "samples.h"

#include <zgraphics/primitives.h>

namespace {

ZDPath connector()
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(80, 0);
    path.lineTo(80, 100);
    path.lineTo(200, 100);
    return path;
}



} // namespace

ZDPath polyline()
{
    ZDPath path;
    path.moveTo(0, 100);
    path.lineTo(50, 20);
    path.lineTo(100, 90);
    path.lineTo(160, 10);
    path.lineTo(200, 100);
    return path;
}

ZDPath curvedLine()
{
    ZDPath path;
    path.moveTo(0, 60);
    path.cubicTo(QPointF(60, -20), QPointF(120, 140), QPointF(200, 60));
    return path;
}

Sample effect(const QString &label, const ZDPath &source, const ZDPath &result)
{
    Sample sample(label, result);
    sample.source = source;
    sample.showPoints = false;
    return sample;
}

QVector<Sample> effectSamples()
{
    QVector<Sample> samples;

    ZDPath rounded = polyline();
    rounded.setCornerRound(15);
    samples << effect(QStringLiteral("rounded corners, r 15"), polyline(), rounded);

    ZDPath roundedConnector = connector();
    ZDPath connectorMarks = connector(); // every corner is named, so every corner is rounded
    roundedConnector.setCornerRoundForConnectline(20, connectorMarks);
    samples << effect(QStringLiteral("rounded connector, r 20"), connector(), roundedConnector);

    ZDPath outlines;
    ZDPath source = curvedLine();
    for (double distance : {-20.0, -10.0, 10.0, 20.0})
        source.parallelPath(outlines, distance, 2.0);
    samples << effect(QStringLiteral("parallel at +-10, +-20"), curvedLine(), outlines);

    const char *const waveNames[] = {"smooth", "bumps left", "bumps right", "zigzag",
                                     "teeth left", "teeth right", "square"};
    for (int kind = 0; kind < 7; ++kind) {
        ZDPath wave;
        ZDPath line = polyline();
        line.wavePath(wave, kind, 20.0, 8.0, 0.5);
        samples << effect(QStringLiteral("wave %1: %2").arg(kind).arg(waveNames[kind]),
                          polyline(), wave);
    }

    ZDPath handDrawn;
    ZDPath handSource = polyline();
    handDrawn.manualPath(handSource, 8.0, 4.0);
    samples << effect(QStringLiteral("hand-drawn (amplitude 8)"), polyline(), handDrawn);

    QImage noise(200, 240, QImage::Format_ARGB32);
    noise.fill(QColor(250, 240, 200));
    samples << Sample(QStringLiteral("noise on an image"), ZDPath());
    samples.last().image = Noise::perlinNoise(noise);
    return samples;
}
