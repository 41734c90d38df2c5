#include "measure/GpuCommands.h"

#include <cstdlib>

namespace tachyrun {

std::optional<double> FrameMsOfMessage(const std::string& strMessage) {
  const size_t unit = strMessage.find(" ms/frame");
  if (unit == std::string::npos || unit == 0) return std::nullopt;
  const size_t start = strMessage.find_last_of(' ', unit - 1);
  const size_t begin = start == std::string::npos ? 0 : start + 1;
  const std::string strNumber = strMessage.substr(begin, unit - begin);
  char* end = nullptr;
  const double dValue = std::strtod(strNumber.c_str(), &end);
  if (strNumber.empty() || end != strNumber.c_str() + strNumber.size()) return std::nullopt;
  return dValue;
}

}  // namespace tachyrun
