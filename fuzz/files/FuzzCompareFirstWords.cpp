// CompareFirstWords and CompareNames on two arbitrary texts of any length,
// each in a buffer of exactly its own size.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "files/NameCompare.h"

namespace {
int Sign(int v) {
  return (v > 0) - (v < 0);
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const size_t split = size == 0 ? 0 : data[0] % (size + 1);
  std::vector<char> a(data, data + split);
  std::vector<char> b(data + split, data + size);
  a.push_back('\0');
  b.push_back('\0');
  CompareFirstWords(a.data(), b.data());
  CompareFirstWords(b.data(), a.data());
  if (CompareNames(a.data(), a.data()) != 0) std::abort();
  if (Sign(CompareNames(a.data(), b.data())) != -Sign(CompareNames(b.data(), a.data())))
    std::abort();
  return 0;
}
