// The list operations of a project and the exchange of whole timelines and
// repositories with a caller's twins by id (walks W1 and W2 of
// ProjectWalk.h). Setters mark the project changed only when they found
// their twin.

#include <strings.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>

#include "files/PathParts.h"
#include "project/ListCopy.h"
#include "project/OwnerCodes.h"
#include "project/Project.h"
#include "project/ProjectNames.h"
#include "project/ProjectWalk.h"
#include "project/RepositoryList.h"
#include "project/TimelineList.h"

using namespace ownercode;
using projectwalk::WithElementById;

namespace {

// Replaces target's markers by copies of source's, as a timeline copy does.
void CopyMarkers(CMarkerPointList& target, const CMarkerPointList& source) {
  // Copying takes the source's list lock, which leaves its markers as they were.
  ReplaceWithCopies(target, const_cast<CMarkerPointList&>(source),
                    [](CMarkerPoint& marker) { return marker.Clone(); });
}

// fViewA, fViewB and cViewB track by track; nothing unless both timelines
// have as many tracks.
void CopyTrackViews(CTimeline& target, const CTimeline& source) {
  const CPointerArray<CTrack>& to = target.tracks.m_aItems;
  const CPointerArray<CTrack>& from = source.tracks.m_aItems;
  if (to.GetSize() != from.GetSize()) return;
  for (int32_t i = 0; i < to.GetSize(); ++i) {
    CTrack* t = to.GetAt(i);
    const CTrack* f = from.GetAt(i);
    if (t == nullptr || f == nullptr) continue;
    t->fViewA = f->fViewA;
    t->fViewB = f->fViewB;
    t->cViewB = f->cViewB;
  }
}

// A double cut towards zero; values outside the i64 range stop at its ends
// and NaN gives 0, where a plain conversion would be undefined.
int64_t TruncateToInt64(double value) {
  if (std::isnan(value)) return 0;
  if (value >= 9223372036854775808.0) return std::numeric_limits<int64_t>::max();
  if (value < -9223372036854775808.0) return std::numeric_limits<int64_t>::min();
  return static_cast<int64_t>(value);
}

// The bare name of the file of path: no folder and no extension.
void BareName(const char* path, char* out) {
  GetFileNamePart(path, out);
  CutExtension(out);
}

// Whether an element of list has the name, case-blind; under the list's
// outer lock with `code`.
template <class List>
bool HasNamed(List& list, const char* path, int32_t code) {
  if (path == nullptr) return false;
  char name[kPathBufferSize];
  BareName(path, name);
  CDataLockGuard outer(list.m_OuterLock, code);
  for (const auto* element : list.m_aItems) {
    if (element != nullptr && ::strncasecmp(name, element->szName, sizeof(element->szName)) == 0) {
      return true;
    }
  }
  return false;
}

// Removes the stored twin of `twin` under the list's outer lock taken with
// `code`; *count receives the count that is left. What RemoveById gave.
template <class List, class Element>
int32_t RemoveTwin(List& list, const Element& twin, int32_t code, int32_t* count) {
  CDataLockGuard outer(list.m_OuterLock, code);
  const uint64_t id = static_cast<uint64_t>(twin.iId);
  const int32_t result =
      list.RemoveById(static_cast<uint32_t>(id), static_cast<uint32_t>(id >> 32));
  *count = list.GetCount();
  return result;
}

// A stored name field as a terminated text.
template <size_t N>
void NameOf(const char (&field)[N], char* out) {
  const size_t length = ::strnlen(field, N);
  std::memcpy(out, field, length);
  out[length] = '\0';
}

}  // namespace

int32_t CProject::AddTimeline(CTimeline* timeline) {
  if (timeline == nullptr) return -1;
  // No lock of its own: EnsureDefaultContent calls this holding the list's.
  pTimelineList->m_aItems.Add(timeline);
  Mark();
  return 0;
}

int32_t CProject::AddRepository(CRepository* repository) {
  if (repository == nullptr) return -1;
  pRepositoryList->m_aItems.Add(repository);
  Mark();
  return 0;
}

int32_t CProject::RemoveTimeline(const CTimeline* timeline, uint8_t bDeleteFiles) {
  if (timeline == nullptr) return -1;
  // The name is taken before the removal, so that passing the stored object
  // itself instead of a twin reads nothing that the removal deleted.
  char name[kPathBufferSize];
  NameOf(timeline->szName, name);
  int32_t count = 0;
  const int32_t result = RemoveTwin(*pTimelineList, *timeline, kOwnerRemoveTimeline, &count);
  projectData.iTimelineCount = count;
  if (bDeleteFiles == 1) {
    // The timeline and both its backups go.
    for (const char* extension : {projectnames::kTimelineExtension, projectnames::kBackup1Extension,
                                  projectnames::kBackup2Extension}) {
      RemoveFolderFile(&CProject::GetTimelineDir, name, extension);
    }
  }
  Mark();
  return result;
}

