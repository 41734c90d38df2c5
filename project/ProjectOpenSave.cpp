// Create, open and save of a whole project: the template of the application
// directory, the full open with its check of the stored root, the open of a
// set under another extension, the save with its backups, and the default
// content of a project that has none.
//
// Every operation here runs with the application directory as the current
// directory, so a relative path is taken from there; the caller's directory
// and drive come back before it returns.

#include <cctype>
#include <cstring>
#include <string>

#include "config/GlobalCfg.h"
#include "core/DataLockGuard.h"
#include "files/AppDirectories.h"
#include "files/DataFile.h"
#include "files/PathParts.h"
#include "platform/Directory.h"
#include "project/BackupRotation.h"
#include "project/OwnerCodes.h"
#include "project/Project.h"
#include "project/ProjectFileList.h"
#include "project/ProjectNames.h"
#include "project/ProjectFileAccess.h"
#include "project/RepositoryList.h"
#include "project/SaveSet.h"
#include "project/TimelineList.h"
#include "time/TimeCode.h"

namespace {

using namespace projectnames;
using projectfiles::CAppDirScope;
using projectfiles::FieldText;

constexpr char kSeparator = platform::kPathSeparator;

// Default content of a timeline made by EnsureDefaultContent.
constexpr double kShortestDefaultLengthMs = 10000.0;
constexpr double kDefaultRangeFromMs = 1000.0;
constexpr double kDefaultRangeToMs = 30000.0;
constexpr int32_t kInitialTimeZoom = 4;

// iTimeZoom from the setting iDefTimeZoom: 0 to 15 count down from 16, and
// anything else gives 7.
int32_t TimeZoomFromSetting(int32_t setting) {
  constexpr int32_t kLastSetting = 15;
  constexpr int32_t kOtherZoom = 7;
  if (setting < 0 || setting > kLastSetting) return kOtherZoom;
  return kLastSetting + 1 - setting;
}

int32_t DefaultTimeZoom() {
  return TimeZoomFromSetting(g_GlobalCfg.cfg.iDefTimeZoom);
}

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// A project found elsewhere than its stored root says takes the folder
// above its own folder as the root: D:/Moved/Name/Name.qzpj gives D:/Moved/.
// Root and path are compared upper-cased over the shorter length only, so a
// path shorter than the root with a common beginning counts as unmoved.
void TakeRootFromPath(CProjectData& data, const char* path) {
  const std::string root = Upper(FieldText(data.szRootPath, sizeof(data.szRootPath)));
  const std::string where = Upper(path);
  const size_t common = root.size() < where.size() ? root.size() : where.size();
  if (root.compare(0, common, where, 0, common) == 0) return;
  std::string folder = path;
  const size_t file = folder.rfind(kSeparator);
  if (file == std::string::npos) return;
  folder.resize(file);
  const size_t projectFolder = folder.rfind(kSeparator);
  if (projectFolder == std::string::npos) return;
  folder.resize(projectFolder + 1);
  CopyPathText(data.szRootPath, folder.c_str());
}

// The extension of path: from its last dot found at index 1 or above, else
// empty (a dot in a folder name counts too).
std::string ExtensionOf(const char* path) {
  for (size_t at = std::strlen(path); at-- > 1;) {
    if (path[at] == '.') return path + at;
  }
  return std::string();
}

// Copies a caller's text into a 260-byte field of the head record.
void SetField(char* field, const char* text) {
  if (text != nullptr) CopyPathText(field, text);
}

void SetName(char* field, size_t size, const char* name) {
  std::memset(field, 0, size);
  const size_t length = ::strnlen(name, size - 1);
  std::memcpy(field, name, length);
}

// The name entries of a project file and what they name.
void LoadContent(CProject& project, FILE* stream, const char* extension) {
  CProjectFileList timelines;
  CProjectFileList repositories;
  timelines.Load(stream, project.projectData.iTimelineCount);
  project.projectData.iTimelineCount = timelines.GetCount();
  repositories.Load(stream, project.projectData.iRepositoryCount);
  project.projectData.iRepositoryCount = repositories.GetCount();
  project.LoadTimelines(&timelines, nullptr, extension);
  project.LoadRepositories(&repositories, nullptr, extension);
  // A file without the tail keeps the default mode.
  project.videoMode = CDeviceMode();
  project.videoMode.Load(stream);
}

// Stages every timeline or repository file of a save: always rotated, as
// their own file saves always rotate.
template <class List>
void StageItems(CProject& project, CSaveSet& set, List& list, int32_t ownerCode,
                int32_t (CProject::*folder)(char*), const char* extension) {
  CDataLockGuard outer(list.m_OuterLock, ownerCode);
  for (auto* item : list.m_aItems) {
    if (item == nullptr) continue;
    char path[kPathBufferSize];
    if (projectfiles::ItemPath(project, folder, item->szName, sizeof(item->szName), extension,
                               path) != 0) {
      continue;
    }
    set.Stage(path, true, false, [item](FILE* stream) {
      item->Save(stream);  // its result is not looked at, as in a file save
      return true;
    });
  }
}

}  // namespace

