#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "TimelineTestUtil.h"
#include "tests/support/StreamHelpers.h"
#include "timeline/EffectList.h"
#include "timeline/MarkerPoint.h"

using ::testing::ElementsAre;

namespace {

TEST(EffectData, Defaults) {
  CEffect e;
  EXPECT_EQ(+e.iEffectKind, 0);
  EXPECT_EQ(+e.iLength, 0);
  EXPECT_EQ(e.cExtraFollows, 1);
  EXPECT_EQ(e.cEffectByte, 0);
  EXPECT_EQ(e.cRuntime, 0);
  CEffectExtra zero{};
  EXPECT_EQ(std::memcmp(&e.m_Extra, &zero, sizeof(zero)), 0);
  CKeyGroup g;
  EXPECT_EQ(+g.iLevelCount, 0);
  EXPECT_EQ(g.szKeyName[0], '\0');
}

TEST(AddKeyGroup, NullNameAddsNothing) {
  CEffect e;
  EXPECT_EQ(e.AddKeyGroup(nullptr, 1, 2, 3, 4), -1);
  EXPECT_EQ(e.m_KeyGroups.GetCount(), 0);
}

TEST(AddKeyGroup, LongNameFillsFieldWithoutTerminator) {
  CEffect e;
  const std::string name = std::string(40, 'a') + "Z";
  EXPECT_EQ(e.AddKeyGroup(name.c_str(), 0, 0, 0, 0), 1);
  const CKeyGroup* g = e.m_KeyGroups.GetAt(0);
  EXPECT_EQ(std::string(g->szKeyName, 40), std::string(40, 'a'));
  // The 41st character went nowhere: the byte behind the name is fKeyParamA.
  EXPECT_EQ(+g->fKeyParamA, 0.0f);
}

TEST(AddKeyGroup, CurveHasTwoPointsFromZeroToLength) {
  CEffect e;
  ASSERT_EQ(e.SetLength(4000), 0);
  EXPECT_EQ(e.AddKeyGroup("gain", 1.5f, 2.5f, 10.0f, 90.0f), 1);
  EXPECT_EQ(e.AddKeyGroup("pan", 0, 0, 0, 0), 2);
  CKeyGroup* g = e.m_KeyGroups.GetAt(0);
  EXPECT_STREQ(g->szKeyName, "gain");
  EXPECT_EQ(+g->fKeyParamA, 1.5f);
  EXPECT_EQ(+g->fKeyParamB, 2.5f);
  EXPECT_EQ(+g->fStartValue, 10.0f);
  EXPECT_EQ(+g->fEndValue, 90.0f);
  ASSERT_EQ(g->m_Levels.GetCount(), 2);
  EXPECT_THAT(Times(g->m_Levels), ElementsAre(0, 4000));
  EXPECT_THAT(Values(g->m_Levels), ElementsAre(10.0f, 90.0f));
  EXPECT_EQ(g->m_Levels.GetAt(0)->cRole, kRoleStart);
  EXPECT_EQ(g->m_Levels.GetAt(1)->cRole, kRoleEnd);
}

TEST(AddKeyGroup, UnsetLengthPutsEndPointAtZero) {
  CEffect e;
  e.AddKeyGroup("x", 0, 0, 1, 2);
  EXPECT_THAT(Times(e.m_KeyGroups.GetAt(0)->m_Levels), ElementsAre(0, 0));
}

TEST(SetLength, ZeroIsRefusedAndKeepsOldLength) {
  CEffect e;
  e.SetLength(500);
  EXPECT_EQ(e.SetLength(0), -1);
  EXPECT_EQ(+e.iLength, 500);
  EXPECT_EQ(e.SetLength(-3), 0);
  EXPECT_EQ(+e.iLength, -3);
}

struct CountingEffect : CEffect {
  int32_t EffectHook(int32_t a, int32_t b) override { return a + b; }
};

TEST(EffectHook, BaseDoesNothingDerivedPlugsIn) {
  CEffect e;
  EXPECT_EQ(e.EffectHook(3, 4), 0);
  CountingEffect c;
  CEffect& asBase = c;
  EXPECT_EQ(asBase.EffectHook(3, 4), 7);
}

TEST(KeyGroupList, SetAllValues) {
  CEffect e;
  e.SetLength(100);
  e.AddKeyGroup("a", 0, 0, 1, 2);
  EXPECT_FALSE(e.m_KeyGroups.SetAllValues(1, 5.0f));
  EXPECT_TRUE(e.m_KeyGroups.SetAllValues(0, 5.0f));
  EXPECT_THAT(Values(e.m_KeyGroups.GetAt(0)->m_Levels), ElementsAre(5.0f, 5.0f));
  e.m_KeyGroups.Add(nullptr);  // a null group is passed over
  EXPECT_TRUE(e.m_KeyGroups.SetAllValues(1, 6.0f));
}

CEffect* MakeEffect(int32_t kind) {
  auto* e = new CEffect();
  e->iEffectKind = kind;
  return e;
}

TEST(EffectList, FindByKindReturnsFirst) {
  CEffectList list;
  CEffect* first = MakeEffect(5);
  list.Add(MakeEffect(3));
  list.Add(first);
  list.Add(MakeEffect(5));
  EXPECT_EQ(list.FindByKind(5), first);
  EXPECT_EQ(list.FindByKind(9), nullptr);
}

TEST(EffectList, SelectiveClearKeepsKindsTwelveAndThirteenInOrder) {
  CEffectList list;
  CEffect* twelve = MakeEffect(12);
  CEffect* thirteen = MakeEffect(13);
  list.Add(twelve);
  list.Add(MakeEffect(5));
  list.Add(thirteen);
  const int32_t before = list.GetModCount();
  list.Clear(1);
  ASSERT_EQ(list.GetCount(), 2);
  EXPECT_EQ(list.GetAt(0), twelve);
  EXPECT_EQ(list.GetAt(1), thirteen);
  EXPECT_EQ(list.GetModCount(), before + 1);
  list.Clear(0);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.GetModCount(), before + 2);
}

