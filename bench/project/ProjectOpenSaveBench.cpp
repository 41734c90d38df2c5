// Whole-project disk costs: Open (full) and Save of a project of 20
// timelines x 10 tracks x 500 components, against reading and writing the
// same files' bytes with one fread and one fwrite each, in the same run.
// Save is measured with durability off (the figure to compare) and on (what
// waiting for the disk adds).

#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "files/AppDirectories.h"
#include "project/Project.h"
#include "project/SaveSet.h"
#include "project/TimelineList.h"

namespace {

namespace fs = std::filesystem;

constexpr int kTimelines = 20;
constexpr int kTracks = 10;
constexpr int kComponents = 500;

CComponent* MakeComponent(int serial) {
  auto* c = new CComponent;
  c->iKind = 1;
  c->iSerial = serial;
  c->dStart = serial * 1000.0;
  c->dEnd = serial * 1000.0 + 800.0;
  std::strcpy(c->szPath, "media/clip.avi");
  return c;
}

// A saved project in a scratch folder, made once for all benchmarks.
struct SavedProject {
  SavedProject() {
    char pattern[] = "/tmp/tachyrun-bench-project-XXXXXX";
    root = std::string(::mkdtemp(pattern)) + "/";
    InitAppDirectoriesFrom((root + "program").c_str(), 0);
    CProject project;
    std::strcpy(project.projectData.szRootPath, root.c_str());
    std::strcpy(project.projectData.szProjectName, "Bench");
    for (int t = 0; t < kTimelines; ++t) {
      auto* timeline = new CTimeline;
      std::snprintf(timeline->szName, sizeof(timeline->szName), "Timeline%d", t + 1);
      for (int k = 0; k < kTracks; ++k) {
        auto* track = new CTrack;
        for (int c = 0; c < kComponents; ++c) track->components.Add(MakeComponent(c));
        timeline->tracks.Add(track);
      }
      project.AddTimeline(timeline);
    }
    path = root + "Bench/Bench.qzpj";
    SetSaveDurability(false);
    project.Save(path.data());
    for (const auto& entry : fs::recursive_directory_iterator(root + "Bench")) {
      if (entry.is_regular_file() && entry.path().extension() != ".Bk1") {
        files.push_back(entry.path().string());
        bytes += entry.file_size();
      }
    }
  }
  ~SavedProject() { fs::remove_all(root); }
  std::string root;
  std::string path;
  std::vector<std::string> files;
  int64_t bytes = 0;
};

SavedProject& Saved() {
  static SavedProject saved;
  return saved;
}

void OpenAndSave(benchmark::State& state, bool durable) {
  SavedProject& saved = Saved();
  SetSaveDurability(durable);
  for (auto _ : state) {
    auto project = std::make_unique<CProject>();
    if (project->Open(saved.path.c_str(), 1) != 0) state.SkipWithError("open failed");
    if (project->Save(saved.path.data()) != 0) state.SkipWithError("save failed");
    // Freeing the 100,000 components is no part of open and save.
    state.PauseTiming();
    project.reset();
    state.ResumeTiming();
  }
  SetSaveDurability(false);
  state.SetBytesProcessed(state.iterations() * saved.bytes * 2);
  state.counters["MB"] = static_cast<double>(saved.bytes) / 1e6;
}

void BM_OpenSaveProject(benchmark::State& state) {
  OpenAndSave(state, false);
}
BENCHMARK(BM_OpenSaveProject)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void BM_OpenSaveProjectDurable(benchmark::State& state) {
  OpenAndSave(state, true);
}
BENCHMARK(BM_OpenSaveProjectDurable)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

// The two halves apart: Open alone, and Save alone of an opened project.
void BM_OpenProject(benchmark::State& state) {
  SavedProject& saved = Saved();
  for (auto _ : state) {
    auto project = std::make_unique<CProject>();
    if (project->Open(saved.path.c_str(), 1) != 0) state.SkipWithError("open failed");
    state.PauseTiming();
    project.reset();
    state.ResumeTiming();
  }
  state.SetBytesProcessed(state.iterations() * saved.bytes);
}
BENCHMARK(BM_OpenProject)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void BM_SaveProject(benchmark::State& state) {
  SavedProject& saved = Saved();
  CProject project;
  project.Open(saved.path.c_str(), 1);
  for (auto _ : state) {
    if (project.Save(saved.path.data()) != 0) state.SkipWithError("save failed");
  }
  state.SetBytesProcessed(state.iterations() * saved.bytes);
}
BENCHMARK(BM_SaveProject)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

// The peer: each file read whole with one fread and written whole, as a new
// file beside it, with one fwrite.
void BM_RawReadWriteSameBytes(benchmark::State& state) {
  SavedProject& saved = Saved();
  std::vector<char> buffer;
  for (auto _ : state) {
    for (const std::string& file : saved.files) {
      FILE* in = std::fopen(file.c_str(), "rb");
      std::fseek(in, 0, SEEK_END);
      buffer.resize(static_cast<size_t>(std::ftell(in)));
      std::rewind(in);
      benchmark::DoNotOptimize(std::fread(buffer.data(), 1, buffer.size(), in));
      std::fclose(in);
      const std::string copy = file + ".raw";
      FILE* out = std::fopen(copy.c_str(), "wb");
      std::fwrite(buffer.data(), 1, buffer.size(), out);
      std::fclose(out);
    }
  }
  for (const std::string& file : saved.files) std::remove((file + ".raw").c_str());
  state.SetBytesProcessed(state.iterations() * saved.bytes * 2);
}
BENCHMARK(BM_RawReadWriteSameBytes)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

}  // namespace

BENCHMARK_MAIN();
