#include <gtest/gtest.h>

#include <string>

#include "core/OwningList.h"
#include "tests/core/DataLockTestPeer.h"
#include "tests/core/ProbeRecords.h"
#include "tests/support/ResidentMemory.h"
#include "tests/support/StreamHelpers.h"

using Peer = CDataLockTestPeer;

namespace {

class OwningList : public ::testing::Test {
 protected:
  void SetUp() override {
    Probe::s_iLive = 0;
    Probe::s_iThrowAfter = -1;
  }
  void TearDown() override { Probe::s_iThrowAfter = -1; }
};

// Saved probes with values 1..n, as a list would write them.
std::vector<uint8_t> SavedProbes(int n) {
  ProbeList list;
  for (int i = 1; i <= n; ++i) list.Add(new Probe(i, i * 100));
  FILE* stream = std::tmpfile();
  list.Save(stream);
  auto bytes = StreamBytes(stream);
  std::fclose(stream);
  return bytes;
}

// A plain block released without its destructor; counts destructor runs.
struct SortBlock {
  ~SortBlock() { ++s_iDestroyed; }
  int32_t iPayload = 0;
  static inline int s_iDestroyed = 0;
};
struct SortLead {
  int32_t iA = 0, iB = 0, iC = 0, iD = 0;
};
using SortBlockList = COwningList<SortBlock, ReleaseStorageOnly, SortLead, NoExtraFields, false>;

struct SortState {
  int32_t iSortKey = -1;
  int32_t iSortDir = 0;
};
using SortedProbeList = COwningList<Probe, ReleaseByDestructor, NoLeadFields, SortState>;

template <class L>
concept HasModCount = requires(L& l) {
  l.GetModCount();
};

// Notes the state of a lock at the moment it is deleted.
struct Watched : Probe {
  ~Watched() override { s_iLockWordAtDelete = Peer::LockWord(*s_pLock); }
  static inline const CDataLock* s_pLock = nullptr;
  static inline int32_t s_iLockWordAtDelete = -1;
};

template <class A, class B>
bool Before(const A& a, const B& b) {
  return reinterpret_cast<const char*>(&a) < reinterpret_cast<const char*>(&b);
}

}  // namespace

TEST_F(OwningList, MembersStandInTheirOrder) {
  SortedProbeList list;
  EXPECT_TRUE(Before(list.m_aItems, list.m_iModCount));
  EXPECT_TRUE(Before(list.m_iModCount, list.m_Extra));
  EXPECT_TRUE(Before(list.m_Extra, list.m_OuterLock));
  EXPECT_TRUE(Before(list.m_OuterLock, list.m_InnerLock));
  EXPECT_EQ(list.m_Extra.iSortKey, -1);
  EXPECT_EQ(list.m_Extra.iSortDir, 0);
  EXPECT_EQ(list.GetModCount(), 0);

  SortBlockList blocks;
  EXPECT_TRUE(Before(blocks.m_Lead, blocks.m_aItems));
  EXPECT_TRUE(Before(blocks.m_aItems, blocks.m_OuterLock));
  static_assert(!HasModCount<SortBlockList>);
  static_assert(HasModCount<SortedProbeList>);
  // Without a change counter the list is no bigger than its other members.
  EXPECT_EQ(sizeof(SortBlockList),
            sizeof(COwningList<SortBlock, ReleaseStorageOnly, SortLead, NoExtraFields, true>) - 8);
}

TEST_F(OwningList, ClearOfAnEmptyListStillRaisesTheChangeCount) {
  ProbeList list;
  list.Clear();
  EXPECT_EQ(list.GetModCount(), 1);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.m_aItems.GetCapacity(), 0);
  EXPECT_EQ(Peer::LockWord(list.m_InnerLock), 0);
}

TEST_F(OwningList, AddTakesOwnershipAndTheDestructorDeletes) {
  {
    ProbeList list;
    EXPECT_EQ(list.Add(new Probe(1)), 0);
    EXPECT_EQ(list.Add(new Probe(2)), 0);
    EXPECT_EQ(list.GetModCount(), 2);
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_EQ(Probe::s_iLive, 2);
  }
  EXPECT_EQ(Probe::s_iLive, 0);
}

TEST_F(OwningList, IndexAtTheCountGivesFalseAndNull) {
  ProbeList list;
  list.Add(new Probe(1));
  const int32_t mods = list.GetModCount();
  EXPECT_EQ(list.GetAt(1), nullptr);
  EXPECT_FALSE(list.RemoveAt(1));
  EXPECT_EQ(list.GetCount(), 1);
  EXPECT_EQ(list.GetModCount(), mods);
  EXPECT_EQ(Peer::LockWord(list.m_InnerLock), 0);
  EXPECT_NE(list.GetAt(0), nullptr);
}

