#include "project/SaveSet.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <set>

#include "files/DataFile.h"
#include "project/BackupRotation.h"
#include "project/ProjectNames.h"

namespace {

std::atomic<bool> g_bSaveDurable{true};

bool IsReadWrite(const std::string& path) {
  return ::access(path.c_str(), R_OK | W_OK) == 0;
}

bool Exists(const std::string& path) {
  return ::access(path.c_str(), F_OK) == 0;
}

// path cut at its last dot (a folder's dot included), with extension.
std::string BackupName(const std::string& path, const char* extension) {
  const size_t dot = path.rfind('.');
  return (dot == std::string::npos ? path : path.substr(0, dot)) + extension;
}

std::string FolderOf(const std::string& path) {
  const size_t separator = path.rfind('/');
  if (separator == std::string::npos) return ".";
  return separator == 0 ? "/" : path.substr(0, separator);
}

// Flushes a stream's data through to the disk when saves are durable.
bool SyncStream(FILE* stream) {
  if (std::fflush(stream) != 0) return false;
  return !IsSaveDurable() || ::fsync(::fileno(stream)) == 0;
}

void SyncFolder(const std::string& folder) {
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  ::fsync(descriptor);
  ::close(descriptor);
}

// The main file becomes .Bk1 as well, by a second name for the same file:
// the main name stays valid until the new file is renamed over it. Where the
// file system has no hard links, a copy does the same.
void KeepAsBackup(const std::string& path) {
  const std::string backup1 = BackupName(path, projectnames::kBackup1Extension);
  if (!IsReadWrite(path)) return;  // a write-protected main file stays as it is
  if (Exists(backup1) && !IsReadWrite(backup1)) return;  // so does a protected .Bk1
  std::remove(backup1.c_str());
  if (::link(path.c_str(), backup1.c_str()) != 0) CopyDataFile(backup1.c_str(), path.c_str());
}

// An empty file, on the disk before the caller goes on.
void WriteMarker(const std::string& path) {
  FILE* stream = std::fopen(path.c_str(), "wb");
  if (stream == nullptr) return;
  SyncStream(stream);
  std::fclose(stream);
}

void SyncFolders(const std::set<std::string>& folders) {
  if (!IsSaveDurable()) return;
  for (const std::string& folder : folders) SyncFolder(folder);
}

}  // namespace

bool IsSaveInterrupted(const char* projectFile) {
  return projectFile != nullptr && Exists(std::string(projectFile) + kCommitSuffix);
}

void SetSaveDurability(bool durable) {
  g_bSaveDurable.store(durable);
}

bool IsSaveDurable() {
  return g_bSaveDurable.load();
}

CSaveSet::~CSaveSet() {
  if (m_bCommitted) return;
  for (const Entry& entry : m_Entries) std::remove(Staged(entry.path).c_str());
}

bool CSaveSet::Stage(const std::string& path, bool rotate, bool keepTail,
                     const std::function<bool(FILE*)>& write) {
  if (Exists(path) && !IsReadWrite(path)) return false;
  const std::string staged = Staged(path);
  std::remove(staged.c_str());  // a side file a killed save left behind
  if (keepTail && CopyDataFile(staged.c_str(), path.c_str()) != 0) return false;
  FILE* stream = OpenDataFile(staged.c_str(), false);
  if (stream == nullptr) return false;
  const bool written = write(stream) && SyncStream(stream);
  CloseDataFile(stream);
  if (!written) {
    std::remove(staged.c_str());
    return false;
  }
  for (Entry& entry : m_Entries) {
    if (entry.path == path) {
      entry.rotate = rotate;
      return true;
    }
  }
  m_Entries.push_back({path, rotate});
  return true;
}

void CSaveSet::Commit() {
  std::set<std::string> folders{FolderOf(m_MarkerPath)};
  for (const Entry& entry : m_Entries) folders.insert(FolderOf(entry.path));
  // After an interrupted commit the .Bk1 set is the last whole save: no
  // generation moves until a commit has gone through.
  const bool rotate = !Exists(m_MarkerPath);
  if (rotate) {
    // Pass 1: the old .Bk1 becomes .Bk2. The main files are untouched.
    for (const Entry& entry : m_Entries) {
      if (entry.rotate) RotateBackupFiles(entry.path.c_str(), 1);
    }
    // Pass 2: each main file is also .Bk1. From here the .Bk1 set is whole.
    for (const Entry& entry : m_Entries) {
      if (entry.rotate) KeepAsBackup(entry.path);
    }
    SyncFolders(folders);
    WriteMarker(m_MarkerPath);
    SyncFolders({FolderOf(m_MarkerPath)});
  }
  // Pass 3: the new files take the main names, one atomic rename each.
  for (const Entry& entry : m_Entries) {
    std::rename(Staged(entry.path).c_str(), entry.path.c_str());
  }
  m_bCommitted = true;
  SyncFolders(folders);
  std::remove(m_MarkerPath.c_str());
  SyncFolders({FolderOf(m_MarkerPath)});
}
