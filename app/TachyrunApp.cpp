#include "app/TachyrunApp.h"

#include "app/TachyrunDlg.h"

namespace tachyrun {

int CTachyrunApp::InitInstance() {
  // Common controls, container support: Qt's widgets need neither.
  SetRegistryKey(kRegistryKey);
  {
    CTachyrunDlg dlg;
    m_pMainWnd = &dlg;
    dlg.DoModal();  // its result means nothing here
    m_pMainWnd = nullptr;
  }
  return 0;
}

}  // namespace tachyrun
