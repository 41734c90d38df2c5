// Tracks and components exchanged by id through every timeline.

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "tests/project/ProjectObjectTestUtil.h"

namespace {

using namespace projecttest;

// Two timelines: A with 3 tracks of 2 components, B with 2 tracks of 3.
class ProjectComponents : public ::testing::Test {
 protected:
  void SetUp() override {
    project.AddTimeline(MakeTimeline("A", 3, 2));
    project.AddTimeline(MakeTimeline("B", 2, 3));
    a = StoredTimeline(project, 0);
    b = StoredTimeline(project, 1);
    project.iModified = 0;
    project.iChangeCount = 0;
  }
  // The owner codes the last walk left in L, and in T and K of timeline a.
  void ExpectCodes(int32_t l, int32_t t, int32_t k) {
    EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), l);
    EXPECT_EQ(OwnerCode(a->lockTimeline), t);
    EXPECT_EQ(OwnerCode(a->tracks.m_OuterLock), k);
    EXPECT_FALSE(IsHeld(project.pTimelineList->m_OuterLock));
    EXPECT_FALSE(IsHeld(a->lockTimeline));
    EXPECT_FALSE(IsHeld(a->tracks.m_OuterLock));
  }
  CProject project;
  CTimeline* a = nullptr;
  CTimeline* b = nullptr;
};

TEST_F(ProjectComponents, SetTrackCopiesTheFirstTwinInEachTimelineAndMarks) {
  CTrack twin;
  twin.CopyFrom(*TrackAt(*a, 1));
  twin.iSizeY = 77;
  // A twin of the same track in timeline B, and a second one in A.
  TrackAt(*b, 0)->iId = twin.iId;
  TrackAt(*a, 2)->iId = twin.iId;
  EXPECT_EQ(project.SetTrack(&twin), 0);
  EXPECT_EQ(+TrackAt(*a, 1)->iSizeY, 77);
  EXPECT_EQ(+TrackAt(*a, 2)->iSizeY, 30);  // only the first in a timeline
  EXPECT_EQ(+TrackAt(*b, 0)->iSizeY, 77);
  EXPECT_EQ(+project.iChangeCount, 2);
  ExpectCodes(79, 80, 81);
  EXPECT_EQ(project.SetTrack(nullptr), -1);
}

TEST_F(ProjectComponents, GetTrackFillsTheTwin) {
  TrackAt(*b, 1)->iSizeY = 44;
  CTrack out;
  out.iId = TrackAt(*b, 1)->iId;
  EXPECT_EQ(project.GetTrack(&out), 0);
  EXPECT_EQ(+out.iSizeY, 44);
  EXPECT_EQ(out.components.GetCount(), 3);
  EXPECT_EQ(+project.iChangeCount, 0);
  ExpectCodes(82, 83, 84);
  EXPECT_EQ(project.GetTrack(nullptr), -1);
}

TEST_F(ProjectComponents, TrackIndexOfAnUnknownTrackIsMinusOne) {
  CTrack stranger;
  EXPECT_EQ(project.GetTrackIndex(&stranger), -1);
  EXPECT_EQ(project.GetTrackIndex(nullptr), -1);
  ExpectCodes(85, 86, 0);
}

TEST_F(ProjectComponents, TrackIndexComesFromTheLastTimelineThatHasIt) {
  CTrack twin;
  twin.CopyFrom(*TrackAt(*a, 2));
  EXPECT_EQ(project.GetTrackIndex(&twin), 2);
  TrackAt(*b, 1)->iId = twin.iId;
  EXPECT_EQ(project.GetTrackIndex(&twin), 1);
}

TEST_F(ProjectComponents, UpdateComponentCopiesTheFirstMatchInEachTrack) {
  CComponent* stored = ComponentAt(*a, 1, 0);
  std::unique_ptr<CComponent> twin(Twin(*stored));
  twin->dEnd = 321.0;
  // A second twin in the same track and one in the other timeline.
  ComponentAt(*a, 1, 1)->iUniqueId = twin->iUniqueId;
  ComponentAt(*b, 0, 2)->iUniqueId = twin->iUniqueId;
  EXPECT_EQ(project.UpdateComponent(twin.get()), 0);
  EXPECT_EQ(+stored->dEnd, 321.0);
  EXPECT_EQ(+ComponentAt(*a, 1, 1)->dEnd, 1500.0);  // the later one in that track stays
  EXPECT_EQ(+ComponentAt(*b, 0, 2)->dEnd, 321.0);
  EXPECT_EQ(+project.iChangeCount, 2);  // a mark for each match
  EXPECT_EQ(+project.iModified, 1);
  ExpectCodes(70, 71, 72);
  EXPECT_EQ(project.UpdateComponent(nullptr), -1);
}

