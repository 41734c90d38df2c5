#include "engine/Pixmill.h"

#include <libyuv.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>

#include "engine/CpuEngine.h"
#include "engine/GpuEngine.h"
#include "engine/PerspectiveMap.h"
#include "engine/PixmillState.h"

namespace {

constexpr int kDeviceCpu = -1;
constexpr int kDeviceGpu = -2;
constexpr int kMaxCpus = 64;
constexpr size_t kBufferAlign = 64;

void InitCpuOnce() {
  static std::once_flag once;
  std::call_once(once, [] { libyuv::InitCpuFlags(); });
}

// Resize sampling by eResizeQuality.
bool FilterOfQuality(eResizeQuality quality, ScaleFilter* out) {
  switch (quality) {
    case RESIZE_NEAREST:
      *out = kScaleNearest;
      return true;
    case RESIZE_LINEAR:
      *out = kScaleBilinear;
      return true;
    case RESIZE_FAST_LINEAR:
      *out = kScaleLinear;
      return true;
    case RESIZE_AREA:
      *out = kScaleBox;
      return true;
  }
  return false;
}

// The raw arguments of a call with a source and a destination picture.
struct PairArgs {
  const unsigned char* source;
  unsigned char* destination;
  const tagPicProps* sourceProps;
  const tagPicProps* destinationProps;
  const tagRECT* sourceRect;
  const tagRECT* destinationRect;
};

// Checks shared by every picture call: an engine that is ready, two valid
// pictures, no shared bytes.
int32_t PreparePair(const PixmillState* state, const PairArgs& a, PicRegion* src, PicRegion* dst) {
  if (state == nullptr) return PIXMILL_E_NO_MEMORY;
  if (!state->pBackend) return state->iInitStatus;
  if (int32_t s = MakePicRegion(a.source, a.sourceProps, a.sourceRect, src); s != PIXMILL_OK) {
    return s;
  }
  if (int32_t s = MakePicRegion(a.destination, a.destinationProps, a.destinationRect, dst);
      s != PIXMILL_OK) {
    return s;
  }
  return PicturesOverlap(*src, *dst) ? PIXMILL_E_ARGUMENT : PIXMILL_OK;
}

int32_t ResizeChecked(PixmillState* state, const PairArgs& args, ScaleFilter filter) {
  PicRegion src, dst;
  if (int32_t s = PreparePair(state, args, &src, &dst); s != PIXMILL_OK) return s;
  if (src.format != dst.format) return PIXMILL_E_FORMAT;
  return state->pBackend->Resize(src, dst, filter);
}

}  // namespace

PerspectiveParams::PerspectiveParams() {
  std::memset(static_cast<void*>(this), 0, sizeof(*this));
  fAspect = 1.7777778f;
  for (double& scale : dCornerScale) scale = 1.0;
}

int InitConverterLib() {
  InitCpuOnce();
  return 0;
}

// Engines keep working until they are destroyed; there is nothing shared to
// tear down before that.
int ReleaseConverterLib() {
  return 0;
}

CPixmill::CPixmill() : m_pState(new (std::nothrow) PixmillState) {}

CPixmill::~CPixmill() {
  delete m_pState;
}

int CPixmill::Img_InitConverter(int device, int cpus, HINSTANCE, int width, int height, int) {
  if (m_pState == nullptr) return PIXMILL_E_NO_MEMORY;
  PixmillState& st = *m_pState;
  st.pBackend.reset();
  st.sInitError.clear();
  st.iInitStatus = PIXMILL_E_NOT_READY;
  if (device != kDeviceCpu && device != kDeviceGpu) return PIXMILL_E_ARGUMENT;
  if (device == kDeviceCpu && (cpus < 1 || cpus > kMaxCpus)) return PIXMILL_E_ARGUMENT;
  if (width <= 0 || height <= 0 || width > kMaxPicSide || height > kMaxPicSide) {
    return PIXMILL_E_SIZE;
  }
  InitCpuOnce();
  st.iDevice = device;
  st.iWidth = width;
  st.iHeight = height;
  try {
    if (device == kDeviceCpu) {
      st.pBackend = std::make_unique<CpuEngine>(cpus);
    } else {
      st.pBackend = GpuEngine::Create(&st.sInitError);
      if (!st.pBackend) st.iInitStatus = PIXMILL_E_NO_DEVICE;
    }
  } catch (const std::exception& e) {
    st.sInitError = e.what();
    st.iInitStatus = PIXMILL_E_NO_MEMORY;
  }
  return st.pBackend ? PIXMILL_OK : st.iInitStatus;
}

