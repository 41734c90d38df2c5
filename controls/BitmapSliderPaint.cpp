// Painting of the bitmap slider: channel, saved background, thumb and focus
// rectangle, all through a CMemDC.
#include <QPainter>
#include <algorithm>

#include "controls/BitmapSlider.h"
#include "controls/MemDC.h"
#include "controls/RasterOps.h"

namespace tachyrun {
namespace {

// 0.499 as a float, widened to double: the rounding term of the stretched
// channel's source rectangle.
constexpr double kStretchRound = static_cast<double>(0.499f);

// Keeps painting coordinates where Qt's int rectangles can't overflow; a
// coordinate this far out lies outside every image anyway.
int DrawCoord(int64_t value) {
  constexpr int64_t kLimit = int64_t{1} << 28;
  return static_cast<int>(std::clamp(value, -kLimit, kLimit));
}

}  // namespace

void CBitmapSlider::paintEvent(QPaintEvent*) {
  OnPaint();
}

// Nothing erases the background first: the buffer starts clear and every
// pixel the bitmaps leave clear shows the parent.
void CBitmapSlider::OnPaint() {
  QPainter paintDC(this);
  m_rcClient = rect();
  CMemDC memDC(&paintDC, &m_rcClient);
  QPainter& dc = *memDC;
  if (!dc.isActive()) return;  // no area to paint

  // An opaque channel paints over the old focus rectangle anyway.
  if (m_bFocusRectShown && (m_bTransparentChannel || !m_bChannelLoaded)) {
    InvertFocusRect(dc, m_rcClient);
    m_bFocusRectShown = 0;
  }
  const int32_t pixel = Pos2Pixel(m_iPos);
  if (m_bChannelLoaded) DrawChannel(dc, pixel);
  if (m_iThumbBgX != -1) {
    BitBlt(dc, m_iThumbBgX, m_iThumbBgY, m_iThumbWidth, m_iThumbHeight, m_bmThumbBg, 0, 0,
           RasterOp::kCopy);
    m_iThumbBgX = -1;
  }
  if (m_bThumbLoaded && m_bEnabled) DrawThumb(dc, pixel);
  if (m_bDrawFocusRect && m_bFocused && m_bEnabled) {
    InvertFocusRect(dc, m_rcClient);
    m_bFocusRectShown = 1;
  }
}

// The active channel shows from the start of the track up to the thumb. Each
// half is drawn with the other half's mask: that crossing is the control's.
void CBitmapSlider::DrawChannel(QPainter& dc, int32_t pixel) {
  const bool transparent = m_bTransparentChannel != 0;
  if (!m_bChannelActive || !m_bEnabled) {
    DrawBitmap(dc, 0, 0, m_iWidth, m_iHeight, m_bmChannel, 0, 0, m_bmChannelMask, transparent);
    return;
  }
  const int p = DrawCoord(pixel);
  if (m_bVertical) {
    const int rest = DrawCoord(int64_t{m_iHeight} - pixel);
    DrawBitmapStretched(dc, 0, p, m_iWidth, rest, m_bmChannel, 0, p, m_bmChannelActiveMask,
                        transparent);
    DrawBitmapStretched(dc, 0, 0, m_iWidth, p, m_bmChannelActive, 0, 0, m_bmChannelMask,
                        transparent);
    return;
  }
  const int rest = DrawCoord(int64_t{m_iWidth} - pixel);
  DrawBitmapStretched(dc, p, 0, rest, m_iHeight, m_bmChannel, p, 0, m_bmChannelActiveMask,
                      transparent);
  DrawBitmapStretched(dc, 0, 0, p, m_iHeight, m_bmChannelActive, 0, 0, m_bmChannelMask,
                      transparent);
}

// Over a transparent or missing channel the background under the thumb is
// kept, to be put back by the next paint. The plain thumb's mask serves the
// active thumb too.
void CBitmapSlider::DrawThumb(QPainter& dc, int32_t pixel) {
  const QImage& thumb = m_bThumbActive && m_bDragging ? m_bmThumbActive : m_bmThumb;
  const int x = m_bVertical ? m_iMarginLeft : DrawCoord(int64_t{pixel} - m_iThumbWidth / 2);
  const int y = m_bVertical ? DrawCoord(int64_t{pixel} - m_iThumbHeight / 2) : m_iMarginTop;
  if (m_bTransparentChannel || !m_bChannelLoaded) {
    m_bmThumbBg = CopyArea(dc, QRect(x, y, m_iThumbWidth, m_iThumbHeight));
    m_iThumbBgX = x;
    m_iThumbBgY = y;
  }
  DrawBitmap(dc, x, y, m_iThumbWidth, m_iThumbHeight, thumb, 0, 0, m_bmThumbMask,
             m_bTransparentThumb != 0);
}

void CBitmapSlider::DrawTransparentBitmap(QPainter& dest, int x, int y, int w, int h,
                                          const QImage& source, int srcX, int srcY,
                                          const QImage& mask) {
  BitBlt(dest, x, y, w, h, mask, srcX, srcY, RasterOp::kAnd);
  BitBlt(dest, x, y, w, h, source, srcX, srcY, RasterOp::kPaint);
}

void CBitmapSlider::DrawBitmap(QPainter& dest, int x, int y, int w, int h, const QImage& source,
                               int srcX, int srcY, const QImage& mask, bool transparent) {
  if (transparent) {
    DrawTransparentBitmap(dest, x, y, w, h, source, srcX, srcY, mask);
    return;
  }
  BitBlt(dest, x, y, w, h, source, srcX, srcY, RasterOp::kCopy);
}

// A piece of the control mapped onto the channel bitmap. The source corner
// comes from the destination corner; a transparent bitmap isn't stretched.
void CBitmapSlider::DrawBitmapStretched(QPainter& dest, int x, int y, int w, int h,
                                        const QImage& source, int srcX, int srcY,
                                        const QImage& mask, bool transparent) {
  if (transparent) {
    DrawTransparentBitmap(dest, x, y, w, h, source, srcX, srcY, mask);
    return;
  }
  const float rx = static_cast<float>(m_iChannelWidth) / static_cast<float>(m_iWidth);
  const float ry = static_cast<float>(m_iChannelHeight) / static_cast<float>(m_iHeight);
  const auto scaled = [](int value, float ratio) {
    return TruncToInt32(static_cast<double>(static_cast<float>(value) * ratio) + kStretchRound);
  };
  StretchBlt(dest, QRect(x, y, w, h), source,
             QRect(scaled(x, rx), scaled(y, ry), scaled(w, rx), scaled(h, ry)));
}

}  // namespace tachyrun
