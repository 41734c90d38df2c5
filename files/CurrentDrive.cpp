#include "files/CurrentDrive.h"

#include <atomic>

#include "files/TextFields.h"
#include "platform/Directory.h"

namespace {

constexpr int32_t kDefaultDrive = 3;
constexpr int32_t kLastDrive = 26;

// Atomic only so that threads reading it race-free; like the current
// directory it is process-wide and nobody locks around it.
std::atomic<int32_t> g_CurrentDrive{kDefaultDrive};

}  // namespace

int32_t GetCurrentDrive() {
  return g_CurrentDrive.load(std::memory_order_relaxed);
}

int32_t ChangeCurrentDrive(int32_t drive) {
  if (drive < 1 || drive > kLastDrive) return -1;
  g_CurrentDrive.store(drive, std::memory_order_relaxed);
  return 0;
}

int32_t GetDriveNumber(const char* path) {
  if (path == nullptr) return kDefaultDrive;
  // Bytes count from 0 to 255, so a non-ASCII first byte gives a number
  // above 26 rather than a negative one.
  return static_cast<unsigned char>(UpperAscii(path[0])) - 64;
}

int32_t ChangeDriveAndDir(const char* path) {
  const int32_t drive = GetDriveNumber(path);
  if (drive > 0) ChangeCurrentDrive(drive);
  if (path == nullptr) return 0;
  return platform::ChangeDirectory(path);
}
