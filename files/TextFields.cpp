#include "files/TextFields.h"

#include <cstring>

#include "files/PathParts.h"

namespace {

constexpr char kCarriageReturn = 13;
constexpr char kLineFeed = 10;
constexpr char kTab = 9;
constexpr unsigned char kFormatMark = 0xA7;
constexpr int kTabWidth = 4;

bool IsBoxLine(char c) {
  return static_cast<unsigned char>(c) == kBoxLine;
}

bool IsTrailingBlank(char c) {
  return c == ' ' || c == kCarriageReturn || c == kLineFeed || IsBoxLine(c);
}

bool IsLeadingBlank(char c) {
  return c == ' ' || c == kTab || IsBoxLine(c);
}

bool IsFieldEnd(char c) {
  return c == '\0' || c == kLineFeed || c == kCarriageReturn || c == ',';
}

// Ends `work` at its first carriage return or 0xB3 at index 1 or above.
void CutAtLineEnd(char* work, ptrdiff_t length) {
  for (ptrdiff_t i = length - 1; i >= 1; --i) {
    if (work[i] == kCarriageReturn || IsBoxLine(work[i])) work[i] = '\0';
  }
}

// Ends `work` behind its last non-blank at index 1 or above, if any.
void CutTrailingBlanks(char* work) {
  for (ptrdiff_t i = static_cast<ptrdiff_t>(std::strlen(work)) - 1; i >= 1; --i) {
    if (!IsTrailingBlank(work[i])) {
      work[i + 1] = '\0';
      return;
    }
  }
}

// Only a position inside the text, or at its terminator, is read from; one at
// or past the limit reads nothing.
bool IsInsideText(const char* text, int32_t position, int32_t limit) {
  if (position < 0) return false;
  if (position >= limit) return true;
  return ::strnlen(text, static_cast<size_t>(position)) == static_cast<size_t>(position);
}

}  // namespace

char UpperAscii(char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

void UpperCopy(char* out, const char* text) {
  if (out == nullptr || text == nullptr) return;
  CopyPathText(out, text);
  for (char* p = out; *p != '\0'; ++p) *p = UpperAscii(*p);
}

void TrimBlanks(char* text) {
  if (text == nullptr || text[0] == '\0') return;
  char work[kTrimBufferSize];
  const size_t length = ::strnlen(text, sizeof work - 1);
  std::memcpy(work, text, length);
  work[length] = '\0';

  CutAtLineEnd(work, static_cast<ptrdiff_t>(length));
  CutTrailingBlanks(work);
  const char* start = work;
  while (IsLeadingBlank(*start)) ++start;
  std::memcpy(text, start, std::strlen(start) + 1);
}

int32_t CleanTextLine(char* text) {
  if (text == nullptr) return 0;
  char work[kCleanLineBufferSize];
  const size_t room = sizeof work - 1;
  size_t written = 0;
  const size_t length = std::strlen(text);
  for (size_t i = 0; i < length && written < room; ++i) {
    if (text[i] == kCarriageReturn || text[i] == kLineFeed) text[i] = '\0';
    const char c = text[i];
    if (c == kTab) {
      for (int k = 0; k < kTabWidth && written < room; ++k) work[written++] = ' ';
    } else if (static_cast<unsigned char>(c) == kFormatMark) {
      ++i;  // the mark's second byte goes with it
    } else if (c != '|') {
      work[written++] = c;  // line-break terminators too: the line ends there
    }
  }
  work[written] = '\0';
  std::memcpy(text, work, std::strlen(work) + 1);
  return static_cast<int32_t>(written);
}

int32_t NextCommaField(int32_t* position, int32_t limit, char* out, const char* text) {
  if (out == nullptr) return 0;
  if (position == nullptr || text == nullptr || !IsInsideText(text, *position, limit)) {
    out[0] = '\0';
    return 0;
  }
  int32_t pos = *position;
  int32_t count = 0;
  while (pos < limit && !IsFieldEnd(text[pos])) out[count++] = text[pos++];
  if (pos < limit && text[pos] == ',') ++pos;
  *position = pos;
  out[count] = '\0';
  TrimBlanks(out);
  return count;
}
