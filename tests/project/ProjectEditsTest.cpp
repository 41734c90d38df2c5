// The list operations of a project and the exchange of whole timelines and
// repositories by id.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

#include "project/ProjectNames.h"
#include "tests/project/ProjectObjectTestUtil.h"

namespace {

using namespace projecttest;

// A twin of the stored timeline at index, owned by the test.
std::unique_ptr<CTimeline> TwinOf(CProject& project, int32_t index) {
  auto twin = std::make_unique<CTimeline>();
  twin->CopyFrom(*StoredTimeline(project, index));
  return twin;
}

class ProjectEdits : public ::testing::Test {
 protected:
  void SetUp() override {
    project.AddTimeline(MakeTimeline("First", 2, 2));
    project.AddTimeline(MakeTimeline("Second", 3, 1));
    project.iModified = 0;
    project.iChangeCount = 0;
  }
  CProject project;
};

TEST_F(ProjectEdits, AddMarksAndTakesOwnership) {
  auto* repository = new CRepository;
  EXPECT_EQ(project.AddRepository(repository), 0);
  EXPECT_EQ(project.pRepositoryList->GetAt(0), repository);
  EXPECT_EQ(project.AddTimeline(MakeTimeline("Third", 0, 0)), 0);
  EXPECT_EQ(project.pTimelineList->GetCount(), 3);
  EXPECT_EQ(+project.iModified, 1);
  EXPECT_EQ(+project.iChangeCount, 2);
}

TEST_F(ProjectEdits, AddOfNullIsRefusedWithoutAMark) {
  EXPECT_EQ(project.AddTimeline(nullptr), -1);
  EXPECT_EQ(project.AddRepository(nullptr), -1);
  EXPECT_EQ(project.pTimelineList->GetCount(), 2);
  EXPECT_EQ(+project.iChangeCount, 0);
}

TEST_F(ProjectEdits, AddTakesNoLock) {
  // It is called by code that holds the list's lock already.
  project.pTimelineList->m_OuterLock.Acquire(95);
  EXPECT_EQ(project.AddTimeline(MakeTimeline("Held", 0, 0)), 0);
  project.pTimelineList->m_OuterLock.Release();
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 95);
}

TEST_F(ProjectEdits, SetTimelineCopiesTheTwinOverTheStoredOneAndMarks) {
  auto twin = TwinOf(project, 1);
  std::strcpy(twin->szName, "Renamed");
  ComponentAt(*twin, 2, 0)->dEnd = 777.0;
  EXPECT_EQ(project.SetTimeline(twin.get()), 0);
  CTimeline* stored = StoredTimeline(project, 1);
  EXPECT_STREQ(stored->szName, "Renamed");
  EXPECT_EQ(+ComponentAt(*stored, 2, 0)->dEnd, 777.0);
  EXPECT_NE(stored, twin.get());
  EXPECT_EQ(+project.iModified, 1);
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 41);
}

TEST_F(ProjectEdits, SetTimelineWithAnUnknownIdChangesNothingAndDoesNotMark) {
  CTimeline stranger;  // an id of its own
  std::strcpy(stranger.szName, "Stranger");
  EXPECT_EQ(project.SetTimeline(&stranger), 0);
  EXPECT_STREQ(StoredTimeline(project, 0)->szName, "First");
  EXPECT_STREQ(StoredTimeline(project, 1)->szName, "Second");
  EXPECT_EQ(+project.iModified, 0);
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_FALSE(IsHeld(project.pTimelineList->m_OuterLock));
}

TEST_F(ProjectEdits, GetTimelineFillsTheTwinWithoutAMark) {
  CTimeline out;
  out.iId = StoredTimeline(project, 0)->iId;
  EXPECT_EQ(project.GetTimeline(&out), 0);
  EXPECT_STREQ(out.szName, "First");
  EXPECT_EQ(out.tracks.GetCount(), 2);
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 47);
  EXPECT_EQ(project.GetTimeline(nullptr), -1);
  EXPECT_EQ(project.SetTimeline(nullptr), -1);
}

