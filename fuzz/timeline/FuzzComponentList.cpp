// Loads a component list from arbitrary bytes and runs every list operation
// that returns on it: sorts, stream expansion, layout, extent, ids and the
// digest by line. The one call that never returns by design (an insert past
// the end) is left out; the throw that RemoveLinked keeps is caught and the
// lock it leaves held is released.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <stdexcept>

#include "timeline/ComponentList.h"
#include "timeline/SortGroupList.h"

namespace {

// Components a run loads at most: enough for every stride of RemoveLinked.
constexpr int32_t kMaxComponents = 6;

int32_t ExpandGuarded(CComponentList& list) {
  try {
    return list.ExpandStreams();
  } catch (const std::out_of_range&) {
    list.m_InnerLock.Release();
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
  if (size < 2) return 0;
  const int32_t count = data[0] % (kMaxComponents + 1);
  const uint8_t key = data[1];
  FILE* stream = fmemopen(const_cast<uint8_t*>(data + 2), size - 2, "rb");
  if (stream == nullptr) return 0;
  CComponentList list;
  list.Load(stream, count);
  std::fclose(stream);
  Exercise(list, key);
  return 0;
}
