#pragma once
// CUndoData: one step of undo or redo, a full snapshot of one timeline with
// a line of text for the menu. Undo works by snapshots: the application
// pushes a deep copy of the timeline it is about to change and, to undo,
// writes the copy back over the timeline by its id (CProject::SetTimeline).

#include <cstddef>
#include <cstdint>

#include "project/Timeline.h"

inline constexpr size_t kUndoTextSize = 100;

class CUndoData {
 public:
  // The snapshot timeline is built first (drawing ids for a timeline that
  // only exists to be overwritten), then the codes and the text are zeroed.
  CUndoData();
  CUndoData(const CUndoData&) = delete;
  CUndoData& operator=(const CUndoData&) = delete;

  // Codes, all 100 text bytes and a twin of the timeline: every id of the
  // copy equals its source's, so the snapshot still finds its timeline.
  void Assign(const CUndoData& source);

  int32_t iCode;               // the application's number for the step
  int32_t iCodeB;              // carried along, never read
  char szText[kUndoTextSize];  // not terminated when the text fills it
  CTimeline timeline;
};
