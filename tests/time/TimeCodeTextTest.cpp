// Time code and date text: formatting at the nominal rate, parsing of time
// and date, and round trips text -> value -> text.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

#include "time/TimeCode.h"

namespace {

std::string Format(const CTimeCode& tc) {
  std::string text;
  EXPECT_EQ(tc.FormatTime(&text), 0);
  char buffer[kTimeTextCapacity];
  EXPECT_EQ(tc.FormatTime(buffer), 0);
  EXPECT_EQ(text, std::string(buffer)) << "the two forms differ";
  return text;
}

std::string FormatAt(int64_t us, double rate = 25.0) {
  CTimeCode tc;
  tc.SetFrameRate(rate);
  tc.SetMicroseconds(us);
  return Format(tc);
}

std::string Date(const CTimeCode& tc) {
  std::string text;
  EXPECT_EQ(tc.FormatDate(text), 0);
  return text;
}

void ExpectDate(const CTimeCode& tc, int32_t day, int32_t month, int32_t year) {
  EXPECT_EQ(tc.iDay, day);
  EXPECT_EQ(tc.iMonth, month);
  EXPECT_EQ(tc.iYear, year);
}

TEST(TimeCodeFormat, FreshValueIsMidnightOfFirstJanuary1980) {
  const CTimeCode tc;
  EXPECT_EQ(Format(tc), "00:00:00:00");
  EXPECT_EQ(Date(tc), "19800101");
}

TEST(TimeCodeFormat, HoursMinutesSecondsFramesAt25) {
  EXPECT_EQ(FormatAt(3723160000), "01:02:03:04");
  EXPECT_EQ(FormatAt(86399960000), "23:59:59:24");  // one frame before a day
}

TEST(TimeCodeFormat, OneHourAt2997CountsAt30WithoutDroppedFrames) {
  // R = trunc(29.97 + 0.4) = 30; one frame is 33333.33 us; 3.6e9 us is
  // 108000 frames = exactly one hour of 30-frame seconds.
  EXPECT_EQ(FormatAt(3600000000, 29.97), "01:00:00:00");
  // 29 frames at 30: 29 x 33333.33 = 966666.67 us.
  EXPECT_EQ(FormatAt(966667, 29.97), "00:00:00:29");
}

TEST(TimeCodeFormat, NominalRateRoundsUpFromPointSix) {
  // 59.94 counts at 60: 59 frames of 16666.67 us are 983333.33 us.
  EXPECT_EQ(FormatAt(983333, 59.94), "00:00:00:59");
  // 23.976 counts at 24: 23 frames of 41666.67 us.
  EXPECT_EQ(FormatAt(958333, 23.976), "00:00:00:23");
  // 25.5 + 0.4 = 25.9 -> 25: 1 s is 25 frames = 00:00:01:00.
  EXPECT_EQ(FormatAt(1000000, 25.5), "00:00:01:00");
  // 25.6 + 0.4 = 26: 1 s is 26 frames.
  EXPECT_EQ(FormatAt(1000000, 25.6), "00:00:01:00");
  EXPECT_EQ(FormatAt(1000000 - 38462, 25.6), "00:00:00:25");
}

TEST(TimeCodeFormat, TwentyFiveHoursWrapToOneInTextButTheTimeIsKept) {
  CTimeCode tc;
  tc.SetMicroseconds(90000000000);  // 25 x 3600 x 1e6
  EXPECT_EQ(Format(tc), "01:00:00:00");
  EXPECT_EQ(tc.iTimeUs, 90000000000);
  EXPECT_EQ(tc.GetMilliseconds(), 90000000);
  EXPECT_EQ(FormatAt(49 * 3600000000LL + 1000000), "01:00:01:00");
}

TEST(TimeCodeFormat, NegativeTimeOfAnySizeIsAllZeros) {
  for (int64_t us :
       {int64_t{-1}, int64_t{-20000}, int64_t{-40000}, int64_t{-1000000}, int64_t{-3600000000},
        int64_t{-90000000000}, int64_t{-123456789012345}, std::numeric_limits<int64_t>::min()}) {
    EXPECT_EQ(FormatAt(us), "00:00:00:00") << us;
    EXPECT_EQ(FormatAt(us, 29.97), "00:00:00:00") << us;
  }
}

TEST(TimeCodeFormat, HalfAFrameRoundsDownAndJustAboveRoundsUp) {
  // 20000 us is 0.5 frame: 0.5 + 0.499 -> 0. 20080 us is 0.502 -> 1.001 -> 1.
  EXPECT_EQ(FormatAt(20000), "00:00:00:00");
  EXPECT_EQ(FormatAt(20080), "00:00:00:01");
}

TEST(TimeCodeFormat, TimeBeyondTheHourCounterGivesADefinedText) {
  // F = 9223372036854775807 / 40000 + 0.499 -> 230584300921369 frames;
  // hours 2562047788 saturate at 2147483647, which wraps to 7; the rest
  // saturates too, and minutes, seconds and frames past their range read 0.
  EXPECT_EQ(FormatAt(std::numeric_limits<int64_t>::max()), "07:00:00:00");
}

TEST(TimeCodeFormat, ZeroRateFormatsAsZero) {
  // R = 0: a frame lasts forever, so the count is trunc(0.499) = 0.
  EXPECT_EQ(FormatAt(3723160000, 0.0), "00:00:00:00");
}

TEST(TimeCodeFormat, NullOutputIsRefused) {
  const CTimeCode tc;
  EXPECT_EQ(tc.FormatTime(static_cast<std::string*>(nullptr)), -1);
  EXPECT_EQ(tc.FormatTime(static_cast<char*>(nullptr)), -1);
}

TEST(TimeCodeFormat, BufferFormWritesTheTextAndItsTerminatorOnly) {
  CTimeCode tc;
  tc.SetMicroseconds(3723160000);
  char buffer[32];
  std::memset(buffer, 0x7f, sizeof buffer);
  ASSERT_EQ(tc.FormatTime(buffer), 0);
  EXPECT_STREQ(buffer, "01:02:03:04");
  for (std::size_t i = 12; i < sizeof buffer; ++i) EXPECT_EQ(buffer[i], 0x7f) << i;
}

TEST(TimeCodeFormat, StringFormReplacesWhatWasThere) {
  const CTimeCode tc;
  std::string text = "something much longer than a time code";
  ASSERT_EQ(tc.FormatTime(&text), 0);
  EXPECT_EQ(text, "00:00:00:00");
}

TEST(TimeCodeFormatDate, WritesYearMonthDayAsStored) {
  CTimeCode tc;
  tc.SetDate(31, 4, 2000);
  EXPECT_EQ(Date(tc), "20000431");
  tc.SetDate(5, 3, 7);
  EXPECT_EQ(Date(tc), "00070305");
  tc.SetDate(1, 2, 123456);
  EXPECT_EQ(Date(tc), "1234560201");
}

TEST(TimeCodeParseTime, FullTimeCodeAt25) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseTime("01:02:03:04"), 0);
  EXPECT_EQ(tc.iTimeUs, 3723160000);  // 3723 s + 4 x 40 ms
}

