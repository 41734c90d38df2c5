// Range, position, geometry and notifications of the bitmap slider.
#include "controls/BitmapSlider.h"

#include <QCoreApplication>
#include <cmath>
#include <limits>

#include "controls/SliderEvent.h"

namespace tachyrun {

int32_t CBitmapSlider::Saturate(int64_t value) {
  if (value > std::numeric_limits<int32_t>::max()) return std::numeric_limits<int32_t>::max();
  if (value < std::numeric_limits<int32_t>::min()) return std::numeric_limits<int32_t>::min();
  return static_cast<int32_t>(value);
}

// A range or a track of no length divides 0 by 0: NaN becomes 0.
int32_t CBitmapSlider::TruncToInt32(double value) {
  if (std::isnan(value)) return 0;
  if (value >= static_cast<double>(std::numeric_limits<int32_t>::max())) {
    return std::numeric_limits<int32_t>::max();
  }
  if (value <= static_cast<double>(std::numeric_limits<int32_t>::min())) {
    return std::numeric_limits<int32_t>::min();
  }
  return static_cast<int32_t>(value);
}

CBitmapSlider::CBitmapSlider(QWidget* parent) : QWidget(parent) {
  CSliderEvent::RegisterTypes();
  // Tab and clicks bring the focus; Tab itself still walks the dialog, and
  // every other key reaches OnKeyDown.
  setFocusPolicy(Qt::StrongFocus);
  // No background of its own: what the bitmaps leave clear shows the parent.
  setAutoFillBackground(false);
}

CBitmapSlider::~CBitmapSlider() {
  OnDestroy();
}

void CBitmapSlider::SetRangeMax(int32_t max, bool redraw) {
  m_iMax = max;
  if (redraw) Invalidate();
}

void CBitmapSlider::SetRangeMin(int32_t min, bool redraw) {
  m_iMin = min;
  if (redraw) Invalidate();
}

void CBitmapSlider::SetRange(int32_t min, int32_t max, bool redraw) {
  SetRangeMin(min, false);
  SetRangeMax(max, redraw);
}

void CBitmapSlider::SetPos(int32_t pos) {
  m_iPos = pos;
  // Max first, then min: with a reversed range the minimum wins.
  if (m_iPos > m_iMax) m_iPos = m_iMax;
  if (m_iPos < m_iMin) m_iPos = m_iMin;
  Invalidate();
}

int32_t CBitmapSlider::SetPageSize(int32_t size) {
  const int32_t previous = m_iPage;
  m_iPage = size;
  return previous;
}

void CBitmapSlider::MoveSlider(int32_t x, int32_t y, int32_t cx, int32_t cy) {
  setGeometry(x, y, cx, cy);
  show();
  // A horizontal slider keeps the size of its channel bitmap, whatever its
  // window's new size; only a vertical one takes the new size.
  if (m_bVertical) {
    m_iWidth = cx;
    m_iHeight = cy;
  }
}

void CBitmapSlider::SetMargin(int32_t left, int32_t top, int32_t right, int32_t bottom) {
  SetMarginLeft(left);
  SetMarginTop(top);
  SetMarginRight(right);
  SetMarginBottom(bottom);
}

void CBitmapSlider::SetMarginLeft(int32_t margin) {
  m_iMarginLeft = margin;
}
void CBitmapSlider::SetMarginTop(int32_t margin) {
  m_iMarginTop = margin;
}
void CBitmapSlider::SetMarginRight(int32_t margin) {
  m_iMarginRight = margin;
}
void CBitmapSlider::SetMarginBottom(int32_t margin) {
  m_iMarginBottom = margin;
}

void CBitmapSlider::SetVertical(bool vertical) {
  m_bVertical = vertical ? 1 : 0;
}

void CBitmapSlider::Enable(bool enable) {
  m_bEnabled = enable ? 1 : 0;
  // A drag ends without a WM_SLIDER_MOVED.
  if (!m_bEnabled && m_bDragging) {
    m_bDragging = 0;
    releaseMouse();
  }
  Invalidate();
}

void CBitmapSlider::DrawFocusRect(bool draw, bool redraw) {
  m_bDrawFocusRect = draw ? 1 : 0;
  if (redraw) Invalidate();
}

// The thumb's centre runs between half a thumb inside each margin. The
// arithmetic is in double; 64-bit sums keep extreme margins from overflowing.
int32_t CBitmapSlider::Pos2Pixel(int32_t pos) const {
  const double fraction =
      (static_cast<double>(pos) - m_iMin) / (static_cast<double>(m_iMax) - m_iMin);
  if (m_bVertical) {
    const int64_t track = int64_t{m_iHeight} - m_iMarginTop - m_iMarginBottom - m_iThumbHeight;
    return Saturate(int64_t{m_iMarginTop} + m_iThumbHeight / 2 +
                    TruncToInt32(static_cast<double>(track) * fraction));
  }
  const int64_t track = int64_t{m_iWidth} - m_iMarginLeft - m_iMarginRight - m_iThumbWidth;
  return Saturate(int64_t{m_iMarginLeft} + TruncToInt32(static_cast<double>(track) * fraction) +
                  m_iThumbWidth / 2);
}

// No rounding term: a pixel mapped to a value and back can land a pixel lower.
int32_t CBitmapSlider::Pixel2Pos(int32_t pixel) const {
  double t = 0;
  if (m_bVertical) {
    t = (static_cast<double>(pixel) - m_iMarginTop - m_iThumbHeight / 2) /
        (static_cast<double>(m_iHeight) - m_iMarginTop - m_iMarginBottom - m_iThumbHeight);
  } else {
    t = (static_cast<double>(pixel) - m_iMarginLeft - m_iThumbWidth / 2) /
        (static_cast<double>(m_iWidth) - m_iMarginLeft - m_iMarginRight - m_iThumbWidth);
  }
  return TruncToInt32(m_iMin + t * (static_cast<double>(m_iMax) - m_iMin));
}

int32_t CBitmapSlider::GetDlgCtrlID() const {
  bool ok = false;
  const int id = objectName().toInt(&ok);
  return ok ? id : 0;
}

// Posted, never sent: the parent handles it after this handler has finished.
void CBitmapSlider::PostToParent(int type) const {
  if (parentWidget() == nullptr) return;
  QCoreApplication::postEvent(parentWidget(), new CSliderEvent(type, GetDlgCtrlID(), m_iPos));
}

void CBitmapSlider::OnDestroy() {
  for (QImage* bitmap :
       {&m_bmChannel, &m_bmChannelMask, &m_bmChannelActive, &m_bmChannelActiveMask, &m_bmThumb,
        &m_bmThumbMask, &m_bmThumbActive, &m_bmThumbActiveMask, &m_bmThumbBg}) {
    *bitmap = QImage();
  }
}

QSize CBitmapSlider::sizeHint() const {
  return QSize(m_iWidth, m_iHeight);
}

}  // namespace tachyrun
