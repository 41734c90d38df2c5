#include "files/StopWatch.h"

#include <cstring>

#include "platform/Clock.h"

CStopWatch::CStopWatch() {
  std::memset(aSlots, 0, sizeof aSlots);
  const uint32_t now = platform::TickCountMs();
  dwStartA = dwLapA = dwStartB = dwLapB = now;
}

void CStopWatch::Measure(uint32_t lane, uint32_t now, StopWatchSlot* out) {
  uint32_t& start = lane == 0 ? dwStartA : dwStartB;
  uint32_t& lastLap = lane == 0 ? dwLapA : dwLapB;
  out->dwElapsed = now - start;
  out->dwLap = now - lastLap;
  lastLap = now;
}

StopWatchSlot* CStopWatch::Lap(uint32_t lane) {
  static StopWatchSlot s_Last{};
  Measure(lane, platform::TickCountMs(), &s_Last);
  return &s_Last;
}

StopWatchSlot* CStopWatch::Mark(int32_t slot, uint32_t lane) {
  if (slot < 0 || slot >= kStopWatchSlots) return nullptr;
  StopWatchSlot* entry = &aSlots[slot];
  const uint32_t now = platform::TickCountMs();
  entry->dwLane = lane;
  Measure(lane, now, entry);
  entry->qwTotal += entry->dwLap;
  if (entry->dwCount == 0) {
    entry->dwMin = entry->dwMax = entry->dwLap;
  } else {
    if (entry->dwLap < entry->dwMin) entry->dwMin = entry->dwLap;
    if (entry->dwLap > entry->dwMax) entry->dwMax = entry->dwLap;
  }
  ++entry->dwCount;
  return entry;
}
