#pragma once
// The bitmap of the effect test: a file read into 32-bit ARGB (B,G,R,A in
// memory, rows top-down). Loading never fails outright: a file that can't be
// read gives a bitmap in a failed state, with height 0 and no pixels to lock.

#include <QImage>
#include <cstdint>

#include "measure/BitmapData.h"

namespace tachyrun {

class CTestBitmap {
 public:
  // Always a bitmap, failed when the file can't be read as an image.
  static CTestBitmap* FromFile(const char* szPath);
  ~CTestBitmap();
  CTestBitmap(const CTestBitmap&) = delete;
  CTestBitmap& operator=(const CTestBitmap&) = delete;

  uint32_t GetHeight() const;
  // 0 and the whole picture in `data` on success; non-zero with `data`
  // untouched when the bitmap failed to load or the format isn't 32bpp ARGB.
  int LockBits(uint32_t dwMode, int32_t iFormat, BitmapData* pData);
  int UnlockBits(BitmapData* pData);

  // Bitmaps alive in the process; lets callers see that one was deleted.
  static int LiveCount();

 private:
  explicit CTestBitmap(QImage image);
  QImage m_Image;  // null when the file couldn't be read
};

}  // namespace tachyrun
