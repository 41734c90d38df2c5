#pragma once
// The program's command line: without arguments it opens the dialog; with
// --run it builds the same dialog without showing it, runs the handlers of
// the given controls in order and prints each control's result line.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "measure/ControlCatalogue.h"

namespace tachyrun {

struct RunnerOptions {
  enum class Mode { Dialog, Run, List, Help };
  Mode eMode = Mode::Dialog;
  std::vector<int> aControls;
  std::optional<std::string> strImage;
  bool bJson = false;
  bool bAllowLockTest = false;
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
// Needs a QApplication. Returns the process exit code.
int RunHeadless(const RunnerOptions& options, std::ostream& out, std::ostream& err);

// JSON string literal of `s`, quotes included.
std::string JsonQuote(const std::string& s);

}  // namespace tachyrun
