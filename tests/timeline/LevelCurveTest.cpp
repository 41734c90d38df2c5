#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TimelineTestUtil.h"
#include "timeline/LevelPointList.h"
#include "timeline/SegmentValue.h"

using ::testing::ElementsAre;

namespace {

TEST(SegmentValue, RiseFallsShortOfHighPoint) {
  EXPECT_FLOAT_EQ(SegmentValue(500, 0, 0.0f, 1000, 100.0f, false), 49.751858f);
  EXPECT_FLOAT_EQ(SegmentValue(999, 0, 0.0f, 1000, 100.0f, false), 99.404213f);
  EXPECT_FLOAT_EQ(SegmentValue(50, 0, 0.0f, 100, 100.0f, false), 35.355339f);
  EXPECT_FLOAT_EQ(SegmentValue(99, 0, 0.0f, 100, 100.0f, false), 70.00357f);
}

TEST(SegmentValue, RateNeverExceedsOneUnitPerMillisecond) {
  EXPECT_FLOAT_EQ(SegmentValue(5, 0, 0.0f, 10, 100.0f, false), 4.975186f);
}

TEST(SegmentValue, EqualValuesAndEqualTimes) {
  EXPECT_EQ(SegmentValue(5, 0, 7.0f, 10, 7.0f, false), 7.0f);
  EXPECT_EQ(SegmentValue(5, 10, 2.0f, 10, 6.0f, false), 4.0f);
}

TEST(Evaluate, EmptyBeforeFirstAfterLast) {
  CLevelPointList list;
  EXPECT_EQ(list.Evaluate(100), 0.0f);
  Fill(list, {{kRoleStart, 100, 30}, {kRoleEnd, 200, 60}});
  EXPECT_EQ(list.Evaluate(50), 30.0f);
  EXPECT_EQ(list.Evaluate(500), 60.0f);
  EXPECT_EQ(list.Evaluate(200), 60.0f);  // at the high point: its stored value
}

TEST(Evaluate, RiseBetweenEightyAndHundred) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 80}, {kRoleEnd, 2000, 100}});
  EXPECT_FLOAT_EQ(list.Evaluate(1000), 89.99949646f);
  EXPECT_NE(list.Evaluate(1000), 90.0f);
}

TEST(Evaluate, FallFromHundredToZero) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 100}, {kRoleEnd, 1000, 0}});
  EXPECT_FLOAT_EQ(list.Evaluate(500), 49.75185776f);
  EXPECT_FLOAT_EQ(list.Evaluate(1), 99.40421295f);
}

TEST(EvaluateAndPlace, DifferenceBelowOneIsFlatAtLowerValue) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 0.5f}, {kRoleEnd, 1000, 1.25f}});
  EXPECT_EQ(list.EvaluateAndPlace(500, 0, 1000), 0.5f);
  EXPECT_EQ(list.EvaluateAndPlace(999, 0, 1000), 0.5f);
  // Evaluate keeps the fractional difference.
  EXPECT_GT(list.Evaluate(999), 0.5f);
}

TEST(EvaluateAndPlace, WritesStartAndEndTimes) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 0}, {kRoleInner, 500, 100}, {kRoleEnd, 1000, 100}});
  // The walk stops at the first point after the time: the end point isn't reached.
  list.EvaluateAndPlace(50, 20, 3000);
  EXPECT_THAT(Times(list), ElementsAre(20, 500, 1000));
  list.EvaluateAndPlace(5000, 20, 3000);
  EXPECT_THAT(Times(list), ElementsAre(20, 500, 3000));
  // End 0 is not written but counts in the walk.
  EXPECT_EQ(list.EvaluateAndPlace(5000, 20, 0), 100.0f);
  EXPECT_EQ(+list.GetAt(2)->iTime, 3000);
}

TEST(EvaluateAndPlace, BeforeFirstRunsFromZeroAtQueryTime) {
  CLevelPointList list;
  Fill(list, {{kRoleInner, 100, 50}, {kRoleEnd, 200, 50}});
  // Left is (t, 0.0): a rise from 0 anchored at t itself gives 0.
  EXPECT_EQ(list.EvaluateAndPlace(50, 0, 200), 0.0f);
  // After the last point both ends are the last point.
  EXPECT_EQ(list.EvaluateAndPlace(900, 0, 200), 50.0f);
}

