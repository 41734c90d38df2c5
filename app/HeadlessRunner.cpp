#include "app/HeadlessRunner.h"

#include <QLineEdit>
#include <algorithm>
#include <ostream>
#include <sstream>

#include "app/DialogTemplate.h"
#include "app/ImageCheck.h"
#include "app/ResultWriters.h"
#include "app/RunningNotice.h"
#include "app/TachyrunDlg.h"
#include "measure/MachineInfo.h"

namespace tachyrun {
namespace {

std::optional<int> ParseId(const std::string& s) {
  if (s.empty() || s.size() > 6) return std::nullopt;
  int iValue = 0;
  for (char c : s) {
    if (c < '0' || c > '9') return std::nullopt;
    iValue = iValue * 10 + (c - '0');
  }
  return iValue;
}

std::string ParseIdList(const std::string& strList, std::vector<int>& aIds) {
  std::stringstream stream(strList);
  std::string item;
  while (std::getline(stream, item, ',')) {
    const std::optional<int> id = ParseId(item);
    if (!id) return "not a control id: '" + item + "'";
    aIds.push_back(*id);
  }
  if (aIds.empty()) return "--run needs a list of control ids, e.g. --run 1021,1022,1033";
  return {};
}

std::string SetOutput(RunnerOptions& o, RunnerOptions::Output eOutput) {
  if (o.eOutput != RunnerOptions::Output::Lines && o.eOutput != eOutput)
    return "--json and --openmetrics can't be combined: pick one";
  o.eOutput = eOutput;
  return {};
}

// What a run under `o` can't do, checked once the whole line is read.
std::string CheckRun(const RunnerOptions& o) {
  for (int iId : o.aControls) {
    std::string strWhyNot = RefusalOf(iId, o);
    if (!strWhyNot.empty()) return strWhyNot;
  }
  const int iEffect = ControlOf(Handler::EffectTest).iControl;
  if (o.strImage && std::find(o.aControls.begin(), o.aControls.end(), iEffect) == o.aControls.end())
    return "--image is the picture of the effect test " + std::to_string(iEffect) +
           ", which --run doesn't name";
  if (o.strImage && o.strImage->empty()) return "--image needs a file name";
  return {};
}

std::string ControlName(const ControlDef& def) {
  return std::to_string(def.iControl) + " " + def.szLabel;
}

}  // namespace

ParsedArgs ParseRunnerArgs(const std::vector<std::string>& args) {
  ParsedArgs parsed;
  RunnerOptions& o = parsed.options;
  for (size_t i = 0; i < args.size() && parsed.strError.empty(); ++i) {
    const std::string& a = args[i];
    const bool bHasValue = i + 1 < args.size();
    if (a == "--help" || a == "-h") {
      o.eMode = RunnerOptions::Mode::Help;
    } else if (a == "--list") {
      if (o.eMode != RunnerOptions::Mode::Help) o.eMode = RunnerOptions::Mode::List;
    } else if (a == "--json") {
      parsed.strError = SetOutput(o, RunnerOptions::Output::Json);
    } else if (a == "--openmetrics") {
      parsed.strError = SetOutput(o, RunnerOptions::Output::OpenMetrics);
    } else if (a == "--allow-lock-test") {
      o.bAllowLockTest = true;
    } else if (a == "--image" && bHasValue) {
      o.strImage = args[++i];
    } else if (a == "--run" && bHasValue) {
      if (o.eMode == RunnerOptions::Mode::Dialog) o.eMode = RunnerOptions::Mode::Run;
      parsed.strError = ParseIdList(args[++i], o.aControls);
    } else {
      parsed.strError = "unknown or incomplete option '" + a + "' (see --help)";
    }
  }
  if (!parsed.strError.empty()) return parsed;
  if (o.eMode == RunnerOptions::Mode::Run) {
    parsed.strError = CheckRun(o);
  } else if (o.eMode == RunnerOptions::Mode::Dialog &&
             (o.eOutput != RunnerOptions::Output::Lines || o.strImage)) {
    parsed.strError = "--json, --openmetrics and --image go with --run";
  }
  return parsed;
}

std::vector<const ControlDef*> RunnableControls() {
  std::vector<const ControlDef*> all;
  for (const ControlDef& def : Controls()) {
    if (def.eHeadless != Headless::NeedsUser) all.push_back(&def);
  }
  return all;
}

std::string RefusalOf(int iId, const RunnerOptions& options) {
  const ControlDef* def = FindControl(iId);
  if (def == nullptr) return "control " + std::to_string(iId) + " runs no test (see --list)";
  const std::string strControl = "control " + std::to_string(iId);
  switch (def->eHeadless) {
    case Headless::NeedsUser:
      return strControl + " opens a file dialog and needs a user; give the file with --image";
    case Headless::OnRequest:
      if (options.bAllowLockTest) return {};
      return strControl +
             " is the lock test, which never returns (its watchdog holds the lock "
             "for good); add --allow-lock-test to run it anyway";
    case Headless::Runs:
      break;
  }
  return {};
}

void PrintHelp(std::ostream& out) {
  out << "Usage: tachyrun [--run ID[,ID...] [--image PATH] [--json | --openmetrics]\n"
         "                [--allow-lock-test]]\n"
         "       tachyrun --list | --help\n"
         "\n"
         "Without options the test dialog opens. With --run the same dialog is built\n"
         "without being shown, the tests of the given controls run in order, and each\n"
         "control's result line is printed as 'ID<TAB>line' as soon as its test ends.\n"
         "\n"
         "  --run IDS          control ids, comma separated (e.g. 1021,1022,1033)\n"
         "  --image PATH       the image file of the effect test 1017 (edit 1034);\n"
         "                     checked before anything runs\n"
         "  --json             JSON Lines: a first line describing the machine, then one\n"
         "                     object per control: id, label, line, status, figures\n"
         "  --openmetrics      the figures in OpenMetrics text format, written at the end\n"
         "                     (for the node exporter's textfile directory)\n"
         "  --allow-lock-test  let --run start 1020, which blocks for good\n"
         "  --list             the controls --run knows and what each measures\n"
         "  --help             this text\n"
         "\n"
         "Exit status: 0 when every test ran with status 0; 1 when a test gave a\n"
         "non-zero status or could not run (no OpenCL device); 2 for a usage error\n"
         "(unknown option or control, a bad --image file, no display for the dialog).\n"
         "\n"
         "Without a display --run uses the Qt platform 'offscreen'.\n";
}

void PrintList(std::ostream& out) {
  for (const ControlDef* c : RunnableControls()) {
    out << c->iControl << '\t' << c->szLabel << '\t'
        << (c->iResultEdit != 0 ? "edit " + std::to_string(c->iResultEdit) : "no line") << '\t'
        << c->szMeasures << '\n';
  }
}

std::string NoDisplayMessage() {
  return "no display found (neither DISPLAY nor WAYLAND_DISPLAY is set), so the dialog can't "
         "open.\nRun the tests headless instead: tachyrun --run ID[,ID...] (tachyrun --list "
         "shows them), e.g. tachyrun --run 1021,1022,1033";
}

int RunHeadless(const RunnerOptions& options, std::ostream& out, std::ostream& err) {
  std::string strProblem = CheckRun(options);
  if (strProblem.empty() && options.strImage) strProblem = ImageFileProblem(*options.strImage);
  if (!strProblem.empty()) {
    err << "tachyrun: " << strProblem << '\n';
    return kExitUsage;
  }
  CTachyrunDlg dlg;
  dlg.Create();
  if (options.strImage) {
    if (auto* edit = qobject_cast<QLineEdit*>(dlg.Control(kImageEditControl)))
      edit->setText(QString::fromLocal8Bit(options.strImage->c_str()));
  }
  // Only the machine-readable outputs describe the machine.
  const MachineInfo machine = options.eOutput == RunnerOptions::Output::Lines
                                  ? MachineInfo{}
                                  : ReadMachineInfo(kVersionText);
  if (options.eOutput == RunnerOptions::Output::Json) {
    WriteJsonMachine(out, machine);
    out.flush();
  }
  std::vector<RunResult> results;
  int iExit = kExitAllPassed;
  for (int iId : options.aControls) {
    const ControlDef& def = *FindControl(iId);
    std::optional<RunResult> result;
    {
      CRunningNotice notice(err, ControlName(def), options.bNotices);
      result = dlg.RunControl(iId);
    }
    if (result->iStatus != 0) iExit = kExitTestFailed;
    if (options.eOutput == RunnerOptions::Output::Json) {
      WriteJsonResult(out, def, *result);
    } else if (options.eOutput == RunnerOptions::Output::Lines) {
      out << iId << '\t' << result->strLine << '\n';
    }
    out.flush();  // a piped run shows each line as its test ends
    results.push_back(std::move(*result));
  }
  if (options.eOutput == RunnerOptions::Output::OpenMetrics) {
    WriteOpenMetrics(out, machine, results);
    out.flush();
  }
  return iExit;
}

}  // namespace tachyrun
