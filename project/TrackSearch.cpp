// Searches along one track, in frames of the default rate: what lies at a
// frame, where the next free stretch is, and what plays at a moment.

#include "core/DataLockGuard.h"
#include "project/OwnerCodes.h"
#include "project/Track.h"
#include "time/TimeCode.h"

namespace {

int64_t FramesOf(double ms) {
  return FramesAtDefaultRate(ms);
}

// Whether a component covers frame: s <= frame < e.
bool Covers(const CComponent& component, int64_t frame, int64_t* start, int64_t* end) {
  *start = FramesOf(component.dStart);
  *end = FramesOf(component.dEnd);
  return *start <= frame && frame < *end;
}

}  // namespace

int32_t CTrack::GetGapAt(int64_t frame, int64_t* gapStart, int64_t* gapEnd, int64_t* prevId,
                         int64_t* nextId) {
  int64_t lo = FramesOf(dStartMs);
  int64_t hi = FramesOf(dStartMs + dLengthMs);
  int32_t inside = 0;
  {
    // Order: the track's lock, then its component list's.
    CDataLockGuard trackLock(lockTrack, ownercode::kOwnerTrackLookup);
    CDataLockGuard componentsLock(components.m_OuterLock, ownercode::kOwnerTrackLookupComponents);
    for (const CComponent* component : components.m_aItems) {
      if (component == nullptr) continue;
      int64_t s = 0;
      int64_t e = 0;
      if (Covers(*component, frame, &s, &e)) {
        lo = s, hi = e, inside = 1;
        break;
      }
      if (e <= frame && lo < e) {
        lo = e;
        if (prevId != nullptr) *prevId = component->iUniqueId;
      }
      if (frame <= s && s < hi) {
        hi = s;
        if (nextId != nullptr) *nextId = component->iUniqueId;
      }
    }
  }
  if (gapStart != nullptr) *gapStart = lo;
  if (gapEnd != nullptr) *gapEnd = hi;
  return inside;
}

int64_t CTrack::FindFreePosition(int64_t startFrame, int64_t minLength) {
  const int64_t end = FramesOf(dLengthMs);  // the length alone, without dStartMs
  int64_t pos = startFrame < 0 ? 0 : startFrame;
  for (int32_t pass = 0; pass < kFreePositionPasses; ++pass) {
    int64_t lo = 0;
    int64_t hi = 0;
    const int32_t inside = GetGapAt(pos, &lo, &hi, nullptr, nullptr);
    if (inside == 0 && hi - lo >= minLength) return pos;
    // Steps by the interval's length from pos, not to its end: a later free
    // stretch may be jumped over, and that is how positions have always been found.
    pos += hi - lo;
    if (pos >= end) return -1;
  }
  return -1;
}

int32_t CTrack::GetStateAtTime(double timeMs, CTrackState* out) {
  if (out == nullptr) return 0;
  const int64_t frame = FramesOf(timeMs);
  // Order: the track's lock, then its component list's.
  CDataLockGuard trackLock(lockTrack, ownercode::kOwnerTrackLookup);
  CDataLockGuard componentsLock(components.m_OuterLock, ownercode::kOwnerTrackLookupComponents);
  out->bFound = 0;
  for (const CComponent* component : components.m_aItems) {
    int64_t s = 0;
    int64_t e = 0;
    if (component == nullptr || !Covers(*component, frame, &s, &e)) continue;
    out->bFound = 1;
    out->iComponentKind = component->iKind;
    out->iSourceFrame = component->GetSourceFrame(timeMs);
    out->iFileFrame = component->GetFileFrame(timeMs);
    break;
  }
  return out->bFound;
}
