#include "measure/ListRun.h"

#include <cstdio>
#include <new>

#include "measure/ResultLines.h"
#include "platform/Clock.h"
#include "timeline/ComponentList.h"

namespace tachyrun {

uint64_t BuildAndReleaseComponents(CComponentList& list, int32_t count) {
  const uint32_t t0 = platform::TickCountMs();
  list.m_aItems.SetSize(count);
  for (int32_t i = 0; i < count; ++i) {
    void* storage = ::operator new(sizeof(CComponent), std::nothrow);
    list.m_aItems[i] = storage != nullptr ? new (storage) CComponent : nullptr;
  }
  list.Clear();
  return static_cast<uint64_t>(static_cast<uint32_t>(platform::TickCountMs() - t0));
}

namespace {

float PerItemMs(int32_t count, uint64_t dt) {
  return static_cast<float>(static_cast<double>(dt) / count);
}

}  // namespace

void FormatListTestLine(char (&line)[kListTestLineBytes], int32_t count, uint64_t dt) {
  const float perItem = PerItemMs(count, dt);
  // The total goes out as the 32-bit number its format asks for.
  std::snprintf(line, sizeof(line), "Copy %d items Time Elapsed: %03.3f ms  Tot=%d", count,
                static_cast<double>(perItem), static_cast<int32_t>(static_cast<uint32_t>(dt)));
}

RunResult ListTestResult(const char* line, int32_t count, uint64_t dt) {
  const double dPerItem = ShownValue(PerItemMs(count, dt));
  const auto iTotal = static_cast<int32_t>(static_cast<uint32_t>(dt));
  return RunResult{
      0, line, {{"Elapsed", dPerItem}, {"Tot", static_cast<double>(iTotal)}}, 0, dPerItem};
}

}  // namespace tachyrun
