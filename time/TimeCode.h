#pragma once
// CTimeCode: the one calculator between microseconds, milliseconds, frames and
// time code text. Callers make one on the stack, store a time in one unit and
// read it in another. A plain value: nothing allocated, nothing shared.
//
// There is no drop-frame arithmetic: text counts at the whole-number nominal
// rate (29.97 counts as 30), with every frame number used.

#include <cstddef>
#include <cstdint>
#include <string>

// The frame rate of every new time code, one constant for the whole process.
inline constexpr double dDefaultFrameRate = 25.0;

// Room that FormatTime(char*) needs at most: "hh:mm:ss:" and up to ten frame
// digits and the terminator. Rates up to 100 never need more than 12 bytes.
inline constexpr std::size_t kTimeTextCapacity = 21;

class CTimeCode {
 public:
  CTimeCode() = default;
  ~CTimeCode() = default;

  // Microseconds, stored and read as they are.
  int32_t SetMicroseconds(int64_t us);
  int64_t GetMicroseconds() const;

  // Milliseconds in: truncated to whole microseconds, no rounding term.
  // Milliseconds out: rounded by the 0.499 rule.
  int32_t SetMilliseconds(double ms);
  int64_t GetMilliseconds() const;

  // Seconds as float (computed in double, then narrowed).
  float GetSeconds() const;

  // Frames at dFrameRate, both ways rounded by the 0.499 rule.
  int32_t SetFrames(double frames);
  int64_t GetFrames() const;

  // No check: a rate of 0 gives what floating-point division gives.
  void SetFrameRate(double rate);

  // 0, or -1 for a field out of range. Out-of-range hours, minutes and
  // seconds become 0 and negative frames 0.0; frames above the rate are
  // reported but used as given. The value is stored in every case.
  int32_t SetTime(int32_t hours, int32_t minutes, int32_t seconds, float frames);

  // 0, or -2 for a bad date. Month and year are corrected, the day is stored
  // as given even when it is reported. No leap-year rule.
  int32_t SetDate(int32_t day, int32_t month, int32_t year);

  // "hh:mm:ss:ff", fields split by ":" or "."; result of SetTime.
  int32_t ParseTime(std::string text);
  // "dd/mm/yyyy" or "yyyy-mm-dd" ("/", "." and "-" alike); result of SetDate.
  int32_t ParseDate(std::string text);

  // Writes "hh:mm:ss:ff" at the nominal rate; -1 for a null output. The
  // buffer form needs kTimeTextCapacity bytes at most (12 at usual rates).
  int32_t FormatTime(std::string* out) const;
  int32_t FormatTime(char* out) const;
  // Writes "yyyymmdd"; always 0.
  int32_t FormatDate(std::string& out) const;

  // The 32-bit packed time code (frames bits 7-12, seconds 13-18, minutes
  // 20-25, hours 26-30, constant 2 in bits 0-6).
  uint32_t GetPackedTime() const;
  int32_t SetPackedTime(uint32_t word);

  // BCD frames, seconds, minutes, hours in bytes 0-3. GetBcdTime writes eight
  // bytes (4-7 zero), SetBcdTime reads four; -1 for a null pointer.
  int32_t GetBcdTime(uint8_t* out) const;
  int32_t SetBcdTime(const uint8_t* in);

  // The date and the time are independent: no operation on one touches the
  // other. Fields in their fixed order.
  int32_t iDay = 1;
  int32_t iYear = 1980;
  int32_t iMonth = 1;
  double dFrameRate = dDefaultFrameRate;
  int64_t iTimeUs = 0;

 private:
  struct Fields {
    int32_t hours;
    int32_t minutes;
    int32_t seconds;
    int32_t frames;
    float frameValue;  // the frames before truncation
  };
  // Time split by milliseconds, for the packed word and BCD.
  Fields SplitByMilliseconds() const;
  // Time split by frames at the nominal rate, for the text.
  Fields SplitByFrames() const;
  // Stores h:m:s plus frames turned into whole milliseconds.
  void StoreFields(int64_t hours, int64_t minutes, int64_t seconds, float frames);
};

// One value at the default rate stored in one unit and read in the other, the
// way every frame-bound edit of the library converts.
int64_t FramesAtDefaultRate(double ms);
int64_t MillisecondsAtDefaultRate(double frames);
