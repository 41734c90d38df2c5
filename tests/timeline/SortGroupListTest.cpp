// The digest of a component list: CSortData, CSortDataList, CSortGroupList.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "tests/timeline/ComponentListTestUtil.h"
#include "time/TimeCode.h"
#include "timeline/SortGroupList.h"

namespace {

CComponent* OnLine(int32_t line, int32_t kind, double start, double end) {
  CComponent* component = NewComponent(kind, start, end);
  component->iLine = line;
  return component;
}

CSortData* Data(int64_t start) {
  CSortData* data = new CSortData;
  data->iStartMs = start;
  return data;
}

std::vector<int64_t> Starts(CSortDataList& list) {
  std::vector<int64_t> starts;
  for (const CSortData* data : list.m_aItems) starts.push_back(data->iStartMs);
  return starts;
}

int64_t Frames(int64_t ms) {
  CTimeCode timeCode;
  timeCode.SetMilliseconds(static_cast<double>(ms));
  return timeCode.GetFrames();
}

}  // namespace

TEST(SortData, IsZeroFilledWhenMade) {
  alignas(CSortData) unsigned char storage[sizeof(CSortData)];
  std::memset(storage, 0xAB, sizeof(storage));
  CSortData* data = new (storage) CSortData;
  for (unsigned char byte : storage) EXPECT_EQ(byte, 0);
  EXPECT_EQ(data->iSpare, 0);
}

TEST(SortData, FieldsFollowInTheirOrder) {
  EXPECT_LT(offsetof(CSortData, iLine), offsetof(CSortData, iSourceIndex));
  EXPECT_LT(offsetof(CSortData, iSourceIndex), offsetof(CSortData, iSortFieldA));
  EXPECT_LT(offsetof(CSortData, iSortFieldA), offsetof(CSortData, iSortFieldB));
  EXPECT_LT(offsetof(CSortData, iSortFieldB), offsetof(CSortData, iSpare));
  EXPECT_LT(offsetof(CSortData, iSpare), offsetof(CSortData, iRuntimeB));
  EXPECT_LT(offsetof(CSortData, iRuntimeB), offsetof(CSortData, iKind));
  EXPECT_LT(offsetof(CSortData, iKind), offsetof(CSortData, iUniqueId));
  EXPECT_LT(offsetof(CSortData, iUniqueId), offsetof(CSortData, iStartMs));
  EXPECT_LT(offsetof(CSortData, iStartMs), offsetof(CSortData, iEndMs));
  EXPECT_LT(offsetof(CSortData, iEndMs), offsetof(CSortData, iStartFrame));
  EXPECT_LT(offsetof(CSortData, iStartFrame), offsetof(CSortData, iEndFrame));
}

TEST(SortData, IsFilledFromTheComponent) {
  CComponent component;
  component.iLine = 3;
  component.iSortFieldA = 11;
  component.iSortFieldB = 12;
  component.iRuntimeB = 13;
  component.iKind = 5;
  component.dStart = 1999.9;
  component.dEnd = 4040.6;
  const CSortData data(component, 17);
  EXPECT_EQ(data.iLine, 3);
  EXPECT_EQ(data.iSourceIndex, 17);
  EXPECT_EQ(+data.iSortFieldA, 11);
  EXPECT_EQ(+data.iSortFieldB, 12);
  EXPECT_EQ(data.iSpare, 0);
  EXPECT_EQ(data.iRuntimeB, 13);
  EXPECT_EQ(+data.iKind, 5);
  EXPECT_EQ(+data.iUniqueId, +component.iUniqueId);
  EXPECT_EQ(data.iStartMs, 1999);
  EXPECT_EQ(data.iEndMs, 4040);
  EXPECT_EQ(data.iStartFrame, Frames(1999));
  EXPECT_EQ(data.iEndFrame, Frames(4040));
  EXPECT_EQ(data.iEndFrame, 101);  // 4040 ms at 25 frames per second
}

TEST(SortDataList, StartsWithItsHeadDefaults) {
  CSortDataList list;
  EXPECT_EQ(list.m_Lead.iLine, 0);
  EXPECT_EQ(list.m_Lead.iSortKey, -1);
  EXPECT_EQ(list.m_Lead.iSortDir, 0);
}

TEST(SortDataList, SortByStartOnOneElementChangesOnlyTheTwoFields) {
  CSortDataList list;
  CSortData* only = Data(50);
  list.Add(only);
  EXPECT_EQ(list.SortByStart(3), 0);
  EXPECT_EQ(list.m_Lead.iSortKey, 8);
  EXPECT_EQ(list.m_Lead.iSortDir, 3);
  ASSERT_EQ(list.GetCount(), 1);
  EXPECT_EQ(list.m_aItems[0], only);
  EXPECT_EQ(only->iStartMs, 50);
}

TEST(SortDataList, SortByStartOrdersAscendingWhateverTheDirection) {
  CSortDataList list;
  for (int64_t start : {40, -5, 30, 10, 30, 0}) list.Add(Data(start));
  EXPECT_EQ(list.SortByStart(1), 0);
  EXPECT_EQ(Starts(list), (std::vector<int64_t>{-5, 0, 10, 30, 30, 40}));
}

