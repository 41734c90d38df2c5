#include "project/Project.h"

#include <atomic>
#include <cstring>

#include "core/DataLockGuard.h"
#include "project/OwnerCodes.h"
#include "project/RepositoryList.h"
#include "project/TimelineList.h"
#include "project/UndoData.h"

CProject::CProject() : pTimelineList(new CTimelineList), pRepositoryList(new CRepositoryList) {}

CProject::~CProject() {
  Close();
  delete pTimelineList;
  pTimelineList = nullptr;
  delete pRepositoryList;
  pRepositoryList = nullptr;
}

int32_t CProject::Close() {
  ClearUndoAndRedo();
  bOpen = 0;
  {
    CDataLockGuard timelines(pTimelineList->m_OuterLock, ownercode::kOwnerCloseTimelines);
    pTimelineList->Clear();
  }
  {
    CDataLockGuard repositories(pRepositoryList->m_OuterLock, ownercode::kOwnerCloseRepositories);
    pRepositoryList->Clear();
  }
  std::memset(static_cast<void*>(&projectData), 0, sizeof(projectData));
  return 0;
}

int32_t CProject::OnBeforeOpen() {
  return 0;
}

void CProject::Mark() {
  std::atomic_ref<int32_t>(iModified).store(1);
  std::atomic_ref<int32_t>(iChangeCount).fetch_add(1);
}
