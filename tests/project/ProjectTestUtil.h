#pragma once
// Helpers of the project tests: components placed on a track in milliseconds
// (25 frames per second: 40 ms a frame).

#include <cstring>

#include "project/Track.h"

namespace projecttest {

inline CComponent* AddComponent(CComponentList& list, double startMs, double endMs,
                                int32_t kind = 1) {
  auto* component = new CComponent;
  component->iKind = kind;
  component->dStart = startMs;
  component->dEnd = endMs;
  list.Add(component);
  return component;
}

// Milliseconds of a frame count at the default rate.
constexpr double Ms(int64_t frames) {
  return static_cast<double>(frames) * 40.0;
}

}  // namespace projecttest
