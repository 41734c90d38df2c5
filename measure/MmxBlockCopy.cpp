#include "measure/MmxBlockCopy.h"

#include <cstring>

namespace tachyrun {

void MmxBlockCopy(void* pDst, const void* pSrc, uint32_t dwSize) {
  if (dwSize == 0) return;
  auto* pOut = static_cast<unsigned char*>(pDst);
  const auto* pIn = static_cast<const unsigned char*>(pSrc);
  for (uint32_t dwBlocks = dwSize / 64; dwBlocks != 0; --dwBlocks) {
    std::memcpy(pOut, pIn, 64);  // one block: eight 8-byte registers' worth
    pOut += 64;
    pIn += 64;
  }
}

}  // namespace tachyrun
