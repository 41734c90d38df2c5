#include <gtest/gtest.h>

#include "core/PointerArray.h"

namespace {
int g_aSlots[8];
int* Slot(int i) {
  return &g_aSlots[i];
}
}  // namespace

TEST(PointerArray, GrowsByAnEighthAtLeastFourAtMostThousandTwentyFour) {
  CPointerArray<int> a;
  EXPECT_EQ(a.GetCapacity(), 0);
  a.Add(nullptr);
  EXPECT_EQ(a.GetCapacity(), 4);
  for (int i = 1; i < 5; ++i) a.Add(nullptr);
  EXPECT_EQ(a.GetCapacity(), 8);
  while (a.GetSize() < 80) a.Add(nullptr);
  const int32_t before = a.GetCapacity();
  while (a.GetSize() < before) a.Add(nullptr);
  a.Add(nullptr);  // one past: grows by size / 8
  EXPECT_EQ(a.GetCapacity(), before + before / 8);

  CPointerArray<int> big;
  big.SetSize(20000);
  EXPECT_EQ(big.GetCapacity(), 20000);
  big.Add(nullptr);
  EXPECT_EQ(big.GetCapacity(), 20000 + 1024);
}

TEST(PointerArray, ResizeToZeroFreesAndNewSlotsAreNull) {
  CPointerArray<int> a;
  a.Add(Slot(0));
  a.Add(Slot(1));
  a.SetSize(0);
  EXPECT_EQ(a.GetSize(), 0);
  EXPECT_EQ(a.GetCapacity(), 0);
  a.SetSize(3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(a.GetAt(i), nullptr);
  a.SetAt(2, Slot(2));
  a.SetSize(1);
  a.SetSize(3);  // slots that come back are zero again
  EXPECT_EQ(a.GetAt(2), nullptr);
}

TEST(PointerArray, ReadOutsideTheBoundsThrows) {
  CPointerArray<int> a;
  EXPECT_THROW(a.GetAt(0), std::out_of_range);
  a.Add(Slot(0));
  EXPECT_THROW(a.GetAt(1), std::out_of_range);
  EXPECT_THROW(a.GetAt(-1), std::out_of_range);
  EXPECT_THROW(a.RemoveAt(1), std::out_of_range);
  EXPECT_THROW(a.InsertAt(-1, nullptr), std::out_of_range);
  EXPECT_THROW(a.SetSize(-1), std::out_of_range);
  EXPECT_EQ(a.GetAt(0), Slot(0));
}

TEST(PointerArray, InsertAndRemoveMoveTheTail) {
  CPointerArray<int> a;
  a.Add(Slot(0));
  a.Add(Slot(2));
  a.InsertAt(1, Slot(1));
  ASSERT_EQ(a.GetSize(), 3);
  EXPECT_EQ(a.GetAt(0), Slot(0));
  EXPECT_EQ(a.GetAt(1), Slot(1));
  EXPECT_EQ(a.GetAt(2), Slot(2));
  a.RemoveAt(0);
  ASSERT_EQ(a.GetSize(), 2);
  EXPECT_EQ(a.GetAt(0), Slot(1));
  EXPECT_EQ(a.GetAt(1), Slot(2));
  a.InsertAt(4, Slot(4));  // past the end: the gap is null
  ASSERT_EQ(a.GetSize(), 5);
  EXPECT_EQ(a.GetAt(2), nullptr);
  EXPECT_EQ(a.GetAt(3), nullptr);
  EXPECT_EQ(a.GetAt(4), Slot(4));
}