int32_t CProject::Create(const char* rootPath, const char* projectName) {
  Close();
  CDataLockGuard create(lockProject, ownercode::kOwnerCreate);
  bOpen = 1;
  iModified = 0;
  iChangeCount = 0;
  iBackupCount = 0;
  projectData = CProjectData();
  SetField(projectData.szRootPath, rootPath);
  SetField(projectData.szProjectName, projectName);
  MakeDirectories();

  // The template's record replaces this one; its folders are made under
  // the template's own root and name. Keep this order: without a template
  // the record is zero afterwards but for the arguments set again below.
  const std::string templatePath = std::string(kTemplateProjectName) + kProjectExtension;
  if (Open(templatePath.c_str(), 0) == 0) {
    char appDir[kPathBufferSize];
    GetAppDir(appDir);
    CProjectFileList timelines;
    CProjectFileList repositories;
    timelines.Add(new CProjectFileData(kDefaultTimelineName));
    repositories.Add(new CProjectFileData(kDefaultRepositoryName));
    LoadTimelines(&timelines, appDir, nullptr);
    LoadRepositories(&repositories, appDir, nullptr);
    if (CTimeline* first = pTimelineList->GetAt(0)) {
      SetName(first->szName, sizeof(first->szName), kDefaultTimelineName);
      first->iTimeZoom = DefaultTimeZoom();
    }
    const int32_t repositoryCount = pRepositoryList->GetCount();
    if (repositoryCount == 1) {
      CRepository* only = pRepositoryList->GetAt(0);
      SetName(only->szName, sizeof(only->szName), kDefaultRepositoryName);
    } else if (repositoryCount >= 2) {
      CRepository* first = pRepositoryList->GetAt(0);
      CRepository* second = pRepositoryList->GetAt(1);
      SetName(first->szName, sizeof(first->szName), kStoredDmxPresetName);
      SetName(second->szName, sizeof(second->szName), kDefaultRepositoryName);
    }
  }
  SetField(projectData.szRootPath, rootPath);
  SetField(projectData.szProjectName, projectName);
  char projectFile[kPathBufferSize];
  if (GetProjectFilePath(projectFile) == 0) Save(projectFile);  // its result is not used
  return 0;
}

int32_t CProject::Open(const char* path, uint8_t bFull) {
  if (path == nullptr) return -1;
  Close();
  OnBeforeOpen();
  CAppDirScope appDir;
  FILE* stream = OpenDataFile(path, false);  // a missing file is created, then refused
  if (stream == nullptr) return -1;
  if (projectfiles::ReadHead(projectData, stream) != 0) {
    CloseDataFile(stream);
    return -1;
  }
  TakeRootFromPath(projectData, path);
  if (bFull == 1) {
    try {
      LoadContent(*this, stream, nullptr);
    } catch (...) {
      CloseDataFile(stream);
      return -1;
    }
  }
  CloseDataFile(stream);
  appDir.Restore();
  bOpen = 1;
  MakeDirectories();
  iChangeCount = 0;
  iBackupCount = 0;
  return 0;
}

int32_t CProject::OpenWithExtension(const char* path) {
  if (path == nullptr) return -1;
  const std::string extension = ExtensionOf(path);
  Close();
  OnBeforeOpen();
  CAppDirScope appDir;
  FILE* stream = OpenDataFile(path, false);
  if (stream == nullptr) return -1;
  if (projectfiles::ReadHead(projectData, stream) != 0) {
    CloseDataFile(stream);
    return -1;
  }
  try {
    LoadContent(*this, stream, extension.c_str());
  } catch (...) {
    CloseDataFile(stream);
    return -1;  // partly loaded, still closed
  }
  CloseDataFile(stream);
  appDir.Restore();
  bOpen = 1;
  iModified = 1;
  iBackupCount = iChangeCount;
  return 0;
}

