#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "config/GlobalCfg.h"
#include "registry/RegStore.h"
#include "tests/support/TempStore.h"

namespace {

const std::string kKey = "GlobalCfgConfig\\Configuration";

// Where each stored value lives, written out independently of the code.
const std::map<std::string, std::vector<std::string>> kSections = {
    {"\\Program",
     {"iSaveBeforeMovie", "iAutoExTrimWinOnMovieOut", "sOndoEncoderPath", "sOndoConverterPath",
      "iReleaseDeviceBeforeCall"}},
    {"\\Player",
     {"iDisableAudioPreview",
      "iUseOndoResampler",
      "iSingleImageExpMode",
      "iTCOverlay",
      "iPauseScrubMode",
      "iPreviewMode",
      "iPreviewAR",
      "isScrubEnabled",
      "iScrubSize",
      "isScrubRepeat",
      "iDisableScreenSaver",
      "iDisablePreviewInMovieOut",
      "iStopPlayerOnFrameLost",
      "iUseMultiThreadMixer",
      "iUseGpuAcc",
      "iDisableVideoPreview",
      "iUseDefaultDirectSoundDevice",
      "iEnableFrameBorder",
      "iPrebufferMode",
      "iPreviewVmrType"}},
    {"\\Timeline", {"iLockLeftRightHandle", "isAutoAudioDissolve",
                    "isAutoScrollEnabled",  "isShowVirtualClipWarning",
                    "iAutoScrollSize",      "iDefTrackAudioSizeY",
                    "iDefTrackVideoSizeY",  "iDefTrackEffectSizeY",
                    "iAutoPlayHiRange",     "sDefaultTimelineLen",
                    "sDefaultImageSize",    "iDisableOrizMove",
                    "iNumVidTraks",         "iNumAudTraks",
                    "iEnableAutoDissolve",  "iAutoResizeClip",
                    "iPreservePosOnTrim",   "iPlayMovieRange",
                    "iUseShiftToUnlock",    "iLinkChInClipMode",
                    "iDefTimeZoom",         "iWaitOndoCaptureEnd",
                    "iEnableWaveForm",      "iEnablePicons"}},
    {"\\Repository", {"iViewMode", "iThumbSort", "iThumbSize", "sSystemDir", "sPrefDir"}},
    {"\\Advance",
     {"iUseAviSplitter", "iUseDvFilters", "iUseWaveParser", "iUseMpegIndex", "iUseMxfSourceFilter",
      "iUseMpegDecoders", "iEnableGraphSave", "iUseDvEncoders", "sExternalDir"}},
};

class GlobalCfgRegistryTest : public TempStoreTest {
 protected:
  void SetUp() override {
    TempStoreTest::SetUp();
    m_reg.SetBase(HKEY_LOCAL_MACHINE, "Software");
  }

  uint32_t Stored(const std::string& section, const std::string& name) const {
    return m_reg.ReadDword(kKey + section, name, 0xDEADBEEF);
  }
  std::string StoredText(const std::string& section, const std::string& name) const {
    std::string text;
    m_reg.ReadString(kKey + section, name, "<missing>", text);
    return text;
  }

