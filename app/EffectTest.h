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
  state.AllocBuffers(gpu);
  if (pImage != nullptr) CopyTestImage(pImage, state.pSrcBuffer);

  char szLine[kLineSize];
  WriteStarted(szLine, setText);

  const uint32_t t0 = clock();
  tagPicProps src, dst;
  tagRECT srcRect, dstRect;
  state.FillProps(src, dst, srcRect, dstRect);
  const int iRounds = 1;
  for (int i = 0; i < iRounds; ++i) {
    alignas(8) PerspectiveParams params;  // packed record with doubles: keep them aligned
    iRes = gpu.Img_PerspectiveCoeffARGB(state.pSrcBuffer, &src, &srcRect, 0, 0, 3, state.pDstBuffer,
                                        &dst, &dstRect, &params);
  }
  const uint32_t dt = clock() - t0;
  FormatTimeLine(szLine, kResizeArgbLineFormat, TimePerRound(dt, iRounds), iRes);
  setText(szLine);

  state.FreeBuffers(gpu);
  return iRes;
}

}  // namespace tachyrun
