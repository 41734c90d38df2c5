// Feeds arbitrary file contents to both record loaders. Whatever the bytes,
// a load gives 0 or -1, and -1 leaves the record exactly as it was.
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "config/GlobalCfg.h"

namespace {

std::string MakePath(const char* name) {
  const char* tmp = std::getenv("TMPDIR");
  return std::string(tmp != nullptr && tmp[0] != '\0' ? tmp : "/tmp") + "/fuzz_config_" +
         std::to_string(getpid()) + name;
}

void Check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::string path = MakePath(".cfg");
  FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return 0;
  if (size > 0) std::fwrite(data, 1, size, file);
  std::fclose(file);

  CGlobalCfg global;
  global.bUseCfgFile = 1;
  global.SetCfgFile(path.c_str());
  global.SetExtFile(path.c_str());
  global.cfg.iScrubSize = 12345;  // a mark that only a successful load removes
  const GlobalCfgData cfgBefore = global.cfg;
  const GlobalCfgExtData extBefore = global.ext;

  const int32_t cfgResult = global.LoadCfg();
  Check(cfgResult == 0 || cfgResult == -1);
  if (cfgResult == -1) Check(std::memcmp(&global.cfg, &cfgBefore, sizeof cfgBefore) == 0);
  if (cfgResult == 0) {
    // The record starts with the bytes behind the size word, as many as
    // the size word and the file both allow.
    int32_t sizeWord = 0;
    std::memcpy(&sizeWord, data, 4);
    const size_t n = std::min<size_t>(static_cast<size_t>(sizeWord), size - 4);
    Check(std::memcmp(&global.cfg, data + 4, n) == 0);
  }
  const int32_t extResult = global.LoadExt();
  Check(extResult == 0 || extResult == -1);
  if (extResult == -1) Check(std::memcmp(&global.ext, &extBefore, sizeof extBefore) == 0);
  std::remove(path.c_str());
  return 0;
}
