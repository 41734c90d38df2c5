// The dialog on a machine without an OpenCL device (the ICD loader is pointed
// at an empty vendor directory): the GPU buttons show the engine's word for
// it, the effect test shows a non-zero status, the CPU tests carry on.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <cstdlib>
#include <sstream>

#include "app/HeadlessRunner.h"
#include "app/TachyrunDlg.h"

namespace tachyrun {
namespace {

TEST(NoDevice, DialogKeepsWorkingAndShowsTheStatusNumbers) {
  // Before the first OpenCL call of this process, which the dialog's start makes.
  QTemporaryDir noVendors;
  setenv("OCL_ICD_VENDORS", noVendors.path().toLocal8Bit().constData(), 1);
  CTachyrunDlg dlg;
  dlg.Create();
  dlg.LimitRoundsForTesting(2);
  dlg.RunControl(1021);
  dlg.RunControl(1022);
  EXPECT_FALSE(dlg.ControlText(1000).isEmpty());
  EXPECT_FALSE(dlg.ControlText(1001).isEmpty());
  dlg.RunControl(1017);
  const QString effect = dlg.ControlText(1012);
  EXPECT_TRUE(QRegularExpression("Time: \\d+\\.\\d{3} ms  Res=[1-9]\\d*$").match(effect).hasMatch())
      << effect.toStdString();
  dlg.RunControl(1015);
  EXPECT_TRUE(dlg.ControlText(1010).endsWith("  Res=0"));
  delete g_pTestImage;
  g_pTestImage = nullptr;
}

// A GPU test that can't run for want of a device makes the run fail (1); the
// CPU tests alone still pass (0).
TEST(NoDevice, HeadlessExitStatusIsOneWhenAGpuTestCouldNotRun) {
  QTemporaryDir noVendors;
  setenv("OCL_ICD_VENDORS", noVendors.path().toLocal8Bit().constData(), 1);
  RunnerOptions o;
  o.eMode = RunnerOptions::Mode::Run;
  o.aControls = {1016, 1021};
  o.eOutput = RunnerOptions::Output::Json;
  std::ostringstream out, err;
  EXPECT_EQ(RunHeadless(o, out, err), kExitTestFailed);
  EXPECT_NE(out.str().find("\"id\":1021"), std::string::npos) << out.str();
  EXPECT_NE(out.str().find("\"opencl_device\":\"\""), std::string::npos) << out.str();
  o.aControls = {1016};
  std::ostringstream cpuOut;
  EXPECT_EQ(RunHeadless(o, cpuOut, err), kExitAllPassed);
}

}  // namespace
}  // namespace tachyrun
