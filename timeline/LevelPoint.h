#pragma once
// One knot of a level curve: a time, a value and its role on the curve.

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "core/Object.h"

#pragma pack(push, 1)
struct CLevelPointData {
  int64_t iTime = 0;
  int32_t iPointTag = 0;  // carried, never read
  float fValue = 0.0f;
  uint8_t cPointByte = 0;  // carried, never read
  int8_t cRole = 0;        // 0 inner, 1 start point, 2 end point
  int8_t cFade = 0;        // 0 none, 1 placed by a fade-in, 2 by a fade-out
  uint8_t cFadeKeep = 0;   // a fade point that ClearFades leaves alone
  uint8_t aReserved[18] = {};
};
#pragma pack(pop)

static_assert(sizeof(CLevelPointData) == 38);
static_assert(offsetof(CLevelPointData, iTime) == 0);
static_assert(offsetof(CLevelPointData, iPointTag) == 8);
static_assert(offsetof(CLevelPointData, fValue) == 12);
static_assert(offsetof(CLevelPointData, cPointByte) == 16);
static_assert(offsetof(CLevelPointData, cRole) == 17);
static_assert(offsetof(CLevelPointData, cFade) == 18);
static_assert(offsetof(CLevelPointData, cFadeKeep) == 19);
static_assert(offsetof(CLevelPointData, aReserved) == 20);

// Roles of a level point.
enum : int8_t { kRoleInner = 0, kRoleStart = 1, kRoleEnd = 2 };
// Fade marks of a level point.
enum : int8_t { kFadeNone = 0, kFadeIn = 1, kFadeOut = 2 };

class CLevelPoint : public CObject, public CLevelPointData {
 public:
  CLevelPoint() = default;
  CLevelPoint(int8_t role, int64_t time, float value);

  // A new point with the same record bytes and runtime byte.
  CLevelPoint* Clone() const;

  int32_t Save(FILE* stream);
  int32_t Load(FILE* stream);

  uint8_t cRuntime = 0;  // cloned with the point, otherwise unread
};
