#pragma once
// The about box (template 100): icon, name and an OK button.

#include <QDialog>

namespace tachyrun {

class CAboutDlg : public QDialog {
 public:
  explicit CAboutDlg(QWidget* pParent = nullptr);
  int DoModal();
};

}  // namespace tachyrun
