#pragma once
// CUniqueIdGenerator: the 64-bit identifiers of persistent items. The low
// word is the millisecond clock at the moment of the call, the high word a
// running number of the item's kind (from 1, per process). Optionally the
// call also gives a readable stamp "YYYYMMDD_hhmmss_NNNNNN" of local time and
// that running number.
//
// One instance, g_UniqueIdGenerator, serves the program; record constructors
// draw their ids from it:
//   iUniqueId = g_UniqueIdGenerator.NextId(ID_KIND_COMPONENT, nullptr);

#include <atomic>
#include <cstdint>
#include <string>

#include "core/DataLock.h"

inline constexpr uint32_t ID_KIND_COMPONENT = 2;
inline constexpr uint32_t ID_KIND_TRACK = 3;
inline constexpr uint32_t ID_KIND_TIMELINE = 4;
inline constexpr uint32_t ID_KIND_REPOSITORY = 5;

// The counters shared by all kinds, guarded by their own lock.
struct UniqueIdCounters {
  static constexpr int kCounterCount = 12;
  uint64_t aCounters[kCounterCount];
  CDataLock lock;
};

class CUniqueIdGenerator {
 public:
  // Counters all start at 1; if the block can't be allocated every NextId
  // answers all ones.
  CUniqueIdGenerator();
  ~CUniqueIdGenerator();
  CUniqueIdGenerator(const CUniqueIdGenerator&) = delete;
  CUniqueIdGenerator& operator=(const CUniqueIdGenerator&) = delete;

  // A new identifier of `kind` (see CounterOf); `text`, when not null,
  // receives the readable stamp. Thread-safe for the running numbers; the
  // returned value is read back after the lock is let go, so two threads
  // racing may both get the later one of their ids.
  uint64_t NextId(uint32_t kind, std::string* text);

  // Which counter a kind draws on: 2 -> 1, 3 -> 2, 4 and 5 share 3,
  // 6..12 -> 5..11, everything else (0, 1, negatives, above 12) -> 0.
  // Counter 4 is used by no kind.
  static int CounterOf(uint32_t kind);

 private:
  friend class CUniqueIdGeneratorTestPeer;

  UniqueIdCounters* m_pCounters = nullptr;
  std::atomic<uint64_t> m_iLastId{0};
};

// Start slot of the global below (platform/StartOrder.h).
inline constexpr int kStartUniqueIds = 1050;

extern CUniqueIdGenerator g_UniqueIdGenerator;
