// Mouse, keyboard and focus of the bitmap slider.
#include <QKeyEvent>
#include <QMouseEvent>
#include <cstdlib>

#include "controls/BitmapSlider.h"
#include "controls/SliderEvent.h"

namespace tachyrun {
namespace {

// The Windows virtual-key code of a Qt key, for the keys the slider handles;
// 0 for every other key.
uint32_t VirtualKeyOf(int key) {
  switch (key) {
    case Qt::Key_PageUp:
      return CBitmapSlider::VK_PRIOR;
    case Qt::Key_PageDown:
      return CBitmapSlider::VK_NEXT;
    case Qt::Key_End:
      return CBitmapSlider::VK_END;
    case Qt::Key_Home:
      return CBitmapSlider::VK_HOME;
    case Qt::Key_Left:
      return CBitmapSlider::VK_LEFT;
    case Qt::Key_Up:
      return CBitmapSlider::VK_UP;
    case Qt::Key_Right:
      return CBitmapSlider::VK_RIGHT;
    case Qt::Key_Down:
      return CBitmapSlider::VK_DOWN;
    default:
      return 0;
  }
}

}  // namespace

void CBitmapSlider::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    QWidget::mousePressEvent(event);
    return;
  }
  OnLButtonDown(0, event->position().toPoint());
  event->accept();
}

void CBitmapSlider::mouseMoveEvent(QMouseEvent* event) {
  OnMouseMove(0, event->position().toPoint());
  event->accept();
}

void CBitmapSlider::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    QWidget::mouseReleaseEvent(event);
    return;
  }
  OnLButtonUp(0, event->position().toPoint());
  event->accept();
}

void CBitmapSlider::keyPressEvent(QKeyEvent* event) {
  const uint32_t key = VirtualKeyOf(event->key());
  const auto repeat = static_cast<uint32_t>(event->isAutoRepeat() ? 1 : 0);
  if (key != 0 && OnKeyDown(key, repeat, 0)) {
    event->accept();
    return;
  }
  QWidget::keyPressEvent(event);  // the parent's turn: Escape, Enter...
}

void CBitmapSlider::focusInEvent(QFocusEvent* event) {
  OnSetFocus();
  QWidget::focusInEvent(event);
}

void CBitmapSlider::focusOutEvent(QFocusEvent* event) {
  OnKillFocus();
  QWidget::focusOutEvent(event);
}

// Within half a thumb of the thumb's centre the grab keeps its offset, so the
// thumb doesn't jump; elsewhere the thumb's centre jumps under the pointer.
void CBitmapSlider::OnLButtonDown(uint32_t flags, QPoint point) {
  if (!m_bEnabled) return;
  grabMouse();
  setFocus(Qt::MouseFocusReason);
  m_bDragging = 1;
  const int64_t along = m_bVertical ? point.y() : point.x();
  const int64_t half = (m_bVertical ? m_iThumbHeight : m_iThumbWidth) / 2;
  const int64_t fromCentre = along - Pos2Pixel(m_iPos);
  m_iMouseOffset = std::llabs(fromCentre) <= half ? Saturate(fromCentre) : 0;
  OnMouseMove(flags, point);
  Invalidate();
}

void CBitmapSlider::OnMouseMove(uint32_t, QPoint point) {
  if (!m_bDragging || !m_bEnabled) return;
  int64_t pixel = 0;
  if (m_bVertical) {
    // Upper limit first: in a control too small for its thumb the top wins.
    pixel = int64_t{point.y()} - m_iMouseOffset;
    const int64_t last = int64_t{m_iHeight} - m_iMarginBottom - m_iThumbHeight / 2;
    const int64_t first = int64_t{m_iThumbHeight} / 2 + m_iMarginTop;
    if (pixel > last) pixel = last;
    if (pixel < first) pixel = first;
  } else {
    // Lower limit first: in a control too small for its thumb the right end wins.
    pixel = int64_t{point.x()} - m_iMouseOffset;
    const int64_t first = int64_t{m_iThumbWidth} / 2 + m_iMarginLeft;
    const int64_t last = int64_t{m_iWidth} - m_iMarginRight - m_iThumbWidth / 2;
    if (pixel < first) pixel = first;
    if (pixel > last) pixel = last;
  }
  // Pixels, not values: a value mapped back can land a pixel lower.
  if (Pos2Pixel(m_iPos) != pixel) {
    SetPos(Pixel2Pos(Saturate(pixel)));
    PostToParent(WM_SLIDER_MOVING);
  }
}

void CBitmapSlider::OnLButtonUp(uint32_t, QPoint) {
  if (!m_bEnabled) return;
  releaseMouse();
  m_bDragging = 0;
  Invalidate();
  PostToParent(WM_SLIDER_MOVED);
}

// WM_SLIDER_MOVED follows every handled key, whether the position moved or not.
bool CBitmapSlider::OnKeyDown(uint32_t key, uint32_t, uint32_t) {
  if (!m_bEnabled) return false;
  int64_t pos = m_iPos;
  switch (key) {
    case VK_PRIOR:
      pos -= m_iPage;
      break;
    case VK_NEXT:
      pos += m_iPage;
      break;
    case VK_END:
      pos = m_iMax;
      break;
    case VK_HOME:
      pos = m_iMin;
      break;
    case VK_LEFT:
    case VK_UP:
      pos -= 1;
      break;
    case VK_RIGHT:
    case VK_DOWN:
      pos += 1;
      break;
    default:
      return false;
  }
  SetPos(Saturate(pos));
  PostToParent(WM_SLIDER_MOVED);
  return true;
}

void CBitmapSlider::OnSetFocus() {
  m_bFocused = 1;
  Invalidate();
}

void CBitmapSlider::OnKillFocus() {
  m_bFocused = 0;
  Invalidate();
}

}  // namespace tachyrun
