#pragma once
// CSortDataList: one group of a component list's digest, the summaries of
// the components of one line, sorted by start time. It owns its CSortData
// blocks and releases them with plain operator delete; it keeps no change
// counter.

#include <cstdint>

#include "core/OwningList.h"
#include "timeline/SortData.h"

// The fields a sort data list keeps in front of its array.
struct SortDataListHead {
  int32_t iLine = 0;      // the line of this group
  int32_t iKind = 0;      // kind of the group's first component, set by Build
  int32_t iSortKey = -1;  // 8 once sorted by start
  int32_t iSortDir = 0;   // stored only
};

// The key SortByStart records.
inline constexpr int32_t kSortDataByStart = 8;

class CSortDataList
    : public COwningList<CSortData, ReleaseStorageOnly, SortDataListHead, NoExtraFields, false> {
 public:
  CSortDataList() = default;
  ~CSortDataList() override = default;

  // Orders the elements by ascending iStartMs with a quicksort over small
  // copies of the keys; equal starts keep no guaranteed order. Direction is
  // only stored. Always 0.
  int32_t SortByStart(uint32_t direction);
};
