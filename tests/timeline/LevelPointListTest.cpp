#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "TimelineTestUtil.h"
#include "timeline/LevelPointList.h"

using ::testing::ElementsAre;

namespace {

TEST(LevelPointData, DefaultsAreZero) {
  CLevelPoint p;
  EXPECT_EQ(+p.iTime, 0);
  EXPECT_EQ(+p.iPointTag, 0);
  EXPECT_EQ(+p.fValue, 0.0f);
  EXPECT_EQ(p.cRole, 0);
  EXPECT_EQ(p.cFade, 0);
  EXPECT_EQ(p.cFadeKeep, 0);
  EXPECT_EQ(p.cRuntime, 0);
}

TEST(LevelPoint, CloneCopiesRecordAndRuntimeByte) {
  CLevelPoint p(kRoleEnd, 77, 3.5f);
  p.cFade = kFadeOut;
  p.aReserved[5] = 9;
  p.cRuntime = 4;
  CLevelPoint* c = p.Clone();
  EXPECT_EQ(std::memcmp(static_cast<CLevelPointData*>(c), static_cast<CLevelPointData*>(&p),
                        sizeof(CLevelPointData)),
            0);
  EXPECT_EQ(c->cRuntime, 4);
  delete c;
}

TEST(LevelInsertSorted, EqualTimeGoesInFrontOfExisting) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 500, 2}, {kRoleEnd, 1000, 3}});
  auto* p = new CLevelPoint(kRoleInner, 500, 9);
  EXPECT_EQ(list.InsertSorted(p), 1);
  EXPECT_EQ(list.GetAt(1), p);
  EXPECT_EQ(+list.GetAt(2)->fValue, 2.0f);
}

TEST(LevelInsertSorted, TimeBeyondEndPointStillGoesInFrontOfIt) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleEnd, 1000, 3}});
  const int32_t before = list.GetModCount();
  auto* p = new CLevelPoint(kRoleInner, 5000, 9);
  EXPECT_EQ(list.InsertSorted(p), 1);
  EXPECT_THAT(Times(list), ElementsAre(0, 5000, 1000));
  EXPECT_EQ(list.GetAt(2)->cRole, kRoleEnd);
  EXPECT_EQ(list.GetModCount(), before + 1);
}

TEST(LevelInsertSorted, EmptyListRefusesAndStaysEmpty) {
  CLevelPointList list;
  CLevelPoint p(kRoleInner, 10, 1);  // not taken, so it stays ours
  EXPECT_EQ(list.InsertSorted(&p), -1);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.GetModCount(), 0);
}

TEST(LevelInsertSorted, CurveWithoutEndPointLosesLatePoint) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 100, 1}});
  CLevelPoint p(kRoleInner, 200, 1);
  EXPECT_EQ(list.InsertSorted(&p), -1);
  EXPECT_EQ(list.GetCount(), 2);
}

TEST(LevelSetValueAt, ExistingTimeStoresWithoutNewPoint) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 400, 2}, {kRoleEnd, 1000, 3}});
  EXPECT_FALSE(list.SetValueAt(400, 7.0f));
  EXPECT_EQ(list.GetCount(), 3);
  EXPECT_EQ(+list.GetAt(1)->fValue, 7.0f);
}

TEST(LevelSetValueAt, NewTimeInsertsInnerPoint) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleEnd, 1000, 3}});
  EXPECT_TRUE(list.SetValueAt(300, 5.0f));
  ASSERT_EQ(list.GetCount(), 3);
  EXPECT_EQ(+list.GetAt(1)->iTime, 300);
  EXPECT_EQ(+list.GetAt(1)->fValue, 5.0f);
  EXPECT_EQ(list.GetAt(1)->cRole, kRoleInner);
}

TEST(LevelRemovePointAt, StartPointNeedsPermission) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleEnd, 1000, 3}});
  EXPECT_FALSE(list.RemovePointAt(0, 0));
  EXPECT_EQ(list.GetCount(), 2);
  CLevelPoint* start = list.GetAt(0);
  EXPECT_TRUE(list.RemovePointAt(0, 1));
  EXPECT_EQ(list.GetCount(), 1);
  // Dropped, not deleted: the point is the caller's now, and the list forgets it.
  EXPECT_EQ(start->cRole, kRoleStart);
  EXPECT_EQ(list.GetDroppedCount(), 0);
  delete start;
}

