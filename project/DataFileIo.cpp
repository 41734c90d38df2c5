#include "project/DataFileIo.h"

#include <cstring>
#include <vector>

#include "files/DataFile.h"
#include "files/PathParts.h"
#include "project/BackupRotation.h"

// A timeline file is some hundred thousand records, each read or written at
// a position of its own. With the stream's small default buffer that is a
// system call every few records; a buffer that holds whole runs of records
// leaves the positions and bytes as they were and the calls few.

namespace {

constexpr size_t kFileBufferSize = size_t{1} << 20;

// Null and paths a 260-byte buffer can't hold are refused.
bool IsUsablePath(const char* path) {
  return path != nullptr && ::strnlen(path, kPathBufferSize) < kPathBufferSize;
}

// Runs a transfer on `file`, which stands at its start, through a large
// buffer that is given back before it goes. The rewind behind setvbuf lets
// the stream know its position again, which a change of buffer forgets:
// without it every ftello would be a system call.
void WithLargeBuffer(FILE* file, const std::function<int32_t(FILE*)>& transfer) {
  std::vector<char> buffer(kFileBufferSize);
  std::setvbuf(file, buffer.data(), _IOFBF, buffer.size());
  std::rewind(file);
  transfer(file);
  std::fflush(file);
  std::setvbuf(file, nullptr, _IONBF, 0);
}

}  // namespace

int32_t LoadDataFile(const char* path, const std::function<int32_t(FILE*)>& load) {
  if (!IsUsablePath(path)) return -1;
  FILE* stream = OpenDataFile(path, false);
  if (stream == nullptr) return -1;
  WithLargeBuffer(stream, load);  // its result is not passed on: the caller keeps defaults
  CloseDataFile(stream);
  return 0;
}

int32_t SaveDataFile(const char* path, const std::function<int32_t(FILE*)>& save) {
  if (!IsUsablePath(path)) return -1;
  RotateBackupFiles(path, 0);
  FILE* stream = OpenDataFile(path, false);
  if (stream == nullptr) return -1;
  WithLargeBuffer(stream, save);
  CloseDataFile(stream);
  return 0;
}
