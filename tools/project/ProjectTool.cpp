#include "tools/project/ProjectTool.h"

#include <cmath>
#include <cstring>
#include <iostream>

#include "project/Timeline.h"
#include "project/TimelineList.h"
#include "time/TimeCode.h"

namespace projecttool {

namespace {

// 100-nanosecond units per second, the unit of a video mode's frame time.
constexpr double kFrameTimeUnitsPerSecond = 10000000.0;
constexpr double kDefaultFrameRate = 25.0;

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& args,
                             const std::set<std::string>& valueOptions,
                             const std::set<std::string>& flagOptions) {
  CommandLine line;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--help" || arg == "-h") {
      line.help = true;
    } else if (valueOptions.count(arg) != 0) {
      if (i + 1 >= args.size()) {
        line.error = arg + " needs a value";
        return line;
      }
      line.values[arg] = args[++i];
    } else if (flagOptions.count(arg) != 0) {
      line.flags.insert(arg);
    } else if (arg.size() > 1 && arg[0] == '-') {
      line.error = "unknown option " + arg;
      return line;
    } else {
      line.positional.push_back(arg);
    }
  }
  return line;
}

int UsageError(const Command& command, const std::string& text) {
  std::cerr << kProgramName << " " << command.name << ": " << text << "\n"
            << "usage: " << kProgramName << " " << command.usage << "\n"
            << "Try '" << kProgramName << " " << command.name << " --help'.\n";
  return kExitUsage;
}

int PrintHelp(const Command& command) {
  std::cout << "usage: " << kProgramName << " " << command.usage << "\n\n"
            << command.summary << "\n\n"
            << command.help;
  return kExitOk;
}

bool ParseFor(const Command& command, const std::vector<std::string>& args,
              const std::set<std::string>& valueOptions, const std::set<std::string>& flagOptions,
              size_t minPositional, size_t maxPositional, CommandLine* out, int* exitCode) {
  *out = ParseCommandLine(args, valueOptions, flagOptions);
  if (out->help) {
    *exitCode = PrintHelp(command);
    return false;
  }
  if (!out->error.empty()) {
    *exitCode = UsageError(command, out->error);
    return false;
  }
  if (out->positional.size() < minPositional) {
    *exitCode = UsageError(command, "missing arguments");
    return false;
  }
  if (out->positional.size() > maxPositional) {
    *exitCode = UsageError(command, "too many arguments");
    return false;
  }
  return true;
}

const Command& CommandNamed(const char* name) {
  for (const Command& command : Commands()) {
    if (std::strcmp(command.name, name) == 0) return command;
  }
  return Commands().front();
}

void PrintFindings(const std::vector<Finding>& findings, std::ostream& out) {
  for (const Finding& finding : findings) {
    out << finding.file << ": " << finding.text << "\n";
  }
}

bool ReadProjectOrReport(const std::string& path, CProject& project, CProjectReader& reader) {
  if (reader.Read(path, project)) return true;
  for (const Finding& finding : reader.Findings()) {
    std::cerr << kProgramName << ": " << finding.file << ": " << finding.text << "\n";
  }
  return false;
}

CTimeline* TimelineOrReport(CProject& project, const std::string& path, const std::string& name) {
  for (CTimeline* timeline : project.pTimelineList->m_aItems) {
    if (timeline != nullptr && FieldString(timeline->szName, sizeof(timeline->szName)) == name) {
      return timeline;
    }
  }
  std::cerr << kProgramName << ": " << path << ": no timeline named \"" << name << "\"\n";
  return nullptr;
}

int FinishWithFindings(const CProjectReader& reader) {
  if (reader.Findings().empty()) return kExitOk;
  std::cerr << kProgramName << ": the project has findings ('check' lists them):\n";
  PrintFindings(reader.Findings(), std::cerr);
  return kExitFindings;
}

std::string TimeCodeText(double ms, double frameRate) {
  CTimeCode code;
  code.SetFrameRate(frameRate);
  code.SetMilliseconds(ms);
  std::string text;
  code.FormatTime(&text);
  return text;
}

double FrameRateOf(const CProject& project) {
  const int32_t frameTime = project.videoMode.iFrameTime;
  if (frameTime <= 0) return kDefaultFrameRate;
  const double rate = kFrameTimeUnitsPerSecond / frameTime;
  return std::isfinite(rate) && rate >= 1.0 && rate <= 1000.0 ? rate : kDefaultFrameRate;
}

}  // namespace projecttool
