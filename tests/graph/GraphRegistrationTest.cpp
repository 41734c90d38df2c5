// Registration of graphs for outside viewers, and the tachyrun-graphs tool.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include "graph/GraphRegistration.h"
#include "graph/GraphText.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

namespace {

struct ToolResult {
  int status;
  std::string output;
};

ToolResult RunTool(const std::string& arguments) {
  ToolResult result{-1, ""};
  FILE* pipe = popen((std::string(TACHYRUN_GRAPHS_TOOL) + " " + arguments + " 2>&1").c_str(), "r");
  if (!pipe) return result;
  char buffer[512];
  while (size_t got = fread(buffer, 1, sizeof(buffer), pipe)) result.output.append(buffer, got);
  const int status = pclose(pipe);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

std::string ReadText(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Registrations go to a runtime folder of the test's own.
class RegistrationTest : public TempFolderTest {
 protected:
  void SetUp() override {
    TempFolderTest::SetUp();
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    m_HadRuntime = runtime != nullptr;
    if (runtime) m_SavedRuntime = runtime;
    setenv("XDG_RUNTIME_DIR", m_Folder.c_str(), 1);
  }
  void TearDown() override {
    if (m_HadRuntime) {
      setenv("XDG_RUNTIME_DIR", m_SavedRuntime.c_str(), 1);
    } else {
      unsetenv("XDG_RUNTIME_DIR");
    }
    TempFolderTest::TearDown();
  }
  std::string RegisteredPath(GstElement* graph) const {
    return GraphRegistrationFolder() + "/" +
           GraphRegistrationName(graph, static_cast<uint32_t>(getpid()));
  }

  bool m_HadRuntime = false;
  std::string m_SavedRuntime;
};

}  // namespace

TEST(GraphRegistrationNameTest, AddressAndProcessInEightHexDigits) {
  EXPECT_EQ(GraphRegistrationName(reinterpret_cast<void*>(0x1234abcd), 0x42),
            "FilterGraph 1234abcd pid 00000042");
  EXPECT_EQ(GraphRegistrationName(reinterpret_cast<void*>(0x10), 7),
            "FilterGraph 00000010 pid 00000007");
  if (sizeof(void*) == 8) {
    // Viewers look for exactly eight digits: a wider address gives its low
    // 32 bits, as %08x of a pointer always did.
    EXPECT_EQ(GraphRegistrationName(reinterpret_cast<void*>(0x55d0c8a3b2c0ull), 0x3039),
              "FilterGraph c8a3b2c0 pid 00003039");
  }
}

TEST_F(RegistrationTest, TheFolderFollowsTheRuntimeFolder) {
  EXPECT_EQ(GraphRegistrationFolder(), m_Folder.string() + "/tachyrun/graphs");
  unsetenv("XDG_RUNTIME_DIR");
  EXPECT_EQ(GraphRegistrationFolder(), "/tmp/tachyrun-" + std::to_string(getuid()) + "/graphs");
}

TEST_F(RegistrationTest, TheFileAppearsWithTheTextAndGoesAway) {
  ElementRef pipeline = Launch("videotestsrc name=src ! tee name=t ! queue ! fakesink name=out");
  const int refs = GST_OBJECT_REFCOUNT_VALUE(pipeline.get());
  uint32_t cookie = 0;
  ASSERT_EQ(AddGraphToRot(Bin(pipeline), &cookie), S_OK);
  EXPECT_NE(cookie, 0u);
  const std::string path = RegisteredPath(pipeline.get());
  ASSERT_TRUE(std::filesystem::exists(path)) << path;
  std::string text;
  ASSERT_TRUE(WriteGraphText(Bin(pipeline), &text));
  EXPECT_EQ(ReadText(path), text);
  // The registration keeps the graph alive.
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(pipeline.get()), refs + 1);
  RemoveGraphFromRot(cookie);
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(pipeline.get()), refs);
  RemoveGraphFromRot(cookie);  // a second time: nothing left to do
  RemoveGraphFromRot(0xdeadbeef);
}

TEST_F(RegistrationTest, TwoGraphsHaveTwoCookiesAndTwoFiles) {
  ElementRef first = Launch("videotestsrc ! fakesink");
  ElementRef second = Launch("audiotestsrc ! fakesink");
  uint32_t a = 0;
  uint32_t b = 0;
  ASSERT_EQ(AddGraphToRot(Bin(first), &a), S_OK);
  ASSERT_EQ(AddGraphToRot(Bin(second), &b), S_OK);
  EXPECT_NE(a, b);
  RemoveGraphFromRot(a);
  EXPECT_FALSE(std::filesystem::exists(RegisteredPath(first.get())));
  EXPECT_TRUE(std::filesystem::exists(RegisteredPath(second.get())));
  RemoveGraphFromRot(b);
}

