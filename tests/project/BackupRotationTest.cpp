// Backup rotation: main file, .Bk1, .Bk2, then gone.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "project/BackupRotation.h"
#include "project/Repository.h"
#include "project/Timeline.h"
#include "tests/support/RunWithoutRoot.h"
#include "tests/support/TempFiles.h"

namespace {

using namespace testsupport;

TEST(BackupRotation, FullRotationMovesBk1ToBk2AndMainToBk1) {
  TempDir dir;
  WriteFile(dir.Path("T.Qzt"), "main");
  WriteFile(dir.Path("T.Bk1"), "one");
  WriteFile(dir.Path("T.Bk2"), "two");
  EXPECT_EQ(RotateBackupFiles(dir.Path("T.Qzt").c_str(), 0), 0);
  EXPECT_FALSE(Exists(dir.Path("T.Qzt")));
  EXPECT_EQ(ReadText(dir.Path("T.Bk1")), "main");
  EXPECT_EQ(ReadText(dir.Path("T.Bk2")), "one");
}

TEST(BackupRotation, FlagSetMovesOnlyBk1) {
  TempDir dir;
  WriteFile(dir.Path("T.Qzt"), "main");
  WriteFile(dir.Path("T.Bk1"), "one");
  EXPECT_EQ(RotateBackupFiles(dir.Path("T.Qzt").c_str(), 1), 0);
  EXPECT_EQ(ReadText(dir.Path("T.Qzt")), "main");
  EXPECT_FALSE(Exists(dir.Path("T.Bk1")));
  EXPECT_EQ(ReadText(dir.Path("T.Bk2")), "one");
}

TEST(BackupRotation, ThreeSavesKeepThreeGenerations) {
  TempDir dir;
  const std::string path = dir.Path("Gen.Qzt");
  CTimeline timeline;
  for (const char* name : {"first", "second", "third"}) {
    std::strcpy(timeline.szName, name);
    ASSERT_EQ(timeline.SaveFile(path.c_str()), 0);
  }
  CTimeline main, bk1, bk2;
  main.LoadFile(path.c_str());
  bk1.LoadFile(dir.Path("Gen.Bk1").c_str());
  bk2.LoadFile(dir.Path("Gen.Bk2").c_str());
  EXPECT_STREQ(main.szName, "third");
  EXPECT_STREQ(bk1.szName, "second");
  EXPECT_STREQ(bk2.szName, "first");
  // A fourth save lets the first generation go.
  std::strcpy(timeline.szName, "fourth");
  ASSERT_EQ(timeline.SaveFile(path.c_str()), 0);
  bk2.LoadFile(dir.Path("Gen.Bk2").c_str());
  EXPECT_STREQ(bk2.szName, "second");
}

TEST(BackupRotation, TwoSavesOfAChangedFileLeaveFirstInBk2SecondInBk1) {
  TempDir dir;
  const std::string path = dir.Path("P.Qzr");
  WriteFile(path, "version1");
  RotateBackupFiles(path.c_str(), 0);
  WriteFile(path, "version2");
  RotateBackupFiles(path.c_str(), 0);
  WriteFile(path, "version3");
  EXPECT_EQ(ReadText(dir.Path("P.Bk2")), "version1");
  EXPECT_EQ(ReadText(dir.Path("P.Bk1")), "version2");
}

TEST(BackupRotation, DotInFolderNameIsTheLastDotOfAPathWithoutExtension) {
  TempDir dir;
  ASSERT_EQ(::mkdir(dir.Path("A.B").c_str(), 0755), 0);
  const std::string path = dir.Path("A.B/File");
  WriteFile(path, "data");
  EXPECT_EQ(RotateBackupFiles(path.c_str(), 0), 0);
  // Cut at the folder's dot: the backup is A.Bk1 beside the folder.
  EXPECT_EQ(ReadText(dir.Path("A.Bk1")), "data");
  EXPECT_FALSE(Exists(path));
}

TEST(BackupRotation, SavingAsBk1MovesTheOldBk1ToBk2) {
  TempDir dir;
  WriteFile(dir.Path("X.Bk1"), "old backup");
  CTimeline timeline;
  std::strcpy(timeline.szName, "new backup");
  ASSERT_EQ(timeline.SaveFile(dir.Path("X.Bk1").c_str()), 0);
  EXPECT_EQ(ReadText(dir.Path("X.Bk2")), "old backup");
  CTimeline loaded;
  loaded.LoadFile(dir.Path("X.Bk1").c_str());
  EXPECT_STREQ(loaded.szName, "new backup");
}

TEST(BackupRotation, WriteProtectedMainFileStays) {
  TempDir dir;
  const std::string result = RunWithoutRoot([&]() -> std::string {
    TempDir own;
    const std::string path = own.Path("R.Qzr");
    WriteFile(path, "protected");
    ::chmod(path.c_str(), 0444);
    RotateBackupFiles(path.c_str(), 0);
    if (ReadText(path) != "protected") return "main file moved";
    if (Exists(own.Path("R.Bk1"))) return "Bk1 made";
    return "";
  });
  EXPECT_EQ(result, "");
}

TEST(BackupRotation, WriteProtectedBk1StaysAndTheMainFileIsWrittenInPlace) {
  const std::string result = RunWithoutRoot([]() -> std::string {
    TempDir own;
    const std::string path = own.Path("R.Qzr");
    WriteFile(own.Path("R.Bk1"), "protected backup");
    ::chmod(own.Path("R.Bk1").c_str(), 0444);
    WriteFile(path, "main");
    RotateBackupFiles(path.c_str(), 0);
    if (ReadText(own.Path("R.Bk1")) != "protected backup") return "Bk1 replaced";
    if (Exists(own.Path("R.Bk2"))) return "Bk1 moved";
    if (ReadText(path) != "main") return "main file moved";
    return "";
  });
  EXPECT_EQ(result, "");
}

// A write-protected .Bk2 can't be removed, so .Bk1 can't take its place and
// stays where it is; the main file then replaces .Bk1 as usual.
TEST(BackupRotation, WriteProtectedBk2StaysAndBk1GivesWayToTheMainFile) {
  const std::string result = RunWithoutRoot([]() -> std::string {
    TempDir own;
    const std::string path = own.Path("R.Qzr");
    WriteFile(own.Path("R.Bk2"), "protected oldest");
    ::chmod(own.Path("R.Bk2").c_str(), 0444);
    WriteFile(own.Path("R.Bk1"), "older");
    WriteFile(path, "main");
    RotateBackupFiles(path.c_str(), 0);
    if (ReadText(own.Path("R.Bk2")) != "protected oldest") return "Bk2 replaced";
    if (ReadText(own.Path("R.Bk1")) != "main") return "main file not moved to Bk1";
    if (Exists(path)) return "main file stayed";
    return "";
  });
  EXPECT_EQ(result, "");
}

TEST(BackupRotation, MissingFilesAndOverlongPathsAreNoFailure) {
  TempDir dir;
  EXPECT_EQ(RotateBackupFiles(dir.Path("None.Qzt").c_str(), 0), 0);
  EXPECT_EQ(RotateBackupFiles(nullptr, 0), 0);
  const std::string longPath = dir.Path(std::string(300, 'z'));
  EXPECT_EQ(RotateBackupFiles(longPath.c_str(), 0), 0);
  // Fits 260 bytes, but its backup name wouldn't: left alone.
  const std::string nearly = dir.Path(std::string(258 - dir.Root().size(), 'n'));
  ASSERT_LT(nearly.size(), 260u);
  WriteFile(nearly, "kept");
  EXPECT_EQ(RotateBackupFiles(nearly.c_str(), 0), 0);
  EXPECT_EQ(ReadText(nearly), "kept");
}

TEST(BackupRotation, RotateOnlyOfTimelineAndRepositoryKeepsTheMainFile) {
  TempDir dir;
  for (const char* name : {"T.Qzt", "R.Qzr"}) WriteFile(dir.Path(name), "main");
  WriteFile(dir.Path("T.Bk1"), "t1");
  WriteFile(dir.Path("R.Bk1"), "r1");
  CTimeline timeline;
  CRepository repository;
  EXPECT_EQ(timeline.RotateOnly(dir.Path("T.Qzt").c_str()), 0);
  EXPECT_EQ(repository.RotateOnly(dir.Path("R.Qzr").c_str()), 0);
  EXPECT_EQ(ReadText(dir.Path("T.Qzt")), "main");
  EXPECT_EQ(ReadText(dir.Path("T.Bk2")), "t1");
  EXPECT_EQ(ReadText(dir.Path("R.Qzr")), "main");
  EXPECT_EQ(ReadText(dir.Path("R.Bk2")), "r1");
  EXPECT_EQ(repository.RotateBackups(dir.Path("R.Qzr").c_str(), 0), 0);
  EXPECT_EQ(ReadText(dir.Path("R.Bk1")), "main");
}

}  // namespace