TEST(EvaluatePlaced, ComparesWithoutWritingAndHonoursEndZero) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 100, 0}, {kRoleEnd, 1000, 100}});
  const float v = list.EvaluatePlaced(500, 12345, 0, 1000);
  EXPECT_EQ(v, SegmentValue(500, 0, 0.0f, 1000, 100.0f, true));
  EXPECT_THAT(Times(list), ElementsAre(100, 1000));
  // End 0: the end point counts at 0, so 500 lies after the whole curve.
  EXPECT_EQ(list.EvaluatePlaced(500, 0, 0, 0), 100.0f);
}

TEST(AdjustSegment, BeyondLastPointMovesItTwiceClamped) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 10}, {kRoleEnd, 1000, 20}});
  // delta = 50 - 20 = 30, applied twice to the end point.
  EXPECT_EQ(list.AdjustSegment(2000, 50, 0, 1000, 100, 0), 0);
  EXPECT_EQ(+list.GetAt(1)->fValue, 80.0f);
  EXPECT_EQ(+list.GetAt(0)->fValue, 10.0f);
  CLevelPointList clamped;
  Fill(clamped, {{kRoleStart, 0, 10}, {kRoleEnd, 1000, 20}});
  clamped.AdjustSegment(2000, 50, 0, 1000, 60, 0);  // 50 after one step, 80 -> 60 after two
  EXPECT_EQ(+clamped.GetAt(1)->fValue, 60.0f);
}

TEST(AdjustSegment, ShiftsBothNeighboursOrSetsExactPoint) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 0}, {kRoleEnd, 1000, 100}});
  const float before = SegmentValue(500, 0, 0.0f, 1000, 100.0f, true);
  const float delta = static_cast<float>(60.0 - before);
  list.AdjustSegment(500, 60, 0, 1000, 100, 0);
  EXPECT_EQ(+list.GetAt(0)->fValue, static_cast<float>(0.0 + delta));
  EXPECT_EQ(+list.GetAt(1)->fValue, 100.0f);  // clamped to max
  list.AdjustSegment(1000, 42, 0, 1000, 100, 0);
  EXPECT_EQ(+list.GetAt(1)->fValue, 42.0f);
}

TEST(SetEndTimes, MovesStartAndEndOnly) {
  CLevelPointList list;
  EXPECT_EQ(list.SetEndTimes(1, 2), -1);
  Fill(list, {{kRoleStart, 0, 0}, {kRoleInner, 50, 1}, {kRoleEnd, 100, 2}});
  EXPECT_EQ(list.SetEndTimes(10, 900), 0);
  EXPECT_THAT(Times(list), ElementsAre(10, 50, 900));
}

class FadeTest : public ::testing::Test {
 protected:
  void SetUp() override { Fill(list, {{kRoleStart, 0, 100}, {kRoleEnd, 1000, 100}}); }
  CLevelPointList list;
};

TEST_F(FadeTest, FadeInThatDoesNotFitChangesNothing) {
  EXPECT_EQ(list.SetFadeIn(1000, 0, 0, 0), -1);
  EXPECT_EQ(list.SetFadeIn(800, 300, 0, 0), -1);
  EXPECT_THAT(Times(list), ElementsAre(0, 1000));
  EXPECT_THAT(Values(list), ElementsAre(100.0f, 100.0f));
  CLevelPointList empty;
  EXPECT_EQ(empty.SetFadeIn(10, 0, 0, 0), -1);
}

TEST_F(FadeTest, FadeInWithoutOffsetAddsOnePoint) {
  EXPECT_EQ(list.SetFadeIn(200, 0, 0, 0), 0);
  EXPECT_THAT(Times(list), ElementsAre(0, 200, 1000));
  EXPECT_THAT(Values(list), ElementsAre(0.0f, 100.0f, 100.0f));
  EXPECT_EQ(list.GetAt(1)->cFade, kFadeIn);
}

TEST_F(FadeTest, FadeInWithOffsetAddsTwoAndClearGivesPeakBack) {
  EXPECT_EQ(list.SetFadeIn(200, 100, 0, 5), 0);
  EXPECT_THAT(Times(list), ElementsAre(0, 100, 300, 1000));
  EXPECT_THAT(Values(list), ElementsAre(5.0f, 5.0f, 100.0f, 100.0f));
  EXPECT_EQ(list.ClearFades(nullptr), 0);
  EXPECT_THAT(Times(list), ElementsAre(0, 1000));
  EXPECT_EQ(+list.GetAt(0)->fValue, 100.0f);
}

