// Component operations that work under a list's outer lock wait for a caller
// that holds it, and go on when it is released (bounded waits only).

#include <gtest/gtest.h>

#include "tests/support/LockWaits.h"
#include "timeline/Component.h"

namespace {

using testsupport::ExpectWaitsFor;

TEST(ComponentLocks, InitDefaultLevelsWaitsForOuterLockOfLevels) {
  CComponent c;
  c.iKind = 2;
  ExpectWaitsFor(c.m_Levels.m_OuterLock, [&] { c.InitDefaultLevels(); });
  EXPECT_EQ(c.m_Levels.GetCount(), 2);
}

TEST(ComponentLocks, RefitKeyGroupsWaitsForOuterLockOfEffects) {
  CComponent c;
  c.dMediaLength = 4000;
  auto* effect = new CEffect();
  effect->SetLength(1000);
  effect->AddKeyGroup("k", 0, 0, 0, 1);
  c.m_Effects.Add(effect);
  ExpectWaitsFor(c.m_Effects.m_OuterLock, [&] { c.RefitKeyGroups(); });
  EXPECT_EQ(+effect->m_KeyGroups.GetAt(0)->m_Levels.GetAt(1)->iTime, 4000);
}

TEST(ComponentLocks, TrimWaitsForOuterLockOfLevels) {
  CComponent c;
  c.m_Levels.Add(new CLevelPoint(kRoleInner, 5000, 1));
  ExpectWaitsFor(c.m_Levels.m_OuterLock, [&] { c.TrimLevelPoints(); });
  EXPECT_EQ(c.m_Levels.GetCount(), 0);
}

TEST(ComponentLocks, CopyFromWaitsForSourceMarkers) {
  CComponent source;
  source.m_Markers.Add(new CMarkerPoint(10, 1));
  CComponent copy;
  ExpectWaitsFor(source.m_Markers.m_OuterLock, [&] { copy.CopyFrom(source); });
  EXPECT_EQ(copy.m_Markers.GetCount(), 1);
}

TEST(ComponentLocks, EffectCopyWaitsForSourceKeyGroups) {
  CEffect source;
  source.AddKeyGroup("k", 0, 0, 0, 1);
  CEffect copy;
  ExpectWaitsFor(source.m_KeyGroups.m_OuterLock, [&] { copy.CopyFrom(source); });
  EXPECT_EQ(copy.m_KeyGroups.GetCount(), 1);
}

}  // namespace
