// A store that can't be opened or written never stops the program: reads
// give their defaults, writes give 0, nothing is thrown and no file is
// damaged.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <list>
#include <optional>
#include <string>

#include "registry/RegDatabase.h"
#include "registry/RegStore.h"
#include "tests/support/TempStore.h"

namespace {

class RegStoreFailureTest : public TempStoreTest {
 protected:
  void SetUp() override {
    TempStoreTest::SetUp();
    m_reg.SetBase(HKEY_CURRENT_USER, "Software");
  }

  // Every operation once, against whatever the store is now.
  void ExpectReadsGiveDefaultsAndWritesFail() {
    EXPECT_EQ(m_reg.ReadDword("K", "d", 41), 41u);
    std::string text = "stale";
    m_reg.ReadString("K", "s", "dflt", text);
    EXPECT_EQ(text, "dflt");
    std::list<std::string> list = {"stale"};
    m_reg.ReadStringList("K", "L", list);
    EXPECT_TRUE(list.empty());
    uint32_t size = 3;
    EXPECT_EQ(m_reg.ReadBinary("K", "b", &size), nullptr);
    EXPECT_EQ(size, 3u);
    const uint8_t byte = 1;
    EXPECT_EQ(m_reg.WriteDword("K", "d", 1), 0);
    EXPECT_EQ(m_reg.WriteString("K", "s", "x"), 0);
    EXPECT_EQ(m_reg.WriteStringList("K", "L", {"x"}), 0);
    EXPECT_EQ(m_reg.WriteBinary("K", "b", &byte, 1), 0);
    EXPECT_EQ(m_reg.DeleteKeyTree(HKEY_CURRENT_USER, "Software\\K"), 0);
  }

