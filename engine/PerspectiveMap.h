// The four-corner perspective render: from PerspectiveParams to a projective
// map from destination pixels to source pixels, and the reference CPU render
// of a band of destination rows. The OpenCL kernel does the same arithmetic.
#pragma once

#include <cstdint>

#include "engine/PicArgs.h"
#include "engine/Pixmill.h"

enum PerspectiveFilter : int {
  kPerspectiveNearest = 0,
  kPerspectiveBilinear = 1,     // also 2
  kPerspectiveSmoothEdges = 3,  // bilinear, with the quad's edges anti-aliased
};

struct PerspectiveMap {
  double h[9] = {};          // destination (x, y, 1) -> source (u, v, w), rect-relative
  double edge[4][3] = {};    // inward edge lines a*x + b*y + c, |(a, b)| = 1
  double corner[4][2] = {};  // the quad in destination rectangle coordinates
  int filter = kPerspectiveBilinear;
  bool keepOutside = false;
};

// Builds the map for a destination rectangle dw x dh and a source rectangle
// sw x sh. Fails with PIXMILL_E_ARGUMENT for an unknown filter, values that
// are not finite, or a quad that is not convex.
int32_t BuildPerspectiveMap(const PerspectiveParams& params, int dw, int dh, int sw, int sh,
                            int filter, PerspectiveMap* out);

// Renders destination rows [y0, y1) of the destination rectangle.
void RenderPerspectiveRows(const PicRegion& src, const PicRegion& dst, const PerspectiveMap& map,
                           int y0, int y1);
