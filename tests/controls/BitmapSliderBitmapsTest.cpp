// Loading the slider's bitmaps: resources and registered images, active
// versions, key-colour masks, clearing, and what a failed load leaves.
#include <gtest/gtest.h>

#include "controls/BitmapSlider.h"
#include "tests/support/SliderTesting.h"

namespace tachyrun {
namespace {

using namespace tachyrun::testing;

TEST(SliderBitmaps, ResourceChannelGivesTheControlItsSize) {
  CBitmapSlider slider;
  slider.move(7, 9);
  ASSERT_TRUE(slider.SetBitmapChannel(101, 102));
  EXPECT_EQ(slider.m_bChannelLoaded, 1);
  EXPECT_EQ(slider.m_bChannelActive, 1);
  EXPECT_EQ(slider.m_bTransparentChannel, 0);
  EXPECT_EQ(slider.m_iWidth, 200);
  EXPECT_EQ(slider.m_iHeight, 24);
  EXPECT_EQ(slider.m_iChannelWidth, 200);
  EXPECT_EQ(slider.m_iChannelHeight, 24);
  EXPECT_EQ(slider.geometry(), QRect(7, 9, 200, 24));  // resized, not moved
  EXPECT_EQ(slider.m_rcClient, QRect(0, 0, 200, 24));
  EXPECT_TRUE(slider.m_bmChannelMask.isNull());  // opaque: no mask
}

TEST(SliderBitmaps, EveryResourceBitmapLoads) {
  for (uint32_t id : {101u, 102u, 103u, 104u, 111u, 112u, 113u, 114u, 201u, 202u, 203u, 204u, 211u,
                      212u, 213u, 214u}) {
    CBitmapSlider slider;
    EXPECT_TRUE(slider.SetBitmapThumb(id)) << id;
    EXPECT_FALSE(slider.m_bmThumb.isNull()) << id;
  }
}

TEST(SliderBitmaps, PngResourceReadsLikeTheBmpOne) {
  // The vertical bitmaps are PNG files of the horizontal BMP ones, turned.
  CBitmapSlider horizontal;
  CBitmapSlider vertical;
  ASSERT_TRUE(horizontal.SetBitmapChannel(101));
  ASSERT_TRUE(vertical.SetBitmapChannel(201));
  const QImage& across = horizontal.m_bmChannel;
  const QImage& down = vertical.m_bmChannel;
  ASSERT_EQ(down.size(), across.size().transposed());
  for (int y = 0; y < across.height(); ++y)
    for (int x = 0; x < across.width(); ++x) ASSERT_EQ(down.pixel(y, x), across.pixel(x, y));
}

TEST(SliderBitmaps, KeyFromThePixelMasksEveryPixelOfThatColour) {
  CBitmapSlider slider;
  ASSERT_TRUE(slider.SetBitmapThumb(113, 114, true, kKeyFromPixel, 0, 0));
  EXPECT_EQ(slider.m_bTransparentThumb, 1);
  EXPECT_EQ(slider.m_bThumbActive, 1);
  const QImage& mask = slider.m_bmThumbMask;
  ASSERT_EQ(mask.size(), slider.m_bmThumb.size());
  EXPECT_EQ(mask.format(), QImage::Format_Mono);
  EXPECT_EQ(mask.pixelIndex(0, 0), 1);          // magenta corner
  EXPECT_EQ(mask.pixelIndex(8, 12), 0);         // the knob
  EXPECT_EQ(slider.m_bmThumb.pixel(0, 0), 0u);  // keyed pixels turn black (and clear)
  EXPECT_EQ(qAlpha(slider.m_bmThumb.pixel(8, 12)), 255);
  EXPECT_EQ(slider.m_bmThumbActiveMask.pixelIndex(0, 0), 1);
}

TEST(SliderBitmaps, ExplicitKeyColourIsAWindowsColour) {
  QImage image = Solid(4, 2, kGrey);
  image.setPixel(1, 0, kMagenta);
  image.setPixel(3, 1, qRgb(0xFF, 0x00, 0xFE));  // near, not equal
  CBitmapSlider::RegisterBitmap(kTestChannel, image);
  CBitmapSlider slider;
  ASSERT_TRUE(slider.SetBitmapChannel(kTestChannel, 0, true, kMagentaRef));
  EXPECT_EQ(slider.m_bTransparentChannel, 1);
  EXPECT_EQ(slider.m_bmChannelMask.pixelIndex(1, 0), 1);
  EXPECT_EQ(slider.m_bmChannelMask.pixelIndex(3, 1), 0);
  EXPECT_EQ(slider.m_bmChannelMask.pixelIndex(0, 0), 0);
  // Blue 0xFF in the low byte would be red: the byte order matters.
  ASSERT_TRUE(slider.SetBitmapChannel(kTestChannel, 0, true, 0x00FE00FFu));
  EXPECT_EQ(slider.m_bmChannelMask.pixelIndex(1, 0), 0);
  EXPECT_EQ(slider.m_bmChannelMask.pixelIndex(3, 1), 1);
}

TEST(SliderBitmaps, KeyPixelOutsideTheBitmapMasksNothing) {
  CBitmapSlider::RegisterBitmap(kTestChannel, Solid(4, 4, kMagenta));
  CBitmapSlider slider;
  ASSERT_TRUE(slider.SetBitmapChannel(kTestChannel, 0, true, kKeyFromPixel, 10, -1));
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 4; ++x) EXPECT_EQ(slider.m_bmChannelMask.pixelIndex(x, y), 0);
}

TEST(SliderBitmaps, ThumbAloneTakesTheSizeFromTheWindow) {
  Register(200, 20, 20, 20);
  CBitmapSlider slider;
  slider.resize(150, 30);
  ASSERT_TRUE(slider.SetBitmapThumb(kTestThumb, kTestThumbActive));
  EXPECT_EQ(slider.m_iThumbWidth, 20);
  EXPECT_EQ(slider.m_iThumbHeight, 20);
  EXPECT_EQ(slider.m_iWidth, 150);
  EXPECT_EQ(slider.m_iHeight, 30);
  EXPECT_EQ(slider.size(), QSize(150, 30));  // a thumb doesn't resize the window
  // With a channel loaded, a thumb leaves the size alone.
  ASSERT_TRUE(slider.SetBitmapChannel(kTestChannel));
  slider.resize(90, 90);
  ASSERT_TRUE(slider.SetBitmapThumb(kTestThumb));
  EXPECT_EQ(slider.m_iWidth, 200);
  EXPECT_EQ(slider.m_bThumbActive, 0);
}

TEST(SliderBitmaps, ThumbIdZeroHidesTheThumbAndFreesItsBitmaps) {
  Register(200, 20, 20, 20);
  CBitmapSlider slider;
  ASSERT_TRUE(slider.SetBitmapThumb(kTestThumb, kTestThumbActive, true, kMagentaRef));
  slider.m_bmThumbBg = Solid(20, 20, kGreen);
  EXPECT_TRUE(slider.SetBitmapThumb(0));
  EXPECT_EQ(slider.m_bThumbLoaded, 0);
  for (const QImage* bitmap : {&slider.m_bmThumb, &slider.m_bmThumbMask, &slider.m_bmThumbActive,
                               &slider.m_bmThumbActiveMask, &slider.m_bmThumbBg}) {
    EXPECT_TRUE(bitmap->isNull());
  }
}

TEST(SliderBitmaps, ChannelIdZeroClearsTheChannel) {
  Register(200, 20, 20, 20);
  CBitmapSlider slider;
  ASSERT_TRUE(slider.SetBitmapChannel(kTestChannel, kTestChannelActive, true, kMagentaRef));
  EXPECT_TRUE(slider.SetBitmapChannel(0));
  EXPECT_EQ(slider.m_bChannelLoaded, 0);
  for (const QImage* bitmap : {&slider.m_bmChannel, &slider.m_bmChannelMask,
                               &slider.m_bmChannelActive, &slider.m_bmChannelActiveMask}) {
    EXPECT_TRUE(bitmap->isNull());
  }
}

TEST(SliderBitmaps, FailedActiveChannelTakesThePlainChannelWithIt) {
  Register(200, 20, 20, 20);
  CBitmapSlider slider;
  EXPECT_FALSE(slider.SetBitmapChannel(kTestChannel, kTestMissing, true, kMagentaRef));
  EXPECT_TRUE(slider.m_bmChannel.isNull());
  EXPECT_TRUE(slider.m_bmChannelMask.isNull());
  EXPECT_TRUE(slider.m_bmChannelActive.isNull());
  EXPECT_EQ(slider.m_bChannelLoaded, 0);
  EXPECT_EQ(slider.m_iWidth, 0);  // nothing of the size was taken
}

TEST(SliderBitmaps, FailedActiveThumbTakesThePlainThumbWithIt) {
  Register(200, 20, 20, 20);
  CBitmapSlider slider;
  EXPECT_FALSE(slider.SetBitmapThumb(kTestThumb, kTestMissing));
  EXPECT_TRUE(slider.m_bmThumb.isNull());
  EXPECT_EQ(slider.m_bThumbLoaded, 0);
}

TEST(SliderBitmaps, UnloadableIdGivesFalseAndKeepsTheFlags) {
  Register(200, 20, 20, 20);
  CBitmapSlider slider;
  EXPECT_FALSE(slider.SetBitmapChannel(kTestMissing));
  EXPECT_EQ(slider.m_bChannelLoaded, 0);
  ASSERT_TRUE(slider.SetBitmapChannel(kTestChannel));
  ASSERT_TRUE(slider.SetBitmapThumb(kTestThumb));
  // The old bitmap is deleted before the load; the flags and sizes stay.
  EXPECT_FALSE(slider.SetBitmapChannel(kTestMissing));
  EXPECT_TRUE(slider.m_bmChannel.isNull());
  EXPECT_EQ(slider.m_bChannelLoaded, 1);
  EXPECT_EQ(slider.m_iWidth, 200);
  EXPECT_FALSE(slider.SetBitmapThumb(kTestMissing));
  EXPECT_TRUE(slider.m_bmThumb.isNull());
  EXPECT_EQ(slider.m_bThumbLoaded, 1);
  // Painting such a control draws nothing and doesn't crash.
  CBitmapSlider empty;
  empty.resize(200, 20);
  const QImage shown = Shown(slider);
  EXPECT_EQ(shown.size(), QSize(200, 20));
  EXPECT_EQ(shown, Shown(empty));
}

TEST(SliderBitmaps, ZeroSizeImageDoesNotLoad) {
  CBitmapSlider::RegisterBitmap(kTestChannel, QImage(0, 12, QImage::Format_RGB32));
  CBitmapSlider::RegisterBitmap(kTestThumb, QImage());
  CBitmapSlider slider;
  EXPECT_FALSE(slider.SetBitmapChannel(kTestChannel));
  EXPECT_FALSE(slider.SetBitmapThumb(kTestThumb));
  EXPECT_EQ(slider.m_bChannelLoaded, 0);
  EXPECT_EQ(slider.m_bThumbLoaded, 0);
}

TEST(SliderBitmaps, RegisteredImageWinsOverTheResource) {
  CBitmapSlider::RegisterBitmap(101, Solid(33, 7, kGreen));
  CBitmapSlider slider;
  ASSERT_TRUE(slider.SetBitmapChannel(101));
  EXPECT_EQ(slider.m_iWidth, 33);
  CBitmapSlider::RegisterBitmap(101, QImage());  // back to the resource
  ASSERT_TRUE(slider.SetBitmapChannel(101));
  EXPECT_EQ(slider.m_iWidth, 200);
}

TEST(SliderBitmaps, AlphaOfAnImageIsDropped) {
  QImage image(2, 2, QImage::Format_ARGB32);
  image.fill(qRgba(10, 20, 30, 0));
  CBitmapSlider::RegisterBitmap(kTestThumb, image);
  CBitmapSlider slider;
  ASSERT_TRUE(slider.SetBitmapThumb(kTestThumb));
  EXPECT_EQ(qAlpha(slider.m_bmThumb.pixel(0, 0)), 255);
}

}  // namespace
}  // namespace tachyrun
