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

// Reads the two numbers after --point; false with a message.
bool takePoint(const QStringList &args, int &i, zgPoint &point)
{
    if (i + 2 >= args.size()) {
        printError(QStringLiteral("option --point needs two values, X and Y"));
        return false;
    }
    bool xOk = false;
    bool yOk = false;
    point = zgPoint(args.at(i + 1).toDouble(&xOk), args.at(i + 2).toDouble(&yOk));
    if (!xOk || !yOk || !std::isfinite(point.x) || !std::isfinite(point.y)) {
        printError(QStringLiteral("option --point: '%1 %2' is not a finite point")
                           .arg(args.at(i + 1), args.at(i + 2)));
        return false;
    }
    i += 2;
    return true;
}

} // namespace

int runContains(const QStringList &args)
{
    CommonOptions common;
    QVector<zgPoint> points;
    double width = 1.0;
    double tolerance = 0.1;
    bool nonZero = false;
    for (int i = 0; i < args.size(); ++i) {
        bool error = false;
        const QString &arg = args.at(i);
        if (arg == QLatin1String("--point")) {
            zgPoint point;
            if (!takePoint(args, i, point))
                return 2;
            points << point;
        } else if (arg == QLatin1String("--stroke")) {
            if (!takeNumber(args, i, width))
                return 2;
        } else if (arg == QLatin1String("--tolerance")) {
            if (!takeNumber(args, i, tolerance))
                return 2;
        } else if (arg == QLatin1String("--nonzero")) {
            nonZero = true;
        } else if (!takeCommon(args, i, common, error)) {
            return unknownOption(QStringLiteral("contains"), arg);
        } else if (error) {
            return 2;
        }
    }
    if (points.isEmpty()) {
        printError(QStringLiteral("contains: no --point X Y given"));
        return 2;
    }
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
    for (const zgPoint &point : points) {
        reportPoint(compound, pieces, point, style, tolerance);
        sample.marks << QPointF(point.x, point.y);
    }
    qDeleteAll(pieces);
    return writePictures(common, {sample}) ? 0 : 1;
}
