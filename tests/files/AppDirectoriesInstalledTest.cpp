// The application directories of a program installed under a prefix's bin/:
// the shared folder for what the program reads, the user's data folder for
// what it writes. From any other folder nothing changes.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "files/AppDirectories.h"
#include "files/PathParts.h"
#include "tests/files/TempDirTest.h"

namespace fs = std::filesystem;

namespace {

using GetDir = void (*)(char*);

std::string Read(GetDir get) {
  char out[kPathBufferSize] = {};
  get(out);
  return out;
}

// Sets an environment variable for one test and puts the old value back.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const char* value) : m_Name(name) {
    const char* old = std::getenv(name);
    m_Had = old != nullptr;
    if (m_Had) m_Old = old;
    if (value != nullptr) {
      ::setenv(name, value, 1);
    } else {
      ::unsetenv(name);
    }
  }
  ~ScopedEnv() {
    if (m_Had) {
      ::setenv(m_Name.c_str(), m_Old.c_str(), 1);
    } else {
      ::unsetenv(m_Name.c_str());
    }
  }

 private:
  std::string m_Name;
  std::string m_Old;
  bool m_Had = false;
};

class InstalledAppDirectoriesTest : public TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    m_Prefix = m_Root / "prefix";
    fs::create_directories(m_Prefix / "bin");
    fs::create_directories(m_Prefix / "share" / "tachyrun");
  }
  std::string Program() const { return (m_Prefix / "bin" / "tachyrun").string(); }
  fs::path m_Prefix;
};

TEST_F(InstalledAppDirectoriesTest, WritableFoldersGoUnderXdgDataHome) {
  const fs::path data = m_Root / "xdg";
  ScopedEnv xdg("XDG_DATA_HOME", data.string().c_str());
  ASSERT_EQ(InitAppDirectoriesFrom(Program().c_str(), 1), 0);
  EXPECT_EQ(Read(GetAppDir), (m_Prefix / "share" / "tachyrun").string());
  EXPECT_EQ(Read(GetTmpDir), (data / "tachyrun" / "Tmp").string());
  EXPECT_EQ(Read(GetDataDir), (data / "tachyrun" / "Data").string());
  EXPECT_EQ(Read(GetExportDir), (data / "tachyrun" / "Export").string());
  EXPECT_EQ(Read(GetPresetsDir), (data / "tachyrun" / "WinPresets").string());
  EXPECT_EQ(Read(GetEfxCustomDir), (data / "tachyrun" / "Effects" / "Efx" / "Custom").string());
  EXPECT_TRUE(fs::is_directory(data / "tachyrun" / "Tmp"));
  EXPECT_TRUE(fs::is_directory(data / "tachyrun" / "Effects" / "Tfx" / "Custom"));
  // Nothing is made beside the program.
  EXPECT_FALSE(fs::exists(m_Prefix / "bin" / "Tmp"));
  EXPECT_FALSE(fs::exists(m_Prefix / "share" / "tachyrun" / "Tmp"));
}

TEST_F(InstalledAppDirectoriesTest, WithoutXdgDataHomeTheHomeFolderIsUsed) {
  const fs::path home = m_Root / "home";
  ScopedEnv xdg("XDG_DATA_HOME", nullptr);
  ScopedEnv homeVar("HOME", home.string().c_str());
  InitAppDirectoriesFrom(Program().c_str(), 0);
  EXPECT_EQ(Read(GetTmpDir), (home / ".local" / "share" / "tachyrun" / "Tmp").string());
  EXPECT_TRUE(fs::is_directory(home / ".local" / "share" / "tachyrun" / "Tmp"));
}

TEST_F(InstalledAppDirectoriesTest, ARelativeXdgDataHomeIsIgnored) {
  const fs::path home = m_Root / "home";
  ScopedEnv xdg("XDG_DATA_HOME", "relative/data");
  ScopedEnv homeVar("HOME", home.string().c_str());
  InitAppDirectoriesFrom(Program().c_str(), 0);
  EXPECT_EQ(Read(GetTmpDir), (home / ".local" / "share" / "tachyrun" / "Tmp").string());
}

TEST_F(InstalledAppDirectoriesTest, ABinFolderWithoutSharedDataIsNoInstallation) {
  fs::remove_all(m_Prefix / "share");
  ScopedEnv xdg("XDG_DATA_HOME", (m_Root / "xdg").string().c_str());
  InitAppDirectoriesFrom(Program().c_str(), 0);
  EXPECT_EQ(Read(GetAppDir), (m_Prefix / "bin").string());
  EXPECT_EQ(Read(GetTmpDir), (m_Prefix / "bin" / "Tmp").string());
  EXPECT_FALSE(fs::exists(m_Root / "xdg"));
}

TEST_F(InstalledAppDirectoriesTest, AProgramOutsideABinFolderKeepsItsOwnFolder) {
  // A build tree: the template lies beside the program, in app/.
  fs::create_directories(m_Root / "build" / "app");
  ScopedEnv xdg("XDG_DATA_HOME", (m_Root / "xdg").string().c_str());
  InitAppDirectoriesFrom((m_Root / "build" / "app" / "tachyrun").string().c_str(), 1);
  EXPECT_EQ(Read(GetAppDir), (m_Root / "build" / "app").string());
  EXPECT_EQ(Read(GetDataDir), (m_Root / "build" / "app" / "Data").string());
  EXPECT_FALSE(fs::exists(m_Root / "xdg"));
}

}  // namespace
