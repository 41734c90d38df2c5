// The dialog's runs: RunControl finds a control's handler in the catalogue
// and runs it as a click does; the CPU and GPU handlers write their line and
// keep what they measured for RunControl's caller.
#include <QLineEdit>
#include <algorithm>

#include "app/TachyrunDlg.h"
#include "app/WaitCursor.h"
#include "measure/CpuTestFamily.h"
#include "measure/GpuCommands.h"
#include "platform/Clock.h"

namespace tachyrun {

std::optional<RunResult> CTachyrunDlg::RunControl(int iId) {
  const ControlDef* def = FindControl(iId);
  if (def == nullptr) return std::nullopt;
  m_LastRun = RunResult{iId, {}, {}, 0, std::nullopt};
  RunHandler(*def);
  return m_LastRun;
}

void CTachyrunDlg::RunHandler(const ControlDef& def) {
  switch (def.eHandler) {
    case Handler::ListTest:
      return OnListTest();
    case Handler::LockTest:
      return OnLockTest();
    case Handler::ResizeSdHd:
      return OnResizeSdHd();
    case Handler::Convert4P:
      return OnConvert4P();
    case Handler::Convert1P:
      return OnConvert1P();
    case Handler::Convert1PBuf:
      return OnConvert1PBuf();
    case Handler::ResizeArgb1Cpu:
      return OnResizeArgb1Cpu();
    case Handler::ResizeArgbNCpu:
      return OnResizeArgbNCpu();
    case Handler::ResizeHdSd:
      return OnResizeHdSd();
    case Handler::MemCopy:
      return OnMemCopy();
    case Handler::GpuTestSd:
      return OnGpuTestSd();
    case Handler::GpuTestHd:
      return OnGpuTestHd();
    case Handler::GpuCommand:
      return OnGpuCommand(def.iControl);
    case Handler::EffectTest:
      return OnEffectTest();
    case Handler::BrowseImage:
      return OnBrowseImage();
  }
}

void CTachyrunDlg::Deliver(const ControlDef& def, RunResult result) {
  result.iControl = def.iControl;
  m_LastRun = std::move(result);
}

CPixmill& CTachyrunDlg::Engine(EngineSlot eSlot) {
  switch (eSlot) {
    case EngineSlot::CpuN:
      return m_PixCpuN;
    case EngineSlot::GpuSd:
      return m_PixGpuSd;
    case EngineSlot::GpuHd:
      return m_PixGpuHd;
    case EngineSlot::Cpu1:
    case EngineSlot::None:
      break;
  }
  return m_PixCpu1;
}

void CTachyrunDlg::OnResizeSdHd() {
  RunCpu(ControlOf(Handler::ResizeSdHd));
}
void CTachyrunDlg::OnConvert4P() {
  RunCpu(ControlOf(Handler::Convert4P));
}
void CTachyrunDlg::OnConvert1P() {
  RunCpu(ControlOf(Handler::Convert1P));
}
void CTachyrunDlg::OnConvert1PBuf() {
  RunCpu(ControlOf(Handler::Convert1PBuf));
}
void CTachyrunDlg::OnResizeArgb1Cpu() {
  RunCpu(ControlOf(Handler::ResizeArgb1Cpu));
}
void CTachyrunDlg::OnResizeArgbNCpu() {
  RunCpu(ControlOf(Handler::ResizeArgbNCpu));
}
void CTachyrunDlg::OnResizeHdSd() {
  RunCpu(ControlOf(Handler::ResizeHdSd));
}
void CTachyrunDlg::OnMemCopy() {
  RunCpu(ControlOf(Handler::MemCopy));
}

// Buffers always come from the one-CPU engine; the call runs on the row's.
void CTachyrunDlg::RunCpu(const ControlDef& def) {
  CWaitCursor wait;
  const CpuTestDef& cpu = *def.pCpu;
  const int iRounds = m_iRoundLimit > 0 ? std::min(cpu.iRounds, m_iRoundLimit) : cpu.iRounds;
  Deliver(def, RunCpuTest(
                   cpu, iRounds, m_PixCpu1, Engine(def.eEngine),
                   [this, &def](const char* szLine) { SetResultText(def.iResultEdit, szLine); },
                   platform::TickCountMs));
}

void CTachyrunDlg::OnGpuTestSd() {
  RunGpu(ControlOf(Handler::GpuTestSd));
}
void CTachyrunDlg::OnGpuTestHd() {
  RunGpu(ControlOf(Handler::GpuTestHd));
}
void CTachyrunDlg::OnGpuCommand(int iControl) {
  RunGpu(*FindControl(iControl));
}

void CTachyrunDlg::RunGpu(const ControlDef& def) {
  CWaitCursor wait;
  Deliver(def, RunGpuCommand(def, Engine(def.eEngine), [this, &def](const char* szMsg) {
            SetResultText(def.iResultEdit, szMsg);
          }));
}

}  // namespace tachyrun
