#include "app/TestBitmap.h"

#include <QString>
#include <atomic>

namespace tachyrun {
namespace {
std::atomic<int> g_iLiveBitmaps{0};
}

CTestBitmap::CTestBitmap(QImage image) : m_Image(std::move(image)) {
  ++g_iLiveBitmaps;
}

CTestBitmap::~CTestBitmap() {
  --g_iLiveBitmaps;
}

CTestBitmap* CTestBitmap::FromFile(const char* szPath) {
  QImage image;
  if (szPath != nullptr && image.load(QString::fromLocal8Bit(szPath))) {
    image = image.convertToFormat(QImage::Format_ARGB32);
  }
  return new CTestBitmap(std::move(image));
}

uint32_t CTestBitmap::GetHeight() const {
  return m_Image.isNull() ? 0u : static_cast<uint32_t>(m_Image.height());
}

int CTestBitmap::LockBits(uint32_t dwMode, int32_t iFormat, BitmapData* pData) {
  if (pData == nullptr || m_Image.isNull() || iFormat != kPixelFormat32bppARGB ||
      dwMode != kImageLockRead)
    return -1;
  pData->Width = static_cast<uint32_t>(m_Image.width());
  pData->Height = static_cast<uint32_t>(m_Image.height());
  pData->Stride = static_cast<int32_t>(m_Image.bytesPerLine());
  pData->PixelFormat = iFormat;
  pData->Scan0 = const_cast<uchar*>(m_Image.constBits());  // read lock: never written
  return 0;
}

int CTestBitmap::UnlockBits(BitmapData* pData) {
  return (pData == nullptr || pData->Scan0 == nullptr) ? -1 : 0;
}

int CTestBitmap::LiveCount() {
  return g_iLiveBitmaps.load();
}

}  // namespace tachyrun
