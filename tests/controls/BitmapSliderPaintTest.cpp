// What the bitmap slider paints: the thumb at Pos2Pixel, the active channel up
// to the thumb, keyed pixels showing what lies below, the saved background,
// the focus rectangle, and controls too small for their bitmaps.
#include <gtest/gtest.h>

#include <QPainter>
#include <memory>

#include "controls/BitmapSlider.h"
#include "controls/MemDC.h"
#include "tests/support/SliderTesting.h"

namespace tachyrun {
namespace {

using namespace tachyrun::testing;

// The slider's blits, open to the tests.
class CSliderProbe : public CBitmapSlider {
 public:
  using CBitmapSlider::CBitmapSlider;
  using CBitmapSlider::DrawChannel;
  using CBitmapSlider::DrawThumb;
};

constexpr QRgb kClear = 0u;

QImage KeyedRows(int w, int h, QRgb colour, int firstRow, int rows) {
  QImage image = Solid(w, h, colour);
  for (int y = firstRow; y < firstRow + rows; ++y)
    for (int x = 0; x < w; ++x) image.setPixel(x, y, kMagenta);
  return image;
}

class SliderPaint : public ::testing::Test {
 protected:
  void SetUp() override {
    m_Parent.resize(240, 240);
    m_Parent.setAutoFillBackground(true);
    QPalette palette = m_Parent.palette();
    palette.setColor(QPalette::Window, QColor::fromRgb(kGreen));
    m_Parent.setPalette(palette);
    m_pSlider = new CBitmapSlider(&m_Parent);
    m_pSlider->move(kAt, kAt);
  }
  // What the parent shows at a point of the slider.
  QRgb At(const QImage& shown, int x, int y) const { return shown.pixel(kAt + x, kAt + y); }
  QImage Paint() { return Shown(m_Parent); }

