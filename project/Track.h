#pragma once
// CTrack: one track of a timeline, a time range of one kind with its
// components. Tracks have no file of their own: a timeline file holds each
// track's record followed at once by its components.
//
// Lock order: lockTrack first, then the m_OuterLock of components; where a
// caller's list is involved, its m_OuterLock comes before that of components.

#include <cstdint>
#include <cstdio>

#include "core/DataLock.h"
#include "core/Object.h"
#include "project/TrackData.h"
#include "project/TrackState.h"
#include "timeline/ComponentList.h"

// Bytes of the plain block of WriteRawBlock and ReadRawBlock.
inline constexpr int32_t kTrackRawBlockSize = 460;
// Passes after which FindFreePosition gives up.
inline constexpr int32_t kFreePositionPasses = 10000;

class CTrack : public CTrackData, public CObject {
 public:
  CTrack() = default;
  // Deletes all components first.
  ~CTrack() override;
  CTrack(const CTrack&) = delete;
  CTrack& operator=(const CTrack&) = delete;

  // The sized record (prefix 431, iComponentCount refreshed), then the
  // components. -1 for a null stream or a body that wasn't written.
  int32_t Save(FILE* stream);
  // -1 for a null stream, a failed read or a record above 431 bytes, with the
  // object unchanged. Older integer times are upgraded; then the components.
  int32_t Load(FILE* stream);

  // Record copied; components replaced by deep copies (ids stay: a twin).
  CTrack& CopyFrom(const CTrack& source);

  // Whether this track's kind takes components of this kind.
  bool AcceptsKind(int32_t componentKind) const;

  // What lies at a frame: 1 and the component's extent when a component
  // covers it, else 0 and the free gap around it (prevId, nextId: the
  // components that bound the gap). Any out pointer may be null.
  int32_t GetGapAt(int64_t frame, int64_t* gapStart, int64_t* gapEnd, int64_t* prevId,
                   int64_t* nextId);
  // The first tested frame at or behind startFrame with a gap of minLength
  // frames, stepping by the length of the interval that holds the frame; -1.
  int64_t FindFreePosition(int64_t startFrame, int64_t minLength);
  // 1 and out filled when a component lies at timeMs; 0 otherwise or for null.
  int32_t GetStateAtTime(double timeMs, CTrackState* out);

  // Component exchange by iUniqueId with a caller's copies. -1 for null.
  int32_t SetComponent(CComponent* source);
  int32_t SetComponents(CComponentList* sources);
  int32_t GetComponent(CComponent* target);
  int32_t GetComponents(CComponentList* targets);
  // Deep copies into out (emptied first): all, or those touching or covering
  // range[0]..range[1] (milliseconds). -1 for a null out.
  int32_t CopyComponents(CComponentList* out, const int64_t* range);

  // A plain block of 460 bytes at the stream's position, without prefix.
  // -1 for a null stream or a transfer of nothing.
  int32_t WriteRawBlock(FILE* stream);
  int32_t ReadRawBlock(FILE* stream);

  CComponentList components;
  CDataLock lockTrack;
};

// Whether a track of trackKind takes a component of componentKind.
bool IsTrackKindMatch(int32_t trackKind, int32_t componentKind);
// Whether two component kinds may stand in each other's place: kindA 0 takes
// all; 1, 4, 5 and 9 match each other; 2, 3, 6, 7, 8 only themselves.
bool IsComponentKindMatch(int32_t kindA, int32_t kindB);
