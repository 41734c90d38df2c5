// The list operations of CComponentList other than sorting and streams.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/support/ResidentMemory.h"
#include "tests/support/StreamHelpers.h"
#include "tests/timeline/ComponentListTestUtil.h"
#include "timeline/ComponentList.h"

TEST(ComponentList, StartsUnsortedWithDirectionZero) {
  CComponentList list;
  EXPECT_EQ(list.SortKey(), -1);
  EXPECT_EQ(list.SortDir(), 0);
  EXPECT_EQ(list.GetCount(), 0);
}

TEST(ComponentList, InsertAtCountAppendsAndReturnsZero) {
  CComponentList list;
  CComponent* first = NewComponent(1);
  list.Add(first);
  const int32_t before = list.GetModCount();
  CComponent* second = NewComponent(1);
  EXPECT_EQ(list.InsertAt(second, 1), 0);
  ASSERT_EQ(list.GetCount(), 2);
  EXPECT_EQ(list.m_aItems[1], second);
  EXPECT_EQ(list.GetModCount(), before + 1);
}

TEST(ComponentList, InsertAtInsideMovesTheTail) {
  CComponentList list;
  CComponent* a = NewComponent(1);
  CComponent* b = NewComponent(1);
  CComponent* c = NewComponent(1);
  list.Add(a);
  list.Add(b);
  EXPECT_EQ(list.InsertAt(c, 0), 0);
  EXPECT_EQ(Order(list), (std::vector<const CComponent*>{c, a, b}));
}

TEST(ComponentList, InsertAtNegativeIndexGivesMinusOneAndTakesNothing) {
  CComponentList list;
  CComponent component;
  const int32_t before = list.GetModCount();
  EXPECT_EQ(list.InsertAt(&component, -1), -1);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.GetModCount(), before);
}

TEST(ComponentList, DetachRemovesTheSlotWithoutDeleting) {
  CComponentList list;
  CComponent* a = NewComponent(1);
  CComponent* b = NewComponent(1);
  list.Add(a);
  list.Add(b);
  EXPECT_EQ(list.Detach(0), 0);
  EXPECT_EQ(Order(list), (std::vector<const CComponent*>{b}));
  a->iKind = 7;  // still alive: ours now
  EXPECT_EQ(+a->iKind, 7);
  delete a;
}

TEST(ComponentList, DetachAtOrAboveCountGivesMinusOne) {
  CComponentList list;
  list.Add(NewComponent(1));
  EXPECT_EQ(list.Detach(1), -1);
  EXPECT_EQ(list.Detach(5), -1);
  EXPECT_EQ(list.GetCount(), 1);
}

TEST(ComponentList, FindByIdGivesTheFirstMatchOrNull) {
  CComponentList list;
  CComponent* a = NewComponent(1);
  CComponent* b = NewComponent(1);
  CComponent* twin = NewComponent(1);
  twin->iUniqueId = b->iUniqueId;
  list.Add(a);
  list.Add(b);
  list.Add(twin);
  list.m_aItems.Add(nullptr);  // a slot left by a failed load is skipped
  EXPECT_EQ(list.FindById(+b->iUniqueId), b);
  EXPECT_EQ(list.FindById(+a->iUniqueId), a);
  EXPECT_EQ(list.FindById(12345), nullptr);
}

TEST(ComponentList, RemoveByIdWithLinksOfAParentRemovesAllItsChildren) {
  CComponentList list;
  CComponent* parent = NewComponent(1);
  CComponent* other = NewComponent(1);
  list.Add(NewChild(*parent));
  list.Add(parent);
  list.Add(other);
  list.Add(NewChild(*parent));
  list.Add(NewChild(*other));
  EXPECT_EQ(list.RemoveById(+parent->iUniqueId, 1), 0);
  ASSERT_EQ(list.GetCount(), 2);
  EXPECT_EQ(list.m_aItems[0], other);
  EXPECT_EQ(+list.m_aItems[1]->iLinkId, +other->iUniqueId);
}

TEST(ComponentList, RemoveByIdWithLinksOfAChildTakesTheParentAndLeavesSiblings) {
  CComponentList list;
  CComponent* parent = NewComponent(1);
  CComponent* first = NewChild(*parent);
  CComponent* second = NewChild(*parent);
  list.Add(parent);
  list.Add(first);
  list.Add(second);
  const int32_t before = list.GetModCount();
  EXPECT_EQ(list.RemoveById(+first->iUniqueId, 1), 0);
  EXPECT_EQ(Order(list), (std::vector<const CComponent*>{second}));
  EXPECT_EQ(list.GetModCount(), before + 2);  // one per removal
}

