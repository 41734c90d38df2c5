#pragma once
// The persistent record of one video mode: picture size, frame time, field
// structure and aspect ratio, with the code and display names.

#include <cstddef>
#include <cstdint>

inline constexpr int32_t kDeviceModeRecordSize = 701;
inline constexpr int32_t kDeviceModeTextSize = 200;

// iFieldCode values.
inline constexpr int32_t kFieldProgressive = 0;
inline constexpr int32_t kFieldInterlacedA = 1;  // PAL, all high-definition and 2K rows
inline constexpr int32_t kFieldInterlacedB = 2;  // NTSC rows

#pragma pack(push, 1)
struct CDeviceModeData {
  // A PAL frame: 720x576, 25 frames per second, progressive, 16:9, no names.
  CDeviceModeData();
  CDeviceModeData(const CDeviceModeData&) = default;
  CDeviceModeData& operator=(const CDeviceModeData&) = default;

  uint32_t dwId0;
  uint32_t dwId1;
  char szCode[kDeviceModeTextSize];
  char szDisplay[kDeviceModeTextSize];
  char szExtra[kDeviceModeTextSize];
  uint32_t dwReserved608;
  int32_t iWidth;
  int32_t iHeight;
  int32_t iFrameTime;  // 100-nanosecond units
  int32_t iFrameTime2;
  int32_t iFieldCode;
  uint32_t dwReserved632;
  uint8_t cEnabled;
  uint8_t cTableFlag;
  uint32_t dwReserved638;
  int32_t iAspectX;
  int32_t iAspectY;
  int32_t iFrameTime3;
  int32_t iOutputA;
  int32_t iOutputB;
  uint8_t cOutputA;
  uint8_t cOutputB;
  uint8_t abTail[37];
};
#pragma pack(pop)

static_assert(sizeof(CDeviceModeData) == kDeviceModeRecordSize);
static_assert(offsetof(CDeviceModeData, dwId0) == 0);
static_assert(offsetof(CDeviceModeData, dwId1) == 4);
static_assert(offsetof(CDeviceModeData, szCode) == 8);
static_assert(offsetof(CDeviceModeData, szDisplay) == 208);
static_assert(offsetof(CDeviceModeData, szExtra) == 408);
static_assert(offsetof(CDeviceModeData, dwReserved608) == 608);
static_assert(offsetof(CDeviceModeData, iWidth) == 612);
static_assert(offsetof(CDeviceModeData, iHeight) == 616);
static_assert(offsetof(CDeviceModeData, iFrameTime) == 620);
static_assert(offsetof(CDeviceModeData, iFrameTime2) == 624);
static_assert(offsetof(CDeviceModeData, iFieldCode) == 628);
static_assert(offsetof(CDeviceModeData, dwReserved632) == 632);
static_assert(offsetof(CDeviceModeData, cEnabled) == 636);
static_assert(offsetof(CDeviceModeData, cTableFlag) == 637);
static_assert(offsetof(CDeviceModeData, dwReserved638) == 638);
static_assert(offsetof(CDeviceModeData, iAspectX) == 642);
static_assert(offsetof(CDeviceModeData, iAspectY) == 646);
static_assert(offsetof(CDeviceModeData, iFrameTime3) == 650);
static_assert(offsetof(CDeviceModeData, iOutputA) == 654);
static_assert(offsetof(CDeviceModeData, iOutputB) == 658);
static_assert(offsetof(CDeviceModeData, cOutputA) == 662);
static_assert(offsetof(CDeviceModeData, cOutputB) == 663);
static_assert(offsetof(CDeviceModeData, abTail) == 664);