TEST(TimeCodeParseTime, TwentyFiveHoursStoreZeroHoursAndReport) {
  CTimeCode tc;
  tc.SetMicroseconds(5);
  EXPECT_EQ(tc.ParseTime("25:00:00:00"), -1);
  EXPECT_EQ(tc.iTimeUs, 0);
}

TEST(TimeCodeParseTime, ThirtyFramesAt25AreReportedAndStoredAsGiven) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseTime("00:00:00:30"), -1);
  EXPECT_EQ(tc.iTimeUs, 1200000);  // 30 x 1000 / 25 = 1200 ms
}

TEST(TimeCodeParseTime, DotAndColonAreTheSameSeparator) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseTime("12.30"), 0);
  EXPECT_EQ(tc.iTimeUs, 45000000000);  // (12 x 3600 + 30 x 60) s
  EXPECT_EQ(tc.ParseTime("01.02:03.04"), 0);
  EXPECT_EQ(tc.iTimeUs, 3723160000);
}

TEST(TimeCodeParseTime, TrimsWhiteSpaceAndIgnoresWhatFollowsTheFourthField) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseTime(" \t01:02:03:04\r\n "), 0);
  EXPECT_EQ(tc.iTimeUs, 3723160000);
  EXPECT_EQ(tc.ParseTime("01:02:03:04:99:xyz"), 0);
  EXPECT_EQ(tc.iTimeUs, 3723160000);
}

