#include "files/AppDirectories.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <initializer_list>

#include "files/CurrentDrive.h"
#include "files/PathParts.h"
#include "platform/Directory.h"

namespace {

constexpr int32_t kDriveC = 3;
// The limit the saved directory has always been read with.
constexpr size_t kSavedDirLimit = 199;
// Big enough for any program path Linux reports; cut to a path buffer after.
constexpr size_t kProgramPathLimit = 4096;

using PathSlot = char[kPathBufferSize];

PathSlot g_AppDir;
PathSlot g_TmpDir;
PathSlot g_DataDir;
PathSlot g_ExportDir;
PathSlot g_EffectsDir;
PathSlot g_PresetsDir;
PathSlot g_EfxDir;
PathSlot g_TfxDir;
PathSlot g_EfxCustomDir;
PathSlot g_TfxCustomDir;
PathSlot g_ThumbsDir;
PathSlot g_MacroDir;
PathSlot g_SpareDir;
PathSlot g_SavedDir;

int32_t g_InstallDrive = kDriveC;
int32_t g_DataDrive = kDriveC;
int32_t g_SpareDrive = kDriveC;
int32_t g_SavedDrive = kDriveC;

// slot = parent, separator, name; cut to the slot's size.
void BuildSlot(PathSlot& slot, const char* parent, const char* name) {
  size_t used = ::strnlen(parent, sizeof slot - 1);
  std::memmove(slot, parent, used);
  const char separator[2] = {platform::kPathSeparator, '\0'};
  for (const char* part : {separator, name}) {
    const size_t n = ::strnlen(part, sizeof slot - 1 - used);
    std::memcpy(slot + used, part, n);
    used += n;
  }
  slot[used] = '\0';
}

int32_t ChangeToSlot(int32_t drive, const char* slot) {
  ChangeCurrentDrive(drive);
  platform::ChangeDirectory(slot);
  return 0;
}

void CopySlot(const char* slot, char* out) {
  if (out != nullptr) std::memcpy(out, slot, std::strlen(slot) + 1);
}

// The base: the program path without its last part and separator. The scan
// stops at index 1, so a program in the root directory keeps its whole path.
void TakeBase(const char* programPath, PathSlot& base) {
  std::memset(base, 0, sizeof base);
  CopyPathText(base, programPath);
  for (size_t i = sizeof base - 1; i >= 1; --i) {
    if (base[i] == platform::kPathSeparator) {
      base[i] = '\0';
      return;
    }
  }
}

// An installed program lives in <prefix>/bin beside <prefix>/share/tachyrun,
// a folder no user may write. There the application directory (where the
// template is read) is <prefix>/share/tachyrun and the writable folders go
// under $XDG_DATA_HOME/tachyrun (~/.local/share/tachyrun). False, with both
// slots untouched, for any other program folder, such as a build tree.
bool TakeInstalledLayout(const PathSlot& base, PathSlot& appDir, PathSlot& writable) {
  namespace fs = std::filesystem;
  const fs::path bin(base);
  if (bin.filename() != "bin") return false;
  const fs::path shared = bin.parent_path() / "share" / "tachyrun";
  std::error_code error;
  if (!fs::is_directory(shared, error)) return false;
  fs::path data;
  const char* xdg = std::getenv("XDG_DATA_HOME");
  const char* home = std::getenv("HOME");
  // A relative XDG_DATA_HOME is invalid and is ignored, as the rule says.
  if (xdg != nullptr && xdg[0] == '/') {
    data = fs::path(xdg) / "tachyrun";
  } else if (home != nullptr && home[0] != '\0') {
    data = fs::path(home) / ".local" / "share" / "tachyrun";
  } else {
    return false;
  }
  fs::create_directories(data, error);
  CopyPathText(appDir, shared.string().c_str());
  CopyPathText(writable, data.string().c_str());
  return true;
}

void MakeAllDirectories() {
  // Parents before their children.
  for (const char* dir : {g_ExportDir, g_DataDir, g_EffectsDir, g_EfxDir, g_TfxDir, g_ThumbsDir,
                          g_MacroDir, g_EfxCustomDir, g_TfxCustomDir, g_PresetsDir}) {
    platform::MakeDirectory(dir);
  }
}

}  // namespace

int32_t InitAppDirectories(uint8_t createAll) {
  char program[kProgramPathLimit];
  // Without a readable program path the current directory stands in for the
  // program's, so nothing is made at the file system's root.
  if (!platform::GetExecutablePath(program, sizeof program)) std::strcpy(program, "./program");
  return InitAppDirectoriesFrom(program, createAll);
}

