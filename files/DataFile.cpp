#include "files/DataFile.h"

#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Directory.h"

namespace {

bool IsDirectoryStream(FILE* stream) {
  struct stat st {};
  return fstat(fileno(stream), &st) == 0 && S_ISDIR(st.st_mode);
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

// fopen "rb" without the wait a pipe with no writer would impose: opened
// non-blocking, then switched back so that reads behave as usual.
FILE* OpenForReading(const char* path) {
  const int fd = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return nullptr;
  fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK);
  FILE* stream = fdopen(fd, "rb");
  if (stream == nullptr) close(fd);
  return stream;
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
  FILE* stream = nullptr;
  if (readOnly) {
    stream = OpenForReading(path);
  } else {
    stream = std::fopen(path, "rb+");
    if (stream == nullptr) stream = std::fopen(path, "wb+");
    if (stream == nullptr) stream = OpenForReading(path);
  }
  if (stream == nullptr) return nullptr;
  // Linux opens a directory for reading; a data file is never one.
  if (IsDirectoryStream(stream)) {
    std::fclose(stream);
    return nullptr;
  }
  std::rewind(stream);
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
  FILE* log = std::fopen("FileErr.txt", "wb+");
  if (log == nullptr) return;
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
