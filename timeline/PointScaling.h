#pragma once
// Rounding of point times when a curve or a marker list is scaled. The
// constant is this family's own: neither 0.5 nor the time code's 0.499.

#include <cstdint>

#include "time/TimeMath.h"

inline constexpr double kScaleRounding = 0.455555;

inline int64_t ScaledTime(int64_t time, double factor) {
  return timemath::TruncToI64(static_cast<double>(time) * factor + kScaleRounding);
}