TEST_F(OwningList, NegativeIndexThrowsAndLeavesTheInnerLockFree) {
  ProbeList list;
  list.Add(new Probe(1));
  EXPECT_THROW(list.GetAt(-1), std::out_of_range);
  EXPECT_EQ(Peer::LockWord(list.m_InnerLock), 0);
  EXPECT_THROW(list.RemoveAt(-1), std::out_of_range);
  EXPECT_EQ(Peer::LockWord(list.m_InnerLock), 0);
  EXPECT_EQ(list.GetCount(), 1);  // and the list goes on working
  EXPECT_TRUE(list.RemoveAt(0));
}

TEST_F(OwningList, RemoveAtDeletesOutsideTheLockAndKeepsTheChangeCount) {
  COwningList<Probe> list;
  Watched::s_pLock = &list.m_InnerLock;
  list.Add(new Probe(1));
  list.Add(new Watched);
  list.Add(new Probe(3));
  const int32_t mods = list.GetModCount();
  EXPECT_TRUE(list.RemoveAt(1));
  EXPECT_EQ(Watched::s_iLockWordAtDelete, 0);
  EXPECT_EQ(list.GetModCount(), mods);
  ASSERT_EQ(list.GetCount(), 2);
  EXPECT_EQ(Val(list.GetAt(1)->iKind), 3);
  EXPECT_EQ(Probe::s_iLive, 2);
}

TEST_F(OwningList, NullEntriesAreTolerated) {
  ProbeList list;
  list.Add(new Probe(1));
  list.Add(nullptr);
  list.Add(new Probe(3));
  FILE* stream = std::tmpfile();
  EXPECT_EQ(list.Save(stream), 0);
  EXPECT_EQ(StreamBytes(stream).size(), 2u * 22u);
  EXPECT_TRUE(list.RemoveAt(1));
  list.InsertAt(1, nullptr);
  list.Clear();
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(Probe::s_iLive, 0);
  std::fclose(stream);
}

TEST_F(OwningList, LoadWithCountZeroClearsAndRaisesTwice) {
  ProbeList list;
  list.Add(new Probe(1));
  const int32_t mods = list.GetModCount();
  FILE* stream = StreamWith(SavedProbes(2));
  EXPECT_EQ(list.Load(stream, 0), 0);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.GetModCount(), mods + 2);
  EXPECT_EQ(std::ftell(stream), 0);  // nothing read
  EXPECT_EQ(Probe::s_iLive, 0);
  std::fclose(stream);
}

