#include "timeline/SortData.h"

#include "time/TimeCode.h"
#include "time/TimeMath.h"
#include "timeline/Component.h"

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
  iStartFrame = FramesAtDefaultRate(static_cast<double>(iStartMs));
  iEndFrame = FramesAtDefaultRate(static_cast<double>(iEndMs));
}
