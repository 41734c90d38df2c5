#include "engine/GpuKernels.h"

// Pictures on the device are compact: a rectangle of w x h pixels, rows of
// w * 4 (ARGB, bytes B,G,R,A) or w * 2 (YUY2: Y0 U Y1 V) bytes. Colour
// arithmetic follows the CPU backend: BT.601, limited range.
const char* const kPixmillKernelSource = R"CLC(
uchar clamp_u8(float v) { return (uchar)clamp(floor(v + 0.5f), 0.0f, 255.0f); }

__kernel void yuy2_to_argb(__global const uchar* src, __global uchar* dst, int w, int h,
                           int flip) {
  int x = get_global_id(0) * 2, y = get_global_id(1);
  if (x >= w || y >= h) return;
  int sy = flip ? h - 1 - y : y;
  __global const uchar* s = src + (size_t)sy * w * 2 + x * 2;
  float u = s[1] - 128.0f, v = s[3] - 128.0f;
  for (int i = 0; i < 2; ++i) {
    float l = 1.164f * (s[i * 2] - 16.0f);
    __global uchar* d = dst + ((size_t)y * w + x + i) * 4;
    d[0] = clamp_u8(l + 2.018f * u);
    d[1] = clamp_u8(l - 0.391f * u - 0.813f * v);
    d[2] = clamp_u8(l + 1.596f * v);
    d[3] = 255;
  }
}

__kernel void argb_to_yuy2(__global const uchar* src, __global uchar* dst, int w, int h,
                           int flip) {
  int x = get_global_id(0) * 2, y = get_global_id(1);
  if (x >= w || y >= h) return;
  int sy = flip ? h - 1 - y : y;
  __global const uchar* s = src + ((size_t)sy * w + x) * 4;
  __global uchar* d = dst + (size_t)y * w * 2 + x * 2;
  for (int i = 0; i < 2; ++i) {
    int b = s[i * 4], g = s[i * 4 + 1], r = s[i * 4 + 2];
    d[i * 2] = (uchar)((66 * r + 129 * g + 25 * b + 0x1080) >> 8);
  }
  int b = (s[0] + s[4] + 1) >> 1, g = (s[1] + s[5] + 1) >> 1, r = (s[2] + s[6] + 1) >> 1;
  d[1] = (uchar)((112 * b - 74 * g - 38 * r + 0x8080) >> 8);
  d[3] = (uchar)((112 * r - 94 * g - 18 * b + 0x8080) >> 8);
}

__kernel void copy_rows(__global const uchar* src, __global uchar* dst, int rowBytes, int h,
                        int flip) {
  int x = get_global_id(0), y = get_global_id(1);
  if (x >= rowBytes || y >= h) return;
  int sy = flip ? h - 1 - y : y;
  dst[(size_t)y * rowBytes + x] = src[(size_t)sy * rowBytes + x];
}

// Source position of destination index i: centred when shrinking, ends
// aligned when growing (the CPU backend's sampling grid).
float src_pos(int i, int sn, int dn) {
  if (dn <= sn) return (i + 0.5f) * sn / dn - 0.5f;
  return dn > 1 ? (float)i * (sn - 1) / (dn - 1) : 0.0f;
}

// One channel of a plane: stride and step in bytes, offset of the channel.
float fetch(__global const uchar* p, int stride, int step, int x, int y, int n, int m) {
  x = clamp(x, 0, n - 1);
  y = clamp(y, 0, m - 1);
  return p[(size_t)y * stride + (size_t)x * step];
}

