#include "project/ComponentExchange.h"

#include "core/DataLockGuard.h"

namespace {

// Copies between every component of `components` with other's id and other.
// The caller holds the m_OuterLock of `components`.
void ExchangeMatches(CComponentList& components, CComponent& other, ExchangeDirection direction) {
  for (CComponent* component : components.m_aItems) {
    if (component == nullptr || component->iUniqueId != other.iUniqueId) continue;
    if (direction == ExchangeDirection::kIntoList) {
      component->CopyFrom(other);
    } else {
      other.CopyFrom(*component);
    }
  }
}

}  // namespace

int32_t ExchangeComponent(CComponentList& components, CComponent* other,
                          ExchangeDirection direction, int32_t ownerCode) {
  if (other == nullptr) return -1;
  CDataLockGuard componentsLock(components.m_OuterLock, ownerCode);
  ExchangeMatches(components, *other, direction);
  return 0;
}

int32_t ExchangeComponents(CComponentList& components, CComponentList* others,
                           ExchangeDirection direction, int32_t othersOwnerCode,
                           int32_t componentsOwnerCode) {
  if (others == nullptr) return -1;
  // Order: the caller's list, then this one's.
  CDataLockGuard othersLock(others->m_OuterLock, othersOwnerCode);
  if (others->GetCount() == 0) return 0;
  CDataLockGuard componentsLock(components.m_OuterLock, componentsOwnerCode);
  for (CComponent* other : others->m_aItems) {
    if (other != nullptr) ExchangeMatches(components, *other, direction);
  }
  return 0;
}

CComponent* CopyOfComponent(CComponent& source) {
  auto* copy = new CComponent;
  copy->CopyFrom(source);
  return copy;
}
