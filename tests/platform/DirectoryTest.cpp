#include "platform/Directory.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

namespace {

class DirectoryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char cwd[4096];
    ASSERT_NE(platform::GetCurrentDirectory(cwd, sizeof cwd), nullptr);
    m_Saved = cwd;
    m_Root = std::filesystem::temp_directory_path() /
             ("tachyrun_dir_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
              "_" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    std::filesystem::remove_all(m_Root);
  }
  void TearDown() override {
    platform::ChangeDirectory(m_Saved.c_str());
    std::filesystem::remove_all(m_Root);
  }
  std::string m_Saved;
  std::filesystem::path m_Root;
};

}  // namespace

TEST_F(DirectoryTest, MakeChangeAndRemove) {
  const std::string root = m_Root.string();
  EXPECT_EQ(platform::AccessPath(root.c_str(), 0), -1);
  EXPECT_EQ(platform::MakeDirectory(root.c_str()), 0);
  EXPECT_EQ(platform::MakeDirectory(root.c_str()), -1);  // exists already
  EXPECT_TRUE(platform::IsDirectory(root.c_str()));
  EXPECT_EQ(platform::AccessPath(root.c_str(), 6), 0);
  EXPECT_EQ(platform::ChangeDirectory(root.c_str()), 0);
  char cwd[4096];
  ASSERT_NE(platform::GetCurrentDirectory(cwd, sizeof cwd), nullptr);
  EXPECT_EQ(std::filesystem::canonical(cwd), std::filesystem::canonical(m_Root));
  EXPECT_EQ(platform::ChangeDirectory(m_Saved.c_str()), 0);
  EXPECT_EQ(platform::RemoveDirectory(root.c_str()), 0);
  EXPECT_FALSE(platform::IsDirectory(root.c_str()));
}

TEST_F(DirectoryTest, NullArgumentsFail) {
  EXPECT_EQ(platform::AccessPath(nullptr, 0), -1);
  EXPECT_EQ(platform::MakeDirectory(nullptr), -1);
  EXPECT_EQ(platform::RemoveDirectory(nullptr), -1);
  EXPECT_EQ(platform::ChangeDirectory(nullptr), -1);
  EXPECT_EQ(platform::GetCurrentDirectory(nullptr, 10), nullptr);
  EXPECT_FALSE(platform::IsDirectory(nullptr));
}

TEST_F(DirectoryTest, CurrentDirectoryTooLongForBufferGivesNullAndEmptyText) {
  char tiny[2] = {'x', 'x'};
  EXPECT_EQ(platform::GetCurrentDirectory(tiny, sizeof tiny), nullptr);
  EXPECT_EQ(tiny[0], '\0');
}

TEST_F(DirectoryTest, ExecutablePathNamesThisTestProgram) {
  char path[4096];
  ASSERT_TRUE(platform::GetExecutablePath(path, sizeof path));
  EXPECT_NE(std::strstr(path, "test_platform"), nullptr);
  char tiny[4];
  EXPECT_FALSE(platform::GetExecutablePath(tiny, sizeof tiny));
  EXPECT_EQ(tiny[0], '\0');
}
