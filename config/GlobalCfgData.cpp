// Compile-time proof that a new record holds the defaults of a new
// configuration and nothing else.
#include "config/GlobalCfgData.h"

#include <string_view>

namespace {

constexpr GlobalCfgData kNew{};
constexpr GlobalCfgExtData kNewExt{};

template <size_t N>
constexpr std::string_view Text(const char (&field)[N]) {
  size_t n = 0;
  while (n < N && field[n] != '\0') ++n;
  return std::string_view(field, n);
}

template <size_t N>
constexpr bool AllZero(const uint8_t (&block)[N]) {
  for (const uint8_t byte : block) {
    if (byte != 0) return false;
  }
  return true;
}

static_assert(kNew.iSaveBeforeMovie == 0);
static_assert(AllZero(kNew.abReserved1));
static_assert(kNew.iAutoExTrimWinOnMovieOut == 0);
static_assert(kNew.iAutoScrollSize == 100);
static_assert(kNew.isAutoScrollEnabled == 1);
static_assert(kNew.isAutoAudioDissolve == 1);
static_assert(AllZero(kNew.abPad817));
static_assert(kNew.iDefTrackAudioSizeY == 30);
static_assert(kNew.iDefTrackVideoSizeY == 30);
static_assert(kNew.iDefTrackEffectSizeY == 20);
static_assert(kNew.iAutoPlayHiRange == 1);
static_assert(Text(kNew.sDefaultImageSize) == "00:00:10:00");
static_assert(kNew.iDisableOrizMove == 0);
static_assert(kNew.iNumVidTraks == 6);
static_assert(kNew.iNumAudTraks == 8);
static_assert(kNew.iEnableAutoDissolve == 0);
static_assert(kNew.iPlayMovieRange == 1);
static_assert(kNew.iUseShiftToUnlock == 0);
static_assert(kNew.iLinkChInClipMode == 0);
static_assert(kNew.iDefTimeZoom == 9);
static_assert(kNew.isShowVirtualClipWarning == 0);
static_assert(AllZero(kNew.abReserved2));
static_assert(kNew.iViewMode == 0);
static_assert(kNew.iThumbSort == 0);
static_assert(kNew.iThumbSize == 1);
static_assert(Text(kNew.sSystemDir) == "");
static_assert(Text(kNew.sPrefDir) == "");
static_assert(Text(kNew.sOndoEncoderPath) == "");
static_assert(Text(kNew.sOndoConverterPath) == "");
static_assert(Text(kNew.sDefaultTimelineLen) == "00:10:00:00");
static_assert(kNew.iScrubSize == 80);
static_assert(kNew.isScrubRepeat == 1);
static_assert(kNew.iDisableAudioPreview == 0);
static_assert(AllZero(kNew.abPad2702));
static_assert(kNew.iUseOndoResampler == 1);
static_assert(kNew.iSingleImageExpMode == 0);
static_assert(AllZero(kNew.abPad2709));
static_assert(kNew.iLockLeftRightHandle == 0);
static_assert(kNew.iPreviewMode == 0);
static_assert(kNew.isScrubEnabled == 0);
static_assert(kNew.iReleaseDeviceBeforeCall == 0);
static_assert(kNew.iDisableScreenSaver == 0);
static_assert(kNew.iUseMultiThreadMixer == 1);
static_assert(kNew.iDisableVideoPreview == 0);
static_assert(kNew.iPreviewAR == 0);
static_assert(kNew.iEnableFrameBorder == 1);
static_assert(kNew.cFlag2724 == 0);
static_assert(kNew.iPauseScrubMode == 0);
static_assert(kNew.iUseDefaultDirectSoundDevice == 0);
static_assert(kNew.iAutoResizeClip == 0);
static_assert(kNew.iPreservePosOnTrim == 1);
static_assert(kNew.useOnlyStereo == 0);
static_assert(kNew.iWaitOndoCaptureEnd == 0);
static_assert(kNew.iEnableWaveForm == 0);
static_assert(kNew.iPrebufferMode == 0);
static_assert(kNew.cFlag2733 == 0);
static_assert(kNew.iDisablePreviewInMovieOut == 0);
static_assert(kNew.iTCOverlay == 0);
static_assert(kNew.iEnablePicons == 1);
static_assert(kNew.iPreviewVmrType == 0);
static_assert(kNew.iUseGpuAcc == 0);
static_assert(kNew.iStopPlayerOnFrameLost == 0);
static_assert(AllZero(kNew.abReserved3));
static_assert(kNew.iWord3120 == 0);
static_assert(kNew.iWord3124 == 0);
static_assert(AllZero(kNew.abReserved4));
static_assert(kNew.iUseAviSplitter == 1);
static_assert(kNew.iUseDvFilters == 1);
static_assert(kNew.iUseWaveParser == 1);
static_assert(kNew.iUseMpegDecoders == 1);
static_assert(kNew.iEnableGraphSave == 1);
static_assert(kNew.iUseDvEncoders == 1);
static_assert(kNew.iUseMxfSourceFilter == 1);
static_assert(kNew.iUseMpegIndex == 0);
static_assert(Text(kNew.sExternalDir) == "c:\\exp\\");
static_assert(AllZero(kNewExt.abData));

}  // namespace
