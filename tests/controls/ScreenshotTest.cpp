// Shows the slider demo on a X display of its own (Xvfb), drags the horizontal
// slider and presses keys on the others, and saves what the screen shows.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QListWidget>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QTest>

#include "controls/BitmapSlider.h"
#include "controls/demo/SliderDemo.h"

namespace tachyrun {
namespace {

TEST(SliderScreenshot, DemoIsSavedAsPng) {
  CSliderDemo demo;
  demo.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&demo));
  CBitmapSlider* horizontal = demo.Slider(CSliderDemo::kHorizontalId);
  const int y = horizontal->height() / 2;
  QTest::mousePress(horizontal, Qt::LeftButton, Qt::NoModifier, QPoint(140, y));
  QTest::mouseMove(horizontal, QPoint(150, y));
  QTest::mouseRelease(horizontal, Qt::LeftButton, Qt::NoModifier, QPoint(150, y));
  QTest::keyClick(demo.Slider(CSliderDemo::kVerticalId), Qt::Key_PageDown);
  demo.Slider(CSliderDemo::kTransparentId)->setFocus();
  QTest::keyClick(demo.Slider(CSliderDemo::kTransparentId), Qt::Key_Left);
  QTest::qWait(200);
  EXPECT_GE(demo.Log()->count(), 3);

  QPixmap shot;
  if (QGuiApplication::platformName() == "xcb") {
    shot = demo.screen()->grabWindow(demo.winId());
  } else {
    shot = demo.grab();
  }
  const QImage image = shot.toImage().convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(image.size(), demo.size());
  // The transparent slider shows the striped band through its keyed pixels.
  const CBitmapSlider* transparent = demo.Slider(CSliderDemo::kTransparentId);
  const QPoint corner = transparent->geometry().topLeft() + QPoint(100, 0);
  EXPECT_NE(image.pixel(corner), qRgb(255, 0, 255));
  ASSERT_TRUE(image.save(TACHYRUN_SCREENSHOT_PATH, "PNG"));
}

}  // namespace
}  // namespace tachyrun
