// The way a CComponentList operation doesn't return, kept on purpose: an
// insert past the end waits for itself, shown with a bounded wait (a thread
// still blocked after a short time, then freed). And the throws that once
// left the inner lock held: the next call must not wait at all.

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
  // return, and the call gives -1, its guard releasing the lock as it goes.
  list.m_InnerLock.Release();
  ASSERT_EQ(result.wait_for(kFinishWithin), std::future_status::ready);
  EXPECT_EQ(result.get(), -1);
  std::future<CComponent*> next = std::async(std::launch::async, [&] { return list.GetAt(0); });
  ASSERT_EQ(next.wait_for(kFinishWithin), std::future_status::ready);
  EXPECT_NE(next.get(), nullptr);
  EXPECT_EQ(list.GetCount(), 1);
  delete extra;  // not taken by the list
}

TEST(ComponentListBlocking, RemoveLinkedThrowLeavesTheInnerLockFree) {
  CComponentList list;
  CComponent* parent = NewComponent(1);
  for (int i = 0; i < 3; ++i) list.Add(NewChild(*parent));
  list.Add(parent);
  EXPECT_THROW(list.RemoveLinked(), std::out_of_range);
  std::future<CComponent*> lookup =
      std::async(std::launch::async, [&] { return list.FindById(parent->iUniqueId); });
  ASSERT_EQ(lookup.wait_for(kFinishWithin), std::future_status::ready);
  EXPECT_EQ(lookup.get(), parent);
}

TEST(ComponentListBlocking, DetachWithANegativeIndexThrowsWithTheLockFree) {
  CComponentList list;
  CComponent* only = NewComponent(1);
  list.Add(only);
  EXPECT_THROW(list.Detach(-1), std::out_of_range);
  std::future<int32_t> detach = std::async(std::launch::async, [&] { return list.Detach(0); });
  ASSERT_EQ(detach.wait_for(kFinishWithin), std::future_status::ready);
  EXPECT_EQ(detach.get(), 0);
  EXPECT_EQ(list.GetCount(), 0);
  delete only;  // detached: ours again
}
