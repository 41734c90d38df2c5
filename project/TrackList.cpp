#include "project/TrackList.h"

#include "core/DataLockGuard.h"
#include "project/OwnerCodes.h"

namespace {

// Points every link to oldId, on every track of the list, at newId. The
// caller holds the list's inner lock.
void RelinkAll(CPointerArray<CTrack>& tracks, int64_t oldId, int64_t newId) {
  for (CTrack* track : tracks) {
    if (track == nullptr) continue;
    for (CComponent* component : track->components.m_aItems) {
      if (component != nullptr && component->iLinkId == oldId) component->iLinkId = newId;
    }
  }
}

}  // namespace

int32_t CTrackList::RenewIds() {
  CDataLockGuard inner(m_InnerLock, ownercode::kOwnerList);
  if (GetCount() == 0) return 0;
  for (CTrack* track : m_aItems) {
    if (track != nullptr) track->iId = CTrackData().iId;
  }
  for (CTrack* track : m_aItems) {
    if (track == nullptr) continue;
    CDataLockGuard componentsLock(track->components.m_OuterLock,
                                  ownercode::kOwnerTrackSetComponents);
    for (CComponent* component : track->components.m_aItems) {
      if (component == nullptr) continue;
      const int64_t oldId = component->iUniqueId;
      const int64_t newId = CComponentData().iUniqueId;
      component->iUniqueId = newId;
      RelinkAll(m_aItems, oldId, newId);
    }
  }
  return 0;
}

int32_t CTrackList::GetStatesAtTime(double timeMs, int32_t maxEntries, CTrackState* out) {
  if (out == nullptr) return 0;  // nowhere to write
  CDataLockGuard inner(m_InnerLock, ownercode::kOwnerList);
  const int32_t count = GetCount() < maxEntries ? GetCount() : maxEntries;
  for (int32_t i = 0; i < count; ++i) {
    CTrack* track = m_aItems.GetAt(i);
    if (track == nullptr) continue;
    out[i].iTrackIndex = i;
    track->GetStateAtTime(timeMs, &out[i]);
  }
  return 0;
}
