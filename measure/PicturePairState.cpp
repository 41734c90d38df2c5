#include "measure/PicturePairState.h"

#include <cstring>

namespace tachyrun {

CPicturePairState::CPicturePairState() : PicturePairFields{}, m_Lock() {
  std::memset(static_cast<PicturePairFields*>(this), 0, sizeof(PicturePairFields));
  iAudioRate = kAudioRate;
}

void CPicturePairState::SetPictures(int iSrcW, int iSrcH, uint32_t dwSrcFmt, int iDstW, int iDstH,
                                    uint32_t dwDstFmt, int iLineFactor) {
  iSrcWidth = iSrcW;
  iSrcHeight = iSrcH;
  iDstWidth = iDstW;
  iDstHeight = iDstH;
  iPictureBytes = iSrcW * iSrcH * 4;
  iSrcBytes = iSrcW * iSrcH * 4;
  iDstBytes = iDstW * iDstH * 4;
  dwSrcFormat = dwSrcFmt;
  dwDstFormat = dwDstFmt;
  iSrcLine = iSrcW * iLineFactor;
  iDstLine = iDstW * iLineFactor;
}

void CPicturePairState::FillProps(tagPicProps& src, tagPicProps& dst, tagRECT& srcRect,
                                  tagRECT& dstRect) const {
  src = tagPicProps{dwSrcFormat, iSrcWidth, iSrcHeight, 0};
  dst = tagPicProps{dwDstFormat, iDstWidth, iDstHeight, 0};
  srcRect = tagRECT{0, 0, iSrcWidth, iSrcHeight};
  dstRect = tagRECT{0, 0, iDstWidth, iDstHeight};
}

}  // namespace tachyrun