TEST_F(RegistrationTest, AGraphRegisteredTwiceKeepsItsFileUntilBothAreRevoked) {
  ElementRef pipeline = Launch("videotestsrc ! fakesink");
  uint32_t a = 0;
  uint32_t b = 0;
  ASSERT_EQ(AddGraphToRot(Bin(pipeline), &a), S_OK);
  ASSERT_EQ(AddGraphToRot(Bin(pipeline), &b), S_OK);
  EXPECT_NE(a, b);
  RemoveGraphFromRot(a);
  EXPECT_TRUE(std::filesystem::exists(RegisteredPath(pipeline.get())));
  RemoveGraphFromRot(b);
  EXPECT_FALSE(std::filesystem::exists(RegisteredPath(pipeline.get())));
}

TEST_F(RegistrationTest, NullArgumentsAndAnUnwritableFolder) {
  ElementRef pipeline = Launch("videotestsrc ! fakesink");
  uint32_t cookie = 0;
  EXPECT_EQ(AddGraphToRot(nullptr, &cookie), E_POINTER);
  EXPECT_EQ(AddGraphToRot(Bin(pipeline), nullptr), E_POINTER);
  // A file where the folder should be.
  std::ofstream(PathOf("tachyrun")) << "in the way";
  EXPECT_EQ(AddGraphToRot(Bin(pipeline), &cookie), E_FAIL);
}

TEST_F(RegistrationTest, TheToolListsAndShowsARegisteredGraph) {
  ElementRef pipeline = Launch("videotestsrc name=src pattern=ball ! fakesink name=out");
  uint32_t cookie = 0;
  ASSERT_EQ(AddGraphToRot(Bin(pipeline), &cookie), S_OK);
  const std::string name = GraphRegistrationName(pipeline.get(), static_cast<uint32_t>(getpid()));
  EXPECT_TRUE(std::regex_match(name, std::regex("FilterGraph [0-9a-f]{8} pid [0-9a-f]{8}")))
      << name;
  ToolResult list = RunTool("list");
  EXPECT_EQ(list.status, 0);
  EXPECT_EQ(list.output, name + "\trunning\n");
  EXPECT_EQ(RunTool("").output, list.output);
  ToolResult show = RunTool("show '" + name + "'");
  EXPECT_EQ(show.status, 0);
  EXPECT_EQ(show.output,
            "videotestsrc name=src pattern=ball\nfakesink name=out\nsrc.src ! out.sink\n");
  RemoveGraphFromRot(cookie);
  list = RunTool("list");
  EXPECT_EQ(list.status, 0);
  EXPECT_EQ(list.output, "");
  show = RunTool("show '" + name + "'");
  EXPECT_EQ(show.status, 1);
  EXPECT_NE(show.output.find("no graph named"), std::string::npos) << show.output;
}

TEST_F(RegistrationTest, TheToolTellsAGraphWhoseProcessHasEnded) {
  const pid_t child = fork();
  if (child == 0) _exit(0);
  waitpid(child, nullptr, 0);
  std::filesystem::create_directories(GraphRegistrationFolder());
  const std::string name =
      GraphRegistrationName(reinterpret_cast<void*>(0xabc0), static_cast<uint32_t>(child));
  std::ofstream(GraphRegistrationFolder() + "/" + name) << "fakesink name=left\n";
  std::ofstream(GraphRegistrationFolder() + "/not a graph") << "x";
  EXPECT_EQ(RunTool("list").output, name + "\tgone\n");
}

TEST_F(RegistrationTest, TheToolExplainsBadUsage) {
  ToolResult help = RunTool("--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.output.rfind("Usage: tachyrun-graphs", 0), 0u) << help.output;
  ToolResult unknown = RunTool("frobnicate");
  EXPECT_EQ(unknown.status, 2);
  EXPECT_NE(unknown.output.find("unknown command"), std::string::npos) << unknown.output;
  ToolResult badName = RunTool("show ../../etc/passwd");
  EXPECT_EQ(badName.status, 2);
  EXPECT_NE(badName.output.find("is not a graph name"), std::string::npos) << badName.output;
  ToolResult folder = RunTool("folder");
  EXPECT_EQ(folder.output, GraphRegistrationFolder() + "\n");
  // Nothing registered yet: the folder does not exist, and the list is empty.
  ToolResult empty = RunTool("list");
  EXPECT_EQ(empty.status, 0);
  EXPECT_EQ(empty.output, "");
}
