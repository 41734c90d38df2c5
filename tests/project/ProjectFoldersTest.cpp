// The folder tree of a project and the names it finds for new items.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <string>

#include "project/ProjectNames.h"
#include "tests/project/ProjectObjectTestUtil.h"

namespace {

using namespace projecttest;

std::string Call(CProject& project, int32_t (CProject::*get)(char*)) {
  char out[kPathBufferSize];
  std::memset(out, '#', sizeof(out));
  EXPECT_EQ((project.*get)(out), 0);
  return out;
}

TEST(ProjectFolders, EveryPathJoinsRootNameAndFolders) {
  CProject project;
  PlaceProject(project, "/data/", "Show");
  EXPECT_EQ(Call(project, &CProject::GetRootDir), "/data/");
  EXPECT_EQ(Call(project, &CProject::GetProjectDir), "/data/Show/");
  EXPECT_EQ(Call(project, &CProject::GetProjectFilePath), "/data/Show/Show.qzpj");
  EXPECT_EQ(Call(project, &CProject::GetProjectFileName), "Show.qzpj");
  EXPECT_EQ(Call(project, &CProject::GetMediaDir), "/data/Show/Media/");
  EXPECT_EQ(Call(project, &CProject::GetAvInDir), "/data/Show/Media/AV_In/");
  EXPECT_EQ(Call(project, &CProject::GetAvDir), "/data/Show/Media/AV/");
  EXPECT_EQ(Call(project, &CProject::GetAudioDir), "/data/Show/Media/Audio/");
  EXPECT_EQ(Call(project, &CProject::GetGraphicsDir), "/data/Show/Media/Graphics/");
  EXPECT_EQ(Call(project, &CProject::GetMiscDir), "/data/Show/Media/Misc/");
  EXPECT_EQ(Call(project, &CProject::GetDatabaseDir), "/data/Show/Database/");
  EXPECT_EQ(Call(project, &CProject::GetRepositoryDir), "/data/Show/Database/Repository/");
  EXPECT_EQ(Call(project, &CProject::GetTimelineDir), "/data/Show/Database/Timeline/");
  EXPECT_EQ(Call(project, &CProject::GetVersionsDir), "/data/Show/Versions/");
  EXPECT_EQ(Call(project, &CProject::GetWaveFormDir), "/data/Show/WaveForm/");
  EXPECT_EQ(Call(project, &CProject::GetTmpDir), "/data/Show/Tmp/");
}

TEST(ProjectFolders, NothingAddsASeparatorToTheRoot) {
  CProject project;
  PlaceProject(project, "/data", "Show");
  EXPECT_EQ(Call(project, &CProject::GetProjectDir), "/dataShow/");
}

TEST(ProjectFolders, NewRecordLivesUnderTheDefaultRoot) {
  CProject project;
  EXPECT_EQ(Call(project, &CProject::GetProjectFilePath), "C:/Noname/Noname.qzpj");
}

TEST(ProjectFolders, NullBufferGivesMinusOne) {
  CProject project;
  for (auto get :
       {&CProject::GetRootDir, &CProject::GetProjectDir, &CProject::GetProjectFilePath,
        &CProject::GetMediaDir, &CProject::GetAvInDir, &CProject::GetAvDir, &CProject::GetAudioDir,
        &CProject::GetGraphicsDir, &CProject::GetMiscDir, &CProject::GetDatabaseDir,
        &CProject::GetRepositoryDir, &CProject::GetTimelineDir, &CProject::GetVersionsDir,
        &CProject::GetWaveFormDir, &CProject::GetTmpDir, &CProject::GetNewProjectName,
        &CProject::GetNewTimelineName}) {
    EXPECT_EQ((project.*get)(nullptr), -1);
  }
  EXPECT_EQ(project.GetProjectFileName(static_cast<char*>(nullptr)), -1);
  EXPECT_EQ(project.GetProjectFileName(static_cast<std::string*>(nullptr)), -1);
  EXPECT_EQ(project.GetNewRepositoryName(nullptr, 1), -1);
}

TEST(ProjectFolders, FileNameAlsoComesAsAString) {
  CProject project;
  PlaceProject(project, "/x/", "Gig");
  std::string name = "old";
  EXPECT_EQ(project.GetProjectFileName(&name), 0);
  EXPECT_EQ(name, "Gig.qzpj");
}

TEST(ProjectFolders, APathThatDoesNotFitIsRefused) {
  CProject project;
  const std::string longName(200, 'n');
  PlaceProject(project, "/" + std::string(40, 'r') + "/", longName.c_str());
  char out[kPathBufferSize];
  EXPECT_EQ(project.GetProjectDir(out), 0);  // 243 characters still fit
  EXPECT_EQ(project.GetTimelineDir(out), -1);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(project.GetProjectFilePath(out), -1);
  std::string name = "old";
  EXPECT_EQ(project.GetProjectFileName(&name), 0);
  EXPECT_EQ(name, longName + ".qzpj");
}

TEST(ProjectFolders, FullTextFieldsAreReadOnlyToTheirEnd) {
  CProject project;
  // A loaded record may fill a name field without a terminator.
  std::memset(project.projectData.szProjectName, 'a', sizeof(project.projectData.szProjectName));
  char out[kPathBufferSize];
  EXPECT_EQ(project.GetProjectFileName(out), -1);
  EXPECT_EQ(project.GetRootDir(out), 0);
  EXPECT_STREQ(out, "C:/");
}

class ProjectTree : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(scratch.Root().empty());
    PlaceProject(project, FolderOf(scratch) + "root/", "Show");
  }
  std::string Dir(int32_t (CProject::*get)(char*)) { return Call(project, get); }

  testsupport::TempDir scratch;
  CProject project;
};

