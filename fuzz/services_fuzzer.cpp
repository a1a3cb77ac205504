// Path services on one decoded path: winding, hit tests and containment,
// smoothing, flattening, simplification and the thick outline.
#include "fuzz_input.h"
#include "fuzz_support.h"

namespace {

void hitTests(XPath &path, FuzzInput &in)
{
    const zgPoint point(in.coordinate(), in.coordinate());
    const zgStyle style(in.flag(), in.flag(), in.flag(), in.parameter(-2, 20),
                        zgCap(in.choice(3)), zgJoin(in.choice(3)), in.parameter(-1, 20));
    const zgHitOpt options(in.flag(), in.flag(), in.flag(), in.flag(), in.parameter(-1, 10));
    path.hitTest(point, style, options);
    path.contains(point, style);
    for (zgPath *contour : qAsConst(path.children)) {
        contour->_hitTestSelf(point, options, style);
        contour->contains(point, style);
        if (zgCurveLocation *nearest = contour->getNearestLocation(point))
            nearest->release();
        const QList<zgMono *> monos = contour->getMonoCurves();
        XPath::getWinding(point, monos, in.flag());
        qDeleteAll(monos);
    }
}

void contourEdits(const ZDPath &source, FuzzInput &in)
{
    XPath smoothed;
    ZDPath(source).toXPath(smoothed, 0);
    smoothed.smooth(in.choice(6), in.parameter(-1, 2), in.choice(12) - 4, in.choice(12) - 4);

    XPath flat;
    ZDPath(source).toXPath(flat, 0);
    flat.flatten(in.parameter(-1, 10));

    XPath simple;
    ZDPath(source).toXPath(simple, 0);
    simple.simplify(in.parameter(-1, 20));
}

void drawingEdits(const ZDPath &source, FuzzInput &in)
{
    ZDPath smoothed = source;
    smoothed.smooth(in.choice(6));
    requireWellFormed(smoothed);

    ZDPath src = source;
    ZDPath thick;
    const double startWidth = in.parameter(-2, 20);
    const double endWidth = in.parameter(-2, 20);
    thick.thickPath(src, startWidth, endWidth,
                    boundedStep(in.parameter(-1, 10), source, ZDPath(source).getLength()));
    requireWellFormed(thick);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    const ZDPath source = in.path();
    XPath path;
    ZDPath(source).toXPath(path, 0);
    hitTests(path, in);
    contourEdits(source, in);
    drawingEdits(source, in);
    return 0;
}
