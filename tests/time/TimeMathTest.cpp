// The whole-number conversions behind the time code: truncation toward zero,
// saturation at the limits, the 0.499 rounding and saturating arithmetic.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "time/TimeMath.h"

namespace {

using namespace timemath;

constexpr int32_t kI32Max = std::numeric_limits<int32_t>::max();
constexpr int32_t kI32Min = std::numeric_limits<int32_t>::min();
constexpr int64_t kI64Max = std::numeric_limits<int64_t>::max();
constexpr int64_t kI64Min = std::numeric_limits<int64_t>::min();

TEST(TimeMathTrunc, GoesTowardZero) {
  EXPECT_EQ(TruncToI32(1.999), 1);
  EXPECT_EQ(TruncToI32(-1.999), -1);
  EXPECT_EQ(TruncToI64(-0.4), 0);
  EXPECT_EQ(TruncToI64(123456789012.9), 123456789012);
}

TEST(TimeMathTrunc, KeepsTheLastValuesThatFit) {
  EXPECT_EQ(TruncToI32(2147483647.9), kI32Max);
  EXPECT_EQ(TruncToI32(-2147483648.0), kI32Min);
  EXPECT_EQ(TruncToI32(-2147483647.9), -2147483647);
}

TEST(TimeMathTrunc, SaturatesOutOfRangeAndNanIsZero) {
  EXPECT_EQ(TruncToI32(2147483648.0), kI32Max);
  EXPECT_EQ(TruncToI32(2562047788.0), kI32Max);
  EXPECT_EQ(TruncToI32(-2147483649.0), kI32Min);
  EXPECT_EQ(TruncToI64(9.3e18), kI64Max);
  EXPECT_EQ(TruncToI64(-9.3e18), kI64Min);
  EXPECT_EQ(TruncToI64(std::numeric_limits<double>::infinity()), kI64Max);
  EXPECT_EQ(TruncToI64(-std::numeric_limits<double>::infinity()), kI64Min);
  EXPECT_EQ(TruncToI32(std::nan("")), 0);
}

TEST(TimeMathRound, AddsOrSubtracts0499BySign) {
  EXPECT_EQ(RoundTimeValue(2.5), 2);    // 2.999
  EXPECT_EQ(RoundTimeValue(2.502), 3);  // 3.001
  EXPECT_EQ(RoundTimeValue(-2.5), -2);
  EXPECT_EQ(RoundTimeValue(-2.502), -3);
  EXPECT_EQ(RoundTimeValue(0.0), 0);
  EXPECT_EQ(RoundTimeValue(-0.0), 0);
}

TEST(TimeMathNarrow, SaturatesInsteadOfWrapping) {
  EXPECT_EQ(NarrowToI32(5), 5);
  EXPECT_EQ(NarrowToI32(4294967297LL), kI32Max);  // would wrap to 1
  EXPECT_EQ(NarrowToI32(-4294967297LL), kI32Min);
}

TEST(TimeMathSaturating, AddSubMulStopAtTheLimits) {
  EXPECT_EQ(SatAdd(kI64Max, 1), kI64Max);
  EXPECT_EQ(SatAdd(kI64Min, -1), kI64Min);
  EXPECT_EQ(SatAdd(40, 2), 42);
  EXPECT_EQ(SatSub(kI64Min, 1), kI64Min);
  EXPECT_EQ(SatSub(0, kI64Min), kI64Max);
  EXPECT_EQ(SatSub(44, 2), 42);
  EXPECT_EQ(SatMul(kI64Max, 1000), kI64Max);
  EXPECT_EQ(SatMul(kI64Min, 1000), kI64Min);
  EXPECT_EQ(SatMul(-kI64Max, 1000), kI64Min);
  EXPECT_EQ(SatMul(kI64Min, -1), kI64Max);
  EXPECT_EQ(SatMul(-6, 7), -42);
}

}  // namespace
