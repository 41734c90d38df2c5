// Any bytes as time code text: parsing stores a value and returns a status,
// and the value formats into its bounded text. The first eight bytes, taken
// as a frame rate and the next eight as microseconds, then run every
// conversion at an arbitrary rate and time.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "time/TimeCode.h"

namespace {

void CheckText(const CTimeCode& tc) {
  char text[kTimeTextCapacity];
  if (tc.FormatTime(text) != 0 || std::strlen(text) >= kTimeTextCapacity) std::abort();
}

void RunConversions(CTimeCode& tc) {
  CheckText(tc);
  uint8_t bcd[8];
  tc.GetBcdTime(bcd);
  tc.SetBcdTime(bcd);
  tc.SetPackedTime(tc.GetPackedTime());
  tc.SetFrames(static_cast<double>(tc.GetFrames()));
  tc.SetMilliseconds(static_cast<double>(tc.GetMilliseconds()));
  (void)tc.GetSeconds();
  CheckText(tc);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CTimeCode tc;
  const int32_t status = tc.ParseTime(text);
  if (status != 0 && status != -1) std::abort();
  RunConversions(tc);
  if (size >= sizeof(double)) {
    double rate;
    std::memcpy(&rate, data, sizeof rate);
    CTimeCode odd;
    odd.SetFrameRate(rate);
    const int32_t oddStatus = odd.ParseTime(text.substr(sizeof rate));
    if (oddStatus != 0 && oddStatus != -1) std::abort();
    RunConversions(odd);
    if (size >= sizeof(double) + sizeof(int64_t)) {
      int64_t us;
      std::memcpy(&us, data + sizeof rate, sizeof us);
      odd.SetMicroseconds(us);
      RunConversions(odd);
    }
  }
  return 0;
}
