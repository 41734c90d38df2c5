#pragma once
// What one run of a control hands back to whoever asked for it: the line its
// edit shows, the figures of that line as numbers, the status and the time
// per frame, so that no caller has to read a line back and parse it again.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tachyrun {

struct Figure {
  std::string strName;  // as the line names it: "Time", "FPS", "Res"...
  double dValue;        // as the line shows it (three decimals, or inf)
};

struct RunResult {
  int iControl = 0;
  std::string strLine;  // empty for a control that shows nothing
  std::vector<Figure> aFigures;
  // The Res of the line, or the engine's result where the line shows none.
  int32_t iStatus = 0;
  // Milliseconds per frame (per round, per item for the list test), when the
  // run measures a time.
  std::optional<double> dFrameMs;
};

}  // namespace tachyrun
