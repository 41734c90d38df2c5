// Every picture call answers bad arguments with a status and touches no
// byte outside the pictures its arguments describe.
#include <gtest/gtest.h>

#include <cstring>

#include "engine/Pixmill.h"
#include "tests/engine/EngineTestPictures.h"

using namespace enginetest;

namespace {

constexpr int W = 16, H = 8;

class BadInputTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(0, m_Engine.Img_InitConverter(-1, 2, nullptr, W, H, 0));
    m_Src = Gradient(W, H);
    m_Dst.assign(m_Src.size(), 0x5A);
  }

  // The destination is unchanged: a refused call writes nothing.
  void ExpectUntouched() {
    for (uint8_t b : m_Dst) ASSERT_EQ(0x5A, b);
  }

  // Runs all four picture calls with the given props and rectangles.
  void ExpectAllFail(tagPicProps sp, tagPicProps dp, tagRECT sr, tagRECT dr, int32_t status) {
    uint8_t* s = m_Src.data();
    uint8_t* d = m_Dst.data();
    PerspectiveParams params;
    EXPECT_EQ(status, m_Engine.Img_Resize(s, d, &sp, &dp, &sr, &dr, RESIZE_LINEAR, nullptr, 0));
    if (sp.dwFormat == PIX_ARGB32 && dp.dwFormat == PIX_ARGB32) {
      EXPECT_EQ(status, m_Engine.Img_ResizeARGB(s, d, &sp, &dp, &sr, &dr, 0, 2));
      EXPECT_EQ(status,
                m_Engine.Img_PerspectiveCoeffARGB(s, &sp, &sr, 0, 0, 3, d, &dp, &dr, &params));
    }
    EXPECT_EQ(status, m_Engine.Img_Convert2(s, d, &sp, &dp, &sr, &dr, false, nullptr));
    ExpectUntouched();
  }

  CPixmill m_Engine;
  Bytes m_Src, m_Dst;
  tagPicProps m_P = Props(PIX_ARGB32, W, H);
  tagRECT m_R = Whole(W, H);
};

}  // namespace

TEST_F(BadInputTest, NullBuffersAndProps) {
  PerspectiveParams params;
  uint8_t* d = m_Dst.data();
  EXPECT_EQ(PIXMILL_E_NULL_BUFFER,
            m_Engine.Img_Resize(nullptr, d, &m_P, &m_P, &m_R, &m_R, RESIZE_LINEAR, nullptr, 0));
  EXPECT_EQ(PIXMILL_E_NULL_BUFFER, m_Engine.Img_Resize(m_Src.data(), nullptr, &m_P, &m_P, &m_R,
                                                       &m_R, RESIZE_LINEAR, nullptr, 0));
  EXPECT_EQ(PIXMILL_E_NULL_BUFFER,
            m_Engine.Img_ResizeARGB(m_Src.data(), d, nullptr, &m_P, &m_R, &m_R, 0, 2));
  EXPECT_EQ(PIXMILL_E_NULL_BUFFER,
            m_Engine.Img_Convert2(m_Src.data(), d, &m_P, nullptr, &m_R, &m_R, false, nullptr));
  EXPECT_EQ(PIXMILL_E_NULL_BUFFER, m_Engine.Img_PerspectiveCoeffARGB(nullptr, &m_P, &m_R, 0, 0, 3,
                                                                     d, &m_P, &m_R, &params));
  EXPECT_EQ(PIXMILL_E_NULL_BUFFER, m_Engine.Img_PerspectiveCoeffARGB(m_Src.data(), &m_P, &m_R, 0, 0,
                                                                     3, d, &m_P, &m_R, nullptr));
  ExpectUntouched();
}

TEST_F(BadInputTest, ZeroAndNegativeSizes) {
  for (tagPicProps bad :
       {Props(PIX_ARGB32, 0, H), Props(PIX_ARGB32, W, 0), Props(PIX_ARGB32, -W, H),
        Props(PIX_ARGB32, W, -1), Props(PIX_ARGB32, 1 << 30, 1)}) {
    ExpectAllFail(bad, m_P, m_R, m_R, PIXMILL_E_SIZE);
    ExpectAllFail(m_P, bad, m_R, m_R, PIXMILL_E_SIZE);
  }
  ExpectAllFail(Props(PIX_YUY2, W - 1, H), m_P, m_R, m_R, PIXMILL_E_SIZE);  // odd YUY2 width
}

