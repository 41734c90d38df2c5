#include "timeline/LevelPointList.h"

#include "core/DataLockGuard.h"

CLevelPointList::~CLevelPointList() {
  // A kept point is never in the list as well (Reclaim takes it out when it
  // goes back), and DropSlot keeps each point once.
  for (CLevelPoint* point : m_aDropped) delete point;
}

int32_t CLevelPointList::Add(CLevelPoint* point) {
  Reclaim(point);
  return COwningList::Add(point);
}

void CLevelPointList::InsertAt(int32_t index, CLevelPoint* point) {
  Reclaim(point);
  COwningList::InsertAt(index, point);
}

void CLevelPointList::Reclaim(CLevelPoint* point) {
  std::erase(m_aDropped, point);
}

void CLevelPointList::DropSlot(int32_t i) {
  m_aDropped.push_back(m_aItems.GetAt(i));
  m_aItems.RemoveAt(i);
  if (static_cast<int32_t>(m_aDropped.size()) > kMaxKeptDropped) {
    delete m_aDropped.front();
    m_aDropped.pop_front();
  }
}

CLevelPoint* CLevelPointList::FindAt(int64_t time) {
  CDataLockGuard inner(m_InnerLock, 0);
  for (CLevelPoint* point : m_aItems) {
    if (point->iTime == time) return point;
  }
  return nullptr;
}

bool CLevelPointList::SetValueAt(int64_t time, float value) {
  CLevelPoint* found = FindAt(time);
  if (found) {
    // The store happens outside the lock; callers that share the curve hold
    // the outer lock.
    found->fValue = value;
    return false;
  }
  CLevelPoint* point = new CLevelPoint(kRoleInner, time, value);
  if (InsertSorted(point) < 0) delete point;  // a curve without an end point takes nothing
  return true;
}

bool CLevelPointList::RemovePointAt(int64_t time, uint32_t bAllowEnds) {
  CDataLockGuard inner(m_InnerLock, 0);
  int32_t at = -1;
  for (int32_t i = 0; i < m_aItems.GetSize() && at < 0; ++i) {
    const CLevelPoint* p = m_aItems.GetAt(i);
    if (p->iTime == time && (p->cRole == kRoleInner || bAllowEnds != 0)) at = i;
  }
  inner.Unlock();
  if (at < 0) return false;
  // The slot goes with no lock held; the point is the caller's from now on.
  m_aItems.RemoveAt(at);
  return true;
}

bool CLevelPointList::RemoveInnerPoints() {
  CDataLockGuard inner(m_InnerLock, 0);
  for (int32_t i = 0; i < m_aItems.GetSize();) {
    const int8_t role = m_aItems.GetAt(i)->cRole;
    if (role != kRoleStart && role != kRoleEnd) {
      DropSlot(i);
    } else {
      ++i;
    }
  }
  return false;
}

bool CLevelPointList::GetValueExact(int64_t time, float* outValue) {
  CLevelPoint* point = FindAt(time);
  if (!point) return false;
  if (outValue) *outValue = point->fValue;
  return true;
}

int32_t CLevelPointList::GetNextPoint(int64_t time, int64_t* outTime, float* outValue) {
  CDataLockGuard inner(m_InnerLock, 0);
  int64_t lastTime = time;
  float lastValue = 0.0f;
  for (int32_t i = 0; i < m_aItems.GetSize(); ++i) {
    lastTime = m_aItems.GetAt(i)->iTime;
    lastValue = m_aItems.GetAt(i)->fValue;
    if (lastTime > time) break;
  }
  inner.Unlock();
  if (outTime) *outTime = lastTime;
  if (outValue) *outValue = lastValue;
  return 0;
}

int32_t CLevelPointList::GetPrevPoint(int64_t time, int64_t* outTime, float* outValue) {
  CDataLockGuard inner(m_InnerLock, 0);
  int64_t prevTime = time;
  float prevValue = 0.0f;
  for (int32_t i = 0; i < m_aItems.GetSize() && m_aItems.GetAt(i)->iTime < time; ++i) {
    prevTime = m_aItems.GetAt(i)->iTime;
    prevValue = m_aItems.GetAt(i)->fValue;
  }
  inner.Unlock();
  if (outTime) *outTime = prevTime;
  if (outValue) *outValue = prevValue;
  return 0;
}

namespace {
int32_t ClampIndex(int32_t index, int32_t count) {
  if (index > count - 1) index = count - 1;
  return index < 0 ? 0 : index;
}
}  // namespace

int32_t CLevelPointList::GetNextIndex(int64_t time, int32_t* outIndex, float* outValue) {
  CDataLockGuard inner(m_InnerLock, 0);
  const int32_t count = m_aItems.GetSize();
  int32_t index = 0;
  float value = 0.0f;
  for (int32_t i = 0; i < count; ++i) {
    value = m_aItems.GetAt(i)->fValue;
    if (m_aItems.GetAt(i)->iTime > time) {
      index = i;
      break;
    }
  }
  inner.Unlock();
  if (outIndex) *outIndex = ClampIndex(index, count);
  if (outValue) *outValue = value;
  return 0;
}

int32_t CLevelPointList::GetPrevIndex(int64_t time, int32_t* outIndex, float* outValue) {
  CDataLockGuard inner(m_InnerLock, 0);
  const int32_t count = m_aItems.GetSize();
  int32_t index = 0;
  float value = 0.0f;
  float before = 0.0f;
  bool found = false;
  for (int32_t i = 0; i < count && !found; ++i) {
    if (m_aItems.GetAt(i)->iTime >= time) {
      index = i - 1;
      value = before;
      found = true;
    }
    before = m_aItems.GetAt(i)->fValue;
  }
  if (!found) value = before;  // no point at or after time: the last point's value
  inner.Unlock();
  if (outIndex) *outIndex = ClampIndex(index, count);
  if (outValue) *outValue = value;
  return 0;
}

int32_t CLevelPointList::InsertSorted(CLevelPoint* point) {
  CDataLockGuard inner(m_InnerLock, 0);
  int32_t at = -1;
  for (int32_t i = 0; i < m_aItems.GetSize() && at < 0; ++i) {
    const CLevelPoint* p = m_aItems.GetAt(i);
    if (p->iTime >= point->iTime || p->cRole == kRoleEnd) at = i;
  }
  if (at >= 0) m_aItems.InsertAt(at, point);
  inner.Unlock();
  if (at >= 0) {
    RaiseModCount();
    Reclaim(point);  // a dropped point moved back in
  }
  return at;
}

void CLevelPointList::CopyPointsFrom(CLevelPointList& source) {
  CDataLockGuard sourceInner(source.m_InnerLock, 0);
  for (int32_t i = 0; i < source.m_aItems.GetSize(); ++i) {
    const CLevelPoint* p = source.m_aItems.GetAt(i);
    if (p) m_aItems.Add(p->Clone());
  }
}
