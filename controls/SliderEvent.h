#pragma once
// The notification a bitmap slider posts to its parent: the event type is the
// message number, and the event carries the control id and a position.

#include <QEvent>
#include <cstdint>

namespace tachyrun {

// During a drag, each time the position changes.
inline constexpr int WM_SLIDER_MOVING = 10449;
// At button release and after every handled key.
inline constexpr int WM_SLIDER_MOVED = 10450;

class CSliderEvent : public QEvent {
 public:
  CSliderEvent(int type, int32_t controlId, int32_t position);

  int32_t ControlId() const { return m_iControlId; }
  int32_t Position() const { return m_iPosition; }

  // Reserves both numbers with Qt's event type registry, so that nobody else
  // in the process is handed them; true when both were still free.
  static bool RegisterTypes();

 private:
  int32_t m_iControlId;
  int32_t m_iPosition;
};

}  // namespace tachyrun
