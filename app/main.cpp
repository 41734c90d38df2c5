// tachyrun: the test dialog, or its tests run headless from the command line.
#include <QApplication>
#include <cstdlib>
#include <iostream>

#include "app/DialogTemplate.h"
#include "app/HeadlessRunner.h"
#include "app/TachyrunApp.h"

namespace {

bool HasDisplay() {
  const char* szX = std::getenv("DISPLAY");
  const char* szWayland = std::getenv("WAYLAND_DISPLAY");
  return (szX != nullptr && szX[0] != '\0') || (szWayland != nullptr && szWayland[0] != '\0');
}

}  // namespace

int main(int argc, char** argv) {
  using tachyrun::RunnerOptions;
  const tachyrun::ParsedArgs parsed =
      tachyrun::ParseRunnerArgs(std::vector<std::string>(argv + 1, argv + argc));
  if (!parsed.strError.empty()) {
    std::cerr << "tachyrun: " << parsed.strError << '\n';
    return 2;
  }
  const RunnerOptions& options = parsed.options;
  if (options.eMode == RunnerOptions::Mode::Help) {
    tachyrun::PrintHelp(std::cout);
    return 0;
  }
  if (options.eMode == RunnerOptions::Mode::List) {
    tachyrun::PrintList(std::cout);
    return 0;
  }
  if (options.eMode == RunnerOptions::Mode::Run && !HasDisplay() &&
      std::getenv("QT_QPA_PLATFORM") == nullptr)
    setenv("QT_QPA_PLATFORM", "offscreen", 0);

  QApplication app(argc, argv);
  QApplication::setApplicationName("Tachyrun");
  QApplication::setApplicationVersion(tachyrun::kVersionText);
  if (options.eMode == RunnerOptions::Mode::Run)
    return tachyrun::RunHeadless(options, std::cout, std::cerr);
  return tachyrun::theApp.InitInstance();
}
