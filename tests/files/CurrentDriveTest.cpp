#include <gtest/gtest.h>

#include <filesystem>

#include "files/CurrentDrive.h"
#include "tests/files/TempDirTest.h"

namespace fs = std::filesystem;

namespace {
class CurrentDriveTest : public TempDirTest {};
}  // namespace

TEST(DriveNumberTest, DriveLetterInEitherCase) {
  EXPECT_EQ(GetDriveNumber("C:\\x"), 3);
  EXPECT_EQ(GetDriveNumber("c:\\x"), 3);
  EXPECT_EQ(GetDriveNumber("A:"), 1);
  EXPECT_EQ(GetDriveNumber("z:"), 26);
}

TEST(DriveNumberTest, NullIsDriveC) {
  EXPECT_EQ(GetDriveNumber(nullptr), 3);
}

TEST(DriveNumberTest, NoColonIsNeeded) {
  // A relative path gives the drive of its first letter.
  EXPECT_EQ(GetDriveNumber("data"), 4);
  EXPECT_EQ(GetDriveNumber("@x"), 0);
  EXPECT_EQ(GetDriveNumber("/home"), '/' - 64);
  EXPECT_EQ(GetDriveNumber(""), -64);
  EXPECT_EQ(GetDriveNumber("\xE9"), 0xE9 - 64);
}

TEST_F(CurrentDriveTest, ChangeDriveAcceptsOnlyDriveLetters) {
  EXPECT_EQ(ChangeCurrentDrive(4), 0);
  EXPECT_EQ(GetCurrentDrive(), 4);
  EXPECT_EQ(ChangeCurrentDrive(0), -1);
  EXPECT_EQ(ChangeCurrentDrive(27), -1);
  EXPECT_EQ(ChangeCurrentDrive(-17), -1);
  EXPECT_EQ(GetCurrentDrive(), 4);
}

TEST_F(CurrentDriveTest, ChangeDriveAndDirEntersTheDirectory) {
  fs::create_directories(m_Root / "sub");
  ChangeCurrentDrive(5);
  EXPECT_EQ(ChangeDriveAndDir((m_Root / "sub").c_str()), 0);
  EXPECT_EQ(Cwd(), m_Root / "sub");
  EXPECT_EQ(GetCurrentDrive(), 5);  // "/..." names no drive
}

TEST_F(CurrentDriveTest, ChangeDriveAndDirTakesTheDriveOfARelativePath) {
  fs::create_directories(m_Root / "data");
  ChangeCurrentDrive(3);
  EXPECT_EQ(ChangeDriveAndDir("data"), 0);
  EXPECT_EQ(GetCurrentDrive(), 4);
  EXPECT_EQ(Cwd(), m_Root / "data");
}

TEST_F(CurrentDriveTest, ChangeDriveAndDirOfAMissingDirectoryFailsButChangesTheDrive) {
  ChangeCurrentDrive(3);
  EXPECT_EQ(ChangeDriveAndDir("missing"), -1);
  EXPECT_EQ(GetCurrentDrive(), 'M' - 64);
  EXPECT_EQ(Cwd(), m_Root);
}

TEST_F(CurrentDriveTest, ChangeDriveAndDirOfNullChangesToDriveC) {
  ChangeCurrentDrive(6);
  EXPECT_EQ(ChangeDriveAndDir(nullptr), 0);
  EXPECT_EQ(GetCurrentDrive(), 3);
  EXPECT_EQ(Cwd(), m_Root);
}
