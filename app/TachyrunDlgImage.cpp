// The effect test and the choice of its image file.
#include <cstring>

#include "app/TachyrunDlg.h"
#include "app/WaitCursor.h"
#include "files/AppDirectories.h"
#include "measure/EffectRun.h"
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
  const ControlDef& def = ControlOf(Handler::EffectTest);
  LoadTestImage();
  Deliver(def, RunEffectTest(
                   Engine(def.eEngine), g_pTestImage,
                   [this, &def](const char* szLine) { SetResultText(def.iResultEdit, szLine); },
                   platform::TickCountMs));
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
