#include "project/DataFileIo.h"

#include <cstring>

#include "files/DataFile.h"
#include "files/PathParts.h"
#include "project/BackupRotation.h"

namespace {

// Null and paths a 260-byte buffer can't hold are refused.
bool IsUsablePath(const char* path) {
  return path != nullptr && ::strnlen(path, kPathBufferSize) < kPathBufferSize;
}

}  // namespace

int32_t LoadDataFile(const char* path, const std::function<int32_t(FILE*)>& load) {
  if (!IsUsablePath(path)) return -1;
  FILE* stream = OpenDataFile(path, false);
  if (stream == nullptr) return -1;
  load(stream);  // its result is not passed on: the caller keeps defaults
  CloseDataFile(stream);
  return 0;
}

int32_t SaveDataFile(const char* path, const std::function<int32_t(FILE*)>& save) {
  if (!IsUsablePath(path)) return -1;
  RotateBackupFiles(path, 0);
  FILE* stream = OpenDataFile(path, false);
  if (stream == nullptr) return -1;
  save(stream);
  CloseDataFile(stream);
  return 0;
}
