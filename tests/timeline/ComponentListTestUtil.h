#pragma once
// Helpers shared by the component list tests: components with a few fields
// set, and the ids of a list in order.

#include <cstdint>
#include <vector>

#include "timeline/ComponentList.h"

inline CComponent* NewComponent(int32_t kind, double start = 0.0, double end = 0.0) {
  CComponent* component = new CComponent;
  component->iKind = kind;
  component->dStart = start;
  component->dEnd = end;
  return component;
}

// A child of `parent` as ExpandStreams would link it.
inline CComponent* NewChild(const CComponent& parent, int32_t kind = 2) {
  CComponent* child = NewComponent(kind);
  child->iLinkId = parent.iUniqueId;
  return child;
}

inline std::vector<int64_t> Ids(CComponentList& list) {
  std::vector<int64_t> ids;
  for (CComponent* component : list.m_aItems) ids.push_back(component ? component->iUniqueId : 0);
  return ids;
}

inline std::vector<const CComponent*> Order(CComponentList& list) {
  return {list.m_aItems.begin(), list.m_aItems.end()};
}
