#pragma once
// The timed part of the list test (control 1005): the cost of building and
// releasing a large population of timeline items, and its result line.

#include <cstddef>
#include <cstdint>

#include "measure/RunResult.h"
#include "timeline/ComponentList.h"

namespace tachyrun {

// Components the list test builds and releases.
inline constexpr int32_t kListTestCount = 100000;
// The result line's buffer.
inline constexpr size_t kListTestLineBytes = 200;

// Sizes the list's array to `count`, constructs a component straight into
// each slot (bypassing Add and its locks; a failed allocation leaves a null
// slot), then clears the list. Returns the milliseconds it took: an unsigned
// 32-bit difference of the millisecond clock, widened.
uint64_t BuildAndReleaseComponents(CComponentList& list, int32_t count);

// "Copy %d items Time Elapsed: %03.3f ms  Tot=%d" with the per-item time
// dt / count as a float. The line says "Copy"; the test copies nothing.
void FormatListTestLine(char (&line)[kListTestLineBytes], int32_t count, uint64_t dt);

// The whole test: two components and two lists on the stack (built and
// destroyed outside the timing, not used further), "started..." through
// `setText`, the timed stretch on list A, then the line. The result's
// figures are "Elapsed" (ms per item) and "Tot" (ms in all).
template <class SetText>
RunResult RunListTest(SetText&& setText);

// The run's result for the line `line` of `count` items in `dt` ms.
RunResult ListTestResult(const char* line, int32_t count, uint64_t dt);

template <class SetText>
RunResult RunListTest(SetText&& setText) {
  CComponent componentA;
  CComponent componentB;
  CComponentList listA;
  CComponentList listB;
  setText("started...");
  const uint64_t dt = BuildAndReleaseComponents(listA, kListTestCount);
  char line[kListTestLineBytes];
  FormatListTestLine(line, kListTestCount, dt);
  setText(line);
  return ListTestResult(line, kListTestCount, dt);
}

}  // namespace tachyrun