TEST_F(ProjectComponents, UpdateComponentOfAnUnknownIdChangesNothing) {
  CComponent stranger;
  EXPECT_EQ(project.UpdateComponent(&stranger), 0);
  EXPECT_EQ(+project.iChangeCount, 0);
}

TEST_F(ProjectComponents, GetComponentInNoTimelineLeavesItAndDoesNotMark) {
  CComponent outside;
  outside.dEnd = 55.0;
  EXPECT_EQ(project.GetComponent(&outside), 0);
  EXPECT_EQ(+outside.dEnd, 55.0);
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(+project.iModified, 0);
  ExpectCodes(73, 74, 75);
}

TEST_F(ProjectComponents, GetComponentInATimelineCopiesItAndMarks) {
  ComponentAt(*b, 1, 2)->dEnd = 4242.0;
  CComponent out;
  out.iUniqueId = ComponentAt(*b, 1, 2)->iUniqueId;
  EXPECT_EQ(project.GetComponent(&out), 0);
  EXPECT_EQ(+out.dEnd, 4242.0);
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(+project.iModified, 1);
  EXPECT_EQ(project.GetComponent(nullptr), -1);
}

TEST_F(ProjectComponents, GetComponentOfTheFreeStandingOneTakesNoLockAndNoMark) {
  project.freeComponent.dEnd = 999.0;
  CComponent out;
  out.iUniqueId = project.freeComponent.iUniqueId;
  project.pTimelineList->m_OuterLock.Acquire(5000);  // a walk would wait here for good
  EXPECT_EQ(project.GetComponent(&out), 0);
  project.pTimelineList->m_OuterLock.Release();
  EXPECT_EQ(+out.dEnd, 999.0);
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 5000);
}

TEST_F(ProjectComponents, UpdateComponentsCopiesEachMatchAndMarks) {
  CComponentList list;
  list.Add(Twin(*ComponentAt(*a, 0, 1)));
  list.Add(Twin(*ComponentAt(*b, 1, 0)));
  list.GetAt(0)->dEnd = 11.0;
  list.GetAt(1)->dEnd = 22.0;
  EXPECT_EQ(project.UpdateComponents(&list, 0), 0);
  EXPECT_EQ(+ComponentAt(*a, 0, 1)->dEnd, 11.0);
  EXPECT_EQ(+ComponentAt(*b, 1, 0)->dEnd, 22.0);
  EXPECT_EQ(+project.iChangeCount, 2);
  ExpectCodes(56, 57, 58);
  EXPECT_EQ(OwnerCode(list.m_OuterLock), 55);
  EXPECT_FALSE(IsHeld(list.m_OuterLock));
  EXPECT_EQ(project.UpdateComponents(nullptr, 0), -1);
}

TEST_F(ProjectComponents, UpdateComponentsWithAnEmptyListDoesNothing) {
  CComponentList list;
  project.pTimelineList->m_OuterLock.Acquire(5000);  // a walk would wait here for good
  EXPECT_EQ(project.UpdateComponents(&list, 1), 0);
  project.pTimelineList->m_OuterLock.Release();
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(OwnerCode(list.m_OuterLock), 55);
}

TEST_F(ProjectComponents, UpdateComponentsMovesToTheTrackOfItsLine) {
  CComponent* moving = ComponentAt(*a, 0, 0);
  CComponent* next = ComponentAt(*a, 0, 1);
  CComponentList list;
  list.Add(Twin(*moving));
  list.GetAt(0)->iLine = 2;
  EXPECT_EQ(project.UpdateComponents(&list, 1), 0);
  ASSERT_EQ(TrackAt(*a, 0)->components.GetCount(), 1);
  EXPECT_EQ(ComponentAt(*a, 0, 0), next);  // the walk stayed at index 0
  ASSERT_EQ(TrackAt(*a, 2)->components.GetCount(), 3);
  EXPECT_EQ(ComponentAt(*a, 2, 2), moving);  // the same object, appended
  EXPECT_EQ(+moving->iLine, 2);
  // Met again in its new track, where its line is its track: it stays.
  EXPECT_EQ(+project.iChangeCount, 2);
}

