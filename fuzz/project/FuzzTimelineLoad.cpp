// Loads a timeline (tracks with their components, markers) from arbitrary
// bytes, runs the track searches and copies on what it held, and saves it
// again. Counts are bounded by the bytes behind them: a list stops adding
// default elements shortly after the stream ends.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "project/Timeline.h"

namespace {

// Searches stay cheap: each pass walks all components of the track.
constexpr int32_t kMaxSearchedComponents = 32;
// Renewing ids relinks every component against every other one.
constexpr int32_t kMaxRenewedComponents = 512;

int32_t ComponentCount(CTimeline& timeline) {
  int32_t count = 0;
  for (CTrack* track : timeline.tracks.m_aItems) {
    if (track != nullptr) count += track->components.GetCount();
  }
  return count;
}

void Exercise(CTimeline& loaded, FILE* sink) {
  CTrackState states[4] = {};
  loaded.tracks.GetStatesAtTime(loaded.dCursorMs, 4, states);
  for (CTrack* track : loaded.tracks.m_aItems) {
    if (track == nullptr || track->components.GetCount() > kMaxSearchedComponents) continue;
    int64_t lo = 0, hi = 0, prev = 0, next = 0;
    track->GetGapAt(25, &lo, &hi, &prev, &next);
    track->FindFreePosition(-5, 10);
    track->AcceptsKind(static_cast<int32_t>(track->iTrackKind));
  }
  CTimeline copy;
  copy.CopyFrom(loaded);
  if (ComponentCount(copy) <= kMaxRenewedComponents) copy.RenewIds();
  copy.ResetTrackRanges();
  copy.AddTracks(2);
  if (sink != nullptr) copy.Save(sink);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static FILE* sink = std::fopen("/dev/null", "wb");
  CTimeline timeline;
  if (size == 0) {
    timeline.Load(nullptr);
    return 0;
  }
  FILE* stream = fmemopen(const_cast<uint8_t*>(data), size, "rb");
  if (stream == nullptr) return 0;
  if (timeline.Load(stream) == 0) Exercise(timeline, sink);
  std::fclose(stream);
  return 0;
}
