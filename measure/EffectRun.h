#pragma once
// The effect test: the test bitmap is copied as one straight block into the
// source buffer of the SD GPU engine and rendered once through the
// perspective transform.

#include <cstdint>
#include <cstring>

#include "engine/Pixmill.h"
#include "measure/BitmapData.h"
#include "measure/PicturePairState.h"
#include "measure/ResultLines.h"
#include "measure/RunResult.h"

namespace tachyrun {

inline constexpr int kEffectWidth = 720;
inline constexpr int kEffectHeight = 576;
inline constexpr uint32_t kEffectMaxBytes = kEffectWidth * kEffectHeight * 4;

// Copies the locked pixels into `pDst` (room for kEffectMaxBytes): at most
// 720 x 576 x 4 bytes, fewer when Stride x Height is smaller. The block is not
// re-laid per row, so another width comes out sheared. Returns the bytes
// copied; 0 when nothing was locked or there is no buffer.
uint32_t CopyLockedPixels(const BitmapData& data, uint8_t* pDst);

// Locks `pImage` for reading as 32-bit ARGB, copies as above and unlocks,
// whether the lock worked or not.
template <class Bitmap>
uint32_t CopyTestImage(Bitmap* pImage, uint8_t* pDst) {
  BitmapData data{};
  pImage->LockBits(kImageLockRead, kPixelFormat32bppARGB, &data);
  const uint32_t dwBytes = CopyLockedPixels(data, pDst);
  pImage->UnlockBits(&data);
  return dwBytes;
}

// Runs the render on `gpu` with the image copied in when there is one.
template <class Engine, class Bitmap, class SetText, class Clock>
RunResult RunEffectTest(Engine& gpu, Bitmap* pImage, SetText&& setText, Clock&& clock) {
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
  const RunResult result =
      TimeLineResult(szLine, kResizeArgbLineFormat, TimePerRound(dt, iRounds), iRes);
  setText(szLine);

  state.FreeBuffers(gpu);
  return result;
}

}  // namespace tachyrun
