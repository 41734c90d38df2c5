#pragma once
// Temporary streams with known bytes, the bytes a stream holds, and
// little-endian values put into and read out of byte vectors.

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

inline std::vector<uint8_t> StreamBytes(FILE* stream) {
  std::fflush(stream);
  const long end = (std::fseek(stream, 0, SEEK_END), std::ftell(stream));
  std::vector<uint8_t> bytes(static_cast<size_t>(end));
  std::rewind(stream);
  if (!bytes.empty()) (void)std::fread(bytes.data(), 1, bytes.size(), stream);
  std::rewind(stream);
  return bytes;
}

// A temporary file holding `bytes`, positioned at its start.
inline FILE* StreamWith(const std::vector<uint8_t>& bytes) {
  FILE* stream = std::tmpfile();
  if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), stream);
  std::rewind(stream);
  return stream;
}

// Appends the little-endian bytes of `value`.
template <class V>
void Put(std::vector<uint8_t>& bytes, const V& value) {
  const auto* p = reinterpret_cast<const uint8_t*>(&value);
  bytes.insert(bytes.end(), p, p + sizeof(V));
}

// The value whose little-endian bytes stand at `offset`.
template <class V>
V At(const std::vector<uint8_t>& bytes, size_t offset) {
  V value{};
  std::memcpy(&value, bytes.data() + offset, sizeof(V));
  return value;
}
