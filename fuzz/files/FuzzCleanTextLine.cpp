// CleanTextLine on arbitrary bytes placed in a caller buffer of the
// documented 500 bytes (the input cut to fit).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "files/TextFields.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // On the heap so that a write past the 500 bytes is caught.
  std::unique_ptr<char[]> text(new char[kCleanLineBufferSize]);
  const size_t n = size < kCleanLineBufferSize - 1 ? size : kCleanLineBufferSize - 1;
  std::memcpy(text.get(), data, n);
  text[n] = '\0';
  const int32_t written = CleanTextLine(text.get());
  if (written < 0 || static_cast<size_t>(written) >= kCleanLineBufferSize) std::abort();
  if (std::strlen(text.get()) > static_cast<size_t>(written)) std::abort();
  return 0;
}
