#include "files/NameCompare.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "files/TextFields.h"

namespace {

constexpr size_t kNameBufferSize = 200;
constexpr int32_t kFirstFieldLimit = 150;

using NameBuffer = char[kNameBufferSize];

// work = the first 199 characters of `text`, upper-cased and trimmed.
void PrepareName(const char* text, NameBuffer& work) {
  if (text == nullptr) text = "";
  const size_t length = ::strnlen(text, sizeof work - 1);
  for (size_t i = 0; i < length; ++i) work[i] = UpperAscii(text[i]);
  work[length] = '\0';
  TrimBlanks(work);
}

void CutAtFirstBlank(NameBuffer& work) {
  char* blank = std::strchr(work, ' ');
  if (blank != nullptr) *blank = '\0';
}

}  // namespace

int CompareNames(const char* a, const char* b) {
  NameBuffer left;
  NameBuffer right;
  PrepareName(a, left);
  PrepareName(b, right);
  return std::strcmp(left, right);
}

int CompareFirstWords(const char* a, const char* b) {
  NameBuffer left;
  NameBuffer right;
  PrepareName(a, left);
  PrepareName(b, right);
  int32_t position = 0;
  NextCommaField(&position, kFirstFieldLimit, left, left);
  CutAtFirstBlank(left);
  CutAtFirstBlank(right);
  return std::strcmp(left, right);
}
