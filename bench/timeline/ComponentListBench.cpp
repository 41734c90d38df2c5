// The list test's stretch (100000 components constructed straight into a
// list's array, then Clear) against a plain loop that only allocates and
// frees blocks of a component's size. The ratio of the two per-item times is
// the cost of constructing and tearing down a component beyond its memory.

#include <benchmark/benchmark.h>

#include <memory>
#include <new>
#include <vector>

#include "measure/ListRun.h"
#include "timeline/ComponentList.h"

namespace {

void BM_ListTestBuildAndRelease(benchmark::State& state) {
  const int32_t count = static_cast<int32_t>(state.range(0));
  for (auto _ : state) {
    CComponentList list;
    benchmark::DoNotOptimize(tachyrun::BuildAndReleaseComponents(list, count));
  }
  state.SetItemsProcessed(state.iterations() * count);
}

void BM_PlainNewDeleteOfComponentSize(benchmark::State& state) {
  const int32_t count = static_cast<int32_t>(state.range(0));
  std::vector<void*> blocks(static_cast<size_t>(count));
  for (auto _ : state) {
    for (void*& block : blocks) {
      block = ::operator new(sizeof(CComponent));
      benchmark::DoNotOptimize(block);
    }
    for (void* block : blocks) ::operator delete(block);
  }
  state.SetItemsProcessed(state.iterations() * count);
}

}  // namespace

BENCHMARK(BM_ListTestBuildAndRelease)->Arg(tachyrun::kListTestCount)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PlainNewDeleteOfComponentSize)
    ->Arg(tachyrun::kListTestCount)
    ->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
