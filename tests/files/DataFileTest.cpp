#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "files/DataFile.h"
#include "tests/files/TempDirTest.h"
#include "tests/support/RunWithoutRoot.h"

namespace fs = std::filesystem;

namespace {

class DataFileTest : public TempDirTest {
 protected:
  static void WriteText(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
  }
  static std::string ReadText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }
  // Lets the unprivileged child of RunWithoutRoot work in the test folder.
  void OpenFolderToEveryone() { fs::permissions(m_Root, fs::perms::all); }
};

}  // namespace

TEST_F(DataFileTest, OpenMissingForWritingCreatesAnEmptyFile) {
  FILE* stream = OpenDataFile("new.dat", false);
  ASSERT_NE(stream, nullptr);
  CloseDataFile(stream);
  EXPECT_TRUE(fs::exists("new.dat"));
  EXPECT_EQ(fs::file_size("new.dat"), 0u);
}

TEST_F(DataFileTest, OpenMissingReadOnlyGivesNull) {
  EXPECT_EQ(OpenDataFile("missing.dat", true), nullptr);
  EXPECT_FALSE(fs::exists("missing.dat"));
}

TEST_F(DataFileTest, OpenExistingForWritingKeepsItsContentAndStartsAtZero) {
  WriteText("data.dat", "content");
  FILE* stream = OpenDataFile("data.dat", false);
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(std::ftell(stream), 0);
  char buffer[8] = {};
  EXPECT_EQ(std::fread(buffer, 1, 7, stream), 7u);
  EXPECT_STREQ(buffer, "content");
  CloseDataFile(stream);
}

TEST_F(DataFileTest, WriteProtectedFileStillOpensForReading) {
  OpenFolderToEveryone();
  const std::string failure = testsupport::RunWithoutRoot([]() -> std::string {
    WriteText("locked.dat", "abc");
    fs::permissions("locked.dat", fs::perms::owner_read);
    FILE* stream = OpenDataFile("locked.dat", false);
    if (stream == nullptr) return "not opened";
    char buffer[4] = {};
    const int32_t got = ReadFileRange(0, 3, buffer, stream);
    // The caller isn't told; its writes simply fail.
    const int32_t written = WriteFileRange(0, 3, "xyz", stream);
    CloseDataFile(stream);
    if (got != 3 || std::string(buffer) != "abc") return "read gave " + std::string(buffer);
    if (written != 0) return "a write went through";
    if (ReadText("locked.dat") != "abc") return "content changed";
    return "";
  });
  EXPECT_EQ(failure, "");
}

TEST_F(DataFileTest, OpenBadPathsGivesNull) {
  EXPECT_EQ(OpenDataFile(nullptr, false), nullptr);
  EXPECT_EQ(OpenDataFile(nullptr, true), nullptr);
  EXPECT_EQ(OpenDataFile("no/such/dir/file.dat", false), nullptr);
  fs::create_directory("folder");
  EXPECT_EQ(OpenDataFile("folder", false), nullptr);
  EXPECT_EQ(OpenDataFile("folder", true), nullptr);
  CloseDataFile(nullptr);
}

TEST_F(DataFileTest, RangesWithEndAtOrBelowStartDoNothing) {
  WriteText("data.dat", "0123456789");
  FILE* stream = OpenDataFile("data.dat", false);
  ASSERT_NE(stream, nullptr);
  ASSERT_EQ(std::fseek(stream, 3, SEEK_SET), 0);
  char buffer[16] = {};
  EXPECT_EQ(ReadFileRange(5, 5, buffer, stream), 0);
  EXPECT_EQ(ReadFileRange(6, 2, buffer, stream), 0);
  EXPECT_EQ(WriteFileRange(5, 5, "x", stream), 0);
  EXPECT_EQ(WriteFileRange(6, 2, "x", stream), 0);
  EXPECT_EQ(std::ftell(stream), 3);
  CloseDataFile(stream);
  EXPECT_EQ(ReadText("data.dat"), "0123456789");
}

TEST_F(DataFileTest, RangeLengthWrapsLikeA32BitDifference) {
  WriteText("data.dat", "0123456789");
  FILE* stream = OpenDataFile("data.dat", true);
  ASSERT_NE(stream, nullptr);
  char buffer[16] = {};
  // INT32_MAX - (-10) doesn't fit in 32 bits and wraps below 1.
  EXPECT_EQ(ReadFileRange(-10, INT32_MAX, buffer, stream), 0);
  EXPECT_EQ(std::ftell(stream), 0);
  CloseDataFile(stream);
}

