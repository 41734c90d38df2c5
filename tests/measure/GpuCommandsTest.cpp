#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "measure/GpuCommands.h"
#include "tests/support/RecordingEngine.h"

namespace tachyrun {
namespace {

using testing::RecordingEngine;

TEST(GpuCommands, VisibleButtonsRunTestOneAndShowTheEngineMessage) {
  const ControlDef& sd = *FindControl(1021);
  const ControlDef& hd = *FindControl(1022);
  EXPECT_EQ(sd.iGpuCode, 1);
  EXPECT_EQ(sd.eEngine, EngineSlot::GpuSd);
  EXPECT_EQ(sd.iResultEdit, 1000);
  EXPECT_EQ(hd.iGpuCode, 1);
  EXPECT_EQ(hd.eEngine, EngineSlot::GpuHd);
  EXPECT_EQ(hd.iResultEdit, 1001);

  RecordingEngine engine;
  engine.strMessage = "device X 720x576 up 1.00 = 12.50 ms/frame 80.0 fps";
  std::vector<std::string> shown;
  const RunResult result = RunGpuCommand(sd, engine, [&](const char* s) { shown.emplace_back(s); });
  EXPECT_EQ(engine.testCodes, std::vector<int>{1});
  EXPECT_EQ(shown, std::vector<std::string>{engine.strMessage});
  EXPECT_EQ(result.strLine, engine.strMessage);
  EXPECT_EQ(result.dFrameMs.value_or(-1), 12.5);
  ASSERT_FALSE(result.aFigures.empty());
  EXPECT_EQ(result.aFigures.back().strName, "FrameTime");
  EXPECT_EQ(result.iStatus, 0);
}

TEST(GpuCommands, TheMessageShownIsThatOfTheLastRun) {
  RecordingEngine engine;
  std::vector<std::string> shown;
  for (const char* msg : {"first run", "second run", "third"}) {
    engine.strMessage = msg;
    RunGpuCommand(*FindControl(1021), engine, [&](const char* s) { shown.emplace_back(s); });
  }
  EXPECT_EQ(engine.testCodes, (std::vector<int>{1, 1, 1}));
  EXPECT_EQ(shown.back(), "third");
}

TEST(GpuCommands, AnEngineThatWritesNothingShowsAnEmptyLine) {
  RecordingEngine engine;  // leaves the buffer as it finds it
  std::vector<std::string> shown;
  RunGpuCommand(*FindControl(1022), engine, [&](const char* s) { shown.emplace_back(s); });
  EXPECT_EQ(shown, std::vector<std::string>{""});
}

TEST(GpuCommands, TheMessageIsAskedForWithRoomFor150) {
  RecordingEngine engine;
  engine.strMessage = std::string(300, 'x');
  std::vector<std::string> shown;
  RunGpuCommand(*FindControl(1021), engine, [&](const char* s) { shown.emplace_back(s); });
  EXPECT_EQ(shown.at(0).size(), 149u);
}

TEST(GpuCommands, HiddenButtonsHandTheirCodeToTheSdEngineAndShowNothing) {
  const std::vector<std::pair<int, int>> codes = {{1018, 3},  {1023, 4},  {1024, 5}, {1025, 6},
                                                  {1026, 7},  {1027, 8},  {1028, 9}, {1029, 10},
                                                  {1030, 11}, {1031, 12}, {1032, 13}};
  size_t nGpu = 0;
  for (const ControlDef& def : Controls()) nGpu += def.iGpuCode != 0 ? 1 : 0;
  EXPECT_EQ(nGpu, codes.size() + 2);
  for (const auto& [iControl, iCode] : codes) {
    const ControlDef* def = FindControl(iControl);
    ASSERT_NE(def, nullptr) << iControl;
    EXPECT_EQ(def->eEngine, EngineSlot::GpuSd);
    EXPECT_EQ(def->eHandler, Handler::GpuCommand);
    RecordingEngine engine;
    engine.strMessage = "not shown";
    int iShown = 0;
    RunGpuCommand(*def, engine, [&](const char*) { ++iShown; });
    EXPECT_EQ(engine.testCodes, std::vector<int>{iCode});
    EXPECT_EQ(iShown, 0) << iControl;
  }
  EXPECT_EQ(FindControl(1020)->iGpuCode, 0);  // the lock test has no code
}

TEST(GpuCommands, TheStatusIsMakeTestsAndAMessageWithoutATimeHasNoFrameTime) {
  RecordingEngine engine;
  engine.iStatus = 8;
  engine.strMessage = "GPU test 1: no OpenCL device, nothing measured";
  const RunResult result = RunGpuCommand(*FindControl(1022), engine, [](const char*) {});
  EXPECT_FALSE(result.dFrameMs.has_value());
  EXPECT_EQ(result.iStatus, 8);
  EXPECT_EQ(FrameMsOfMessage("x 3.5 ms/frame"), 3.5);
  EXPECT_FALSE(FrameMsOfMessage(" ms/frame").has_value());
  EXPECT_FALSE(FrameMsOfMessage("up x ms/frame").has_value());
}

}  // namespace
}  // namespace tachyrun
