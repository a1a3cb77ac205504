// zgPath::join: appending a contour where the ends of two contours meet, and
// closing a contour whose ends touch.
#include <zgraphics/model.h>

namespace {

bool pointsMatch(const zgSegment *a, const zgSegment *b, double tolerance)
{
    return a && b && a->point.isClose(b->point, tolerance);
}

// Closes contour if its first and last segments are two whose points match:
// the last one goes, and the first takes its handle in.
void closeIfEndsMeet(zgPath *contour, double tolerance)
{
    zgSegment *first = contour->getFirstSegment();
    zgSegment *last = contour->getLastSegment();
    if (first == last || !pointsMatch(first, last, tolerance))
        return;
    first->setHandleIn(last->handleIn);
    last->remove();
    contour->setClosed(true);
}

} // namespace

zgPath *zgPath::join(zgPath *path, double tolerance)
{
    if (path && path != this) {
        if (path->isEmpty())
            return this;
        QList<zgSegment *> list = path->segments;
        zgSegment *last1 = getLastSegment();
        // End meets end: turn path round so that its start meets this end.
        if (pointsMatch(last1, path->getLastSegment(), tolerance)) {
            path->reverse();
            list = path->segments;
        }
        zgSegment *first2 = path->getFirstSegment();
        if (pointsMatch(last1, first2, tolerance)) {
            // The shared node stays this contour's, with path's handle out.
            last1->setHandleOut(first2->handleOut);
            list.removeFirst();
            addSegments(list, -1);
        } else {
            zgSegment *first1 = getFirstSegment();
            if (pointsMatch(first1, first2, tolerance)) {
                path->reverse();
                list = path->segments;
            }
            zgSegment *last2 = path->getLastSegment();
            if (pointsMatch(first1, last2, tolerance)) {
                // path ends where this contour starts: it goes in front.
                first1->setHandleIn(last2->handleIn);
                list.removeLast();
                addSegments(list, 0);
            } else {
                addSegments(list, -1);
            }
        }
        // The list holds what went in (clones of path's segments), after the
        // shared node was dropped from it.
        if (path->closed && !list.isEmpty())
            addSegment(list.first());
        if (path->parent)
            path->parent->removeChild(path);
    }
    closeIfEndsMeet(this, tolerance);
    return this;
}
