#include "files/DataFile.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/Directory.h"

FILE* OpenDataFile(const char* path, bool readOnly) {
  if (path == nullptr) return nullptr;
  FILE* stream = nullptr;
  if (readOnly) {
    stream = std::fopen(path, "rb");
  } else {
    stream = std::fopen(path, "rb+");
    if (stream == nullptr) stream = std::fopen(path, "wb+");
    if (stream == nullptr) stream = std::fopen(path, "rb");
  }
  if (stream == nullptr) return nullptr;
  std::rewind(stream);
  return stream;
}

void CloseDataFile(FILE* stream) {
  if (stream != nullptr) std::fclose(stream);
}

int32_t ReadFileRange(int32_t start, int32_t end, void* buffer, FILE* stream) {
  const int64_t n = static_cast<int64_t>(end) - start;
  if (n < 1 || buffer == nullptr || stream == nullptr) return 0;
  std::fseek(stream, start, SEEK_SET);
  return static_cast<int32_t>(std::fread(buffer, 1, static_cast<size_t>(n), stream));
}

int32_t WriteFileRange(int32_t start, int32_t end, const void* buffer, FILE* stream) {
  const int64_t n = static_cast<int64_t>(end) - start;
  if (n < 1 || buffer == nullptr || stream == nullptr) return 0;
  std::fseek(stream, start, SEEK_SET);
  return static_cast<int32_t>(std::fwrite(buffer, 1, static_cast<size_t>(n), stream));
}

int32_t CopyDataFile(const char* target, const char* source) {
  if (target == nullptr || source == nullptr) return -1;
  if (platform::AccessPath(source, 0) != 0) return 0;
  std::remove(target);
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
  const int fd = open(path, O_RDONLY | O_CLOEXEC);
  if (fd < 0) return -1;
  close(fd);
  return 0;
}
