#include "timeline/SortDataList.h"

#include <utility>
#include <vector>

#include "core/DataLockGuard.h"

namespace {

// One sort entry: the key and the element's old index, so the quicksort
// moves neither the components nor the CSortData blocks.
struct SortEntry {
  int32_t iLine;
  int32_t iSpare;
  int32_t iIndex;
  int64_t iEndMs;
  int64_t iStartMs;
  int32_t aSpare[2];
};

// Entries are moved whole, through a temporary copy.
void SwapEntries(SortEntry& a, SortEntry& b) {
  const SortEntry temp = a;
  a = b;
  b = temp;
}

// Partitions a[left..right] around the key of its middle entry and returns
// where the pivot lands.
int64_t Partition(SortEntry* a, int64_t left, int64_t right) {
  SwapEntries(a[(left + right) / 2], a[left]);
  const int64_t pivot = a[left].iStartMs;
  int64_t i = left + 1;
  int64_t j = right;
  while (i <= j) {
    while (i <= right && a[i].iStartMs <= pivot) ++i;
    while (j >= left && a[j].iStartMs > pivot) --j;
    if (i < j) SwapEntries(a[i], a[j]);
  }
  SwapEntries(a[left], a[j]);
  return j;
}

// The recursive quicksort, with the larger side handled by the loop: the
// sides are disjoint, so the result is that of plain recursion, but many
// equal starts can't run the stack out.
void QuickSort(SortEntry* a, int64_t left, int64_t right) {
  while (left < right) {
    const int64_t j = Partition(a, left, right);
    if (j - left < right - j) {
      QuickSort(a, left, j - 1);
      left = j + 1;
    } else {
      QuickSort(a, j + 1, right);
      right = j - 1;
    }
  }
}

}  // namespace

int32_t CSortDataList::SortByStart(uint32_t direction) {
  m_Lead.iSortDir = static_cast<int32_t>(direction);
  m_Lead.iSortKey = kSortDataByStart;
  CDataLockGuard inner(m_InnerLock, 0);
  const int32_t count = GetCount();
  if (count < 2) return 0;
  std::vector<SortEntry> entries(static_cast<size_t>(count), SortEntry{});
  for (int32_t i = 0; i < count; ++i) {
    const CSortData* data = m_aItems.GetAt(i);
    SortEntry& entry = entries[static_cast<size_t>(i)];
    entry.iIndex = i;
    // A null slot sorts as a start of 0 and keeps its place in the result.
    if (data != nullptr) {
      entry.iLine = data->iLine;
      entry.iEndMs = data->iEndMs;
      entry.iStartMs = data->iStartMs;
    }
  }
  QuickSort(entries.data(), 0, count - 1);

  CPointerArray<CSortData> ordered;
  for (const SortEntry& entry : entries) {
    if (entry.iIndex < count) ordered.Add(m_aItems.GetAt(entry.iIndex));
  }
  m_aItems.RemoveAll();
  for (CSortData* data : ordered) m_aItems.Add(data);
  ordered.RemoveAll();
  return 0;
}
