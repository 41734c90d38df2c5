// Operations of tracks, timelines and repositories wait for a lock that a
// caller holds, go on once it is released, and leave their owner code on
// each lock they took (bounded waits only).

#include <gtest/gtest.h>

#include "config/GlobalCfg.h"
#include "project/Repository.h"
#include "project/Timeline.h"
#include "tests/core/DataLockTestPeer.h"
#include "tests/project/ProjectTestUtil.h"
#include "tests/support/LockWaits.h"

namespace {

using projecttest::AddComponent;

using testsupport::ExpectWaitsFor;

constexpr int32_t kTestHolder = 777;

int32_t OwnerOf(const CDataLock& lock) {
  return CDataLockTestPeer::OwnerCode(lock);
}

TEST(ProjectLocks, GapSearchTakesTrackThenComponentsWithCodesOneAndTwo) {
  CTrack track;
  track.dLengthMs = 4000.0;
  AddComponent(track.components, 0.0, 400.0);
  int32_t inside = -1;
  ExpectWaitsFor(track.components.m_OuterLock,
                 [&] { inside = track.GetGapAt(5, nullptr, nullptr, nullptr, nullptr); });
  EXPECT_EQ(inside, 1);
  EXPECT_EQ(OwnerOf(track.lockTrack), 1);
  EXPECT_EQ(OwnerOf(track.components.m_OuterLock), 2);
  // The track's own lock comes first: holding it stops the walk as well.
  ExpectWaitsFor(track.lockTrack, [&] { track.FindFreePosition(0, 1); });
}

TEST(ProjectLocks, StateAtTimeWaitsForTheTrack) {
  CTrack track;
  AddComponent(track.components, 0.0, 400.0, 2);
  CTrackState state{};
  ExpectWaitsFor(track.lockTrack, [&] { track.GetStateAtTime(100.0, &state); });
  EXPECT_EQ(+state.bFound, 1);
  EXPECT_EQ(OwnerOf(track.lockTrack), 1);
  EXPECT_EQ(OwnerOf(track.components.m_OuterLock), 2);
}

TEST(ProjectLocks, TrackComponentExchangeCodes) {
  CTrack track;
  CComponent* stored = AddComponent(track.components, 0.0, 40.0);
  CComponent one;
  one.CopyFrom(*stored);
  ExpectWaitsFor(track.components.m_OuterLock, [&] { track.SetComponent(&one); });
  EXPECT_EQ(OwnerOf(track.components.m_OuterLock), 4);
  ExpectWaitsFor(track.components.m_OuterLock, [&] { track.GetComponent(&one); });
  EXPECT_EQ(OwnerOf(track.components.m_OuterLock), 8);

  CComponentList list;
  CComponent* element = AddComponent(list, 0.0, 40.0);
  element->iUniqueId = stored->iUniqueId;
  ExpectWaitsFor(list.m_OuterLock, [&] { track.SetComponents(&list); });
  EXPECT_EQ(OwnerOf(list.m_OuterLock), 5);
  ExpectWaitsFor(track.components.m_OuterLock, [&] { track.SetComponents(&list); });
  EXPECT_EQ(OwnerOf(track.components.m_OuterLock), 6);
  ExpectWaitsFor(list.m_OuterLock, [&] { track.GetComponents(&list); });
  EXPECT_EQ(OwnerOf(list.m_OuterLock), 14);
  EXPECT_EQ(OwnerOf(track.components.m_OuterLock), 15);

  CComponentList out;
  ExpectWaitsFor(track.components.m_OuterLock, [&] { track.CopyComponents(&out, nullptr); });
  EXPECT_EQ(OwnerOf(out.m_OuterLock), 9);
  EXPECT_EQ(OwnerOf(track.components.m_OuterLock), 10);
  EXPECT_EQ(out.GetCount(), 1);
}

TEST(ProjectLocks, EmptyCallerListDoesNotTouchTheTracksComponents) {
  CTrack track;
  CComponentList empty;
  track.components.m_OuterLock.Acquire(kTestHolder);
  EXPECT_EQ(track.SetComponents(&empty), 0);  // would hang if it took the lock
  EXPECT_EQ(track.GetComponents(&empty), 0);
  track.components.m_OuterLock.Release();
}

TEST(ProjectLocks, TrackListRenewIdsTakesEachComponentListWithCodeSix) {
  CTrackList tracks;
  auto* track = new CTrack;
  AddComponent(track->components, 0.0, 40.0);
  tracks.Add(track);
  ExpectWaitsFor(track->components.m_OuterLock, [&] { tracks.RenewIds(); });
  EXPECT_EQ(OwnerOf(track->components.m_OuterLock), 6);
  EXPECT_EQ(OwnerOf(tracks.m_InnerLock), 0);
}

TEST(ProjectLocks, DefaultTracksHoldTheTrackListsOuterLock) {
  CTimeline timeline;
  ExpectWaitsFor(timeline.tracks.m_OuterLock, [&] { timeline.AddTracks(2); });
  EXPECT_EQ(OwnerOf(timeline.tracks.m_OuterLock), 17);
  EXPECT_EQ(timeline.tracks.GetCount(), 2);
  const int8_t video = g_GlobalCfg.cfg.iNumVidTraks;
  const int8_t audio = g_GlobalCfg.cfg.iNumAudTraks;
  const int32_t effects = iNumEffectTracks;
  ExpectWaitsFor(timeline.tracks.m_OuterLock, [&] { timeline.AddConfiguredTracks(); });
  EXPECT_EQ(OwnerOf(timeline.tracks.m_OuterLock), 18);
  g_GlobalCfg.cfg.iNumVidTraks = video;
  g_GlobalCfg.cfg.iNumAudTraks = audio;
  iNumEffectTracks = effects;
}

TEST(ProjectLocks, CopiesTakeBothListsWithCodeZero) {
  CTimeline source;
  auto* track = new CTrack;
  AddComponent(track->components, 0.0, 40.0);
  source.tracks.Add(track);
  source.markers.Add(new CMarkerPoint(5, 1));
  CTimeline copy;
  ExpectWaitsFor(source.tracks.m_OuterLock, [&] { copy.CopyFrom(source); });
  EXPECT_EQ(OwnerOf(copy.tracks.m_OuterLock), 0);
  EXPECT_EQ(copy.tracks.GetCount(), 1);
  ExpectWaitsFor(source.markers.m_OuterLock, [&] { copy.CopyFrom(source); });
  EXPECT_EQ(copy.markers.GetCount(), 1);
  CTrack trackCopy;
  ExpectWaitsFor(track->components.m_OuterLock, [&] { trackCopy.CopyFrom(*track); });
  EXPECT_EQ(trackCopy.components.GetCount(), 1);
  CRepository repository;
  AddComponent(repository.components, 0.0, 40.0);
  CRepository repositoryCopy;
  ExpectWaitsFor(repository.components.m_OuterLock, [&] { repositoryCopy.CopyFrom(repository); });
  EXPECT_EQ(repositoryCopy.components.GetCount(), 1);
}

TEST(ProjectLocks, RepositoryComponentCodes) {
  CRepository repository;
  CComponent* stored = AddComponent(repository.components, 0.0, 40.0);
  CComponent one;
  one.CopyFrom(*stored);
  ExpectWaitsFor(repository.components.m_OuterLock, [&] { repository.SetComponent(&one); });
  EXPECT_EQ(OwnerOf(repository.components.m_OuterLock), 20);
  ExpectWaitsFor(repository.components.m_OuterLock, [&] { repository.GetComponent(&one); });
  EXPECT_EQ(OwnerOf(repository.components.m_OuterLock), 24);
  CComponentList list;
  CComponent* element = AddComponent(list, 0.0, 40.0);
  element->iUniqueId = stored->iUniqueId;
  ExpectWaitsFor(list.m_OuterLock, [&] { repository.SetComponents(&list); });
  EXPECT_EQ(OwnerOf(list.m_OuterLock), 21);
  EXPECT_EQ(OwnerOf(repository.components.m_OuterLock), 22);
  ExpectWaitsFor(repository.components.m_OuterLock, [&] { repository.GetComponents(&list); });
  EXPECT_EQ(OwnerOf(list.m_OuterLock), 25);
  EXPECT_EQ(OwnerOf(repository.components.m_OuterLock), 26);
  ExpectWaitsFor(repository.components.m_OuterLock, [&] { repository.RenewIds(); });
  EXPECT_EQ(OwnerOf(repository.components.m_OuterLock), 24);
  // Nothing of the repository takes its own lock.
  repository.lockRepository.Acquire(kTestHolder);
  EXPECT_EQ(repository.SetComponent(&one), 0);
  repository.lockRepository.Release();
}

}  // namespace
