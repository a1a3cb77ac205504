// zgPath::getArea: the signed area of a contour as the sum of the areas
// between each curve and its chord.
#include <zgraphics/model.h>

double zgPath::getArea(bool useCache, bool closed)
{
    // The sum starts from the cached value, also when the cache is not used
    // for the answer: with useCache false and a known cache the result is the
    // cache plus the new sum.
    double sum = area;
    if (useCache && sum != 0.0)
        return sum;
    const bool countClosing = useCache ? this->closed : closed;
    const int n = segments.size();
    const int count = countClosing ? n : n - 1;
    for (int i = 0; i < count; ++i) {
        const zgSegment *next = segments.at(i >= n - 1 ? 0 : i + 1);
        sum += zgCurve::getArea(zgCurve::getValues(segments.at(i), next, nullptr));
    }
    if (useCache)
        area = sum;
    return sum;
}
