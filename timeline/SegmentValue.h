#pragma once
// The value of a level curve between two knots. The value moves by
// sin(atan(slope)) per unit of time from the lower knot, so a curve never
// changes faster than one unit of value per millisecond and falls short of
// the higher knot on steep segments; the users of the curves hear and see
// exactly this shape, so its float/double narrowings are part of it.

#include <cstdint>

// The value at time t between (t0, y0) and (t1, y1).
// With `bWholeRise` the value difference is first truncated toward zero to a
// whole number, which makes a difference below 1.0 a flat line at the lower
// value (the placing evaluation works that way).
float SegmentValue(int64_t t, int64_t t0, float y0, int64_t t1, float y1, bool bWholeRise);
