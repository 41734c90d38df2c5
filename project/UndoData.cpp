#include "project/UndoData.h"

#include <cstring>

CUndoData::CUndoData() {
  iCode = 0;
  iCodeB = 0;
  std::memset(szText, 0, sizeof(szText));
}

void CUndoData::Assign(const CUndoData& source) {
  if (&source == this) return;
  iCode = source.iCode;
  iCodeB = source.iCodeB;
  std::memcpy(szText, source.szText, sizeof(szText));
  timeline.CopyFrom(source.timeline);
}
