#pragma once
// A level curve: level points kept in ascending time order, with one start
// point and one end point on a complete curve. Searches and point edits are
// here; what the curve computes and how it is reshaped is in LevelCurve.cpp.

#include <cstdint>
#include <deque>

#include "core/OwningList.h"
#include "timeline/LevelPoint.h"

class CLevelPointList : public COwningList<CLevelPoint> {
 public:
  CLevelPointList() = default;
  ~CLevelPointList() override;

  // Appends and takes ownership, also of a point this list dropped before.
  int32_t Add(CLevelPoint* point);
  // Inserts at index and takes ownership, also of a point it dropped before.
  void InsertAt(int32_t index, CLevelPoint* point);

  // --- searches and edits (each a linear scan under the inner lock) ---

  // First point with exactly this time, or null.
  CLevelPoint* FindAt(int64_t time);
  // Existing time: stores the value (after the lock is released) and gives
  // false. New time: inserts a new inner point and gives true.
  bool SetValueAt(int64_t time, float value);
  // Drops the first point at this time that is inner, or of any role when
  // bAllowEnds is non-zero. The point leaves the list without being deleted
  // and belongs to the caller from then on: free it, or hand it to a list.
  bool RemovePointAt(int64_t time, uint32_t bAllowEnds);
  // Drops every inner point (not deleted; kept by the curve, see below).
  // Always false.
  bool RemoveInnerPoints();
  // Value of the first point at exactly this time.
  bool GetValueExact(int64_t time, float* outValue);
  // The first point after time, or the last point; argument and 0 when empty.
  int32_t GetNextPoint(int64_t time, int64_t* outTime, float* outValue);
  // The nearest point strictly before time; argument and 0 when none.
  int32_t GetPrevPoint(int64_t time, int64_t* outTime, float* outValue);
  int32_t GetNextIndex(int64_t time, int32_t* outIndex, float* outValue);
  int32_t GetPrevIndex(int64_t time, int32_t* outIndex, float* outValue);
  // In front of the first point at or after the new one's time, or of the
  // end point, whichever comes first. -1 and not inserted when neither is
  // found: on a curve without an end point the point is not taken.
  int32_t InsertSorted(CLevelPoint* point);

  // --- the curve (LevelCurve.cpp) ---

  float Evaluate(int64_t time);
  // Evaluates with start and end times applied and writes them into the
  // start point and (unless end is 0) the end point.
  float EvaluateAndPlace(int64_t time, int64_t start, int64_t end);
  // As EvaluateAndPlace, with the times only compared, never written.
  float EvaluatePlaced(int64_t time, int32_t ignored, int64_t start, int64_t end);
  int32_t AdjustSegment(int64_t time, float value, int64_t start, int64_t end, float max,
                        float min);
  // Range: start and end time, both inclusive; null for the whole curve.
  int32_t ClearFades(const int64_t* range);
  int32_t SetEndTimes(int64_t start, int64_t end);
  int32_t SetFadeIn(int64_t length, int64_t offset, uint8_t keep, int32_t value);
  int32_t SetFadeOut(int64_t length, int64_t offset, uint8_t keep, int32_t value);
  // The scaling family always answers -1; callers don't use the result.
  int32_t RemapRange(int64_t oldStart, int64_t oldLength, int64_t newStart, int64_t newLength,
                     int64_t end);
  int32_t ScaleTimes(int64_t oldLength, int64_t newLength);
  int32_t FitToLength(int64_t newLength);

  // Clones every point of source into this (emptied) list.
  void CopyPointsFrom(CLevelPointList& source);

  // Points that the curve's own operations (RemoveInnerPoints, the fades)
  // took out of the list without deleting them. Nobody was handed them, but
  // a caller may still read one it found before, so the curve keeps the most
  // recent kMaxKeptDropped of them alive, deletes older ones, and deletes the
  // rest with itself. A point handed to a caller (RemovePointAt) isn't kept.
  static constexpr int32_t kMaxKeptDropped = 256;
  int32_t GetDroppedCount() const { return static_cast<int32_t>(m_aDropped.size()); }

 private:
  // Takes slot i out of the array and keeps the point in m_aDropped, whose
  // oldest point is deleted once more than kMaxKeptDropped are kept.
  void DropSlot(int32_t i);
  // A point back in this list is no longer a dropped one.
  void Reclaim(CLevelPoint* point);
  // Scales every point time under the lock; the end point takes endTime.
  void ScaleAll(double factor, int64_t endTime);
  int32_t ApplyFade(int8_t fade, int64_t length, int64_t offset, uint8_t keep, int32_t value);
  // Inserts a new fade point in order; a curve without an end point takes none.
  void InsertFadePoint(int8_t fade, uint8_t keep, float value, int64_t time);
  float EvaluateWithEnds(int64_t time, int64_t start, int64_t end, bool bWrite);

  std::deque<CLevelPoint*> m_aDropped;
};
