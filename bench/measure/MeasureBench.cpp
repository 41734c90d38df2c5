// The dialog's timed loops beside bare peers on buffers of the same sizes,
// all written before they are read, in one run:
//   1033's loop (buffers from AllocBuffersRGBA) against a bare memcpy loop,
//   1015's resize against libyuv::ARGBScale called directly,
//   1008's conversion against libyuv::YUY2ToARGB called directly.
// Each contender runs in repetitions; the best repetition of each is compared
// and the ratios are printed at the end. A ratio near 1.00 says the dialog's
// figure measures what the bare operation costs.
//
// Run: build/default/bench/measure/bench_measure
#include <benchmark/benchmark.h>
#include <libyuv.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "engine/Pixmill.h"
#include "measure/CpuTestFamily.h"

namespace {

using tachyrun::CPicturePairState;
using tachyrun::CpuTestDef;
using tachyrun::FindCpuTest;
using tachyrun::RunCpuRounds;

constexpr int kRepetitions = 20;

// The one-CPU engine of the dialog, started once.
CPixmill& Engine() {
  static CPixmill* engine = [] {
    InitConverterLib();
    auto* e = new CPixmill;
    e->Img_InitConverter(-1, 1, nullptr, 720, 576, 0);
    return e;
  }();
  return *engine;
}

// One round of control `iControl`'s loop per iteration, on the picture pair
// the control itself allocates.
void RunControlLoop(benchmark::State& st, int iControl) {
  const CpuTestDef& def = *FindCpuTest(iControl);
  CPicturePairState pair;
  pair.SetPictures(def.iSrcW, def.iSrcH, def.dwSrcFormat, def.iDstW, def.iDstH, def.dwDstFormat,
                   def.iLineFactor);
  pair.AllocBuffers(Engine());
  for (auto _ : st) {
    benchmark::DoNotOptimize(RunCpuRounds(def, 1, pair, Engine()));
    benchmark::ClobberMemory();
  }
  pair.FreeBuffers(Engine());
}

// A buffer written all through, as the peers' inputs and outputs must be.
std::vector<uint8_t> WrittenBuffer(size_t bytes) {
  std::vector<uint8_t> buffer(bytes);
  for (size_t i = 0; i < bytes; ++i) buffer[i] = static_cast<uint8_t>(i * 7 + (i >> 12));
  return buffer;
}

void BM_Control1033Loop(benchmark::State& st) {
  RunControlLoop(st, 1033);
}

void BM_BareMemcpy(benchmark::State& st) {
  const size_t bytes = 1920 * 1080 * 4;
  std::vector<uint8_t> src = WrittenBuffer(bytes), dst = WrittenBuffer(bytes);
  for (auto _ : st) {
    std::memcpy(dst.data(), src.data(), bytes);
    benchmark::ClobberMemory();
  }
}

void BM_Control1015Resize(benchmark::State& st) {
  RunControlLoop(st, 1015);
}

void BM_LibyuvARGBScale(benchmark::State& st) {
  std::vector<uint8_t> src = WrittenBuffer(720 * 576 * 4), dst = WrittenBuffer(1920 * 1080 * 4);
  for (auto _ : st) {
    libyuv::ARGBScale(src.data(), 720 * 4, 720, 576, dst.data(), 1920 * 4, 1920, 1080,
                      libyuv::kFilterBilinear);
    benchmark::ClobberMemory();
  }
}

void BM_Control1008Convert(benchmark::State& st) {
  RunControlLoop(st, 1008);
}

void BM_LibyuvYUY2ToARGB(benchmark::State& st) {
  std::vector<uint8_t> src = WrittenBuffer(1920 * 1080 * 2), dst = WrittenBuffer(1920 * 1080 * 4);
  for (auto _ : st) {
    libyuv::YUY2ToARGB(src.data(), 1920 * 2, dst.data(), 1920 * 4, 1920, 1080);
    benchmark::ClobberMemory();
  }
}

// The contenders run in turns (random interleaving, set in main), one
// repetition at a time, so that load from other programs falls on every one of
// them alike.
BENCHMARK(BM_Control1033Loop)->Unit(benchmark::kMillisecond)->Repetitions(kRepetitions);
BENCHMARK(BM_BareMemcpy)->Unit(benchmark::kMillisecond)->Repetitions(kRepetitions);
BENCHMARK(BM_Control1015Resize)->Unit(benchmark::kMillisecond)->Repetitions(kRepetitions);
BENCHMARK(BM_LibyuvARGBScale)->Unit(benchmark::kMillisecond)->Repetitions(kRepetitions);
BENCHMARK(BM_Control1008Convert)->Unit(benchmark::kMillisecond)->Repetitions(kRepetitions);
BENCHMARK(BM_LibyuvYUY2ToARGB)->Unit(benchmark::kMillisecond)->Repetitions(kRepetitions);

// Keeps the best CPU time per iteration of each benchmark while printing as
// usual: every contender is single-threaded, and CPU time leaves out the time
// other programs on a shared machine take from it.
class BestTimes : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
      const double ms = run.GetAdjustedCPUTime();
      auto [it, inserted] = m_Best.emplace(run.run_name.function_name, ms);
      if (!inserted) it->second = std::min(it->second, ms);
    }
    ConsoleReporter::ReportRuns(runs);
  }
  double Best(const std::string& name) const {
    const auto it = m_Best.find(name);
    return it == m_Best.end() ? 0.0 : it->second;
  }

 private:
  std::map<std::string, double> m_Best;
};

}  // namespace

int main(int argc, char** argv) {
  std::vector<char*> args(argv, argv + argc);
  char szInterleave[] = "--benchmark_enable_random_interleaving=true";
  args.insert(args.begin() + 1, szInterleave);
  int iArgs = static_cast<int>(args.size());
  benchmark::Initialize(&iArgs, args.data());
  BestTimes reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  const struct {
    const char* szWhat;
    const char* szControl;
    const char* szPeer;
  } pairs[] = {
      {"1033 loop / bare memcpy", "BM_Control1033Loop", "BM_BareMemcpy"},
      {"1015 resize / libyuv ARGBScale", "BM_Control1015Resize", "BM_LibyuvARGBScale"},
      {"1008 conversion / libyuv YUY2ToARGB", "BM_Control1008Convert", "BM_LibyuvYUY2ToARGB"}};
  std::printf("\nbest ms/frame and ratio (control / peer):\n");
  for (const auto& p : pairs) {
    const double control = reporter.Best(p.szControl), peer = reporter.Best(p.szPeer);
    if (control <= 0.0 || peer <= 0.0) continue;  // filtered out of this run
    std::printf("%-38s %8.3f %8.3f  %5.2f\n", p.szWhat, control, peer, control / peer);
  }
  benchmark::Shutdown();
  return 0;
}
