#include "config/GlobalCfg.h"
#include "platform/StartOrder.h"

#include <cstring>

#include "files/DataFile.h"

// Defined together, so that the store is built first; the configuration
// has no destructor of its own.
CRegStore g_CfgRegStore TACHYRUN_START_ORDER(kStartCfgRegStore);
CGlobalCfg g_GlobalCfg TACHYRUN_START_ORDER(kStartGlobalCfg);

namespace {

constexpr int32_t kSizeWord = 4;
// The second file carries a block as long as the settings record behind its
// size word of 800: the record, then zeros.
constexpr int32_t kExtBlock = sizeof(GlobalCfgData);

char* CopyPath(char (&field)[CGlobalCfg::kPathSize], const char* path) {
  if (path == nullptr) path = "";
  std::strncpy(field, path, CGlobalCfg::kPathSize - 1);
  field[CGlobalCfg::kPathSize - 1] = '\0';
  return field;
}

// Reads the sized record at the start of `path` into `local` (which holds
// the defaults), at most `limit` bytes. The file is closed on every path, a
// failed load included, so no descriptor outlives the call.
int32_t LoadSizedFile(const char* path, void* local, int32_t limit) {
  if (path[0] == '\0') return -1;
  FILE* file = OpenDataFile(path, false);
  if (file == nullptr) return -1;
  int32_t size = 0;
  int32_t result = -1;
  if (ReadFileRange(0, kSizeWord, &size, file) > 0 && size <= limit) {
    // A size of 0 or below reads nothing, which is a failure too.
    if (ReadFileRange(kSizeWord, kSizeWord + size, local, file) > 0) result = 0;
  }
  CloseDataFile(file);
  return result;
}

// Writes the size word and `blockSize` bytes of `block` in place at the
// start of `path`, without truncating what lies behind.
int32_t SaveSizedFile(const char* path, int32_t sizeWord, const void* block, int32_t blockSize) {
  if (path[0] == '\0') return -1;
  FILE* file = OpenDataFile(path, false);
  if (file == nullptr) return -1;
  WriteFileRange(0, kSizeWord, &sizeWord, file);  // checked through the block write
  const int32_t written = WriteFileRange(kSizeWord, kSizeWord + blockSize, block, file);
  CloseDataFile(file);
  return written > 0 ? 0 : -1;
}

}  // namespace

char* CGlobalCfg::SetCfgFile(const char* path) {
  return CopyPath(szCfgFile, path);
}

char* CGlobalCfg::SetExtFile(const char* path) {
  return CopyPath(szExtFile, path);
}

int32_t CGlobalCfg::Load() {
  if (LoadCfg() != 0) return -1;
  return LoadExt() != 0 ? -2 : 0;
}

int32_t CGlobalCfg::Save() {
  if (SaveCfg() != 0) return -1;
  return SaveExt() != 0 ? -2 : 0;
}

int32_t CGlobalCfg::LoadCfg() {
  if (bUseCfgFile == 0) return LoadFromRegistry();
  // Loaded over a new record: a shorter file keeps the defaults for the
  // rest, not what cfg held before.
  GlobalCfgData local;
  if (LoadSizedFile(szCfgFile, &local, sizeof local) != 0) return -1;
  cfg = local;
  return 0;
}

int32_t CGlobalCfg::LoadExt() {
  GlobalCfgExtData local;
  if (LoadSizedFile(szExtFile, &local, sizeof local) != 0) return -1;
  ext = local;
  return 0;
}

int32_t CGlobalCfg::SaveCfg() {
  if (bUseCfgFile == 0) return SaveToRegistry();
  return SaveSizedFile(szCfgFile, sizeof cfg, &cfg, sizeof cfg);
}

int32_t CGlobalCfg::SaveExt() {
  uint8_t block[kExtBlock] = {};
  std::memcpy(block, &ext, sizeof ext);
  return SaveSizedFile(szExtFile, sizeof ext, block, sizeof block);
}
