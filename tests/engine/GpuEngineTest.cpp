// The OpenCL backend (PoCL's CPU device in CI) against the CPU backend.
// Tolerances: 3 levels for the colour conversions (float against fixed
// point); for resampling smooth pictures 3 with linear quality (float
// weights against 7-bit ones) and 6 with the fast-linear and area qualities
// (the device rounds its nearest rows and averages exact areas, the CPU's
// filters approximate both, on slopes of up to 2.7 levels a pixel); for the perspective
// render 2 levels everywhere but along the quad's edges, where float and
// double may decide a pixel centre differently (at most 1% of pixels).
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "engine/Pixmill.h"
#include "tests/engine/EngineTestPictures.h"

using namespace enginetest;

namespace {

class GpuEngineTest : public ::testing::Test {
 protected:
  // PoCL compiles the kernels with LLVM: one engine serves the whole suite.
  static void SetUpTestSuite() {
    s_pGpu = std::make_unique<CPixmill>();
    s_iInit = s_pGpu->Img_InitConverter(-2, 1, nullptr, 128, 96, 0);
    s_pCpu = std::make_unique<CPixmill>();
    s_pCpu->Img_InitConverter(-1, 1, nullptr, 128, 96, 0);
  }
  static void TearDownTestSuite() {
    s_pGpu.reset();
    s_pCpu.reset();
  }
  void SetUp() override {
    if (s_iInit == PIXMILL_E_NO_DEVICE) GTEST_SKIP() << "no OpenCL device on this machine";
    ASSERT_EQ(0, s_iInit);
  }

  // Runs the same call on both engines into fresh destinations.
  template <typename Fn>
  void Both(size_t bytes, Fn fn, Bytes* gpu, Bytes* cpu) {
    gpu->assign(bytes, 0x3C);
    cpu->assign(bytes, 0x3C);
    ASSERT_EQ(0, fn(*s_pGpu, gpu->data()));
    ASSERT_EQ(0, fn(*s_pCpu, cpu->data()));
  }

  static std::unique_ptr<CPixmill> s_pGpu, s_pCpu;
  static int s_iInit;
};

std::unique_ptr<CPixmill> GpuEngineTest::s_pGpu, GpuEngineTest::s_pCpu;
int GpuEngineTest::s_iInit = 0;

}  // namespace

TEST_F(GpuEngineTest, ConversionsMatchCpu) {
  Bytes yuy = Yuy2Gradient(128, 96), argb = Gradient(128, 96), gpu, cpu;
  tagPicProps a = Props(PIX_ARGB32, 128, 96), y = Props(PIX_YUY2, 128, 96);
  for (bool flip : {false, true}) {
    Both(
        argb.size(),
        [&](CPixmill& e, uint8_t* d) {
          return e.Img_Convert2(yuy.data(), d, &y, &a, nullptr, nullptr, flip, nullptr);
        },
        &gpu, &cpu);
    EXPECT_LE(MaxDiff(gpu, cpu), 3);
    Both(
        yuy.size(),
        [&](CPixmill& e, uint8_t* d) {
          return e.Img_Convert2(argb.data(), d, &a, &y, nullptr, nullptr, flip, nullptr);
        },
        &gpu, &cpu);
    EXPECT_LE(MaxDiff(gpu, cpu), 3);
    Both(
        argb.size(),
        [&](CPixmill& e, uint8_t* d) {
          return e.Img_Convert2(argb.data(), d, &a, &a, nullptr, nullptr, flip, nullptr);
        },
        &gpu, &cpu);
    EXPECT_EQ(gpu, cpu);
  }
}

TEST_F(GpuEngineTest, ResizeArgbMatchesCpu) {
  const Bytes src = Gradient(128, 96);
  tagPicProps sp = Props(PIX_ARGB32, 128, 96);
  tagRECT sr{4, 6, 124, 90};
  for (auto [dw, dh] : {std::pair{200, 150}, std::pair{50, 40}, std::pair{128, 96}}) {
    tagPicProps dp = Props(PIX_ARGB32, dw, dh);
    tagRECT dr{2, 2, dw - 2, dh - 2};
    for (eResizeQuality q : {RESIZE_LINEAR, RESIZE_FAST_LINEAR, RESIZE_AREA}) {
      Bytes gpu, cpu;
      Both(
          size_t(dw) * dh * 4,
          [&](CPixmill& e, uint8_t* d) {
            return e.Img_Resize(src.data(), d, &sp, &dp, &sr, &dr, q, nullptr, 0);
          },
          &gpu, &cpu);
      EXPECT_LE(MaxDiff(gpu, cpu), q == RESIZE_LINEAR ? 3 : 6)
          << dw << "x" << dh << " quality " << q;
    }
  }
}

TEST_F(GpuEngineTest, ResizeYuy2MatchesCpu) {
  const Bytes src = Yuy2Gradient(128, 96);
  tagPicProps sp = Props(PIX_YUY2, 128, 96);
  for (auto [dw, dh] : {std::pair{200, 150}, std::pair{64, 40}}) {
    tagPicProps dp = Props(PIX_YUY2, dw, dh);
    Bytes gpu, cpu;
    Both(
        size_t(dw) * dh * 2,
        [&](CPixmill& e, uint8_t* d) {
          return e.Img_Resize(src.data(), d, &sp, &dp, nullptr, nullptr, RESIZE_LINEAR, nullptr, 0);
        },
        &gpu, &cpu);
    EXPECT_LE(MaxDiff(gpu, cpu), 3) << dw << "x" << dh;
  }
}

