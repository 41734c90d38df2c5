// The undo and redo stacks of a project.

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "project/UndoData.h"
#include "tests/project/ProjectObjectTestUtil.h"

namespace {

using namespace projecttest;

TEST(UndoData, ConstructorZeroesCodesAndText) {
  CUndoData record;
  EXPECT_EQ(+record.iCode, 0);
  EXPECT_EQ(+record.iCodeB, 0);
  for (char c : record.szText) ASSERT_EQ(c, '\0');
  EXPECT_EQ(record.timeline.tracks.GetCount(), 0);
}

TEST(UndoData, AssignMakesATwinOfTheTimeline) {
  CUndoData source;
  source.iCode = 5;
  source.iCodeB = 6;
  std::memset(source.szText, 'x', sizeof(source.szText));  // all 100, no terminator
  std::unique_ptr<CTimeline> timeline(MakeTimeline("T", 2, 2));
  source.timeline.CopyFrom(*timeline);

  CUndoData copy;
  copy.Assign(source);
  EXPECT_EQ(+copy.iCode, 5);
  EXPECT_EQ(+copy.iCodeB, 6);
  EXPECT_EQ(std::memcmp(copy.szText, source.szText, sizeof(copy.szText)), 0);
  EXPECT_EQ(+copy.timeline.iId, +timeline->iId);
  ASSERT_EQ(copy.timeline.tracks.GetCount(), 2);
  EXPECT_EQ(+TrackAt(copy.timeline, 1)->iId, +TrackAt(*timeline, 1)->iId);
  EXPECT_EQ(+ComponentAt(copy.timeline, 1, 1)->iUniqueId, +ComponentAt(*timeline, 1, 1)->iUniqueId);
  EXPECT_NE(ComponentAt(copy.timeline, 1, 1), ComponentAt(*timeline, 1, 1));  // deep
}

TEST(ProjectUndo, PushAndPopGiveTheSnapshotBack) {
  CProject project;
  std::unique_ptr<CTimeline> timeline(MakeTimeline("T", 1, 3));
  EXPECT_EQ(project.PushUndo(timeline.get(), "Move", 1), 0);
  ComponentAt(*timeline, 0, 0)->dStart = 42.0;  // the edit after the snapshot

  CUndoData out;
  EXPECT_TRUE(project.PopUndo(&out));
  EXPECT_STREQ(out.szText, "Move");
  EXPECT_EQ(+out.timeline.iId, +timeline->iId);
  EXPECT_EQ(+ComponentAt(out.timeline, 0, 0)->dStart, 0.0);
  EXPECT_EQ(project.undoList.GetSize(), 0);
  EXPECT_FALSE(project.PopUndo(&out));
}

TEST(ProjectUndo, TheSnapshotFindsItsTimelineAgain) {
  CProject project;
  project.AddTimeline(MakeTimeline("T", 1, 2));
  CTimeline* stored = StoredTimeline(project, 0);
  project.PushUndo(stored, "Edit", 1);
  ComponentAt(*stored, 0, 1)->dEnd = 9999.0;

  CUndoData step;
  ASSERT_TRUE(project.PopUndo(&step));
  EXPECT_EQ(project.SetTimeline(&step.timeline), 0);
  EXPECT_EQ(+ComponentAt(*StoredTimeline(project, 0), 0, 1)->dEnd, 1500.0);
}

TEST(ProjectUndo, StackHolds801RecordsAndDropsTheOldest) {
  CProject project;
  CUndoData record;
  for (int32_t i = 0; i < 800; ++i) {
    record.iCode = i;
    project.PushUndoRecord(&record, 0);
  }
  ASSERT_EQ(project.undoList.GetSize(), 800);
  record.iCode = 800;
  project.PushUndoRecord(&record, 0);  // 800 records: nothing goes
  ASSERT_EQ(project.undoList.GetSize(), 801);
  EXPECT_EQ(+project.undoList.GetAt(0)->iCode, 0);

  record.iCode = 801;
  project.PushUndoRecord(&record, 0);  // 801 records: the oldest goes
  ASSERT_EQ(project.undoList.GetSize(), 801);
  EXPECT_EQ(+project.undoList.GetAt(0)->iCode, 1);
  EXPECT_EQ(+project.undoList.GetAt(800)->iCode, 801);
}

TEST(ProjectUndo, RedoStackHasTheSameLimit) {
  CProject project;
  CUndoData record;
  for (int32_t i = 0; i < 803; ++i) {
    record.iCode = i;
    project.PushRedoRecord(&record);
  }
  ASSERT_EQ(project.redoList.GetSize(), 801);
  EXPECT_EQ(+project.redoList.GetAt(0)->iCode, 2);
}

TEST(ProjectUndo, PushWithClearRedoEmptiesRedoFirst) {
  CProject project;
  CTimeline timeline;
  project.PushRedo(&timeline, "r1");
  project.PushRedo(&timeline, "r2");
  project.PushUndo(&timeline, "keeps", 0);
  EXPECT_EQ(project.redoList.GetSize(), 2);
  project.PushUndo(&timeline, "clears", 1);
  EXPECT_EQ(project.redoList.GetSize(), 0);
  EXPECT_EQ(project.undoList.GetSize(), 2);
}

TEST(ProjectUndo, NullTimelineChangesNothingNotEvenRedo) {
  CProject project;
  CTimeline timeline;
  project.PushRedo(&timeline, "r");
  EXPECT_EQ(project.PushUndo(nullptr, "x", 1), 0);
  EXPECT_EQ(project.redoList.GetSize(), 1);
  EXPECT_EQ(project.undoList.GetSize(), 0);
  EXPECT_EQ(project.PushRedo(nullptr, "x"), 0);
  EXPECT_EQ(project.redoList.GetSize(), 1);
  EXPECT_EQ(project.PushUndoRecord(nullptr, 1), 0);
  EXPECT_EQ(project.PushRedoRecord(nullptr), 0);
  EXPECT_EQ(project.redoList.GetSize(), 1);
}

TEST(ProjectUndo, InfoOnAnEmptyStackIsFalseAndWritesNothing) {
  CProject project;
  char text[kUndoTextSize];
  std::memset(text, '#', sizeof(text));
  int32_t code = -77;
  EXPECT_FALSE(project.GetUndoInfo(text, &code));
  EXPECT_FALSE(project.GetRedoInfo(text, &code));
  for (char c : text) ASSERT_EQ(c, '#');
  EXPECT_EQ(code, -77);
}

TEST(ProjectUndo, InfoHandsOutTextAndCodeAndKeepsTheRecord) {
  CProject project;
  CUndoData record;
  record.iCode = 17;
  std::strcpy(record.szText, "Trim");
  project.PushUndoRecord(&record, 0);
  char text[kUndoTextSize];
  int32_t code = 0;
  EXPECT_TRUE(project.GetUndoInfo(text, &code));
  EXPECT_STREQ(text, "Trim");
  EXPECT_EQ(code, 17);
  EXPECT_TRUE(project.GetUndoInfo(nullptr, nullptr));  // either may be null
  EXPECT_EQ(project.undoList.GetSize(), 1);
  project.PushRedoRecord(&record);
  code = 0;
  EXPECT_TRUE(project.GetRedoInfo(nullptr, &code));
  EXPECT_EQ(code, 17);
}

TEST(ProjectUndo, PushUndoLeavesTheCodeAtZero) {
  CProject project;
  CTimeline timeline;
  project.PushUndo(&timeline, "t", 0);
  int32_t code = -1;
  project.GetUndoInfo(nullptr, &code);
  EXPECT_EQ(code, 0);
}

TEST(ProjectUndo, PopWithNullDropsTheTop) {
  CProject project;
  CUndoData record;
  record.iCode = 1;
  project.PushUndoRecord(&record, 0);
  record.iCode = 2;
  project.PushUndoRecord(&record, 0);
  EXPECT_TRUE(project.PopUndo(nullptr));
  ASSERT_EQ(project.undoList.GetSize(), 1);
  EXPECT_EQ(+project.undoList.GetAt(0)->iCode, 1);
  project.PushRedoRecord(&record);
  EXPECT_TRUE(project.PopRedo(nullptr));
  EXPECT_FALSE(project.PopRedo(nullptr));
}

TEST(ProjectUndo, LongTextIsCutTo100BytesWithoutTerminator) {
  CProject project;
  CTimeline timeline;
  const std::string longText = std::string(100, 'a') + "overflow";
  project.PushUndo(&timeline, longText.c_str(), 0);
  char text[kUndoTextSize + 8];
  std::memset(text, '#', sizeof(text));
  EXPECT_TRUE(project.GetUndoInfo(text, nullptr));
  EXPECT_EQ(std::string(text, kUndoTextSize), std::string(100, 'a'));
  EXPECT_EQ(text[kUndoTextSize], '#');  // exactly 100 bytes handed out
  const CUndoData* top = project.undoList.GetAt(0);
  EXPECT_EQ(std::memchr(top->szText, '\0', kUndoTextSize), nullptr);
}

TEST(ProjectUndo, ShortTextIsPaddedWithZeros) {
  CProject project;
  CTimeline timeline;
  project.PushUndo(&timeline, "ab", 0);
  const CUndoData* top = project.undoList.GetAt(0);
  EXPECT_STREQ(top->szText, "ab");
  for (size_t i = 2; i < kUndoTextSize; ++i) ASSERT_EQ(top->szText[i], '\0');
  project.PushUndo(&timeline, nullptr, 0);  // no text: an empty one
  EXPECT_EQ(project.undoList.GetAt(1)->szText[0], '\0');
}

TEST(ProjectUndo, ClearResultsDiffer) {
  CProject project;
  CTimeline timeline;
  project.PushUndo(&timeline, "u", 0);
  project.PushRedo(&timeline, "r");
  EXPECT_FALSE(project.ClearUndo());
  EXPECT_EQ(project.undoList.GetSize(), 0);
  EXPECT_EQ(project.redoList.GetSize(), 1);
  EXPECT_TRUE(project.ClearRedo());
  EXPECT_EQ(project.redoList.GetSize(), 0);
  project.PushUndo(&timeline, "u", 0);
  project.PushRedo(&timeline, "r");
  EXPECT_TRUE(project.ClearUndoAndRedo());
  EXPECT_EQ(project.undoList.GetSize(), 0);
  EXPECT_EQ(project.redoList.GetSize(), 0);
  EXPECT_FALSE(project.ClearUndo());  // also on an empty stack
}

TEST(ProjectUndo, UndoLockIsTakenWithCodeZeroAndLetGo) {
  CProject project;
  CTimeline timeline;
  project.PushUndo(&timeline, "u", 0);
  EXPECT_EQ(OwnerCode(project.lockUndo), 0);
  EXPECT_FALSE(IsHeld(project.lockUndo));
}

TEST(ProjectUndo, UndoDoesNotMarkTheProject) {
  CProject project;
  CTimeline timeline;
  project.PushUndo(&timeline, "u", 1);
  project.PopUndo(nullptr);
  EXPECT_EQ(+project.iModified, 0);
  EXPECT_EQ(+project.iChangeCount, 0);
}

}  // namespace