TEST_F(BadInputTest, UnknownFormats) {
  for (uint32_t format : {0u, 0x30323449u /* I420 */, 0xFFFFFFFFu}) {
    ExpectAllFail(Props(format, W, H), m_P, m_R, m_R, PIXMILL_E_FORMAT);
    ExpectAllFail(m_P, Props(format, W, H), m_R, m_R, PIXMILL_E_FORMAT);
  }
  // A resize does not convert; ResizeARGB and the perspective take ARGB only.
  tagPicProps yuy = Props(PIX_YUY2, W, H);
  EXPECT_EQ(PIXMILL_E_FORMAT, m_Engine.Img_Resize(m_Src.data(), m_Dst.data(), &m_P, &yuy, &m_R,
                                                  &m_R, RESIZE_LINEAR, nullptr, 0));
  EXPECT_EQ(PIXMILL_E_FORMAT,
            m_Engine.Img_ResizeARGB(m_Src.data(), m_Dst.data(), &yuy, &yuy, &m_R, &m_R, 0, 2));
  PerspectiveParams params;
  EXPECT_EQ(PIXMILL_E_FORMAT, m_Engine.Img_PerspectiveCoeffARGB(m_Src.data(), &yuy, &m_R, 0, 0, 3,
                                                                m_Dst.data(), &m_P, &m_R, &params));
  ExpectUntouched();
}

TEST_F(BadInputTest, RectanglesOutsideOrEmpty) {
  for (tagRECT bad : {tagRECT{-1, 0, W, H}, tagRECT{0, -1, W, H}, tagRECT{0, 0, W + 1, H},
                      tagRECT{0, 0, W, H + 1}, tagRECT{4, 0, 4, H}, tagRECT{0, 5, W, 2},
                      tagRECT{INT32_MIN, 0, INT32_MAX, H}}) {
    ExpectAllFail(m_P, m_P, bad, m_R, PIXMILL_E_RECT);
    ExpectAllFail(m_P, m_P, m_R, bad, PIXMILL_E_RECT);
  }
  // YUY2 rectangles start and end on a macro-pixel.
  tagPicProps yuy = Props(PIX_YUY2, W, H);
  ExpectAllFail(yuy, yuy, tagRECT{1, 0, W - 1, H}, m_R, PIXMILL_E_RECT);
  // A conversion does not scale.
  tagRECT half{0, 0, W / 2, H};
  EXPECT_EQ(PIXMILL_E_RECT, m_Engine.Img_Convert2(m_Src.data(), m_Dst.data(), &m_P, &m_P, &m_R,
                                                  &half, false, nullptr));
  ExpectUntouched();
}

TEST_F(BadInputTest, UnknownModesAndFlags) {
  uint8_t* s = m_Src.data();
  uint8_t* d = m_Dst.data();
  EXPECT_EQ(PIXMILL_E_ARGUMENT, m_Engine.Img_Resize(s, d, &m_P, &m_P, &m_R, &m_R,
                                                    static_cast<eResizeQuality>(5), nullptr, 0));
  EXPECT_EQ(PIXMILL_E_ARGUMENT,
            m_Engine.Img_Resize(s, d, &m_P, &m_P, &m_R, &m_R, RESIZE_LINEAR, nullptr, 1));
  EXPECT_EQ(PIXMILL_E_ARGUMENT, m_Engine.Img_ResizeARGB(s, d, &m_P, &m_P, &m_R, &m_R, 1, 2));
  EXPECT_EQ(PIXMILL_E_ARGUMENT, m_Engine.Img_ResizeARGB(s, d, &m_P, &m_P, &m_R, &m_R, 0, 4));
  EXPECT_EQ(PIXMILL_E_ARGUMENT, m_Engine.Img_ResizeARGB(s, d, &m_P, &m_P, &m_R, &m_R, 0, -1));
  PerspectiveParams params;
  EXPECT_EQ(PIXMILL_E_ARGUMENT,
            m_Engine.Img_PerspectiveCoeffARGB(s, &m_P, &m_R, 1, 0, 3, d, &m_P, &m_R, &params));
  EXPECT_EQ(PIXMILL_E_ARGUMENT,
            m_Engine.Img_PerspectiveCoeffARGB(s, &m_P, &m_R, 0, 0, 4, d, &m_P, &m_R, &params));
  ExpectUntouched();
}

