// Timeline item costs: making a component, evaluating a long curve, and
// saving and loading many components against plain fwrite/fread of the same
// number of bytes in the same run.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>
#include <vector>

#include "timeline/Component.h"

namespace {

constexpr int kComponents = 10000;

void BM_ComponentConstructDestroy(benchmark::State& state) {
  for (auto _ : state) {
    auto c = std::make_unique<CComponent>();
    benchmark::DoNotOptimize(c.get());
  }
}
BENCHMARK(BM_ComponentConstructDestroy);

void BM_EvaluateThousandPoints(benchmark::State& state) {
  CLevelPointList curve;
  curve.Add(new CLevelPoint(kRoleStart, 0, 0.0f));
  for (int i = 1; i < 999; ++i) curve.Add(new CLevelPoint(kRoleInner, i * 10, (i * 37) % 100));
  curve.Add(new CLevelPoint(kRoleEnd, 9990, 50.0f));
  int64_t t = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(curve.Evaluate(t));
    t = (t + 7) % 10000;  // spread over the whole curve: the walk is linear
  }
}
BENCHMARK(BM_EvaluateThousandPoints);

std::unique_ptr<CComponent> MakeTypical(int serial) {
  auto c = std::make_unique<CComponent>();
  c->iKind = 2;
  c->iSerial = serial;
  c->dEnd = 8000;
  c->m_Levels.Add(new CLevelPoint(kRoleStart, 0, 80.0f));
  for (int i = 1; i < 7; ++i) c->m_Levels.Add(new CLevelPoint(kRoleInner, i * 1000, 50.0f + i));
  c->m_Levels.Add(new CLevelPoint(kRoleEnd, 8000, 80.0f));
  auto* effect = new CEffect();
  effect->SetLength(8000);
  for (int g = 0; g < 3; ++g) effect->AddKeyGroup("param", 0, 1, 0, 100);
  c->m_Effects.Add(effect);
  c->m_Markers.Add(new CMarkerPoint(1000, 1));
  c->m_Markers.Add(new CMarkerPoint(5000, 2));
  return c;
}

// Bytes of the saved components, measured once.
long SavedBytes(std::vector<std::unique_ptr<CComponent>>& items) {
  FILE* f = std::tmpfile();
  for (auto& c : items) c->Save(f);
  const long bytes = std::ftell(f);
  std::fclose(f);
  return bytes;
}

void BM_SaveLoadComponents(benchmark::State& state) {
  std::vector<std::unique_ptr<CComponent>> items;
  for (int i = 0; i < kComponents; ++i) items.push_back(MakeTypical(i));
  const long bytes = SavedBytes(items);
  std::vector<std::unique_ptr<CComponent>> loaded(kComponents);
  for (auto& c : loaded) c = std::make_unique<CComponent>();
  FILE* f = std::tmpfile();
  for (auto _ : state) {
    std::rewind(f);
    for (auto& c : items) c->Save(f);
    std::rewind(f);
    for (auto& c : loaded) c->Load(f);
  }
  std::fclose(f);
  state.SetBytesProcessed(state.iterations() * bytes * 2);
  state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(BM_SaveLoadComponents)->Unit(benchmark::kMillisecond);

// The two halves apart, to see where the time goes.
void BM_SaveComponents(benchmark::State& state) {
  std::vector<std::unique_ptr<CComponent>> items;
  for (int i = 0; i < kComponents; ++i) items.push_back(MakeTypical(i));
  const long bytes = SavedBytes(items);
  FILE* f = std::tmpfile();
  for (auto _ : state) {
    std::rewind(f);
    for (auto& c : items) c->Save(f);
  }
  std::fclose(f);
  state.SetBytesProcessed(state.iterations() * bytes);
}
BENCHMARK(BM_SaveComponents)->Unit(benchmark::kMillisecond);

void BM_LoadComponents(benchmark::State& state) {
  std::vector<std::unique_ptr<CComponent>> items;
  for (int i = 0; i < kComponents; ++i) items.push_back(MakeTypical(i));
  FILE* f = std::tmpfile();
  for (auto& c : items) c->Save(f);
  const long bytes = std::ftell(f);
  for (auto _ : state) {
    std::rewind(f);
    for (auto& c : items) c->Load(f);
  }
  std::fclose(f);
  state.SetBytesProcessed(state.iterations() * bytes);
}
BENCHMARK(BM_LoadComponents)->Unit(benchmark::kMillisecond);

void BM_PlainWriteReadSameBytes(benchmark::State& state) {
  std::vector<std::unique_ptr<CComponent>> items;
  for (int i = 0; i < kComponents; ++i) items.push_back(MakeTypical(i));
  const long bytes = SavedBytes(items);
  std::vector<char> out(static_cast<size_t>(bytes), 1);
  std::vector<char> in(static_cast<size_t>(bytes));
  FILE* f = std::tmpfile();
  for (auto _ : state) {
    std::rewind(f);
    std::fwrite(out.data(), 1, out.size(), f);
    std::rewind(f);
    benchmark::DoNotOptimize(std::fread(in.data(), 1, in.size(), f));
  }
  std::fclose(f);
  state.SetBytesProcessed(state.iterations() * bytes * 2);
}
BENCHMARK(BM_PlainWriteReadSameBytes)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