// filter: 0 nearest, 1 linear across, 2 bilinear, 3 area average.
float sample_plane(__global const uchar* p, int stride, int step, int sn, int sm, int dn, int dm,
                   int x, int y, int filter) {
  if (filter == 3 && dn < sn && dm < sm) {
    float x0 = (float)x * sn / dn, x1 = (float)(x + 1) * sn / dn;
    float y0 = (float)y * sm / dm, y1 = (float)(y + 1) * sm / dm;
    float sum = 0.0f, area = 0.0f;
    for (int j = (int)y0; j < (int)ceil(y1); ++j) {
      float wy = fmin(y1, j + 1.0f) - fmax(y0, (float)j);
      for (int i = (int)x0; i < (int)ceil(x1); ++i) {
        float wx = fmin(x1, i + 1.0f) - fmax(x0, (float)i);
        sum += wx * wy * fetch(p, stride, step, i, j, sn, sm);
        area += wx * wy;
      }
    }
    return sum / area;
  }
  if (filter == 0) {
    return fetch(p, stride, step, (int)((x + 0.5f) * sn / dn), (int)((y + 0.5f) * sm / dm), sn,
                 sm);
  }
  float fx = src_pos(x, sn, dn);
  float fy = filter == 1 ? (float)(int)((y + 0.5f) * sm / dm) : src_pos(y, sm, dm);
  int ix = (int)floor(fx), iy = (int)floor(fy);
  float ax = fx - ix, ay = fy - iy;
  float top = mix(fetch(p, stride, step, ix, iy, sn, sm), fetch(p, stride, step, ix + 1, iy, sn, sm), ax);
  float bot = mix(fetch(p, stride, step, ix, iy + 1, sn, sm),
                  fetch(p, stride, step, ix + 1, iy + 1, sn, sm), ax);
  return mix(top, bot, ay);
}

float4 pixel(__global const uchar* p, int sw, int sh, int x, int y) {
  x = clamp(x, 0, sw - 1);
  y = clamp(y, 0, sh - 1);
  return convert_float4(vload4(0, p + ((size_t)y * sw + x) * 4));
}

// All four channels at once; the same grid and filters as sample_plane.
__kernel void scale_argb(__global const uchar* src, __global uchar* dst, int sw, int sh, int dw,
                         int dh, int filter) {
  int x = get_global_id(0), y = get_global_id(1);
  if (x >= dw || y >= dh) return;
  float4 v;
  if (filter == 3 && dw < sw && dh < sh) {
    float x0 = (float)x * sw / dw, x1 = (float)(x + 1) * sw / dw;
    float y0 = (float)y * sh / dh, y1 = (float)(y + 1) * sh / dh;
    float4 sum = (float4)(0.0f);
    float area = 0.0f;
    for (int j = (int)y0; j < (int)ceil(y1); ++j) {
      float wy = fmin(y1, j + 1.0f) - fmax(y0, (float)j);
      for (int i = (int)x0; i < (int)ceil(x1); ++i) {
        float wx = fmin(x1, i + 1.0f) - fmax(x0, (float)i);
        sum += wx * wy * pixel(src, sw, sh, i, j);
        area += wx * wy;
      }
    }
    v = sum / area;
  } else if (filter == 0) {
    v = pixel(src, sw, sh, (int)((x + 0.5f) * sw / dw), (int)((y + 0.5f) * sh / dh));
  } else {
    float fx = src_pos(x, sw, dw);
    float fy = filter == 1 ? (float)(int)((y + 0.5f) * sh / dh) : src_pos(y, sh, dh);
    int ix = (int)floor(fx), iy = (int)floor(fy);
    float ax = fx - ix, ay = fy - iy;
    float4 top = mix(pixel(src, sw, sh, ix, iy), pixel(src, sw, sh, ix + 1, iy), ax);
    float4 bot = mix(pixel(src, sw, sh, ix, iy + 1), pixel(src, sw, sh, ix + 1, iy + 1), ax);
    v = mix(top, bot, ay);
  }
  vstore4(convert_uchar4_sat_rte(v), 0, dst + ((size_t)y * dw + x) * 4);
}

