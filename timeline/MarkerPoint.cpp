#include "timeline/MarkerPoint.h"

#include "core/SizedRecord.h"

CMarkerPoint::CMarkerPoint(int64_t time, int32_t id) {
  iTime = time;
  iMarkerId = id;
}

CMarkerPoint* CMarkerPoint::Clone() const {
  CMarkerPoint* copy = new CMarkerPoint();
  static_cast<CMarkerPointData&>(*copy) = *this;
  copy->cRuntime = cRuntime;
  return copy;
}

int32_t CMarkerPoint::Save(FILE* stream) {
  return SaveSizedRecord(stream, static_cast<CMarkerPointData&>(*this));
}

int32_t CMarkerPoint::Load(FILE* stream) {
  return LoadSizedRecord(stream, static_cast<CMarkerPointData&>(*this));
}
