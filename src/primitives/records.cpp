// The option and result records of the query functions.
#include <zgraphics/model.h>
#include <zgraphics/primitives.h>

zgHitResult::zgHitResult(int32_t type, zgPath *path, zgSegment *segment, const zgPoint &point)
    : type(type), compound(path ? path->parent : nullptr), path(path), segment(segment),
      point(point)
{
}
