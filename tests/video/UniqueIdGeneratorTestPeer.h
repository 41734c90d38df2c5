#pragma once
// Test access to the generator's counter block; the generator befriends this
// class, which only the tests define.

#include "video/UniqueIdGenerator.h"

class CUniqueIdGeneratorTestPeer {
 public:
  static UniqueIdCounters* Counters(const CUniqueIdGenerator& g) { return g.m_pCounters; }
  // Stands in for a failed allocation; hands back the block for the caller to free.
  static UniqueIdCounters* DropCounters(CUniqueIdGenerator& g) {
    UniqueIdCounters* block = g.m_pCounters;
    g.m_pCounters = nullptr;
    return block;
  }
};
