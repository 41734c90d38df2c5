// Records, life cycle, buffers and built-in tests of CPixmill.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "engine/Pixmill.h"
#include "tests/engine/EngineTestPictures.h"

using namespace enginetest;

namespace {

std::string Msg(CPixmill& engine) {
  char text[150];
  engine.GetTestMsg(text, sizeof(text));
  return text;
}

}  // namespace

TEST(PerspectiveParamsTest, ConstructorFillsZeroAspectAndCornerScales) {
  PerspectiveParams params;
  uint8_t expected[328] = {};
  const uint32_t aspectBits = 0x3FE38E39u;
  std::memcpy(expected + 16, &aspectBits, 4);
  const double one = 1.0;
  for (int i = 0; i < 4; ++i) std::memcpy(expected + 120 + i * 8, &one, 8);
  EXPECT_EQ(0, std::memcmp(&params, expected, sizeof(expected)));
  uint32_t bits;
  std::memcpy(&bits, &params.fAspect, 4);
  EXPECT_EQ(0x3FE38E39u, bits);
}

TEST(PixmillTest, FormatCodes) {
  EXPECT_EQ(2000460480u, PIX_ARGB32);
  EXPECT_EQ(844715353u, PIX_YUY2);
  EXPECT_EQ(0, std::memcmp(&PIX_YUY2, "YUY2", 4));
}

TEST(PixmillTest, ConstructorNeedsNoLibraryCallAndCallsBeforeInitFail) {
  CPixmill engine;  // before InitConverterLib, as the dialog's members are
  std::vector<uint8_t> a(64 * 4), b(64 * 4);
  const tagPicProps p = Props(PIX_ARGB32, 8, 8);
  tagPicProps pm = p;
  EXPECT_EQ(PIXMILL_E_NOT_READY,
            engine.Img_Convert2(a.data(), b.data(), &p, &p, nullptr, nullptr, false, nullptr));
  EXPECT_EQ(PIXMILL_E_NOT_READY,
            engine.Img_ResizeARGB(a.data(), b.data(), &pm, &pm, nullptr, nullptr, 0, 2));
  EXPECT_NE(0, engine.MakeTest(1));
  EXPECT_NE(std::string::npos, Msg(engine).find("not initialised"));
}

TEST(PixmillTest, ReleaseBeforeDestructorsKeepsEnginesUsable) {
  CPixmill engine;
  EXPECT_EQ(0, InitConverterLib());
  ASSERT_EQ(0, engine.Img_InitConverter(-1, 1, nullptr, 16, 16, 0));
  EXPECT_EQ(0, ReleaseConverterLib());
  Bytes a = Gradient(16, 16), b(a.size());
  const tagPicProps p = Props(PIX_ARGB32, 16, 16);
  EXPECT_EQ(0, engine.Img_Convert2(a.data(), b.data(), &p, &p, nullptr, nullptr, false, nullptr));
  EXPECT_EQ(a, b);
}

TEST(PixmillTest, AllocatedBufferIsAlignedAndFreeClearsThePointer) {
  CPixmill engine;
  unsigned char* buffer = engine.AllocBuffersRGBA(720, 576, 2880);
  ASSERT_NE(nullptr, buffer);
  EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(buffer) % 64);
  std::memset(buffer, 0xAB, 720 * 576 * 4);  // the whole extent is writable
  engine.FreeBuffers(&buffer);
  EXPECT_EQ(nullptr, buffer);
  engine.FreeBuffers(&buffer);  // a freed (null) buffer again is harmless
  engine.FreeBuffers(nullptr);
}

TEST(PixmillTest, AllocRefusesBadSizesWithNull) {
  CPixmill engine;
  EXPECT_EQ(nullptr, engine.AllocBuffersRGBA(0, 576, 2880));
  EXPECT_EQ(nullptr, engine.AllocBuffersRGBA(720, -1, 2880));
  EXPECT_EQ(nullptr, engine.AllocBuffersRGBA(720, 576, 100));  // pitch below width * 4
  EXPECT_EQ(nullptr, engine.AllocBuffersRGBA(1 << 20, 1 << 20, 1 << 22));
}

