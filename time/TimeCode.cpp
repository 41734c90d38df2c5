#include "time/TimeCode.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <type_traits>

#include "time/TimeMath.h"
#include "time/TimeText.h"

using timemath::NarrowToI32;
using timemath::RoundTimeValue;
using timemath::SatAdd;
using timemath::SatMul;
using timemath::SatSub;
using timemath::TruncToI32;
using timemath::TruncToI64;

// The fields keep their order: callers and debuggers read them directly.
static_assert(std::is_standard_layout_v<CTimeCode>);
static_assert(offsetof(CTimeCode, iDay) == 0);
static_assert(offsetof(CTimeCode, iYear) == 4);
static_assert(offsetof(CTimeCode, iMonth) == 8);
static_assert(offsetof(CTimeCode, dFrameRate) == 16);
static_assert(offsetof(CTimeCode, iTimeUs) == 24);
static_assert(sizeof(CTimeCode) == 32);

namespace {

// 0.1 as a double bounds the frames test; 0.1 as a float, widened, is what
// the clamp adds. The two differ on purpose.
constexpr double kFrameSlack = 0.1;
constexpr double kFrameSlackAsFloat = 0.10000000149011612;

// Nominal rates round up from .6: 29.97 -> 30, 59.94 -> 60, 25 -> 25.
constexpr double kNominalRateTerm = 0.4;

constexpr int32_t kMsPerHour = 3600000;
constexpr int32_t kMsPerMinute = 60000;
constexpr int32_t kMsPerSecond = 1000;

int32_t WrapHours(int32_t hours) {
  return hours >= 24 ? hours % 24 : hours;
}

// Only the low byte is kept, so the digits are worked out modulo 2^32: a
// field far out of range (an odd frame rate) still gives a defined byte.
uint8_t ToBcd(int32_t value, int32_t tens) {
  const uint32_t t = static_cast<uint32_t>(tens);
  const uint32_t units = static_cast<uint32_t>(value) - t * 10u;
  return static_cast<uint8_t>(t * 16u + units);
}

// The tens nibble is taken as signed: a byte with its top bit set gives a
// negative tens digit.
int32_t FromBcd(uint8_t byte) {
  const int32_t v = static_cast<int8_t>(byte);
  return (v >> 4) * 10 + (v & 15);
}

}  // namespace

int32_t CTimeCode::SetMicroseconds(int64_t us) {
  iTimeUs = us;
  return 0;
}

int64_t CTimeCode::GetMicroseconds() const {
  return iTimeUs;
}

int32_t CTimeCode::SetMilliseconds(double ms) {
  iTimeUs = TruncToI64(ms * 1000.0);
  return 0;
}

int64_t CTimeCode::GetMilliseconds() const {
  return RoundTimeValue(static_cast<double>(iTimeUs) / 1000.0);
}

float CTimeCode::GetSeconds() const {
  return static_cast<float>(static_cast<double>(iTimeUs) / 1000.0 / 1000.0);
}

int32_t CTimeCode::SetFrames(double frames) {
  // The sign of the frames, not of the product, picks the rounding direction.
  const bool nonNegative = frames >= 0.0;
  const int64_t n = RoundTimeValue(frames);
  const double x = static_cast<double>(n) / dFrameRate * 1000.0 * 1000.0;
  iTimeUs = TruncToI64(nonNegative ? x + timemath::kRoundingTerm : x - timemath::kRoundingTerm);
  return 0;
}

int64_t CTimeCode::GetFrames() const {
  return RoundTimeValue(static_cast<double>(iTimeUs) / 1000.0 / 1000.0 * dFrameRate);
}

void CTimeCode::SetFrameRate(double rate) {
  dFrameRate = rate;
}

