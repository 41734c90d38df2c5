#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/GpuCommands.h"
#include "tests/app/RecordingEngine.h"

namespace tachyrun {
namespace {

using testing::RecordingEngine;

TEST(GpuCommands, VisibleButtonsRunTestOneAndShowTheEngineMessage) {
  const GpuCommandDef& sd = *FindGpuCommand(1021);
  const GpuCommandDef& hd = *FindGpuCommand(1022);
  EXPECT_EQ(sd.iCode, 1);
  EXPECT_FALSE(sd.bHdEngine);
  EXPECT_EQ(sd.iResultEdit, 1000);
  EXPECT_EQ(hd.iCode, 1);
  EXPECT_TRUE(hd.bHdEngine);
  EXPECT_EQ(hd.iResultEdit, 1001);

  RecordingEngine engine;
  engine.strMessage = "device X 720x576 12.5 ms 80 fps";
  std::vector<std::string> shown;
  RunGpuCommand(sd, engine, [&](const char* s) { shown.emplace_back(s); });
  EXPECT_EQ(engine.testCodes, std::vector<int>{1});
  EXPECT_EQ(shown, std::vector<std::string>{"device X 720x576 12.5 ms 80 fps"});
}

TEST(GpuCommands, TheMessageShownIsThatOfTheLastRun) {
  RecordingEngine engine;
  std::vector<std::string> shown;
  for (const char* msg : {"first run", "second run", "third"}) {
    engine.strMessage = msg;
    RunGpuCommand(*FindGpuCommand(1021), engine, [&](const char* s) { shown.emplace_back(s); });
  }
  EXPECT_EQ(engine.testCodes, (std::vector<int>{1, 1, 1}));
  EXPECT_EQ(shown.back(), "third");
}

TEST(GpuCommands, AnEngineThatWritesNothingShowsAnEmptyLine) {
  RecordingEngine engine;  // leaves the buffer as it finds it
  std::vector<std::string> shown;
  RunGpuCommand(*FindGpuCommand(1022), engine, [&](const char* s) { shown.emplace_back(s); });
  EXPECT_EQ(shown, std::vector<std::string>{""});
}

TEST(GpuCommands, TheMessageIsAskedForWithRoomFor150) {
  RecordingEngine engine;
  engine.strMessage = std::string(300, 'x');
  std::vector<std::string> shown;
  RunGpuCommand(*FindGpuCommand(1021), engine, [&](const char* s) { shown.emplace_back(s); });
  EXPECT_EQ(shown.at(0).size(), 149u);
}

TEST(GpuCommands, HiddenButtonsHandTheirCodeToTheSdEngineAndShowNothing) {
  const std::vector<std::pair<int, int>> codes = {{1018, 3},  {1023, 4},  {1024, 5}, {1025, 6},
                                                  {1026, 7},  {1027, 8},  {1028, 9}, {1029, 10},
                                                  {1030, 11}, {1031, 12}, {1032, 13}};
  EXPECT_EQ(GpuCommands().size(), codes.size() + 2);
  for (const auto& [iControl, iCode] : codes) {
    const GpuCommandDef* def = FindGpuCommand(iControl);
    ASSERT_NE(def, nullptr) << iControl;
    EXPECT_FALSE(def->bHdEngine);
    RecordingEngine engine;
    engine.strMessage = "not shown";
    int iShown = 0;
    RunGpuCommand(*def, engine, [&](const char*) { ++iShown; });
    EXPECT_EQ(engine.testCodes, std::vector<int>{iCode});
    EXPECT_EQ(iShown, 0) << iControl;
  }
  EXPECT_EQ(FindGpuCommand(1020), nullptr);  // the lock test has no code
}

}  // namespace
}  // namespace tachyrun
