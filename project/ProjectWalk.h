#pragma once
// The walks of the project's edit operations by id: the same walk with a
// different action.
//
//   W1, W2  one timeline (repository) by id, under the list's outer lock.
//   W3      every track (and every component) of every timeline.
//
// Lock order, the one order of the project database:
//   C (a component list handed in by the caller, taken by the operation)
//   L  m_OuterLock of the timeline list
//   T  a timeline's lockTimeline
//   K  m_OuterLock of that timeline's track list
// released in reverse, K before T. Each lock is held by a CDataLockGuard, so
// every way out of a walk releases what it took. The repository list's lock
// is never held together with L here.

#include <cstdint>

#include "core/DataLockGuard.h"
#include "project/TimelineList.h"
#include "timeline/Component.h"

namespace projectwalk {

// Owner codes of one walk over all timelines.
struct WalkCodes {
  int32_t iList;      // L
  int32_t iTimeline;  // T
  int32_t iTracks;    // K
};

// What a visit asks of the walk next.
enum class Step {
  kNext,          // the next component (track)
  kStay,          // the same index again: the visit took the element out
  kNextTrack,     // leave this track, go on with the next
  kNextTimeline,  // leave this timeline, go on with the next
  kStop,          // end the whole walk
};

// W1 and W2: action(element) on the first element whose iId is id, under the
// list's outer lock taken with `code`. Whether one was found.
template <class List, class Action>
bool WithElementById(List& list, int64_t id, int32_t code, Action action) {
  CDataLockGuard outer(list.m_OuterLock, code);
  for (auto* element : list.m_aItems) {
    if (element != nullptr && element->iId == id) {
      action(*element);
      return true;
    }
  }
  return false;
}

// W3 over tracks: visit(timeline, track, trackIndex) -> Step, for every
// timeline that accept(timeline) lets in; T and K are taken only for those.
template <class Accept, class Visit>
void ForEachTrack(CTimelineList& list, const WalkCodes& codes, Accept accept, Visit visit) {
  CDataLockGuard timelines(list.m_OuterLock, codes.iList);
  for (int32_t i = 0; i < list.m_aItems.GetSize(); ++i) {
    CTimeline* timeline = list.m_aItems.GetAt(i);
    if (timeline == nullptr || !accept(*timeline)) continue;
    CDataLockGuard timelineLock(timeline->lockTimeline, codes.iTimeline);
    CDataLockGuard tracksLock(timeline->tracks.m_OuterLock, codes.iTracks);
    Step step = Step::kNext;
    const CPointerArray<CTrack>& tracks = timeline->tracks.m_aItems;
    for (int32_t t = 0; t < tracks.GetSize(); ++t) {
      CTrack* track = tracks.GetAt(t);
      if (track == nullptr) continue;
      step = visit(*timeline, *track, t);
      if (step == Step::kNextTimeline || step == Step::kStop) break;
    }
    if (step == Step::kStop) return;  // K, then T, then L let go on the way out
  }
}

template <class Visit>
void ForEachTrack(CTimelineList& list, const WalkCodes& codes, Visit visit) {
  ForEachTrack(
      list, codes, [](const CTimeline&) { return true; }, visit);
}

// W3 over components: visit(timeline, track, trackIndex, index, component)
// -> Step. The count of a track is read afresh on each step, since a visit
// may move the component at `index` out of its track (kStay).
template <class Accept, class Visit>
void ForEachComponent(CTimelineList& list, const WalkCodes& codes, Accept accept, Visit visit) {
  ForEachTrack(list, codes, accept, [&](CTimeline& timeline, CTrack& track, int32_t t) {
    const CPointerArray<CComponent>& components = track.components.m_aItems;
    int32_t index = 0;
    while (index < components.GetSize()) {
      CComponent* component = components.GetAt(index);
      if (component == nullptr) {
        ++index;
        continue;
      }
      const Step step = visit(timeline, track, t, index, *component);
      if (step == Step::kNext) ++index;
      if (step == Step::kNextTrack) break;
      if (step == Step::kNextTimeline || step == Step::kStop) return step;
    }
    return Step::kNext;
  });
}

template <class Visit>
void ForEachComponent(CTimelineList& list, const WalkCodes& codes, Visit visit) {
  ForEachComponent(
      list, codes, [](const CTimeline&) { return true; }, visit);
}

}  // namespace projectwalk
