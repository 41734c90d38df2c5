#include "platform/Directory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace platform {

int AccessPath(const char* path, int mode) {
  if (path == nullptr) return -1;
  int flags = F_OK;
  if (mode & 2) flags |= W_OK;
  if (mode & 4) flags |= R_OK;
  return access(path, flags) == 0 ? 0 : -1;
}

int MakeDirectory(const char* path) {
  if (path == nullptr) return -1;
  return mkdir(path, 0777) == 0 ? 0 : -1;
}

int RemoveDirectory(const char* path) {
  if (path == nullptr) return -1;
  return rmdir(path) == 0 ? 0 : -1;
}

int ChangeDirectory(const char* path) {
  if (path == nullptr) return -1;
  return chdir(path) == 0 ? 0 : -1;
}

char* GetCurrentDirectory(char* buffer, size_t size) {
  if (buffer == nullptr || size == 0) return nullptr;
  if (getcwd(buffer, size) == nullptr) {
    buffer[0] = '\0';
    return nullptr;
  }
  return buffer;
}

bool IsDirectory(const char* path) {
  struct stat st {};
  return path != nullptr && stat(path, &st) == 0 && S_ISDIR(st.st_mode);
}

bool GetExecutablePath(char* buffer, size_t size) {
  if (buffer == nullptr || size == 0) return false;
  const ssize_t n = readlink("/proc/self/exe", buffer, size - 1);
  if (n <= 0 || static_cast<size_t>(n) >= size - 1) {
    buffer[0] = '\0';
    return false;
  }
  buffer[n] = '\0';
  return true;
}

}  // namespace platform
