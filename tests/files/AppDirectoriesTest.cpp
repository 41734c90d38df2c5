#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <string>

#include "files/AppDirectories.h"
#include "files/CurrentDrive.h"
#include "files/PathParts.h"
#include "platform/Directory.h"
#include "tests/files/TempDirTest.h"

namespace fs = std::filesystem;

namespace {

constexpr char kSep = platform::kPathSeparator;

std::string Join(std::initializer_list<const char*> parts) {
  std::string out;
  for (const char* part : parts) {
    if (!out.empty()) out += kSep;
    out += part;
  }
  return out;
}

using GetDir = void (*)(char*);

std::string Read(GetDir get) {
  char out[kPathBufferSize];
  std::memset(out, 'x', sizeof out);
  get(out);
  return out;
}

class AppDirectoriesTest : public TempDirTest {};

}  // namespace

TEST_F(AppDirectoriesTest, DriveLetterProgramPathGivesBaseSlotsAndDrive) {
  // A relative "C:" path stands in for a drive-letter install; it lives in
  // the temporary directory.
  fs::create_directories(m_Root / "C:" / "Apps" / "Tool");
  const std::string program = Join({"C:", "Apps", "Tool", "run.exe"});
  ASSERT_EQ(InitAppDirectoriesFrom(program.c_str(), 0), 0);

  const std::string base = Join({"C:", "Apps", "Tool"});
  EXPECT_EQ(Read(GetAppDir), base);
  EXPECT_EQ(Read(GetTfxCustomDir), Join({"C:", "Apps", "Tool", "Effects", "Tfx", "Custom"}));

  uint32_t before = 0;
  ChangeCurrentDrive(7);
  ChangeToAppDir();
  SaveCurrentDirectory(nullptr, &before);
  EXPECT_EQ(before, 3u);  // the install drive is C
  EXPECT_EQ(Cwd(), fs::canonical(m_Root / "C:" / "Apps" / "Tool"));
}

TEST_F(AppDirectoriesTest, EverySlotIsBuiltWithItsFolderName) {
  const std::string program = (m_Root / "prog" / "tachyrun").string();
  fs::create_directories(m_Root / "prog");
  InitAppDirectoriesFrom(program.c_str(), 0);
  const std::string base = (m_Root / "prog").string();
  const std::string effects = base + kSep + "Effects";
  EXPECT_EQ(Read(GetAppDir), base);
  EXPECT_EQ(Read(GetTmpDir), base + kSep + "Tmp");
  EXPECT_EQ(Read(GetDataDir), base + kSep + "Data");
  EXPECT_EQ(Read(GetExportDir), base + kSep + "Export");
  EXPECT_EQ(Read(GetEffectsDir), effects);
  EXPECT_EQ(Read(GetPresetsDir), base + kSep + "WinPresets");
  EXPECT_EQ(Read(GetEfxDir), effects + kSep + "Efx");
  EXPECT_EQ(Read(GetTfxDir), effects + kSep + "Tfx");
  EXPECT_EQ(Read(GetEfxCustomDir), effects + kSep + "Efx" + kSep + "Custom");
  EXPECT_EQ(Read(GetTfxCustomDir), effects + kSep + "Tfx" + kSep + "Custom");
  EXPECT_EQ(Read(GetThumbsDir), effects + kSep + "Thumbs");
  EXPECT_EQ(Read(GetMacroDir), effects + kSep + "Macro");
}

TEST_F(AppDirectoriesTest, InitWithoutCreateAllMakesOnlyTmp) {
  fs::create_directories(m_Root / "prog");
  InitAppDirectoriesFrom((m_Root / "prog" / "run").string().c_str(), 0);
  EXPECT_TRUE(fs::is_directory(m_Root / "prog" / "Tmp"));
  int entries = 0;
  for (const auto& entry : fs::directory_iterator(m_Root / "prog")) {
    (void)entry;
    ++entries;
  }
  EXPECT_EQ(entries, 1);
  // The slots are built all the same.
  EXPECT_EQ(Read(GetThumbsDir), (m_Root / "prog" / "Effects" / "Thumbs").string());
}

