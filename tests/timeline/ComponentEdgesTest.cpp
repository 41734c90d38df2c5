// The four edge edits over kinds 1, 2, 4, 5, 10 x speeds 0, 0.5, 1, 2 x
// reverse off/on, from one base item:
//   dStart 4000 (S = 100 frames at 25 fps), dEnd 8000 (E = 200),
//   dSourceIn 2000 (I = 50), dSourceLength 4000 (L = 100),
//   dMediaLength 12000 (M = 300).
// Scaled to the timeline, R(x) = trunc(x + 0.4999), speed 0 as 1:
//   speed 0 and 1: Ms 300, Ls 100, Is 50
//   speed 0.5:     Ms R(600) = 600, Ls R(200) = 200, Is R(100) = 100
//   speed 2:       Ms R(150) = 150, Ls R(50) = 50,  Is R(25) = 25
// Targets: SetEnd(20000) E2 = 500, SetStart(0) S2 = 0, StretchEnd(10000)
// E2 = 250, StretchStart(2000) S2 = 50. ms(n) = n x 40.
// Kinds 1 and 2 are bound by their media; 4, 5 and 10 are free length and
// don't look at speed or direction (no key groups here, so kind 5's refit
// has nothing to do).

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "timeline/Component.h"

namespace {

enum class Op { SetEnd, SetStart, StretchEnd, StretchStart };

struct Expected {
  int64_t result;
  double dStart, dEnd, dSourceIn, dSourceLength;
  float fSpeed;  // NAN: the speed stays what it was
};

// Free-length kinds, any speed and direction.
Expected FreeLength(Op op) {
  switch (op) {
    case Op::SetEnd:
      // dEnd = ms(500); source = ms(500 - 100) = 16000 from 0.
      return {20000, 4000, 20000, 0, 16000, NAN};
    case Op::SetStart:
      // dStart = ms(0); source = ms(200 - 0) = 8000 from 0.
      return {0, 0, 8000, 0, 8000, NAN};
    case Op::StretchEnd:
      // dEnd = ms(250); source = ms(250 - 100) = 6000 from 0.
      return {10000, 4000, 10000, 0, 6000, NAN};
    case Op::StretchStart:
      // dStart = ms(50); source = ms(200 - 50) = 6000 from 0.
      return {2000, 2000, 8000, 0, 6000, NAN};
  }
  return {};
}

// Media-bound kinds 1 and 2.
Expected MediaBound(Op op, float speed, bool reverse) {
  const bool asOne = speed == 0.0f || speed == 1.0f;
  switch (op) {
    case Op::StretchEnd:
      // dEnd = ms(250) = 10000; fSpeed = 4000 / (10000 - 4000); source kept.
      return {10000, 4000, 10000, 2000, 4000, static_cast<float>(4000.0 / 6000.0)};
    case Op::StretchStart:
      // dStart = ms(50) = 2000; fSpeed = 4000 / (8000 - 2000); source kept.
      return {2000, 2000, 8000, 2000, 4000, static_cast<float>(4000.0 / 6000.0)};
    case Op::SetEnd:
      if (!reverse) {
        // E2 = min(500, S - Is + Ms); O = Is + (E2 - S) capped at Ms; N = O - Is;
        // source = ms(speed 0 ? N : R(N x speed)); dEnd = ms(S + N).
        // 1, 0: E2 = min(500, 350) = 350; O = 300; N = 250; source 250 -> 10000; dEnd ms(350).
        if (asOne) return {14000, 4000, 14000, 2000, 10000, NAN};
        // 0.5: E2 = min(500, 600) = 500; O = 500; N = 400; source R(200) -> 8000; dEnd ms(500).
        if (speed == 0.5f) return {20000, 4000, 20000, 2000, 8000, NAN};
        // 2: E2 = min(500, 225) = 225; O = 150; N = 125; source R(250) -> 10000; dEnd ms(225).
        return {9000, 4000, 9000, 2000, 10000, NAN};
      }
      // E2 = min(500, E + Is); N = Ls - (E - E2) capped at Ms; J = Is + Ls - N
      // floored at 0; source ms(Nb), in ms(Jb), dEnd ms(E2).
      // 1, 0: E2 = 250; N = 100 + 50 = 150; J = 0 -> 6000 from 0; dEnd ms(250).
      if (asOne) return {10000, 4000, 10000, 0, 6000, NAN};
      // 0.5: E2 = 300; N = 200 + 100 = 300; J = 0; Nb = R(150) -> 6000; dEnd ms(300).
      if (speed == 0.5f) return {12000, 4000, 12000, 0, 6000, NAN};
      // 2: E2 = 225; N = 50 + 25 = 75; J = 0; Nb = R(150) -> 6000; dEnd ms(225).
      return {9000, 4000, 9000, 0, 6000, NAN};
    case Op::SetStart:
      if (!reverse) {
        // S2 = max(0, S - Is); N = E - S2 capped at Ms; J = Is + Ls - N floored
        // at 0; source ms(Nb), in ms(Jb), dStart ms(E - N).
        // 1, 0: S2 = 50; N = 150; J = 0; dStart ms(50).
        if (asOne) return {2000, 2000, 8000, 0, 6000, NAN};
        // 0.5: S2 = 0; N = 200; J = 100; Nb = R(100) -> 4000; Jb = R(50) -> 2000; dStart ms(0).
        if (speed == 0.5f) return {0, 0, 8000, 2000, 4000, NAN};
        // 2: S2 = 75; N = 125; J = -50 -> 0; Nb = R(250) -> 10000; dStart ms(75).
        return {3000, 3000, 8000, 0, 10000, NAN};
      }
      // S2 = max(0, S - (Ms - (Is + Ls))); N = S - S2 + Ls capped at Ms; J = Is.
      // 1, 0: floor -50 -> S2 = 0; N = 200; J = 50; dStart ms(0).
      if (asOne) return {0, 0, 8000, 2000, 8000, NAN};
      // 0.5: floor -200 -> S2 = 0; N = 300; J = 100; Nb = R(150) -> 6000;
      // Jb = R(50) -> 2000; dStart = ms(200 - 300) = -4000.
      if (speed == 0.5f) return {-4000, -4000, 8000, 2000, 6000, NAN};
      // 2: floor 25 -> S2 = 25; N = 125; J = 25; Nb = R(250) -> 10000;
      // Jb = R(50) -> 2000; dStart ms(75).
      return {3000, 3000, 8000, 2000, 10000, NAN};
  }
  return {};
}

struct EdgeCase {
  int32_t kind;
  float speed;
  bool reverse;
  Op op;
};

std::string Name(const testing::TestParamInfo<EdgeCase>& info) {
  static const char* kOps[] = {"SetEnd", "SetStart", "StretchEnd", "StretchStart"};
  const EdgeCase& c = info.param;
  return std::string(kOps[static_cast<int>(c.op)]) + "_kind" + std::to_string(c.kind) + "_speed" +
         std::to_string(static_cast<int>(c.speed * 10)) + (c.reverse ? "_reverse" : "_forward");
}

class EdgeTable : public testing::TestWithParam<EdgeCase> {};

TEST_P(EdgeTable, LandsWhereDerived) {
  const EdgeCase& c = GetParam();
  CComponent item;
  item.iKind = c.kind;
  item.fSpeed = c.speed;
  item.cReverse = c.reverse ? 1 : 0;
  item.dStart = 4000;
  item.dEnd = 8000;
  item.dSourceIn = 2000;
  item.dSourceLength = 4000;
  item.dMediaLength = 12000;
  const bool bound = c.kind == 1 || c.kind == 2;
  const Expected want = bound ? MediaBound(c.op, c.speed, c.reverse) : FreeLength(c.op);
  int64_t result = 0;
  switch (c.op) {
    case Op::SetEnd:
      result = item.SetEnd(20000);
      break;
    case Op::SetStart:
      result = item.SetStart(0);
      break;
    case Op::StretchEnd:
      result = item.StretchEnd(10000);
      break;
    case Op::StretchStart:
      result = item.StretchStart(2000);
      break;
  }
  EXPECT_EQ(result, want.result);
  EXPECT_EQ(+item.dStart, +want.dStart);
  EXPECT_EQ(+item.dEnd, +want.dEnd);
  EXPECT_EQ(+item.dSourceIn, +want.dSourceIn);
  EXPECT_EQ(+item.dSourceLength, +want.dSourceLength);
  EXPECT_EQ(+item.fSpeed, std::isnan(+want.fSpeed) ? c.speed : +want.fSpeed);
}

std::vector<EdgeCase> AllCases() {
  std::vector<EdgeCase> cases;
  for (int32_t kind : {1, 2, 4, 5, 10})
    for (float speed : {0.0f, 0.5f, 1.0f, 2.0f})
      for (bool reverse : {false, true})
        for (Op op : {Op::SetEnd, Op::SetStart, Op::StretchEnd, Op::StretchStart})
          cases.push_back({kind, speed, reverse, op});
  return cases;
}

INSTANTIATE_TEST_SUITE_P(AllKinds, EdgeTable, testing::ValuesIn(AllCases()), Name);

}  // namespace
