#pragma once
// One effect applied to a component: its record, its key groups and a plain
// block of 760 bytes that travels with it.

#include <cstdint>
#include <cstdio>

#include "core/DataLock.h"
#include "core/Object.h"
#include "timeline/EffectData.h"
#include "timeline/KeyGroupList.h"

class CEffect : public CObject, public CEffectData {
 public:
  CEffect() = default;

  // The point at which a derived effect plugs in; this one does nothing.
  virtual int32_t EffectHook(int32_t a, int32_t b);

  // -1 and no change for 0; otherwise stores iLength.
  int32_t SetLength(int64_t length);
  // A new key group whose curve runs from (0, startValue) to
  // (iLength, endValue). The new group count, or -1 for a null name.
  int32_t AddKeyGroup(const char* name, float a, float b, float startValue, float endValue);

  // Record bytes, the block, the runtime byte and deep copies of the groups.
  CEffect& CopyFrom(CEffect& source);

  // The record (key group count filled, cExtraFollows 1, cEffectByte 0), the
  // 760-byte block, then the key groups.
  int32_t Save(FILE* stream);
  // Reads the block only where the record says it follows.
  int32_t Load(FILE* stream);

  uint8_t cRuntime = 0;  // cloned, otherwise unread
  CDataLock m_Lock;      // constructed and destroyed, otherwise unused
  CKeyGroupList m_KeyGroups;
  CEffectExtra m_Extra;
};