void CTimeCode::StoreFields(int64_t hours, int64_t minutes, int64_t seconds, float frames) {
  // Frames land on a whole millisecond, truncated.
  const int64_t whole = (hours * 3600 + minutes * 60 + seconds) * 1000;
  const int64_t ms = SatAdd(whole, TruncToI64(frames * 1000.0 / dFrameRate));
  iTimeUs = SatMul(ms, 1000);
}

int32_t CTimeCode::SetTime(int32_t hours, int32_t minutes, int32_t seconds, float frames) {
  int32_t status = 0;
  auto clampField = [&status](int32_t& field, int32_t max) {
    if (field > max || field < 0) {
      field = 0;
      status = -1;
    }
  };
  clampField(hours, 23);
  clampField(minutes, 59);
  clampField(seconds, 59);
  // Too many frames is reported but kept: the caller sees where it landed.
  if (static_cast<double>(frames) > dFrameRate + kFrameSlack) status = -1;
  if (frames < 0.0f) {
    frames = 0.0f;
    status = -1;
  }
  StoreFields(hours, minutes, seconds, frames);
  return status;
}

int32_t CTimeCode::SetDate(int32_t day, int32_t month, int32_t year) {
  int32_t status = 0;
  if (month > 12 || month < 1) {
    month = 1;
    status = -2;
  }
  if (day > 31) status = -2;
  if (day < 1) status = -2;
  if (day > 30 && (month == 11 || month == 4 || month == 6 || month == 9)) status = -2;
  if (day > 29 && month == 2) status = -2;
  if (year < 0) {
    year = 0;
    status = -2;
  }
  // The day is reported but stored as given; month and year are corrected.
  iDay = day;
  iYear = year;
  iMonth = month;
  return status;
}

int32_t CTimeCode::ParseTime(std::string text) {
  const timetext::TimeFields f = timetext::SplitTimeText(text);
  return SetTime(f.hours, f.minutes, f.seconds, static_cast<float>(f.frames));
}

int32_t CTimeCode::ParseDate(std::string text) {
  const timetext::DateFields f = timetext::SplitDateText(text);
  return SetDate(f.day, f.month, f.year);
}

CTimeCode::Fields CTimeCode::SplitByMilliseconds() const {
  const double ms = static_cast<double>(iTimeUs / 1000);
  Fields t{};
  t.hours = TruncToI32(ms / static_cast<double>(kMsPerHour));
  int32_t rest = TruncToI32(ms - t.hours * static_cast<double>(kMsPerHour));
  t.hours = WrapHours(t.hours);
  t.minutes = rest / kMsPerMinute;
  rest %= kMsPerMinute;
  t.seconds = rest / kMsPerSecond;
  rest %= kMsPerSecond;
  // The rate goes through a float on its way into the frame length.
  const double rateAsFloat = static_cast<float>(dFrameRate);
  float f = static_cast<float>(static_cast<float>(rest) / (1000.0 / rateAsFloat));
  if (static_cast<double>(f) > dFrameRate + kFrameSlack) {
    f = static_cast<float>(TruncToI32(dFrameRate + kFrameSlackAsFloat));
  }
  t.frameValue = f;
  t.frames = TruncToI32(f);
  return t;
}

CTimeCode::Fields CTimeCode::SplitByFrames() const {
  const double rate = TruncToI32(dFrameRate + kNominalRateTerm);
  const double frameUs = 1000000.0 / rate;
  // The rounding term is added whatever the sign: negative times floor below.
  const int64_t total = TruncToI64(static_cast<double>(iTimeUs) / frameUs + 0.499);
  Fields t{};
  t.hours = TruncToI32(static_cast<double>(total) / (3600.0 * rate));
  int32_t rest = NarrowToI32(SatSub(total, TruncToI64(t.hours * 3600.0 * rate)));
  if (rest < 0) rest = 0;
  t.hours = WrapHours(t.hours);
  t.minutes = TruncToI32(rest / (60.0 * rate));
  if (t.minutes >= 60) t.minutes = 0;
  rest = NarrowToI32(SatSub(rest, TruncToI64(t.minutes * 60.0 * rate)));
  t.seconds = TruncToI32(rest / rate);
  if (t.seconds >= 60) t.seconds = 0;
  rest = NarrowToI32(SatSub(rest, TruncToI64(t.seconds * rate)));
  if (rest < 0) rest = 0;
  float f = static_cast<float>(rest);
  if (TruncToI32(f) >= TruncToI32(rate)) f = 0.0f;
  if (t.hours < 0) t.hours = 0;
  if (t.minutes < 0) t.minutes = 0;
  if (t.seconds < 0) t.seconds = 0;
  if (f < 0.0f) f = 0.0f;
  t.frameValue = f;
  t.frames = TruncToI32(f);
  return t;
}

