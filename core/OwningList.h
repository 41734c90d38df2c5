#pragma once
// COwningList: the one pattern behind every collection of the data model.
//
// A list owns its elements (deleting the list deletes them) and is safe to
// call from several threads: each operation takes m_InnerLock with owner
// code 0 for its own duration. m_OuterLock is never touched by the list; outer
// code takes it with its own owner code for work spanning several calls and
// may then read m_aItems directly. Order within one list: outer, then inner.
// CDataLock is not re-entrant, so no operation calls another locking
// operation of the same list while it holds the inner lock.
//
// Parameters:
//   T             element class; Load/Save need `int32_t Load(FILE*)` and
//                 `int32_t Save(FILE*)` on it (only when those are used).
//   Release       how an element is freed: ReleaseByDestructor (virtual
//                 destructor through delete) or ReleaseStorageOnly (plain
//                 operator delete, no destructor call).
//   LeadFields    fields of the concrete list in front of m_aItems.
//   ExtraFields   fields between m_iModCount and m_OuterLock.
//   kCountsChanges  false: the list has no m_iModCount at all.
//
// Member order: CObject base, m_Lead, m_aItems, m_iModCount, m_Extra,
// m_OuterLock, m_InnerLock. Empty field groups take no room.
//
// Examples:
//   class CMarkerPointList : public COwningList<CMarkerPoint> { ... };
//   struct SortState { int32_t iSortKey = -1; int32_t iSortDir = 0; };
//   class CComponentList
//       : public COwningList<CComponent, ReleaseByDestructor, NoLeadFields, SortState> {};
//
// Every operation holds its lock through CDataLockGuard, so an exception
// (a negative index reaching the array's bounds check) leaves it free.
//
// Loading from a damaged or hostile stream: Load creates one element per
// counted record and keeps defaults for records that fail, but a run of
// kMaxFailedReads failed element reads in a row, or more failed reads than
// kMaxFailedReads beyond the good ones, ends the load as an exception would.
// Default elements are thus bounded by what the stream's bytes back, whatever
// the count field claims and however refused records are laid out.

#include <cstdint>
#include <cstdio>
#include <new>
#include <type_traits>

#include "core/DataLock.h"
#include "core/DataLockGuard.h"
#include "core/Object.h"
#include "core/PointerArray.h"

struct ReleaseByDestructor {
  template <class T>
  static void Release(T* element) {
    delete element;
  }
};

// For plain blocks allocated with new: storage goes back, no destructor runs.
struct ReleaseStorageOnly {
  template <class T>
  static void Release(T* element) {
    ::operator delete(static_cast<void*>(element));
  }
};

struct NoLeadFields {};
struct NoExtraFields {};
struct NoModCount {};

template <class T, class Release = ReleaseByDestructor, class LeadFields = NoLeadFields,
          class ExtraFields = NoExtraFields, bool kCountsChanges = true>
class COwningList : public CObject {
 public:
  using Element = T;
  // Failed element reads in a row (and beyond the good ones) that end a Load.
  static constexpr int32_t kMaxFailedReads = 1024;

  COwningList() = default;
  COwningList(const COwningList&) = delete;
  COwningList& operator=(const COwningList&) = delete;
  // Clears, then the members go in reverse order: inner lock, outer lock, array.
  ~COwningList() override { Clear(); }

  // The element count; no lock, so it may be stale by the time it is used.
  int32_t GetCount() const { return m_aItems.GetSize(); }

  int32_t GetModCount() const requires kCountsChanges { return m_iModCount; }

  // Appends and takes ownership. Always 0.
  int32_t Add(T* element) {
    CDataLockGuard inner(m_InnerLock, 0);
    m_aItems.Add(element);
    RaiseModCount();
    return 0;
  }

  // Null at or above the count. A negative index reaches the array's bounds
  // check and throws std::out_of_range; the guard frees the lock.
  T* GetAt(int32_t index) {
    CDataLockGuard inner(m_InnerLock, 0);
    if (index >= GetCount()) return nullptr;
    return m_aItems.GetAt(index);
  }

  // False at or above the count. The element is deleted after the lock is
  // released, so its destructor may take further locks. Leaves m_iModCount.
  bool RemoveAt(int32_t index) {
    CDataLockGuard inner(m_InnerLock, 0);
    if (index >= GetCount()) return false;
    T* element = m_aItems.GetAt(index);
    m_aItems.RemoveAt(index);
    inner.Unlock();
    if (element != nullptr) Release::Release(element);
    return true;
  }

