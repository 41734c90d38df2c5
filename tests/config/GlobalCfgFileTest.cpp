#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "config/GlobalCfg.h"
#include "tests/support/TempStore.h"

namespace {

std::string SizeWord(int32_t size) {
  return std::string(reinterpret_cast<char*>(&size), 4);
}

int OpenDescriptors() {
  int count = 0;
  DIR* dir = opendir("/proc/self/fd");
  if (dir == nullptr) return -1;
  while (readdir(dir) != nullptr) ++count;
  closedir(dir);
  return count;
}

// The record files lie in the test's temporary folder, which also holds a
// registry store that no file test may touch.
class GlobalCfgFileTest : public TempStoreTest {
 protected:
  void SetUp() override {
    TempStoreTest::SetUp();
    m_cfgPath = m_dir + "/main.cfg";
    m_extPath = m_dir + "/ext.cfg";
    m_global.bUseCfgFile = 1;
    m_global.SetCfgFile(m_cfgPath.c_str());
    m_global.SetExtFile(m_extPath.c_str());
  }

  static void Fill(void* record, size_t size, int seed) {
    auto* bytes = static_cast<uint8_t*>(record);
    for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>((i * 11 + seed) % 256);
  }
  bool CfgIs(const GlobalCfgData& expected) const {
    return std::memcmp(&m_global.cfg, &expected, sizeof expected) == 0;
  }
  bool ExtIs(const GlobalCfgExtData& expected) const {
    return std::memcmp(&m_global.ext, &expected, sizeof expected) == 0;
  }

  // All four calls give -1 and the records stay as they were.
  void ExpectEveryFileCallFails() {
    Fill(&m_global.ext, sizeof m_global.ext, 8);
    m_global.cfg.iScrubSize = 33;
    const GlobalCfgData before = m_global.cfg;
    const GlobalCfgExtData beforeExt = m_global.ext;
    EXPECT_EQ(m_global.LoadCfg(), -1);
    EXPECT_EQ(m_global.SaveCfg(), -1);
    EXPECT_EQ(m_global.LoadExt(), -1);
    EXPECT_EQ(m_global.SaveExt(), -1);
    EXPECT_TRUE(CfgIs(before));
    EXPECT_TRUE(ExtIs(beforeExt));
  }

