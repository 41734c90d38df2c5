// Probes built between the program's global objects, at the gaps of the start
// order, record what was already there. The configuration record and the
// component list are constant-initialised, so they are ready before any
// constructor runs; the id generator is built at its place in the order.
#include <gtest/gtest.h>

#include <cstdint>

#include "app/AppGlobals.h"
#include "config/GlobalCfg.h"
#include "platform/StartOrder.h"
#include "video/UniqueIdGenerator.h"

namespace {

struct Sighting {
  bool bSeen;
  int32_t iConfigAutoScroll;  // 1 once g_GlobalCfg holds its defaults
  int32_t iListSortKey;       // -1 once the global component list holds its own
  uint64_t qwId;              // all ones while the id generator has no counters
};

Sighting g_Sightings[2];  // zero before any probe runs

struct Probe {
  explicit Probe(int index) {
    // Kind 0 belongs to no caller, so drawing from it disturbs nothing.
    g_Sightings[index] = {true, g_GlobalCfg.cfg.isAutoScrollEnabled,
                          tachyrun::g_AppComponentList.SortKey(),
                          g_UniqueIdGenerator.NextId(0, nullptr)};
  }
};

Probe g_BeforeIds TACHYRUN_START_ORDER(kStartCfgRegStore - 5)(0);
Probe g_AfterIds TACHYRUN_START_ORDER(kStartUniqueIds + 5)(1);

}  // namespace

TEST(StartOrder, ConstantInitialisedGlobalsAreReadyBeforeAnyConstructor) {
  ASSERT_TRUE(g_Sightings[0].bSeen);
  EXPECT_EQ(g_Sightings[0].iConfigAutoScroll, 1);
  EXPECT_EQ(g_Sightings[0].iListSortKey, -1);
}

TEST(StartOrder, IdGeneratorIsBuiltAtItsPlaceInTheOrder) {
  ASSERT_TRUE(g_Sightings[0].bSeen);
  EXPECT_EQ(g_Sightings[0].qwId, ~uint64_t{0});
  ASSERT_TRUE(g_Sightings[1].bSeen);
  EXPECT_NE(g_Sightings[1].qwId, ~uint64_t{0});
  EXPECT_EQ(g_Sightings[1].qwId >> 32, 1u);  // the first running number of its counter
}
