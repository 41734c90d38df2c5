#pragma once
// The effects of one component.

#include <cstdint>

#include "core/OwningList.h"
#include "timeline/Effect.h"

class CEffectList : public COwningList<CEffect> {
 public:
  // 0: deletes every effect. Non-zero: keeps the effects of kinds 12 and 13
  // in their order and deletes the others. m_iModCount rises once either way.
  void Clear(uint32_t bKeepSpecial = 0);

  // First effect of this kind, or null.
  CEffect* FindByKind(int32_t kind);
};
