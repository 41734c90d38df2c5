// CComponentList::Sort: a selection sort that moves each smallest element to
// a holder list. It is quadratic, and stable because the first of equal
// elements stays the candidate.

#include <cctype>
#include <cstddef>

#include "timeline/ComponentList.h"

namespace {

// Case-insensitive comparison that folds to lower case, as the sort texts
// were always compared. Stops at the field's end even without a terminator,
// so a record loaded with an unterminated text still compares defined.
int CompareNoCase(const char* a, const char* b, size_t capacity) {
  for (size_t i = 0; i < capacity; ++i) {
    const int ca = std::tolower(static_cast<unsigned char>(a[i]));
    const int cb = std::tolower(static_cast<unsigned char>(b[i]));
    if (ca != cb) return ca - cb;
    if (ca == 0) return 0;
  }
  return 0;
}

template <size_t N>
int CompareText(const char (&a)[N], const char (&b)[N]) {
  return CompareNoCase(a, b, N);
}

// True when the candidate must give way to the element for this key.
bool IsGreater(uint32_t key, const CComponent& candidate, const CComponent& element) {
  switch (key) {
    case kSortByPath:
      return CompareText(candidate.szPath, element.szPath) >= 1;
    case kSortByLabel:
      return CompareText(candidate.szLabel, element.szLabel) >= 1;
    case kSortByKind:
      return candidate.iKind > element.iKind;
    case kSortById:
      return candidate.iUniqueId > element.iUniqueId;
    case kSortByStart:
      return candidate.dStart > element.dStart;
    case kSortByEnd:
      return candidate.dEnd > element.dEnd;
    case kSortBySourceLength:
      return candidate.dSourceLength > element.dSourceLength;
    case kSortBySortText:
      return CompareText(candidate.szSortText, element.szSortText) > 0;
    default:
      return false;
  }
}

// A null slot (left by a failed allocation while loading) never compares greater
// and never replaces the candidate, so it travels with its neighbours.
bool IsGreaterSlot(uint32_t key, const CComponent* candidate, const CComponent* element) {
  if (candidate == nullptr || element == nullptr) return false;
  return IsGreater(key, *candidate, *element);
}

}  // namespace

int32_t CComponentList::Sort(uint32_t key, uint32_t direction) {
  m_Extra.iSortKey = static_cast<int32_t>(key);
  m_Extra.iSortDir = static_cast<int32_t>(direction);
  CPointerArray<CComponent> holder;
  m_InnerLock.Acquire(0);
  while (GetCount() > 0) {
    int32_t candidate = 0;
    const int32_t count = GetCount();
    for (int32_t index = 0; index < count; ++index) {
      if (IsGreaterSlot(key, m_aItems.GetAt(candidate), m_aItems.GetAt(index))) candidate = index;
    }
    holder.Add(m_aItems.GetAt(candidate));
    m_aItems.RemoveAt(candidate);
  }
  m_aItems.RemoveAll();
  for (CComponent* component : holder) m_aItems.Add(component);
  holder.RemoveAll();
  m_InnerLock.Release();
  return 0;
}
