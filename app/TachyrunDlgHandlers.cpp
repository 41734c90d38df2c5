// The test handlers of the dialog: each runs under a wait cursor and writes
// its line into one result edit.
#include <QLineEdit>
#include <algorithm>
#include <cstring>

#include "app/EffectTest.h"
#include "app/TachyrunDlg.h"
#include "app/WaitCursor.h"
#include "files/AppDirectories.h"
#include "platform/Clock.h"

namespace tachyrun {
namespace {

constexpr int kPathBytes = 260;
constexpr const char* kBrowseTitle = "Test Image";
constexpr const char* kBrowseFilter = "*.bmp";
// The chosen path comes back in a 200-byte buffer: a longer one is refused
// like a cancel.
constexpr size_t kBrowseFileBytes = 200;

}  // namespace

bool CTachyrunDlg::RunControl(int iId) {
  if (FindCpuTest(iId) != nullptr) {
    RunCpu(iId);
    return true;
  }
  switch (iId) {
    case 1005:
      OnListTest();
      return true;
    case 1020:
      OnLockTest();
      return true;
    case 1021:
      OnGpuTestSd();
      return true;
    case 1022:
      OnGpuTestHd();
      return true;
    case 1017:
      OnEffectTest();
      return true;
    case 1035:
      OnBrowseImage();
      return true;
    default:
      break;
  }
  if (FindGpuCommand(iId) != nullptr) {
    OnGpuCommand(iId);
    return true;
  }
  return false;
}

// OnListTest and OnLockTest are in ListLockTests.cpp.

void CTachyrunDlg::OnResizeSdHd() {
  RunCpu(1006);
}
void CTachyrunDlg::OnConvert4P() {
  RunCpu(1007);
}
void CTachyrunDlg::OnConvert1P() {
  RunCpu(1008);
}
void CTachyrunDlg::OnConvert1PBuf() {
  RunCpu(1009);
}
void CTachyrunDlg::OnResizeArgb1Cpu() {
  RunCpu(1015);
}
void CTachyrunDlg::OnResizeArgbNCpu() {
  RunCpu(1016);
}
void CTachyrunDlg::OnResizeHdSd() {
  RunCpu(1019);
}
void CTachyrunDlg::OnMemCopy() {
  RunCpu(1033);
}

void CTachyrunDlg::RunCpu(int iControl) {
  CWaitCursor wait;
  const CpuTestDef& def = *FindCpuTest(iControl);
  const int iRounds = m_iRoundLimit > 0 ? std::min(def.iRounds, m_iRoundLimit) : def.iRounds;
  CPixmill& call = def.eEngine == CpuEngine::Many ? m_PixCpuN : m_PixCpu1;
  RunCpuTest(
      def, iRounds, m_PixCpu1, call,
      [this, &def](const char* szLine) { SetResultText(def.iResultEdit, szLine); },
      platform::TickCountMs);
}

void CTachyrunDlg::OnGpuTestSd() {
  OnGpuCommand(1021);
}
void CTachyrunDlg::OnGpuTestHd() {
  OnGpuCommand(1022);
}

void CTachyrunDlg::OnGpuCommand(int iControl) {
  CWaitCursor wait;
  const GpuCommandDef& def = *FindGpuCommand(iControl);
  RunGpuCommand(def, def.bHdEngine ? m_PixGpuHd : m_PixGpuSd,
                [this, &def](const char* szMsg) { SetResultText(def.iResultEdit, szMsg); });
}

int CTachyrunDlg::LoadTestImage() {
  UpdateData(true);
  // A longer path is cut to the 259 characters the path buffer holds.
  char szPath[kPathBytes] = {};
  std::strncpy(szPath, m_strImageFile.c_str(), kPathBytes - 1);
  delete g_pTestImage;
  g_pTestImage = nullptr;
  g_pTestImage = CTestBitmap::FromFile(szPath);
  return static_cast<int>(g_pTestImage->GetHeight());
}

void CTachyrunDlg::OnEffectTest() {
  CWaitCursor wait;
  LoadTestImage();
  RunEffectTest(
      m_PixGpuSd, g_pTestImage, [this](const char* szLine) { SetResultText(1012, szLine); },
      platform::TickCountMs);
}

void CTachyrunDlg::OnBrowseImage() {
  CWaitCursor wait;
  UpdateData(true);
  // The file dialog may move the current directory; put it back afterwards.
  SaveCurrentDirectory(nullptr, nullptr);
  const std::string strStart = m_strImageFile;
  const std::optional<std::string> chosen = m_FileChooser(kBrowseTitle, strStart, kBrowseFilter);
  if (chosen.has_value() && chosen->size() < kBrowseFileBytes) {
    m_strImageFile = *chosen;
    UpdateData(false);
  }
  RestoreCurrentDirectory(nullptr, 0);
}

}  // namespace tachyrun