TEST_F(OwningList, SaveThenLoadRestoresTheElementsInOrder) {
  FILE* stream = StreamWith(SavedProbes(3));
  ProbeList list;
  EXPECT_EQ(list.Load(stream, 3), 0);
  ASSERT_EQ(list.GetCount(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Val(list.GetAt(i)->iValue), (i + 1) * 100);
  EXPECT_EQ(list.GetModCount(), 2);
  EXPECT_EQ(std::ftell(stream), 3 * 22);
  std::fclose(stream);
}

TEST_F(OwningList, LoadOfMoreRecordsThanTheStreamHoldsAddsDefaults) {
  FILE* stream = StreamWith(SavedProbes(2));
  ProbeList list;
  EXPECT_EQ(list.Load(stream, 5), 0);
  ASSERT_EQ(list.GetCount(), 5);
  EXPECT_EQ(Val(list.GetAt(1)->iValue), 200);
  const ProbeData defaults;
  for (int i = 2; i < 5; ++i) {
    EXPECT_EQ(std::memcmp(static_cast<ProbeData*>(list.GetAt(i)), &defaults, sizeof defaults), 0);
  }
  std::fclose(stream);
}

TEST_F(OwningList, HostileCountStopsSoonAfterTheStreamEnds) {
  FILE* stream = StreamWith(SavedProbes(3));
  ProbeList list;
  EXPECT_EQ(list.Load(stream, INT32_MAX), 0);
  EXPECT_EQ(list.GetCount(), 3 + ProbeList::kMaxFailedReads);
  EXPECT_EQ(Val(list.GetAt(2)->iValue), 300);
  EXPECT_EQ(list.GetModCount(), 2);
  std::fclose(stream);
}

TEST_F(OwningList, HostileCountStopsWhenTheStreamStandsBeyondTheHelpersRange) {
  // Past 2 GiB no record can be read and no end is reported: the stream
  // simply stays put, which must end the loading as well.
  FILE* stream = std::tmpfile();
  ASSERT_EQ(fseeko(stream, off_t{3} << 30, SEEK_SET), 0);
  ProbeList list;
  EXPECT_EQ(list.Load(stream, INT32_MAX), 0);
  EXPECT_EQ(list.GetCount(), ProbeList::kMaxFailedReads);
  const ProbeData defaults;
  EXPECT_EQ(std::memcmp(static_cast<ProbeData*>(list.GetAt(0)), &defaults, sizeof defaults), 0);
  EXPECT_EQ(list.GetModCount(), 2);
  std::fclose(stream);
}

// Refused records: size words above the probe's record size, four bytes each.
std::vector<uint8_t> RefusedRecords(size_t bytes) {
  std::vector<uint8_t> out;
  out.reserve(bytes);
  while (out.size() + 4 <= bytes) Put(out, int32_t{0x7FFFFFFF});
  return out;
}

TEST_F(OwningList, FourMebibytesOfRefusedRecordsEndTheLoadAfterOneRun) {
  const std::vector<uint8_t> bytes = RefusedRecords(4u << 20);  // 1,048,576 refused records
  FILE* stream = StreamWith(bytes);
  ProbeList list;
  const long before = ResidentKiB();
  EXPECT_EQ(list.Load(stream, static_cast<int32_t>(bytes.size() / 4)), 0);
  const long grown = ResidentKiB() - before;
  // One run of failed reads and no more: defaults, as a catch-all would leave them.
  EXPECT_EQ(list.GetCount(), ProbeList::kMaxFailedReads);
  EXPECT_EQ(Probe::s_iLive, ProbeList::kMaxFailedReads);
  EXPECT_EQ(list.GetModCount(), 2);
  EXPECT_EQ(Val(list.GetAt(0)->iValue), 1234);
  EXPECT_EQ(ftello(stream), off_t{4} * ProbeList::kMaxFailedReads);  // reading stopped there
  RecordProperty("resident_growth_kib", std::to_string(grown));
  std::fclose(stream);
}

TEST_F(OwningList, AGoodRecordBreaksARunOfFailedReads) {
  // 2000 good, then 1000 refused, one good, 1000 refused, one good: no run
  // reaches the limit, and the good reads back every failed one.
  std::vector<uint8_t> bytes = SavedProbes(2000);
  const std::vector<uint8_t> good = SavedProbes(1);
  const std::vector<uint8_t> refused = RefusedRecords(4000);
  for (int twice = 0; twice < 2; ++twice) {
    bytes.insert(bytes.end(), refused.begin(), refused.end());
    bytes.insert(bytes.end(), good.begin(), good.end());
  }
  FILE* stream = StreamWith(bytes);
  ProbeList list;
  EXPECT_EQ(list.Load(stream, 4002), 0);
  ASSERT_EQ(list.GetCount(), 4002);
  EXPECT_EQ(Val(list.GetAt(1999)->iValue), 200000);
  EXPECT_EQ(Val(list.GetAt(2000)->iValue), 1234);  // a refused record: defaults
  EXPECT_EQ(Val(list.GetAt(3000)->iValue), 100);
  EXPECT_EQ(Val(list.GetAt(4001)->iValue), 100);
  std::fclose(stream);
}

TEST_F(OwningList, FailedReadsCannotOutrunTheGoodOnesBeyondTheLimit) {
  // Runs of 1023 refused records, each broken by one good record: the failed
  // reads may exceed the good ones by the limit, not more.
  const std::vector<uint8_t> good = SavedProbes(1);
  std::vector<uint8_t> bytes;
  for (int run = 0; run < 64; ++run) {
    const std::vector<uint8_t> refused = RefusedRecords(4 * (ProbeList::kMaxFailedReads - 1));
    bytes.insert(bytes.end(), refused.begin(), refused.end());
    bytes.insert(bytes.end(), good.begin(), good.end());
  }
  FILE* stream = StreamWith(bytes);
  ProbeList list;
  EXPECT_EQ(list.Load(stream, INT32_MAX), 0);
  // 1023 failed and 1 good; then 1025 failed against 1 good is one too many,
  // which happens at the third failed read of the second run.
  EXPECT_EQ(list.GetCount(), ProbeList::kMaxFailedReads + 3);
  EXPECT_EQ(list.GetModCount(), 2);
  std::fclose(stream);
}

TEST_F(OwningList, NegativeCountReadsNothing) {
  FILE* stream = StreamWith(SavedProbes(1));
  ProbeList list;
  EXPECT_EQ(list.Load(stream, -5), 0);
  EXPECT_EQ(list.GetCount(), 0);
  std::fclose(stream);
}

TEST_F(OwningList, ExceptionDuringLoadKeepsWhatWasLoaded) {
  FILE* stream = StreamWith(SavedProbes(4));
  ProbeList list;
  Probe::s_iThrowAfter = 2;  // the third element's Load throws
  EXPECT_EQ(list.Load(stream, 4), 0);
  ASSERT_EQ(list.GetCount(), 2);
  EXPECT_EQ(Val(list.GetAt(1)->iValue), 200);
  EXPECT_EQ(list.GetModCount(), 2);
  EXPECT_EQ(Peer::LockWord(list.m_InnerLock), 0);
  EXPECT_EQ(Probe::s_iLive, 2);  // the one that threw was released
  std::fclose(stream);
}

TEST_F(OwningList, SelectiveClearKeepsTheSpecialKindsInOrder) {
  ProbeList list;
  list.Add(new Probe(12, 1));
  list.Add(new Probe(5, 2));
  list.Add(nullptr);
  list.Add(new Probe(13, 3));
  list.Add(new Probe(7, 4));
  const int32_t mods = list.GetModCount();
  list.ClearExcept([](const Probe& p) { return p.iKind == 12 || p.iKind == 13; });
  ASSERT_EQ(list.GetCount(), 2);
  EXPECT_EQ(Val(list.GetAt(0)->iKind), 12);
  EXPECT_EQ(Val(list.GetAt(1)->iKind), 13);
  EXPECT_EQ(Val(list.GetAt(1)->iValue), 3);
  EXPECT_EQ(list.GetModCount(), mods + 1);
  EXPECT_EQ(Probe::s_iLive, 2);
}

TEST_F(OwningList, InsertAtRaisesTheChangeCount) {
  ProbeList list;
  list.Add(new Probe(1));
  list.Add(new Probe(3));
  list.InsertAt(1, new Probe(2));
  EXPECT_EQ(list.GetModCount(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Val(list.GetAt(i)->iKind), i + 1);
}

TEST_F(OwningList, OrderedInsertGoesInFrontOfEqualValues) {
  ProbeList list;
  auto byValue = [](const Probe& added, const Probe& existing) {
    return !(existing.iValue < added.iValue);
  };
  EXPECT_EQ(list.InsertOrdered(new Probe(1, 30), byValue), 0);
  EXPECT_EQ(list.InsertOrdered(new Probe(2, 10), byValue), 0);
  EXPECT_EQ(list.InsertOrdered(new Probe(3, 20), byValue), 1);
  EXPECT_EQ(list.InsertOrdered(new Probe(4, 20), byValue), 1);  // in front of the equal one
  EXPECT_EQ(list.InsertOrdered(new Probe(5, 99), byValue), 4);
  const int kinds[] = {2, 4, 3, 1, 5};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(Val(list.GetAt(i)->iKind), kinds[i]);
  EXPECT_EQ(list.GetModCount(), 5);
}

TEST_F(OwningList, ChangeCountWrapsSilently) {
  ProbeList list;
  list.m_iModCount = INT32_MAX;
  list.Add(new Probe(1));
  EXPECT_EQ(list.GetModCount(), INT32_MIN);
}

TEST_F(OwningList, StorageOnlyReleaseRunsNoDestructor) {
  SortBlock::s_iDestroyed = 0;
  {
    SortBlockList blocks;
    blocks.Add(new SortBlock);
    blocks.Add(new SortBlock);
    EXPECT_TRUE(blocks.RemoveAt(0));
    EXPECT_EQ(blocks.GetCount(), 1);
  }
  // Freed (the leak checker of the sanitizer build watches that) but not destroyed.
  EXPECT_EQ(SortBlock::s_iDestroyed, 0);
}

TEST_F(OwningList, OuterLockIsLeftToTheCaller) {
  ProbeList list;
  list.m_OuterLock.Acquire(17);
  list.Add(new Probe(1));
  list.Clear();
  EXPECT_EQ(Peer::LockWord(list.m_OuterLock), 1);
  EXPECT_EQ(Peer::OwnerCode(list.m_OuterLock), 17);
  EXPECT_EQ(Peer::OwnerCode(list.m_InnerLock), 0);
  list.m_OuterLock.Release();
}
