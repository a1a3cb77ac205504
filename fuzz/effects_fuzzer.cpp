// Line-shape effects: corner rounding, parallel outline, waves, the
// hand-drawn stroke and noise, on one decoded path with decoded parameters.
#include "fuzz_input.h"
#include "fuzz_support.h"

#include <QtGui/QImage>

namespace {

void cornerRounding(const ZDPath &source, FuzzInput &in)
{
    ZDPath rounded = source;
    rounded.setCornerRound(in.parameter(-5, 60));
    ZDPath connector = source;
    ZDPath marks;
    connector.setCornerRoundForConnectline(in.parameter(-5, 60), marks);
    ZDPath contours = source;
    contours.setCornerRound2(in.parameter(-5, 60));
    requireWellFormed(rounded);
    requireWellFormed(connector);
    requireWellFormed(contours);
}

void outlines(const ZDPath &source, FuzzInput &in)
{
    ZDPath path = source;
    const double length = path.getLength();
    ZDPath parallel;
    const double distance = in.parameter(-20, 20);
    path.parallelPath(parallel, distance, boundedStep(in.parameter(-1, 20), path, length));
    ZDPath wave;
    const int kind = in.choice(8) - 1;
    const double wavelength = boundedStep(in.parameter(-1, 40), path, length);
    path.wavePath(wave, kind, wavelength, in.parameter(-2, 20), in.parameter(-1, 2));
    ZDPath handDrawn;
    ZDPath src = source;
    const double amplitude = in.parameter(-5, 20);
    handDrawn.manualPath(src, amplitude, boundedStep(in.parameter(-1, 20), path, length));
    requireWellFormed(parallel);
    requireWellFormed(wave);
    requireWellFormed(handDrawn);
}

void noise(FuzzInput &in)
{
    static const QImage::Format kFormats[] = {QImage::Format_RGB32, QImage::Format_ARGB32,
                                              QImage::Format_Grayscale8, QImage::Format_Invalid};
    const QImage::Format format = kFormats[in.choice(4)];
    QImage image = format == QImage::Format_Invalid
        ? QImage()
        : QImage(in.choice(64), 190 + in.choice(32), format);
    image.fill(Qt::white);
    Noise::perlinNoise(image);
    Noise::perlinNoise_2D(float(in.coordinate()), float(in.coordinate()));
    Noise::perlinNoise_1D(float(in.coordinate()));
    zgNumeric::perlinNoise_1D(in.coordinate());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    const ZDPath source = in.path();
    cornerRounding(source, in);
    outlines(source, in);
    noise(in);
    return 0;
}