TEST_F(FadeTest, FadeOutMirrorsTowardsTheEnd) {
  EXPECT_EQ(list.SetFadeOut(200, 100, 0, 0), 0);
  EXPECT_THAT(Times(list), ElementsAre(0, 700, 900, 1000));
  EXPECT_THAT(Values(list), ElementsAre(100.0f, 100.0f, 0.0f, 0.0f));
  EXPECT_EQ(list.GetAt(1)->cFade, kFadeOut);
  EXPECT_EQ(list.ClearFades(nullptr), 0);
  EXPECT_THAT(Values(list), ElementsAre(100.0f, 100.0f));
  EXPECT_EQ(list.SetFadeOut(1000, 0, 0, 0), -1);
}

TEST_F(FadeTest, KeptFadePointSurvivesClearFades) {
  list.SetFadeIn(200, 0, 1, 0);
  EXPECT_EQ(list.ClearFades(nullptr), 0);
  EXPECT_THAT(Times(list), ElementsAre(0, 200, 1000));
  EXPECT_EQ(+list.GetAt(0)->fValue, 0.0f);  // no clearable fade: start keeps its value
}

TEST_F(FadeTest, ClearFadesHonoursRange) {
  list.SetFadeIn(200, 100, 0, 0);
  const int64_t range[2] = {250, 400};
  EXPECT_EQ(list.ClearFades(range), 0);
  EXPECT_THAT(Times(list), ElementsAre(0, 100, 1000));
  CLevelPointList empty;
  EXPECT_EQ(empty.ClearFades(nullptr), -1);
}

TEST(ScaleTimes, DoubleAndThirdWithOwnRounding) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 0}, {kRoleInner, 1000, 0}, {kRoleEnd, 5000, 0}});
  EXPECT_EQ(list.ScaleTimes(1, 2), -1);
  EXPECT_THAT(Times(list), ElementsAre(0, 2000, 2));  // the end point takes the new length
  CLevelPointList third;
  Fill(third, {{kRoleInner, 1000, 0}, {kRoleInner, 1001, 0}, {kRoleEnd, 3000, 0}});
  EXPECT_EQ(third.ScaleTimes(3000, 1000), -1);
  EXPECT_THAT(Times(third), ElementsAre(333, 334, 1000));
  EXPECT_EQ(third.ScaleTimes(0, 10), -1);
  EXPECT_THAT(Times(third), ElementsAre(333, 334, 1000));
}

TEST(FitToLength, EndPointLandsOnNewLength) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 0}, {kRoleInner, 500, 0}, {kRoleEnd, 1000, 0}});
  EXPECT_EQ(list.FitToLength(3001), -1);
  EXPECT_THAT(Times(list), ElementsAre(0, 1500, 3001));
  CLevelPointList flat;
  Fill(flat, {{kRoleStart, 0, 0}, {kRoleEnd, 0, 0}});
  EXPECT_EQ(flat.FitToLength(3000), -1);  // no length between the ends: unchanged
  EXPECT_THAT(Times(flat), ElementsAre(0, 0));
}

TEST(RemapRange, ReexpressesPartOnNewRange) {
  CLevelPointList list;
  Fill(list, {{kRoleStart, 0, 0}, {kRoleInner, 500, 50}, {kRoleEnd, 1000, 100}});
  EXPECT_EQ(list.RemapRange(0, 1000, 100, 500, 2000), -1);
  EXPECT_THAT(Times(list), ElementsAre(0, 100, 350, 600, 2000));
  EXPECT_THAT(Values(list), ElementsAre(0.0f, 0.0f, 50.0f, 100.0f, 100.0f));
  EXPECT_EQ(list.GetAt(0)->cRole, kRoleStart);
  EXPECT_EQ(list.GetAt(3)->cRole, kRoleInner);
  EXPECT_EQ(list.GetAt(4)->cRole, kRoleEnd);
  EXPECT_EQ(list.RemapRange(0, 0, 0, 10, 20), -1);
  EXPECT_EQ(list.GetCount(), 5);
}

}  // namespace

TEST(LevelFadeMemory, RepeatedFadesOnAFourPointCurveKeepABoundedNumberOfPoints) {
  CLevelPointList list;
  Fill(list,
       {{kRoleStart, 0, 100}, {kRoleInner, 300, 80}, {kRoleInner, 600, 90}, {kRoleEnd, 1000, 100}});
  for (int call = 0; call < 100000; ++call) {
    ASSERT_EQ(list.SetFadeIn(200 + call % 50, call % 2 == 0 ? 0 : 10, 0, 0), 0);
  }
  // Each fade drops the points of the one before it; the curve keeps only
  // the most recent of them (once 150,000 stayed until the curve died).
  EXPECT_LE(list.GetDroppedCount(), CLevelPointList::kMaxKeptDropped);
  EXPECT_LE(list.GetCount(), 6);
  RecordProperty("kept_dropped_points", list.GetDroppedCount());
}
