#include <gtest/gtest.h>

#include <QImage>
#include <QTemporaryDir>
#include <fstream>
#include <sstream>

#include "app/HeadlessRunner.h"
#include "app/ResultWriters.h"
#include "app/TachyrunDlg.h"

namespace tachyrun {
namespace {

ParsedArgs Parse(std::vector<std::string> args) {
  return ParseRunnerArgs(args);
}

TEST(HeadlessArgs, NoArgumentsOpenTheDialog) {
  const ParsedArgs p = Parse({});
  EXPECT_TRUE(p.strError.empty());
  EXPECT_EQ(p.options.eMode, RunnerOptions::Mode::Dialog);
}

TEST(HeadlessArgs, RunTakesACommaSeparatedListInOrder) {
  const ParsedArgs p = Parse({"--run", "1033,1017,1016", "--json", "--image", "/tmp/a.bmp"});
  ASSERT_TRUE(p.strError.empty()) << p.strError;
  EXPECT_EQ(p.options.eMode, RunnerOptions::Mode::Run);
  EXPECT_EQ(p.options.aControls, (std::vector<int>{1033, 1017, 1016}));
  EXPECT_EQ(p.options.eOutput, RunnerOptions::Output::Json);
  EXPECT_EQ(p.options.strImage.value_or(""), "/tmp/a.bmp");
}

TEST(HeadlessArgs, BadListsAndOptionsAreRefusedWithAReason) {
  EXPECT_NE(Parse({"--run"}).strError, "");
  EXPECT_NE(Parse({"--run", ""}).strError, "");
  EXPECT_NE(Parse({"--run", "10x3"}).strError, "");
  EXPECT_NE(Parse({"--run", "1033,,1021"}).strError, "");
  EXPECT_NE(Parse({"--run", "99999999999"}).strError, "");
  EXPECT_NE(Parse({"--frobnicate"}).strError, "");
  EXPECT_NE(Parse({"--image"}).strError, "");
  EXPECT_NE(Parse({"--json"}).strError, "");  // nothing to print
  EXPECT_NE(Parse({"--openmetrics"}).strError, "");
  EXPECT_NE(Parse({"--run", "1033", "--json", "--openmetrics"}).strError.find("combined"),
            std::string::npos);
  EXPECT_NE(Parse({"--run", "1000"}).strError.find("runs no test"), std::string::npos);
}

TEST(HeadlessArgs, LockTestNeedsItsExplicitFlagAndSaysWhy) {
  const ParsedArgs refused = Parse({"--run", "1021,1020"});
  EXPECT_NE(refused.strError.find("1020"), std::string::npos);
  EXPECT_NE(refused.strError.find("--allow-lock-test"), std::string::npos);
  EXPECT_NE(refused.strError.find("never returns"), std::string::npos);
  const ParsedArgs allowed = Parse({"--run", "1020", "--allow-lock-test"});
  EXPECT_TRUE(allowed.strError.empty());
  EXPECT_EQ(allowed.options.aControls, std::vector<int>{1020});
}

TEST(HeadlessArgs, BrowseIsRefusedInFavourOfImage) {
  const ParsedArgs p = Parse({"--run", "1035"});
  EXPECT_NE(p.strError.find("--image"), std::string::npos);
}

TEST(HeadlessArgs, HelpAndListWin) {
  EXPECT_EQ(Parse({"--list"}).options.eMode, RunnerOptions::Mode::List);
  EXPECT_EQ(Parse({"--list", "--help"}).options.eMode, RunnerOptions::Mode::Help);
  EXPECT_EQ(Parse({"-h"}).options.eMode, RunnerOptions::Mode::Help);
}

TEST(HeadlessList, NamesEveryButtonWithAHandlerOnce) {
  std::ostringstream out;
  PrintList(out);
  const std::string text = "\n" + out.str();
  for (int iId : {1005, 1006, 1007, 1008, 1009, 1015, 1016, 1017, 1018, 1019, 1020, 1021,
                  1022, 1023, 1024, 1025, 1026, 1027, 1028, 1029, 1030, 1031, 1032, 1033}) {
    EXPECT_NE(text.find("\n" + std::to_string(iId) + "\t"), std::string::npos) << iId;
  }
  EXPECT_EQ(RunnableControls().size(), 24u);
  std::ostringstream help;
  PrintHelp(help);
  EXPECT_NE(help.str().find("--run"), std::string::npos);
}

TEST(HeadlessRun, PrintsEachControlsLineInOrder) {
  RunnerOptions o;
  o.eMode = RunnerOptions::Mode::Run;
  o.aControls = {1016, 1023, 1033};
  std::ostringstream out, err;
  ASSERT_EQ(RunHeadless(o, out, err), 0) << err.str();
  std::istringstream lines(out.str());
  std::string first, second, third;
  std::getline(lines, first);
  std::getline(lines, second);
  std::getline(lines, third);
  EXPECT_EQ(first.rfind("1016\tImg_ResizeARGB Lin Multi IPPMEM RGB32 720x576 1920x1080 Time: ", 0),
            0u)
      << first;
  EXPECT_NE(first.find("  Res=0"), std::string::npos);
  EXPECT_EQ(second, "1023\t");  // a GPU command shows no line
  EXPECT_EQ(third.rfind("1033\t1CPU  Mem copy  1920x1080  1920x1080  FPS=", 0), 0u) << third;
}

TEST(HeadlessRun, JsonCarriesIdLabelLineAndFigures) {
  QTemporaryDir dir;
  QImage image(720, 576, QImage::Format_ARGB32);
  image.fill(Qt::blue);
  const QString path = dir.filePath("x.bmp");
  ASSERT_TRUE(image.save(path, "BMP"));
  RunnerOptions o;
  o.eMode = RunnerOptions::Mode::Run;
  o.aControls = {1017};
  o.eOutput = RunnerOptions::Output::Json;
  o.strImage = path.toStdString();
  std::ostringstream out, err;
  const int iExit = RunHeadless(o, out, err);
  // The dialog keeps the effect test's bitmap for good; the test frees it.
  delete g_pTestImage;
  g_pTestImage = nullptr;
  ASSERT_EQ(iExit, 0);
  std::istringstream lines(out.str());
  std::string machine, json;
  std::getline(lines, machine);
  std::getline(lines, json);
  EXPECT_EQ(machine.rfind("{\"machine\":{\"cpu\":", 0), 0u) << machine;
  EXPECT_EQ(json.rfind("{\"id\":1017,\"label\":\"EfxTst\",\"line\":\"Img_ResizeARGB Lin", 0), 0u)
      << json;
  EXPECT_NE(json.find("\"status\":0,"), std::string::npos) << json;
  EXPECT_NE(json.find("\"figures\":{\"Time\":"), std::string::npos) << json;
  EXPECT_NE(json.find("\"Res\":0}}"), std::string::npos) << json;
}

TEST(HeadlessRun, RefusesTheLockTestEvenWhenCalledDirectly) {
  RunnerOptions o;
  o.eMode = RunnerOptions::Mode::Run;
  o.aControls = {1020};
  std::ostringstream out, err;
  EXPECT_EQ(RunHeadless(o, out, err), 2);
  EXPECT_NE(err.str().find("--allow-lock-test"), std::string::npos);
  EXPECT_TRUE(out.str().empty());
}

TEST(HeadlessArgs, ImageGoesOnlyWithTheEffectTestAndNeedsAName) {
  const ParsedArgs without = Parse({"--run", "1033", "--image", "/tmp/a.bmp"});
  EXPECT_NE(without.strError.find("1017"), std::string::npos) << without.strError;
  const ParsedArgs empty = Parse({"--run", "1017", "--image", ""});
  EXPECT_NE(empty.strError.find("needs a file name"), std::string::npos) << empty.strError;
  EXPECT_TRUE(Parse({"--run", "1033,1017", "--image", "/tmp/a.bmp"}).strError.empty());
}

TEST(HeadlessRun, ABadImageStopsTheRunBeforeAnythingRuns) {
  QTemporaryDir dir;
  const std::string garbage = dir.filePath("garbage.bmp").toStdString();
  {
    std::ofstream file(garbage);
    file << "this is not a picture";
  }
  const std::vector<std::pair<std::string, std::string>> cases = {
      {dir.filePath("missing.bmp").toStdString(), "does not exist"},
      {dir.path().toStdString(), "not a regular file"},
      {garbage, "can't be decoded"},
      {"", "needs a file name"}};
  for (const auto& [path, why] : cases) {
    RunnerOptions o;
    o.eMode = RunnerOptions::Mode::Run;
    o.aControls = {1016, 1017};
    o.strImage = path;
    std::ostringstream out, err;
    EXPECT_EQ(RunHeadless(o, out, err), kExitUsage) << path;
    EXPECT_NE(err.str().find(why), std::string::npos) << err.str();
    EXPECT_TRUE(out.str().empty()) << out.str();  // 1016 never ran
  }
}

TEST(HeadlessRun, OpenMetricsComesAtTheEndWithOneSampleOfEachFamilyPerTest) {
  RunnerOptions o;
  o.eMode = RunnerOptions::Mode::Run;
  o.aControls = {1016, 1023};
  o.eOutput = RunnerOptions::Output::OpenMetrics;
  std::ostringstream out, err;
  ASSERT_EQ(RunHeadless(o, out, err), kExitAllPassed) << err.str();
  const std::string text = out.str();
  EXPECT_NE(text.find("\ntachyrun_frame_ms{test=\"1016\",label=\"SD-HD NCpu\"} "),
            std::string::npos)
      << text;
  // 1023 measures nothing: a status, no frame time.
  EXPECT_EQ(text.find("tachyrun_frame_ms{test=\"1023\""), std::string::npos) << text;
  EXPECT_NE(text.find("\ntachyrun_status{test=\"1023\",label=\"GpuW Hide\"} 0\n"),
            std::string::npos);
  EXPECT_EQ(text.substr(text.size() - 6), "# EOF\n");
}

TEST(HeadlessMetrics, LabelValuesAreEscapedAndInfinityIsSpelledAsTheFormatWants) {
  EXPECT_EQ(MetricLabelValue("a\"b\\c\nd"), "a\\\"b\\\\c\\nd");
  MachineInfo machine;
  machine.strCpuModel = "CPU \"X\"";
  RunResult result;
  result.iControl = 1033;
  result.dFrameMs = 1.0 / 0.0;
  result.iStatus = 8;
  std::ostringstream out;
  WriteOpenMetrics(out, machine, {result});
  const std::string text = out.str();
  EXPECT_NE(text.find("cpu=\"CPU \\\"X\\\"\""), std::string::npos) << text;
  EXPECT_NE(text.find("tachyrun_frame_ms{test=\"1033\",label=\"CPU 1920x1080\"} +Inf\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("tachyrun_status{test=\"1033\",label=\"CPU 1920x1080\"} 8\n"),
            std::string::npos);
}

TEST(HeadlessJson, AFigureThatIsNotFiniteIsNull) {
  RunResult result;
  result.strLine = "x";
  result.aFigures = {{"FPS", 1.0 / 0.0}, {"Res", 0}};
  std::ostringstream out;
  WriteJsonResult(out, *FindControl(1033), result);
  EXPECT_EQ(out.str(),
            "{\"id\":1033,\"label\":\"CPU 1920x1080\",\"line\":\"x\",\"status\":0,"
            "\"figures\":{\"FPS\":null,\"Res\":0}}\n");
}

TEST(HeadlessJson, TheMachineLineNamesEveryField) {
  MachineInfo m;
  m.strCpuModel = "cpu";
  m.iCores = 4;
  m.qwMemoryBytes = 1024;
  m.strKernel = "Linux 6";
  m.strOpenClDevice = "dev";
  m.strOpenClDriver = "drv";
  m.strVersion = "1.3.375.0";
  m.tUtc = 0;
  std::ostringstream out;
  WriteJsonMachine(out, m);
  EXPECT_EQ(out.str(),
            "{\"machine\":{\"cpu\":\"cpu\",\"cores\":4,\"memory_bytes\":1024,\"kernel\":"
            "\"Linux 6\",\"opencl_device\":\"dev\",\"opencl_driver\":\"drv\",\"version\":"
            "\"1.3.375.0\",\"utc\":\"1970-01-01T00:00:00Z\"}}\n");
}

TEST(HeadlessMachine, ReadsTheCpuModelAndTheRestOfThisMachine) {
  EXPECT_EQ(CpuModelOf("processor\t: 0\nmodel name\t: Some CPU @ 3GHz \nflags\t: x\n"),
            "Some CPU @ 3GHz");
  EXPECT_EQ(CpuModelOf("processor : 0\n"), "");
  const MachineInfo m = ReadMachineInfo("9.9");
  EXPECT_FALSE(m.strCpuModel.empty());
  EXPECT_GE(m.iCores, 1);
  EXPECT_GT(m.qwMemoryBytes, 0u);
  EXPECT_EQ(m.strKernel.rfind("Linux ", 0), 0u) << m.strKernel;
  EXPECT_EQ(m.strVersion, "9.9");
  EXPECT_FALSE(m.strOpenClDevice.empty());  // PoCL's CPU device at least
  EXPECT_GT(m.tUtc, 0);
}

TEST(HeadlessJson, QuoteEscapesQuotesBackslashesAndControls) {
  EXPECT_EQ(JsonQuote("a\"b\\c\n"), "\"a\\\"b\\\\c\\u000a\"");
  EXPECT_EQ(JsonQuote(""), "\"\"");
}

}  // namespace
}  // namespace tachyrun
