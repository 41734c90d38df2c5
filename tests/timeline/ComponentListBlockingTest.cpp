// The ways CComponentList operations don't return, kept on purpose: an
// insert past the end waits for itself, and a read past a list that
// RemoveLinked shrank throws with the inner lock held. Each is shown with a
// bounded wait: a thread still blocked after a short time, then freed.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

#include "tests/timeline/ComponentListTestUtil.h"
#include "timeline/ComponentList.h"

namespace {

using namespace std::chrono_literals;

// Time a blocked call is given to show that it doesn't return.
constexpr auto kBlockedFor = 300ms;
// Time a freed call is given to finish; only a hang would use it up.
constexpr auto kFinishWithin = 10s;

}  // namespace

TEST(ComponentListBlocking, InsertAtPastTheEndHangsTheCaller) {
  CComponentList list;
  list.Add(NewComponent(1));
  CComponent* extra = NewComponent(1);
  std::future<int32_t> result =
      std::async(std::launch::async, [&] { return list.InsertAt(extra, 2); });
  EXPECT_EQ(result.wait_for(kBlockedFor), std::future_status::timeout);
  EXPECT_EQ(list.GetCount(), 1);

  // The lock knows no owner: releasing it here lets the second acquire
  // return, and the call gives -1 with the lock held once more.
  list.m_InnerLock.Release();
  ASSERT_EQ(result.wait_for(kFinishWithin), std::future_status::ready);
  EXPECT_EQ(result.get(), -1);
  EXPECT_EQ(list.GetCount(), 1);
  list.m_InnerLock.Release();
  delete extra;  // not taken by the list
}

TEST(ComponentListBlocking, RemoveLinkedThrowLeavesTheInnerLockHeld) {
  CComponentList list;
  CComponent* parent = NewComponent(1);
  for (int i = 0; i < 3; ++i) list.Add(NewChild(*parent));
  list.Add(parent);
  EXPECT_THROW(list.RemoveLinked(), std::out_of_range);

  std::future<CComponent*> lookup =
      std::async(std::launch::async, [&] { return list.FindById(parent->iUniqueId); });
  EXPECT_EQ(lookup.wait_for(kBlockedFor), std::future_status::timeout);
  list.m_InnerLock.Release();
  ASSERT_EQ(lookup.wait_for(kFinishWithin), std::future_status::ready);
  EXPECT_EQ(lookup.get(), parent);
}

TEST(ComponentListBlocking, DetachWithANegativeIndexThrowsWithTheLockHeld) {
  CComponentList list;
  CComponent* only = NewComponent(1);
  list.Add(only);
  EXPECT_THROW(list.Detach(-1), std::out_of_range);
  std::future<int32_t> detach = std::async(std::launch::async, [&] { return list.Detach(0); });
  EXPECT_EQ(detach.wait_for(kBlockedFor), std::future_status::timeout);
  list.m_InnerLock.Release();
  ASSERT_EQ(detach.wait_for(kFinishWithin), std::future_status::ready);
  EXPECT_EQ(detach.get(), 0);
  EXPECT_EQ(list.GetCount(), 0);
  delete only;  // detached: ours again
}
