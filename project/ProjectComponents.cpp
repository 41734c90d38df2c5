// Tracks and components exchanged with a caller's twins by id, through every
// timeline of the project (walk W3 of ProjectWalk.h, in the lock order
// written there; an operation with a list argument takes that list's lock
// first).

#include <strings.h>

#include <cstring>

#include "project/OwnerCodes.h"
#include "project/Project.h"
#include "project/ProjectWalk.h"
#include "project/Repository.h"
#include "project/TimelineList.h"
#include "timeline/ComponentKind.h"

using namespace ownercode;
using projectwalk::ForEachComponent;
using projectwalk::ForEachTrack;
using projectwalk::Step;
using projectwalk::WalkCodes;

namespace {

int64_t IdOf(uint32_t idLow, uint32_t idHigh) {
  return static_cast<int64_t>((static_cast<uint64_t>(idHigh) << 32) | idLow);
}

// CComponent::CopyFrom takes the source's list locks, which are state of
// the source rather than its contents: a const twin is copied through this.
CComponent& Source(const CComponent& component) {
  return const_cast<CComponent&>(component);
}

CComponent* CopyOf(CComponent& component) {
  CComponent* copy = new CComponent;
  copy->CopyFrom(component);
  return copy;
}

// The first element of list with this id, or null.
CComponent* FindIn(CComponentList& list, int64_t id) {
  for (CComponent* element : list.m_aItems) {
    if (element != nullptr && element->iUniqueId == id) return element;
  }
  return nullptr;
}

// Track state bytes by `which`: 0 gives cState1 and 1 gives cState0 (in this
// order), 2 and 3 their own; false for any other value.
bool TrackStateByte(const CTrack& track, uint32_t which, int32_t* out) {
  switch (which) {
    case 0:
      *out = static_cast<int8_t>(track.cState1);
      return true;
    case 1:
      *out = static_cast<int8_t>(track.cState0);
      return true;
    case 2:
      *out = static_cast<int8_t>(track.cState2);
      return true;
    case 3:
      *out = static_cast<int8_t>(track.cState3);
      return true;
    default:
      return false;
  }
}

// Kinds that stand on no track of their own and so have no track state.
bool HasNoTrackState(int32_t kind) {
  return kind == componentkind::kKindKeyedVideo || kind == componentkind::kKindDmx;
}

constexpr WalkCodes kSetTrack{kOwnerSetTrackL, kOwnerSetTrackT, kOwnerSetTrackK};
constexpr WalkCodes kGetTrack{kOwnerGetTrackL, kOwnerGetTrackT, kOwnerGetTrackK};
constexpr WalkCodes kTrackIndex{kOwnerGetTrackIndexL, kOwnerGetTrackIndexT, kOwnerList};
constexpr WalkCodes kMovedMedia{kOwnerMovedMediaL, kOwnerMovedMediaT, kOwnerMovedMediaK};
constexpr WalkCodes kGetComponent{kOwnerGetComponentL, kOwnerGetComponentT, kOwnerGetComponentK};
constexpr WalkCodes kUpdateComponents{kOwnerUpdateComponentsL, kOwnerUpdateComponentsT,
                                      kOwnerUpdateComponentsK};
constexpr WalkCodes kFetch{kOwnerFetchComponentsL, kOwnerFetchComponentsT, kOwnerFetchComponentsK};
constexpr WalkCodes kParams{kOwnerSetComponentParamsL, kOwnerSetComponentParamsT,
                            kOwnerSetComponentParamsK};
constexpr WalkCodes kParam{kOwnerSetComponentParamL, kOwnerSetComponentParamT,
                           kOwnerSetComponentParamK};
constexpr WalkCodes kCollect{kOwnerCollectL, kOwnerCollectT, kOwnerCollectK};
constexpr WalkCodes kCopyAll{kOwnerCopyAllComponentsL, kOwnerCopyAllComponentsT, kOwnerList};
constexpr WalkCodes kMaxSerial{kOwnerGetMaxSerialL, kOwnerGetMaxSerialT, kOwnerGetMaxSerialK};
constexpr WalkCodes kComponentTrackIndex{kOwnerComponentTrackIndexL, kOwnerComponentTrackIndexT,
                                         kOwnerList};
constexpr WalkCodes kComponentTrackFlag{kOwnerList, kOwnerComponentTrackFlagT, kOwnerList};

}  // namespace

int32_t CProject::SetTrack(const CTrack* track) {
  if (track == nullptr) return -1;
  ForEachTrack(*pTimelineList, kSetTrack, [&](CTimeline&, CTrack& stored, int32_t) {
    if (stored.iId != track->iId) return Step::kNext;
    stored.CopyFrom(*track);
    Mark();
    return Step::kNextTimeline;
  });
  return 0;
}

