#pragma once
// Helpers of the project object tests: timelines of tracks of components
// built in one call, twins taken from a project, scratch folder paths, and the
// owner code a lock keeps from its last holder.
//
// Records are packed: read their wider fields as values (a leading unary +)
// before the assertion macros bind them.

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "files/PathParts.h"
#include "project/Project.h"
#include "project/RepositoryList.h"
#include "project/TimelineList.h"
#include "tests/core/DataLockTestPeer.h"
#include "tests/support/TempFiles.h"

namespace projecttest {

// A component of kind 1 from start to end milliseconds with a path.
inline CComponent* MakeComponent(double start, double end, const char* path = "clip.avi") {
  auto* c = new CComponent;
  c->iKind = 1;
  c->dStart = start;
  c->dEnd = end;
  std::strncpy(c->szPath, path, sizeof(c->szPath) - 1);
  return c;
}

// A timeline named `name` with `tracks` tracks of `perTrack` components each;
// component k of a track stands from k*1000 to k*1000 + 500 ms.
inline CTimeline* MakeTimeline(const char* name, int32_t tracks, int32_t perTrack) {
  auto* timeline = new CTimeline;
  std::strncpy(timeline->szName, name, sizeof(timeline->szName) - 1);
  for (int32_t t = 0; t < tracks; ++t) {
    auto* track = new CTrack;
    track->iTrackKind = 0;
    for (int32_t k = 0; k < perTrack; ++k) {
      CComponent* c = MakeComponent(k * 1000.0, k * 1000.0 + 500.0);
      c->iLine = t;
      track->components.Add(c);
    }
    timeline->tracks.Add(track);
  }
  return timeline;
}

inline CTrack* TrackAt(CTimeline& timeline, int32_t t) {
  return timeline.tracks.GetAt(t);
}

inline CComponent* ComponentAt(CTimeline& timeline, int32_t t, int32_t k) {
  return timeline.tracks.GetAt(t)->components.GetAt(k);
}

inline CTimeline* StoredTimeline(CProject& project, int32_t index) {
  return project.pTimelineList->GetAt(index);
}

// A twin of a stored component: same id and contents, owned by the caller.
inline CComponent* Twin(CComponent& stored) {
  auto* twin = new CComponent;
  twin->CopyFrom(stored);
  return twin;
}

inline uint32_t Low(int64_t id) {
  return static_cast<uint32_t>(static_cast<uint64_t>(id));
}
inline uint32_t High(int64_t id) {
  return static_cast<uint32_t>(static_cast<uint64_t>(id) >> 32);
}

inline int32_t OwnerCode(const CDataLock& lock) {
  return CDataLockTestPeer::OwnerCode(lock);
}
inline bool IsHeld(const CDataLock& lock) {
  return CDataLockTestPeer::LockWord(lock) != 0;
}

// A scratch folder as the project tests use it: with a trailing separator.
inline std::string FolderOf(const testsupport::TempDir& dir) {
  return dir.Root() + "/";
}

// Points a project's head record at root and name.
inline void PlaceProject(CProject& project, const std::string& root, const char* name) {
  std::memset(project.projectData.szRootPath, 0, sizeof(project.projectData.szRootPath));
  std::memset(project.projectData.szProjectName, 0, sizeof(project.projectData.szProjectName));
  std::strncpy(project.projectData.szRootPath, root.c_str(), 259);
  std::strncpy(project.projectData.szProjectName, name, 259);
}

inline void Touch(const std::string& path) {
  testsupport::WriteFile(path, std::string());
}

using testsupport::Exists;

}  // namespace projecttest
