// Side-by-side timing of the engine's CPU operations: our 1-CPU and N-CPU
// engines, libyuv called directly, libswscale and a memcpy of the same
// output bytes. One run prints ms/frame and the ratios. Each figure is the
// best of several rounds, taken in turns, so that load from other programs
// hurts every contender alike.
//
// Every buffer here is a std::vector, written (filled or zeroed) when it is
// made, so no contender reads the kernel's shared zero page.
//
// Run: build/default/bench/bench_engine (or make bench).
#include <libyuv.h>

extern "C" {
#include <libavutil/pixfmt.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "engine/Pixmill.h"

namespace {

constexpr int kRounds = 10;
constexpr double kRoundMs = 60.0;

using Fn = std::function<void()>;

struct Picture {
  uint32_t format;
  int w, h;
  int Bpp() const { return format == PIX_YUY2 ? 2 : 4; }
  int Stride() const { return w * Bpp(); }
  size_t Bytes() const { return size_t(Stride()) * h; }
  AVPixelFormat Av() const { return format == PIX_YUY2 ? AV_PIX_FMT_YUYV422 : AV_PIX_FMT_BGRA; }
};

struct Operation {
  const char* name;
  Picture src, dst;
  int kind;  // 0 copy, 1 resize linear, 2 resize area, 3 convert
};

double TimeOnce(const Fn& fn, int iterations) {
  const auto t0 = std::chrono::steady_clock::now();
  for (int i = 0; i < iterations; ++i) fn();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count() /
         iterations;
}

// Best ms/frame of each contender over kRounds rounds taken in turns.
std::vector<double> Measure(const std::vector<Fn>& fns) {
  std::vector<int> iterations;
  for (const Fn& fn : fns) {
    const double once = std::max(TimeOnce(fn, 1), 1e-3);
    iterations.push_back(std::clamp(int(kRoundMs / once), 2, 5000));
  }
  std::vector<double> best(fns.size(), 1e300);
  // The order turns each round, so that no contender always runs on the
  // caches that the same neighbour left behind.
  for (int r = 0; r < kRounds; ++r) {
    for (size_t k = 0; k < fns.size(); ++k) {
      const size_t i = (k + r) % fns.size();
      best[i] = std::min(best[i], TimeOnce(fns[i], iterations[i]));
    }
  }
  return best;
}

Fn EngineCall(CPixmill& e, const Operation& op, unsigned char* s, unsigned char* d) {
  return [&e, op, s, d] {
    tagPicProps sp{op.src.format, op.src.w, op.src.h, 0}, dp{op.dst.format, op.dst.w, op.dst.h, 0};
    tagRECT sr{0, 0, op.src.w, op.src.h}, dr{0, 0, op.dst.w, op.dst.h};
    if (op.kind == 1) {
      e.Img_ResizeARGB(s, d, &sp, &dp, &sr, &dr, 0, 2);
    } else if (op.kind == 2) {
      e.Img_Resize(s, d, &sp, &dp, &sr, &dr, RESIZE_AREA, nullptr, 0);
    } else {
      e.Img_Convert2(s, d, &sp, &dp, &sr, &dr, false, nullptr);
    }
  };
}

Fn LibyuvCall(const Operation& op, const uint8_t* s, uint8_t* d) {
  const Picture a = op.src, b = op.dst;
  switch (op.kind) {
    case 0:
      return [=] { libyuv::ARGBCopy(s, a.Stride(), d, b.Stride(), a.w, a.h); };
    case 1:
    case 2: {
      const auto mode = op.kind == 1 ? libyuv::kFilterBilinear : libyuv::kFilterBox;
      return [=] { libyuv::ARGBScale(s, a.Stride(), a.w, a.h, d, b.Stride(), b.w, b.h, mode); };
    }
  }
  if (a.format == PIX_YUY2)
    return [=] { libyuv::YUY2ToARGB(s, a.Stride(), d, b.Stride(), a.w, a.h); };
  return [=] { libyuv::ARGBToYUY2(s, a.Stride(), d, b.Stride(), a.w, a.h); };
}

SwsContext* SwsFor(const Operation& op) {
  const int flags = op.kind == 2 ? SWS_AREA : SWS_BILINEAR;
  return sws_getContext(op.src.w, op.src.h, op.src.Av(), op.dst.w, op.dst.h, op.dst.Av(), flags,
                        nullptr, nullptr, nullptr);
}

Fn SwsCall(SwsContext* ctx, const Operation& op, const uint8_t* s, uint8_t* d) {
  return [=] {
    const uint8_t* in[4] = {s, nullptr, nullptr, nullptr};
    uint8_t* out[4] = {d, nullptr, nullptr, nullptr};
    const int inStride[4] = {op.src.Stride(), 0, 0, 0}, outStride[4] = {op.dst.Stride(), 0, 0, 0};
    sws_scale(ctx, in, inStride, 0, op.src.h, out, outStride);
  };
}

}  // namespace

int main() {
  InitConverterLib();
  const int cpus = std::max(2, int(std::thread::hardware_concurrency()));
  CPixmill one, many;
  one.Img_InitConverter(-1, 1, nullptr, 1920, 1080, 0);
  many.Img_InitConverter(-1, cpus, nullptr, 1920, 1080, 0);
  const Picture sd{PIX_ARGB32, 720, 576}, hd{PIX_ARGB32, 1920, 1080}, hdY{PIX_YUY2, 1920, 1080};
  const Operation ops[] = {
      {"memcpy 1920x1080 ARGB", hd, hd, 0},   {"ARGB 720x576->1920x1080", sd, hd, 1},
      {"ARGB 1920x1080->720x576", hd, sd, 2}, {"ARGB 720x576->720x576", sd, sd, 1},
      {"YUY2->ARGB 1920x1080", hdY, hd, 3},   {"ARGB->YUY2 1920x1080", hd, hdY, 3},
  };
  std::printf("ms/frame, best of %d rounds; engine N-CPU uses %d threads\n", kRounds, cpus);
  std::printf("%-24s %8s %8s %8s %8s %8s | %8s %8s %8s %8s\n", "operation", "1cpu", "ncpu",
              "libyuv", "swscale", "memcpy", "1c/yuv", "nc/1c", "sws/1c", "1c/mcpy");
  std::vector<uint8_t> src(1920 * 1080 * 4), dst(1920 * 1080 * 4);
  for (size_t i = 0; i < src.size(); ++i) src[i] = uint8_t(i * 7 + (i >> 12));
  for (const Operation& op : ops) {
    SwsContext* sws = SwsFor(op);
    uint8_t* s = src.data();
    uint8_t* d = dst.data();
    const size_t outBytes = op.dst.Bytes();
    const std::vector<Fn> fns = {EngineCall(one, op, s, d), EngineCall(many, op, s, d),
                                 LibyuvCall(op, s, d), SwsCall(sws, op, s, d),
                                 [=] { std::memcpy(d, s, outBytes); }};
    const std::vector<double> t = Measure(fns);
    std::printf("%-24s %8.3f %8.3f %8.3f %8.3f %8.3f | %8.2f %8.2f %8.2f %8.2f\n", op.name, t[0],
                t[1], t[2], t[3], t[4], t[0] / t[2], t[1] / t[0], t[3] / t[0], t[0] / t[4]);
    sws_freeContext(sws);
  }
  ReleaseConverterLib();
  return 0;
}
