#include <zgraphics/drawing.h>
