// Create, open and save of whole projects: the template, the moved root,
// the open under another extension, rotation, skipped files, the default
// content, and the current directory each operation leaves behind.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "config/GlobalCfg.h"
#include "files/DataFile.h"
#include "project/ProjectFileList.h"
#include "project/ProjectTemplate.h"
#include "project/SaveSet.h"
#include "tests/project/ProjectOpenSaveTestUtil.h"

namespace {

using namespace opensavetest;
using testsupport::ReadFile;
using testsupport::WriteFile;

class ProjectOpenSave : public OpenSaveTest {};

// --- Whole-project round trips --------------------------------------------

TEST_F(ProjectOpenSave, SavedProjectOpensInANewObjectWithEveryRecordEqual) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  EXPECT_EQ(saved.iModified, 0);
  EXPECT_EQ(saved.iChangeCount, 0);
  EXPECT_EQ(saved.iBackupCount, 0);

  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  EXPECT_EQ(opened.bOpen, 1);
  EXPECT_EQ(opened.pTimelineList->GetCount(), 3);
  EXPECT_EQ(opened.pRepositoryList->GetCount(), 2);
  EXPECT_EQ(opened.projectData.iTimelineCount, 3);
  EXPECT_EQ(opened.projectData.iRepositoryCount, 2);
  EXPECT_EQ(+opened.videoMode.iWidth, 1920);
  ExpectSameProject(saved, opened);
}

TEST_F(ProjectOpenSave, ProjectFileLayoutIsRecordEntriesAndVideoMode) {
  CProject project;
  Fill(project);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  const std::vector<uint8_t> bytes = ReadFile(ProjectFile());
  ASSERT_EQ(bytes.size(), 1873u + 268u * 5u + 4u + 701u);
  int32_t value = 0;
  std::memcpy(&value, bytes.data(), 4);
  EXPECT_EQ(value, 1873);
  EXPECT_EQ(std::memcmp(bytes.data() + 4, ".qzpj", 6), 0);
  std::memcpy(&value, bytes.data() + 538, 4);
  EXPECT_EQ(value, 3);
  std::memcpy(&value, bytes.data() + 542, 4);
  EXPECT_EQ(value, 2);
  std::memcpy(&value, bytes.data() + 1873, 4);
  EXPECT_EQ(value, 264);
  EXPECT_STREQ(reinterpret_cast<const char*>(bytes.data() + 1873 + 8), "Timeline1");
  EXPECT_STREQ(reinterpret_cast<const char*>(bytes.data() + 1873 + 268 * 3 + 8), "Repository1");
  std::memcpy(&value, bytes.data() + 1873 + 268 * 5, 4);
  EXPECT_EQ(value, 701);
  // Each timeline and repository has a file of its own, as its Save writes it.
  EXPECT_EQ(ReadFile(TimelineFile("Timeline2")), SavedBytes(*project.pTimelineList->GetAt(1)));
  EXPECT_EQ(ReadFile(RepositoryFile("Effects2")), SavedBytes(*project.pRepositoryList->GetAt(1)));
}

TEST_F(ProjectOpenSave, OpenWithoutFullReadsTheRecordOnly) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 0), 0);
  EXPECT_EQ(opened.pTimelineList->GetCount(), 0);
  EXPECT_EQ(opened.projectData.iTimelineCount, 3);
  EXPECT_STREQ(opened.projectData.szProjectName, "Show");
}

TEST_F(ProjectOpenSave, OpenMakesTheFolderTreeAndClearsTheCountersButNotModified) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  fs::remove_all(Root() + "Show/Media");
  CProject opened;
  opened.iModified = 1;
  opened.iChangeCount = 5;
  opened.iBackupCount = 2;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  EXPECT_TRUE(fs::is_directory(Root() + "Show/Media/AV_In"));
  EXPECT_EQ(opened.iModified, 1);
  EXPECT_EQ(opened.iChangeCount, 0);
  EXPECT_EQ(opened.iBackupCount, 0);
}