TEST_F(ProjectComponents, UpdateComponentsMovesOnlyInsideTheTimeline) {
  CComponentList list;
  list.Add(Twin(*ComponentAt(*a, 1, 0)));
  list.Add(Twin(*ComponentAt(*a, 1, 1)));
  list.GetAt(0)->iLine = -1;
  list.GetAt(1)->iLine = 3;  // a has tracks 0 to 2
  EXPECT_EQ(project.UpdateComponents(&list, 1), 0);
  EXPECT_EQ(TrackAt(*a, 1)->components.GetCount(), 2);
  EXPECT_EQ(TrackAt(*a, 0)->components.GetCount(), 2);
  EXPECT_EQ(TrackAt(*a, 2)->components.GetCount(), 2);
  EXPECT_EQ(+ComponentAt(*a, 1, 0)->iLine, -1);  // copied, not moved
  EXPECT_EQ(+ComponentAt(*a, 1, 1)->iLine, 3);
}

TEST_F(ProjectComponents, UpdateComponentsWithoutTheFlagNeverMoves) {
  CComponentList list;
  list.Add(Twin(*ComponentAt(*a, 0, 0)));
  list.GetAt(0)->iLine = 1;
  EXPECT_EQ(project.UpdateComponents(&list, 0), 0);
  EXPECT_EQ(TrackAt(*a, 0)->components.GetCount(), 2);
  EXPECT_EQ(+ComponentAt(*a, 0, 0)->iLine, 1);
}

TEST_F(ProjectComponents, FetchComponentsFillsEveryMatchingElementAndMarks) {
  ComponentAt(*b, 0, 1)->dEnd = 8080.0;
  CComponentList list;
  auto* first = new CComponent;
  auto* second = new CComponent;
  first->iUniqueId = second->iUniqueId = ComponentAt(*b, 0, 1)->iUniqueId;
  list.Add(first);
  list.Add(second);
  list.Add(new CComponent);  // matches nothing
  EXPECT_EQ(project.FetchComponents(&list), 0);
  EXPECT_EQ(+first->dEnd, 8080.0);
  EXPECT_EQ(+second->dEnd, 8080.0);
  EXPECT_EQ(+list.GetAt(2)->dEnd, 0.0);
  EXPECT_EQ(+project.iChangeCount, 2);
  ExpectCodes(67, 68, 69);
  EXPECT_EQ(OwnerCode(list.m_OuterLock), 66);
  EXPECT_EQ(project.FetchComponents(nullptr), -1);
  CComponentList empty;
  EXPECT_EQ(project.FetchComponents(&empty), 0);
  EXPECT_EQ(+project.iChangeCount, 2);
}

TEST_F(ProjectComponents, SetComponentParamsWritesBitPatterns) {
  CComponent* stored = ComponentAt(*b, 1, 1);
  const int64_t id = stored->iUniqueId;
  const float one = 1.0f;
  uint32_t bits = 0;
  std::memcpy(&bits, &one, 4);
  EXPECT_EQ(project.SetComponentParams(Low(id), High(id), bits, 0xFFFFFFFFu), 0);
  EXPECT_EQ(+stored->fParamA, 1.0f);
  uint32_t back = 0;
  std::memcpy(&back, &stored->fParamB, 4);
  EXPECT_EQ(back, 0xFFFFFFFFu);  // a NaN pattern, kept bit for bit
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 49);
  EXPECT_EQ(OwnerCode(b->lockTimeline), 50);
  EXPECT_EQ(OwnerCode(b->tracks.m_OuterLock), 51);
}

TEST_F(ProjectComponents, SetComponentParamsWithIdZeroIsRefused) {
  EXPECT_EQ(project.SetComponentParams(0, 0, 1, 2), -1);
  EXPECT_EQ(project.SetComponentParam(0, 0, 1, 2), -1);
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 0);  // no walk ran
}

TEST_F(ProjectComponents, SetComponentParamPicksTheFieldByWhich) {
  CComponent* stored = ComponentAt(*a, 2, 0);
  const int64_t id = stored->iUniqueId;
  const float two = 2.0f, three = 3.0f;
  uint32_t twoBits = 0, threeBits = 0;
  std::memcpy(&twoBits, &two, 4);
  std::memcpy(&threeBits, &three, 4);
  EXPECT_EQ(project.SetComponentParam(Low(id), High(id), 0, twoBits), 0);
  EXPECT_EQ(+stored->fParamA, 2.0f);
  EXPECT_EQ(project.SetComponentParam(Low(id), High(id), 7, threeBits), 0);
  EXPECT_EQ(+stored->fParamB, 3.0f);
  EXPECT_EQ(+stored->fParamA, 2.0f);
  EXPECT_EQ(+project.iChangeCount, 2);
  ExpectCodes(52, 53, 54);
}

