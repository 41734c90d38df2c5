// The two hot paths of the time code calculator, each beside a plain
// baseline so that figures read as ratios: milliseconds to frames against an
// integer division, and the text against one snprintf of four numbers.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "time/TimeCode.h"

namespace {

void BM_MillisecondsToFrames(benchmark::State& state) {
  int64_t ms = 0;
  for (auto _ : state) {
    CTimeCode tc;
    tc.SetMilliseconds(static_cast<double>(ms));
    benchmark::DoNotOptimize(tc.GetFrames());
    ms = (ms + 37) % 86400000;
  }
}
BENCHMARK(BM_MillisecondsToFrames);

void BM_MillisecondsToFramesBaseline(benchmark::State& state) {
  int64_t ms = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize((ms + 19) / 40);
    ms = (ms + 37) % 86400000;
  }
}
BENCHMARK(BM_MillisecondsToFramesBaseline);

void BM_FormatTimeBuffer(benchmark::State& state) {
  CTimeCode tc;
  char text[kTimeTextCapacity];
  int64_t us = 0;
  for (auto _ : state) {
    tc.SetMicroseconds(us);
    tc.FormatTime(text);
    benchmark::DoNotOptimize(text);
    us = (us + 1234567) % 86400000000;
  }
}
BENCHMARK(BM_FormatTimeBuffer);

void BM_FormatTimeString(benchmark::State& state) {
  CTimeCode tc;
  std::string text;
  int64_t us = 0;
  for (auto _ : state) {
    tc.SetMicroseconds(us);
    tc.FormatTime(&text);
    benchmark::DoNotOptimize(text.data());
    us = (us + 1234567) % 86400000000;
  }
}
BENCHMARK(BM_FormatTimeString);

void BM_FormatTimeBaseline(benchmark::State& state) {
  char text[32];
  int32_t n = 0;
  for (auto _ : state) {
    std::snprintf(text, sizeof text, "%02d:%02d:%02d:%02d", n % 24, n % 60, n % 59, n % 25);
    benchmark::DoNotOptimize(text);
    ++n;
  }
}
BENCHMARK(BM_FormatTimeBaseline);

}  // namespace

BENCHMARK_MAIN();
