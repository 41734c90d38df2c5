#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "registry/RegNames.h"

namespace {

TEST(FoldRegName, FoldsAsciiAndUtf8Letters) {
  EXPECT_EQ(FoldRegName("Software\\Abc-9_z"), "SOFTWARE\\ABC-9_Z");
  EXPECT_EQ(FoldRegName("äöü"), "ÄÖÜ");
  EXPECT_EQ(FoldRegName("ÄÖÜ"), "ÄÖÜ");
  EXPECT_EQ(FoldRegName("ελληνικά"), FoldRegName("ΕΛΛΗΝΙΚΆ"));
}

TEST(FoldRegName, KeepsBytesThatAreNotUtf8) {
  const std::string latin1 = "caf\xe9";
  EXPECT_EQ(FoldRegName(latin1), "CAF\xe9");
  EXPECT_EQ(FoldRegName(std::string("a\0b", 3)), std::string("A\0B", 3));
  EXPECT_EQ(FoldRegName(""), "");
}

TEST(SplitRegPath, SplitsAtBackslashes) {
  std::vector<std::string_view> names;
  ASSERT_TRUE(SplitRegPath("A\\Bc\\D", 255, &names));
  EXPECT_EQ(names, (std::vector<std::string_view>{"A", "Bc", "D"}));
  ASSERT_TRUE(SplitRegPath("A\\B\\", 255, &names));
  EXPECT_EQ(names, (std::vector<std::string_view>{"A", "B"}));
  ASSERT_TRUE(SplitRegPath("", 255, &names));
  EXPECT_TRUE(names.empty());
}

TEST(SplitRegPath, RefusesEmptyAndOverlongNames) {
  std::vector<std::string_view> names;
  EXPECT_FALSE(SplitRegPath("\\A", 255, &names));
  EXPECT_FALSE(SplitRegPath("\\", 255, &names));
  EXPECT_FALSE(SplitRegPath("A\\\\B", 255, &names));
  EXPECT_FALSE(SplitRegPath("A\\\\", 255, &names));
  EXPECT_FALSE(SplitRegPath("abcd", 3, &names));
  EXPECT_TRUE(SplitRegPath("abc", 3, &names));
}

TEST(SplitRegPath, RefusesPathsDeeperThanTheLimit) {
  std::string path = "k";
  for (size_t i = 1; i < kMaxRegDepth; ++i) path += "\\k";
  std::vector<std::string_view> names;
  ASSERT_TRUE(SplitRegPath(path, 255, &names));
  EXPECT_EQ(names.size(), kMaxRegDepth);
  EXPECT_FALSE(SplitRegPath(path + "\\k", 255, &names));
}

}  // namespace