int32_t CTimeCode::FormatTime(std::string* out) const {
  if (out == nullptr) return -1;
  char text[kTimeTextCapacity];
  FormatTime(text);
  *out = text;
  return 0;
}

int32_t CTimeCode::FormatTime(char* out) const {
  if (out == nullptr) return -1;
  const Fields t = SplitByFrames();
  // Every field is bounded above (frames by int32), so the text fits the
  // documented capacity; format into room to spare, then copy what it is.
  char text[64];
  const int n = std::snprintf(text, sizeof text, "%02d:%02d:%02d:%02d", t.hours, t.minutes,
                              t.seconds, t.frames);
  std::memcpy(out, text, static_cast<std::size_t>(n) + 1);
  return 0;
}

int32_t CTimeCode::FormatDate(std::string& out) const {
  char text[64];
  std::snprintf(text, sizeof text, "%04d%02d%02d", iYear, iMonth, iDay);
  out = text;
  return 0;
}

uint32_t CTimeCode::GetPackedTime() const {
  const Fields t = SplitByMilliseconds();
  // Shifted and added, not masked: out-of-range fields spill into their
  // neighbours, as callers of the word have always seen.
  uint32_t word = 2;
  word += static_cast<uint32_t>(t.frames) << 7;
  word += static_cast<uint32_t>(t.seconds) << 13;
  word += static_cast<uint32_t>(t.minutes) << 20;
  word += static_cast<uint32_t>(t.hours) << 26;
  return word;
}

int32_t CTimeCode::SetPackedTime(uint32_t word) {
  const int64_t frames = (word >> 7) & 63;
  const int64_t seconds = (word >> 13) & 63;
  const int64_t minutes = (word >> 20) & 63;
  const int64_t hours = (word >> 26) & 31;
  StoreFields(hours, minutes, seconds, static_cast<float>(frames));
  return 0;
}

// A pointer that is not null must reach eight bytes here and four in
// SetBcdTime; unlike a fault handler, a bad one cannot be caught on this
// platform.
int32_t CTimeCode::GetBcdTime(uint8_t* out) const {
  const Fields t = SplitByMilliseconds();
  if (out == nullptr) return -1;
  std::memset(out, 0, 8);
  out[0] = ToBcd(t.frames, TruncToI32(t.frameValue / 10.0));
  out[1] = ToBcd(t.seconds, t.seconds / 10);
  out[2] = ToBcd(t.minutes, t.minutes / 10);
  out[3] = ToBcd(t.hours, t.hours / 10);
  return 0;
}

int32_t CTimeCode::SetBcdTime(const uint8_t* in) {
  if (in == nullptr) return -1;
  StoreFields(FromBcd(in[3]), FromBcd(in[2]), FromBcd(in[1]), static_cast<float>(FromBcd(in[0])));
  return 0;
}

int64_t FramesAtDefaultRate(double ms) {
  CTimeCode tc;
  tc.SetMilliseconds(ms);
  return tc.GetFrames();
}

int64_t MillisecondsAtDefaultRate(double frames) {
  CTimeCode tc;
  tc.SetFrames(frames);
  return tc.GetMilliseconds();
}
