#pragma once
// The persistent record of one repository: its name (which is also its
// file's name), its kind and the count of the components that follow it.

#include <cstddef>
#include <cstdint>

inline constexpr int32_t kRepositoryRecordSize = 964;
inline constexpr int32_t kRepositoryNameSize = 260;

// Repository kinds (iRepositoryKind).
namespace repositorykind {
inline constexpr int32_t kRepositoryAny = 0;
inline constexpr int32_t kRepositoryMedia = 1;
inline constexpr int32_t kRepositoryEffects = 2;
inline constexpr int32_t kRepositoryDmxPresets = 3;
}  // namespace repositorykind

#pragma pack(push, 1)
struct CRepositoryData {
  // Zeroes the record, sets the defaults and draws a fresh iId (repository kind).
  CRepositoryData();
  CRepositoryData(const CRepositoryData&) = default;
  CRepositoryData& operator=(const CRepositoryData&) = default;

  int32_t iSize;  // written back as loaded; the prefix in front is always 964
  int64_t iId;
  char szName[kRepositoryNameSize];
  uint8_t abBlock128[128];
  uint8_t abBlock256[256];
  int32_t iRepositoryKind;
  int32_t iComponentCount;
  uint8_t abReserved[300];
};
#pragma pack(pop)

static_assert(sizeof(CRepositoryData) == kRepositoryRecordSize);
static_assert(offsetof(CRepositoryData, iSize) == 0);
static_assert(offsetof(CRepositoryData, iId) == 4);
static_assert(offsetof(CRepositoryData, szName) == 12);
static_assert(offsetof(CRepositoryData, abBlock128) == 272);
static_assert(offsetof(CRepositoryData, abBlock256) == 400);
static_assert(offsetof(CRepositoryData, iRepositoryKind) == 656);
static_assert(offsetof(CRepositoryData, iComponentCount) == 660);
static_assert(offsetof(CRepositoryData, abReserved) == 664);
