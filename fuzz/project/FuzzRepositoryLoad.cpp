// Loads a repository from arbitrary bytes, copies it, renews its ids and
// saves it again. Component counts are bounded by the bytes behind them.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "project/Repository.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static FILE* sink = std::fopen("/dev/null", "wb");
  CRepository repository;
  if (size == 0) {
    repository.Load(nullptr);
    return 0;
  }
  FILE* stream = fmemopen(const_cast<uint8_t*>(data), size, "rb");
  if (stream == nullptr) return 0;
  if (repository.Load(stream) == 0) {
    repository.AcceptsKind(1);
    CRepository copy;
    copy.CopyFrom(repository);
    copy.RenewIds();
    copy.GetComponents(&repository.components);
    if (sink != nullptr) copy.Save(sink);
  }
  std::fclose(stream);
  return 0;
}
