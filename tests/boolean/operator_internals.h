// Test access to the private steps of the boolean operators.
#ifndef ZGRAPHICS_TESTS_BOOLEAN_OPERATOR_INTERNALS_H
#define ZGRAPHICS_TESTS_BOOLEAN_OPERATOR_INTERNALS_H

#include <zgraphics/model.h>

class zgOperatorInternals
{
public:
    static XPath *computeBoolean(XPath *path1, XPath *path2, int op, bool sort)
    {
        return XPath::computeBoolean(path1, path2, op, sort);
    }
    static XPath *computeOpenBoolean(XPath *path1, XPath *path2, int op)
    {
        return XPath::computeOpenBoolean(path1, path2, op);
    }
    static XPath *preparePath(XPath *path, bool resolve, bool sort)
    {
        return XPath::preparePath(path, resolve, sort);
    }
    static XPath *createResult(QVector<zgPath *> paths, bool simplify, XPath *path1, XPath *path2)
    {
        return XPath::createResult(paths, simplify, path1, path2);
    }
};

#endif
