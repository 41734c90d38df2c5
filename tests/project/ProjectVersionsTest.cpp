// Backup sets written from memory and read back, and version folders made,
// deleted and restored file by file.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "tests/project/ProjectOpenSaveTestUtil.h"

namespace {

using namespace opensavetest;
using testsupport::ReadFile;
using testsupport::WriteFile;

// The names of the plain files directly in folder.
std::set<std::string> FilesIn(const std::string& folder) {
  std::set<std::string> names;
  if (!fs::exists(folder)) return names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.is_regular_file()) names.insert(entry.path().filename().string());
  }
  return names;
}

class ProjectVersions : public OpenSaveTest {
 protected:
  void SetUp() override {
    OpenSaveTest::SetUp();
    Fill(m_Project);
    ASSERT_TRUE(SaveTo(m_Project, ProjectFile()));
    m_Project.MarkChanged(0);
    ASSERT_TRUE(SaveTo(m_Project, ProjectFile()));  // with .Bk1 files beside
    fs::create_directories(Root() + "Show/Media/AV");
    WriteFile(Root() + "Show/Media/AV/clip.avi", std::string("media"));
  }
  std::string Versions() const { return Root() + "Show/Versions/"; }
  std::string ProjectDir() const { return Root() + "Show/"; }
  std::string TimelineDir() const { return Root() + "Show/Database/Timeline/"; }
  std::string RepositoryDir() const { return Root() + "Show/Database/Repository/"; }

  // Every file of the version folder equals the project's file of its name.
  void ExpectVersionHoldsTheProject(const std::string& version) {
    const std::vector<std::pair<std::string, std::string>> pairs = {
        {version, ProjectDir()},
        {version + "Database/Repository/", RepositoryDir()},
        {version + "Database/Timeline/", TimelineDir()}};
    for (const auto& [copy, original] : pairs) {
      const std::set<std::string> copied = FilesIn(copy);
      std::set<std::string> expected;
      for (const std::string& name : FilesIn(original)) {
        if (name.find(".New") == std::string::npos) expected.insert(name);
      }
      EXPECT_EQ(copied, expected) << copy;
      for (const std::string& name : copied) {
        EXPECT_EQ(ReadFile(copy + name), ReadFile(original + name)) << copy + name;
      }
    }
  }

  CProject m_Project;
};

// --- Backup sets ---------------------------------------------------------------

TEST_F(ProjectVersions, SaveBackupWritesASetThatOpenWithExtensionReadsBack) {
  m_Project.pTimelineList->GetAt(1)->dLengthMs = 123.0;
  m_Project.MarkChanged(0);
  const std::vector<uint8_t> main = ReadFile(ProjectFile());
  const std::vector<uint8_t> mainTimeline = ReadFile(TimelineFile("Timeline2"));
  ASSERT_EQ(m_Project.SaveBackup(ProjectFile().c_str()), 0);
  EXPECT_EQ(m_Project.iBackupCount, m_Project.iChangeCount);
  EXPECT_EQ(m_Project.iModified, 1);
  EXPECT_EQ(projecttest::OwnerCode(m_Project.pTimelineList->m_OuterLock), 36);
  // The main files are untouched; the set has no video mode tail.
  EXPECT_EQ(ReadFile(ProjectFile()), main);
  EXPECT_EQ(ReadFile(TimelineFile("Timeline2")), mainTimeline);
  EXPECT_EQ(fs::file_size(ProjectDir() + "Show.Bk1"), 1873u + 268u * 5u);

  CProject opened;
  ASSERT_EQ(opened.OpenWithExtension((ProjectDir() + "Show.Bk1").c_str()), 0);
  ASSERT_EQ(opened.pTimelineList->GetCount(), 3);
  EXPECT_EQ(+opened.pTimelineList->GetAt(1)->dLengthMs, 123.0);
  EXPECT_EQ(opened.pRepositoryList->GetCount(), 2);
  EXPECT_EQ(+opened.videoMode.iWidth, +CDeviceMode().iWidth);  // the default mode
  for (int32_t i = 0; i < 3; ++i) {
    EXPECT_EQ(SavedBytes(*opened.pTimelineList->GetAt(i)),
              SavedBytes(*m_Project.pTimelineList->GetAt(i)));
  }
}

