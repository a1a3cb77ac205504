// Internal: the contours that an element list draws, one zgPath per subpath.
#ifndef ZGRAPHICS_DRAWING_ELEMENT_CONTOURS_H
#define ZGRAPHICS_DRAWING_ELEMENT_CONTOURS_H

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

// One new contour with the given parent per move from index start on; lines
// and cubics draw on the current contour (none before the first move), and a
// close closes it and joins a last point within one unit of the first into
// it. The contours come uncounted.
QVector<zgPath *> zgContoursOfElements(const QVector<ZDPathElement> &elements, int start,
                                       XPath *parent);

#endif // ZGRAPHICS_DRAWING_ELEMENT_CONTOURS_H
