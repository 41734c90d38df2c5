// The command-line tool, run as a user would run it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "registry/RegStore.h"
#include "tests/support/TempStore.h"

namespace {

struct ToolRun {
  int status = -1;
  std::string output;  // stdout and stderr together
};

class RegToolTest : public TempStoreTest {
 protected:
  ToolRun Tool(const std::string& arguments) const {
    const std::string command = std::string(TACHYRUN_REG_TOOL) + " " + arguments + " 2>&1";
    ToolRun run;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return run;
    char buffer[512];
    size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) run.output.append(buffer, got);
    const int status = pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
  }
};

TEST_F(RegToolTest, HelpDescribesTheCommands) {
  const ToolRun run = Tool("--help");
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.output.find("Usage: tachyrun-reg"), std::string::npos);
  EXPECT_NE(run.output.find("delete-key KEY"), std::string::npos);
  EXPECT_EQ(Tool("").status, 2);
}

TEST_F(RegToolTest, WritesWhatTheLibraryReads) {
  EXPECT_EQ(Tool("set-dword 'HKLM\\Software\\T' Count -1").status, 0);
  EXPECT_EQ(Tool("set-string 'HKLM\\Software\\T' Name 'two words'").status, 0);
  EXPECT_EQ(Tool("set-binary 'HKLM\\Software\\T' Blob 00ff7f").status, 0);
  CRegStore reg;
  reg.SetBase(HKEY_LOCAL_MACHINE, "Software");
  EXPECT_EQ(reg.ReadDword("T", "Count", 0), 0xFFFFFFFFu);
  std::string text;
  reg.ReadString("T", "Name", "", text);
  EXPECT_EQ(text, "two words");
  uint32_t size = 0;
  std::unique_ptr<uint8_t[]> blob(reg.ReadBinary("T", "Blob", &size));
  ASSERT_NE(blob, nullptr);
  ASSERT_EQ(size, 3u);
  EXPECT_EQ(blob[1], 0xFF);
}

TEST_F(RegToolTest, ListsAndGetsWhatTheLibraryWrote) {
  CRegStore reg;
  reg.SetBase(HKEY_CURRENT_USER, "Software\\App");
  ASSERT_EQ(reg.WriteDword("Section", "Number", 44), 1);
  ASSERT_EQ(reg.WriteString("", "Title", "hello"), 1);
  const ToolRun list = Tool("list 'HKCU\\software\\app'");
  EXPECT_EQ(list.status, 0);
  EXPECT_NE(list.output.find("class \"Tessavane Data\""), std::string::npos);
  EXPECT_NE(list.output.find("Section\\"), std::string::npos);
  EXPECT_NE(list.output.find("Title = REG_SZ \"hello\""), std::string::npos);
  const ToolRun get = Tool("get 'HKEY_CURRENT_USER\\Software\\App\\Section' number");
  EXPECT_EQ(get.status, 0);
  EXPECT_NE(get.output.find("REG_DWORD 0x0000002c (44)"), std::string::npos);
}

TEST_F(RegToolTest, DeletesValuesAndKeyTrees) {
  CRegStore reg;
  reg.SetBase(HKEY_CURRENT_USER, "Software");
  ASSERT_EQ(reg.WriteDword("A\\B", "v", 1), 1);
  ASSERT_EQ(reg.WriteDword("A", "w", 2), 1);
  EXPECT_EQ(Tool("delete-value 'HKCU\\Software\\A' w").status, 0);
  EXPECT_EQ(reg.ReadDword("A", "w", 0), 0u);
  EXPECT_EQ(Tool("delete-value 'HKCU\\Software\\A' w").status, 1);
  EXPECT_EQ(Tool("delete-key 'HKCU\\Software\\A'").status, 0);
  EXPECT_EQ(reg.ReadDword("A\\B", "v", 0), 0u);
  EXPECT_EQ(Tool("delete-key 'HKCU\\Software\\A'").status, 1);
  EXPECT_EQ(Tool("delete-key HKCU").status, 2);
}

TEST_F(RegToolTest, ClearErrorsForBadUsageAndMissingThings) {
  ToolRun run = Tool("get 'HKCU\\Nothing' v");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.output.find("cannot read the store"), std::string::npos);  // no file yet
  ASSERT_EQ(Tool("set-dword 'HKCU\\K' v 1").status, 0);
  run = Tool("get 'HKCU\\Nothing' v");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.output.find("key not found"), std::string::npos);
  run = Tool("get 'HKCU\\K' missing");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.output.find("value not found"), std::string::npos);
  EXPECT_EQ(Tool("frobnicate x").status, 2);
  EXPECT_EQ(Tool("get HKCU").status, 2);
  EXPECT_EQ(Tool("list 'HKCR\\x'").status, 2);
  EXPECT_EQ(Tool("set-dword 'HKCU\\K' v 99999999999").status, 2);
  EXPECT_EQ(Tool("set-binary 'HKCU\\K' v 0g").status, 2);
  EXPECT_EQ(Tool("set-binary 'HKCU\\K' v abc").status, 2);
}

TEST_F(RegToolTest, StoreOptionOverridesTheEnvironment) {
  const std::string other = m_dir + "/other.sqlite3";
  EXPECT_EQ(Tool("--store '" + other + "' set-dword 'HKCU\\K' v 3").status, 0);
  EXPECT_TRUE(std::filesystem::exists(other));
  EXPECT_FALSE(std::filesystem::exists(m_store));
  const ToolRun path = Tool("--store '" + other + "' path");
  EXPECT_EQ(path.output, other + "\n");
}

TEST_F(RegToolTest, BrokenStoreIsReportedNotFatal) {
  WriteAll(m_store, std::string(4096, 'x'));
  ToolRun run = Tool("set-dword 'HKCU\\K' v 1");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.output.find("cannot write the store"), std::string::npos);
  EXPECT_EQ(Tool("list HKCU").status, 1);
}

}  // namespace
