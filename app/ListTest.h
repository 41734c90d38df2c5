#pragma once
// The timed part of the list test (control 1005): the cost of building and
// releasing a large population of timeline items, and its result line.

#include <cstddef>
#include <cstdint>

class CComponentList;

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

}  // namespace tachyrun
