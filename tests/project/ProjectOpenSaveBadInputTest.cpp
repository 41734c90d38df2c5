// Missing, short, foreign and hostile project files, and folders a save
// can't write to: each gives its status, and nothing on disk is lost.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <climits>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "files/DataFile.h"
#include "project/SaveSet.h"
#include "tests/project/ProjectOpenSaveTestUtil.h"
#include "tests/support/RunWithoutRoot.h"

namespace {

using namespace opensavetest;
using testsupport::ReadFile;
using testsupport::WriteFile;

class ProjectBadInput : public OpenSaveTest {
 protected:
  // A saved project's file, changed by edit and written back.
  std::string SavedAndEdited(const std::function<void(std::vector<uint8_t>&)>& edit) {
    CProject saved;
    Fill(saved);
    EXPECT_TRUE(SaveTo(saved, ProjectFile()));
    std::vector<uint8_t> bytes = ReadFile(ProjectFile());
    edit(bytes);
    WriteFile(ProjectFile(), bytes);
    return ProjectFile();
  }

  // A project that held content, so that a failed open shows it closed it.
  void ExpectClosedAfter(int32_t result, CProject& project) {
    EXPECT_EQ(result, -1);
    EXPECT_EQ(project.bOpen, 0);
    EXPECT_EQ(project.pTimelineList->GetCount(), 0);
    EXPECT_EQ(project.pRepositoryList->GetCount(), 0);
  }

  // Every file under the scratch tree with its bytes.
  std::map<std::string, std::vector<uint8_t>> Snapshot() {
    std::map<std::string, std::vector<uint8_t>> files;
    for (const auto& entry : fs::recursive_directory_iterator(m_Base)) {
      if (entry.is_regular_file()) files[entry.path().string()] = ReadFile(entry.path().string());
    }
    return files;
  }
};

void PutInt(std::vector<uint8_t>& bytes, size_t at, int32_t value) {
  std::memcpy(bytes.data() + at, &value, 4);
}

TEST_F(ProjectBadInput, MissingProjectFileIsCreatedEmptyAndRefused) {
  CProject project;
  Fill(project);
  const std::string path = m_Base + "missing.qzpj";
  ExpectClosedAfter(project.Open(path.c_str(), 1), project);
  ASSERT_TRUE(fs::exists(path));
  EXPECT_EQ(fs::file_size(path), 0u);
  const CProjectData zero = [] {
    CProjectData data;
    std::memset(static_cast<void*>(&data), 0, sizeof(data));
    return data;
  }();
  EXPECT_EQ(std::memcmp(&project.projectData, &zero, sizeof(zero)), 0);
}

TEST_F(ProjectBadInput, FileShorterThanFourBytesIsRefused) {
  const std::string path = m_Base + "short.qzpj";
  WriteFile(path, std::vector<uint8_t>{0x51, 0x07, 0x00});
  CProject project;
  Fill(project);
  ExpectClosedAfter(project.Open(path.c_str(), 1), project);
  EXPECT_EQ(project.OpenWithExtension(path.c_str()), -1);
  EXPECT_EQ(project.bOpen, 0);
}

TEST_F(ProjectBadInput, RecordSizesOfZeroNegativeOrAboveTheRecordAreRefused) {
  for (const int32_t size : {0, -1, INT_MIN, 1874, 4096, INT_MAX}) {
    SavedAndEdited([&](std::vector<uint8_t>& bytes) { PutInt(bytes, 0, size); });
    CProject project;
    EXPECT_EQ(project.Open(ProjectFile().c_str(), 1), -1) << size;
    EXPECT_EQ(project.OpenWithExtension(ProjectFile().c_str()), -1) << size;
  }
}

TEST_F(ProjectBadInput, WrongMarkIsRefusedWithTheFilesBytesInTheRecord) {
  for (const char* mark : {".QZPJ", ".qzpx", "qzpj."}) {
    SavedAndEdited([&](std::vector<uint8_t>& bytes) { std::memcpy(bytes.data() + 4, mark, 6); });
    CProject project;
    ExpectClosedAfter(project.Open(ProjectFile().c_str(), 1), project);
    EXPECT_EQ(project.projectData.iOpaqueA, 11);  // read before the mark was checked
    EXPECT_STREQ(project.projectData.szProjectName, "Show");
  }
}

TEST_F(ProjectBadInput, ShorterRecordLeavesZerosAndTheEntriesFollowAtOnce) {
  // A record of 600 bytes (through the counts), then the same entries.
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  std::vector<uint8_t> bytes = ReadFile(ProjectFile());
  std::vector<uint8_t> shorter(bytes.begin(), bytes.begin() + 600);
  shorter.insert(shorter.end(), bytes.begin() + 1873, bytes.end());
  PutInt(shorter, 0, 600);
  WriteFile(ProjectFile(), shorter);
  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  EXPECT_EQ(opened.projectData.iSize, 600);
  EXPECT_EQ(opened.projectData.aOpaqueBlock[3][2], 0);  // at offset 606: past the record
  EXPECT_EQ(opened.projectData.iOpaqueF, 0);
  EXPECT_EQ(opened.pTimelineList->GetCount(), 3);
  EXPECT_EQ(opened.pRepositoryList->GetCount(), 2);
  EXPECT_EQ(+opened.videoMode.iWidth, 1920);
}

TEST_F(ProjectBadInput, MissingOrBrokenVideoModeTailGivesTheDefaultMode) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  const std::vector<uint8_t> whole = ReadFile(ProjectFile());
  const size_t tail = 1873 + 268 * 5;
  const CDeviceMode defaults;
  // Without a tail.
  WriteFile(ProjectFile(), std::vector<uint8_t>(whole.begin(), whole.begin() + tail));
  CProject opened;
  opened.videoMode.iWidth = 1;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  EXPECT_EQ(+opened.videoMode.iWidth, +defaults.iWidth);
  EXPECT_EQ(opened.pTimelineList->GetCount(), 3);
  // A tail whose size runs over the record.
  std::vector<uint8_t> broken = whole;
  PutInt(broken, tail, 100000);
  WriteFile(ProjectFile(), broken);
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  EXPECT_EQ(+opened.videoMode.iWidth, +defaults.iWidth);
}

