#pragma once
// Splitting of time code and date text into their numeric fields. Both work
// on a bounded, always terminated copy, so text of any length and content
// is read without going past its end.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace timetext {

// Characters of the trimmed text that each parser reads; the rest is ignored.
inline constexpr std::size_t kTimeTextChars = 30;
inline constexpr std::size_t kDateTextChars = 299;  // a 300-byte buffer with its terminator

struct TimeFields {
  int32_t hours = 0;
  int32_t minutes = 0;
  int32_t seconds = 0;
  int32_t frames = 0;
};

struct DateFields {
  int32_t day = 0;
  int32_t month = 0;
  int32_t year = 0;
};

// White space (space, tab, line ends, vertical tab, form feed) off both ends.
std::string_view TrimSpace(std::string_view text);

// Decimal number at the start of `text` as atoi reads it (leading white
// space, a sign, digits); a value beyond int32 saturates at its limit.
int32_t ReadInteger(const char* text);

// Hours, minutes, seconds, frames, split at ":" or "."; fields not reached
// stay 0 and anything behind the fourth is ignored.
TimeFields SplitTimeText(std::string_view text);

// Day, month, year split at "/", "." or "-". A first field of four or more
// characters makes the order year, month, day.
DateFields SplitDateText(std::string_view text);

}  // namespace timetext
