#pragma once
// Result lines of the tests: the arithmetic from a measured millisecond span
// to the figures, and the formatting into the 200-byte line each test writes.

#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "measure/RunResult.h"

namespace tachyrun {

inline constexpr int kLineSize = 200;
inline constexpr const char* kStartedText = "started...";
// Shared by the SD-to-HD resize and the effect test, whose line names the
// resize although it renders a perspective: the words stay comparable.
inline constexpr const char* kResizeArgbLineFormat =
    "Img_ResizeARGB Lin IPPMEM+BUFF RGB32 720x576 1920x1080 Time: %03.3f ms  Res=%d";
// Takes FPS, frame time, MB/s (%f each) and the status (%d).
inline constexpr const char* kMemCopyLineFormat =
    "1CPU  Mem copy  1920x1080  1920x1080  FPS=%3.3f  FrameTime:%03.3fms  MBSec=%3.3f   Res=%d";

// Time per round in ms: the u32 span widened to 64 bits, divided by the
// rounds, rounded to a 32-bit float.
float TimePerRound(uint32_t dwSpanMs, int iRounds);

struct MemCopyFigures {
  float fFrameTime;  // ms
  float fFps;
  float fMBSec;
};
// Figures of the memory copy test; a span of 0 gives a frame time of 0 and
// infinite FPS and MB/s, printed as "inf".
MemCopyFigures ComputeMemCopyFigures(uint32_t dwSpanMs, int iRounds, int32_t iBytes);

// Writes "started..." through the line buffer, as every timed test does
// before its loop.
template <class SetText>
void WriteStarted(char (&szLine)[kLineSize], SetText&& setText) {
  std::snprintf(szLine, kLineSize, "%s", kStartedText);
  setText(szLine);
}

// `szFormat` takes the time (%f) and the status (%d).
void FormatTimeLine(char (&szLine)[kLineSize], const char* szFormat, float fTime, int32_t iRes);
void FormatMemCopyLine(char (&szLine)[kLineSize], const MemCopyFigures& figures, int32_t iRes);

// `fValue` as a line prints it with three decimals ("inf" stays infinite).
double ShownValue(double dValue);

// The line of a timed test in `szLine`, and the run's result: figures "Time"
// and "Res", the status, the time as the frame time.
RunResult TimeLineResult(char (&szLine)[kLineSize], const char* szFormat, float fTime,
                         int32_t iRes);
// The memory copy line in `szLine`, with figures "FPS", "FrameTime", "MBSec"
// and "Res".
RunResult MemCopyResult(char (&szLine)[kLineSize], const MemCopyFigures& figures, int32_t iRes);

// Every "Name=number", "Name: number" or "Name:numberms" figure of a line, in
// order, e.g. {"Time", 2.5}, {"Res", 0}; "inf" and "nan" are read as such.
std::vector<std::pair<std::string, double>> ParseFigures(const std::string& strLine);

}  // namespace tachyrun
