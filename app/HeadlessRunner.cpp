#include "app/HeadlessRunner.h"

#include <QLineEdit>
#include <cmath>
#include <ostream>
#include <sstream>

#include "app/DialogTemplate.h"
#include "app/TachyrunDlg.h"

namespace tachyrun {
namespace {

constexpr int kExitUsage = 2;

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

void PrintJsonResult(std::ostream& out, const ControlDef& c, const RunResult& result) {
  out.precision(12);  // the lines carry three decimals; keep every digit
  out << "{\"id\":" << c.iControl << ",\"label\":" << JsonQuote(c.szLabel)
      << ",\"line\":" << JsonQuote(result.strLine) << ",\"figures\":{";
  bool bFirst = true;
  for (const auto& [name, dValue] : result.aFigures) {
    out << (bFirst ? "" : ",") << JsonQuote(name) << ':';
    // JSON has no infinity: a figure that is not finite is null.
    if (std::isfinite(dValue)) {
      out << dValue;
    } else {
      out << "null";
    }
    bFirst = false;
  }
  out << "}}";
}

}  // namespace

ParsedArgs ParseRunnerArgs(const std::vector<std::string>& args) {
  ParsedArgs parsed;
  RunnerOptions& o = parsed.options;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool bHasValue = i + 1 < args.size();
    if (a == "--help" || a == "-h") {
      o.eMode = RunnerOptions::Mode::Help;
    } else if (a == "--list") {
      if (o.eMode != RunnerOptions::Mode::Help) o.eMode = RunnerOptions::Mode::List;
    } else if (a == "--json") {
      o.bJson = true;
    } else if (a == "--allow-lock-test") {
      o.bAllowLockTest = true;
    } else if (a == "--image" && bHasValue) {
      o.strImage = args[++i];
    } else if (a == "--run" && bHasValue) {
      if (o.eMode == RunnerOptions::Mode::Dialog) o.eMode = RunnerOptions::Mode::Run;
      parsed.strError = ParseIdList(args[++i], o.aControls);
      if (!parsed.strError.empty()) return parsed;
    } else {
      parsed.strError = "unknown or incomplete option '" + a + "' (see --help)";
      return parsed;
    }
  }
  if (o.eMode == RunnerOptions::Mode::Run) {
    for (int iId : o.aControls) {
      parsed.strError = RefusalOf(iId, o);
      if (!parsed.strError.empty()) return parsed;
    }
  } else if (o.eMode == RunnerOptions::Mode::Dialog && (o.bJson || o.strImage)) {
    parsed.strError = "--json and --image go with --run";
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
  out << "Usage: tachyrun [--run ID[,ID...] [--image PATH] [--json] [--allow-lock-test]]\n"
         "       tachyrun --list | --help\n"
         "\n"
         "Without options the test dialog opens. With --run the same dialog is built\n"
         "without being shown, the tests of the given controls run in order, and each\n"
         "control's result line is printed as 'ID<TAB>line'.\n"
         "\n"
         "  --run IDS          control ids, comma separated (e.g. 1021,1022,1033)\n"
         "  --image PATH       the image file of the effect test 1017 (edit 1034)\n"
         "  --json             one JSON object per control: id, label, line, figures\n"
         "  --allow-lock-test  let --run start 1020, which blocks for good\n"
         "  --list             the controls --run knows and what each measures\n"
         "  --help             this text\n"
         "\n"
         "Without a display the Qt platform 'offscreen' is used.\n";
}

void PrintList(std::ostream& out) {
  for (const ControlDef* c : RunnableControls()) {
    out << c->iControl << '\t' << c->szLabel << '\t'
        << (c->iResultEdit != 0 ? "edit " + std::to_string(c->iResultEdit) : "no line") << '\t'
        << c->szMeasures << '\n';
  }
}

int RunHeadless(const RunnerOptions& options, std::ostream& out, std::ostream& err) {
  for (int iId : options.aControls) {
    const std::string strWhyNot = RefusalOf(iId, options);
    if (!strWhyNot.empty()) {
      err << "tachyrun: " << strWhyNot << '\n';
      return kExitUsage;
    }
  }
  CTachyrunDlg dlg;
  dlg.Create();
  if (options.strImage) {
    if (auto* edit = qobject_cast<QLineEdit*>(dlg.Control(kImageEditControl)))
      edit->setText(QString::fromLocal8Bit(options.strImage->c_str()));
  }
  for (int iId : options.aControls) {
    const RunResult result = dlg.RunControl(iId).value_or(RunResult{});
    if (options.bJson) {
      PrintJsonResult(out, *FindControl(iId), result);
      out << '\n';
    } else {
      out << iId << '\t' << result.strLine << '\n';
    }
  }
  out.flush();
  return 0;
}

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

}  // namespace tachyrun