TEST_F(ProjectComponents, CollectLinkedGathersAParentAndItsChildren) {
  CComponent* parent = ComponentAt(*a, 0, 0);
  ComponentAt(*a, 1, 1)->iLinkId = parent->iUniqueId;
  ComponentAt(*b, 1, 2)->iLinkId = parent->iUniqueId;
  CComponentList out;
  out.Add(new CComponent);  // emptied first
  EXPECT_EQ(project.CollectLinked(Low(parent->iUniqueId), High(parent->iUniqueId), &out), 0);
  ASSERT_EQ(out.GetCount(), 3);
  EXPECT_EQ(+out.GetAt(0)->iUniqueId, +parent->iUniqueId);
  EXPECT_EQ(+out.GetAt(1)->iUniqueId, +ComponentAt(*a, 1, 1)->iUniqueId);
  EXPECT_EQ(+out.GetAt(2)->iUniqueId, +ComponentAt(*b, 1, 2)->iUniqueId);
  EXPECT_NE(out.GetAt(0), parent);
  EXPECT_EQ(+project.iChangeCount, 0);
  ExpectCodes(60, 61, 62);
  EXPECT_EQ(OwnerCode(out.m_OuterLock), 59);
  EXPECT_EQ(project.CollectLinked(1, 0, nullptr), -1);
}

TEST_F(ProjectComponents, CollectAtTimeIncludesBothEndsOfAComponent) {
  // Components of b stand at 0-500, 1000-1500, 2000-2500 on both tracks.
  CComponentList out;
  EXPECT_EQ(project.CollectAtTime(b->iId, &out, 1500), 0);
  ASSERT_EQ(out.GetCount(), 2);  // the one ending there, on each track
  EXPECT_EQ(+out.GetAt(0)->dEnd, 1500.0);
  EXPECT_EQ(project.CollectAtTime(b->iId, &out, 2000), 0);
  EXPECT_EQ(out.GetCount(), 2);
  EXPECT_EQ(project.CollectAtTime(b->iId, &out, 1700), 0);
  EXPECT_EQ(out.GetCount(), 0);
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(project.CollectAtTime(b->iId, nullptr, 0), -1);
}

TEST_F(ProjectComponents, CollectAtTimeDiffersFromTheGapSearchAtAnEnd) {
  CTrack* track = TrackAt(*b, 0);
  track->dLengthMs = 10000.0;
  const int64_t endFrame = 1500 / 40;  // 25 frames a second
  EXPECT_EQ(track->GetGapAt(endFrame, nullptr, nullptr, nullptr, nullptr), 0);
  CComponentList out;
  project.CollectAtTime(b->iId, &out, 1500);
  EXPECT_EQ(out.GetCount(), 2);
}

TEST_F(ProjectComponents, CollectAtTimeLocksOnlyThatTimeline) {
  a->lockTimeline.Acquire(5000);  // a walk into a would wait here for good
  CComponentList out;
  EXPECT_EQ(project.CollectAtTime(b->iId, &out, 0), 0);
  EXPECT_EQ(out.GetCount(), 2);
  a->lockTimeline.Release();
  EXPECT_EQ(OwnerCode(a->lockTimeline), 5000);
  EXPECT_EQ(OwnerCode(b->lockTimeline), 61);
  EXPECT_EQ(OwnerCode(b->tracks.m_OuterLock), 62);
}

TEST_F(ProjectComponents, CopyAllComponentsCopiesEveryComponent) {
  CComponentList out;
  out.Add(new CComponent);
  EXPECT_EQ(project.CopyAllComponents(&out), 0);
  ASSERT_EQ(out.GetCount(), 3 * 2 + 2 * 3);
  EXPECT_EQ(+out.GetAt(0)->iUniqueId, +ComponentAt(*a, 0, 0)->iUniqueId);
  EXPECT_EQ(+out.GetAt(11)->iUniqueId, +ComponentAt(*b, 1, 2)->iUniqueId);
  EXPECT_EQ(+project.iChangeCount, 0);
  ExpectCodes(77, 78, 0);
  EXPECT_EQ(OwnerCode(out.m_OuterLock), 76);
  EXPECT_EQ(project.CopyAllComponents(nullptr), -1);
}

TEST_F(ProjectComponents, CountMovedMediaAndMaxSerial) {
  EXPECT_EQ(project.CountMovedMedia(), 0);
  ComponentAt(*a, 0, 0)->cMediaMoved = 1;
  ComponentAt(*b, 1, 2)->cMediaMoved = 200;
  EXPECT_EQ(project.CountMovedMedia(), 2);
  ExpectCodes(70, 71, 72);

  EXPECT_EQ(project.GetMaxSerial(), 0);
  ComponentAt(*a, 2, 1)->iSerial = -5;
  EXPECT_EQ(project.GetMaxSerial(), 0);  // from 0
  ComponentAt(*b, 0, 0)->iSerial = 12;
  ComponentAt(*a, 1, 0)->iSerial = 7;
  EXPECT_EQ(project.GetMaxSerial(), 12);
  ExpectCodes(63, 64, 65);
  EXPECT_EQ(+project.iChangeCount, 0);
}

