#pragma once
// A numbered mark on a time axis of a component or timeline.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "core/Object.h"

#pragma pack(push, 1)
struct CMarkerPointData {
  int64_t iTime = 0;
  int32_t iMarkerId = 0;
  uint8_t aMarkerText[32] = {};  // carried, never read
  uint8_t aReserved[20] = {};
};
#pragma pack(pop)

static_assert(sizeof(CMarkerPointData) == 64);
static_assert(offsetof(CMarkerPointData, iTime) == 0);
static_assert(offsetof(CMarkerPointData, iMarkerId) == 8);
static_assert(offsetof(CMarkerPointData, aMarkerText) == 12);
static_assert(offsetof(CMarkerPointData, aReserved) == 44);

class CMarkerPoint : public CObject, public CMarkerPointData {
 public:
  CMarkerPoint() = default;
  CMarkerPoint(int64_t time, int32_t id);

  CMarkerPoint* Clone() const;

  int32_t Save(FILE* stream);
  int32_t Load(FILE* stream);

  uint8_t cRuntime = 0;  // cloned with the point, otherwise unread
};