TEST(PixmillTest, InitRefusesBadArguments) {
  CPixmill engine;
  EXPECT_EQ(PIXMILL_E_ARGUMENT, engine.Img_InitConverter(0, 1, nullptr, 720, 576, 0));
  EXPECT_EQ(PIXMILL_E_ARGUMENT, engine.Img_InitConverter(-1, 0, nullptr, 720, 576, 0));
  EXPECT_EQ(PIXMILL_E_SIZE, engine.Img_InitConverter(-1, 1, nullptr, 0, 576, 0));
  EXPECT_EQ(PIXMILL_E_SIZE, engine.Img_InitConverter(-1, 1, nullptr, 720, -576, 0));
  EXPECT_NE(0, engine.MakeTest(1));
}

// The dialog's tests print the status of these exact calls as Res=%d: with
// this engine they read 0. Buffers come from the one-CPU engine and serve
// the N-CPU engine too.
TEST(PixmillTest, DialogCallsSucceedWithBuffersOfAnotherEngine) {
  InitConverterLib();
  CPixmill cpu1, cpuN;
  ASSERT_EQ(0, cpu1.Img_InitConverter(-1, 1, nullptr, 720, 576, 0));
  ASSERT_EQ(0, cpuN.Img_InitConverter(-1, 4, nullptr, 720, 576, 0));
  unsigned char* sd = cpu1.AllocBuffersRGBA(720, 576, 2880);
  unsigned char* hd = cpu1.AllocBuffersRGBA(1920, 1080, 7680);
  unsigned char* aux = cpu1.AllocBuffersRGBA(1920, 1080, 7680);
  std::memset(sd, 0x40, 720 * 576 * 4);
  std::memset(hd, 0x80, 1920 * 1080 * 4);
  tagPicProps sdP = Props(PIX_ARGB32, 720, 576), hdP = Props(PIX_ARGB32, 1920, 1080);
  tagPicProps hdY = Props(PIX_YUY2, 1920, 1080);
  tagRECT sdR = Whole(720, 576), hdR = Whole(1920, 1080);
  EXPECT_EQ(0, cpu1.Img_Resize(sd, hd, &sdP, &hdP, &sdR, &hdR, RESIZE_LINEAR, nullptr, 0));
  EXPECT_EQ(0, cpu1.Img_ResizeARGB(sd, hd, &sdP, &hdP, &sdR, &hdR, 0, 2));
  EXPECT_EQ(0, cpuN.Img_ResizeARGB(sd, aux, &sdP, &sdP, &sdR, &sdR, 0, 2));
  EXPECT_EQ(0, cpu1.Img_Resize(hd, sd, &hdP, &sdP, &hdR, &sdR, RESIZE_AREA, nullptr, 0));
  EXPECT_EQ(0, cpu1.Img_Convert2(hd, aux, &hdY, &hdP, &hdR, &hdR, false, nullptr));
  EXPECT_EQ(0, cpu1.Img_Convert2(hd, aux, &hdY, &hdP, &hdR, &hdR, false, sd));
  EXPECT_EQ(0, cpuN.Img_Convert2(aux, hd, &hdP, &hdY, &hdR, &hdR, false, sd));  // reversed pair
  PerspectiveParams params;
  EXPECT_EQ(0, cpuN.Img_PerspectiveCoeffARGB(sd, &sdP, &sdR, 0, 0, 3, aux, &sdP, &sdR, &params));
  cpu1.FreeBuffers(&sd);
  cpu1.FreeBuffers(&hd);
  cpu1.FreeBuffers(&aux);
}