TEST_F(ProjectComponents, ComponentTrackIndexFromTheLastTimelineThatHasIt) {
  std::unique_ptr<CComponent> twin(Twin(*ComponentAt(*a, 2, 1)));
  EXPECT_EQ(project.GetComponentTrackIndex(twin.get()), 2);
  ExpectCodes(88, 89, 0);
  ComponentAt(*b, 1, 0)->iUniqueId = twin->iUniqueId;
  EXPECT_EQ(project.GetComponentTrackIndex(twin.get()), 1);
  CComponent stranger;
  EXPECT_EQ(project.GetComponentTrackIndex(&stranger), -1);
  EXPECT_EQ(project.GetComponentTrackIndex(nullptr), -1);
}

TEST_F(ProjectComponents, ComponentTrackFlagReadsTheStateBytes) {
  CTrack* track = TrackAt(*a, 1);
  track->cState0 = 10;
  track->cState1 = 0xFF;  // read as a signed byte
  track->cState2 = 30;
  track->cState3 = 40;
  std::unique_ptr<CComponent> twin(Twin(*ComponentAt(*a, 1, 0)));
  EXPECT_EQ(project.GetComponentTrackFlag(twin.get(), 0), -1);  // cState1
  EXPECT_EQ(project.GetComponentTrackFlag(twin.get(), 1), 10);  // cState0
  EXPECT_EQ(project.GetComponentTrackFlag(twin.get(), 2), 30);
  EXPECT_EQ(project.GetComponentTrackFlag(twin.get(), 3), 40);
  EXPECT_EQ(project.GetComponentTrackFlag(twin.get(), 4), 0);  // left at 0
  ExpectCodes(0, 91, 0);
  CComponent stranger;
  EXPECT_EQ(project.GetComponentTrackFlag(&stranger, 1), 0);
  EXPECT_EQ(project.GetComponentTrackFlag(nullptr, 1), 0);
}

TEST_F(ProjectComponents, KindsFiveAndSixHaveNoTrackState) {
  std::unique_ptr<CComponent> twin(Twin(*ComponentAt(*a, 1, 0)));
  TrackAt(*a, 1)->cState0 = 9;
  project.pTimelineList->m_OuterLock.Acquire(5000);  // no walk may take place
  for (int32_t kind : {5, 6}) {
    twin->iKind = kind;
    EXPECT_EQ(project.GetComponentTrackFlag(twin.get(), 1), 1);
    EXPECT_EQ(project.GetComponentTrackFlag(twin.get(), 0), 0);
    EXPECT_EQ(project.GetComponentTrackFlag(twin.get(), 2), 0);
  }
  project.pTimelineList->m_OuterLock.Release();
}

TEST_F(ProjectComponents, MarkUsedMediaFlagsTheMediaThatTimelinesUse) {
  std::strcpy(ComponentAt(*b, 1, 1)->szPath, "/media/Used.AVI");
  CRepository repository;
  repository.components.Add(MakeComponent(0, 1, "/MEDIA/used.avi"));
  repository.components.Add(MakeComponent(0, 1, "/media/unused.avi"));
  repository.components.GetAt(1)->cInUse = 1;  // stale: cleared again
  EXPECT_EQ(project.MarkUsedMedia(&repository), 0);
  EXPECT_EQ(repository.components.GetAt(0)->cInUse, 1);
  EXPECT_EQ(repository.components.GetAt(1)->cInUse, 0);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 56);
  EXPECT_EQ(OwnerCode(b->lockTimeline), 57);
  EXPECT_EQ(OwnerCode(b->tracks.m_OuterLock), 58);
  EXPECT_EQ(OwnerCode(repository.lockRepository), 0);
  EXPECT_FALSE(IsHeld(repository.lockRepository));
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(project.MarkUsedMedia(nullptr), -1);
}

TEST_F(ProjectComponents, MarkUsedMediaStopsAtTheFirstUse) {
  // Every component of a and b has the same path; the walk ends in a.
  CRepository repository;
  repository.components.Add(MakeComponent(0, 1, "clip.avi"));
  b->lockTimeline.Acquire(5000);  // a walk that went on into b would wait
  EXPECT_EQ(project.MarkUsedMedia(&repository), 0);
  b->lockTimeline.Release();
  EXPECT_EQ(repository.components.GetAt(0)->cInUse, 1);
}

}  // namespace
