// Loads a component with all its lists (levels, effects with key groups and
// their curves, markers) from arbitrary bytes, then saves it again. Memory
// stays bounded because a list stops adding default elements shortly after
// the stream ends, whatever its count field claims.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "timeline/Component.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static FILE* sink = std::fopen("/dev/null", "wb");
  CComponent component;
  if (size == 0) {
    component.Load(nullptr);
    return 0;
  }
  FILE* stream = fmemopen(const_cast<uint8_t*>(data), size, "rb");
  if (stream == nullptr) return 0;
  if (component.Load(stream) == 0) {
    component.InitDefaultLevels();
    component.GetSourceMaxLength();
    if (sink != nullptr) component.Save(sink);
  }
  std::fclose(stream);
  return 0;
}
