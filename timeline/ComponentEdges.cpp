// Edge edits of a component. All of them work in frames of the default rate,
// so an edited edge always lands on a frame.

#include <algorithm>

#include "time/TimeCode.h"
#include "time/TimeMath.h"
#include "timeline/Component.h"
#include "timeline/ComponentKind.h"

namespace {

// Edge edits round scaled frame counts with a constant of their own.
constexpr double kEdgeRounding = 0.4999;

// Frame counts are kept within +-2^52 (millions of years), so that sums of
// a few of them can't overflow whatever times a file held.
constexpr int64_t kMaxFrames = int64_t{1} << 52;

int64_t Bounded(int64_t frames) {
  return std::clamp(frames, -kMaxFrames, kMaxFrames);
}

int64_t R(double x) {
  return Bounded(timemath::TruncToI64(x + kEdgeRounding));
}

int64_t Frames(double ms) { return Bounded(FramesAtDefaultRate(ms)); }

double Ms(int64_t frames) {
  return static_cast<double>(MillisecondsAtDefaultRate(static_cast<double>(frames)));
}

// The record's times in frames; the media, used length and in point also
// scaled to timeline frames (a speed of 0 counts as 1).
struct EdgeFrames {
  int64_t S, E, M, L, I;
  int64_t Ms, Ls, Is;
};

EdgeFrames ReadFrames(const CComponentData& c) {
  EdgeFrames f{};
  f.S = Frames(c.dStart);
  f.E = Frames(c.dEnd);
  f.M = Frames(c.dMediaLength);
  f.L = Frames(c.dSourceLength);
  f.I = Frames(c.dSourceIn);
  if (c.fSpeed == 0.0f) {
    f.Ms = f.M, f.Ls = f.L, f.Is = f.I;
  } else {
    f.Ms = R(static_cast<double>(f.M) / c.fSpeed);
    f.Ls = R(static_cast<double>(f.L) / c.fSpeed);
    f.Is = R(static_cast<double>(f.I) / c.fSpeed);
  }
  return f;
}

// Timeline frames back to source frames.
int64_t ToSource(int64_t frames, float speed) {
  return speed == 0.0f ? frames : R(static_cast<double>(frames) * speed);
}

}  // namespace

int64_t CComponent::SetFreeEnd(int64_t frames, int64_t startFrames) {
  // Free-length items restart their source at 0 with the new length.
  CTimeCode tc;
  tc.SetFrames(static_cast<double>(frames));
  const double edge = static_cast<double>(tc.GetMilliseconds());
  const int64_t readBack = Bounded(tc.GetFrames());
  dSourceLength = Ms(readBack - startFrames);
  dSourceIn = 0.0;
  if (iKind == componentkind::kKindKeyedVideo) FitKeyGroupsTo(timemath::TruncToI64(dSourceLength));
  return timemath::TruncToI64(edge);
}

int64_t CComponent::SetEnd(int64_t time) {
  if (time < 0) time = 0;
  int64_t E2 = Frames(static_cast<double>(time));
  const EdgeFrames f = ReadFrames(*this);
  if (!(E2 > f.S + 1)) E2 = f.S + 1;  // an item keeps at least one frame
  if (!componentkind::IsMediaBound(iKind)) {
    dEnd = static_cast<double>(SetFreeEnd(E2, f.S));
  } else if (cReverse == 0) {
    if (f.S - f.Is + f.Ms < E2) E2 = f.S - f.Is + f.Ms;  // not past the source's end
    int64_t O = f.Is + (E2 - f.S);
    if (O > f.Ms) O = f.Ms;
    const int64_t N = O - f.Is;
    dSourceLength = Ms(ToSource(N, fSpeed));
    dEnd = Ms(f.S + N);
  } else {
    // Played backwards, the right edge eats the source's beginning.
    if (f.E + f.Is < E2) E2 = f.E + f.Is;
    int64_t N = f.Ls - (f.E - E2);
    if (N >= f.Ms) N = f.Ms;
    int64_t J = f.Is + f.Ls - N;
    if (J < 0) J = 0;
    dSourceLength = Ms(ToSource(N, fSpeed));
    dSourceIn = Ms(ToSource(J, fSpeed));
    dEnd = Ms(E2);
  }
  return timemath::TruncToI64(dEnd);
}