TEST_F(ProjectEdits, TimelineMarkersGoBothWays) {
  auto twin = TwinOf(project, 0);
  twin->markers.Add(new CMarkerPoint(100, 1));
  twin->markers.Add(new CMarkerPoint(200, 2));
  twin->iMarkerCount = 2;
  std::strcpy(twin->szName, "not copied");
  EXPECT_EQ(project.SetTimelineMarkers(twin.get()), 0);
  CTimeline* stored = StoredTimeline(project, 0);
  ASSERT_EQ(stored->markers.GetCount(), 2);
  EXPECT_EQ(+stored->markers.GetAt(1)->iTime, 200);
  EXPECT_NE(stored->markers.GetAt(1), twin->markers.GetAt(1));
  EXPECT_EQ(+stored->iMarkerCount, 2);
  EXPECT_STREQ(stored->szName, "First");
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 41);

  CTimeline out;
  out.iId = stored->iId;
  out.markers.Add(new CMarkerPoint(5, 9));
  EXPECT_EQ(project.GetTimelineMarkers(&out), 0);
  ASSERT_EQ(out.markers.GetCount(), 2);
  EXPECT_EQ(+out.markers.GetAt(0)->iTime, 100);
  EXPECT_EQ(+out.iMarkerCount, 2);
  EXPECT_EQ(out.tracks.GetCount(), 0);  // markers only
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 47);
}

TEST_F(ProjectEdits, TrackViewsGoTrackByTrackWithoutAMark) {
  auto twin = TwinOf(project, 1);
  for (int32_t t = 0; t < 3; ++t) {
    CTrack* track = TrackAt(*twin, t);
    track->fViewA = 1.0f + t;
    track->fViewB = 10.0f + t;
    track->cViewA = 50;
    track->cViewB = static_cast<uint8_t>(100 + t);
  }
  EXPECT_EQ(project.SetTrackViews(twin.get()), 0);
  CTimeline* stored = StoredTimeline(project, 1);
  EXPECT_EQ(+TrackAt(*stored, 2)->fViewA, 3.0f);
  EXPECT_EQ(+TrackAt(*stored, 2)->fViewB, 12.0f);
  EXPECT_EQ(TrackAt(*stored, 2)->cViewB, 102);
  EXPECT_EQ(TrackAt(*stored, 2)->cViewA, 0);  // not one of the view values
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 44);

  CTimeline out;
  out.iId = stored->iId;
  for (int32_t t = 0; t < 3; ++t) out.tracks.Add(new CTrack);
  EXPECT_EQ(project.GetTrackViews(&out), 0);
  EXPECT_EQ(+TrackAt(out, 1)->fViewB, 11.0f);
  EXPECT_EQ(TrackAt(out, 1)->cViewB, 101);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 43);
}

TEST_F(ProjectEdits, TrackViewsWithAnotherNumberOfTracksCopyNothing) {
  auto twin = TwinOf(project, 1);
  twin->tracks.RemoveAt(2);
  TrackAt(*twin, 0)->fViewA = 99.0f;
  EXPECT_EQ(project.SetTrackViews(twin.get()), 0);
  EXPECT_EQ(+TrackAt(*StoredTimeline(project, 1), 0)->fViewA, 20.0f);

  CTimeline out;
  out.iId = StoredTimeline(project, 1)->iId;
  out.tracks.Add(new CTrack);
  TrackAt(out, 0)->fViewA = 5.0f;
  EXPECT_EQ(project.GetTrackViews(&out), 0);
  EXPECT_EQ(+TrackAt(out, 0)->fViewA, 5.0f);
}

TEST_F(ProjectEdits, CursorIsCutTowardsZeroAndNeverMarks) {
  auto twin = TwinOf(project, 0);
  EXPECT_EQ(project.SetTimelineCursor(twin.get(), 1234), 0);
  EXPECT_EQ(+StoredTimeline(project, 0)->dCursorMs, 1234.0);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 46);
  EXPECT_EQ(project.GetTimelineCursor(twin.get()), 1234);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 45);
  StoredTimeline(project, 0)->dCursorMs = -2.9;
  EXPECT_EQ(project.GetTimelineCursor(twin.get()), -2);
  StoredTimeline(project, 0)->dCursorMs = 1e300;
  EXPECT_EQ(project.GetTimelineCursor(twin.get()), std::numeric_limits<int64_t>::max());
  StoredTimeline(project, 0)->dCursorMs = std::nan("");
  EXPECT_EQ(project.GetTimelineCursor(twin.get()), 0);
  EXPECT_EQ(+project.iChangeCount, 0);
  CTimeline stranger;
  EXPECT_EQ(project.GetTimelineCursor(&stranger), 0);
  EXPECT_EQ(project.GetTimelineCursor(nullptr), 0);
  EXPECT_EQ(project.SetTimelineCursor(nullptr, 5), -1);
}

