#pragma once
// The persistent record of one timeline: its name (which is also its file's
// name), its time range and view values, its cursor, and the counts of the
// tracks and markers that follow it in its file.

#include <cstddef>
#include <cstdint>

inline constexpr int32_t kTimelineRecordSize = 1028;
inline constexpr int32_t kTimelineNameSize = 260;

#pragma pack(push, 1)
struct CTimelineData {
  // Zeroes the record, sets the defaults and draws a fresh iId (timeline kind).
  CTimelineData();
  CTimelineData(const CTimelineData&) = default;
  CTimelineData& operator=(const CTimelineData&) = default;

  int32_t iSize;  // written back as loaded; the prefix in front is always 1028
  int64_t iId;
  char szName[kTimelineNameSize];
  uint8_t abBlock128[128];
  uint8_t abBlock256[256];
  double dStartMs;
  double dLengthMs;
  double dRangeFromMs;
  double dRangeToMs;
  int32_t iTimeZoom;
  int32_t iValue50;
  int32_t iTrackCount;
  int32_t iValue30A;
  int32_t iValue30B;
  uint8_t cSpare;
  double dSpareA;
  double dSpareB;
  double dCursorMs;
  int32_t iMarkerCount;
  int32_t bTimesAreDouble;  // 0: the seven time fields are 64-bit integers
  uint8_t abReserved[287];
};
#pragma pack(pop)

static_assert(sizeof(CTimelineData) == kTimelineRecordSize);
static_assert(offsetof(CTimelineData, iSize) == 0);
static_assert(offsetof(CTimelineData, iId) == 4);
static_assert(offsetof(CTimelineData, szName) == 12);
static_assert(offsetof(CTimelineData, abBlock128) == 272);
static_assert(offsetof(CTimelineData, abBlock256) == 400);
static_assert(offsetof(CTimelineData, dStartMs) == 656);
static_assert(offsetof(CTimelineData, dLengthMs) == 664);
static_assert(offsetof(CTimelineData, dRangeFromMs) == 672);
static_assert(offsetof(CTimelineData, dRangeToMs) == 680);
static_assert(offsetof(CTimelineData, iTimeZoom) == 688);
static_assert(offsetof(CTimelineData, iValue50) == 692);
static_assert(offsetof(CTimelineData, iTrackCount) == 696);
static_assert(offsetof(CTimelineData, iValue30A) == 700);
static_assert(offsetof(CTimelineData, iValue30B) == 704);
static_assert(offsetof(CTimelineData, cSpare) == 708);
static_assert(offsetof(CTimelineData, dSpareA) == 709);
static_assert(offsetof(CTimelineData, dSpareB) == 717);
static_assert(offsetof(CTimelineData, dCursorMs) == 725);
static_assert(offsetof(CTimelineData, iMarkerCount) == 733);
static_assert(offsetof(CTimelineData, bTimesAreDouble) == 737);
static_assert(offsetof(CTimelineData, abReserved) == 741);

// The seven time fields that older files hold as 64-bit integers.
inline constexpr size_t kTimelineIntegerTimeFields[7] = {
    offsetof(CTimelineData, dStartMs),     offsetof(CTimelineData, dLengthMs),
    offsetof(CTimelineData, dRangeFromMs), offsetof(CTimelineData, dRangeToMs),
    offsetof(CTimelineData, dSpareA),      offsetof(CTimelineData, dSpareB),
    offsetof(CTimelineData, dCursorMs)};
