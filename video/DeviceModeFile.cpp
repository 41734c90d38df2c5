// A video mode as a sized record, on a caller's stream or in a file of its own.

#include <cstring>

#include "core/SizedRecord.h"
#include "files/DataFile.h"
#include "files/PathParts.h"
#include "video/DeviceMode.h"

int32_t CDeviceMode::Save(FILE* stream) {
  return SaveSizedRecord(stream, static_cast<CDeviceModeData&>(*this));
}

int32_t CDeviceMode::Load(FILE* stream) {
  return LoadSizedRecord(stream, static_cast<CDeviceModeData&>(*this));
}

namespace {

// Opens path, runs the transfer and closes: 0 once opened, whatever the
// transfer gave; -1 for a null path, one a 260-byte buffer can't hold, or a
// file that can't be opened.
template <class Transfer>
int32_t WithFile(const char* path, Transfer transfer) {
  if (path == nullptr || ::strnlen(path, kPathBufferSize) >= kPathBufferSize) return -1;
  FILE* stream = OpenDataFile(path, false);
  if (stream == nullptr) return -1;
  transfer(stream);
  CloseDataFile(stream);
  return 0;
}

}  // namespace

int32_t CDeviceMode::WriteToFile(const char* path) {
  return WithFile(path, [this](FILE* stream) { return Save(stream); });
}

int32_t CDeviceMode::ReadFromFile(const char* path) {
  return WithFile(path, [this](FILE* stream) { return Load(stream); });
}
