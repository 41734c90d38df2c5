// The dialog's handlers of the list test (1005) and the lock test (1020).

#include "app/ListTest.h"
#include "app/TachyrunDlg.h"
#include "app/WaitCursor.h"
#include "timeline/ComponentList.h"

namespace tachyrun {

void CTachyrunDlg::OnListTest() {
  CWaitCursor wait;
  // Built and destroyed with the handler, outside the timing; not used further.
  CComponent componentA;
  CComponent componentB;
  CComponentList listA;
  CComponentList listB;
  SetResultText(1000, "started...");
  const uint64_t dt = BuildAndReleaseComponents(listA, kListTestCount);
  char line[kListTestLineBytes];
  FormatListTestLine(line, kListTestCount, dt);
  SetResultText(1000, line);
}

void CTachyrunDlg::OnLockTest() {
  CWaitCursor wait;
  RunLockTest();
}

}  // namespace tachyrun
