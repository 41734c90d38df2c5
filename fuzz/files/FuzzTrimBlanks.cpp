// TrimBlanks on arbitrary bytes in a buffer of exactly the text's size: it
// works in place and must never grow the text or touch memory past it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "files/TextFields.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<char> text(data, data + size);
  text.push_back('\0');
  const size_t before = std::strlen(text.data());
  TrimBlanks(text.data());
  const size_t after = std::strlen(text.data());
  if (after > before || after >= kTrimBufferSize) std::abort();
  // Trimming a trimmed text again may still cut (the text ends at its first
  // carriage return), but never makes it longer.
  TrimBlanks(text.data());
  if (std::strlen(text.data()) > after) std::abort();
  return 0;
}
