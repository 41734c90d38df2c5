// Older states of a project kept on disk: the .Bk1 set written from the
// objects in memory, and versions, folders under Versions/ that hold a copy
// of every database file of the project as it stands on disk. Nothing of
// Media/ is copied: a version is a state of the database, not of the media.
//
// Version operations report nothing: a copy, a removal or a folder that
// fails is passed over. Their scans move the process's current directory
// while they run, so they are not to run beside another scan.

#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>

#include "core/DataLockGuard.h"
#include "files/AppDirectories.h"
#include "files/DataFile.h"
#include "files/FileEntryObjList.h"
#include "files/PathParts.h"
#include "platform/Directory.h"
#include "project/OwnerCodes.h"
#include "project/Project.h"
#include "project/ProjectFileAccess.h"
#include "project/ProjectNames.h"
#include "project/RepositoryList.h"
#include "project/TimelineList.h"

namespace {

using namespace projectnames;
using projectfiles::FieldText;

constexpr char kSeparator = platform::kPathSeparator;
constexpr const char* kProjectPattern = "*.qzpj";

bool Exists(const std::string& path) {
  return platform::AccessPath(path.c_str(), 0) == 0;
}

void MakeFolderIfMissing(const std::string& path) {
  if (!Exists(path)) platform::MakeDirectory(path.c_str());
}

// A project folder as a text; empty when it doesn't fit a path.
std::string FolderText(CProject& project, int32_t (CProject::*folder)(char*)) {
  char path[kPathBufferSize];
  return (project.*folder)(path) == 0 ? std::string(path) : std::string();
}

// The database file patterns of a folder: its own kind, then the backups.
// A scan of a folder that doesn't exist lists the current directory with the
// given folder in sFullPath, so every copy and removal below goes by
// sFullPath: such entries then name nothing and are passed over.
template <class Each>
void ForEachFile(const std::string& folder, std::initializer_list<const char*> patterns,
                 Each each) {
  if (folder.empty()) return;  // a project folder that doesn't fit a path
  for (const char* pattern : patterns) {
    FileEntryObjList found;
    found.ScanDirectory(folder.c_str(), pattern, kScanFiles);
    for (int32_t i = 0; i < found.GetCount(); ++i) {
      if (const FileEntryObj* entry = found.GetAt(i)) each(*entry);
    }
  }
}

void CopyFiles(const std::string& from, std::initializer_list<const char*> patterns,
               const std::string& to) {
  if (to.empty()) return;
  ForEachFile(from, patterns, [&](const FileEntryObj& entry) {
    CopyDataFile((to + entry.sFileName).c_str(), entry.sFullPath);
  });
}

void RemoveFiles(const std::string& folder, std::initializer_list<const char*> patterns) {
  ForEachFile(folder, patterns, [](const FileEntryObj& entry) { std::remove(entry.sFullPath); });
}

std::string Sub(const std::string& folder, std::initializer_list<const char*> names) {
  std::string path = folder;
  for (const char* name : names) (path += name) += kSeparator;
  return path;
}

}  // namespace

int32_t CProject::SaveBackup(const char* path) {
  if (path == nullptr) return -1;
  if (iBackupCount == iChangeCount) return -1;  // nothing to do, told as a failure
  RotateBackups(path, 1);
  std::string target = path;
  const size_t dot = target.rfind('.');
  if (dot != std::string::npos) target.resize(dot);
  target += kBackup1Extension;

  projectfiles::CAppDirScope appDir;
  FILE* stream = OpenDataFile(target.c_str(), false);
  if (stream == nullptr) return -1;
  if (!projectfiles::WriteProjectFile(*this, stream, false)) {
    CloseDataFile(stream);
    return -1;
  }
  SaveTimelines(kBackup1Extension);
  SaveRepositories(kBackup1Extension);
  CloseDataFile(stream);
  appDir.Restore();
  iBackupCount = iChangeCount;
  return 0;
}

int32_t CProject::GetNextVersionNumber() {
  const std::string versions = FolderText(*this, &CProject::GetVersionsDir);
  for (int32_t n = 1;; ++n) {
    char name[32];
    std::snprintf(name, sizeof(name), kNewVersionFormat, n);
    if (!Exists(versions + name + kSeparator) || n == INT32_MAX) return n;
  }
}