TEST_F(ProjectEdits, RepositoriesGoByIdUnderTheirListsLock) {
  auto* stored = new CRepository;
  std::strcpy(stored->szName, "Media");
  project.AddRepository(stored);
  project.iChangeCount = 0;
  CRepository twin;
  twin.CopyFrom(*stored);
  std::strcpy(twin.szName, "Renamed");
  twin.components.Add(MakeComponent(0, 10));
  EXPECT_EQ(project.SetRepository(&twin), 0);
  EXPECT_STREQ(stored->szName, "Renamed");
  EXPECT_EQ(stored->components.GetCount(), 1);
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(OwnerCode(project.pRepositoryList->m_OuterLock), 42);

  CRepository out;
  out.iId = stored->iId;
  EXPECT_EQ(project.GetRepository(&out), 0);
  EXPECT_STREQ(out.szName, "Renamed");
  EXPECT_EQ(out.components.GetCount(), 1);
  EXPECT_EQ(OwnerCode(project.pRepositoryList->m_OuterLock), 48);

  CRepository stranger;
  EXPECT_EQ(project.SetRepository(&stranger), 0);
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(project.SetRepository(nullptr), -1);
  EXPECT_EQ(project.GetRepository(nullptr), -1);
}

TEST_F(ProjectEdits, HasTimelineComparesTheBareFileNameCaseBlind) {
  EXPECT_TRUE(project.HasTimeline("/some/where/FIRST.Qzt"));
  EXPECT_TRUE(project.HasTimeline("second"));
  EXPECT_TRUE(project.HasTimeline("/x/Second.Bk1"));
  EXPECT_FALSE(project.HasTimeline("/x/Third.Qzt"));
  EXPECT_FALSE(project.HasTimeline("/First/Other.Qzt"));
  EXPECT_FALSE(project.HasTimeline(nullptr));
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 42);
}

TEST_F(ProjectEdits, HasRepositoryLooksAtRepositoriesOnly) {
  auto* repository = new CRepository;
  std::strcpy(repository->szName, "Effects1");
  project.AddRepository(repository);
  EXPECT_TRUE(project.HasRepository("effects1.qzr"));
  EXPECT_FALSE(project.HasRepository("First.qzr"));
  EXPECT_FALSE(project.HasTimeline("Effects1"));
  EXPECT_FALSE(project.HasRepository(nullptr));
  EXPECT_EQ(OwnerCode(project.pRepositoryList->m_OuterLock), 42);
}

TEST_F(ProjectEdits, TouchTimelinesTakesTheListLockAndMarks) {
  EXPECT_EQ(project.TouchTimelines(0), -1);
  EXPECT_EQ(+project.iChangeCount, 0);
  EXPECT_EQ(project.TouchTimelines(1), 0);
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(+project.iModified, 1);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 93);
  EXPECT_FALSE(IsHeld(project.pTimelineList->m_OuterLock));
}

TEST_F(ProjectEdits, MarkChangedMarksInEveryFormAndHooksDoNothing) {
  EXPECT_EQ(project.MarkChanged(5), 0);
  EXPECT_EQ(project.MarkChanged(5, 6), 0);
  EXPECT_EQ(+project.iChangeCount, 2);
  EXPECT_EQ(+project.iModified, 1);
  EXPECT_EQ(project.ReservedHook(1), 0);
  EXPECT_EQ(project.ReservedHookB(1), 0);
  EXPECT_EQ(project.ReservedHookC(1), 0);
  EXPECT_EQ(+project.iChangeCount, 2);
}

class ProjectFileRemoval : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(scratch.Root().empty());
    PlaceProject(project, FolderOf(scratch), "Show");
    project.MakeDirectories();
    char folder[kPathBufferSize];
    project.GetTimelineDir(folder);
    timelines = folder;
    project.GetRepositoryDir(folder);
    repositories = folder;
  }
  testsupport::TempDir scratch;
  CProject project;
  std::string timelines;
  std::string repositories;
};

