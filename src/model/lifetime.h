// The counting rule shared by the four counted classes of the object graph.
// A function template rather than a base class: the classes have no common
// base and no virtual functions.
#ifndef ZGRAPHICS_SRC_MODEL_LIFETIME_H
#define ZGRAPHICS_SRC_MODEL_LIFETIME_H

#include <zgraphics/model.h>

namespace zgLifetime {

template <class T>
inline void addRef(T *object)
{
    ++object->refCount;
}

// Lowers the count. At 0 or -1 (an object nobody ever held dies on its first
// release) the count becomes the sentinel -2, and the object is destroyed if
// zgPath::s_canDelete is set; otherwise it stays allocated and valid. Any
// other value, -2 and below included, ends there, which makes a further
// release of a kept object harmless.
template <class T>
inline void release(T *object)
{
    const int32_t count = --object->refCount;
    if (count >= 1 || count <= -2)
        return;
    object->refCount = -2;
    if (zgPath::s_canDelete)
        delete object;
}

// Constructors list the new object while the library runs in deferred mode.
template <class T>
inline void track(QList<T *> &list, T *object)
{
    if (!zgPath::s_canDelete)
        list.append(object);
}

// Destructors remove every occurrence of the object while in deferred mode.
template <class T>
inline void untrack(QList<T *> &list, T *object)
{
    if (!zgPath::s_canDelete)
        list.removeAll(object);
}

} // namespace zgLifetime

#endif
