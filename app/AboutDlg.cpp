#include "app/AboutDlg.h"

#include <QPushButton>

#include "app/AppIcon.h"
#include "app/DialogBuilder.h"

namespace tachyrun {

CAboutDlg::CAboutDlg(QWidget* pParent) : QDialog(pParent) {
  const auto controls = BuildDialog(*this, AboutDialogTemplate(), LoadAppIcon());
  auto* ok = static_cast<QPushButton*>(controls.at(kIdOk));
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
}

int CAboutDlg::DoModal() {
  return exec();
}

}  // namespace tachyrun
