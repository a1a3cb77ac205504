#include <zgraphics/drawing.h>

#include <cstdio>

int main()
{
    ZDPath path;
    path.addRect(QRectF(0, 0, 10, 10));
    std::printf("%d\n", path.count());
    return 0;
}
