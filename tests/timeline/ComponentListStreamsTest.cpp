// CComponentList::ExpandStreams and RemoveLinked.

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "tests/core/DataLockTestPeer.h"
#include "tests/timeline/ComponentListTestUtil.h"
#include "timeline/ComponentList.h"

namespace {

CComponent* NewMedia(int32_t kind, int32_t videoStreams, int32_t audioStreams) {
  CComponent* media = NewComponent(kind, 100.0, 900.0);
  media->iVideoStreams = videoStreams;
  media->iAudioStreams = audioStreams;
  media->dMediaLength = 5000.0;
  std::snprintf(media->szPath, sizeof(media->szPath), "%s", "clip.avi");
  return media;
}

}  // namespace

TEST(ComponentListStreams, PictureParentWithTwoAudioStreamsGetsTwoAudioChildren) {
  CComponentList list;
  CComponent* parent = NewMedia(1, 1, 2);
  parent->m_Markers.Add(new CMarkerPoint);
  parent->iRuntimeB = 77;
  list.Add(parent);
  EXPECT_EQ(list.ExpandStreams(), 0);
  ASSERT_EQ(list.GetCount(), 3);
  EXPECT_EQ(list.m_aItems[0], parent);
  for (int32_t k = 0; k < 2; ++k) {
    const CComponent* child = list.m_aItems[k + 1];
    EXPECT_EQ(+child->iKind, 2);
    EXPECT_EQ(child->iLine, k + 1);
    EXPECT_EQ(+child->iAudioIndex, k);
    EXPECT_EQ(+child->iChannelIndex, k);
    EXPECT_EQ(+child->iLinkId, +parent->iUniqueId);
    EXPECT_NE(+child->iUniqueId, +parent->iUniqueId);
    EXPECT_STREQ(child->szPath, "clip.avi");
    EXPECT_DOUBLE_EQ(+child->dStart, 100.0);
    // Neither the parent's lists nor its runtime members come along.
    EXPECT_EQ(child->m_Markers.GetCount(), 0);
    EXPECT_EQ(child->iRuntimeB, 0);
    // The audio curve: start and end point at 80 on a scale of 100.
    ASSERT_EQ(const_cast<CComponent*>(child)->m_Levels.GetCount(), 2);
    for (const CLevelPoint* point : child->m_Levels.m_aItems) EXPECT_FLOAT_EQ(point->fValue, 80.0f);
    EXPECT_FLOAT_EQ(+child->fLevelMax, 100.0f);
  }
  EXPECT_NE(+list.m_aItems[1]->iUniqueId, +list.m_aItems[2]->iUniqueId);
}

TEST(ComponentListStreams, FurtherPictureStreamsComeFirstThenAudio) {
  CComponentList list;
  CComponent* parent = NewMedia(5, 3, 1);
  list.Add(parent);
  list.ExpandStreams();
  ASSERT_EQ(list.GetCount(), 4);
  for (int32_t k = 1; k <= 2; ++k) {
    const CComponent* child = list.m_aItems[k];
    EXPECT_EQ(+child->iKind, 5);
    EXPECT_EQ(+child->iVideoIndex, k);
    EXPECT_EQ(+child->iChannelIndex, k);
    EXPECT_EQ(child->iLine, k);
    EXPECT_EQ(const_cast<CComponent*>(child)->m_Levels.GetCount(), 0);
  }
  const CComponent* audio = list.m_aItems[3];
  EXPECT_EQ(+audio->iKind, 2);
  EXPECT_EQ(audio->iLine, 3);
  EXPECT_EQ(+audio->iChannelIndex, 0);
}

TEST(ComponentListStreams, AudioParentIsItsOwnStreamZero) {
  CComponentList list;
  CComponent* parent = NewMedia(2, 4, 3);  // picture streams don't count for audio
  list.Add(parent);
  list.ExpandStreams();
  ASSERT_EQ(list.GetCount(), 3);
  for (int32_t k = 1; k <= 2; ++k) {
    const CComponent* child = list.m_aItems[k];
    EXPECT_EQ(+child->iKind, 2);
    EXPECT_EQ(+child->iAudioIndex, k);
    EXPECT_EQ(child->iLine, k);
    EXPECT_EQ(+child->iChannelIndex, k);
    EXPECT_EQ(const_cast<CComponent*>(child)->m_Levels.GetCount(), 2);
  }
}

