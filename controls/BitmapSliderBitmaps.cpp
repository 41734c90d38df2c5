// Loading the slider's bitmaps and building their key-colour masks.
#include <map>

#include "controls/BitmapSlider.h"

namespace tachyrun {
namespace {

constexpr QImage::Format kColourFormat = QImage::Format_ARGB32_Premultiplied;
// GetPixel's answer outside the bitmap: it matches no pixel.
constexpr COLORREF kInvalidColour = 0xFFFFFFFFu;

std::map<uint32_t, QImage>& Registered() {
  static std::map<uint32_t, QImage> bitmaps;
  return bitmaps;
}

QRgb RgbOf(COLORREF colour) {
  return qRgb(static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
              static_cast<int>((colour >> 16) & 0xFF));
}

COLORREF ColourRefOf(QRgb rgb) {
  return static_cast<COLORREF>(qRed(rgb)) | (static_cast<COLORREF>(qGreen(rgb)) << 8) |
         (static_cast<COLORREF>(qBlue(rgb)) << 16);
}

COLORREF GetPixel(const QImage& bitmap, int32_t x, int32_t y) {
  if (!bitmap.valid(x, y)) return kInvalidColour;
  return ColourRefOf(bitmap.pixel(x, y));
}

}  // namespace

void CBitmapSlider::RegisterBitmap(uint32_t id, const QImage& image) {
  if (image.isNull()) {
    Registered().erase(id);
    return;
  }
  Registered()[id] = image;
}

bool CBitmapSlider::LoadBitmap(uint32_t id, QImage& bitmap) {
  const auto found = Registered().find(id);
  QImage image;
  if (found != Registered().end()) {
    image = found->second;
  } else {
    const QString base = QStringLiteral(":/bitmaps/%1").arg(id);
    image = QImage(base + QStringLiteral(".bmp"));
    if (image.isNull()) image = QImage(base + QStringLiteral(".png"));
  }
  if (image.isNull()) return false;
  // Bitmaps are opaque: any alpha of the file is dropped.
  bitmap = image.convertToFormat(QImage::Format_RGB32).convertToFormat(kColourFormat);
  return true;
}

void CBitmapSlider::PrepareMask(QImage& source, QImage& mask, COLORREF colour, int32_t pixelX,
                                int32_t pixelY) {
  mask = QImage(source.size(), QImage::Format_Mono);
  if (mask.isNull()) return;
  // Index 1 is the key colour. Drawn onto a target, the mask keeps the
  // target where it is 1 and clears it where it is 0.
  mask.setColorTable({qRgba(0, 0, 0, 0), qRgba(255, 255, 255, 255)});
  mask.fill(0);
  const COLORREF key = colour == kKeyFromPixel ? GetPixel(source, pixelX, pixelY) : colour;
  if (key == kInvalidColour) return;
  const QRgb keyRgb = RgbOf(key);
  for (int y = 0; y < source.height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(source.scanLine(y));
    for (int x = 0; x < source.width(); ++x) {
      if ((row[x] | 0xFF000000u) != keyRgb) continue;
      mask.setPixel(x, y, 1);
      row[x] = 0;  // black, and clear: ORed onto a target it adds nothing
    }
  }
}

bool CBitmapSlider::LoadBitmapPair(uint32_t id, uint32_t activeId, bool transparent,
                                   COLORREF colour, int32_t pixelX, int32_t pixelY, QImage& bitmap,
                                   QImage& mask, QImage& active, QImage& activeMask,
                                   int32_t& bActive) {
  bitmap = QImage();
  if (!LoadBitmap(id, bitmap)) return false;
  if (transparent) PrepareMask(bitmap, mask, colour, pixelX, pixelY);
  if (activeId == 0) {
    bActive = 0;
    return true;
  }
  active = QImage();
  if (!LoadBitmap(activeId, active)) {
    // Without its active version the plain bitmap goes too.
    bitmap = QImage();
    if (transparent) mask = QImage();
    return false;
  }
  if (transparent) PrepareMask(active, activeMask, colour, pixelX, pixelY);
  bActive = 1;
  return true;
}

bool CBitmapSlider::SetBitmapChannel(uint32_t channelId, uint32_t activeId, bool transparent,
                                     COLORREF colour, int32_t pixelX, int32_t pixelY) {
  if (channelId == 0) {
    m_bChannelLoaded = 0;
    m_bmChannel = m_bmChannelMask = m_bmChannelActive = m_bmChannelActiveMask = QImage();
    return true;
  }
  if (!LoadBitmapPair(channelId, activeId, transparent, colour, pixelX, pixelY, m_bmChannel,
                      m_bmChannelMask, m_bmChannelActive, m_bmChannelActiveMask,
                      m_bChannelActive)) {
    return false;
  }
  m_iWidth = m_iChannelWidth = m_bmChannel.width();
  m_iHeight = m_iChannelHeight = m_bmChannel.height();
  resize(m_iWidth, m_iHeight);  // the size, not the place
  m_rcClient = rect();
  m_bTransparentChannel = transparent ? 1 : 0;
  m_bChannelLoaded = 1;
  return true;
}

bool CBitmapSlider::SetBitmapThumb(uint32_t thumbId, uint32_t activeId, bool transparent,
                                   COLORREF colour, int32_t pixelX, int32_t pixelY) {
  if (thumbId == 0) {
    m_bThumbLoaded = 0;
    m_bmThumb = m_bmThumbMask = m_bmThumbActive = m_bmThumbActiveMask = m_bmThumbBg = QImage();
    return true;
  }
  if (!LoadBitmapPair(thumbId, activeId, transparent, colour, pixelX, pixelY, m_bmThumb,
                      m_bmThumbMask, m_bmThumbActive, m_bmThumbActiveMask, m_bThumbActive)) {
    return false;
  }
  m_iThumbWidth = m_bmThumb.width();
  m_iThumbHeight = m_bmThumb.height();
  if (!m_bChannelLoaded) {
    m_rcClient = rect();
    m_iWidth = m_rcClient.width();
    m_iHeight = m_rcClient.height();
  }
  m_bTransparentThumb = transparent ? 1 : 0;
  m_bThumbLoaded = 1;
  return true;
}

}  // namespace tachyrun
