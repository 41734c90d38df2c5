#include "timeline/ComponentList.h"

#include "core/DataLockGuard.h"
#include "time/TimeMath.h"

int32_t CComponentList::InsertAt(CComponent* component, int32_t index) {
  if (index < 0) return -1;
  CDataLockGuard inner(m_InnerLock, 0);
  if (index <= GetCount()) {
    m_aItems.InsertAt(index, component);
    RaiseModCount();
    return 0;
  }
  // Past the end: the lock is taken again where it should be released. The
  // lock isn't re-entrant, so this waits until another thread releases it;
  // the call then gives -1 and its guard releases the lock on the way out.
  m_InnerLock.Acquire(0);
  return -1;
}

int32_t CComponentList::Detach(int32_t index) {
  CDataLockGuard inner(m_InnerLock, 0);
  if (index >= GetCount()) return -1;
  m_aItems.RemoveAt(index);
  return 0;
}

CComponent* CComponentList::FindById(int64_t id) {
  CDataLockGuard inner(m_InnerLock, 0);
  CComponent* found = nullptr;
  for (CComponent* component : m_aItems) {
    if (component != nullptr && component->iUniqueId == id) {
      found = component;
      break;
    }
  }
  return found;
}

int32_t CComponentList::RemoveById(int64_t id, uint8_t bWithLinks) {
  CDataLockGuard inner(m_InnerLock, 0);
  int64_t link = 0;
  int32_t index = 0;
  while (index < GetCount()) {
    CComponent* component = m_aItems.GetAt(index);
    const bool matches = component != nullptr && (component->iUniqueId == id ||
                                                  (bWithLinks != 0 && component->iLinkId == id));
    if (!matches) {
      ++index;
      continue;
    }
    if (component->iLinkId != 0) link = component->iLinkId;
    m_aItems.RemoveAt(index);
    delete component;
    RaiseModCount();
  }
  if (bWithLinks != 0 && link != 0) {
    // A removed child takes its parent with it.
    index = 0;
    while (index < GetCount()) {
      CComponent* component = m_aItems.GetAt(index);
      if (component == nullptr || component->iUniqueId != link) {
        ++index;
        continue;
      }
      m_aItems.RemoveAt(index);
      delete component;
      RaiseModCount();
    }
  }
  return 0;
}

int32_t CComponentList::GetMaxIdWord() {
  CDataLockGuard inner(m_InnerLock, 0);
  int32_t running = 0;
  for (const CComponent* component : m_aItems) {
    // Only the low word is kept, so the comparison forgets the high half.
    if (component != nullptr && component->iUniqueId >= static_cast<int64_t>(running)) {
      running = static_cast<int32_t>(static_cast<uint32_t>(component->iUniqueId));
    }
  }
  return running;
}

int32_t CComponentList::GetTimeExtent(int64_t* out, int64_t low, int64_t high) {
  if (out == nullptr) return -1;
  CDataLockGuard inner(m_InnerLock, 0);
  bool first = true;
  for (const CComponent* component : m_aItems) {
    if (component == nullptr) continue;
    if (first) {
      out[0] = timemath::TruncToI64(component->dStart);
      out[1] = timemath::TruncToI64(component->dEnd);
      first = false;
      continue;
    }
    if (static_cast<double>(out[0]) > component->dStart) {
      out[0] = timemath::TruncToI64(component->dStart);
    }
    if (component->dEnd > static_cast<double>(out[1]))
      out[1] = timemath::TruncToI64(component->dEnd);
  }
  if (low != high) {
    if (out[0] > low) out[0] = low;
    if (out[1] < high) out[1] = high;
  }
  return 0;
}

int32_t CComponentList::ReservedOp(int32_t /*argA*/, int32_t /*argB*/) {
  return 0;
}
