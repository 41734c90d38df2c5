#include "measure/EffectRun.h"

namespace tachyrun {

uint32_t CopyLockedPixels(const BitmapData& data, uint8_t* pDst) {
  // A failed allocation leaves no buffer to copy into; the copy is skipped.
  if (data.Scan0 == nullptr || pDst == nullptr) return 0;
  uint32_t dwBytes = kEffectMaxBytes;
  // Unsigned on purpose: a negative stride reads as a huge block and keeps
  // the count at 720 x 576 x 4.
  const uint32_t dwImageBytes = static_cast<uint32_t>(data.Stride) * data.Height;
  if (dwBytes > dwImageBytes) dwBytes = dwImageBytes;
  std::memcpy(pDst, data.Scan0, dwBytes);
  return dwBytes;
}

}  // namespace tachyrun