TEST_F(DataFileTest, WriteThenReadAtAbsoluteOffsets) {
  FILE* stream = OpenDataFile("rec.dat", false);
  ASSERT_NE(stream, nullptr);
  const int32_t size = 6;
  EXPECT_EQ(WriteFileRange(0, 4, &size, stream), 4);
  EXPECT_EQ(WriteFileRange(4, 10, "record", stream), 6);
  int32_t readSize = 0;
  char body[7] = {};
  EXPECT_EQ(ReadFileRange(0, 4, &readSize, stream), 4);
  EXPECT_EQ(readSize, 6);
  EXPECT_EQ(ReadFileRange(4, 4 + readSize, body, stream), 6);
  EXPECT_STREQ(body, "record");
  // A read past the end gives what is there.
  char tail[8] = {};
  EXPECT_EQ(ReadFileRange(8, 16, tail, stream), 2);
  EXPECT_STREQ(tail, "rd");
  CloseDataFile(stream);
}

TEST_F(DataFileTest, ChainedRangesAndChangesOfDirectionLandAtTheirOffsets) {
  FILE* stream = OpenDataFile("chain.dat", false);
  ASSERT_NE(stream, nullptr);
  // Writes that follow one another, as record writers chain them.
  EXPECT_EQ(WriteFileRange(0, 3, "abc", stream), 3);
  EXPECT_EQ(WriteFileRange(3, 6, "def", stream), 3);
  char two[3] = {};
  EXPECT_EQ(ReadFileRange(2, 4, two, stream), 2);
  EXPECT_STREQ(two, "cd");
  // The stream stands at 4 after the read; a write there must still land at 4.
  EXPECT_EQ(WriteFileRange(4, 6, "XY", stream), 2);
  EXPECT_EQ(ReadFileRange(4, 6, two, stream), 2);
  EXPECT_STREQ(two, "XY");
  char all[7] = {};
  EXPECT_EQ(ReadFileRange(0, 6, all, stream), 6);
  EXPECT_STREQ(all, "abcdXY");
  CloseDataFile(stream);
}

TEST_F(DataFileTest, ReadAtTheEndSeesDataAppendedByAnotherStream) {
  WriteText("grow.dat", "ab");
  FILE* reader = OpenDataFile("grow.dat", true);
  ASSERT_NE(reader, nullptr);
  char buffer[3] = {};
  EXPECT_EQ(ReadFileRange(0, 3, buffer, reader), 2);  // hits the end
  FILE* writer = OpenDataFile("grow.dat", false);
  ASSERT_NE(writer, nullptr);
  EXPECT_EQ(WriteFileRange(2, 4, "cd", writer), 2);
  CloseDataFile(writer);
  char more[3] = {};
  EXPECT_EQ(ReadFileRange(2, 4, more, reader), 2);
  EXPECT_STREQ(more, "cd");
  CloseDataFile(reader);
}

TEST_F(DataFileTest, RangesWithNullBufferOrStreamDoNothing) {
  char buffer[4];
  EXPECT_EQ(ReadFileRange(0, 4, buffer, nullptr), 0);
  EXPECT_EQ(WriteFileRange(0, 4, buffer, nullptr), 0);
  FILE* stream = OpenDataFile("x.dat", false);
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(ReadFileRange(0, 4, nullptr, stream), 0);
  EXPECT_EQ(WriteFileRange(0, 4, nullptr, stream), 0);
  CloseDataFile(stream);
}

TEST_F(DataFileTest, CopyWithMissingSourceKeepsTheTarget) {
  WriteText("target.dat", "keep me");
  EXPECT_EQ(CopyDataFile("target.dat", "missing.dat"), 0);
  EXPECT_EQ(ReadText("target.dat"), "keep me");
  EXPECT_EQ(CopyDataFile("target.dat", nullptr), 0);
  EXPECT_EQ(ReadText("target.dat"), "keep me");
}

TEST_F(DataFileTest, CopyReplacesTheTargetWithTheSource) {
  std::string big;
  for (int i = 0; i < 5000; ++i) big += static_cast<char>(i * 7);
  WriteText("source.dat", big);
  WriteText("target.dat", std::string(9000, 'z'));
  EXPECT_EQ(CopyDataFile("target.dat", "source.dat"), 0);
  EXPECT_EQ(ReadText("target.dat"), big);
  EXPECT_EQ(ReadText("source.dat"), big);
}

TEST_F(DataFileTest, CopyArgumentsAreTargetFirst) {
  WriteText("a.dat", "AAA");
  WriteText("b.dat", "BB");
  EXPECT_EQ(CopyDataFile("a.dat", "b.dat"), 0);
  EXPECT_EQ(ReadText("a.dat"), "BB");
}

TEST_F(DataFileTest, CopyToAnUnopenableTargetFails) {
  WriteText("source.dat", "x");
  EXPECT_EQ(CopyDataFile("no/such/dir/t.dat", "source.dat"), -1);
  EXPECT_EQ(CopyDataFile(nullptr, "source.dat"), -1);
}

