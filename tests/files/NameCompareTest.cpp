#include <gtest/gtest.h>

#include <string>

#include "files/NameCompare.h"
#include "files/TextFields.h"

namespace {
const std::string kBox(1, static_cast<char>(kBoxLine));
}  // namespace

TEST(CompareNamesTest, CaseAndOuterBlanksDoNotCount) {
  EXPECT_EQ(CompareNames("  abc", "ABC"), 0);
  EXPECT_EQ(CompareNames("Name  ", "\tNAME"), 0);
  EXPECT_EQ(CompareNames((kBox + "box").c_str(), "BOX"), 0);
}

TEST(CompareNamesTest, OrderIsThatOfTheUpperCasedText) {
  EXPECT_LT(CompareNames("abc", "ABD"), 0);
  EXPECT_GT(CompareNames("b", "A"), 0);
  EXPECT_NE(CompareNames("a b", "ab"), 0);  // inner blanks count
}

TEST(CompareNamesTest, OnlyTheFirst199CharactersCount) {
  const std::string base(199, 'n');
  EXPECT_EQ(CompareNames((base + "x").c_str(), (base + "y").c_str()), 0);
  EXPECT_NE(CompareNames((base.substr(0, 198) + "x").c_str(), (base.substr(0, 198) + "y").c_str()),
            0);
  const std::string huge(5000, 'h');
  EXPECT_EQ(CompareNames(huge.c_str(), std::string(199, 'H').c_str()), 0);
}

TEST(CompareNamesTest, NullComparesAsEmpty) {
  EXPECT_EQ(CompareNames(nullptr, ""), 0);
  EXPECT_EQ(CompareNames(nullptr, "   "), 0);
  EXPECT_LT(CompareNames(nullptr, "a"), 0);
}

TEST(CompareNamesTest, TheSingleCharacterTrimOdditySeparatesNames) {
  // "A   " keeps its blanks, so it differs from "A".
  EXPECT_NE(CompareNames("a   ", "A"), 0);
  EXPECT_EQ(CompareNames("ab   ", "AB"), 0);
}

TEST(CompareFirstWordsTest, OnlyTheFirstWordsCount) {
  EXPECT_EQ(CompareFirstWords("  alpha beta", "ALPHA gamma"), 0);
  EXPECT_LT(CompareFirstWords("alpha", "beta"), 0);
}

TEST(CompareFirstWordsTest, OnlyTheFirstTextIsCutAtAComma) {
  EXPECT_EQ(CompareFirstWords("x,y", "x"), 0);
  EXPECT_NE(CompareFirstWords("x", "x,y"), 0);
  EXPECT_EQ(CompareFirstWords("name , extra", "NAME other"), 0);
}

TEST(CompareFirstWordsTest, CommaFieldOfTheFirstTextEndsAt150) {
  const std::string word(160, 'w');
  EXPECT_EQ(CompareFirstWords(word.c_str(), std::string(150, 'W').c_str()), 0);
  EXPECT_NE(CompareNames(word.c_str(), std::string(150, 'W').c_str()), 0);
}

TEST(CompareFirstWordsTest, LineBreakEndsTheFirstTextsField) {
  EXPECT_EQ(CompareFirstWords("word\nmore", "word"), 0);
}

TEST(CompareFirstWordsTest, NullComparesAsEmpty) {
  EXPECT_EQ(CompareFirstWords(nullptr, nullptr), 0);
  EXPECT_GT(CompareFirstWords("a", nullptr), 0);
}
