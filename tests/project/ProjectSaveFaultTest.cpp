// A save that survives a crash: a child process saves a project of 50
// timelines again and again and is killed with SIGKILL at random moments.
// After every kill the last save that completed must open whole, either
// from the main files or from the .Bk1 set, and nothing else may be lost.
//
// TACHYRUN_FAULT_SECONDS=n keeps killing for n seconds (make fault); the
// run always makes at least kMinimumKills kills. A killed process leaves the
// page cache intact, so the child saves without waiting for the disk, which
// keeps the run short; TACHYRUN_FAULT_DURABLE=1 has it wait all the same.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "project/SaveSet.h"
#include "tests/project/ProjectOpenSaveTestUtil.h"

namespace {

using namespace opensavetest;

constexpr int32_t kTimelines = 50;
constexpr int32_t kMinimumKills = 200;
constexpr uint32_t kSeed = 20261125;

// Every value that changes with the generation of a save.
void SetGeneration(CProject& project, int32_t generation) {
  project.projectData.iOpaqueA = generation;
  for (CTimeline* timeline : project.pTimelineList->m_aItems) {
    timeline->dLengthMs = generation;
    timeline->tracks.GetAt(0)->components.GetAt(0)->dStart = generation;
  }
  for (CRepository* repository : project.pRepositoryList->m_aItems) {
    repository->components.GetAt(0)->dStart = generation;
  }
  project.MarkChanged(0);
}

// The generation a whole set holds, or -1 when it doesn't open, misses a
// file, or mixes generations.
int32_t GenerationOf(CProject& project, int32_t openResult) {
  if (openResult != 0) return -1;
  if (project.pTimelineList->GetCount() != kTimelines) return -1;
  if (project.pRepositoryList->GetCount() != 2) return -1;
  const int32_t generation = project.projectData.iOpaqueA;
  for (CTimeline* timeline : project.pTimelineList->m_aItems) {
    if (timeline->dLengthMs != generation) return -1;
    CTrack* track = timeline->tracks.GetAt(0);
    if (track == nullptr || track->components.GetCount() == 0) return -1;
    if (track->components.GetAt(0)->dStart != generation) return -1;
  }
  for (CRepository* repository : project.pRepositoryList->m_aItems) {
    if (repository->components.GetCount() == 0) return -1;
    if (repository->components.GetAt(0)->dStart != generation) return -1;
  }
  return generation;
}

bool FaultDurable() {
  const char* text = std::getenv("TACHYRUN_FAULT_DURABLE");
  return text != nullptr && std::string(text) == "1";
}

double FaultSeconds() {
  const char* text = std::getenv("TACHYRUN_FAULT_SECONDS");
  return text == nullptr ? 0.0 : std::atof(text);
}

class ProjectSaveFault : public OpenSaveTest {
 protected:
  void Build(CProject& project) { Fill(project, "Show", kTimelines, 2, 5); }

  // Saves generation after generation from `first` on, telling the parent
  // each one that completed; never returns.
  [[noreturn]] void SaveForever(int writeEnd, int32_t first) {
    CProject project;
    Build(project);
    for (int32_t generation = first;; ++generation) {
      SetGeneration(project, generation);
      if (!SaveTo(project, ProjectFile())) _exit(3);
      if (write(writeEnd, &generation, sizeof(generation)) != sizeof(generation)) _exit(4);
    }
  }

  // Microseconds from a child's start to its first completed save; the
  // child is killed then, and its save counts as the one completed.
  int64_t TimeToFirstSave() {
    int fds[2];
    EXPECT_EQ(pipe(fds), 0);
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
      close(fds[0]);
      SaveForever(fds[1], 1);
    }
    close(fds[1]);
    int32_t generation = 0;
    EXPECT_EQ(read(fds[0], &generation, sizeof(generation)),
              static_cast<ssize_t>(sizeof(generation)));
    const auto elapsed = std::chrono::steady_clock::now() - start;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(fds[0]);
    m_Last = generation;
    return std::chrono::duration_cast<std::chrono::microseconds>(elapsed).count();
  }

  int32_t m_Last = 0;

  // The last generation the child reported, or `last` when it reported none.
  static int32_t LastReported(int readEnd, int32_t last) {
    int32_t generation = 0;
    while (read(readEnd, &generation, sizeof(generation)) == sizeof(generation)) last = generation;
    return last;
  }
};

TEST_F(ProjectSaveFault, KilledSavesLeaveTheLastCompletedSaveReadable) {
  SetSaveDurability(FaultDurable());
  CProject first;
  Build(first);
  SetGeneration(first, 0);
  ASSERT_TRUE(SaveTo(first, ProjectFile()));
  const auto started = std::chrono::steady_clock::now();
  const std::string media = Root() + "Show/Media/AV/clip.avi";
  testsupport::WriteFile(media, std::string("media that no save touches"));
  // Kill moments spread over about four times what a child takes to
  // complete its first save, so that kills hit every step of a save (its
  // writes, its rotation, its renames) and children complete saves too.
  const int64_t firstSaveUs = TimeToFirstSave();
  const int64_t spreadUs = std::max<int64_t>(200, firstSaveUs * 4);
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<int64_t> delay(0, spreadUs);

  const double seconds = FaultSeconds();
  int32_t last = m_Last;
  int32_t kills = 0;
  int32_t interruptedCommits = 0;
  int32_t fromMain = 0;
  int32_t fromBackup = 0;
  while (kills < kMinimumKills ||
         std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count() <
             seconds) {
    int fds[2];
    ASSERT_EQ(pipe(fds), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      close(fds[0]);
      SaveForever(fds[1], last + 1);
    }
    close(fds[1]);
    usleep(static_cast<useconds_t>(delay(random)));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the saving child stopped by itself: " << status;
    last = LastReported(fds[0], last);
    close(fds[0]);
    ++kills;

    if (IsSaveInterrupted(ProjectFile().c_str())) ++interruptedCommits;
    CProject main;
    const int32_t mainGeneration = GenerationOf(main, main.Open(ProjectFile().c_str(), 1));
    // A kill can land after a save completed and before the child reported
    // it: the main set then holds the next generation, whole, and that save
    // is the last completed one.
    if (mainGeneration == last || mainGeneration == last + 1) {
      last = mainGeneration;
      ++fromMain;
    } else {
      CProject backup;
      const int32_t backupGeneration =
          GenerationOf(backup, backup.OpenWithExtension((Root() + "Show/Show.Bk1").c_str()));
      ASSERT_EQ(backupGeneration, last)
          << "kill " << kills << ": main set holds " << mainGeneration << ", .Bk1 set "
          << backupGeneration << ", last completed save " << last;
      ++fromBackup;
    }
    ASSERT_EQ(testsupport::ReadText(media), "media that no save touches");
  }
  std::printf(
      "%d kills survived (%d saves completed, %d kills during the renames): %d read "
      "from the main files, %d from the .Bk1 set; kills spread over %lld us\n",
      kills, last, interruptedCommits, fromMain, fromBackup, static_cast<long long>(spreadUs));
  SetSaveDurability(true);
  EXPECT_GE(kills, kMinimumKills);
  EXPECT_GT(last, kMinimumKills / 40);  // the children did complete saves
}

}  // namespace
