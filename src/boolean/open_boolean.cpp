// The boolean of an open contour with a closed shape: the contour is cut at
// its crossings and each piece is kept or dropped by the winding of its
// midpoint.
#include <zgraphics/model.h>

#include <cmath>

XPath *XPath::computeOpenBoolean(XPath *path1, XPath *path2, int op)
{
    const bool cutterIsOpen = path2 && path2->children.size() == 1
            && !path2->children.first()->closed;
    if (!path2 || cutterIsOpen || (op != opIntersect && op != opSubtract))
        return nullptr;

    XPath *p1 = preparePath(path1, false, false);
    XPath *p2 = preparePath(path2, false, false);
    const QList<zgCurveLocation *> crossings = p1->getIntersections(
            p2, [](zgCurveLocation *location) {
                return location->overlap || location->isCrossing();
            }, false);

    QVector<zgPath *> kept;
    // Keeps piece when its midpoint is inside p2 for an intersection, or
    // outside it for a subtraction. True if it was kept.
    const auto addOpenPart = [p2, op, &kept](zgPath *piece) {
        zgPoint middle(std::nan(""), std::nan(""));
        if (zgCurveLocation *location = piece->getLocationAt(piece->getLength() * 0.5)) {
            middle = location->point;
            location->release();
        }
        const zgStyle style(true, true, p2->evenOdd, 1.0, zgCapButt, zgJoinBevel, 10.0);
        const zgBoundOpt handleOnly(false, false, true, true);
        int winding = 0;
        if (middle.isInside(p2->getBounds(handleOnly, style, nullptr)))
            winding = p2->getWinding(middle, false);
        if (p2->evenOdd)
            winding &= 1;
        if ((winding != 0) == (op == opSubtract))
            return false;
        kept.append(piece);
        return true;
    };
    zgPath *contour = p1->getFirstChild();
    for (int k = crossings.size() - 1; contour && k >= 0; --k) {
        zgCurve *curve = crossings.at(k)->getCurve();
        if (!curve)
            continue;
        zgCurveLocation *cut = curve->getLocationAtTime(crossings.at(k)->getTime());
        zgPath *piece = contour->splitAt(cut);
        if (cut)
            cut->release();
        if (!piece)
            continue;
        if (addOpenPart(piece))
            piece->getFirstSegment()->setHandleIn(zgPoint(0.0, 0.0));
        if (zgSegment *last = contour->getLastSegment())
            last->setHandleOut(zgPoint(0.0, 0.0));
    }
    if (contour)
        addOpenPart(contour);

    XPath *result = new XPath();
    result->evenOdd = true;
    result->addChildren(kept, -1);
    // The kept pieces leave the working copy for the result, which the
    // working copy does not outlive.
    for (zgPath *piece : kept)
        piece->parent = result;
    for (zgCurveLocation *crossing : crossings) {
        if (zgCurveLocation *partner = crossing->intersection())
            partner->release();
        crossing->release();
    }
    for (XPath *copy : {p1, p2}) {
        copy->clearPath();
        delete copy;
    }
    return result;
}