// --- The stored root --------------------------------------------------------

TEST_F(ProjectOpenSave, MovedProjectTakesItsRootFromThePath) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  const std::string moved = m_Base + "elsewhere/";
  fs::create_directories(moved);
  fs::rename(Root() + "Show", moved + "Show");

  CProject opened;
  ASSERT_EQ(opened.Open((moved + "Show/Show.qzpj").c_str(), 1), 0);
  EXPECT_EQ(std::string(opened.projectData.szRootPath), moved);
  EXPECT_STREQ(opened.projectData.szProjectName, "Show");
  // Its timelines are found in the new place.
  EXPECT_EQ(opened.pTimelineList->GetCount(), 3);
  EXPECT_EQ(opened.pRepositoryList->GetCount(), 2);
  EXPECT_FALSE(fs::exists(Root() + "Show"));  // no tree made in the old place
}

TEST_F(ProjectOpenSave, UnmovedProjectKeepsItsStoredRootWithItsLetterCase) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  // The same place spelled in other letter case compares equal.
  CProject opened;
  const std::string upperRoot = m_Base + "ROOT/";
  {
    FILE* f = std::fopen(ProjectFile().c_str(), "rb+");
    ASSERT_NE(f, nullptr);
    std::fseek(f, 278, SEEK_SET);
    std::fwrite(upperRoot.c_str(), 1, upperRoot.size() + 1, f);
    std::fclose(f);
  }
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 0), 0);
  EXPECT_EQ(std::string(opened.projectData.szRootPath), upperRoot);
}

TEST_F(ProjectOpenSave, PathShorterThanTheRootWithACommonBeginningCountsAsUnmoved) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  // A copy of the project file whose path is the beginning of its root.
  const std::string shortPath = m_Base + "r.qzpj";
  fs::copy_file(ProjectFile(), shortPath);
  const std::string longRoot = m_Base + "r.qzpj-and-more/";
  {
    FILE* f = std::fopen(shortPath.c_str(), "rb+");
    std::fseek(f, 278, SEEK_SET);
    std::fwrite(longRoot.c_str(), 1, longRoot.size() + 1, f);
    std::fclose(f);
  }
  CProject opened;
  ASSERT_EQ(opened.Open(shortPath.c_str(), 0), 0);
  EXPECT_EQ(std::string(opened.projectData.szRootPath), longRoot);
}

// --- Name entries -----------------------------------------------------------

TEST_F(ProjectOpenSave, EntryOfSize265OpensWithItsTimelineSkippedAndLaterEntriesOutOfStep) {
  CProject saved;
  Fill(saved, "Show", 2);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  std::vector<uint8_t> bytes = ReadFile(ProjectFile());
  const int32_t oversized = 265;
  std::memcpy(bytes.data() + 1873, &oversized, 4);
  WriteFile(ProjectFile(), bytes);

  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  // The second entry is read right behind the first one's size field, from
  // its zero header word: an empty name, so Timeline2 is not found either.
  EXPECT_EQ(opened.pTimelineList->GetCount(), 0);
  EXPECT_EQ(opened.projectData.iTimelineCount, 0);
  EXPECT_TRUE(fs::exists(TimelineFile("Timeline2")));
}

// --- Rotation and the kept tail -------------------------------------------

TEST_F(ProjectOpenSave, SaveRightAfterOpenRotatesNoProjectFile) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  ASSERT_EQ(opened.iModified, 0);
  ASSERT_TRUE(SaveTo(opened, ProjectFile()));
  EXPECT_FALSE(fs::exists(Root() + "Show/Show.Bk1"));
  // Timelines and repositories rotate all the same.
  EXPECT_TRUE(fs::exists(TimelineFile("Timeline1", "Show", ".Bk1")));
  EXPECT_TRUE(fs::exists(RepositoryFile("Repository1", "Show", ".Bk1")));
}