int32_t CProject::GetTrack(CTrack* out) {
  if (out == nullptr) return -1;
  ForEachTrack(*pTimelineList, kGetTrack, [&](CTimeline&, CTrack& stored, int32_t) {
    if (stored.iId != out->iId) return Step::kNext;
    out->CopyFrom(stored);
    return Step::kNextTimeline;
  });
  return 0;
}

int32_t CProject::GetTrackIndex(const CTrack* track) {
  if (track == nullptr) return -1;
  int32_t found = -1;
  ForEachTrack(*pTimelineList, kTrackIndex, [&](CTimeline&, CTrack& stored, int32_t index) {
    if (stored.iId != track->iId) return Step::kNext;
    found = index;
    return Step::kNextTimeline;
  });
  return found;
}

int32_t CProject::UpdateComponent(const CComponent* component) {
  if (component == nullptr) return -1;
  const int64_t id = component->iUniqueId;
  ForEachComponent(*pTimelineList, kMovedMedia,
                   [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                     if (stored.iUniqueId != id) return Step::kNext;
                     stored.CopyFrom(Source(*component));
                     Mark();
                     return Step::kNextTrack;
                   });
  return 0;
}

int32_t CProject::GetComponent(CComponent* out) {
  if (out == nullptr) return -1;
  const int64_t id = out->iUniqueId;
  if (id == freeComponent.iUniqueId) {
    out->CopyFrom(freeComponent);
    return 0;
  }
  ForEachComponent(*pTimelineList, kGetComponent,
                   [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                     if (stored.iUniqueId != id) return Step::kNext;
                     out->CopyFrom(stored);
                     // A read that marks: its use makes the next save rotate.
                     Mark();
                     return Step::kNext;
                   });
  return 0;
}

int32_t CProject::UpdateComponents(CComponentList* list, uint8_t bMoveTracks) {
  if (list == nullptr) return -1;
  CDataLockGuard given(list->m_OuterLock, kOwnerUpdateComponentsC);
  if (list->GetCount() == 0) return 0;
  ForEachComponent(
      *pTimelineList, kUpdateComponents,
      [&](CTimeline& timeline, CTrack& track, int32_t t, int32_t index, CComponent& stored) {
        CComponent* element = FindIn(*list, stored.iUniqueId);
        if (element == nullptr) return Step::kNext;
        stored.CopyFrom(*element);
        Mark();
        const int32_t line = element->iLine;
        if (bMoveTracks == 0 || line == t || line < 0 || line >= timeline.tracks.m_aItems.GetSize())
          return Step::kNext;
        CTrack* target = timeline.tracks.m_aItems.GetAt(line);
        if (target == nullptr) return Step::kNext;
        // The slot goes, the component moves: index now holds the next one.
        track.components.Detach(index);
        stored.iLine = line;
        target->components.Add(&stored);
        return Step::kStay;
      });
  return 0;
}

int32_t CProject::FetchComponents(CComponentList* list) {
  if (list == nullptr) return -1;
  CDataLockGuard given(list->m_OuterLock, kOwnerFetchComponentsC);
  if (list->GetCount() == 0) return 0;
  ForEachComponent(*pTimelineList, kFetch,
                   [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                     for (CComponent* element : list->m_aItems) {
                       if (element == nullptr || element->iUniqueId != stored.iUniqueId) continue;
                       element->CopyFrom(stored);
                       Mark();
                     }
                     return Step::kNext;
                   });
  return 0;
}

int32_t CProject::SetComponentParams(uint32_t idLow, uint32_t idHigh, uint32_t a, uint32_t b) {
  const int64_t id = IdOf(idLow, idHigh);
  if (id == 0) return -1;
  ForEachComponent(*pTimelineList, kParams,
                   [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                     if (stored.iUniqueId != id) return Step::kNext;
                     std::memcpy(&stored.fParamA, &a, sizeof(a));  // bit patterns, as given
                     std::memcpy(&stored.fParamB, &b, sizeof(b));
                     Mark();
                     return Step::kNextTrack;
                   });
  return 0;
}

int32_t CProject::SetComponentParam(uint32_t idLow, uint32_t idHigh, uint32_t which,
                                    uint32_t value) {
  const int64_t id = IdOf(idLow, idHigh);
  if (id == 0) return -1;
  ForEachComponent(*pTimelineList, kParam,
                   [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                     if (stored.iUniqueId != id) return Step::kNext;
                     float* field = which != 0 ? &stored.fParamB : &stored.fParamA;
                     std::memcpy(field, &value, sizeof(value));
                     Mark();
                     return Step::kNextTrack;
                   });
  return 0;
}

