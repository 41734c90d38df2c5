#include "project/Timeline.h"

#include <cstring>
#include <string>

#include "config/GlobalCfg.h"
#include "core/DataLockGuard.h"
#include "files/PathParts.h"
#include "project/ListCopy.h"
#include "project/OwnerCodes.h"

int32_t iNumEffectTracks = 1;
int32_t iNumDmxTracks = 0;

CTimeline::~CTimeline() {
  tracks.Clear();
  markers.Clear();
}

CTimeline& CTimeline::CopyFrom(const CTimeline& source) {
  if (&source == this) return *this;
  std::memcpy(static_cast<CTimelineData*>(this), static_cast<const CTimelineData*>(&source),
              sizeof(CTimelineData));
  // Copying takes the source's list locks, which leaves it as it was.
  auto& from = const_cast<CTimeline&>(source);
  ReplaceWithCopies(tracks, from.tracks, [](CTrack& track) {
    auto* copy = new CTrack;
    copy->CopyFrom(track);
    return copy;
  });
  ReplaceWithCopies(markers, from.markers, [](CMarkerPoint& marker) { return marker.Clone(); });
  iUserValue = source.iUserValue;
  return *this;
}

int32_t CTimeline::RenewIds() {
  iId = CTimelineData().iId;
  tracks.RenewIds();
  return 0;
}

int32_t CTimeline::ResetTrackRanges() {
  for (CTrack* track : tracks.m_aItems) {
    if (track == nullptr) continue;
    track->dStartMs = 0.0;
    track->dLengthMs = dLengthMs;
  }
  return 0;
}

namespace {

// Appends a new track of this kind and height; the caller holds the list's
// outer lock.
void AddTrack(CTrackList& tracks, uint32_t kind, int32_t sizeY = kTrackSizeY) {
  auto* track = new CTrack;
  track->iTrackKind = kind;
  track->iSizeY = sizeY;
  tracks.Add(track);
}

// Video tracks with an effect track between the two of each pair.
void AddVideoAndEffectTracks(CTrackList& tracks, int32_t videoCount) {
  int32_t effects = 0;
  int32_t videos = 0;
  while (videos < videoCount) {
    AddTrack(tracks, trackkind::kTrackVideo);
    ++videos;
    if (effects < iNumEffectTracks) {
      AddTrack(tracks, trackkind::kTrackEffect, kEffectTrackSizeY);
      ++effects;
    }
    if (videos >= videoCount) break;
    AddTrack(tracks, trackkind::kTrackVideo);
    ++videos;
  }
}

}  // namespace

int32_t CTimeline::AddTracks(int32_t count) {
  {
    CDataLockGuard tracksLock(tracks.m_OuterLock, ownercode::kOwnerAddTracks);
    if (tracks.GetCount() == 0) {
      for (int32_t i = 0; i < count; ++i) AddTrack(tracks, trackkind::kTrackDmx);
    }
    iTrackCount = tracks.GetCount();
  }
  return ResetTrackRanges();
}

int32_t CTimeline::AddConfiguredTracks() {
  {
    CDataLockGuard tracksLock(tracks.m_OuterLock, ownercode::kOwnerAddConfiguredTracks);
    // Written before they are read, on purpose: a default timeline has one
    // video and four audio tracks whatever the settings said, and the
    // configuration shows these values from now on.
    g_GlobalCfg.cfg.iNumVidTraks = 1;
    g_GlobalCfg.cfg.iNumAudTraks = 4;
    iNumEffectTracks = 0;
    int32_t videoCount = g_GlobalCfg.cfg.iNumVidTraks;
    int32_t audioCount = g_GlobalCfg.cfg.iNumAudTraks;
    if (videoCount < 2 && iNumEffectTracks >= 1) videoCount = 2;
    if (videoCount < 1) videoCount = 1;
    if (audioCount < 2) audioCount = 2;
    if (tracks.GetCount() == 0) {
      AddVideoAndEffectTracks(tracks, videoCount);
      for (int32_t i = 0; i < audioCount; ++i) AddTrack(tracks, trackkind::kTrackAudio);
      for (int32_t i = 0; i < iNumDmxTracks; ++i) AddTrack(tracks, trackkind::kTrackDmx);
    }
    iTrackCount = tracks.GetCount();
  }
  return ResetTrackRanges();
}

namespace {

// Whether a component shows the medium of source: as itself or as its child.
bool ShowsMedium(const CComponent& component, const CComponent& source) {
  return component.iUniqueId == source.iUniqueId || component.iLinkId == source.iUniqueId;
}

// component's path becomes source's path with component's own extension.
void PointAt(CComponent& component, const CComponent& source) {
  // Both fields are copied first: a loaded field need not be terminated.
  char path[kPathBufferSize];
  char ownPath[kPathBufferSize];
  char extension[kPathBufferSize];
  CopyPathText(path, source.szPath);
  CutExtension(path);
  CopyPathText(ownPath, component.szPath);
  GetExtensionPart(ownPath, extension);
  // A joined path longer than the field is cut.
  CopyPathText(component.szPath, (std::string(path) + extension).c_str());
  component.cMediaMoved = 1;
  component.cMoveState = 2;
}

}  // namespace

int32_t CTimeline::RelinkMedia(CComponent* source) {
  if (source == nullptr) return -1;
  for (CTrack* track : tracks.m_aItems) {
    if (track == nullptr) continue;
    for (CComponent* component : track->components.m_aItems) {
      if (component == nullptr || !ShowsMedium(*component, *source)) continue;
      if (component->cMoveState == 0) PointAt(*component, *source);
    }
  }
  return 0;
}

int32_t CTimeline::ReservedHook(uint32_t) {
  return 0;
}
