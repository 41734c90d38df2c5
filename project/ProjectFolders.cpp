// The folder tree of a project and free names for new projects, timelines
// and repositories. Every path is the root, the project name and the
// folders joined by plain concatenation with this platform's separator; the
// root is expected to end with a separator and nothing adds one.

#include <climits>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>

#include "files/PathParts.h"
#include "platform/Directory.h"
#include "project/Project.h"
#include "project/ProjectNames.h"
#include "project/RepositoryData.h"

namespace {

using namespace projectnames;

constexpr char kSeparator = platform::kPathSeparator;

// A fixed text field that a loaded file may have filled to its last byte.
std::string FieldText(const char* field, size_t size) {
  return std::string(field, ::strnlen(field, size));
}

// <root><name>/ followed by each folder and a separator.
std::string ProjectFolder(const CProjectData& data, std::initializer_list<const char*> folders) {
  std::string path = FieldText(data.szRootPath, sizeof(data.szRootPath)) +
                     FieldText(data.szProjectName, sizeof(data.szProjectName)) + kSeparator;
  for (const char* folder : folders) (path += folder) += kSeparator;
  return path;
}

// Copies path into a 260-byte buffer; a path that doesn't fit is refused
// with an empty `out`, never cut to a path of some other place.
int32_t CopyIfFits(const std::string& path, char* out) {
  if (out == nullptr) return -1;
  if (path.size() >= kPathBufferSize) {
    out[0] = '\0';
    return -1;
  }
  std::memcpy(out, path.c_str(), path.size() + 1);
  return 0;
}

bool PathExists(const char* path) {
  return platform::AccessPath(path, 0) == 0;
}

// The first n from 1 to last whose probe path (built by probe(n), an empty
// text for one that doesn't fit) is missing: 1 and *found = n; 0 when every
// probe exists; -1 when a probe doesn't fit.
template <class Probe>
int32_t FirstFreeNumber(int32_t last, Probe probe, int32_t* found) {
  for (int32_t n = 1; n <= last; ++n) {
    const std::string path = probe(n);
    if (path.empty() || path.size() >= kPathBufferSize) return -1;
    if (!PathExists(path.c_str())) {
      *found = n;
      return 1;
    }
  }
  return 0;
}

std::string Numbered(const char* format, int32_t n) {
  char text[64];
  std::snprintf(text, sizeof(text), format, n);
  return text;
}

// The generated name of a repository kind; empty for kinds without one.
std::string RepositoryName(int32_t kind, int32_t n) {
  if (kind < repositorykind::kRepositoryEffects) return Numbered(kNewRepositoryFormat, n);
  if (kind == repositorykind::kRepositoryEffects) return Numbered(kNewEffectsFormat, n);
  if (kind == repositorykind::kRepositoryDmxPresets) return Numbered(kNewDmxPresetFormat, n);
  return std::string();
}

}  // namespace

int32_t CProject::GetRootDir(char* out) {
  if (out == nullptr) return -1;
  return CopyIfFits(FieldText(projectData.szRootPath, sizeof(projectData.szRootPath)), out);
}

int32_t CProject::GetProjectDir(char* out) {
  if (out == nullptr) return -1;
  return CopyIfFits(ProjectFolder(projectData, {}), out);
}

int32_t CProject::GetProjectFilePath(char* out) {
  if (out == nullptr) return -1;
  return CopyIfFits(ProjectFolder(projectData, {}) +
                        FieldText(projectData.szProjectName, sizeof(projectData.szProjectName)) +
                        kProjectExtension,
                    out);
}

int32_t CProject::GetProjectFileName(char* out) {
  if (out == nullptr) return -1;
  return CopyIfFits(
      FieldText(projectData.szProjectName, sizeof(projectData.szProjectName)) + kProjectExtension,
      out);
}

int32_t CProject::GetProjectFileName(std::string* out) {
  if (out == nullptr) return -1;
  char name[kPathBufferSize];
  const int32_t result = GetProjectFileName(name);
  *out = name;
  return result;
}

int32_t CProject::GetMediaDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kMediaFolder}), out);
}

int32_t CProject::GetAvInDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kMediaFolder, kAvInFolder}), out);
}

int32_t CProject::GetAvDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kMediaFolder, kAvFolder}), out);
}

