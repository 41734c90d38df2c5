// The CPU backend against the plain references of EngineTestPictures.h.
// Tolerances: 3 levels for resampling smooth pictures (the engine's 7-bit
// weights and 16.16 positions against exact ones, on slopes of up to 3.6
// levels a pixel), 3 for the colour
// conversions (fixed point coefficients against the exact BT.601 ones).
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "engine/Pixmill.h"
#include "tests/engine/EngineTestPictures.h"

using namespace enginetest;

namespace {

constexpr int kResizeTolerance = 3;
constexpr int kColourTolerance = 3;

class CpuOpsTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(0, m_Engine.Img_InitConverter(-1, 1, nullptr, 72, 56, 0)); }

  Bytes ResizeArgb(const Bytes& src, int sw, int sh, int dw, int dh, int filter) {
    Bytes dst(static_cast<size_t>(dw) * dh * 4);
    tagPicProps sp = Props(PIX_ARGB32, sw, sh), dp = Props(PIX_ARGB32, dw, dh);
    tagRECT sr = Whole(sw, sh), dr = Whole(dw, dh);
    EXPECT_EQ(0, m_Engine.Img_ResizeARGB(const_cast<uint8_t*>(src.data()), dst.data(), &sp, &dp,
                                         &sr, &dr, 0, filter));
    return dst;
  }

  CPixmill m_Engine;
};

}  // namespace

TEST_F(CpuOpsTest, ResizeArgbUpMatchesBilinearReference) {
  const Bytes src = Gradient(72, 56);
  EXPECT_LE(MaxDiff(ResizeArgb(src, 72, 56, 192, 108, 2), RefScaleArgb(src, 72, 56, 192, 108)),
            kResizeTolerance);
}

TEST_F(CpuOpsTest, ResizeArgbDownMatchesBilinearReference) {
  const Bytes src = Gradient(192, 108);
  EXPECT_LE(MaxDiff(ResizeArgb(src, 192, 108, 72, 56, 2), RefScaleArgb(src, 192, 108, 72, 56)),
            kResizeTolerance);
}

TEST_F(CpuOpsTest, ResizeSameSizeIsACopy) {
  const Bytes src = Noise(72 * 56 * 4, 7);
  for (int filter = 0; filter <= 3; ++filter)
    EXPECT_EQ(src, ResizeArgb(src, 72, 56, 72, 56, filter));
}

TEST_F(CpuOpsTest, NearestDoublingRepeatsEachPixel) {
  const Bytes src = Noise(8 * 6 * 4, 3);
  const Bytes dst = ResizeArgb(src, 8, 6, 16, 12, 0);
  for (int y = 0; y < 12; ++y) {
    for (int x = 0; x < 16; ++x) {
      ASSERT_EQ(0, std::memcmp(&dst[(y * 16 + x) * 4], &src[((y / 2) * 8 + x / 2) * 4], 4));
    }
  }
}

TEST_F(CpuOpsTest, AreaQualityAveragesTwoByTwoBlocks) {
  const Bytes src = Noise(16 * 8 * 4, 5);
  Bytes dst(8 * 4 * 4);
  tagPicProps sp = Props(PIX_ARGB32, 16, 8), dp = Props(PIX_ARGB32, 8, 4);
  ASSERT_EQ(0, m_Engine.Img_Resize(src.data(), dst.data(), &sp, &dp, nullptr, nullptr, RESIZE_AREA,
                                   nullptr, 0));
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 8; ++x) {
      for (int c = 0; c < 4; ++c) {
        auto at = [&](int sx, int sy) { return src[((sy * 16) + sx) * 4 + c]; };
        const double mean = (at(2 * x, 2 * y) + at(2 * x + 1, 2 * y) + at(2 * x, 2 * y + 1) +
                             at(2 * x + 1, 2 * y + 1)) /
                            4.0;
        EXPECT_LE(std::abs(dst[(y * 8 + x) * 4 + c] - mean), 1.0);
      }
    }
  }
}

