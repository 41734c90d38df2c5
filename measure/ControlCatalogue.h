#pragma once
// The one catalogue of the dialog's controls that run something: id, label,
// the handler its click runs, the engine of the work, the result edit and
// what it measures. The dialog, --list, the headless refusals and the result
// writers all read this table; nothing else lists control ids.

#include <span>

namespace tachyrun {

struct CpuTestDef;

// The dialog's handlers, one per kind of click.
enum class Handler {
  ListTest,
  LockTest,
  ResizeSdHd,
  Convert4P,
  Convert1P,
  Convert1PBuf,
  ResizeArgb1Cpu,
  ResizeArgbNCpu,
  ResizeHdSd,
  MemCopy,
  GpuTestSd,
  GpuTestHd,
  GpuCommand,
  EffectTest,
  BrowseImage,
};

// Which of the dialog's four engines does the work.
enum class EngineSlot { None, Cpu1, CpuN, GpuSd, GpuHd };

// What the headless runner does with a control.
enum class Headless {
  Runs,
  OnRequest,  // the lock test: runs only with --allow-lock-test
  NeedsUser,  // the file dialog: never
};

struct ControlDef {
  int iControl;
  const char* szLabel;
  Handler eHandler;
  EngineSlot eEngine;  // of the call; CPU buffers always come from m_PixCpu1
  int iResultEdit;     // 0: shows nothing
  Headless eHeadless;
  const CpuTestDef* pCpu;  // the CPU family's row, else null
  int iGpuCode;            // MakeTest code of a GPU button, else 0
  const char* szMeasures;  // one line for --list and the docs
};

inline constexpr int kImageEditControl = 1034;

std::span<const ControlDef> Controls();
// Null for an id that runs nothing.
const ControlDef* FindControl(int iControl);
// The control whose click runs `eHandler` (the first one for GpuCommand).
const ControlDef& ControlOf(Handler eHandler);

}  // namespace tachyrun