TEST(ComponentListStreams, MoreThanSixteenAudioStreamsMakeSixteenChildren) {
  CComponentList list;
  list.Add(NewMedia(1, 1, 40));
  list.ExpandStreams();
  EXPECT_EQ(list.GetCount(), 1 + 16);
  EXPECT_EQ(+list.m_aItems[16]->iAudioIndex, 15);

  CComponentList audio;
  audio.Add(NewMedia(2, 0, 17));
  audio.ExpandStreams();
  EXPECT_EQ(audio.GetCount(), 16);  // the parent is stream 0
}

TEST(ComponentListStreams, NoStreamsOrNegativeCountsMakeNoChildren) {
  CComponentList list;
  list.Add(NewMedia(1, 0, 0));
  list.Add(NewMedia(2, -3, -5));
  list.ExpandStreams();
  EXPECT_EQ(list.GetCount(), 2);
}

TEST(ComponentListStreams, RunningTwiceGivesTheSameResultWithNewChildIds) {
  CComponentList list;
  CComponent* still = NewMedia(3, 0, 0);  // no streams: puts the media's child at index 2
  CComponent* parent = NewMedia(1, 1, 1);
  list.Add(still);
  list.Add(parent);
  EXPECT_EQ(list.ExpandStreams(), 0);
  ASSERT_EQ(list.GetCount(), 3);
  const CComponent* firstChild = list.m_aItems[2];
  const int64_t firstChildId = firstChild->iUniqueId;
  EXPECT_EQ(+firstChild->iLinkId, +parent->iUniqueId);

  EXPECT_EQ(list.ExpandStreams(), 0);
  ASSERT_EQ(list.GetCount(), 3);
  EXPECT_EQ(list.m_aItems[0], still);
  EXPECT_EQ(list.m_aItems[1], parent);
  const CComponent* secondChild = list.m_aItems[2];
  EXPECT_EQ(+secondChild->iLinkId, +parent->iUniqueId);
  EXPECT_EQ(+secondChild->iKind, 2);
  EXPECT_EQ(secondChild->iLine, 1);
  EXPECT_NE(+secondChild->iUniqueId, firstChildId);
  EXPECT_NE(+secondChild->iUniqueId, +parent->iUniqueId);
}

TEST(ComponentListStreams, SecondRunKeepsAChildThatRemoveLinkedStrodeOver) {
  CComponentList list;
  CComponent* parent = NewMedia(1, 1, 1);
  list.Add(parent);
  list.ExpandStreams();
  ASSERT_EQ(list.GetCount(), 2);
  const CComponent* oldChild = list.m_aItems[1];
  // RemoveLinked looks at index 0 (the parent) and then at 2: the child at
  // index 1 is never looked at, stays, and comes after the parent's new child.
  list.ExpandStreams();
  ASSERT_EQ(list.GetCount(), 3);
  EXPECT_EQ(list.m_aItems[0], parent);
  EXPECT_NE(list.m_aItems[1], oldChild);
  EXPECT_EQ(+list.m_aItems[1]->iLinkId, +parent->iUniqueId);
  EXPECT_EQ(list.m_aItems[2], oldChild);
}

TEST(ComponentListStreams, TwiceOnTheUsualLayoutKeepsTheChildThatRemoveLinkedStrodeOver) {
  // The picture parent with one picture and two audio streams: [P, a1, a2].
  CComponentList list;
  CComponent* parent = NewMedia(1, 1, 2);
  list.Add(parent);
  ASSERT_EQ(list.ExpandStreams(), 0);
  ASSERT_EQ(list.GetCount(), 3);
  const CComponent* a1 = list.m_aItems[1];
  const int64_t a2Id = list.m_aItems[2]->iUniqueId;  // a2 itself is deleted below
  // RemoveLinked looks at 0 (the parent, +2) and 2 (a2, removed): a1 stays.
  // The parent then gets two new children, and a1 follows them unexpanded.
  ASSERT_EQ(list.ExpandStreams(), 0);
  ASSERT_EQ(list.GetCount(), 4);
  EXPECT_EQ(list.m_aItems[0], parent);
  EXPECT_EQ(list.m_aItems[3], a1);
  for (int32_t i = 1; i <= 2; ++i) {
    const CComponent* child = list.m_aItems[i];
    EXPECT_NE(child, a1);
    EXPECT_NE(+child->iUniqueId, a2Id);  // new children with ids of their own
    EXPECT_EQ(+child->iLinkId, +parent->iUniqueId);
    EXPECT_EQ(+child->iKind, 2);
    EXPECT_EQ(child->iLine, i);
    EXPECT_NE(+child->iUniqueId, +a1->iUniqueId);
  }
}

