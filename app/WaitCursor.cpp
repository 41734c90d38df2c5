#include "app/WaitCursor.h"

#include <QApplication>
#include <QCursor>

namespace tachyrun {

CWaitCursor::CWaitCursor() {
  QApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

CWaitCursor::~CWaitCursor() {
  QApplication::restoreOverrideCursor();
}

}  // namespace tachyrun
