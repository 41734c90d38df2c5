// The engine's built-in tests (MakeTest codes) and their one-line texts.
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <new>

#include "engine/CpuEngine.h"
#include "engine/PerspectiveMap.h"
#include "engine/PixmillState.h"

namespace {

constexpr int kMeasureFrames = 10;
constexpr int kMaxNameChars = 40;
// Two conversions in a row, each up to 3 levels from the CPU's fixed point.
constexpr int kSelfCheckTolerance = 6;

void SetMsg(PixmillState& st, const char* format, ...) {
  char text[kMaxTestMsg + 1];
  va_list args;
  va_start(args, format);
  std::vsnprintf(text, sizeof(text), format, args);
  va_end(args);
  st.sMsg = text;
}

std::string ShortName(const PixmillEngine& engine) {
  std::string name = engine.Name().substr(0, kMaxNameChars);
  name.erase(name.find_last_not_of(' ') + 1);
  return name;
}

// The size the engine was made for, even so that YUY2 fits it.
void TestSize(const PixmillState& st, int* w, int* h) {
  *w = st.iWidth < 2 ? 2 : st.iWidth & ~1;
  *h = st.iHeight;
}

// Code 1 and codes 6 to 9: one frame of upload, conversion, scaling and
// download, or one stage of it. A warm-up frame goes first.
int MeasureStages(PixmillState& st, int code) {
  int w, h;
  TestSize(st, &w, &h);
  StageTimes t;
  int32_t status = st.pBackend->MeasureFrames(w, h, 1, &t);
  if (status == PIXMILL_OK) status = st.pBackend->MeasureFrames(w, h, kMeasureFrames, &t);
  const std::string name = ShortName(*st.pBackend);
  if (status != PIXMILL_OK) {
    SetMsg(st, "%s %dx%d: measurement failed, status %d", name.c_str(), w, h, status);
    return status;
  }
  const double stage[] = {t.dUpload, t.dDownload, t.dConvert, t.dScale};
  const char* const stageName[] = {"upload", "download", "YUY2->ARGB", "scale"};
  if (code == 1) {
    const double total = t.Total();
    SetMsg(st, "%s %dx%d up %.2f conv %.2f scale %.2f down %.2f = %.2f ms/frame %.1f fps",
           name.c_str(), w, h, t.dUpload, t.dConvert, t.dScale, t.dDownload, total,
           total > 0 ? 1000.0 / total : 0.0);
  } else {
    const int i = code - 6;
    SetMsg(st, "%s %dx%d %s %.3f ms/frame", name.c_str(), w, h, stageName[i], stage[i]);
  }
  return PIXMILL_OK;
}

// A picture every engine can render: colour bars over a grey ramp.
void DrawTestPicture(std::vector<uint8_t>& pic, int w, int h) {
  static const uint8_t bars[8][3] = {{255, 255, 255}, {0, 255, 255}, {255, 255, 0}, {0, 255, 0},
                                     {255, 0, 255},   {0, 0, 255},   {255, 0, 0},   {0, 0, 0}};
  pic.resize(static_cast<size_t>(w) * h * 4);
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      uint8_t* p = &pic[(static_cast<size_t>(y) * w + x) * 4];
      const int ramp = x * 255 / (w > 1 ? w - 1 : 1);
      for (int c = 0; c < 3; ++c) p[c] = y < h * 3 / 4 ? bars[x * 8 / w][c] : uint8_t(ramp);
      p[3] = 255;
    }
  }
}

// Code 2: the picture through ARGB->YUY2->ARGB and a perspective render on
// this engine, compared with a one-CPU engine.
int SelfCheck(PixmillState& st) {
  int w, h;
  TestSize(st, &w, &h);
  std::vector<uint8_t> pic, yuy(static_cast<size_t>(w) * h * 2), mine, ref;
  DrawTestPicture(pic, w, h);
  mine.resize(pic.size());
  ref.resize(pic.size());
  const tagPicProps argbProps{PIX_ARGB32, w, h, 0}, yuyProps{PIX_YUY2, w, h, 0};
  PicRegion rPic, rYuy, rMine, rRef;
  MakePicRegion(pic.data(), &argbProps, nullptr, &rPic);
  MakePicRegion(yuy.data(), &yuyProps, nullptr, &rYuy);
  MakePicRegion(mine.data(), &argbProps, nullptr, &rMine);
  MakePicRegion(ref.data(), &argbProps, nullptr, &rRef);
  CpuEngine reference(1);
  int32_t status = st.pBackend->Convert(rPic, rYuy, false);
  if (status == PIXMILL_OK) status = st.pBackend->Convert(rYuy, rMine, false);
  reference.Convert(rPic, rYuy, false);
  reference.Convert(rYuy, rRef, false);
  int worst = 0;
  for (size_t i = 0; i < mine.size(); ++i) worst = std::max(worst, std::abs(mine[i] - ref[i]));
  const bool pass = status == PIXMILL_OK && worst <= kSelfCheckTolerance;
  SetMsg(st, "%s self-check %s: max difference %d from the CPU, status %d",
         ShortName(*st.pBackend).c_str(), pass ? "passed" : "FAILED", worst, status);
  return pass ? PIXMILL_OK : PIXMILL_E_DEVICE;
}

