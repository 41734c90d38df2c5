// The head record's defaults and the name entries of a project file, byte
// for byte.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "project/ProjectData.h"
#include "project/ProjectFileList.h"
#include "tests/support/ByteStreams.h"

namespace {

using namespace testsupport;

// One entry as a file holds it: size, header word, then `size - 4` name bytes.
void PutEntry(Bytes& b, int32_t size, uint32_t header, const char* name) {
  Put(b, size);
  Put(b, header);
  char field[260] = {};
  std::memcpy(field, name, std::min(std::strlen(name), sizeof(field)));
  const size_t nameBytes = size > 4 ? static_cast<size_t>(size - 4) : 0;
  b.insert(b.end(), field, field + std::min<size_t>(nameBytes, sizeof(field)));
}

Bytes RecordBytes(const CProjectData& d) {
  Bytes b(sizeof(d));
  std::memcpy(b.data(), &d, sizeof(d));
  return b;
}

TEST(ProjectData, DefaultsSitAtTheirOffsets) {
  const Bytes b = RecordBytes(CProjectData());
  ASSERT_EQ(b.size(), 1873u);
  EXPECT_EQ(At<int32_t>(b, 0), 1873);
  EXPECT_EQ(std::memcmp(b.data() + 4, ".qzpj\0", 6), 0);
  EXPECT_STREQ(reinterpret_cast<const char*>(b.data() + 18), "Noname");
  EXPECT_STREQ(reinterpret_cast<const char*>(b.data() + 278), "C:/");
  EXPECT_EQ(At<int32_t>(b, 538), 0);
  EXPECT_EQ(At<int32_t>(b, 542), 0);
  EXPECT_EQ(At<int32_t>(b, 873), 0);
  EXPECT_EQ(At<int32_t>(b, 877), 1);
  EXPECT_EQ(b[881], 0);
}

TEST(ProjectData, EverythingElseIsZeroUnsetBytesIncluded) {
  const Bytes b = RecordBytes(CProjectData());
  CProjectData expected;
  std::memset(static_cast<void*>(&expected), 0, sizeof(expected));
  expected.iSize = 1873;
  std::memcpy(expected.szMagic, ".qzpj", 6);
  std::strcpy(expected.szProjectName, "Noname");
  std::strcpy(expected.szRootPath, "C:/");
  expected.iOpaqueF = 1;
  EXPECT_EQ(b, RecordBytes(expected));
  for (size_t i = 773; i < 873; ++i) ASSERT_EQ(b[i], 0) << "abUnset byte " << i;
}

TEST(ProjectData, ViewRecordIsNineteenPackedBytes) {
  CProjectViewData v;
  v.fViewA = 1.5f;
  v.fViewB = 2.5f;
  v.cViewA = 7;
  v.fViewC = 3.5f;
  v.fViewD = 4.5f;
  v.cViewB = 8;
  v.cViewC = 9;
  Bytes b(sizeof(v));
  std::memcpy(b.data(), &v, sizeof(v));
  EXPECT_EQ(At<float>(b, 0), 1.5f);
  EXPECT_EQ(At<float>(b, 4), 2.5f);
  EXPECT_EQ(b[8], 7);
  EXPECT_EQ(At<float>(b, 9), 3.5f);
  EXPECT_EQ(At<float>(b, 13), 4.5f);
  EXPECT_EQ(b[17], 8);
  EXPECT_EQ(b[18], 9);
}

TEST(ProjectFileData, EntryIs268BytesWithZeroHeaderWord) {
  CProjectFileData entry("Timeline1");
  const Bytes b = SavedBytes(entry);
  ASSERT_EQ(b.size(), 268u);
  EXPECT_EQ(At<int32_t>(b, 0), 264);
  EXPECT_EQ(At<uint32_t>(b, 4), 0u);
  EXPECT_STREQ(reinterpret_cast<const char*>(b.data() + 8), "Timeline1");
  for (size_t i = 8 + 9; i < 268; ++i) ASSERT_EQ(b[i], 0) << i;
}

TEST(ProjectFileData, ReaderIgnoresTheHeaderWord) {
  Bytes b;
  PutEntry(b, 264, 0xDEADBEEF, "Repository7");
  FILE* f = StreamOf(b);
  CProjectFileData entry;
  EXPECT_EQ(entry.Load(f), 0);
  EXPECT_STREQ(entry.szName, "Repository7");
  EXPECT_EQ(std::ftell(f), 268);
  std::fclose(f);
}

TEST(ProjectFileData, ShortEntryGivesANameThatEndsEarly) {
  Bytes b;
  PutEntry(b, 4 + 5, 0, "Timeline12");
  PutEntry(b, 264, 0, "Next");
  FILE* f = StreamOf(b);
  CProjectFileData entry;
  EXPECT_EQ(entry.Load(f), 0);
  EXPECT_STREQ(entry.szName, "Timel");
  CProjectFileData next;
  EXPECT_EQ(next.Load(f), 0);  // the stream stands right behind the short entry
  EXPECT_STREQ(next.szName, "Next");
  std::fclose(f);
}

TEST(ProjectFileData, OverLongEntryIsRefusedAndKeepsItsName) {
  Bytes b;
  PutEntry(b, 265, 0, "TooLong");
  FILE* f = StreamOf(b);
  CProjectFileData entry("Before");
  EXPECT_EQ(entry.Load(f), -1);
  EXPECT_STREQ(entry.szName, "Before");
  EXPECT_EQ(std::ftell(f), 4);  // behind the size field only
  std::fclose(f);
}

TEST(ProjectFileData, NullStreamsAndEmptyFilesFail) {
  CProjectFileData entry("Kept");
  EXPECT_EQ(entry.Save(nullptr), -1);
  EXPECT_EQ(entry.Load(nullptr), -1);
  FILE* f = std::tmpfile();
  EXPECT_EQ(entry.Load(f), -1);
  std::fclose(f);
  Bytes zero;
  Put(zero, int32_t{0});
  f = StreamOf(zero);
  EXPECT_EQ(entry.Load(f), -1);
  std::fclose(f);
  EXPECT_STREQ(entry.szName, "Kept");
}

TEST(ProjectFileData, LongNameIsCutAtTheField) {
  const std::string longName(400, 'n');
  CProjectFileData entry(longName.c_str());
  EXPECT_EQ(std::strlen(entry.szName), 259u);
  CProjectFileData none(nullptr);
  EXPECT_STREQ(none.szName, "");
}

TEST(ProjectFileList, SaveWritesEveryEntryInOrderAndSkipsNulls) {
  CProjectFileList list;
  list.Add(new CProjectFileData("A"));
  list.m_aItems.Add(nullptr);
  list.Add(new CProjectFileData("B"));
  const Bytes b = SavedBytes(list);
  ASSERT_EQ(b.size(), 2u * 268);
  EXPECT_STREQ(reinterpret_cast<const char*>(b.data() + 8), "A");
  EXPECT_STREQ(reinterpret_cast<const char*>(b.data() + 268 + 8), "B");
}

TEST(ProjectFileList, RoundTripGivesTheSameNames) {
  CProjectFileList out;
  for (const char* n : {"Timeline1", "Timeline2", "Cut"}) out.Add(new CProjectFileData(n));
  FILE* f = std::tmpfile();
  out.Save(f);
  std::rewind(f);
  CProjectFileList in;
  in.Add(new CProjectFileData("old"));
  EXPECT_EQ(in.Load(f, 3), 0);
  std::fclose(f);
  ASSERT_EQ(in.GetCount(), 3);
  EXPECT_STREQ(in.GetAt(0)->szName, "Timeline1");
  EXPECT_STREQ(in.GetAt(1)->szName, "Timeline2");
  EXPECT_STREQ(in.GetAt(2)->szName, "Cut");
}

TEST(ProjectFileList, OverLongEntryIsKeptWithAnEmptyName) {
  Bytes b;
  PutEntry(b, 264, 0, "First");
  PutEntry(b, 265, 0, "Bad");
  FILE* f = StreamOf(b);
  CProjectFileList list;
  EXPECT_EQ(list.Load(f, 2), 0);
  std::fclose(f);
  ASSERT_EQ(list.GetCount(), 2);
  EXPECT_STREQ(list.GetAt(0)->szName, "First");
  EXPECT_STREQ(list.GetAt(1)->szName, "");
}

TEST(ProjectFileList, ACountBeyondTheStreamEndsWithEmptyEntriesAndStops) {
  Bytes b;
  PutEntry(b, 264, 0, "Only");
  FILE* f = StreamOf(b);
  CProjectFileList list;
  EXPECT_EQ(list.Load(f, 1 << 30), 0);  // no memory for a billion entries
  std::fclose(f);
  ASSERT_GE(list.GetCount(), 2);
  EXPECT_LE(list.GetCount(), 1 + CProjectFileList::kMaxElementsPastEnd + 1);
  EXPECT_STREQ(list.GetAt(0)->szName, "Only");
  EXPECT_STREQ(list.GetAt(1)->szName, "");
}

}  // namespace
