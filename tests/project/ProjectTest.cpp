// The project object's members, construction and Close.

#include <gtest/gtest.h>

#include <cstring>

#include "project/UndoData.h"
#include "tests/project/ProjectObjectTestUtil.h"

namespace {

using namespace projecttest;

bool AllZero(const CProjectData& data) {
  const auto* bytes = reinterpret_cast<const uint8_t*>(&data);
  for (size_t i = 0; i < sizeof(data); ++i) {
    if (bytes[i] != 0) return false;
  }
  return true;
}

TEST(Project, NewObjectHoldsTheDefaults) {
  CProject project;
  EXPECT_EQ(+project.iModified, 0);
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(+project.iBackupCount, 0);
  EXPECT_EQ(project.bOpen, 0);
  ASSERT_NE(project.pTimelineList, nullptr);
  ASSERT_NE(project.pRepositoryList, nullptr);
  EXPECT_EQ(project.pTimelineList->GetCount(), 0);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 0);
  EXPECT_EQ(project.undoList.GetSize(), 0);
  EXPECT_EQ(project.redoList.GetSize(), 0);
  const CProjectData defaults;
  EXPECT_EQ(std::memcmp(&project.projectData, &defaults, sizeof(defaults)), 0);
  EXPECT_FALSE(IsHeld(project.lockProject));
  EXPECT_FALSE(IsHeld(project.lockUndo));
}

TEST(Project, MembersStandInTheirOrder) {
  CProject p;
  const auto at = [&](const void* member) {
    return reinterpret_cast<const char*>(member) - reinterpret_cast<const char*>(&p);
  };
  EXPECT_LT(at(&p.iModified), at(&p.iChangeCount));
  EXPECT_LT(at(&p.iChangeCount), at(&p.iBackupCount));
  EXPECT_LT(at(&p.iBackupCount), at(&p.projectData));
  EXPECT_LT(at(&p.projectData), at(&p.lockProject));
  EXPECT_LT(at(&p.lockProject), at(&p.bOpen));
  EXPECT_LT(at(&p.bOpen), at(&p.freeComponent));
  EXPECT_LT(at(&p.freeComponent), at(&p.pTimelineList));
  EXPECT_LT(at(&p.pTimelineList), at(&p.pRepositoryList));
  EXPECT_LT(at(&p.pRepositoryList), at(&p.videoMode));
  EXPECT_LT(at(&p.videoMode), at(&p.lockUndo));
  EXPECT_LT(at(&p.lockUndo), at(&p.undoList));
  EXPECT_LT(at(&p.undoList), at(&p.redoList));
}

TEST(Project, CloseZeroesTheWholeHeadRecordAndEmptiesEverything) {
  CProject project;
  project.bOpen = 1;
  project.AddTimeline(MakeTimeline("A", 2, 3));
  project.AddTimeline(MakeTimeline("B", 1, 1));
  project.AddRepository(new CRepository);
  CTimeline snapshot;
  project.PushUndo(&snapshot, "one", 0);
  project.PushRedo(&snapshot, "two");
  project.projectData.iTimelineCount = 2;
  std::strcpy(project.projectData.szVersionName, "Version1");

  EXPECT_EQ(project.Close(), 0);

  EXPECT_TRUE(AllZero(project.projectData));
  EXPECT_EQ(project.projectData.szMagic[0], '\0');  // no magic after Close
  EXPECT_EQ(+project.projectData.iOpaqueF, 0);
  EXPECT_EQ(project.bOpen, 0);
  EXPECT_EQ(project.pTimelineList->GetCount(), 0);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 0);
  EXPECT_EQ(project.undoList.GetSize(), 0);
  EXPECT_EQ(project.redoList.GetSize(), 0);
  // Both list locks were taken with their own codes and let go.
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 29);
  EXPECT_EQ(OwnerCode(project.pRepositoryList->m_OuterLock), 30);
  EXPECT_FALSE(IsHeld(project.pTimelineList->m_OuterLock));
  EXPECT_FALSE(IsHeld(project.pRepositoryList->m_OuterLock));
}

TEST(Project, CloseOnANewObjectChangesOnlyTheHeadRecord) {
  CProject project;
  const int64_t freeId = project.freeComponent.iUniqueId;
  EXPECT_EQ(project.Close(), 0);
  EXPECT_TRUE(AllZero(project.projectData));  // the defaults are gone
  EXPECT_EQ(+project.iModified, 0);
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(+project.iBackupCount, 0);
  EXPECT_EQ(project.bOpen, 0);
  EXPECT_EQ(+project.freeComponent.iUniqueId, freeId);
  EXPECT_EQ(project.pTimelineList->GetCount(), 0);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 0);
  EXPECT_EQ(project.undoList.GetSize(), 0);
  EXPECT_EQ(project.redoList.GetSize(), 0);
  EXPECT_EQ(project.Close(), 0);  // and a second time is just as quiet
  EXPECT_TRUE(AllZero(project.projectData));
}

TEST(Project, CloseLeavesTheChangeMarksAlone) {
  CProject project;
  project.MarkChanged(0);
  project.iBackupCount = 7;
  project.Close();
  EXPECT_EQ(+project.iModified, 1);
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(+project.iBackupCount, 7);
}

TEST(Project, OnBeforeOpenIsAnEmptyHook) {
  CProject project;
  const CProjectData before = project.projectData;
  EXPECT_EQ(project.OnBeforeOpen(), 0);
  EXPECT_EQ(std::memcmp(&before, &project.projectData, sizeof(before)), 0);
  EXPECT_EQ(+project.iModified, 0);
}

TEST(Project, DestructorReleasesEverythingItOwns) {
  // Under the address sanitizer a leak of any timeline, track, component or
  // undo record fails this test.
  auto* project = new CProject;
  project->AddTimeline(MakeTimeline("A", 3, 4));
  project->AddRepository(new CRepository);
  project->PushUndo(StoredTimeline(*project, 0), "step", 0);
  project->PushRedo(StoredTimeline(*project, 0), "step");
  delete project;
}

}  // namespace