int32_t CProject::CollectLinked(uint32_t idLow, uint32_t idHigh, CComponentList* out) {
  if (out == nullptr) return -1;
  const int64_t id = IdOf(idLow, idHigh);
  CDataLockGuard given(out->m_OuterLock, kOwnerCollectC);
  out->Clear();
  ForEachComponent(*pTimelineList, kCollect,
                   [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                     if (stored.iUniqueId == id || stored.iLinkId == id) out->Add(CopyOf(stored));
                     return Step::kNext;
                   });
  return 0;
}

int32_t CProject::CollectAtTime(int64_t timelineId, CComponentList* out, int64_t timeMs) {
  if (out == nullptr) return -1;
  const double time = static_cast<double>(timeMs);
  CDataLockGuard given(out->m_OuterLock, kOwnerCollectC);
  out->Clear();
  ForEachComponent(
      *pTimelineList, kCollect,
      [&](const CTimeline& timeline) { return timeline.iId == timelineId; },
      [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
        // Both ends count: a component ending at the moment is collected.
        if (stored.dStart <= time && stored.dEnd >= time) out->Add(CopyOf(stored));
        return Step::kNext;
      });
  return 0;
}

int32_t CProject::CopyAllComponents(CComponentList* out) {
  if (out == nullptr) return -1;
  CDataLockGuard given(out->m_OuterLock, kOwnerCopyAllComponentsC);
  out->Clear();
  ForEachComponent(*pTimelineList, kCopyAll,
                   [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                     out->Add(CopyOf(stored));
                     return Step::kNext;
                   });
  return 0;
}

int32_t CProject::CountMovedMedia() {
  int32_t count = 0;
  ForEachComponent(*pTimelineList, kMovedMedia,
                   [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                     if (stored.cMediaMoved != 0) ++count;
                     return Step::kNext;
                   });
  return count;
}

int32_t CProject::GetMaxSerial() {
  int32_t largest = 0;
  ForEachComponent(*pTimelineList, kMaxSerial,
                   [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                     if (stored.iSerial > largest) largest = stored.iSerial;
                     return Step::kNext;
                   });
  return largest;
}

int32_t CProject::GetComponentTrackIndex(const CComponent* component) {
  if (component == nullptr) return -1;
  const int64_t id = component->iUniqueId;
  int32_t found = -1;
  ForEachComponent(*pTimelineList, kComponentTrackIndex,
                   [&](CTimeline&, CTrack&, int32_t t, int32_t, CComponent& stored) {
                     if (stored.iUniqueId != id) return Step::kNext;
                     found = t;
                     return Step::kNextTrack;
                   });
  return found;
}

int32_t CProject::GetComponentTrackFlag(const CComponent* component, uint32_t which) {
  if (component == nullptr) return 0;
  if (HasNoTrackState(component->iKind)) return which == 1 ? 1 : 0;
  const int64_t id = component->iUniqueId;
  int32_t flag = 0;
  ForEachComponent(*pTimelineList, kComponentTrackFlag,
                   [&](CTimeline&, CTrack& track, int32_t, int32_t, CComponent& stored) {
                     if (stored.iUniqueId != id) return Step::kNext;
                     TrackStateByte(track, which, &flag);
                     return Step::kNextTrack;
                   });
  return flag;
}

int32_t CProject::MarkUsedMedia(CRepository* repository) {
  if (repository == nullptr) return -1;
  static constexpr WalkCodes kUsedMedia{kOwnerUpdateComponentsL, kOwnerUpdateComponentsT,
                                        kOwnerUpdateComponentsK};
  const CPointerArray<CComponent>& media = repository->components.m_aItems;
  const int32_t count = media.GetSize();  // read before the lock, as the walk always did
  CDataLockGuard repositoryLock(repository->lockRepository, kOwnerList);
  for (int32_t i = 0; i < count && i < media.GetSize(); ++i) {
    CComponent* medium = media.GetAt(i);
    if (medium == nullptr) continue;
    bool used = false;
    ForEachComponent(*pTimelineList, kUsedMedia,
                     [&](CTimeline&, CTrack&, int32_t, int32_t, CComponent& stored) {
                       if (::strncasecmp(stored.szPath, medium->szPath, sizeof(stored.szPath)) != 0)
                         return Step::kNext;
                       used = true;
                       return Step::kStop;
                     });
    medium->cInUse = used ? 1 : 0;
  }
  return 0;
}
