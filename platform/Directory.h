#pragma once
// Directory and current-directory calls of the operating system, with the
// results the library's file layer expects: 0 for success, -1 for failure.

#include <cstddef>

namespace platform {

// The path separator of this platform. Paths the library builds use it
// wherever the original layout wrote a backslash.
inline constexpr char kPathSeparator = '/';

// Access modes of AccessPath: 0 existence, 2 write, 4 read, 6 read+write.
int AccessPath(const char* path, int mode);
int MakeDirectory(const char* path);
int RemoveDirectory(const char* path);
int ChangeDirectory(const char* path);
// Writes the current directory, terminated, into `buffer` of `size` bytes.
// Null (and nothing written but a terminator when size > 0) when it doesn't fit.
char* GetCurrentDirectory(char* buffer, size_t size);
// True when `path` names an existing directory.
bool IsDirectory(const char* path);
// Full path of the running program, terminated, into `buffer`; false when
// it can't be read or doesn't fit.
bool GetExecutablePath(char* buffer, size_t size);

}  // namespace platform
