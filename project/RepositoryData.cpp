#include "project/RepositoryData.h"

#include <cstring>

#include "video/UniqueIdGenerator.h"

CRepositoryData::CRepositoryData() {
  std::memset(static_cast<void*>(this), 0, sizeof(*this));
  iSize = kRepositoryRecordSize;
  iId = static_cast<int64_t>(g_UniqueIdGenerator.NextId(ID_KIND_REPOSITORY, nullptr));
}
