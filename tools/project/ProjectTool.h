#pragma once
// The subcommands of tachyrun-project and what they share: the exit codes,
// the parsed command line and the reporting of findings. One file per family
// of subcommands: ReadCommands.cpp (info, check), DumpCommand.cpp (dump),
// StoreCommands.cpp (new, backup, versions, version, restore),
// MltExport.cpp (export-mlt).

#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "tools/project/ProjectReader.h"

namespace projecttool {

inline constexpr int kExitOk = 0;
inline constexpr int kExitFindings = 1;  // findings, or a file that can't be used
inline constexpr int kExitUsage = 2;

inline constexpr const char* kProgramName = "tachyrun-project";

// A subcommand's arguments: positionals in order, options with a value
// (--timeline NAME, -o FILE) and flags (--json).
struct CommandLine {
  std::vector<std::string> positional;
  std::map<std::string, std::string> values;
  std::set<std::string> flags;
  bool help = false;
  std::string error;  // set when the arguments don't parse
};

// Splits args by the options a subcommand knows; anything else that starts
// with "-" is an error.
CommandLine ParseCommandLine(const std::vector<std::string>& args,
                             const std::set<std::string>& valueOptions,
                             const std::set<std::string>& flagOptions);

// One subcommand: its name, its one-line summary, its help text, its body.
struct Command {
  const char* name;
  const char* usage;    // "info PROJECT"
  const char* summary;  // one line
  const char* help;     // the rest of --help
  int (*run)(const std::vector<std::string>& args);
};

const std::vector<Command>& Commands();

// Prints the usage line to stderr and gives kExitUsage.
int UsageError(const Command& command, const std::string& text);
// Prints --help of command to stdout and gives kExitOk.
int PrintHelp(const Command& command);
// Parses args for command; on --help or an error it has already printed
// and *exitCode holds the code to return.
bool ParseFor(const Command& command, const std::vector<std::string>& args,
              const std::set<std::string>& valueOptions, const std::set<std::string>& flagOptions,
              size_t minPositional, size_t maxPositional, CommandLine* out, int* exitCode);
const Command& CommandNamed(const char* name);

// "tachyrun-project: FILE: TEXT" on stderr for each finding.
void PrintFindings(const std::vector<Finding>& findings, std::ostream& out);

// Reads the project for a command that needs all of it; on a project file
// that can't be used prints the findings and gives false.
bool ReadProjectOrReport(const std::string& path, CProject& project, CProjectReader& reader);

// The timeline named name (case as stored); null after a message naming
// path when there is none.
class CTimeline* TimelineOrReport(CProject& project, const std::string& path,
                                  const std::string& name);

// kExitOk when the reader found nothing, else kExitFindings after the
// findings on stderr: the end of a command that used what it could read.
int FinishWithFindings(const CProjectReader& reader);

// ms as "hh:mm:ss:ff" at frameRate.
std::string TimeCodeText(double ms, double frameRate);
// Frames per second of the project's video mode (25 when it has none).
double FrameRateOf(const CProject& project);

int RunNew(const std::vector<std::string>& args);
int RunInfo(const std::vector<std::string>& args);
int RunDump(const std::vector<std::string>& args);
int RunCheck(const std::vector<std::string>& args);
int RunBackup(const std::vector<std::string>& args);
int RunVersions(const std::vector<std::string>& args);
int RunVersion(const std::vector<std::string>& args);
int RunRestore(const std::vector<std::string>& args);
int RunExportMlt(const std::vector<std::string>& args);

}  // namespace projecttool
