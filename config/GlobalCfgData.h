#pragma once
// The process-wide settings record and its opaque companion. Both are kept
// on disk as memory images, so every offset below is part of the file
// format; fields are read and written directly, without accessors.

#include <cstddef>
#include <cstdint>

#pragma pack(push, 1)

// 3796 bytes of settings. Byte fields are small signed integers or flags;
// text fields are NUL-terminated. Every byte is a named member, so a new
// record is all zeros but for the defaults below. The reserved blocks, the
// padding and the four unnamed flags and words stay zero and are carried
// as they are through every load and save.
struct GlobalCfgData {
  int32_t iSaveBeforeMovie = 0;
  uint8_t abReserved1[800] = {};
  int32_t iAutoExTrimWinOnMovieOut = 0;
  int32_t iAutoScrollSize = 100;
  int32_t isAutoScrollEnabled = 1;
  int8_t isAutoAudioDissolve = 1;
  uint8_t abPad817[3] = {};
  int32_t iDefTrackAudioSizeY = 30;
  int32_t iDefTrackVideoSizeY = 30;
  int32_t iDefTrackEffectSizeY = 20;
  int8_t iAutoPlayHiRange = 1;
  char sDefaultImageSize[30] = "00:00:10:00";
  int8_t iDisableOrizMove = 0;
  int8_t iNumVidTraks = 6;
  int8_t iNumAudTraks = 8;
  int8_t iEnableAutoDissolve = 0;
  int8_t iPlayMovieRange = 1;
  int8_t iUseShiftToUnlock = 0;
  int8_t iLinkChInClipMode = 0;
  int8_t iDefTimeZoom = 9;
  int8_t isShowVirtualClipWarning = 0;
  uint8_t abReserved2[372] = {};
  int32_t iViewMode = 0;
  int32_t iThumbSort = 0;
  int32_t iThumbSize = 1;
  char sSystemDir[260] = {};
  char sPrefDir[260] = {};
  char sOndoEncoderPath[260] = {};
  char sOndoConverterPath[260] = {};
  char sDefaultTimelineLen[400] = "00:10:00:00";
  int32_t iScrubSize = 80;
  int8_t isScrubRepeat = 1;
  int8_t iDisableAudioPreview = 0;
  uint8_t abPad2702[2] = {};
  int32_t iUseOndoResampler = 1;
  int8_t iSingleImageExpMode = 0;
  uint8_t abPad2709[3] = {};
  int32_t iLockLeftRightHandle = 0;
  int8_t iPreviewMode = 0;
  int8_t isScrubEnabled = 0;
  int8_t iReleaseDeviceBeforeCall = 0;
  int8_t iDisableScreenSaver = 0;
  int8_t iUseMultiThreadMixer = 1;
  int8_t iDisableVideoPreview = 0;
  int8_t iPreviewAR = 0;
  int8_t iEnableFrameBorder = 1;
  int8_t cFlag2724 = 0;
  int8_t iPauseScrubMode = 0;
  int8_t iUseDefaultDirectSoundDevice = 0;
  int8_t iAutoResizeClip = 0;
  int8_t iPreservePosOnTrim = 1;
  int8_t useOnlyStereo = 0;
  int8_t iWaitOndoCaptureEnd = 0;
  int8_t iEnableWaveForm = 0;
  int8_t iPrebufferMode = 0;
  int8_t cFlag2733 = 0;
  int8_t iDisablePreviewInMovieOut = 0;
  int8_t iTCOverlay = 0;
  int8_t iEnablePicons = 1;
  int8_t iPreviewVmrType = 0;
  int8_t iUseGpuAcc = 0;
  int8_t iStopPlayerOnFrameLost = 0;
  uint8_t abReserved3[380] = {};
  int32_t iWord3120 = 0;
  int32_t iWord3124 = 0;
  uint8_t abReserved4[400] = {};
  int8_t iUseAviSplitter = 1;
  int8_t iUseDvFilters = 1;
  int8_t iUseWaveParser = 1;
  int8_t iUseMpegDecoders = 1;
  int8_t iEnableGraphSave = 1;
  int8_t iUseDvEncoders = 1;
  int8_t iUseMxfSourceFilter = 1;
  int8_t iUseMpegIndex = 0;
  char sExternalDir[260] = "c:\\exp\\";
};

// 800 bytes that this library loads, saves, copies and zeroes as a block.
struct GlobalCfgExtData {
  uint8_t abData[800] = {};
};

#pragma pack(pop)

