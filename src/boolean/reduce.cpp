// Reduction of degenerate curves: zero-length straight curves and straight
// curves that continue their neighbour in the same line.
#include <zgraphics/model.h>

zgPath *zgPath::reduce(bool simplify)
{
    // 2e-07: a straight curve shorter than the geometric tolerance is a point.
    const double tolerance = simplify ? 2e-07 : 0.0;
    QList<zgCurve *> list = getCurves();
    int i = list.size() - 1;
    while (i >= 0) {
        zgCurve *curve = list.at(i);
        bool removable = false;
        if (curve->isStraight())
            removable = curve->getLength() < tolerance
                    || (simplify && curve->isCollinear(curve->getNext()));
        if (!removable || !curve->remove()) {
            --i;
            continue;
        }
        // The removal may have thrown curves away: walk the list afresh,
        // from its end, building it again if it went empty.
        list = getCurves();
        i = list.size() - 1;
    }
    return this;
}

XPath *XPath::reduce(bool simplify)
{
    for (int i = children.size() - 1; i >= 0; --i) {
        zgPath *child = children.at(i);
        child->reduce(simplify);
        if (child->isEmpty() && child->parent)
            child->parent->removeChild(child);
    }
    return this;
}
