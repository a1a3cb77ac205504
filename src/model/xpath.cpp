// XPath: a compound path, an ordered list of counted contours whose
// orientation follows one rule: the first closed child clockwise, the others
// counter-clockwise.
#include <zgraphics/model.h>

XPath::XPath() : evenOdd(true) {}

XPath::~XPath()
{
    clearPath();
}

XPath *XPath::clone() const
{
    XPath *copy = new XPath();
    copy->assign(this);
    return copy;
}

void XPath::assign(const XPath *other)
{
    if (!other)
        return;
    evenOdd = other->evenOdd;
    bounds = other->bounds;
    const QVector<zgPath *> source = other->children; // other may be this compound
    for (int i = 0; i < source.size(); ++i) {
        zgPath *child = new zgPath(nullptr, false);
        child->assign(source.at(i));
        child->parent = this;
        child->index = i;
        child->addRef();
        children.append(child);
    }
}

void XPath::clearPath()
{
    for (zgPath *&child : children) {
        if (child)
            child->release();
        child = nullptr;
    }
    children.clear();
}

zgPath *XPath::getFirstChild() const
{
    return children.isEmpty() ? nullptr : children.first();
}

zgPath *XPath::getLastChild() const
{
    return children.isEmpty() ? nullptr : children.last();
}

// Turns a closed child at place i to the rule (clockwise at 0, counter-
// clockwise elsewhere) and records that in its flags. Open children stay.
static void orient(zgPath *child, int i)
{
    if (!child->closed)
        return;
    const bool first = i == 0;
    if (child->isClockwise() != first)
        child->reverse();
    child->removeFlags(zgPath::ClockwiseFlag | zgPath::CounterClockwiseFlag);
    child->addFlags(first ? zgPath::ClockwiseFlag : zgPath::CounterClockwiseFlag);
}

static bool hasOrientation(const zgPath *child)
{
    return child->isFlags(zgPath::ClockwiseFlag | zgPath::CounterClockwiseFlag);
}

void XPath::addChild(zgPath *child, int index)
{
    if (!child)
        return;
    const int count = children.size();
    const int i = (index < 0 || index > count) ? count : index;
    child->parent = this;
    child->addRef();
    children.insert(i, child);
    for (int k = 0; k < children.size(); ++k)
        children.at(k)->index = k;
    if (!hasOrientation(child))
        orient(child, child->index);
}

void XPath::addChildren(QVector<zgPath *> newChildren, int index)
{
    newChildren.removeAll(nullptr);
    const int count = children.size();
    const int i = (index < 0 || index > count) ? count : index;
    for (int k = newChildren.size() - 1; k >= 0; --k) {
        newChildren.at(k)->addRef();
        children.insert(i, newChildren.at(k));
    }
    for (int k = 0; k < children.size(); ++k)
        children.at(k)->index = k;
    for (zgPath *child : newChildren) {
        if (!hasOrientation(child))
            orient(child, child->index);
    }
}

void XPath::setChildren(QVector<zgPath *> newChildren)
{
    removeChildren(0, -1);
    addChildren(newChildren, -1);
}

void XPath::removeChild(zgPath *child)
{
    if (!child)
        return;
    const int place = children.indexOf(child);
    if (place >= 0)
        children.remove(place);
    // Released once whether it was a child or not.
    child->release();
    reorientChildren();
}

void XPath::removeChildren(int first, int last)
{
    const int count = children.size();
    if (last == -1 || last > count)
        last = count;
    if (first < 0)
        first = 0;
    if (first >= last)
        return;
    for (int i = first; i < last; ++i) {
        if (children.at(i))
            children.at(i)->release();
        children[i] = nullptr;
    }
    children.remove(first, last - first);
    reorientChildren();
}

void XPath::reorientChildren()
{
    for (int k = 0; k < children.size(); ++k)
        children.at(k)->index = k;
    for (int k = 0; k < children.size(); ++k) {
        zgPath *child = children.at(k);
        const bool flaggedClockwise = child->isFlags(zgPath::ClockwiseFlag);
        if (!hasOrientation(child) || flaggedClockwise != (k == 0))
            orient(child, k);
    }
}

QList<zgCurve *> XPath::getCurves()
{
    QList<zgCurve *> all;
    for (zgPath *child : children)
        all.append(child->getCurves());
    return all;
}

bool XPath::isClockwise()
{
    return children.isEmpty() ? false : children.first()->isClockwise();
}

void XPath::setClockwise(bool clockwise)
{
    if (isClockwise() != clockwise)
        reverse();
}

void XPath::reverse()
{
    for (zgPath *child : children)
        child->reverse();
}
