// Project object costs: an undo push of a long timeline against one copy of
// it, and an update of one component by id in a large project against a
// plain id scan of the same components, each pair in the same run.

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <vector>

#include "project/Project.h"
#include "project/TimelineList.h"
#include "project/UndoData.h"

namespace {

// Records dropped in a pause every this many iterations, so memory stays flat.
constexpr int kDropEvery = 64;

CComponent* MakeComponent(int serial) {
  auto* c = new CComponent;
  c->iKind = 1;
  c->iSerial = serial;
  c->dStart = serial * 1000.0;
  c->dEnd = serial * 1000.0 + 800.0;
  std::strcpy(c->szPath, "media/clip.avi");
  c->m_Markers.Add(new CMarkerPoint(100, 1));
  return c;
}

// tracks x perTrack components.
CTimeline* MakeTimeline(int tracks, int perTrack) {
  auto* timeline = new CTimeline;
  for (int t = 0; t < tracks; ++t) {
    auto* track = new CTrack;
    for (int k = 0; k < perTrack; ++k) track->components.Add(MakeComponent(t * perTrack + k));
    timeline->tracks.Add(track);
  }
  return timeline;
}

void BM_PushUndoThousandComponents(benchmark::State& state) {
  CProject project;
  std::unique_ptr<CTimeline> timeline(MakeTimeline(10, 100));
  int pushed = 0;
  for (auto _ : state) {
    project.PushUndo(timeline.get(), "step", 0);
    if (++pushed % kDropEvery == 0) {
      state.PauseTiming();
      project.ClearUndo();
      state.ResumeTiming();
    }
  }
}
BENCHMARK(BM_PushUndoThousandComponents)->Unit(benchmark::kMicrosecond);

// The peer: one deep copy of the same timeline into a new one that is kept,
// as the undo stack keeps its record.
void BM_CopyFromThousandComponents(benchmark::State& state) {
  std::unique_ptr<CTimeline> timeline(MakeTimeline(10, 100));
  std::vector<std::unique_ptr<CTimeline>> kept;
  for (auto _ : state) {
    kept.push_back(std::make_unique<CTimeline>());
    kept.back()->CopyFrom(*timeline);
    if (kept.size() % kDropEvery == 0) {
      state.PauseTiming();
      kept.clear();
      state.ResumeTiming();
    }
  }
}
BENCHMARK(BM_CopyFromThousandComponents)->Unit(benchmark::kMicrosecond);

// 100 timelines x 10 tracks x 100 components.
CProject& LargeProject() {
  static CProject* project = [] {
    auto* p = new CProject;
    for (int i = 0; i < 100; ++i) p->AddTimeline(MakeTimeline(10, 100));
    return p;
  }();
  return *project;
}

void BM_UpdateComponentById(benchmark::State& state) {
  CProject& project = LargeProject();
  // A component in the middle; the walk visits every component anyway.
  CTimeline* timeline = project.pTimelineList->GetAt(50);
  CComponent twin;
  twin.CopyFrom(*timeline->tracks.GetAt(5)->components.GetAt(50));
  for (auto _ : state) {
    twin.iSerial += 1;
    project.UpdateComponent(&twin);
  }
  state.counters["components"] = 100 * 10 * 100;
}
BENCHMARK(BM_UpdateComponentById)->Unit(benchmark::kMicrosecond);

// The peer: the same 100,000 components searched for the id without locks
// and without the copy.
void BM_PlainIdScan(benchmark::State& state) {
  CProject& project = LargeProject();
  const int64_t id =
      project.pTimelineList->GetAt(50)->tracks.GetAt(5)->components.GetAt(50)->iUniqueId;
  for (auto _ : state) {
    int found = 0;
    for (CTimeline* timeline : project.pTimelineList->m_aItems) {
      for (CTrack* track : timeline->tracks.m_aItems) {
        for (CComponent* c : track->components.m_aItems) found += c->iUniqueId == id;
      }
    }
    benchmark::DoNotOptimize(found);
  }
}
BENCHMARK(BM_PlainIdScan)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
