// Flattening: contours whose curves are replaced by chords within a flatness.
#include <zgraphics/model.h>

#include <cmath>

void zgPath::addFlatParts(QVector<zgFlatPart> &parts, double &length, double flatness,
                          QVector<double> values, int index, double t1, double t2)
{
    // The shortest span that is still halved: at most eight halvings deep.
    const double minSpan = 1.0 / 256.0;
    if (t2 - t1 > minSpan && !zgCurve::isStraight(values)
            && !zgCurve::isFlatEnough(values, flatness)) {
        const QVector<QVector<double>> halves = zgCurve::subdivide(values, 0.5);
        const double tMid = (t1 + t2) * 0.5;
        addFlatParts(parts, length, flatness, halves.at(0), index, t1, tMid);
        addFlatParts(parts, length, flatness, halves.at(1), index, tMid, t2);
        return;
    }
    const double dx = values.at(6) - values.at(0);
    const double dy = values.at(7) - values.at(1);
    const double chord = std::sqrt(dx * dx + dy * dy);
    if (chord > 0.0) {
        length += chord;
        parts.append(zgFlatPart(length, values, index, t2));
    }
}

void zgPath::flatten(double flatness)
{
    QVector<zgFlatPart> parts;
    double length = 0.0;
    const int n = segments.size();
    const int curveCount = closed ? n : n - 1;
    for (int i = 0; i < curveCount; ++i) {
        const QVector<double> values =
            zgCurve::getValues(segments.at(i), segments.at((i + 1) % n), nullptr);
        addFlatParts(parts, length, flatness, values, i, 0.0, 1.0);
    }

    QList<zgSegment *> list;
    for (const zgFlatPart &part : parts)
        list.append(new zgSegment(part.values.at(0), part.values.at(1)));
    if (!closed && !parts.isEmpty())
        list.append(new zgSegment(parts.last().values.at(6), parts.last().values.at(7)));

    clearSegments();
    clearCurves();
    if (!list.isEmpty())
        addSegments(list, -1);
}

void XPath::flatten(double flatness)
{
    for (zgPath *child : children)
        child->flatten(flatness);
}
