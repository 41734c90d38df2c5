#include "engine/CpuEngine.h"

#include <libyuv.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <new>

#include "engine/PerspectiveMap.h"

namespace {

constexpr int kBandsPerThread = 4;

// Row pointer of rect row y, counted from the top or, flipped, from the bottom.
const uint8_t* SourceRow(const PicRegion& src, int y, bool flip) {
  const int row = flip ? src.h - 1 - y : y;
  return src.RectOrigin() + static_cast<ptrdiff_t>(row) * src.stride;
}

uint8_t* DestRow(const PicRegion& dst, int y) {
  return dst.RectOrigin() + static_cast<ptrdiff_t>(y) * dst.stride;
}

// Converts rows [y0, y1) of the rectangle; flipped sources go bottom up.
void ConvertRows(const PicRegion& src, const PicRegion& dst, bool flip, int y0, int y1) {
  const uint8_t* s = SourceRow(src, y0, flip);
  const int sStride = flip ? -src.stride : src.stride;
  uint8_t* d = DestRow(dst, y0);
  const int rows = y1 - y0;
  if (src.format == dst.format) {
    libyuv::CopyPlane(s, sStride, d, dst.stride, src.w * src.BytesPerPixel(), rows);
  } else if (src.format == PIX_YUY2) {
    libyuv::YUY2ToARGB(s, sStride, d, dst.stride, src.w, rows);
  } else {
    libyuv::ARGBToYUY2(s, sStride, d, dst.stride, src.w, rows);
  }
}

struct Planes422 {
  uint8_t* y;
  uint8_t* u;
  uint8_t* v;
  int w, h;
};

Planes422 Layout422(std::vector<uint8_t>& store, int w, int h) {
  const size_t luma = static_cast<size_t>(w) * h;
  store.resize(luma * 2);
  return {store.data(), store.data() + luma, store.data() + luma + luma / 2, w, h};
}

double MsSince(std::chrono::steady_clock::time_point t0) {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
}

}  // namespace

CpuEngine::CpuEngine(int cpus) {
  if (cpus > 1) m_pPool = std::make_unique<BandPool>(cpus);
}

std::string CpuEngine::Name() const {
  return "CPU x" + std::to_string(m_pPool ? m_pPool->Participants() : 1);
}

void CpuEngine::ForBands(int rows, const std::function<void(int, int)>& rowsJob) {
  if (!m_pPool) {
    rowsJob(0, rows);
    return;
  }
  // A few bands a thread, so that the threads that are running share out
  // the work of one that is not.
  const int bands = std::min(rows, m_pPool->Participants() * kBandsPerThread);
  m_pPool->Run(
      [&](int index, int count) {
        int first, end;
        BandRows(rows, index, count, &first, &end);
        if (first < end) rowsJob(first, end);
      },
      bands);
}

void CpuEngine::ResizeArgb(const PicRegion& src, const PicRegion& dst, ScaleFilter filter) {
  const auto mode = static_cast<libyuv::FilterMode>(filter);
  if (!m_pPool) {
    libyuv::ARGBScale(src.RectOrigin(), src.stride, src.w, src.h, dst.RectOrigin(), dst.stride,
                      dst.w, dst.h, mode);
    return;
  }
  ForBands(dst.h, [&](int y0, int y1) {
    libyuv::ARGBScaleClip(src.RectOrigin(), src.stride, src.w, src.h, dst.RectOrigin(), dst.stride,
                          dst.w, dst.h, 0, y0, dst.w, y1 - y0, mode);
  });
}

