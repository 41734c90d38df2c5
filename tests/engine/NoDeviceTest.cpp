// Run with OCL_ICD_VENDORS naming an empty folder: the loader finds no
// platform at all, and the GPU engine must say so without crashing.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "engine/Pixmill.h"

TEST(NoDeviceTest, GpuEngineWithoutPlatformFailsEveryCallAndExplains) {
  ASSERT_NE(nullptr, std::getenv("OCL_ICD_VENDORS"));
  InitConverterLib();
  CPixmill gpu;
  EXPECT_EQ(PIXMILL_E_NO_DEVICE, gpu.Img_InitConverter(-2, 1, nullptr, 720, 576, 0));
  std::vector<uint8_t> a(720 * 576 * 4, 1), b(a.size(), 2);
  tagPicProps p{PIX_ARGB32, 720, 576, 0};
  tagRECT r{0, 0, 720, 576};
  PerspectiveParams params;
  EXPECT_NE(0, gpu.Img_Resize(a.data(), b.data(), &p, &p, &r, &r, RESIZE_LINEAR, nullptr, 0));
  EXPECT_NE(0, gpu.Img_ResizeARGB(a.data(), b.data(), &p, &p, &r, &r, 0, 2));
  EXPECT_NE(0, gpu.Img_Convert2(a.data(), b.data(), &p, &p, &r, &r, false, nullptr));
  EXPECT_NE(0, gpu.Img_PerspectiveCoeffARGB(a.data(), &p, &r, 0, 0, 3, b.data(), &p, &r, &params));
  EXPECT_EQ(std::vector<uint8_t>(a.size(), 2), b);
  for (int code = 1; code <= 13; ++code) EXPECT_NE(0, gpu.MakeTest(code));
  gpu.MakeTest(1);
  char text[150];
  gpu.GetTestMsg(text, sizeof(text));
  EXPECT_NE(std::string::npos, std::string(text).find("no OpenCL device")) << text;
  unsigned char* buffer = gpu.AllocBuffersRGBA(720, 576, 2880);  // host memory all the same
  EXPECT_NE(nullptr, buffer);
  gpu.FreeBuffers(&buffer);
  ReleaseConverterLib();
}