TEST_F(ProjectOpenSave, TwoSavesOfAChangedProjectKeepTwoGenerations) {
  CProject project;
  Fill(project);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  const std::vector<uint8_t> first = ReadFile(ProjectFile());
  const std::vector<uint8_t> firstTimeline = ReadFile(TimelineFile("Timeline1"));
  project.projectData.iOpaqueA = 12;
  project.pTimelineList->GetAt(0)->dLengthMs = 1.0;
  project.MarkChanged(0);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  const std::vector<uint8_t> second = ReadFile(ProjectFile());
  const std::vector<uint8_t> secondTimeline = ReadFile(TimelineFile("Timeline1"));
  project.projectData.iOpaqueA = 13;
  project.MarkChanged(0);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  EXPECT_EQ(ReadFile(Root() + "Show/Show.Bk2"), first);
  EXPECT_EQ(ReadFile(Root() + "Show/Show.Bk1"), second);
  EXPECT_EQ(ReadFile(TimelineFile("Timeline1", "Show", ".Bk2")), firstTimeline);
  EXPECT_EQ(ReadFile(TimelineFile("Timeline1", "Show", ".Bk1")), secondTimeline);
  EXPECT_NE(ReadFile(ProjectFile()), second);
  // No side file of the save is left behind.
  EXPECT_FALSE(fs::exists(ProjectFile() + kStagedSuffix));
  EXPECT_FALSE(fs::exists(TimelineFile("Timeline1") + kStagedSuffix));
}

