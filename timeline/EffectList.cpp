#include "timeline/EffectList.h"

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
  ClearExcept(
      [](const CEffect& effect) { return effect.iEffectKind == 12 || effect.iEffectKind == 13; });
}
