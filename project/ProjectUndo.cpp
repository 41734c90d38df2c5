// The undo and redo stacks of a project: snapshots of timelines, pushed and
// popped by the application. Both stacks are guarded by lockUndo, taken with
// owner code 0 and held across the deep copy of a push.

#include <cstring>

#include "core/DataLockGuard.h"
#include "project/OwnerCodes.h"
#include "project/Project.h"
#include "project/UndoData.h"

bool CProject::GetStackInfo(CPointerArray<CUndoData>& stack, char* text, int32_t* code) {
  CDataLockGuard undo(lockUndo, ownercode::kOwnerList);
  if (stack.GetSize() == 0) return false;
  const CUndoData* top = stack.GetAt(stack.GetSize() - 1);
  if (top == nullptr) return true;
  if (text != nullptr) std::memcpy(text, top->szText, kUndoTextSize);
  if (code != nullptr) *code = top->iCode;
  return true;
}

void CProject::PushOnto(CPointerArray<CUndoData>& stack, const CUndoData& record) {
  CDataLockGuard undo(lockUndo, ownercode::kOwnerList);
  if (stack.GetSize() >= kUndoStackLimit) {
    CUndoData* oldest = stack.GetAt(0);
    stack.RemoveAt(0);
    delete oldest;
  }
  CUndoData* copy = new CUndoData;
  copy->Assign(record);
  stack.Add(copy);
}

bool CProject::PopFrom(CPointerArray<CUndoData>& stack, CUndoData* out) {
  CDataLockGuard undo(lockUndo, ownercode::kOwnerList);
  const int32_t count = stack.GetSize();
  if (count == 0) return false;
  CUndoData* top = stack.GetAt(count - 1);
  if (out != nullptr && top != nullptr) out->Assign(*top);
  stack.RemoveAt(count - 1);
  delete top;
  return true;
}

void CProject::ClearStack(CPointerArray<CUndoData>& stack) {
  CDataLockGuard undo(lockUndo, ownercode::kOwnerList);
  for (CUndoData* record : stack) delete record;
  if (stack.GetSize() > 0) stack.RemoveAll();
}

void CProject::Snapshot(CUndoData& record, const CTimeline& timeline, const char* text) {
  record.timeline.CopyFrom(timeline);
  // A text of 100 characters or more fills the field without a terminator.
  if (text == nullptr) return;
  const size_t length = ::strnlen(text, kUndoTextSize);
  std::memcpy(record.szText, text, length);
  std::memset(record.szText + length, 0, kUndoTextSize - length);
}

bool CProject::GetUndoInfo(char* text, int32_t* code) {
  return GetStackInfo(undoList, text, code);
}

bool CProject::GetRedoInfo(char* text, int32_t* code) {
  return GetStackInfo(redoList, text, code);
}

int32_t CProject::PushUndoRecord(const CUndoData* record, uint8_t bClearRedo) {
  if (record == nullptr) return 0;
  // A new edit makes the redo steps void; cleared before lockUndo is taken.
  if (bClearRedo != 0) ClearRedo();
  PushOnto(undoList, *record);
  return 0;
}

int32_t CProject::PushRedoRecord(const CUndoData* record) {
  if (record != nullptr) PushOnto(redoList, *record);
  return 0;
}

int32_t CProject::PushUndo(const CTimeline* timeline, const char* text, uint8_t bClearRedo) {
  if (timeline == nullptr) return 0;
  CUndoData record;
  Snapshot(record, *timeline, text);
  return PushUndoRecord(&record, bClearRedo);
}

int32_t CProject::PushRedo(const CTimeline* timeline, const char* text) {
  if (timeline == nullptr) return 0;
  CUndoData record;
  Snapshot(record, *timeline, text);
  return PushRedoRecord(&record);
}

bool CProject::PopUndo(CUndoData* out) {
  return PopFrom(undoList, out);
}

bool CProject::PopRedo(CUndoData* out) {
  return PopFrom(redoList, out);
}

bool CProject::ClearUndoAndRedo() {
  ClearUndo();
  ClearRedo();
  return true;
}

bool CProject::ClearRedo() {
  ClearStack(redoList);
  return true;
}

// Gives false where ClearRedo gives true; no caller reads it, and the
// difference is kept as the interface has it.
bool CProject::ClearUndo() {
  ClearStack(undoList);
  return false;
}
