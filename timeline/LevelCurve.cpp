// What a level curve computes between its points and how it is reshaped.

#include "core/DataLockGuard.h"
#include "timeline/LevelPointList.h"
#include "timeline/SegmentValue.h"

namespace {

struct Knot {
  int64_t t;
  float v;
};

}  // namespace

float CLevelPointList::Evaluate(int64_t time) {
  CDataLockGuard inner(m_InnerLock, 0);
  const int32_t count = m_aItems.GetSize();
  Knot left{0, 0.0f};
  Knot right{0, 0.0f};
  int32_t counted = 0;
  for (int32_t i = 0; i < count; ++i) {
    const CLevelPoint* p = m_aItems.GetAt(i);
    right = {p->iTime, p->fValue};
    if (p->iTime == time) return p->fValue;
    if (p->iTime > time) break;
    left = right;
    ++counted;
  }
  inner.Unlock();                                        // the computation needs no lock
  if (counted == 0 || counted == count) return right.v;  // before the first or after the last
  return SegmentValue(time, left.t, left.v, right.t, right.v, false);
}

float CLevelPointList::EvaluateWithEnds(int64_t time, int64_t start, int64_t end, bool bWrite) {
  CDataLockGuard inner(m_InnerLock, 0);
  // Before the first point the segment runs from (time, 0.0); after the last,
  // left and right are the same point and its value is the answer.
  Knot left{time, 0.0f};
  Knot right{time, 0.0f};
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    CLevelPoint* p = m_aItems.GetAt(i);
    int64_t t = p->iTime;
    if (p->cRole == kRoleStart) {
      t = start;
      if (bWrite) p->iTime = start;
    } else if (p->cRole == kRoleEnd) {
      t = end;  // the end counts in the walk even where 0 is not written
      if (bWrite && end != 0) p->iTime = end;
    }
    right = {t, p->fValue};
    if (t == time) return p->fValue;
    if (t > time) break;
    left = right;
  }
  inner.Unlock();
  return SegmentValue(time, left.t, left.v, right.t, right.v, true);
}

float CLevelPointList::EvaluateAndPlace(int64_t time, int64_t start, int64_t end) {
  return EvaluateWithEnds(time, start, end, true);
}

float CLevelPointList::EvaluatePlaced(int64_t time, int32_t /*ignored*/, int64_t start,
                                      int64_t end) {
  return EvaluateWithEnds(time, start, end, false);
}

int32_t CLevelPointList::AdjustSegment(int64_t time, float value, int64_t start, int64_t end,
                                       float max, float min) {
  const float delta =
      static_cast<float>(static_cast<double>(value) - EvaluateAndPlace(time, 0, end));
  CDataLockGuard inner(m_InnerLock, 0);
  CLevelPoint* left = nullptr;
  CLevelPoint* right = nullptr;
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    CLevelPoint* p = m_aItems.GetAt(i);
    int64_t t = p->iTime;
    if (p->cRole == kRoleStart) t = start;
    if (p->cRole == kRoleEnd) t = end;
    if (t == time) {
      p->fValue = value;
      return 0;
    }
    right = p;
    if (t > time) break;
    left = p;
  }
  // A walk that ran out leaves the last point as both left and right: it gets
  // the difference twice, clamped after each step.
  for (CLevelPoint* p : {left, right}) {
    if (!p) continue;
    float moved = static_cast<float>(static_cast<double>(p->fValue) + delta);
    if (min > moved) moved = min;
    if (moved > max) moved = max;
    p->fValue = moved;
  }
  return 0;
}
