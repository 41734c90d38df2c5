#pragma once
// The work record of the picture tests: a source and a destination picture
// with their buffers and figures, followed by a data lock. Only the named
// fields are written by the tests; the rest is kept as laid out, zeroed.

#include <cstddef>
#include <cstdint>

#include "core/DataLock.h"
#include "engine/Pixmill.h"

namespace tachyrun {

#pragma pack(push, 1)
struct PicturePairFields {
  uint8_t* pSrcBuffer;
  uint8_t* pDstBuffer;
  uint8_t* pAuxBuffer;
  uint32_t adwReserved0[3];
  int32_t iPictureBytes;
  uint8_t aReserved1[72];
  uint32_t dwReserved2;
  int32_t iDstBytes;
  int32_t iSrcBytes;
  uint32_t dwSrcFormat;
  int32_t iSrcWidth;
  int32_t iSrcHeight;
  int32_t iSrcLine;
  uint32_t dwReserved3;
  int32_t iDstLine;
  uint32_t dwDstFormat;
  int32_t iDstWidth;
  int32_t iDstHeight;
  uint8_t acReserved4[2];
  uint32_t adwReserved5[4];
  uint64_t qwReserved6;
  uint32_t dwReserved7;
  uint16_t awReserved8[2];
  uint64_t qwReserved9;
  uint16_t awReserved10[2];
  uint64_t aqwReserved11[4];
  int32_t iAudioRate;
  uint32_t adwReserved12[3];
  uint64_t aqwReserved13[5];
  uint8_t cReserved14;
  uint32_t adwReserved15[2];
};
#pragma pack(pop)

static_assert(sizeof(PicturePairFields) == 303);
static_assert(offsetof(PicturePairFields, pSrcBuffer) == 0);
static_assert(offsetof(PicturePairFields, pDstBuffer) == 8);
static_assert(offsetof(PicturePairFields, pAuxBuffer) == 16);
static_assert(offsetof(PicturePairFields, adwReserved0) == 24);
static_assert(offsetof(PicturePairFields, iPictureBytes) == 36);
static_assert(offsetof(PicturePairFields, aReserved1) == 40);
static_assert(offsetof(PicturePairFields, dwReserved2) == 112);
static_assert(offsetof(PicturePairFields, iDstBytes) == 116);
static_assert(offsetof(PicturePairFields, iSrcBytes) == 120);
static_assert(offsetof(PicturePairFields, dwSrcFormat) == 124);
static_assert(offsetof(PicturePairFields, iSrcWidth) == 128);
static_assert(offsetof(PicturePairFields, iSrcHeight) == 132);
static_assert(offsetof(PicturePairFields, iSrcLine) == 136);
static_assert(offsetof(PicturePairFields, dwReserved3) == 140);
static_assert(offsetof(PicturePairFields, iDstLine) == 144);
static_assert(offsetof(PicturePairFields, dwDstFormat) == 148);
static_assert(offsetof(PicturePairFields, iDstWidth) == 152);
static_assert(offsetof(PicturePairFields, iDstHeight) == 156);
static_assert(offsetof(PicturePairFields, acReserved4) == 160);
static_assert(offsetof(PicturePairFields, adwReserved5) == 162);
static_assert(offsetof(PicturePairFields, qwReserved6) == 178);
static_assert(offsetof(PicturePairFields, dwReserved7) == 186);
static_assert(offsetof(PicturePairFields, awReserved8) == 190);
static_assert(offsetof(PicturePairFields, qwReserved9) == 194);
static_assert(offsetof(PicturePairFields, awReserved10) == 202);
static_assert(offsetof(PicturePairFields, aqwReserved11) == 206);
static_assert(offsetof(PicturePairFields, iAudioRate) == 238);
static_assert(offsetof(PicturePairFields, adwReserved12) == 242);
static_assert(offsetof(PicturePairFields, aqwReserved13) == 254);
static_assert(offsetof(PicturePairFields, cReserved14) == 294);
static_assert(offsetof(PicturePairFields, adwReserved15) == 295);

class CPicturePairState : public PicturePairFields {
 public:
  static constexpr int32_t kAudioRate = 44100;

  // Builds the lock, then zeroes every field but iAudioRate.
  CPicturePairState();
  CPicturePairState(const CPicturePairState&) = delete;
  CPicturePairState& operator=(const CPicturePairState&) = delete;
  // Destroys the lock; the buffers belong to the test, which frees them.
  ~CPicturePairState() = default;

  // Source and destination sizes, formats, byte counts and line figures.
  void SetPictures(int iSrcW, int iSrcH, uint32_t dwSrcFmt, int iDstW, int iDstH, uint32_t dwDstFmt,
                   int iLineFactor);

  // Source, destination and a third buffer of the source's size, each with
  // a pitch of width x 4 (also for YUY2 pictures), from `engine`.
  template <class Engine>
  void AllocBuffers(Engine& engine) {
    pSrcBuffer = engine.AllocBuffersRGBA(iSrcWidth, iSrcHeight, iSrcWidth * 4);
    pDstBuffer = engine.AllocBuffersRGBA(iDstWidth, iDstHeight, iDstWidth * 4);
    pAuxBuffer = engine.AllocBuffersRGBA(iSrcWidth, iSrcHeight, iSrcWidth * 4);
  }
  // Frees the three buffers that are not null, in allocation order, on the
  // engine that allocated them.
  template <class Engine>
  void FreeBuffers(Engine& engine) {
    for (uint8_t* pBuffer : {pSrcBuffer, pDstBuffer, pAuxBuffer}) {
      if (pBuffer != nullptr) engine.FreeBuffers(&pBuffer);
    }
  }
  // The picture descriptions and whole-picture rectangles of both sides.
  void FillProps(tagPicProps& src, tagPicProps& dst, tagRECT& srcRect, tagRECT& dstRect) const;

  CDataLock m_Lock;  // no test takes it
};

}  // namespace tachyrun