TEST_F(ProjectOpenSave, SaveOfAnUnchangedProjectKeepsTheOldFilesTail) {
  CProject project;
  Fill(project);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  std::vector<uint8_t> longer = ReadFile(ProjectFile());
  const size_t saved = longer.size();
  longer.insert(longer.end(), {1, 2, 3, 4, 5, 6, 7});
  WriteFile(ProjectFile(), longer);
  ASSERT_EQ(project.iModified, 0);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  const std::vector<uint8_t> after = ReadFile(ProjectFile());
  ASSERT_EQ(after.size(), saved + 7);
  EXPECT_EQ(std::vector<uint8_t>(after.end() - 7, after.end()),
            (std::vector<uint8_t>{1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(ProjectOpenSave, SaveOfAChangedProjectWritesANewFileWithoutTheTail) {
  CProject project;
  Fill(project);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  std::vector<uint8_t> longer = ReadFile(ProjectFile());
  const size_t saved = longer.size();
  longer.push_back(9);
  WriteFile(ProjectFile(), longer);
  project.MarkChanged(0);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  EXPECT_EQ(ReadFile(ProjectFile()).size(), saved);
  EXPECT_EQ(ReadFile(Root() + "Show/Show.Bk1"), longer);
}

TEST_F(ProjectOpenSave, RotateBackupsRotatesOnlyAChangedOrForcedProject) {
  const std::string path = m_Base + "P.qzpj";
  WriteFile(path, std::string("main"));
  WriteFile(m_Base + "P.Bk1", std::string("one"));
  CProject project;
  EXPECT_EQ(project.RotateBackups(path.c_str(), 0), 0);
  EXPECT_EQ(testsupport::ReadText(path), "main");
  EXPECT_EQ(project.RotateBackups(path.c_str(), 1), 0);  // .Bk1 to .Bk2 only
  EXPECT_EQ(testsupport::ReadText(path), "main");
  EXPECT_EQ(testsupport::ReadText(m_Base + "P.Bk2"), "one");
  EXPECT_FALSE(fs::exists(m_Base + "P.Bk1"));
  project.iModified = 1;
  EXPECT_EQ(project.RotateBackups(path.c_str(), 0), 0);
  EXPECT_FALSE(fs::exists(path));
  EXPECT_EQ(testsupport::ReadText(m_Base + "P.Bk1"), "main");
}

TEST_F(ProjectOpenSave, DurabilityChangesNoByteOfWhatIsWritten) {
  CProject project;
  Fill(project);
  SetSaveDurability(false);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  const std::vector<uint8_t> plain = ReadFile(ProjectFile());
  const std::vector<uint8_t> plainTimeline = ReadFile(TimelineFile("Timeline3"));
  SetSaveDurability(true);
  ASSERT_TRUE(SaveTo(project, ProjectFile("Other")) || true);
  projecttest::PlaceProject(project, Root(), "Show");
  project.MarkChanged(0);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  EXPECT_TRUE(IsSaveDurable());
  EXPECT_EQ(ReadFile(ProjectFile()), plain);
  EXPECT_EQ(ReadFile(TimelineFile("Timeline3")), plainTimeline);
}

TEST_F(ProjectOpenSave, StaleSideFilesOfAnInterruptedSaveDoNotLeakIntoTheNextSave) {
  CProject project;
  Fill(project);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  const std::vector<uint8_t> expected = ReadFile(TimelineFile("Timeline1"));
  WriteFile(TimelineFile("Timeline1") + kStagedSuffix, std::vector<uint8_t>(100000, 0xAB));
  WriteFile(ProjectFile() + kStagedSuffix, std::vector<uint8_t>(100000, 0xCD));
  const std::vector<uint8_t> expectedProject = ReadFile(ProjectFile());
  project.MarkChanged(0);
  ASSERT_TRUE(SaveTo(project, ProjectFile()));
  EXPECT_EQ(ReadFile(TimelineFile("Timeline1")), expected);
  EXPECT_EQ(ReadFile(ProjectFile()), expectedProject);
}

// --- Loading timelines and repositories ---------------------------------------

TEST_F(ProjectOpenSave, VanishedFilesAreSkippedAndTheirNamesGoAtTheNextSave) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  fs::remove(TimelineFile("Timeline2"));
  fs::remove(RepositoryFile("Effects2"));
  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  ASSERT_EQ(opened.pTimelineList->GetCount(), 2);
  EXPECT_STREQ(opened.pTimelineList->GetAt(0)->szName, "Timeline1");
  EXPECT_STREQ(opened.pTimelineList->GetAt(1)->szName, "Timeline3");
  ASSERT_EQ(opened.pRepositoryList->GetCount(), 1);
  ASSERT_TRUE(SaveTo(opened, ProjectFile()));
  CProject again;
  ASSERT_EQ(again.Open(ProjectFile().c_str(), 0), 0);
  EXPECT_EQ(again.projectData.iTimelineCount, 2);
  EXPECT_EQ(again.projectData.iRepositoryCount, 1);
}

TEST_F(ProjectOpenSave, BrokenTimelineFileGivesADefaultTimelineWithTheEntrysName) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  WriteFile(TimelineFile("Timeline2"), std::vector<uint8_t>{0xFF, 0xFF, 0xFF, 0x7F, 1, 2});
  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  ASSERT_EQ(opened.pTimelineList->GetCount(), 3);
  const CTimeline* broken = opened.pTimelineList->GetAt(1);
  EXPECT_STREQ(broken->szName, "Timeline2");
  EXPECT_EQ(broken->tracks.GetCount(), 0);
}

TEST_F(ProjectOpenSave, FileThatCantBeOpenedIsDroppedAndTheLoadGoesOn) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  fs::remove(TimelineFile("Timeline1"));
  fs::create_directory(TimelineFile("Timeline1"));  // exists, but no stream opens
  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile().c_str(), 1), 0);
  ASSERT_EQ(opened.pTimelineList->GetCount(), 2);
  EXPECT_STREQ(opened.pTimelineList->GetAt(0)->szName, "Timeline2");
}

