// Helpers shared by the winding tests: access to the private steps of the
// winding code, and an owner for lists of monotone pieces.
#ifndef ZGRAPHICS_TESTS_BOOLEAN_WINDING_SUPPORT_H
#define ZGRAPHICS_TESTS_BOOLEAN_WINDING_SUPPORT_H

#include <zgraphics/model.h>

#include <QtCore/QtAlgorithms>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

class zgWindingInternals
{
public:
    static void addMonoCurve(const QVector<double> &values, QList<zgMono *> &monos,
                             zgMono *&lastNonHorizontal)
    {
        zgPath::addMonoCurve(values, monos, lastNonHorizontal);
    }
    static void insertMonoCurve(const QVector<double> &values, QList<zgMono *> &monos,
                                zgMono *&lastNonHorizontal)
    {
        zgPath::insertMonoCurve(values, monos, lastNonHorizontal);
    }
    static QList<zgMono *> getMonoCurves(XPath &compound) { return compound.getMonoCurves(); }
    static int getWinding(XPath &compound, const zgPoint &point, bool horizontal)
    {
        return compound.getWinding(point, horizontal);
    }
};

namespace zgtest {

// Deletes the records of a list of monotone pieces when it goes.
struct MonoList
{
    QList<zgMono *> list;

    MonoList() = default;
    explicit MonoList(const QList<zgMono *> &list) : list(list) {}
    ~MonoList() { qDeleteAll(list); }
    MonoList(const MonoList &) = delete;
    MonoList &operator=(const MonoList &) = delete;

    int size() const { return list.size(); }
    zgMono *at(int i) const { return list.at(i); }
};

// Allocations made while it lives are not reported as leaks: for the calls
// that leave records allocated on purpose.
struct IntendedLeakScope
{
    IntendedLeakScope() {}
    ~IntendedLeakScope() {}
#if defined(__SANITIZE_ADDRESS__)
    __lsan::ScopedDisabler disabler;
#endif
};

} // namespace zgtest

#endif
