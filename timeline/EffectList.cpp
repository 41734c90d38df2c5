#include "timeline/EffectList.h"

#include "core/DataLockGuard.h"

namespace {
// The two effect kinds that a selective Clear leaves in the list.
constexpr int32_t kEffectKindKeptA = 12;
constexpr int32_t kEffectKindKeptB = 13;
}  // namespace

CEffect* CEffectList::FindByKind(int32_t kind) {
  m_InnerLock.Acquire(0);
  CEffect* found = nullptr;
  for (int32_t i = 0; i < m_aItems.GetSize() && !found; ++i) {
    CEffect* effect = m_aItems.GetAt(i);
    if (effect && effect->iEffectKind == kind) found = effect;
  }
  m_InnerLock.Release();
  return found;
}

void CEffectList::Clear(uint32_t bKeepSpecial) {
  if (bKeepSpecial == 0) {
    COwningList::Clear();
    return;
  }
  ClearExcept([](const CEffect& effect) {
    return effect.iEffectKind == kEffectKindKeptA || effect.iEffectKind == kEffectKindKeptB;
  });
}