TEST_F(AppDirectoriesTest, CreateAllOtherThanOneCountsAsNo) {
  fs::create_directories(m_Root / "prog");
  InitAppDirectoriesFrom((m_Root / "prog" / "run").string().c_str(), 2);
  EXPECT_TRUE(fs::is_directory(m_Root / "prog" / "Tmp"));
  EXPECT_FALSE(fs::exists(m_Root / "prog" / "Data"));
}

TEST_F(AppDirectoriesTest, InitWithCreateAllMakesTheWholeTree) {
  fs::create_directories(m_Root / "prog");
  const fs::path base = m_Root / "prog";
  InitAppDirectoriesFrom((base / "run").string().c_str(), 1);
  for (const fs::path& dir :
       {base / "Tmp", base / "Data", base / "Export", base / "WinPresets", base / "Effects",
        base / "Effects" / "Efx", base / "Effects" / "Tfx", base / "Effects" / "Thumbs",
        base / "Effects" / "Macro", base / "Effects" / "Efx" / "Custom",
        base / "Effects" / "Tfx" / "Custom"}) {
    EXPECT_TRUE(fs::is_directory(dir)) << dir;
  }
  // A second run finds everything in place and changes nothing.
  EXPECT_EQ(InitAppDirectoriesFrom((base / "run").string().c_str(), 1), 0);
  EXPECT_TRUE(fs::is_directory(base / "Effects" / "Tfx" / "Custom"));
}

TEST_F(AppDirectoriesTest, InitFromTheRunningProgram) {
  char program[4096];
  ASSERT_TRUE(platform::GetExecutablePath(program, sizeof program));
  const fs::path dir = fs::path(program).parent_path();
  const bool hadTmp = fs::exists(dir / "Tmp");
  EXPECT_EQ(InitAppDirectories(0), 0);
  EXPECT_EQ(Read(GetAppDir), dir.string());
  EXPECT_TRUE(fs::is_directory(dir / "Tmp"));
  if (!hadTmp) fs::remove(dir / "Tmp");
}

TEST_F(AppDirectoriesTest, ProgramInTheRootKeepsItsWholePath) {
  // The separator at index 0 is never examined.
  // A name that doesn't exist, so that making its Tmp below it fails.
  const std::string program = std::string(1, kSep) + "tachyrun-no-such-program";
  InitAppDirectoriesFrom(program.c_str(), 0);
  EXPECT_EQ(Read(GetAppDir), program);
}

TEST_F(AppDirectoriesTest, OverlongProgramPathIsCutToTheSlot) {
  // Cut to 259 characters first; without a separator behind index 0 that
  // cut text is the base itself.
  const std::string program = std::string(1, kSep) + std::string(400, 'p');
  InitAppDirectoriesFrom(program.c_str(), 0);
  EXPECT_EQ(Read(GetAppDir), program.substr(0, kPathBufferSize - 1));
  EXPECT_EQ(Read(GetTfxCustomDir), program.substr(0, kPathBufferSize - 1));
}

TEST_F(AppDirectoriesTest, OverlongProgramPathTakesTheLastSeparatorInsideTheCut) {
  std::string program = m_Root.string();
  while (program.size() < 300) program += std::string(1, kSep) + "abcdefghij";
  InitAppDirectoriesFrom(program.c_str(), 0);
  const std::string cut = program.substr(0, kPathBufferSize - 1);
  const std::string base = cut.substr(0, cut.rfind(kSep));
  EXPECT_EQ(Read(GetAppDir), base);
  const std::string tfx = Read(GetTfxCustomDir);
  EXPECT_EQ(tfx.size(), kPathBufferSize - 1);
  EXPECT_EQ(tfx, (base + kSep + "Effects" + kSep + "Tfx" + kSep + "Custom").substr(0, tfx.size()));
}

TEST_F(AppDirectoriesTest, GetWithNullOutDoesNothing) {
  fs::create_directories(m_Root / "prog");
  InitAppDirectoriesFrom((m_Root / "prog" / "run").string().c_str(), 0);
  for (GetDir get :
       {GetAppDir, GetTmpDir, GetDataDir, GetExportDir, GetEffectsDir, GetPresetsDir, GetEfxDir,
        GetTfxDir, GetEfxCustomDir, GetTfxCustomDir, GetThumbsDir, GetMacroDir}) {
    get(nullptr);
  }
  EXPECT_EQ(Read(GetAppDir), (m_Root / "prog").string());
}

