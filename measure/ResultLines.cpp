#include "measure/ResultLines.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace tachyrun {

float TimePerRound(uint32_t dwSpanMs, int iRounds) {
  const uint64_t qwSpan = dwSpanMs;
  return static_cast<float>(static_cast<double>(qwSpan) / static_cast<double>(iRounds));
}

MemCopyFigures ComputeMemCopyFigures(uint32_t dwSpanMs, int iRounds, int32_t iBytes) {
  MemCopyFigures figures{};
  figures.fFrameTime = TimePerRound(dwSpanMs, iRounds);
  // No guard against a frame time of 0: the division yields inf, as printed.
  figures.fFps = static_cast<float>(1000.0 / static_cast<double>(figures.fFrameTime));
  const double dMBSec = static_cast<double>(iBytes) * static_cast<double>(figures.fFps) / 1000000.0;
  figures.fMBSec = static_cast<float>(dMBSec);
  return figures;
}

void FormatTimeLine(char (&szLine)[kLineSize], const char* szFormat, float fTime, int32_t iRes) {
  std::snprintf(szLine, kLineSize, szFormat, static_cast<double>(fTime), iRes);
}

void FormatMemCopyLine(char (&szLine)[kLineSize], const MemCopyFigures& figures, int32_t iRes) {
  std::snprintf(szLine, kLineSize, kMemCopyLineFormat, static_cast<double>(figures.fFps),
                static_cast<double>(figures.fFrameTime), static_cast<double>(figures.fMBSec), iRes);
}

double ShownValue(double dValue) {
  char szText[64];
  std::snprintf(szText, sizeof szText, "%.3f", dValue);
  return std::strtod(szText, nullptr);
}

RunResult TimeLineResult(char (&szLine)[kLineSize], const char* szFormat, float fTime,
                         int32_t iRes) {
  FormatTimeLine(szLine, szFormat, fTime, iRes);
  const double dTime = ShownValue(fTime);
  return RunResult{0, szLine, {{"Time", dTime}, {"Res", static_cast<double>(iRes)}}, iRes, dTime};
}

RunResult MemCopyResult(char (&szLine)[kLineSize], const MemCopyFigures& figures, int32_t iRes) {
  FormatMemCopyLine(szLine, figures, iRes);
  const double dFrameTime = ShownValue(figures.fFrameTime);
  return RunResult{0,
                   szLine,
                   {{"FPS", ShownValue(figures.fFps)},
                    {"FrameTime", dFrameTime},
                    {"MBSec", ShownValue(figures.fMBSec)},
                    {"Res", static_cast<double>(iRes)}},
                   iRes,
                   dFrameTime};
}

namespace {

// Reads a number (or inf/nan) at `pos`; npos when there is none.
size_t ReadNumber(const std::string& s, size_t pos, double& dValue) {
  const char* begin = s.c_str() + pos;
  char* end = nullptr;
  dValue = std::strtod(begin, &end);
  if (end == begin) return std::string::npos;
  return pos + static_cast<size_t>(end - begin);
}

}  // namespace

std::vector<std::pair<std::string, double>> ParseFigures(const std::string& strLine) {
  std::vector<std::pair<std::string, double>> figures;
  size_t i = 0;
  while (i < strLine.size()) {
    if (!std::isalpha(static_cast<unsigned char>(strLine[i]))) {
      ++i;
      continue;
    }
    size_t nameEnd = i;
    while (nameEnd < strLine.size() && std::isalnum(static_cast<unsigned char>(strLine[nameEnd])))
      ++nameEnd;
    size_t p = nameEnd;
    if (p < strLine.size() && (strLine[p] == '=' || strLine[p] == ':')) {
      ++p;
      while (p < strLine.size() && strLine[p] == ' ') ++p;
      double dValue = 0;
      const size_t after = p < strLine.size() ? ReadNumber(strLine, p, dValue) : std::string::npos;
      if (after != std::string::npos) {
        figures.emplace_back(strLine.substr(i, nameEnd - i), dValue);
        nameEnd = after;
      }
    }
    i = nameEnd;
  }
  return figures;
}

}  // namespace tachyrun
