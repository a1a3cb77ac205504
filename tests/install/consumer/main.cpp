#include <zgraphics/drawing.h>
#include <zgraphics/model.h>
#include <zgraphics/primitives.h>
#include <zgraphics/version.h>

#include <cstdio>

int main()
{
    ZDPath path;
    path.addRect(QRectF(0, 0, 100, 50));
    path.ellipse(QRectF(200, 0, 80, 40));
    zgMatrix matrix;
    matrix.scale(2, 2, nullptr);
    const zgPoint mapped = matrix.transformPoint(zgPoint(3, 4));
    std::printf("zgraphics %s: %d elements, mapped %g %g\n", ZGRAPHICS_VERSION_STR, path.count(),
                mapped.x, mapped.y);
    return path.count() == 20 && mapped.x == 6 && mapped.y == 8 ? 0 : 1;
}
