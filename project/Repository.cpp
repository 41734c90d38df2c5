#include "project/Repository.h"

#include <cstring>

#include "core/DataLockGuard.h"
#include "project/ComponentExchange.h"
#include "project/ListCopy.h"
#include "project/OwnerCodes.h"
#include "timeline/ComponentKind.h"

using namespace componentkind;
using namespace ownercode;

CRepository::~CRepository() {
  components.Clear();
}

CRepository& CRepository::CopyFrom(const CRepository& source) {
  if (&source == this) return *this;
  std::memcpy(static_cast<CRepositoryData*>(this), static_cast<const CRepositoryData*>(&source),
              sizeof(CRepositoryData));
  // Copying takes the source's list lock, which leaves it as it was.
  auto& from = const_cast<CRepository&>(source);
  ReplaceWithCopies(components, from.components, CopyOfComponent);
  return *this;
}

int32_t CRepository::RenewIds() {
  iId = CRepositoryData().iId;
  CDataLockGuard componentsLock(components.m_OuterLock, kOwnerRepositoryGetComponent);
  // Links stay as they are, unlike on a timeline.
  for (CComponent* component : components.m_aItems) {
    if (component != nullptr) component->iUniqueId = CComponentData().iUniqueId;
  }
  return 0;
}

bool CRepository::AcceptsKind(int32_t componentKind) const {
  switch (iRepositoryKind) {
    case repositorykind::kRepositoryAny:
      return true;
    case repositorykind::kRepositoryMedia:
      return componentKind == kKindPicture || componentKind == kKindAudio ||
             componentKind == kKindVideoItem || componentKind == kKindKeyedVideo;
    case repositorykind::kRepositoryEffects:
      return componentKind == kKindEffect;
    case repositorykind::kRepositoryDmxPresets:
      return componentKind == kKindDmx;
    default:
      return false;
  }
}

int32_t CRepository::SetComponent(CComponent* source) {
  return ExchangeComponent(components, source, ExchangeDirection::kIntoList,
                           kOwnerRepositorySetComponent);
}

int32_t CRepository::GetComponent(CComponent* target) {
  return ExchangeComponent(components, target, ExchangeDirection::kOutOfList,
                           kOwnerRepositoryGetComponent);
}

int32_t CRepository::SetComponents(CComponentList* sources) {
  return ExchangeComponents(components, sources, ExchangeDirection::kIntoList,
                            kOwnerRepositorySetComponentsList, kOwnerRepositorySetComponents);
}

int32_t CRepository::GetComponents(CComponentList* targets) {
  return ExchangeComponents(components, targets, ExchangeDirection::kOutOfList,
                            kOwnerRepositoryGetComponentsList, kOwnerRepositoryGetComponents);
}

int32_t CRepository::ReservedHook(uint32_t) {
  return 0;
}
