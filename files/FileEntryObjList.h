#pragma once
// FileEntryObjList: the result of a scan of one directory, an owning list of
// FileEntryObj records. The project code uses it to find its files by
// pattern and to empty a folder of its plain files.
//
//   FileEntryObjList list;
//   list.ScanDirectory("/data/Show/Database/Timeline", "*.qzt", 0);
//   for (int32_t i = 0; i < list.GetCount(); ++i) Use(list.GetAt(i)->sFullPath);
//
// A scan does not recurse. It moves the process's current directory into the
// scanned directory (through the one saved slot of SaveCurrentDirectory) and
// back, holding m_InnerLock all the while: two scans on two threads disturb
// each other, whatever list they fill. Patterns match case-blind ("*.qzt"
// finds Timeline1.Qzt); null means "*.*". Entries come in the order the
// directory gives them. Hidden means a name starting with "."; a system
// entry is anything that is neither a plain file nor a directory.
//
// Unlike the other owning lists it has no change counter, and entries come
// only from a scan or a copy: there is no Add, RemoveAt, Load or Save.

#include <cstdint>

#include "core/DataLock.h"
#include "core/Object.h"
#include "core/PointerArray.h"
#include "files/FileEntryObj.h"

// Modes of ScanDirectory.
inline constexpr uint8_t kScanFiles = 0;
inline constexpr uint8_t kScanSubDirectories = 1;

class FileEntryObjList : public CObject {
 public:
  FileEntryObjList() = default;
  ~FileEntryObjList() override;  // Clear
  FileEntryObjList(const FileEntryObjList&) = delete;
  FileEntryObjList& operator=(const FileEntryObjList&) = delete;

  int32_t GetCount() const { return m_aItems.GetSize(); }
  // Deletes every entry and empties the list.
  void Clear();
  // The entry (still the list's), or null at or past the end. A negative
  // index throws std::out_of_range.
  FileEntryObj* GetAt(int32_t index);
  // Clear, then a new copy of each entry of other that isn't null.
  FileEntryObjList& CopyFrom(const FileEntryObjList& other);

  // Clears, then lists the entries of path matching pattern: mode 0 plain
  // files that are neither hidden nor system, mode 1 directories whose name
  // doesn't start with ".", any other mode nothing. sFullPath is path, a
  // separator and the name, with no test for a separator already there. A
  // path that can't be entered is searched in the current directory with
  // the given path still written into sFullPath. An entry whose full path
  // wouldn't fit a path buffer is passed over. -1 for a null path (the
  // list stays empty) or a fault during the scan (entries so far stay).
  int32_t ScanDirectory(const char* path, const char* pattern, uint8_t mode);
  // ScanDirectory with mode 0.
  int32_t ScanFiles(const char* path, const char* pattern);
  // Directories other than "." and ".." that carry no further attribute:
  // not hidden, and writable by their owner. The drive is left as it is.
  int32_t ScanSubDirectories(const char* path, const char* pattern);
  // Removes every file that mode 0 would list; the list stays empty.
  int32_t DeleteFiles(const char* path, const char* pattern);
  // Leaves the order exactly as the scan gave it (each entry is compared
  // with itself), but every entry becomes a new object. Always 0.
  int32_t SortByName();

  CPointerArray<FileEntryObj> m_aItems;
  CDataLock m_OuterLock;
  CDataLock m_InnerLock;

 private:
  // Which entries a scan accepts, and what it does with them.
  enum class Selection { kFiles, kDirectories, kPlainDirectories, kNothing };
  enum class Action { kList, kDelete };
  struct ScanRequest {
    const char* path;
    const char* pattern;
    int32_t ownerCode;
    bool changeDrive;  // false: the directory alone is changed
    Selection selection;
    Action action;
  };
  int32_t Scan(const ScanRequest& request);
};
