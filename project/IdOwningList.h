#pragma once
// CIdOwningList<T>: the owning list of tracks, timelines and repositories,
// whose elements carry a 64-bit iId. Beyond the common list it inserts at an
// index with a bounds test and finds, measures and removes elements by id.
// Every operation takes m_InnerLock with owner code 0 for its own duration.

#include <cstdint>

#include "core/DataLockGuard.h"
#include "core/OwningList.h"

template <class T>
class CIdOwningList : public COwningList<T> {
 public:
  // Inserts in front of index (index == count appends) and raises
  // m_iModCount: 0. An index below 0 or above the count: -1, nothing changes.
  int32_t InsertAt(T* element, int32_t index) {
    CDataLockGuard inner(this->m_InnerLock, 0);
    if (index < 0 || index > this->GetCount()) return -1;
    this->m_aItems.InsertAt(index, element);
    this->RaiseModCount();
    return 0;
  }

  // The largest iId, compared as a signed 64-bit number, returned as its low
  // 32 bits; 0 for a list without elements.
  int32_t GetMaxId() {
    CDataLockGuard inner(this->m_InnerLock, 0);
    bool seen = false;
    int64_t largest = 0;
    for (T* element : this->m_aItems) {
      if (element == nullptr) continue;
      if (!seen || element->iId > largest) largest = element->iId;
      seen = true;
    }
    return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(largest)));
  }

  // The first element whose iId equals id widened with its sign, or null.
  T* FindById(int32_t id) {
    CDataLockGuard inner(this->m_InnerLock, 0);
    const int32_t index = IndexOf(static_cast<int64_t>(id));
    return index < 0 ? nullptr : this->m_aItems.GetAt(index);
  }

  // Removes and deletes the first element with the id made of the two words
  // and raises m_iModCount; nothing when there is none. Always 0.
  int32_t RemoveById(uint32_t idLow, uint32_t idHigh) {
    const int64_t id = static_cast<int64_t>((static_cast<uint64_t>(idHigh) << 32) | idLow);
    T* removed = nullptr;
    {
      CDataLockGuard inner(this->m_InnerLock, 0);
      const int32_t index = IndexOf(id);
      if (index < 0) return 0;
      removed = this->m_aItems.GetAt(index);
      this->m_aItems.RemoveAt(index);
      this->RaiseModCount();
    }
    delete removed;  // outside the lock: the destructor takes locks of its own
    return 0;
  }

 protected:
  // Index of the first element with this id, or -1; the caller holds the lock.
  int32_t IndexOf(int64_t id) const {
    for (int32_t i = 0; i < this->m_aItems.GetSize(); ++i) {
      const T* element = this->m_aItems.GetAt(i);
      if (element != nullptr && element->iId == id) return i;
    }
    return -1;
  }
};
