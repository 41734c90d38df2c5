#include <gtest/gtest.h>

#include <QImage>
#include <QTemporaryDir>
#include <sstream>

#include "app/HeadlessRunner.h"

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
  const ParsedArgs p = Parse({"--run", "1033,1021,1016", "--json", "--image", "/tmp/a.bmp"});
  ASSERT_TRUE(p.strError.empty()) << p.strError;
  EXPECT_EQ(p.options.eMode, RunnerOptions::Mode::Run);
  EXPECT_EQ(p.options.aControls, (std::vector<int>{1033, 1021, 1016}));
  EXPECT_TRUE(p.options.bJson);
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
  o.bJson = true;
  o.strImage = path.toStdString();
  std::ostringstream out, err;
  ASSERT_EQ(RunHeadless(o, out, err), 0);
  const std::string json = out.str();
  EXPECT_EQ(json.rfind("{\"id\":1017,\"label\":\"EfxTst\",\"line\":\"Img_ResizeARGB Lin", 0), 0u)
      << json;
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

TEST(HeadlessJson, QuoteEscapesQuotesBackslashesAndControls) {
  EXPECT_EQ(JsonQuote("a\"b\\c\n"), "\"a\\\"b\\\\c\\u000a\"");
  EXPECT_EQ(JsonQuote(""), "\"\"");
}

}  // namespace
}  // namespace tachyrun
