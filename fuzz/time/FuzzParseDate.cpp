// Any bytes as date text: parsing stores a date and returns 0 or -2, and the
// date formats.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "time/TimeCode.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CTimeCode tc;
  const int32_t status = tc.ParseDate(std::string(reinterpret_cast<const char*>(data), size));
  if (status != 0 && status != -2) std::abort();
  if (tc.iMonth < 1 || tc.iMonth > 12 || tc.iYear < 0) std::abort();
  std::string text;
  tc.FormatDate(text);
  return 0;
}