  // Inserts at `index` (past the end: the gap is null slots) and takes ownership.
  void InsertAt(int32_t index, T* element) {
    CDataLockGuard inner(m_InnerLock, 0);
    m_aItems.InsertAt(index, element);
    RaiseModCount();
  }

  // Sorted insertion: a linear scan puts `element` in front of the first
  // non-null element for which goesBefore(*element, *existing) holds, or at
  // the end. m_iModCount rises after the release. Returns the index used.
  template <class GoesBefore>
  int32_t InsertOrdered(T* element, GoesBefore goesBefore) {
    CDataLockGuard inner(m_InnerLock, 0);
    int32_t index = 0;
    const int32_t count = GetCount();
    while (index < count) {
      const T* existing = m_aItems.GetAt(index);
      if (existing != nullptr && goesBefore(*element, *existing)) break;
      ++index;
    }
    m_aItems.InsertAt(index, element);
    inner.Unlock();
    RaiseModCount();
    return index;
  }

  // Deletes every element and empties the array; m_iModCount rises after
  // the release even when there was nothing to clear.
  void Clear() {
    CDataLockGuard inner(m_InnerLock, 0);
    for (T* element : m_aItems) {
      if (element != nullptr) Release::Release(element);
    }
    if (GetCount() > 0) m_aItems.RemoveAll();
    inner.Unlock();
    RaiseModCount();
  }

  // Selective clear: walks from index 0, keeps elements for which keep()
  // holds in their order, deletes the rest (null slots go too); the count is
  // read afresh on each step. m_iModCount rises once, after the release.
  template <class Keep>
  void ClearExcept(Keep keep) {
    CDataLockGuard inner(m_InnerLock, 0);
    int32_t index = 0;
    while (index < GetCount()) {
      T* element = m_aItems.GetAt(index);
      if (element != nullptr && keep(*element)) {
        ++index;
        continue;
      }
      m_aItems.RemoveAt(index);
      if (element != nullptr) Release::Release(element);
    }
    inner.Unlock();
    RaiseModCount();
  }

  // Replaces the contents with `count` elements read from `stream`. A record
  // that fails to read stays as an element with its constructor defaults.
  // Any exception, or too many failed reads (see the top), ends the loop and
  // keeps what was loaded. Always 0.
  int32_t Load(FILE* stream, int32_t count) {
    Clear();
    CDataLockGuard inner(m_InnerLock, 0);
    try {
      FailedReads failed;
      for (int32_t i = 0; i < count && !failed.Exhausted(); ++i) failed.Count(AddLoaded(stream));
    } catch (...) {
      // Loading stops; the elements read so far stay.
    }
    RaiseModCount();
    return 0;
  }

  // Saves each non-null element in list order; their results are ignored. Always 0.
  int32_t Save(FILE* stream) {
    CDataLockGuard inner(m_InnerLock, 0);
    for (T* element : m_aItems) {
      if (element != nullptr) element->Save(stream);
    }
    return 0;
  }

  [[no_unique_address]] LeadFields m_Lead{};
  CPointerArray<T> m_aItems;
  [[no_unique_address]] std::conditional_t<kCountsChanges, int32_t, NoModCount> m_iModCount{};
  [[no_unique_address]] ExtraFields m_Extra{};
  CDataLock m_OuterLock;
  CDataLock m_InnerLock;

 protected:
  // Raises the change counter; it only grows and wraps silently.
  void RaiseModCount() {
    if constexpr (kCountsChanges) {
      m_iModCount = static_cast<int32_t>(static_cast<uint32_t>(m_iModCount) + 1u);
    }
  }

 private:
  // The tally of a Load: failed element reads in a row and in all, against
  // the good ones. A refused record costs the stream as little as its size
  // word, a default element far more, so failures may only outrun the good
  // reads by kMaxFailedReads.
  class FailedReads {
   public:
    void Count(bool bGood) {
      if (bGood) {
        ++m_iGood;
        m_iInARow = 0;
      } else {
        ++m_iInARow;
        ++m_iFailed;
      }
    }
    bool Exhausted() const {
      return m_iInARow >= kMaxFailedReads || m_iFailed - m_iGood > kMaxFailedReads;
    }

   private:
    int64_t m_iGood = 0;
    int64_t m_iFailed = 0;
    int32_t m_iInARow = 0;
  };

  // One element read from the stream and appended, whatever its result; true
  // when its Load succeeded. If reading or appending throws, the element is
  // released before the exception goes on.
  bool AddLoaded(FILE* stream) {
    T* element = new T;
    try {
      const int32_t result = element->Load(stream);
      m_aItems.Add(element);
      return result == 0;
    } catch (...) {
      Release::Release(element);
      throw;
    }
  }
};