TEST(EffectCopy, DeepCopiesGroupsCurvesAndBlock) {
  CEffect source;
  source.iEffectKind = 7;
  source.SetLength(300);
  source.AddKeyGroup("k", 1, 2, 3, 4);
  source.m_Extra.aExtraBody[499] = 0x5A;
  source.cRuntime = 9;
  CEffect copy;
  copy.AddKeyGroup("old", 0, 0, 0, 0);
  copy.CopyFrom(source);
  EXPECT_EQ(std::memcmp(static_cast<CEffectData*>(&copy), static_cast<CEffectData*>(&source),
                        sizeof(CEffectData)),
            0);
  EXPECT_EQ(copy.m_Extra.aExtraBody[499], 0x5A);
  EXPECT_EQ(copy.cRuntime, 9);
  ASSERT_EQ(copy.m_KeyGroups.GetCount(), 1);
  CKeyGroup* g = copy.m_KeyGroups.GetAt(0);
  EXPECT_NE(g, source.m_KeyGroups.GetAt(0));
  EXPECT_STREQ(g->szKeyName, "k");
  EXPECT_NE(g->m_Levels.GetAt(0), source.m_KeyGroups.GetAt(0)->m_Levels.GetAt(0));
  EXPECT_THAT(Times(g->m_Levels), ElementsAre(0, 300));
}

TEST(EffectFile, SaveLoadGivesBackRecordBlockAndGroups) {
  FILE* f = std::tmpfile();
  ASSERT_NE(f, nullptr);
  CEffect source;
  source.iEffectKind = 4;
  source.SetLength(1000);
  source.AddKeyGroup("a", 1, 2, 3, 4);
  source.AddKeyGroup("b", 5, 6, 7, 8);
  source.cExtraFollows = 0;  // Save always writes the block and says so
  source.cEffectByte = 9;
  for (size_t i = 0; i < sizeof(source.m_Extra.aExtraHead); ++i)
    source.m_Extra.aExtraHead[i] = static_cast<uint8_t>(i);
  ASSERT_EQ(source.Save(f), 0);
  EXPECT_EQ(source.cExtraFollows, 1);
  EXPECT_EQ(source.cEffectByte, 0);
  EXPECT_EQ(+source.iKeyGroupCount, 2);
  const std::vector<uint8_t> bytes = StreamBytes(f);
  // size, 106 record bytes, 760 block bytes, then two groups of 4+110 and two points each.
  ASSERT_EQ(bytes.size(), 4u + 106 + 760 + 2 * (4 + 110 + 2 * (4 + 38)));
  int32_t size = 0;
  std::memcpy(&size, bytes.data(), 4);
  EXPECT_EQ(size, 106);
  EXPECT_EQ(bytes[4 + 104], 1);
  EXPECT_EQ(std::memcmp(bytes.data() + 110, &source.m_Extra, 760), 0);
  std::memcpy(&size, bytes.data() + 870, 4);
  EXPECT_EQ(size, 110);

  std::rewind(f);
  CEffect loaded;
  ASSERT_EQ(loaded.Load(f), 0);
  EXPECT_EQ(std::ftell(f), static_cast<long>(bytes.size()));
  EXPECT_EQ(std::memcmp(static_cast<CEffectData*>(&loaded), static_cast<CEffectData*>(&source),
                        sizeof(CEffectData)),
            0);
  EXPECT_EQ(std::memcmp(&loaded.m_Extra, &source.m_Extra, sizeof(CEffectExtra)), 0);
  ASSERT_EQ(loaded.m_KeyGroups.GetCount(), 2);
  EXPECT_STREQ(loaded.m_KeyGroups.GetAt(1)->szKeyName, "b");
  EXPECT_THAT(Values(loaded.m_KeyGroups.GetAt(1)->m_Levels), ElementsAre(7.0f, 8.0f));
  std::fclose(f);
}

