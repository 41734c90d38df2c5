#include "files/DataFile.h"

#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Directory.h"

namespace {

// What one attempt to open a data file gave.
enum class OpenResult { kOpened, kNotOpened, kNotAFile };

// Opens `path` as fopen would with `mode` ("rb", "rb+" or "wb+"), but only
// as a regular file. Opened non-blocking, so that a pipe or device can't hold
// the open, checked, then switched back so that transfers behave as usual.
// A path that opens as anything but a regular file is closed again at once
// and reported as kNotAFile: the caller tries no other mode on it.
OpenResult OpenRegular(const char* path, const char* mode, FILE** out) {
  int flags = O_CLOEXEC | O_NONBLOCK;
  if (mode[0] == 'w') {
    flags |= O_RDWR | O_CREAT | O_TRUNC;
  } else {
    flags |= mode[2] == '+' ? O_RDWR : O_RDONLY;
  }
  const int fd = open(path, flags, 0666);
  if (fd < 0) return OpenResult::kNotOpened;
  struct stat st {};
  if (fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    close(fd);
    return OpenResult::kNotAFile;
  }
  fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK);
  *out = fdopen(fd, mode);
  if (*out == nullptr) {
    close(fd);
    return OpenResult::kNotOpened;
  }
  return OpenResult::kOpened;
}

// end - start as the 32-bit difference it always was: a range whose length
// doesn't fit wraps to a negative count and reads or writes nothing.
int32_t RangeLength(int32_t start, int32_t end) {
  return static_cast<int32_t>(static_cast<uint32_t>(end) - static_cast<uint32_t>(start));
}

// True when both paths name one existing file (hard links and "./x" too).
bool IsSameFile(const char* a, const char* b) {
  struct stat sa {};
  struct stat sb {};
  return stat(a, &sa) == 0 && stat(b, &sb) == 0 && sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

// Records follow one another, so the stream mostly stands at `start` already.
// A seek there would still drop the stream's buffer and cost a system call
// per record; it is left out when the stream stands at that place, has not hit
// the end, and moved data the same way last time (a change of direction on an
// update stream needs the seek).
void SeekForTransfer(FILE* stream, int32_t start, bool writing) {
  const bool sameWay = writing ? __fwriting(stream) != 0 : __freading(stream) != 0;
  if (sameWay && !std::feof(stream) && ftello(stream) == start) return;
  std::fseek(stream, start, SEEK_SET);
}

}  // namespace

FILE* OpenDataFile(const char* path, bool readOnly) {
  if (path == nullptr) return nullptr;
  // Data files are regular files: a directory, pipe or device gives null
  // whatever the mode, and nothing waits on it (a pipe would wait forever).
  static constexpr const char* kWritableModes[] = {"rb+", "wb+", "rb"};
  FILE* stream = nullptr;
  if (readOnly) {
    OpenRegular(path, "rb", &stream);
  } else {
    for (const char* mode : kWritableModes) {
      if (OpenRegular(path, mode, &stream) != OpenResult::kNotOpened) break;
    }
  }
  if (stream != nullptr) std::rewind(stream);
  return stream;
}

void CloseDataFile(FILE* stream) {
  if (stream != nullptr) std::fclose(stream);
}

int32_t ReadFileRange(int32_t start, int32_t end, void* buffer, FILE* stream) {
  const int32_t n = RangeLength(start, end);
  if (n < 1 || buffer == nullptr || stream == nullptr) return 0;
  SeekForTransfer(stream, start, false);
  return static_cast<int32_t>(std::fread(buffer, 1, static_cast<size_t>(n), stream));
}

int32_t WriteFileRange(int32_t start, int32_t end, const void* buffer, FILE* stream) {
  const int32_t n = RangeLength(start, end);
  if (n < 1 || buffer == nullptr || stream == nullptr) return 0;
  SeekForTransfer(stream, start, true);
  return static_cast<int32_t>(std::fwrite(buffer, 1, static_cast<size_t>(n), stream));
}

int32_t CopyDataFile(const char* target, const char* source) {
  if (source == nullptr || platform::AccessPath(source, 0) != 0) return 0;
  if (target != nullptr) {
    // Removing the target would delete the source itself: the copy is done.
    if (IsSameFile(target, source)) return 0;
    std::remove(target);
  }
  FILE* out = OpenDataFile(target, false);
  if (out == nullptr) return -1;
  // A write-protected source still opens through the read-only fallback.
  FILE* in = OpenDataFile(source, false);
  if (in != nullptr) {
    char block[2000];
    size_t got = 0;
    while ((got = std::fread(block, 1, sizeof block, in)) != 0) {
      std::fwrite(block, 1, got, out);
    }
  }
  CloseDataFile(out);
  CloseDataFile(in);
  return 0;
}

void WriteFileErrorLog(const char* text) {
  FILE* log = nullptr;
  // A pipe in its place would take the message and block once it is full.
  if (OpenRegular("FileErr.txt", "wb+", &log) != OpenResult::kOpened) return;
  std::rewind(log);
  if (text != nullptr) std::fputs(text, log);
  std::fclose(log);
}

int32_t FileExists(const char* path) {
  if (path == nullptr) return -1;
  // Non-blocking so that a pipe without a writer doesn't hang the test.
  const int fd = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return -1;
  // A directory can't be opened as a file, so it isn't one.
  struct stat st {};
  const bool isFile = fstat(fd, &st) == 0 && !S_ISDIR(st.st_mode);
  close(fd);
  return isFile ? 0 : -1;
}
