#pragma once
// Block copy in 64-byte units, kept beside the tests and used by none of them
// (the memory copy test uses memcpy). Sizes that are multiples of 64 are
// copied whole. For any other size the 64-byte blocks are copied and the
// tail (size % 64 bytes, or everything below 64) is left untouched in the
// destination: a defined, bounded outcome where the block routine this
// replaces lost the tail or never ended.

#include <cstdint>

namespace tachyrun {

void MmxBlockCopy(void* pDst, const void* pSrc, uint32_t dwSize);

}  // namespace tachyrun
