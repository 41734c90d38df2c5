#include "timeline/MarkerPointList.h"

#include "core/DataLockGuard.h"
#include "time/TimeCode.h"
#include "time/TimeMath.h"
#include "timeline/PointScaling.h"

bool CMarkerPointList::HasTime(int64_t time) {
  CDataLockGuard inner(m_InnerLock, 0);
  bool found = false;
  for (int32_t i = 0; i < m_aItems.GetSize() && !found; ++i) {
    const CMarkerPoint* m = m_aItems.GetAt(i);
    found = m && m->iTime == time;
  }
  return found;
}

int32_t CMarkerPointList::GetNextTime(int64_t time, int64_t* outTime) {
  CDataLockGuard inner(m_InnerLock, 0);
  int64_t last = time;
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    last = m_aItems.GetAt(i)->iTime;
    if (last > time) break;
  }
  inner.Unlock();
  if (outTime) *outTime = last;
  return 0;
}

int32_t CMarkerPointList::GetPrevTime(int64_t time, int64_t* outTime) {
  CDataLockGuard inner(m_InnerLock, 0);
  int64_t prev = time;
  for (int32_t i = 0; i < m_aItems.GetSize() && m_aItems.GetAt(i)->iTime < time; ++i)
    prev = m_aItems.GetAt(i)->iTime;
  inner.Unlock();
  if (outTime) *outTime = prev;
  return 0;
}

int32_t CMarkerPointList::ScaleTimes(int64_t oldLength, int64_t newLength) {
  if (oldLength == 0) return -1;
  const double f = static_cast<double>(newLength) / static_cast<double>(oldLength);
  CDataLockGuard inner(m_InnerLock, 0);
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    CMarkerPoint* m = m_aItems.GetAt(i);
    m->iTime = ScaledTime(m->iTime, f);
  }
  return -1;
}

int32_t CMarkerPointList::FitToLength(int64_t /*newLength*/) {
  CDataLockGuard inner(m_InnerLock, 0);
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    CMarkerPoint* m = m_aItems.GetAt(i);
    m->iTime = timemath::TruncToI64(static_cast<double>(m->iTime));
  }
  inner.Unlock();
  return -1;  // no start and end point: the length between them is 0
}

int32_t CMarkerPointList::InsertSorted(CMarkerPoint* marker) {
  CDataLockGuard inner(m_InnerLock, 0);
  int32_t at = -1;
  for (int32_t i = 0; i < m_aItems.GetSize() && at < 0; ++i) {
    if (m_aItems.GetAt(i)->iTime >= marker->iTime) at = i;
  }
  if (at >= 0) {
    m_aItems.InsertAt(at, marker);
  } else {
    m_aItems.Add(marker);
  }
  inner.Unlock();
  if (at >= 0) ++m_iModCount;
  return at;
}

CMarkerPoint* CMarkerPointList::FindByFrame(int64_t time) {
  const int64_t frame = FramesAtDefaultRate(static_cast<double>(time));
  CDataLockGuard inner(m_InnerLock, 0);
  CMarkerPoint* found = nullptr;
  for (int32_t i = 0; i < m_aItems.GetSize() && !found; ++i) {
    CMarkerPoint* m = m_aItems.GetAt(i);
    if (m && FramesAtDefaultRate(static_cast<double>(m->iTime)) == frame) found = m;
  }
  return found;
}

CMarkerPoint* CMarkerPointList::FindById(int32_t id) {
  CDataLockGuard inner(m_InnerLock, 0);
  CMarkerPoint* found = nullptr;
  for (int32_t i = 0; i < m_aItems.GetSize() && !found; ++i) {
    CMarkerPoint* m = m_aItems.GetAt(i);
    if (m && m->iMarkerId == id) found = m;
  }
  return found;
}

bool CMarkerPointList::RemoveById(int32_t id) {
  CDataLockGuard inner(m_InnerLock, 0);
  CMarkerPoint* found = nullptr;
  for (int32_t i = 0; i < m_aItems.GetSize() && !found; ++i) {
    CMarkerPoint* m = m_aItems.GetAt(i);
    if (m && m->iMarkerId == id) {
      found = m;
      m_aItems.RemoveAt(i);
    }
  }
  inner.Unlock();
  delete found;
  return found != nullptr;
}

int32_t CMarkerPointList::GetMaxId() {
  CDataLockGuard inner(m_InnerLock, 0);
  int32_t best = 0;
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    const CMarkerPoint* m = m_aItems.GetAt(i);
    if (m && m->iMarkerId > best) best = m->iMarkerId;
  }
  return best;
}
