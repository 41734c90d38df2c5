#include "project/BackupRotation.h"

#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "files/PathParts.h"
#include "project/ProjectNames.h"

namespace {

// Whether path exists and may be read and written.
bool IsReadWrite(const char* path) {
  return access(path, R_OK | W_OK) == 0;
}

// Whether path exists but may not be written: a file that remove can't take
// away on every platform, and that a rename therefore can't replace either.
bool IsWriteProtected(const char* path) {
  return access(path, F_OK) == 0 && !IsReadWrite(path);
}

// base + extension into out; false when it doesn't fit a path buffer.
bool JoinName(char* out, const char* base, const char* extension) {
  const int written = std::snprintf(out, kPathBufferSize, "%s%s", base, extension);
  return written >= 0 && static_cast<size_t>(written) < kPathBufferSize;
}

}  // namespace

int32_t RotateBackupFiles(const char* path, uint8_t flag) {
  if (path == nullptr || std::strlen(path) >= kPathBufferSize) return 0;
  char base[kPathBufferSize];
  std::strcpy(base, path);
  // The last dot of the whole path, a folder's dot included.
  char* dot = std::strrchr(base, '.');
  if (dot != nullptr) *dot = '\0';
  char backup1[kPathBufferSize];
  char backup2[kPathBufferSize];
  if (!JoinName(backup1, base, projectnames::kBackup1Extension) ||
      !JoinName(backup2, base, projectnames::kBackup2Extension)) {
    return 0;
  }
  // A write-protected .Bk2 stays, and .Bk1 with it.
  if (IsReadWrite(backup1) && !IsWriteProtected(backup2)) {
    std::remove(backup2);
    std::rename(backup1, backup2);
  }
  if (flag != 0) return 0;
  if (!IsReadWrite(path)) return 0;  // a write-protected main file stays
  // A write-protected .Bk1 can't be removed on every platform; where it can't,
  // the rename fails too and the main file is written in place. Keep it so
  // everywhere rather than lose the protected backup.
  if (IsWriteProtected(backup1)) return 0;
  std::remove(backup1);
  std::rename(path, backup1);
  return 0;
}
