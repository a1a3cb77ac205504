// A bounding-volume tree over curve boxes for the path sweep.
#include "intersect/box_index.h"

#include <QtCore/qnumeric.h>

#include <algorithm>

namespace {

// Entries per leaf: a leaf is scanned box by box.
const int kLeafSize = 4;

bool hasNaN(const zgControlBox &box)
{
    return qIsNaN(box.minX) || qIsNaN(box.maxX) || qIsNaN(box.minY) || qIsNaN(box.maxY);
}

} // namespace

zgControlBoxIndex::zgControlBoxIndex(const std::vector<zgControlBox> &boxes)
    : m_boxes(boxes)
{
    m_order.reserve(boxes.size());
    for (int i = 0; i < int(boxes.size()); ++i) {
        if (!hasNaN(boxes[i]))
            m_order.push_back(i);
    }
    if (!m_order.empty()) {
        m_nodes.reserve(2 * m_order.size() / kLeafSize + 2);
        build(0, int(m_order.size()));
    }
}

int zgControlBoxIndex::build(int first, int count)
{
    const int at = int(m_nodes.size());
    m_nodes.push_back(Node());
    const zgControlBox &firstBox = m_boxes[m_order[first]];
    Node node = { firstBox.minX, firstBox.maxX, firstBox.minY, firstBox.maxY, m_order[first],
                  first, count, -1 };
    for (int k = first + 1; k < first + count; ++k) {
        const zgControlBox &box = m_boxes[m_order[k]];
        node.minX = std::min(node.minX, box.minX);
        node.maxX = std::max(node.maxX, box.maxX);
        node.minY = std::min(node.minY, box.minY);
        node.maxY = std::max(node.maxY, box.maxY);
        node.lastPosition = std::max(node.lastPosition, m_order[k]);
    }
    if (count > kLeafSize) {
        // Halve at the median centre along the longer side of the node.
        // Centres are halved before adding, so that huge edges do not overflow.
        const bool alongX = node.maxX / 2.0 - node.minX / 2.0 >= node.maxY / 2.0 - node.minY / 2.0;
        // An infinite box has no centre; it counts as 0 so that the order stays strict.
        auto centre = [&](int i) {
            const zgControlBox &box = m_boxes[i];
            const double c = alongX ? box.minX / 2.0 + box.maxX / 2.0
                                    : box.minY / 2.0 + box.maxY / 2.0;
            return qIsNaN(c) ? 0.0 : c;
        };
        const int half = count / 2;
        std::nth_element(m_order.begin() + first, m_order.begin() + first + half,
                         m_order.begin() + first + count,
                         [&](int a, int b) { return centre(a) < centre(b); });
        node.first = build(first, half);
        node.right = build(first + half, count - half);
        node.count = 0;
    }
    m_nodes[at] = node;
    return at;
}

void zgControlBoxIndex::touching(const zgControlBox &box, int first,
                                 std::vector<int> &found) const
{
    found.clear();
    if (m_nodes.empty())
        return;
    // The same bounds as in touchedBy, computed once.
    const double highX = box.maxX + 2e-07;
    const double lowX = box.minX - 2e-07;
    const double highY = box.maxY + 2e-07;
    const double lowY = box.minY - 2e-07;
    // Median halving keeps the depth at log2 of the count, far below this.
    int stack[128];
    int depth = 0;
    stack[depth++] = 0;
    while (depth > 0) {
        const Node &node = m_nodes[stack[--depth]];
        if (node.lastPosition < first)
            continue;
        if (!(node.minX < highX && node.maxX > lowX && node.minY < highY && node.maxY > lowY))
            continue;
        if (node.count == 0) {
            stack[depth++] = node.right;
            stack[depth++] = node.first;
            continue;
        }
        for (int k = node.first; k < node.first + node.count; ++k) {
            const int position = m_order[k];
            if (position >= first && box.touchedBy(m_boxes[position]))
                found.push_back(position);
        }
    }
    std::sort(found.begin(), found.end());
}