TEST(SortDataList, SortByStartMovesTheBlocksNotTheirContents) {
  CSortDataList list;
  std::vector<CSortData*> blocks;
  std::mt19937 rng(5);
  for (int i = 0; i < 2000; ++i) {
    CSortData* data = Data(static_cast<int64_t>(rng() % 300) - 100);
    data->iSourceIndex = i;
    blocks.push_back(data);
    list.Add(data);
  }
  list.SortByStart(0);
  std::vector<int64_t> starts = Starts(list);
  EXPECT_TRUE(std::is_sorted(starts.begin(), starts.end()));
  std::vector<CSortData*> after(list.m_aItems.begin(), list.m_aItems.end());
  for (const CSortData* data : after) EXPECT_EQ(blocks[data->iSourceIndex], data);
  std::sort(after.begin(), after.end());
  std::sort(blocks.begin(), blocks.end());
  EXPECT_EQ(after, blocks);
}

TEST(SortDataList, ManyEqualStartsStillSort) {
  CSortDataList list;
  for (int i = 0; i < 20000; ++i) list.Add(Data(7));
  list.Add(Data(3));
  list.SortByStart(0);
  EXPECT_EQ(list.m_aItems[0]->iStartMs, 3);
  EXPECT_EQ(list.GetCount(), 20001);
}

TEST(SortDataList, ClearReleasesTheBlocksAndCountsNothing) {
  // Under the address sanitizer a leak or a mismatched release would fail here.
  CSortDataList list;
  list.Add(Data(1));
  list.m_aItems.Add(nullptr);
  list.Add(Data(2));
  list.Clear();
  EXPECT_EQ(list.GetCount(), 0);
}

TEST(SortGroupList, BuildOfANullListGivesMinusOne) {
  CSortGroupList groups;
  EXPECT_EQ(groups.Build(nullptr), -1);
}

TEST(SortGroupList, BuildOnLinesZeroOneZeroGivesTwoGroupsInStartOrder) {
  CComponentList list;
  list.Add(OnLine(0, 1, 800.0, 900.0));
  list.Add(OnLine(1, 2, 50.0, 70.0));
  list.Add(OnLine(0, 3, 100.0, 200.0));
  CSortGroupList groups;
  EXPECT_EQ(groups.Build(&list), 0);
  ASSERT_EQ(groups.GetCount(), 2);

  CSortDataList* first = groups.m_aItems[0];
  EXPECT_EQ(first->m_Lead.iLine, 0);
  EXPECT_EQ(+first->m_Lead.iKind, 1);
  EXPECT_EQ(first->m_Lead.iSortKey, 8);
  EXPECT_EQ(first->m_Lead.iSortDir, 0);
  ASSERT_EQ(first->GetCount(), 2);
  EXPECT_EQ(first->m_aItems[0]->iStartMs, 100);
  EXPECT_EQ(first->m_aItems[0]->iSourceIndex, 2);
  EXPECT_EQ(first->m_aItems[1]->iStartMs, 800);
  EXPECT_EQ(first->m_aItems[1]->iSourceIndex, 0);

  CSortDataList* second = groups.m_aItems[1];
  EXPECT_EQ(second->m_Lead.iLine, 1);
  EXPECT_EQ(+second->m_Lead.iKind, 2);
  ASSERT_EQ(second->GetCount(), 1);
  EXPECT_EQ(second->m_aItems[0]->iSourceIndex, 1);
}

TEST(SortGroupList, BuildReplacesTheFormerDigestAndReleasesTheOuterLock) {
  CComponentList list;
  list.Add(OnLine(4, 1, 0.0, 10.0));
  CSortGroupList groups;
  groups.Build(&list);
  list.Add(OnLine(5, 1, 0.0, 10.0));
  EXPECT_EQ(groups.Build(&list), 0);
  EXPECT_EQ(groups.GetCount(), 2);
  // The outer lock is free again: a second build (which takes it) returns.
  EXPECT_EQ(groups.Build(&list), 0);
  EXPECT_EQ(list.m_OuterLock.Acquire(1), 1);
  list.m_OuterLock.Release();
}

TEST(SortGroupList, BuildOfAnEmptyListGivesNoGroups) {
  CComponentList list;
  CSortGroupList groups;
  EXPECT_EQ(groups.Build(&list), 0);
  EXPECT_EQ(groups.GetCount(), 0);
}

TEST(SortGroupList, BuildSkipsNullSlotsButCountsTheirIndex) {
  CComponentList list;
  list.m_aItems.Add(nullptr);
  list.Add(OnLine(0, 1, 5.0, 6.0));
  CSortGroupList groups;
  EXPECT_EQ(groups.Build(&list), 0);
  ASSERT_EQ(groups.GetCount(), 1);
  EXPECT_EQ(groups.m_aItems[0]->m_aItems[0]->iSourceIndex, 1);
}
