#pragma once
// Sized records: how every persistent object of the library reads and writes
// its packed record. On disk a record is an i32 byte count followed by that
// many bytes of the record as it stands in memory. Fields are only ever added
// at the end: a reader keeps its constructor defaults for what an older file
// lacks, and refuses (-1) a record longer than it knows, leaving the object
// untouched and the stream behind the size field. Records owned by a record
// (its element lists) follow it directly, each again a sized record; their
// counts live in count fields of the owner's record.
//
// Results: 0, or -1 for a null stream, a write or read that moved nothing,
// a size field above the current size (or 0 or negative), or a position the
// 32-bit file helpers cannot reach (2 GiB and beyond).
//
// Usage, for a record CThingData (a `#pragma pack(push, 1)` struct whose
// constructor sets the defaults, with count field iPartCount and a version
// flag cTimesAreDouble) and a behaviour class CThing : public CObject,
// public CThingData owning `COwningList<CPart> m_Parts`:
//
//   int32_t CThing::Save(FILE* stream) {
//     return SaveSizedRecord(stream, static_cast<CThingData&>(*this),
//         [&] { iPartCount = m_Parts.GetCount(); },   // counts before the body
//         [&] { m_Parts.Save(stream); });             // owned lists after it
//   }
//   int32_t CThing::Load(FILE* stream) {
//     static constexpr size_t kTimes[] = {offsetof(CThingData, dStart),
//                                         offsetof(CThingData, dEnd)};
//     return LoadSizedRecord(stream, static_cast<CThingData&>(*this),
//         [](CThingData& local) {                       // on the local copy
//           UpgradeTimesToDouble(local, offsetof(CThingData, cTimesAreDouble), kTimes);
//         },
//         [&](CThingData& local) {                      // lists, counts refreshed
//           m_Parts.Load(stream, local.iPartCount);
//           local.iPartCount = m_Parts.GetCount();
//         });
//   }
//
// Either hook may be omitted (pass NoRecordHook{} for the first when only the
// second is needed) and may return void or an i32, of which a negative value
// makes the whole operation -1. Load reads into a default-constructed local
// record, runs the after-read hook on it, copies it over the target, runs the
// list hook and copies it over the target once more, so bytes the file did not
// hold come from the constructor, never from the object's former contents.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>
#include <type_traits>

struct NoRecordHook {
  template <class... Args>
  void operator()(Args&...) const {}
};

// Writes the size field `size` at the stream's position and tells where the
// body goes. -1 for a null stream or an unreachable position; the result of
// the size write itself is not looked at.
int32_t WriteRecordSize(FILE* stream, int32_t size, int64_t* bodyStart);

// Writes `size` record bytes at `bodyStart`; -1 when nothing was written.
int32_t WriteRecordBody(FILE* stream, int64_t bodyStart, const void* record, int32_t size);

// Reads a size field and at most `currentSize` bytes of body into `local`.
// On -1 from a size above `currentSize` the stream stands behind the size field.
int32_t ReadSizedRecord(FILE* stream, void* local, int32_t currentSize);

// A block without a size in front: exactly `size` bytes at the stream's
// position, with the same checks. 0, or -1.
int32_t WritePlainBlock(FILE* stream, const void* block, int32_t size);
int32_t ReadPlainBlock(FILE* stream, void* block, int32_t size);

// Version upgrade in place: when the flag byte at `flagOffset` is 0, each
// listed 8-byte field is read as a signed 64-bit integer and written back as
// the same number as a double. The flag is set to 1 in every case. Offsets
// that don't fit inside `size` bytes are skipped.
void UpgradeTimesToDouble(void* record, int32_t size, size_t flagOffset,
                          std::span<const size_t> fieldOffsets);

template <class Record>
void UpgradeTimesToDouble(Record& record, size_t flagOffset, std::span<const size_t> fieldOffsets) {
  static_assert(std::is_trivially_copyable_v<Record>);
  UpgradeTimesToDouble(&record, static_cast<int32_t>(sizeof(Record)), flagOffset, fieldOffsets);
}

namespace sized_record_detail {
// Runs a hook that may return void or an i32; 0, or -1 for a negative result.
template <class Hook, class... Args>
int32_t Run(Hook& hook, Args&... args) {
  if constexpr (std::is_void_v<std::invoke_result_t<Hook&, Args&...>>) {
    hook(args...);
    return 0;
  } else {
    return hook(args...) < 0 ? -1 : 0;
  }
}
}  // namespace sized_record_detail

// Save of one record of `size` bytes at `record`: size field, count hook,
// body, then the after-body hook (owned lists, trailing blocks).
template <class FillCounts = NoRecordHook, class AfterBody = NoRecordHook>
int32_t SaveSizedBytes(FILE* stream, void* record, int32_t size, FillCounts fillCounts = {},
                       AfterBody afterBody = {}) {
  int64_t bodyStart = 0;
  if (WriteRecordSize(stream, size, &bodyStart) != 0) return -1;
  fillCounts();
  if (WriteRecordBody(stream, bodyStart, record, size) != 0) return -1;
  return sized_record_detail::Run(afterBody);
}

// Save of a packed record whose current size is sizeof(Record).
template <class Record, class FillCounts = NoRecordHook, class AfterBody = NoRecordHook>
int32_t SaveSizedRecord(FILE* stream, Record& record, FillCounts fillCounts = {},
                        AfterBody afterBody = {}) {
  static_assert(std::is_trivially_copyable_v<Record>, "records are plain packed structs");
  return SaveSizedBytes(stream, static_cast<void*>(&record), static_cast<int32_t>(sizeof(Record)),
                        fillCounts, afterBody);
}

// Load of a packed record whose current size is sizeof(Record); see the top.
template <class Record, class AfterRead = NoRecordHook, class LoadLists = NoRecordHook>
int32_t LoadSizedRecord(FILE* stream, Record& target, AfterRead afterRead = {},
                        LoadLists loadLists = {}) {
  static_assert(std::is_trivially_copyable_v<Record>, "records are plain packed structs");
  if (stream == nullptr) return -1;
  Record local;  // the constructor's defaults fill what the file lacks
  if (ReadSizedRecord(stream, &local, static_cast<int32_t>(sizeof(Record))) != 0) return -1;
  if (sized_record_detail::Run(afterRead, local) != 0) return -1;
  std::memcpy(static_cast<void*>(&target), &local, sizeof(Record));
  sized_record_detail::Run(loadLists, local);
  std::memcpy(static_cast<void*>(&target), &local, sizeof(Record));
  return 0;
}
