#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include "core/SizedRecord.h"
#include "tests/core/ProbeRecords.h"
#include "tests/support/StreamHelpers.h"

namespace {

std::vector<uint8_t> ProbeBytes(const ProbeData& record, int32_t size) {
  std::vector<uint8_t> bytes;
  Put(bytes, size);
  const auto* p = reinterpret_cast<const uint8_t*>(&record);
  bytes.insert(bytes.end(), p, p + std::min<size_t>(sizeof record, size > 0 ? size : 0));
  return bytes;
}

bool SameRecord(const ProbeData& a, const ProbeData& b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace

TEST(SizedRecord, SaveWritesTheSizeAndTheMemoryImage) {
  Probe probe(7, -2);
  FILE* stream = std::tmpfile();
  ASSERT_EQ(probe.Save(stream), 0);
  EXPECT_EQ(std::ftell(stream), 4 + 18);  // stands right behind what it wrote
  EXPECT_EQ(StreamBytes(stream), ProbeBytes(probe, 18));
  std::fclose(stream);
}

TEST(SizedRecord, SaveThenLoadGivesBackTheSameBytes) {
  Probe original(3, 0x1122334455667788LL);
  std::memcpy(original.szName, "qwert", 6);
  FILE* stream = std::tmpfile();
  ASSERT_EQ(original.Save(stream), 0);
  const auto firstBytes = StreamBytes(stream);
  Probe copy;
  ASSERT_EQ(copy.Load(stream), 0);
  EXPECT_TRUE(SameRecord(copy, original));
  FILE* second = std::tmpfile();
  ASSERT_EQ(copy.Save(second), 0);
  EXPECT_EQ(StreamBytes(second), firstBytes);
  std::fclose(stream);
  std::fclose(second);
}

TEST(SizedRecord, RecordOfTheCurrentSizeLoadsEveryField) {
  ProbeData written;
  written.iKind = 42;
  written.iValue = -99;
  std::memcpy(written.szName, "zyxwv", 6);
  FILE* stream = StreamWith(ProbeBytes(written, 18));
  Probe probe;
  EXPECT_EQ(probe.Load(stream), 0);
  EXPECT_TRUE(SameRecord(probe, written));
  EXPECT_EQ(std::ftell(stream), 22);
  std::fclose(stream);
}

TEST(SizedRecord, RecordOneByteLongerIsRefusedAndTheObjectKeepsItsBytes) {
  ProbeData other;
  other.iKind = 1;
  auto bytes = ProbeBytes(other, 19);
  bytes.push_back(0xEE);
  FILE* stream = StreamWith(bytes);
  Probe probe(55, 66);
  const ProbeData before = probe;
  EXPECT_EQ(probe.Load(stream), -1);
  EXPECT_TRUE(SameRecord(probe, before));
  EXPECT_EQ(std::ftell(stream), 4);  // behind the size field, nothing taken
  std::fclose(stream);
}

TEST(SizedRecord, SizeZeroOrNegativeFails) {
  for (const int32_t size : {0, -1, INT32_MIN}) {
    std::vector<uint8_t> bytes;
    Put(bytes, size);
    bytes.resize(bytes.size() + 18, 0x5A);
    FILE* stream = StreamWith(bytes);
    Probe probe(8, 9);
    const ProbeData before = probe;
    EXPECT_EQ(probe.Load(stream), -1) << size;
    EXPECT_TRUE(SameRecord(probe, before));
    std::fclose(stream);
  }
}

TEST(SizedRecord, ShorterRecordTakesConstructorDefaultsAndTheNextItemReads) {
  std::vector<uint8_t> bytes;
  Put(bytes, int32_t{4});
  Put(bytes, int32_t{77});  // only iKind
  ProbeData next;
  next.iKind = 5;
  next.iValue = 6;
  const auto nextBytes = ProbeBytes(next, 18);
  bytes.insert(bytes.end(), nextBytes.begin(), nextBytes.end());
  FILE* stream = StreamWith(bytes);

  Probe first(1, 555);  // former contents must not leak into the tail
  std::memcpy(first.szName, "old!!", 6);
  ASSERT_EQ(first.Load(stream), 0);
  EXPECT_EQ(Val(first.iKind), 77);
  const ProbeData defaults;
  EXPECT_EQ(Val(first.iValue), Val(defaults.iValue));
  EXPECT_EQ(std::memcmp(first.szName, defaults.szName, 6), 0);
  EXPECT_EQ(std::ftell(stream), 8);

  Probe second;
  ASSERT_EQ(second.Load(stream), 0);
  EXPECT_TRUE(SameRecord(second, next));
  std::fclose(stream);
}

TEST(SizedRecord, NullStreamFailsAtOnce) {
  Probe probe(4, 4);
  EXPECT_EQ(probe.Save(nullptr), -1);
  EXPECT_EQ(probe.Load(nullptr), -1);
  EXPECT_EQ(Val(probe.iKind), 4);
  char block[8] = {};
  EXPECT_EQ(WritePlainBlock(nullptr, block, 8), -1);
  EXPECT_EQ(ReadPlainBlock(nullptr, block, 8), -1);
}

TEST(SizedRecord, EmptyOrTooShortStreamFails) {
  FILE* empty = std::tmpfile();
  Probe probe(4, 4);
  EXPECT_EQ(probe.Load(empty), -1);
  std::fclose(empty);
  // Only the size field, no body at all.
  std::vector<uint8_t> bytes;
  Put(bytes, int32_t{18});
  FILE* headerOnly = StreamWith(bytes);
  EXPECT_EQ(probe.Load(headerOnly), -1);
  EXPECT_EQ(Val(probe.iKind), 4);
  std::fclose(headerOnly);
}

TEST(SizedRecord, WriteThatMovesNothingFails) {
  char path[] = "/tmp/sizedrecordXXXXXX";
  const int fd = mkstemp(path);
  ASSERT_GE(fd, 0);
  close(fd);
  FILE* readOnly = std::fopen(path, "rb");
  Probe probe;
  EXPECT_EQ(probe.Save(readOnly), -1);
  std::fclose(readOnly);
  std::remove(path);
}

TEST(SizedRecord, UpgradeTurnsIntegerTimesIntoDoublesAndSavesFlagOne) {
  std::vector<uint8_t> bytes;
  Put(bytes, int32_t{25});
  Put(bytes, int32_t{0});     // iProbeCount
  Put(bytes, int64_t{1500});  // dStart as an integer
  Put(bytes, int64_t{-40});   // dEnd as an integer
  Put(bytes, uint8_t{0});     // written before times were doubles
  Put(bytes, int32_t{7});     // iTail
  FILE* stream = StreamWith(bytes);
  Shelf shelf;
  ASSERT_EQ(shelf.Load(stream), 0);
  EXPECT_EQ(Val(shelf.dStart), 1500.0);
  EXPECT_EQ(Val(shelf.dEnd), -40.0);
  EXPECT_EQ(Val(shelf.cTimesAreDouble), 1);
  EXPECT_EQ(Val(shelf.iTail), 7);
  std::fclose(stream);

  FILE* saved = std::tmpfile();
  ASSERT_EQ(shelf.Save(saved), 0);
  const auto out = StreamBytes(saved);
  ASSERT_EQ(out.size(), 29u);
  EXPECT_EQ(out[4 + offsetof(ShelfData, cTimesAreDouble)], 1);
  double start = 0;
  std::memcpy(&start, &out[4 + offsetof(ShelfData, dStart)], 8);
  EXPECT_EQ(start, 1500.0);
  std::fclose(saved);
}

TEST(SizedRecord, RecordWithFlagOneIsNotConverted) {
  ShelfData written;
  written.dStart = 12.5;
  written.dEnd = 1e300;
  std::vector<uint8_t> bytes;
  Put(bytes, int32_t{25});
  Put(bytes, written);
  FILE* stream = StreamWith(bytes);
  Shelf shelf;
  ASSERT_EQ(shelf.Load(stream), 0);
  EXPECT_EQ(Val(shelf.dStart), 12.5);
  EXPECT_EQ(Val(shelf.dEnd), 1e300);
  std::fclose(stream);
}

TEST(SizedRecord, RecordTooOldToReachTheFlagKeepsItsBytesAsTheyAre) {
  // 20 bytes end in front of the flag: the local copy keeps the default 1,
  // so nothing is converted and the integer bits stand as they were.
  std::vector<uint8_t> bytes;
  Put(bytes, int32_t{20});
  Put(bytes, int32_t{0});
  Put(bytes, int64_t{1500});
  Put(bytes, int64_t{0});
  FILE* stream = StreamWith(bytes);
  Shelf shelf;
  ASSERT_EQ(shelf.Load(stream), 0);
  int64_t bits = 0;
  std::memcpy(&bits, &shelf.dStart, 8);
  EXPECT_EQ(bits, 1500);
  EXPECT_EQ(Val(shelf.cTimesAreDouble), 1);
  EXPECT_EQ(Val(shelf.iTail), 99);
  std::fclose(stream);
}

TEST(SizedRecord, UpgradeSkipsOffsetsOutsideTheRecord) {
  uint8_t record[12] = {};
  int64_t value = 3;
  std::memcpy(record, &value, 8);
  const size_t offsets[] = {0, 8};  // the second would run past the end
  UpgradeTimesToDouble(record, 12, 11, offsets);
  double converted = 0;
  std::memcpy(&converted, record, 8);
  EXPECT_EQ(converted, 3.0);
  EXPECT_EQ(record[11], 1);
}

TEST(SizedRecord, OwnerWritesCountsBeforeTheBodyAndListsBehindIt) {
  Shelf shelf;
  shelf.m_Probes.Add(new Probe(1, 10));
  shelf.m_Probes.Add(new Probe(2, 20));
  shelf.iProbeCount = 0;  // stale on purpose: Save fills it
  FILE* stream = std::tmpfile();
  ASSERT_EQ(shelf.Save(stream), 0);
  const auto bytes = StreamBytes(stream);
  ASSERT_EQ(bytes.size(), 29u + 2 * 22u);
  int32_t count = 0;
  std::memcpy(&count, &bytes[4], 4);
  EXPECT_EQ(count, 2);

  Shelf loaded;
  ASSERT_EQ(loaded.Load(stream), 0);
  ASSERT_EQ(loaded.m_Probes.GetCount(), 2);
  EXPECT_EQ(Val(loaded.m_Probes.GetAt(1)->iValue), 20);
  EXPECT_EQ(loaded.iProbeCount, 2);
  FILE* again = std::tmpfile();
  ASSERT_EQ(loaded.Save(again), 0);
  EXPECT_EQ(StreamBytes(again), bytes);
  std::fclose(stream);
  std::fclose(again);
}

TEST(SizedRecord, PlainBlockTakesExactlyItsSize) {
  uint8_t block[460];
  for (size_t i = 0; i < sizeof block; ++i) block[i] = static_cast<uint8_t>(i * 7);
  FILE* stream = std::tmpfile();
  ASSERT_EQ(WritePlainBlock(stream, block, 460), 0);
  const uint8_t after = 0xAB;
  std::fwrite(&after, 1, 1, stream);
  const auto bytes = StreamBytes(stream);
  ASSERT_EQ(bytes.size(), 461u);
  EXPECT_EQ(std::memcmp(bytes.data(), block, 460), 0);

  uint8_t back[460] = {};
  ASSERT_EQ(ReadPlainBlock(stream, back, 460), 0);
  EXPECT_EQ(std::memcmp(back, block, 460), 0);
  EXPECT_EQ(std::ftell(stream), 460);
  EXPECT_EQ(ReadPlainBlock(stream, back, 0), -1);  // moves nothing
  std::fseek(stream, 0, SEEK_END);
  EXPECT_EQ(ReadPlainBlock(stream, back, 460), -1);  // nothing left
  std::fclose(stream);
}

TEST(SizedRecord, PositionsBeyondTheHelpersRangeAreRefused) {
  // The positioned helpers seek with 32-bit offsets: a stream standing past
  // 2 GiB gets -1 and nothing is written (the file stays sparse and short).
  FILE* stream = std::tmpfile();
  ASSERT_EQ(fseeko(stream, off_t{3} << 30, SEEK_SET), 0);
  Probe probe;
  EXPECT_EQ(probe.Save(stream), -1);
  EXPECT_EQ(probe.Load(stream), -1);
  uint8_t block[4] = {};
  EXPECT_EQ(WritePlainBlock(stream, block, 4), -1);
  EXPECT_EQ(ReadPlainBlock(stream, block, 4), -1);
  std::fflush(stream);
  std::fseek(stream, 0, SEEK_END);
  EXPECT_EQ(std::ftell(stream), 0);
  // Just below the limit a record that would cross it is refused too.
  ASSERT_EQ(fseeko(stream, off_t{INT32_MAX} - 10, SEEK_SET), 0);
  EXPECT_EQ(probe.Save(stream), -1);
  std::fclose(stream);
}

TEST(SizedRecord, FailingAfterReadHookLeavesTheObjectAlone) {
  ProbeData written;
  written.iKind = 31;
  FILE* stream = StreamWith(ProbeBytes(written, 18));
  Probe probe(2, 3);
  bool listsRan = false;
  const int32_t result = LoadSizedRecord(
      stream, probe.Record(), [](ProbeData&) { return -1; }, [&](ProbeData&) { listsRan = true; });
  EXPECT_EQ(result, -1);
  EXPECT_FALSE(listsRan);
  EXPECT_EQ(Val(probe.iKind), 2);
  std::fclose(stream);
}

TEST(SizedRecord, FailingAfterBodyHookFailsTheSaveAfterTheBody) {
  Probe probe(6, 7);
  FILE* stream = std::tmpfile();
  int calls = 0;
  const int32_t result = SaveSizedRecord(
      stream, probe.Record(), [&] { ++calls; }, [&] { return ++calls > 0 ? -1 : 0; });
  EXPECT_EQ(result, -1);
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(StreamBytes(stream), ProbeBytes(probe, 18));
  std::fclose(stream);
}

TEST(SizedRecord, RawPointerFormWritesTheGivenSize) {
  uint8_t record[5] = {1, 2, 3, 4, 5};
  FILE* stream = std::tmpfile();
  ASSERT_EQ(SaveSizedBytes(stream, record, 3), 0);
  const auto bytes = StreamBytes(stream);
  const std::vector<uint8_t> expected = {3, 0, 0, 0, 1, 2, 3};
  EXPECT_EQ(bytes, expected);
  uint8_t back[5] = {};
  EXPECT_EQ(ReadSizedRecord(stream, back, 2), -1);  // 3 is more than 2
  EXPECT_EQ(std::ftell(stream), 4);
  std::rewind(stream);
  EXPECT_EQ(ReadSizedRecord(stream, back, 5), 0);
  EXPECT_EQ(std::memcmp(back, record, 3), 0);
  EXPECT_EQ(back[3], 0);
  std::fclose(stream);
}
