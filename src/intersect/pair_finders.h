// Internal: the pair finder of zgCurve::getIntersections past its box test
// and overlap search, for callers that know the pair has no overlap and the
// straightness of both curves already.
#ifndef ZGRAPHICS_INTERSECT_PAIR_FINDERS_H
#define ZGRAPHICS_INTERSECT_PAIR_FINDERS_H

#include <zgraphics/model.h>

// The line, curve and line, or clipping finder by straightness; then, on
// the two last roads, the end points that meet if the finder added nothing.
void zgFindPairIntersections(const QVector<double> &v1, const QVector<double> &v2, zgCurve *c1,
                             zgCurve *c2, QList<zgCurveLocation *> &locations, opParam &param,
                             bool straight1, bool straight2);

#endif // ZGRAPHICS_INTERSECT_PAIR_FINDERS_H
