#pragma once
// The persistent record of one effect on a component, and the plain block of
// 760 bytes that a file holds behind it.

#include <cstddef>
#include <cstdint>

#pragma pack(push, 1)
struct CEffectData {
  int32_t iEffectKind = 0;  // 12 and 13 survive the selective clear
  uint8_t aEffectText[40] = {};
  int64_t iLength = 0;          // ms; end time of new key group curves
  int32_t iKeyGroupCount = 0;   // key groups that follow in a file
  float aEffectParams[5] = {};  // carried, never read
  uint8_t aEffectBytes[20] = {};
  int32_t iEffectParam = 0;
  uint8_t aEffectFlags[4] = {};
  uint8_t cExtraFollows = 1;  // non-zero: the 760-byte block follows in a file
  uint8_t cEffectByte = 0;    // always written as 0
};

struct CEffectExtra {
  uint8_t aExtraHead[260] = {};
  uint8_t aExtraBody[500] = {};
};
#pragma pack(pop)

static_assert(sizeof(CEffectData) == 106);
static_assert(offsetof(CEffectData, iEffectKind) == 0);
static_assert(offsetof(CEffectData, aEffectText) == 4);
static_assert(offsetof(CEffectData, iLength) == 44);
static_assert(offsetof(CEffectData, iKeyGroupCount) == 52);
static_assert(offsetof(CEffectData, aEffectParams) == 56);
static_assert(offsetof(CEffectData, aEffectBytes) == 76);
static_assert(offsetof(CEffectData, iEffectParam) == 96);
static_assert(offsetof(CEffectData, aEffectFlags) == 100);
static_assert(offsetof(CEffectData, cExtraFollows) == 104);
static_assert(offsetof(CEffectData, cEffectByte) == 105);
static_assert(sizeof(CEffectExtra) == 760);
static_assert(offsetof(CEffectExtra, aExtraBody) == 260);
