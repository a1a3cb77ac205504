// zgSize: a width and a height.
#include <zgraphics/primitives.h>

void zgSize::set(double w, double h)
{
    width = w;
    height = h;
}

void zgSize::add(double dw, double dh)
{
    width += dw;
    height += dh;
}

void zgSize::multiply(double sw, double sh)
{
    width *= sw;
    height *= sh;
}

bool zgSize::operator==(const zgSize &s) const
{
    const double dw = width - s.width;
    const double dh = height - s.height;
    // 1e-12: differences this small count as zero.
    return -1e-12 <= dw && dw <= 1e-12 && -1e-12 <= dh && dh <= 1e-12;
}
