// The project tool's reader on hostile files: a project file and the
// timeline and repository files it may name, all from the input, laid out as
// the tree of a project "Demo". Input: two little-endian u32 lengths, the
// project file, the timeline file (Timeline1.Qzt), the rest is the
// repository file (Repository1.Qzr). The reader must give findings, never
// crash, hang or grow without bound.

#include <stdlib.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "project/Project.h"
#include "tools/project/ProjectReader.h"

namespace {

namespace fs = std::filesystem;

const std::string& Tree() {
  static const std::string tree = [] {
    char pattern[] = "/tmp/fuzz-project-reader-XXXXXX";
    const char* made = ::mkdtemp(pattern);
    const std::string root = made != nullptr ? made : "/tmp/fuzz-project-reader";
    fs::create_directories(root + "/Demo/Database/Timeline");
    fs::create_directories(root + "/Demo/Database/Repository");
    return root;
  }();
  return tree;
}

void Write(const std::string& path, const uint8_t* data, size_t size) {
  FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return;
  if (size > 0) std::fwrite(data, 1, size, file);
  std::fclose(file);
}

uint32_t TakeLength(const uint8_t*& data, size_t& size) {
  uint32_t length = 0;
  if (size >= sizeof(length)) {
    std::memcpy(&length, data, sizeof(length));
    data += sizeof(length);
    size -= sizeof(length);
  }
  return length;
}

// length, cut to what is left.
size_t Within(uint32_t length, size_t size) {
  return length > size ? size : length;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const uint32_t projectLength = TakeLength(data, size);
  const uint32_t timelineLength = TakeLength(data, size);
  const std::string& tree = Tree();
  const size_t head = Within(projectLength, size);
  Write(tree + "/Demo/Demo.qzpj", data, head);
  data += head;
  size -= head;
  const size_t timeline = Within(timelineLength, size);
  Write(tree + "/Demo/Database/Timeline/Timeline1.Qzt", data, timeline);
  Write(tree + "/Demo/Database/Repository/Repository1.Qzr", data + timeline, size - timeline);
  CProject project;
  projecttool::CProjectReader reader;
  reader.Read(tree + "/Demo/Demo.qzpj", project);
  return 0;
}
