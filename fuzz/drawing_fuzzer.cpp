// Drawing paths: building, transforms, conversions both ways, measures,
// direction, line heads and extension, on one decoded path.
#include "fuzz_input.h"
#include "fuzz_support.h"

#include <zgraphics/model.h>

#include <QtGui/QPainterPath>
#include <QtGui/QTransform>

namespace {

void transforms(const ZDPath &source, FuzzInput &in)
{
    ZDPath path = source;
    path.translate(in.parameter(-100, 100), in.parameter(-100, 100));
    path.scale(in.parameter(-4, 4), in.parameter(-4, 4));
    const double m11 = in.parameter(-2, 2);
    const double m12 = in.parameter(-2, 2);
    const double m21 = in.parameter(-2, 2);
    const double m22 = in.parameter(-2, 2);
    path.transform(QTransform(m11, m12, m21, m22, in.parameter(-50, 50), in.parameter(-50, 50)));
    path.setBackX(in.coordinate());
    path.setBackY(in.coordinate());
    ZDPath other = source;
    path.addPath(other, in.flag());
    requireWellFormed(path);
}

void conversions(const ZDPath &source)
{
    ZDPath path = source;
    path.cleanUp();
    XPath xpath;
    path.toXPath(xpath, 0);
    ZDPath back;
    back.fromXPath(xpath, 0, -1);
    requireWellFormed(back);

    QPainterPath painter;
    source.toPainterPath(painter);
    ZDPath fromPainter;
    fromPainter.fromPainterPath(painter);
    QPainterPath rounded;
    source.toPainterPathWithRoundValue(rounded);
    ZDPath roundedPath = source;
    roundedPath.roundData();
}

void measures(const ZDPath &source, FuzzInput &in)
{
    ZDPath path = source;
    path.getLength();
    const zgPoint probe(in.coordinate(), in.coordinate());
    path.getLength(probe);
    path.getPathProportionFromPoint(probe);
    path.getPointAt(in.parameter(-0.5, 1.5));
    path.pointAtPercent(in.parameter(-0.5, 1.5));
    path.getPointFromCurveProportion(in.choice(8) - 1, in.parameter(-0.5, 1.5));
    path.getNearestPoint(probe);
    path.getTangentAt(probe);
    path.getTangent(in.choice(path.count() + 2) - 1, in.flag());
    path.isClockWise();
}

void direction(const ZDPath &source)
{
    ZDPath path = source;
    QPointF a, b;
    int index = 0, moveIndex = 0;
    path.getOpenedStart(a, b, index);
    path.getOpenedEnd(a, b, index, moveIndex);
    path.reverse();
    path.curveReverse();
    requireWellFormed(path);
}

void lineHeads(const ZDPath &source, FuzzInput &in)
{
    ZDPath path = source;
    path.setLineHead(in.parameter(-10, 100), in.parameter(-10, 100), in.flag());
    ZDPath extended = source;
    extended.extendPath(in.parameter(-10, 100), in.flag(), in.flag());
    requireWellFormed(path);
    requireWellFormed(extended);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    const ZDPath source = in.path();
    transforms(source, in);
    conversions(source);
    measures(source, in);
    direction(source);
    lineHeads(source, in);
    return 0;
}
