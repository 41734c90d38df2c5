#include "engine/PerspectiveMap.h"

#include <algorithm>
#include <cmath>

namespace {

using Mat3 = double[9];

// Projective map of the unit square onto the quad p (corners in the order
// (0,0), (1,0), (1,1), (0,1)).
void SquareToQuad(const double p[4][2], Mat3 m) {
  const double sx = p[0][0] - p[1][0] + p[2][0] - p[3][0];
  const double sy = p[0][1] - p[1][1] + p[2][1] - p[3][1];
  double g = 0, h = 0;
  if (sx != 0.0 || sy != 0.0) {
    const double dx1 = p[1][0] - p[2][0], dx2 = p[3][0] - p[2][0];
    const double dy1 = p[1][1] - p[2][1], dy2 = p[3][1] - p[2][1];
    const double den = dx1 * dy2 - dx2 * dy1;
    g = (sx * dy2 - dx2 * sy) / den;
    h = (dx1 * sy - sx * dy1) / den;
  }
  m[0] = p[1][0] - p[0][0] + g * p[1][0];
  m[1] = p[3][0] - p[0][0] + h * p[3][0];
  m[2] = p[0][0];
  m[3] = p[1][1] - p[0][1] + g * p[1][1];
  m[4] = p[3][1] - p[0][1] + h * p[3][1];
  m[5] = p[0][1];
  m[6] = g;
  m[7] = h;
  m[8] = 1.0;
}

// The adjugate is the inverse up to a factor, which a projective map ignores.
void Adjugate(const Mat3 m, Mat3 out) {
  out[0] = m[4] * m[8] - m[5] * m[7];
  out[1] = m[2] * m[7] - m[1] * m[8];
  out[2] = m[1] * m[5] - m[2] * m[4];
  out[3] = m[5] * m[6] - m[3] * m[8];
  out[4] = m[0] * m[8] - m[2] * m[6];
  out[5] = m[2] * m[3] - m[0] * m[5];
  out[6] = m[3] * m[7] - m[4] * m[6];
  out[7] = m[1] * m[6] - m[0] * m[7];
  out[8] = m[0] * m[4] - m[1] * m[3];
}

void Multiply(const Mat3 a, const Mat3 b, Mat3 out) {
  for (int r = 0; r < 3; ++r) {
    for (int c = 0; c < 3; ++c) {
      out[r * 3 + c] = a[r * 3] * b[c] + a[r * 3 + 1] * b[3 + c] + a[r * 3 + 2] * b[6 + c];
    }
  }
}

bool ParamsFinite(const PerspectiveParams& p) {
  bool finite = std::isfinite(p.fShiftX) && std::isfinite(p.fShiftY) && std::isfinite(p.fAspect) &&
                std::isfinite(p.fRotation);
  for (double v : p.dCornerOffset) finite = finite && std::isfinite(v);
  for (double v : p.dCornerScale) finite = finite && std::isfinite(v);
  return finite;
}

// Corners of the destination rectangle after scale, offset, rotation, shift.
void PlaceCorners(const PerspectiveParams& p, int dw, int dh, double q[4][2]) {
  const double base[4][2] = {{0, 0}, {double(dw), 0}, {double(dw), double(dh)}, {0, double(dh)}};
  const double cx = dw / 2.0, cy = dh / 2.0;
  // Rotation works in a plane of the picture's shape, so that a turned
  // picture keeps its proportions on a grid of non-square units.
  const double aspect = p.fAspect > 0 ? double(p.fAspect) : double(dw) / dh;
  const double angle = double(p.fRotation) * M_PI / 180.0;
  const double cs = std::cos(angle), sn = std::sin(angle);
  for (int i = 0; i < 4; ++i) {
    const double px = (base[i][0] - cx) * p.dCornerScale[i] + p.dCornerOffset[2 * i];
    const double py = (base[i][1] - cy) * p.dCornerScale[i] + p.dCornerOffset[2 * i + 1];
    const double ux = px / dw * aspect, uy = py / dh;
    const double rx = ux * cs - uy * sn, ry = ux * sn + uy * cs;
    q[i][0] = cx + rx * dw / aspect + p.fShiftX;
    q[i][1] = cy + ry * dh + p.fShiftY;
  }
}

// Inward edge lines of a convex quad; false when it is not convex.
bool MakeEdges(const double q[4][2], double edge[4][3]) {
  double turn[4];
  for (int i = 0; i < 4; ++i) {
    const double* a = q[i];
    const double* b = q[(i + 1) % 4];
    const double* c = q[(i + 2) % 4];
    turn[i] = (b[0] - a[0]) * (c[1] - b[1]) - (b[1] - a[1]) * (c[0] - b[0]);
  }
  const double sign = turn[0] > 0 ? 1.0 : -1.0;
  for (double t : turn) {
    if (!(t * sign > 1e-9)) return false;
  }
  for (int i = 0; i < 4; ++i) {
    const double* a = q[i];
    const double* b = q[(i + 1) % 4];
    double nx = -(b[1] - a[1]) * sign, ny = (b[0] - a[0]) * sign;
    const double len = std::hypot(nx, ny);
    nx /= len;
    ny /= len;
    edge[i][0] = nx;
    edge[i][1] = ny;
    edge[i][2] = -(nx * a[0] + ny * a[1]);
  }
  return true;
}

double Coverage(const PerspectiveMap& map, double x, double y) {
  double nearest = 1e300;
  for (const auto& e : map.edge) nearest = std::min(nearest, e[0] * x + e[1] * y + e[2]);
  if (map.filter == kPerspectiveSmoothEdges) return std::clamp(nearest + 0.5, 0.0, 1.0);
  return nearest >= 0 ? 1.0 : 0.0;
}

// Source colour at (u, v) in source rectangle pixels, edges clamped.
void Sample(const PicRegion& src, const PerspectiveMap& map, double u, double v, double rgba[4]) {
  // Far outside positions all land on the edge; clamping first keeps the
  // conversion to int defined for any map.
  u = std::isnan(u) ? -2.0 : std::clamp(u, -2.0, src.w + 2.0);
  v = std::isnan(v) ? -2.0 : std::clamp(v, -2.0, src.h + 2.0);
  const uint8_t* origin = src.RectOrigin();
  auto px = [&](int x, int y) {
    x = std::clamp(x, 0, src.w - 1);
    y = std::clamp(y, 0, src.h - 1);
    return origin + static_cast<size_t>(y) * src.stride + static_cast<size_t>(x) * 4;
  };
  if (map.filter == kPerspectiveNearest) {
    const uint8_t* p = px(int(std::floor(u)), int(std::floor(v)));
    for (int c = 0; c < 4; ++c) rgba[c] = p[c];
    return;
  }
  const double fx = u - 0.5, fy = v - 0.5;
  const double x0 = std::floor(fx), y0 = std::floor(fy);
  const double ax = fx - x0, ay = fy - y0;
  const int ix = int(x0), iy = int(y0);
  const uint8_t* p00 = px(ix, iy);
  const uint8_t* p10 = px(ix + 1, iy);
  const uint8_t* p01 = px(ix, iy + 1);
  const uint8_t* p11 = px(ix + 1, iy + 1);
  for (int c = 0; c < 4; ++c) {
    const double top = p00[c] + (p10[c] - p00[c]) * ax;
    const double bottom = p01[c] + (p11[c] - p01[c]) * ax;
    rgba[c] = top + (bottom - top) * ay;
  }
}

}  // namespace

