#pragma once
// The CPU test family: one picture operation repeated a fixed number of
// rounds, timed around the loop only, reported as one line. Each member is a
// row of a table; RunCpuTest is written against the engine's interface so that
// it runs on the real engine in the program and on a recording one in tests.

#include <cstdint>
#include <cstring>
#include <span>

#include "app/PicturePairState.h"
#include "app/ResultLines.h"
#include "engine/Pixmill.h"

namespace tachyrun {

enum class CpuCall { Resize, ResizeArgb, Convert, ConvertReversed, MemCopy };
enum class CpuEngine { One, Many };  // m_PixCpu1 or m_PixCpuN

struct CpuTestDef {
  int iControl;
  const char* szLabel;
  int iSrcW, iSrcH;
  uint32_t dwSrcFormat;
  int iDstW, iDstH;
  uint32_t dwDstFormat;
  int iLineFactor;  // 5, or 4 in the conversion tests
  CpuCall eCall;
  int iQuality;  // Img_Resize only
  bool bWorkBuffer;
  CpuEngine eEngine;  // engine of the call; buffers always come from m_PixCpu1
  int iRounds;
  int iResultEdit;
  const char* szFormat;
  const char* szMeasures;  // one line for --list and the docs
};

std::span<const CpuTestDef> CpuTests();
const CpuTestDef* FindCpuTest(int iControl);

// Runs `def` for `iRounds` rounds. `alloc` allocates and frees the three
// buffers, `call` does the picture work. `setText(const char*)` writes the
// result edit, `clock()` reads the millisecond clock. Returns the last status.
template <class Engine, class SetText, class Clock>
int32_t RunCpuTest(const CpuTestDef& def, int iRounds, Engine& alloc, Engine& call,
                   SetText&& setText, Clock&& clock) {
  int32_t iRes = 0;
  CPicturePairState state;
  state.SetPictures(def.iSrcW, def.iSrcH, def.dwSrcFormat, def.iDstW, def.iDstH, def.dwDstFormat,
                    def.iLineFactor);
  state.AllocBuffers(alloc);

  char szLine[kLineSize];
  WriteStarted(szLine, setText);

  const uint32_t t0 = clock();
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
  const uint32_t dt = clock() - t0;

  if (def.eCall == CpuCall::MemCopy) {
    FormatMemCopyLine(szLine, ComputeMemCopyFigures(dt, iRounds, state.iSrcBytes), iRes);
  } else {
    FormatTimeLine(szLine, def.szFormat, TimePerRound(dt, iRounds), iRes);
  }
  setText(szLine);

  state.FreeBuffers(alloc);
  return iRes;
}

}  // namespace tachyrun
