#pragma once
// The fixed directories of the application, built once from the directory of
// the running program, and the pair that saves and restores the current
// drive and directory. File code typically saves the current directory,
// changes to one of these, works with bare names and restores.
//
// The slots are process-wide and unlocked: they are written at start-up and
// only read afterwards. Every Get...Dir copies a slot of up to 259 characters
// and its terminator: `out` must hold 260 bytes; a null `out` does nothing.

#include <cstdint>

// Builds every slot from the program's own path (its directory without the
// trailing separator is the base) and makes base/Tmp. When `createAll` is
// exactly 1 it also makes Export, Data, Effects with Efx, Tfx, Thumbs, Macro,
// Efx/Custom, Tfx/Custom, and WinPresets. Existing directories are fine.
// Sets the install, data and spare drives to the base's drive. Returns 0.
int32_t InitAppDirectories(uint8_t createAll);

// The same from a given program path; for hosts that know it better than
// the operating system does, and for tests. A null path counts as empty.
int32_t InitAppDirectoriesFrom(const char* programPath, uint8_t createAll);

// Each changes the current drive to its drive slot and the current
// directory to its path slot, ignoring both results. Returns 0.
int32_t ChangeToAppDir();
int32_t ChangeToTmpDir();
int32_t ChangeToDataDir();
int32_t ChangeToExportDir();
int32_t ChangeToEffectsDir();
int32_t ChangeToPresetsDir();
int32_t ChangeToEfxDir();
int32_t ChangeToTfxDir();
int32_t ChangeToEfxCustomDir();
int32_t ChangeToTfxCustomDir();
int32_t ChangeToThumbsDir();
// The spare slot is never filled: this changes the drive and leaves the
// directory where it is.
int32_t ChangeToSpareDir();

void GetAppDir(char* out);
void GetTmpDir(char* out);
void GetDataDir(char* out);
void GetExportDir(char* out);
void GetEffectsDir(char* out);
void GetPresetsDir(char* out);
void GetEfxDir(char* out);
void GetTfxDir(char* out);
void GetEfxCustomDir(char* out);
void GetTfxCustomDir(char* out);
void GetThumbsDir(char* out);
void GetMacroDir(char* out);

// Stores the current drive in *drive and the current directory in `path`
// (at most 198 characters; a longer one leaves `path` empty). `path` must
// hold 199 bytes. A null argument stores into the process's one saved slot
// instead, which a later call overwrites. Returns 0.
int32_t SaveCurrentDirectory(char* path, uint32_t* drive);

// Changes to `drive` (the saved drive when it is below 1) and to `path` (the
// saved directory when null). Returns the directory change's 0 or -1.
int32_t RestoreCurrentDirectory(const char* path, int32_t drive);