int32_t BuildPerspectiveMap(const PerspectiveParams& params, int dw, int dh, int sw, int sh,
                            int filter, PerspectiveMap* out) {
  if (filter < 0 || filter > 3 || !ParamsFinite(params)) return PIXMILL_E_ARGUMENT;
  PerspectiveMap map;
  map.filter = filter == 2 ? kPerspectiveBilinear : filter;
  map.keepOutside = (params.dwFlags & PERSPECTIVE_KEEP_OUTSIDE) != 0;
  PlaceCorners(params, dw, dh, map.corner);
  if (!MakeEdges(map.corner, map.edge)) return PIXMILL_E_ARGUMENT;
  Mat3 toQuad, fromQuad;
  SquareToQuad(map.corner, toQuad);
  Adjugate(toQuad, fromQuad);
  const Mat3 toSource = {double(sw), 0, 0, 0, double(sh), 0, 0, 0, 1};
  Multiply(toSource, fromQuad, map.h);
  for (double v : map.h) {
    if (!std::isfinite(v)) return PIXMILL_E_ARGUMENT;
  }
  *out = map;
  return PIXMILL_OK;
}

void RenderPerspectiveRows(const PicRegion& src, const PicRegion& dst, const PerspectiveMap& map,
                           int y0, int y1) {
  const double* h = map.h;
  for (int y = y0; y < y1; ++y) {
    uint8_t* row = dst.RectOrigin() + static_cast<size_t>(y) * dst.stride;
    const double cy = y + 0.5;
    for (int x = 0; x < dst.w; ++x) {
      uint8_t* out = row + static_cast<size_t>(x) * 4;
      const double cx = x + 0.5;
      const double cover = Coverage(map, cx, cy);
      double back[4] = {0, 0, 0, 0};
      if (map.keepOutside) {
        for (int c = 0; c < 4; ++c) back[c] = out[c];
      }
      double colour[4] = {0, 0, 0, 0};
      if (cover > 0) {
        const double w = h[6] * cx + h[7] * cy + h[8];
        Sample(src, map, (h[0] * cx + h[1] * cy + h[2]) / w, (h[3] * cx + h[4] * cy + h[5]) / w,
               colour);
      }
      for (int c = 0; c < 4; ++c) {
        const double v = colour[c] * cover + back[c] * (1.0 - cover);
        out[c] = static_cast<uint8_t>(std::clamp(std::floor(v + 0.5), 0.0, 255.0));
      }
    }
  }
}
