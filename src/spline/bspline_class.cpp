// BSpline: the owning wrapper of a spline block.
#include "spline/spline_block.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

void throwIfFailed(int code, const SplineStatus &status)
{
    if (code != SplineSuccess)
        throw std::runtime_error(status.message);
}

} // namespace

BSpline::BSpline(std::size_t numControlPoints, std::size_t dimension, std::size_t degree, int knotType)
    : m_record(nullptr)
{
    SplineStatus status;
    throwIfFailed(createSpline(numControlPoints, dimension, degree, knotType, &m_record, &status), status);
}

BSpline::BSpline(BSpline &&other) noexcept : m_record(other.m_record)
{
    other.m_record = nullptr;
}

BSpline &BSpline::operator=(BSpline &&other) noexcept
{
    if (this != &other) {
        freeSpline(m_record);
        m_record = other.m_record;
        other.m_record = nullptr;
    }
    return *this;
}

BSpline::~BSpline()
{
    freeSpline(m_record);
}

std::vector<double> BSpline::getControlPoints() const
{
    SplineStatus status;
    double *values = nullptr;
    throwIfFailed(::getControlPoints(m_record, &values, &status), status);
    std::vector<double> copy(values, values + splineLenControlPoints(m_record));
    std::free(values);
    return copy;
}

void BSpline::checkSize(std::size_t expected, std::size_t actual)
{
    if (expected != actual)
        throw std::runtime_error("Expected size: " + std::to_string(expected) + ", Actual size: "
                                 + std::to_string(actual));
}

void BSpline::setControlPoints(const std::vector<double> &values)
{
    checkSize(splineLenControlPoints(m_record), values.size());
    SplineStatus status;
    throwIfFailed(::setControlPoints(m_record, values.data(), &status), status);
}

void BSpline::setKnots(const std::vector<double> &values)
{
    checkSize(splineNumKnots(m_record), values.size());
    SplineStatus status;
    throwIfFailed(::setKnots(m_record, values.data(), &status), status);
}

BSpline BSpline::toBeziers() const
{
    SplineStatus status;
    SplineRecord *beziers = nullptr;
    throwIfFailed(::toBeziers(m_record, &beziers, &status), status);
    return BSpline(beziers);
}

std::size_t BSpline::degree() const
{
    return splineDegree(m_record);
}

std::size_t BSpline::numControlPoints() const
{
    return splineNumControlPoints(m_record);
}