TEST_F(ProjectTree, MakeDirectoriesMakesAllFourteenFolders) {
  EXPECT_EQ(project.MakeDirectories(), 0);
  for (auto get : {&CProject::GetRootDir, &CProject::GetProjectDir, &CProject::GetMediaDir,
                   &CProject::GetAvInDir, &CProject::GetAvDir, &CProject::GetAudioDir,
                   &CProject::GetGraphicsDir, &CProject::GetDatabaseDir, &CProject::GetVersionsDir,
                   &CProject::GetRepositoryDir, &CProject::GetTimelineDir,
                   &CProject::GetWaveFormDir, &CProject::GetTmpDir, &CProject::GetMiscDir}) {
    EXPECT_TRUE(std::filesystem::is_directory(Dir(get))) << Dir(get);
  }
  int count = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(FolderOf(scratch) + "root"))
    count += entry.is_directory() ? 1 : 0;
  EXPECT_EQ(count, 13);  // the root itself and 13 below it
}

TEST_F(ProjectTree, MakeDirectoriesTwiceChangesNothing) {
  ASSERT_EQ(project.MakeDirectories(), 0);
  Touch(Dir(&CProject::GetTimelineDir) + "Timeline1.Qzt");
  EXPECT_EQ(project.MakeDirectories(), 0);
  EXPECT_TRUE(Exists(Dir(&CProject::GetTimelineDir) + "Timeline1.Qzt"));
  int count = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(FolderOf(scratch) + "root"))
    count += entry.is_directory() ? 1 : 0;
  EXPECT_EQ(count, 13);
}

TEST_F(ProjectTree, RootWithAMissingParentLeavesTheTreeUnmade) {
  PlaceProject(project, FolderOf(scratch) + "missing/root/", "Show");
  EXPECT_EQ(project.MakeDirectories(), 0);
  EXPECT_FALSE(Exists(FolderOf(scratch) + "missing"));
}

TEST_F(ProjectTree, ProjectWithoutANameMakesNoFolders) {
  PlaceProject(project, FolderOf(scratch) + "root/", "");
  EXPECT_EQ(project.MakeDirectories(), 0);
  EXPECT_FALSE(Exists(FolderOf(scratch) + "root"));
}

TEST_F(ProjectTree, NewTimelineNameTakesTheFirstGapOnDisk) {
  project.MakeDirectories();
  const std::string folder = Dir(&CProject::GetTimelineDir);
  Touch(folder + "Timeline1.Qzt");
  Touch(folder + "Timeline3.Qzt");
  char name[kPathBufferSize] = "unchanged";
  EXPECT_EQ(project.GetNewTimelineName(name), 0);
  EXPECT_STREQ(name, "Timeline2");
  Touch(folder + "Timeline2.Qzt");
  EXPECT_EQ(project.GetNewTimelineName(name), 0);
  EXPECT_STREQ(name, "Timeline4");
}