static_assert(sizeof(GlobalCfgData) == 3796);
static_assert(sizeof(GlobalCfgExtData) == 800);
static_assert(offsetof(GlobalCfgData, iSaveBeforeMovie) == 0);
static_assert(offsetof(GlobalCfgData, abReserved1) == 4);
static_assert(offsetof(GlobalCfgData, iAutoExTrimWinOnMovieOut) == 804);
static_assert(offsetof(GlobalCfgData, iAutoScrollSize) == 808);
static_assert(offsetof(GlobalCfgData, isAutoScrollEnabled) == 812);
static_assert(offsetof(GlobalCfgData, isAutoAudioDissolve) == 816);
static_assert(offsetof(GlobalCfgData, abPad817) == 817);
static_assert(offsetof(GlobalCfgData, iDefTrackAudioSizeY) == 820);
static_assert(offsetof(GlobalCfgData, iDefTrackVideoSizeY) == 824);
static_assert(offsetof(GlobalCfgData, iDefTrackEffectSizeY) == 828);
static_assert(offsetof(GlobalCfgData, iAutoPlayHiRange) == 832);
static_assert(offsetof(GlobalCfgData, sDefaultImageSize) == 833);
static_assert(offsetof(GlobalCfgData, iDisableOrizMove) == 863);
static_assert(offsetof(GlobalCfgData, iNumVidTraks) == 864);
static_assert(offsetof(GlobalCfgData, iNumAudTraks) == 865);
static_assert(offsetof(GlobalCfgData, iEnableAutoDissolve) == 866);
static_assert(offsetof(GlobalCfgData, iPlayMovieRange) == 867);
static_assert(offsetof(GlobalCfgData, iUseShiftToUnlock) == 868);
static_assert(offsetof(GlobalCfgData, iLinkChInClipMode) == 869);
static_assert(offsetof(GlobalCfgData, iDefTimeZoom) == 870);
static_assert(offsetof(GlobalCfgData, isShowVirtualClipWarning) == 871);
static_assert(offsetof(GlobalCfgData, abReserved2) == 872);
static_assert(offsetof(GlobalCfgData, iViewMode) == 1244);
static_assert(offsetof(GlobalCfgData, iThumbSort) == 1248);
static_assert(offsetof(GlobalCfgData, iThumbSize) == 1252);
static_assert(offsetof(GlobalCfgData, sSystemDir) == 1256);
static_assert(offsetof(GlobalCfgData, sPrefDir) == 1516);
static_assert(offsetof(GlobalCfgData, sOndoEncoderPath) == 1776);
static_assert(offsetof(GlobalCfgData, sOndoConverterPath) == 2036);
static_assert(offsetof(GlobalCfgData, sDefaultTimelineLen) == 2296);
static_assert(offsetof(GlobalCfgData, iScrubSize) == 2696);
static_assert(offsetof(GlobalCfgData, isScrubRepeat) == 2700);
static_assert(offsetof(GlobalCfgData, iDisableAudioPreview) == 2701);
static_assert(offsetof(GlobalCfgData, abPad2702) == 2702);
static_assert(offsetof(GlobalCfgData, iUseOndoResampler) == 2704);
static_assert(offsetof(GlobalCfgData, iSingleImageExpMode) == 2708);
static_assert(offsetof(GlobalCfgData, abPad2709) == 2709);
static_assert(offsetof(GlobalCfgData, iLockLeftRightHandle) == 2712);
static_assert(offsetof(GlobalCfgData, iPreviewMode) == 2716);
static_assert(offsetof(GlobalCfgData, isScrubEnabled) == 2717);
static_assert(offsetof(GlobalCfgData, iReleaseDeviceBeforeCall) == 2718);
static_assert(offsetof(GlobalCfgData, iDisableScreenSaver) == 2719);
static_assert(offsetof(GlobalCfgData, iUseMultiThreadMixer) == 2720);
static_assert(offsetof(GlobalCfgData, iDisableVideoPreview) == 2721);
static_assert(offsetof(GlobalCfgData, iPreviewAR) == 2722);
static_assert(offsetof(GlobalCfgData, iEnableFrameBorder) == 2723);
static_assert(offsetof(GlobalCfgData, cFlag2724) == 2724);
static_assert(offsetof(GlobalCfgData, iPauseScrubMode) == 2725);
static_assert(offsetof(GlobalCfgData, iUseDefaultDirectSoundDevice) == 2726);
static_assert(offsetof(GlobalCfgData, iAutoResizeClip) == 2727);
static_assert(offsetof(GlobalCfgData, iPreservePosOnTrim) == 2728);
static_assert(offsetof(GlobalCfgData, useOnlyStereo) == 2729);
static_assert(offsetof(GlobalCfgData, iWaitOndoCaptureEnd) == 2730);
static_assert(offsetof(GlobalCfgData, iEnableWaveForm) == 2731);
static_assert(offsetof(GlobalCfgData, iPrebufferMode) == 2732);
static_assert(offsetof(GlobalCfgData, cFlag2733) == 2733);
static_assert(offsetof(GlobalCfgData, iDisablePreviewInMovieOut) == 2734);
static_assert(offsetof(GlobalCfgData, iTCOverlay) == 2735);
static_assert(offsetof(GlobalCfgData, iEnablePicons) == 2736);
static_assert(offsetof(GlobalCfgData, iPreviewVmrType) == 2737);
static_assert(offsetof(GlobalCfgData, iUseGpuAcc) == 2738);
static_assert(offsetof(GlobalCfgData, iStopPlayerOnFrameLost) == 2739);
static_assert(offsetof(GlobalCfgData, abReserved3) == 2740);
static_assert(offsetof(GlobalCfgData, iWord3120) == 3120);
static_assert(offsetof(GlobalCfgData, iWord3124) == 3124);
static_assert(offsetof(GlobalCfgData, abReserved4) == 3128);
static_assert(offsetof(GlobalCfgData, iUseAviSplitter) == 3528);
static_assert(offsetof(GlobalCfgData, iUseDvFilters) == 3529);
static_assert(offsetof(GlobalCfgData, iUseWaveParser) == 3530);
static_assert(offsetof(GlobalCfgData, iUseMpegDecoders) == 3531);
static_assert(offsetof(GlobalCfgData, iEnableGraphSave) == 3532);
static_assert(offsetof(GlobalCfgData, iUseDvEncoders) == 3533);
static_assert(offsetof(GlobalCfgData, iUseMxfSourceFilter) == 3534);
static_assert(offsetof(GlobalCfgData, iUseMpegIndex) == 3535);
static_assert(offsetof(GlobalCfgData, sExternalDir) == 3536);
// The first reserved block has the size of the second record.
static_assert(sizeof(GlobalCfgData::abReserved1) == sizeof(GlobalCfgExtData));
