// zgtool contains: winding numbers, containment and hit tests of points on a
// path.
#include "commands.h"

#include "command_options.h"

#include <zgraphics/model.h>

#include <cmath>
#include <cstdio>

namespace {

const char *hitTypeName(int type)
{
    switch (type) {
    case zgHitNone: return "none";
    case zgHitStroke: return "stroke";
    case zgHitFill: return "fill";
    case zgHitCurve: return "curve";
    }
    return "unknown";
}

// "TYPE" or "TYPE path I at X Y" for a hit on a contour.
QString hitText(const zgHitResult &hit, const XPath &compound)
{
    QString text = QString::fromLatin1(hitTypeName(hit.type));
    if (hit.path)
        text += QStringLiteral(" path %1").arg(compound.children.indexOf(hit.path));
    if (hit.type == zgHitStroke || hit.type == zgHitCurve)
        text += QStringLiteral(" at ") + pointText(hit.point);
    return text;
}

void reportPoint(XPath &compound, const QList<zgMono *> &pieces, const zgPoint &point,
                 const zgStyle &style, double tolerance)
{
    const zgWinding winding = XPath::getWinding(point, pieces, false);
    std::printf("point %s winding %d on-path %s contains %s\n", qPrintable(pointText(point)),
                winding.winding, winding.onPath ? "yes" : "no",
                compound.contains(point, style) ? "yes" : "no");
    const struct
    {
        const char *name;
        zgHitOpt options;
    } cases[] = {
        {"default", zgHitOpt()},
        {"stroke", zgHitOpt(false, true, false, true, tolerance)},
        {"curves", zgHitOpt(false, false, true, true, tolerance)},
        {"fill", zgHitOpt(true, false, false, true, tolerance)},
    };
    for (const auto &hitCase : cases) {
        const zgHitResult hit = compound.hitTest(point, style, hitCase.options);
        std::printf("  hit %s: %s\n", hitCase.name, qPrintable(hitText(hit, compound)));
    }
}

} // namespace

int runContains(const QStringList &args)
{
    CommandLine line(QStringLiteral("contains"),
            QStringLiteral("For each point: its winding number, whether it is on the outline, "
                           "whether PATH contains it (even-odd, or non-zero), and the hit test "
                           "result for the default options, the stroke, the bare curves and the fill."));
    line.addArgument(QStringLiteral("PATH"), QString::fromLatin1(kPathArgumentHelp));
    line.addOption(QStringLiteral("point"), QStringLiteral("X Y"),
                   QStringLiteral("a point to test; repeat for more (at least one)"));
    line.addOption(QStringLiteral("stroke"), QStringLiteral("W"),
                   QStringLiteral("stroke width for the stroke hit test, in path units"), QStringLiteral("1"));
    line.addOption(QStringLiteral("tolerance"), QStringLiteral("T"),
                   QStringLiteral("hit tolerance, in path units"), QStringLiteral("0.1"));
    line.addOption(QStringLiteral("nonzero"), QString(),
                   QStringLiteral("contain by the non-zero rule instead of even-odd"));
    line.addPictureOptions();
    double width = 1.0;
    double tolerance = 0.1;
    if (!line.parse(args) || !line.number(QStringLiteral("stroke"), width)
            || !line.number(QStringLiteral("tolerance"), tolerance))
        return line.exitCode();
    QVector<QPointF> points;
    if (!line.points(QStringLiteral("point"), points))
        return line.exitCode();
    if (points.isEmpty()) {
        printError(QStringLiteral("contains: no --point X Y given"));
        return 2;
    }
    const CommonOptions common = commonOptions(line);
    const bool nonZero = line.isSet(QStringLiteral("nonzero"));
    ZDPath path;
    if (!readPath(common, path))
        return 1;
    XPath compound;
    ZDPath source = path;
    source.toXPath(compound, 0);
    const zgStyle style(true, true, !nonZero, width);
    QList<zgMono *> pieces;
    for (zgPath *child : compound.children)
        pieces.append(child->getMonoCurves());
    Sample sample(QStringLiteral("contains"), path);
    for (const QPointF &point : points) {
        reportPoint(compound, pieces, zgPoint(point), style, tolerance);
        sample.marks << point;
    }
    qDeleteAll(pieces);
    return writePictures(common, {sample}) ? 0 : 1;
}