  static constexpr int kAt = 10;
  CRecordingParent m_Parent;
  CBitmapSlider* m_pSlider = nullptr;
};

TEST_F(SliderPaint, ThumbStandsCentredOnPos2Pixel) {
  LoadTestBitmaps(*m_pSlider, 200, 20, 20, 20);
  for (int32_t pos : {0, 37, 50, 100}) {
    m_pSlider->SetPos(pos);
    const int left = m_pSlider->Pos2Pixel(pos) - 10;
    const QImage shown = Paint();
    EXPECT_EQ(At(shown, left, 10), kRed) << pos;
    EXPECT_EQ(At(shown, left + 19, 10), kRed) << pos;
    if (left > 0) {
      EXPECT_EQ(At(shown, left - 1, 10), kGrey) << pos;
    }
    if (left + 20 < 200) {
      EXPECT_EQ(At(shown, left + 20, 10), kGrey) << pos;
    }
  }
}

TEST_F(SliderPaint, ThumbStandsAtTheTopMargin) {
  LoadTestBitmaps(*m_pSlider, 200, 30, 20, 20);
  m_pSlider->SetMargin(0, 6, 0, 0);
  const QImage shown = Paint();
  EXPECT_EQ(At(shown, 5, 5), kGrey);
  EXPECT_EQ(At(shown, 5, 6), kRed);
  EXPECT_EQ(At(shown, 5, 25), kRed);
  EXPECT_EQ(At(shown, 5, 26), kGrey);
}

TEST_F(SliderPaint, ActiveChannelShowsUpToTheThumb) {
  Register(200, 20, 20, 20);
  m_pSlider->SetBitmapChannel(kTestChannel, kTestChannelActive);
  m_pSlider->SetPos(25);  // no thumb: P = trunc(200 * 0.25) = 50
  QImage shown = Paint();
  EXPECT_EQ(At(shown, 0, 10), kBlue);
  EXPECT_EQ(At(shown, 49, 10), kBlue);
  EXPECT_EQ(At(shown, 50, 10), kGrey);
  EXPECT_EQ(At(shown, 199, 10), kGrey);

  m_pSlider->SetBitmapThumb(kTestThumb);  // P = 10 + trunc(180 * 0.25) = 55
  shown = Paint();
  EXPECT_EQ(At(shown, 44, 10), kBlue);
  EXPECT_EQ(At(shown, 45, 10), kRed);
  EXPECT_EQ(At(shown, 64, 10), kRed);
  EXPECT_EQ(At(shown, 65, 10), kGrey);
}

TEST_F(SliderPaint, VerticalActiveChannelShowsFromTheTop) {
  Register(20, 200, 20, 20);
  m_pSlider->SetVertical(true);
  m_pSlider->SetBitmapChannel(kTestChannel, kTestChannelActive);
  m_pSlider->SetBitmapThumb(kTestThumb);
  m_pSlider->SetPos(25);  // P = 55, thumb rows 45..64
  const QImage shown = Paint();
  EXPECT_EQ(At(shown, 10, 0), kBlue);
  EXPECT_EQ(At(shown, 10, 44), kBlue);
  EXPECT_EQ(At(shown, 10, 45), kRed);
  EXPECT_EQ(At(shown, 10, 64), kRed);
  EXPECT_EQ(At(shown, 10, 65), kGrey);
  EXPECT_EQ(At(shown, 10, 199), kGrey);
}

TEST_F(SliderPaint, VerticalChannelStretchesToTheMovedSize) {
  QImage channel = Solid(20, 100, kGrey);
  for (int y = 50; y < 100; ++y)
    for (int x = 0; x < 20; ++x) channel.setPixel(x, y, kYellow);
  CBitmapSlider::RegisterBitmap(kTestChannel, channel);
  CBitmapSlider::RegisterBitmap(kTestChannelActive, Solid(20, 100, kBlue));
  m_pSlider->SetVertical(true);
  m_pSlider->SetBitmapChannel(kTestChannel, kTestChannelActive);
  m_pSlider->MoveSlider(kAt, kAt, 20, 200);
  m_pSlider->SetPos(25);  // P = 50: rows 50..199 come from channel rows 25..99
  const QImage shown = Paint();
  EXPECT_EQ(At(shown, 10, 40), kBlue);
  EXPECT_EQ(At(shown, 10, 60), kGrey);
  EXPECT_EQ(At(shown, 10, 95), kGrey);
  EXPECT_EQ(At(shown, 10, 105), kYellow);
  EXPECT_EQ(At(shown, 10, 199), kYellow);
}

TEST_F(SliderPaint, KeyedPixelsShowWhatLiesBelow) {
  CBitmapSlider::RegisterBitmap(kTestChannel, KeyedRows(200, 20, kGrey, 0, 5));
  QImage thumb = Solid(20, 20, kRed);
  for (int x = 0; x < 20; ++x) {
    thumb.setPixel(x, 2, kMagenta);   // over the channel's keyed rows
    thumb.setPixel(x, 10, kMagenta);  // over the channel's grey
  }
  CBitmapSlider::RegisterBitmap(kTestThumb, thumb);
  m_pSlider->SetBitmapChannel(kTestChannel, 0, true, kMagentaRef);
  m_pSlider->SetBitmapThumb(kTestThumb, 0, true, kMagentaRef);
  m_pSlider->SetPos(50);  // thumb columns 90..109
  const QImage shown = Paint();
  EXPECT_EQ(At(shown, 30, 2), kGreen);  // keyed channel: the parent
  EXPECT_EQ(At(shown, 30, 10), kGrey);
  EXPECT_EQ(At(shown, 95, 2), kGreen);  // keyed in both: still the parent
  EXPECT_EQ(At(shown, 95, 10), kGrey);  // keyed thumb: the channel
  EXPECT_EQ(At(shown, 95, 12), kRed);
  EXPECT_EQ(At(shown, 95, 0), kRed);  // the thumb covers the keyed channel
}

TEST_F(SliderPaint, KeyReadFromAPixelWorksAsTheColour) {
  CBitmapSlider::RegisterBitmap(kTestChannel, KeyedRows(200, 20, kGrey, 0, 5));
  m_pSlider->SetBitmapChannel(kTestChannel, 0, true, kKeyFromPixel, 3, 1);
  const QImage shown = Paint();
  EXPECT_EQ(At(shown, 30, 2), kGreen);
  EXPECT_EQ(At(shown, 30, 10), kGrey);
}

TEST_F(SliderPaint, MasksOfTheTwoChannelsStandCrossed) {
  // Plain channel keyed on rows 0-1, active channel keyed on rows 8-9.
  CBitmapSlider::RegisterBitmap(kTestChannel, KeyedRows(200, 10, kGrey, 0, 2));
  CBitmapSlider::RegisterBitmap(kTestChannelActive, KeyedRows(200, 10, kBlue, 8, 2));
  CSliderProbe probe;
  ASSERT_TRUE(probe.SetBitmapChannel(kTestChannel, kTestChannelActive, true, kMagentaRef));
  QImage target(200, 10, QImage::Format_ARGB32_Premultiplied);
  target.fill(kWhite);
  {
    QPainter painter(&target);
    probe.DrawChannel(painter, 100);
  }
  // Right of the thumb: the plain channel through the active channel's mask.
  EXPECT_EQ(target.pixel(150, 0), kClear);  // masked off, its own key left black
  EXPECT_EQ(target.pixel(150, 8), kWhite);  // kept, ORed with grey
  EXPECT_EQ(target.pixel(150, 5), kGrey);
  // Left of the thumb: the active channel through the plain channel's mask.
  EXPECT_EQ(target.pixel(50, 8), kClear);
  EXPECT_EQ(target.pixel(50, 0), kWhite);
  EXPECT_EQ(target.pixel(50, 5), kBlue);
}

TEST_F(SliderPaint, KeyedPixelsStayClearOnADoubleDensityBuffer) {
  CBitmapSlider::RegisterBitmap(kTestChannel, KeyedRows(200, 20, kGrey, 0, 5));
  CBitmapSlider::RegisterBitmap(kTestChannelActive, KeyedRows(200, 20, kBlue, 0, 5));
  QImage thumb = Solid(20, 20, kRed);
  thumb.setPixel(3, 10, kMagenta);
  CBitmapSlider::RegisterBitmap(kTestThumb, thumb);
  CSliderProbe probe;
  probe.SetBitmapChannel(kTestChannel, kTestChannelActive, true, kMagentaRef);
  probe.SetBitmapThumb(kTestThumb, 0, true, kMagentaRef);
  QImage screen(400, 40, QImage::Format_ARGB32_Premultiplied);  // 200 x 20 at ratio 2
  screen.setDevicePixelRatio(2);
  screen.fill(kGreen);
  {
    QPainter painter(&screen);
    const QRect area(0, 0, 200, 20);
    CMemDC dc(&painter, &area);
    ASSERT_EQ(dc.m_bitmap.size(), QSize(400, 40));
    probe.DrawChannel(*dc, 100);
    probe.DrawThumb(*dc, 100);  // columns 90..109
  }
  EXPECT_EQ(screen.pixel(61, 5), kGreen);   // logical (30, 2): keyed channel
  EXPECT_EQ(screen.pixel(61, 21), kBlue);   // logical (30, 10)
  EXPECT_EQ(screen.pixel(301, 21), kGrey);  // logical (150, 10)
  EXPECT_EQ(screen.pixel(186, 21), kBlue);  // logical (93, 10): keyed thumb
  EXPECT_EQ(screen.pixel(189, 21), kRed);   // logical (94, 10)
  EXPECT_EQ(probe.m_iThumbBgX, 90);
  EXPECT_EQ(probe.m_bmThumbBg.pixel(3, 10), kBlue);
}

TEST_F(SliderPaint, BackgroundUnderTheThumbIsSavedAndPutBack) {
  CBitmapSlider::RegisterBitmap(kTestChannel, KeyedRows(200, 20, kGrey, 0, 2));
  CBitmapSlider::RegisterBitmap(kTestChannelActive, KeyedRows(200, 20, kBlue, 0, 2));
  CBitmapSlider::RegisterBitmap(kTestThumb, Solid(20, 20, kRed));
  m_pSlider->SetBitmapChannel(kTestChannel, kTestChannelActive, true, kMagentaRef);
  m_pSlider->SetBitmapThumb(kTestThumb);
  m_pSlider->SetPos(50);  // P = 100, thumb columns 90..109
  Paint();
  EXPECT_EQ(m_pSlider->m_iThumbBgX, 90);
  EXPECT_EQ(m_pSlider->m_iThumbBgY, 0);
  ASSERT_EQ(m_pSlider->m_bmThumbBg.size(), QSize(20, 20));
  EXPECT_EQ(m_pSlider->m_bmThumbBg.pixel(5, 10), kBlue);  // the channel, not the thumb
  EXPECT_EQ(m_pSlider->m_bmThumbBg.pixel(15, 10), kGrey);

  // The next paint puts it back where it was taken, over the fresh channel.
  m_pSlider->SetPos(0);
  const QImage shown = Paint();
  EXPECT_EQ(At(shown, 95, 10), kBlue);  // right of the thumb, yet active
  EXPECT_EQ(At(shown, 85, 10), kGrey);
  EXPECT_EQ(At(shown, 5, 10), kRed);
  EXPECT_EQ(m_pSlider->m_iThumbBgX, 0);
}

TEST_F(SliderPaint, OpaqueChannelSavesNoBackground) {
  LoadTestBitmaps(*m_pSlider, 200, 20, 20, 20);
  Paint();
  EXPECT_EQ(m_pSlider->m_iThumbBgX, -1);
  EXPECT_TRUE(m_pSlider->m_bmThumbBg.isNull());
}

TEST_F(SliderPaint, ThumbWithoutChannelSavesTheBackground) {
  Register(200, 20, 20, 20);
  m_pSlider->resize(200, 20);
  m_pSlider->SetBitmapThumb(kTestThumb);
  const QImage shown = Paint();
  EXPECT_EQ(At(shown, 5, 10), kRed);
  EXPECT_EQ(At(shown, 30, 10), kGreen);
  EXPECT_EQ(m_pSlider->m_iThumbBgX, 0);
}

TEST_F(SliderPaint, DisabledShowsThePlainChannelAndNoThumb) {
  Register(200, 20, 20, 20);
  m_pSlider->SetBitmapChannel(kTestChannel, kTestChannelActive);
  m_pSlider->SetBitmapThumb(kTestThumb);
  m_pSlider->SetPos(50);
  m_pSlider->Enable(false);
  const QImage shown = Paint();
  EXPECT_EQ(At(shown, 5, 10), kGrey);
  EXPECT_EQ(At(shown, 100, 10), kGrey);
  m_pSlider->Enable(true);
  const QImage enabled = Paint();
  EXPECT_EQ(At(enabled, 5, 10), kBlue);
  EXPECT_EQ(At(enabled, 100, 10), kRed);
}

TEST_F(SliderPaint, DraggedThumbShowsTheActiveThumbWithThePlainMask) {
  QImage thumb = Solid(20, 20, kRed);
  QImage active = Solid(20, 20, kYellow);
  thumb.setPixel(4, 4, kMagenta);
  active.setPixel(6, 6, kMagenta);
  CBitmapSlider::RegisterBitmap(kTestChannel, Solid(200, 20, kGrey));
  CBitmapSlider::RegisterBitmap(kTestThumb, thumb);
  CBitmapSlider::RegisterBitmap(kTestThumbActive, active);
  m_pSlider->SetBitmapChannel(kTestChannel);
  m_pSlider->SetBitmapThumb(kTestThumb, kTestThumbActive, true, kMagentaRef);
  m_pSlider->m_bDragging = 1;
  const QImage shown = Paint();
  EXPECT_EQ(At(shown, 10, 10), kYellow);
  // The plain thumb's key keeps the channel, ORed with the active thumb there.
  EXPECT_EQ(At(shown, 4, 4), kGrey | kYellow);
  // The active thumb's own key is blackened, but the plain mask doesn't keep
  // the channel there: the pixel is clear and shows the parent.
  EXPECT_EQ(At(shown, 6, 6), kGreen);
  EXPECT_FALSE(m_pSlider->m_bmThumbActiveMask.isNull());
}

TEST_F(SliderPaint, FocusRectangleInvertsEveryOtherPixelOfTheOutline) {
  Register(200, 20, 20, 20);
  m_pSlider->SetBitmapChannel(kTestChannel);
  m_pSlider->OnSetFocus();
  const QRgb inverted = kGrey ^ 0x00FFFFFFu;
  QImage shown = Paint();
  EXPECT_EQ(m_pSlider->m_bFocusRectShown, 1);
  EXPECT_EQ(At(shown, 0, 0), inverted);
  EXPECT_EQ(At(shown, 1, 0), kGrey);
  EXPECT_EQ(At(shown, 2, 0), inverted);
  EXPECT_EQ(At(shown, 199, 1), inverted);
  EXPECT_EQ(At(shown, 199, 2), kGrey);
  EXPECT_EQ(At(shown, 0, 19), kGrey);
  EXPECT_EQ(At(shown, 1, 19), inverted);
  EXPECT_EQ(At(shown, 5, 5), kGrey);  // the inside stays

  m_pSlider->DrawFocusRect(false, true);
  shown = Paint();
  EXPECT_EQ(At(shown, 0, 0), kGrey);
  m_pSlider->DrawFocusRect(true);
  m_pSlider->Enable(false);
  shown = Paint();
  EXPECT_EQ(At(shown, 0, 0), kGrey);
}

TEST_F(SliderPaint, OnlyATransparentOrMissingChannelUndoesTheFocusRectangle) {
  Register(200, 20, 20, 20);
  m_pSlider->SetBitmapChannel(kTestChannel);
  m_pSlider->OnSetFocus();
  Paint();
  m_pSlider->OnKillFocus();
  Paint();
  EXPECT_EQ(m_pSlider->m_bFocusRectShown, 1);  // an opaque channel painted over it

  m_pSlider->SetBitmapChannel(kTestChannel, 0, true, kMagentaRef);
  Paint();
  EXPECT_EQ(m_pSlider->m_bFocusRectShown, 0);
}

TEST_F(SliderPaint, ControlSmallerThanItsThumbPaintsWithoutHarm) {
  Register(10, 10, 20, 20);
  m_pSlider->SetBitmapChannel(kTestChannel, kTestChannelActive, true, kMagentaRef);
  m_pSlider->SetBitmapThumb(kTestThumb, kTestThumbActive, true, kMagentaRef);
  m_pSlider->OnSetFocus();
  for (int32_t pos : {0, 50, 100}) {
    m_pSlider->SetPos(pos);
    const QImage shown = Paint();
    EXPECT_EQ(At(shown, 5, 5), kRed) << pos;     // the thumb, clipped to the control
    EXPECT_EQ(At(shown, 15, 5), kGreen) << pos;  // nothing outside the control
  }
  m_pSlider->SetVertical(true);
  m_pSlider->MoveSlider(kAt, kAt, 3, 2);
  const QImage tiny = Paint();
  EXPECT_EQ(At(tiny, 0, 1), kRed);
  EXPECT_EQ(At(tiny, 1, 1), kRed ^ 0x00FFFFFFu);  // every pixel is on the focus outline
}

TEST_F(SliderPaint, EmptyRangeAndZeroSizePaintWithoutHarm) {
  Register(200, 20, 20, 20);
  m_pSlider->SetBitmapChannel(kTestChannel, kTestChannelActive);
  m_pSlider->SetBitmapThumb(kTestThumb, kTestThumbActive);
  m_pSlider->SetRange(0, 0);
  EXPECT_EQ(At(Paint(), 5, 10), kRed);  // the thumb at the start
  m_pSlider->m_iPos = 1000;             // left outside the range
  const QImage far = Paint();
  EXPECT_EQ(At(far, 150, 10), kBlue);  // active all the way, thumb out of sight
  m_pSlider->SetVertical(true);
  m_pSlider->MoveSlider(kAt, kAt, 0, 0);
  EXPECT_TRUE(m_pSlider->grab().isNull());
  m_pSlider->repaint();
  EXPECT_EQ(Paint().pixel(kAt, kAt), kGreen);
}

}  // namespace
}  // namespace tachyrun