TEST_F(DataFileTest, CopyFromAWriteProtectedSource) {
  OpenFolderToEveryone();
  const std::string failure = testsupport::RunWithoutRoot([]() -> std::string {
    WriteText("source.dat", "protected");
    fs::permissions("source.dat", fs::perms::owner_read);
    if (CopyDataFile("target.dat", "source.dat") != 0) return "copy failed";
    if (ReadText("target.dat") != "protected") return "target holds " + ReadText("target.dat");
    return "";
  });
  EXPECT_EQ(failure, "");
}

TEST_F(DataFileTest, ErrorLogHoldsOnlyTheLastMessage) {
  WriteFileErrorLog("first failure, a long one");
  EXPECT_EQ(ReadText("FileErr.txt"), "first failure, a long one");
  WriteFileErrorLog("second");
  EXPECT_EQ(ReadText("FileErr.txt"), "second");
  WriteFileErrorLog(nullptr);
  EXPECT_EQ(ReadText("FileErr.txt"), "");
}

TEST_F(DataFileTest, ErrorLogWithoutAWritableDirectoryIsSilent) {
  fs::create_directory("ro");
  fs::permissions("ro", fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read |
                            fs::perms::others_exec);
  OpenFolderToEveryone();
  const std::string failure = testsupport::RunWithoutRoot([]() -> std::string {
    fs::current_path("ro");
    WriteFileErrorLog("lost");
    return fs::exists("FileErr.txt") ? "the log was written" : "";
  });
  EXPECT_EQ(failure, "");
  fs::permissions("ro", fs::perms::owner_all);
}

TEST_F(DataFileTest, FileExistsOnlyForReadableFiles) {
  WriteText("here.dat", "");
  EXPECT_EQ(FileExists("here.dat"), 0);
  EXPECT_EQ(FileExists("gone.dat"), -1);
  EXPECT_EQ(FileExists(nullptr), -1);
  fs::create_directory("folder");
  EXPECT_EQ(FileExists("folder"), -1);
}

// Each runs in a child process that an alarm ends should it block.
TEST_F(DataFileTest, FileExistsOfAPipeWithoutWriterDoesNotHang) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  EXPECT_EXIT(
      {
        alarm(5);
        std::_Exit(FileExists("pipe") == 0 ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(DataFileTest, OpenOfAPipeGivesNullInEveryModeWithoutHanging) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  EXPECT_EXIT(
      {
        alarm(5);
        const bool refused =
            OpenDataFile("pipe", true) == nullptr && OpenDataFile("pipe", false) == nullptr;
        std::_Exit(refused ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
  EXPECT_TRUE(fs::is_fifo("pipe"));  // not replaced by a file of the fallback
}

TEST_F(DataFileTest, OpenOfADeviceGivesNull) {
  EXPECT_EQ(OpenDataFile("/dev/null", true), nullptr);
  EXPECT_EQ(OpenDataFile("/dev/null", false), nullptr);
  EXPECT_EQ(OpenDataFile("/dev/zero", false), nullptr);
}

TEST_F(DataFileTest, OpenOfADirectoryGivesNullInBothModes) {
  fs::create_directory("folder");
  EXPECT_EQ(OpenDataFile("folder", true), nullptr);
  EXPECT_EQ(OpenDataFile("folder", false), nullptr);
  EXPECT_TRUE(fs::is_directory("folder"));
}

TEST_F(DataFileTest, CopyFromAPipeCopiesNothingAndOntoAPipeReplacesIt) {
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  WriteText("source.dat", "data");
  EXPECT_EXIT(
      {
        alarm(5);
        // As a source the pipe opens as nothing, as an unreadable source does.
        const bool ok = CopyDataFile("copy.dat", "pipe") == 0 && FileExists("copy.dat") == 0;
        std::_Exit(ok ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
  EXPECT_EQ(ReadText("copy.dat"), "");
  // As a target it is removed first, like any target, and the copy is a file.
  EXPECT_EQ(CopyDataFile("pipe", "source.dat"), 0);
  EXPECT_TRUE(fs::is_regular_file("pipe"));
  EXPECT_EQ(ReadText("pipe"), "data");
}

TEST_F(DataFileTest, ErrorLogOntoAPipeIsSilentAndDoesNotHang) {
  ASSERT_EQ(mkfifo("FileErr.txt", 0600), 0);
  EXPECT_EXIT(
      {
        alarm(5);
        const std::string big(1 << 20, 'x');  // more than a pipe holds
        WriteFileErrorLog(big.c_str());
        std::_Exit(0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(DataFileTest, CopyOntoItselfKeepsTheFile) {
  WriteText("same.dat", "precious");
  EXPECT_EQ(CopyDataFile("same.dat", "same.dat"), 0);
  EXPECT_EQ(ReadText("same.dat"), "precious");
  EXPECT_EQ(CopyDataFile("./same.dat", "same.dat"), 0);
  EXPECT_EQ(ReadText("same.dat"), "precious");
}
