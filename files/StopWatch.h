#pragma once
// A millisecond stopwatch with two independent lanes (say, per frame on one
// and per job on the other) and 40 statistics slots. Times are readings of
// the process's 32-bit millisecond clock; every difference is a plain u32
// subtraction, so the wrap of that clock is harmless for short spans.

#include <cstddef>
#include <cstdint>

// What one mark (or lap) measured, and the statistics of a slot. Starts
// zeroed.
struct StopWatchSlot {
  uint32_t dwElapsed;  // ms since the lane's start at the last mark
  uint32_t dwLap;      // ms since the lane's previous mark
  uint32_t dwMin;      // smallest lap so far
  uint32_t dwMax;      // largest lap so far
  uint64_t qwTotal;    // sum of the laps
  uint32_t dwLane;     // lane of the last mark, as given
  uint32_t dwCount;    // marks so far
};
static_assert(sizeof(StopWatchSlot) == 32);
static_assert(offsetof(StopWatchSlot, dwElapsed) == 0);
static_assert(offsetof(StopWatchSlot, dwLap) == 4);
static_assert(offsetof(StopWatchSlot, dwMin) == 8);
static_assert(offsetof(StopWatchSlot, dwMax) == 12);
static_assert(offsetof(StopWatchSlot, qwTotal) == 16);
static_assert(offsetof(StopWatchSlot, dwLane) == 24);
static_assert(offsetof(StopWatchSlot, dwCount) == 28);

inline constexpr int32_t kStopWatchSlots = 40;

class CStopWatch {
 public:
  // Zeroes the slots, then starts both lanes at one clock reading.
  CStopWatch();

  // Lane 0 is A, any other value B. Measures since the lane's start and its
  // last lap, and moves the last lap on. The result is one process-wide
  // record that the next Lap of any stopwatch overwrites: not for two
  // threads at once.
  StopWatchSlot* Lap(uint32_t lane);

  // Like Lap, and adds the lap to slot `slot`'s statistics. Null, changing
  // nothing, for a slot outside 0..39.
  StopWatchSlot* Mark(int32_t slot, uint32_t lane);

  uint32_t dwStartA;
  uint32_t dwLapA;
  uint32_t dwStartB;
  uint32_t dwLapB;
  StopWatchSlot aSlots[kStopWatchSlots];

 private:
  // Sets dwElapsed and dwLap of `out` for `lane` at `now`; the lane's last
  // lap becomes `now`.
  void Measure(uint32_t lane, uint32_t now, StopWatchSlot* out);
};
