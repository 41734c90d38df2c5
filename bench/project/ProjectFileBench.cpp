// Timeline files and track searches: save + load of a timeline of 10,000
// typical components against one bulk fwrite + fread of the same bytes in
// the same run, and GetGapAt / FindFreePosition on a track of 10,000
// components, per call.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "files/DataFile.h"
#include "project/BackupRotation.h"
#include "project/Timeline.h"

namespace {

constexpr int kComponents = 10000;
constexpr double kComponentMs = 4000.0;  // 100 frames
constexpr double kGapMs = 40.0;          // one frame between neighbours

// 8 level points and one effect.
CComponent* MakeTypical(int serial, double startMs) {
  auto* c = new CComponent;
  c->iKind = 1;
  c->iSerial = serial;
  c->dStart = startMs;
  c->dEnd = startMs + kComponentMs;
  c->dSourceLength = kComponentMs;
  c->dMediaLength = kComponentMs;
  c->m_Levels.Add(new CLevelPoint(kRoleStart, 0, 100.0f));
  for (int i = 1; i < 7; ++i) c->m_Levels.Add(new CLevelPoint(kRoleInner, i * 500, 50.0f + i));
  c->m_Levels.Add(new CLevelPoint(kRoleEnd, 4000, 100.0f));
  auto* effect = new CEffect;
  effect->iEffectKind = 4;
  effect->SetLength(4000);
  c->m_Effects.Add(effect);
  return c;
}

// One track of kComponents, each followed by a gap of one frame.
std::unique_ptr<CTimeline> MakeTimeline() {
  auto timeline = std::make_unique<CTimeline>();
  auto* track = new CTrack;
  track->iTrackKind = 1;
  for (int i = 0; i < kComponents; ++i) {
    track->components.Add(MakeTypical(i, i * (kComponentMs + kGapMs)));
  }
  track->dLengthMs = kComponents * (kComponentMs + kGapMs) + 100000.0;
  timeline->dLengthMs = track->dLengthMs;
  timeline->tracks.Add(track);
  return timeline;
}

std::string TempPath(const char* name) {
  const char* dir = std::getenv("TMPDIR");
  return std::string(dir != nullptr ? dir : "/tmp") + "/tachyrun-bench-" +
         std::to_string(::getpid()) + "-" + name;
}

std::vector<char> ReadWhole(const std::string& path) {
  FILE* f = std::fopen(path.c_str(), "rb");
  std::fseek(f, 0, SEEK_END);
  std::vector<char> bytes(static_cast<size_t>(std::ftell(f)));
  std::rewind(f);
  if (std::fread(bytes.data(), 1, bytes.size(), f) != bytes.size()) bytes.clear();
  std::fclose(f);
  return bytes;
}

void RemoveSet(const std::string& path) {
  std::remove(path.c_str());
  const std::string base = path.substr(0, path.rfind('.'));
  std::remove((base + ".Bk1").c_str());
  std::remove((base + ".Bk2").c_str());
}

void BM_TimelineSaveLoad(benchmark::State& state) {
  auto timeline = MakeTimeline();
  const std::string path = TempPath("save.Qzt");
  timeline->SaveFile(path.c_str());
  const size_t bytes = ReadWhole(path).size();
  for (auto _ : state) {
    timeline->SaveFile(path.c_str());
    auto loaded = std::make_unique<CTimeline>();
    loaded->LoadFile(path.c_str());
    benchmark::DoNotOptimize(loaded->tracks.GetAt(0)->components.GetCount());
    state.PauseTiming();
    loaded.reset();
    state.ResumeTiming();
  }
  RemoveSet(path);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes * 2));
  state.counters["file_MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(BM_TimelineSaveLoad)->Unit(benchmark::kMillisecond);

// The same through the stream's default buffer: what SaveFile and LoadFile
// did before they gave the stream a large one.
void BM_TimelineSaveLoadDefaultBuffer(benchmark::State& state) {
  auto timeline = MakeTimeline();
  const std::string path = TempPath("default.Qzt");
  for (auto _ : state) {
    RotateBackupFiles(path.c_str(), 0);
    FILE* out = OpenDataFile(path.c_str(), false);
    timeline->Save(out);
    CloseDataFile(out);
    auto loaded = std::make_unique<CTimeline>();
    FILE* in = OpenDataFile(path.c_str(), false);
    loaded->Load(in);
    CloseDataFile(in);
    benchmark::DoNotOptimize(loaded->tracks.GetAt(0)->components.GetCount());
    state.PauseTiming();
    loaded.reset();
    state.ResumeTiming();
  }
  RemoveSet(path);
}
BENCHMARK(BM_TimelineSaveLoadDefaultBuffer)->Unit(benchmark::kMillisecond);

void BM_TimelineSaveOnly(benchmark::State& state) {
  auto timeline = MakeTimeline();
  const std::string path = TempPath("saveonly.Qzt");
  for (auto _ : state) timeline->SaveFile(path.c_str());
  RemoveSet(path);
}
BENCHMARK(BM_TimelineSaveOnly)->Unit(benchmark::kMillisecond);

void BM_TimelineLoadOnly(benchmark::State& state) {
  auto timeline = MakeTimeline();
  const std::string path = TempPath("loadonly.Qzt");
  timeline->SaveFile(path.c_str());
  for (auto _ : state) {
    auto loaded = std::make_unique<CTimeline>();
    loaded->LoadFile(path.c_str());
    state.PauseTiming();
    loaded.reset();
    state.ResumeTiming();
  }
  RemoveSet(path);
}
BENCHMARK(BM_TimelineLoadOnly)->Unit(benchmark::kMillisecond);

// The peer: the same bytes in one fwrite to the same kind of file, then one fread.
void BM_BulkWriteRead(benchmark::State& state) {
  auto timeline = MakeTimeline();
  const std::string path = TempPath("bulk.Qzt");
  timeline->SaveFile(path.c_str());
  std::vector<char> bytes = ReadWhole(path);  // written before any timed read
  std::vector<char> back(bytes.size());
  for (auto _ : state) {
    FILE* out = std::fopen(path.c_str(), "wb");
    std::fwrite(bytes.data(), 1, bytes.size(), out);
    std::fclose(out);
    FILE* in = std::fopen(path.c_str(), "rb");
    benchmark::DoNotOptimize(std::fread(back.data(), 1, back.size(), in));
    std::fclose(in);
  }
  RemoveSet(path);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size() * 2));
}
BENCHMARK(BM_BulkWriteRead)->Unit(benchmark::kMillisecond);

