#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "timeline/MarkerPointList.h"

namespace {

void FillMarkers(CMarkerPointList& list, std::initializer_list<std::pair<int64_t, int32_t>> marks) {
  for (const auto& [time, id] : marks) list.Add(new CMarkerPoint(time, id));
}

TEST(MarkerInsertSorted, EmptyListAppendsAndAnswersMinusOne) {
  CMarkerPointList list;
  auto* m = new CMarkerPoint(100, 1);
  EXPECT_EQ(list.InsertSorted(m), -1);
  ASSERT_EQ(list.GetCount(), 1);
  EXPECT_EQ(list.GetAt(0), m);
  EXPECT_EQ(list.GetModCount(), 0);  // the append leaves the counter
}

TEST(MarkerInsertSorted, EqualTimeGoesInFront) {
  CMarkerPointList list;
  FillMarkers(list, {{100, 1}, {200, 2}});
  const int32_t before = list.GetModCount();
  auto* m = new CMarkerPoint(200, 3);
  EXPECT_EQ(list.InsertSorted(m), 1);
  EXPECT_EQ(list.GetAt(1), m);
  EXPECT_EQ(list.GetModCount(), before + 1);
}

TEST(MarkerLookups, HasTime) {
  CMarkerPointList list;
  FillMarkers(list, {{100, 1}, {200, 2}});
  EXPECT_TRUE(list.HasTime(200));
  EXPECT_FALSE(list.HasTime(150));
}

TEST(MarkerLookups, NextTimePastLastIsLastMarker) {
  CMarkerPointList list;
  int64_t t = -1;
  list.GetNextTime(5, &t);
  EXPECT_EQ(t, 5);  // empty: the argument
  FillMarkers(list, {{100, 1}, {200, 2}});
  list.GetNextTime(5000, &t);
  EXPECT_EQ(t, 200);
  list.GetNextTime(100, &t);
  EXPECT_EQ(t, 200);
}

TEST(MarkerLookups, PrevTime) {
  CMarkerPointList list;
  FillMarkers(list, {{100, 1}, {200, 2}});
  int64_t t = -1;
  list.GetPrevTime(200, &t);
  EXPECT_EQ(t, 100);
  list.GetPrevTime(100, &t);
  EXPECT_EQ(t, 100);  // none before: the argument
  list.GetPrevTime(50, &t);
  EXPECT_EQ(t, 50);
}

TEST(MarkerLookups, FindByFrameUsesFramesAtDefaultRate) {
  CMarkerPointList list;
  FillMarkers(list, {{1000, 7}});
  ASSERT_NE(list.FindByFrame(1010), nullptr);  // both frame 25 at 25 fps
  EXPECT_EQ(+list.FindByFrame(1010)->iMarkerId, 7);
  EXPECT_EQ(list.FindByFrame(1040), nullptr);  // frame 26
}

TEST(MarkerLookups, FindAndRemoveById) {
  CMarkerPointList list;
  FillMarkers(list, {{100, 4}, {200, 5}, {300, 4}});
  EXPECT_EQ(list.FindById(4), list.GetAt(0));
  EXPECT_EQ(list.FindById(9), nullptr);
  EXPECT_TRUE(list.RemoveById(4));
  ASSERT_EQ(list.GetCount(), 2);
  EXPECT_EQ(+list.GetAt(0)->iTime, 200);
  EXPECT_FALSE(list.RemoveById(9));
}

TEST(MarkerLookups, MaxIdOfEmptyListIsZero) {
  CMarkerPointList list;
  EXPECT_EQ(list.GetMaxId(), 0);
  FillMarkers(list, {{100, -4}, {200, -5}});
  EXPECT_EQ(list.GetMaxId(), 0);
  FillMarkers(list, {{300, 12}, {400, 3}});
  EXPECT_EQ(list.GetMaxId(), 12);
}

TEST(MarkerScaling, ScaleTimesRoundsWithItsOwnConstant) {
  CMarkerPointList list;
  FillMarkers(list, {{1000, 1}, {1001, 2}});
  EXPECT_EQ(list.ScaleTimes(3, 1), -1);
  EXPECT_EQ(+list.GetAt(0)->iTime, 333);
  EXPECT_EQ(+list.GetAt(1)->iTime, 334);
  EXPECT_EQ(list.ScaleTimes(0, 5), -1);  // refused: unchanged
  EXPECT_EQ(+list.GetAt(0)->iTime, 333);
}

TEST(MarkerScaling, FitToLengthNeverMovesMarkers) {
  CMarkerPointList list;
  FillMarkers(list, {{1000, 1}, {3000, 2}});
  EXPECT_EQ(list.FitToLength(500), -1);
  EXPECT_EQ(+list.GetAt(0)->iTime, 1000);
  EXPECT_EQ(+list.GetAt(1)->iTime, 3000);
}

TEST(MarkerPoint, CloneCopiesRecordAndRuntimeByte) {
  CMarkerPoint m(55, 3);
  m.aMarkerText[0] = 'x';
  m.cRuntime = 2;
  CMarkerPoint* c = m.Clone();
  EXPECT_EQ(+c->iTime, 55);
  EXPECT_EQ(+c->iMarkerId, 3);
  EXPECT_EQ(c->aMarkerText[0], 'x');
  EXPECT_EQ(c->cRuntime, 2);
  delete c;
}

}  // namespace
