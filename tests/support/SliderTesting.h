#pragma once
// Helpers of the bitmap slider's tests: a parent that records the slider
// events posted to it, solid test bitmaps registered under their own ids,
// and pixel reads of what a widget shows.

#include <QCoreApplication>
#include <QEvent>
#include <QImage>
#include <QWidget>
#include <cstdint>
#include <vector>

#include "controls/BitmapSlider.h"
#include "controls/SliderEvent.h"

namespace tachyrun::testing {

struct SliderNote {
  int iType;
  int32_t iControlId;
  int32_t iPosition;
  bool operator==(const SliderNote&) const = default;
};

inline SliderNote Moving(int32_t id, int32_t pos) {
  return {WM_SLIDER_MOVING, id, pos};
}
inline SliderNote Moved(int32_t id, int32_t pos) {
  return {WM_SLIDER_MOVED, id, pos};
}

inline std::ostream& operator<<(std::ostream& out, const SliderNote& note) {
  return out << (note.iType == WM_SLIDER_MOVING ? "MOVING(" : "MOVED(") << note.iControlId << ", "
             << note.iPosition << ")";
}

class CRecordingParent : public QWidget {
 public:
  std::vector<SliderNote> notes;

  // Delivers what was posted and hands back what arrived since the last call.
  std::vector<SliderNote> Deliver() {
    QCoreApplication::sendPostedEvents(this, 0);
    std::vector<SliderNote> arrived;
    arrived.swap(notes);
    return arrived;
  }

 protected:
  bool event(QEvent* event) override {
    const int type = static_cast<int>(event->type());
    if (type == WM_SLIDER_MOVING || type == WM_SLIDER_MOVED) {
      const auto* slider = static_cast<const CSliderEvent*>(event);
      notes.push_back({type, slider->ControlId(), slider->Position()});
      return true;
    }
    return QWidget::event(event);
  }
};

// Ids the tests register their bitmaps under, away from the resource ids.
inline constexpr uint32_t kTestChannel = 9001;
inline constexpr uint32_t kTestChannelActive = 9002;
inline constexpr uint32_t kTestThumb = 9003;
inline constexpr uint32_t kTestThumbActive = 9004;
inline constexpr uint32_t kTestMissing = 9099;

inline constexpr QRgb kGrey = 0xFF808080u;
inline constexpr QRgb kBlue = 0xFF2040C0u;
inline constexpr QRgb kRed = 0xFFE02020u;
inline constexpr QRgb kYellow = 0xFFF0E040u;
inline constexpr QRgb kMagenta = 0xFFFF00FFu;
inline constexpr QRgb kGreen = 0xFF30A030u;
inline constexpr QRgb kWhite = 0xFFFFFFFFu;
// Magenta as a Windows colour, 0x00BBGGRR.
inline constexpr COLORREF kMagentaRef = 0x00FF00FFu;

inline QImage Solid(int w, int h, QRgb colour) {
  QImage image(w, h, QImage::Format_RGB32);
  image.fill(colour);
  return image;
}

// A slider with the test bitmaps: channel w x h, thumb tw x th.
inline void Register(int w, int h, int tw, int th) {
  CBitmapSlider::RegisterBitmap(kTestChannel, Solid(w, h, kGrey));
  CBitmapSlider::RegisterBitmap(kTestChannelActive, Solid(w, h, kBlue));
  CBitmapSlider::RegisterBitmap(kTestThumb, Solid(tw, th, kRed));
  CBitmapSlider::RegisterBitmap(kTestThumbActive, Solid(tw, th, kYellow));
}

// Registers the test bitmaps and loads the plain channel and thumb.
inline void LoadTestBitmaps(CBitmapSlider& slider, int w, int h, int tw, int th) {
  Register(w, h, tw, th);
  slider.SetBitmapChannel(kTestChannel);
  slider.SetBitmapThumb(kTestThumb);
}

// What the widget shows, painted through its own paint event.
inline QImage Shown(QWidget& widget) {
  return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

}  // namespace tachyrun::testing