unsigned char* CPixmill::AllocBuffersRGBA(int width, int height, int pitch) {
  if (width <= 0 || height <= 0 || width > kMaxPicSide || height > kMaxPicSide) return nullptr;
  if (pitch < width * 4 || pitch > kMaxPicSide * 4) return nullptr;
  size_t bytes = static_cast<size_t>(pitch) * height;
  bytes = (bytes + kBufferAlign - 1) / kBufferAlign * kBufferAlign;
  // Plain host memory, so that any engine (CPU or device) can use it.
  auto* buffer = static_cast<unsigned char*>(std::aligned_alloc(kBufferAlign, bytes));
  // Every page is written before the buffer is handed out: Linux maps pages
  // that are only read to one shared zero page, so a test reading an
  // untouched source would read from cache and report a speed no real
  // picture gets. Zero is also a defined start (transparent black).
  if (buffer != nullptr) std::memset(buffer, 0, bytes);
  return buffer;
}

void CPixmill::FreeBuffers(unsigned char** buffer) {
  if (buffer == nullptr) return;
  std::free(*buffer);
  *buffer = nullptr;
}

int32_t CPixmill::Img_Resize(const unsigned char* source, unsigned char* destination,
                             const tagPicProps* sourceProps, const tagPicProps* destinationProps,
                             const tagRECT* sourceRect, const tagRECT* destinationRect,
                             eResizeQuality quality, unsigned char*, int last) {
  ScaleFilter filter;
  if (!FilterOfQuality(quality, &filter) || last != 0) return PIXMILL_E_ARGUMENT;
  return ResizeChecked(
      m_pState, {source, destination, sourceProps, destinationProps, sourceRect, destinationRect},
      filter);
}

int32_t CPixmill::Img_ResizeARGB(unsigned char* source, unsigned char* destination,
                                 tagPicProps* sourceProps, tagPicProps* destinationProps,
                                 tagRECT* sourceRect, tagRECT* destinationRect, int first,
                                 int second) {
  if (first != 0 || second < kScaleNearest || second > kScaleBox) return PIXMILL_E_ARGUMENT;
  if (sourceProps != nullptr && sourceProps->dwFormat != PIX_ARGB32) return PIXMILL_E_FORMAT;
  if (destinationProps != nullptr && destinationProps->dwFormat != PIX_ARGB32) {
    return PIXMILL_E_FORMAT;
  }
  return ResizeChecked(
      m_pState, {source, destination, sourceProps, destinationProps, sourceRect, destinationRect},
      static_cast<ScaleFilter>(second));
}

int32_t CPixmill::Img_Convert2(const unsigned char* source, unsigned char* destination,
                               const tagPicProps* sourceProps, const tagPicProps* destinationProps,
                               const tagRECT* sourceRect, const tagRECT* destinationRect, bool flag,
                               unsigned char*) {
  PicRegion src, dst;
  if (int32_t s = PreparePair(
          m_pState,
          {source, destination, sourceProps, destinationProps, sourceRect, destinationRect}, &src,
          &dst);
      s != PIXMILL_OK) {
    return s;
  }
  // A conversion does not scale: both rectangles have one size.
  if (src.w != dst.w || src.h != dst.h) return PIXMILL_E_RECT;
  return m_pState->pBackend->Convert(src, dst, flag);
}

int32_t CPixmill::Img_PerspectiveCoeffARGB(unsigned char* source, const tagPicProps* sourceProps,
                                           const tagRECT* sourceRect, int first, int second,
                                           int third, unsigned char* destination,
                                           const tagPicProps* destinationProps,
                                           const tagRECT* destinationRect,
                                           PerspectiveParams* params) {
  if (m_pState == nullptr) return PIXMILL_E_NO_MEMORY;
  if (!m_pState->pBackend) return m_pState->iInitStatus;
  if (params == nullptr) return PIXMILL_E_NULL_BUFFER;
  if (first != 0 || second != 0) return PIXMILL_E_ARGUMENT;
  PicRegion src, dst;
  if (int32_t s = PreparePair(
          m_pState,
          {source, destination, sourceProps, destinationProps, sourceRect, destinationRect}, &src,
          &dst);
      s != PIXMILL_OK) {
    return s;
  }
  if (src.format != PIX_ARGB32 || dst.format != PIX_ARGB32) return PIXMILL_E_FORMAT;
  PerspectiveMap map;
  if (int32_t s = BuildPerspectiveMap(*params, dst.w, dst.h, src.w, src.h, third, &map);
      s != PIXMILL_OK) {
    return s;
  }
  return m_pState->pBackend->Perspective(src, dst, map);
}

int CPixmill::MakeTest(int code) {
  if (m_pState == nullptr) return PIXMILL_E_NO_MEMORY;
  return RunEngineTest(*m_pState, code);
}

int CPixmill::GetTestMsg(char* buffer, int size) {
  if (buffer == nullptr || size <= 0) return -1;
  const std::string empty;
  const std::string& text = m_pState != nullptr ? m_pState->sMsg : empty;
  const size_t n = std::min(text.size(), static_cast<size_t>(size) - 1);
  std::memcpy(buffer, text.data(), n);
  buffer[n] = '\0';
  return static_cast<int>(n);
}
