#pragma once
// A fresh temporary folder per test, with the registry store pointed into
// it through TACHYRUN_REGISTRY; both are gone after the test.

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TempStoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/tachyrun-reg-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    m_dir = pattern;
    m_store = m_dir + "/registry.sqlite3";
    setenv("TACHYRUN_REGISTRY", m_store.c_str(), 1);
    setenv("TACHYRUN_REGISTRY_BUSY_MS", "3000", 1);
  }
  void TearDown() override {
    unsetenv("TACHYRUN_REGISTRY");
    unsetenv("TACHYRUN_REGISTRY_BUSY_MS");
    std::error_code ignored;
    std::filesystem::permissions(m_dir, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(m_dir, ignored);
  }

  // Counts rows of the store file directly, bypassing the store's classes;
  // -1 when the file can't be queried.
  long long Count(const std::string& sql) const {
    sqlite3* db = nullptr;
    long long count = -1;
    if (sqlite3_open_v2(m_store.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
      sqlite3_stmt* st = nullptr;
      if (sqlite3_prepare_v2(db, sql.c_str(), -1, &st, nullptr) == SQLITE_OK &&
          sqlite3_step(st) == SQLITE_ROW) {
        count = sqlite3_column_int64(st, 0);
      }
      sqlite3_finalize(st);
    }
    sqlite3_close(db);
    return count;
  }

  static std::string ReadAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  static void WriteAll(const std::string& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }

  std::string m_dir;
  std::string m_store;
};
