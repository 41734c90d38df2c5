#include "timeline/KeyGroupList.h"

#include "core/DataLockGuard.h"

bool CKeyGroupList::SetAllValues(int32_t index, float value) {
  if (index >= m_aItems.GetSize()) return false;
  CDataLockGuard inner(m_InnerLock, 0);
  CKeyGroup* group = m_aItems.GetAt(index);
  if (group) {
    CLevelPointList& curve = group->m_Levels;
    for (int32_t i = 0; i < curve.m_aItems.GetSize(); ++i) {
      CLevelPoint* point = curve.m_aItems.GetAt(i);
      if (point) point->fValue = value;
    }
  }
  return true;
}