int32_t CProject::GetAudioDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kMediaFolder, kAudioFolder}), out);
}

int32_t CProject::GetGraphicsDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kMediaFolder, kGraphicsFolder}), out);
}

int32_t CProject::GetMiscDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kMediaFolder, kMiscFolder}), out);
}

int32_t CProject::GetDatabaseDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kDatabaseFolder}), out);
}

int32_t CProject::GetRepositoryDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kDatabaseFolder, kRepositoryFolder}), out);
}

int32_t CProject::GetTimelineDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kDatabaseFolder, kTimelineFolder}), out);
}

int32_t CProject::GetVersionsDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kVersionsFolder}), out);
}

int32_t CProject::GetWaveFormDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kWaveFormFolder}), out);
}

int32_t CProject::GetTmpDir(char* out) {
  return CopyIfFits(ProjectFolder(projectData, {kTmpFolder}), out);
}

void CProject::RemoveFolderFile(int32_t (CProject::*folder)(char*), const char* name,
                                const char* extension) {
  char directory[kPathBufferSize];
  char path[kPathBufferSize];
  if ((this->*folder)(directory) != 0) return;
  if (CopyIfFits(std::string(directory) + name + extension, path) == 0) std::remove(path);
}

int32_t CProject::MakeDirectories() {
  // Parents before children: each call makes one level only.
  static constexpr int32_t (CProject::*kTree[])(char*) = {
      &CProject::GetRootDir,       &CProject::GetProjectDir,  &CProject::GetMediaDir,
      &CProject::GetAvInDir,       &CProject::GetAvDir,       &CProject::GetAudioDir,
      &CProject::GetGraphicsDir,   &CProject::GetDatabaseDir, &CProject::GetVersionsDir,
      &CProject::GetRepositoryDir, &CProject::GetTimelineDir, &CProject::GetWaveFormDir,
      &CProject::GetTmpDir,        &CProject::GetMiscDir,
  };
  if (projectData.szProjectName[0] == '\0') return 0;
  for (const auto folder : kTree) {
    char path[kPathBufferSize];
    try {
      // An existing folder or an unwritable place stops nothing.
      if ((this->*folder)(path) == 0) platform::MakeDirectory(path);
    } catch (...) {
    }
  }
  return 0;
}

int32_t CProject::GetNewProjectName(char* out) {
  if (out == nullptr) return -1;
  const std::string root = FieldText(projectData.szRootPath, sizeof(projectData.szRootPath));
  // The probe is "%sProject%d%s" and a separator, read with its arguments
  // root, number and extension in this order; the format text handed down
  // began with "%P", which no formatter defines, so it is spelled out here.
  auto probe = [&](int32_t n) {
    return root + Numbered(kNewProjectFormat, n) + kProjectExtension + kSeparator;
  };
  int32_t n = 0;
  const int32_t result = FirstFreeNumber(kLastNewProjectNumber, probe, &n);
  if (result < 0) return -1;
  if (result > 0) CopyIfFits(Numbered(kNewProjectFormat, n), out);
  return 0;
}

int32_t CProject::GetNewTimelineName(char* out) {
  if (out == nullptr) return -1;
  char folder[kPathBufferSize];
  if (GetTimelineDir(folder) != 0) return -1;
  auto probe = [&](int32_t n) {
    return folder + Numbered(kNewTimelineFormat, n) + kTimelineExtension;
  };
  int32_t n = 0;
  if (FirstFreeNumber(INT32_MAX, probe, &n) <= 0) return -1;
  return CopyIfFits(Numbered(kNewTimelineFormat, n), out);
}

int32_t CProject::GetNewRepositoryName(char* out, int32_t kind) {
  if (out == nullptr) return -1;
  char folder[kPathBufferSize];
  if (GetRepositoryDir(folder) != 0) return -1;
  // The probe is the generic name for every kind: whether Effects3 is free
  // is decided by Repository3.Qzr, so numbers run across all repositories.
  auto probe = [&](int32_t n) {
    return folder + Numbered(kNewRepositoryFormat, n) + kRepositoryExtension;
  };
  int32_t n = 0;
  if (FirstFreeNumber(INT32_MAX, probe, &n) <= 0) return -1;
  return CopyIfFits(RepositoryName(kind, n), out);
}