TEST_F(ProjectOpenSave, LoadersTakeAFolderAndAnExtensionAndRefuseNullNames) {
  CProject project;
  EXPECT_EQ(project.LoadTimelines(nullptr, nullptr, nullptr), -1);
  EXPECT_EQ(project.LoadRepositories(nullptr, nullptr, nullptr), -1);
  CTimeline* timeline = projecttest::MakeTimeline("Alpha", 1, 2);
  FILE* f = std::fopen((m_Base + "Alpha.Bk1").c_str(), "wb+");
  timeline->Save(f);
  std::fclose(f);
  delete timeline;
  CProjectFileList names;
  names.Add(new CProjectFileData("Alpha"));
  names.Add(new CProjectFileData("Missing"));
  std::string folder = m_Base;
  folder.pop_back();  // the loader adds the separator
  ASSERT_EQ(project.LoadTimelines(&names, folder.c_str(), ".Bk1"), 0);
  ASSERT_EQ(project.pTimelineList->GetCount(), 1);
  EXPECT_EQ(projecttest::OwnerCode(project.pTimelineList->m_OuterLock), 35);
  EXPECT_EQ(project.pTimelineList->GetAt(0)->tracks.GetCount(), 1);
  EXPECT_EQ(project.projectData.iTimelineCount, 1);
  ASSERT_EQ(project.LoadRepositories(&names, folder.c_str(), ""), 0);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 0);  // no Alpha.Qzr
  EXPECT_EQ(projecttest::OwnerCode(project.pRepositoryList->m_OuterLock), 33);
}

TEST_F(ProjectOpenSave, SaversTakeTheExtensionAsItStands) {
  CProject project;
  Fill(project);
  project.MakeDirectories();
  EXPECT_EQ(project.SaveTimelines(nullptr), 0);
  EXPECT_TRUE(fs::exists(TimelineFile("Timeline1")));
  EXPECT_EQ(projecttest::OwnerCode(project.pTimelineList->m_OuterLock), 36);
  EXPECT_EQ(project.SaveTimelines(""), 0);
  EXPECT_TRUE(fs::exists(Root() + "Show/Database/Timeline/Timeline1"));
  EXPECT_EQ(project.SaveRepositories(".Bk1"), 0);
  EXPECT_TRUE(fs::exists(RepositoryFile("Repository1", "Show", ".Bk1")));
  EXPECT_EQ(projecttest::OwnerCode(project.pRepositoryList->m_OuterLock), 34);
  EXPECT_EQ(project.SaveRepositories(nullptr), 0);
  EXPECT_EQ(ReadFile(RepositoryFile("Effects2")), SavedBytes(*project.pRepositoryList->GetAt(1)));
}

// --- Open under another extension -------------------------------------------

TEST_F(ProjectOpenSave, OpenWithExtensionReadsEachFileUnderThatExtension) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  // A copy of the set under ".Cp1".
  fs::copy_file(ProjectFile(), Root() + "Show/Show.Cp1");
  for (const char* t : {"Timeline1", "Timeline2", "Timeline3"}) {
    fs::copy_file(TimelineFile(t), TimelineFile(t, "Show", ".Cp1"));
  }
  fs::copy_file(RepositoryFile("Repository1"), RepositoryFile("Repository1", "Show", ".Cp1"));
  fs::remove(TimelineFile("Timeline1"));  // the main files play no part

  CProject opened;
  opened.iChangeCount = 4;
  ASSERT_EQ(opened.OpenWithExtension((Root() + "Show/Show.Cp1").c_str()), 0);
  EXPECT_EQ(opened.pTimelineList->GetCount(), 3);
  EXPECT_EQ(opened.pRepositoryList->GetCount(), 1);  // Effects2.Cp1 doesn't exist
  EXPECT_EQ(opened.bOpen, 1);
  EXPECT_EQ(opened.iModified, 1);
  EXPECT_EQ(opened.iBackupCount, opened.iChangeCount);
  EXPECT_EQ(SavedBytes(*opened.pTimelineList->GetAt(2)),
            SavedBytes(*saved.pTimelineList->GetAt(2)));
}

TEST_F(ProjectOpenSave, OpenWithExtensionDoesNoRootCheckAndMakesNoFolders) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  const std::string moved = m_Base + "moved/";
  fs::create_directories(moved);
  fs::rename(Root() + "Show", moved + "Show");
  CProject opened;
  ASSERT_EQ(opened.OpenWithExtension((moved + "Show/Show.qzpj").c_str()), 0);
  EXPECT_EQ(std::string(opened.projectData.szRootPath), Root());
  EXPECT_EQ(opened.pTimelineList->GetCount(), 0);  // looked for under the stored root
  EXPECT_FALSE(fs::exists(Root() + "Show"));
}

