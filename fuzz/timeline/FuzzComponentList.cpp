// Loads a component list from arbitrary bytes and runs every list operation
// that returns on it: sorts, stream expansion, layout, extent, ids and the
// digest by line. The count comes from the input as a file's count field
// would, so runs of refused records thousands deep are in reach (the script
// gives this target a -max_len of 1 MiB). The one call that never returns by
// design (an insert past the end) is left out; the throw that RemoveLinked
// keeps passes out of ExpandStreams and leaves the list's locks free.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "timeline/ComponentList.h"
#include "timeline/SortGroupList.h"

namespace {

// Sorting is quadratic: the operations run on lists up to this size.
constexpr int32_t kMaxExercised = 4096;

// Elements a load may leave: the good records the input holds (the shortest
// is a size word and one byte) plus the failed reads the list allows beyond
// them; anything above is memory the input can't back.
void CheckBounded(CComponentList& list, size_t inputSize) {
  const size_t goodAtMost = inputSize / 5;
  const size_t allowed = 2 * goodAtMost + CComponentList::kMaxFailedReads + 1;
  if (static_cast<size_t>(list.GetCount()) > allowed) std::abort();
}

int32_t ExpandGuarded(CComponentList& list) {
  try {
    return list.ExpandStreams();
  } catch (const std::out_of_range&) {
    return -1;
  }
}

void Exercise(CComponentList& list, uint8_t key) {
  list.Sort(key % 10, key);
  list.GetMaxIdWord();
  int64_t extent[2] = {0, 0};
  list.GetTimeExtent(extent, 0, key);
  ExpandGuarded(list);
  list.LayOutLines(key * 1000);
  CSortGroupList groups;
  groups.Build(&list);
  if (list.GetCount() > 0) {
    CComponent* first = list.m_aItems.GetAt(0);
    if (first != nullptr) list.RemoveById(first->iUniqueId, key & 1);
  }
  CComponent* detached = list.GetAt(0);
  if (list.Detach(0) == 0) delete detached;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 5) return 0;
  int32_t count = 0;
  std::memcpy(&count, data, sizeof(count));
  const uint8_t key = data[4];
  FILE* stream = fmemopen(const_cast<uint8_t*>(data + 5), size - 5, "rb");
  if (stream == nullptr) return 0;
  CComponentList list;
  list.Load(stream, count);
  std::fclose(stream);
  CheckBounded(list, size);
  if (list.GetCount() <= kMaxExercised) Exercise(list, key);
  return 0;
}