int64_t CComponent::SetStart(int64_t time) {
  if (time < 0) time = 0;
  int64_t S2 = Frames(static_cast<double>(time));
  const EdgeFrames f = ReadFrames(*this);
  if (S2 >= f.E - 1) S2 = f.E - 1;
  if (!componentkind::IsMediaBound(iKind)) {
    CTimeCode tc;
    tc.SetFrames(static_cast<double>(S2));
    dStart = static_cast<double>(tc.GetMilliseconds());
    dSourceLength = Ms(f.E - Bounded(tc.GetFrames()));
    dSourceIn = 0.0;
    if (iKind == componentkind::kKindKeyedVideo) FitKeyGroupsTo(timemath::TruncToI64(dSourceLength));
    return timemath::TruncToI64(dStart);
  }
  int64_t N = 0;
  int64_t J = 0;
  if (cReverse == 0) {
    if (S2 < f.S - f.Is) S2 = f.S - f.Is;  // not before the first source frame
    N = f.E - S2;
    if (N >= f.Ms) N = f.Ms;
    J = f.Is + f.Ls - N;
  } else {
    const int64_t floor = f.S - (f.Ms - (f.Is + f.Ls));
    if (S2 < floor) S2 = floor;
    N = f.S - S2 + f.Ls;
    if (N >= f.Ms) N = f.Ms;
    J = f.Is;
  }
  if (J < 0) J = 0;
  dSourceLength = Ms(ToSource(N, fSpeed));
  dSourceIn = Ms(ToSource(J, fSpeed));
  dStart = Ms(f.E - N);
  return timemath::TruncToI64(dStart);
}

int64_t CComponent::StretchEnd(int64_t time) {
  if (time < 0) time = 0;
  int64_t E2 = Frames(static_cast<double>(time));
  const int64_t S = Frames(dStart);
  if (!(E2 > S + 1)) E2 = S + 1;
  if (componentkind::IsMediaBound(iKind)) {
    dEnd = Ms(E2);
    fSpeed = StretchSpeed(dSourceLength, dEnd - dStart);
  } else {
    CTimeCode tc;
    tc.SetFrames(static_cast<double>(E2));
    dEnd = static_cast<double>(tc.GetMilliseconds());
    dSourceLength = Ms(Bounded(tc.GetFrames()) - S);
    dSourceIn = 0.0;
  }
  return timemath::TruncToI64(dEnd);
}

int64_t CComponent::StretchStart(int64_t time) {
  if (time < 0) time = 0;
  int64_t S2 = Frames(static_cast<double>(time));
  const int64_t E = Frames(dEnd);
  if (S2 >= E - 1) S2 = E - 1;
  if (componentkind::IsMediaBound(iKind)) {
    dStart = Ms(S2);
    fSpeed = StretchSpeed(dSourceLength, dEnd - dStart);
  } else {
    CTimeCode tc;
    tc.SetFrames(static_cast<double>(S2));
    dStart = static_cast<double>(tc.GetMilliseconds());
    dSourceLength = Ms(E - Bounded(tc.GetFrames()));
    dSourceIn = 0.0;
  }
  return timemath::TruncToI64(dStart);
}

namespace {
// Longest length given the media's length m on the wanted clock: a video item
// always, and a rising item when it is longer, are bound by their own source length.
int64_t MaxLength(const CComponentData& c, double m) {
  if (c.iKind == componentkind::kKindRising && c.dSourceLength >= m) {
    return timemath::TruncToI64(c.dSourceLength);
  }
  if (c.iKind == componentkind::kKindVideoItem) return timemath::TruncToI64(c.dSourceLength);
  return timemath::TruncToI64(m);
}
}  // namespace

int64_t CComponent::GetTimelineMaxLength() const {
  return MaxLength(*this, fSpeed == 0.0f ? dMediaLength : dMediaLength / fSpeed);
}

int64_t CComponent::GetSourceMaxLength() const {
  return MaxLength(*this, dMediaLength);
}

namespace {
int64_t SourceFrameAt(const CComponentData& c, double time, double base) {
  const double d = (time - c.dStart) * c.fSpeed;
  double r = 0.0;
  if (c.cReverse != 0) {
    CTimeCode frame;
    frame.SetFrames(1.0);
    const double half = static_cast<double>(frame.GetMilliseconds()) / 2.0;
    r = c.dSourceIn + c.dSourceLength + base - d - half;
  } else {
    r = d + base + c.dSourceIn;
  }
  return FramesAtDefaultRate(r);
}
}  // namespace

int64_t CComponent::GetSourceFrame(double time) const {
  return SourceFrameAt(*this, time, 0.0);
}

int64_t CComponent::GetFileFrame(double time) const {
  return SourceFrameAt(*this, time, dSourceBase);
}

float StretchSpeed(double sourceLength, double timelineLength) {
  return timelineLength == 0.0 ? 1.0f : static_cast<float>(sourceLength / timelineLength);
}
