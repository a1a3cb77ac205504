#include "model/lifetime.h"

XPath::XPath() : evenOdd(true) {}

XPath::~XPath()
{
    for (zgPath *&child : children) {
        child->release();
        child = nullptr;
    }
    children.clear();
}