int32_t CProject::CreateVersion() {
  if (projectData.szVersionName[0] == '\0') {
    // The name stays in the record: the next version without a new name
    // goes to the same folder.
    std::snprintf(projectData.szVersionName, sizeof(projectData.szVersionName), kNewVersionFormat,
                  GetNextVersionNumber());
  }
  const std::string name = FieldText(projectData.szVersionName, sizeof(projectData.szVersionName));
  DeleteVersion(name.c_str(), 0);
  const std::string version = FolderText(*this, &CProject::GetVersionsDir) + name + kSeparator;
  MakeFolderIfMissing(version);
  CopyFiles(FolderText(*this, &CProject::GetProjectDir), {kProjectPattern, kBackupPattern},
            version);
  MakeFolderIfMissing(Sub(version, {kDatabaseFolder}));
  MakeFolderIfMissing(Sub(version, {kDatabaseFolder, kRepositoryFolder}));
  CopyFiles(FolderText(*this, &CProject::GetRepositoryDir), {kRepositoryPattern, kBackupPattern},
            Sub(version, {kDatabaseFolder, kRepositoryFolder}));
  MakeFolderIfMissing(Sub(version, {kDatabaseFolder}));
  MakeFolderIfMissing(Sub(version, {kDatabaseFolder, kTimelineFolder}));
  CopyFiles(FolderText(*this, &CProject::GetTimelineDir), {kTimelinePattern, kBackupPattern},
            Sub(version, {kDatabaseFolder, kTimelineFolder}));
  return 0;
}

int32_t CProject::CreateNamedVersion(const char* name) {
  if (name == nullptr) return -1;
  CopyPathText(projectData.szVersionName, name);
  CreateVersion();
  return 0;
}

int32_t CProject::DeleteVersion(const char* name, uint32_t bRemoveFolders) {
  if (name == nullptr) return -1;
  const std::string path = FolderText(*this, &CProject::GetVersionsDir) + name + kSeparator;
  if (Exists(path)) DeleteVersionFiles(path.c_str(), bRemoveFolders);
  return 0;
}

int32_t CProject::DeleteVersionFiles(const char* folder, uint32_t bRemoveFolders) {
  if (folder == nullptr) return -1;
  const std::string version = folder;  // ends with a separator
  if (!Exists(version)) return 0;
  RemoveFiles(version, {kProjectPattern, kBackupPattern});
  const std::string repositories = Sub(version, {kDatabaseFolder, kRepositoryFolder});
  RemoveFiles(repositories, {kRepositoryPattern, kBackupPattern});
  if (bRemoveFolders != 0) platform::RemoveDirectory(repositories.c_str());
  const std::string timelines = Sub(version, {kDatabaseFolder, kTimelineFolder});
  RemoveFiles(timelines, {kTimelinePattern, kBackupPattern});
  if (bRemoveFolders == 0) return 0;
  // Folders that still hold other files stay, without a word.
  platform::RemoveDirectory(timelines.c_str());
  platform::RemoveDirectory(Sub(version, {kDatabaseFolder}).c_str());
  platform::RemoveDirectory(version.c_str());
  return 0;
}

int32_t CProject::RestoreVersion(const char* folder) {
  if (folder == nullptr) return -1;
  // The folder comes without a trailing separator: the sub-paths below
  // begin with one. An unknown version becomes an empty folder, no copies.
  const std::string version = folder;
  MakeFolderIfMissing(version);
  CopyFiles(version, {kProjectPattern, kBackupPattern},
            FolderText(*this, &CProject::GetProjectDir));
  CopyFiles(version + kSeparator + Sub("", {kDatabaseFolder, kRepositoryFolder}),
            {kRepositoryPattern, kBackupPattern}, FolderText(*this, &CProject::GetRepositoryDir));
  CopyFiles(version + kSeparator + Sub("", {kDatabaseFolder, kTimelineFolder}),
            {kTimelinePattern, kBackupPattern}, FolderText(*this, &CProject::GetTimelineDir));
  return 0;
}
