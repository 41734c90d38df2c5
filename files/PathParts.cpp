#include "files/PathParts.h"

#include <cstring>

#include "platform/Directory.h"

namespace {

// Index of the last `mark` in `text`, looking from the last character down
// to index 1; -1 when there is none.
ptrdiff_t FindLastFromOne(const char* text, char mark) {
  for (ptrdiff_t i = static_cast<ptrdiff_t>(std::strlen(text)) - 1; i >= 1; --i) {
    if (text[i] == mark) return i;
  }
  return -1;
}

// Copies at most `count` characters of `text` (and never more than a path
// buffer holds) into `out`, terminated; overlapping is fine.
void CopyCut(char* out, const char* text, size_t count) {
  size_t n = ::strnlen(text, kPathBufferSize - 1);
  if (n > count) n = count;
  std::memmove(out, text, n);
  out[n] = '\0';
}

}  // namespace

void CopyPathText(char* out, const char* text) {
  if (out == nullptr || text == nullptr) return;
  CopyCut(out, text, kPathBufferSize - 1);
}

void GetPathPart(const char* path, char* out) {
  if (path == nullptr || out == nullptr) return;
  const ptrdiff_t at = FindLastFromOne(path, platform::kPathSeparator);
  CopyCut(out, path, at < 0 ? kPathBufferSize - 1 : static_cast<size_t>(at) + 1);
}

void GetFileNamePart(const char* path, char* out) {
  if (path == nullptr || out == nullptr) return;
  const ptrdiff_t at = FindLastFromOne(path, platform::kPathSeparator);
  CopyCut(out, at < 0 ? path : path + at + 1, kPathBufferSize - 1);
}

void GetExtensionPart(const char* path, char* out) {
  if (path == nullptr || out == nullptr) return;
  const ptrdiff_t at = FindLastFromOne(path, '.');
  if (at < 0) {
    out[0] = '\0';
    return;
  }
  CopyCut(out, path + at, kPathBufferSize - 1);
}

void CutExtension(char* path) {
  if (path == nullptr) return;
  const ptrdiff_t at = FindLastFromOne(path, '.');
  if (at >= 0) path[at] = '\0';
}