TEST_F(CpuOpsTest, ResizeWritesOnlyTheDestinationRectangle) {
  const Bytes src = Gradient(72, 56);
  Bytes dst(100 * 80 * 4, 0x33);
  tagPicProps sp = Props(PIX_ARGB32, 72, 56), dp = Props(PIX_ARGB32, 100, 80);
  tagRECT sr{8, 4, 40, 36}, dr{10, 20, 74, 52};  // 32x32 into 64x32
  ASSERT_EQ(0, m_Engine.Img_Resize(src.data(), dst.data(), &sp, &dp, &sr, &dr, RESIZE_LINEAR,
                                   nullptr, 0));
  Bytes part(32 * 32 * 4);
  for (int y = 0; y < 32; ++y) std::memcpy(&part[y * 32 * 4], &src[((y + 4) * 72 + 8) * 4], 128);
  const Bytes ref = RefScaleArgb(part, 32, 32, 64, 32);
  for (int y = 0; y < 80; ++y) {
    for (int x = 0; x < 100; ++x) {
      const uint8_t* p = &dst[(y * 100 + x) * 4];
      if (x >= 10 && x < 74 && y >= 20 && y < 52) {
        EXPECT_LE(MaxDiff(p, &ref[((y - 20) * 64 + x - 10) * 4], 4), kResizeTolerance);
      } else {
        ASSERT_EQ(0x33333333u, *reinterpret_cast<const uint32_t*>(p)) << x << "," << y;
      }
    }
  }
}

TEST_F(CpuOpsTest, ResizeYuy2MatchesPlaneReference) {
  const Bytes src = Yuy2Gradient(72, 56);
  Bytes dst(192 * 108 * 2);
  tagPicProps sp = Props(PIX_YUY2, 72, 56), dp = Props(PIX_YUY2, 192, 108);
  ASSERT_EQ(0, m_Engine.Img_Resize(src.data(), dst.data(), &sp, &dp, nullptr, nullptr,
                                   RESIZE_LINEAR, nullptr, 0));
  EXPECT_LE(MaxDiff(dst, RefScaleYuy2(src, 72, 56, 192, 108)), kResizeTolerance);
  Bytes down(40 * 30 * 2);
  tagPicProps downP = Props(PIX_YUY2, 40, 30);
  ASSERT_EQ(0, m_Engine.Img_Resize(src.data(), down.data(), &sp, &downP, nullptr, nullptr,
                                   RESIZE_LINEAR, nullptr, 0));
  EXPECT_LE(MaxDiff(down, RefScaleYuy2(src, 72, 56, 40, 30)), kResizeTolerance);
}

TEST_F(CpuOpsTest, Yuy2ToArgbMatchesBt601) {
  Bytes src = Noise(72 * 56 * 2, 11);
  for (size_t i = 0; i < src.size(); ++i) src[i] = uint8_t(16 + src[i] % 220);  // legal range
  Bytes dst(72 * 56 * 4);
  tagPicProps sp = Props(PIX_YUY2, 72, 56), dp = Props(PIX_ARGB32, 72, 56);
  ASSERT_EQ(
      0, m_Engine.Img_Convert2(src.data(), dst.data(), &sp, &dp, nullptr, nullptr, false, nullptr));
  EXPECT_LE(MaxDiff(dst, RefYuy2ToArgb(src, 72, 56)), kColourTolerance);
}

TEST_F(CpuOpsTest, ArgbToYuy2MatchesBt601) {
  const Bytes src = Noise(72 * 56 * 4, 13);
  Bytes dst(72 * 56 * 2);
  tagPicProps sp = Props(PIX_ARGB32, 72, 56), dp = Props(PIX_YUY2, 72, 56);
  ASSERT_EQ(
      0, m_Engine.Img_Convert2(src.data(), dst.data(), &sp, &dp, nullptr, nullptr, false, nullptr));
  EXPECT_LE(MaxDiff(dst, RefArgbToYuy2(src, 72, 56)), kColourTolerance);
}

TEST_F(CpuOpsTest, SameFormatConvertCopiesAndFlagFlips) {
  const Bytes src = Noise(72 * 56 * 4, 17);
  Bytes dst(src.size()), flipped(src.size());
  tagPicProps p = Props(PIX_ARGB32, 72, 56);
  ASSERT_EQ(
      0, m_Engine.Img_Convert2(src.data(), dst.data(), &p, &p, nullptr, nullptr, false, nullptr));
  EXPECT_EQ(src, dst);
  ASSERT_EQ(0, m_Engine.Img_Convert2(src.data(), flipped.data(), &p, &p, nullptr, nullptr, true,
                                     nullptr));
  for (int y = 0; y < 56; ++y) {
    ASSERT_EQ(0, std::memcmp(&flipped[y * 72 * 4], &src[(55 - y) * 72 * 4], 72 * 4)) << y;
  }
}

