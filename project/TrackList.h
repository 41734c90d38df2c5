#pragma once
// CTrackList: the tracks of a timeline, in their order from top to bottom.

#include <cstdint>

#include "project/IdOwningList.h"
#include "project/Track.h"
#include "project/TrackState.h"

// Start slot of a program's global track list (platform/StartOrder.h).
inline constexpr int kStartTrackList = 1060;

class CTrackList : public CIdOwningList<CTrack> {
 public:
  CTrackList() = default;
  ~CTrackList() override = default;

  // Gives every track and every component a new id, and points the links
  // (iLinkId) of all components of this list at the new ids. Always 0.
  int32_t RenewIds();
  // out[i] for the first min(count, maxEntries) non-null tracks: iTrackIndex
  // = i and the track's state at timeMs. Always 0.
  int32_t GetStatesAtTime(double timeMs, int32_t maxEntries, CTrackState* out);
};
