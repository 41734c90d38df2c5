// Byte-exact files of a component with everything it owns.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

#include "tests/support/StreamHelpers.h"
#include "timeline/Component.h"

namespace {

using Bytes = std::vector<uint8_t>;

void AddEffect(CComponent& c, int32_t kind, int groups) {
  auto* e = new CEffect();
  e->iEffectKind = kind;
  e->SetLength(3000);
  for (int g = 0; g < groups; ++g) e->AddKeyGroup("param", 1.0f * g, 2.0f, 10.0f + g, 90.0f);
  for (size_t i = 0; i < sizeof(e->m_Extra.aExtraBody); ++i)
    e->m_Extra.aExtraBody[i] = static_cast<uint8_t>(i * kind);
  c.m_Effects.Add(e);
}

// A component with three level points, two effects (2 and 1 key groups) and two markers.
void Build(CComponent& c) {
  c.iKind = 2;
  std::strcpy(c.szLabel, "label");
  std::strcpy(c.szPath, "media.wav");
  c.dStart = 1000;
  c.dEnd = 5000;
  c.dSourceLength = 4000;
  c.dMediaLength = 9000;
  c.InitDefaultLevels();
  c.m_Levels.InsertSorted(new CLevelPoint(kRoleInner, 0, 55.0f));
  AddEffect(c, 4, 2);
  AddEffect(c, 12, 1);
  c.m_Markers.Add(new CMarkerPoint(1500, 1));
  c.m_Markers.Add(new CMarkerPoint(2500, 2));
  c.iLevelCount = c.iEffectCount = c.iMarkerCount = 99;  // Save fills the true counts
}

constexpr size_t kLevel = 4 + 38;
constexpr size_t kGroup = 4 + 110 + 2 * kLevel;
constexpr size_t kMarker = 4 + 64;

TEST(ComponentFile, StreamLayoutAndByteExactRoundTrip) {
  CComponent c;
  Build(c);
  FILE* f = std::tmpfile();
  ASSERT_EQ(c.Save(f), 0);
  const Bytes bytes = StreamBytes(f);
  std::fclose(f);
  EXPECT_EQ(+c.iLevelCount, 3);
  EXPECT_EQ(+c.iEffectCount, 2);
  EXPECT_EQ(+c.iMarkerCount, 2);

  // Record: the size prefix and the record's own size field, 1001 twice.
  EXPECT_EQ(At<int32_t>(bytes, 0), 1001);
  EXPECT_EQ(At<int32_t>(bytes, 4), 1001);
  EXPECT_EQ(At<int64_t>(bytes, 4 + 4), +c.iUniqueId);
  EXPECT_EQ(At<int32_t>(bytes, 4 + 12), 2);
  EXPECT_EQ(At<double>(bytes, 4 + 214), 1000.0);
  EXPECT_EQ(At<int32_t>(bytes, 4 + 874), 3);
  EXPECT_EQ(At<int32_t>(bytes, 4 + 917), 2);
  EXPECT_EQ(At<int32_t>(bytes, 4 + 947), 2);
  EXPECT_EQ(bytes[4 + 957], 1);
  EXPECT_EQ(std::memcmp(bytes.data() + 4, static_cast<CComponentData*>(&c), 1001), 0);

  // Levels, in list order.
  size_t at = 4 + 1001;
  for (int i = 0; i < 3; ++i, at += kLevel) {
    EXPECT_EQ(At<int32_t>(bytes, at), 38);
    EXPECT_EQ(
        std::memcmp(bytes.data() + at + 4, static_cast<CLevelPointData*>(c.m_Levels.GetAt(i)), 38),
        0);
  }
  // Effects: record, block of 760 without size, key groups with their points.
  for (int e = 0; e < 2; ++e) {
    CEffect* effect = c.m_Effects.GetAt(e);
    EXPECT_EQ(At<int32_t>(bytes, at), 106);
    EXPECT_EQ(At<int32_t>(bytes, at + 4), +effect->iEffectKind);
    EXPECT_EQ(At<int32_t>(bytes, at + 4 + 52), e == 0 ? 2 : 1);
    EXPECT_EQ(bytes[at + 4 + 104], 1);
    EXPECT_EQ(std::memcmp(bytes.data() + at + 110, &effect->m_Extra, 760), 0);
    at += 4 + 106 + 760;
    for (int g = 0; g < effect->m_KeyGroups.GetCount(); ++g, at += kGroup) {
      EXPECT_EQ(At<int32_t>(bytes, at), 110);
      EXPECT_EQ(At<int32_t>(bytes, at + 4 + 48), 2);
      EXPECT_EQ(At<int32_t>(bytes, at + 114), 38);
    }
  }
  for (int m = 0; m < 2; ++m, at += kMarker) {
    EXPECT_EQ(At<int32_t>(bytes, at), 64);
    EXPECT_EQ(At<int64_t>(bytes, at + 4), m == 0 ? 1500 : 2500);
  }
  EXPECT_EQ(at, bytes.size());

  // Loaded back, the component saves the very same bytes.
  FILE* in = StreamWith(bytes);
  CComponent loaded;
  ASSERT_EQ(loaded.Load(in), 0);
  EXPECT_EQ(std::ftell(in), static_cast<long>(bytes.size()));
  std::fclose(in);
  EXPECT_EQ(+loaded.iUniqueId, +c.iUniqueId);
  EXPECT_EQ(
      std::memcmp(static_cast<CComponentData*>(&loaded), static_cast<CComponentData*>(&c), 1001),
      0);
  FILE* again = std::tmpfile();
  ASSERT_EQ(loaded.Save(again), 0);
  EXPECT_EQ(StreamBytes(again), bytes);
  std::fclose(again);
}

TEST(ComponentFile, HandMadeEffectWithoutBlock) {
  CComponentData record;
  record.iKind = 1;
  record.iEffectCount = 2;
  record.iMarkerCount = 1;
  Bytes bytes;
  Put(bytes, int32_t{1001});
  Put(bytes, record);
  // First effect as the program writes it.
  CEffect first;
  first.iEffectKind = 5;
  first.m_Extra.aExtraHead[0] = 0xAB;
  FILE* f = std::tmpfile();
  first.Save(f);
  const Bytes firstBytes = StreamBytes(f);
  std::fclose(f);
  bytes.insert(bytes.end(), firstBytes.begin(), firstBytes.end());
  // Second effect by hand: no block behind it, one key group.
  CEffectData second;
  second.iEffectKind = 13;
  second.cExtraFollows = 0;
  second.iKeyGroupCount = 1;
  Put(bytes, int32_t{106});
  Put(bytes, second);
  CKeyGroupData group;
  std::strcpy(group.szKeyName, "hand");
  group.iLevelCount = 1;
  Put(bytes, int32_t{110});
  Put(bytes, group);
  CLevelPointData point;
  point.iTime = 321;
  Put(bytes, int32_t{38});
  Put(bytes, point);
  CMarkerPointData marker;
  marker.iTime = 777;
  marker.iMarkerId = 4;
  Put(bytes, int32_t{64});
  Put(bytes, marker);

  FILE* in = StreamWith(bytes);
  CComponent c;
  ASSERT_EQ(c.Load(in), 0);
  EXPECT_EQ(std::ftell(in), static_cast<long>(bytes.size()));
  std::fclose(in);
  ASSERT_EQ(c.m_Effects.GetCount(), 2);
  EXPECT_EQ(c.m_Effects.GetAt(0)->m_Extra.aExtraHead[0], 0xAB);
  CEffect* loaded = c.m_Effects.GetAt(1);
  EXPECT_EQ(+loaded->iEffectKind, 13);
  EXPECT_EQ(loaded->cExtraFollows, 0);
  CEffectExtra zero{};
  EXPECT_EQ(std::memcmp(&loaded->m_Extra, &zero, sizeof(zero)), 0);
  ASSERT_EQ(loaded->m_KeyGroups.GetCount(), 1);
  EXPECT_STREQ(loaded->m_KeyGroups.GetAt(0)->szKeyName, "hand");
  EXPECT_EQ(+loaded->m_KeyGroups.GetAt(0)->m_Levels.GetAt(0)->iTime, 321);
  ASSERT_EQ(c.m_Markers.GetCount(), 1);
  EXPECT_EQ(+c.m_Markers.GetAt(0)->iTime, 777);

  // Saved again, the effect carries its block and says so.
  FILE* out = std::tmpfile();
  c.Save(out);
  const Bytes saved = StreamBytes(out);
  std::fclose(out);
  EXPECT_EQ(saved.size(), bytes.size() + 760);
  const size_t secondAt = 4 + 1001 + firstBytes.size();
  EXPECT_EQ(saved[secondAt + 4 + 104], 1);
}

TEST(ComponentFile, IntegerTimesUpgradeToDoubles) {
  CComponentData record;
  record.cTimesAreDouble = 0;
  const int64_t times[8] = {100, 200, 1500, 2500, 300, 400, 500, 9000};
  for (int i = 0; i < 8; ++i)
    std::memcpy(reinterpret_cast<uint8_t*>(&record) + kComponentIntegerTimeFields[i], &times[i], 8);
  Bytes bytes;
  Put(bytes, int32_t{1001});
  Put(bytes, record);
  FILE* in = StreamWith(bytes);
  CComponent c;
  ASSERT_EQ(c.Load(in), 0);
  std::fclose(in);
  EXPECT_EQ(+c.dStart, 1500.0);
  EXPECT_EQ(+c.dSourceIn, 100.0);
  EXPECT_EQ(+c.dSourceLength, 200.0);
  EXPECT_EQ(+c.dEnd, 2500.0);
  EXPECT_EQ(+c.dSourceBase, 300.0);
  EXPECT_EQ(+c.dTimeA, 400.0);
  EXPECT_EQ(+c.dTimeB, 500.0);
  EXPECT_EQ(+c.dMediaLength, 9000.0);
  EXPECT_EQ(c.cTimesAreDouble, 1);
  FILE* out = std::tmpfile();
  c.Save(out);
  const Bytes saved = StreamBytes(out);
  std::fclose(out);
  EXPECT_EQ(saved[4 + 957], 1);
  EXPECT_EQ(At<double>(saved, 4 + 214), 1500.0);
}

TEST(ComponentFile, RecordTooOldToReachFlagIsNotConverted) {
  CComponentData record;
  const int64_t start = 1500;
  std::memcpy(&record.dStart, &start, 8);
  Bytes bytes;
  Put(bytes, int32_t{900});
  bytes.insert(bytes.end(), reinterpret_cast<uint8_t*>(&record),
               reinterpret_cast<uint8_t*>(&record) + 900);
  FILE* in = StreamWith(bytes);
  CComponent c;
  ASSERT_EQ(c.Load(in), 0);
  std::fclose(in);
  int64_t raw = 0;
  std::memcpy(&raw, &c.dStart, 8);
  EXPECT_EQ(raw, 1500);  // the bytes stand as they were
  EXPECT_EQ(+c.fParamC, 50.0f);
}

TEST(ComponentFile, LongerRecordIsRefusedAndObjectUnchanged) {
  Bytes bytes;
  Put(bytes, int32_t{1002});
  bytes.resize(4 + 1002, 0x11);
  FILE* in = StreamWith(bytes);
  CComponent c;
  c.iKind = 3;
  c.m_Markers.Add(new CMarkerPoint(5, 5));
  CComponentData before = c;
  EXPECT_EQ(c.Load(in), -1);
  EXPECT_EQ(std::ftell(in), 4);
  std::fclose(in);
  EXPECT_EQ(std::memcmp(&before, static_cast<CComponentData*>(&c), 1001), 0);
  EXPECT_EQ(c.m_Markers.GetCount(), 1);
}

TEST(ComponentFile, ZeroSizeAndNullStreamFail) {
  Bytes bytes;
  Put(bytes, int32_t{0});
  FILE* in = StreamWith(bytes);
  CComponent c;
  EXPECT_EQ(c.Load(in), -1);
  std::fclose(in);
  EXPECT_EQ(c.Load(nullptr), -1);
  EXPECT_EQ(c.Save(nullptr), -1);
}

TEST(ComponentFile, ShorterRecordTakesDefaultsAndNextItemReads) {
  CComponentData record;
  record.fLevelMax = 7.0f;  // beyond the 500 bytes written
  record.iKind = 9;
  Bytes bytes;
  Put(bytes, int32_t{500});
  bytes.insert(bytes.end(), reinterpret_cast<uint8_t*>(&record),
               reinterpret_cast<uint8_t*>(&record) + 500);
  CMarkerPointData next;
  next.iTime = 4242;
  Put(bytes, int32_t{64});
  Put(bytes, next);
  FILE* in = StreamWith(bytes);
  CComponent c;
  c.fLevelMax = 1.0f;
  ASSERT_EQ(c.Load(in), 0);
  EXPECT_EQ(+c.iKind, 9);
  EXPECT_EQ(+c.fLevelMax, 100.0f);  // the constructor's, not the object's former value
  CMarkerPoint m;
  ASSERT_EQ(m.Load(in), 0);
  EXPECT_EQ(+m.iTime, 4242);
  std::fclose(in);
}

TEST(ComponentFile, LoadDrawsAndWastesOneId) {
  CComponent saved;
  FILE* f = std::tmpfile();
  saved.Save(f);
  std::rewind(f);
  CComponent before;
  CComponent target;
  ASSERT_EQ(target.Load(f), 0);
  std::fclose(f);
  CComponent after;
  const auto running = [](int64_t id) {
    return static_cast<uint32_t>(static_cast<uint64_t>(id) >> 32);
  };
  // before, target, the local record of Load, after.
  EXPECT_EQ(running(+after.iUniqueId), running(+before.iUniqueId) + 3);
  EXPECT_EQ(+target.iUniqueId, +saved.iUniqueId);
}

TEST(ComponentFile, MissingElementsLoadAsDefaults) {
  CComponentData record;
  record.iLevelCount = 2;
  record.iMarkerCount = 1;
  Bytes bytes;
  Put(bytes, int32_t{1001});
  Put(bytes, record);
  CLevelPointData point;
  point.iTime = 10;
  Put(bytes, int32_t{38});
  Put(bytes, point);  // the second point and the marker are missing
  FILE* in = StreamWith(bytes);
  CComponent c;
  ASSERT_EQ(c.Load(in), 0);
  std::fclose(in);
  ASSERT_EQ(c.m_Levels.GetCount(), 2);
  EXPECT_EQ(+c.m_Levels.GetAt(0)->iTime, 10);
  EXPECT_EQ(+c.m_Levels.GetAt(1)->iTime, 0);
  ASSERT_EQ(c.m_Markers.GetCount(), 1);
  EXPECT_EQ(+c.m_Markers.GetAt(0)->iTime, 0);
  EXPECT_EQ(+c.iLevelCount, 2);
}

TEST(ComponentFile, HugeCountsStayBounded) {
  CComponentData record;
  record.iLevelCount = 2000000000;
  record.iEffectCount = 2000000000;
  record.iMarkerCount = 2000000000;
  Bytes bytes;
  Put(bytes, int32_t{1001});
  Put(bytes, record);
  FILE* in = StreamWith(bytes);
  CComponent c;
  ASSERT_EQ(c.Load(in), 0);
  std::fclose(in);
  EXPECT_GT(c.m_Levels.GetCount(), 0);
  EXPECT_LE(c.m_Levels.GetCount(), CLevelPointList::kMaxFailedReads);
  EXPECT_LE(c.m_Effects.GetCount(), CEffectList::kMaxFailedReads);
  EXPECT_LE(c.m_Markers.GetCount(), CMarkerPointList::kMaxFailedReads);
  EXPECT_EQ(+c.iLevelCount, c.m_Levels.GetCount());  // counts refreshed from the lists
}

}  // namespace