TEST_F(ProjectOpenSave, SaveAfterOpenWithExtensionRotatesBackups) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  const std::vector<uint8_t> before = ReadFile(ProjectFile());
  CProject opened;
  ASSERT_EQ(opened.OpenWithExtension(ProjectFile().c_str()), 0);
  ASSERT_EQ(opened.iModified, 1);
  ASSERT_TRUE(SaveTo(opened, ProjectFile()));
  EXPECT_EQ(ReadFile(Root() + "Show/Show.Bk1"), before);
}

TEST_F(ProjectOpenSave, NullPathsAreRefused) {
  CProject project;
  Fill(project);
  EXPECT_EQ(project.Open(nullptr, 1), -1);
  EXPECT_EQ(project.OpenWithExtension(nullptr), -1);
  EXPECT_EQ(project.Save(nullptr), -1);
  // Nothing changed: a null open doesn't even close.
  EXPECT_EQ(project.pTimelineList->GetCount(), 3);
}

// --- Create and the template --------------------------------------------------

TEST_F(ProjectOpenSave, CreateWithoutTemplateLeavesAnEmptyTemplateAndAnEmptyProject) {
  CProject project;
  const fs::path before = fs::current_path();
  EXPECT_EQ(project.Create(Root().c_str(), "Fresh"), 0);
  EXPECT_EQ(fs::current_path(), before);
  ASSERT_TRUE(fs::exists(App() + "/Default.qzpj"));
  EXPECT_EQ(fs::file_size(App() + "/Default.qzpj"), 0u);
  EXPECT_EQ(project.pTimelineList->GetCount(), 0);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 0);
  // The failed open of the template closed the project after Create set it
  // open, and nothing sets the flag again.
  EXPECT_EQ(project.bOpen, 0);
  // The defaults are gone: only the arguments and the save's own fields.
  EXPECT_EQ(project.projectData.iOpaqueF, 0);
  EXPECT_EQ(std::string(project.projectData.szRootPath), Root());
  EXPECT_STREQ(project.projectData.szProjectName, "Fresh");
  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile("Fresh").c_str(), 1), 0);
  EXPECT_EQ(opened.pTimelineList->GetCount(), 0);
  EXPECT_EQ(projecttest::OwnerCode(project.lockProject), 27);
  EXPECT_FALSE(projecttest::IsHeld(project.lockProject));
}

TEST_F(ProjectOpenSave, CreateFromTheTemplateNamesItsContentAndSetsTheZoom) {
  ASSERT_EQ(WriteProjectTemplate(App().c_str()), 0);
  const int8_t savedZoom = g_GlobalCfg.cfg.iDefTimeZoom;
  g_GlobalCfg.cfg.iDefTimeZoom = 3;
  CProject project;
  EXPECT_EQ(project.Create(Root().c_str(), "FromTemplate"), 0);
  g_GlobalCfg.cfg.iDefTimeZoom = savedZoom;
  ASSERT_EQ(project.pTimelineList->GetCount(), 1);
  EXPECT_STREQ(project.pTimelineList->GetAt(0)->szName, "Timeline1");
  EXPECT_EQ(project.pTimelineList->GetAt(0)->iTimeZoom, 13);
  EXPECT_GT(project.pTimelineList->GetAt(0)->tracks.GetCount(), 0);
  ASSERT_EQ(project.pRepositoryList->GetCount(), 1);
  EXPECT_STREQ(project.pRepositoryList->GetAt(0)->szName, "Repository1");
  EXPECT_STREQ(project.projectData.szProjectName, "FromTemplate");
  EXPECT_TRUE(fs::exists(ProjectFile("FromTemplate")));
  EXPECT_TRUE(fs::exists(TimelineFile("Timeline1", "FromTemplate")));
  EXPECT_TRUE(fs::exists(RepositoryFile("Repository1", "FromTemplate")));
  // The template made no folders of its own in the application directory.
  EXPECT_FALSE(fs::exists(App() + "/Database"));
  CProject opened;
  ASSERT_EQ(opened.Open(ProjectFile("FromTemplate").c_str(), 1), 0);
  ExpectSameProject(project, opened);
}

