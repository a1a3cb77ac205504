// Blending contours and compound paths: each segment of the result lies at
// factor between the matching segments of two others (0: from, 1: to).
#include <zgraphics/model.h>

void zgPath::interpolate(zgPath *from, zgPath *to, double factor)
{
    if (!from || !to)
        return;
    const int n = from->segments.size();
    if (n == 0 || to->segments.size() != n)
        return;
    if (segments.size() < n) {
        QList<zgSegment *> missing;
        for (int i = segments.size(); i < n; ++i)
            missing.append(new zgSegment());
        addSegments(missing, -1);
    } else if (segments.size() > n) {
        removeSegments(n, -1);
    }
    for (int i = 0; i < n; ++i)
        segments.at(i)->interpolate(from->segments.at(i), to->segments.at(i), factor);
    setClosed(from->closed);
}

void XPath::interpolate(XPath *from, XPath *to, double factor)
{
    if (!from || !to)
        return;
    const int n = from->children.size();
    if (n == 0 || to->children.size() != n)
        return;
    while (children.size() < n)
        addChild(new zgPath(nullptr, false));
    if (children.size() > n)
        removeChildren(n, children.size());
    for (int i = 0; i < n; ++i)
        children.at(i)->interpolate(from->children.at(i), to->children.at(i), factor);
}
