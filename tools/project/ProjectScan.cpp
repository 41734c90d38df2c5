#include "tools/project/ProjectScan.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>

#include "files/PathParts.h"
#include "project/Project.h"

namespace projecttool {

namespace {

namespace fs = std::filesystem;

std::string FolderOf(CProject& project, int32_t (CProject::*folder)(char*)) {
  char path[kPathBufferSize] = {};
  if ((project.*folder)(path) != 0) return std::string();
  return path;
}

bool IsBackupName(const std::string& name) {
  if (name.size() < 4) return false;
  std::string extension = name.substr(name.size() - 4);
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension == ".bk1" || extension == ".bk2";
}

int CountFiles(const fs::path& folder) {
  int count = 0;
  std::error_code error;
  for (fs::recursive_directory_iterator it(folder, error), end; !error && it != end;
       it.increment(error)) {
    if (it->is_regular_file(error)) ++count;
  }
  return count;
}

}  // namespace

std::vector<VersionFolder> ListVersions(CProject& project) {
  std::vector<VersionFolder> versions;
  const std::string root = FolderOf(project, &CProject::GetVersionsDir);
  std::error_code error;
  if (root.empty() || !fs::is_directory(root, error)) return versions;
  for (fs::directory_iterator it(root, error), end; !error && it != end; it.increment(error)) {
    if (!it->is_directory(error)) continue;
    versions.push_back(
        {it->path().filename().string(), it->path().string(), CountFiles(it->path())});
  }
  std::sort(versions.begin(), versions.end(),
            [](const VersionFolder& a, const VersionFolder& b) { return a.name < b.name; });
  return versions;
}

std::vector<std::string> ListBackups(CProject& project) {
  std::vector<std::string> backups;
  for (auto folder :
       {&CProject::GetProjectDir, &CProject::GetTimelineDir, &CProject::GetRepositoryDir}) {
    const std::string dir = FolderOf(project, folder);
    std::error_code error;
    if (dir.empty() || !fs::is_directory(dir, error)) continue;
    for (fs::directory_iterator it(dir, error), end; !error && it != end; it.increment(error)) {
      if (it->is_regular_file(error) && IsBackupName(it->path().filename().string())) {
        backups.push_back(it->path().string());
      }
    }
  }
  std::sort(backups.begin(), backups.end());
  return backups;
}

}  // namespace projecttool
