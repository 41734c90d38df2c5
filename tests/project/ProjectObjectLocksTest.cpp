// The project's walks under contention: a walk stuck behind a held lock
// shows its owner codes in the locks it holds, and several threads editing,
// reading and pushing undo steps at once end in an exact state.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

#include "project/UndoData.h"
#include "tests/project/ProjectObjectTestUtil.h"

namespace {

using namespace projecttest;
using Clock = std::chrono::steady_clock;

constexpr int32_t kTestHolder = 5000;

// Waits (at most 10 s) until a thread sleeps on `lock`. Seeing the waiter
// counted also makes everything that thread did before visible here.
bool WaitForSleeper(const CDataLock& lock) {
  const auto deadline = Clock::now() + std::chrono::seconds(10);
  while (CDataLockTestPeer::Waiters(lock) < 1) {
    if (Clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

class StuckWalk : public ::testing::Test {
 protected:
  void SetUp() override {
    project.AddTimeline(MakeTimeline("A", 2, 2));
    a = StoredTimeline(project, 0);
    twin.reset(Twin(*ComponentAt(*a, 1, 1)));
    twin->dEnd = 123.0;
  }
  // Runs op on a thread that must block on `held`; checks runs while it
  // sleeps there, then the lock is let go and the thread must finish.
  template <class Op, class Checks>
  void StuckBehind(CDataLock& held, Op op, Checks checks) {
    held.Acquire(kTestHolder);
    std::atomic<bool> done{false};
    std::thread walker([&] {
      op();
      done = true;
    });
    ASSERT_TRUE(WaitForSleeper(held)) << "the walk never came to the held lock";
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(done.load());
    checks();
    held.Release();
    walker.join();
    EXPECT_TRUE(done.load());
  }

  CProject project;
  CTimeline* a = nullptr;
  std::unique_ptr<CComponent> twin;
};

TEST_F(StuckWalk, BehindATimelineLockTheListShowsTheWalksCode) {
  StuckBehind(
      a->lockTimeline, [&] { project.UpdateComponent(twin.get()); },
      [&] {
        EXPECT_TRUE(IsHeld(project.pTimelineList->m_OuterLock));
        EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 70);
        EXPECT_EQ(OwnerCode(a->lockTimeline), kTestHolder);
        EXPECT_FALSE(IsHeld(a->tracks.m_OuterLock));
      });
  EXPECT_EQ(OwnerCode(a->lockTimeline), 71);
  EXPECT_EQ(OwnerCode(a->tracks.m_OuterLock), 72);
  EXPECT_EQ(+ComponentAt(*a, 1, 1)->dEnd, 123.0);
  EXPECT_FALSE(IsHeld(project.pTimelineList->m_OuterLock));
}

TEST_F(StuckWalk, BehindATrackListLockTheTimelineLockShowsItToo) {
  StuckBehind(
      a->tracks.m_OuterLock, [&] { project.GetMaxSerial(); },
      [&] {
        EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 63);
        EXPECT_TRUE(IsHeld(a->lockTimeline));
        EXPECT_EQ(OwnerCode(a->lockTimeline), 64);
      });
  EXPECT_FALSE(IsHeld(a->lockTimeline));
  EXPECT_EQ(OwnerCode(a->tracks.m_OuterLock), 65);
}

TEST_F(StuckWalk, BehindTheTimelineListTheCallersListShowsItsCode) {
  CComponentList list;
  list.Add(Twin(*twin));
  StuckBehind(
      project.pTimelineList->m_OuterLock, [&] { project.UpdateComponents(&list, 0); },
      [&] {
        EXPECT_TRUE(IsHeld(list.m_OuterLock));
        EXPECT_EQ(OwnerCode(list.m_OuterLock), 55);
      });
  EXPECT_FALSE(IsHeld(list.m_OuterLock));
  EXPECT_EQ(+ComponentAt(*a, 1, 1)->dEnd, 123.0);
}

TEST_F(StuckWalk, AWholeTimelineWaitsBehindTheListLockWithItsCode) {
  CTimeline view;
  view.CopyFrom(*a);
  std::strcpy(view.szName, "Renamed");
  StuckBehind(
      project.pTimelineList->m_OuterLock, [&] { project.SetTimeline(&view); }, [] {});
  EXPECT_EQ(OwnerCode(project.pTimelineList->m_OuterLock), 41);
  EXPECT_STREQ(a->szName, "Renamed");
}

TEST_F(StuckWalk, APushWaitsBehindTheUndoLock) {
  StuckBehind(
      project.lockUndo, [&] { project.PushUndo(a, "step", 1); },
      [&] { EXPECT_EQ(project.undoList.GetSize(), 0); });
  EXPECT_EQ(project.undoList.GetSize(), 1);
  EXPECT_EQ(OwnerCode(project.lockUndo), 0);
}

// Four threads, each on a timeline of its own plus shared reads, for a
// bounded time; every mark and every push is counted, so the end state is
// known exactly.
TEST(ProjectConcurrency, EditsReadsAndUndoPushesOnSeveralTimelinesEndExact) {
  constexpr int32_t kThreads = 4;
  constexpr int32_t kTracks = 3;
  constexpr int32_t kPerTrack = 5;
  CProject project;
  for (int32_t i = 0; i < kThreads; ++i) project.AddTimeline(MakeTimeline("T", kTracks, kPerTrack));
  auto* repository = new CRepository;
  project.AddRepository(repository);
  project.iChangeCount = 0;

  std::atomic<int64_t> marks{0};
  std::atomic<int32_t> pushes{0};
  std::atomic<int32_t> finished{0};
  std::vector<int32_t> lastValue(kThreads, -1);
  const auto until = Clock::now() + std::chrono::milliseconds(700);
  constexpr int32_t kMaxRounds = 400;

  std::vector<std::thread> workers;
  for (int32_t w = 0; w < kThreads; ++w) {
    workers.emplace_back([&, w] {
      // The thread's own twins, taken before the others start writing.
      CTimeline view;
      view.iId = StoredTimeline(project, w)->iId;
      project.GetTimeline(&view);
      std::unique_ptr<CComponent> mine(Twin(*ComponentAt(view, 1, 2)));
      const int64_t paramId = ComponentAt(view, 2, 0)->iUniqueId;
      CRepository bin;
      bin.components.Add(MakeComponent(0, 1, "clip.avi"));
      CComponentList all;
      int32_t round = 0;
      for (; round < kMaxRounds && Clock::now() < until; ++round) {
        mine->iSerial = round;
        project.UpdateComponent(mine.get());  // one match: one mark
        project.SetComponentParam(Low(paramId), High(paramId), 0, static_cast<uint32_t>(round));
        CComponent probe;
        probe.iUniqueId = mine->iUniqueId;
        project.GetComponent(&probe);  // a read that marks
        EXPECT_EQ(+probe.iSerial, round);
        project.GetTimeline(&view);
        project.PushUndo(&view, "round", 0);
        char text[kUndoTextSize];
        EXPECT_TRUE(project.GetUndoInfo(text, nullptr));
        project.SetTimelineCursor(&view, round);  // no mark
        project.CountMovedMedia();
        project.MarkUsedMedia(&bin);
        EXPECT_EQ(bin.components.GetAt(0)->cInUse, 1);
        if (round % 16 == 0) project.CopyAllComponents(&all);
        CRepository shared;
        shared.iId = repository->iId;
        project.GetRepository(&shared);
        project.SetRepository(&shared);  // marks under the repository list's lock
        marks += 4;
        ++pushes;
      }
      lastValue[w] = round - 1;
      ++finished;
    });
  }
  // No deadlock: all must be done long before this.
  const auto giveUp = Clock::now() + std::chrono::seconds(60);
  while (finished.load() < kThreads && Clock::now() < giveUp)
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  if (finished.load() < kThreads) {
    ADD_FAILURE() << "walks deadlocked";
    std::abort();
  }
  for (std::thread& t : workers) t.join();

  EXPECT_EQ(+project.iChangeCount, marks.load());
  EXPECT_EQ(+project.iModified, 1);
  const int32_t expectedUndo = pushes.load() < kUndoStackLimit ? pushes.load() : kUndoStackLimit;
  EXPECT_EQ(project.undoList.GetSize(), expectedUndo);
  for (int32_t w = 0; w < kThreads; ++w) {
    CTimeline* stored = StoredTimeline(project, w);
    ASSERT_GE(lastValue[w], 0);
    EXPECT_EQ(+ComponentAt(*stored, 1, 2)->iSerial, lastValue[w]);
    float expected = 0.0f;
    const uint32_t bits = static_cast<uint32_t>(lastValue[w]);
    std::memcpy(&expected, &bits, sizeof(bits));
    uint32_t stored_bits = 0;
    std::memcpy(&stored_bits, &ComponentAt(*stored, 2, 0)->fParamA, sizeof(stored_bits));
    EXPECT_EQ(stored_bits, bits);
    EXPECT_EQ(+stored->dCursorMs, static_cast<double>(lastValue[w]));
    EXPECT_FALSE(IsHeld(stored->lockTimeline));
    EXPECT_FALSE(IsHeld(stored->tracks.m_OuterLock));
  }
  EXPECT_FALSE(IsHeld(project.pTimelineList->m_OuterLock));
  EXPECT_FALSE(IsHeld(project.pRepositoryList->m_OuterLock));
  EXPECT_FALSE(IsHeld(project.lockUndo));
}

}  // namespace
