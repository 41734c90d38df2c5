#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "app/TestBitmap.h"
#include "measure/EffectRun.h"
#include "tests/support/RecordingEngine.h"

namespace tachyrun {
namespace {

using testing::RecordingEngine;
using testing::ScriptedClock;

class EffectTestFiles : public ::testing::Test {
 protected:
  // A bitmap of w x h whose pixel (x, y) has blue x, green y, red 7.
  std::string MakeBitmap(const char* name, int w, int h) {
    QImage image(w, h, QImage::Format_ARGB32);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) image.setPixel(x, y, qRgba(7, y & 0xFF, x & 0xFF, 255));
    const QString path = m_Dir.filePath(QString::fromUtf8(name));
    EXPECT_TRUE(image.save(path, "BMP"));
    return path.toStdString();
  }
  std::string MakeFile(const char* name, const std::string& bytes) {
    const std::string path = m_Dir.filePath(QString::fromUtf8(name)).toStdString();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }
  QTemporaryDir m_Dir;
};

TEST_F(EffectTestFiles, ASmallerBitmapCopiesStrideTimesHeightAndLeavesTheRest) {
  std::unique_ptr<CTestBitmap> image(
      CTestBitmap::FromFile(MakeBitmap("small.bmp", 100, 50).c_str()));
  EXPECT_EQ(image->GetHeight(), 50u);
  std::vector<uint8_t> dst(kEffectMaxBytes, 0xEE);
  EXPECT_EQ(CopyTestImage(image.get(), dst.data()), 100u * 4 * 50);
  EXPECT_EQ(dst[0], 0);        // blue of (0, 0)
  EXPECT_EQ(dst[4], 1);        // blue of (1, 0)
  EXPECT_EQ(dst[2], 7);        // red
  EXPECT_EQ(dst[3], 255);      // alpha
  EXPECT_EQ(dst[400 + 1], 1);  // green of (0, 1): rows top-down, stride 400
  for (size_t i = 20000; i < dst.size(); i += 997) ASSERT_EQ(dst[i], 0xEE) << i;
  EXPECT_EQ(dst.back(), 0xEE);
}

TEST_F(EffectTestFiles, ALargerBitmapCopiesExactlyOneSdFrameAsOneBlock) {
  std::unique_ptr<CTestBitmap> image(
      CTestBitmap::FromFile(MakeBitmap("large.bmp", 1000, 700).c_str()));
  std::vector<uint8_t> dst(kEffectMaxBytes + 64, 0xEE);
  EXPECT_EQ(CopyTestImage(image.get(), dst.data()), 1658880u);
  EXPECT_EQ(dst[kEffectMaxBytes], 0xEE);
  // Not re-laid per row: the second row of 720 pixels starts with pixel
  // (720, 0) of the wider picture.
  EXPECT_EQ(dst[720 * 4], 720 & 0xFF);
  EXPECT_EQ(dst[720 * 4 + 1], 0);
}

TEST_F(EffectTestFiles, AFileThatCantBeLoadedGivesAFailedBitmapAndCopiesNothing) {
  for (const std::string& path :
       {m_Dir.filePath("missing.bmp").toStdString(), MakeFile("corrupt.bmp", "BM\x10garbage"),
        MakeFile("empty.bmp", "")}) {
    std::unique_ptr<CTestBitmap> image(CTestBitmap::FromFile(path.c_str()));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->GetHeight(), 0u);
    BitmapData data{};
    EXPECT_NE(image->LockBits(kImageLockRead, kPixelFormat32bppARGB, &data), 0);
    EXPECT_EQ(data.Scan0, nullptr);
    std::vector<uint8_t> dst(kEffectMaxBytes, 0xEE);
    EXPECT_EQ(CopyTestImage(image.get(), dst.data()), 0u);
    EXPECT_EQ(dst[0], 0xEE);
  }
}

