#include "measure/MachineInfo.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

#include "engine/OpenClDevice.h"

namespace tachyrun {
namespace {

constexpr int kDeviceTextBytes = 256;

std::string Trimmed(const std::string& s) {
  const size_t begin = s.find_first_not_of(" \t");
  if (begin == std::string::npos) return {};
  return s.substr(begin, s.find_last_not_of(" \t\r") - begin + 1);
}

}  // namespace

std::string CpuModelOf(const std::string& strCpuInfo) {
  std::istringstream lines(strCpuInfo);
  std::string line;
  while (std::getline(lines, line)) {
    const size_t colon = line.find(':');
    if (colon != std::string::npos && Trimmed(line.substr(0, colon)) == "model name")
      return Trimmed(line.substr(colon + 1));
  }
  return {};
}

std::string UtcText(std::time_t t) {
  std::tm parts{};
  gmtime_r(&t, &parts);
  char szText[32];
  std::strftime(szText, sizeof szText, "%Y-%m-%dT%H:%M:%SZ", &parts);
  return szText;
}

MachineInfo ReadMachineInfo(const char* szVersion) {
  MachineInfo info;
  std::ifstream cpuinfo("/proc/cpuinfo");
  std::ostringstream text;
  text << cpuinfo.rdbuf();
  info.strCpuModel = CpuModelOf(text.str());
  if (info.strCpuModel.empty()) info.strCpuModel = "unknown";
  info.iCores = static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN));
  const long pages = sysconf(_SC_PHYS_PAGES), pageSize = sysconf(_SC_PAGESIZE);
  if (pages > 0 && pageSize > 0)
    info.qwMemoryBytes = static_cast<uint64_t>(pages) * static_cast<uint64_t>(pageSize);
  utsname names{};
  if (uname(&names) == 0) info.strKernel = std::string(names.sysname) + " " + names.release;
  char szDevice[kDeviceTextBytes], szDriver[kDeviceTextBytes];
  PixmillDescribeOpenClDevice(szDevice, sizeof szDevice, szDriver, sizeof szDriver);
  info.strOpenClDevice = szDevice;
  info.strOpenClDriver = szDriver;
  info.strVersion = szVersion;
  info.tUtc = std::time(nullptr);
  return info;
}

}  // namespace tachyrun