TEST(ComponentList, RemoveByIdWithoutLinksRemovesOnlyTheMatches) {
  CComponentList list;
  CComponent* parent = NewComponent(1);
  CComponent* child = NewChild(*parent);
  CComponent* twin = NewComponent(3);
  twin->iUniqueId = parent->iUniqueId;
  list.Add(parent);
  list.Add(child);
  list.Add(twin);
  EXPECT_EQ(list.RemoveById(+parent->iUniqueId, 0), 0);
  EXPECT_EQ(Order(list), (std::vector<const CComponent*>{child}));
  EXPECT_EQ(list.RemoveById(987654321, 1), 0);  // no match: nothing happens
  EXPECT_EQ(list.GetCount(), 1);
}

TEST(ComponentList, GetMaxIdWordOfAnEmptyListIsZero) {
  CComponentList list;
  EXPECT_EQ(list.GetMaxIdWord(), 0);
}

TEST(ComponentList, GetMaxIdWordKeepsOnlyTheLowWordBetweenSteps) {
  CComponentList list;
  CComponent* a = NewComponent(1);
  CComponent* b = NewComponent(1);
  CComponent* c = NewComponent(1);
  a->iUniqueId = 500;
  b->iUniqueId = 300;
  c->iUniqueId = 700;
  list.Add(a);
  list.Add(b);
  list.Add(c);
  EXPECT_EQ(list.GetMaxIdWord(), 700);
  // An id above 31 bits: its low word is what survives, and a smaller later
  // id still wins because the high half was forgotten.
  b->iUniqueId = (int64_t{5} << 32) | 40;
  c->iUniqueId = 41;
  EXPECT_EQ(list.GetMaxIdWord(), 41);
  c->iUniqueId = 39;
  EXPECT_EQ(list.GetMaxIdWord(), 40);
}

TEST(ComponentList, GetTimeExtentWithNullOutGivesMinusOne) {
  CComponentList list;
  EXPECT_EQ(list.GetTimeExtent(nullptr, 0, 10), -1);
}

TEST(ComponentList, GetTimeExtentWithLowEqualHighGivesTheComponentsAlone) {
  CComponentList list;
  list.Add(NewComponent(1, 500.9, 900.2));
  list.Add(NewComponent(1, 200.7, 700.0));
  list.Add(NewComponent(1, 300.0, 1200.6));
  int64_t extent[2] = {-1, -1};
  EXPECT_EQ(list.GetTimeExtent(extent, 5000, 5000), 0);
  EXPECT_EQ(extent[0], 200);
  EXPECT_EQ(extent[1], 1200);
}

TEST(ComponentList, GetTimeExtentWidensToLowAndHigh) {
  CComponentList list;
  list.Add(NewComponent(1, 200.0, 700.0));
  int64_t extent[2] = {};
  EXPECT_EQ(list.GetTimeExtent(extent, 100, 600), 0);
  EXPECT_EQ(extent[0], 100);
  EXPECT_EQ(extent[1], 700);
  EXPECT_EQ(list.GetTimeExtent(extent, 300, 900), 0);
  EXPECT_EQ(extent[0], 200);
  EXPECT_EQ(extent[1], 900);
}

TEST(ComponentList, GetTimeExtentOfAnEmptyListKeepsOrWidensTheCallersPair) {
  CComponentList list;
  int64_t extent[2] = {42, 43};
  EXPECT_EQ(list.GetTimeExtent(extent, 7, 7), 0);
  EXPECT_EQ(extent[0], 42);
  EXPECT_EQ(extent[1], 43);
  EXPECT_EQ(list.GetTimeExtent(extent, 10, 50), 0);
  EXPECT_EQ(extent[0], 10);
  EXPECT_EQ(extent[1], 50);
}

TEST(ComponentList, LayOutLinesWithBase1000PutsLaneZeroEndToEnd) {
  CComponentList list;
  CComponent* first = NewComponent(1, 0.0, 400.0);
  CComponent* second = NewComponent(1, 0.0, 600.0);
  list.Add(first);
  list.Add(second);
  const int32_t before = list.GetModCount();
  EXPECT_EQ(list.LayOutLines(1000), 0);
  EXPECT_DOUBLE_EQ(+first->dStart, 1000.0);
  EXPECT_DOUBLE_EQ(+first->dEnd, 1400.0);
  EXPECT_DOUBLE_EQ(+second->dStart, 1400.0);
  EXPECT_DOUBLE_EQ(+second->dEnd, 2000.0);
  EXPECT_EQ(list.GetModCount(), before);
}

