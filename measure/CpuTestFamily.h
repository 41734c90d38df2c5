#pragma once
// The CPU test family: one picture operation repeated a fixed number of
// rounds, timed around the loop only, reported as one line. Each member is a
// row of the control catalogue; RunCpuTest is written against the engine's
// interface so that it runs on the real engine in the program and on a
// recording one in tests.

#include <cstdint>
#include <cstring>

#include "engine/Pixmill.h"
#include "measure/PicturePairState.h"
#include "measure/ResultLines.h"
#include "measure/RunResult.h"

namespace tachyrun {

enum class CpuCall { Resize, ResizeArgb, Convert, ConvertReversed, MemCopy };

struct CpuTestDef {
  int iSrcW, iSrcH;
  uint32_t dwSrcFormat;
  int iDstW, iDstH;
  uint32_t dwDstFormat;
  int iLineFactor;  // 5, or 4 in the conversion tests
  CpuCall eCall;
  int iQuality;  // Img_Resize only
  bool bWorkBuffer;
  int iRounds;
  const char* szFormat;
};

// The family's row of control `iControl`; null for any other control.
const CpuTestDef* FindCpuTest(int iControl);

// The timed stretch: `iRounds` calls of the member's operation on the
// buffers of `state`. Returns the status of the last call.
template <class Engine>
int32_t RunCpuRounds(const CpuTestDef& def, int iRounds, const CPicturePairState& state,
                     Engine& call) {
  int32_t iRes = 0;
  tagPicProps src, dst;
  tagRECT srcRect, dstRect;
  state.FillProps(src, dst, srcRect, dstRect);
  uint8_t* const pWork = def.bWorkBuffer ? state.pAuxBuffer : nullptr;
  for (int i = 0; i < iRounds; ++i) {
    switch (def.eCall) {
      case CpuCall::Resize:
        iRes = call.Img_Resize(state.pSrcBuffer, state.pDstBuffer, &src, &dst, &srcRect, &dstRect,
                               static_cast<eResizeQuality>(def.iQuality), nullptr, 0);
        break;
      case CpuCall::ResizeArgb:
        iRes = call.Img_ResizeARGB(state.pSrcBuffer, state.pDstBuffer, &src, &dst, &srcRect,
                                   &dstRect, 0, 2);
        break;
      case CpuCall::Convert:
        iRes = call.Img_Convert2(state.pSrcBuffer, state.pDstBuffer, &src, &dst, &srcRect, &dstRect,
                                 false, pWork);
        break;
      case CpuCall::ConvertReversed:
        iRes = call.Img_Convert2(state.pDstBuffer, state.pSrcBuffer, &dst, &src, &dstRect, &srcRect,
                                 false, pWork);
        break;
      case CpuCall::MemCopy:
        // A failed allocation would make this copy write through null; skip it.
        if (state.pDstBuffer != nullptr && state.pSrcBuffer != nullptr)
          std::memcpy(state.pDstBuffer, state.pSrcBuffer, static_cast<size_t>(state.iSrcBytes));
        break;
    }
  }
  return iRes;
}

// Runs `def` for `iRounds` rounds. `alloc` allocates and frees the three
// buffers, `call` does the picture work. `setText(const char*)` writes the
// result edit, `clock()` reads the millisecond clock.
template <class Engine, class SetText, class Clock>
RunResult RunCpuTest(const CpuTestDef& def, int iRounds, Engine& alloc, Engine& call,
                     SetText&& setText, Clock&& clock) {
  CPicturePairState state;
  state.SetPictures(def.iSrcW, def.iSrcH, def.dwSrcFormat, def.iDstW, def.iDstH, def.dwDstFormat,
                    def.iLineFactor);
  state.AllocBuffers(alloc);

  char szLine[kLineSize];
  WriteStarted(szLine, setText);

  const uint32_t t0 = clock();
  const int32_t iRes = RunCpuRounds(def, iRounds, state, call);
  const uint32_t dt = clock() - t0;

  const RunResult result =
      def.eCall == CpuCall::MemCopy
          ? MemCopyResult(szLine, ComputeMemCopyFigures(dt, iRounds, state.iSrcBytes), iRes)
          : TimeLineResult(szLine, def.szFormat, TimePerRound(dt, iRounds), iRes);
  setText(szLine);

  state.FreeBuffers(alloc);
  return result;
}

}  // namespace tachyrun
