#pragma once
// Records are packed, so their wider fields may sit unaligned: the tests read
// them as values (a leading unary +) before the assertion macros bind them.
//
// Helpers shared by the timeline tests: curves built from (role, time, value)
// triples and their read-back.

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "timeline/LevelPointList.h"

struct PointSpec {
  int8_t role;
  int64_t time;
  float value;
};

inline void Fill(CLevelPointList& list, std::initializer_list<PointSpec> points) {
  for (const PointSpec& p : points) list.Add(new CLevelPoint(p.role, p.time, p.value));
}

inline std::vector<int64_t> Times(CLevelPointList& list) {
  std::vector<int64_t> times;
  for (int32_t i = 0; i < list.GetCount(); ++i) times.push_back(list.GetAt(i)->iTime);
  return times;
}

inline std::vector<float> Values(CLevelPointList& list) {
  std::vector<float> values;
  for (int32_t i = 0; i < list.GetCount(); ++i) values.push_back(list.GetAt(i)->fValue);
  return values;
}
