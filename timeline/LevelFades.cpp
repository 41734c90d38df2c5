// Fades, end times and the scaling family of a level curve.

#include <vector>

#include "core/DataLockGuard.h"
#include "time/TimeMath.h"
#include "timeline/LevelPointList.h"
#include "timeline/PointScaling.h"

namespace {

CLevelPoint* NewFadePoint(int8_t fade, uint8_t keep, float value, int64_t time) {
  CLevelPoint* point = new CLevelPoint(kRoleInner, time, value);
  point->cFade = fade;
  point->cFadeKeep = keep;
  return point;
}

bool InRange(const int64_t* range, int64_t time) {
  return !range || (time >= range[0] && time <= range[1]);
}

}  // namespace

int32_t CLevelPointList::SetEndTimes(int64_t start, int64_t end) {
  CDataLockGuard inner(m_InnerLock, 0);
  const int32_t count = m_aItems.GetSize();
  for (int32_t i = 0; i < count; ++i) {
    CLevelPoint* p = m_aItems.GetAt(i);
    if (p->cRole == kRoleStart) p->iTime = start;
    if (p->cRole == kRoleEnd) p->iTime = end;
  }
  return count == 0 ? -1 : 0;
}

void CLevelPointList::InsertFadePoint(int8_t fade, uint8_t keep, float value, int64_t time) {
  CLevelPoint* point = NewFadePoint(fade, keep, value, time);
  if (InsertSorted(point) < 0) delete point;  // not taken by a curve without an end point
}

int32_t CLevelPointList::SetFadeIn(int64_t length, int64_t offset, uint8_t keep, int32_t value) {
  return ApplyFade(kFadeIn, length, offset, keep, value);
}

int32_t CLevelPointList::SetFadeOut(int64_t length, int64_t offset, uint8_t keep, int32_t value) {
  return ApplyFade(kFadeOut, length, offset, keep, value);
}

// A fade-in works from the start point forwards, a fade-out from the end point
// backwards; otherwise the two are the same steps.
int32_t CLevelPointList::ApplyFade(int8_t fade, int64_t length, int64_t offset, uint8_t keep,
                                   int32_t value) {
  const bool fadeIn = fade == kFadeIn;
  const int64_t T = timemath::SatAdd(length, offset);
  CDataLockGuard inner(m_InnerLock, 0);
  const int32_t count = m_aItems.GetSize();
  if (count == 0) return -1;
  // The peak is taken from this fade's points and from the points met before
  // the second point that belongs to no fade.
  float peak = 0.0f;
  int64_t latest = 0;
  int32_t plain = 0;
  for (int32_t k = 0; k < count; ++k) {
    const CLevelPoint* p = m_aItems.GetAt(fadeIn ? k : count - 1 - k);
    if (p->cFade == kFadeNone) ++plain;
    if ((p->cFade == fade || plain < 2) && p->fValue > peak) peak = p->fValue;
    if (p->iTime > latest) latest = p->iTime;
  }
  if (T >= latest) return -1;  // the fade doesn't fit
  const int64_t B = timemath::SatSub(latest, T);
  const int8_t endRole = fadeIn ? kRoleStart : kRoleEnd;
  for (int32_t i = 0; i < m_aItems.GetSize();) {
    CLevelPoint* p = m_aItems.GetAt(i);
    const bool covered = fadeIn ? p->iTime <= T : p->iTime >= B;
    if (p->cRole == endRole) {
      p->fValue = static_cast<float>(value);
      ++i;
    } else if (p->cFade == fade || (p->cRole == kRoleInner && p->cFade == kFadeNone && covered)) {
      DropSlot(i);
    } else {
      ++i;
    }
  }
  inner.Unlock();
  if (offset != 0) {
    InsertFadePoint(fade, keep, static_cast<float>(value),
                    fadeIn ? offset : timemath::SatSub(latest, offset));
  }
  InsertFadePoint(fade, keep, peak, fadeIn ? T : B);
  return 0;
}

