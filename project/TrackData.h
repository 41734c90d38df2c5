#pragma once
// The persistent record of one track: its kind, its time range on the
// timeline, its height and view values, and the count of the components that
// follow it in a timeline file.

#include <cstddef>
#include <cstdint>

inline constexpr int32_t kTrackRecordSize = 431;

// Track kinds (iTrackKind) and the component kinds each takes.
namespace trackkind {
inline constexpr uint32_t kTrackAny = 0;    // takes every component kind
inline constexpr uint32_t kTrackVideo = 1;  // counted by iNumVidTraks
inline constexpr uint32_t kTrackAudio = 2;  // counted by iNumAudTraks
inline constexpr uint32_t kTrackEffect = 3;
inline constexpr uint32_t kTrackDmx = 4;
inline constexpr uint32_t kTrackFurther5 = 5;  // takes component kind 7
inline constexpr uint32_t kTrackFurther6 = 6;  // takes component kind 8
}  // namespace trackkind

// Heights of a new track in the timeline view.
inline constexpr int32_t kTrackSizeY = 30;
inline constexpr int32_t kEffectTrackSizeY = 20;

#pragma pack(push, 1)
struct CTrackData {
  // Zeroes the record, sets the defaults and draws a fresh iId (track kind).
  CTrackData();
  CTrackData(const CTrackData&) = default;
  CTrackData& operator=(const CTrackData&) = default;

  int32_t iSize;  // written back as loaded; the prefix in front is always 431
  int64_t iId;
  uint32_t iTrackKind;
  uint8_t abBlock50[50];
  uint8_t abBlock128[128];
  double dStartMs;
  double dLengthMs;
  float fFactor;
  int32_t iSizeY;
  uint8_t cState0;  // GetComponentTrackFlag, which = 1
  uint8_t cState1;  // which = 0
  uint8_t cState2;  // which = 2
  uint8_t cState3;  // which = 3
  int32_t iComponentCount;
  float fViewA;
  float fViewB;
  uint8_t cViewA;
  uint8_t cViewB;
  float fSpareA;
  float fSpareB;
  int32_t aiSpare[4];
  uint8_t bTimesAreDouble;  // 0: dStartMs and dLengthMs are 64-bit integers
  uint8_t abReserved[170];
};
#pragma pack(pop)

static_assert(sizeof(CTrackData) == kTrackRecordSize);
static_assert(offsetof(CTrackData, iSize) == 0);
static_assert(offsetof(CTrackData, iId) == 4);
static_assert(offsetof(CTrackData, iTrackKind) == 12);
static_assert(offsetof(CTrackData, abBlock50) == 16);
static_assert(offsetof(CTrackData, abBlock128) == 66);
static_assert(offsetof(CTrackData, dStartMs) == 194);
static_assert(offsetof(CTrackData, dLengthMs) == 202);
static_assert(offsetof(CTrackData, fFactor) == 210);
static_assert(offsetof(CTrackData, iSizeY) == 214);
static_assert(offsetof(CTrackData, cState0) == 218);
static_assert(offsetof(CTrackData, cState1) == 219);
static_assert(offsetof(CTrackData, cState2) == 220);
static_assert(offsetof(CTrackData, cState3) == 221);
static_assert(offsetof(CTrackData, iComponentCount) == 222);
static_assert(offsetof(CTrackData, fViewA) == 226);
static_assert(offsetof(CTrackData, fViewB) == 230);
static_assert(offsetof(CTrackData, cViewA) == 234);
static_assert(offsetof(CTrackData, cViewB) == 235);
static_assert(offsetof(CTrackData, fSpareA) == 236);
static_assert(offsetof(CTrackData, fSpareB) == 240);
static_assert(offsetof(CTrackData, aiSpare) == 244);
static_assert(offsetof(CTrackData, bTimesAreDouble) == 260);
static_assert(offsetof(CTrackData, abReserved) == 261);

// The two time fields that older files hold as 64-bit integers.
inline constexpr size_t kTrackIntegerTimeFields[2] = {offsetof(CTrackData, dStartMs),
                                                      offsetof(CTrackData, dLengthMs)};
