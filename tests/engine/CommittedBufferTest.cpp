// Buffers from AllocBuffersRGBA are committed: every page has been written
// before the buffer is handed out, so none of them is the kernel's shared
// zero page and a test reading a source reads real memory.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <vector>

#include "engine/Pixmill.h"

namespace {

constexpr uint64_t kPagePresent = 1ull << 63;
constexpr uint64_t kPageExclusive = 1ull << 56;
constexpr uint64_t kPfnMask = (1ull << 55) - 1;

size_t PageSize() {
  return static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

long MinorFaultsOfThisThread() {
  rusage usage{};
  getrusage(RUSAGE_THREAD, &usage);
  return usage.ru_minflt;
}

// Minor faults taken while writing every page of [p, p + bytes).
long FaultsToWrite(unsigned char* p, size_t bytes) {
  const long before = MinorFaultsOfThisThread();
  for (size_t i = 0; i < bytes; i += PageSize()) p[i] = 1;
  return MinorFaultsOfThisThread() - before;
}

// The pagemap entry of each whole page inside [p, p + bytes); empty when the
// file can't be read here.
std::vector<uint64_t> PageEntries(const unsigned char* p, size_t bytes) {
  std::vector<uint64_t> entries;
  const int fd = open("/proc/self/pagemap", O_RDONLY);
  if (fd < 0) return entries;
  const size_t page = PageSize();
  const uintptr_t first = (reinterpret_cast<uintptr_t>(p) + page - 1) / page;
  const uintptr_t end = (reinterpret_cast<uintptr_t>(p) + bytes) / page;
  for (uintptr_t index = first; index < end; ++index) {
    uint64_t entry = 0;
    if (pread(fd, &entry, sizeof entry, static_cast<off_t>(index * sizeof entry)) !=
        static_cast<ssize_t>(sizeof entry)) {
      entries.clear();
      break;
    }
    entries.push_back(entry);
  }
  close(fd);
  return entries;
}

class CommittedBuffers : public ::testing::TestWithParam<int> {
 protected:
  void SetUp() override {
    InitConverterLib();
    m_Engine.Img_InitConverter(GetParam(), 1, nullptr, 720, 576, 0);
  }
  CPixmill m_Engine;
};

// 64 MiB: above the largest size the C library serves from memory it already
// used, so every buffer here is fresh from the kernel and only the engine can
// have written it.
constexpr int kSide = 4096;
constexpr size_t kBytes = size_t(kSide) * kSide * 4;

// A buffer whose pages were never written takes one fault per page on its
// first write (16384 here); a committed one takes none. The margin
// leaves room for a sanitizer's own bookkeeping.
TEST_P(CommittedBuffers, WritingEveryPageOfAFreshBufferTakesNoPageFaults) {
  unsigned char* buffer = m_Engine.AllocBuffersRGBA(kSide, kSide, kSide * 4);
  ASSERT_NE(buffer, nullptr);
  const long pages = static_cast<long>(kBytes / PageSize());
  EXPECT_LT(FaultsToWrite(buffer, kBytes), pages / 4);
  m_Engine.FreeBuffers(&buffer);
}

// The zero page is present but shared; a written page is this process's own.
TEST_P(CommittedBuffers, EveryPageIsPresentAndExclusivelyOurs) {
  unsigned char* buffer = m_Engine.AllocBuffersRGBA(kSide, kSide, kSide * 4);
  ASSERT_NE(buffer, nullptr);
  const std::vector<uint64_t> entries = PageEntries(buffer, kBytes);
  if (entries.empty()) GTEST_SKIP() << "/proc/self/pagemap is not readable here";
  size_t absent = 0, shared = 0;
  for (uint64_t entry : entries) {
    absent += (entry & kPagePresent) == 0 ? 1 : 0;
    shared += (entry & kPageExclusive) == 0 ? 1 : 0;
  }
  EXPECT_EQ(absent, 0u);
  EXPECT_EQ(shared, 0u);
  m_Engine.FreeBuffers(&buffer);
}

// Where the kernel shows frame numbers (a privileged reader), two buffers and
// every page within them lie on distinct physical pages.
TEST_P(CommittedBuffers, TwoBuffersShareNoPhysicalPage) {
  unsigned char* a = m_Engine.AllocBuffersRGBA(kSide, kSide, kSide * 4);
  unsigned char* b = m_Engine.AllocBuffersRGBA(kSide, kSide, kSide * 4);
  ASSERT_NE(a, nullptr);
  ASSERT_NE(b, nullptr);
  // Read them as a test reads its source: an unwritten page would now be the
  // one zero page, the same frame everywhere.
  volatile unsigned sum = 0;
  for (size_t i = 0; i < kBytes; i += PageSize()) sum = sum + a[i] + b[i];
  std::vector<uint64_t> entries = PageEntries(a, kBytes);
  const std::vector<uint64_t> more = PageEntries(b, kBytes);
  entries.insert(entries.end(), more.begin(), more.end());
  std::set<uint64_t> frames;
  for (uint64_t entry : entries) frames.insert(entry & kPfnMask);
  if (entries.empty() || (frames.size() == 1 && *frames.begin() == 0))
    GTEST_SKIP() << "frame numbers are hidden from this process";
  EXPECT_EQ(frames.size(), entries.size());
  m_Engine.FreeBuffers(&a);
  m_Engine.FreeBuffers(&b);
}

TEST_P(CommittedBuffers, AFreshBufferReadsAsZero) {
  unsigned char* buffer = m_Engine.AllocBuffersRGBA(720, 576, 2880);
  ASSERT_NE(buffer, nullptr);
  const std::vector<unsigned char> zeros(720 * 576 * 4, 0);
  EXPECT_EQ(std::memcmp(buffer, zeros.data(), zeros.size()), 0);
  m_Engine.FreeBuffers(&buffer);
}

INSTANTIATE_TEST_SUITE_P(CpuAndGpuEngines, CommittedBuffers, ::testing::Values(-1, -2),
                         [](const ::testing::TestParamInfo<int>& info) {
                           return std::string(info.param == -1 ? "Cpu" : "Gpu");
                         });

}  // namespace
