// The subcommands that write: new, backup, version and restore (and
// versions, which lists what version wrote).

#include <nlohmann/json.hpp>

#include "tests/tools/ProjectToolTestUtil.h"

namespace tooltest {
namespace {

using nlohmann::json;

TEST_F(ToolTest, NewMakesAProjectFromTheTemplateAndPrintsItsFile) {
  fs::create_directories(Scratch("root"));
  const ToolRun run = Tool({"new", Scratch("root"), "Fresh"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const std::string file = Scratch("root/Fresh/Fresh.qzpj");
  EXPECT_EQ(run.out, file + "\n");
  EXPECT_TRUE(fs::is_regular_file(file));
  EXPECT_TRUE(fs::is_regular_file(Scratch("root/Fresh/Database/Timeline/Timeline1.Qzt")));
  EXPECT_TRUE(fs::is_regular_file(Scratch("root/Fresh/Database/Repository/Repository1.Qzr")));
  EXPECT_EQ(Tool({"check", file}).exitCode, 0);
  // The library reads what the tool made.
  CProject project;
  ASSERT_EQ(project.Open(file.c_str(), 1), 0);
  EXPECT_EQ(project.pTimelineList->GetCount(), 1);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 1);
  EXPECT_STREQ(project.projectData.szProjectName, "Fresh");
}

TEST_F(ToolTest, NewNeverWritesOverAnExistingProject) {
  const std::string path = Sample();
  const auto before = TreeSnapshot(Scratch("root"));
  const ToolRun run = Tool({"new", Scratch("root"), "Sample"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.err.find("already exists"), std::string::npos);
  EXPECT_EQ(TreeSnapshot(Scratch("root")), before);
}

TEST_F(ToolTest, NewUnderAMissingRootIsRefused) {
  const ToolRun run = Tool({"new", Scratch("nowhere"), "P"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.err.find(Scratch("nowhere") + ": is not a directory"), std::string::npos);
  EXPECT_FALSE(fs::exists(Scratch("nowhere")));
}

TEST_F(ToolTest, BackupWritesABk1SetOfTheProject) {
  const std::string path = Sample();
  const std::string folder = Scratch("root/Sample/");
  const ToolRun run = Tool({"backup", path});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_NE(run.out.find(folder + "Sample.Bk1\n"), std::string::npos) << run.out;
  EXPECT_TRUE(fs::is_regular_file(folder + "Sample.Bk1"));
  EXPECT_TRUE(fs::is_regular_file(folder + "Database/Timeline/Second.Bk1"));
  // The set reads back as the project it was made from.
  CProject copy;
  ASSERT_EQ(copy.OpenWithExtension((folder + "Sample.Bk1").c_str()), 0);
  EXPECT_EQ(copy.pTimelineList->GetCount(), 2);
  EXPECT_EQ(copy.pTimelineList->GetAt(0)->tracks.GetAt(0)->components.GetCount(), 2);
}

TEST_F(ToolTest, VersionsAreMadeListedAndRestored) {
  const std::string path = Sample();
  const std::string versions = Scratch("root/Sample/Versions/");
  ToolRun run = Tool({"version", path});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(run.out, versions + "Version1\n");
  run = Tool({"version", path, "Before cut"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(run.out, versions + "Before cut\n");
  EXPECT_TRUE(fs::is_regular_file(versions + "Before cut/Sample.qzpj"));
  EXPECT_TRUE(fs::is_regular_file(versions + "Before cut/Database/Timeline/Timeline1.Qzt"));

  run = Tool({"versions", path});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_NE(run.out.find("  Before cut ("), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("  Version1 ("), std::string::npos) << run.out;

  // An edit saved by the library, then the version brought back.
  {
    CProject project;
    ASSERT_EQ(project.Open(path.c_str(), 1), 0);
    TrackOf(project, 0, 0)->components.RemoveAt(0);
    project.MarkChanged(0);
    ASSERT_EQ(project.Save(const_cast<char*>(path.c_str())), 0);
  }
  auto videoComponents = [&]() {
    const json dump = json::parse(Tool({"dump", path, "--json", "--timeline", "Timeline1"}).out);
    return dump["timelines"][0]["tracks"][0]["components"].size();
  };
  EXPECT_EQ(videoComponents(), 1u);
  run = Tool({"restore", path, "Before cut"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_EQ(run.out, "restored Before cut into " + path + "\n");
  EXPECT_EQ(videoComponents(), 2u);
}

TEST_F(ToolTest, ProjectPathsMayBeRelativeToWhereTheToolRuns) {
  Sample();
  const std::string relative = "Sample/Sample.qzpj";
  const std::string root = Scratch("root");
  EXPECT_EQ(Tool({"backup", relative}, root).exitCode, 0);
  EXPECT_TRUE(fs::is_regular_file(Scratch("root/Sample/Sample.Bk1")));
  EXPECT_EQ(Tool({"version", relative, "V"}, root).exitCode, 0);
  EXPECT_TRUE(fs::is_directory(Scratch("root/Sample/Versions/V")));
  EXPECT_EQ(Tool({"restore", relative, "V"}, root).exitCode, 0);
  EXPECT_EQ(Tool({"check", relative}, root).exitCode, 0);
  const ToolRun made = Tool({"new", ".", "Other"}, root);
  EXPECT_EQ(made.exitCode, 0);
  EXPECT_EQ(made.out, root + "/Other/Other.qzpj\n");
}

TEST_F(ToolTest, RestoreOfAnUnknownVersionWritesNothing) {
  const std::string path = Sample();
  const auto before = TreeSnapshot(Scratch("root"));
  const ToolRun run = Tool({"restore", path, "Never"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.err.find("has no version \"Never\""), std::string::npos) << run.err;
  EXPECT_EQ(TreeSnapshot(Scratch("root")), before);
}

TEST_F(ToolTest, ARestoredDamagedVersionIsReported) {
  const std::string path = Sample();
  ASSERT_EQ(Tool({"version", path, "V"}).exitCode, 0);
  fs::remove(Scratch("root/Sample/Versions/V/Database/Timeline/Second.Qzt"));
  fs::remove(Scratch("root/Sample/Database/Timeline/Second.Qzt"));
  const ToolRun run = Tool({"restore", path, "V"});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.err.find("Second.Qzt: timeline \"Second\": does not exist"), std::string::npos)
      << run.err;
}

}  // namespace
}  // namespace tooltest
