#include "project/TrackData.h"

#include <cstring>

#include "video/UniqueIdGenerator.h"

CTrackData::CTrackData() {
  std::memset(static_cast<void*>(this), 0, sizeof(*this));
  iSize = kTrackRecordSize;
  iId = static_cast<int64_t>(g_UniqueIdGenerator.NextId(ID_KIND_TRACK, nullptr));
  fFactor = 1.0f;
  iSizeY = kTrackSizeY;
  fViewA = 20.0f;
  fViewB = 20.0f;
  bTimesAreDouble = 1;
}
