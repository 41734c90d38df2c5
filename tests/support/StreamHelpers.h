#pragma once
// The stream helpers under the short names the data-layer tests use; the
// helpers themselves live in ByteStreams.h.

#include <cstdint>
#include <cstdio>
#include <vector>

#include "tests/support/ByteStreams.h"

using testsupport::At;
using testsupport::Put;
using testsupport::RepeatedWord;

// Everything the stream holds; the stream stands at its start afterwards.
inline std::vector<uint8_t> StreamBytes(FILE* stream) {
  std::vector<uint8_t> bytes = testsupport::ReadAll(stream);
  std::rewind(stream);
  return bytes;
}

// A temporary file holding `bytes`, positioned at its start.
inline FILE* StreamWith(const std::vector<uint8_t>& bytes) { return testsupport::StreamOf(bytes); }