TEST_F(ProjectOpenSave, CreateKeepsTheTemplatesRecordUnderTheCallersRootAndName) {
  ASSERT_EQ(WriteProjectTemplate(App().c_str()), 0);
  std::vector<uint8_t> bytes = ReadFile(App() + "/Default.qzpj");
  const int32_t marker = 4242;
  std::memcpy(bytes.data() + 873, &marker, 4);  // iOpaqueE of the template
  WriteFile(App() + "/Default.qzpj", bytes);
  CProject project;
  ASSERT_EQ(project.Create(Root().c_str(), "Kept"), 0);
  EXPECT_EQ(project.projectData.iOpaqueE, 4242);
  EXPECT_EQ(std::string(project.projectData.szRootPath), Root());
}

TEST_F(ProjectOpenSave, CreateWithNullArgumentsKeepsTheTemplatesRootAndName) {
  ASSERT_EQ(WriteProjectTemplate(App().c_str()), 0);
  CProject project;
  EXPECT_EQ(project.Create(nullptr, nullptr), 0);
  EXPECT_STREQ(project.projectData.szRootPath, "");
  EXPECT_STREQ(project.projectData.szProjectName, "");
}

// --- Default content -------------------------------------------------------------

TEST_F(ProjectOpenSave, EnsureDefaultContentAddsATimelineAndAMediaRepository) {
  CProject project;
  projecttest::PlaceProject(project, Root(), "Show");
  const int8_t savedZoom = g_GlobalCfg.cfg.iDefTimeZoom;
  g_GlobalCfg.cfg.iDefTimeZoom = 9;
  EXPECT_EQ(project.EnsureDefaultContent(), 0);
  g_GlobalCfg.cfg.iDefTimeZoom = savedZoom;
  ASSERT_EQ(project.pTimelineList->GetCount(), 1);
  const CTimeline* timeline = project.pTimelineList->GetAt(0);
  EXPECT_STREQ(timeline->szName, "Timeline1");
  EXPECT_EQ(+timeline->dStartMs, 0.0);
  EXPECT_EQ(+timeline->dLengthMs, 600000.0);  // "00:10:00:00"
  EXPECT_EQ(+timeline->dRangeFromMs, 1000.0);
  EXPECT_EQ(+timeline->dRangeToMs, 30000.0);
  EXPECT_EQ(timeline->iTimeZoom, 7);
  EXPECT_GT(timeline->tracks.GetCount(), 0);
  ASSERT_EQ(project.pRepositoryList->GetCount(), 1);
  EXPECT_EQ(project.pRepositoryList->GetAt(0)->iRepositoryKind, 1);
  EXPECT_STREQ(project.pRepositoryList->GetAt(0)->szName, "Repository1");
  EXPECT_EQ(project.iModified, 1);
  EXPECT_EQ(project.iChangeCount, 2);
  EXPECT_EQ(projecttest::OwnerCode(project.pTimelineList->m_OuterLock), 95);
  EXPECT_EQ(projecttest::OwnerCode(project.pRepositoryList->m_OuterLock), 132);
  // A second call has nothing to add.
  EXPECT_EQ(project.EnsureDefaultContent(), 0);
  EXPECT_EQ(project.pTimelineList->GetCount(), 1);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 1);
  EXPECT_EQ(project.iChangeCount, 2);
}

