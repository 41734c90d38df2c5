#pragma once
// CDeviceModeList: every video mode the library knows. BuildModeTable fills
// it with the fixed table of 46 modes. Every operation runs under
// m_InnerLock with owner code 0; pointers handed out are not protected
// against a concurrent RemoveAt. Unlike the other lists it has no change
// counter, and GetAt and RemoveAt treat a negative index as out of range.

#include <cstdint>

#include "core/OwningList.h"
#include "video/DeviceMode.h"

// Rows of the mode table.
inline constexpr int32_t kDeviceModeTableRows = 46;

class CDeviceModeList
    : public COwningList<CDeviceMode, ReleaseByDestructor, NoLeadFields, NoExtraFields, false> {
 public:
  CDeviceModeList() = default;
  ~CDeviceModeList() override = default;

  // Appends; the list owns it. Always 0.
  int32_t Add(CDeviceMode* mode);
  // Null for an index out of range, negative included.
  CDeviceMode* GetAt(int32_t index);
  // False out of range; else out of the array and deleted after the release.
  bool RemoveAt(int32_t index);
  // First mode whose szCode equals code (strcmp); null for null or none.
  CDeviceMode* FindByCode(const char* code);
  // First mode for which IsSameMode holds; null for null or none.
  CDeviceMode* FindSame(CDeviceMode* mode);
  // First mode with these dwId0 and dwId1, or null.
  CDeviceMode* FindByIds(uint32_t first, uint32_t second);
  // The word and flag into iOutputA/cOutputA (B: iOutputB/cOutputB) of every
  // mode. Always 0.
  int32_t SetOutputA(int32_t word, uint8_t flag);
  int32_t SetOutputB(int32_t word, uint8_t flag);
  // Replaces the content with the 46 modes, flag in each cTableFlag. Always 0.
  int32_t BuildModeTable(uint8_t flag);
};

// Adds 1 to a process-wide counter that starts at 1 and returns the new
// value (the first call gives 2). No lock.
uint32_t NextDeviceSerial();
