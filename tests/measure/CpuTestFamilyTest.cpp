#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "measure/ControlCatalogue.h"
#include "measure/CpuTestFamily.h"
#include "tests/support/RecordingEngine.h"

namespace tachyrun {
namespace {

using testing::RecordingEngine;
using testing::ScriptedClock;

struct FamilyRun {
  RecordingEngine one;
  RecordingEngine many;
  std::vector<std::string> texts;
  int32_t iRes = 0;
  RunResult result;

  void Run(int iControl, std::vector<uint32_t> clock, int iRounds = -1) {
    const CpuTestDef& def = *FindCpuTest(iControl);
    RecordingEngine& call = FindControl(iControl)->eEngine == EngineSlot::CpuN ? many : one;
    result = RunCpuTest(
        def, iRounds < 0 ? def.iRounds : iRounds, one, call,
        [this](const char* s) { texts.emplace_back(s); }, ScriptedClock(std::move(clock)));
    iRes = result.iStatus;
  }
};

// The catalogue's controls of the CPU family.
std::vector<int> CpuControls() {
  std::vector<int> ids;
  for (const ControlDef& def : Controls()) {
    if (def.pCpu != nullptr) ids.push_back(def.iControl);
  }
  return ids;
}

TEST(CpuTestFamily, EveryMemberWritesStartedThenItsLineInItsEdit) {
  const std::vector<std::pair<int, int>> edits = {{1006, 1001}, {1007, 1002}, {1008, 1003},
                                                  {1009, 1004}, {1015, 1010}, {1016, 1011},
                                                  {1019, 1014}, {1033, 1001}};
  ASSERT_EQ(CpuControls().size(), edits.size());
  for (const auto& [iControl, iEdit] : edits) {
    ASSERT_NE(FindCpuTest(iControl), nullptr) << iControl;
    EXPECT_EQ(FindControl(iControl)->iResultEdit, iEdit) << iControl;
    FamilyRun run;
    run.Run(iControl, {1000, 1000}, 2);
    ASSERT_EQ(run.texts.size(), 2u) << iControl;
    EXPECT_EQ(run.texts[0], "started...");
  }
  EXPECT_EQ(FindCpuTest(1005), nullptr);
}

TEST(CpuTestFamily, ResizeSdHdOnOneCpuTimesOnlyTheLoopAtOneHundredRounds) {
  FamilyRun run;
  run.Run(1015, {1000, 1250});
  EXPECT_EQ(run.texts[1],
            "Img_ResizeARGB Lin IPPMEM+BUFF RGB32 720x576 1920x1080 Time: 2.500 ms  Res=0");
  // The run hands its line and figures over as well.
  EXPECT_EQ(run.result.strLine, run.texts[1]);
  ASSERT_EQ(run.result.aFigures.size(), 2u);
  EXPECT_EQ(run.result.aFigures[0].strName, "Time");
  EXPECT_EQ(run.result.aFigures[0].dValue, 2.5);
  EXPECT_EQ(run.result.aFigures[1].strName, "Res");
  EXPECT_EQ(run.result.dFrameMs.value_or(-1), 2.5);
  EXPECT_EQ(run.one.allocations,
            (std::vector<std::string>{"720x576/2880", "1920x1080/7680", "720x576/2880"}));
  ASSERT_EQ(run.one.calls.size(), 100u);
  const testing::EngineCall& c = run.one.calls.back();
  EXPECT_EQ(c.strName, "Img_ResizeARGB");
  EXPECT_EQ(c.src.dwFormat, PIX_ARGB32);
  EXPECT_EQ(c.src.iWidth, 720);
  EXPECT_EQ(c.src.iHeight, 576);
  EXPECT_EQ(c.src.iReserved0, 0);
  EXPECT_EQ(c.dst.iWidth, 1920);
  EXPECT_EQ(c.dst.iHeight, 1080);
  EXPECT_EQ(c.srcRect.right, 720);
  EXPECT_EQ(c.srcRect.bottom, 576);
  EXPECT_EQ(c.dstRect.left, 0);
  EXPECT_EQ(c.dstRect.right, 1920);
  EXPECT_EQ(c.dstRect.bottom, 1080);
  EXPECT_EQ(c.aArgs[0], 0);
  EXPECT_EQ(c.aArgs[1], 2);
}

TEST(CpuTestFamily, LastStatusOfTheLoopIsPrinted) {
  FamilyRun run;
  run.one.iStatus = 7;
  run.Run(1015, {0, 0});
  EXPECT_EQ(run.iRes, 7);
  EXPECT_EQ(run.texts[1],
            "Img_ResizeARGB Lin IPPMEM+BUFF RGB32 720x576 1920x1080 Time: 0.000 ms  Res=7");
  EXPECT_EQ(run.one.calls.size(), 100u);  // a failed call doesn't end the loop
}

TEST(CpuTestFamily, SpanIsAnUnsignedDifferenceAcrossTheClockWrap) {
  FamilyRun run;
  run.Run(1015, {0xFFFFFF00u, 0x00000100u});
  EXPECT_EQ(run.texts[1],
            "Img_ResizeARGB Lin IPPMEM+BUFF RGB32 720x576 1920x1080 Time: 5.120 ms  Res=0");
}

TEST(CpuTestFamily, ResizeSdHdSaysYuy2AndResizesArgbWithQualityOne) {
  FamilyRun run;
  run.Run(1006, {10, 260});
  EXPECT_EQ(run.texts[1], "Img_Resize YUY2 720x576 1920x1080 Time: 2.500 ms  Res=0");
  ASSERT_EQ(run.one.calls.size(), 100u);
  const testing::EngineCall& c = run.one.calls[0];
  EXPECT_EQ(c.strName, "Img_Resize");
  EXPECT_EQ(c.src.dwFormat, PIX_ARGB32);
  EXPECT_EQ(c.dst.dwFormat, PIX_ARGB32);
  EXPECT_EQ(c.iQuality, 1);
  EXPECT_EQ(c.pWork, nullptr);
  EXPECT_EQ(c.aArgs[0], 0);
}

TEST(CpuTestFamily, ResizeNCpuScalesSdToSdOnTheManyCpuEngineButSaysHd) {
  FamilyRun run;
  run.Run(1016, {0, 100});
  EXPECT_EQ(run.texts[1],
            "Img_ResizeARGB Lin Multi IPPMEM RGB32 720x576 1920x1080 Time: 1.000 ms  Res=0");
  EXPECT_TRUE(run.one.calls.empty());
  ASSERT_EQ(run.many.calls.size(), 100u);
  EXPECT_EQ(run.many.calls[0].dst.iWidth, 720);
  EXPECT_EQ(run.many.calls[0].dst.iHeight, 576);
  // Buffers still come from the one-CPU engine, which frees them too.
  EXPECT_EQ(run.one.allocations.size(), 3u);
  EXPECT_TRUE(run.many.allocations.empty());
  EXPECT_EQ(run.one.freed.size(), 3u);
  EXPECT_TRUE(run.many.freed.empty());
}

TEST(CpuTestFamily, HdSdLabelledNCpuRunsOnOneCpuDownscalingWithQuality64) {
  FamilyRun run;
  run.Run(1019, {0, 100});
  EXPECT_EQ(run.texts[1], "Img_Resize IPPMEM RGB32 720x576 1920x1080 LIN1 Time: 1.000 ms  Res=0");
  EXPECT_TRUE(run.many.calls.empty());
  ASSERT_EQ(run.one.calls.size(), 100u);
  const testing::EngineCall& c = run.one.calls[0];
  EXPECT_EQ(c.iQuality, 64);
  EXPECT_EQ(c.src.iWidth, 1920);
  EXPECT_EQ(c.dst.iWidth, 720);
  EXPECT_EQ(run.one.allocations,
            (std::vector<std::string>{"1920x1080/7680", "720x576/2880", "1920x1080/7680"}));
}

TEST(CpuTestFamily, Convert4PTurnsThePairAroundOnTheManyCpuEngine) {
  FamilyRun run;
  run.Run(1007, {0, 7});
  EXPECT_EQ(run.texts[1],
            "Img_Convert2 IPPMEM 4P 1920x1080 1920x1080 YUY2 RGB32 Time: 0.007 ms  Res=0");
  ASSERT_EQ(run.many.calls.size(), 1000u);
  const testing::EngineCall& c = run.many.calls[0];
  // Buffers are allocated source, destination, work; the call swaps the first two.
  EXPECT_EQ(c.strName, "Img_Convert2");
  EXPECT_EQ(c.src.dwFormat, PIX_ARGB32);
  EXPECT_EQ(c.dst.dwFormat, PIX_YUY2);
  EXPECT_FALSE(c.bFlag);
  EXPECT_NE(c.pWork, nullptr);
  EXPECT_NE(c.pWork, c.pSource);
  EXPECT_NE(c.pWork, c.pDestination);
  // The freeing order is source, destination, work: the call's source is the
  // second buffer freed and its destination the first.
  ASSERT_EQ(run.one.freed.size(), 3u);
  EXPECT_EQ(c.pSource, run.one.freed[1]);
  EXPECT_EQ(c.pDestination, run.one.freed[0]);
  EXPECT_EQ(c.pWork, run.one.freed[2]);
  // YUY2 pictures get ARGB-pitched buffers all the same.
  EXPECT_EQ(run.one.allocations,
            (std::vector<std::string>{"1920x1080/7680", "1920x1080/7680", "1920x1080/7680"}));
}

TEST(CpuTestFamily, Convert1PAndConvert1PBufWriteTheSameLineAndDifferInTheWorkBuffer) {
  FamilyRun plain;
  plain.Run(1008, {0, 1234567});
  FamilyRun buffered;
  buffered.Run(1009, {0, 1234567});
  EXPECT_EQ(plain.texts[1],
            "Img_Convert2 IPPMEM 1P 1920x1080 1920x1080 YUY2 RGB32 Time: 1234.567 ms  Res=0");
  EXPECT_EQ(plain.texts[1], buffered.texts[1]);
  ASSERT_EQ(plain.one.calls.size(), 1000u);
  ASSERT_EQ(buffered.one.calls.size(), 1000u);
  EXPECT_EQ(plain.one.calls[0].src.dwFormat, PIX_YUY2);
  EXPECT_EQ(plain.one.calls[0].dst.dwFormat, PIX_ARGB32);
  EXPECT_EQ(plain.one.calls[0].pSource, plain.one.freed[0]);
  EXPECT_EQ(plain.one.calls[0].pWork, nullptr);
  EXPECT_EQ(buffered.one.calls[0].pWork, buffered.one.freed[2]);
}

TEST(CpuTestFamily, MemCopyRunsTwoThousandRoundsOfOneHdFrame) {
  const CpuTestDef& def = *FindCpuTest(1033);
  EXPECT_EQ(def.iRounds, 2000);
  EXPECT_EQ(def.eCall, CpuCall::MemCopy);
  EXPECT_EQ(def.iSrcW * def.iSrcH * 4, 8294400);
}

// The copies themselves are slow at 8 MB each; ten rounds give the same
// quotient as 600 ms over 2000 rounds.
TEST(CpuTestFamily, MemCopyPrintsFpsFrameTimeAndMegabytesPerSecond) {
  FamilyRun run;
  run.Run(1033, {5000, 5003}, 10);
  EXPECT_EQ(run.texts[1],
            "1CPU  Mem copy  1920x1080  1920x1080  FPS=3333.333  FrameTime:0.300ms  "
            "MBSec=27648.000   Res=0");
  ASSERT_EQ(run.result.aFigures.size(), 4u);
  EXPECT_EQ(run.result.aFigures[0].strName, "FPS");
  EXPECT_EQ(run.result.aFigures[0].dValue, 3333.333);
  EXPECT_EQ(run.result.aFigures[1].strName, "FrameTime");
  EXPECT_EQ(run.result.aFigures[2].dValue, 27648.0);
  EXPECT_EQ(run.result.dFrameMs.value_or(-1), 0.3);
  EXPECT_TRUE(run.one.calls.empty());  // no engine call: the status stays 0
}

TEST(CpuTestFamily, MemCopyWithASpanOfZeroPrintsInfinity) {
  FamilyRun run;
  run.Run(1033, {42, 42}, 2);
  EXPECT_EQ(run.texts[1],
            "1CPU  Mem copy  1920x1080  1920x1080  FPS=inf  FrameTime:0.000ms  MBSec=inf   Res=0");
}

TEST(CpuTestFamily, FailedAllocationsStillWriteTheLineAndFreeNothing) {
  for (int iControl : CpuControls()) {
    FamilyRun run;
    run.one.bFailAllocations = true;
    run.Run(iControl, {0, 0}, 2);
    ASSERT_EQ(run.texts.size(), 2u) << iControl;
    EXPECT_NE(run.texts[1].find("Res=0"), std::string::npos) << iControl;
    EXPECT_TRUE(run.one.freed.empty()) << iControl;
    EXPECT_TRUE(run.many.freed.empty()) << iControl;
  }
}

TEST(CpuTestFamily, EveryMemberFreesItsThreeBuffersOnTheAllocatingEngine) {
  for (int iControl : CpuControls()) {
    FamilyRun run;
    run.Run(iControl, {0, 0}, 2);
    EXPECT_EQ(run.one.freed.size(), 3u) << iControl;
    EXPECT_TRUE(run.one.live.empty()) << iControl;
  }
}

}  // namespace
}  // namespace tachyrun
