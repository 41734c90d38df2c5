// Gaps, free positions and the state at a moment on one track, in frames.

#include <gtest/gtest.h>

#include "project/TrackList.h"
#include "tests/project/ProjectTestUtil.h"

namespace {

using projecttest::AddComponent;
using projecttest::Ms;

struct Gap {
  int32_t inside;
  int64_t start;
  int64_t end;
  int64_t prev;
  int64_t next;
};

Gap GapAt(CTrack& track, int64_t frame) {
  Gap gap{-1, -7, -7, -7, -7};
  gap.inside = track.GetGapAt(frame, &gap.start, &gap.end, &gap.prev, &gap.next);
  return gap;
}

TEST(TrackSearch, FrameAtAComponentsEndIsOutsideIt) {
  CTrack track;
  track.dLengthMs = Ms(500);
  CComponent* a = AddComponent(track.components, Ms(0), Ms(100));
  const Gap gap = GapAt(track, 100);
  EXPECT_EQ(gap.inside, 0);
  EXPECT_EQ(gap.start, 100);
  EXPECT_EQ(gap.end, 500);
  EXPECT_EQ(gap.prev, +a->iUniqueId);
  EXPECT_EQ(gap.next, -7);  // nothing behind: left as it was
  EXPECT_EQ(GapAt(track, 99).inside, 1);
}

TEST(TrackSearch, SecondOfTwoTouchingComponentsHoldsTheFrameWhereTheFirstEnds) {
  CTrack track;
  track.dLengthMs = Ms(500);
  AddComponent(track.components, Ms(0), Ms(100));
  AddComponent(track.components, Ms(100), Ms(200));
  const Gap gap = GapAt(track, 100);
  EXPECT_EQ(gap.inside, 1);
  EXPECT_EQ(gap.start, 100);
  EXPECT_EQ(gap.end, 200);
}

TEST(TrackSearch, GapIsBoundedByTheNearestComponentsInAnyOrder) {
  CTrack track;
  track.dStartMs = Ms(10);
  track.dLengthMs = Ms(490);
  CComponent* late = AddComponent(track.components, Ms(300), Ms(350));
  CComponent* early = AddComponent(track.components, Ms(50), Ms(80));
  CComponent* near = AddComponent(track.components, Ms(200), Ms(250));
  AddComponent(track.components, Ms(20), Ms(30));
  const Gap gap = GapAt(track, 150);
  EXPECT_EQ(gap.inside, 0);
  EXPECT_EQ(gap.start, 80);
  EXPECT_EQ(gap.end, 200);
  EXPECT_EQ(gap.prev, +early->iUniqueId);
  EXPECT_EQ(gap.next, +near->iUniqueId);
  (void)late;
  // Before all components: bounded by the track's start.
  const Gap head = GapAt(track, 15);
  EXPECT_EQ(head.start, 10);
  EXPECT_EQ(head.end, 20);
  // Behind all: by start + length.
  EXPECT_EQ(GapAt(track, 400).end, 500);
}

TEST(TrackSearch, InsideKeepsWhatIdsHeldBeforeTheHit) {
  CTrack track;
  track.dLengthMs = Ms(500);
  AddComponent(track.components, Ms(200), Ms(300));
  int64_t prev = 11;
  int64_t next = 12;
  EXPECT_EQ(track.GetGapAt(250, nullptr, nullptr, &prev, &next), 1);
  EXPECT_EQ(prev, 11);
  EXPECT_EQ(next, 12);
}

TEST(TrackSearch, EmptyTrackOfLengthZero) {
  CTrack track;
  EXPECT_EQ(track.FindFreePosition(7, 0), 7);
  EXPECT_EQ(track.FindFreePosition(7, -3), 7);
  EXPECT_EQ(track.FindFreePosition(0, 1), -1);
  EXPECT_EQ(track.FindFreePosition(-5, 0), 0);
}

TEST(TrackSearch, NegativeStartFrameStartsAtZero) {
  CTrack track;
  track.dLengthMs = Ms(1000);
  EXPECT_EQ(track.FindFreePosition(-5, 10), 0);
}

TEST(TrackSearch, StepIsTheIntervalsLengthFromThePositionTested) {
  CTrack track;
  track.dLengthMs = Ms(400);
  AddComponent(track.components, Ms(10), Ms(110));
  // 50 lies inside [10, 110): the next test is at 150, not at 110.
  EXPECT_EQ(track.FindFreePosition(50, 20), 150);
}

TEST(TrackSearch, LaterFreeStretchCanBeJumpedOver) {
  CTrack track;
  track.dLengthMs = Ms(400);
  AddComponent(track.components, Ms(0), Ms(100));
  AddComponent(track.components, Ms(150), Ms(160));
  // [100, 150) would do, but from 90 the step of 100 lands at 190.
  EXPECT_EQ(track.FindFreePosition(90, 40), 190);
  EXPECT_EQ(track.FindFreePosition(100, 40), 100);
}

TEST(TrackSearch, GapTooSmallMovesByItsLengthAndTheEndGivesMinusOne) {
  CTrack track;
  track.dLengthMs = Ms(300);
  AddComponent(track.components, Ms(0), Ms(100));
  AddComponent(track.components, Ms(130), Ms(300));
  EXPECT_EQ(track.FindFreePosition(100, 50), -1);
  EXPECT_EQ(track.FindFreePosition(100, 30), 100);
}

TEST(TrackSearch, EndIsTheLengthAloneWithoutTheTracksStart) {
  CTrack track;
  track.dStartMs = Ms(1000);
  track.dLengthMs = Ms(100);
  // The gap at 0 is [1000, 1100): too short for 200, step 100 reaches end 100.
  EXPECT_EQ(track.FindFreePosition(0, 200), -1);
  EXPECT_EQ(track.FindFreePosition(0, 100), 0);
}

TEST(TrackSearch, SearchStopsAfterTenThousandPasses) {
  CTrack track;
  track.dLengthMs = Ms(1000);
  // A component of no length at 50 closes the gap there to nothing: the
  // position never moves and only the pass limit ends the search.
  AddComponent(track.components, Ms(50), Ms(50));
  EXPECT_EQ(GapAt(track, 50).start, 50);
  EXPECT_EQ(GapAt(track, 50).end, 50);
  EXPECT_EQ(track.FindFreePosition(50, 1), -1);
}

TEST(TrackSearch, StateAtTimeReportsTheComponentThere) {
  CTrack track;
  track.dLengthMs = Ms(500);
  CComponent* audio = AddComponent(track.components, 1000.0, 3000.0, 2);
  audio->dSourceIn = 400.0;
  audio->dSourceLength = 2000.0;
  audio->dMediaLength = 10000.0;
  audio->dSourceBase = 4000.0;
  CTrackState state{};
  EXPECT_EQ(track.GetStateAtTime(2000.0, &state), 1);
  EXPECT_EQ(+state.bFound, 1);
  EXPECT_EQ(+state.iComponentKind, 2);
  EXPECT_EQ(+state.iSourceFrame, audio->GetSourceFrame(2000.0));
  EXPECT_EQ(+state.iFileFrame, audio->GetFileFrame(2000.0));
  EXPECT_NE(+state.iSourceFrame, +state.iFileFrame);
}

TEST(TrackSearch, StateWithoutComponentLeavesTheOtherFields) {
  CTrack track;
  AddComponent(track.components, 1000.0, 3000.0, 2);
  CTrackState state{5, 9, 77, 88, 99};
  EXPECT_EQ(track.GetStateAtTime(3000.0, &state), 0);
  EXPECT_EQ(+state.bFound, 0);
  EXPECT_EQ(+state.iTrackIndex, 5);
  EXPECT_EQ(+state.iComponentKind, 77);
  EXPECT_EQ(+state.iSourceFrame, 88);
  EXPECT_EQ(+state.iFileFrame, 99);
  EXPECT_EQ(track.GetStateAtTime(2000.0, nullptr), 0);
}

TEST(TrackSearch, StatesOfTheFirstTracksUpToMaxEntries) {
  CTrackList tracks;
  auto* first = new CTrack;
  AddComponent(first->components, 0.0, 1000.0, 1);
  tracks.Add(first);
  tracks.Add(nullptr);
  auto* third = new CTrack;
  AddComponent(third->components, 0.0, 1000.0, 2);
  tracks.Add(third);
  tracks.Add(new CTrack);
  CTrackState states[4];
  for (CTrackState& s : states) s = CTrackState{-1, -1, -1, -1, -1};
  EXPECT_EQ(tracks.GetStatesAtTime(500.0, 3, states), 0);
  EXPECT_EQ(+states[0].iTrackIndex, 0);
  EXPECT_EQ(+states[0].bFound, 1);
  EXPECT_EQ(+states[0].iComponentKind, 1);
  EXPECT_EQ(+states[1].iTrackIndex, -1);  // null track: untouched
  EXPECT_EQ(+states[1].bFound, -1);
  EXPECT_EQ(+states[2].iTrackIndex, 2);
  EXPECT_EQ(+states[2].iComponentKind, 2);
  EXPECT_EQ(+states[3].iTrackIndex, -1);  // beyond maxEntries
  EXPECT_EQ(tracks.GetStatesAtTime(500.0, 99, states), 0);
  EXPECT_EQ(+states[3].iTrackIndex, 3);
  EXPECT_EQ(+states[3].bFound, 0);
}

}  // namespace
