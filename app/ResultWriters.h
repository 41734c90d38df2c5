#pragma once
// The headless runner's machine-readable outputs.
//
// JSON Lines: one object per line. The first names the machine,
//   {"machine":{"cpu":…,"cores":…,"memory_bytes":…,"kernel":…,
//    "opencl_device":…,"opencl_driver":…,"version":…,"utc":…}}
// and each control that ran adds
//   {"id":1033,"label":"CPU 1920x1080","line":…,"status":0,"figures":{…}}.
//
// OpenMetrics text: the families tachyrun_machine_info, tachyrun_run_timestamp_seconds,
// tachyrun_frame_ms and tachyrun_status, each sample labelled test="<id>"
// and label="<button label>", ended by "# EOF". Families must not be split,
// so this is written once, after the last control.

#include <iosfwd>
#include <string>
#include <vector>

#include "measure/ControlCatalogue.h"
#include "measure/MachineInfo.h"
#include "measure/RunResult.h"

namespace tachyrun {

// JSON string literal of `s`, quotes included.
std::string JsonQuote(const std::string& s);

void WriteJsonMachine(std::ostream& out, const MachineInfo& machine);
void WriteJsonResult(std::ostream& out, const ControlDef& control, const RunResult& result);

// `s` escaped for an OpenMetrics label value (backslash, quote, newline).
std::string MetricLabelValue(const std::string& s);

void WriteOpenMetrics(std::ostream& out, const MachineInfo& machine,
                      const std::vector<RunResult>& results);

}  // namespace tachyrun