TEST(ComponentListStreams, TenRunsInARowGiveADefinedListEachTimeAndLeaveNoLockHeld) {
  // From the third run on, every second one reads past the list RemoveLinked
  // shrank and throws; the list stays whole and unlocked, and the next run
  // starts from it.
  auto list = std::make_unique<CComponentList>();
  CComponent* parent = NewMedia(1, 1, 2);
  list->Add(parent);
  for (int run = 1; run <= 10; ++run) {
    if (run >= 3 && run % 2 == 1) {
      EXPECT_THROW(list->ExpandStreams(), std::out_of_range) << run;
      EXPECT_EQ(list->GetCount(), 3) << run;  // [P, new child a1, former a1]
    } else {
      EXPECT_EQ(list->ExpandStreams(), 0) << run;
      EXPECT_EQ(list->GetCount(), run == 1 ? 3 : 4) << run;
    }
    ASSERT_EQ(CDataLockTestPeer::LockWord(list->m_InnerLock), 0) << run;
    EXPECT_EQ(list->m_aItems[0], parent) << run;
    for (int32_t i = 1; i < list->GetCount(); ++i) {
      EXPECT_EQ(+list->m_aItems[i]->iLinkId, +parent->iUniqueId) << run;
    }
  }
  list.reset();  // the destructor takes the inner lock too
}

TEST(ComponentListStreams, RemoveLinkedSkipsTheNeighbourOfAKeptParent) {
  CComponentList list;
  CComponent* parentA = NewComponent(1);
  CComponent* skipped = NewChild(*parentA);
  CComponent* parentB = NewComponent(1);
  CComponent* removed = NewChild(*parentB);
  for (CComponent* c : {parentA, skipped, parentB}) list.Add(c);
  list.Add(removed);
  // i=0 parent: +2 -> i=2 parent: +2 -> end. Both children stay.
  EXPECT_EQ(list.RemoveLinked(), 0);
  EXPECT_EQ(list.GetCount(), 4);
}

TEST(ComponentListStreams, RemoveLinkedSkipsTheElementAfterARemovedChild) {
  CComponentList list;
  CComponent* parent = NewComponent(1);
  CComponent* first = NewChild(*parent);
  CComponent* second = NewChild(*parent);
  CComponent* third = NewChild(*parent);
  for (CComponent* c : {first, second, third, parent}) list.Add(c);
  // i=0 child: removed, i=1 (now third): removed, i=2 (out of 2 left: parent
  // at index 1)... n=4 and i=2 reads past the end of the shrunk list.
  EXPECT_THROW(list.RemoveLinked(), std::out_of_range);
  EXPECT_EQ(Order(list), (std::vector<const CComponent*>{second, parent}));
}

TEST(ComponentListStreams, RemoveLinkedDropsChildrenAtTheStridesItLooksAt) {
  CComponentList list;
  CComponent* parent = NewComponent(1);
  CComponent* child = NewChild(*parent);
  CComponent* other = NewComponent(1);
  for (CComponent* c : {child, parent, other}) list.Add(c);
  // i=0 child: removed, i=1 (other): +2 -> 3, end.
  EXPECT_EQ(list.RemoveLinked(), 0);
  EXPECT_EQ(Order(list), (std::vector<const CComponent*>{parent, other}));
}

TEST(ComponentListStreams, RemoveLinkedOnAnEmptyListDoesNothing) {
  CComponentList list;
  EXPECT_EQ(list.RemoveLinked(), 0);
  EXPECT_EQ(list.GetCount(), 0);
}

TEST(ComponentListStreams, ADamagedPictureStreamCountIsBounded) {
  CComponentList list;
  list.Add(NewMedia(1, 2000000000, 0));
  list.ExpandStreams();
  EXPECT_EQ(list.GetCount(), kMaxVideoStreams);  // the parent is stream 0
}
