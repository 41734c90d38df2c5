#include "project/ProjectData.h"

#include <cstring>

CProjectData::CProjectData() {
  std::memset(static_cast<void*>(this), 0, sizeof(*this));
  iSize = kProjectRecordSize;
  std::memcpy(szMagic, kProjectMagic, sizeof(kProjectMagic));
  std::memcpy(szProjectName, kDefaultProjectName, sizeof(kDefaultProjectName));
  std::memcpy(szRootPath, kDefaultRootPath, sizeof(kDefaultRootPath));
  iOpaqueF = 1;
}