// The three ordinary edits below each crashed (a double delete or a read of
// freed memory) while the curve kept the points RemovePointAt handed out.
TEST(LevelRemovePointAt, TheCallerMayDeleteTheDroppedPoint) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 100, 2}, {kRoleEnd, 1000, 3}});
  CLevelPoint* point = list.FindAt(100);
  ASSERT_TRUE(list.RemovePointAt(100, 0));
  delete point;
  EXPECT_EQ(list.GetDroppedCount(), 0);
  EXPECT_THAT(Times(list), ElementsAre(0, 1000));
}

TEST(LevelRemovePointAt, APointMovedToAnotherCurveOutlivesTheFirst) {
  auto first = std::make_unique<CLevelPointList>();
  Fill(*first, {{kRoleStart, 0, 1}, {kRoleInner, 100, 2}, {kRoleEnd, 1000, 3}});
  CLevelPointList second;
  Fill(second, {{kRoleStart, 0, 5}, {kRoleEnd, 1000, 6}});
  CLevelPoint* point = first->FindAt(100);
  ASSERT_TRUE(first->RemovePointAt(100, 0));
  EXPECT_EQ(second.InsertSorted(point), 1);
  first.reset();
  EXPECT_EQ(+second.GetAt(1)->fValue, 2.0f);  // still the second curve's, still alive
  EXPECT_EQ(second.Evaluate(100), 2.0f);
}

TEST(LevelRemovePointAt, APointPutBackWithInsertAtIsDeletedOnceByRemoveAt) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 100, 2}, {kRoleEnd, 1000, 3}});
  CLevelPoint* point = list.FindAt(100);
  ASSERT_TRUE(list.RemovePointAt(100, 0));
  list.InsertAt(1, point);
  EXPECT_EQ(list.GetAt(1), point);
  EXPECT_TRUE(list.RemoveAt(1));  // deletes it; the list's end must not again
  EXPECT_EQ(list.GetDroppedCount(), 0);
  EXPECT_THAT(Times(list), ElementsAre(0, 1000));
}

TEST(LevelRemovePointAt, PassesOverEndPointToInnerPointAtSameTime) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleEnd, 500, 2}, {kRoleInner, 500, 3}});
  CLevelPoint* inner = list.GetAt(2);
  EXPECT_TRUE(list.RemovePointAt(500, 0));
  ASSERT_EQ(list.GetCount(), 2);
  EXPECT_EQ(list.GetAt(1)->cRole, kRoleEnd);
  delete inner;  // the dropped point is ours
}

TEST(LevelRemovePointAt, ADroppedPointPutBackBelongsToTheListAgain) {
  // Moving a point: drop it, change its time, insert it again. The curve
  // alone frees it, also after a later Clear and after a second drop.
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 100, 2}, {kRoleEnd, 1000, 3}});
  CLevelPoint* moved = list.FindAt(100);
  ASSERT_TRUE(list.RemovePointAt(100, 0));
  moved->iTime = 600;
  EXPECT_EQ(list.InsertSorted(moved), 1);
  EXPECT_EQ(list.GetDroppedCount(), 0);
  EXPECT_THAT(Times(list), ElementsAre(0, 600, 1000));
  ASSERT_TRUE(list.RemovePointAt(600, 0));
  list.Add(moved);  // back in through the plain append
  ASSERT_TRUE(list.RemovePointAt(600, 0));
  list.Add(moved);
  EXPECT_EQ(list.GetDroppedCount(), 0);
  ASSERT_TRUE(list.RemovePointAt(600, 0));
  list.Add(moved);
  list.Clear();  // deletes the point, which is no longer a dropped one

  CLevelPointList cleared;
  Fill(cleared, {{kRoleStart, 0, 1}, {kRoleInner, 100, 2}, {kRoleEnd, 1000, 3}});
  CLevelPoint* point = cleared.FindAt(100);
  ASSERT_TRUE(cleared.RemovePointAt(100, 0));
  EXPECT_EQ(cleared.InsertSorted(point), 1);
  cleared.Clear();  // deletes the point; the list must not delete it again
  EXPECT_EQ(cleared.GetCount(), 0);
}