  std::string m_cfgPath;
  std::string m_extPath;
  CGlobalCfg m_global;
};

TEST_F(GlobalCfgFileTest, LoadOfMissingFileCreatesItEmptyAndFails) {
  m_global.cfg.iScrubSize = 33;
  const GlobalCfgData before = m_global.cfg;
  EXPECT_EQ(m_global.LoadCfg(), -1);
  EXPECT_TRUE(CfgIs(before));
  ASSERT_TRUE(std::filesystem::exists(m_cfgPath));
  EXPECT_EQ(std::filesystem::file_size(m_cfgPath), 0u);
  EXPECT_EQ(m_global.LoadExt(), -1);
  EXPECT_EQ(std::filesystem::file_size(m_extPath), 0u);
}

TEST_F(GlobalCfgFileTest, FullRecordComesBackExactlyReservedBytesIncluded) {
  Fill(&m_global.cfg, sizeof m_global.cfg, 1);
  Fill(&m_global.ext, sizeof m_global.ext, 2);
  ASSERT_EQ(m_global.Save(), 0);
  CGlobalCfg loaded;
  loaded.bUseCfgFile = 1;
  loaded.SetCfgFile(m_cfgPath.c_str());
  loaded.SetExtFile(m_extPath.c_str());
  ASSERT_EQ(loaded.Load(), 0);
  EXPECT_EQ(std::memcmp(&loaded.cfg, &m_global.cfg, sizeof m_global.cfg), 0);
  EXPECT_EQ(std::memcmp(&loaded.ext, &m_global.ext, sizeof m_global.ext), 0);
  EXPECT_FALSE(std::filesystem::exists(m_store));  // file mode leaves the registry alone
}

TEST_F(GlobalCfgFileTest, BothFilesAre3800BytesAfterASave) {
  Fill(&m_global.ext, sizeof m_global.ext, 9);
  ASSERT_EQ(m_global.SaveCfg(), 0);
  ASSERT_EQ(m_global.SaveExt(), 0);
  const std::string main = ReadAll(m_cfgPath);
  const std::string ext = ReadAll(m_extPath);
  ASSERT_EQ(main.size(), 3800u);
  ASSERT_EQ(ext.size(), 3800u);
  EXPECT_EQ(main.substr(0, 4), SizeWord(3796));
  EXPECT_EQ(std::memcmp(main.data() + 4, &m_global.cfg, 3796), 0);
  // The second file's size word says 800; a block of 3796 follows, the
  // record and then zeros.
  EXPECT_EQ(ext.substr(0, 4), SizeWord(800));
  EXPECT_EQ(std::memcmp(ext.data() + 4, &m_global.ext, 800), 0);
  EXPECT_EQ(ext.substr(804), std::string(2996, '\0'));
}

TEST_F(GlobalCfgFileTest, SaveOverALongerFileKeepsWhatLiesBeyond) {
  WriteAll(m_cfgPath, std::string(5000, '\xEE'));
  WriteAll(m_extPath, std::string(4000, '\xDD'));
  ASSERT_EQ(m_global.Save(), 0);
  const std::string main = ReadAll(m_cfgPath);
  const std::string ext = ReadAll(m_extPath);
  ASSERT_EQ(main.size(), 5000u);
  EXPECT_EQ(main.substr(3800), std::string(1200, '\xEE'));
  EXPECT_EQ(main.substr(0, 4), SizeWord(3796));
  ASSERT_EQ(ext.size(), 4000u);
  EXPECT_EQ(ext.substr(3800), std::string(200, '\xDD'));
}

TEST_F(GlobalCfgFileTest, EmptyPathFailsWithoutTouchingAFile) {
  m_global.SetCfgFile("");
  m_global.SetExtFile("");
  ExpectEveryFileCallFails();
  EXPECT_TRUE(std::filesystem::is_empty(m_dir));
}

TEST_F(GlobalCfgFileTest, FileThatCannotBeOpenedFails) {
  m_global.SetCfgFile((m_dir + "/no/such/folder/main.cfg").c_str());
  m_global.SetExtFile((m_dir + "/no/such/folder/ext.cfg").c_str());
  ExpectEveryFileCallFails();
}

// In a child process that an alarm ends should a call block on the pipe.
TEST_F(GlobalCfgFileTest, PipesInPlaceOfTheFilesFailEveryCallWithoutHanging) {
  ASSERT_EQ(mkfifo(m_cfgPath.c_str(), 0600), 0);
  ASSERT_EQ(mkfifo(m_extPath.c_str(), 0600), 0);
  EXPECT_EXIT(
      {
        alarm(5);
        ExpectEveryFileCallFails();
        std::_Exit(::testing::Test::HasFailure() ? 1 : 0);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(GlobalCfgFileTest, ADeviceInPlaceOfTheFilesFailsEveryCall) {
  m_global.SetCfgFile("/dev/zero");
  m_global.SetExtFile("/dev/null");
  ExpectEveryFileCallFails();
}

TEST_F(GlobalCfgFileTest, FileShorterThanTheSizeWordFails) {
  WriteAll(m_cfgPath, "\x10\x00");
  const GlobalCfgData before = m_global.cfg;
  EXPECT_EQ(m_global.LoadCfg(), -1);
  EXPECT_TRUE(CfgIs(before));
}

TEST_F(GlobalCfgFileTest, SizeAboveTheLimitFailsAndKeepsTheRecord) {
  Fill(&m_global.cfg, sizeof m_global.cfg, 3);
  const GlobalCfgData before = m_global.cfg;
  WriteAll(m_cfgPath, SizeWord(3797) + std::string(3797, '\x01'));
  EXPECT_EQ(m_global.LoadCfg(), -1);
  EXPECT_TRUE(CfgIs(before));
  const GlobalCfgExtData beforeExt = m_global.ext;
  WriteAll(m_extPath, SizeWord(801) + std::string(801, '\x01'));
  EXPECT_EQ(m_global.LoadExt(), -1);
  EXPECT_TRUE(ExtIs(beforeExt));
}

TEST_F(GlobalCfgFileTest, SizeZeroOrNegativeFails) {
  const GlobalCfgData before = m_global.cfg;
  for (const int32_t size : {0, -1, -3796, INT32_MIN}) {
    WriteAll(m_cfgPath, SizeWord(size) + std::string(3796, '\x01'));
    EXPECT_EQ(m_global.LoadCfg(), -1) << size;
    EXPECT_TRUE(CfgIs(before)) << size;
    WriteAll(m_extPath, SizeWord(size) + std::string(800, '\x01'));
    EXPECT_EQ(m_global.LoadExt(), -1) << size;
  }
}

TEST_F(GlobalCfgFileTest, ShorterRecordTakesTheRestFromTheDefaults) {
  m_global.cfg.iScrubSize = 33;  // not kept: the rest comes from a new record
  m_global.cfg.iNumVidTraks = 2;
  WriteAll(m_cfgPath, SizeWord(4) + SizeWord(1234));
  EXPECT_EQ(m_global.LoadCfg(), 0);
  GlobalCfgData expected;
  expected.iSaveBeforeMovie = 1234;
  EXPECT_TRUE(CfgIs(expected));

  Fill(&m_global.ext, sizeof m_global.ext, 4);
  WriteAll(m_extPath, SizeWord(2) + "\x07\x08");
  EXPECT_EQ(m_global.LoadExt(), 0);
  GlobalCfgExtData expectedExt;
  expectedExt.abData[0] = 7;
  expectedExt.abData[1] = 8;
  EXPECT_TRUE(ExtIs(expectedExt));
}

TEST_F(GlobalCfgFileTest, FileShorterThanItsSizeWordGivesWhatArrived) {
  WriteAll(m_cfgPath, SizeWord(3796) + SizeWord(77) + "\x05");
  EXPECT_EQ(m_global.LoadCfg(), 0);
  GlobalCfgData expected;
  expected.iSaveBeforeMovie = 77;
  expected.abReserved1[0] = 5;
  EXPECT_TRUE(CfgIs(expected));
  WriteAll(m_cfgPath, SizeWord(3796));  // nothing arrives at all
  EXPECT_EQ(m_global.LoadCfg(), -1);
}

TEST_F(GlobalCfgFileTest, ExtLoadIgnoresTheFillerBehindItsRecord) {
  Fill(&m_global.ext, sizeof m_global.ext, 5);
  ASSERT_EQ(m_global.SaveExt(), 0);
  std::string bytes = ReadAll(m_extPath);
  std::memset(bytes.data() + 804, 0x5A, 2996);
  WriteAll(m_extPath, bytes);
  const GlobalCfgExtData saved = m_global.ext;
  m_global.ext = GlobalCfgExtData();
  EXPECT_EQ(m_global.LoadExt(), 0);
  EXPECT_TRUE(ExtIs(saved));
}

TEST_F(GlobalCfgFileTest, FailedLoadsLeaveNoFileOpen) {
  WriteAll(m_cfgPath, SizeWord(5000));
  WriteAll(m_extPath, SizeWord(0));
  const int before = OpenDescriptors();
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(m_global.LoadCfg(), -1);
    EXPECT_EQ(m_global.LoadExt(), -1);
  }
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(GlobalCfgFileTest, LoadStopsAtAFailedMainRecord) {
  m_global.SetCfgFile("");
  EXPECT_EQ(m_global.Load(), -1);
  EXPECT_FALSE(std::filesystem::exists(m_extPath));  // the second record wasn't tried
  EXPECT_EQ(m_global.Save(), -1);
  EXPECT_FALSE(std::filesystem::exists(m_extPath));
}

TEST_F(GlobalCfgFileTest, SecondRecordFailingGivesMinusTwo) {
  ASSERT_EQ(m_global.SaveCfg(), 0);
  m_global.SetExtFile((m_dir + "/missing/ext.cfg").c_str());
  EXPECT_EQ(m_global.Load(), -2);
  EXPECT_EQ(m_global.Save(), -2);
}

TEST_F(GlobalCfgFileTest, SecondRecordUsesItsFileInRegistryModeToo) {
  m_global.bUseCfgFile = 0;
  Fill(&m_global.ext, sizeof m_global.ext, 6);
  ASSERT_EQ(m_global.Save(), 0);
  EXPECT_FALSE(std::filesystem::exists(m_cfgPath));
  EXPECT_EQ(std::filesystem::file_size(m_extPath), 3800u);
  CGlobalCfg loaded;
  loaded.SetExtFile(m_extPath.c_str());
  ASSERT_EQ(loaded.Load(), 0);
  EXPECT_EQ(std::memcmp(&loaded.ext, &m_global.ext, sizeof m_global.ext), 0);
}

}  // namespace
