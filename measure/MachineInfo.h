#pragma once
// The machine a run is made on, as a report for many machines needs it: CPU
// model, cores, memory, kernel, OpenCL device and driver, program version and
// the time of the run.

#include <cstdint>
#include <ctime>
#include <string>

namespace tachyrun {

struct MachineInfo {
  std::string strCpuModel;  // "model name" of /proc/cpuinfo, else "unknown"
  int iCores = 0;           // online processors
  uint64_t qwMemoryBytes = 0;
  std::string strKernel;        // "Linux 6.1.0-13-amd64"
  std::string strOpenClDevice;  // empty without a device
  std::string strOpenClDriver;
  std::string strVersion;
  std::time_t tUtc = 0;
};

// Reads the machine now; `szVersion` is the program's.
MachineInfo ReadMachineInfo(const char* szVersion);

// "2026-11-25T13:20:51Z".
std::string UtcText(std::time_t t);

// The "model name" of a /proc/cpuinfo text; empty when it has none.
std::string CpuModelOf(const std::string& strCpuInfo);

}  // namespace tachyrun
