#pragma once
// Small persistent classes that exercise the list and record machinery the
// way the real record classes do: a packed record with constructor defaults,
// a behaviour class on CObject, and an owner with a count field and a list.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "core/Object.h"
#include "core/OwningList.h"
#include "core/SizedRecord.h"

#pragma pack(push, 1)
struct ProbeData {
  int32_t iKind = 0;
  int64_t iValue = 1234;
  char szName[6] = {'a', 'b', 'c', 0, 0, 0};
};
#pragma pack(pop)
static_assert(sizeof(ProbeData) == 18);
static_assert(offsetof(ProbeData, iKind) == 0);
static_assert(offsetof(ProbeData, iValue) == 4);
static_assert(offsetof(ProbeData, szName) == 12);

// Counts live instances so tests can see who deleted what.
class Probe : public CObject, public ProbeData {
 public:
  Probe() { ++s_iLive; }
  explicit Probe(int32_t kind, int64_t value = 1234) : Probe() {
    iKind = kind;
    iValue = value;
  }
  ~Probe() override { --s_iLive; }

  int32_t Save(FILE* stream) { return SaveSizedRecord(stream, static_cast<ProbeData&>(*this)); }
  int32_t Load(FILE* stream) {
    if (s_iThrowAfter >= 0 && s_iThrowAfter-- == 0) throw std::runtime_error("probe load");
    return LoadSizedRecord(stream, static_cast<ProbeData&>(*this));
  }

  ProbeData& Record() { return *this; }

  static inline std::atomic<int> s_iLive{0};
  // >= 0: the Load call after that many more calls throws.
  static inline int s_iThrowAfter = -1;
};

using ProbeList = COwningList<Probe>;

// Packed fields may sit unaligned: tests compare copies, never references.
template <class V>
V Val(V value) {
  return value;
}

#pragma pack(push, 1)
struct ShelfData {
  int32_t iProbeCount = 0;
  double dStart = 0.0;
  double dEnd = 250.0;
  uint8_t cTimesAreDouble = 1;
  int32_t iTail = 99;
};
#pragma pack(pop)
static_assert(sizeof(ShelfData) == 25);
static_assert(offsetof(ShelfData, iProbeCount) == 0);
static_assert(offsetof(ShelfData, dStart) == 4);
static_assert(offsetof(ShelfData, dEnd) == 12);
static_assert(offsetof(ShelfData, cTimesAreDouble) == 20);
static_assert(offsetof(ShelfData, iTail) == 21);

// An owner: count field filled before the body, list saved behind it, times
// upgraded from integers on load.
class Shelf : public CObject, public ShelfData {
 public:
  int32_t Save(FILE* stream) {
    return SaveSizedRecord(
        stream, static_cast<ShelfData&>(*this), [&] { iProbeCount = m_Probes.GetCount(); },
        [&] { m_Probes.Save(stream); });
  }
  int32_t Load(FILE* stream) {
    static constexpr size_t kTimes[] = {offsetof(ShelfData, dStart), offsetof(ShelfData, dEnd)};
    return LoadSizedRecord(
        stream, static_cast<ShelfData&>(*this),
        [](ShelfData& local) {
          UpgradeTimesToDouble(local, offsetof(ShelfData, cTimesAreDouble), kTimes);
        },
        [&](ShelfData& local) {
          m_Probes.Load(stream, local.iProbeCount);
          local.iProbeCount = m_Probes.GetCount();
        });
  }

  ShelfData& Record() { return *this; }
  ProbeList m_Probes;
};
