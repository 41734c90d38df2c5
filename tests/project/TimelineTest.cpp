// Timelines: default tracks, ranges, relinking, copies and new ids.

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "config/GlobalCfg.h"
#include "project/Timeline.h"
#include "tests/project/ProjectTestUtil.h"

namespace {

using projecttest::AddComponent;

std::vector<uint32_t> Kinds(CTimeline& timeline) {
  std::vector<uint32_t> kinds;
  for (CTrack* track : timeline.tracks.m_aItems) kinds.push_back(track->iTrackKind);
  return kinds;
}

// The process-wide settings that these operations write, restored after each test.
class TimelineDefaults : public ::testing::Test {
 protected:
  void SetUp() override {
    m_Video = g_GlobalCfg.cfg.iNumVidTraks;
    m_Audio = g_GlobalCfg.cfg.iNumAudTraks;
    m_Effects = iNumEffectTracks;
    m_Dmx = iNumDmxTracks;
  }
  void TearDown() override {
    g_GlobalCfg.cfg.iNumVidTraks = m_Video;
    g_GlobalCfg.cfg.iNumAudTraks = m_Audio;
    iNumEffectTracks = m_Effects;
    iNumDmxTracks = m_Dmx;
  }

 private:
  int8_t m_Video = 0;
  int8_t m_Audio = 0;
  int32_t m_Effects = 0;
  int32_t m_Dmx = 0;
};

TEST_F(TimelineDefaults, ProcessWideTrackCountsStartAtOneAndZero) {
  // Nothing in this executable has run AddConfiguredTracks before this test.
  EXPECT_EQ(iNumEffectTracks, 1);
  EXPECT_EQ(iNumDmxTracks, 0);
}

TEST_F(TimelineDefaults, AddConfiguredTracksWritesTheConfigurationFirst) {
  g_GlobalCfg.cfg.iNumVidTraks = 6;
  g_GlobalCfg.cfg.iNumAudTraks = 8;
  CTimeline timeline;
  timeline.dLengthMs = 10000.0;
  EXPECT_EQ(timeline.AddConfiguredTracks(), 0);
  EXPECT_EQ(g_GlobalCfg.cfg.iNumVidTraks, 1);
  EXPECT_EQ(g_GlobalCfg.cfg.iNumAudTraks, 4);
  EXPECT_EQ(iNumEffectTracks, 0);
  EXPECT_EQ(Kinds(timeline), (std::vector<uint32_t>{1, 2, 2, 2, 2}));
  EXPECT_EQ(+timeline.iTrackCount, 5);
  for (CTrack* track : timeline.tracks.m_aItems) {
    EXPECT_EQ(+track->dStartMs, 0.0);
    EXPECT_EQ(+track->dLengthMs, 10000.0);
    EXPECT_EQ(+track->iSizeY, 30);
  }
}

TEST_F(TimelineDefaults, AddConfiguredTracksAppendsTheDmxTracks) {
  iNumDmxTracks = 2;
  CTimeline timeline;
  timeline.AddConfiguredTracks();
  EXPECT_EQ(Kinds(timeline), (std::vector<uint32_t>{1, 2, 2, 2, 2, 4, 4}));
}

TEST_F(TimelineDefaults, AddConfiguredTracksOnATimelineWithTracksStillWritesTheConfiguration) {
  g_GlobalCfg.cfg.iNumVidTraks = 3;
  g_GlobalCfg.cfg.iNumAudTraks = 0;
  CTimeline timeline;
  timeline.dLengthMs = 500.0;
  timeline.tracks.Add(new CTrack);
  timeline.iTrackCount = 9;
  EXPECT_EQ(timeline.AddConfiguredTracks(), 0);
  EXPECT_EQ(g_GlobalCfg.cfg.iNumVidTraks, 1);
  EXPECT_EQ(g_GlobalCfg.cfg.iNumAudTraks, 4);
  EXPECT_EQ(timeline.tracks.GetCount(), 1);
  EXPECT_EQ(+timeline.iTrackCount, 1);
  EXPECT_EQ(+timeline.tracks.GetAt(0)->dLengthMs, 500.0);
}

TEST(Timeline, AddTracksMakesDmxTracksOnAnEmptyTimeline) {
  CTimeline timeline;
  timeline.dLengthMs = 3000.0;
  EXPECT_EQ(timeline.AddTracks(3), 0);
  EXPECT_EQ(Kinds(timeline), (std::vector<uint32_t>{4, 4, 4}));
  EXPECT_EQ(+timeline.iTrackCount, 3);
  EXPECT_EQ(+timeline.tracks.GetAt(2)->dLengthMs, 3000.0);
}

TEST(Timeline, AddTracksOnATimelineWithTracksAddsNothingButResetsRanges) {
  CTimeline timeline;
  timeline.dLengthMs = 8000.0;
  auto* track = new CTrack;
  track->dStartMs = 100.0;
  track->dLengthMs = 50.0;
  timeline.tracks.Add(track);
  EXPECT_EQ(timeline.AddTracks(3), 0);
  EXPECT_EQ(timeline.tracks.GetCount(), 1);
  EXPECT_EQ(+track->dStartMs, 0.0);
  EXPECT_EQ(+track->dLengthMs, 8000.0);
}

TEST(Timeline, ResetTrackRangesSkipsNullTracks) {
  CTimeline timeline;
  timeline.dLengthMs = 42.0;
  timeline.tracks.Add(nullptr);
  timeline.tracks.Add(new CTrack);
  EXPECT_EQ(timeline.ResetTrackRanges(), 0);
  EXPECT_EQ(+timeline.tracks.GetAt(1)->dLengthMs, 42.0);
}

TEST(Timeline, RelinkMediaPointsUnmovedComponentsAtTheNewFile) {
  CTimeline timeline;
  auto* track = new CTrack;
  timeline.tracks.Add(track);
  CComponent source;
  std::strcpy(source.szPath, "/new/place/take2.mov");
  CComponent* same = AddComponent(track->components, 0.0, 1.0);
  same->iUniqueId = source.iUniqueId;
  std::strcpy(same->szPath, "/old/take.avi");
  CComponent* child = AddComponent(track->components, 0.0, 1.0, 2);
  child->iLinkId = source.iUniqueId;
  std::strcpy(child->szPath, "/old/take.wav");
  CComponent* moved = AddComponent(track->components, 0.0, 1.0);
  moved->iLinkId = source.iUniqueId;
  moved->cMoveState = 1;
  std::strcpy(moved->szPath, "/old/keep.avi");
  CComponent* other = AddComponent(track->components, 0.0, 1.0);
  std::strcpy(other->szPath, "/old/other.avi");

  EXPECT_EQ(timeline.RelinkMedia(&source), 0);
  EXPECT_STREQ(same->szPath, "/new/place/take2.avi");
  EXPECT_EQ(same->cMediaMoved, 1);
  EXPECT_EQ(same->cMoveState, 2);
  EXPECT_STREQ(child->szPath, "/new/place/take2.wav");
  EXPECT_STREQ(moved->szPath, "/old/keep.avi");
  EXPECT_EQ(moved->cMediaMoved, 0);
  EXPECT_STREQ(other->szPath, "/old/other.avi");
  EXPECT_EQ(timeline.RelinkMedia(nullptr), -1);
}

TEST(Timeline, RelinkMediaCutsAJoinedPathThatIsTooLong) {
  CTimeline timeline;
  auto* track = new CTrack;
  timeline.tracks.Add(track);
  CComponent source;
  std::memset(source.szPath, 'a', sizeof(source.szPath));  // no terminator
  CComponent* same = AddComponent(track->components, 0.0, 1.0);
  same->iUniqueId = source.iUniqueId;
  std::strcpy(same->szPath, "x.wav");
  EXPECT_EQ(timeline.RelinkMedia(&source), 0);
  EXPECT_EQ(std::strlen(same->szPath), 259u);
}

TEST(Timeline, CopyFromIsATwinWithTheSameIds) {
  CTimeline source;
  std::strcpy(source.szName, "Main");
  source.iUserValue = 17;
  auto* track = new CTrack;
  AddComponent(track->components, 0.0, 40.0);
  source.tracks.Add(track);
  source.markers.Add(new CMarkerPoint(300, 4));
  CTimeline copy;
  copy.tracks.Add(new CTrack);
  copy.markers.Add(new CMarkerPoint(1, 1));
  copy.CopyFrom(source);
  EXPECT_EQ(
      std::memcmp(static_cast<CTimelineData*>(&copy), static_cast<CTimelineData*>(&source), 1028),
      0);
  EXPECT_EQ(copy.iUserValue, 17);
  ASSERT_EQ(copy.tracks.GetCount(), 1);
  EXPECT_NE(copy.tracks.GetAt(0), track);
  EXPECT_EQ(+copy.tracks.GetAt(0)->iId, +track->iId);
  EXPECT_EQ(+copy.tracks.GetAt(0)->components.GetAt(0)->iUniqueId,
            +track->components.GetAt(0)->iUniqueId);
  ASSERT_EQ(copy.markers.GetCount(), 1);
  EXPECT_EQ(+copy.markers.GetAt(0)->iTime, 300);
  EXPECT_NE(copy.markers.GetAt(0), source.markers.GetAt(0));
}

TEST(Timeline, RenewIdsChangesTimelineTracksAndComponentsButNotMarkers) {
  CTimeline timeline;
  auto* track = new CTrack;
  CComponent* parent = AddComponent(track->components, 0.0, 40.0);
  CComponent* child = AddComponent(track->components, 0.0, 40.0, 2);
  child->iLinkId = parent->iUniqueId;
  timeline.tracks.Add(track);
  timeline.markers.Add(new CMarkerPoint(10, 5));
  const int64_t timelineId = timeline.iId;
  const int64_t trackId = track->iId;
  const int64_t parentId = parent->iUniqueId;
  EXPECT_EQ(timeline.RenewIds(), 0);
  EXPECT_NE(+timeline.iId, timelineId);
  EXPECT_NE(+track->iId, trackId);
  EXPECT_NE(+parent->iUniqueId, parentId);
  EXPECT_EQ(+child->iLinkId, +parent->iUniqueId);
  EXPECT_EQ(+timeline.markers.GetAt(0)->iMarkerId, 5);
  EXPECT_EQ(timeline.ReservedHook(123), 0);
}

}  // namespace