TEST(LevelRemoveInnerPoints, KeepsStartAndEndAndAnswersFalse) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 10, 2}, {kRoleInner, 20, 2}, {kRoleEnd, 30, 3}});
  EXPECT_FALSE(list.RemoveInnerPoints());
  EXPECT_THAT(Times(list), ElementsAre(0, 30));
  EXPECT_EQ(list.GetDroppedCount(), 2);
}

TEST(LevelRemoveInnerPoints, AKeptPointPutBackWithInsertAtLeavesTheKeptOnes) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 10, 2}, {kRoleEnd, 30, 3}});
  CLevelPoint* inner = list.FindAt(10);
  list.RemoveInnerPoints();
  ASSERT_EQ(list.GetDroppedCount(), 1);
  list.InsertAt(1, inner);
  EXPECT_EQ(list.GetDroppedCount(), 0);
  EXPECT_TRUE(list.RemoveAt(1));  // deleted here, and only here
}

TEST(LevelRemoveInnerPoints, KeptPointsAreBoundedAndTheOldestGoFirst) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleEnd, 1000000, 3}});
  CLevelPoint* latest = nullptr;
  for (int64_t t = 1; t <= 1000; ++t) {
    list.SetValueAt(t, 2.0f);
    latest = list.FindAt(t);
    list.RemoveInnerPoints();
  }
  EXPECT_EQ(list.GetDroppedCount(), CLevelPointList::kMaxKeptDropped);
  EXPECT_EQ(+latest->iTime, 1000);  // the most recent are still readable
  EXPECT_THAT(Times(list), ElementsAre(0, 1000000));
}

TEST(LevelLookups, GetValueExact) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleEnd, 30, 3}});
  float v = -1;
  EXPECT_TRUE(list.GetValueExact(30, &v));
  EXPECT_EQ(v, 3.0f);
  v = -1;
  EXPECT_FALSE(list.GetValueExact(31, &v));
  EXPECT_EQ(v, -1.0f);
  EXPECT_EQ(list.FindAt(0), list.GetAt(0));
  EXPECT_EQ(list.FindAt(5), nullptr);
}

TEST(LevelLookups, NextAndPrevPoint) {
  CLevelPointList list;
  int64_t t = -1;
  float v = -1;
  list.GetNextPoint(42, &t, &v);
  EXPECT_EQ(t, 42);
  EXPECT_EQ(v, 0.0f);
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 100, 2}, {kRoleEnd, 200, 3}});
  list.GetNextPoint(100, &t, &v);
  EXPECT_EQ(t, 200);
  EXPECT_EQ(v, 3.0f);
  list.GetNextPoint(500, &t, &v);  // past the end: the last point
  EXPECT_EQ(t, 200);
  list.GetPrevPoint(100, &t, &v);
  EXPECT_EQ(t, 0);
  EXPECT_EQ(v, 1.0f);
  list.GetPrevPoint(0, &t, &v);  // nothing before: the argument and 0
  EXPECT_EQ(t, 0);
  EXPECT_EQ(v, 0.0f);
  EXPECT_EQ(list.GetNextPoint(1, nullptr, nullptr), 0);
}

TEST(LevelLookups, NextIndexPastLastGivesZeroWithLastValue) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 100, 2}, {kRoleEnd, 200, 3}});
  int32_t index = -1;
  float v = -1;
  list.GetNextIndex(500, &index, &v);
  EXPECT_EQ(index, 0);
  EXPECT_EQ(v, 3.0f);
  list.GetNextIndex(50, &index, &v);
  EXPECT_EQ(index, 1);
  EXPECT_EQ(v, 2.0f);
}

TEST(LevelLookups, PrevIndex) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 1}, {kRoleInner, 100, 2}, {kRoleEnd, 200, 3}});
  int32_t index = -1;
  float v = -1;
  list.GetPrevIndex(150, &index, &v);
  EXPECT_EQ(index, 1);
  EXPECT_EQ(v, 2.0f);
  list.GetPrevIndex(0, &index, &v);  // i - 1 = -1, clamped to 0, no point before
  EXPECT_EQ(index, 0);
  EXPECT_EQ(v, 0.0f);
  list.GetPrevIndex(900, &index, &v);
  EXPECT_EQ(index, 0);
  EXPECT_EQ(v, 3.0f);
}

}  // namespace
