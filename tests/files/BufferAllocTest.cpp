#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "files/BufferAlloc.h"

namespace {

struct Shown {
  std::string text;
  std::string caption;
};
std::vector<Shown> g_Shown;

void Record(const char* text, const char* caption) {
  g_Shown.push_back({text, caption});
}

// Records the messages of AllocBuffers and puts the default back after.
class BufferAllocTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_Shown.clear();
    m_Previous = SetAllocErrorHandler(Record);
  }
  void TearDown() override { SetAllocErrorHandler(m_Previous); }

  static bool AllZero(const void* block, size_t bytes) {
    const auto* p = static_cast<const unsigned char*>(block);
    return std::all_of(p, p + bytes, [](unsigned char c) { return c == 0; });
  }

  AllocErrorHandler m_Previous = nullptr;
};

}  // namespace

TEST_F(BufferAllocTest, SizesAreRoundedUpToTheAlignment) {
  void* aligned = AllocBuffers(4, 100, 0, 64);
  ASSERT_NE(aligned, nullptr);
  EXPECT_EQ(GetBufferBytes(aligned), 4u * 128u);
  void* plain = AllocBuffers(4, 100, 0, 1);
  ASSERT_NE(plain, nullptr);
  EXPECT_EQ(GetBufferBytes(plain), 4u * 100u);
  void* none = AllocBuffers(4, 100, 0, 0);
  ASSERT_NE(none, nullptr);
  EXPECT_EQ(GetBufferBytes(none), 4u * 100u);
  FreeBuffers(&aligned);
  FreeBuffers(&plain);
  FreeBuffers(&none);
  EXPECT_TRUE(g_Shown.empty());
}

TEST_F(BufferAllocTest, ExtraBytesCountBeforeRounding) {
  void* block = AllocBuffers(3, 100, 29, 64);  // 129 -> 192
  EXPECT_EQ(GetBufferBytes(block), 3u * 192u);
  FreeBuffers(&block);
  block = AllocBuffers(2, 100, 28, 64);  // already a multiple
  EXPECT_EQ(GetBufferBytes(block), 2u * 128u);
  FreeBuffers(&block);
  block = AllocBuffers(1, 100, 0, 7);  // any alignment, not only powers of two
  EXPECT_EQ(GetBufferBytes(block), 105u);
  FreeBuffers(&block);
}

TEST_F(BufferAllocTest, BlockIsZeroedWritableAndPageAligned) {
  void* block = AllocBuffers(3, 1920 * 1080 * 4, 0, 4096);
  ASSERT_NE(block, nullptr);
  const size_t bytes = GetBufferBytes(block);
  EXPECT_EQ(bytes % 4096, 0u);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 4096, 0u);
  EXPECT_TRUE(AllZero(block, bytes));
  auto* p = static_cast<unsigned char*>(block);
  p[0] = 1;
  p[bytes - 1] = 2;
  EXPECT_EQ(p[bytes - 1], 2);
  FreeBuffers(&block);
}

TEST_F(BufferAllocTest, EveryCallCountsAndFreeSetsTheVariableToNull) {
  const uint32_t allocs = GetAllocCount();
  const uint32_t frees = GetFreeCount();
  void* block = AllocBuffers(1, 10, 0, 0);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(GetAllocCount(), allocs + 1);
  FreeBuffers(&block);
  EXPECT_EQ(block, nullptr);
  EXPECT_EQ(GetFreeCount(), frees + 1);
  FreeBuffers(&block);  // a second free of the same variable does nothing
  EXPECT_EQ(GetFreeCount(), frees + 1);
}

TEST_F(BufferAllocTest, FreeOfANullVariableChangesNothing) {
  const uint32_t frees = GetFreeCount();
  void* block = nullptr;
  FreeBuffers(&block);
  EXPECT_EQ(block, nullptr);
  EXPECT_EQ(GetFreeCount(), frees);
  FreeBuffers(nullptr);
  EXPECT_EQ(GetFreeCount(), frees);
}

TEST_F(BufferAllocTest, FailureShowsTheMessageGivesNullAndStillCounts) {
  const uint32_t allocs = GetAllocCount();
  EXPECT_EQ(AllocBuffers(INT32_MAX, INT32_MAX, 0, 0), nullptr);  // 2^62 bytes
  EXPECT_EQ(AllocBuffers(0, 100, 0, 0), nullptr);
  EXPECT_EQ(AllocBuffers(4, -100, 0, 64), nullptr);
  EXPECT_EQ(AllocBuffers(-4, 100, 0, 64), nullptr);
  EXPECT_EQ(GetAllocCount(), allocs + 4);
  ASSERT_EQ(g_Shown.size(), 4u);
  for (const Shown& shown : g_Shown) {
    EXPECT_EQ(shown.text, "Out of Memory Error!");
    EXPECT_EQ(shown.caption, "AllocBuffers Error");
  }
}

TEST_F(BufferAllocTest, SizePlusExtraBeyond32BitsIsARealSize) {
  void* block = AllocBuffers(1, INT32_MAX, 1, 0);  // 2 GiB of address space, untouched
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(GetBufferBytes(block), size_t{1} << 31);
  FreeBuffers(&block);
  EXPECT_TRUE(g_Shown.empty());
}

TEST_F(BufferAllocTest, DefaultHandlerWritesToStderr) {
  SetAllocErrorHandler(nullptr);
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(AllocBuffers(0, 0, 0, 0), nullptr);
  const std::string err = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(err, "AllocBuffers Error: Out of Memory Error!\n");
  EXPECT_TRUE(g_Shown.empty());
}

TEST_F(BufferAllocTest, SetHandlerGivesThePreviousOne) {
  EXPECT_EQ(SetAllocErrorHandler(nullptr), &Record);
  const AllocErrorHandler defaultHandler = SetAllocErrorHandler(Record);
  EXPECT_NE(defaultHandler, nullptr);
  EXPECT_NE(defaultHandler, &Record);
}

TEST_F(BufferAllocTest, ForeignPointerIsNotReleased) {
  int local = 5;
  void* foreign = &local;
  EXPECT_EQ(GetBufferBytes(foreign), 0u);
  FreeBuffers(&foreign);
  EXPECT_EQ(foreign, nullptr);
  EXPECT_EQ(local, 5);
}
