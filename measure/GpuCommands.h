#pragma once
// The GPU buttons: each hands its code to the engine's built-in test. Those
// with a result edit also fetch the engine's message and show it.

#include <cstdint>
#include <optional>
#include <string>

#include "measure/ControlCatalogue.h"
#include "measure/ResultLines.h"
#include "measure/RunResult.h"

namespace tachyrun {

inline constexpr int kTestMsgBuffer = 400;
inline constexpr int kTestMsgRequest = 150;

// The "N ms/frame" of an engine message, when it has one.
std::optional<double> FrameMsOfMessage(const std::string& strMessage);

// MakeTest(code) on `engine`; with a result edit, also the engine's message.
// The result's status is MakeTest's, which the dialog itself never shows.
template <class Engine, class SetText>
RunResult RunGpuCommand(const ControlDef& def, Engine& engine, SetText&& setText) {
  RunResult result;
  result.iStatus = engine.MakeTest(def.iGpuCode);
  if (def.iResultEdit == 0) return result;
  // Zeroed so that an engine that writes nothing shows an empty line rather
  // than stack bytes; the engine's own text is terminated within 150.
  char szMsg[kTestMsgBuffer] = {};
  engine.GetTestMsg(szMsg, kTestMsgRequest);
  szMsg[kTestMsgBuffer - 1] = '\0';
  setText(szMsg);
  result.strLine = szMsg;
  result.dFrameMs = FrameMsOfMessage(result.strLine);
  for (auto& [name, dValue] : ParseFigures(result.strLine))
    result.aFigures.push_back({name, dValue});
  if (result.dFrameMs) result.aFigures.push_back({"FrameTime", *result.dFrameMs});
  return result;
}

}  // namespace tachyrun
