// Tracks: the kind tables, copies, component exchange, the raw block and
// the renewal of ids with their links.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "project/TrackList.h"
#include "tests/project/ProjectTestUtil.h"
#include "tests/support/ByteStreams.h"

namespace {

using namespace testsupport;
using projecttest::AddComponent;

TEST(TrackKinds, AcceptsKindFollowsTheTableOfTrackKinds) {
  const std::vector<std::vector<int32_t>> accepted = {
      {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {1, 4, 5}, {2}, {3}, {6}, {7}, {8}, {}, {}};
  for (uint32_t trackKind = 0; trackKind < accepted.size(); ++trackKind) {
    CTrack track;
    track.iTrackKind = trackKind;
    for (int32_t componentKind = 0; componentKind <= 10; ++componentKind) {
      const bool expected = std::find(accepted[trackKind].begin(), accepted[trackKind].end(),
                                      componentKind) != accepted[trackKind].end();
      EXPECT_EQ(track.AcceptsKind(componentKind), expected) << trackKind << "/" << componentKind;
      EXPECT_EQ(IsTrackKindMatch(static_cast<int32_t>(trackKind), componentKind), expected);
    }
  }
  CTrack odd;
  odd.iTrackKind = 0xFFFFFFFFu;
  EXPECT_FALSE(odd.AcceptsKind(1));
  EXPECT_TRUE(IsTrackKindMatch(0, -4));
}

TEST(TrackKinds, ComponentKindMatchGroupsPictureKinds) {
  for (int32_t b = -1; b <= 11; ++b) EXPECT_TRUE(IsComponentKindMatch(0, b)) << b;
  for (int32_t a : {1, 4, 5, 9}) {
    for (int32_t b = -1; b <= 11; ++b) {
      const bool picture = b == 1 || b == 4 || b == 5 || b == 9;
      EXPECT_EQ(IsComponentKindMatch(a, b), picture) << a << "/" << b;
    }
  }
  for (int32_t a : {2, 3, 6, 7, 8}) {
    for (int32_t b = -1; b <= 11; ++b)
      EXPECT_EQ(IsComponentKindMatch(a, b), a == b) << a << "/" << b;
  }
  for (int32_t a : {-1, 10, 11, 100}) {
    for (int32_t b = -1; b <= 11; ++b) EXPECT_FALSE(IsComponentKindMatch(a, b));
  }
}

TEST(Track, CopyFromMakesATwinWithDeepCopies) {
  CTrack source;
  source.iTrackKind = 2;
  source.dLengthMs = 9000.0;
  source.abBlock50[3] = 0x33;
  CComponent* original = AddComponent(source.components, 100.0, 200.0, 2);
  original->m_Levels.Add(new CLevelPoint(kRoleInner, 5, 1.0f));
  CTrack copy;
  AddComponent(copy.components, 0.0, 1.0);  // replaced
  copy.CopyFrom(source);
  EXPECT_EQ(std::memcmp(static_cast<CTrackData*>(&copy), static_cast<CTrackData*>(&source), 431),
            0);
  ASSERT_EQ(copy.components.GetCount(), 1);
  CComponent* twin = copy.components.GetAt(0);
  EXPECT_NE(twin, original);
  EXPECT_EQ(+twin->iUniqueId, +original->iUniqueId);
  EXPECT_EQ(twin->m_Levels.GetCount(), 1);
  EXPECT_EQ(&copy.CopyFrom(copy), &copy);
}

TEST(Track, SetComponentOverwritesTheComponentWithTheSameId) {
  CTrack track;
  CComponent* target = AddComponent(track.components, 0.0, 100.0);
  CComponent* other = AddComponent(track.components, 100.0, 200.0);
  CComponent edited;
  edited.CopyFrom(*target);
  edited.dEnd = 150.0;
  std::strcpy(edited.szLabel, "edited");
  EXPECT_EQ(track.SetComponent(&edited), 0);
  EXPECT_EQ(+target->dEnd, 150.0);
  EXPECT_STREQ(target->szLabel, "edited");
  EXPECT_EQ(+other->dEnd, 200.0);
  EXPECT_EQ(track.SetComponent(nullptr), -1);
}

TEST(Track, GetComponentCopiesTheMatchOverTheCallersCopy) {
  CTrack track;
  CComponent* stored = AddComponent(track.components, 40.0, 80.0, 3);
  CComponent query;
  query.iUniqueId = stored->iUniqueId;
  EXPECT_EQ(track.GetComponent(&query), 0);
  EXPECT_EQ(+query.dStart, 40.0);
  EXPECT_EQ(+query.iKind, 3);
  CComponent unknown;
  unknown.dStart = 7.0;
  EXPECT_EQ(track.GetComponent(&unknown), 0);
  EXPECT_EQ(+unknown.dStart, 7.0);
  EXPECT_EQ(track.GetComponent(nullptr), -1);
}

TEST(Track, SetAndGetComponentsMatchEachElementById) {
  CTrack track;
  CComponent* a = AddComponent(track.components, 0.0, 10.0);
  CComponent* b = AddComponent(track.components, 10.0, 20.0);
  CComponentList edits;
  CComponent* editB = AddComponent(edits, 10.0, 99.0);
  editB->iUniqueId = b->iUniqueId;
  AddComponent(edits, 500.0, 600.0);  // matches nothing
  EXPECT_EQ(track.SetComponents(&edits), 0);
  EXPECT_EQ(+b->dEnd, 99.0);
  EXPECT_EQ(+a->dEnd, 10.0);
  EXPECT_EQ(track.components.GetCount(), 2);

  CComponentList queries;
  CComponent* queryA = AddComponent(queries, 0.0, 0.0);
  queryA->iUniqueId = a->iUniqueId;
  EXPECT_EQ(track.GetComponents(&queries), 0);
  EXPECT_EQ(+queryA->dEnd, 10.0);
  CComponentList empty;
  EXPECT_EQ(track.SetComponents(&empty), 0);
  EXPECT_EQ(track.SetComponents(nullptr), -1);
  EXPECT_EQ(track.GetComponents(nullptr), -1);
}

TEST(Track, CopyComponentsTakesThoseTouchingOrCoveringTheRange) {
  CTrack track;
  AddComponent(track.components, 0.0, 100.0);    // outside, before
  AddComponent(track.components, 150.0, 400.0);  // start inside
  AddComponent(track.components, 50.0, 250.0);   // end inside
  AddComponent(track.components, 100.0, 500.0);  // covers
  AddComponent(track.components, 350.0, 600.0);  // outside, behind
  AddComponent(track.components, 200.0, 300.0);  // wholly inside
  CComponentList out;
  AddComponent(out, 1.0, 2.0);  // deleted first
  const int64_t range[2] = {200, 300};
  EXPECT_EQ(track.CopyComponents(&out, range), 0);
  ASSERT_EQ(out.GetCount(), 4);
  EXPECT_EQ(+out.GetAt(0)->dStart, 150.0);
  EXPECT_EQ(+out.GetAt(1)->dStart, 50.0);
  EXPECT_EQ(+out.GetAt(2)->dStart, 100.0);
  EXPECT_EQ(+out.GetAt(3)->dStart, 200.0);
  EXPECT_NE(out.GetAt(0), track.components.GetAt(1));
  EXPECT_EQ(+out.GetAt(0)->iUniqueId, +track.components.GetAt(1)->iUniqueId);
  EXPECT_EQ(track.CopyComponents(&out, nullptr), 0);
  EXPECT_EQ(out.GetCount(), 6);
  EXPECT_EQ(track.CopyComponents(nullptr, range), -1);
}

TEST(Track, RawBlockIsTheRecordAndTwentyNineMoreBytes) {
  CTrack track;
  track.iTrackKind = 6;
  track.dLengthMs = 1234.0;
  FILE* f = std::tmpfile();
  EXPECT_EQ(track.WriteRawBlock(f), 0);
  const Bytes bytes = ReadAll(f);
  ASSERT_EQ(bytes.size(), 460u);
  EXPECT_EQ(std::memcmp(bytes.data(), static_cast<CTrackData*>(&track), 431), 0);

  std::rewind(f);
  CTrack other;
  EXPECT_EQ(other.ReadRawBlock(f), 0);
  EXPECT_EQ(std::ftell(f), 460);
  EXPECT_EQ(+other.iId, +track.iId);
  EXPECT_EQ(+other.dLengthMs, 1234.0);
  EXPECT_EQ(other.ReadRawBlock(f), -1);  // at the end: nothing read
  std::fclose(f);
  EXPECT_EQ(track.WriteRawBlock(nullptr), -1);
  EXPECT_EQ(track.ReadRawBlock(nullptr), -1);
}

TEST(TrackList, RenewIdsGivesNewIdsAndCarriesLinksAcrossTracks) {
  CTrackList tracks;
  auto* first = new CTrack;
  auto* second = new CTrack;
  tracks.Add(first);
  tracks.Add(second);
  CComponent* parent = AddComponent(first->components, 0.0, 100.0);
  CComponent* child = AddComponent(second->components, 0.0, 100.0, 2);
  CComponent* loose = AddComponent(second->components, 200.0, 300.0, 2);
  child->iLinkId = parent->iUniqueId;
  loose->iLinkId = 424242;
  const int64_t oldTrackId = first->iId;
  const int64_t oldParentId = parent->iUniqueId;
  const int64_t oldChildId = child->iUniqueId;
  EXPECT_EQ(tracks.RenewIds(), 0);
  EXPECT_NE(+first->iId, oldTrackId);
  EXPECT_NE(+first->iId, +second->iId);
  EXPECT_NE(+parent->iUniqueId, oldParentId);
  EXPECT_NE(+child->iUniqueId, oldChildId);
  EXPECT_EQ(+child->iLinkId, +parent->iUniqueId);
  EXPECT_EQ(+loose->iLinkId, 424242);
  CTrackList empty;
  EXPECT_EQ(empty.RenewIds(), 0);
}

}  // namespace
