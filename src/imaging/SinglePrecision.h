#pragma once

#include <QPointF>

// Geometry is rounded to single precision at fixed places so that the same
// inputs always give the same frames, handles and outlines. A plain
// double(float(x)) is not enough: g++ 12 at -O2 vectorises two such round
// trips side by side and drops the rounding (196.41666666666666 comes out
// instead of 196.41667175). Passing the value through a volatile float is a
// step the optimiser has to keep.
inline double single(double value)
{
    const volatile float rounded = float(value);
    return rounded;
}

inline QPointF singlePoint(double x, double y)
{
    return {single(x), single(y)};
}
