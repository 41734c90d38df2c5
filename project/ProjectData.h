#pragma once
// The head record of a project: the first 1873 bytes of its project file,
// written byte for byte as it stands in memory. Its size field is its own
// first field, so the record is not preceded by a size prefix.
//
// Only the names, the root folder, the two counts and szVersionName are read
// by this library; the other fields are carried for the application.

#include <cstddef>
#include <cstdint>

// Packed view settings inside the head record; stored and returned only.
#pragma pack(push, 1)
struct CProjectViewData {
  float fViewA = 0.0f;
  float fViewB = 0.0f;
  uint8_t cViewA = 0;
  float fViewC = 0.0f;
  float fViewD = 0.0f;
  uint8_t cViewB = 0;
  uint8_t cViewC = 0;
};
#pragma pack(pop)

static_assert(sizeof(CProjectViewData) == 19);
static_assert(offsetof(CProjectViewData, fViewA) == 0);
static_assert(offsetof(CProjectViewData, fViewB) == 4);
static_assert(offsetof(CProjectViewData, cViewA) == 8);
static_assert(offsetof(CProjectViewData, fViewC) == 9);
static_assert(offsetof(CProjectViewData, fViewD) == 13);
static_assert(offsetof(CProjectViewData, cViewB) == 17);
static_assert(offsetof(CProjectViewData, cViewC) == 18);

inline constexpr int32_t kProjectRecordSize = 1873;
inline constexpr size_t kProjectMagicSize = 6;
inline constexpr size_t kProjectTextSize = 260;
inline constexpr int32_t kProjectOpaqueRows = 10;
inline constexpr int32_t kProjectOpaqueColumns = 5;
inline constexpr size_t kProjectUnsetSize = 100;
inline constexpr size_t kProjectReservedSize = 732;

// The file mark, the default project name and the default root folder.
inline constexpr char kProjectMagic[] = ".qzpj";
inline constexpr char kDefaultProjectName[] = "Noname";
// The root of a new record is the first drive's root, spelled with this
// platform's separator.
inline constexpr char kDefaultRootPath[] = "C:/";

#pragma pack(push, 1)
struct CProjectData {
  // The defaults of a new project; abUnset is zeroed so that a record saved
  // from it never carries stray memory.
  CProjectData();

  int32_t iSize;
  char szMagic[kProjectMagicSize];
  int32_t iOpaqueA;
  int32_t iOpaqueB;
  char szProjectName[kProjectTextSize];
  char szRootPath[kProjectTextSize];  // ends with a separator
  int32_t iTimelineCount;
  int32_t iRepositoryCount;
  int32_t aOpaqueBlock[kProjectOpaqueRows][kProjectOpaqueColumns];
  int32_t iOpaqueC;
  int32_t iOpaqueD;
  CProjectViewData viewData;
  uint8_t abUnset[kProjectUnsetSize];
  int32_t iOpaqueE;
  int32_t iOpaqueF;
  char szVersionName[kProjectTextSize];
  uint8_t abReserved[kProjectReservedSize];
};
#pragma pack(pop)

static_assert(sizeof(CProjectData) == kProjectRecordSize);
static_assert(offsetof(CProjectData, iSize) == 0);
static_assert(offsetof(CProjectData, szMagic) == 4);
static_assert(offsetof(CProjectData, iOpaqueA) == 10);
static_assert(offsetof(CProjectData, iOpaqueB) == 14);
static_assert(offsetof(CProjectData, szProjectName) == 18);
static_assert(offsetof(CProjectData, szRootPath) == 278);
static_assert(offsetof(CProjectData, iTimelineCount) == 538);
static_assert(offsetof(CProjectData, iRepositoryCount) == 542);
static_assert(offsetof(CProjectData, aOpaqueBlock) == 546);
static_assert(offsetof(CProjectData, iOpaqueC) == 746);
static_assert(offsetof(CProjectData, iOpaqueD) == 750);
static_assert(offsetof(CProjectData, viewData) == 754);
static_assert(offsetof(CProjectData, abUnset) == 773);
static_assert(offsetof(CProjectData, iOpaqueE) == 873);
static_assert(offsetof(CProjectData, iOpaqueF) == 877);
static_assert(offsetof(CProjectData, szVersionName) == 881);
static_assert(offsetof(CProjectData, abReserved) == 1141);
