#pragma once
// Every folder name, extension, file name and name pattern of a project tree,
// written once. Paths are joined with platform::kPathSeparator; the names keep
// their spelling and case.

namespace projectnames {

// Extensions, with their dot.
inline constexpr const char* kProjectExtension = ".qzpj";
inline constexpr const char* kTimelineExtension = ".Qzt";
inline constexpr const char* kRepositoryExtension = ".Qzr";
inline constexpr const char* kBackup1Extension = ".Bk1";
inline constexpr const char* kBackup2Extension = ".Bk2";

// Folders below the project folder, without separators.
inline constexpr const char* kMediaFolder = "Media";
inline constexpr const char* kAvInFolder = "AV_In";         // below Media
inline constexpr const char* kAvFolder = "AV";              // below Media
inline constexpr const char* kAudioFolder = "Audio";        // below Media
inline constexpr const char* kGraphicsFolder = "Graphics";  // below Media
inline constexpr const char* kMiscFolder = "Misc";          // below Media
inline constexpr const char* kDatabaseFolder = "Database";
inline constexpr const char* kRepositoryFolder = "Repository";  // below Database
inline constexpr const char* kTimelineFolder = "Timeline";      // below Database
inline constexpr const char* kVersionsFolder = "Versions";
inline constexpr const char* kWaveFormFolder = "WaveForm";
inline constexpr const char* kTmpFolder = "Tmp";

// The template project of the application directory and its content.
inline constexpr const char* kTemplateProjectName = "Default";
inline constexpr const char* kDefaultTimelineName = "Timeline1";
inline constexpr const char* kDefaultRepositoryName = "Repository1";
// The stored name of the first of two template repositories; no blank,
// unlike the generated "DMX Preset%d".
inline constexpr const char* kStoredDmxPresetName = "DmxPreset1";

// Formats of generated names.
inline constexpr const char* kNewProjectFormat = "Project%d";
inline constexpr const char* kNewTimelineFormat = "Timeline%d";
inline constexpr const char* kNewRepositoryFormat = "Repository%d";
inline constexpr const char* kNewEffectsFormat = "Effects%d";
inline constexpr const char* kNewDmxPresetFormat = "DMX Preset%d";
inline constexpr const char* kNewVersionFormat = "Version%d";

// Scan patterns of the version copies.
inline constexpr const char* kRepositoryPattern = "*.qzr";
inline constexpr const char* kTimelinePattern = "*.qzt";
inline constexpr const char* kBackupPattern = "*.bk*";

}  // namespace projectnames
