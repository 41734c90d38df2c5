// Test pictures and plain reference implementations of the engine's
// operations, written straight from the colour and sampling formulas.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <vector>

#include "engine/Pixmill.h"

namespace enginetest {

using Bytes = std::vector<uint8_t>;

// Smooth ARGB picture: blue runs across, green down, red diagonally, alpha
// varies slowly. Resampling it anywhere gives values close to the formula.
inline Bytes Gradient(int w, int h) {
  Bytes p(static_cast<size_t>(w) * h * 4);
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      uint8_t* q = &p[(static_cast<size_t>(y) * w + x) * 4];
      q[0] = uint8_t(x * 255 / std::max(1, w - 1));
      q[1] = uint8_t(y * 255 / std::max(1, h - 1));
      q[2] = uint8_t((x + y) * 255 / std::max(1, w + h - 2));
      q[3] = uint8_t(128 + (x + y) * 127 / std::max(1, w + h - 2));
    }
  }
  return p;
}

inline Bytes Noise(size_t bytes, unsigned seed) {
  std::mt19937 rng(seed);
  Bytes p(bytes);
  for (auto& b : p) b = uint8_t(rng());
  return p;
}

// Legal limited-range YUY2 with smooth luma and chroma.
inline Bytes Yuy2Gradient(int w, int h) {
  Bytes p(static_cast<size_t>(w) * h * 2);
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; x += 2) {
      uint8_t* q = &p[static_cast<size_t>(y) * w * 2 + x * 2];
      q[0] = uint8_t(16 + x * 219 / std::max(1, w - 1));
      q[2] = uint8_t(16 + (x + 1) * 219 / std::max(1, w - 1));
      q[1] = uint8_t(16 + y * 224 / std::max(1, h - 1));
      q[3] = uint8_t(240 - (x + y) * 224 / std::max(1, w + h - 2));
    }
  }
  return p;
}

inline uint8_t Clamp8(double v) {
  return uint8_t(std::clamp(std::floor(v + 0.5), 0.0, 255.0));
}

// BT.601 limited range, from the defining equations.
inline Bytes RefYuy2ToArgb(const Bytes& src, int w, int h) {
  Bytes out(static_cast<size_t>(w) * h * 4);
  for (size_t px = 0; px < static_cast<size_t>(w) * h; px += 2) {
    const uint8_t* s = &src[px * 2];
    const double u = s[1] - 128.0, v = s[3] - 128.0;
    for (int i = 0; i < 2; ++i) {
      const double l = 255.0 / 219.0 * (s[i * 2] - 16.0);
      uint8_t* d = &out[(px + i) * 4];
      d[0] = Clamp8(l + 255.0 / 224.0 * 1.772 * u);
      d[1] = Clamp8(l - 255.0 / 224.0 * (1.772 * 0.114 / 0.587 * u + 1.402 * 0.299 / 0.587 * v));
      d[2] = Clamp8(l + 255.0 / 224.0 * 1.402 * v);
      d[3] = 255;
    }
  }
  return out;
}

inline Bytes RefArgbToYuy2(const Bytes& src, int w, int h) {
  Bytes out(static_cast<size_t>(w) * h * 2);
  auto luma = [](const uint8_t* p) {
    return 16.0 + (65.481 * p[2] + 128.553 * p[1] + 24.966 * p[0]) / 255.0;
  };
  for (size_t px = 0; px < static_cast<size_t>(w) * h; px += 2) {
    const uint8_t* s = &src[px * 4];
    uint8_t* d = &out[px * 2];
    d[0] = Clamp8(luma(s));
    d[2] = Clamp8(luma(s + 4));
    const double b = (s[0] + s[4]) / 2.0, g = (s[1] + s[5]) / 2.0, r = (s[2] + s[6]) / 2.0;
    d[1] = Clamp8(128.0 + (-37.797 * r - 74.203 * g + 112.0 * b) / 255.0);
    d[3] = Clamp8(128.0 + (112.0 * r - 93.786 * g - 18.214 * b) / 255.0);
  }
  return out;
}

// The engine's sampling grid: pixel centres when shrinking, first and last
// pixels on each other when growing.
inline double RefPos(int i, int sn, int dn) {
  if (dn <= sn) return (i + 0.5) * sn / dn - 0.5;
  return dn > 1 ? double(i) * (sn - 1) / (dn - 1) : 0.0;
}

// Bilinear resampling of one channel at source position (fx, fy), edges
// clamped.
inline double RefBilinear(const uint8_t* p, int stride, int step, int sw, int sh, double fx,
                          double fy) {
  auto at = [&](int x, int y) {
    x = std::clamp(x, 0, sw - 1);
    y = std::clamp(y, 0, sh - 1);
    return double(p[static_cast<size_t>(y) * stride + static_cast<size_t>(x) * step]);
  };
  const int ix = int(std::floor(fx)), iy = int(std::floor(fy));
  const double ax = fx - ix, ay = fy - iy;
  const double top = at(ix, iy) * (1 - ax) + at(ix + 1, iy) * ax;
  const double bottom = at(ix, iy + 1) * (1 - ax) + at(ix + 1, iy + 1) * ax;
  return top * (1 - ay) + bottom * ay;
}

inline Bytes RefScaleArgb(const Bytes& src, int sw, int sh, int dw, int dh) {
  Bytes out(static_cast<size_t>(dw) * dh * 4);
  for (int y = 0; y < dh; ++y) {
    for (int x = 0; x < dw; ++x) {
      const double fx = RefPos(x, sw, dw), fy = RefPos(y, sh, dh);
      for (int c = 0; c < 4; ++c) {
        out[(static_cast<size_t>(y) * dw + x) * 4 + c] =
            Clamp8(RefBilinear(&src[c], sw * 4, 4, sw, sh, fx, fy));
      }
    }
  }
  return out;
}

// YUY2 scaled as its luma plane and its two half-width chroma planes.
inline Bytes RefScaleYuy2(const Bytes& src, int sw, int sh, int dw, int dh) {
  Bytes out(static_cast<size_t>(dw) * dh * 2);
  for (int y = 0; y < dh; ++y) {
    const double fy = RefPos(y, sh, dh);
    for (int x = 0; x < dw; ++x) {
      const double fx = RefPos(x, sw, dw);
      out[(static_cast<size_t>(y) * dw + x) * 2] =
          Clamp8(RefBilinear(src.data(), sw * 2, 2, sw, sh, fx, fy));
    }
    for (int cx = 0; cx < dw / 2; ++cx) {
      const double fx = RefPos(cx, sw / 2, dw / 2);
      uint8_t* d = &out[static_cast<size_t>(y) * dw * 2 + cx * 4];
      d[1] = Clamp8(RefBilinear(&src[1], sw * 2, 4, sw / 2, sh, fx, fy));
      d[3] = Clamp8(RefBilinear(&src[3], sw * 2, 4, sw / 2, sh, fx, fy));
    }
  }
  return out;
}

// Largest difference of two equally long byte runs.
inline int MaxDiff(const uint8_t* a, const uint8_t* b, size_t n) {
  int worst = 0;
  for (size_t i = 0; i < n; ++i) worst = std::max(worst, std::abs(int(a[i]) - int(b[i])));
  return worst;
}

inline int MaxDiff(const Bytes& a, const Bytes& b) {
  return a.size() == b.size() ? MaxDiff(a.data(), b.data(), a.size()) : 256;
}

inline tagPicProps Props(uint32_t format, int w, int h) {
  return {format, w, h, 0};
}
inline tagRECT Whole(int w, int h) {
  return {0, 0, w, h};
}

}  // namespace enginetest