TEST_F(AppDirectoriesTest, ChangeToEachSlot) {
  const fs::path base = m_Root / "prog";
  fs::create_directories(base);
  InitAppDirectoriesFrom((base / "run").string().c_str(), 1);
  const struct {
    int32_t (*change)();
    fs::path dir;
  } cases[] = {
      {ChangeToAppDir, base},
      {ChangeToTmpDir, base / "Tmp"},
      {ChangeToDataDir, base / "Data"},
      {ChangeToExportDir, base / "Export"},
      {ChangeToEffectsDir, base / "Effects"},
      {ChangeToPresetsDir, base / "WinPresets"},
      {ChangeToEfxDir, base / "Effects" / "Efx"},
      {ChangeToTfxDir, base / "Effects" / "Tfx"},
      {ChangeToEfxCustomDir, base / "Effects" / "Efx" / "Custom"},
      {ChangeToTfxCustomDir, base / "Effects" / "Tfx" / "Custom"},
      {ChangeToThumbsDir, base / "Effects" / "Thumbs"},
  };
  for (const auto& c : cases) {
    fs::current_path(m_Root);
    EXPECT_EQ(c.change(), 0);
    EXPECT_EQ(Cwd(), c.dir);
  }
}

TEST_F(AppDirectoriesTest, ChangeToMissingDirectoryStaysAndReturnsZero) {
  fs::create_directories(m_Root / "prog");
  InitAppDirectoriesFrom((m_Root / "prog" / "run").string().c_str(), 0);
  EXPECT_EQ(ChangeToDataDir(), 0);  // Data was not made
  EXPECT_EQ(Cwd(), m_Root);
}

TEST_F(AppDirectoriesTest, ChangeToSpareDirChangesTheDriveAndLeavesTheDirectory) {
  fs::create_directories(m_Root / "C:" / "Apps");
  InitAppDirectoriesFrom(Join({"C:", "Apps", "run"}).c_str(), 0);
  ASSERT_EQ(ChangeCurrentDrive(5), 0);
  EXPECT_EQ(ChangeToSpareDir(), 0);
  EXPECT_EQ(GetCurrentDrive(), 3);
  EXPECT_EQ(Cwd(), m_Root);
}

TEST_F(AppDirectoriesTest, RestoreWithNullReturnsToTheLastSave) {
  fs::create_directories(m_Root / "a");
  ChangeCurrentDrive(4);
  EXPECT_EQ(SaveCurrentDirectory(nullptr, nullptr), 0);
  fs::current_path(m_Root / "a");
  ChangeCurrentDrive(9);
  EXPECT_EQ(RestoreCurrentDirectory(nullptr, 0), 0);
  EXPECT_EQ(Cwd(), m_Root);
  EXPECT_EQ(GetCurrentDrive(), 4);
}

TEST_F(AppDirectoriesTest, SecondSaveWithNullOverwritesTheFirst) {
  fs::create_directories(m_Root / "a");
  SaveCurrentDirectory(nullptr, nullptr);
  fs::current_path(m_Root / "a");
  ChangeCurrentDrive(6);
  SaveCurrentDirectory(nullptr, nullptr);
  fs::current_path(m_Root);
  ChangeCurrentDrive(3);
  EXPECT_EQ(RestoreCurrentDirectory(nullptr, 0), 0);
  EXPECT_EQ(Cwd(), m_Root / "a");
  EXPECT_EQ(GetCurrentDrive(), 6);
}

