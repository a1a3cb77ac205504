// Internal: a tree of curve boxes that finds, for one box, every box of a
// list that passes the pair test of the intersection code, without visiting
// the others one by one.
#ifndef ZGRAPHICS_INTERSECT_BOX_INDEX_H
#define ZGRAPHICS_INTERSECT_BOX_INDEX_H

#include "intersect/control_box.h"

#include <vector>

class zgControlBoxIndex
{
public:
    // Holds boxes by their position in the list. A box with a NaN edge is
    // left out, since it touches nothing.
    explicit zgControlBoxIndex(const std::vector<zgControlBox> &boxes);

    // Writes to found the positions from first on of every held box b for
    // which box.touchedBy(b) holds, ascending.
    void touching(const zgControlBox &box, int first, std::vector<int> &found) const;

private:
    // A node's bounds are the smallest minimum and the largest maximum of
    // its boxes on each axis, so that a comparison that fails against them
    // fails for each of its boxes with the same rounding.
    struct Node
    {
        double minX, maxX, minY, maxY;
        int lastPosition;  // the largest position of its boxes
        int first;  // leaf: first entry in m_order; inner: index of the left child
        int count;  // leaf: number of entries; inner: 0
        int right;  // inner: index of the right child
    };

    int build(int first, int count);

    const std::vector<zgControlBox> &m_boxes;
    std::vector<int> m_order;
    std::vector<Node> m_nodes;
};

#endif // ZGRAPHICS_INTERSECT_BOX_INDEX_H
