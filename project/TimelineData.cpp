#include "project/TimelineData.h"

#include <cstring>

#include "video/UniqueIdGenerator.h"

CTimelineData::CTimelineData() {
  std::memset(static_cast<void*>(this), 0, sizeof(*this));
  iSize = kTimelineRecordSize;
  iId = static_cast<int64_t>(g_UniqueIdGenerator.NextId(ID_KIND_TIMELINE, nullptr));
  iTimeZoom = 2;
  iValue50 = 50;
  iValue30A = 30;
  iValue30B = 30;
  bTimesAreDouble = 1;
}