TEST_F(ProjectFileRemoval, RemoveTimelineWithFilesTakesTheBackupsToo) {
  project.AddTimeline(MakeTimeline("Cut", 1, 1));
  project.AddTimeline(MakeTimeline("Keep", 1, 1));
  project.iChangeCount = 0;
  for (const char* ext : {".Qzt", ".Bk1", ".Bk2"}) {
    Touch(timelines + "Cut" + ext);
    Touch(timelines + "Keep" + ext);
  }
  auto twin = std::make_unique<CTimeline>();
  twin->CopyFrom(*StoredTimeline(project, 0));
  EXPECT_EQ(project.RemoveTimeline(twin.get(), 1), 0);
  EXPECT_EQ(project.pTimelineList->GetCount(), 1);
  EXPECT_STREQ(StoredTimeline(project, 0)->szName, "Keep");
  EXPECT_EQ(+project.projectData.iTimelineCount, 1);
  EXPECT_FALSE(Exists(timelines + "Cut.Qzt"));
  EXPECT_FALSE(Exists(timelines + "Cut.Bk1"));
  EXPECT_FALSE(Exists(timelines + "Cut.Bk2"));
  EXPECT_TRUE(Exists(timelines + "Keep.Qzt"));
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 92);
}

TEST_F(ProjectFileRemoval, RemoveRepositoryWithTheFlagLeavesItsBackups) {
  auto* repository = new CRepository;
  std::strcpy(repository->szName, "Repository1");
  project.AddRepository(repository);
  project.iChangeCount = 0;
  for (const char* ext : {".Qzr", ".Bk1", ".Bk2"}) Touch(repositories + "Repository1" + ext);
  CRepository twin;
  twin.CopyFrom(*repository);
  EXPECT_EQ(project.RemoveRepository(&twin, 1), 0);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 0);
  EXPECT_EQ(+project.projectData.iRepositoryCount, 0);
  EXPECT_FALSE(Exists(repositories + "Repository1.Qzr"));
  EXPECT_TRUE(Exists(repositories + "Repository1.Bk1"));
  EXPECT_TRUE(Exists(repositories + "Repository1.Bk2"));
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(OwnerCode(project.pRepositoryList->m_OuterLock), 38);
}

TEST_F(ProjectFileRemoval, RemoveWithoutTheFlagLeavesEveryFile) {
  project.AddTimeline(MakeTimeline("Cut", 0, 0));
  Touch(timelines + "Cut.Qzt");
  auto twin = std::make_unique<CTimeline>();
  twin->CopyFrom(*StoredTimeline(project, 0));
  EXPECT_EQ(project.RemoveTimeline(twin.get(), 0), 0);
  EXPECT_EQ(project.pTimelineList->GetCount(), 0);
  EXPECT_TRUE(Exists(timelines + "Cut.Qzt"));
  EXPECT_EQ(project.RemoveTimeline(twin.get(), 2), 0);  // only 1 deletes files
  EXPECT_TRUE(Exists(timelines + "Cut.Qzt"));
}

TEST_F(ProjectFileRemoval, TheStoredObjectItselfMayBePassed) {
  project.AddTimeline(MakeTimeline("Own", 0, 0));
  auto* repository = new CRepository;
  std::strcpy(repository->szName, "Bin");
  project.AddRepository(repository);
  Touch(timelines + "Own.Qzt");
  Touch(timelines + "Own.Bk2");
  Touch(repositories + "Bin.Qzr");
  // Deleted by the removal; its name was taken before.
  EXPECT_EQ(project.RemoveTimeline(StoredTimeline(project, 0), 1), 0);
  EXPECT_EQ(project.RemoveRepository(repository, 1), 0);
  EXPECT_EQ(project.pTimelineList->GetCount(), 0);
  EXPECT_EQ(project.pRepositoryList->GetCount(), 0);
  EXPECT_FALSE(Exists(timelines + "Own.Qzt"));
  EXPECT_FALSE(Exists(timelines + "Own.Bk2"));
  EXPECT_FALSE(Exists(repositories + "Bin.Qzr"));
}

TEST_F(ProjectFileRemoval, RemovingAnUnknownTwinStillMarksAndRemovesItsFiles) {
  project.AddTimeline(MakeTimeline("Stay", 0, 0));
  project.iChangeCount = 0;
  CTimeline stranger;
  std::strcpy(stranger.szName, "Ghost");
  Touch(timelines + "Ghost.Qzt");
  EXPECT_EQ(project.RemoveTimeline(&stranger, 1), 0);
  EXPECT_EQ(project.pTimelineList->GetCount(), 1);
  EXPECT_FALSE(Exists(timelines + "Ghost.Qzt"));
  EXPECT_EQ(+project.iChangeCount, 1);
  EXPECT_EQ(project.RemoveTimeline(nullptr, 1), -1);
  EXPECT_EQ(project.RemoveRepository(nullptr, 1), -1);
  EXPECT_EQ(+project.iChangeCount, 1);
}

}  // namespace
