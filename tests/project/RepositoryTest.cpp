// Repositories: the kind table, copies, new ids and component exchange.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "project/Repository.h"
#include "project/Track.h"
#include "tests/project/ProjectTestUtil.h"

namespace {

using projecttest::AddComponent;

TEST(Repository, AcceptsKindFollowsTheTableOfRepositoryKinds) {
  const std::vector<std::vector<int32_t>> accepted = {
      {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {1, 2, 4, 5}, {3}, {6}, {}, {}};
  for (int32_t kind = 0; kind < static_cast<int32_t>(accepted.size()); ++kind) {
    CRepository repository;
    repository.iRepositoryKind = kind;
    for (int32_t componentKind = -1; componentKind <= 10; ++componentKind) {
      const auto& list = accepted[static_cast<size_t>(kind)];
      const bool expected = std::find(list.begin(), list.end(), componentKind) != list.end();
      EXPECT_EQ(repository.AcceptsKind(componentKind), expected) << kind << "/" << componentKind;
    }
  }
  CRepository negative;
  negative.iRepositoryKind = -1;
  EXPECT_FALSE(negative.AcceptsKind(1));
}

TEST(Repository, MediaRepositoryTakesAudioWhereAVideoTrackDoesNot) {
  CRepository repository;
  repository.iRepositoryKind = 1;
  CTrack track;
  track.iTrackKind = 1;
  EXPECT_TRUE(repository.AcceptsKind(2));
  EXPECT_FALSE(track.AcceptsKind(2));
}

TEST(Repository, RenewIdsLeavesLinksAlone) {
  CRepository repository;
  CComponent* parent = AddComponent(repository.components, 0.0, 1.0);
  CComponent* child = AddComponent(repository.components, 0.0, 1.0, 2);
  child->iLinkId = parent->iUniqueId;
  const int64_t oldParent = parent->iUniqueId;
  const int64_t oldId = repository.iId;
  EXPECT_EQ(repository.RenewIds(), 0);
  EXPECT_NE(+repository.iId, oldId);
  EXPECT_NE(+parent->iUniqueId, oldParent);
  EXPECT_EQ(+child->iLinkId, oldParent);
  EXPECT_NE(+child->iLinkId, +parent->iUniqueId);
}

TEST(Repository, CopyFromIsATwin) {
  CRepository source;
  std::strcpy(source.szName, "Effects1");
  source.iRepositoryKind = 2;
  CComponent* effect = AddComponent(source.components, 0.0, 1.0, 3);
  CRepository copy;
  copy.CopyFrom(source);
  EXPECT_EQ(std::memcmp(static_cast<CRepositoryData*>(&copy),
                        static_cast<CRepositoryData*>(&source), 964),
            0);
  ASSERT_EQ(copy.components.GetCount(), 1);
  EXPECT_NE(copy.components.GetAt(0), effect);
  EXPECT_EQ(+copy.components.GetAt(0)->iUniqueId, +effect->iUniqueId);
}

TEST(Repository, ComponentExchangeByIdInBothDirections) {
  CRepository repository;
  CComponent* stored = AddComponent(repository.components, 0.0, 10.0, 6);
  CComponent edit;
  edit.CopyFrom(*stored);
  edit.dEnd = 20.0;
  EXPECT_EQ(repository.SetComponent(&edit), 0);
  EXPECT_EQ(+stored->dEnd, 20.0);
  CComponent query;
  query.iUniqueId = stored->iUniqueId;
  EXPECT_EQ(repository.GetComponent(&query), 0);
  EXPECT_EQ(+query.iKind, 6);

  CComponentList edits;
  CComponent* listEdit = AddComponent(edits, 0.0, 30.0, 6);
  listEdit->iUniqueId = stored->iUniqueId;
  EXPECT_EQ(repository.SetComponents(&edits), 0);
  EXPECT_EQ(+stored->dEnd, 30.0);
  stored->dEnd = 40.0;
  EXPECT_EQ(repository.GetComponents(&edits), 0);
  EXPECT_EQ(+listEdit->dEnd, 40.0);

  EXPECT_EQ(repository.SetComponent(nullptr), -1);
  EXPECT_EQ(repository.GetComponent(nullptr), -1);
  EXPECT_EQ(repository.SetComponents(nullptr), -1);
  EXPECT_EQ(repository.GetComponents(nullptr), -1);
  EXPECT_EQ(repository.ReservedHook(5), 0);
}

}  // namespace
