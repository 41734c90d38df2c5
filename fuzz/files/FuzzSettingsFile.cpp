// Every query of CSettingsFile on arbitrary file bytes. The bytes become a
// file in memory (memfd), named through /proc so that the reader opens it as
// any path. Sections and keys asked for: fixed ones, and a name and key cut
// from the input itself so that heads present in the text are found too.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "files/SettingsFile.h"

namespace {

const char kDefault[] = "<default>";

// A result is the default pointer itself or the object's result string, and
// never longer than the file.
void CheckText(const CSettingsFile& file, const char* result, size_t size) {
  if (result == kDefault) return;
  if (result != file.m_pszResult || std::strlen(result) > size) std::abort();
}

void AskEverything(CSettingsFile& file, const char* section, const char* key, size_t size) {
  CheckText(file, file.GetString(section, key, kDefault), size);
  file.GetInt(section, key, 0);
  file.GetBool(section, key, true);
  file.GetFloat(section, key, 0.0f);
  for (int32_t index : {-1, 0, 1, 2, 3, 7}) {
    CheckText(file, file.GetStringAt(section, index, kDefault), size);
    file.GetIntAt(section, index, 0);
    file.GetBoolAt(section, index, false);
    file.GetFloatAt(section, index, 0.0f);
    const char* name = file.GetKeyName(section, index);
    if (name == nullptr || std::strlen(name) > size) std::abort();
  }
  const int32_t count = file.CountKeys(section);
  if (count < 0 || static_cast<size_t>(count) > size) std::abort();
}

// The text between the first "[" and the next "]", and the first line's
// start up to "=": likely names for this input.
std::string Between(const uint8_t* data, size_t size, char open, char close) {
  const auto* begin = static_cast<const uint8_t*>(std::memchr(data, open, size));
  if (begin == nullptr) return {};
  ++begin;
  const size_t rest = size - static_cast<size_t>(begin - data);
  const auto* end = static_cast<const uint8_t*>(std::memchr(begin, close, rest));
  if (end == nullptr) return {};
  std::string text(begin, end);
  return text.substr(0, std::strlen(text.c_str()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const int fd = memfd_create("settings", MFD_CLOEXEC);
  if (fd < 0) return 0;
  if (size > 0 && write(fd, data, size) != static_cast<ssize_t>(size)) {
    close(fd);
    return 0;
  }
  const std::string path = "/proc/self/fd/" + std::to_string(fd);
  {
    CSettingsFile file(path.c_str());
    const std::string section = Between(data, size, '[', ']');
    const std::string key = Between(data, size, '\n', '=');
    AskEverything(file, section.c_str(), key.c_str(), size);
    AskEverything(file, "S", "k", size);
    AskEverything(file, "", "", size);
  }
  close(fd);
  return 0;
}