TEST_F(EffectTestFiles, RenderRunsOncePerspectiveOnTheSdPairWithTheImageInTheSource) {
  std::unique_ptr<CTestBitmap> image(
      CTestBitmap::FromFile(MakeBitmap("frame.bmp", 720, 576).c_str()));
  RecordingEngine gpu;
  std::vector<uint8_t> seen;
  gpu.onCall = [&](const testing::EngineCall& c) { seen.assign(c.pSource, c.pSource + 8); };
  std::vector<std::string> texts;
  RunEffectTest(
      gpu, image.get(), [&](const char* s) { texts.emplace_back(s); }, ScriptedClock({100, 117}));
  ASSERT_EQ(gpu.calls.size(), 1u);
  const testing::EngineCall& c = gpu.calls[0];
  EXPECT_EQ(c.strName, "Img_PerspectiveCoeffARGB");
  EXPECT_EQ(c.aArgs[0], 0);
  EXPECT_EQ(c.aArgs[1], 0);
  EXPECT_EQ(c.aArgs[2], 3);
  EXPECT_EQ(c.src.dwFormat, PIX_ARGB32);
  EXPECT_EQ(c.src.iWidth, 720);
  EXPECT_EQ(c.dst.iHeight, 576);
  EXPECT_EQ(c.dstRect.right, 720);
  uint32_t dwAspectBits = 0;
  std::memcpy(&dwAspectBits, &c.params.fAspect, 4);
  EXPECT_EQ(dwAspectBits, 0x3FE38E39u);
  for (double d : c.params.dCornerScale) EXPECT_EQ(d, 1.0);
  EXPECT_EQ(seen, (std::vector<uint8_t>{0, 0, 7, 255, 1, 0, 7, 255}));
  EXPECT_EQ(gpu.allocations,
            (std::vector<std::string>{"720x576/2880", "720x576/2880", "720x576/2880"}));
  EXPECT_EQ(gpu.freed.size(), 3u);
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_EQ(texts[0], "started...");
  EXPECT_EQ(texts[1],
            "Img_ResizeARGB Lin IPPMEM+BUFF RGB32 720x576 1920x1080 Time: 17.000 ms  Res=0");
}

TEST_F(EffectTestFiles, AFailedImageStillRendersWhateverTheSourceHolds) {
  std::unique_ptr<CTestBitmap> image(CTestBitmap::FromFile(MakeFile("bad.bmp", "xx").c_str()));
  RecordingEngine gpu;
  gpu.iStatus = 5;
  std::vector<uint8_t> seen;
  gpu.onCall = [&](const testing::EngineCall& c) { seen.assign(c.pSource, c.pSource + 4); };
  std::vector<std::string> texts;
  const RunResult result = RunEffectTest(
      gpu, image.get(), [&](const char* s) { texts.emplace_back(s); }, ScriptedClock({0, 0}));
  EXPECT_EQ(result.iStatus, 5);
  EXPECT_EQ(result.strLine, texts.back());
  EXPECT_EQ(seen, (std::vector<uint8_t>{0xEE, 0xEE, 0xEE, 0xEE}));
  EXPECT_EQ(texts.back(),
            "Img_ResizeARGB Lin IPPMEM+BUFF RGB32 720x576 1920x1080 Time: 0.000 ms  Res=5");
}

TEST_F(EffectTestFiles, FailedAllocationsSkipTheCopyAndFreeNothing) {
  std::unique_ptr<CTestBitmap> image(CTestBitmap::FromFile(MakeBitmap("f.bmp", 16, 16).c_str()));
  RecordingEngine gpu;
  gpu.bFailAllocations = true;
  std::vector<std::string> texts;
  RunEffectTest(
      gpu, image.get(), [&](const char* s) { texts.emplace_back(s); }, ScriptedClock({0, 0}));
  EXPECT_EQ(texts.size(), 2u);
  EXPECT_TRUE(gpu.freed.empty());
}

TEST(TestBitmap, LockNeedsTheReadModeAnd32BitArgb) {
  QTemporaryDir dir;
  QImage image(4, 4, QImage::Format_RGB888);
  image.fill(Qt::red);
  const QString path = dir.filePath("rgb.bmp");
  ASSERT_TRUE(image.save(path, "BMP"));
  std::unique_ptr<CTestBitmap> bitmap(CTestBitmap::FromFile(path.toLocal8Bit().constData()));
  BitmapData data{};
  EXPECT_NE(bitmap->LockBits(2, kPixelFormat32bppARGB, &data), 0);
  EXPECT_NE(bitmap->LockBits(kImageLockRead, 0x21808, &data), 0);
  ASSERT_EQ(bitmap->LockBits(kImageLockRead, kPixelFormat32bppARGB, &data), 0);
  EXPECT_EQ(data.Width, 4u);
  EXPECT_EQ(data.Stride, 16);
  const auto* px = static_cast<const uint8_t*>(data.Scan0);
  EXPECT_EQ(px[2], 255);  // converted to B,G,R,A: red third
  EXPECT_EQ(px[3], 255);
  EXPECT_EQ(bitmap->UnlockBits(&data), 0);
  std::unique_ptr<CTestBitmap> none(CTestBitmap::FromFile(nullptr));
  EXPECT_EQ(none->GetHeight(), 0u);
}

}  // namespace
}  // namespace tachyrun
