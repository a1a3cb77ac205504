// The object graph: crossings of two paths and of one path with itself,
// bounds with every option, and contour editing (locations, splitting,
// joining, interpolation), on two decoded paths.
#include "fuzz_input.h"
#include "fuzz_support.h"

namespace {

void crossings(XPath &first, XPath &second)
{
    releaseLocations(first.getCrossings(&second));
    releaseLocations(first.getCrossings(nullptr));
}

void bounds(XPath &path, FuzzInput &in)
{
    const zgBoundOpt options(in.flag(), false, false, in.flag());
    const zgStyle style(in.flag(), in.flag(), in.flag(), in.parameter(-2, 20),
                        zgCap(in.choice(3)), zgJoin(in.choice(3)), in.parameter(-1, 20));
    zgMatrix matrix(in.parameter(-2, 2), in.parameter(-2, 2), in.parameter(-2, 2),
                    in.parameter(-2, 2), in.parameter(-9, 9), in.parameter(-9, 9));
    path.getBounds(options, style, in.flag() ? &matrix : nullptr);
}

void locations(zgPath *contour, FuzzInput &in)
{
    const double offset = in.parameter(-20, 200);
    const zgPoint probe(in.coordinate(), in.coordinate());
    if (zgCurveLocation *location = contour->getLocationAt(offset))
        location->release();
    if (zgCurveLocation *location = contour->getLocationOf(probe))
        location->release();
    contour->getOffsetOf(probe);
    double curveOffset = offset;
    contour->getCurveAtOff(curveOffset);
    contour->getPointAt(offset);
    contour->getTangentAt(offset);
    contour->getNormalAt(offset);
    contour->getWeightedTangentAt(offset);
    contour->getWeightedNormalAt(offset);
    contour->getCurvatureAt(offset);
    contour->getLength();
    contour->getArea(in.flag(), in.flag());
}

// Edits work on counted copies, so that the compounds stay as decoded.
void editing(const zgPath *a, const zgPath *b, FuzzInput &in)
{
    zgPath *first = a->clone();
    first->addRef();
    zgPath *second = b->clone();
    second->addRef();

    if (zgPath *piece = first->splitAt(in.parameter(-20, 200)); piece && piece != first)
        piece->release();
    if (zgPath *piece = first->split(in.choice(8), in.parameter(-0.2, 1.2)); piece && piece != first)
        piece->release();
    first->join(second, in.parameter(-1, 4));

    zgPath *mix = a->clone();
    mix->addRef();
    mix->interpolate(first, second, in.parameter(-1, 2));

    mix->release();
    second->release();
    first->release();
}

void compoundEditing(XPath &first, FuzzInput &in)
{
    XPath *copy = first.clone();
    // A closed child is opened in place and comes back itself; only a new
    // piece is the caller's.
    zgPath *piece = copy->splitAt(in.parameter(-200, 200));
    if (piece && !copy->children.contains(piece))
        piece->release();
    delete copy;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FuzzInput in(data, size);
    ZDPath a = in.path();
    ZDPath b = in.path();
    XPath first;
    XPath second;
    a.toXPath(first, 0);
    b.toXPath(second, 0);

    crossings(first, second);
    bounds(first, in);
    for (zgPath *contour : qAsConst(first.children))
        locations(contour, in);
    if (!first.isEmpty() && !second.isEmpty())
        editing(first.getFirstChild(), second.getFirstChild(), in);
    compoundEditing(first, in);
    return 0;
}
