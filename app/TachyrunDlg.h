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

#include "app/TestBitmap.h"
#include "engine/Pixmill.h"
#include "measure/ControlCatalogue.h"
#include "measure/LockRun.h"
#include "measure/RunResult.h"

class QLineEdit;
class QMenu;

namespace tachyrun {

// The bitmap of the last effect test; kept from one test to the next and
// never deleted by the dialog.
extern CTestBitmap* g_pTestImage;

class CTachyrunDlg : public QDialog, public CLockRun {
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

  // Runs the handler of control `iId`, as its click does, and hands back what
  // it measured; nothing for a control without a handler.
  std::optional<RunResult> RunControl(int iId);
  QWidget* Control(int iId) const;
  QString ControlText(int iId) const;

  // Moves the path between edit 1034 and m_strImageFile: true reads the edit.
  void UpdateData(bool bSaveAndValidate);
  const std::string& ImageFile() const { return m_strImageFile; }

  void SetFileChooser(FileChooser chooser) { m_FileChooser = std::move(chooser); }
  // Tests only: caps the rounds of the CPU tests (0 = the real counts).
  void LimitRoundsForTesting(int iMaxRounds) { m_iRoundLimit = iMaxRounds; }

  // The handlers; the catalogue (measure/ControlCatalogue.cpp) says which
  // control runs which.
  void OnListTest();
  void OnLockTest();
  void OnResizeSdHd();
  void OnConvert4P();
  void OnConvert1P();
  void OnConvert1PBuf();
  void OnResizeArgb1Cpu();
  void OnResizeArgbNCpu();
  void OnResizeHdSd();
  void OnMemCopy();
  void OnGpuTestSd();
  void OnGpuTestHd();
  void OnGpuCommand(int iControl);
  void OnEffectTest();
  void OnBrowseImage();
  int LoadTestImage();

 protected:
  bool OnInitDialog();
  void DoDataExchange();
  void paintEvent(QPaintEvent* pEvent) override;
  void contextMenuEvent(QContextMenuEvent* pEvent) override;

 private:
  void ConnectHandlers();
  void RunHandler(const ControlDef& def);
  void RunCpu(const ControlDef& def);
  void RunGpu(const ControlDef& def);
  CPixmill& Engine(EngineSlot eSlot);
  // Keeps what a handler measured for RunControl's caller.
  void Deliver(const ControlDef& def, RunResult result);
  QLineEdit* ResultEdit(int iId) const;
  // The whole text goes to the tooltip when the edit is too narrow for it.
  void SetResultText(int iEditId, const char* szText);

  // m_pTestLock, m_hStopEvent and m_hTestThread come from CLockRun.
  QIcon m_hIcon;
  CPixmill m_PixCpu1;
  CPixmill m_PixCpuN;
  CPixmill m_PixGpuSd;
  CPixmill m_PixGpuHd;
  std::string m_strImageFile = kInitialImageFile;

  std::map<int, QWidget*> m_Controls;
  QMenu* m_pSysMenu = nullptr;
  FileChooser m_FileChooser;
  RunResult m_LastRun;
  int m_iRoundLimit = 0;
  bool m_bInitDone = false;
};

}  // namespace tachyrun
