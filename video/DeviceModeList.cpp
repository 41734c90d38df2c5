#include "video/DeviceModeList.h"

#include <cstring>

#include "core/DataLockGuard.h"

int32_t CDeviceModeList::Add(CDeviceMode* mode) {
  COwningList::Add(mode);
  return 0;
}

CDeviceMode* CDeviceModeList::GetAt(int32_t index) {
  CDataLockGuard inner(m_InnerLock, 0);
  if (index < 0 || index >= GetCount()) return nullptr;
  return m_aItems.GetAt(index);
}

bool CDeviceModeList::RemoveAt(int32_t index) {
  CDeviceMode* removed = nullptr;
  {
    CDataLockGuard inner(m_InnerLock, 0);
    if (index < 0 || index >= GetCount()) return false;
    removed = m_aItems.GetAt(index);
    m_aItems.RemoveAt(index);
  }
  delete removed;  // the destructor runs outside the lock
  return true;
}

namespace {

// The first mode for which matches holds; the caller holds the inner lock.
template <class Matches>
CDeviceMode* FindFirst(CPointerArray<CDeviceMode>& modes, Matches matches) {
  for (CDeviceMode* mode : modes) {
    if (mode != nullptr && matches(*mode)) return mode;
  }
  return nullptr;
}

}  // namespace

CDeviceMode* CDeviceModeList::FindByCode(const char* code) {
  if (code == nullptr) return nullptr;
  CDataLockGuard inner(m_InnerLock, 0);
  // szCode of a loaded mode need not be terminated: compare within the field.
  return FindFirst(m_aItems, [code](const CDeviceMode& mode) {
    return std::strncmp(mode.szCode, code, sizeof(mode.szCode)) == 0 &&
           std::strlen(code) < sizeof(mode.szCode);
  });
}

CDeviceMode* CDeviceModeList::FindSame(CDeviceMode* mode) {
  if (mode == nullptr) return nullptr;
  CDataLockGuard inner(m_InnerLock, 0);
  return FindFirst(m_aItems, [mode](const CDeviceMode& other) { return other.IsSameMode(mode); });
}

CDeviceMode* CDeviceModeList::FindByIds(uint32_t first, uint32_t second) {
  CDataLockGuard inner(m_InnerLock, 0);
  return FindFirst(m_aItems, [first, second](const CDeviceMode& mode) {
    return mode.dwId0 == first && mode.dwId1 == second;
  });
}

namespace {

// Runs apply on every mode; the caller holds the inner lock. (Packed fields
// are reached by name: a member pointer would lose their alignment.)
template <class Apply>
void ForEachMode(CPointerArray<CDeviceMode>& modes, Apply apply) {
  for (CDeviceMode* mode : modes) {
    if (mode != nullptr) apply(*mode);
  }
}

}  // namespace

int32_t CDeviceModeList::SetOutputA(int32_t word, uint8_t flag) {
  CDataLockGuard inner(m_InnerLock, 0);
  ForEachMode(m_aItems, [word, flag](CDeviceMode& mode) {
    mode.cOutputA = flag;
    mode.iOutputA = word;
  });
  return 0;
}

int32_t CDeviceModeList::SetOutputB(int32_t word, uint8_t flag) {
  CDataLockGuard inner(m_InnerLock, 0);
  ForEachMode(m_aItems, [word, flag](CDeviceMode& mode) {
    mode.cOutputB = flag;
    mode.iOutputB = word;
  });
  return 0;
}

namespace {
uint32_t g_dwDeviceSerial = 1;
}  // namespace

uint32_t NextDeviceSerial() {
  return ++g_dwDeviceSerial;
}
