#include "core/SizedRecord.h"

#include <climits>

#include "files/DataFile.h"

namespace {

// The stream's position, or -1 when `extent` bytes from it would pass what
// the 32-bit positioned helpers can address.
int64_t ReachablePosition(FILE* stream, int64_t extent) {
  const int64_t position = static_cast<int64_t>(ftello(stream));
  if (position < 0 || position + extent > INT32_MAX) return -1;
  return position;
}

int32_t Read(FILE* stream, int64_t start, int64_t count, void* buffer) {
  return ReadFileRange(static_cast<int32_t>(start), static_cast<int32_t>(start + count), buffer,
                       stream);
}

int32_t Write(FILE* stream, int64_t start, int64_t count, const void* buffer) {
  return WriteFileRange(static_cast<int32_t>(start), static_cast<int32_t>(start + count), buffer,
                        stream);
}

}  // namespace

int32_t WriteRecordSize(FILE* stream, int32_t size, int64_t* bodyStart) {
  if (stream == nullptr) return -1;
  const int64_t position = ReachablePosition(stream, int64_t{4} + (size > 0 ? size : 0));
  if (position < 0) return -1;
  const int32_t sizeField = size;
  Write(stream, position, 4, &sizeField);  // its result is not looked at
  *bodyStart = position + 4;
  return 0;
}

int32_t WriteRecordBody(FILE* stream, int64_t bodyStart, const void* record, int32_t size) {
  if (stream == nullptr) return -1;
  return Write(stream, bodyStart, size, record) > 0 ? 0 : -1;
}

int32_t ReadSizedRecord(FILE* stream, void* local, int32_t currentSize) {
  if (stream == nullptr) return -1;
  const int64_t position = ReachablePosition(stream, int64_t{4} + currentSize);
  if (position < 0) return -1;
  int32_t size = 0;
  if (Read(stream, position, 4, &size) <= 0) return -1;
  // A longer record comes from a newer program: refuse it and move no further.
  if (size > currentSize) return -1;
  // Zero or negative sizes read nothing and so fail here as well.
  return Read(stream, position + 4, size, local) > 0 ? 0 : -1;
}

int32_t WritePlainBlock(FILE* stream, const void* block, int32_t size) {
  if (stream == nullptr) return -1;
  const int64_t position = ReachablePosition(stream, size);
  if (position < 0) return -1;
  return Write(stream, position, size, block) > 0 ? 0 : -1;
}

int32_t ReadPlainBlock(FILE* stream, void* block, int32_t size) {
  if (stream == nullptr) return -1;
  const int64_t position = ReachablePosition(stream, size);
  if (position < 0) return -1;
  return Read(stream, position, size, block) > 0 ? 0 : -1;
}

void UpgradeTimesToDouble(void* record, int32_t size, size_t flagOffset,
                          std::span<const size_t> fieldOffsets) {
  auto* bytes = static_cast<unsigned char*>(record);
  if (record == nullptr || size <= 0 || flagOffset >= static_cast<size_t>(size)) return;
  if (bytes[flagOffset] == 0) {
    for (const size_t offset : fieldOffsets) {
      if (offset + 8 > static_cast<size_t>(size)) continue;
      int64_t asInteger = 0;
      std::memcpy(&asInteger, bytes + offset, 8);
      const double asDouble = static_cast<double>(asInteger);
      std::memcpy(bytes + offset, &asDouble, 8);
    }
  }
  bytes[flagOffset] = 1;
}
