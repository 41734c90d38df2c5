#pragma once
// One name entry of a project file: the bare name of a timeline or a
// repository (no folder, no extension), through which the project finds the
// file of that timeline or repository.
//
// On disk an entry is a sized record of 264 bytes: a 4-byte header word, then
// the 260 bytes of szName. The header word is written as zeros and ignored
// on reading, so files from any writer read the same.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "core/Object.h"

inline constexpr size_t kProjectNameSize = 260;
inline constexpr int32_t kProjectFileEntrySize = 264;

// The bytes of one entry behind its size field, as they stand in a file.
#pragma pack(push, 1)
struct CProjectFileEntryImage {
  uint32_t iHeaderWord = 0;  // a reader ignores it
  char szName[kProjectNameSize] = {};
};
#pragma pack(pop)

static_assert(sizeof(CProjectFileEntryImage) == kProjectFileEntrySize);
static_assert(offsetof(CProjectFileEntryImage, iHeaderWord) == 0);
static_assert(offsetof(CProjectFileEntryImage, szName) == 4);

class CProjectFileData : public CObject {
 public:
  CProjectFileData() = default;
  // An entry holding `name`, cut to 259 characters; null gives an empty one.
  explicit CProjectFileData(const char* name);

  // Size 264, a zero header word, then szName. -1 for a null stream or when
  // the name bytes could not be written.
  int32_t Save(FILE* stream);
  // -1 for a null stream, a failed read or a size above 264; szName then
  // stays as it was. A shorter entry gives a name that ends early.
  int32_t Load(FILE* stream);

  char szName[kProjectNameSize] = {};
};
