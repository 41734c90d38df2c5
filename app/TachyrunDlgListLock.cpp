// The dialog's handlers of the list test and the lock test.

#include "app/TachyrunDlg.h"
#include "app/WaitCursor.h"
#include "measure/ListRun.h"

namespace tachyrun {

void CTachyrunDlg::OnListTest() {
  CWaitCursor wait;
  const ControlDef& def = ControlOf(Handler::ListTest);
  Deliver(def, RunListTest(
                   [this, &def](const char* szLine) { SetResultText(def.iResultEdit, szLine); }));
}

void CTachyrunDlg::OnLockTest() {
  CWaitCursor wait;
  RunLockTest();
}

}  // namespace tachyrun
