#include "timeline/ComponentData.h"

#include <cstring>

#include "video/UniqueIdGenerator.h"

CComponentData::CComponentData() {
  std::memset(static_cast<void*>(this), 0, sizeof(CComponentData));
  iRecordSize = kComponentRecordSize;
  fSpeed = 1.0f;
  fLevelMax = 100.0f;
  fParamA = 20.0f;
  fParamB = 20.0f;
  fParamC = 50.0f;
  cTimesAreDouble = 1;
  iUniqueId = static_cast<int64_t>(g_UniqueIdGenerator.NextId(ID_KIND_COMPONENT, nullptr));
}

void CComponentData::AssignKeepId(const CComponentData& source) {
  const int64_t keep = iUniqueId;
  std::memcpy(static_cast<void*>(this), &source, sizeof(CComponentData));
  iUniqueId = keep;
}
