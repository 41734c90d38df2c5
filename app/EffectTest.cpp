#include "app/EffectTest.h"

namespace tachyrun {

uint32_t CopyTestImage(CTestBitmap* pImage, uint8_t* pDst) {
  BitmapData data{};
  pImage->LockBits(kImageLockRead, kPixelFormat32bppARGB, &data);
  uint32_t dwBytes = 0;
  // A failed allocation leaves no buffer to copy into; the copy is skipped.
  if (data.Scan0 != nullptr && pDst != nullptr) {
    dwBytes = kEffectMaxBytes;
    // Unsigned on purpose: a negative stride reads as a huge block and keeps
    // the count at 720 x 576 x 4.
    const uint32_t dwImageBytes = static_cast<uint32_t>(data.Stride) * data.Height;
    if (dwBytes > dwImageBytes) dwBytes = dwImageBytes;
    std::memcpy(pDst, data.Scan0, dwBytes);
  }
  pImage->UnlockBits(&data);
  return dwBytes;
}

}  // namespace tachyrun