// YUY2: luma is every second byte; U and V every fourth at half the width.
__kernel void scale_yuy2(__global const uchar* src, __global uchar* dst, int sw, int sh, int dw,
                         int dh, int filter) {
  int cx = get_global_id(0), y = get_global_id(1);
  if (cx * 2 >= dw || y >= dh) return;
  __global uchar* d = dst + (size_t)y * dw * 2 + cx * 4;
  d[0] = clamp_u8(sample_plane(src, sw * 2, 2, sw, sh, dw, dh, cx * 2, y, filter));
  d[2] = clamp_u8(sample_plane(src, sw * 2, 2, sw, sh, dw, dh, cx * 2 + 1, y, filter));
  d[1] = clamp_u8(sample_plane(src + 1, sw * 2, 4, sw / 2, sh, dw / 2, dh, cx, y, filter));
  d[3] = clamp_u8(sample_plane(src + 3, sw * 2, 4, sw / 2, sh, dw / 2, dh, cx, y, filter));
}

// m: 9 coefficients of the destination-to-source map, then 12 of the inward
// edge lines. filter: 0 nearest, 1 bilinear, 3 bilinear with smooth edges.
__kernel void perspective(__global const uchar* src, __global uchar* dst, int sw, int sh, int dw,
                          int dh, __constant float* m, int filter, int keep) {
  int x = get_global_id(0), y = get_global_id(1);
  if (x >= dw || y >= dh) return;
  float cx = x + 0.5f, cy = y + 0.5f;
  float nearest = 1e30f;
  for (int e = 0; e < 4; ++e) nearest = fmin(nearest, m[9 + e * 3] * cx + m[10 + e * 3] * cy + m[11 + e * 3]);
  float cover = filter == 3 ? clamp(nearest + 0.5f, 0.0f, 1.0f) : (nearest >= 0.0f ? 1.0f : 0.0f);
  __global uchar* out = dst + ((size_t)y * dw + x) * 4;
  float4 back = keep ? (float4)(out[0], out[1], out[2], out[3]) : (float4)(0.0f);
  float4 colour = (float4)(0.0f);
  if (cover > 0.0f) {
    float w = m[6] * cx + m[7] * cy + m[8];
    float u = (m[0] * cx + m[1] * cy + m[2]) / w, v = (m[3] * cx + m[4] * cy + m[5]) / w;
    u = isnan(u) ? -2.0f : clamp(u, -2.0f, sw + 2.0f);
    v = isnan(v) ? -2.0f : clamp(v, -2.0f, sh + 2.0f);
    if (filter == 0) {
      int ix = clamp((int)floor(u), 0, sw - 1), iy = clamp((int)floor(v), 0, sh - 1);
      __global const uchar* p = src + ((size_t)iy * sw + ix) * 4;
      colour = (float4)(p[0], p[1], p[2], p[3]);
    } else {
      float fx = u - 0.5f, fy = v - 0.5f;
      int ix = (int)floor(fx), iy = (int)floor(fy);
      float ax = fx - ix, ay = fy - iy;
      int x0 = clamp(ix, 0, sw - 1), x1 = clamp(ix + 1, 0, sw - 1);
      int y0 = clamp(iy, 0, sh - 1), y1 = clamp(iy + 1, 0, sh - 1);
      __global const uchar* r0 = src + (size_t)y0 * sw * 4;
      __global const uchar* r1 = src + (size_t)y1 * sw * 4;
      float4 p00 = (float4)(r0[x0 * 4], r0[x0 * 4 + 1], r0[x0 * 4 + 2], r0[x0 * 4 + 3]);
      float4 p10 = (float4)(r0[x1 * 4], r0[x1 * 4 + 1], r0[x1 * 4 + 2], r0[x1 * 4 + 3]);
      float4 p01 = (float4)(r1[x0 * 4], r1[x0 * 4 + 1], r1[x0 * 4 + 2], r1[x0 * 4 + 3]);
      float4 p11 = (float4)(r1[x1 * 4], r1[x1 * 4 + 1], r1[x1 * 4 + 2], r1[x1 * 4 + 3]);
      colour = mix(mix(p00, p10, ax), mix(p01, p11, ax), ay);
    }
  }
  float4 v = colour * cover + back * (1.0f - cover);
  out[0] = clamp_u8(v.x);
  out[1] = clamp_u8(v.y);
  out[2] = clamp_u8(v.z);
  out[3] = clamp_u8(v.w);
}
)CLC";
