// What a backend of CPixmill does. CPixmill checks every argument and hands
// the backend only valid, non-overlapping picture regions.
#pragma once

#include <cstdint>
#include <string>

#include "engine/PicArgs.h"

struct PerspectiveMap;

// Sampling of a resize; the numbers are those of Img_ResizeARGB's second
// argument.
enum ScaleFilter : int { kScaleNearest = 0, kScaleLinear = 1, kScaleBilinear = 2, kScaleBox = 3 };

// Per-frame times of the engine's own measurement, in milliseconds.
struct StageTimes {
  double dUpload = 0, dConvert = 0, dScale = 0, dDownload = 0;
  double Total() const { return dUpload + dConvert + dScale + dDownload; }
};

// Where the built-in measurement scales to: the other broadcast size from
// 720x576 and 1920x1080, any other size to itself.
inline void MeasureScaleTarget(int width, int height, int* outW, int* outH) {
  const bool sd = width == 720 && height == 576, hd = width == 1920 && height == 1080;
  *outW = sd ? 1920 : hd ? 720 : width;
  *outH = sd ? 1080 : hd ? 576 : height;
}

class PixmillEngine {
 public:
  virtual ~PixmillEngine() = default;

  // Both regions ARGB or both YUY2.
  virtual int32_t Resize(const PicRegion& src, const PicRegion& dst, ScaleFilter filter) = 0;
  // Equal rectangle sizes; any pair of the two formats. flip turns rows over.
  virtual int32_t Convert(const PicRegion& src, const PicRegion& dst, bool flip) = 0;
  // Both ARGB.
  virtual int32_t Perspective(const PicRegion& src, const PicRegion& dst,
                              const PerspectiveMap& map) = 0;

  // Short name for test messages ("CPU x2", the OpenCL device name).
  virtual std::string Name() const = 0;
  // Runs frames rounds of upload, YUY2->ARGB, ARGB scale to
  // MeasureScaleTarget and download at width x height; averages per frame.
  virtual int32_t MeasureFrames(int width, int height, int frames, StageTimes* out) = 0;
};
