#include "timeline/KeyGroupList.h"

bool CKeyGroupList::SetAllValues(int32_t index, float value) {
  if (index >= m_aItems.GetSize()) return false;
  m_InnerLock.Acquire(0);
  CKeyGroup* group = m_aItems.GetAt(index);
  if (group) {
    CLevelPointList& curve = group->m_Levels;
    for (int32_t i = 0; i < curve.m_aItems.GetSize(); ++i) {
      CLevelPoint* point = curve.m_aItems.GetAt(i);
      if (point) point->fValue = value;
    }
  }
  m_InnerLock.Release();
  return true;
}
