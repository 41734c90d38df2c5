#pragma once
// Deep copies between two owning lists of the same kind, as the copy
// operations of tracks, timelines and repositories make them: target's
// m_OuterLock, then source's, both with owner code 0; target emptied, then
// one copy of each non-null source element appended in order.

#include <cstdint>

#include "core/DataLockGuard.h"

template <class List, class MakeCopy>
void ReplaceWithCopies(List& target, List& source, MakeCopy makeCopy) {
  if (&target == &source) return;  // a list is its own copy already
  CDataLockGuard targetLock(target.m_OuterLock, 0);
  CDataLockGuard sourceLock(source.m_OuterLock, 0);
  target.Clear();
  for (auto* element : source.m_aItems) {
    if (element != nullptr) target.Add(makeCopy(*element));
  }
}
