#pragma once
// The whole-number conversions of the time code calculator. Every truncation
// goes toward zero; a value that does not fit the target type saturates at its
// limit and NaN gives 0, so any double, however odd, has a defined result.

#include <cmath>
#include <cstdint>
#include <limits>

namespace timemath {

template <typename T>
constexpr T TruncTo(double x) {
  if (std::isnan(x)) return 0;
  // The limits of T as doubles: max + 1 (= -min) is a power of two and exact.
  constexpr double kAboveMax = -static_cast<double>(std::numeric_limits<T>::min());
  constexpr double kMin = static_cast<double>(std::numeric_limits<T>::min());
  if (x >= kAboveMax) return std::numeric_limits<T>::max();
  if (x <= kMin) return std::numeric_limits<T>::min();
  return static_cast<T>(x);
}

inline int64_t TruncToI64(double x) {
  return TruncTo<int64_t>(x);
}
inline int32_t TruncToI32(double x) {
  return TruncTo<int32_t>(x);
}

// The rounding of this class: 0.499 away from zero, then truncate. A value of
// n + 0.5 stays at n for n >= 0; frame-exact positions depend on it.
inline constexpr double kRoundingTerm = 0.499;
inline int64_t RoundTimeValue(double x) {
  return TruncToI64(x >= 0.0 ? x + kRoundingTerm : x - kRoundingTerm);
}

// A 64-bit intermediate kept as a signed 32-bit number; out of range
// saturates instead of wrapping so that a huge time cannot wrap into a small
// positive remainder.
inline int32_t NarrowToI32(int64_t v) {
  if (v > std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
  if (v < std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
  return static_cast<int32_t>(v);
}

// Saturating 64-bit arithmetic for sums that only overflow with nonsense input.
inline int64_t SatAdd(int64_t a, int64_t b) {
  int64_t r;
  if (!__builtin_add_overflow(a, b, &r)) return r;
  return b > 0 ? std::numeric_limits<int64_t>::max() : std::numeric_limits<int64_t>::min();
}
inline int64_t SatSub(int64_t a, int64_t b) {
  int64_t r;
  if (!__builtin_sub_overflow(a, b, &r)) return r;
  return b < 0 ? std::numeric_limits<int64_t>::max() : std::numeric_limits<int64_t>::min();
}
inline int64_t SatMul(int64_t a, int64_t b) {
  int64_t r;
  if (!__builtin_mul_overflow(a, b, &r)) return r;
  return (a < 0) != (b < 0) ? std::numeric_limits<int64_t>::min()
                            : std::numeric_limits<int64_t>::max();
}

}  // namespace timemath