TEST_F(ProjectVersions, SecondSaveBackupInARowGivesMinusOneAndLeavesTheSet) {
  m_Project.MarkChanged(0);
  ASSERT_EQ(m_Project.SaveBackup(ProjectFile().c_str()), 0);
  const std::vector<uint8_t> set = ReadFile(ProjectDir() + "Show.Bk1");
  const std::vector<uint8_t> setTimeline = ReadFile(TimelineFile("Timeline1", "Show", ".Bk1"));
  const auto stamp = fs::last_write_time(ProjectDir() + "Show.Bk1");
  EXPECT_EQ(m_Project.SaveBackup(ProjectFile().c_str()), -1);
  EXPECT_EQ(ReadFile(ProjectDir() + "Show.Bk1"), set);
  EXPECT_EQ(ReadFile(TimelineFile("Timeline1", "Show", ".Bk1")), setTimeline);
  EXPECT_EQ(fs::last_write_time(ProjectDir() + "Show.Bk1"), stamp);
  EXPECT_EQ(m_Project.SaveBackup(nullptr), -1);
}

TEST_F(ProjectVersions, SaveBackupMovesTheOldSetToBk2) {
  const std::vector<uint8_t> oldSet = ReadFile(ProjectDir() + "Show.Bk1");
  const std::vector<uint8_t> oldTimeline = ReadFile(TimelineFile("Timeline1", "Show", ".Bk1"));
  m_Project.MarkChanged(0);
  ASSERT_EQ(m_Project.SaveBackup(ProjectFile().c_str()), 0);
  EXPECT_EQ(ReadFile(ProjectDir() + "Show.Bk2"), oldSet);
  EXPECT_EQ(ReadFile(TimelineFile("Timeline1", "Show", ".Bk2")), oldTimeline);
}

// --- Versions -----------------------------------------------------------------------

TEST_F(ProjectVersions, CreateVersionCopiesEveryDatabaseFileAndNoMedia) {
  EXPECT_EQ(m_Project.GetNextVersionNumber(), 1);
  EXPECT_EQ(m_Project.CreateVersion(), 0);
  EXPECT_STREQ(m_Project.projectData.szVersionName, "Version1");
  ExpectVersionHoldsTheProject(Versions() + "Version1/");
  EXPECT_FALSE(fs::exists(Versions() + "Version1/Media"));
  EXPECT_EQ(FilesIn(Versions() + "Version1/").count("Show.qzpj"), 1u);
  EXPECT_EQ(FilesIn(Versions() + "Version1/").count("Show.Bk1"), 1u);
  EXPECT_EQ(m_Project.GetNextVersionNumber(), 2);
}

TEST_F(ProjectVersions, TwoVersionsWithAnEmptyNameUseTheSameFolder) {
  ASSERT_EQ(m_Project.CreateVersion(), 0);
  // A file that the project no longer has goes from the version too.
  fs::remove(TimelineFile("Timeline3"));
  fs::remove(TimelineFile("Timeline3", "Show", ".Bk1"));
  ASSERT_EQ(m_Project.CreateVersion(), 0);
  EXPECT_FALSE(fs::exists(Versions() + "Version2"));
  ExpectVersionHoldsTheProject(Versions() + "Version1/");
  EXPECT_EQ(FilesIn(Versions() + "Version1/Database/Timeline/").count("Timeline3.Qzt"), 0u);
}

TEST_F(ProjectVersions, NamedVersionsTakeTheirNameAndRefuseNull) {
  EXPECT_EQ(m_Project.CreateNamedVersion(nullptr), -1);
  ASSERT_EQ(m_Project.CreateNamedVersion("Before edit"), 0);
  EXPECT_STREQ(m_Project.projectData.szVersionName, "Before edit");
  ExpectVersionHoldsTheProject(Versions() + "Before edit/");
  EXPECT_EQ(m_Project.GetNextVersionNumber(), 1);  // only Version<n> folders count
}