TEST(TimeCodeParseTime, MissingFieldsAreZero) {
  CTimeCode tc;
  tc.SetMicroseconds(77);
  EXPECT_EQ(tc.ParseTime(""), 0);
  EXPECT_EQ(tc.iTimeUs, 0);
  EXPECT_EQ(tc.ParseTime("2"), 0);
  EXPECT_EQ(tc.iTimeUs, 7200000000);
  EXPECT_EQ(tc.ParseTime("::5"), 0);
  EXPECT_EQ(tc.iTimeUs, 5000000);
  EXPECT_EQ(tc.ParseTime("abc"), 0);  // atoi of letters is 0
  EXPECT_EQ(tc.iTimeUs, 0);
}

TEST(TimeCodeParseTime, NegativeAndHugeFieldsAreOutOfRange) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseTime("-1:00:00:00"), -1);
  EXPECT_EQ(tc.iTimeUs, 0);
  EXPECT_EQ(tc.ParseTime("99999999999999999999:01"), -1);
  EXPECT_EQ(tc.iTimeUs, 60000000);
  EXPECT_EQ(tc.ParseTime("00:00:00:-2"), -1);
  EXPECT_EQ(tc.iTimeUs, 0);
}

TEST(TimeCodeParseTime, ReadsOnlyTheFirstThirtyCharacters) {
  CTimeCode tc;
  // "01:02:03:" is 9 characters; the frames field holds characters 9 to 29.
  EXPECT_EQ(tc.ParseTime("01:02:03:" + std::string(20, '0') + "7"), 0);  // '7' at 29
  EXPECT_EQ(tc.iTimeUs, 3723280000);                                     // 3723 s + 7 x 40 ms
  EXPECT_EQ(tc.ParseTime("01:02:03:" + std::string(21, '0') + "7"), 0);  // '7' at 30
  EXPECT_EQ(tc.iTimeUs, 3723000000);
  // Leading white space is trimmed before the limit counts.
  EXPECT_EQ(tc.ParseTime(std::string(100, ' ') + "01:02:03:04"), 0);
  EXPECT_EQ(tc.iTimeUs, 3723160000);
}

TEST(TimeCodeParseTime, VeryLongTextIsReadSafely) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseTime(std::string(100000, '9')), -1);
  EXPECT_EQ(tc.iTimeUs, 0);
  EXPECT_EQ(tc.ParseTime(std::string(100000, ':')), 0);
  EXPECT_EQ(tc.iTimeUs, 0);
}

TEST(TimeCodeParseDate, YearFirstAndDayFirstGiveTheSameDate) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseDate("2011-03-05"), 0);
  ExpectDate(tc, 5, 3, 2011);
  CTimeCode other;
  EXPECT_EQ(other.ParseDate("05/03/2011"), 0);
  ExpectDate(other, 5, 3, 2011);
  EXPECT_EQ(other.ParseDate("5.3.2011"), 0);
  EXPECT_EQ(other.iDay, 5);
  EXPECT_EQ(other.iYear, 2011);
}

TEST(TimeCodeParseDate, FirstFieldOfFourCharactersMeansYearFirst) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseDate("0005-06-07"), 0);  // four characters, value 5
  ExpectDate(tc, 7, 6, 5);
  EXPECT_EQ(tc.ParseDate("011-06-07"), 0);  // three characters: day first
  ExpectDate(tc, 11, 6, 7);
}

