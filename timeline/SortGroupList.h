#pragma once
// CSortGroupList: the digest of a component list. One CSortDataList per line,
// in order of the line's first appearance, each sorted by start time. Views
// read it instead of walking the component list under its locks.
//
// Usage:
//   CSortGroupList groups;
//   groups.Build(&track.m_Components);   // -1 for a null list
//   for (CSortDataList* line : groups.m_aItems) ...

#include <cstdint>

#include "core/OwningList.h"
#include "timeline/SortDataList.h"

class CComponentList;

class CSortGroupList
    : public COwningList<CSortDataList, ReleaseByDestructor, NoLeadFields, NoExtraFields, false> {
 public:
  CSortGroupList() = default;
  ~CSortGroupList() override = default;

  // Rebuilds the digest under the source list's outer lock (owner code 0).
  // -1 for a null list, else 0.
  int32_t Build(CComponentList* list);

 private:
  // The group of `line`, searched from the last group to the first; null if none.
  CSortDataList* FindGroup(int32_t line);
};
