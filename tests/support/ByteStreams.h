#pragma once
// Byte buffers and streams for file-format tests: a stream's whole content,
// a stream made from bytes, and typed reads and appends at byte offsets
// (records are packed, so fields are copied, never referenced).

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

namespace testsupport {

using Bytes = std::vector<uint8_t>;

// Everything the stream holds, from its start; the position ends at its end.
inline Bytes ReadAll(FILE* f) {
  std::fflush(f);
  std::fseek(f, 0, SEEK_END);
  Bytes bytes(static_cast<size_t>(std::ftell(f)));
  std::rewind(f);
  EXPECT_EQ(std::fread(bytes.data(), 1, bytes.size(), f), bytes.size());
  return bytes;
}

// A temporary stream holding bytes, positioned at its start.
inline FILE* StreamOf(const Bytes& bytes) {
  FILE* f = std::tmpfile();
  if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), f);
  std::rewind(f);
  return f;
}

template <class T>
T At(const Bytes& b, size_t offset) {
  T value{};
  std::memcpy(&value, b.data() + offset, sizeof(T));
  return value;
}

template <class T>
void Put(Bytes& b, const T& value) {
  const auto* p = reinterpret_cast<const uint8_t*>(&value);
  b.insert(b.end(), p, p + sizeof(T));
}

// The first `count` bytes of a record, as they stand in memory.
template <class T>
void PutFirst(Bytes& b, const T& value, size_t count) {
  const auto* p = reinterpret_cast<const uint8_t*>(&value);
  b.insert(b.end(), p, p + count);
}

// `bytes` bytes of one 32-bit word repeated: size words a reader refuses
// make a stream of refused records, four bytes each.
inline Bytes RepeatedWord(size_t bytes, int32_t word) {
  Bytes out;
  out.reserve(bytes);
  while (out.size() + sizeof(word) <= bytes) Put(out, word);
  return out;
}

// What an object's Save writes, on its own.
template <class T>
Bytes SavedBytes(T& object) {
  FILE* f = std::tmpfile();
  object.Save(f);
  Bytes bytes = ReadAll(f);
  std::fclose(f);
  return bytes;
}

}  // namespace testsupport
