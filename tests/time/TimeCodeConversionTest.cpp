// Conversions between microseconds, milliseconds, seconds and frames, the
// setters of time and date, and the 0.499 rounding rule.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "time/TimeCode.h"

namespace {

TEST(TimeCodeDefaults, FreshValueHoldsFirstOfJanuary1980At25FpsAndTimeZero) {
  const CTimeCode tc;
  EXPECT_EQ(tc.iDay, 1);
  EXPECT_EQ(tc.iYear, 1980);
  EXPECT_EQ(tc.iMonth, 1);
  EXPECT_EQ(tc.dFrameRate, 25.0);
  EXPECT_EQ(tc.iTimeUs, 0);
  EXPECT_EQ(dDefaultFrameRate, 25.0);
}

TEST(TimeCodeMicroseconds, StoresAndReturnsAnyValue) {
  CTimeCode tc;
  EXPECT_EQ(tc.SetMicroseconds(-123456789012345), 0);
  EXPECT_EQ(tc.GetMicroseconds(), -123456789012345);
  EXPECT_EQ(tc.iTimeUs, -123456789012345);
}

TEST(TimeCodeMilliseconds, FortyMillisecondsIsOneFrameAt25) {
  CTimeCode tc;
  EXPECT_EQ(tc.SetMilliseconds(40.0), 0);
  EXPECT_EQ(tc.iTimeUs, 40000);
  EXPECT_EQ(tc.GetFrames(), 1);
}

TEST(TimeCodeMilliseconds, OneFrameAt25IsFortyMilliseconds) {
  CTimeCode tc;
  EXPECT_EQ(tc.SetFrames(1.0), 0);
  // 1 / 25 x 1000 x 1000 = 40000, + 0.499, truncated.
  EXPECT_EQ(tc.iTimeUs, 40000);
  EXPECT_EQ(tc.GetMilliseconds(), 40);
}

TEST(TimeCodeMilliseconds, SetTruncatesToWholeMicrosecondsWithoutRounding) {
  CTimeCode tc;
  tc.SetMilliseconds(1.0009);  // 1000.9 us -> 1000
  EXPECT_EQ(tc.iTimeUs, 1000);
  tc.SetMilliseconds(-1.0009);  // -1000.9 us -> -1000, toward zero
  EXPECT_EQ(tc.iTimeUs, -1000);
}

TEST(TimeCodeMilliseconds, GetRoundsHalfDownByThe0499Rule) {
  CTimeCode tc;
  tc.SetMicroseconds(1500);  // 1.5 + 0.499 = 1.999 -> 1
  EXPECT_EQ(tc.GetMilliseconds(), 1);
  tc.SetMicroseconds(1502);  // 1.502 + 0.499 = 2.001 -> 2
  EXPECT_EQ(tc.GetMilliseconds(), 2);
  tc.SetMicroseconds(-1500);  // -1.5 - 0.499 = -1.999 -> -1
  EXPECT_EQ(tc.GetMilliseconds(), -1);
  tc.SetMicroseconds(-1502);  // -2.001 -> -2
  EXPECT_EQ(tc.GetMilliseconds(), -2);
}

TEST(TimeCodeFrames, OneAndAHalfFramesRoundDownToOne) {
  CTimeCode tc;
  tc.SetFrames(1.5);  // 1.5 + 0.499 = 1.999 -> 1 frame = 40000 us
  EXPECT_EQ(tc.iTimeUs, 40000);
  EXPECT_EQ(tc.GetFrames(), 1);
}

TEST(TimeCodeFrames, MinusOneAndAHalfFramesRoundToMinusOne) {
  CTimeCode tc;
  tc.SetFrames(-1.5);  // -1.5 - 0.499 = -1.999 -> -1; -40000 - 0.499 -> -40000
  EXPECT_EQ(tc.iTimeUs, -40000);
  EXPECT_EQ(tc.GetFrames(), -1);
}

TEST(TimeCodeFrames, HalfFrameOfTimeReadsAsTheLowerFrame) {
  CTimeCode tc;
  tc.SetMicroseconds(20000);  // 0.5 frame + 0.499 -> 0
  EXPECT_EQ(tc.GetFrames(), 0);
  tc.SetMicroseconds(60000);  // 1.5 frames -> 1
  EXPECT_EQ(tc.GetFrames(), 1);
  tc.SetMicroseconds(60500);  // 1.5125 + 0.499 = 2.0115 -> 2
  EXPECT_EQ(tc.GetFrames(), 2);
  tc.SetMicroseconds(-60000);  // -1.5 - 0.499 -> -1
  EXPECT_EQ(tc.GetFrames(), -1);
}

TEST(TimeCodeFrames, FramesAt2997LandOnRoundedMicroseconds) {
  CTimeCode tc;
  tc.SetFrameRate(29.97);
  tc.SetFrames(1.0);  // 1 / 29.97 x 1e6 = 33366.7000..., + 0.499 -> 33367
  EXPECT_EQ(tc.iTimeUs, 33367);
  EXPECT_EQ(tc.GetMilliseconds(), 33);  // 33.367 + 0.499 -> 33
  EXPECT_EQ(tc.GetFrames(), 1);         // 33367e-6 x 29.97 = 1.00001 -> 1
}

TEST(TimeCodeFrames, RoundingDirectionFollowsTheSignOfTheFramesNotOfTheTime) {
  CTimeCode tc;
  tc.SetFrameRate(-25.0);
  // n = 1; x = 1 / -25 x 1e6 = -40000; frames were positive so 0.499 is
  // added: -39999.501 -> -39999.
  tc.SetFrames(1.0);
  EXPECT_EQ(tc.iTimeUs, -39999);
}

TEST(TimeCodeFrames, EveryFrameOfOneHourAt25RoundTripsThroughMilliseconds) {
  CTimeCode tc;
  // One frame is exactly 40 ms at 25 fps; one hour is 90000 frames.
  for (int64_t k = 0; k <= 90000; ++k) {
    tc.SetMilliseconds(static_cast<double>(k * 40));
    ASSERT_EQ(tc.GetFrames(), k) << "frame " << k;
    tc.SetFrames(static_cast<double>(k));
    ASSERT_EQ(tc.iTimeUs, k * 40000) << "frame " << k;
    ASSERT_EQ(tc.GetMilliseconds(), k * 40) << "frame " << k;
  }
}

TEST(TimeCodeFrames, EveryMillisecondOfOneHourReadsAsItsNearestFrameTiesDown) {
  CTimeCode tc;
  // frames = ms / 40 + 0.499 truncated. For ms = 40k + r: r <= 20 gives k
  // (20 / 40 + 0.499 = 0.999), r >= 21 gives k + 1 (0.525 + 0.499 > 1), so
  // frames = (ms + 19) / 40 in integer division.
  for (int64_t ms = 0; ms <= 3600000; ++ms) {
    tc.SetMilliseconds(static_cast<double>(ms));
    ASSERT_EQ(tc.GetFrames(), (ms + 19) / 40) << "ms " << ms;
  }
}

TEST(TimeCodeSeconds, AreComputedInDoubleThenNarrowedToFloat) {
  CTimeCode tc;
  tc.SetMicroseconds(1500000);
  EXPECT_EQ(tc.GetSeconds(), 1.5f);
  // 2^24 + 1 seconds has no float: it narrows to 2^24.
  tc.SetMicroseconds(16777217000000);
  EXPECT_EQ(tc.GetSeconds(), 16777216.0f);
  tc.SetMicroseconds(-250000);
  EXPECT_EQ(tc.GetSeconds(), -0.25f);
}

TEST(TimeCodeFrameRate, IsStoredWithoutCheckAndZeroGivesDefinedResults) {
  CTimeCode tc;
  tc.SetFrameRate(0.0);
  EXPECT_EQ(tc.dFrameRate, 0.0);
  tc.SetMicroseconds(1000000);
  EXPECT_EQ(tc.GetFrames(), 0);  // 1 s x 0 fps = 0
  // 1 / 0 is infinite: the microseconds saturate at their limit.
  tc.SetFrames(1.0);
  EXPECT_EQ(tc.iTimeUs, std::numeric_limits<int64_t>::max());
  tc.SetFrameRate(-7.5);
  EXPECT_EQ(tc.dFrameRate, -7.5);
}

TEST(TimeCodeSetTime, StoresHoursMinutesSecondsAndFramesAt25) {
  CTimeCode tc;
  // (1 x 3600 + 2 x 60 + 3) x 1000 + 4 x 1000 / 25 = 3723000 + 160 ms.
  EXPECT_EQ(tc.SetTime(1, 2, 3, 4.0f), 0);
  EXPECT_EQ(tc.iTimeUs, 3723160000);
}

TEST(TimeCodeSetTime, FramesLandOnAWholeMillisecondTruncated) {
  CTimeCode tc;
  tc.SetFrameRate(30.0);
  EXPECT_EQ(tc.SetTime(0, 0, 0, 1.0f), 0);  // 1000 / 30 = 33.33 -> 33 ms
  EXPECT_EQ(tc.iTimeUs, 33000);
}

TEST(TimeCodeSetTime, OutOfRangeFieldsBecomeZeroAndTheValueIsStillStored) {
  CTimeCode tc;
  EXPECT_EQ(tc.SetTime(24, 59, 59, 24.0f), -1);
  // Hours -> 0: (59 x 60 + 59) x 1000 + 24 x 40 = 3599000 + 960 ms.
  EXPECT_EQ(tc.iTimeUs, 3599960000);
  EXPECT_EQ(tc.SetTime(-1, 1, 0, 0.0f), -1);
  EXPECT_EQ(tc.iTimeUs, 60000000);
  EXPECT_EQ(tc.SetTime(1, 60, 0, 0.0f), -1);
  EXPECT_EQ(tc.iTimeUs, 3600000000);
  EXPECT_EQ(tc.SetTime(0, -5, 1, 0.0f), -1);
  EXPECT_EQ(tc.iTimeUs, 1000000);
  EXPECT_EQ(tc.SetTime(0, 1, 60, 0.0f), -1);
  EXPECT_EQ(tc.iTimeUs, 60000000);
  EXPECT_EQ(tc.SetTime(0, 1, -1, 0.0f), -1);
  EXPECT_EQ(tc.iTimeUs, 60000000);
  EXPECT_EQ(tc.SetTime(23, 59, 59, 0.0f), 0);
  EXPECT_EQ(tc.iTimeUs, 86399000000);
}

TEST(TimeCodeSetTime, TooManyFramesAreReportedButKept) {
  CTimeCode tc;
  // 30 > 25 + 0.1: reported; 30 x 1000 / 25 = 1200 ms stored.
  EXPECT_EQ(tc.SetTime(0, 0, 0, 30.0f), -1);
  EXPECT_EQ(tc.iTimeUs, 1200000);
  // 25 itself is within the 0.1 slack.
  EXPECT_EQ(tc.SetTime(0, 0, 0, 25.0f), 0);
  EXPECT_EQ(tc.iTimeUs, 1000000);
  // 25.09f is 25.0900001... <= 25.1.
  EXPECT_EQ(tc.SetTime(0, 0, 0, 25.09f), 0);
  // 25.1f is 25.1000003814..., a hair above 25.0 + 0.1 as a double.
  EXPECT_EQ(tc.SetTime(0, 0, 0, 25.1f), -1);
  EXPECT_EQ(tc.iTimeUs, 1004000);  // 25.1000003814 x 1000 / 25 = 1004.000015 -> 1004
}

TEST(TimeCodeSetTime, NegativeFramesBecomeZero) {
  CTimeCode tc;
  EXPECT_EQ(tc.SetTime(0, 0, 2, -3.0f), -1);
  EXPECT_EQ(tc.iTimeUs, 2000000);
}

TEST(TimeCodeSetTime, LeavesTheDateAlone) {
  CTimeCode tc;
  tc.SetDate(5, 3, 2011);
  tc.SetTime(1, 2, 3, 4.0f);
  EXPECT_EQ(tc.iDay, 5);
  EXPECT_EQ(tc.iMonth, 3);
  EXPECT_EQ(tc.iYear, 2011);
}

TEST(TimeCodeSetDate, ThirtyFirstOfAprilIsReportedButTheDayIsKept) {
  CTimeCode tc;
  EXPECT_EQ(tc.SetDate(31, 4, 2000), -2);
  EXPECT_EQ(tc.iDay, 31);
  EXPECT_EQ(tc.iMonth, 4);
  EXPECT_EQ(tc.iYear, 2000);
}

TEST(TimeCodeSetDate, TwentyNinthOfFebruaryPassesInEveryYear) {
  CTimeCode tc;
  EXPECT_EQ(tc.SetDate(29, 2, 1999), 0);
  EXPECT_EQ(tc.iDay, 29);
  EXPECT_EQ(tc.SetDate(30, 2, 2000), -2);
  EXPECT_EQ(tc.iDay, 30);
}

TEST(TimeCodeSetDate, ThirtyDayMonthsAndDayLimits) {
  CTimeCode tc;
  for (int32_t month : {4, 6, 9, 11}) {
    EXPECT_EQ(tc.SetDate(30, month, 2020), 0) << month;
    EXPECT_EQ(tc.SetDate(31, month, 2020), -2) << month;
  }
  EXPECT_EQ(tc.SetDate(31, 12, 2020), 0);
  EXPECT_EQ(tc.SetDate(32, 1, 2020), -2);
  EXPECT_EQ(tc.iDay, 32);
  EXPECT_EQ(tc.SetDate(0, 1, 2020), -2);
  EXPECT_EQ(tc.iDay, 0);
  EXPECT_EQ(tc.SetDate(1, 1, 0), 0);
}

TEST(TimeCodeSetDate, BadMonthAndYearAreCorrected) {
  CTimeCode tc;
  EXPECT_EQ(tc.SetDate(15, 13, 2000), -2);
  EXPECT_EQ(tc.iMonth, 1);
  EXPECT_EQ(tc.SetDate(15, 0, 2000), -2);
  EXPECT_EQ(tc.iMonth, 1);
  EXPECT_EQ(tc.iDay, 15);
  EXPECT_EQ(tc.SetDate(15, 6, -1), -2);
  EXPECT_EQ(tc.iYear, 0);
  EXPECT_EQ(tc.iMonth, 6);
  // A corrected month of 1 no longer limits the day to 30.
  EXPECT_EQ(tc.SetDate(31, 40, 2000), -2);
  EXPECT_EQ(tc.iDay, 31);
  EXPECT_EQ(tc.iMonth, 1);
}

TEST(TimeCodeSetDate, LeavesTheTimeAlone) {
  CTimeCode tc;
  tc.SetMicroseconds(987654321);
  tc.SetDate(31, 4, 2000);
  EXPECT_EQ(tc.iTimeUs, 987654321);
}

}  // namespace

// The one-call conversions at the default rate give what a value stored in
// one unit and read in the other gives: 40 ms is one frame at 25 fps, 1.5
// frames of time (60 ms) round to 1, -60 ms to -1; 3 frames are 120 ms.
TEST(DefaultRateConversion, FramesFromMillisecondsFollowTheRounding) {
  EXPECT_EQ(FramesAtDefaultRate(40.0), 1);
  EXPECT_EQ(FramesAtDefaultRate(60.0), 1);
  EXPECT_EQ(FramesAtDefaultRate(-60.0), -1);
  EXPECT_EQ(FramesAtDefaultRate(0.0), 0);
}

TEST(DefaultRateConversion, MillisecondsFromFramesAreWholeFrameTimes) {
  EXPECT_EQ(MillisecondsAtDefaultRate(3.0), 120);
  EXPECT_EQ(MillisecondsAtDefaultRate(0.0), 0);
  for (int64_t frame = -50; frame <= 50; ++frame) {
    EXPECT_EQ(FramesAtDefaultRate(static_cast<double>(MillisecondsAtDefaultRate(
                  static_cast<double>(frame)))),
              frame);
  }
}