int32_t CpuEngine::ResizeYuy2(const PicRegion& src, const PicRegion& dst, ScaleFilter filter) {
  // libyuv scales planes, not packed 4:2:2: unpack, scale Y, U and V on their
  // own (each plane a task of its own), pack again.
  Planes422 s, d;
  try {
    s = Layout422(m_SrcPlanes, src.w, src.h);
    d = Layout422(m_DstPlanes, dst.w, dst.h);
  } catch (const std::bad_alloc&) {
    return PIXMILL_E_NO_MEMORY;
  }
  ForBands(src.h, [&](int y0, int y1) {
    const size_t luma = static_cast<size_t>(y0) * s.w, chroma = luma / 2;
    libyuv::YUY2ToI422(src.RectOrigin() + static_cast<size_t>(y0) * src.stride, src.stride,
                       s.y + luma, s.w, s.u + chroma, s.w / 2, s.v + chroma, s.w / 2, s.w, y1 - y0);
  });
  const auto mode = static_cast<libyuv::FilterMode>(filter);
  auto scalePlane = [&](int plane) {
    uint8_t* from[3] = {s.y, s.u, s.v};
    uint8_t* to[3] = {d.y, d.u, d.v};
    const int shift = plane == 0 ? 0 : 1;
    libyuv::ScalePlane(from[plane], s.w >> shift, s.w >> shift, s.h, to[plane], d.w >> shift,
                       d.w >> shift, d.h, mode);
  };
  if (!m_pPool) {
    for (int plane = 0; plane < 3; ++plane) scalePlane(plane);
  } else {
    m_pPool->Run([&](int plane, int) { scalePlane(plane); }, 3);
  }
  ForBands(dst.h, [&](int y0, int y1) {
    const size_t luma = static_cast<size_t>(y0) * d.w, chroma = luma / 2;
    libyuv::I422ToYUY2(d.y + luma, d.w, d.u + chroma, d.w / 2, d.v + chroma, d.w / 2,
                       DestRow(dst, y0), dst.stride, d.w, y1 - y0);
  });
  return PIXMILL_OK;
}

int32_t CpuEngine::Resize(const PicRegion& src, const PicRegion& dst, ScaleFilter filter) {
  if (src.format == PIX_YUY2) return ResizeYuy2(src, dst, filter);
  ResizeArgb(src, dst, filter);
  return PIXMILL_OK;
}

int32_t CpuEngine::Convert(const PicRegion& src, const PicRegion& dst, bool flip) {
  ForBands(dst.h, [&](int y0, int y1) { ConvertRows(src, dst, flip, y0, y1); });
  return PIXMILL_OK;
}

int32_t CpuEngine::Perspective(const PicRegion& src, const PicRegion& dst,
                               const PerspectiveMap& map) {
  ForBands(dst.h, [&](int y0, int y1) { RenderPerspectiveRows(src, dst, map, y0, y1); });
  return PIXMILL_OK;
}

int32_t CpuEngine::MeasureFrames(int width, int height, int frames, StageTimes* out) {
  // The CPU's "upload" and "download" are copies into and out of the
  // engine's working pictures, the same traffic a device transfer makes.
  int outW, outH;
  MeasureScaleTarget(width, height, &outW, &outH);
  std::vector<uint8_t> host, work, argb, scaled, back;
  try {
    host.assign(static_cast<size_t>(width) * height * 2, 128);
    work.resize(host.size());
    argb.resize(static_cast<size_t>(width) * height * 4);
    scaled.resize(static_cast<size_t>(outW) * outH * 4);
    back.resize(scaled.size());
  } catch (const std::bad_alloc&) {
    return PIXMILL_E_NO_MEMORY;
  }
  const tagPicProps yuy{PIX_YUY2, width, height, 0}, big{PIX_ARGB32, width, height, 0};
  const tagPicProps small{PIX_ARGB32, outW, outH, 0};
  PicRegion rWork, rArgb, rScaled;
  MakePicRegion(work.data(), &yuy, nullptr, &rWork);
  MakePicRegion(argb.data(), &big, nullptr, &rArgb);
  MakePicRegion(scaled.data(), &small, nullptr, &rScaled);
  StageTimes sum;
  for (int i = 0; i < frames; ++i) {
    auto t0 = std::chrono::steady_clock::now();
    std::memcpy(work.data(), host.data(), host.size());
    sum.dUpload += MsSince(t0);
    t0 = std::chrono::steady_clock::now();
    Convert(rWork, rArgb, false);
    sum.dConvert += MsSince(t0);
    t0 = std::chrono::steady_clock::now();
    Resize(rArgb, rScaled, kScaleBilinear);
    sum.dScale += MsSince(t0);
    t0 = std::chrono::steady_clock::now();
    std::memcpy(back.data(), scaled.data(), scaled.size());
    sum.dDownload += MsSince(t0);
  }
  *out = {sum.dUpload / frames, sum.dConvert / frames, sum.dScale / frames, sum.dDownload / frames};
  return PIXMILL_OK;
}
