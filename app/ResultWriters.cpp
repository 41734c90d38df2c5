#include "app/ResultWriters.h"

#include <cmath>
#include <cstdio>
#include <ostream>
#include <sstream>

namespace tachyrun {
namespace {

// Every digit a three-decimal line figure has.
constexpr int kNumberPrecision = 12;

// JSON has no infinity: a figure that is not finite is null.
std::string JsonNumber(double dValue) {
  if (!std::isfinite(dValue)) return "null";
  std::ostringstream text;
  text.precision(kNumberPrecision);
  text << dValue;
  return text.str();
}

std::string MetricNumber(double dValue) {
  if (std::isnan(dValue)) return "NaN";
  if (std::isinf(dValue)) return dValue > 0 ? "+Inf" : "-Inf";
  std::ostringstream text;
  text.precision(kNumberPrecision);
  text << dValue;
  return text.str();
}

std::string TestLabels(const RunResult& result) {
  const ControlDef* control = FindControl(result.iControl);
  return "{test=\"" + std::to_string(result.iControl) + "\",label=\"" +
         MetricLabelValue(control != nullptr ? control->szLabel : "") + "\"}";
}

void WriteFamily(std::ostream& out, const char* szName, const char* szHelp) {
  out << "# HELP " << szName << ' ' << szHelp << "\n# TYPE " << szName << " gauge\n";
}

}  // namespace

std::string JsonQuote(const std::string& s) {
  std::string quoted = "\"";
  for (unsigned char c : s) {
    if (c == '"' || c == '\\') {
      quoted += '\\';
      quoted += static_cast<char>(c);
    } else if (c < 0x20) {
      char szEscape[8];
      std::snprintf(szEscape, sizeof szEscape, "\\u%04x", c);
      quoted += szEscape;
    } else {
      quoted += static_cast<char>(c);
    }
  }
  return quoted + "\"";
}

void WriteJsonMachine(std::ostream& out, const MachineInfo& m) {
  out << "{\"machine\":{\"cpu\":" << JsonQuote(m.strCpuModel) << ",\"cores\":" << m.iCores
      << ",\"memory_bytes\":" << m.qwMemoryBytes << ",\"kernel\":" << JsonQuote(m.strKernel)
      << ",\"opencl_device\":" << JsonQuote(m.strOpenClDevice)
      << ",\"opencl_driver\":" << JsonQuote(m.strOpenClDriver)
      << ",\"version\":" << JsonQuote(m.strVersion) << ",\"utc\":" << JsonQuote(UtcText(m.tUtc))
      << "}}\n";
}

void WriteJsonResult(std::ostream& out, const ControlDef& control, const RunResult& result) {
  out << "{\"id\":" << control.iControl << ",\"label\":" << JsonQuote(control.szLabel)
      << ",\"line\":" << JsonQuote(result.strLine) << ",\"status\":" << result.iStatus
      << ",\"figures\":{";
  const char* szSeparator = "";
  for (const Figure& figure : result.aFigures) {
    out << szSeparator << JsonQuote(figure.strName) << ':' << JsonNumber(figure.dValue);
    szSeparator = ",";
  }
  out << "}}\n";
}

std::string MetricLabelValue(const std::string& s) {
  std::string escaped;
  for (char c : s) {
    if (c == '\\' || c == '"') {
      escaped += '\\';
      escaped += c;
    } else if (c == '\n') {
      escaped += "\\n";
    } else {
      escaped += c;
    }
  }
  return escaped;
}

void WriteOpenMetrics(std::ostream& out, const MachineInfo& m,
                      const std::vector<RunResult>& results) {
  WriteFamily(out, "tachyrun_machine_info", "The machine and program of the run.");
  out << "tachyrun_machine_info{cpu=\"" << MetricLabelValue(m.strCpuModel) << "\",cores=\""
      << m.iCores << "\",memory_bytes=\"" << m.qwMemoryBytes << "\",kernel=\""
      << MetricLabelValue(m.strKernel) << "\",opencl_device=\""
      << MetricLabelValue(m.strOpenClDevice) << "\",opencl_driver=\""
      << MetricLabelValue(m.strOpenClDriver) << "\",version=\"" << MetricLabelValue(m.strVersion)
      << "\"} 1\n";
  WriteFamily(out, "tachyrun_run_timestamp_seconds", "When the run started, Unix time.");
  out << "tachyrun_run_timestamp_seconds " << static_cast<long long>(m.tUtc) << '\n';
  WriteFamily(out, "tachyrun_frame_ms",
              "Milliseconds per frame of a test (per round; per item for the list test).");
  for (const RunResult& result : results) {
    if (result.dFrameMs)
      out << "tachyrun_frame_ms" << TestLabels(result) << ' ' << MetricNumber(*result.dFrameMs)
          << '\n';
  }
  WriteFamily(out, "tachyrun_status", "Status of a test: 0 when it ran as it should.");
  for (const RunResult& result : results)
    out << "tachyrun_status" << TestLabels(result) << ' ' << result.iStatus << '\n';
  out << "# EOF\n";
}

}  // namespace tachyrun
