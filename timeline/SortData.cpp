#include "timeline/SortData.h"

#include "time/TimeCode.h"
#include "time/TimeMath.h"
#include "timeline/Component.h"

namespace {

int64_t FramesOf(int64_t ms) {
  CTimeCode timeCode;
  timeCode.SetMilliseconds(static_cast<double>(ms));
  return timeCode.GetFrames();
}

}  // namespace

CSortData::CSortData(const CComponent& component, int32_t sourceIndex) : CSortData() {
  iLine = component.iLine;
  iSourceIndex = sourceIndex;
  iSortFieldA = component.iSortFieldA;
  iSortFieldB = component.iSortFieldB;
  iRuntimeB = component.iRuntimeB;
  iKind = component.iKind;
  iUniqueId = component.iUniqueId;
  iStartMs = timemath::TruncToI64(component.dStart);
  iEndMs = timemath::TruncToI64(component.dEnd);
  iStartFrame = FramesOf(iStartMs);
  iEndFrame = FramesOf(iEndMs);
}