int32_t InitAppDirectoriesFrom(const char* programPath, uint8_t createAll) {
  PathSlot base;
  TakeBase(programPath == nullptr ? "" : programPath, base);
  // From a build tree both are the program's folder.
  PathSlot appDir;
  PathSlot writable;
  CopyPathText(appDir, base);
  CopyPathText(writable, base);
  TakeInstalledLayout(base, appDir, writable);

  CopyPathText(g_AppDir, appDir);
  BuildSlot(g_TmpDir, writable, "Tmp");
  platform::MakeDirectory(g_TmpDir);  // the one directory made in every case

  BuildSlot(g_DataDir, writable, "Data");
  BuildSlot(g_PresetsDir, writable, "WinPresets");
  BuildSlot(g_ExportDir, writable, "Export");
  BuildSlot(g_EffectsDir, writable, "Effects");
  BuildSlot(g_EfxDir, g_EffectsDir, "Efx");
  BuildSlot(g_TfxDir, g_EffectsDir, "Tfx");
  BuildSlot(g_ThumbsDir, g_EffectsDir, "Thumbs");
  BuildSlot(g_MacroDir, g_EffectsDir, "Macro");
  BuildSlot(g_EfxCustomDir, g_EfxDir, "Custom");
  BuildSlot(g_TfxCustomDir, g_TfxDir, "Custom");

  if (createAll == 1) MakeAllDirectories();

  // The drive comes from the upper-cased base; the slots keep their case.
  const int32_t drive = GetDriveNumber(base);
  g_InstallDrive = drive;
  g_SpareDrive = drive;
  g_DataDrive = drive;
  return 0;
}

int32_t ChangeToAppDir() {
  return ChangeToSlot(g_InstallDrive, g_AppDir);
}
int32_t ChangeToTmpDir() {
  return ChangeToSlot(g_InstallDrive, g_TmpDir);
}
int32_t ChangeToDataDir() {
  return ChangeToSlot(g_DataDrive, g_DataDir);
}
int32_t ChangeToExportDir() {
  return ChangeToSlot(g_DataDrive, g_ExportDir);
}
int32_t ChangeToEffectsDir() {
  return ChangeToSlot(g_DataDrive, g_EffectsDir);
}
int32_t ChangeToPresetsDir() {
  return ChangeToSlot(g_DataDrive, g_PresetsDir);
}
int32_t ChangeToEfxDir() {
  return ChangeToSlot(g_DataDrive, g_EfxDir);
}
int32_t ChangeToTfxDir() {
  return ChangeToSlot(g_DataDrive, g_TfxDir);
}
int32_t ChangeToEfxCustomDir() {
  return ChangeToSlot(g_DataDrive, g_EfxCustomDir);
}
int32_t ChangeToTfxCustomDir() {
  return ChangeToSlot(g_DataDrive, g_TfxCustomDir);
}
int32_t ChangeToThumbsDir() {
  return ChangeToSlot(g_DataDrive, g_ThumbsDir);
}
int32_t ChangeToSpareDir() {
  return ChangeToSlot(g_SpareDrive, g_SpareDir);
}

void GetAppDir(char* out) {
  CopySlot(g_AppDir, out);
}
void GetTmpDir(char* out) {
  CopySlot(g_TmpDir, out);
}
void GetDataDir(char* out) {
  CopySlot(g_DataDir, out);
}
void GetExportDir(char* out) {
  CopySlot(g_ExportDir, out);
}
void GetEffectsDir(char* out) {
  CopySlot(g_EffectsDir, out);
}
void GetPresetsDir(char* out) {
  CopySlot(g_PresetsDir, out);
}
void GetEfxDir(char* out) {
  CopySlot(g_EfxDir, out);
}
void GetTfxDir(char* out) {
  CopySlot(g_TfxDir, out);
}
void GetEfxCustomDir(char* out) {
  CopySlot(g_EfxCustomDir, out);
}
void GetTfxCustomDir(char* out) {
  CopySlot(g_TfxCustomDir, out);
}
void GetThumbsDir(char* out) {
  CopySlot(g_ThumbsDir, out);
}
void GetMacroDir(char* out) {
  CopySlot(g_MacroDir, out);
}

int32_t SaveCurrentDirectory(char* path, uint32_t* drive) {
  const int32_t current = GetCurrentDrive();
  if (drive != nullptr) {
    *drive = static_cast<uint32_t>(current);
  } else {
    g_SavedDrive = current;
  }
  platform::GetCurrentDirectory(path != nullptr ? path : g_SavedDir, kSavedDirLimit);
  return 0;
}

int32_t RestoreCurrentDirectory(const char* path, int32_t drive) {
  ChangeCurrentDrive(drive < 1 ? g_SavedDrive : drive);
  return platform::ChangeDirectory(path != nullptr ? path : g_SavedDir);
}
