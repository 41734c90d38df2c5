// CPU backend: libyuv does the pixels; an engine made for several CPUs
// splits each picture into row bands over its BandPool. Every band writes
// exactly the bytes one call over the whole picture would, so results do not
// depend on the number of CPUs.
#pragma once

#include <memory>
#include <vector>

#include "engine/BandPool.h"
#include "engine/PixmillEngine.h"

class CpuEngine : public PixmillEngine {
 public:
  explicit CpuEngine(int cpus);

  int32_t Resize(const PicRegion& src, const PicRegion& dst, ScaleFilter filter) override;
  int32_t Convert(const PicRegion& src, const PicRegion& dst, bool flip) override;
  int32_t Perspective(const PicRegion& src, const PicRegion& dst,
                      const PerspectiveMap& map) override;
  std::string Name() const override;
  int32_t MeasureFrames(int width, int height, int frames, StageTimes* out) override;

 private:
  void ResizeArgb(const PicRegion& src, const PicRegion& dst, ScaleFilter filter);
  int32_t ResizeYuy2(const PicRegion& src, const PicRegion& dst, ScaleFilter filter);
  void ForBands(int rows, const std::function<void(int, int)>& rowsJob);

  std::unique_ptr<BandPool> m_pPool;
  // Planar 4:2:2 copies of both sides of a YUY2 resize, kept between calls.
  std::vector<uint8_t> m_SrcPlanes, m_DstPlanes;
};
