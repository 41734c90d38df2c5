#include "project/ProjectFileAccess.h"

#include "core/DataLockGuard.h"
#include "files/AppDirectories.h"
#include "files/DataFile.h"
#include "project/MemoryStream.h"
#include "project/OwnerCodes.h"
#include "project/RepositoryList.h"
#include "project/TimelineList.h"

namespace projectfiles {

CAppDirScope::CAppDirScope(bool enter) {
  SaveCurrentDirectory(m_szPath, &m_iDrive);
  if (enter) ChangeToAppDir();
}

void CAppDirScope::Restore() {
  if (!m_bHeld) return;
  m_bHeld = false;
  RestoreCurrentDirectory(m_szPath, static_cast<int32_t>(m_iDrive));
}

int32_t ReadHead(CProjectData& data, FILE* stream) {
  std::memset(static_cast<void*>(&data), 0, sizeof(data));
  int32_t size = 0;
  if (ReadFileRange(0, sizeof(size), &size, stream) <= 0) return -1;
  if (size > kProjectRecordSize) return -1;
  if (ReadFileRange(0, size, &data, stream) <= 0) return -1;
  if (std::memcmp(data.szMagic, kProjectMagic, sizeof(data.szMagic)) != 0) return -1;
  return 0;
}

bool LoadWholeFile(CMemoryStream& memory, const char* path,
                   const std::function<int32_t(FILE*)>& load) {
  FILE* file = OpenDataFile(path, true);
  if (file == nullptr) return false;
  if (memory.ReadFrom(file)) {
    load(memory.Stream());  // its result is not looked at: a broken record keeps defaults
  } else {
    std::rewind(file);
    load(file);
  }
  CloseDataFile(file);
  return true;
}

namespace {

template <class List>
void WriteNames(List& list, FILE* stream) {
  CProjectFileList names;
  for (auto* item : list.m_aItems) {
    if (item == nullptr) continue;
    names.Add(new CProjectFileData(FieldText(item->szName, sizeof(item->szName)).c_str()));
  }
  names.Save(stream);
}

}  // namespace

void WriteNameEntries(CProject& project, FILE* stream) {
  WriteNames(*project.pTimelineList, stream);
  WriteNames(*project.pRepositoryList, stream);
}

int32_t ItemPath(CProject& project, int32_t (CProject::*folder)(char*), const char* name,
                 size_t nameSize, const char* extension, char* out) {
  char directory[kPathBufferSize];
  if ((project.*folder)(directory) != 0) return -1;
  const std::string path = std::string(directory) + FieldText(name, nameSize) + extension;
  if (path.size() >= kPathBufferSize) return -1;
  std::memcpy(out, path.c_str(), path.size() + 1);
  return 0;
}

bool WriteProjectFile(CProject& project, FILE* stream, bool withVideoMode) {
  {
    // Lock order: the timeline list, then the repository list.
    CDataLockGuard timelines(project.pTimelineList->m_OuterLock, ownercode::kOwnerSaveTimelines);
    CDataLockGuard repositories(project.pRepositoryList->m_OuterLock,
                                ownercode::kOwnerSaveRepositories);
    CProjectData& data = project.projectData;
    data.iSize = kProjectRecordSize;
    std::memcpy(data.szMagic, kProjectMagic, sizeof(data.szMagic));
    data.iTimelineCount = project.pTimelineList->GetCount();
    data.iRepositoryCount = project.pRepositoryList->GetCount();
    if (WriteFileRange(0, kProjectRecordSize, &data, stream) <= 0) return false;
    WriteNameEntries(project, stream);
    timelines.Unlock();  // released as taken: timelines, then repositories
  }
  if (withVideoMode) project.videoMode.Save(stream);
  return true;
}

}  // namespace projectfiles
