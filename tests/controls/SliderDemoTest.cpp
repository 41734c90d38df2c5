// The demo window: three sliders from the resource bitmaps, and the list of
// notifications it receives.
#include <gtest/gtest.h>

#include <QListWidget>
#include <QTest>

#include "controls/BitmapSlider.h"
#include "controls/demo/SliderDemo.h"

namespace tachyrun {
namespace {

TEST(SliderDemo, BuildsThreeSlidersFromTheResourceBitmaps) {
  CSliderDemo demo;
  for (int32_t id :
       {CSliderDemo::kHorizontalId, CSliderDemo::kVerticalId, CSliderDemo::kTransparentId}) {
    const CBitmapSlider* slider = demo.Slider(id);
    ASSERT_NE(slider, nullptr) << id;
    EXPECT_EQ(slider->m_bChannelLoaded, 1) << id;
    EXPECT_EQ(slider->m_bThumbLoaded, 1) << id;
    EXPECT_EQ(slider->GetDlgCtrlID(), id);
  }
  EXPECT_EQ(demo.Slider(CSliderDemo::kHorizontalId)->size(), QSize(200, 24));
  EXPECT_EQ(demo.Slider(CSliderDemo::kVerticalId)->size(), QSize(24, 200));
  EXPECT_EQ(demo.Slider(CSliderDemo::kTransparentId)->m_bTransparentChannel, 1);
  EXPECT_EQ(demo.Slider(99), nullptr);
}

TEST(SliderDemo, ListsTheNotificationsItReceivesNewestFirst) {
  CSliderDemo demo;
  CBitmapSlider* slider = demo.Slider(CSliderDemo::kHorizontalId);
  QTest::keyClick(slider, Qt::Key_Right);
  QTest::keyClick(demo.Slider(CSliderDemo::kVerticalId), Qt::Key_End);
  EXPECT_EQ(demo.Log()->count(), 0);  // posted: nothing yet
  QCoreApplication::sendPostedEvents(&demo, 0);
  ASSERT_EQ(demo.Log()->count(), 2);
  EXPECT_EQ(demo.Log()->item(0)->text(), QStringLiteral("MOVED   1002  pos 100"));
  EXPECT_EQ(demo.Log()->item(1)->text(), QStringLiteral("MOVED   1001  pos 31"));
}

TEST(SliderDemo, LogKeepsABoundedNumberOfLines) {
  CSliderDemo demo;
  CBitmapSlider* slider = demo.Slider(CSliderDemo::kHorizontalId);
  for (int i = 0; i < CSliderDemo::kLogLines + 50; ++i)
    slider->OnKeyDown(CBitmapSlider::VK_RIGHT, 0, 0);
  QCoreApplication::sendPostedEvents(&demo, 0);
  EXPECT_EQ(demo.Log()->count(), CSliderDemo::kLogLines);
  EXPECT_EQ(demo.Log()->item(0)->text(), QStringLiteral("MOVED   1001  pos 100"));
}

}  // namespace
}  // namespace tachyrun