TEST_F(ProjectBadInput, HostileCountsEndWithTheFileAndBoundedMemory) {
  SavedAndEdited([](std::vector<uint8_t>& bytes) {
    PutInt(bytes, 538, INT_MAX);
    PutInt(bytes, 542, INT_MAX);
  });
  CProject project;
  ASSERT_EQ(project.Open(ProjectFile().c_str(), 1), 0);
  // Every entry is taken as a timeline name (the repositories' names find no
  // .Qzt file), then a bounded run of empty ones past the end.
  EXPECT_EQ(project.pTimelineList->GetCount(), 3);
  EXPECT_EQ(project.projectData.iTimelineCount, 3);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 0);
}

TEST_F(ProjectBadInput, TruncatedEntriesGiveThoseThatAreWhole) {
  SavedAndEdited([](std::vector<uint8_t>& bytes) { bytes.resize(1873 + 268 + 100); });
  CProject project;
  ASSERT_EQ(project.Open(ProjectFile().c_str(), 1), 0);
  ASSERT_GE(project.pTimelineList->GetCount(), 1);
  EXPECT_STREQ(project.pTimelineList->GetAt(0)->szName, "Timeline1");
  EXPECT_EQ(project.pRepositoryList->GetCount(), 0);
}

TEST_F(ProjectBadInput, NamesThatClimbOutOfTheFolderFindOnlyWhatExists) {
  SavedAndEdited([](std::vector<uint8_t>& bytes) {
    std::memset(bytes.data() + 1873 + 8, 'A', 260);  // no terminator at all
  });
  CProject project;
  ASSERT_EQ(project.Open(ProjectFile().c_str(), 1), 0);
  EXPECT_EQ(project.pTimelineList->GetCount(), 2);
}

TEST_F(ProjectBadInput, SaveIntoAMissingFolderFailsAndChangesNothing) {
  CProject project;
  Fill(project);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  const auto before = Snapshot();
  project.MarkChanged(0);
  projecttest::PlaceProject(project, m_Base + "no/such/parent/", "Show");
  EXPECT_FALSE(SaveTo(project, m_Base + "no/such/parent/Show/Show.qzpj"));
  EXPECT_EQ(project.iModified, 1);
  EXPECT_EQ(Snapshot(), before);
}

TEST_F(ProjectBadInput, SaveIntoAReadOnlyFolderFailsAndLosesNothing) {
  CProject project;
  Fill(project);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  project.MarkChanged(0);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));  // a .Bk1 generation too
  const auto before = Snapshot();
  project.MarkChanged(0);
  project.pTimelineList->GetAt(0)->dLengthMs = 5.0;
  for (const auto& entry : fs::recursive_directory_iterator(m_Base)) {
    if (entry.is_directory()) fs::permissions(entry.path(), fs::perms(0555));
  }
  fs::permissions(m_Base, fs::perms(0555));
  const std::string message = testsupport::RunWithoutRoot([&]() -> std::string {
    if (SaveTo(project, ProjectFile())) return "save into a read-only folder succeeded";
    return "";
  });
  for (const auto& entry : fs::recursive_directory_iterator(m_Base)) {
    if (entry.is_directory()) fs::permissions(entry.path(), fs::perms(0755));
  }
  fs::permissions(m_Base, fs::perms(0755));
  EXPECT_EQ(message, "");
  EXPECT_EQ(Snapshot(), before);
}

TEST_F(ProjectBadInput, WriteProtectedProjectFileFailsTheSaveAndStays) {
  CProject project;
  Fill(project);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  fs::permissions(m_Base, fs::perms(0777));
  for (const auto& entry : fs::recursive_directory_iterator(m_Base)) {
    fs::permissions(entry.path(), entry.is_directory() ? fs::perms(0777) : fs::perms(0666));
  }
  fs::permissions(ProjectFile(), fs::perms(0444));
  const auto before = Snapshot();
  project.MarkChanged(0);
  const std::string message = testsupport::RunWithoutRoot([&]() -> std::string {
    if (SaveTo(project, ProjectFile())) return "save over a write-protected file succeeded";
    return "";
  });
  EXPECT_EQ(message, "");
  EXPECT_EQ(ReadFile(ProjectFile()), before.at(ProjectFile()));
  EXPECT_FALSE(fs::exists(ProjectFile() + kStagedSuffix));
}

TEST_F(ProjectBadInput, ForeignBytesInEveryFileNeverCrash) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  std::vector<uint8_t> noise(5000);
  for (size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<uint8_t>((i * 131 + 7) % 251);
  WriteFile(TimelineFile("Timeline1"), noise);
  WriteFile(RepositoryFile("Repository1"), noise);
  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  EXPECT_EQ(opened.pTimelineList->GetCount(), 3);
  WriteFile(ProjectFile(), noise);
  EXPECT_EQ(opened.Open(ProjectFile().c_str(), 1), -1);
}

}  // namespace
