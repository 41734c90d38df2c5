// The text splitters under the parsers: trimming, number reading, field
// walks and their bounds.

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "time/TimeText.h"

namespace {

using timetext::ReadInteger;
using timetext::SplitDateText;
using timetext::SplitTimeText;
using timetext::TrimSpace;

void ExpectTime(const timetext::TimeFields& f, int32_t h, int32_t m, int32_t s, int32_t fr) {
  EXPECT_EQ(f.hours, h);
  EXPECT_EQ(f.minutes, m);
  EXPECT_EQ(f.seconds, s);
  EXPECT_EQ(f.frames, fr);
}

void ExpectDate(const timetext::DateFields& f, int32_t day, int32_t month, int32_t year) {
  EXPECT_EQ(f.day, day);
  EXPECT_EQ(f.month, month);
  EXPECT_EQ(f.year, year);
}

TEST(TimeTextTrim, RemovesWhiteSpaceFromBothEndsOnly) {
  EXPECT_EQ(TrimSpace(" \t\n\v\f\r1 2\r\n"), "1 2");
  EXPECT_EQ(TrimSpace("   "), "");
  EXPECT_EQ(TrimSpace(""), "");
  EXPECT_EQ(TrimSpace("x"), "x");
}

TEST(TimeTextReadInteger, ReadsLikeAtoi) {
  EXPECT_EQ(ReadInteger("42"), 42);
  EXPECT_EQ(ReadInteger("  -7:00"), -7);
  EXPECT_EQ(ReadInteger("+3x"), 3);
  EXPECT_EQ(ReadInteger("x3"), 0);
  EXPECT_EQ(ReadInteger(""), 0);
  EXPECT_EQ(ReadInteger("0x10"), 0);  // decimal only
}

TEST(TimeTextReadInteger, SaturatesBeyondInt32) {
  EXPECT_EQ(ReadInteger("2147483647"), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(ReadInteger("2147483648"), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(ReadInteger("4294967297"), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(ReadInteger("-99999999999999999999999"), std::numeric_limits<int32_t>::min());
}

TEST(TimeTextSplitTime, FourFieldsInOrder) {
  const auto f = SplitTimeText("1:2.3:4");
  ExpectTime(f, 1, 2, 3, 4);
}

TEST(TimeTextSplitTime, AnEmbeddedTerminatorEndsTheText) {
  const std::string text("01:02\0:03:04", 12);
  const auto f = SplitTimeText(text);
  ExpectTime(f, 1, 2, 0, 0);
}

TEST(TimeTextSplitTime, EmptyFieldsReadZero) {
  const auto f = SplitTimeText("..7.");
  ExpectTime(f, 0, 0, 7, 0);
}

TEST(TimeTextSplitTime, TextPastThirtyCharactersIsNotRead) {
  // Thirty '1' characters then ":5": the separator is at 30, beyond reach.
  const auto f = SplitTimeText(std::string(30, '1') + ":5");
  EXPECT_EQ(f.hours, std::numeric_limits<int32_t>::max());
  EXPECT_EQ(f.minutes, 0);
}

TEST(TimeTextSplitDate, DayFirstAndYearFirst) {
  auto f = SplitDateText("05/03/2011");
  ExpectDate(f, 5, 3, 2011);
  f = SplitDateText("2011.03.05");
  ExpectDate(f, 5, 3, 2011);
}

TEST(TimeTextSplitDate, FieldLengthNotValueDecidesTheOrder) {
  // "x +12" is five characters long: year first, though it reads as 0.
  const auto f = SplitDateText("x +12/3/4");
  ExpectDate(f, 4, 3, 0);
}

TEST(TimeTextSplitDate, AnEmbeddedTerminatorEndsTheText) {
  const std::string text("05/03\0/2011", 11);
  const auto f = SplitDateText(text);
  ExpectDate(f, 5, 3, 0);
}

}  // namespace
