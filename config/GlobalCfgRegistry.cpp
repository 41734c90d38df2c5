// The registry form of the settings: one value for each of 64 fields, in
// five sections below "GlobalCfgConfig\Configuration" of the machine root.
#include <algorithm>
#include <cstring>
#include <string>

#include "config/GlobalCfg.h"

namespace {

constexpr const char* kBase = "Software";
constexpr const char* kRoot = "";
constexpr const char* kProgram = "\\Program";
constexpr const char* kPlayer = "\\Player";
constexpr const char* kTimeline = "\\Timeline";
constexpr const char* kRepository = "\\Repository";
constexpr const char* kAdvance = "\\Advance";

// One stored field. Its width says how it is stored: one byte and four
// bytes as a REG_DWORD, a text array as a REG_SZ.
struct Row {
  const char* section;
  const char* name;
  size_t offset;
  size_t size;
  uint32_t number;   // default of a number
  const char* text;  // default of a text
};

#define FIELD(name) #name, offsetof(GlobalCfgData, name), sizeof(GlobalCfgData::name)

// In the order of reading. The defaults are those of a configuration that
// has never been stored, which differ on purpose from a new record's.
constexpr Row kRows[] = {
    {kRoot, FIELD(useOnlyStereo), 1, nullptr},
    {kProgram, FIELD(iSaveBeforeMovie), 0, nullptr},
    {kProgram, FIELD(iAutoExTrimWinOnMovieOut), 0, nullptr},
    {kProgram, FIELD(sOndoEncoderPath), 0, "C:\\Programmi\\Ondo\\ondoEncoder\\ondoEncoder.exe"},
    {kProgram, FIELD(sOndoConverterPath), 0,
     "C:\\Programmi\\Ondo\\ondoBatchConverter\\ondoBatchConverter.exe"},
    {kProgram, FIELD(iReleaseDeviceBeforeCall), 1, nullptr},
    {kPlayer, FIELD(iDisableAudioPreview), 0, nullptr},
    {kPlayer, FIELD(iUseOndoResampler), 1, nullptr},
    {kPlayer, FIELD(iSingleImageExpMode), 1, nullptr},
    {kPlayer, FIELD(iTCOverlay), 0, nullptr},
    {kPlayer, FIELD(iPauseScrubMode), 1, nullptr},
    {kPlayer, FIELD(iPreviewMode), 0, nullptr},
    {kPlayer, FIELD(iPreviewAR), 0, nullptr},
    {kPlayer, FIELD(isScrubEnabled), 0, nullptr},
    {kPlayer, FIELD(iScrubSize), 1, nullptr},
    {kPlayer, FIELD(isScrubRepeat), 1, nullptr},
    {kPlayer, FIELD(iDisableScreenSaver), 1, nullptr},
    {kPlayer, FIELD(iDisablePreviewInMovieOut), 1, nullptr},
    {kPlayer, FIELD(iStopPlayerOnFrameLost), 0, nullptr},
    {kPlayer, FIELD(iUseMultiThreadMixer), 1, nullptr},
    {kPlayer, FIELD(iUseGpuAcc), 1, nullptr},
    {kPlayer, FIELD(iDisableVideoPreview), 0, nullptr},
    {kPlayer, FIELD(iUseDefaultDirectSoundDevice), 1, nullptr},
    {kPlayer, FIELD(iEnableFrameBorder), 1, nullptr},
    {kPlayer, FIELD(iPrebufferMode), 2, nullptr},
    {kPlayer, FIELD(iPreviewVmrType), 0, nullptr},
    {kTimeline, FIELD(iLockLeftRightHandle), 0, nullptr},
    {kTimeline, FIELD(isAutoAudioDissolve), 1, nullptr},
    {kTimeline, FIELD(isAutoScrollEnabled), 1, nullptr},
    {kTimeline, FIELD(isShowVirtualClipWarning), 0, nullptr},
    {kTimeline, FIELD(iAutoScrollSize), 100, nullptr},
    {kTimeline, FIELD(iDefTrackAudioSizeY), 30, nullptr},
    {kTimeline, FIELD(iDefTrackVideoSizeY), 30, nullptr},
    {kTimeline, FIELD(iDefTrackEffectSizeY), 20, nullptr},
    {kTimeline, FIELD(iAutoPlayHiRange), 1, nullptr},
    {kTimeline, FIELD(sDefaultTimelineLen), 0, "00:10:00:00"},
    {kTimeline, FIELD(sDefaultImageSize), 0, "00:00:10:00"},
    {kTimeline, FIELD(iDisableOrizMove), 0, nullptr},
    {kTimeline, FIELD(iNumVidTraks), 6, nullptr},
    {kTimeline, FIELD(iNumAudTraks), 8, nullptr},
    {kTimeline, FIELD(iEnableAutoDissolve), 0, nullptr},
    {kTimeline, FIELD(iAutoResizeClip), 0, nullptr},
    {kTimeline, FIELD(iPreservePosOnTrim), 1, nullptr},
    {kTimeline, FIELD(iPlayMovieRange), 1, nullptr},
    {kTimeline, FIELD(iUseShiftToUnlock), 1, nullptr},
    {kTimeline, FIELD(iLinkChInClipMode), 1, nullptr},
    {kTimeline, FIELD(iDefTimeZoom), 9, nullptr},
    {kTimeline, FIELD(iWaitOndoCaptureEnd), 1, nullptr},
    {kTimeline, FIELD(iEnableWaveForm), 1, nullptr},
    {kTimeline, FIELD(iEnablePicons), 1, nullptr},
    {kRepository, FIELD(iViewMode), 0, nullptr},
    {kRepository, FIELD(iThumbSort), 0, nullptr},
    {kRepository, FIELD(iThumbSize), 1, nullptr},
    {kRepository, FIELD(sSystemDir), 0, "c:\\"},
    {kRepository, FIELD(sPrefDir), 0, "c:\\"},
    {kAdvance, FIELD(iUseAviSplitter), 1, nullptr},
    {kAdvance, FIELD(iUseDvFilters), 1, nullptr},
    {kAdvance, FIELD(iUseWaveParser), 1, nullptr},
    {kAdvance, FIELD(iUseMpegIndex), 0, nullptr},
    {kAdvance, FIELD(iUseMxfSourceFilter), 1, nullptr},
    {kAdvance, FIELD(iUseMpegDecoders), 1, nullptr},
    {kAdvance, FIELD(iEnableGraphSave), 0, nullptr},
    {kAdvance, FIELD(iUseDvEncoders), 1, nullptr},
    {kAdvance, FIELD(sExternalDir), 0, "c:\\exp\\"},
};

#undef FIELD

static_assert(std::size(kRows) == 64);
constexpr size_t kWriteFrom = 1;  // useOnlyStereo is read and never written

std::string KeyOf(const Row& row) {
  return std::string("GlobalCfgConfig\\Configuration") + row.section;
}

void ReadRow(const Row& row, uint8_t* field) {
  if (row.text != nullptr) {
    std::string text;
    g_CfgRegStore.ReadString(KeyOf(row), row.name, row.text, text);
    // A text longer than its field is cut, so it can't run over the next one.
    const size_t n = std::min(text.size(), row.size - 1);
    std::memcpy(field, text.data(), n);
    field[n] = '\0';
    return;
  }
  const uint32_t value = g_CfgRegStore.ReadDword(KeyOf(row), row.name, row.number);
  if (row.size == 1) {
    field[0] = static_cast<uint8_t>(value);  // low 8 bits
  } else {
    std::memcpy(field, &value, sizeof value);
  }
}

void WriteRow(const Row& row, const uint8_t* field) {
  if (row.text != nullptr) {
    const char* text = reinterpret_cast<const char*>(field);
    g_CfgRegStore.WriteString(KeyOf(row), row.name, std::string(text, strnlen(text, row.size)));
    return;
  }
  int32_t value = 0;
  if (row.size == 1) {
    value = static_cast<int8_t>(field[0]);  // widened with its sign
  } else {
    std::memcpy(&value, field, sizeof value);
  }
  g_CfgRegStore.WriteDword(KeyOf(row), row.name, static_cast<uint32_t>(value));
}

}  // namespace

int32_t CGlobalCfg::LoadFromRegistry() {
  g_CfgRegStore.SetBase(HKEY_LOCAL_MACHINE, kBase);
  auto* record = reinterpret_cast<uint8_t*>(&cfg);
  for (const Row& row : kRows) ReadRow(row, record + row.offset);
  return 0;
}

int32_t CGlobalCfg::SaveToRegistry() {
  g_CfgRegStore.SetBase(HKEY_LOCAL_MACHINE, kBase);
  const auto* record = reinterpret_cast<const uint8_t*>(&cfg);
  // Results ignored: a store that can't be written leaves the registry as
  // it was, value by value.
  for (size_t i = kWriteFrom; i < std::size(kRows); ++i) {
    WriteRow(kRows[i], record + kRows[i].offset);
  }
  return 0;
}