  CRegStore m_reg;
  CGlobalCfg m_global;
};

TEST_F(GlobalCfgRegistryTest, LoadFromEmptyRegistryGivesTheRegistryDefaults) {
  m_global.cfg.iScrubSize = 55;  // a failed read doesn't keep what was there
  m_global.cfg.iNumVidTraks = 3;
  EXPECT_EQ(m_global.LoadCfg(), 0);
  const GlobalCfgData& c = m_global.cfg;
  EXPECT_EQ(+c.useOnlyStereo, 1);
  EXPECT_EQ(+c.iSaveBeforeMovie, 0);
  EXPECT_EQ(+c.iAutoExTrimWinOnMovieOut, 0);
  EXPECT_STREQ(c.sOndoEncoderPath, "C:\\Programmi\\Ondo\\ondoEncoder\\ondoEncoder.exe");
  EXPECT_STREQ(c.sOndoConverterPath,
               "C:\\Programmi\\Ondo\\ondoBatchConverter\\ondoBatchConverter.exe");
  EXPECT_EQ(+c.iReleaseDeviceBeforeCall, 1);
  EXPECT_EQ(+c.iDisableAudioPreview, 0);
  EXPECT_EQ(+c.iUseOndoResampler, 1);
  EXPECT_EQ(+c.iSingleImageExpMode, 1);
  EXPECT_EQ(+c.iTCOverlay, 0);
  EXPECT_EQ(+c.iPauseScrubMode, 1);
  EXPECT_EQ(+c.iPreviewMode, 0);
  EXPECT_EQ(+c.iPreviewAR, 0);
  EXPECT_EQ(+c.isScrubEnabled, 0);
  EXPECT_EQ(+c.iScrubSize, 1);
  EXPECT_EQ(+c.isScrubRepeat, 1);
  EXPECT_EQ(+c.iDisableScreenSaver, 1);
  EXPECT_EQ(+c.iDisablePreviewInMovieOut, 1);
  EXPECT_EQ(+c.iStopPlayerOnFrameLost, 0);
  EXPECT_EQ(+c.iUseMultiThreadMixer, 1);
  EXPECT_EQ(+c.iUseGpuAcc, 1);
  EXPECT_EQ(+c.iDisableVideoPreview, 0);
  EXPECT_EQ(+c.iUseDefaultDirectSoundDevice, 1);
  EXPECT_EQ(+c.iEnableFrameBorder, 1);
  EXPECT_EQ(+c.iPrebufferMode, 2);
  EXPECT_EQ(+c.iPreviewVmrType, 0);
  EXPECT_EQ(+c.iLockLeftRightHandle, 0);
  EXPECT_EQ(+c.isAutoAudioDissolve, 1);
  EXPECT_EQ(+c.isAutoScrollEnabled, 1);
  EXPECT_EQ(+c.isShowVirtualClipWarning, 0);
  EXPECT_EQ(+c.iAutoScrollSize, 100);
  EXPECT_EQ(+c.iDefTrackAudioSizeY, 30);
  EXPECT_EQ(+c.iDefTrackVideoSizeY, 30);
  EXPECT_EQ(+c.iDefTrackEffectSizeY, 20);
  EXPECT_EQ(+c.iAutoPlayHiRange, 1);
  EXPECT_STREQ(c.sDefaultTimelineLen, "00:10:00:00");
  EXPECT_STREQ(c.sDefaultImageSize, "00:00:10:00");
  EXPECT_EQ(+c.iDisableOrizMove, 0);
  EXPECT_EQ(+c.iNumVidTraks, 6);
  EXPECT_EQ(+c.iNumAudTraks, 8);
  EXPECT_EQ(+c.iEnableAutoDissolve, 0);
  EXPECT_EQ(+c.iAutoResizeClip, 0);
  EXPECT_EQ(+c.iPreservePosOnTrim, 1);
  EXPECT_EQ(+c.iPlayMovieRange, 1);
  EXPECT_EQ(+c.iUseShiftToUnlock, 1);
  EXPECT_EQ(+c.iLinkChInClipMode, 1);
  EXPECT_EQ(+c.iDefTimeZoom, 9);
  EXPECT_EQ(+c.iWaitOndoCaptureEnd, 1);
  EXPECT_EQ(+c.iEnableWaveForm, 1);
  EXPECT_EQ(+c.iEnablePicons, 1);
  EXPECT_EQ(+c.iViewMode, 0);
  EXPECT_EQ(+c.iThumbSort, 0);
  EXPECT_EQ(+c.iThumbSize, 1);
  EXPECT_STREQ(c.sSystemDir, "c:\\");
  EXPECT_STREQ(c.sPrefDir, "c:\\");
  EXPECT_EQ(+c.iUseAviSplitter, 1);
  EXPECT_EQ(+c.iUseDvFilters, 1);
  EXPECT_EQ(+c.iUseWaveParser, 1);
  EXPECT_EQ(+c.iUseMpegIndex, 0);
  EXPECT_EQ(+c.iUseMxfSourceFilter, 1);
  EXPECT_EQ(+c.iUseMpegDecoders, 1);
  EXPECT_EQ(+c.iEnableGraphSave, 0);
  EXPECT_EQ(+c.iUseDvEncoders, 1);
  EXPECT_STREQ(c.sExternalDir, "c:\\exp\\");
}

TEST_F(GlobalCfgRegistryTest, RegistryDefaultsDifferFromANewRecordOnlyWhereIntended) {
  ASSERT_EQ(m_global.LoadFromRegistry(), 0);
  GlobalCfgData loaded = m_global.cfg;
  // Put the constructor's values back into the fields meant to differ.
  for (int8_t* flag :
       {&loaded.iUseShiftToUnlock, &loaded.iLinkChInClipMode, &loaded.iSingleImageExpMode,
        &loaded.iReleaseDeviceBeforeCall, &loaded.iDisableScreenSaver, &loaded.iPauseScrubMode,
        &loaded.iUseDefaultDirectSoundDevice, &loaded.useOnlyStereo, &loaded.iWaitOndoCaptureEnd,
        &loaded.iEnableWaveForm, &loaded.iPrebufferMode, &loaded.iDisablePreviewInMovieOut,
        &loaded.iUseGpuAcc}) {
    *flag = 0;
  }
  loaded.iScrubSize = 80;
  loaded.iEnableGraphSave = 1;
  for (char* text :
       {loaded.sSystemDir, loaded.sPrefDir, loaded.sOndoEncoderPath, loaded.sOndoConverterPath}) {
    std::memset(text, 0, 260);
  }
  const GlobalCfgData fresh;
  EXPECT_EQ(std::memcmp(&loaded, &fresh, sizeof fresh), 0);
}

TEST_F(GlobalCfgRegistryTest, LoadNeitherCreatesKeysNorWritesValues) {
  EXPECT_EQ(m_global.LoadCfg(), 0);
  EXPECT_FALSE(std::filesystem::exists(m_store));
  ASSERT_EQ(m_reg.WriteDword("Unrelated", "v", 1), 1);
  EXPECT_EQ(m_global.LoadCfg(), 0);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 1);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys WHERE name = 'GlobalCfgConfig'"), 0);
}

