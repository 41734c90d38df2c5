#pragma once
// The persistent record of one timeline or repository item: where it stands
// on the timeline (dStart, dEnd), which part of its source it uses
// (dSourceIn, dSourceLength of dMediaLength), its speed and direction, and the
// counts of the lists that follow it in a file.

#include <cstddef>
#include <cstdint>

#pragma pack(push, 1)
struct CComponentData {
  // Zeroes the record, sets the defaults and draws a fresh iUniqueId.
  CComponentData();
  CComponentData(const CComponentData&) = default;
  CComponentData& operator=(const CComponentData&) = default;

  // Copies all record bytes but keeps this record's iUniqueId.
  void AssignKeepId(const CComponentData& source);

  int32_t iRecordSize;
  int64_t iUniqueId;
  int32_t iKind;
  uint8_t aReserved16[50];
  char szLabel[127];
  uint8_t cMediaMoved;
  double dSourceIn;
  double dSourceLength;
  float fSpeed;
  double dStart;
  double dEnd;
  double dSourceBase;
  int64_t iLinkId;
  int32_t iSortFieldB;
  int32_t iSortFieldA;
  char szPath[260];
  uint8_t aReserved514[224];
  double dTimeA;
  int32_t iAudioStreams;
  int32_t iVideoStreams;
  int32_t iAudioIndex;
  double dTimeB;
  double dMediaLength;
  char szSortText[100];
  int32_t iLevelCount;
  float fLevelMax;
  uint8_t aReserved882[4];
  uint8_t cLevelBase;
  float fParamA;
  float fParamB;
  uint8_t aReserved895[4];
  int32_t iVideoIndex;
  int32_t iChannelIndex;
  uint8_t aReserved907[10];
  int32_t iEffectCount;
  uint8_t cReverse;
  uint8_t aReserved922[5];
  int32_t iSerial;
  uint8_t aReserved931[16];
  int32_t iMarkerCount;
  uint8_t aReserved951[2];
  float fParamC;
  uint8_t cTimesAreDouble;
  uint8_t cInUse;
  uint8_t cMoveState;
  uint8_t aReserved960[41];
};
#pragma pack(pop)

inline constexpr int32_t kComponentRecordSize = 1001;

static_assert(sizeof(CComponentData) == kComponentRecordSize);
static_assert(offsetof(CComponentData, iRecordSize) == 0);
static_assert(offsetof(CComponentData, iUniqueId) == 4);
static_assert(offsetof(CComponentData, iKind) == 12);
static_assert(offsetof(CComponentData, aReserved16) == 16);
static_assert(offsetof(CComponentData, szLabel) == 66);
static_assert(offsetof(CComponentData, cMediaMoved) == 193);
static_assert(offsetof(CComponentData, dSourceIn) == 194);
static_assert(offsetof(CComponentData, dSourceLength) == 202);
static_assert(offsetof(CComponentData, fSpeed) == 210);
static_assert(offsetof(CComponentData, dStart) == 214);
static_assert(offsetof(CComponentData, dEnd) == 222);
static_assert(offsetof(CComponentData, dSourceBase) == 230);
static_assert(offsetof(CComponentData, iLinkId) == 238);
static_assert(offsetof(CComponentData, iSortFieldB) == 246);
static_assert(offsetof(CComponentData, iSortFieldA) == 250);
static_assert(offsetof(CComponentData, szPath) == 254);
static_assert(offsetof(CComponentData, aReserved514) == 514);
static_assert(offsetof(CComponentData, dTimeA) == 738);
static_assert(offsetof(CComponentData, iAudioStreams) == 746);
static_assert(offsetof(CComponentData, iVideoStreams) == 750);
static_assert(offsetof(CComponentData, iAudioIndex) == 754);
static_assert(offsetof(CComponentData, dTimeB) == 758);
static_assert(offsetof(CComponentData, dMediaLength) == 766);
static_assert(offsetof(CComponentData, szSortText) == 774);
static_assert(offsetof(CComponentData, iLevelCount) == 874);
static_assert(offsetof(CComponentData, fLevelMax) == 878);
static_assert(offsetof(CComponentData, aReserved882) == 882);
static_assert(offsetof(CComponentData, cLevelBase) == 886);
static_assert(offsetof(CComponentData, fParamA) == 887);
static_assert(offsetof(CComponentData, fParamB) == 891);
static_assert(offsetof(CComponentData, aReserved895) == 895);
static_assert(offsetof(CComponentData, iVideoIndex) == 899);
static_assert(offsetof(CComponentData, iChannelIndex) == 903);
static_assert(offsetof(CComponentData, aReserved907) == 907);
static_assert(offsetof(CComponentData, iEffectCount) == 917);
static_assert(offsetof(CComponentData, cReverse) == 921);
static_assert(offsetof(CComponentData, aReserved922) == 922);
static_assert(offsetof(CComponentData, iSerial) == 927);
static_assert(offsetof(CComponentData, aReserved931) == 931);
static_assert(offsetof(CComponentData, iMarkerCount) == 947);
static_assert(offsetof(CComponentData, aReserved951) == 951);
static_assert(offsetof(CComponentData, fParamC) == 953);
static_assert(offsetof(CComponentData, cTimesAreDouble) == 957);
static_assert(offsetof(CComponentData, cInUse) == 958);
static_assert(offsetof(CComponentData, cMoveState) == 959);
static_assert(offsetof(CComponentData, aReserved960) == 960);

// Offsets of the eight time fields that files from before the double times
// held as 64-bit integers, in upgrade order.
inline constexpr size_t kComponentIntegerTimeFields[8] = {
    offsetof(CComponentData, dSourceIn),   offsetof(CComponentData, dSourceLength),
    offsetof(CComponentData, dStart),      offsetof(CComponentData, dEnd),
    offsetof(CComponentData, dSourceBase), offsetof(CComponentData, dTimeA),
    offsetof(CComponentData, dTimeB),      offsetof(CComponentData, dMediaLength)};
