#pragma once
// A fresh temporary directory per test, made current; the previous current
// directory and drive come back afterwards so tests don't disturb each other,
// and the process id in its name keeps parallel runs apart.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

#include "files/CurrentDrive.h"

class TempDirTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_SavedDir = std::filesystem::current_path();
    m_SavedDrive = GetCurrentDrive();
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    m_Root = std::filesystem::temp_directory_path() /
             (std::string("tachyrun_files_") + std::to_string(getpid()) + "_" +
              info->test_suite_name() + "_" + info->name());
    std::filesystem::remove_all(m_Root);
    std::filesystem::create_directories(m_Root);
    m_Root = std::filesystem::canonical(m_Root);
    std::filesystem::current_path(m_Root);
  }
  void TearDown() override {
    std::filesystem::current_path(m_SavedDir);
    ChangeCurrentDrive(m_SavedDrive);
    std::error_code ignored;
    std::filesystem::remove_all(m_Root, ignored);
  }

  // The canonical current directory, for comparisons.
  static std::filesystem::path Cwd() { return std::filesystem::current_path(); }

  std::filesystem::path m_Root;
  std::filesystem::path m_SavedDir;
  int32_t m_SavedDrive = 3;
};
