// Defaults, range, position, margins and pixel geometry of the bitmap slider.
#include <gtest/gtest.h>

#include <limits>

#include "controls/BitmapSlider.h"
#include "tests/support/SliderTesting.h"

namespace tachyrun {
namespace {

using namespace tachyrun::testing;

TEST(BitmapSlider, FieldsStartWithTheirDefaults) {
  CBitmapSlider slider;
  EXPECT_EQ(slider.m_iMax, 100);
  EXPECT_EQ(slider.m_iMin, 0);
  EXPECT_EQ(slider.m_iPos, 0);
  EXPECT_EQ(slider.m_iPage, 20);
  EXPECT_TRUE(slider.m_rcClient.isNull());
  EXPECT_EQ(slider.m_iChannelWidth, 0);
  EXPECT_EQ(slider.m_iChannelHeight, 0);
  EXPECT_EQ(slider.m_iThumbWidth, 0);
  EXPECT_EQ(slider.m_iThumbHeight, 0);
  EXPECT_EQ(slider.m_iMarginLeft, 0);
  EXPECT_EQ(slider.m_iMarginRight, 0);
  EXPECT_EQ(slider.m_iMarginTop, 0);
  EXPECT_EQ(slider.m_iMarginBottom, 0);
  EXPECT_EQ(slider.m_iThumbBgX, -1);
  EXPECT_EQ(slider.m_iThumbBgY, -1);
  EXPECT_EQ(slider.m_bVertical, 0);
  EXPECT_EQ(slider.m_bThumbLoaded, 0);
  EXPECT_EQ(slider.m_bChannelLoaded, 0);
  EXPECT_EQ(slider.m_bDragging, 0);
  EXPECT_EQ(slider.m_bFocused, 0);
  EXPECT_EQ(slider.m_bFocusRectShown, 0);
  EXPECT_EQ(slider.m_bDrawFocusRect, 1);
  EXPECT_EQ(slider.m_bEnabled, 1);
  EXPECT_EQ(slider.GetPos(), 0);
}

TEST(BitmapSlider, EndsOfTheRangeSitHalfAThumbInside) {
  CBitmapSlider slider;
  LoadTestBitmaps(slider, 200, 20, 20, 20);
  ASSERT_TRUE(slider.m_bChannelLoaded && slider.m_bThumbLoaded);
  EXPECT_EQ(slider.Pos2Pixel(0), 10);
  EXPECT_EQ(slider.Pos2Pixel(100), 190);
  EXPECT_EQ(slider.Pos2Pixel(50), 100);
  EXPECT_EQ(slider.Pixel2Pos(10), 0);
  EXPECT_EQ(slider.Pixel2Pos(190), 100);
}

TEST(BitmapSlider, MarginsNarrowTheTrack) {
  CBitmapSlider slider;
  LoadTestBitmaps(slider, 200, 20, 20, 20);
  slider.SetMargin(5, 1, 15, 2);
  EXPECT_EQ(slider.m_iMarginLeft, 5);
  EXPECT_EQ(slider.m_iMarginTop, 1);
  EXPECT_EQ(slider.m_iMarginRight, 15);
  EXPECT_EQ(slider.m_iMarginBottom, 2);
  EXPECT_EQ(slider.Pos2Pixel(0), 15);
  EXPECT_EQ(slider.Pos2Pixel(100), 175);  // 5 + 160 + 10
  slider.SetMarginLeft(0);
  slider.SetMarginRight(0);
  slider.SetMarginTop(7);
  slider.SetMarginBottom(8);
  EXPECT_EQ(slider.m_iMarginTop, 7);
  EXPECT_EQ(slider.m_iMarginBottom, 8);
  EXPECT_EQ(slider.Pos2Pixel(100), 190);
}

TEST(BitmapSlider, PixelsTruncateSoARoundTripCanLandLower) {
  CBitmapSlider slider;
  LoadTestBitmaps(slider, 200, 20, 20, 20);
  EXPECT_EQ(slider.Pos2Pixel(1), 11);  // 10 + trunc(1.8)
  EXPECT_EQ(slider.Pixel2Pos(11), 0);  // trunc(0.555...)
  EXPECT_EQ(slider.Pos2Pixel(slider.Pixel2Pos(11)), 10);
}

TEST(BitmapSlider, VerticalTrackGrowsDownward) {
  CBitmapSlider slider;
  slider.SetVertical(true);
  EXPECT_EQ(slider.m_bVertical, 1);
  LoadTestBitmaps(slider, 20, 200, 20, 20);
  slider.SetMargin(0, 4, 0, 6);
  EXPECT_EQ(slider.Pos2Pixel(0), 14);     // the top
  EXPECT_EQ(slider.Pos2Pixel(100), 184);  // 4 + 10 + 170
  EXPECT_EQ(slider.Pixel2Pos(14), 0);
  EXPECT_EQ(slider.Pixel2Pos(184), 100);
}

TEST(BitmapSlider, SetPosClampsToTheRange) {
  CBitmapSlider slider;
  slider.SetPos(150);
  EXPECT_EQ(slider.GetPos(), 100);
  slider.SetPos(-5);
  EXPECT_EQ(slider.GetPos(), 0);
  slider.SetPos(42);
  EXPECT_EQ(slider.m_iPos, 42);
}

TEST(BitmapSlider, ReversedRangeLetsTheMinimumWin) {
  CBitmapSlider slider;
  slider.SetRange(10, 0);
  EXPECT_EQ(slider.m_iMin, 10);
  EXPECT_EQ(slider.m_iMax, 0);
  slider.SetPos(5);
  EXPECT_EQ(slider.GetPos(), 10);
}

TEST(BitmapSlider, SetRangeDoesNotMoveThePosition) {
  CBitmapSlider slider;
  slider.SetPos(80);
  slider.SetRange(0, 50, true);
  EXPECT_EQ(slider.GetPos(), 80);
  slider.SetRangeMin(-20);
  slider.SetRangeMax(20);
  EXPECT_EQ(slider.m_iMin, -20);
  EXPECT_EQ(slider.m_iMax, 20);
}

TEST(BitmapSlider, SetPageSizeReturnsThePreviousPage) {
  CBitmapSlider slider;
  EXPECT_EQ(slider.SetPageSize(7), 20);
  EXPECT_EQ(slider.SetPageSize(3), 7);
  EXPECT_EQ(slider.m_iPage, 3);
}

TEST(BitmapSlider, EmptyRangeGivesTheStartOfTheTrack) {
  CBitmapSlider slider;
  LoadTestBitmaps(slider, 200, 20, 20, 20);
  slider.SetRange(50, 50);
  slider.SetPos(70);
  EXPECT_EQ(slider.GetPos(), 50);
  EXPECT_EQ(slider.Pos2Pixel(50), 10);  // 0 / 0 counts as the start
  EXPECT_EQ(slider.Pixel2Pos(120), 50);
  // A position left outside an empty range still maps to a defined pixel.
  slider.SetRange(0, 0);
  slider.m_iPos = 30;
  EXPECT_EQ(slider.Pos2Pixel(30), std::numeric_limits<int32_t>::max());
  slider.m_iPos = -30;
  EXPECT_EQ(slider.Pos2Pixel(-30), std::numeric_limits<int32_t>::min() + 10);
}

TEST(BitmapSlider, TrackOfNoLengthGivesDefinedValues) {
  CBitmapSlider slider;
  LoadTestBitmaps(slider, 20, 20, 20, 20);  // the thumb fills the control
  EXPECT_EQ(slider.Pos2Pixel(50), 10);
  EXPECT_EQ(slider.Pixel2Pos(10), 0);  // 0 / 0
  EXPECT_EQ(slider.Pixel2Pos(15), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(slider.Pixel2Pos(5), std::numeric_limits<int32_t>::min());
}

TEST(BitmapSlider, ExtremeValuesNeverOverflow) {
  CBitmapSlider slider;
  LoadTestBitmaps(slider, 200, 20, 20, 20);
  constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
  constexpr int32_t kMin = std::numeric_limits<int32_t>::min();
  slider.SetRange(kMin, kMax);
  EXPECT_EQ(slider.Pos2Pixel(kMin), 10);
  EXPECT_EQ(slider.Pos2Pixel(kMax), 190);
  EXPECT_EQ(slider.Pixel2Pos(190), kMax);
  slider.SetRange(0, 100);
  slider.SetMargin(kMax, kMax, kMax, kMax);
  EXPECT_EQ(slider.Pos2Pixel(0), kMax);  // held at the end
  // A track longer than int32_t: its length is held, then the sum is exact.
  slider.SetMargin(kMin, 0, kMin, 0);
  EXPECT_EQ(slider.Pos2Pixel(100), 9);  // kMin + kMax + 10
}

TEST(BitmapSlider, OnlyAVerticalSliderTakesItsNewSize) {
  Register(200, 20, 20, 20);
  CBitmapSlider horizontal;
  horizontal.SetBitmapChannel(kTestChannel);
  horizontal.MoveSlider(3, 4, 300, 50);
  EXPECT_EQ(horizontal.geometry(), QRect(3, 4, 300, 50));
  EXPECT_TRUE(horizontal.isVisible());
  EXPECT_EQ(horizontal.m_iWidth, 200);
  EXPECT_EQ(horizontal.m_iHeight, 20);

  CBitmapSlider vertical;
  vertical.SetVertical(true);
  vertical.SetBitmapChannel(kTestChannel);
  vertical.MoveSlider(3, 4, 30, 250);
  EXPECT_EQ(vertical.geometry(), QRect(3, 4, 30, 250));
  EXPECT_EQ(vertical.m_iWidth, 30);
  EXPECT_EQ(vertical.m_iHeight, 250);
  EXPECT_EQ(vertical.m_iChannelWidth, 200);
}

TEST(BitmapSlider, ControlIdIsTheObjectNameAsANumber) {
  CBitmapSlider slider;
  EXPECT_EQ(slider.GetDlgCtrlID(), 0);
  slider.setObjectName(QStringLiteral("1204"));
  EXPECT_EQ(slider.GetDlgCtrlID(), 1204);
  slider.setObjectName(QStringLiteral("volume"));
  EXPECT_EQ(slider.GetDlgCtrlID(), 0);
}

TEST(SliderEvent, CarriesTypeIdAndPositionUnderTheMessageNumbers) {
  EXPECT_EQ(WM_SLIDER_MOVING, 10449);
  EXPECT_EQ(WM_SLIDER_MOVED, 10450);
  EXPECT_TRUE(CSliderEvent::RegisterTypes());
  // Once reserved, Qt hands the numbers to nobody else.
  EXPECT_NE(QEvent::registerEventType(WM_SLIDER_MOVING), WM_SLIDER_MOVING);
  const CSliderEvent event(WM_SLIDER_MOVED, 1001, -7);
  EXPECT_EQ(static_cast<int>(event.type()), 10450);
  EXPECT_EQ(event.ControlId(), 1001);
  EXPECT_EQ(event.Position(), -7);
}

}  // namespace
}  // namespace tachyrun