TEST(TimeCodeParseDate, MissingFieldsReadAsZero) {
  CTimeCode tc;
  // Day 5, month 3, no year: year 0 is a valid year.
  EXPECT_EQ(tc.ParseDate("5/3"), 0);
  ExpectDate(tc, 5, 3, 0);
  // Year only: month 0 becomes 1 and day 0 is reported.
  EXPECT_EQ(tc.ParseDate("2011"), -2);
  ExpectDate(tc, 0, 1, 2011);
  EXPECT_EQ(tc.ParseDate(""), -2);
  ExpectDate(tc, 0, 1, 0);
}

TEST(TimeCodeParseDate, BadDatesAreReportedWithTheDayKept) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseDate("2000-04-31"), -2);
  EXPECT_EQ(tc.iDay, 31);
  EXPECT_EQ(tc.ParseDate("29/02/1999"), 0);
  // A leading "-" ends an empty first field: day 0, month 5, year 3.
  EXPECT_EQ(tc.ParseDate("-5/3/2011"), -2);
  ExpectDate(tc, 0, 5, 3);
}

TEST(TimeCodeParseDate, TrimsAndIgnoresFieldsBehindTheThird) {
  CTimeCode tc;
  EXPECT_EQ(tc.ParseDate("\t 2011-03-05-07/09.11 \n"), 0);
  ExpectDate(tc, 5, 3, 2011);
}

TEST(TimeCodeParseDate, ReadsOnlyThe299CharactersOfItsBuffer) {
  CTimeCode tc;
  // "5/3/" is 4 characters; 291 zeros put "2011" at 295..298, all read.
  EXPECT_EQ(tc.ParseDate("5/3/" + std::string(291, '0') + "2011"), 0);
  EXPECT_EQ(tc.iYear, 2011);
  // One zero more moves the final "1" to 299, outside: the year is 201.
  EXPECT_EQ(tc.ParseDate("5/3/" + std::string(292, '0') + "2011"), 0);
  EXPECT_EQ(tc.iYear, 201);
  EXPECT_EQ(tc.ParseDate(std::string(100000, '/')), -2);
}

TEST(TimeCodeParse, TimeAndDateStayIndependent) {
  CTimeCode tc;
  tc.ParseTime("01:02:03:04");
  tc.ParseDate("2011-03-05");
  EXPECT_EQ(tc.iTimeUs, 3723160000);
  tc.ParseTime("00:00:00:00");
  EXPECT_EQ(tc.iDay, 5);
}

// Time code text of second `second` of the day, with a frame that walks
// through every frame number of the nominal rate as the seconds go by.
std::string TextOfSecond(int32_t second, int32_t frame) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d:%02d", second / 3600, second / 60 % 60,
                second % 60, frame);
  return text;
}

void ExpectTextRoundTrips(double rate, int32_t nominal) {
  CTimeCode tc;
  tc.SetFrameRate(rate);
  for (int32_t second = 0; second < 86400; ++second) {
    const std::string text = TextOfSecond(second, second % nominal);
    ASSERT_EQ(tc.ParseTime(text), 0) << text;
    ASSERT_EQ(Format(tc), text) << "at " << rate;
  }
  // Every frame of the first and of the last second of the day.
  for (int32_t second : {0, 86399}) {
    for (int32_t frame = 0; frame < nominal; ++frame) {
      const std::string text = TextOfSecond(second, frame);
      ASSERT_EQ(tc.ParseTime(text), 0) << text;
      ASSERT_EQ(Format(tc), text) << "at " << rate;
    }
  }
}

TEST(TimeCodeRoundTrip, TextThroughValueAt25) {
  ExpectTextRoundTrips(25.0, 25);
}
TEST(TimeCodeRoundTrip, TextThroughValueAt2997) {
  ExpectTextRoundTrips(29.97, 30);
}
TEST(TimeCodeRoundTrip, TextThroughValueAt50) {
  ExpectTextRoundTrips(50.0, 50);
}
TEST(TimeCodeRoundTrip, TextThroughValueAt5994) {
  ExpectTextRoundTrips(59.94, 60);
}

}  // namespace
