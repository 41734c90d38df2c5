// The id operations shared by the track, timeline and repository lists.

#include <gtest/gtest.h>

#include "project/RepositoryList.h"
#include "project/TimelineList.h"
#include "project/TrackList.h"

namespace {

template <class List>
class IdList : public ::testing::Test {
 protected:
  using Element = typename List::Element;
  Element* Make(int64_t id) {
    auto* element = new Element;
    element->iId = id;
    return element;
  }
  List list;
};

using IdLists = ::testing::Types<CTrackList, CTimelineList, CRepositoryList>;
TYPED_TEST_SUITE(IdList, IdLists);

TYPED_TEST(IdList, InsertAtChecksTheIndexAgainstTheCount) {
  auto& list = this->list;
  auto* a = this->Make(1);
  auto* b = this->Make(2);
  auto* c = this->Make(3);
  EXPECT_EQ(list.InsertAt(a, 0), 0);
  EXPECT_EQ(list.InsertAt(c, 1), 0);  // at the count: appended
  const int32_t mods = list.GetModCount();
  EXPECT_EQ(list.InsertAt(b, 1), 0);
  EXPECT_EQ(list.GetModCount(), mods + 1);
  EXPECT_EQ(list.GetAt(0), a);
  EXPECT_EQ(list.GetAt(1), b);
  EXPECT_EQ(list.GetAt(2), c);
  auto* stray = this->Make(4);
  EXPECT_EQ(list.InsertAt(stray, 4), -1);
  EXPECT_EQ(list.InsertAt(stray, -1), -1);
  EXPECT_EQ(list.GetCount(), 3);
  EXPECT_EQ(list.GetModCount(), mods + 1);
  delete stray;
}

TYPED_TEST(IdList, GetMaxIdIsTheLowWordOfTheLargestId) {
  auto& list = this->list;
  EXPECT_EQ(list.GetMaxId(), 0);
  list.Add(this->Make((int64_t{5} << 32) | 7));
  list.Add(this->Make((int64_t{9} << 32) | 3));
  list.Add(nullptr);
  list.Add(this->Make((int64_t{2} << 32) | 0xFFFFFFFF));
  EXPECT_EQ(list.GetMaxId(), 3);  // the low word of 9:3, not the largest low word
}

TYPED_TEST(IdList, FindByIdWidensTheIdWithItsSign) {
  auto& list = this->list;
  auto* small = this->Make(42);
  auto* allOnes = this->Make(-1);
  auto* lowOnes = this->Make(0xFFFFFFFFLL);
  list.Add(nullptr);
  list.Add(lowOnes);
  list.Add(small);
  list.Add(allOnes);
  EXPECT_EQ(list.FindById(42), small);
  EXPECT_EQ(list.FindById(-1), allOnes);  // -1 widens to all ones, never 0x00000000FFFFFFFF
  EXPECT_EQ(list.FindById(43), nullptr);
}

TYPED_TEST(IdList, RemoveByIdDeletesTheFirstMatch) {
  auto& list = this->list;
  const int64_t id = (int64_t{3} << 32) | 0x80000001u;
  auto* first = this->Make(id);
  auto* second = this->Make(id);
  list.Add(this->Make(1));
  list.Add(first);
  list.Add(second);
  const int32_t mods = list.GetModCount();
  EXPECT_EQ(list.RemoveById(0x80000001u, 3), 0);
  EXPECT_EQ(list.GetCount(), 2);
  EXPECT_EQ(list.GetAt(1), second);
  EXPECT_EQ(list.GetModCount(), mods + 1);
  EXPECT_EQ(list.RemoveById(99, 99), 0);
  EXPECT_EQ(list.GetCount(), 2);
  EXPECT_EQ(list.GetModCount(), mods + 1);
}

TYPED_TEST(IdList, LoadAddsEachElementWhateverItsLoadGave) {
  auto& list = this->list;
  FILE* f = std::tmpfile();
  const int32_t tooLong = 5000;
  std::fwrite(&tooLong, 4, 1, f);
  std::rewind(f);
  EXPECT_EQ(list.Load(f, 2), 0);
  std::fclose(f);
  EXPECT_EQ(list.GetCount(), 2);
}

}  // namespace
