#pragma once
// The GPU buttons: each hands a code to the engine's built-in test. Two of
// them also fetch the engine's message and show it.

#include <cstring>
#include <span>

namespace tachyrun {

struct GpuCommandDef {
  int iControl;
  const char* szLabel;
  int iCode;
  bool bHdEngine;   // m_PixGpuHd, else m_PixGpuSd
  int iResultEdit;  // 0: shows nothing
  const char* szMeasures;
};

inline constexpr int kTestMsgBuffer = 400;
inline constexpr int kTestMsgRequest = 150;

std::span<const GpuCommandDef> GpuCommands();
const GpuCommandDef* FindGpuCommand(int iControl);

// MakeTest(code) on `engine`; with a result edit, also the engine's message.
template <class Engine, class SetText>
void RunGpuCommand(const GpuCommandDef& def, Engine& engine, SetText&& setText) {
  engine.MakeTest(def.iCode);
  if (def.iResultEdit == 0) return;
  // Zeroed so that an engine that writes nothing shows an empty line rather
  // than stack bytes; the engine's own text is terminated within 150.
  char szMsg[kTestMsgBuffer] = {};
  engine.GetTestMsg(szMsg, kTestMsgRequest);
  szMsg[kTestMsgBuffer - 1] = '\0';
  setText(szMsg);
}

}  // namespace tachyrun
