#pragma once
// CDeviceMode: one video mode. A project holds one by value and writes it to
// its project file as a sized record.

#include <cstdint>
#include <cstdio>

#include "core/Object.h"
#include "video/DeviceModeData.h"

class CDeviceMode : public CDeviceModeData, public CObject {
 public:
  CDeviceMode() = default;
  ~CDeviceMode() override = default;

  // The sized record at the stream's position: 0, or -1 for a null stream or
  // a body that wasn't written.
  int32_t Save(FILE* stream);
  // A sized record from the stream's position: -1 for a null stream, a
  // failed read or a size above 701. A shorter record leaves constructor
  // defaults (not the object's former values) in its tail.
  int32_t Load(FILE* stream);
  // Open, Save (or Load), close: 0 once the file was opened, whatever the
  // record gave; -1 for a null or over-long path or a file that can't be opened.
  int32_t WriteToFile(const char* path);
  int32_t ReadFromFile(const char* path);

  // Same width, height, frame time and field code; false for null.
  bool IsSameMode(CDeviceMode* other) const;
};