TEST_F(CpuOpsTest, ConvertRectanglesMoveThePart) {
  const Bytes src = Noise(72 * 56 * 2, 19);
  Bytes dst(72 * 56 * 2, 0);
  tagPicProps p = Props(PIX_YUY2, 72, 56);
  tagRECT sr{2, 3, 12, 9}, dr{60, 50, 70, 56};
  ASSERT_EQ(0, m_Engine.Img_Convert2(src.data(), dst.data(), &p, &p, &sr, &dr, false, nullptr));
  for (int y = 0; y < 6; ++y) {
    EXPECT_EQ(0, std::memcmp(&dst[((50 + y) * 72 + 60) * 2], &src[((3 + y) * 72 + 2) * 2], 20));
  }
  EXPECT_EQ(0, dst[0]);
}

// The perspective render: exact where the map is exact.
TEST_F(CpuOpsTest, PerspectiveWithDefaultParamsReproducesTheSource) {
  const Bytes src = Noise(72 * 56 * 4, 23);
  tagPicProps p = Props(PIX_ARGB32, 72, 56);
  for (int filter : {0, 1, 2, 3}) {
    Bytes dst(src.size(), 0x11);
    PerspectiveParams params;
    ASSERT_EQ(0, m_Engine.Img_PerspectiveCoeffARGB(const_cast<uint8_t*>(src.data()), &p, nullptr, 0,
                                                   0, filter, dst.data(), &p, nullptr, &params));
    EXPECT_EQ(src, dst) << filter;
  }
}

TEST_F(CpuOpsTest, PerspectiveHalfTurnMirrorsBothWays) {
  const Bytes src = Noise(72 * 56 * 4, 29);
  Bytes dst(src.size());
  tagPicProps p = Props(PIX_ARGB32, 72, 56);
  PerspectiveParams params;
  params.fRotation = 180.0f;
  ASSERT_EQ(0, m_Engine.Img_PerspectiveCoeffARGB(const_cast<uint8_t*>(src.data()), &p, nullptr, 0,
                                                 0, 3, dst.data(), &p, nullptr, &params));
  int off = 0;
  for (int y = 0; y < 56; ++y) {
    for (int x = 0; x < 72; ++x) {
      off += MaxDiff(&dst[(y * 72 + x) * 4], &src[((55 - y) * 72 + 71 - x) * 4], 4) > 1;
    }
  }
  EXPECT_EQ(0, off);
}

TEST_F(CpuOpsTest, PerspectiveShiftClearsOrKeepsWhatItUncovers) {
  const Bytes src = Noise(72 * 56 * 4, 31);
  tagPicProps p = Props(PIX_ARGB32, 72, 56);
  for (bool keep : {false, true}) {
    Bytes dst(src.size(), 0x77);
    PerspectiveParams params;
    params.fShiftX = 5.0f;
    params.dwFlags = keep ? PERSPECTIVE_KEEP_OUTSIDE : 0;
    ASSERT_EQ(0, m_Engine.Img_PerspectiveCoeffARGB(const_cast<uint8_t*>(src.data()), &p, nullptr, 0,
                                                   0, 1, dst.data(), &p, nullptr, &params));
    for (int y = 0; y < 56; ++y) {
      for (int x = 0; x < 72; ++x) {
        const uint8_t* d = &dst[(y * 72 + x) * 4];
        if (x >= 5) {
          ASSERT_EQ(0, std::memcmp(d, &src[(y * 72 + x - 5) * 4], 4)) << x << "," << y;
        } else {
          ASSERT_EQ(keep ? 0x77 : 0, d[0]) << x << "," << y;
        }
      }
    }
  }
}

TEST_F(CpuOpsTest, PerspectiveCornerScaleShrinksAboutTheCentre) {
  const Bytes src = Gradient(64, 48);
  Bytes dst(src.size(), 0x77);
  tagPicProps p = Props(PIX_ARGB32, 64, 48);
  PerspectiveParams params;
  for (double& s : params.dCornerScale) s = 0.5;
  ASSERT_EQ(0, m_Engine.Img_PerspectiveCoeffARGB(const_cast<uint8_t*>(src.data()), &p, nullptr, 0,
                                                 0, 1, dst.data(), &p, nullptr, &params));
  // Inside the centred 32x24 quad: the source at twice the distance.
  for (int y = 12; y < 36; ++y) {
    for (int x = 16; x < 48; ++x) {
      const double u = (x + 0.5 - 16) * 2, v = (y + 0.5 - 12) * 2;
      for (int c = 0; c < 4; ++c) {
        const double ref = RefBilinear(&src[c], 64 * 4, 4, 64, 48, u - 0.5, v - 0.5);
        ASSERT_LE(std::abs(dst[(y * 64 + x) * 4 + c] - ref), 1.0) << x << "," << y;
      }
    }
  }
  EXPECT_EQ(0, dst[0]);  // outside is cleared
  EXPECT_EQ(0, dst[(47 * 64 + 63) * 4 + 3]);
}
