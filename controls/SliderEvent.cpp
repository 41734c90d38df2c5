#include "controls/SliderEvent.h"

namespace tachyrun {

CSliderEvent::CSliderEvent(int type, int32_t controlId, int32_t position)
    : QEvent(static_cast<QEvent::Type>(type)), m_iControlId(controlId), m_iPosition(position) {}

bool CSliderEvent::RegisterTypes() {
  // Qt keeps the registry for the whole process: ask once.
  static const bool registered = QEvent::registerEventType(WM_SLIDER_MOVING) == WM_SLIDER_MOVING &&
                                 QEvent::registerEventType(WM_SLIDER_MOVED) == WM_SLIDER_MOVED;
  return registered;
}

}  // namespace tachyrun
