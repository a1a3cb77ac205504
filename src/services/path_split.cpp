// Cutting contours: zgPath::splitAt by location and by offset, zgPath::split
// by curve index and time, and XPath::splitAt along the whole compound.
#include "intersect/contour_cut.h"

namespace {

// Splits contour at the location at offset and releases that location.
zgPath *splitAtOffset(zgPath *contour, double offset)
{
    zgCurveLocation *location = contour->getLocationAt(offset);
    zgPath *piece = contour->splitAt(location);
    if (location)
        location->release();
    return piece;
}

} // namespace

zgPath *zgPath::splitAt(zgCurveLocation *location)
{
    return zgPathSplit::cutContour(this, location, false);
}

zgPath *zgPath::splitAt(double offset)
{
    return splitAtOffset(this, offset);
}

zgPath *zgPath::split(int index, double time)
{
    const QList<zgCurve *> curveList = getCurves();
    if (index < 0 || index >= curveList.size())
        return nullptr;
    zgCurveLocation *location = curveList.at(index)->getLocationAtTime(time);
    if (!location)
        return nullptr;
    zgPath *piece = splitAt(location);
    location->release();
    return piece;
}

zgPath *XPath::splitAt(double offset)
{
    if (offset >= 0.0) {
        // The child is cut at the distance back from its end, taken as an
        // offset from its start.
        double sum = 0.0;
        for (int i = 0; i < children.size(); ++i) {
            zgPath *child = children.at(i);
            sum += child->getLength();
            if (sum > offset)
                return splitAtOffset(child, sum - offset);
        }
        return nullptr;
    }
    const double distance = -offset;
    double sum = 0.0;
    for (int i = children.size() - 1; i >= 0; --i) {
        zgPath *child = children.at(i);
        const double after = sum; // the lengths of the children behind this one
        sum += child->getLength();
        if (sum > distance)
            return splitAtOffset(child, distance - after);
    }
    return nullptr;
}
