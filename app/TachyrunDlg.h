#pragma once
// The test dialog (template 102). It owns the four engines; every test is a
// handler of a button that runs on the user-interface thread under a wait
// cursor and leaves one line in a read-only edit.

#include <QDialog>
#include <QIcon>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <thread>

#include "app/CpuTestFamily.h"
#include "app/GpuCommands.h"
#include "app/LockTest.h"
#include "app/TestBitmap.h"
#include "core/DataLock.h"
#include "engine/Pixmill.h"
#include "platform/Event.h"

class QLineEdit;
class QMenu;

namespace tachyrun {

// The bitmap of the last effect test; kept from one test to the next and
// never deleted by the dialog.
extern CTestBitmap* g_pTestImage;

class CTachyrunDlg : public QDialog, public CLockTestHost {
  Q_OBJECT

 public:
  // Asks the user for a file: title, start path, filter; nothing when cancelled.
  using FileChooser = std::function<std::optional<std::string>(
      const std::string& strTitle, const std::string& strStart, const std::string& strFilter)>;

  static constexpr const char* kInitialImageFile = "C:\\exp\\bitmap5.bmp";

  explicit CTachyrunDlg(QWidget* pParent = nullptr);
  ~CTachyrunDlg() override;

  // Starts the engines (once) and runs the dialog modally.
  int DoModal();
  // Starts the engines without showing the dialog; later calls do nothing.
  void Create();

  void OnSysCommand(unsigned nID, long lParam);
  QIcon OnQueryDragIcon() const { return m_hIcon; }
  // The about entry of the dialog's menu (the system menu's place here).
  QMenu* SystemMenu() const { return m_pSysMenu; }

  // The handler of control `iId`, as its click runs it; false for a control
  // without one.
  bool RunControl(int iId);
  QWidget* Control(int iId) const;
  QString ControlText(int iId) const;

  // Moves the path between edit 1034 and m_strImageFile: true reads the edit.
  void UpdateData(bool bSaveAndValidate);
  const std::string& ImageFile() const { return m_strImageFile; }

  void SetFileChooser(FileChooser chooser) { m_FileChooser = std::move(chooser); }
  // Tests only: caps the rounds of the CPU tests (0 = the real counts).
  void LimitRoundsForTesting(int iMaxRounds) { m_iRoundLimit = iMaxRounds; }

  // Handlers, by control.
  void OnListTest();                // 1005
  void OnLockTest();                // 1020
  void OnResizeSdHd();              // 1006
  void OnConvert4P();               // 1007
  void OnConvert1P();               // 1008
  void OnConvert1PBuf();            // 1009
  void OnResizeArgb1Cpu();          // 1015
  void OnResizeArgbNCpu();          // 1016
  void OnResizeHdSd();              // 1019
  void OnMemCopy();                 // 1033
  void OnGpuTestSd();               // 1021
  void OnGpuTestHd();               // 1022
  void OnGpuCommand(int iControl);  // 1018, 1023 to 1032
  void OnEffectTest();              // 1017
  void OnBrowseImage();             // 1035
  int LoadTestImage();

 protected:
  bool OnInitDialog();
  void DoDataExchange();
  void paintEvent(QPaintEvent* pEvent) override;
  void contextMenuEvent(QContextMenuEvent* pEvent) override;

 private:
  void ConnectHandlers();
  void RunCpu(int iControl);
  QLineEdit* ResultEdit(int iId) const;
  void SetResultText(int iEditId, const char* szText);

  // m_pTestLock, m_hStopEvent and m_hTestThread come from CLockTestHost.
  QIcon m_hIcon;
  CPixmill m_PixCpu1;
  CPixmill m_PixCpuN;
  CPixmill m_PixGpuSd;
  CPixmill m_PixGpuHd;
  QLineEdit* m_Result1000 = nullptr;
  QLineEdit* m_Result1001 = nullptr;
  QLineEdit* m_Result1002 = nullptr;
  QLineEdit* m_Result1003 = nullptr;
  QLineEdit* m_Result1004 = nullptr;
  QLineEdit* m_Result1010 = nullptr;
  QLineEdit* m_Result1011 = nullptr;
  QLineEdit* m_Result1012 = nullptr;
  QLineEdit* m_Result1013 = nullptr;
  QLineEdit* m_Result1014 = nullptr;
  std::string m_strImageFile = kInitialImageFile;

  std::map<int, QWidget*> m_Controls;
  QMenu* m_pSysMenu = nullptr;
  FileChooser m_FileChooser;
  int m_iRoundLimit = 0;
  bool m_bInitDone = false;
};

}  // namespace tachyrun
