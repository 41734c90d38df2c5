#pragma once
// The window of tachyrun-slider-demo: a horizontal, a vertical and a
// transparent bitmap slider, and the list of notifications they post.

#include <QWidget>
#include <cstdint>

class QListWidget;
class QLabel;

namespace tachyrun {

class CBitmapSlider;

class CSliderDemo : public QWidget {
 public:
  static constexpr int32_t kHorizontalId = 1001;
  static constexpr int32_t kVerticalId = 1002;
  static constexpr int32_t kTransparentId = 1003;
  // The list keeps this many lines, newest first.
  static constexpr int kLogLines = 200;

  explicit CSliderDemo(QWidget* parent = nullptr);

  CBitmapSlider* Slider(int32_t id) const;
  QListWidget* Log() const { return m_pLog; }
  // The band under the transparent slider, in this window's coordinates.
  QRect PatternRect() const;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  CBitmapSlider* AddSlider(int32_t id, int x, int y);
  void SetAllEnabled(bool enabled);
  void ShowPositions();

  CBitmapSlider* m_pHorizontal = nullptr;
  CBitmapSlider* m_pVertical = nullptr;
  CBitmapSlider* m_pTransparent = nullptr;
  QListWidget* m_pLog = nullptr;
  QLabel* m_pPositions = nullptr;
};

}  // namespace tachyrun
