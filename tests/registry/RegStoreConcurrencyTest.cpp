// Two writers on one store at the same time lose nothing: the write lock is
// taken at the start of each transaction and a busy store is waited for.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <vector>

#include "registry/RegStore.h"
#include "tests/support/TempStore.h"

namespace {

constexpr int kValuesEach = 60;

void WriteMany(const std::string& prefix, int* failures) {
  CRegStore reg;
  reg.SetBase(HKEY_CURRENT_USER, "Software\\Shared");
  for (int i = 0; i < kValuesEach; ++i) {
    if (reg.WriteDword("Values", prefix + std::to_string(i), static_cast<uint32_t>(i)) != 1) {
      ++*failures;
    }
    if (reg.WriteStringList("Lists\\" + prefix, "Item", {prefix, std::to_string(i)}) != 1) {
      ++*failures;
    }
  }
}

class RegStoreConcurrencyTest : public TempStoreTest {
 protected:
  void ExpectEverythingStored(const std::vector<std::string>& prefixes) {
    CRegStore reg;
    reg.SetBase(HKEY_CURRENT_USER, "Software\\Shared");
    for (const std::string& prefix : prefixes) {
      for (int i = 0; i < kValuesEach; ++i) {
        EXPECT_EQ(reg.ReadDword("Values", prefix + std::to_string(i), 999),
                  static_cast<uint32_t>(i))
            << prefix << i;
      }
      std::list<std::string> list;
      reg.ReadStringList("Lists\\" + prefix, "Item", list);
      EXPECT_EQ(list, (std::list<std::string>{prefix, std::to_string(kValuesEach - 1)}));
    }
  }
};

TEST_F(RegStoreConcurrencyTest, TwoProcessesWritingAtOnceLoseNothing) {
  std::vector<pid_t> children;
  for (const char* prefix : {"first", "second"}) {
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      int failures = 0;
      WriteMany(prefix, &failures);
      _exit(failures == 0 ? 0 : 1);
    }
    children.push_back(pid);
  }
  for (const pid_t pid : children) {
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
  }
  ExpectEverythingStored({"first", "second"});
}

TEST_F(RegStoreConcurrencyTest, TwoThreadsWithTheirOwnStoresLoseNothing) {
  int failuresA = 0;
  int failuresB = 0;
  std::thread a(WriteMany, "left", &failuresA);
  std::thread b(WriteMany, "right", &failuresB);
  a.join();
  b.join();
  EXPECT_EQ(failuresA, 0);
  EXPECT_EQ(failuresB, 0);
  ExpectEverythingStored({"left", "right"});
}

}  // namespace
