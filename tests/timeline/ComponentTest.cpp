#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "TimelineTestUtil.h"
#include "timeline/Component.h"

using ::testing::ElementsAre;

namespace {

uint32_t RunningNumber(int64_t id) {
  return static_cast<uint32_t>(static_cast<uint64_t>(id) >> 32);
}

TEST(ComponentData, DefaultsOfTheRecord) {
  CComponentData d;
  EXPECT_EQ(+d.iRecordSize, 1001);
  EXPECT_EQ(+d.iKind, 0);
  EXPECT_EQ(+d.fSpeed, 1.0f);
  EXPECT_EQ(+d.fLevelMax, 100.0f);
  EXPECT_EQ(+d.fParamA, 20.0f);
  EXPECT_EQ(+d.fParamB, 20.0f);
  EXPECT_EQ(+d.fParamC, 50.0f);
  EXPECT_EQ(d.cTimesAreDouble, 1);
  EXPECT_EQ(+d.dStart, 0.0);
  EXPECT_EQ(d.szLabel[0], '\0');
  // Every byte that has no default is zero, reserved ranges included.
  CComponentData zeroed = d;
  zeroed.iRecordSize = 0;
  zeroed.iUniqueId = 0;
  zeroed.fSpeed = zeroed.fLevelMax = zeroed.fParamA = zeroed.fParamB = zeroed.fParamC = 0.0f;
  zeroed.cTimesAreDouble = 0;
  const std::vector<uint8_t> zero(sizeof(zeroed), 0);
  EXPECT_EQ(std::memcmp(&zeroed, zero.data(), sizeof(zeroed)), 0);
}

TEST(Component, NewComponentHasSpeedOneAndFreshId) {
  CComponent a;
  CComponent b;
  EXPECT_EQ(+a.fSpeed, 1.0f);
  EXPECT_NE(+a.iUniqueId, +b.iUniqueId);
  EXPECT_EQ(RunningNumber(+b.iUniqueId), RunningNumber(+a.iUniqueId) + 1);
  EXPECT_EQ(a.iLine, 0);
  EXPECT_THAT(a.aRuntimeFlags, ElementsAre(1, 1, 1));
  EXPECT_THAT(a.aRuntimeWords, ElementsAre(0, 0, 0, 0));
}

TEST(Component, AssignKeepIdCopiesAllButIdentity) {
  CComponent a;
  CComponent b;
  a.iKind = 6;
  std::strcpy(a.szPath, "clip.avi");
  const int64_t keep = b.iUniqueId;
  b.AssignKeepId(a);
  EXPECT_EQ(+b.iUniqueId, keep);
  EXPECT_EQ(+b.iKind, 6);
  EXPECT_STREQ(b.szPath, "clip.avi");
}

TEST(Component, CopyFromTakesIdentityAndDeepLists) {
  CComponent source;
  source.iKind = 2;
  source.iLine = 3;
  source.iRuntimeB = 8;
  source.aRuntimeFlags[2] = 0;
  source.InitDefaultLevels();
  source.m_Markers.Add(new CMarkerPoint(500, 1));
  auto* effect = new CEffect();
  effect->SetLength(100);
  effect->AddKeyGroup("k", 0, 0, 1, 2);
  source.m_Effects.Add(effect);
  CComponent copy;
  copy.m_Markers.Add(new CMarkerPoint(1, 1));
  copy.CopyFrom(source);
  EXPECT_EQ(+copy.iUniqueId, +source.iUniqueId);
  EXPECT_EQ(copy.iLine, 3);
  EXPECT_EQ(copy.iRuntimeB, 8);
  EXPECT_EQ(copy.aRuntimeFlags[2], 0);
  ASSERT_EQ(copy.m_Levels.GetCount(), 2);
  EXPECT_NE(copy.m_Levels.GetAt(0), source.m_Levels.GetAt(0));
  ASSERT_EQ(copy.m_Markers.GetCount(), 1);
  EXPECT_EQ(+copy.m_Markers.GetAt(0)->iTime, 500);
  ASSERT_EQ(copy.m_Effects.GetCount(), 1);
  CEffect* copied = copy.m_Effects.GetAt(0);
  EXPECT_NE(copied, effect);
  ASSERT_EQ(copied->m_KeyGroups.GetCount(), 1);
  EXPECT_NE(copied->m_KeyGroups.GetAt(0), effect->m_KeyGroups.GetAt(0));
  EXPECT_EQ(copied->m_KeyGroups.GetAt(0)->m_Levels.GetCount(), 2);
}

CComponent* Clip(int32_t kind, double start, double end, double in, double length, double media,
                 float speed) {
  auto* c = new CComponent();
  c->iKind = kind;
  c->dStart = start;
  c->dEnd = end;
  c->dSourceIn = in;
  c->dSourceLength = length;
  c->dMediaLength = media;
  c->fSpeed = speed;
  return c;
}

TEST(ComponentEdges, SetEndAtOrBeforeStartKeepsOneFrame) {
  for (int32_t kind : {1, 4}) {
    std::unique_ptr<CComponent> c(Clip(kind, 4000, 8000, 0, 4000, 20000, 1.0f));
    EXPECT_EQ(c->SetEnd(1000), 4040) << kind;
    EXPECT_EQ(+c->dEnd - +c->dStart, 40.0) << kind;
    EXPECT_EQ(c->SetEnd(-5), 4040) << kind;  // negative times count as 0
  }
}

TEST(ComponentEdges, SetEndStopsAtMediaEndAtDoubleSpeed) {
  // 10 s of source at speed 2 gives at most 5 s on the timeline.
  std::unique_ptr<CComponent> c(Clip(1, 0, 2000, 0, 4000, 10000, 2.0f));
  EXPECT_EQ(c->SetEnd(60000), 5000);
  EXPECT_EQ(+c->dSourceLength, 10000.0);
  EXPECT_EQ(+c->dSourceIn, 0.0);
}

TEST(ComponentEdges, SetStartCannotPassFirstSourceFrame) {
  // S = 100, Is = 25: the edge stops at frame 75, source from 0.
  std::unique_ptr<CComponent> c(Clip(1, 4000, 8000, 1000, 4000, 20000, 1.0f));
  EXPECT_EQ(c->SetStart(0), 3000);
  EXPECT_EQ(+c->dSourceIn, 0.0);
  EXPECT_EQ(+c->dSourceLength, 5000.0);
}

TEST(ComponentEdges, ReverseShorteningOnRightRaisesSourceIn) {
  std::unique_ptr<CComponent> c(Clip(1, 0, 4000, 0, 4000, 8000, 1.0f));
  c->cReverse = 1;
  const double sourceEnd = c->dSourceIn + c->dSourceLength;
  EXPECT_EQ(c->SetEnd(2000), 2000);
  EXPECT_EQ(+c->dSourceIn, 2000.0);
  EXPECT_EQ(+c->dSourceLength, 2000.0);
  EXPECT_EQ(+c->dSourceIn + +c->dSourceLength, sourceEnd);
}

TEST(ComponentEdges, StretchSpeedIsOneForZeroLength) {
  // StretchEnd keeps at least one frame, so its timeline length is never 0
  // for sane times; the rule itself is checked here.
  EXPECT_EQ(StretchSpeed(4000.0, 0.0), 1.0f);
  EXPECT_EQ(StretchSpeed(4000.0, 2000.0), 2.0f);
  std::unique_ptr<CComponent> c(Clip(2, 1000, 1000, 0, 80, 8000, 3.0f));
  EXPECT_EQ(c->StretchEnd(0), 1040);  // one frame behind the start frame 25
  EXPECT_EQ(+c->fSpeed, static_cast<float>(80.0 / 40.0));
}

TEST(ComponentEdges, StretchEndToNoLengthAtAllGivesSpeedOne) {
  // Frame counts are bounded, so a start far beyond them has the bound as
  // its frame; the end one frame later can then land on the start itself.
  for (int32_t kind : {1, 2}) {
    std::unique_ptr<CComponent> c(Clip(kind, 0, 0, 0, 4000, 8000, 3.0f));
    c->dStart = 1e18;
    const int64_t end = c->StretchEnd(0);  // one frame behind the bound
    c->dStart = c->dEnd;                   // ... which is where the item now starts
    c->fSpeed = 3.0f;
    EXPECT_EQ(c->StretchEnd(0), end) << kind;
    EXPECT_EQ(+c->dEnd, +c->dStart) << kind;  // no timeline length left
    EXPECT_EQ(+c->fSpeed, 1.0f) << kind;      // not the source length over 0
    EXPECT_EQ(+c->dSourceLength, 4000.0) << kind;
  }
}

TEST(ComponentEdges, FreeLengthKindsKeepSourceInAtZero) {
  for (int32_t kind : {0, 3, 4, 5, 6, 7, 8, 9, 10, 11}) {
    std::unique_ptr<CComponent> c(Clip(kind, 4000, 8000, 1200, 4000, 20000, 1.0f));
    c->SetEnd(9000);
    EXPECT_EQ(+c->dSourceIn, 0.0) << kind;
    c->dSourceIn = 1200;
    c->SetStart(2000);
    EXPECT_EQ(+c->dSourceIn, 0.0) << kind;
    c->dSourceIn = 1200;
    c->StretchEnd(12000);
    EXPECT_EQ(+c->dSourceIn, 0.0) << kind;
    c->dSourceIn = 1200;
    c->StretchStart(1000);
    EXPECT_EQ(+c->dSourceIn, 0.0) << kind;
    EXPECT_EQ(+c->dSourceLength, +c->dEnd - +c->dStart) << kind;
  }
}

TEST(ComponentEdges, KindFiveRefitsKeyGroupCurves) {
  std::unique_ptr<CComponent> c(Clip(5, 0, 4000, 0, 4000, 0, 1.0f));
  auto* effect = new CEffect();
  effect->SetLength(4000);
  effect->AddKeyGroup("k", 0, 0, 0, 1);
  c->m_Effects.Add(effect);
  c->SetEnd(8000);
  EXPECT_THAT(Times(effect->m_KeyGroups.GetAt(0)->m_Levels), ElementsAre(0, 8000));
}

TEST(ComponentEdges, SpeedZeroActsAsOne) {
  std::unique_ptr<CComponent> zero(Clip(1, 4000, 8000, 2000, 4000, 12000, 0.0f));
  std::unique_ptr<CComponent> one(Clip(1, 4000, 8000, 2000, 4000, 12000, 1.0f));
  EXPECT_EQ(zero->SetEnd(20000), one->SetEnd(20000));
  EXPECT_EQ(+zero->dSourceLength, +one->dSourceLength);
  EXPECT_EQ(zero->SetStart(0), one->SetStart(0));
  EXPECT_EQ(+zero->dSourceIn, +one->dSourceIn);
  EXPECT_EQ(zero->GetTimelineMaxLength(), 12000);
  // In GetSourceFrame it makes the distance 0: always the in point's frame.
  zero->dStart = 4000;
  zero->dSourceIn = 2000;
  EXPECT_EQ(zero->GetSourceFrame(9000.0), 50);
  EXPECT_EQ(zero->GetSourceFrame(4000.0), 50);
}

TEST(ComponentLengths, TimelineAndSourceMaximum) {
  std::unique_ptr<CComponent> c(Clip(1, 0, 0, 0, 3000, 12000, 2.0f));
  EXPECT_EQ(c->GetTimelineMaxLength(), 6000);
  EXPECT_EQ(c->GetSourceMaxLength(), 12000);
  c->iKind = 4;  // its own source length
  EXPECT_EQ(c->GetTimelineMaxLength(), 3000);
  EXPECT_EQ(c->GetSourceMaxLength(), 3000);
  c->iKind = 10;  // own length only when it is the longer
  EXPECT_EQ(c->GetTimelineMaxLength(), 6000);
  c->dSourceLength = 7000;
  EXPECT_EQ(c->GetTimelineMaxLength(), 7000);
  EXPECT_EQ(c->GetSourceMaxLength(), 12000);
}

TEST(ComponentFrames, SourceAndFileFrame) {
  std::unique_ptr<CComponent> c(Clip(1, 4000, 8000, 2000, 4000, 12000, 1.0f));
  c->dSourceBase = 400;
  // Forward: 1000 + 2000 = 3000 ms -> 75; with the base 3400 -> 85.
  EXPECT_EQ(c->GetSourceFrame(5000.0), 75);
  EXPECT_EQ(c->GetFileFrame(5000.0), 85);
  // Reverse: 2000 + 4000 - 1000 - 20 (half a frame) = 4980 ms -> 124.5 -> 124;
  // with the base 5380 -> 134.
  c->cReverse = 1;
  EXPECT_EQ(c->GetSourceFrame(5000.0), 124);
  EXPECT_EQ(c->GetFileFrame(5000.0), 134);
}

TEST(ComponentLevels, DefaultCurvesOfKindsTwoSixAndTen) {
  struct Row {
    int32_t kind;
    float max;
    uint8_t base;
    float start, end;
  };
  for (const Row& r :
       {Row{2, 100, 0, 80, 80}, Row{6, 255, 128, 80, 128}, Row{10, 100, 7, 0, 100}}) {
    CComponent c;
    c.iKind = r.kind;
    c.fLevelMax = 1;
    c.cLevelBase = 7;
    EXPECT_EQ(c.InitDefaultLevels(), 0);
    EXPECT_EQ(+c.fLevelMax, r.max) << r.kind;
    EXPECT_EQ(c.cLevelBase, r.base) << r.kind;
    ASSERT_EQ(c.m_Levels.GetCount(), 2);
    EXPECT_THAT(Times(c.m_Levels), ElementsAre(0, 0));
    EXPECT_THAT(Values(c.m_Levels), ElementsAre(r.start, r.end));
    EXPECT_EQ(c.m_Levels.GetAt(0)->cRole, kRoleStart);
    EXPECT_EQ(c.m_Levels.GetAt(1)->cRole, kRoleEnd);
  }
  CComponent other;
  other.iKind = 1;
  other.InitDefaultLevels();
  EXPECT_EQ(other.m_Levels.GetCount(), 0);
}

TEST(ComponentLevels, ExistingCurveChangesNothingNotEvenScale) {
  CComponent c;
  c.iKind = 6;
  c.fLevelMax = 50;
  c.m_Levels.Add(new CLevelPoint(kRoleStart, 0, 3));
  c.InitDefaultLevels();
  EXPECT_EQ(+c.fLevelMax, 50.0f);
  EXPECT_EQ(c.cLevelBase, 0);
  EXPECT_EQ(c.m_Levels.GetCount(), 1);
}

TEST(ComponentLevels, TrimLooksAtEverySecondPoint) {
  CComponent c;
  c.dSourceIn = 1000;
  c.dSourceLength = 1000;
  Fill(c.m_Levels,
       {{kRoleInner, 0, 1}, {kRoleInner, 100, 2}, {kRoleInner, 5000, 3}, {kRoleInner, 6000, 4}});
  EXPECT_EQ(c.TrimLevelPoints(), 0);
  EXPECT_THAT(Times(c.m_Levels), ElementsAre(100, 6000));
}

TEST(ComponentLevels, TrimKeepsStartEndAndPointsInside) {
  CComponent c;
  c.dSourceIn = 1000;
  c.dSourceLength = 1000;
  Fill(c.m_Levels,
       {{kRoleStart, 0, 1}, {kRoleInner, 1000, 2}, {kRoleInner, 2000, 3}, {kRoleEnd, 9000, 4}});
  c.TrimLevelPoints();
  EXPECT_EQ(c.m_Levels.GetCount(), 4);
}

TEST(ComponentLevels, RefitKeyGroupsToSourceMaximum) {
  CComponent c;
  c.dMediaLength = 6000;
  auto* effect = new CEffect();
  effect->SetLength(2000);
  effect->AddKeyGroup("k", 0, 0, 0, 1);
  CKeyGroup* g = effect->m_KeyGroups.GetAt(0);
  g->m_Levels.InsertSorted(new CLevelPoint(kRoleInner, 1000, 5));
  c.m_Effects.Add(effect);
  EXPECT_EQ(c.RefitKeyGroups(), 0);
  EXPECT_THAT(Times(g->m_Levels), ElementsAre(0, 3000, 6000));
}

TEST(Component, IdentifyFileChangesNothing) {
  CComponent c;
  std::strcpy(c.szPath, "a.mov");
  CComponentData before = c;
  EXPECT_EQ(c.IdentifyFile("movie.avi"), 0);
  EXPECT_EQ(c.IdentifyFile("x"), 0);
  EXPECT_EQ(c.IdentifyFile(""), 0);
  EXPECT_EQ(c.IdentifyFile(nullptr), 0);
  EXPECT_EQ(c.IdentifyFile("noextension"), 0);
  const std::string longName = "a." + std::string(5000, 'x');
  EXPECT_EQ(c.IdentifyFile(longName.c_str()), 0);
  EXPECT_EQ(std::memcmp(&before, static_cast<CComponentData*>(&c), sizeof(before)), 0);
}

}  // namespace