TEST(PixmillTest, GetTestMsgAlwaysTerminatesInsideSize) {
  CPixmill engine;
  ASSERT_EQ(0, engine.Img_InitConverter(-1, 1, nullptr, 64, 32, 0));
  ASSERT_EQ(0, engine.MakeTest(1));
  char one[4] = {'x', 'x', 'x', 'x'};
  EXPECT_EQ(0, engine.GetTestMsg(one, 1));
  EXPECT_EQ('\0', one[0]);
  EXPECT_EQ('x', one[1]);  // nothing past size is written
  char full[160];
  std::memset(full, 'x', sizeof(full));
  const int n = engine.GetTestMsg(full, 150);
  EXPECT_GT(n, 0);
  EXPECT_LE(n, 149);
  EXPECT_EQ('\0', full[n]);
  EXPECT_EQ('x', full[150]);
  char small[10];
  EXPECT_EQ(9, engine.GetTestMsg(small, 10));
  EXPECT_EQ('\0', small[9]);
  EXPECT_EQ(-1, engine.GetTestMsg(nullptr, 150));
  EXPECT_EQ(-1, engine.GetTestMsg(full, 0));
}

TEST(PixmillTest, GetTestMsgBeforeAnyTestGivesAnEmptyTerminatedText) {
  CPixmill engine;
  char text[150];
  std::memset(text, 'x', sizeof(text));
  EXPECT_EQ(0, engine.GetTestMsg(text, 150));
  EXPECT_EQ('\0', text[0]);
  EXPECT_EQ('x', text[1]);
}

TEST(PixmillTest, CpuMeasurementNamesEngineSizeAndRate) {
  CPixmill engine;
  ASSERT_EQ(0, engine.Img_InitConverter(-1, 2, nullptr, 96, 64, 0));
  for (int round = 0; round < 2; ++round) {  // repeatable; the last text counts
    EXPECT_EQ(0, engine.MakeTest(1));
    const std::string text = Msg(engine);
    EXPECT_NE(std::string::npos, text.find("CPU x2 96x64")) << text;
    EXPECT_NE(std::string::npos, text.find("fps")) << text;
    EXPECT_LE(text.size(), 149u);
  }
}

TEST(PixmillTest, TestCodesOfTheEngine) {
  CPixmill engine;
  ASSERT_EQ(0, engine.Img_InitConverter(-1, 1, nullptr, 64, 48, 0));
  EXPECT_EQ(0, engine.MakeTest(2));
  EXPECT_NE(std::string::npos, Msg(engine).find("self-check passed"));
  EXPECT_EQ(0, engine.MakeTest(13));
  EXPECT_NE(std::string::npos, Msg(engine).find("preview hidden, 0 test pictures"));
  EXPECT_EQ(0, engine.MakeTest(3));
  EXPECT_EQ(0, engine.MakeTest(5));
  EXPECT_NE(std::string::npos, Msg(engine).find("64x48 sent to the visible preview, frame 1"));
  EXPECT_EQ(0, engine.MakeTest(4));
  EXPECT_EQ(0, engine.MakeTest(13));
  EXPECT_NE(std::string::npos, Msg(engine).find("preview hidden, 1 test pictures, last 64x48"));
  for (int code : {6, 7, 8, 9, 10, 11, 12}) {
    EXPECT_EQ(0, engine.MakeTest(code)) << code;
    EXPECT_NE(std::string::npos, Msg(engine).find("64x48")) << code << Msg(engine);
  }
  EXPECT_EQ(PIXMILL_E_UNKNOWN_TEST, engine.MakeTest(14));
  EXPECT_EQ("unknown test 14", Msg(engine));
  EXPECT_EQ(PIXMILL_E_UNKNOWN_TEST, engine.MakeTest(-5));
}

TEST(PixmillTest, ReinitReplacesTheBackend) {
  CPixmill engine;
  ASSERT_EQ(0, engine.Img_InitConverter(-1, 3, nullptr, 32, 32, 0));
  ASSERT_EQ(0, engine.Img_InitConverter(-1, 1, nullptr, 40, 20, 0));
  ASSERT_EQ(0, engine.MakeTest(12));
  EXPECT_EQ("CPU x1 engine for 40x20", Msg(engine));
}
