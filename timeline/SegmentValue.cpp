#include "timeline/SegmentValue.h"

#include <cmath>

#include "time/TimeMath.h"

namespace {

// sin(atan(q)), with the angle and the sine each narrowed to float.
float AngleStep(double q) {
  const float a = static_cast<float>(std::atan(q));
  return static_cast<float>(std::sin(static_cast<double>(a)));
}

double Rise(double diff, bool bWholeRise) {
  return bWholeRise ? static_cast<double>(timemath::TruncToI64(diff)) : diff;
}

}  // namespace

float SegmentValue(int64_t t, int64_t t0, float y0, int64_t t1, float y1, bool bWholeRise) {
  if (y0 == y1) return y1;
  if (t1 == t0) return static_cast<float>((static_cast<double>(y0) + y1) / 2.0);
  const double d = static_cast<double>(timemath::SatSub(t1, t0));
  if (y1 > y0) {
    const float s = AngleStep(Rise(static_cast<double>(y1) - y0, bWholeRise) / d);
    return static_cast<float>(s * static_cast<double>(timemath::SatSub(t, t0)) + y0);
  }
  const float s = AngleStep(Rise(static_cast<double>(y0) - y1, bWholeRise) / d);
  return static_cast<float>(s * static_cast<double>(timemath::SatSub(t1, t)) + y1);
}
