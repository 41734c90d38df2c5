#pragma once
// Pieces shared by the open, save, backup and version operations of
// CProject: the current-directory scope they run in, the head record's
// reader, the name entries' writer, and the per-file walks over the
// timeline and repository lists.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>

#include "core/DataLockGuard.h"
#include "files/PathParts.h"
#include "platform/Directory.h"
#include "project/MemoryStream.h"
#include "project/Project.h"
#include "project/ProjectFileList.h"

namespace projectfiles {

// A fixed text field that a loaded file may have filled to its last byte.
inline std::string FieldText(const char* field, size_t size) {
  return std::string(field, ::strnlen(field, size));
}

// Remembers the current drive and directory and (unless told not to yet)
// changes to the application directory; the remembered place comes back
// at Restore or at the end of the scope, whichever is first.
class CAppDirScope {
 public:
  explicit CAppDirScope(bool enter = true);
  ~CAppDirScope() { Restore(); }
  CAppDirScope(const CAppDirScope&) = delete;
  CAppDirScope& operator=(const CAppDirScope&) = delete;
  void Restore();

 private:
  char m_szPath[kPathBufferSize] = {};
  uint32_t m_iDrive = 0;
  bool m_bHeld = true;
};

// Zeroes data, then reads the record of the size the file's first four
// bytes give from offset 0, leaving the stream behind it. -1 for a size
// below 1 or above the record (such a file would run over it), a failed
// read, or a mark other than ".qzpj".
int32_t ReadHead(CProjectData& data, FILE* stream);

// A name entry per timeline, then per repository, in list order. The
// caller holds both list locks.
void WriteNameEntries(CProject& project, FILE* stream);

// Head record (size and mark set, counts from the lists) and name entries
// at the stream's start, under both list locks as a save takes them, then
// the video mode where asked (a backup set has none). False when the record
// could not be written.
bool WriteProjectFile(CProject& project, FILE* stream, bool withVideoMode);

// folder (the project's folder of that kind) + name + extension into out;
// -1 when it doesn't fit.
int32_t ItemPath(CProject& project, int32_t (CProject::*folder)(char*), const char* name,
                 size_t nameSize, const char* extension, char* out);

// Opens path for reading only, runs load on its content (taken into memory,
// the buffer of `memory`, where it fits) and closes: what the item's own
// LoadFile does, without the system call per record. False when no stream
// opens (a directory, say).
bool LoadWholeFile(CMemoryStream& memory, const char* path,
                   const std::function<int32_t(FILE*)>& load);

// The loader of LoadTimelines and LoadRepositories: clears list under its
// outer lock, then each named file that exists is loaded and appended.
template <class Item, class List>
void LoadItems(CProject& project, List& list, int32_t ownerCode,
               int32_t (CProject::*projectFolder)(char*), const char* defaultExtension,
               CProjectFileList& names, const char* folder, const char* extension) {
  CDataLockGuard outer(list.m_OuterLock, ownerCode);
  list.Clear();
  CMemoryStream memory;  // one buffer for all the files
  if (extension == nullptr || extension[0] == '\0') extension = defaultExtension;
  for (CProjectFileData* entry : names.m_aItems) {
    if (entry == nullptr) continue;
    const std::string name = FieldText(entry->szName, sizeof(entry->szName));
    std::string path;
    if (folder != nullptr) {
      path = std::string(folder) + platform::kPathSeparator + name + extension;
    } else {
      char built[kPathBufferSize];
      if (ItemPath(project, projectFolder, entry->szName, sizeof(entry->szName), extension,
                   built) != 0) {
        continue;
      }
      path = built;
    }
    // A file that vanished leaves the project without a word.
    if (path.size() >= kPathBufferSize || platform::AccessPath(path.c_str(), 0) != 0) continue;
    auto* item = new Item;
    std::memset(item->szName, 0, sizeof(item->szName));
    std::memcpy(item->szName, name.data(), name.size());
    if (!LoadWholeFile(memory, path.c_str(), [item](FILE* stream) { return item->Load(stream); })) {
      delete item;
      continue;
    }
    list.m_aItems.Add(item);  // under the outer lock only, as the list is being rebuilt
  }
}

// The saver of SaveTimelines and SaveRepositories.
template <class List>
void SaveItems(CProject& project, List& list, int32_t ownerCode,
               int32_t (CProject::*projectFolder)(char*), const char* extension) {
  CDataLockGuard outer(list.m_OuterLock, ownerCode);
  for (auto* item : list.m_aItems) {
    if (item == nullptr) continue;
    char path[kPathBufferSize];
    if (ItemPath(project, projectFolder, item->szName, sizeof(item->szName), extension, path) ==
        0) {
      item->SaveFile(path);
    }
  }
}

}  // namespace projectfiles
