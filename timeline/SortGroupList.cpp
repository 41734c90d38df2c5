#include "timeline/SortGroupList.h"

#include "core/DataLockGuard.h"
#include "timeline/ComponentList.h"

CSortDataList* CSortGroupList::FindGroup(int32_t line) {
  for (int32_t index = GetCount() - 1; index >= 0; --index) {
    CSortDataList* group = m_aItems.GetAt(index);
    if (group != nullptr && group->m_Lead.iLine == line) return group;
  }
  return nullptr;
}

int32_t CSortGroupList::Build(CComponentList* list) {
  if (list == nullptr) return -1;
  Clear();
  CDataLockGuard listOuter(list->m_OuterLock, 0);
  for (int32_t index = 0; index < list->GetCount(); ++index) {
    const CComponent* component = list->m_aItems.GetAt(index);
    if (component == nullptr) continue;  // a slot left by a failed load
    CSortDataList* group = FindGroup(component->iLine);
    if (group == nullptr) {
      group = new CSortDataList;
      group->m_Lead.iLine = component->iLine;
      group->m_Lead.iKind = component->iKind;
      group->m_Lead.iSortKey = kSortDataByStart;
      Add(group);
    }
    group->Add(new CSortData(*component, index));
  }
  for (CSortDataList* group : m_aItems) group->SortByStart(0);
  return 0;
}
