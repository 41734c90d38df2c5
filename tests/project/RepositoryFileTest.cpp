// Repository files byte for byte: a file written by hand, records of other
// sizes, and the whole-file load and save.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "project/Repository.h"
#include "tests/support/ByteStreams.h"
#include "tests/support/TempFiles.h"

namespace {

using namespace testsupport;

// Two components: a picture with one level point and an effect item with an
// effect of one key group and a marker.
Bytes HandMadeRepository() {
  Bytes b;
  CRepositoryData record;
  std::strcpy(record.szName, "Media");
  record.iRepositoryKind = 1;
  record.iComponentCount = 2;
  Put(b, int32_t{964});
  Put(b, record);

  CComponentData picture;
  picture.iKind = 1;
  std::strcpy(picture.szPath, "still.png");
  picture.iLevelCount = 1;
  picture.iEffectCount = 0;
  picture.iMarkerCount = 0;
  Put(b, int32_t{1001});
  Put(b, picture);
  CLevelPointData point;
  point.iTime = 0;
  point.fValue = 100.0f;
  Put(b, int32_t{38});
  Put(b, point);

  CComponentData effectItem;
  effectItem.iKind = 3;
  effectItem.iLevelCount = 0;
  effectItem.iEffectCount = 1;
  effectItem.iMarkerCount = 1;
  Put(b, int32_t{1001});
  Put(b, effectItem);
  CEffectData effect;
  effect.iEffectKind = 7;
  effect.iKeyGroupCount = 1;
  Put(b, int32_t{106});
  Put(b, effect);
  Put(b, CEffectExtra{});
  CKeyGroupData group;
  std::strcpy(group.szKeyName, "blur");
  group.iLevelCount = 1;
  Put(b, int32_t{110});
  Put(b, group);
  point.iTime = 250;
  Put(b, int32_t{38});
  Put(b, point);
  CMarkerPointData marker;
  marker.iTime = 40;
  marker.iMarkerId = 2;
  Put(b, int32_t{64});
  Put(b, marker);
  return b;
}

TEST(RepositoryFile, HandMadeFileLoadsAndSavesTheSameBytes) {
  const Bytes bytes = HandMadeRepository();
  FILE* in = StreamOf(bytes);
  CRepository repository;
  ASSERT_EQ(repository.Load(in), 0);
  EXPECT_EQ(std::ftell(in), static_cast<long>(bytes.size()));
  std::fclose(in);
  EXPECT_STREQ(repository.szName, "Media");
  EXPECT_EQ(+repository.iRepositoryKind, 1);
  EXPECT_EQ(+repository.iId, At<int64_t>(bytes, 4 + 4));
  ASSERT_EQ(repository.components.GetCount(), 2);
  EXPECT_STREQ(repository.components.GetAt(0)->szPath, "still.png");
  CComponent* effectItem = repository.components.GetAt(1);
  ASSERT_EQ(effectItem->m_Effects.GetCount(), 1);
  EXPECT_STREQ(effectItem->m_Effects.GetAt(0)->m_KeyGroups.GetAt(0)->szKeyName, "blur");
  EXPECT_EQ(+effectItem->m_Markers.GetAt(0)->iTime, 40);
  EXPECT_EQ(SavedBytes(repository), bytes);
}

TEST(RepositoryFile, SavedLayoutHasPrefixRecordAndCountFromTheList) {
  CRepository repository;
  repository.iComponentCount = 9;
  repository.components.Add(new CComponent);
  const Bytes bytes = SavedBytes(repository);
  EXPECT_EQ(At<int32_t>(bytes, 0), 964);
  EXPECT_EQ(At<int32_t>(bytes, 4), 964);
  EXPECT_EQ(At<int32_t>(bytes, 4 + 660), 1);
  EXPECT_EQ(At<int32_t>(bytes, 4 + 964), 1001);
  EXPECT_EQ(std::memcmp(bytes.data() + 4, static_cast<CRepositoryData*>(&repository), 964), 0);
}

TEST(RepositoryFile, RecordOf965IsRefusedAndTheObjectStays) {
  Bytes bytes = HandMadeRepository();
  const int32_t size = 965;
  std::memcpy(bytes.data(), &size, 4);
  FILE* in = StreamOf(bytes);
  CRepository repository;
  std::strcpy(repository.szName, "FromProject");
  EXPECT_EQ(repository.Load(in), -1);
  std::fclose(in);
  EXPECT_STREQ(repository.szName, "FromProject");
  EXPECT_EQ(repository.components.GetCount(), 0);
}

TEST(RepositoryFile, LoadFileOfARefusedRecordKeepsTheDefaultRepository) {
  TempDir dir;
  Bytes bytes = HandMadeRepository();
  const int32_t size = 965;
  std::memcpy(bytes.data(), &size, 4);
  WriteFile(dir.Path("R.Qzr"), bytes);
  CRepository repository;
  std::strcpy(repository.szName, "Repository1");
  EXPECT_EQ(repository.LoadFile(dir.Path("R.Qzr").c_str()), 0);
  EXPECT_STREQ(repository.szName, "Repository1");
}

TEST(RepositoryFile, RecordOf660BytesOrFewerHasNoCount) {
  for (int32_t size : {660, 600}) {
    CRepositoryData record;
    std::strcpy(record.szName, "Old");
    record.iComponentCount = 1;  // at 660: outside the record
    Bytes bytes;
    Put(bytes, size);
    PutFirst(bytes, record, static_cast<size_t>(size));
    Put(bytes, int32_t{1001});
    Put(bytes, CComponentData{});
    FILE* in = StreamOf(bytes);
    CRepository repository;
    ASSERT_EQ(repository.Load(in), 0);
    EXPECT_EQ(std::ftell(in), 4 + size);
    std::fclose(in);
    EXPECT_STREQ(repository.szName, "Old");
    EXPECT_EQ(repository.components.GetCount(), 0) << size;
    EXPECT_EQ(+repository.iComponentCount, 0);
  }
}

TEST(RepositoryFile, NullStreamsAndPathsGiveMinusOne) {
  CRepository repository;
  EXPECT_EQ(repository.Load(nullptr), -1);
  EXPECT_EQ(repository.Save(nullptr), -1);
  EXPECT_EQ(repository.LoadFile(nullptr), -1);
  EXPECT_EQ(repository.SaveFile(nullptr), -1);
  const std::string longPath(400, 'r');
  EXPECT_EQ(repository.LoadFile(longPath.c_str()), -1);
  EXPECT_EQ(repository.SaveFile(longPath.c_str()), -1);
}

TEST(RepositoryFile, SaveFileRotatesAndRoundTrips) {
  TempDir dir;
  const std::string path = dir.Path("Repository1.Qzr");
  const Bytes bytes = HandMadeRepository();
  FILE* in = StreamOf(bytes);
  CRepository repository;
  ASSERT_EQ(repository.Load(in), 0);
  std::fclose(in);
  ASSERT_EQ(repository.SaveFile(path.c_str()), 0);
  ASSERT_EQ(repository.SaveFile(path.c_str()), 0);
  EXPECT_EQ(ReadFile(path), bytes);
  EXPECT_EQ(ReadFile(dir.Path("Repository1.Bk1")), bytes);
  CRepository loaded;
  ASSERT_EQ(loaded.LoadFile(path.c_str()), 0);
  EXPECT_EQ(SavedBytes(loaded), bytes);
}

}  // namespace
