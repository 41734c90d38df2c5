// The list test of control 1005: its timed stretch and its line.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "measure/ListRun.h"
#include "timeline/ComponentList.h"

namespace tachyrun {
namespace {

TEST(ListTest, ZeroElapsedPrintsZeroPerItemAndZeroTotal) {
  char line[kListTestLineBytes];
  FormatListTestLine(line, kListTestCount, 0);
  EXPECT_STREQ(line, "Copy 100000 items Time Elapsed: 0.000 ms  Tot=0");
}

TEST(ListTest, PerItemTimeIsElapsedOverCountWithThreeDecimals) {
  char line[kListTestLineBytes];
  FormatListTestLine(line, kListTestCount, 123456);
  EXPECT_STREQ(line, "Copy 100000 items Time Elapsed: 1.235 ms  Tot=123456");
  FormatListTestLine(line, 4, 10);
  EXPECT_STREQ(line, "Copy 4 items Time Elapsed: 2.500 ms  Tot=10");
}

TEST(ListTest, TotalIsPrintedAsItsLow32Bits) {
  char line[kListTestLineBytes];
  FormatListTestLine(line, 1, 0xFFFFFFFFull);
  EXPECT_NE(std::strstr(line, "Tot=-1"), nullptr);
}

TEST(ListTest, BuildAndReleaseLeavesTheListEmptyAfterOneClear) {
  CComponentList list;
  const int32_t before = list.GetModCount();
  BuildAndReleaseComponents(list, 1000);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.m_aItems.GetCapacity(), 0);  // storage released
  // The components went straight into the array: only Clear counted.
  EXPECT_EQ(list.GetModCount(), before + 1);
}

TEST(ListTest, BuildAndReleaseOfNothingStillClears) {
  CComponentList list;
  const int32_t before = list.GetModCount();
  BuildAndReleaseComponents(list, 0);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.GetModCount(), before + 1);
}

TEST(ListTest, TheResultCarriesTheLineAndItsFiguresAsShown) {
  char line[kListTestLineBytes];
  FormatListTestLine(line, 4, 10);
  const RunResult result = ListTestResult(line, 4, 10);
  EXPECT_EQ(result.strLine, "Copy 4 items Time Elapsed: 2.500 ms  Tot=10");
  ASSERT_EQ(result.aFigures.size(), 2u);
  EXPECT_EQ(result.aFigures[0].strName, "Elapsed");
  EXPECT_EQ(result.aFigures[0].dValue, 2.5);
  EXPECT_EQ(result.aFigures[1].strName, "Tot");
  EXPECT_EQ(result.aFigures[1].dValue, 10.0);
  EXPECT_EQ(result.dFrameMs.value_or(-1), 2.5);
  EXPECT_EQ(result.iStatus, 0);
}

TEST(ListTest, TheWholeRunWritesStartedThenTheLineItHandsBack) {
  std::vector<std::string> texts;
  const RunResult result = RunListTest([&](const char* s) { texts.emplace_back(s); });
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_EQ(texts[0], "started...");
  EXPECT_EQ(texts[1], result.strLine);
  EXPECT_EQ(texts[1].rfind("Copy 100000 items Time Elapsed: ", 0), 0u) << texts[1];
}

}  // namespace
}  // namespace tachyrun
