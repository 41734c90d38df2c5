// The tests' work record, the result-line arithmetic and the block copy.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

#include "measure/MmxBlockCopy.h"
#include "measure/PicturePairState.h"
#include "measure/ResultLines.h"

namespace tachyrun {
namespace {

TEST(PicturePairState, ConstructorZeroesEverythingButTheAudioRate) {
  alignas(CPicturePairState) unsigned char storage[sizeof(CPicturePairState)];
  std::memset(storage, 0xAB, sizeof storage);
  auto* state = new (storage) CPicturePairState;
  const auto* bytes =
      reinterpret_cast<const unsigned char*>(static_cast<PicturePairFields*>(state));
  for (size_t i = 0; i < sizeof(PicturePairFields); ++i) {
    if (i >= offsetof(PicturePairFields, iAudioRate) &&
        i < offsetof(PicturePairFields, iAudioRate) + 4)
      continue;
    ASSERT_EQ(bytes[i], 0) << "byte " << i;
  }
  EXPECT_EQ(int32_t{state->iAudioRate}, 44100);  // a copy: the packed field is unaligned
  state->~CPicturePairState();
}

TEST(PicturePairState, LockSitsBehindTheFieldsAndWorks) {
  CPicturePairState state;
  EXPECT_GE(reinterpret_cast<const char*>(&state.m_Lock) - reinterpret_cast<const char*>(&state),
            static_cast<std::ptrdiff_t>(sizeof(PicturePairFields)));
  EXPECT_EQ(state.m_Lock.Acquire(0), 1);
  EXPECT_EQ(state.m_Lock.Release(), 1);
}

TEST(PicturePairState, SetPicturesFillsSizesBytesFormatsAndLineFigures) {
  CPicturePairState state;
  state.SetPictures(720, 576, 0x773C9AC0u, 1920, 1080, 0x32595559u, 5);
  EXPECT_EQ(state.iPictureBytes, 1658880);
  EXPECT_EQ(state.iSrcBytes, 1658880);
  EXPECT_EQ(state.iDstBytes, 8294400);
  EXPECT_EQ(state.iSrcLine, 3600);
  EXPECT_EQ(state.iDstLine, 9600);
  EXPECT_EQ(state.dwSrcFormat, 0x773C9AC0u);
  EXPECT_EQ(state.dwDstFormat, 0x32595559u);
  EXPECT_EQ(state.iSrcWidth, 720);
  EXPECT_EQ(state.iDstHeight, 1080);
  state.SetPictures(1920, 1080, 0x32595559u, 1920, 1080, 0x773C9AC0u, 4);
  EXPECT_EQ(state.iSrcLine, 7680);
  EXPECT_EQ(state.iDstLine, 7680);
  EXPECT_EQ(int32_t{state.iAudioRate}, 44100);
}

TEST(ResultLines, TimePerRoundIsASinglePrecisionQuotient) {
  EXPECT_EQ(TimePerRound(250, 100), 2.5f);
  EXPECT_EQ(TimePerRound(1, 3), static_cast<float>(1.0 / 3.0));
  EXPECT_EQ(TimePerRound(0xFFFFFFFFu, 1), static_cast<float>(4294967295.0));
  EXPECT_EQ(TimePerRound(0, 2000), 0.0f);
}

TEST(ResultLines, MemCopyFiguresOfASpanOfZeroAreInfinite) {
  const MemCopyFigures f = ComputeMemCopyFigures(0, 2000, 8294400);
  EXPECT_EQ(f.fFrameTime, 0.0f);
  EXPECT_TRUE(std::isinf(f.fFps));
  EXPECT_TRUE(std::isinf(f.fMBSec));
  char szLine[kLineSize];
  FormatMemCopyLine(szLine, f, 0);
  EXPECT_STREQ(
      szLine,
      "1CPU  Mem copy  1920x1080  1920x1080  FPS=inf  FrameTime:0.000ms  MBSec=inf   Res=0");
}

TEST(ResultLines, FormatTimeLineUsesThreeDecimals) {
  char szLine[kLineSize];
  FormatTimeLine(szLine, kResizeArgbLineFormat, 12.3456f, -1);
  EXPECT_STREQ(szLine,
               "Img_ResizeARGB Lin IPPMEM+BUFF RGB32 720x576 1920x1080 Time: 12.346 ms  Res=-1");
}

TEST(ResultLines, ParseFiguresReadsNamedNumbers) {
  const auto figures = ParseFigures(
      "1CPU  Mem copy  1920x1080  1920x1080  FPS=inf  FrameTime:0.300ms  MBSec=27648.000   Res=-3");
  ASSERT_EQ(figures.size(), 4u);
  EXPECT_EQ(figures[0].first, "FPS");
  EXPECT_TRUE(std::isinf(figures[0].second));
  EXPECT_EQ(figures[1].first, "FrameTime");
  EXPECT_DOUBLE_EQ(figures[1].second, 0.3);
  EXPECT_EQ(figures[2].first, "MBSec");
  EXPECT_DOUBLE_EQ(figures[2].second, 27648.0);
  EXPECT_EQ(figures[3].first, "Res");
  EXPECT_EQ(figures[3].second, -3.0);
  const auto timed = ParseFigures("Img_Resize YUY2 720x576 1920x1080 Time: 2.500 ms  Res=0");
  ASSERT_EQ(timed.size(), 2u);
  EXPECT_EQ(timed[0].first, "Time");
  EXPECT_DOUBLE_EQ(timed[0].second, 2.5);
  EXPECT_TRUE(ParseFigures("").empty());
  EXPECT_TRUE(ParseFigures("Res=").empty());
  EXPECT_TRUE(ParseFigures("started...").empty());
}

TEST(MmxBlockCopy, MultiplesOf64AreCopiedWhole) {
  std::vector<unsigned char> src(256), dst(256, 0);
  for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<unsigned char>(i * 7 + 1);
  MmxBlockCopy(dst.data(), src.data(), 256);
  EXPECT_EQ(dst, src);
  std::vector<unsigned char> one(64, 0);
  MmxBlockCopy(one.data(), src.data(), 64);
  EXPECT_TRUE(std::equal(one.begin(), one.end(), src.begin()));
}

TEST(MmxBlockCopy, SizeZeroTouchesNothing) {
  std::vector<unsigned char> dst(64, 0x55);
  MmxBlockCopy(dst.data(), nullptr, 0);
  EXPECT_EQ(dst, std::vector<unsigned char>(64, 0x55));
}

TEST(MmxBlockCopy, OtherSizesCopyTheBlocksAndLeaveTheTail) {
  std::vector<unsigned char> src(200, 0x11), dst(200, 0x99);
  MmxBlockCopy(dst.data(), src.data(), 150);  // two blocks, a tail of 22
  for (size_t i = 0; i < 128; ++i) ASSERT_EQ(dst[i], 0x11) << i;
  for (size_t i = 128; i < 200; ++i) ASSERT_EQ(dst[i], 0x99) << i;
  std::vector<unsigned char> small(63, 0x99);
  MmxBlockCopy(small.data(), src.data(), 63);  // below one block: nothing
  EXPECT_EQ(small, std::vector<unsigned char>(63, 0x99));
}

}  // namespace
}  // namespace tachyrun
