// Any bytes as time code text: parsing stores a value and returns a status,
// and the value formats into its bounded text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "time/TimeCode.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CTimeCode tc;
  const int32_t status = tc.ParseTime(std::string(reinterpret_cast<const char*>(data), size));
  if (status != 0 && status != -1) std::abort();
  char text[kTimeTextCapacity];
  if (tc.FormatTime(text) != 0 || std::strlen(text) >= kTimeTextCapacity) std::abort();
  uint8_t bcd[8];
  tc.GetBcdTime(bcd);
  tc.SetPackedTime(tc.GetPackedTime());
  return 0;
}
