// ZDPath: the element scans for open subpath ends, and reversal.
#include <zgraphics/drawing.h>

#include <algorithm>
#include <cmath>

namespace {

// 0.0001: points of a drawing path this close on both axes count as the same
// point in the scans for open ends.
bool differsFrom(const ZDPathElement &e, const QPointF &p)
{
    return std::fabs(e.x - p.x()) >= 0.0001 || std::fabs(e.y - p.y()) >= 0.0001;
}

// The first element after `from`, going forward (direction 1) or backward
// (direction -1) for at most stepLimit - 1 steps, whose point differs from p;
// -1 if there is none before the limit, before the end of the list, or, going
// backward, before element 0 (which is never read).
int findDifferent(const QVector<ZDPathElement> &elements, int from, int direction, int stepLimit,
                  const QPointF &p)
{
    for (int step = 1; step < stepLimit; ++step) {
        const int j = from + direction * step;
        if (j >= elements.size() || j < 1)
            return -1;
        if (differsFrom(elements.at(j), p))
            return j;
    }
    return -1;
}

// Reverses the subpath held in elements [first, end): coordinates run
// backward, the first element keeps its type and the types of the others are
// reversed among themselves. auxX and auxY stay where they are.
void reverseSubpath(QVector<ZDPathElement> &elements, int first, int end)
{
    for (int lo = first, hi = end - 1; lo < hi; ++lo, --hi) {
        std::swap(elements[lo].x, elements[hi].x);
        std::swap(elements[lo].y, elements[hi].y);
    }
    for (int lo = first + 1, hi = end - 1; lo < hi; ++lo, --hi)
        std::swap(elements[lo].type, elements[hi].type);
}

// After reversal a cubic reads 3, 3, 2: each type 3 element with two elements
// after it starts a cubic again.
void repairCubics(QVector<ZDPathElement> &elements)
{
    const int n = elements.size();
    int i = 0;
    while (i < n) {
        if (elements.at(i).type == ZDCurveToDataElement && i + 2 < n) {
            elements[i].type = ZDCurveToElement;
            elements[i + 1].type = ZDCurveToDataElement;
            elements[i + 2].type = ZDCurveToDataElement;
            i += 3;
        } else {
            ++i;
        }
    }
}

} // namespace

// The subpath found runs from `move` to the element before `limit`; the
// search for `next` takes at most limit - move - 1 steps forward.
int ZDPath::getOpenedStart(QPointF &start, QPointF &next, int &index) const
{
    const int n = elements.size();
    if (index >= n)
        return -1;

    int move = -1;
    int limit = -1;
    for (int i = qMax(index, 0); i < n && limit < 0; ++i) {
        const int32_t type = elements.at(i).type;
        if (type == ZDMoveToElement) {
            if (move == -1) {
                start = elements.at(i).toPoint();
                move = i;
            } else {
                limit = i; // the subpath from move ended without a close
            }
        } else if (type == ZDCloseElement) {
            move = -1; // a closed subpath is not open
        }
    }
    if (limit < 0) {
        if (move == -1 || move == n - 1)
            return -1;
        limit = n;
    }

    const int found = findDifferent(elements, move, 1, limit - move, start);
    if (found < 0)
        return -1;
    next = elements.at(found).toPoint();
    index = limit;
    return move;
}

// The search for `prev` goes backward from the element before the end. For a
// subpath ended by a later move it may take i - moveIndex - 1 steps, reaching
// the subpath's move; for the last subpath of the list one step less, so that
// its move is not reached. It never reads element 0.
int ZDPath::getOpenedEnd(QPointF &end, QPointF &prev, int &index, int &moveIndex) const
{
    const int n = elements.size();
    if (index >= n)
        return -1;

    moveIndex = -1;
    int ending = -1; // the element after the subpath's last one
    for (int i = qMax(index, 0); i < n && ending < 0; ++i) {
        const int32_t type = elements.at(i).type;
        if (type == ZDMoveToElement) {
            if (moveIndex == -1)
                moveIndex = i;
            else
                ending = i;
        } else if (type == ZDCloseElement) {
            moveIndex = -1;
        }
    }

    int stepLimit;
    if (ending >= 0) {
        if (ending < 2) {
            index = ending;
            return ending - 1;
        }
        stepLimit = ending - moveIndex;
    } else {
        if (moveIndex == -1 || n <= 1)
            return -1;
        ending = n;
        stepLimit = n - moveIndex - 1;
    }

    const int last = ending - 1;
    end = elements.at(last).toPoint();
    const int found = findDifferent(elements, last, -1, stepLimit, end);
    if (found < 0)
        return -1;
    prev = elements.at(found).toPoint();
    index = ending;
    return last;
}

// A subpath runs from its first element to the element before the next move
// or close, or to the last element. A close element is part of no subpath
// and keeps its place and its point.
void ZDPath::reverse()
{
    const int n = elements.size();
    if (n <= 1)
        return;

    int first = 0;
    while (first < n) {
        if (elements.at(first).type == ZDCloseElement) {
            ++first;
            continue;
        }
        int end = first + 1;
        while (end < n && elements.at(end).type != ZDMoveToElement
               && elements.at(end).type != ZDCloseElement)
            ++end;
        reverseSubpath(elements, first, end);
        first = end;
    }
    repairCubics(elements);
}

void ZDPath::curveReverse()
{
    if (elements.isEmpty())
        return;
    if (elements.constFirst().x > elements.constLast().x)
        reverse();
}
