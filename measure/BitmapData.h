#pragma once
// What a locked bitmap hands out: the pixels, their row stride and size, and
// the codes a lock is asked with.

#include <cstdint>

namespace tachyrun {

struct BitmapData {
  uint32_t Width;
  uint32_t Height;
  int32_t Stride;
  int32_t PixelFormat;
  void* Scan0;
  uintptr_t Reserved;
};

inline constexpr int32_t kPixelFormat32bppARGB = 0x26200A;
inline constexpr uint32_t kImageLockRead = 1;

}  // namespace tachyrun
