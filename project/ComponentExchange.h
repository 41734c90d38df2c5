#pragma once
// How a track and a repository exchange components with a caller: matched by
// iUniqueId, copied whole with CComponent::CopyFrom, under the owner codes
// that each caller names.

#include <cstdint>

#include "timeline/ComponentList.h"

// Which way a copy goes.
enum class ExchangeDirection { kIntoList, kOutOfList };

// Under the m_OuterLock of `components` (ownerCode): every component with
// the id of `other` takes other's contents (kIntoList), or gives its own to
// other (kOutOfList). -1 for a null other, else 0.
int32_t ExchangeComponent(CComponentList& components, CComponent* other,
                          ExchangeDirection direction, int32_t ownerCode);

// The same for every element of `others`: its m_OuterLock first
// (othersOwnerCode), then, if it holds anything, that of `components`
// (componentsOwnerCode). -1 for a null list, else 0.
int32_t ExchangeComponents(CComponentList& components, CComponentList* others,
                           ExchangeDirection direction, int32_t othersOwnerCode,
                           int32_t componentsOwnerCode);

// A deep copy of one component, identity included.
CComponent* CopyOfComponent(CComponent& source);
