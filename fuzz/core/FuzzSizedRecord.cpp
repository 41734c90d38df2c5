// Feeds arbitrary bytes to the record reader, the owning list loader and the
// plain block reader. The first byte picks the path; the rest is the stream.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "core/SizedRecord.h"
#include "tests/core/ProbeRecords.h"

namespace {

FILE* OpenBytes(const uint8_t* data, size_t size) {
  if (size == 0) return nullptr;
  return fmemopen(const_cast<uint8_t*>(data), size, "rb");
}

void SaveBack(Shelf& shelf) {
  static char buffer[1 << 16];
  FILE* out = fmemopen(buffer, sizeof buffer, "wb");
  if (out == nullptr) return;
  shelf.Save(out);
  std::fclose(out);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const uint8_t mode = data[0] % 4;
  std::vector<uint8_t> bytes(data + 1, data + size);
  FILE* stream = OpenBytes(bytes.data(), bytes.size());
  if (stream == nullptr) return 0;
  switch (mode) {
    case 0: {  // an owner with a counted list behind its record
      Shelf shelf;
      shelf.Load(stream);
      SaveBack(shelf);
      break;
    }
    case 1: {  // a list with a count taken from the stream itself
      int32_t count = 0;
      if (std::fread(&count, 1, sizeof count, stream) == sizeof count) {
        ProbeList list;
        list.Load(stream, count);
      }
      break;
    }
    case 2: {  // records one after another until one fails
      Probe probe;
      for (int i = 0; i < 1000 && probe.Load(stream) == 0; ++i) {
      }
      break;
    }
    default: {
      uint8_t block[460];
      ReadPlainBlock(stream, block, sizeof block);
      break;
    }
  }
  std::fclose(stream);
  return 0;
}