TEST_F(ProjectVersions, DeleteVersionOfAnUnknownNameGivesZero) {
  EXPECT_EQ(m_Project.DeleteVersion("Nothing", 1), 0);
  EXPECT_EQ(m_Project.DeleteVersion(nullptr, 1), -1);
  EXPECT_EQ(m_Project.DeleteVersionFiles(nullptr, 1), -1);
  EXPECT_EQ(m_Project.DeleteVersionFiles((m_Base + "absent/").c_str(), 1), 0);
}

TEST_F(ProjectVersions, DeleteVersionKeepsTheFoldersUnlessAskedAndOtherFiles) {
  ASSERT_EQ(m_Project.CreateNamedVersion("A"), 0);
  ASSERT_EQ(m_Project.DeleteVersion("A", 0), 0);
  EXPECT_TRUE(FilesIn(Versions() + "A/").empty());
  EXPECT_TRUE(FilesIn(Versions() + "A/Database/Timeline/").empty());
  EXPECT_TRUE(fs::is_directory(Versions() + "A/Database/Repository"));

  ASSERT_EQ(m_Project.CreateNamedVersion("B"), 0);
  ASSERT_EQ(m_Project.DeleteVersion("B", 1), 0);
  EXPECT_FALSE(fs::exists(Versions() + "B"));

  ASSERT_EQ(m_Project.CreateNamedVersion("C"), 0);
  WriteFile(Versions() + "C/Database/Timeline/notes.txt", std::string("mine"));
  ASSERT_EQ(m_Project.DeleteVersion("C", 1), 0);
  EXPECT_TRUE(fs::exists(Versions() + "C/Database/Timeline/notes.txt"));
  EXPECT_FALSE(fs::exists(Versions() + "C/Database/Repository"));
  EXPECT_TRUE(FilesIn(Versions() + "C/").empty());
}

TEST_F(ProjectVersions, RestoreVersionCopiesBackOverTheProjectsFiles) {
  ASSERT_EQ(m_Project.CreateNamedVersion("Good"), 0);
  const std::vector<uint8_t> goodTimeline = ReadFile(TimelineFile("Timeline1"));
  const std::vector<uint8_t> goodProject = ReadFile(ProjectFile());
  m_Project.pTimelineList->GetAt(0)->dLengthMs = 1.0;
  m_Project.pTimelineList->GetAt(0)->szName[0] = 'X';  // a new file "Ximeline1"
  m_Project.MarkChanged(0);
  ASSERT_TRUE(SaveTo(m_Project, ProjectFile()));
  WriteFile(TimelineFile("Timeline1"), std::string("damaged"));
  ASSERT_EQ(m_Project.RestoreVersion((Versions() + "Good").c_str()), 0);
  EXPECT_EQ(ReadFile(TimelineFile("Timeline1")), goodTimeline);
  EXPECT_EQ(ReadFile(ProjectFile()), goodProject);
  EXPECT_TRUE(fs::exists(TimelineFile("Ximeline1")));  // what the version lacks stays
  CProject reopened;
  ASSERT_EQ(reopened.Open(ProjectFile().c_str(), 1), 0);
  EXPECT_STREQ(reopened.pTimelineList->GetAt(0)->szName, "Timeline1");
}

TEST_F(ProjectVersions, RestoreOfAnUnknownFolderCreatesItAndGivesZero) {
  const auto before = ReadFile(ProjectFile());
  EXPECT_EQ(m_Project.RestoreVersion((Versions() + "Unknown").c_str()), 0);
  EXPECT_TRUE(fs::is_directory(Versions() + "Unknown"));
  EXPECT_TRUE(FilesIn(Versions() + "Unknown/").empty());
  EXPECT_EQ(ReadFile(ProjectFile()), before);
  EXPECT_EQ(m_Project.RestoreVersion(nullptr), -1);
}

TEST_F(ProjectVersions, RestoreWithATrailingSeparatorStillWorks) {
  ASSERT_EQ(m_Project.CreateNamedVersion("Slash"), 0);
  const std::vector<uint8_t> good = ReadFile(RepositoryFile("Repository1"));
  WriteFile(RepositoryFile("Repository1"), std::string("damaged"));
  ASSERT_EQ(m_Project.RestoreVersion((Versions() + "Slash/").c_str()), 0);
  EXPECT_EQ(ReadFile(RepositoryFile("Repository1")), good);
}

}  // namespace
