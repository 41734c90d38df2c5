#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "config/GlobalCfg.h"
#include "config/GlobalCfgData.h"

namespace {

std::string Text(const char* field) {
  return field;
}

bool AllZero(const void* data, size_t size) {
  const auto* bytes = static_cast<const uint8_t*>(data);
  for (size_t i = 0; i < size; ++i) {
    if (bytes[i] != 0) return false;
  }
  return true;
}

TEST(GlobalCfgData, NewRecordHasSixVideoAndEightAudioTracks) {
  const GlobalCfgData cfg;
  EXPECT_EQ(+cfg.iNumVidTraks, 6);
  EXPECT_EQ(+cfg.iNumAudTraks, 8);
}

TEST(GlobalCfgData, DefaultImageSizeAndTimelineLengthDifferInTheMinute) {
  const GlobalCfgData cfg;
  EXPECT_EQ(Text(cfg.sDefaultImageSize), "00:00:10:00");
  EXPECT_EQ(Text(cfg.sDefaultTimelineLen), "00:10:00:00");
}

TEST(GlobalCfgData, NewRecordIsZeroButForItsDefaults) {
  GlobalCfgData cfg;
  EXPECT_EQ(+cfg.iAutoScrollSize, 100);
  EXPECT_EQ(+cfg.isAutoScrollEnabled, 1);
  EXPECT_EQ(+cfg.isAutoAudioDissolve, 1);
  EXPECT_EQ(+cfg.iDefTrackAudioSizeY, 30);
  EXPECT_EQ(+cfg.iDefTrackVideoSizeY, 30);
  EXPECT_EQ(+cfg.iDefTrackEffectSizeY, 20);
  EXPECT_EQ(+cfg.iAutoPlayHiRange, 1);
  EXPECT_EQ(+cfg.iPlayMovieRange, 1);
  EXPECT_EQ(+cfg.iDefTimeZoom, 9);
  EXPECT_EQ(+cfg.iThumbSize, 1);
  EXPECT_EQ(+cfg.iScrubSize, 80);
  EXPECT_EQ(+cfg.isScrubRepeat, 1);
  EXPECT_EQ(+cfg.iUseOndoResampler, 1);
  EXPECT_EQ(+cfg.iUseMultiThreadMixer, 1);
  EXPECT_EQ(+cfg.iEnableFrameBorder, 1);
  EXPECT_EQ(+cfg.iPreservePosOnTrim, 1);
  EXPECT_EQ(+cfg.iEnablePicons, 1);
  EXPECT_EQ(+cfg.iUseAviSplitter, 1);
  EXPECT_EQ(+cfg.iUseDvFilters, 1);
  EXPECT_EQ(+cfg.iUseWaveParser, 1);
  EXPECT_EQ(+cfg.iUseMpegDecoders, 1);
  EXPECT_EQ(+cfg.iEnableGraphSave, 1);
  EXPECT_EQ(+cfg.iUseDvEncoders, 1);
  EXPECT_EQ(+cfg.iUseMxfSourceFilter, 1);
  EXPECT_EQ(Text(cfg.sExternalDir), "c:\\exp\\");
  EXPECT_EQ(Text(cfg.sSystemDir), "");
  EXPECT_EQ(Text(cfg.sOndoEncoderPath), "");

  // With those cleared, not one byte may be left over.
  cfg.iAutoScrollSize = cfg.isAutoScrollEnabled = 0;
  cfg.iDefTrackAudioSizeY = cfg.iDefTrackVideoSizeY = cfg.iDefTrackEffectSizeY = 0;
  cfg.iThumbSize = cfg.iScrubSize = cfg.iUseOndoResampler = 0;
  for (int8_t* flag :
       {&cfg.isAutoAudioDissolve, &cfg.iAutoPlayHiRange, &cfg.iPlayMovieRange, &cfg.iDefTimeZoom,
        &cfg.iNumVidTraks, &cfg.iNumAudTraks, &cfg.isScrubRepeat, &cfg.iUseMultiThreadMixer,
        &cfg.iEnableFrameBorder, &cfg.iPreservePosOnTrim, &cfg.iEnablePicons, &cfg.iUseAviSplitter,
        &cfg.iUseDvFilters, &cfg.iUseWaveParser, &cfg.iUseMpegDecoders, &cfg.iEnableGraphSave,
        &cfg.iUseDvEncoders, &cfg.iUseMxfSourceFilter}) {
    *flag = 0;
  }
  std::memset(cfg.sDefaultImageSize, 0, sizeof cfg.sDefaultImageSize);
  std::memset(cfg.sDefaultTimelineLen, 0, sizeof cfg.sDefaultTimelineLen);
  std::memset(cfg.sExternalDir, 0, sizeof cfg.sExternalDir);
  EXPECT_TRUE(AllZero(&cfg, sizeof cfg));
}

TEST(GlobalCfgData, CopyTakesEveryByteReservedOnesIncluded) {
  GlobalCfgData source;
  auto* bytes = reinterpret_cast<uint8_t*>(&source);
  for (size_t i = 0; i < sizeof source; ++i) bytes[i] = static_cast<uint8_t>(i * 13 + 5);
  GlobalCfgData copy;
  copy = source;
  EXPECT_EQ(std::memcmp(&copy, &source, sizeof source), 0);
  const GlobalCfgData built(source);
  EXPECT_EQ(std::memcmp(&built, &source, sizeof source), 0);
}

TEST(GlobalCfgExtData, NewRecordIsEightHundredZeros) {
  const GlobalCfgExtData ext;
  EXPECT_EQ(sizeof ext, 800u);
  EXPECT_TRUE(AllZero(&ext, sizeof ext));
}

TEST(CGlobalCfg, NewObjectHasEmptyPathsRegistryModeAndNewRecords) {
  const CGlobalCfg global;
  EXPECT_TRUE(AllZero(global.szCfgFile, sizeof global.szCfgFile));
  EXPECT_TRUE(AllZero(global.szExtFile, sizeof global.szExtFile));
  EXPECT_EQ(global.bUseCfgFile, 0);
  const GlobalCfgData fresh;
  EXPECT_EQ(std::memcmp(&global.cfg, &fresh, sizeof fresh), 0);
  EXPECT_TRUE(AllZero(&global.ext, sizeof global.ext));
}

TEST(CGlobalCfg, GlobalInstanceStartsWithConstructorDefaults) {
  const GlobalCfgData fresh;
  EXPECT_EQ(std::memcmp(&g_GlobalCfg.cfg, &fresh, sizeof fresh), 0);
  EXPECT_EQ(g_GlobalCfg.bUseCfgFile, 0);
  EXPECT_EQ(g_CfgRegStore.m_hRoot, HKEY_CURRENT_USER);
}

TEST(CGlobalCfg, SetFileCopiesThePathAndReturnsTheMember) {
  CGlobalCfg global;
  EXPECT_EQ(global.SetCfgFile("/tmp/main.cfg"), global.szCfgFile);
  EXPECT_EQ(global.SetExtFile("/tmp/ext.cfg"), global.szExtFile);
  EXPECT_STREQ(global.szCfgFile, "/tmp/main.cfg");
  EXPECT_STREQ(global.szExtFile, "/tmp/ext.cfg");
  global.SetCfgFile(nullptr);
  EXPECT_STREQ(global.szCfgFile, "");
}

TEST(CGlobalCfg, OverlongPathIsCutAtTheEndOfItsField) {
  CGlobalCfg global;
  global.SetExtFile("/keep");
  const std::string longPath(400, 'p');
  global.SetCfgFile(longPath.c_str());
  EXPECT_EQ(std::string(global.szCfgFile), longPath.substr(0, 259));
  EXPECT_STREQ(global.szExtFile, "/keep");
  global.SetExtFile(longPath.c_str());
  EXPECT_EQ(std::string(global.szExtFile), longPath.substr(0, 259));
  EXPECT_EQ(global.bUseCfgFile, 0);
  const GlobalCfgData fresh;
  EXPECT_EQ(std::memcmp(&global.cfg, &fresh, sizeof fresh), 0);
}

}  // namespace
