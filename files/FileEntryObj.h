#pragma once
// FileEntryObj: one entry found by a directory scan (FileEntryObjList): its
// place among the accepted entries, its name, the scanned path joined with
// the name, and its time of last write as text.

#include <cstddef>
#include <cstdint>
#include <ctime>

#include "core/Object.h"

inline constexpr size_t kFileEntryNameSize = 260;
inline constexpr size_t kFileEntryDateSize = 40;

class FileEntryObj : public CObject {
 public:
  // Clears the three text fields whole.
  FileEntryObj();
  ~FileEntryObj() override = default;
  FileEntryObj(const FileEntryObj&) = default;
  FileEntryObj& operator=(const FileEntryObj&) = default;

  // sDateTime from a write time, in local time, as
  // "DD/MM/YYYY  hh:mm:ss" (two blanks); a time that can't be broken down
  // gives "00/00/0000  -1:-1:-1".
  void SetWriteTime(time_t writeTime);

  int32_t iIndex = -1;    // place among the accepted entries of its scan, from 0
  int32_t iReserved = 0;  // set by the constructor only, carried by copies
  char sFileName[kFileEntryNameSize];
  char sFullPath[kFileEntryNameSize];
  char sDateTime[kFileEntryDateSize];
};