TEST(EffectFile, RecordWithoutBlockLeavesExtraZeroAndReadsNextItem) {
  FILE* f = std::tmpfile();
  ASSERT_NE(f, nullptr);
  CEffectData record;
  record.iEffectKind = 3;
  record.cExtraFollows = 0;
  const int32_t size = sizeof(record);
  std::fwrite(&size, 4, 1, f);
  std::fwrite(&record, sizeof(record), 1, f);
  CLevelPoint next(kRoleEnd, 1234, 5.0f);  // the next item straight behind
  ASSERT_EQ(next.Save(f), 0);
  std::rewind(f);
  CEffect loaded;
  loaded.m_Extra.aExtraHead[0] = 0x77;  // replaced by the zero block
  ASSERT_EQ(loaded.Load(f), 0);
  EXPECT_EQ(+loaded.iEffectKind, 3);
  EXPECT_EQ(loaded.cExtraFollows, 0);
  CEffectExtra zero{};
  EXPECT_EQ(std::memcmp(&loaded.m_Extra, &zero, sizeof(zero)), 0);
  CLevelPoint read;
  ASSERT_EQ(read.Load(f), 0);
  EXPECT_EQ(+read.iTime, 1234);
  EXPECT_EQ(read.cRole, kRoleEnd);
  std::fclose(f);
}

TEST(EffectFile, TruncatedBlockFailsAndKeepsObject) {
  FILE* f = std::tmpfile();
  CEffectData record;
  record.iEffectKind = 8;
  const int32_t size = sizeof(record);
  std::fwrite(&size, 4, 1, f);
  std::fwrite(&record, sizeof(record), 1, f);  // cExtraFollows 1 but no block
  std::rewind(f);
  CEffect loaded;
  loaded.iEffectKind = 2;
  EXPECT_EQ(loaded.Load(f), -1);
  EXPECT_EQ(+loaded.iEffectKind, 2);
  std::fclose(f);
}

TEST(KeyGroupFile, FailedRecordReadsNoCurve) {
  FILE* f = std::tmpfile();
  const int32_t tooLong = 111;
  std::fwrite(&tooLong, 4, 1, f);
  std::rewind(f);
  CKeyGroup g;
  g.m_Levels.Add(new CLevelPoint(kRoleStart, 0, 1));
  EXPECT_EQ(g.Load(f), -1);
  EXPECT_EQ(g.m_Levels.GetCount(), 1);
  EXPECT_EQ(std::ftell(f), 4);
  std::fclose(f);
}

TEST(PointFile, LevelAndMarkerRoundTrip) {
  FILE* f = std::tmpfile();
  CLevelPoint p(kRoleInner, -77, 2.5f);
  p.cFade = kFadeOut;
  p.aReserved[17] = 3;
  CMarkerPoint m(900, 4);
  m.aMarkerText[31] = 'q';
  ASSERT_EQ(p.Save(f), 0);
  ASSERT_EQ(m.Save(f), 0);
  EXPECT_EQ(std::ftell(f), 4 + 38 + 4 + 64);
  std::rewind(f);
  CLevelPoint p2;
  CMarkerPoint m2;
  ASSERT_EQ(p2.Load(f), 0);
  ASSERT_EQ(m2.Load(f), 0);
  EXPECT_EQ(std::memcmp(static_cast<CLevelPointData*>(&p2), static_cast<CLevelPointData*>(&p), 38),
            0);
  EXPECT_EQ(
      std::memcmp(static_cast<CMarkerPointData*>(&m2), static_cast<CMarkerPointData*>(&m), 64), 0);
  EXPECT_EQ(p.Save(nullptr), -1);
  EXPECT_EQ(m2.Load(nullptr), -1);
  std::fclose(f);
}

}  // namespace
