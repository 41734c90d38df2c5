// NextCommaField walked over arbitrary text with a limit taken from the
// input, into an output buffer of exactly limit + 1 bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "files/TextFields.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const int32_t limit = static_cast<int32_t>(((data[0] << 8) | data[1]) % 400) - 20;
  std::vector<char> text(data + 2, data + size);
  text.push_back('\0');
  const size_t outSize = limit > 0 ? static_cast<size_t>(limit) + 1 : 1;
  std::unique_ptr<char[]> out(new char[outSize]);

  int32_t position = 0;
  // Each call either moves on or stays put for good; a handful past the
  // text's length proves the walk ends.
  for (size_t calls = 0; calls <= text.size() + 2; ++calls) {
    const int32_t before = position;
    const int32_t copied = NextCommaField(&position, limit, out.get(), text.data());
    if (copied < 0 || position < before) std::abort();
    if (limit > 0 && copied > limit - before) std::abort();
    if (std::strlen(out.get()) > static_cast<size_t>(copied)) std::abort();
    if (position == before) break;
  }
  return 0;
}
