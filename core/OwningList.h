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
// Loading from a damaged or hostile stream: Load creates one element per
// counted record and keeps defaults for records that fail, but once the
// stream reports its end, or an element's Load leaves it where it stood (a
// position the 32-bit helpers can't reach), it adds at most
// kMaxElementsPastEnd more such elements and stops, so a count field
// claiming billions can't exhaust memory.

#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <new>
#include <type_traits>

#include "core/DataLock.h"
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
  // Elements a Load still adds after the stream reported its end.
  static constexpr int32_t kMaxElementsPastEnd = 1024;

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
    m_InnerLock.Acquire(0);
    m_aItems.Add(element);
    RaiseModCount();
    m_InnerLock.Release();
    return 0;
  }

  // Null at or above the count. A negative index reaches the array's bounds
  // check and throws std::out_of_range with the inner lock still held.
  T* GetAt(int32_t index) {
    m_InnerLock.Acquire(0);
    if (index >= GetCount()) {
      m_InnerLock.Release();
      return nullptr;
    }
    T* element = m_aItems.GetAt(index);
    m_InnerLock.Release();
    return element;
  }

  // False at or above the count. The element is deleted after the lock is
  // released, so its destructor may take further locks. Leaves m_iModCount.
  bool RemoveAt(int32_t index) {
    m_InnerLock.Acquire(0);
    if (index >= GetCount()) {
      m_InnerLock.Release();
      return false;
    }
    T* element = m_aItems.GetAt(index);
    m_aItems.RemoveAt(index);
    m_InnerLock.Release();
    if (element != nullptr) Release::Release(element);
    return true;
  }

  // Inserts at `index` (past the end: the gap is null slots) and takes ownership.
  void InsertAt(int32_t index, T* element) {
    m_InnerLock.Acquire(0);
    m_aItems.InsertAt(index, element);
    RaiseModCount();
    m_InnerLock.Release();
  }

  // Sorted insertion: a linear scan puts `element` in front of the first
  // non-null element for which goesBefore(*element, *existing) holds, or at
  // the end. m_iModCount rises after the release. Returns the index used.
  template <class GoesBefore>
  int32_t InsertOrdered(T* element, GoesBefore goesBefore) {
    m_InnerLock.Acquire(0);
    int32_t index = 0;
    const int32_t count = GetCount();
    while (index < count) {
      const T* existing = m_aItems.GetAt(index);
      if (existing != nullptr && goesBefore(*element, *existing)) break;
      ++index;
    }
    m_aItems.InsertAt(index, element);
    m_InnerLock.Release();
    RaiseModCount();
    return index;
  }

  // Deletes every element and empties the array; m_iModCount rises after
  // the release even when there was nothing to clear.
  void Clear() {
    m_InnerLock.Acquire(0);
    for (T* element : m_aItems) {
      if (element != nullptr) Release::Release(element);
    }
    if (GetCount() > 0) m_aItems.RemoveAll();
    m_InnerLock.Release();
    RaiseModCount();
  }

  // Selective clear: walks from index 0, keeps elements for which keep()
  // holds in their order, deletes the rest (null slots go too); the count is
  // read afresh on each step. m_iModCount rises once, after the release.
  template <class Keep>
  void ClearExcept(Keep keep) {
    m_InnerLock.Acquire(0);
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
    m_InnerLock.Release();
    RaiseModCount();
  }

  // Replaces the contents with `count` elements read from `stream`. A record
  // that fails to read stays as an element with its constructor defaults.
  // Any exception ends the loop and keeps what was loaded. Always 0.
  int32_t Load(FILE* stream, int32_t count) {
    Clear();
    m_InnerLock.Acquire(0);
    try {
      int32_t pastEnd = 0;
      for (int32_t i = 0; i < count && pastEnd < kMaxElementsPastEnd; ++i) {
        const off_t before = Position(stream);
        AddLoaded(stream);
        if (AtEnd(stream) || Position(stream) == before) ++pastEnd;
      }
    } catch (...) {
      // Loading stops; the elements read so far stay.
    }
    RaiseModCount();
    m_InnerLock.Release();
    return 0;
  }

  // Saves each non-null element in list order; their results are ignored. Always 0.
  int32_t Save(FILE* stream) {
    m_InnerLock.Acquire(0);
    for (T* element : m_aItems) {
      if (element != nullptr) element->Save(stream);
    }
    m_InnerLock.Release();
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
  // One element read from the stream and appended; if reading or appending
  // throws, the element is released before the exception goes on.
  void AddLoaded(FILE* stream) {
    T* element = new T;
    try {
      element->Load(stream);
      m_aItems.Add(element);
    } catch (...) {
      Release::Release(element);
      throw;
    }
  }

  static bool AtEnd(FILE* stream) {
    return stream == nullptr || std::feof(stream) != 0 || std::ferror(stream) != 0;
  }
  // Where the stream stands; -1 for none. A record that reads anything moves it.
  static off_t Position(FILE* stream) { return stream == nullptr ? -1 : ftello(stream); }
};