TEST_F(GlobalCfgRegistryTest, ByteFieldTakesTheLowEightBits) {
  ASSERT_EQ(m_reg.WriteDword(kKey + "\\Timeline", "iNumVidTraks", 300), 1);
  ASSERT_EQ(m_reg.WriteDword(kKey + "\\Player", "iScrubSize", 0x12345678), 1);
  ASSERT_EQ(m_reg.WriteDword(kKey + "\\Advance", "iUseMpegIndex", 0xFFFFFF80u), 1);
  EXPECT_EQ(m_global.LoadCfg(), 0);
  EXPECT_EQ(+m_global.cfg.iNumVidTraks, 44);
  EXPECT_EQ(+m_global.cfg.iScrubSize, 0x12345678);
  EXPECT_EQ(+m_global.cfg.iUseMpegIndex, -128);
}

TEST_F(GlobalCfgRegistryTest, ByteFieldIsWrittenWithItsSign) {
  m_global.cfg.iNumAudTraks = -1;
  m_global.cfg.iDefTimeZoom = -128;
  m_global.cfg.iPreviewMode = 127;
  EXPECT_EQ(m_global.SaveCfg(), 0);
  EXPECT_EQ(Stored("\\Timeline", "iNumAudTraks"), 0xFFFFFFFFu);
  EXPECT_EQ(Stored("\\Timeline", "iDefTimeZoom"), 0xFFFFFF80u);
  EXPECT_EQ(Stored("\\Player", "iPreviewMode"), 127u);
}

TEST_F(GlobalCfgRegistryTest, EmptyLoadThenSaveStoresEveryRowButUseOnlyStereo) {
  ASSERT_EQ(m_global.LoadCfg(), 0);
  ASSERT_EQ(m_global.SaveCfg(), 0);
  EXPECT_EQ(Stored("\\Player", "iScrubSize"), 1u);  // not a new record's 80
  EXPECT_EQ(Stored("", "useOnlyStereo"), 0xDEADBEEFu);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 63);
}

TEST_F(GlobalCfgRegistryTest, UseOnlyStereoIsReadButNeverWritten) {
  ASSERT_EQ(m_reg.WriteDword(kKey, "useOnlyStereo", 0), 1);
  ASSERT_EQ(m_global.LoadCfg(), 0);
  EXPECT_EQ(+m_global.cfg.useOnlyStereo, 0);
  m_global.cfg.useOnlyStereo = 5;
  ASSERT_EQ(m_global.SaveCfg(), 0);
  EXPECT_EQ(Stored("", "useOnlyStereo"), 0u);
}

TEST_F(GlobalCfgRegistryTest, EveryValueLiesInItsSectionWithItsType) {
  ASSERT_EQ(m_global.SaveCfg(), 0);  // a new record: texts partly empty
  size_t rows = 0;
  for (const auto& [section, names] : kSections) {
    for (const std::string& name : names) {
      ++rows;
      uint32_t size = 0;
      delete[] m_reg.ReadBinary(kKey + section, name, &size);
      if (name[0] == 's') {
        std::string text;
        m_reg.ReadString(kKey + section, name, "<missing>", text);
        EXPECT_EQ(size, text.size() + 1) << name;  // a REG_SZ with its terminator
      } else {
        EXPECT_EQ(size, 4u) << name;
      }
      EXPECT_NE(StoredText(section, name), "<missing>") << section << name;
    }
  }
  EXPECT_EQ(rows, 63u);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 63);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values WHERE type = 1"), 7);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values WHERE type = 4"), 56);
  // The machine root, not the user's.
  CRegStore user;
  user.SetBase(HKEY_CURRENT_USER, "Software");
  EXPECT_EQ(user.ReadDword(kKey + "\\Player", "iScrubSize", 9), 9u);
}

