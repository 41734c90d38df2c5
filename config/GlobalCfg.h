#pragma once
// CGlobalCfg: the process-wide configuration. It owns the settings record
// and the opaque second record, and stores the settings either in the
// registry store or in a file, as bUseCfgFile says; the second record has
// only its file. Application code sets the flag and the two paths directly
// and calls Load and Save when it wants to: nothing loads or saves by itself.

#include <cstdint>

#include "config/GlobalCfgData.h"
#include "registry/RegStore.h"

class CGlobalCfg {
 public:
  static constexpr size_t kPathSize = 260;

  // Paths are copied with a bound: a longer path is cut to 259 bytes (an
  // unbounded copy would run over the following members).
  char* SetCfgFile(const char* path);
  char* SetExtFile(const char* path);

  // 0; -1 when the settings failed (the second record is then not tried);
  // -2 when only the second record failed.
  int32_t Load();
  int32_t Save();

  // 0 or -1. The settings go to the registry or to szCfgFile by bUseCfgFile.
  int32_t LoadCfg();
  int32_t SaveCfg();
  // 0 or -1. The second record always goes to szExtFile.
  int32_t LoadExt();
  int32_t SaveExt();

  // The registry form of the settings; both always return 0.
  int32_t LoadFromRegistry();
  int32_t SaveToRegistry();

  char szCfgFile[kPathSize] = {};
  char szExtFile[kPathSize] = {};
  uint8_t bUseCfgFile = 0;
  GlobalCfgData cfg;
  GlobalCfgExtData ext;
};

// Start slots of the two globals below (platform/StartOrder.h).
inline constexpr int kStartCfgRegStore = 1010;
inline constexpr int kStartGlobalCfg = 1020;

// The store through which the settings reach the registry; built before
// g_GlobalCfg, which is built before everything else of the application.
extern CRegStore g_CfgRegStore;
extern CGlobalCfg g_GlobalCfg;
