// Defaults of the track, timeline and repository records, and the ids they draw.

#include <gtest/gtest.h>

#include <cstring>

#include "project/RepositoryData.h"
#include "project/Timeline.h"
#include "project/TimelineData.h"
#include "project/TrackData.h"
#include "tests/support/ByteStreams.h"

namespace {

uint64_t RunningNumber(int64_t id) {
  return static_cast<uint64_t>(id) >> 32;
}

bool AllZero(const uint8_t* bytes, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    if (bytes[i] != 0) return false;
  }
  return true;
}

TEST(Records, TrackDefaults) {
  CTrackData t;
  EXPECT_EQ(+t.iSize, 431);
  EXPECT_EQ(+t.iTrackKind, 0u);
  EXPECT_EQ(+t.dStartMs, 0.0);
  EXPECT_EQ(+t.dLengthMs, 0.0);
  EXPECT_EQ(+t.fFactor, 1.0f);
  EXPECT_EQ(+t.iSizeY, 30);
  EXPECT_EQ(+t.iComponentCount, 0);
  EXPECT_EQ(+t.fViewA, 20.0f);
  EXPECT_EQ(+t.fViewB, 20.0f);
  EXPECT_EQ(t.bTimesAreDouble, 1);
  EXPECT_TRUE(AllZero(t.abBlock50, 50));
  EXPECT_TRUE(AllZero(t.abBlock128, 128));
  EXPECT_TRUE(AllZero(t.abReserved, 170));
}

TEST(Records, TimelineDefaults) {
  CTimelineData t;
  EXPECT_EQ(+t.iSize, 1028);
  EXPECT_STREQ(t.szName, "");
  EXPECT_EQ(+t.dLengthMs, 0.0);
  EXPECT_EQ(+t.dRangeFromMs, 0.0);
  EXPECT_EQ(+t.iTimeZoom, 2);
  EXPECT_EQ(+t.iValue50, 50);
  EXPECT_EQ(+t.iValue30A, 30);
  EXPECT_EQ(+t.iValue30B, 30);
  EXPECT_EQ(+t.iTrackCount, 0);
  EXPECT_EQ(+t.iMarkerCount, 0);
  EXPECT_EQ(+t.bTimesAreDouble, 1);
  EXPECT_TRUE(AllZero(t.abReserved, 287));
}

TEST(Records, RepositoryDefaults) {
  CRepositoryData r;
  EXPECT_EQ(+r.iSize, 964);
  EXPECT_STREQ(r.szName, "");
  EXPECT_EQ(+r.iRepositoryKind, 0);
  EXPECT_EQ(+r.iComponentCount, 0);
  EXPECT_TRUE(AllZero(r.abReserved, 300));
}

TEST(Records, TracksDrawOnTheirOwnCounterTimelinesAndRepositoriesShareOne) {
  CTrackData firstTrack;
  CTimelineData timeline;
  CRepositoryData repository;
  CTrackData secondTrack;
  EXPECT_EQ(RunningNumber(secondTrack.iId), RunningNumber(firstTrack.iId) + 1);
  EXPECT_EQ(RunningNumber(repository.iId), RunningNumber(timeline.iId) + 1);
}

TEST(Records, ALoadDrawsAnIdForItsTemporaryRecordAndKeepsTheFilesId) {
  CTimelineData record;
  record.iId = 0x0000000500000006LL;
  testsupport::Bytes bytes;
  testsupport::Put(bytes, int32_t{1028});
  testsupport::Put(bytes, record);
  FILE* in = testsupport::StreamOf(bytes);
  CTimeline timeline;
  const CTimelineData before;
  ASSERT_EQ(timeline.Load(in), 0);
  const CTimelineData after;
  std::fclose(in);
  EXPECT_EQ(+timeline.iId, 0x0000000500000006LL);
  EXPECT_EQ(RunningNumber(after.iId), RunningNumber(before.iId) + 2);
}

}  // namespace