TEST_F(GpuEngineTest, PerspectiveMatchesCpu) {
  const Bytes src = Gradient(128, 96);
  tagPicProps p = Props(PIX_ARGB32, 128, 96);
  PerspectiveParams turned;
  turned.fRotation = 12.0f;
  turned.dCornerScale[2] = 0.7;
  turned.dCornerOffset[0] = 6.0;
  for (int filter : {1, 3}) {
    for (const PerspectiveParams& params : {PerspectiveParams(), turned}) {
      PerspectiveParams copy = params;
      Bytes gpu, cpu;
      Both(
          src.size(),
          [&](CPixmill& e, uint8_t* d) {
            return e.Img_PerspectiveCoeffARGB(const_cast<uint8_t*>(src.data()), &p, nullptr, 0, 0,
                                              filter, d, &p, nullptr, &copy);
          },
          &gpu, &cpu);
      int off = 0;
      for (size_t px = 0; px < gpu.size(); px += 4) off += MaxDiff(&gpu[px], &cpu[px], 4) > 2;
      EXPECT_LE(off, 128 * 96 / 100) << "filter " << filter;
    }
  }
}

TEST_F(GpuEngineTest, PerspectiveInRectanglesKeepsTheOutsideLikeCpu) {
  const Bytes src = Gradient(128, 96);
  tagPicProps p = Props(PIX_ARGB32, 128, 96);
  tagRECT sr{10, 8, 110, 88}, dr{20, 12, 100, 72};
  PerspectiveParams params;
  params.dwFlags = PERSPECTIVE_KEEP_OUTSIDE;
  params.dCornerScale[0] = params.dCornerScale[3] = 0.5;  // a trapezoid
  Bytes gpu, cpu;
  Both(
      src.size(),
      [&](CPixmill& e, uint8_t* d) {
        return e.Img_PerspectiveCoeffARGB(const_cast<uint8_t*>(src.data()), &p, &sr, 0, 0, 3, d, &p,
                                          &dr, &params);
      },
      &gpu, &cpu);
  int off = 0;
  for (int y = 0; y < 96; ++y) {
    for (int x = 0; x < 128; ++x) {
      const size_t at = (static_cast<size_t>(y) * 128 + x) * 4;
      if (x < 20 || x >= 100 || y < 12 || y >= 72) {
        ASSERT_EQ(0x3C, gpu[at]) << x << "," << y;  // outside the rectangle: untouched
      }
      off += MaxDiff(&gpu[at], &cpu[at], 4) > 2;
    }
  }
  EXPECT_LE(off, 128 * 96 / 100);
  EXPECT_EQ(0x3C, gpu[(static_cast<size_t>(12) * 128 + 20) * 4]);  // kept, outside the quad
}

TEST_F(GpuEngineTest, PerspectiveWithDefaultParamsReproducesTheSource) {
  const Bytes src = Noise(128 * 96 * 4, 61);
  Bytes dst(src.size());
  tagPicProps p = Props(PIX_ARGB32, 128, 96);
  PerspectiveParams params;
  ASSERT_EQ(0, s_pGpu->Img_PerspectiveCoeffARGB(const_cast<uint8_t*>(src.data()), &p, nullptr, 0, 0,
                                                3, dst.data(), &p, nullptr, &params));
  EXPECT_EQ(src, dst);
}

TEST_F(GpuEngineTest, MeasurementNamesTheDevice) {
  EXPECT_EQ(0, s_pGpu->MakeTest(12));
  char name[150];
  s_pGpu->GetTestMsg(name, sizeof(name));
  std::string device(name);
  device = device.substr(0, device.find(" engine for"));
  ASSERT_FALSE(device.empty());
  EXPECT_EQ(0, s_pGpu->MakeTest(1));
  char text[150];
  s_pGpu->GetTestMsg(text, 150);
  const std::string line(text);
  EXPECT_EQ(0u, line.find(device + " 128x96 up ")) << line;
  EXPECT_NE(std::string::npos, line.find("ms/frame")) << line;
  EXPECT_NE(std::string::npos, line.find("fps")) << line;
  EXPECT_LE(line.size(), 149u);
  EXPECT_EQ(0, s_pGpu->MakeTest(2));
}

TEST_F(GpuEngineTest, NamedDeviceIsChosen) {
  char name[150];
  s_pGpu->MakeTest(12);
  s_pGpu->GetTestMsg(name, sizeof(name));
  std::string device(name);
  device = device.substr(0, device.find(" engine for"));
  setenv("TACHYRUN_OPENCL_DEVICE", device.substr(0, 6).c_str(), 1);
  CPixmill named;
  EXPECT_EQ(0, named.Img_InitConverter(-2, 1, nullptr, 32, 32, 0));
  unsetenv("TACHYRUN_OPENCL_DEVICE");
  named.MakeTest(12);
  named.GetTestMsg(name, sizeof(name));
  EXPECT_EQ(device + " engine for 32x32", std::string(name));
}