int32_t CLevelPointList::ClearFades(const int64_t* range) {
  CDataLockGuard inner(m_InnerLock, 0);
  if (m_aItems.GetSize() == 0) return -1;
  float peakIn = 0.0f, peakOut = 0.0f;
  int32_t countIn = 0, countOut = 0;
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    const CLevelPoint* p = m_aItems.GetAt(i);
    if (p->cFadeKeep != 0 || !InRange(range, p->iTime)) continue;
    if (p->cFade == kFadeIn) {
      ++countIn;
      if (p->fValue > peakIn) peakIn = p->fValue;
    } else if (p->cFade == kFadeOut) {
      ++countOut;
      if (p->fValue > peakOut) peakOut = p->fValue;
    }
  }
  std::vector<CLevelPoint*> gone;
  for (int32_t i = 0; i < m_aItems.GetSize();) {
    CLevelPoint* p = m_aItems.GetAt(i);
    if (p->cRole == kRoleStart) {
      if (countIn > 0) p->fValue = peakIn;
      ++i;
    } else if (p->cRole == kRoleEnd) {
      if (countOut > 0) p->fValue = peakOut;
      ++i;
    } else if (p->cFade != kFadeNone && p->cFadeKeep == 0 && InRange(range, p->iTime)) {
      m_aItems.RemoveAt(i);
      gone.push_back(p);
    } else {
      ++i;
    }
  }
  inner.Unlock();
  for (CLevelPoint* p : gone) delete p;
  return 0;
}

void CLevelPointList::ScaleAll(double factor, int64_t endTime) {
  CDataLockGuard inner(m_InnerLock, 0);
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    CLevelPoint* p = m_aItems.GetAt(i);
    p->iTime = ScaledTime(p->iTime, factor);
    if (p->cRole == kRoleEnd) p->iTime = endTime;  // the end point lands exactly
  }
}

int32_t CLevelPointList::ScaleTimes(int64_t oldLength, int64_t newLength) {
  if (oldLength == 0) return -1;
  const double f = static_cast<double>(newLength) / static_cast<double>(oldLength);
  ScaleAll(f, newLength);
  return -1;
}

int32_t CLevelPointList::FitToLength(int64_t newLength) {
  double a = 0.0, b = 0.0;
  {
    CDataLockGuard inner(m_InnerLock, 0);
    for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
      CLevelPoint* p = m_aItems.GetAt(i);
      p->iTime = timemath::TruncToI64(static_cast<double>(p->iTime));
      if (p->cRole == kRoleStart) a = static_cast<double>(p->iTime);
      if (p->cRole == kRoleEnd) b = static_cast<double>(p->iTime);
    }
  }
  const double d = b - a;
  if (!(d > 0.0)) return -1;
  const double f = static_cast<double>(newLength) / d;
  ScaleAll(f, newLength);
  return -1;
}

int32_t CLevelPointList::RemapRange(int64_t oldStart, int64_t oldLength, int64_t newStart,
                                    int64_t newLength, int64_t end) {
  if (oldLength == 0) return -1;
  const float va = Evaluate(oldStart);
  const float vb = Evaluate(timemath::SatAdd(oldStart, oldLength));
  const double k = static_cast<double>(newLength) / static_cast<double>(oldLength);
  const int64_t newEnd = timemath::SatAdd(newStart, newLength);
  std::vector<CLevelPoint*> made;
  auto add = [&made](const CLevelPoint* from, float value, int64_t time, int8_t role) {
    CLevelPoint* clone = from->Clone();
    clone->fValue = value;
    clone->iTime = time;
    clone->cRole = role;
    made.push_back(clone);
  };
  CDataLockGuard inner(m_InnerLock, 0);
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    const CLevelPoint* p = m_aItems.GetAt(i);
    const int64_t m =
        timemath::TruncToI64((static_cast<double>(p->iTime) - static_cast<double>(oldStart)) * k +
                             kScaleRounding + static_cast<double>(newStart));
    if (p->cRole == kRoleStart) {
      add(p, va, 0, kRoleStart);
      if (newStart > 0) add(p, va, newStart, kRoleInner);
    } else if (p->cRole == kRoleEnd) {
      if (newEnd < end) add(p, vb, newEnd, kRoleInner);
      add(p, vb, end, kRoleEnd);
    } else if (p->cRole == kRoleInner && m > newStart && m < newEnd) {
      add(p, p->fValue, m, kRoleInner);
    }
  }
  inner.Unlock();
  Clear();
  CDataLockGuard refill(m_InnerLock, 0);
  for (CLevelPoint* clone : made) m_aItems.Add(clone);
  return -1;
}