  CRegStore m_reg;
};

TEST_F(RegStoreFailureTest, DirectoryWhereTheFileShouldBe) {
  ASSERT_EQ(mkdir(m_store.c_str(), 0700), 0);
  ExpectReadsGiveDefaultsAndWritesFail();
  EXPECT_TRUE(std::filesystem::is_directory(m_store));
}

TEST_F(RegStoreFailureTest, CorruptFileIsNeitherReadNorOverwritten) {
  std::string garbage(8192, '\0');
  for (size_t i = 0; i < garbage.size(); ++i) garbage[i] = static_cast<char>((i * 131 + 7) % 251);
  WriteAll(m_store, garbage);
  ExpectReadsGiveDefaultsAndWritesFail();
  EXPECT_EQ(ReadAll(m_store), garbage);
}

TEST_F(RegStoreFailureTest, FolderThatDoesNotExist) {
  setenv("TACHYRUN_REGISTRY", (m_dir + "/missing/registry.sqlite3").c_str(), 1);
  ExpectReadsGiveDefaultsAndWritesFail();
  EXPECT_FALSE(std::filesystem::exists(m_dir + "/missing"));
}

// Root may write any file, so read-only is asked for through the store
// name: an SQLite URI with mode=ro opens the file for reading only.
TEST_F(RegStoreFailureTest, ReadOnlyStoreReadsWhatIsThereAndRefusesWrites) {
  ASSERT_EQ(m_reg.WriteDword("K", "d", 5), 1);
  ASSERT_EQ(m_reg.WriteString("K", "s", "kept"), 1);
  setenv("TACHYRUN_REGISTRY", ("file:" + m_store + "?mode=ro").c_str(), 1);
  EXPECT_EQ(m_reg.ReadDword("K", "d", 0), 5u);
  EXPECT_EQ(m_reg.ReadDword("K", "missing", 8), 8u);
  EXPECT_EQ(m_reg.WriteDword("K", "d", 6), 0);
  EXPECT_EQ(m_reg.WriteString("K", "s", "changed"), 0);
  EXPECT_EQ(m_reg.WriteDword("New", "d", 6), 0);
  EXPECT_EQ(m_reg.DeleteKeyTree(HKEY_CURRENT_USER, "Software\\K"), 0);
  setenv("TACHYRUN_REGISTRY", m_store.c_str(), 1);
  EXPECT_EQ(m_reg.ReadDword("K", "d", 0), 5u);
  std::string text;
  m_reg.ReadString("K", "s", "", text);
  EXPECT_EQ(text, "kept");
  EXPECT_EQ(m_reg.ReadDword("New", "d", 0), 0u);
}

// Without root's rights, a file without write permission is the real case.
TEST_F(RegStoreFailureTest, WriteProtectedFileRefusesWrites) {
  if (geteuid() == 0) GTEST_SKIP() << "root writes any file; see the mode=ro test";
  ASSERT_EQ(m_reg.WriteDword("K", "d", 5), 1);
  ASSERT_EQ(chmod(m_store.c_str(), 0444), 0);
  EXPECT_EQ(m_reg.WriteDword("K", "d", 6), 0);
  EXPECT_EQ(m_reg.ReadDword("K", "d", 0), 5u);
}

TEST_F(RegStoreFailureTest, LockedStoreFailsWritesAfterTheWaitAndStillReads) {
  ASSERT_EQ(m_reg.WriteDword("K", "d", 5), 1);
  setenv("TACHYRUN_REGISTRY_BUSY_MS", "50", 1);
  sqlite3* holder = nullptr;
  ASSERT_EQ(sqlite3_open(m_store.c_str(), &holder), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(holder, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(m_reg.WriteDword("K", "d", 6), 0);
  EXPECT_EQ(m_reg.ReadDword("K", "d", 0), 5u);
  sqlite3_exec(holder, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(holder);
  EXPECT_EQ(m_reg.WriteDword("K", "d", 6), 1);
  EXPECT_EQ(m_reg.ReadDword("K", "d", 0), 6u);
}

// A file made by another program with loose tables and odd rows: every
// call ends with a defined result.
TEST_F(RegStoreFailureTest, OddRowsGiveDefinedResults) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(m_store.c_str(), &db), SQLITE_OK);
  ASSERT_EQ(
      sqlite3_exec(db,
                   "CREATE TABLE reg_keys(id INTEGER PRIMARY KEY, parent, name, folded, class);"
                   "CREATE TABLE reg_values(key, name, folded, type, data);"
                   "INSERT INTO reg_keys VALUES(2147483649, NULL, 'U', 'U', NULL);"
                   "INSERT INTO reg_keys VALUES(10, 2147483649, 'Software', 'SOFTWARE', NULL);"
                   "INSERT INTO reg_keys VALUES(11, 10, 'K', 'K', 5);"
                   "INSERT INTO reg_keys VALUES(12, 11, '', '', '');"
                   "INSERT INTO reg_keys VALUES(13, 11, 'lower', 'lower', '');"
                   "INSERT INTO reg_values VALUES(11, 'd', 'D', 'text', NULL);"
                   "INSERT INTO reg_values VALUES(11, 's', 'S', 1, 12345);",
                   nullptr, nullptr, nullptr),
      SQLITE_OK);
  sqlite3_close(db);
  EXPECT_EQ(m_reg.ReadDword("K", "d", 41), 41u);  // no bytes: the default stands
  std::string text;
  m_reg.ReadString("K", "s", "dflt", text);
  EXPECT_EQ(text, "12345");
  uint32_t size = 0;
  EXPECT_EQ(m_reg.ReadBinary("K", "d", &size), nullptr);
  EXPECT_EQ(size, 0u);
  // The children can't be reached by their names, so the delete stops.
  EXPECT_EQ(m_reg.DeleteKeyTree(HKEY_CURRENT_USER, "Software\\K"), 0);
  // Tables without the store's constraints are not written to.
  EXPECT_EQ(m_reg.WriteDword("K", "d", 7), 0);
  EXPECT_EQ(m_reg.ReadDword("K", "d", 41), 41u);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys"), 5);
}

TEST_F(RegStoreFailureTest, EmptyFileBecomesAStoreOnFirstWrite) {
  WriteAll(m_store, "");
  EXPECT_EQ(m_reg.ReadDword("K", "d", 2), 2u);
  EXPECT_EQ(m_reg.WriteDword("K", "d", 3), 1);
  EXPECT_EQ(m_reg.ReadDword("K", "d", 2), 3u);
}

TEST_F(RegStoreFailureTest, StoreUsesWriteAheadLogging) {
  ASSERT_EQ(m_reg.WriteDword("K", "d", 1), 1);
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(m_store.c_str(), &db), SQLITE_OK);
  sqlite3_stmt* st = nullptr;
  ASSERT_EQ(sqlite3_prepare_v2(db, "PRAGMA journal_mode", -1, &st, nullptr), SQLITE_OK);
  ASSERT_EQ(sqlite3_step(st), SQLITE_ROW);
  EXPECT_STREQ(reinterpret_cast<const char*>(sqlite3_column_text(st, 0)), "wal");
  sqlite3_finalize(st);
  sqlite3_close(db);
}

class StorePathTest : public TempStoreTest {
 protected:
  void SetUp() override {
    TempStoreTest::SetUp();
    SaveEnv("XDG_CONFIG_HOME", &m_xdg);
    SaveEnv("HOME", &m_home);
  }
  void TearDown() override {
    RestoreEnv("XDG_CONFIG_HOME", m_xdg);
    RestoreEnv("HOME", m_home);
    TempStoreTest::TearDown();
  }
  static void SaveEnv(const char* name, std::optional<std::string>* saved) {
    const char* value = std::getenv(name);
    if (value != nullptr) *saved = value;
  }
  static void RestoreEnv(const char* name, const std::optional<std::string>& saved) {
    if (saved) {
      setenv(name, saved->c_str(), 1);
    } else {
      unsetenv(name);
    }
  }
  std::optional<std::string> m_xdg;
  std::optional<std::string> m_home;
};

TEST_F(StorePathTest, ExplicitStoreComesFirst) {
  setenv("XDG_CONFIG_HOME", "/somewhere", 1);
  EXPECT_EQ(RegDatabase::StorePath(), m_store);
}

TEST_F(StorePathTest, ConfigHomeIsUsedAndItsFoldersAreMadeOnFirstWrite) {
  unsetenv("TACHYRUN_REGISTRY");
  const std::string xdg = m_dir + "/xdg";
  setenv("XDG_CONFIG_HOME", xdg.c_str(), 1);
  EXPECT_EQ(RegDatabase::StorePath(), xdg + "/tachyrun/registry.sqlite3");
  CRegStore reg;
  EXPECT_EQ(reg.ReadDword("K", "d", 1), 1u);
  EXPECT_FALSE(std::filesystem::exists(xdg));  // a read makes nothing
  EXPECT_EQ(reg.WriteDword("K", "d", 2), 1);
  EXPECT_TRUE(std::filesystem::exists(xdg + "/tachyrun/registry.sqlite3"));
  EXPECT_EQ(reg.ReadDword("K", "d", 1), 2u);
}

TEST_F(StorePathTest, HomeConfigFolderWhenConfigHomeIsUnsetOrRelative) {
  unsetenv("TACHYRUN_REGISTRY");
  setenv("HOME", m_dir.c_str(), 1);
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(RegDatabase::StorePath(), m_dir + "/.config/tachyrun/registry.sqlite3");
  setenv("XDG_CONFIG_HOME", "relative/dir", 1);
  EXPECT_EQ(RegDatabase::StorePath(), m_dir + "/.config/tachyrun/registry.sqlite3");
}

TEST_F(StorePathTest, BusyTimeoutFromEnvironmentOrDefault) {
  setenv("TACHYRUN_REGISTRY_BUSY_MS", "250", 1);
  EXPECT_EQ(RegDatabase::BusyTimeoutMs(), 250);
  setenv("TACHYRUN_REGISTRY_BUSY_MS", "soon", 1);
  EXPECT_EQ(RegDatabase::BusyTimeoutMs(), 3000);
  unsetenv("TACHYRUN_REGISTRY_BUSY_MS");
  EXPECT_EQ(RegDatabase::BusyTimeoutMs(), 3000);
}

}  // namespace
