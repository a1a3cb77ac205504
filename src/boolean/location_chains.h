// Internal: joining the chains of crossing locations (next / previous) that
// one division builds, without walking them.
//
// XPath::linkIntersections finds out whether two locations share a chain,
// and where the chains end, by walking both; at a point where k locations
// meet, the division's joins then cost about k^3 steps. zgLocationChains
// makes exactly the same links (the same chains in the same order) but keeps,
// for every location it has met, the chain it belongs to and that chain's
// head and tail, so that a join costs nearly constant time.
//
// A chain is read once, when one of its locations is first met, as the
// doubly linked list that the linking builds. While the object is in use,
// nothing else may change the links or the partners (intersection()) of the
// locations it has met.
#ifndef ZGRAPHICS_BOOLEAN_LOCATION_CHAINS_H
#define ZGRAPHICS_BOOLEAN_LOCATION_CHAINS_H

#include <zgraphics/model.h>

#include <QtCore/QHash>

#include <utility>
#include <vector>

class zgLocationChains
{
public:
    // Joins the chain that holds from to the one that holds to: from's chain
    // first, to's chain after its tail. Nothing happens when the two already
    // share a chain or either is null.
    void link(zgCurveLocation *from, zgCurveLocation *to)
    {
        if (!from || !to)
            return;
        join(rootOf(nodeOf(from)), rootOf(nodeOf(to)));
    }

    // The division's step at a segment that carries inter already: the
    // same links as
    //     link(inter, dest);
    //     for (c = inter; c; c = c->next())
    //         link(c->intersection(), inter);
    // Such a link changes nothing once c's partner shares c's chain, and
    // chains only grow, so those locations are passed over for good.
    void linkAt(zgCurveLocation *inter, zgCurveLocation *dest)
    {
        if (!inter)
            return;
        link(inter, dest);
        // Each pass settles one location, so the walk ends even on links
        // that close on themselves.
        for (int node = nodeOf(inter), passes = 0; passes <= int(m_nodes.size()); ++passes) {
            node = firstUnsettled(node);
            if (node < 0)
                return;
            zgCurveLocation *partner = m_nodes[node].location->intersection();
            if (partner)
                join(rootOf(nodeOf(partner)), rootOf(node));
            m_nodes[node].settled = true;
        }
    }

private:
    struct Node
    {
        zgCurveLocation *location;
        int parent;   // union-find parent; a root stands for its chain
        int size;     // of the chain, on a root
        int head;     // first and last location of the chain, on a root
        int tail;
        bool settled; // the partner is null or shares the chain
        int skipTo;   // -1, or a later node with only settled nodes before it
    };

    // The chain of first, then the chain of second, unless they are one.
    void join(int first, int second)
    {
        if (first == second)
            return;
        Node &tail = m_nodes[m_nodes[first].tail];
        Node &head = m_nodes[m_nodes[second].head];
        tail.location->setNext(head.location);
        head.location->setPrevious(tail.location);
        const int joinedHead = m_nodes[first].head;
        const int joinedTail = m_nodes[second].tail;
        // The larger chain stays the root, so lookups stay short.
        if (m_nodes[first].size < m_nodes[second].size)
            std::swap(first, second);
        m_nodes[second].parent = first;
        m_nodes[first].size += m_nodes[second].size;
        m_nodes[first].head = joinedHead;
        m_nodes[first].tail = joinedTail;
    }

    int rootOf(int node)
    {
        while (m_nodes[node].parent != node) {
            // Halving the path keeps later lookups short.
            m_nodes[node].parent = m_nodes[m_nodes[node].parent].parent;
            node = m_nodes[node].parent;
        }
        return node;
    }

    // The node of location; a chain not met before is read from its links.
    int nodeOf(zgCurveLocation *location)
    {
        const auto known = m_index.constFind(location);
        return known != m_index.constEnd() ? known.value() : readChain(location);
    }

    // Records every location of the chain through location, which becomes
    // the chain's root. A link that leads back to a location already
    // recorded ends the walk, so that even a damaged chain is read in
    // finite time.
    int readChain(zgCurveLocation *location)
    {
        const int root = addNode(location, -1);
        for (zgCurveLocation *prev = location->previous(); prev && !m_index.contains(prev);
             prev = prev->previous())
            m_nodes[root].head = addNode(prev, root);
        for (zgCurveLocation *next = location->next(); next && !m_index.contains(next);
             next = next->next())
            m_nodes[root].tail = addNode(next, root);
        return root;
    }

    int addNode(zgCurveLocation *location, int root)
    {
        const int node = int(m_nodes.size());
        const int parent = root < 0 ? node : root;
        m_nodes.push_back(Node{location, parent, 1, node, node, false, -1});
        m_index.insert(location, node);
        if (root >= 0)
            ++m_nodes[root].size;
        return node;
    }

    // The first node from node on, along the chain, whose partner may lie
    // on another chain, or -1 when there is none up to the chain's tail.
    // Runs of settled nodes are remembered, so each is passed once.
    int firstUnsettled(int node)
    {
        m_passed.clear();
        int current = node;
        while (m_nodes[current].settled && m_passed.size() <= m_nodes.size()) {
            int ahead = m_nodes[current].skipTo;
            if (ahead < 0) {
                zgCurveLocation *next = m_nodes[current].location->next();
                if (!next)
                    break;
                ahead = nodeOf(next);
            }
            m_passed.push_back(current);
            current = ahead;
        }
        // A settled tail stays the target: a chain joined behind it later
        // is read through its next link then.
        for (int passed : m_passed)
            m_nodes[passed].skipTo = current;
        return m_nodes[current].settled ? -1 : current;
    }

    QHash<zgCurveLocation *, int> m_index;
    std::vector<Node> m_nodes;
    std::vector<int> m_passed;
};

#endif // ZGRAPHICS_BOOLEAN_LOCATION_CHAINS_H
