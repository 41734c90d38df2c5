#include "video/UniqueIdGenerator.h"
#include "platform/StartOrder.h"

#include <cstdio>
#include <ctime>
#include <new>

#include "platform/Clock.h"

CUniqueIdGenerator g_UniqueIdGenerator TACHYRUN_START_ORDER(kStartUniqueIds);

namespace {

// Local calendar fields of `now`; a failed break-down gives 0 for the date
// and -1 for the time of day.
struct Stamp {
  int year = 0, month = 0, day = 0, hour = -1, minute = -1, second = -1;
};

Stamp BreakDown(time_t now) {
  Stamp stamp;
  std::tm parts{};
  if (localtime_r(&now, &parts) == nullptr) return stamp;
  stamp.year = parts.tm_year + 1900;
  stamp.month = parts.tm_mon + 1;
  stamp.day = parts.tm_mday;
  stamp.hour = parts.tm_hour;
  stamp.minute = parts.tm_min;
  stamp.second = parts.tm_sec;
  return stamp;
}

std::string FormatStamp(uint32_t runningNumber) {
  const Stamp s = BreakDown(std::time(nullptr));
  char buffer[80];
  // The stamp's second separator was once written as a stray "%_"; it is
  // rendered as a plain "_" here so that the text is fully defined.
  std::snprintf(buffer, sizeof buffer, "%04d%02d%02d_%02d%02d%02d_%06d", s.year, s.month, s.day,
                s.hour, s.minute, s.second, static_cast<int32_t>(runningNumber));
  return buffer;
}

}  // namespace

CUniqueIdGenerator::CUniqueIdGenerator() {
  m_pCounters = new (std::nothrow) UniqueIdCounters;
  if (m_pCounters == nullptr) return;
  for (uint64_t& counter : m_pCounters->aCounters) counter = 1;
}

CUniqueIdGenerator::~CUniqueIdGenerator() {
  // Freed here rather than left behind, and the pointer cleared, so that a
  // call during process teardown answers all ones instead of touching freed memory.
  delete m_pCounters;
  m_pCounters = nullptr;
}

int CUniqueIdGenerator::CounterOf(uint32_t kind) {
  if (kind == 2) return 1;
  if (kind == 3) return 2;
  if (kind == 4 || kind == 5) return 3;
  if (kind >= 6 && kind <= 12) return static_cast<int>(kind) - 1;
  return 0;
}

uint64_t CUniqueIdGenerator::NextId(uint32_t kind, std::string* text) {
  if (m_pCounters == nullptr) return 0xFFFFFFFFFFFFFFFFull;
  m_pCounters->lock.Acquire(0);
  m_iLastId.store(0, std::memory_order_relaxed);
  uint64_t& counter = m_pCounters->aCounters[CounterOf(kind)];
  const auto runningNumber = static_cast<uint32_t>(counter);
  ++counter;
  const uint64_t id = (uint64_t{runningNumber} << 32) | platform::TickCountMs();
  m_iLastId.store(id, std::memory_order_relaxed);
  if (text != nullptr) *text = FormatStamp(runningNumber);
  m_pCounters->lock.Release();
  // Read back after the release, as callers have always seen it.
  return m_iLastId.load(std::memory_order_relaxed);
}
