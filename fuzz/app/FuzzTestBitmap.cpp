// Any bytes as the effect test's image file: loading gives a bitmap (failed
// or not), and the copy into the 720 x 576 source buffer stays inside it.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "app/ImageCheck.h"
#include "app/TestBitmap.h"
#include "measure/EffectRun.h"
#include "measure/GpuCommands.h"
#include "measure/ResultLines.h"

namespace {

const std::string& ScratchPath() {
  static const std::string path = [] {
    char szTemplate[] = "/tmp/fuzz_app_bitmap_XXXXXX";
    const int fd = mkstemp(szTemplate);
    if (fd >= 0) close(fd);
    return std::string(szTemplate);
  }();
  static const struct Remover {
    ~Remover() { unlink(path.c_str()); }
  } remover;
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FILE* file = std::fopen(ScratchPath().c_str(), "wb");
  if (file == nullptr) return 0;
  std::fwrite(data, 1, size, file);
  std::fclose(file);

  std::unique_ptr<tachyrun::CTestBitmap> image(
      tachyrun::CTestBitmap::FromFile(ScratchPath().c_str()));
  std::vector<uint8_t> buffer(tachyrun::kEffectMaxBytes);
  const uint32_t dwCopied = tachyrun::CopyTestImage(image.get(), buffer.data());
  if (dwCopied > tachyrun::kEffectMaxBytes) std::abort();
  if (image->GetHeight() == 0 && dwCopied != 0) std::abort();
  // The headless runner's check of --image reads the same bytes.
  tachyrun::ImageFileProblem(ScratchPath());

  const std::string text(reinterpret_cast<const char*>(data), size);
  tachyrun::ParseFigures(text);
  tachyrun::FrameMsOfMessage(text);
  return 0;
}
