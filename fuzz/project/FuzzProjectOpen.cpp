// Opens a project from arbitrary bytes with arbitrary timeline and
// repository files beside it, both as a project (Open, full) and as a set
// under another extension (OpenWithExtension).
//
// Input: a 16-bit length of the project file, a 16-bit length of the
// timeline file, the project file, the timeline file, and the rest as the
// repository file. They are written as Show.qzpj with Timeline1.Qzt and
// Repository1.Qzr (and as Show.Bk1 with Timeline1.Bk1 and Repository1.Bk1)
// in a fixed scratch tree. The record's root and project name are set to
// that tree before writing, where the record reaches them, so that the
// folders an open makes stay inside it; every other byte is the input's.

#include <stdlib.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "files/AppDirectories.h"
#include "project/Project.h"
#include "project/ProjectData.h"

namespace {

constexpr size_t kHeaderBytes = 4;
constexpr size_t kRootOffset = offsetof(CProjectData, szRootPath);
constexpr size_t kNameOffset = offsetof(CProjectData, szProjectName);

const std::string& Scratch() {
  static const std::string root = [] {
    char pattern[] = "/tmp/tachyrun-fuzz-open-XXXXXX";
    const char* made = ::mkdtemp(pattern);
    std::string base = made == nullptr ? std::string("/tmp/tachyrun-fuzz-open") : made;
    std::filesystem::create_directories(base + "/Show/Database/Timeline");
    std::filesystem::create_directories(base + "/Show/Database/Repository");
    InitAppDirectoriesFrom((base + "/program").c_str(), 0);
    std::filesystem::current_path(base);
    return base + "/";
  }();
  return root;
}

void WriteBytes(const std::string& path, const uint8_t* data, size_t size) {
  FILE* f = std::fopen(path.c_str(), "wb");
  if (f == nullptr) return;
  if (size > 0) std::fwrite(data, 1, size, f);
  std::fclose(f);
}

void SetField(std::string& bytes, size_t offset, const std::string& text) {
  if (bytes.size() < offset + kProjectTextSize) return;
  std::memset(bytes.data() + offset, 0, kProjectTextSize);
  std::memcpy(bytes.data() + offset, text.data(), text.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < kHeaderBytes) return 0;
  const std::string& root = Scratch();
  size_t projectSize = data[0] | (static_cast<size_t>(data[1]) << 8);
  size_t timelineSize = data[2] | (static_cast<size_t>(data[3]) << 8);
  data += kHeaderBytes;
  size -= kHeaderBytes;
  if (projectSize > size) projectSize = size;
  if (timelineSize > size - projectSize) timelineSize = size - projectSize;

  std::string project(reinterpret_cast<const char*>(data), projectSize);
  SetField(project, kRootOffset, root);
  SetField(project, kNameOffset, "Show");
  const uint8_t* timeline = data + projectSize;
  const uint8_t* repository = timeline + timelineSize;
  const size_t repositorySize = size - projectSize - timelineSize;

  const std::string folder = root + "Show/";
  for (const char* extension : {".qzpj", ".Bk1"}) {
    WriteBytes(folder + "Show" + extension, reinterpret_cast<const uint8_t*>(project.data()),
               project.size());
  }
  for (const char* extension : {".Qzt", ".Bk1"}) {
    WriteBytes(folder + "Database/Timeline/Timeline1" + extension, timeline, timelineSize);
  }
  for (const char* extension : {".Qzr", ".Bk1"}) {
    WriteBytes(folder + "Database/Repository/Repository1" + extension, repository, repositorySize);
  }

  CProject opened;
  opened.Open((folder + "Show.qzpj").c_str(), 1);
  CProject backup;
  backup.OpenWithExtension((folder + "Show.Bk1").c_str());
  return 0;
}
