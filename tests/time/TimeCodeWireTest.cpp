// The two wire forms: the 32-bit packed word and the BCD buffer, both split
// by milliseconds.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "time/TimeCode.h"

namespace {

// The word by its layout: 2 in bits 0-6, frames from bit 7, seconds from
// 13, minutes from 20, hours from 26, shifted and added.
uint32_t Word(uint32_t h, uint32_t m, uint32_t s, uint32_t f) {
  return 2u + (f << 7) + (s << 13) + (m << 20) + (h << 26);
}

uint8_t Bcd(int32_t v) {
  return static_cast<uint8_t>((v / 10) * 16 + v % 10);
}

using Bytes = std::array<uint8_t, 8>;

Bytes BcdOf(const CTimeCode& tc) {
  Bytes out;
  out.fill(0xAA);
  EXPECT_EQ(tc.GetBcdTime(out.data()), 0);
  return out;
}

Bytes Expected(int32_t h, int32_t m, int32_t s, int32_t f) {
  return Bytes{Bcd(f), Bcd(s), Bcd(m), Bcd(h), 0, 0, 0, 0};
}

// Milliseconds of h:m:s plus frames at `rate`, truncated to the millisecond.
int64_t MsOf(int64_t h, int64_t m, int64_t s, int64_t framesMs) {
  return (h * 3600 + m * 60 + s) * 1000 + framesMs;
}

TEST(TimeCodePacked, FreshValueIsTheConstantTwo) {
  const CTimeCode tc;
  EXPECT_EQ(tc.GetPackedTime(), 2u);
}

TEST(TimeCodePacked, FieldsAt25) {
  CTimeCode tc;
  tc.SetMicroseconds(3723160000);  // 01:02:03 and 160 ms = 4 frames
  EXPECT_EQ(tc.GetPackedTime(), Word(1, 2, 3, 4));
  EXPECT_EQ(tc.GetPackedTime(), 69231106u);
}

TEST(TimeCodePacked, HoursWrapAtADayWhileTheTimeIsKept) {
  CTimeCode tc;
  tc.SetMicroseconds(90000000000);  // 25 h
  EXPECT_EQ(tc.GetPackedTime(), Word(1, 0, 0, 0));
  EXPECT_EQ(tc.iTimeUs, 90000000000);
}

TEST(TimeCodePacked, NegativeFieldsAreAddedNotMasked) {
  CTimeCode tc;
  tc.SetMicroseconds(-1000000);
  // ms = -1000: hours 0, minutes 0, seconds -1, frames 0. -1 << 13 is
  // -8192, so the word is 2 - 8192 modulo 2^32 = 0xFFFFE002.
  EXPECT_EQ(tc.GetPackedTime(), 0xFFFFE002u);
}

TEST(TimeCodePacked, FramesAboveSixtyThreeSpillIntoTheSeconds) {
  CTimeCode tc;
  tc.SetFrameRate(100.0);
  tc.SetMicroseconds(990000);  // 990 ms / (1000 / 100) = 99 frames
  // 99 << 7 = 12672 = (1 << 13) + (35 << 7): the word reads 1 s 35 frames.
  EXPECT_EQ(tc.GetPackedTime(), Word(0, 0, 1, 35));
}

TEST(TimeCodePacked, SetReadsMaskedFieldsWithoutRangeCheck) {
  CTimeCode tc;
  EXPECT_EQ(tc.SetPackedTime(0xFFFFFFFFu), 0);
  // Hours 31, minutes 63, seconds 63, frames 63:
  // (31 x 3600 + 63 x 60 + 63) x 1000 + 63 x 1000 / 25 = 115443000 + 2520.
  EXPECT_EQ(tc.iTimeUs, 115445520000);
}

TEST(TimeCodePacked, SetIgnoresTheConstantAndTheSpareBits) {
  CTimeCode tc;
  tc.SetPackedTime(Word(1, 2, 3, 4) - 2u);
  const int64_t plain = tc.iTimeUs;
  EXPECT_EQ(plain, 3723160000);
  tc.SetPackedTime(Word(1, 2, 3, 4) - 2u + 0x7Fu + (1u << 19) + (1u << 31));
  EXPECT_EQ(tc.iTimeUs, plain);
}

TEST(TimeCodePacked, RoundTripsAtTheFieldLimitsAt25) {
  CTimeCode tc;
  for (uint32_t h : {0u, 1u, 23u})
    for (uint32_t m : {0u, 1u, 59u})
      for (uint32_t s : {0u, 1u, 59u})
        for (uint32_t f = 0; f < 25; ++f) {
          const uint32_t word = Word(h, m, s, f);
          tc.SetPackedTime(word);
          ASSERT_EQ(tc.iTimeUs, MsOf(h, m, s, f * 40) * 1000);
          ASSERT_EQ(tc.GetPackedTime(), word) << h << ":" << m << ":" << s << ":" << f;
        }
}

TEST(TimeCodePacked, EverySecondOfTheDayRoundTripsAt25And50) {
  for (double rate : {25.0, 50.0}) {
    CTimeCode tc;
    tc.SetFrameRate(rate);
    const uint32_t frames = static_cast<uint32_t>(rate);
    for (uint32_t sec = 0; sec < 86400; ++sec) {
      const uint32_t word = Word(sec / 3600, sec / 60 % 60, sec % 60, sec % frames);
      tc.SetPackedTime(word);
      ASSERT_EQ(tc.GetPackedTime(), word) << sec << " at " << rate;
    }
  }
}

TEST(TimeCodePacked, Frame29At2997ComesBackAs28) {
  CTimeCode tc;
  tc.SetFrameRate(29.97);
  tc.SetPackedTime(Word(0, 0, 0, 29));
  // 29 x 1000 / 29.97 = 967.63 -> 967 ms stored.
  EXPECT_EQ(tc.iTimeUs, 967000);
  // 967 / (1000 / 29.969999313 (the rate as float)) = 28.98 -> 28.
  EXPECT_EQ(tc.GetPackedTime(), Word(0, 0, 0, 28));
}

TEST(TimeCodeBcd, FreshValueClearsAllEightBytes) {
  const CTimeCode tc;
  EXPECT_EQ(BcdOf(tc), Expected(0, 0, 0, 0));
}

TEST(TimeCodeBcd, FieldsAt25) {
  CTimeCode tc;
  tc.SetMicroseconds(3723160000);
  EXPECT_EQ(BcdOf(tc), (Bytes{0x04, 0x03, 0x02, 0x01, 0, 0, 0, 0}));
  tc.SetMicroseconds(86399960000);  // 23:59:59 + 960 ms = 24 frames
  EXPECT_EQ(BcdOf(tc), (Bytes{0x24, 0x59, 0x59, 0x23, 0, 0, 0, 0}));
}

TEST(TimeCodeBcd, HoursWrapAtADay) {
  CTimeCode tc;
  tc.SetMicroseconds(90000000000);  // 25 h
  EXPECT_EQ(BcdOf(tc), (Bytes{0x00, 0x00, 0x00, 0x01, 0, 0, 0, 0}));
  EXPECT_EQ(tc.iTimeUs, 90000000000);
  tc.SetMicroseconds(90000000000 + 3723160000);  // 26:02:03:04
  EXPECT_EQ(BcdOf(tc), (Bytes{0x04, 0x03, 0x02, 0x02, 0, 0, 0, 0}));
  EXPECT_EQ(tc.iTimeUs, 93723160000);
}

TEST(TimeCodeBcd, NegativeSecondsGiveANegativeUnitsDigit) {
  CTimeCode tc;
  tc.SetMicroseconds(-1000000);
  // seconds -1: tens -1 / 10 = 0, units -1, byte 0 x 16 - 1 = 0xFF.
  EXPECT_EQ(BcdOf(tc), (Bytes{0x00, 0xFF, 0x00, 0x00, 0, 0, 0, 0}));
}

TEST(TimeCodeBcd, NullPointersAreRefused) {
  CTimeCode tc;
  tc.SetMicroseconds(1234);
  EXPECT_EQ(tc.GetBcdTime(nullptr), -1);
  EXPECT_EQ(tc.SetBcdTime(nullptr), -1);
  EXPECT_EQ(tc.iTimeUs, 1234);
}

TEST(TimeCodeBcd, SetReadsOnlyFourBytes) {
  CTimeCode tc;
  const uint8_t four[4] = {0x24, 0x59, 0x59, 0x23};
  EXPECT_EQ(tc.SetBcdTime(four), 0);
  EXPECT_EQ(tc.iTimeUs, MsOf(23, 59, 59, 24 * 40) * 1000);
}

TEST(TimeCodeBcd, TopBitGivesANegativeTensDigit) {
  CTimeCode tc;
  // 0x95 as a signed char is -107; -107 >> 4 = -7 (shift floors), low
  // nibble 5: -7 x 10 + 5 = -65 seconds.
  const uint8_t seconds[4] = {0x00, 0x95, 0x00, 0x00};
  EXPECT_EQ(tc.SetBcdTime(seconds), 0);
  EXPECT_EQ(tc.iTimeUs, -65000000);
  // 0xF0 is -16: -1 x 10 + 0 = -10 hours.
  const uint8_t hours[4] = {0x00, 0x00, 0x00, 0xF0};
  EXPECT_EQ(tc.SetBcdTime(hours), 0);
  EXPECT_EQ(tc.iTimeUs, -36000000000);
}

TEST(TimeCodeBcd, DigitsAboveNineAreTakenAtFaceValue) {
  CTimeCode tc;
  // 0x7F: tens 7, units 15 -> 85 frames at 25 = 85 x 40 = 3400 ms.
  const uint8_t bytes[4] = {0x7F, 0x00, 0x00, 0x00};
  EXPECT_EQ(tc.SetBcdTime(bytes), 0);
  EXPECT_EQ(tc.iTimeUs, 3400000);
}

TEST(TimeCodeBcd, RoundTripsAtTheFieldLimitsAt25) {
  CTimeCode tc;
  for (int32_t h : {0, 1, 23})
    for (int32_t m : {0, 1, 59})
      for (int32_t s : {0, 1, 59})
        for (int32_t f = 0; f < 25; ++f) {
          const Bytes bytes = Expected(h, m, s, f);
          ASSERT_EQ(tc.SetBcdTime(bytes.data()), 0);
          ASSERT_EQ(tc.iTimeUs, MsOf(h, m, s, f * 40) * 1000);
          ASSERT_EQ(BcdOf(tc), bytes) << h << ":" << m << ":" << s << ":" << f;
        }
}

TEST(TimeCodeBcd, EverySecondOfTheDayRoundTripsAt25) {
  CTimeCode tc;
  for (int32_t sec = 0; sec < 86400; ++sec) {
    const Bytes bytes = Expected(sec / 3600, sec / 60 % 60, sec % 60, sec % 25);
    tc.SetBcdTime(bytes.data());
    ASSERT_EQ(BcdOf(tc), bytes) << sec;
  }
}

TEST(TimeCodeSplitByMilliseconds, TheRateGoesThroughAFloat) {
  CTimeCode tc;
  tc.SetFrameRate(1000.0 / 30.0);  // 33.333333333333336
  tc.SetMicroseconds(30000);       // rest 30 ms
  // In double, 30 / (1000 / 33.3333...) is 1.0. The rate as float is
  // 33.33333206, so 30 / 30.0000011 = 0.99999996 -> float 0.99999994 -> 0.
  EXPECT_EQ(tc.GetPackedTime(), Word(0, 0, 0, 0));
  EXPECT_EQ(BcdOf(tc)[0], 0x00);
}

TEST(TimeCodeSplitByMilliseconds, TheFrameClampAddsPointOneAsAFloat) {
  CTimeCode tc;
  tc.SetFrameRate(-24.1000000005);
  // Rest 0 gives frames -0.0, above rate + 0.1 = -24.0000000005, so frames
  // become trunc(rate + 0.10000000149) = trunc(-23.999999999) = -23 (the
  // double 0.1 would give -24).
  // Packed: 2 + (-23 << 7) = 2 - 2944 modulo 2^32 = 0xFFFFF482.
  EXPECT_EQ(tc.GetPackedTime(), 0xFFFFF482u);
  // BCD: tens trunc(-23 / 10.0) = -2, units -23 + 20 = -3,
  // byte -2 x 16 - 3 = -35 = 0xDD.
  EXPECT_EQ(BcdOf(tc)[0], 0xDD);
}

TEST(TimeCodeSplitByMilliseconds, FramesFarOutOfRangeGiveDefinedBits) {
  CTimeCode tc;
  tc.SetFrameRate(1e12);
  tc.SetMicroseconds(999000);  // rest 999 ms
  // 999 / (1000 / 999999995904 (1e12 as float)) = 9.99e11 frames, which
  // saturates at 2^31 - 1 = 0x7FFFFFFF; so do its tens.
  // Packed: 2 + (0x7FFFFFFF << 7) modulo 2^32 = 2 + 0xFFFFFF80.
  EXPECT_EQ(tc.GetPackedTime(), 0xFFFFFF82u);
  // BCD modulo 2^32: units = 0x7FFFFFFF - 0x7FFFFFFF x 10 = 0x80000009,
  // byte = 0x7FFFFFFF x 16 + units = 0x7FFFFFF9, low byte 0xF9.
  std::array<uint8_t, 8> out{};
  ASSERT_EQ(tc.GetBcdTime(out.data()), 0);
  EXPECT_EQ(out[0], 0xF9);
}

}  // namespace