TEST_F(ProjectTree, NewTimelineNameLooksAtTheDiskNotTheList) {
  project.MakeDirectories();
  project.AddTimeline(MakeTimeline("Timeline1", 0, 0));
  char name[kPathBufferSize];
  EXPECT_EQ(project.GetNewTimelineName(name), 0);
  EXPECT_STREQ(name, "Timeline1");
}

TEST_F(ProjectTree, NewRepositoryNamesFollowTheKind) {
  project.MakeDirectories();
  char name[kPathBufferSize];
  const std::pair<int32_t, const char*> expected[] = {{-3, "Repository1"},
                                                      {0, "Repository1"},
                                                      {1, "Repository1"},
                                                      {2, "Effects1"},
                                                      {3, "DMX Preset1"},
                                                      {4, ""},
                                                      {99, ""}};
  for (const auto& [kind, text] : expected) {
    std::strcpy(name, "unchanged");
    EXPECT_EQ(project.GetNewRepositoryName(name, kind), 0);
    EXPECT_STREQ(name, text) << "kind " << kind;
  }
}

TEST_F(ProjectTree, GeneratedDmxNameHasABlankWhereTheStoredOneHasNone) {
  project.MakeDirectories();
  char name[kPathBufferSize];
  project.GetNewRepositoryName(name, 3);
  EXPECT_STREQ(name, "DMX Preset1");
  EXPECT_STRNE(name, projectnames::kStoredDmxPresetName);
  EXPECT_STREQ(projectnames::kStoredDmxPresetName, "DmxPreset1");
}

TEST_F(ProjectTree, RepositoryNumbersRunAcrossAllKinds) {
  project.MakeDirectories();
  const std::string folder = Dir(&CProject::GetRepositoryDir);
  Touch(folder + "Repository1.Qzr");
  Touch(folder + "Repository2.Qzr");
  Touch(folder + "Effects3.Qzr");  // not what the probe looks at
  char name[kPathBufferSize];
  EXPECT_EQ(project.GetNewRepositoryName(name, 2), 0);
  EXPECT_STREQ(name, "Effects3");
  Touch(folder + "Repository3.Qzr");
  EXPECT_EQ(project.GetNewRepositoryName(name, 2), 0);
  EXPECT_STREQ(name, "Effects4");
}

TEST_F(ProjectTree, NewProjectNameProbesBelowTheRoot) {
  const std::string root = FolderOf(scratch) + "root/";
  std::filesystem::create_directories(root);
  char name[kPathBufferSize] = "unchanged";
  EXPECT_EQ(project.GetNewProjectName(name), 0);
  EXPECT_STREQ(name, "Project1");
  std::filesystem::create_directories(root + "Project1.qzpj");
  std::filesystem::create_directories(root + "Project2.qzpj");
  EXPECT_EQ(project.GetNewProjectName(name), 0);
  EXPECT_STREQ(name, "Project3");
}

TEST_F(ProjectTree, NewProjectNameGivesUpAfter259AndLeavesTheBuffer) {
  const std::string root = FolderOf(scratch) + "root/";
  for (int n = 1; n <= 259; ++n)
    std::filesystem::create_directories(root + "Project" + std::to_string(n) + ".qzpj");
  char name[kPathBufferSize] = "unchanged";
  EXPECT_EQ(project.GetNewProjectName(name), 0);
  EXPECT_STREQ(name, "unchanged");
}

TEST_F(ProjectTree, NameSearchesRefuseProbesThatDoNotFit) {
  PlaceProject(project, "/" + std::string(230, 'r') + "/", "Show");
  char name[kPathBufferSize] = "unchanged";
  EXPECT_EQ(project.GetNewTimelineName(name), -1);
  EXPECT_EQ(project.GetNewRepositoryName(name, 1), -1);
  PlaceProject(project, "/" + std::string(250, 'r') + "/", "Show");
  EXPECT_EQ(project.GetNewProjectName(name), -1);
  EXPECT_STREQ(name, "unchanged");
}

}  // namespace
