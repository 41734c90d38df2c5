#pragma once
// CTimeline: a stack of tracks and a list of markers, stored in a file of its
// own (<name>.Qzt) that holds the record, each track with its components, and
// the markers, back to back.
//
// Lock order: lockTimeline, then the m_OuterLock of tracks, then a track's
// lockTrack and the m_OuterLock of its components.

#include <cstdint>
#include <cstdio>

#include "core/DataLock.h"
#include "core/Object.h"
#include "project/TimelineData.h"
#include "project/TrackList.h"
#include "timeline/Component.h"
#include "timeline/MarkerPointList.h"

// Process-wide counts of the default track set: effect tracks (1 until
// AddConfiguredTracks sets it to 0) and DMX tracks (0 unless an application
// sets it).
extern int32_t iNumEffectTracks;
extern int32_t iNumDmxTracks;

class CTimeline : public CTimelineData, public CObject {
 public:
  CTimeline() = default;
  // Clears tracks, then markers.
  ~CTimeline() override;
  CTimeline(const CTimeline&) = delete;
  CTimeline& operator=(const CTimeline&) = delete;

  // The sized record (prefix 1028, both counts refreshed), the tracks, the
  // markers. -1 for a null stream or a body that wasn't written.
  int32_t Save(FILE* stream);
  // -1 for a null stream, a failed read or a record above 1028 bytes, with
  // the object unchanged. Older integer times are upgraded (seven fields).
  int32_t Load(FILE* stream);
  // Opens (creating a missing file), loads, closes: 0 whatever Load gave;
  // -1 for a null or over-long path or no stream.
  int32_t LoadFile(const char* path);
  // Rotates the backups, opens, saves, closes: 0; -1 for a null or
  // over-long path or no stream.
  int32_t SaveFile(const char* path);
  // RotateBackupFiles(path, bKeepMain). Always 0.
  int32_t RotateBackups(const char* path, uint8_t bKeepMain);
  // Moves .Bk1 to .Bk2 only. Always 0.
  int32_t RotateOnly(const char* path);

  // A twin: record, tracks, markers and iUserValue copied, all ids kept.
  CTimeline& CopyFrom(const CTimeline& source);
  // A new iId, and new ids for every track and component. Always 0.
  int32_t RenewIds();
  // Every track from 0 over this timeline's dLengthMs; takes no lock. Always 0.
  int32_t ResetTrackRanges();
  // count DMX tracks, only if there are no tracks yet; ranges reset. Always 0.
  int32_t AddTracks(int32_t count);
  // The default track set of a new timeline, after writing one video and four
  // audio tracks into the configuration. Always 0.
  int32_t AddConfiguredTracks();
  // Points every component of this media (by iUniqueId or iLinkId) that has
  // not been moved at source's file, keeping its own extension. -1 for null.
  int32_t RelinkMedia(CComponent* source);
  // Does nothing. Always 0.
  int32_t ReservedHook(uint32_t value);

  CTrackList tracks;
  CMarkerPointList markers;
  CDataLock lockTimeline;
  int32_t iUserValue = 0;  // copied by CopyFrom, never stored
};
