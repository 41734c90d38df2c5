// The dialog on a machine without an OpenCL device (the ICD loader is pointed
// at an empty vendor directory): the GPU buttons show the engine's word for
// it, the effect test shows a non-zero status, the CPU tests carry on.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTemporaryDir>
#include <cstdlib>

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

}  // namespace
}  // namespace tachyrun
