#include "project/ProjectFileData.h"

#include <cstring>

#include "core/SizedRecord.h"

CProjectFileData::CProjectFileData(const char* name) {
  if (name != nullptr) std::strncpy(szName, name, kProjectNameSize - 1);
}

int32_t CProjectFileData::Save(FILE* stream) {
  CProjectFileEntryImage image;
  std::memcpy(image.szName, szName, kProjectNameSize);
  return SaveSizedRecord(stream, image);
}

int32_t CProjectFileData::Load(FILE* stream) {
  // The file's bytes go to an image of their own: only the name is taken
  // from it, never the header word.
  CProjectFileEntryImage image;
  if (LoadSizedRecord(stream, image) != 0) return -1;
  std::memcpy(szName, image.szName, kProjectNameSize);
  return 0;
}
