// Internal: the curves that toXPath makes of an element list, computed from
// the elements alone, without building the object graph.
#ifndef ZGRAPHICS_DRAWING_ELEMENT_CURVES_H
#define ZGRAPHICS_DRAWING_ELEMENT_CURVES_H

#include <zgraphics/drawing.h>

#include <functional>

// Calls visit with the 8-value array of every curve that XPath::getCurves
// would list after toXPath(out, 0) on a list that needs no cleanUp, in the
// same order and with the same values: the same subpaths, closing joins
// within one unit and orientation of closed subpaths (the first clockwise,
// the others counter-clockwise, by the sign of the area). The walk stops
// where visit returns false.
void zgForEachElementCurve(const QVector<ZDPathElement> &elements,
                           const std::function<bool(const QVector<double> &)> &visit);

#endif // ZGRAPHICS_DRAWING_ELEMENT_CURVES_H
