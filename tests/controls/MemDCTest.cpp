// The double buffer: one copy at destruction, in the real painter's logical
// coordinates, nothing on an empty area, and the real painter on a paged device.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QPdfWriter>
#include <QTemporaryDir>

#include "controls/MemDC.h"

namespace tachyrun {
namespace {

constexpr QRgb kPaper = 0xFFFFFFFFu;
constexpr QRgb kInk = 0xFFC02030u;

QImage Paper(int w, int h) {
  QImage image(w, h, QImage::Format_ARGB32_Premultiplied);
  image.fill(kPaper);
  return image;
}

TEST(MemDC, DrawingLandsOnTheTargetOnlyAtDestruction) {
  QImage target = Paper(40, 30);
  QPainter painter(&target);
  const QRect area(0, 0, 40, 30);
  {
    CMemDC dc(&painter, &area);
    EXPECT_TRUE(dc.m_bMemDC);
    EXPECT_NE(dc.Dc(), &painter);
    EXPECT_EQ(dc.m_bitmap.size(), QSize(40, 30));
    EXPECT_EQ(dc.m_pDC, &painter);
    EXPECT_EQ(dc.m_pOldBitmap, nullptr);
    dc->fillRect(QRect(5, 6, 3, 2), QColor::fromRgb(kInk));
    EXPECT_EQ(target.pixel(5, 6), kPaper);  // still only in the buffer
  }
  painter.end();
  EXPECT_EQ(target.pixel(5, 6), kInk);
  EXPECT_EQ(target.pixel(7, 7), kInk);
  EXPECT_EQ(target.pixel(8, 7), kPaper);
  EXPECT_EQ(target.pixel(5, 8), kPaper);
}

TEST(MemDC, EmptyRectangleHasNoBitmapAndCopiesNothing) {
  QImage target = Paper(20, 20);
  QPainter painter(&target);
  for (const QRect& empty : {QRect(), QRect(5, 5, 0, 10), QRect(3, 4, 7, 0)}) {
    CMemDC dc(&painter, &empty);
    EXPECT_TRUE(dc.m_bMemDC);
    EXPECT_TRUE(dc.m_bitmap.isNull());
    EXPECT_FALSE(dc->isActive());
  }
  EXPECT_TRUE(painter.isActive());
  painter.end();
  for (int y = 0; y < 20; ++y)
    for (int x = 0; x < 20; ++x) ASSERT_EQ(target.pixel(x, y), kPaper) << x << "," << y;
}

TEST(MemDC, OffsetAreaDrawsInTheTargetsLogicalCoordinates) {
  QImage target = Paper(100, 80);
  QPainter painter(&target);
  const QRect area(30, 40, 20, 10);
  {
    CMemDC dc(&painter, &area);
    EXPECT_EQ(dc.m_bitmap.size(), QSize(20, 10));  // the area, not the target
    EXPECT_EQ(dc.m_rect, area);
    dc->fillRect(QRect(35, 45, 5, 5), QColor::fromRgb(kInk));
    dc->fillRect(QRect(0, 0, 10, 10), QColor::fromRgb(kInk));  // outside the area
  }
  painter.end();
  EXPECT_EQ(target.pixel(35, 45), kInk);
  EXPECT_EQ(target.pixel(39, 49), kInk);
  EXPECT_EQ(target.pixel(34, 45), kPaper);
  EXPECT_EQ(target.pixel(40, 45), kPaper);
  EXPECT_EQ(target.pixel(5, 5), kPaper);
}

TEST(MemDC, BitmapIsCountedInDevicePixelsUnderAScale) {
  QImage target = Paper(100, 100);
  QPainter painter(&target);
  painter.translate(10, 10);
  painter.scale(2, 2);
  const QRect area(5, 5, 20, 20);  // device 20..60
  {
    CMemDC dc(&painter, &area);
    EXPECT_EQ(dc.m_bitmap.size(), QSize(40, 40));
    dc->fillRect(QRect(10, 10, 2, 2), QColor::fromRgb(kInk));  // device 30..33
  }
  painter.end();
  EXPECT_EQ(target.pixel(30, 30), kInk);
  EXPECT_EQ(target.pixel(33, 33), kInk);
  EXPECT_EQ(target.pixel(29, 30), kPaper);
  EXPECT_EQ(target.pixel(34, 33), kPaper);
}

TEST(MemDC, WhatNobodyDrawsKeepsWhatTheTargetShows) {
  QImage target = Paper(10, 10);
  target.setPixel(2, 2, kInk);
  QPainter painter(&target);
  { CMemDC dc(&painter); }  // no rectangle: the clip box, the whole target
  painter.end();
  EXPECT_EQ(target.pixel(2, 2), kInk);
  EXPECT_EQ(target.pixel(3, 3), kPaper);
}

TEST(MemDC, WithoutRectangleTheBufferCoversTheClipBox) {
  QImage target = Paper(50, 50);
  QPainter painter(&target);
  painter.setClipRect(QRect(10, 20, 15, 5));
  CMemDC dc(&painter);
  EXPECT_EQ(dc.m_rect, QRect(10, 20, 15, 5));
  EXPECT_EQ(dc.m_bitmap.size(), QSize(15, 5));
}

TEST(MemDC, PrintingDrawsStraightOnTheRealPainterAndLeavesItValid) {
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("page.pdf"));
  QPdfWriter writer(path);
  QPainter painter(&writer);
  ASSERT_TRUE(painter.isActive());
  const QRect area(0, 0, 200, 100);
  {
    CMemDC dc(&painter, &area);
    EXPECT_FALSE(dc.m_bMemDC);
    EXPECT_EQ(dc.Dc(), &painter);
    EXPECT_EQ(&*dc, &painter);
    EXPECT_TRUE(dc.m_bitmap.isNull());
    dc->fillRect(QRect(10, 10, 50, 50), Qt::red);
  }
  EXPECT_TRUE(painter.isActive());
  painter.drawLine(0, 0, 100, 100);  // the real painter still works
  EXPECT_TRUE(painter.end());
  EXPECT_GT(QFileInfo(path).size(), 0);
}

TEST(MemDC, IsPrintingOnlyForPagedDevices) {
  QImage image = Paper(4, 4);
  QPainter onImage(&image);
  EXPECT_FALSE(IsPrinting(&onImage));
  QTemporaryDir dir;
  QPdfWriter writer(dir.filePath(QStringLiteral("p.pdf")));
  QPainter onPage(&writer);
  EXPECT_TRUE(IsPrinting(&onPage));
}

}  // namespace
}  // namespace tachyrun
