#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <vector>

#include "files/StopWatch.h"
#include "platform/Clock.h"

namespace {

// Ten minutes: a span that no stall between two calls comes near.
constexpr uint32_t kLongAgo = 600000;

bool SameBytes(const CStopWatch& a, const CStopWatch& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace

TEST(StopWatchTest, ConstructorZeroesSlotsAndStartsBothLanesAtOneReading) {
  const uint32_t before = platform::TickCountMs();
  CStopWatch watch;
  const uint32_t after = platform::TickCountMs();
  EXPECT_EQ(watch.dwStartA, watch.dwLapA);
  EXPECT_EQ(watch.dwStartA, watch.dwStartB);
  EXPECT_EQ(watch.dwStartA, watch.dwLapB);
  EXPECT_LE(watch.dwStartA - before, after - before);
  const StopWatchSlot zero{};
  for (const StopWatchSlot& slot : watch.aSlots) {
    EXPECT_EQ(std::memcmp(&slot, &zero, sizeof zero), 0);
  }
}

TEST(StopWatchTest, MarkOutsideTheSlotsGivesNullAndChangesNothing) {
  CStopWatch watch;
  watch.dwLapA -= 50;  // a mark that slipped through would move this on
  watch.dwLapB -= 50;
  const StopWatchSlot* record = watch.Lap(3);
  const StopWatchSlot lapRecord = *record;
  const CStopWatch copy = watch;
  EXPECT_EQ(watch.Mark(40, 0), nullptr);
  EXPECT_EQ(watch.Mark(-1, 0), nullptr);
  EXPECT_EQ(watch.Mark(1000, 1), nullptr);
  EXPECT_EQ(watch.Mark(INT32_MIN, 1), nullptr);
  EXPECT_TRUE(SameBytes(watch, copy));
  EXPECT_EQ(std::memcmp(record, &lapRecord, sizeof lapRecord), 0);
  const StopWatchSlot* lap = watch.Lap(0);
  EXPECT_GE(lap->dwLap, 50u) << "lane A's last lap did not move";
}

TEST(StopWatchTest, FirstMarkSetsMinAndMaxToTheSameLapAndCountToOne) {
  CStopWatch watch;
  watch.dwLapA -= 25;  // a lap of at least 25 ms
  StopWatchSlot* slot = watch.Mark(3, 0);
  ASSERT_EQ(slot, &watch.aSlots[3]);
  EXPECT_GE(slot->dwLap, 25u);
  EXPECT_EQ(slot->dwMin, slot->dwLap);
  EXPECT_EQ(slot->dwMax, slot->dwLap);
  EXPECT_EQ(slot->qwTotal, slot->dwLap);
  EXPECT_EQ(slot->dwCount, 1u);
  EXPECT_EQ(slot->dwLane, 0u);
}

TEST(StopWatchTest, MarksKeepMinMaxTotalAndCountOfTheirLaps) {
  CStopWatch watch;
  std::vector<uint32_t> laps;
  const uint32_t pushBack[] = {40, 5, 90, 0, 17};
  for (uint32_t ms : pushBack) {
    watch.dwLapB -= ms;  // the lane's previous mark, ms earlier
    const StopWatchSlot* slot = watch.Mark(39, 2);
    ASSERT_NE(slot, nullptr);
    EXPECT_GE(slot->dwLap, ms);
    laps.push_back(slot->dwLap);
  }
  const StopWatchSlot& slot = watch.aSlots[39];
  EXPECT_EQ(slot.dwMin, *std::min_element(laps.begin(), laps.end()));
  EXPECT_EQ(slot.dwMax, *std::max_element(laps.begin(), laps.end()));
  EXPECT_EQ(slot.qwTotal, std::accumulate(laps.begin(), laps.end(), uint64_t{0}));
  EXPECT_EQ(slot.dwCount, 5u);
  EXPECT_EQ(slot.dwLane, 2u) << "the lane as given";
  EXPECT_GE(slot.dwMax, 90u);
}

TEST(StopWatchTest, TotalCarriesPastThirtyTwoBits) {
  CStopWatch watch;
  watch.aSlots[0].qwTotal = 0xFFFFFFF0u;
  watch.aSlots[0].dwCount = 1;
  watch.dwLapA -= 0x20;
  const StopWatchSlot* slot = watch.Mark(0, 0);
  EXPECT_GE(slot->qwTotal, 0x100000010u);
  EXPECT_EQ(slot->qwTotal, uint64_t{0xFFFFFFF0u} + slot->dwLap);
}

TEST(StopWatchTest, LanesAreIndependent) {
  CStopWatch watch;
  // Spans far beyond any stall of a loaded machine between two calls.
  watch.dwStartA -= kLongAgo;
  watch.dwLapA -= kLongAgo;
  const uint32_t lapB = watch.dwLapB;
  const StopWatchSlot* a = watch.Mark(5, 0);
  EXPECT_GE(a->dwElapsed, kLongAgo);
  EXPECT_GE(a->dwLap, kLongAgo);
  EXPECT_EQ(watch.dwLapB, lapB) << "a mark on lane A leaves lane B alone";
  const StopWatchSlot* b = watch.Mark(6, 9);
  EXPECT_LT(b->dwElapsed, kLongAgo);
  EXPECT_LT(b->dwLap, kLongAgo);
}

TEST(StopWatchTest, LapIsOneSharedRecordThatTheNextLapOverwrites) {
  CStopWatch first;
  CStopWatch second;
  first.dwStartA -= kLongAgo;
  StopWatchSlot* one = first.Lap(0);
  EXPECT_GE(one->dwElapsed, kLongAgo);
  StopWatchSlot* two = second.Lap(0);
  EXPECT_EQ(one, two);
  EXPECT_LT(two->dwElapsed, kLongAgo);
  EXPECT_EQ(two->dwCount, 0u) << "Lap keeps no statistics";
}

TEST(StopWatchTest, LapMovesTheLastLapOn) {
  CStopWatch watch;
  watch.dwLapB -= kLongAgo;
  EXPECT_GE(watch.Lap(4)->dwLap, kLongAgo);
  EXPECT_LT(watch.Lap(4)->dwLap, kLongAgo);
}
