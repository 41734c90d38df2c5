// CComponentList::Sort: a selection sort that moves each smallest element to
// a holder list. It is quadratic, and stable because the first of equal
// elements stays the candidate.

#include <cstddef>

#include "core/DataLockGuard.h"
#include "timeline/ComponentList.h"

namespace {

// Case-insensitive comparison that folds ASCII to lower case, as the sort
// texts were always compared. Stops at the field's end even without a
// terminator, so a record loaded with an unterminated text compares defined.
inline int FoldLower(char c) {
  const int u = static_cast<unsigned char>(c);
  return (u >= 'A' && u <= 'Z') ? u + ('a' - 'A') : u;
}

template <size_t N>
int CompareText(const char (&a)[N], const char (&b)[N]) {
  for (size_t i = 0; i < N; ++i) {
    const int ca = FoldLower(a[i]);
    const int cb = FoldLower(b[i]);
    if (ca != cb) return ca - cb;
    if (ca == 0) return 0;
  }
  return 0;
}

// "Candidate is greater than element" for each key.
struct ByPath {
  static bool Greater(const CComponent& c, const CComponent& e) {
    return CompareText(c.szPath, e.szPath) >= 1;
  }
};
struct ByLabel {
  static bool Greater(const CComponent& c, const CComponent& e) {
    return CompareText(c.szLabel, e.szLabel) >= 1;
  }
};
struct ByKind {
  static bool Greater(const CComponent& c, const CComponent& e) { return c.iKind > e.iKind; }
};
struct ById {
  static bool Greater(const CComponent& c, const CComponent& e) {
    return c.iUniqueId > e.iUniqueId;
  }
};
struct ByStart {
  static bool Greater(const CComponent& c, const CComponent& e) { return c.dStart > e.dStart; }
};
struct ByEnd {
  static bool Greater(const CComponent& c, const CComponent& e) { return c.dEnd > e.dEnd; }
};
struct BySourceLength {
  static bool Greater(const CComponent& c, const CComponent& e) {
    return c.dSourceLength > e.dSourceLength;
  }
};
struct BySortText {
  static bool Greater(const CComponent& c, const CComponent& e) {
    return CompareText(c.szSortText, e.szSortText) > 0;
  }
};
// Any other key: nothing is ever greater, and the order is rebuilt unchanged.
struct ByNothing {
  static bool Greater(const CComponent&, const CComponent&) { return false; }
};

// Index of the first smallest element of items[0..count). A null slot (left
// by a failed allocation while loading) never compares greater and never
// replaces the candidate, so it travels with its neighbours.
template <class Key>
int32_t FirstSmallest(CComponent* const* items, int32_t count) {
  int32_t candidate = 0;
  for (int32_t index = 0; index < count; ++index) {
    const CComponent* c = items[candidate];
    const CComponent* e = items[index];
    if (c != nullptr && e != nullptr && Key::Greater(*c, *e)) candidate = index;
  }
  return candidate;
}

// Moves the elements of `items` into `holder`, smallest first.
template <class Key>
void SelectInto(CPointerArray<CComponent>& items, CPointerArray<CComponent>& holder) {
  while (items.GetSize() > 0) {
    const int32_t candidate = FirstSmallest<Key>(items.begin(), items.GetSize());
    holder.Add(items.GetAt(candidate));
    items.RemoveAt(candidate);
  }
}

void SelectByKey(uint32_t key, CPointerArray<CComponent>& items,
                 CPointerArray<CComponent>& holder) {
  switch (key) {
    case kSortByPath:
      return SelectInto<ByPath>(items, holder);
    case kSortByLabel:
      return SelectInto<ByLabel>(items, holder);
    case kSortByKind:
      return SelectInto<ByKind>(items, holder);
    case kSortById:
      return SelectInto<ById>(items, holder);
    case kSortByStart:
      return SelectInto<ByStart>(items, holder);
    case kSortByEnd:
      return SelectInto<ByEnd>(items, holder);
    case kSortBySourceLength:
      return SelectInto<BySourceLength>(items, holder);
    case kSortBySortText:
      return SelectInto<BySortText>(items, holder);
    default:
      return SelectInto<ByNothing>(items, holder);
  }
}

}  // namespace

int32_t CComponentList::Sort(uint32_t key, uint32_t direction) {
  m_Extra.iSortKey = static_cast<int32_t>(key);
  m_Extra.iSortDir = static_cast<int32_t>(direction);
  CPointerArray<CComponent> holder;
  CDataLockGuard inner(m_InnerLock, 0);
  SelectByKey(key, m_aItems, holder);
  m_aItems.RemoveAll();
  for (CComponent* component : holder) m_aItems.Add(component);
  holder.RemoveAll();
  return 0;
}
