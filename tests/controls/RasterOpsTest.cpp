// The slider's blits on an image (all four bytes, so clear pixels stay clear)
// and on any other painter (Qt's raster operations, opaque results).
#include <gtest/gtest.h>

#include <QPixmap>

#include "controls/RasterOps.h"

namespace tachyrun {
namespace {

constexpr QRgb kClear = 0u;
constexpr QRgb kWhite = 0xFFFFFFFFu;
constexpr QRgb kBlack = 0xFF000000u;
constexpr QRgb kOlive = 0xFF808000u;
constexpr QRgb kTeal = 0xFF008080u;

QImage Filled(int w, int h, QRgb colour) {
  QImage image(w, h, QImage::Format_ARGB32_Premultiplied);
  image.fill(colour);
  return image;
}

// Two pixels: the left one "keep" (white), the right one "clear".
QImage KeepClearMask() {
  QImage mask(2, 1, QImage::Format_Mono);
  mask.setColorTable({qRgba(0, 0, 0, 0), qRgba(255, 255, 255, 255)});
  mask.setPixel(0, 0, 1);
  mask.setPixel(1, 0, 0);
  return mask;
}

TEST(RasterOps, AndAndOrOnAnImageKeepClearPixelsClear) {
  QImage target = Filled(4, 1, kClear);
  target.setPixel(2, 0, kOlive);
  target.setPixel(3, 0, kOlive);
  QImage source = Filled(2, 1, kTeal);
  source.setPixel(0, 0, kClear);  // a blackened key pixel
  {
    QPainter painter(&target);
    BitBlt(painter, 0, 0, 2, 1, KeepClearMask(), 0, 0, RasterOp::kAnd);
    BitBlt(painter, 2, 0, 2, 1, KeepClearMask(), 0, 0, RasterOp::kAnd);
    BitBlt(painter, 0, 0, 2, 1, source, 0, 0, RasterOp::kPaint);
    BitBlt(painter, 2, 0, 2, 1, source, 0, 0, RasterOp::kPaint);
  }
  EXPECT_EQ(target.pixel(0, 0), kClear);  // kept clear, nothing ORed
  EXPECT_EQ(target.pixel(1, 0), kTeal);
  EXPECT_EQ(target.pixel(2, 0), kOlive);  // kept
  EXPECT_EQ(target.pixel(3, 0), kTeal);
}

TEST(RasterOps, OrCombinesTheBitsOfOpaquePixels) {
  QImage target = Filled(1, 1, kOlive);
  {
    QPainter painter(&target);
    BitBlt(painter, 0, 0, 1, 1, Filled(1, 1, kTeal), 0, 0, RasterOp::kPaint);
  }
  EXPECT_EQ(target.pixel(0, 0), 0xFF808080u);
}

TEST(RasterOps, ElsewhereTheyAreQtsRasterOperations) {
  QPixmap target(2, 1);
  target.fill(QColor::fromRgb(kOlive));
  {
    QPainter painter(&target);
    BitBlt(painter, 0, 0, 2, 1, KeepClearMask(), 0, 0, RasterOp::kAnd);
    BitBlt(painter, 0, 0, 2, 1, Filled(2, 1, kTeal), 0, 0, RasterOp::kPaint);
    EXPECT_TRUE(CopyArea(painter, QRect(0, 0, 2, 1)).pixel(0, 0) == kClear);  // nothing to read
  }
  const QImage result = target.toImage();
  EXPECT_EQ(result.pixel(0, 0), 0xFF808080u);  // olive | teal
  EXPECT_EQ(result.pixel(1, 0), kTeal);        // black | teal
}

TEST(RasterOps, CopyReplacesAlphaIncludedAndClipsToTheSource) {
  QImage target = Filled(4, 4, kOlive);
  QImage source = Filled(2, 2, kClear);
  source.setPixel(1, 1, kTeal);
  {
    QPainter painter(&target);
    BitBlt(painter, 1, 1, 3, 3, source, 0, 0, RasterOp::kCopy);
  }
  EXPECT_EQ(target.pixel(1, 1), kClear);
  EXPECT_EQ(target.pixel(2, 2), kTeal);
  EXPECT_EQ(target.pixel(3, 3), kOlive);  // beyond the source: left alone
}

TEST(RasterOps, BlitsOfNothingChangeNothing) {
  QImage target = Filled(3, 3, kOlive);
  {
    QPainter painter(&target);
    BitBlt(painter, 0, 0, 3, 3, QImage(), 0, 0, RasterOp::kAnd);
    BitBlt(painter, 0, 0, 0, 3, Filled(3, 3, kBlack), 0, 0, RasterOp::kCopy);
    BitBlt(painter, 0, 0, 3, 3, Filled(3, 3, kBlack), 5, 5, RasterOp::kCopy);
    StretchBlt(painter, QRect(0, 0, -2, 3), Filled(3, 3, kBlack), QRect(0, 0, 3, 3));
    StretchBlt(painter, QRect(0, 0, 3, 3), Filled(3, 3, kBlack), QRect(0, 0, 0, 3));
    InvertFocusRect(painter, QRect(1, 1, 0, 0));
    EXPECT_TRUE(CopyArea(painter, QRect()).isNull());
  }
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 3; ++x) EXPECT_EQ(target.pixel(x, y), kOlive);
}

TEST(RasterOps, StretchRepeatsPixels) {
  QImage source = Filled(2, 1, kTeal);
  source.setPixel(1, 0, kOlive);
  QImage target = Filled(4, 2, kBlack);
  {
    QPainter painter(&target);
    StretchBlt(painter, QRect(0, 0, 4, 2), source, QRect(0, 0, 2, 1));
  }
  EXPECT_EQ(target.pixel(0, 0), kTeal);
  EXPECT_EQ(target.pixel(1, 1), kTeal);
  EXPECT_EQ(target.pixel(2, 0), kOlive);
  EXPECT_EQ(target.pixel(3, 1), kOlive);
}

TEST(RasterOps, FocusRectangleTwiceIsGone) {
  QImage target = Filled(6, 5, kOlive);
  target.setPixel(0, 0, kClear);
  const QImage before = target;
  {
    QPainter painter(&target);
    InvertFocusRect(painter, QRect(0, 0, 6, 5));
    EXPECT_EQ(target.pixel(2, 0), kOlive ^ 0x00FFFFFFu);
    EXPECT_EQ(target.pixel(0, 0), kClear);  // nothing there to invert
    EXPECT_EQ(target.pixel(2, 2), kOlive);  // inside
    InvertFocusRect(painter, QRect(0, 0, 6, 5));
  }
  EXPECT_EQ(target, before);
}

TEST(RasterOps, FocusRectangleOnAPixmapIsAnXor) {
  QPixmap target(4, 4);
  target.fill(QColor::fromRgb(kOlive));
  {
    QPainter painter(&target);
    InvertFocusRect(painter, QRect(0, 0, 4, 4));
  }
  const QImage result = target.toImage();
  EXPECT_EQ(result.pixel(0, 0), kOlive ^ 0x00FFFFFFu);
  EXPECT_EQ(result.pixel(1, 0), kOlive);
}

TEST(RasterOps, OnAScaledImageEachSourcePixelCoversABlock) {
  QImage target = Filled(8, 4, kClear);  // 4 x 2 logical pixels
  target.setDevicePixelRatio(2);
  QImage source = Filled(2, 1, kTeal);
  source.setPixel(0, 0, kClear);
  {
    QPainter painter(&target);
    painter.translate(1, 1);
    BitBlt(painter, 0, -1, 2, 1, KeepClearMask(), 0, 0, RasterOp::kAnd);
    BitBlt(painter, 0, -1, 2, 1, source, 0, 0, RasterOp::kPaint);
    InvertFocusRect(painter, QRect(-1, -1, 4, 2));
    const QImage piece = CopyArea(painter, QRect(0, -1, 2, 1));
    ASSERT_EQ(piece.size(), QSize(2, 1));
    EXPECT_EQ(piece.pixel(0, 0), kClear);
    EXPECT_EQ(piece.pixel(1, 0), kTeal ^ 0x00FFFFFFu);
  }
  // Logical (1, 0) and (2, 0) are device columns 2-3 and 4-5, rows 0-1.
  for (int y = 0; y < 2; ++y) {
    EXPECT_EQ(target.pixel(2, y), kClear);
    EXPECT_EQ(target.pixel(3, y), kClear);
    EXPECT_EQ(target.pixel(4, y), kTeal ^ 0x00FFFFFFu);  // on the dotted outline
    EXPECT_EQ(target.pixel(5, y), kTeal ^ 0x00FFFFFFu);
  }
  EXPECT_EQ(target.pixel(4, 2), kClear);
}

TEST(RasterOps, CopyAreaReadsTheImageInLogicalCoordinates) {
  QImage target = Filled(10, 10, kOlive);
  target.setPixel(6, 7, kTeal);
  QPainter painter(&target);
  painter.translate(4, 4);
  const QImage piece = CopyArea(painter, QRect(2, 3, 2, 2));
  ASSERT_EQ(piece.size(), QSize(2, 2));
  EXPECT_EQ(piece.pixel(0, 0), kTeal);
  EXPECT_EQ(piece.pixel(1, 1), kOlive);
  EXPECT_EQ(CopyArea(painter, QRect(8, 8, 2, 2)).pixel(0, 0), kClear);  // outside the image
}

}  // namespace
}  // namespace tachyrun