int32_t CProject::Save(char* path) {
  if (path == nullptr) return -1;
  // An unchanged project is written over its own file without touching its
  // backups; a shorter new content then leaves the old file's tail.
  const bool rotate = iModified != 0;
  CAppDirScope appDir(false);
  MakeDirectories();
  ChangeToAppDir();
  CSaveSet set(std::string(path) + kCommitSuffix);
  if (!set.Stage(path, rotate, !rotate,
                 [this](FILE* stream) { return projectfiles::WriteProjectFile(*this, stream, true); })) {
    return -1;  // nothing on disk has changed
  }
  StageItems(*this, set, *pTimelineList, ownercode::kOwnerSaveTimelineFiles,
             &CProject::GetTimelineDir, kTimelineExtension);
  StageItems(*this, set, *pRepositoryList, ownercode::kOwnerSaveRepositoryFiles,
             &CProject::GetRepositoryDir, kRepositoryExtension);
  set.Commit();
  appDir.Restore();
  iModified = 0;
  iChangeCount = 0;
  iBackupCount = 0;
  return 0;
}

int32_t CProject::RotateBackups(const char* path, uint8_t bForce) {
  if (iModified == 0 && bForce == 0) return 0;
  RotateBackupFiles(path, bForce);
  return 0;
}

int32_t CProject::LoadTimelines(CProjectFileList* names, const char* folder,
                                const char* extension) {
  if (names == nullptr) return -1;
  projectfiles::LoadItems<CTimeline>(*this, *pTimelineList, ownercode::kOwnerLoadTimelines,
                                     &CProject::GetTimelineDir, kTimelineExtension, *names,
                                     folder, extension);
  projectData.iTimelineCount = pTimelineList->GetCount();
  return 0;
}

int32_t CProject::LoadRepositories(CProjectFileList* names, const char* folder,
                                   const char* extension) {
  if (names == nullptr) return -1;
  projectfiles::LoadItems<CRepository>(*this, *pRepositoryList, ownercode::kOwnerLoadRepositories,
                                       &CProject::GetRepositoryDir, kRepositoryExtension, *names,
                                       folder, extension);
  projectData.iRepositoryCount = pRepositoryList->GetCount();
  return 0;
}

int32_t CProject::SaveTimelines(const char* extension) {
  projectfiles::SaveItems(*this, *pTimelineList, ownercode::kOwnerSaveTimelineFiles,
                          &CProject::GetTimelineDir,
                          extension == nullptr ? kTimelineExtension : extension);
  return 0;
}

int32_t CProject::SaveRepositories(const char* extension) {
  projectfiles::SaveItems(*this, *pRepositoryList, ownercode::kOwnerSaveRepositoryFiles,
                          &CProject::GetRepositoryDir,
                          extension == nullptr ? kRepositoryExtension : extension);
  return 0;
}

int32_t CProject::EnsureDefaultContent() {
  // Lock order: the timeline list, then the repository list.
  CDataLockGuard timelines(pTimelineList->m_OuterLock, ownercode::kOwnerEnsureDefaultL);
  CDataLockGuard repositories(pRepositoryList->m_OuterLock, ownercode::kOwnerEnsureDefaultR);
  if (pTimelineList->GetCount() == 0) {
    char name[kPathBufferSize] = {};
    GetNewTimelineName(name);
    auto* timeline = new CTimeline;
    SetName(timeline->szName, sizeof(timeline->szName), name);
    timeline->dStartMs = 0.0;
    const GlobalCfgData& cfg = g_GlobalCfg.cfg;
    CTimeCode length;
    length.ParseTime(FieldText(cfg.sDefaultTimelineLen, sizeof(cfg.sDefaultTimelineLen)));
    const double lengthMs = static_cast<double>(length.GetMilliseconds());
    timeline->dLengthMs = lengthMs < kShortestDefaultLengthMs ? kShortestDefaultLengthMs : lengthMs;
    timeline->dRangeFromMs = kDefaultRangeFromMs;
    timeline->dRangeToMs = kDefaultRangeToMs;
    timeline->iTimeZoom = kInitialTimeZoom;
    timeline->AddConfiguredTracks();
    timeline->iTimeZoom = DefaultTimeZoom();
    AddTimeline(timeline);
  }
  bool hasMedia = false;
  for (const CRepository* repository : pRepositoryList->m_aItems) {
    // Repositories of DMX presets are counted too, and lead to nothing.
    if (repository != nullptr && repository->iRepositoryKind == repositorykind::kRepositoryMedia) {
      hasMedia = true;
    }
  }
  if (!hasMedia) {
    char name[kPathBufferSize] = {};
    GetNewRepositoryName(name, repositorykind::kRepositoryMedia);
    auto* repository = new CRepository;
    repository->iRepositoryKind = repositorykind::kRepositoryMedia;
    SetName(repository->szName, sizeof(repository->szName), name);
    AddRepository(repository);
  }
  return 0;
}