int32_t CProject::RemoveRepository(const CRepository* repository, uint8_t bDeleteFile) {
  if (repository == nullptr) return -1;
  char name[kPathBufferSize];
  NameOf(repository->szName, name);  // before the removal, as above
  int32_t count = 0;
  const int32_t result = RemoveTwin(*pRepositoryList, *repository, kOwnerRemoveRepository, &count);
  projectData.iRepositoryCount = count;
  if (bDeleteFile == 1) {
    // Only the repository file: unlike a timeline's, its backups stay.
    RemoveFolderFile(&CProject::GetRepositoryDir, name, projectnames::kRepositoryExtension);
  }
  Mark();
  return result;
}

bool CProject::HasTimeline(const char* path) {
  return HasNamed(*pTimelineList, path, kOwnerSetRepository);
}

bool CProject::HasRepository(const char* path) {
  return HasNamed(*pRepositoryList, path, kOwnerSetRepository);
}

int32_t CProject::TouchTimelines(uint32_t value) {
  if (value == 0) return -1;
  { CDataLockGuard timelines(pTimelineList->m_OuterLock, kOwnerTouchTimelines); }
  Mark();
  return 0;
}

int32_t CProject::MarkChanged(uint32_t) {
  Mark();
  return 0;
}

int32_t CProject::MarkChanged(uint32_t, uint32_t) {
  Mark();
  return 0;
}

int32_t CProject::ReservedHook(uint32_t) {
  return 0;
}
int32_t CProject::ReservedHookB(uint32_t) {
  return 0;
}
int32_t CProject::ReservedHookC(uint32_t) {
  return 0;
}

int32_t CProject::SetTimeline(const CTimeline* timeline) {
  if (timeline == nullptr) return -1;
  if (WithElementById(*pTimelineList, timeline->iId, kOwnerSetTimeline,
                      [&](CTimeline& stored) { stored.CopyFrom(*timeline); })) {
    Mark();
  }
  return 0;
}

int32_t CProject::GetTimeline(CTimeline* out) {
  if (out == nullptr) return -1;
  WithElementById(*pTimelineList, out->iId, kOwnerGetTimeline,
                  [&](CTimeline& stored) { out->CopyFrom(stored); });
  return 0;
}

int32_t CProject::SetTimelineMarkers(const CTimeline* timeline) {
  if (timeline == nullptr) return -1;
  if (WithElementById(*pTimelineList, timeline->iId, kOwnerSetTimeline, [&](CTimeline& stored) {
        stored.iMarkerCount = timeline->iMarkerCount;
        CopyMarkers(stored.markers, timeline->markers);
      })) {
    Mark();
  }
  return 0;
}

int32_t CProject::GetTimelineMarkers(CTimeline* out) {
  if (out == nullptr) return -1;
  WithElementById(*pTimelineList, out->iId, kOwnerGetTimeline, [&](CTimeline& stored) {
    out->iMarkerCount = stored.iMarkerCount;
    CopyMarkers(out->markers, stored.markers);
  });
  return 0;
}

int32_t CProject::SetTrackViews(const CTimeline* timeline) {
  if (timeline == nullptr) return -1;
  WithElementById(*pTimelineList, timeline->iId, kOwnerSetTrackViews,
                  [&](CTimeline& stored) { CopyTrackViews(stored, *timeline); });
  return 0;
}

int32_t CProject::GetTrackViews(CTimeline* out) {
  if (out == nullptr) return -1;
  WithElementById(*pTimelineList, out->iId, kOwnerGetTrackViews,
                  [&](CTimeline& stored) { CopyTrackViews(*out, stored); });
  return 0;
}

int64_t CProject::GetTimelineCursor(const CTimeline* timeline) {
  if (timeline == nullptr) return 0;
  int64_t cursor = 0;
  WithElementById(*pTimelineList, timeline->iId, kOwnerGetTimelineCursor,
                  [&](CTimeline& stored) { cursor = TruncateToInt64(stored.dCursorMs); });
  return cursor;
}

int32_t CProject::SetTimelineCursor(const CTimeline* timeline, int64_t timeMs) {
  if (timeline == nullptr) return -1;
  WithElementById(*pTimelineList, timeline->iId, kOwnerSetTimelineCursor,
                  [&](CTimeline& stored) { stored.dCursorMs = static_cast<double>(timeMs); });
  return 0;
}

int32_t CProject::SetRepository(const CRepository* repository) {
  if (repository == nullptr) return -1;
  if (WithElementById(*pRepositoryList, repository->iId, kOwnerSetRepository,
                      [&](CRepository& stored) { stored.CopyFrom(*repository); })) {
    Mark();
  }
  return 0;
}

int32_t CProject::GetRepository(CRepository* out) {
  if (out == nullptr) return -1;
  WithElementById(*pRepositoryList, out->iId, kOwnerGetRepository,
                  [&](CRepository& stored) { out->CopyFrom(stored); });
  return 0;
}
