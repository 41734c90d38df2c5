#include "timeline/LevelPoint.h"

#include "core/SizedRecord.h"

CLevelPoint::CLevelPoint(int8_t role, int64_t time, float value) {
  cRole = role;
  iTime = time;
  fValue = value;
}

CLevelPoint* CLevelPoint::Clone() const {
  CLevelPoint* copy = new CLevelPoint();
  static_cast<CLevelPointData&>(*copy) = *this;
  copy->cRuntime = cRuntime;
  return copy;
}

int32_t CLevelPoint::Save(FILE* stream) {
  return SaveSizedRecord(stream, static_cast<CLevelPointData&>(*this));
}

int32_t CLevelPoint::Load(FILE* stream) {
  return LoadSizedRecord(stream, static_cast<CLevelPointData&>(*this));
}
