// Loads a video mode record from arbitrary bytes and looks it up in the
// table; the texts of a loaded record need not be terminated.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "video/DeviceModeList.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static CDeviceModeList* table = [] {
    auto* list = new CDeviceModeList;
    list->BuildModeTable(0);
    return list;
  }();
  static FILE* sink = std::fopen("/dev/null", "wb");
  CDeviceMode mode;
  if (size == 0) {
    mode.Load(nullptr);
    return 0;
  }
  FILE* stream = fmemopen(const_cast<uint8_t*>(data), size, "rb");
  if (stream == nullptr) return 0;
  if (mode.Load(stream) == 0) {
    table->FindSame(&mode);
    table->FindByIds(mode.dwId0, mode.dwId1);
    table->FindByCode("PAL720x576f25p");
    if (sink != nullptr) mode.Save(sink);
  }
  std::fclose(stream);
  return 0;
}
