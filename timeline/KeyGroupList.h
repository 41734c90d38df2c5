#pragma once
// The key groups of one effect, unsorted.

#include <cstdint>

#include "core/OwningList.h"
#include "timeline/KeyGroup.h"

class CKeyGroupList : public COwningList<CKeyGroup> {
 public:
  // Sets the value of every point of group `index`'s curve. False when index
  // is at or above the count; a null group is passed over with true.
  bool SetAllValues(int32_t index, float value);
};
