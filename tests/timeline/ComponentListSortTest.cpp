// CComponentList::Sort: eight keys, ascending whatever the direction, stable.

#include <gtest/gtest.h>
#include <strings.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <vector>

#include "tests/timeline/ComponentListTestUtil.h"
#include "timeline/ComponentList.h"

namespace {

// Reference order of each key, written independently of the list's sort:
// libc's case-insensitive comparison and plain operators.
bool Less(uint32_t key, const CComponent* a, const CComponent* b) {
  switch (key) {
    case kSortByPath:
      return strcasecmp(a->szPath, b->szPath) < 0;
    case kSortByLabel:
      return strcasecmp(a->szLabel, b->szLabel) < 0;
    case kSortByKind:
      return a->iKind < b->iKind;
    case kSortById:
      return a->iUniqueId < b->iUniqueId;
    case kSortByStart:
      return a->dStart < b->dStart;
    case kSortByEnd:
      return a->dEnd < b->dEnd;
    case kSortBySourceLength:
      return a->dSourceLength < b->dSourceLength;
    case kSortBySortText:
      return strcasecmp(a->szSortText, b->szSortText) < 0;
    default:
      return false;
  }
}

// Short texts from a small alphabet in both cases, so that many compare
// equal only when case is ignored.
void RandomText(std::mt19937& rng, char* out) {
  static const char kLetters[] = "aAbBcC_";
  const int length = static_cast<int>(rng() % 3);
  for (int i = 0; i < length; ++i) out[i] = kLetters[rng() % 7];
  out[length] = '\0';
}

void FillRandom(CComponentList& list, int count, unsigned seed) {
  std::mt19937 rng(seed);
  for (int i = 0; i < count; ++i) {
    CComponent* c = new CComponent;
    c->iKind = static_cast<int32_t>(rng() % 11) - 1;
    c->iUniqueId = static_cast<int64_t>(rng() % 50) - 25;  // ties and negatives
    c->dStart = static_cast<double>(rng() % 40) * 0.5;
    c->dEnd = static_cast<double>(rng() % 40) - 10.0;
    c->dSourceLength = static_cast<double>(rng() % 30) / 3.0;
    RandomText(rng, c->szPath);
    RandomText(rng, c->szLabel);
    RandomText(rng, c->szSortText);
    list.Add(c);
  }
}

// The quadratic sort makes 5e7 comparisons for 10,000 components; the
// sanitizer builds, which look for memory errors rather than orders, sort a
// fifth of them to stay quick.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kRandomComponents = 2000;
#else
constexpr int kRandomComponents = 10000;
#endif

class SortKeyTest : public ::testing::TestWithParam<uint32_t> {};

}  // namespace

TEST(ComponentListSort, DirectionIsStoredButTheOrderIsAscending) {
  CComponentList list;
  CComponent* late = NewComponent(1, 300.0);
  CComponent* early = NewComponent(1, 100.0);
  CComponent* middle = NewComponent(1, 200.0);
  list.Add(late);
  list.Add(early);
  list.Add(middle);
  EXPECT_EQ(list.Sort(kSortByStart, 1), 0);
  EXPECT_EQ(list.SortKey(), 4);
  EXPECT_EQ(list.SortDir(), 1);
  EXPECT_EQ(Order(list), (std::vector<const CComponent*>{early, middle, late}));
}

TEST(ComponentListSort, EqualKeysKeepTheirFormerOrder) {
  CComponentList list;
  CComponent* a = NewComponent(2);
  CComponent* b = NewComponent(1);
  CComponent* c = NewComponent(2);
  CComponent* d = NewComponent(1);
  for (CComponent* x : {a, b, c, d}) list.Add(x);
  list.Sort(kSortByKind, 0);
  EXPECT_EQ(Order(list), (std::vector<const CComponent*>{b, d, a, c}));
}

TEST(ComponentListSort, UnknownKeyKeepsTheWholeOrderAndIsStored) {
  CComponentList list;
  FillRandom(list, 50, 7);
  const std::vector<const CComponent*> before = Order(list);
  EXPECT_EQ(list.Sort(99, 3), 0);
  EXPECT_EQ(Order(list), before);
  EXPECT_EQ(list.SortKey(), 99);
  EXPECT_EQ(list.SortDir(), 3);
}

TEST(ComponentListSort, TextsCompareWithoutCaseFoldedToLower) {
  CComponentList list;
  CComponent* upper = NewComponent(1);
  CComponent* under = NewComponent(1);
  CComponent* lower = NewComponent(1);
  std::strcpy(upper->szLabel, "B");
  std::strcpy(under->szLabel, "_");  // '_' lies between the cases: below 'b'
  std::strcpy(lower->szLabel, "a");
  list.Add(upper);
  list.Add(under);
  list.Add(lower);
  list.Sort(kSortByLabel, 0);
  EXPECT_EQ(Order(list), (std::vector<const CComponent*>{under, lower, upper}));
}

TEST(ComponentListSort, UnterminatedTextsCompareWithinTheirField) {
  CComponentList list;
  CComponent* a = NewComponent(1);
  CComponent* b = NewComponent(1);
  std::memset(a->szSortText, 'x', sizeof(a->szSortText));
  std::memset(b->szSortText, 'X', sizeof(b->szSortText));
  b->szSortText[sizeof(b->szSortText) - 1] = 'w';
  list.Add(a);
  list.Add(b);
  list.Sort(kSortBySortText, 0);
  EXPECT_EQ(list.m_aItems[0], b);
}

TEST(ComponentListSort, NullSlotsStayInTheListAndSortingStillEnds) {
  CComponentList list;
  CComponent* late = NewComponent(1, 9.0);
  CComponent* early = NewComponent(1, 1.0);
  list.Add(late);
  list.m_aItems.Add(nullptr);
  list.Add(early);
  list.Sort(kSortByStart, 0);
  ASSERT_EQ(list.GetCount(), 3);
  std::vector<const CComponent*> live;
  for (const CComponent* c : list.m_aItems) {
    if (c != nullptr) live.push_back(c);
  }
  EXPECT_EQ(live.size(), 2u);
}

TEST(ComponentListSort, SortOfAnEmptyListStoresTheKey) {
  CComponentList list;
  EXPECT_EQ(list.Sort(kSortByEnd, 0), 0);
  EXPECT_EQ(list.SortKey(), 5);
  EXPECT_EQ(list.GetCount(), 0);
}

TEST_P(SortKeyTest, MatchesAStableSortOfRandomComponentsWithTies) {
  const uint32_t key = GetParam();
  CComponentList list;
  FillRandom(list, kRandomComponents, 1000 + key);
  std::vector<const CComponent*> expected = Order(list);
  std::stable_sort(expected.begin(), expected.end(),
                   [key](const CComponent* a, const CComponent* b) { return Less(key, a, b); });
  EXPECT_EQ(list.Sort(key, 0), 0);
  EXPECT_EQ(list.SortKey(), static_cast<int32_t>(key));
  EXPECT_TRUE(Order(list) == expected) << "key " << key;
}

INSTANTIATE_TEST_SUITE_P(AllKeys, SortKeyTest,
                         ::testing::Values(0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 99u));