TEST_F(ProjectOpenSave, EnsureDefaultContentLengthHasAFloorAndDmxPresetsDontCount) {
  CProject project;
  projecttest::PlaceProject(project, Root(), "Show");
  project.MakeDirectories();
  WriteFile(TimelineFile("Timeline1"), std::string("taken"));
  WriteFile(RepositoryFile("Repository1"), std::string("taken"));
  project.AddRepository(MakeRepository("Presets", 3, 0));
  char savedLength[sizeof(g_GlobalCfg.cfg.sDefaultTimelineLen)];
  std::memcpy(savedLength, g_GlobalCfg.cfg.sDefaultTimelineLen, sizeof(savedLength));
  std::strcpy(g_GlobalCfg.cfg.sDefaultTimelineLen, "00:00:02:00");
  project.EnsureDefaultContent();
  std::memcpy(g_GlobalCfg.cfg.sDefaultTimelineLen, savedLength, sizeof(savedLength));
  ASSERT_EQ(project.pTimelineList->GetCount(), 1);
  EXPECT_STREQ(project.pTimelineList->GetAt(0)->szName, "Timeline2");
  EXPECT_EQ(+project.pTimelineList->GetAt(0)->dLengthMs, 10000.0);
  ASSERT_EQ(project.pRepositoryList->GetCount(), 2);
  EXPECT_STREQ(project.pRepositoryList->GetAt(1)->szName, "Repository2");
  EXPECT_EQ(project.pRepositoryList->GetAt(1)->iRepositoryKind, 1);
}

TEST_F(ProjectOpenSave, ZoomTableMapsEverySetting) {
  const int8_t savedZoom = g_GlobalCfg.cfg.iDefTimeZoom;
  const std::vector<std::pair<int, int>> table = {
      {0, 16}, {1, 15}, {2, 14},  {3, 13},  {4, 12},  {5, 11},  {6, 10}, {7, 9},  {8, 8},
      {9, 7},  {10, 6}, {11, 5},  {12, 4},  {13, 3},  {14, 2},  {15, 1}, {16, 7}, {-1, 7},
      {100, 7}};
  for (const auto& [setting, zoom] : table) {
    g_GlobalCfg.cfg.iDefTimeZoom = static_cast<int8_t>(setting);
    CProject project;
    projecttest::PlaceProject(project, Root(), "Zoom");
    project.EnsureDefaultContent();
    ASSERT_EQ(project.pTimelineList->GetCount(), 1);
    EXPECT_EQ(project.pTimelineList->GetAt(0)->iTimeZoom, zoom) << "setting " << setting;
  }
  g_GlobalCfg.cfg.iDefTimeZoom = savedZoom;
}

// --- The application directory ----------------------------------------------------

TEST_F(ProjectOpenSave, RelativePathsAreTakenFromTheApplicationDirectory) {
  CProject saved;
  Fill(saved);
  ASSERT_TRUE(SaveTo(saved, ProjectFile()));
  fs::copy_file(ProjectFile(), App() + "/Copy.qzpj");
  const fs::path before = fs::current_path();
  CProject opened;
  ASSERT_EQ(opened.Open("Copy.qzpj", 1), 0);
  EXPECT_EQ(fs::current_path(), before);
  EXPECT_EQ(opened.pTimelineList->GetCount(), 3);
  char relative[] = "Relative.qzpj";
  ASSERT_EQ(opened.Save(relative), 0);
  EXPECT_EQ(fs::current_path(), before);
  EXPECT_TRUE(fs::exists(App() + "/Relative.qzpj"));
  EXPECT_FALSE(fs::exists(m_Base + "Relative.qzpj"));
}

TEST_F(ProjectOpenSave, FailedOpenAndSaveAlsoComeBackToTheCallersDirectory) {
  const fs::path before = fs::current_path();
  CProject project;
  EXPECT_EQ(project.Open((m_Base + "none/x.qzpj").c_str(), 1), -1);
  EXPECT_EQ(fs::current_path(), before);
  char path[] = "/proc/no-such-place/x.qzpj";
  EXPECT_EQ(project.Save(path), -1);
  EXPECT_EQ(fs::current_path(), before);
}

}  // namespace