TEST_F(GlobalCfgRegistryTest, EveryStoredFieldRoundTrips) {
  auto* bytes = reinterpret_cast<uint8_t*>(&m_global.cfg);
  for (size_t i = 0; i < sizeof(GlobalCfgData); ++i) {
    bytes[i] = static_cast<uint8_t>((i * 7 + 3) % 251 + 1);
  }
  for (char* text : {m_global.cfg.sDefaultImageSize, m_global.cfg.sDefaultTimelineLen,
                     m_global.cfg.sSystemDir, m_global.cfg.sPrefDir, m_global.cfg.sOndoEncoderPath,
                     m_global.cfg.sOndoConverterPath, m_global.cfg.sExternalDir}) {
    text[0] = 'T';
  }
  m_global.cfg.sDefaultImageSize[29] = '\0';
  m_global.cfg.sDefaultTimelineLen[399] = '\0';
  m_global.cfg.sSystemDir[259] = m_global.cfg.sPrefDir[259] = '\0';
  m_global.cfg.sOndoEncoderPath[259] = m_global.cfg.sOndoConverterPath[259] = '\0';
  m_global.cfg.sExternalDir[259] = '\0';
  ASSERT_EQ(m_global.SaveCfg(), 0);

  CGlobalCfg loaded;
  ASSERT_EQ(loaded.LoadCfg(), 0);
  // What has no registry form comes back as the new record has it.
  GlobalCfgData expected = m_global.cfg;
  const GlobalCfgData fresh;
  std::memcpy(expected.abReserved1, fresh.abReserved1, sizeof fresh.abReserved1);
  std::memcpy(expected.abReserved2, fresh.abReserved2, sizeof fresh.abReserved2);
  std::memcpy(expected.abReserved3, fresh.abReserved3, sizeof fresh.abReserved3);
  std::memcpy(expected.abReserved4, fresh.abReserved4, sizeof fresh.abReserved4);
  std::memcpy(expected.abPad817, fresh.abPad817, sizeof fresh.abPad817);
  std::memcpy(expected.abPad2702, fresh.abPad2702, sizeof fresh.abPad2702);
  std::memcpy(expected.abPad2709, fresh.abPad2709, sizeof fresh.abPad2709);
  expected.cFlag2724 = expected.cFlag2733 = 0;
  expected.iWord3120 = expected.iWord3124 = 0;
  expected.useOnlyStereo = 1;  // never written, so the registry default
  EXPECT_EQ(std::memcmp(&loaded.cfg, &expected, sizeof expected), 0);
}

TEST_F(GlobalCfgRegistryTest, LongerTextIsCutToItsField) {
  const std::string longText(500, 'x');
  ASSERT_EQ(m_reg.WriteString(kKey + "\\Timeline", "sDefaultImageSize", longText), 1);
  ASSERT_EQ(m_reg.WriteDword(kKey + "\\Timeline", "iDisableOrizMove", 4), 1);
  ASSERT_EQ(m_global.LoadCfg(), 0);
  EXPECT_EQ(std::string(m_global.cfg.sDefaultImageSize), longText.substr(0, 29));
  EXPECT_EQ(+m_global.cfg.iDisableOrizMove, 4);
}

TEST_F(GlobalCfgRegistryTest, LoadInRegistryModeWithoutSecondFileGivesMinusTwo) {
  ASSERT_EQ(m_reg.WriteDword(kKey + "\\Player", "iScrubSize", 12), 1);
  EXPECT_EQ(m_global.Load(), -2);
  EXPECT_EQ(+m_global.cfg.iScrubSize, 12);  // the main record is loaded all the same
}

TEST_F(GlobalCfgRegistryTest, BrokenStoreLoadsDefaultsAndSavesWithoutComplaint) {
  ASSERT_EQ(mkdir(m_store.c_str(), 0700), 0);
  m_global.cfg.iScrubSize = 55;
  EXPECT_EQ(m_global.LoadCfg(), 0);
  EXPECT_EQ(+m_global.cfg.iScrubSize, 1);
  EXPECT_EQ(m_global.SaveCfg(), 0);
  EXPECT_TRUE(std::filesystem::is_directory(m_store));
}

TEST_F(GlobalCfgRegistryTest, SaveSetsTheGlobalStoresBase) {
  CRegStore saved = g_CfgRegStore;
  g_CfgRegStore.SetBase(HKEY_CURRENT_USER, "Elsewhere");
  ASSERT_EQ(m_global.SaveCfg(), 0);
  EXPECT_EQ(g_CfgRegStore.m_hRoot, HKEY_LOCAL_MACHINE);
  EXPECT_EQ(g_CfgRegStore.m_sBasePath, "Software\\");
  g_CfgRegStore = saved;
}

}  // namespace
