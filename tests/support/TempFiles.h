#pragma once
// A temporary directory that removes itself with everything in it, and whole
// files read and written as bytes.

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace testsupport {

class TempDir {
 public:
  TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tachyrun-XXXXXX").string();
    EXPECT_NE(::mkdtemp(pattern.data()), nullptr);
    m_Path = pattern;
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::permissions(m_Path, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(m_Path, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& Root() const { return m_Path; }
  std::string Path(const std::string& name) const { return m_Path + "/" + name; }

 private:
  std::string m_Path;
};

inline void WriteFile(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
}

inline void WriteFile(const std::string& path, const std::string& text) {
  WriteFile(path, std::vector<uint8_t>(text.begin(), text.end()));
}

inline std::vector<uint8_t> ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline std::string ReadText(const std::string& path) {
  const std::vector<uint8_t> bytes = ReadFile(path);
  return std::string(bytes.begin(), bytes.end());
}

inline bool Exists(const std::string& path) {
  return std::filesystem::exists(path);
}

}  // namespace testsupport
