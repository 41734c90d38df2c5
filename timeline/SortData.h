#pragma once
// CSortData: the flat summary of one component inside the digest of a
// component list (CSortGroupList). A plain block with no base and no virtual
// operation: its list releases it with plain operator delete.

#include <cstdint>
#include <cstring>
#include <type_traits>

class CComponent;

struct CSortData {
  // Zero-filled, padding included.
  CSortData() { std::memset(static_cast<void*>(this), 0, sizeof(CSortData)); }
  // The summary of `component`, which stands at `sourceIndex` in its list.
  CSortData(const CComponent& component, int32_t sourceIndex);

  int32_t iLine;
  int32_t iSourceIndex;
  int32_t iSortFieldA;
  int32_t iSortFieldB;
  int32_t iSpare;  // stays 0
  int32_t iRuntimeB;
  int32_t iKind;
  int64_t iUniqueId;
  int64_t iStartMs;     // dStart, truncated
  int64_t iEndMs;       // dEnd, truncated
  int64_t iStartFrame;  // iStartMs in frames of the default rate
  int64_t iEndFrame;    // iEndMs likewise
};

// Released without a destructor call, so it must not need one.
static_assert(std::is_trivially_destructible_v<CSortData>);
static_assert(std::is_standard_layout_v<CSortData>);
