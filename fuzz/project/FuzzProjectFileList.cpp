// Loads the name entries of a project file from arbitrary bytes (the first
// four bytes are the entry count, as the head record would give it), saves
// them again, and uses each name as a project and a timeline would: as the
// project's name for every folder path, and as a timeline's name that the
// name test must find again. Memory stays bounded because the list stops
// adding empty entries shortly after the stream ends, whatever the count.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "files/PathParts.h"
#include "project/Project.h"
#include "project/ProjectFileList.h"
#include "project/TimelineList.h"

namespace {

// Entries of a run whose names are put to use; the rest are only loaded.
constexpr int32_t kNamesUsed = 16;

void UseName(const CProjectFileData& entry) {
  CProject project;
  std::memcpy(project.projectData.szProjectName, entry.szName, sizeof(entry.szName));
  char path[kPathBufferSize];
  project.GetProjectFilePath(path);
  project.GetTimelineDir(path);
  project.GetRepositoryDir(path);
  auto* timeline = new CTimeline;
  std::memcpy(timeline->szName, entry.szName, sizeof(entry.szName));
  project.AddTimeline(timeline);
  // A name without separators or dots must be found again by its file name.
  const size_t length = ::strnlen(entry.szName, sizeof(entry.szName));
  if (length == 0 || length > 200 || std::memchr(entry.szName, '/', length) != nullptr ||
      std::memchr(entry.szName, '.', length) != nullptr) {
    return;
  }
  char file[kPathBufferSize];
  std::memcpy(file, entry.szName, length);
  std::strcpy(file + length, ".Qzt");
  if (!project.HasTimeline(file)) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static FILE* sink = std::fopen("/dev/null", "wb");
  CProjectFileList list;
  int32_t count = 0;
  if (size <= sizeof(count)) {
    if (size == sizeof(count)) std::memcpy(&count, data, sizeof(count));
    list.Load(nullptr, count);  // no stream: bounded all the same
    return 0;
  }
  std::memcpy(&count, data, sizeof(count));
  FILE* stream = fmemopen(const_cast<uint8_t*>(data + sizeof(count)), size - sizeof(count), "rb");
  if (stream == nullptr) return 0;
  list.Load(stream, count);
  std::fclose(stream);
  if (sink != nullptr) list.Save(sink);
  for (int32_t i = 0; i < list.GetCount() && i < kNamesUsed; ++i) {
    const CProjectFileData* entry = list.m_aItems.GetAt(i);
    if (entry != nullptr) UseName(*entry);
  }
  return 0;
}
