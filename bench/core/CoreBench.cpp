// Costs of the data layer's hot paths: an uncontended lock round trip, an
// identifier, and list appends.

#include <benchmark/benchmark.h>

#include "core/DataLock.h"
#include "core/OwningList.h"
#include "video/UniqueIdGenerator.h"

namespace {

void BM_DataLockAcquireRelease(benchmark::State& state) {
  CDataLock lock;
  for (auto _ : state) {
    benchmark::DoNotOptimize(lock.Acquire(0));
    benchmark::DoNotOptimize(lock.Release());
  }
}
BENCHMARK(BM_DataLockAcquireRelease);

void BM_NextIdWithoutText(benchmark::State& state) {
  CUniqueIdGenerator gen;
  for (auto _ : state) benchmark::DoNotOptimize(gen.NextId(ID_KIND_COMPONENT, nullptr));
}
BENCHMARK(BM_NextIdWithoutText);

void BM_NextIdWithText(benchmark::State& state) {
  CUniqueIdGenerator gen;
  std::string text;
  for (auto _ : state) benchmark::DoNotOptimize(gen.NextId(ID_KIND_COMPONENT, &text));
}
BENCHMARK(BM_NextIdWithText);

struct Item : CObject {
  int32_t Load(FILE*) { return 0; }
  int32_t Save(FILE*) { return 0; }
};

void BM_OwningListAdd1000(benchmark::State& state) {
  for (auto _ : state) {
    COwningList<Item> list;
    for (int i = 0; i < 1000; ++i) list.Add(new Item);
    benchmark::DoNotOptimize(list.GetCount());
  }
}
BENCHMARK(BM_OwningListAdd1000);

}  // namespace

BENCHMARK_MAIN();
