// zgPath::getLength: the contour's length as the sum of its curves' lengths.
#include <zgraphics/model.h>

double zgPath::getLength()
{
    if (length != 0.0)
        return length;
    double sum = 0.0;
    for (zgCurve *curve : getCurves())
        sum += curve->getLength();
    length = sum;
    return sum;
}
