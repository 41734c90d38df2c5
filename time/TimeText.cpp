#include "time/TimeText.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace timetext {

namespace {

constexpr std::string_view kSpace = " \t\n\v\f\r";

// Copies at most `limit` characters into `work` (limit + 1 bytes) and
// terminates it; returns the count copied.
std::size_t CopyBounded(std::string_view text, char* work, std::size_t limit) {
  const std::size_t n = std::min(text.size(), limit);
  if (n > 0) std::memcpy(work, text.data(), n);  // an empty view may have no data
  work[n] = '\0';
  return n;
}

bool EndsTimeField(char c) {
  return c == ':' || c == '.' || c == '\0';
}
bool EndsDateField(char c) {
  return c == '/' || c == '.' || c == '-' || c == '\0';
}

}  // namespace

std::string_view TrimSpace(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kSpace);
  if (first == std::string_view::npos) return {};
  const std::size_t last = text.find_last_not_of(kSpace);
  return text.substr(first, last - first + 1);
}

int32_t ReadInteger(const char* text) {
  // strtol rather than atoi: defined for every value, including overflow.
  const long v = std::strtol(text, nullptr, 10);
  if (v > std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
  if (v < std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
  return static_cast<int32_t>(v);
}

TimeFields SplitTimeText(std::string_view text) {
  char work[kTimeTextChars + 1];
  const std::size_t n = CopyBounded(TrimSpace(text), work, kTimeTextChars);
  int32_t fields[4] = {0, 0, 0, 0};
  int count = 0;
  std::size_t start = 0;
  // The terminator ends the last field too; an embedded one ends the text.
  for (std::size_t i = 0; i <= n && count < 4; ++i) {
    const char c = work[i];
    if (!EndsTimeField(c)) continue;
    fields[count++] = ReadInteger(work + start);
    start = i + 1;
    if (c == '\0') break;
  }
  return TimeFields{fields[0], fields[1], fields[2], fields[3]};
}

DateFields SplitDateText(std::string_view text) {
  char work[kDateTextChars + 1];
  const std::size_t n = CopyBounded(TrimSpace(text), work, kDateTextChars);
  std::size_t ends[5];
  int count = 0;
  for (std::size_t i = 0; i <= n && count < 5; ++i) {
    const char c = work[i];
    if (!EndsDateField(c)) continue;
    work[i] = '\0';
    ends[count++] = i;
    if (c == '\0') break;
  }
  // A field that the text does not have reads as 0; SetDate then judges
  // the date (a missing day or month is reported, a missing year is year 0).
  const int32_t first = ReadInteger(work);
  const int32_t second = count >= 2 ? ReadInteger(work + ends[0] + 1) : 0;
  const int32_t third = count >= 3 ? ReadInteger(work + ends[1] + 1) : 0;
  if (ends[0] >= 4) return DateFields{third, second, first};
  return DateFields{first, second, third};
}

}  // namespace timetext