TEST_F(AppDirectoriesTest, CallerBuffersNest) {
  fs::create_directories(m_Root / "a" / "b");
  char outer[kPathBufferSize];
  uint32_t outerDrive = 0;
  ChangeCurrentDrive(4);
  SaveCurrentDirectory(outer, &outerDrive);
  EXPECT_EQ(outerDrive, 4u);
  fs::current_path(m_Root / "a");

  char inner[kPathBufferSize];
  uint32_t innerDrive = 0;
  ChangeCurrentDrive(5);
  SaveCurrentDirectory(inner, &innerDrive);
  fs::current_path(m_Root / "a" / "b");

  EXPECT_EQ(RestoreCurrentDirectory(inner, static_cast<int32_t>(innerDrive)), 0);
  EXPECT_EQ(Cwd(), m_Root / "a");
  EXPECT_EQ(GetCurrentDrive(), 5);
  EXPECT_EQ(RestoreCurrentDirectory(outer, static_cast<int32_t>(outerDrive)), 0);
  EXPECT_EQ(Cwd(), m_Root);
  EXPECT_EQ(GetCurrentDrive(), 4);
}

TEST_F(AppDirectoriesTest, SaveWithBufferLeavesTheSharedSlotAlone) {
  fs::create_directories(m_Root / "a");
  SaveCurrentDirectory(nullptr, nullptr);
  fs::current_path(m_Root / "a");
  char mine[kPathBufferSize];
  uint32_t myDrive = 0;
  SaveCurrentDirectory(mine, &myDrive);
  EXPECT_EQ(std::string(mine), (m_Root / "a").string());
  EXPECT_EQ(RestoreCurrentDirectory(nullptr, 0), 0);
  EXPECT_EQ(Cwd(), m_Root);
}

TEST_F(AppDirectoriesTest, RestoreToAMissingDirectoryFails) {
  EXPECT_EQ(RestoreCurrentDirectory("no-such-dir", 3), -1);
  EXPECT_EQ(Cwd(), m_Root);
}

TEST_F(AppDirectoriesTest, TooLongCurrentDirectoryIsNotSaved) {
  // Saving reads at most 198 characters; a deeper directory leaves the
  // buffer empty and the restore fails instead of going somewhere else.
  fs::path deep = m_Root;
  while (deep.string().size() < 220) deep /= "dddddddddd";
  fs::create_directories(deep);
  fs::current_path(deep);
  char saved[kPathBufferSize];
  std::memset(saved, 'x', sizeof saved);
  uint32_t drive = 0;
  EXPECT_EQ(SaveCurrentDirectory(saved, &drive), 0);
  EXPECT_EQ(saved[0], '\0');
  EXPECT_EQ(RestoreCurrentDirectory(saved, static_cast<int32_t>(drive)), -1);
  EXPECT_EQ(Cwd(), deep);
}

// A directory deeper than the save can hold.
fs::path MakeDeepDirectory(const fs::path& root) {
  fs::path deep = root;
  while (deep.string().size() < 220) deep /= "dddddddddd";
  fs::create_directories(deep);
  return deep;
}

TEST_F(AppDirectoriesTest, RestoreAfterARefusedSaveReportsMinusOneAndChangesNothing) {
  const fs::path deep = MakeDeepDirectory(m_Root);
  fs::current_path(deep);
  char saved[kPathBufferSize];
  uint32_t drive = 0;
  EXPECT_EQ(SaveCurrentDirectory(saved, &drive), 0);
  ASSERT_EQ(saved[0], '\0');  // refused: what the caller checks before leaving
  const int32_t driveBefore = GetCurrentDrive();
  fs::current_path(m_Root);  // a caller that went on all the same
  EXPECT_EQ(RestoreCurrentDirectory(saved, static_cast<int32_t>(drive)), -1);
  EXPECT_EQ(Cwd(), m_Root);
  EXPECT_EQ(GetCurrentDrive(), driveBefore);
}

TEST_F(AppDirectoriesTest, ARefusedSaveInTheSharedSlotForgetsTheOneBeforeIt) {
  fs::create_directory("elsewhere");
  const fs::path deep = MakeDeepDirectory(m_Root);
  EXPECT_EQ(SaveCurrentDirectory(nullptr, nullptr), 0);  // m_Root
  fs::current_path(deep);
  EXPECT_EQ(SaveCurrentDirectory(nullptr, nullptr), 0);  // refused, overwrites m_Root
  fs::current_path(m_Root / "elsewhere");
  // Neither back to m_Root nor anywhere else: the restore fails where it stands.
  EXPECT_EQ(RestoreCurrentDirectory(nullptr, 0), -1);
  EXPECT_EQ(Cwd(), m_Root / "elsewhere");
}

