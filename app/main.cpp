// tachyrun: the test dialog, or its tests run headless from the command line.
#include <unistd.h>

#include <QApplication>
#include <cstdlib>
#include <iostream>

#include "app/DialogTemplate.h"
#include "app/HeadlessRunner.h"
#include "app/TachyrunApp.h"

namespace {

bool IsSet(const char* szName) {
  const char* szValue = std::getenv(szName);
  return szValue != nullptr && szValue[0] != '\0';
}

bool HasDisplay() {
  return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY");
}

}  // namespace

int main(int argc, char** argv) {
  using tachyrun::RunnerOptions;
  tachyrun::ParsedArgs parsed =
      tachyrun::ParseRunnerArgs(std::vector<std::string>(argv + 1, argv + argc));
  if (!parsed.strError.empty()) {
    std::cerr << "tachyrun: " << parsed.strError << '\n';
    return tachyrun::kExitUsage;
  }
  RunnerOptions& options = parsed.options;
  if (options.eMode == RunnerOptions::Mode::Help) {
    tachyrun::PrintHelp(std::cout);
    return tachyrun::kExitAllPassed;
  }
  if (options.eMode == RunnerOptions::Mode::List) {
    tachyrun::PrintList(std::cout);
    return tachyrun::kExitAllPassed;
  }
  // A platform named by the user is the user's choice; otherwise the dialog
  // needs a display, and Qt would abort without one.
  if (!HasDisplay() && !IsSet("QT_QPA_PLATFORM")) {
    if (options.eMode == RunnerOptions::Mode::Dialog) {
      std::cerr << "tachyrun: " << tachyrun::NoDisplayMessage() << '\n';
      return tachyrun::kExitUsage;
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
  }

  QApplication app(argc, argv);
  QApplication::setApplicationName("Tachyrun");
  QApplication::setApplicationVersion(tachyrun::kVersionText);
  if (options.eMode == RunnerOptions::Mode::Run) {
    options.bNotices = isatty(STDERR_FILENO) == 1;
    return tachyrun::RunHeadless(options, std::cout, std::cerr);
  }
  return tachyrun::theApp.InitInstance();
}
