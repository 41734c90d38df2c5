#pragma once
// What a track holds at one moment: the plain result of GetStateAtTime.

#include <cstddef>
#include <cstdint>

#pragma pack(push, 1)
struct CTrackState {
  int32_t iTrackIndex;
  int32_t bFound;
  int32_t iComponentKind;
  int64_t iSourceFrame;
  int64_t iFileFrame;
};
#pragma pack(pop)

static_assert(sizeof(CTrackState) == 28);
static_assert(offsetof(CTrackState, iTrackIndex) == 0);
static_assert(offsetof(CTrackState, bFound) == 4);
static_assert(offsetof(CTrackState, iComponentKind) == 8);
static_assert(offsetof(CTrackState, iSourceFrame) == 12);
static_assert(offsetof(CTrackState, iFileFrame) == 20);