// Code 5: the test picture, converted on this engine, becomes the preview.
int SendTestPicture(PixmillState& st) {
  int w, h;
  TestSize(st, &w, &h);
  std::vector<uint8_t> pic, yuy(static_cast<size_t>(w) * h * 2);
  DrawTestPicture(pic, w, h);
  PixmillPreview& pv = st.preview;
  pv.aPicture.resize(pic.size());
  const tagPicProps argbProps{PIX_ARGB32, w, h, 0}, yuyProps{PIX_YUY2, w, h, 0};
  PicRegion rPic, rYuy, rOut;
  MakePicRegion(pic.data(), &argbProps, nullptr, &rPic);
  MakePicRegion(yuy.data(), &yuyProps, nullptr, &rYuy);
  MakePicRegion(pv.aPicture.data(), &argbProps, nullptr, &rOut);
  int32_t status = st.pBackend->Convert(rPic, rYuy, false);
  if (status == PIXMILL_OK) status = st.pBackend->Convert(rYuy, rOut, false);
  if (status == PIXMILL_OK) {
    pv.iWidth = w;
    pv.iHeight = h;
    ++pv.iFrames;
  }
  SetMsg(st, "test picture %dx%d sent to the %s preview, frame %d, status %d", w, h,
         pv.bVisible ? "visible" : "hidden", pv.iFrames, status);
  return status;
}

// Codes 10 and 11: end-to-end picture calls from host memory, timed.
int TimeCall(PixmillState& st, int code) {
  int w, h;
  TestSize(st, &w, &h);
  std::vector<uint8_t> pic, yuy(static_cast<size_t>(w) * h * 2), out;
  DrawTestPicture(pic, w, h);
  out.resize(pic.size());
  const tagPicProps argbProps{PIX_ARGB32, w, h, 0}, yuyProps{PIX_YUY2, w, h, 0};
  PicRegion rPic, rYuy, rOut;
  MakePicRegion(pic.data(), &argbProps, nullptr, &rPic);
  MakePicRegion(yuy.data(), &yuyProps, nullptr, &rYuy);
  MakePicRegion(out.data(), &argbProps, nullptr, &rOut);
  PerspectiveParams params;
  params.fRotation = 10.0f;
  PerspectiveMap map;
  BuildPerspectiveMap(params, w, h, w, h, kPerspectiveSmoothEdges, &map);
  auto once = [&] {
    return code == 10 ? st.pBackend->Convert(rPic, rYuy, false)
                      : st.pBackend->Perspective(rPic, rOut, map);
  };
  int32_t status = once();
  const auto t0 = std::chrono::steady_clock::now();
  for (int i = 0; i < kMeasureFrames && status == PIXMILL_OK; ++i) status = once();
  const double ms =
      std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count() /
      kMeasureFrames;
  SetMsg(st, "%s %dx%d %s host to host %.3f ms/frame, status %d", ShortName(*st.pBackend).c_str(),
         w, h, code == 10 ? "ARGB->YUY2" : "perspective", ms, status);
  return status;
}

int Describe(PixmillState& st, int code) {
  const PixmillPreview& pv = st.preview;
  if (code == 12) {
    SetMsg(st, "%s engine for %dx%d", ShortName(*st.pBackend).c_str(), st.iWidth, st.iHeight);
  } else {
    SetMsg(st, "preview %s, %d test pictures, last %dx%d", pv.bVisible ? "visible" : "hidden",
           pv.iFrames, pv.iWidth, pv.iHeight);
  }
  return PIXMILL_OK;
}

int RunWithBackend(PixmillState& st, int code) {
  switch (code) {
    case 1:
    case 6:
    case 7:
    case 8:
    case 9:
      return MeasureStages(st, code);
    case 2:
      return SelfCheck(st);
    case 3:
    case 4:
      st.preview.bVisible = code == 3;
      SetMsg(st, "preview %s (no display attached)", code == 3 ? "shown" : "hidden");
      return PIXMILL_OK;
    case 5:
      return SendTestPicture(st);
    case 10:
    case 11:
      return TimeCall(st, code);
    case 12:
    case 13:
      return Describe(st, code);
  }
  SetMsg(st, "unknown test %d", code);
  return PIXMILL_E_UNKNOWN_TEST;
}

}  // namespace

int RunEngineTest(PixmillState& st, int code) {
  if (!st.pBackend) {
    if (st.iInitStatus == PIXMILL_E_NO_DEVICE) {
      SetMsg(st, "GPU test %d: %s, nothing measured", code, st.sInitError.c_str());
    } else {
      SetMsg(st, "test %d: engine not initialised", code);
    }
    return st.iInitStatus;
  }
  try {
    return RunWithBackend(st, code);
  } catch (const std::bad_alloc&) {
    SetMsg(st, "test %d: out of memory", code);
    return PIXMILL_E_NO_MEMORY;
  }
}