void BM_GetGapAt(benchmark::State& state) {
  auto timeline = MakeTimeline();
  CTrack* track = timeline->tracks.GetAt(0);
  const int64_t frame = (kComponents / 2) * 101 + 100;  // the gap behind the middle component
  int64_t lo = 0, hi = 0, prev = 0, next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(track->GetGapAt(frame, &lo, &hi, &prev, &next));
  }
}
BENCHMARK(BM_GetGapAt)->Unit(benchmark::kMicrosecond);

// Found in the first pass: the free stretch behind the last component.
void BM_FindFreePositionFirstPass(benchmark::State& state) {
  auto timeline = MakeTimeline();
  CTrack* track = timeline->tracks.GetAt(0);
  for (auto _ : state) benchmark::DoNotOptimize(track->FindFreePosition(kComponents * 101, 50));
}
BENCHMARK(BM_FindFreePositionFirstPass)->Unit(benchmark::kMicrosecond);

// The longest search: from the start every one-frame gap is too small, two
// passes a component, and the pass limit ends it half way along the track.
void BM_FindFreePositionTenThousandPasses(benchmark::State& state) {
  auto timeline = MakeTimeline();
  CTrack* track = timeline->tracks.GetAt(0);
  for (auto _ : state) benchmark::DoNotOptimize(track->FindFreePosition(0, 50));
}
BENCHMARK(BM_FindFreePositionTenThousandPasses)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