TEST_F(BadInputTest, DegenerateOrNonFinitePerspective) {
  uint8_t* s = m_Src.data();
  uint8_t* d = m_Dst.data();
  PerspectiveParams flat;
  for (double& scale : flat.dCornerScale) scale = 0.0;  // all corners on the centre
  EXPECT_EQ(PIXMILL_E_ARGUMENT,
            m_Engine.Img_PerspectiveCoeffARGB(s, &m_P, &m_R, 0, 0, 3, d, &m_P, &m_R, &flat));
  PerspectiveParams bowtie;
  bowtie.dCornerOffset[2] = -2.0 * W;  // top-right corner crosses over the top-left
  EXPECT_EQ(PIXMILL_E_ARGUMENT,
            m_Engine.Img_PerspectiveCoeffARGB(s, &m_P, &m_R, 0, 0, 3, d, &m_P, &m_R, &bowtie));
  PerspectiveParams nan;
  nan.fRotation = std::nanf("");
  EXPECT_EQ(PIXMILL_E_ARGUMENT,
            m_Engine.Img_PerspectiveCoeffARGB(s, &m_P, &m_R, 0, 0, 3, d, &m_P, &m_R, &nan));
  PerspectiveParams inf;
  inf.dCornerScale[1] = HUGE_VAL;
  EXPECT_EQ(PIXMILL_E_ARGUMENT,
            m_Engine.Img_PerspectiveCoeffARGB(s, &m_P, &m_R, 0, 0, 3, d, &m_P, &m_R, &inf));
  ExpectUntouched();
}

TEST_F(BadInputTest, OverlappingPicturesAreRefused) {
  Bytes both(static_cast<size_t>(W) * H * 8, 0x5A);
  uint8_t* a = both.data();
  uint8_t* b = both.data() + W * 4;  // shares all but one row
  const Bytes before = both;
  EXPECT_EQ(PIXMILL_E_ARGUMENT,
            m_Engine.Img_Resize(a, b, &m_P, &m_P, &m_R, &m_R, RESIZE_LINEAR, nullptr, 0));
  EXPECT_EQ(PIXMILL_E_ARGUMENT,
            m_Engine.Img_Convert2(a, a, &m_P, &m_P, &m_R, &m_R, false, nullptr));
  EXPECT_EQ(before, both);
}

TEST_F(BadInputTest, GpuEngineWithoutDeviceAnswersEveryCall) {
  setenv("TACHYRUN_OPENCL_DEVICE", "no such device anywhere", 1);
  CPixmill gpu;
  EXPECT_EQ(PIXMILL_E_NO_DEVICE, gpu.Img_InitConverter(-2, 1, nullptr, 720, 576, 0));
  unsetenv("TACHYRUN_OPENCL_DEVICE");
  uint8_t* s = m_Src.data();
  uint8_t* d = m_Dst.data();
  PerspectiveParams params;
  EXPECT_EQ(PIXMILL_E_NO_DEVICE,
            gpu.Img_Resize(s, d, &m_P, &m_P, &m_R, &m_R, RESIZE_LINEAR, nullptr, 0));
  EXPECT_EQ(PIXMILL_E_NO_DEVICE, gpu.Img_ResizeARGB(s, d, &m_P, &m_P, &m_R, &m_R, 0, 2));
  EXPECT_EQ(PIXMILL_E_NO_DEVICE, gpu.Img_Convert2(s, d, &m_P, &m_P, &m_R, &m_R, false, nullptr));
  EXPECT_EQ(PIXMILL_E_NO_DEVICE,
            gpu.Img_PerspectiveCoeffARGB(s, &m_P, &m_R, 0, 0, 3, d, &m_P, &m_R, &params));
  EXPECT_EQ(PIXMILL_E_NO_DEVICE, gpu.MakeTest(1));
  char text[150];
  gpu.GetTestMsg(text, sizeof(text));
  EXPECT_NE(nullptr, std::strstr(text, "no OpenCL device named")) << text;
  ExpectUntouched();
}
