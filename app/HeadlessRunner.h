#pragma once
// The program's command line: without arguments it opens the dialog; with
// --run it builds the same dialog without showing it, runs the handlers of
// the given controls in order and prints each control's result as it ends.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "measure/ControlCatalogue.h"

namespace tachyrun {

// Exit statuses of the program.
inline constexpr int kExitAllPassed = 0;   // every test ran with status 0
inline constexpr int kExitTestFailed = 1;  // a test gave a status or could not run
inline constexpr int kExitUsage = 2;       // the command line can't be run

struct RunnerOptions {
  enum class Mode { Dialog, Run, List, Help };
  enum class Output { Lines, Json, OpenMetrics };
  Mode eMode = Mode::Dialog;
  Output eOutput = Output::Lines;
  std::vector<int> aControls;
  std::optional<std::string> strImage;
  bool bAllowLockTest = false;
  // Not an option: set when stderr is a terminal, for the running notices.
  bool bNotices = false;
};

// Options, or an error text for a command line that can't be run.
struct ParsedArgs {
  RunnerOptions options;
  std::string strError;
};
ParsedArgs ParseRunnerArgs(const std::vector<std::string>& args);

// The catalogue's controls that --run accepts (with --allow-lock-test).
std::vector<const ControlDef*> RunnableControls();
// Empty when --run may run `iId` under `options`, else why not.
std::string RefusalOf(int iId, const RunnerOptions& options);

void PrintHelp(std::ostream& out);
void PrintList(std::ostream& out);
// Without a display the dialog can't open: what to say instead.
std::string NoDisplayMessage();
// Needs a QApplication. Checks the controls and the image first (exit 2),
// then runs each control and prints its result as it ends. Returns the
// program's exit status.
int RunHeadless(const RunnerOptions& options, std::ostream& out, std::ostream& err);

}  // namespace tachyrun
