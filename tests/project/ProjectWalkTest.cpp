// The walks themselves: every way out of a walk lets go of what it took.

#include <gtest/gtest.h>

#include <stdexcept>

#include "project/OwnerCodes.h"
#include "project/ProjectWalk.h"
#include "tests/project/ProjectObjectTestUtil.h"

namespace {

using namespace projecttest;
using projectwalk::ForEachComponent;
using projectwalk::ForEachTrack;
using projectwalk::Step;
using projectwalk::WalkCodes;

constexpr WalkCodes kCodes{101, 102, 103};

class ProjectWalk : public ::testing::Test {
 protected:
  void SetUp() override {
    list.Add(MakeTimeline("A", 2, 3));
    list.Add(MakeTimeline("B", 2, 3));
  }
  void ExpectAllFree() {
    EXPECT_FALSE(IsHeld(list.m_OuterLock));
    for (CTimeline* timeline : list.m_aItems) {
      EXPECT_FALSE(IsHeld(timeline->lockTimeline));
      EXPECT_FALSE(IsHeld(timeline->tracks.m_OuterLock));
    }
  }
  CTimelineList list;
};

TEST_F(ProjectWalk, VisitsEveryComponentInOrderHoldingAllThreeLocks) {
  int visited = 0;
  ForEachComponent(list, kCodes,
                   [&](CTimeline& timeline, CTrack&, int32_t t, int32_t k, CComponent& c) {
                     EXPECT_TRUE(IsHeld(list.m_OuterLock));
                     EXPECT_TRUE(IsHeld(timeline.lockTimeline));
                     EXPECT_TRUE(IsHeld(timeline.tracks.m_OuterLock));
                     EXPECT_EQ(&c, ComponentAt(timeline, t, k));
                     ++visited;
                     return Step::kNext;
                   });
  EXPECT_EQ(visited, 12);
  ExpectAllFree();
  EXPECT_EQ(OwnerCode(list.m_OuterLock), 101);
  EXPECT_EQ(OwnerCode(list.GetAt(1)->lockTimeline), 102);
  EXPECT_EQ(OwnerCode(list.GetAt(1)->tracks.m_OuterLock), 103);
}

TEST_F(ProjectWalk, StepsLeaveTheTrackTheTimelineOrTheWalk) {
  int visited = 0;
  ForEachComponent(list, kCodes, [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent&) {
    ++visited;
    return Step::kNextTrack;
  });
  EXPECT_EQ(visited, 4);  // the first of each track
  visited = 0;
  ForEachComponent(list, kCodes, [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent&) {
    ++visited;
    return Step::kNextTimeline;
  });
  EXPECT_EQ(visited, 2);
  visited = 0;
  ForEachComponent(list, kCodes, [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent&) {
    ++visited;
    return Step::kStop;
  });
  EXPECT_EQ(visited, 1);
  ExpectAllFree();
}

TEST_F(ProjectWalk, AThrowInsideAWalkReleasesEveryLock) {
  int visited = 0;
  EXPECT_THROW(ForEachComponent(list, kCodes,
                                [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent&) -> Step {
                                  if (++visited == 8) throw std::runtime_error("in the walk");
                                  return Step::kNext;
                                }),
               std::runtime_error);
  EXPECT_EQ(visited, 8);
  ExpectAllFree();
}

TEST_F(ProjectWalk, TimelinesLeftOutAreNeverLocked) {
  list.GetAt(0)->lockTimeline.Acquire(5000);  // a walk into A would wait for good
  int visited = 0;
  const int64_t id = list.GetAt(1)->iId;
  ForEachTrack(
      list, kCodes, [&](const CTimeline& timeline) { return timeline.iId == id; },
      [&](CTimeline&, CTrack&, int32_t) {
        ++visited;
        return Step::kNext;
      });
  list.GetAt(0)->lockTimeline.Release();
  EXPECT_EQ(visited, 2);
  EXPECT_EQ(OwnerCode(list.GetAt(0)->lockTimeline), 5000);
}

TEST_F(ProjectWalk, NullSlotsAreSteppedOver) {
  list.m_aItems.Add(nullptr);
  CTimeline& first = *list.m_aItems.GetAt(0);
  first.tracks.m_aItems.Add(nullptr);
  first.tracks.m_aItems.GetAt(0)->components.m_aItems.Add(nullptr);
  int visited = 0;
  ForEachComponent(list, kCodes, [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent&) {
    ++visited;
    return Step::kNext;
  });
  EXPECT_EQ(visited, 12);
  list.m_aItems.RemoveAt(2);
}

TEST_F(ProjectWalk, ByIdFindsTheFirstAndReportsWhetherItDid) {
  int calls = 0;
  EXPECT_TRUE(projectwalk::WithElementById(list, list.GetAt(1)->iId, 104, [&](CTimeline& t) {
    EXPECT_EQ(&t, list.GetAt(1));
    EXPECT_TRUE(IsHeld(list.m_OuterLock));
    ++calls;
  }));
  EXPECT_FALSE(projectwalk::WithElementById(list, 0, 105, [&](CTimeline&) { ++calls; }));
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(OwnerCode(list.m_OuterLock), 105);
  EXPECT_FALSE(IsHeld(list.m_OuterLock));
}

}  // namespace
