#include "project/ProjectTemplate.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "files/DataFile.h"
#include "platform/Directory.h"
#include "project/Project.h"
#include "project/ProjectFileAccess.h"
#include "project/ProjectNames.h"
#include "project/RepositoryList.h"
#include "project/TimelineList.h"

namespace {

using namespace projectnames;

// Writes one fresh file (no rotation: the template has no backups).
template <class Write>
bool WriteFresh(const std::string& path, Write write) {
  std::remove(path.c_str());
  FILE* stream = OpenDataFile(path.c_str(), false);
  if (stream == nullptr) return false;
  const bool written = write(stream);
  CloseDataFile(stream);
  return written;
}

void Rename(char* field, size_t size, const char* name) {
  std::memset(field, 0, size);
  std::memcpy(field, name, ::strnlen(name, size - 1));
}

}  // namespace

int32_t WriteProjectTemplate(const char* folder) {
  if (folder == nullptr) return -1;
  const std::string base = std::string(folder) + platform::kPathSeparator;
  CProject project;
  // No root and no name: the default content's free names are probed in
  // folders that don't exist, and opening the template makes no folders.
  std::memset(project.projectData.szRootPath, 0, sizeof(project.projectData.szRootPath));
  std::memset(project.projectData.szProjectName, 0, sizeof(project.projectData.szProjectName));
  project.EnsureDefaultContent();
  CTimeline* timeline = project.pTimelineList->GetAt(0);
  CRepository* repository = project.pRepositoryList->GetAt(0);
  if (timeline == nullptr || repository == nullptr) return -1;
  Rename(timeline->szName, sizeof(timeline->szName), kDefaultTimelineName);
  Rename(repository->szName, sizeof(repository->szName), kDefaultRepositoryName);

  const bool written = WriteFresh(base + kTemplateProjectName + kProjectExtension,
                                  [&](FILE* stream) {
                                    return projectfiles::WriteProjectFile(project, stream, true);
                                  }) &&
                       WriteFresh(base + kDefaultTimelineName + kTimelineExtension,
                                  [&](FILE* stream) { return timeline->Save(stream) == 0; }) &&
                       WriteFresh(base + kDefaultRepositoryName + kRepositoryExtension,
                                  [&](FILE* stream) { return repository->Save(stream) == 0; });
  return written ? 0 : -1;
}
