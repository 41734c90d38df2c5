// Loads a component with all its lists (levels, effects with key groups and
// their curves, markers) from arbitrary bytes, runs the edits and curve
// arithmetic on whatever times it held, then saves it again. Memory
// stays bounded because a list stops adding default elements shortly after
// the stream ends, whatever its count field claims.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "timeline/Component.h"

namespace {

void Exercise(CComponent& loaded) {
  loaded.GetTimelineMaxLength();
  loaded.GetSourceFrame(loaded.dStart + 1000.0);
  loaded.GetFileFrame(loaded.dEnd);
  loaded.m_Levels.Evaluate(1000);
  loaded.m_Levels.EvaluatePlaced(500, 0, 0, 1000);
  CComponent edited;
  edited.CopyFrom(loaded);
  edited.InitDefaultLevels();
  edited.SetEnd(5000);
  edited.SetStart(100);
  edited.StretchEnd(9000);
  edited.StretchStart(0);
  edited.TrimLevelPoints();
  edited.RefitKeyGroups();
  CLevelPointList& curve = edited.m_Levels;
  curve.AdjustSegment(700, 40.0f, 0, 2000, 100.0f, 0.0f);
  curve.SetFadeIn(100, 10, 0, 50);
  curve.SetFadeOut(100, 0, 1, 20);
  curve.ClearFades(nullptr);
  curve.ScaleTimes(3, 2);
  curve.RemapRange(0, 1000, 10, 500, 2000);
  edited.m_Markers.FitToLength(10);
  edited.m_Markers.FindByFrame(1000);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static FILE* sink = std::fopen("/dev/null", "wb");
  CComponent component;
  if (size == 0) {
    component.Load(nullptr);
    return 0;
  }
  FILE* stream = fmemopen(const_cast<uint8_t*>(data), size, "rb");
  if (stream == nullptr) return 0;
  if (component.Load(stream) == 0) {
    Exercise(component);
    if (sink != nullptr) component.Save(sink);
  }
  std::fclose(stream);
  return 0;
}
