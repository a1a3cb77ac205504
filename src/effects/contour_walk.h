// Locations along one contour at offsets that mostly grow, as the line-shape
// effects take them: a walk over the contour's curves that answers each offset
// as zgPath::getLocationAt does, without starting again from the first curve.
#ifndef ZG_EFFECTS_CONTOUR_WALK_H
#define ZG_EFFECTS_CONTOUR_WALK_H

#include <zgraphics/model.h>

#include <QtCore/QList>

class zgContourWalk
{
public:
    explicit zgContourWalk(zgPath *contour);

    // The location that contour->getLocationAt(offset) gives, found from the
    // curve of the previous answer on when offset has not decreased; the
    // caller releases it. Null where getLocationAt gives null.
    zgCurveLocation *locationAt(double offset);
    // The point and unit tangent of the location at offset, which is
    // released. False without a location; the tangent is a NaN point when the
    // location has no curve or no known time.
    bool pointAndTangentAt(double offset, zgPoint &point, zgPoint &tangent);

private:
    void restart();

    zgPath *m_contour;
    QList<zgCurve *> m_curves;
    int m_index;          // the curve the next search starts from
    double m_curveStart;  // the running length before that curve, whole units
    double m_lastOffset;  // the previous offset; a smaller one restarts the walk
};

#endif // ZG_EFFECTS_CONTOUR_WALK_H
