#pragma once
// The effect test: the test bitmap is copied as one straight block into the
// source buffer of the SD GPU engine and rendered once through the
// perspective transform.

#include <cstdint>
#include <cstring>

#include "app/PicturePairState.h"
#include "app/ResultLines.h"
#include "app/TestBitmap.h"
#include "engine/Pixmill.h"

namespace tachyrun {

inline constexpr int kEffectWidth = 720;
inline constexpr int kEffectHeight = 576;
inline constexpr uint32_t kEffectMaxBytes = kEffectWidth * kEffectHeight * 4;

// Copies the bitmap's pixels into `pDst` (room for kEffectMaxBytes): at most
// 720 x 576 x 4 bytes, fewer when Stride x Height is smaller. The block is not
// re-laid per row, so another width comes out sheared. Returns the bytes
// copied; 0 when the bitmap can't be locked.
uint32_t CopyTestImage(CTestBitmap* pImage, uint8_t* pDst);

// Runs the render on `gpu` with the image copied in when there is one.
template <class Engine, class SetText, class Clock>
int32_t RunEffectTest(Engine& gpu, CTestBitmap* pImage, SetText&& setText, Clock&& clock) {
  int32_t iRes = 0;
  CPicturePairState state;
  state.SetPictures(kEffectWidth, kEffectHeight, PIX_ARGB32, kEffectWidth, kEffectHeight,
                    PIX_ARGB32, 5);
  const int iPitch = kEffectWidth * 4;
  state.pSrcBuffer = gpu.AllocBuffersRGBA(kEffectWidth, kEffectHeight, iPitch);
  state.pDstBuffer = gpu.AllocBuffersRGBA(kEffectWidth, kEffectHeight, iPitch);
  state.pAuxBuffer = gpu.AllocBuffersRGBA(kEffectWidth, kEffectHeight, iPitch);
  if (pImage != nullptr) CopyTestImage(pImage, state.pSrcBuffer);

  char szLine[kLineSize];
  std::snprintf(szLine, kLineSize, "%s", kStartedText);
  setText(szLine);

  const uint32_t t0 = clock();
  tagPicProps src{state.dwSrcFormat, state.iSrcWidth, state.iSrcHeight, 0};
  tagPicProps dst{state.dwDstFormat, state.iDstWidth, state.iDstHeight, 0};
  tagRECT srcRect{0, 0, state.iSrcWidth, state.iSrcHeight};
  tagRECT dstRect{0, 0, state.iDstWidth, state.iDstHeight};
  const int iRounds = 1;
  for (int i = 0; i < iRounds; ++i) {
    alignas(8) PerspectiveParams params;  // packed record with doubles: keep them aligned
    iRes = gpu.Img_PerspectiveCoeffARGB(state.pSrcBuffer, &src, &srcRect, 0, 0, 3, state.pDstBuffer,
                                        &dst, &dstRect, &params);
  }
  const uint32_t dt = clock() - t0;
  FormatTimeLine(szLine, kResizeArgbLineFormat, TimePerRound(dt, iRounds), iRes);
  setText(szLine);

  for (uint8_t* pBuffer : {state.pSrcBuffer, state.pDstBuffer, state.pAuxBuffer}) {
    if (pBuffer != nullptr) gpu.FreeBuffers(&pBuffer);
  }
  return iRes;
}

}  // namespace tachyrun