TEST(ComponentList, LayOutLinesPutsAudioLinesAfterPictureLines) {
  CComponentList list;
  CComponent* picture0 = NewComponent(1, 0.0, 100.0);
  CComponent* effect = NewComponent(3, 0.0, 50.0);
  effect->iLine = 2;
  CComponent* audio = NewComponent(2, 0.0, 300.0);
  audio->iChannelIndex = 1;
  audio->iLine = 0;
  CComponent* other = NewComponent(6, 0.0, 70.0);  // no picture line
  other->iLine = 9;
  list.Add(picture0);
  list.Add(effect);
  list.Add(audio);
  list.Add(other);
  EXPECT_EQ(list.LayOutLines(0), 0);
  EXPECT_EQ(audio->iLine, 4);  // three picture lines, then channel 1
  EXPECT_DOUBLE_EQ(+audio->dStart, 0.0);
  EXPECT_DOUBLE_EQ(+effect->dStart, 0.0);
  EXPECT_EQ(other->iLine, 9);
}

TEST(ComponentList, LayOutLinesLeavesComponentsOnLine27AndAbove) {
  CComponentList list;
  CComponent* high = NewComponent(6, 10.0, 20.0);
  high->iLine = 27;
  CComponent* negative = NewComponent(6, 10.0, 20.0);
  negative->iLine = -1;
  CComponent* last = NewComponent(6, 10.0, 20.0);
  last->iLine = 26;
  list.Add(high);
  list.Add(negative);
  list.Add(last);
  EXPECT_EQ(list.LayOutLines(500), 0);
  EXPECT_DOUBLE_EQ(+high->dStart, 10.0);
  EXPECT_DOUBLE_EQ(+negative->dStart, 10.0);
  EXPECT_DOUBLE_EQ(+last->dStart, 510.0);
  EXPECT_DOUBLE_EQ(+last->dEnd, 520.0);
}

TEST(ComponentList, LayOutLinesTruncatesThePositionOfTheNextComponent) {
  CComponentList list;
  CComponent* first = NewComponent(1, 0.0, 100.7);
  CComponent* second = NewComponent(1, 0.0, 10.0);
  list.Add(first);
  list.Add(second);
  list.LayOutLines(0);
  EXPECT_DOUBLE_EQ(+second->dStart, 100.0);
}

TEST(ComponentList, ReservedOpDoesNothing) {
  CComponentList list;
  CComponent* a = NewComponent(1, 5.0, 6.0);
  list.Add(a);
  const int32_t before = list.GetModCount();
  EXPECT_EQ(list.ReservedOp(1, 2), 0);
  EXPECT_EQ(list.GetCount(), 1);
  EXPECT_EQ(list.GetModCount(), before);
  EXPECT_DOUBLE_EQ(+a->dStart, 5.0);
}

TEST(ComponentList, SaveAndLoadRoundTripTheComponents) {
  CComponentList list;
  list.Add(NewComponent(1, 100.0, 200.0));
  list.Add(NewComponent(2, 300.0, 450.0));
  FILE* stream = std::tmpfile();
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(list.Save(stream), 0);
  std::rewind(stream);
  CComponentList loaded;
  EXPECT_EQ(loaded.Load(stream, 2), 0);
  std::fclose(stream);
  ASSERT_EQ(loaded.GetCount(), 2);
  EXPECT_EQ(Ids(loaded), Ids(list));
  EXPECT_DOUBLE_EQ(loaded.m_aItems[1]->dEnd, 450.0);
  EXPECT_EQ(+loaded.m_aItems[1]->iKind, 2);
}

TEST(ComponentList, FourMebibytesOfRefusedRecordsKeepMemoryFlat) {
  // Size words the 1001-byte record refuses: four bytes of input each.
  std::vector<uint8_t> bytes;
  bytes.reserve(4u << 20);
  while (bytes.size() < (4u << 20)) Put(bytes, int32_t{1002});
  FILE* stream = StreamWith(bytes);
  CComponentList list;
  const long before = ResidentKiB();
  EXPECT_EQ(list.Load(stream, static_cast<int32_t>(bytes.size() / 4)), 0);
  const long grown = ResidentKiB() - before;
  // One run of refused reads, then the load ends as an exception would end it.
  EXPECT_EQ(list.GetCount(), CComponentList::kMaxFailedReads);
  EXPECT_EQ(list.GetModCount(), 2);
  EXPECT_EQ(+list.GetAt(0)->iKind, +CComponent().iKind);  // a refused record: defaults
  RecordProperty("resident_growth_kib", std::to_string(grown));
  std::fclose(stream);
}
