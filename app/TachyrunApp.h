#pragma once
// The application object: it runs the test dialog modally and leaves, so the
// dialog's own loop is the program's only main loop.

#include <QWidget>

namespace tachyrun {

class CTachyrunApp {
 public:
  static constexpr const char* kRegistryKey =
      "Applicazioni locali generate tramite la Creazione guidata di applicazioni locali";

  CTachyrunApp() = default;
  CTachyrunApp(const CTachyrunApp&) = delete;
  CTachyrunApp& operator=(const CTachyrunApp&) = delete;

  // Runs the dialog and returns 0; needs the QApplication to exist.
  int InitInstance();

  // Kept as the framework keeps it; nothing in the program reads the profile.
  void SetRegistryKey(const char* szKey) { m_pszRegistryKey = szKey; }
  const char* RegistryKey() const { return m_pszRegistryKey; }
  // The dialog while InitInstance runs it, else null.
  QWidget* MainWnd() const { return m_pMainWnd; }

 private:
  const char* m_pszRegistryKey = nullptr;
  QWidget* m_pMainWnd = nullptr;
};

extern CTachyrunApp theApp;

}  // namespace tachyrun
