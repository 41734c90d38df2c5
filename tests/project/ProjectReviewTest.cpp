// Finer points of the project's operations by id: which of several twins an
// answer comes from when one timeline holds a track or component twice.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

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

}  // namespace
