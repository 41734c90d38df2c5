#pragma once
// The markers of a component or timeline, kept in ascending time order.

#include <cstdint>

#include "core/OwningList.h"
#include "timeline/MarkerPoint.h"

class CMarkerPointList : public COwningList<CMarkerPoint> {
 public:
  // True when a marker has exactly this time.
  bool HasTime(int64_t time);
  // The first marker after time, or the last marker; the argument when empty.
  int32_t GetNextTime(int64_t time, int64_t* outTime);
  // The nearest marker strictly before time; the argument when none.
  int32_t GetPrevTime(int64_t time, int64_t* outTime);
  // Scales every marker time; always -1.
  int32_t ScaleTimes(int64_t oldLength, int64_t newLength);
  // Markers have no start and end point, so they never follow a new length:
  // always -1 with the times unchanged.
  int32_t FitToLength(int64_t newLength);
  // In front of the first marker at or after its time: that index. Appended
  // behind all others: -1, which is no failure.
  int32_t InsertSorted(CMarkerPoint* marker);
  // First marker in the same frame (at the default rate) as time.
  CMarkerPoint* FindByFrame(int64_t time);
  CMarkerPoint* FindById(int32_t id);
  // Removes and deletes the first marker with this id; false if none.
  bool RemoveById(int32_t id);
  // Largest id, from 0: an empty list or negative ids give 0.
  int32_t GetMaxId();
};
