// Finer points of the project database: which of several twins an answer
// comes from, searches started at the edge of the frame range, and the order
// of the members behind the records.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "project/UndoData.h"
#include "tests/project/ProjectObjectTestUtil.h"

namespace {

using namespace projecttest;

// Only the operations marked "first" leave a timeline at its first twin;
// the track index is that of the last twin of the last timeline.
TEST(ProjectTwins, TrackIndexIsThatOfTheLastTwinInATimeline) {
  CProject project;
  project.AddTimeline(MakeTimeline("A", 3, 1));
  CTimeline* a = StoredTimeline(project, 0);
  TrackAt(*a, 2)->iId = TrackAt(*a, 0)->iId;
  CTrack twin;
  twin.CopyFrom(*TrackAt(*a, 0));
  EXPECT_EQ(project.GetTrackIndex(&twin), 2);
  // A later timeline with one twin still decides.
  project.AddTimeline(MakeTimeline("B", 2, 1));
  TrackAt(*StoredTimeline(project, 1), 1)->iId = twin.iId;
  EXPECT_EQ(project.GetTrackIndex(&twin), 1);
}

// A start frame near the top of the range steps past it without undefined
// arithmetic: the position wraps as the machine's integers do, and the search
// still ends at its pass limit.
TEST(TrackSearchBounds, StartFrameAtTheTopOfTheRangeEndsTheSearch) {
  CTrack track;
  track.dLengthMs = 1000.0;  // 25 frames, no components
  const int64_t top = std::numeric_limits<int64_t>::max();
  EXPECT_EQ(track.FindFreePosition(top - 5, 100), -1);
  EXPECT_EQ(track.FindFreePosition(top, 10), top);  // the gap there is long enough
}

// Behind their records the objects keep their members in the stated order:
// a track's list before its lock, a repository's lock before its list.
TEST(MemberOrder, TrackTimelineRepositoryAndUndoRecord) {
  const auto at = [](const void* object, const void* member) {
    return static_cast<const char*>(member) - static_cast<const char*>(object);
  };
  CTrack track;
  EXPECT_LT(at(&track, &track.components), at(&track, &track.lockTrack));
  CTimeline timeline;
  EXPECT_LT(at(&timeline, &timeline.tracks), at(&timeline, &timeline.markers));
  EXPECT_LT(at(&timeline, &timeline.markers), at(&timeline, &timeline.lockTimeline));
  EXPECT_LT(at(&timeline, &timeline.lockTimeline), at(&timeline, &timeline.iUserValue));
  CRepository repository;
  EXPECT_LT(at(&repository, &repository.lockRepository), at(&repository, &repository.components));
  CUndoData undo;
  EXPECT_LT(at(&undo, &undo.iCode), at(&undo, &undo.iCodeB));
  EXPECT_LT(at(&undo, &undo.iCodeB), at(&undo, &undo.szText));
  EXPECT_LT(at(&undo, &undo.szText), at(&undo, &undo.timeline));
}

}  // namespace
