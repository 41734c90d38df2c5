#include "files/FileEntryObjList.h"

#include <dirent.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>

#include "core/DataLockGuard.h"
#include "files/AppDirectories.h"
#include "files/CurrentDrive.h"
#include "files/PathParts.h"
#include "platform/Directory.h"

namespace {

// Owner codes of the scan's acquires of m_InnerLock.
constexpr int32_t kOwnerScanDirectory = 10;  // also DeleteFiles
constexpr int32_t kOwnerScanSubDirectories = 11;
constexpr int32_t kOwnerSortByName = 12;
constexpr int32_t kOwnerScanFiles = 13;
constexpr int32_t kOwnerClear = 1000;
constexpr int32_t kOwnerCopyFrom = 1001;
constexpr int32_t kOwnerGetAt = 1002;

constexpr const char* kAllFiles = "*.*";

// What the directory reader tells of one name in the current directory.
struct EntryInfo {
  const char* name;
  time_t writeTime;
  bool directory;
  bool hidden;         // the name starts with "."
  bool system;         // neither a plain file nor a directory
  bool ownerWritable;  // a directory without it counts as read-only
};

EntryInfo Describe(const char* name) {
  EntryInfo info{name, 0, false, name[0] == '.', true, false};
  struct stat status {};
  if (::stat(name, &status) == 0) {
    info.writeTime = status.st_mtime;
    info.directory = S_ISDIR(status.st_mode);
    info.system = !S_ISDIR(status.st_mode) && !S_ISREG(status.st_mode);
    info.ownerWritable = (status.st_mode & S_IWUSR) != 0;
  }
  return info;
}

// The pattern test of the find calls: "*.*" is every name, dotted or not;
// otherwise a case-blind shell match of the whole name.
bool Matches(const char* pattern, const char* name) {
  if (std::strcmp(pattern, kAllFiles) == 0 || std::strcmp(pattern, "*") == 0) return true;
  return ::fnmatch(pattern, name, FNM_CASEFOLD) == 0;
}

bool IsDotName(const char* name) {
  return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

template <class Selection>
bool Accepts(Selection selection, const EntryInfo& info) {
  switch (selection) {
    case Selection::kFiles:
      return !info.directory && !info.hidden && !info.system;
    case Selection::kDirectories:
      return info.directory && info.name[0] != '.';
    case Selection::kPlainDirectories:
      // Only a directory with no attribute beyond "directory" is listed.
      return info.directory && !IsDotName(info.name) && !info.hidden && info.ownerWritable;
    case Selection::kNothing:
      return false;
  }
  return false;
}

// Closes the directory stream at every way out. The find handle of the
// original scans was never closed; a reader that leaked one per scan would
// exhaust the process's descriptors, so ours is closed.
struct DirCloser {
  void operator()(DIR* dir) const { ::closedir(dir); }
};

// The text into a 260-byte field, cut rather than overrun.
void CopyField(char* field, const std::string& text) {
  const size_t length = text.size() < kPathBufferSize ? text.size() : kPathBufferSize - 1;
  std::memcpy(field, text.data(), length);
  field[length] = '\0';
}

}  // namespace

FileEntryObjList::~FileEntryObjList() {
  Clear();
}

void FileEntryObjList::Clear() {
  CDataLockGuard inner(m_InnerLock, kOwnerClear);
  for (FileEntryObj* entry : m_aItems) delete entry;
  m_aItems.RemoveAll();
}

FileEntryObj* FileEntryObjList::GetAt(int32_t index) {
  CDataLockGuard inner(m_InnerLock, kOwnerGetAt);
  if (index >= GetCount()) return nullptr;
  return m_aItems.GetAt(index);
}

FileEntryObjList& FileEntryObjList::CopyFrom(const FileEntryObjList& other) {
  Clear();
  CDataLockGuard inner(m_InnerLock, kOwnerCopyFrom);
  for (const FileEntryObj* entry : other.m_aItems) {
    if (entry != nullptr) m_aItems.Add(new FileEntryObj(*entry));
  }
  return *this;
}

int32_t FileEntryObjList::ScanDirectory(const char* path, const char* pattern, uint8_t mode) {
  const Selection selection = mode == kScanFiles            ? Selection::kFiles
                              : mode == kScanSubDirectories ? Selection::kDirectories
                                                            : Selection::kNothing;
  return Scan({path, pattern, kOwnerScanDirectory, true, selection, Action::kList});
}

int32_t FileEntryObjList::ScanFiles(const char* path, const char* pattern) {
  return Scan({path, pattern, kOwnerScanFiles, true, Selection::kFiles, Action::kList});
}

int32_t FileEntryObjList::ScanSubDirectories(const char* path, const char* pattern) {
  return Scan({path, pattern, kOwnerScanSubDirectories, false, Selection::kPlainDirectories,
               Action::kList});
}

int32_t FileEntryObjList::DeleteFiles(const char* path, const char* pattern) {
  return Scan({path, pattern, kOwnerScanDirectory, true, Selection::kFiles, Action::kDelete});
}

int32_t FileEntryObjList::Scan(const ScanRequest& request) {
  Clear();
  if (request.path == nullptr) return -1;
  char pattern[kPathBufferSize];
  CopyPathText(pattern, request.pattern == nullptr ? kAllFiles : request.pattern);

  CDataLockGuard inner(m_InnerLock, request.ownerCode);
  SaveCurrentDirectory(nullptr, nullptr);
  int32_t result = 0;
  try {
    // Not being able to enter the directory doesn't stop the scan: it then
    // runs in the directory that was current.
    if (request.changeDrive) {
      ChangeDriveAndDir(request.path);
    } else {
      platform::ChangeDirectory(request.path);
    }
    std::unique_ptr<DIR, DirCloser> dir(::opendir("."));
    int32_t index = 0;
    while (dir != nullptr) {
      const dirent* found = ::readdir(dir.get());
      if (found == nullptr) break;
      if (!Matches(pattern, found->d_name)) continue;
      const EntryInfo info = Describe(found->d_name);
      if (!Accepts(request.selection, info)) continue;
      if (request.action == Action::kDelete) {
        if (platform::AccessPath(found->d_name, 0) == 0) std::remove(found->d_name);
        continue;
      }
      // No test for a path that already ends in a separator: the double
      // separator then stands as it is.
      const std::string fullPath =
          std::string(request.path) + platform::kPathSeparator + found->d_name;
      // A full path that a path buffer can't hold is passed over: cut short,
      // it could name another file, which a caller would copy or remove.
      if (fullPath.size() >= kPathBufferSize) continue;
      auto entry = std::make_unique<FileEntryObj>();
      entry->SetWriteTime(info.writeTime);
      entry->iIndex = index;
      CopyField(entry->sFileName, found->d_name);
      CopyField(entry->sFullPath, fullPath);
      m_aItems.Add(entry.get());
      entry.release();
      ++index;
    }
  } catch (...) {
    result = -1;
  }
  RestoreCurrentDirectory(nullptr, 0);
  return result;
}

int32_t FileEntryObjList::SortByName() {
  FileEntryObjList sorted;
  {
    CDataLockGuard inner(m_InnerLock, kOwnerSortByName);
    while (GetCount() > 0) {
      int32_t chosen = 0;
      for (int32_t i = 0; i < GetCount(); ++i) {
        // Each entry is compared with itself, so the first always stays
        // chosen and the order is kept: that is the operation's behaviour.
        const FileEntryObj* entry = m_aItems.GetAt(i);
        if (entry != nullptr && std::strcmp(entry->sFileName, entry->sFileName) < 0) chosen = i;
      }
      FileEntryObj* entry = m_aItems.GetAt(chosen);
      m_aItems.RemoveAt(chosen);
      sorted.m_aItems.Add(entry);
    }
  }
  CopyFrom(sorted);
  return 0;
}
