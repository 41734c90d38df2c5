#include <gtest/gtest.h>

#include <set>

#include "measure/ControlCatalogue.h"
#include "measure/CpuTestFamily.h"

namespace tachyrun {
namespace {

TEST(ControlCatalogue, EveryButtonWithAHandlerIsListedOnceWithItsHandler) {
  std::set<int> ids;
  for (const ControlDef& def : Controls()) {
    EXPECT_TRUE(ids.insert(def.iControl).second) << def.iControl;
    EXPECT_EQ(FindControl(def.iControl), &def);
  }
  std::set<int> expected = {1005, 1006, 1007, 1008, 1009, 1035};
  for (int iId = 1015; iId <= 1033; ++iId) expected.insert(iId);
  EXPECT_EQ(ids, expected);
  EXPECT_EQ(FindControl(1000), nullptr);  // an edit runs nothing
  EXPECT_EQ(FindControl(1), nullptr);     // ">Quit" closes, it runs no test
}

TEST(ControlCatalogue, EachHandlerBelongsToItsControl) {
  const std::pair<Handler, int> handlers[] = {
      {Handler::ListTest, 1005},       {Handler::LockTest, 1020},
      {Handler::ResizeSdHd, 1006},     {Handler::Convert4P, 1007},
      {Handler::Convert1P, 1008},      {Handler::Convert1PBuf, 1009},
      {Handler::ResizeArgb1Cpu, 1015}, {Handler::ResizeArgbNCpu, 1016},
      {Handler::ResizeHdSd, 1019},     {Handler::MemCopy, 1033},
      {Handler::GpuTestSd, 1021},      {Handler::GpuTestHd, 1022},
      {Handler::GpuCommand, 1018},     {Handler::EffectTest, 1017},
      {Handler::BrowseImage, 1035}};
  for (const auto& [eHandler, iControl] : handlers) {
    EXPECT_EQ(ControlOf(eHandler).iControl, iControl);
  }
}

TEST(ControlCatalogue, CpuRowsRunOnTheirEnginesAndOnlyCpuRowsHaveAFamilyRow) {
  for (const ControlDef& def : Controls()) {
    const bool bCpu = def.eEngine == EngineSlot::Cpu1 || def.eEngine == EngineSlot::CpuN;
    EXPECT_EQ(def.pCpu != nullptr, bCpu) << def.iControl;
    EXPECT_EQ(FindCpuTest(def.iControl), def.pCpu);
  }
  EXPECT_EQ(FindControl(1007)->eEngine, EngineSlot::CpuN);
  EXPECT_EQ(FindControl(1016)->eEngine, EngineSlot::CpuN);
  EXPECT_EQ(FindControl(1019)->eEngine, EngineSlot::Cpu1);  // says NCpu, runs on one
  EXPECT_EQ(FindControl(1017)->eEngine, EngineSlot::GpuSd);
}

TEST(ControlCatalogue, SharedEditsAreThoseOfTheDesign) {
  // 1006, 1033 and 1022 all write edit 1001; 1005 and 1021 write 1000.
  EXPECT_EQ(FindControl(1006)->iResultEdit, 1001);
  EXPECT_EQ(FindControl(1033)->iResultEdit, 1001);
  EXPECT_EQ(FindControl(1022)->iResultEdit, 1001);
  EXPECT_EQ(FindControl(1005)->iResultEdit, 1000);
  EXPECT_EQ(FindControl(1021)->iResultEdit, 1000);
  EXPECT_EQ(FindControl(1017)->iResultEdit, 1012);
  for (const ControlDef& def : Controls()) EXPECT_NE(def.iResultEdit, 1013) << def.iControl;
}

TEST(ControlCatalogue, OnlyTheFileDialogNeedsAUserAndOnlyTheLockTestWaitsForARequest) {
  for (const ControlDef& def : Controls()) {
    const Headless expected = def.iControl == 1035   ? Headless::NeedsUser
                              : def.iControl == 1020 ? Headless::OnRequest
                                                     : Headless::Runs;
    EXPECT_EQ(def.eHeadless, expected) << def.iControl;
    EXPECT_NE(std::string(def.szMeasures), "") << def.iControl;
  }
}

}  // namespace
}  // namespace tachyrun
