#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "files/PathParts.h"
#include "files/TextFields.h"

namespace {

std::string Trim(const std::string& text) {
  std::vector<char> buffer(text.begin(), text.end());
  buffer.push_back('\0');
  TrimBlanks(buffer.data());
  return buffer.data();
}

struct Cleaned {
  std::string text;
  int32_t count;
};

Cleaned Clean(const std::string& text) {
  std::vector<char> buffer(kCleanLineBufferSize + text.size() + 1, 'x');
  std::memcpy(buffer.data(), text.c_str(), text.size() + 1);
  const int32_t count = CleanTextLine(buffer.data());
  return {buffer.data(), count};
}

const std::string kBox(1, static_cast<char>(kBoxLine));

}  // namespace

TEST(UpperCopyTest, UpperCasesAndKeepsTrailingBlanks) {
  char out[kPathBufferSize];
  UpperCopy(out, "abc Def 9z  ");
  EXPECT_STREQ(out, "ABC DEF 9Z  ");
}

TEST(UpperCopyTest, LeavesNonAsciiBytesAlone) {
  char out[kPathBufferSize];
  UpperCopy(out, "\xE9t\xE9");
  EXPECT_STREQ(out, "\xE9T\xE9");
}

TEST(UpperCopyTest, WorksInPlaceAndCutsAtAPathBuffer) {
  char buffer[kPathBufferSize] = "mixed Case";
  UpperCopy(buffer, buffer);
  EXPECT_STREQ(buffer, "MIXED CASE");
  const std::string longText(400, 'q');
  char out[kPathBufferSize];
  UpperCopy(out, longText.c_str());
  EXPECT_EQ(std::string(out), std::string(kPathBufferSize - 1, 'Q'));
  UpperCopy(nullptr, "a");
  UpperCopy(out, nullptr);
  EXPECT_EQ(std::strlen(out), kPathBufferSize - 1);
}

TEST(TrimBlanksTest, OnlyFirstCharacterNonBlankKeepsTrailingBlanks) {
  EXPECT_EQ(Trim("A   "), "A   ");
  EXPECT_EQ(Trim("AB   "), "AB");
}

TEST(TrimBlanksTest, LeadingBlanksTabsAndBoxLinesGo) {
  EXPECT_EQ(Trim(kBox + "  \tname  "), "name");
  // Behind index 0 a box line ends the text before the leading skip.
  EXPECT_EQ(Trim("  " + kBox + "name"), "");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim("\t\t"), "");
}

TEST(TrimBlanksTest, TextEndsAtFirstCarriageReturnOrBoxLine) {
  EXPECT_EQ(Trim("ab\rcd"), "ab");
  EXPECT_EQ(Trim("ab" + kBox + "cd\rx"), "ab");
  EXPECT_EQ(Trim("name  " + kBox + " more"), "name");
}

TEST(TrimBlanksTest, CarriageReturnAtIndexZeroStays) {
  // Index 0 is below both backward scans; the leading skip doesn't drop 13.
  EXPECT_EQ(Trim("\rab  "), "\rab");
}

TEST(TrimBlanksTest, TrailingLineFeedsGoButTrailingTabsStay) {
  EXPECT_EQ(Trim("ab \n\n"), "ab");
  EXPECT_EQ(Trim("ab\t"), "ab\t");
}

TEST(TrimBlanksTest, EmptyAndNullAreLeftAlone) {
  EXPECT_EQ(Trim(""), "");
  TrimBlanks(nullptr);
}

TEST(TrimBlanksTest, OverlongTextIsCutAtTheWorkBuffer) {
  const std::string longText = "  " + std::string(3000, 'w') + "  ";
  const std::string trimmed = Trim(longText);
  EXPECT_EQ(trimmed, std::string(kTrimBufferSize - 1 - 2, 'w'));
}

TEST(CleanTextLineTest, TabBecomesFourBlanks) {
  const Cleaned c = Clean("a\tb");
  EXPECT_EQ(c.text, "a    b");
  EXPECT_EQ(c.count, 6);
}

TEST(CleanTextLineTest, BarIsDropped) {
  const Cleaned c = Clean("a|b||c");
  EXPECT_EQ(c.text, "abc");
  EXPECT_EQ(c.count, 3);
}

TEST(CleanTextLineTest, FormatMarkTakesTheNextByteWithIt) {
  const Cleaned c = Clean(
      "a\xA7"
      "1b\xA7|c");
  EXPECT_EQ(c.text, "abc");
  EXPECT_EQ(c.count, 3);
  // A mark as the last byte takes only the terminator's place.
  EXPECT_EQ(Clean("ab\xA7").text, "ab");
}

TEST(CleanTextLineTest, LineEndsAtTheFirstBreakButCountsEverything) {
  const Cleaned c = Clean("ab\r\ncd\tx");
  EXPECT_EQ(c.text, "ab");
  // a b 0 0 c d four blanks x
  EXPECT_EQ(c.count, 11);
}

TEST(CleanTextLineTest, FormatMarkSwallowsALineBreak) {
  const Cleaned c = Clean("ab\xA7\ncd");
  EXPECT_EQ(c.text, "abcd");
  EXPECT_EQ(c.count, 4);
}

TEST(CleanTextLineTest, EmptyAndNull) {
  EXPECT_EQ(Clean("").count, 0);
  EXPECT_EQ(Clean("").text, "");
  EXPECT_EQ(CleanTextLine(nullptr), 0);
}

TEST(CleanTextLineTest, OverlongLineIsCutAtTheWorkBuffer) {
  const Cleaned plain = Clean(std::string(800, 'k'));
  EXPECT_EQ(plain.count, static_cast<int32_t>(kCleanLineBufferSize - 1));
  EXPECT_EQ(plain.text, std::string(kCleanLineBufferSize - 1, 'k'));
  // Tabs widen the text up to the same limit, the last one partly.
  const Cleaned tabs = Clean(std::string(200, '\t'));
  EXPECT_EQ(tabs.count, static_cast<int32_t>(kCleanLineBufferSize - 1));
  EXPECT_EQ(tabs.text, std::string(kCleanLineBufferSize - 1, ' '));
}

TEST(NextCommaFieldTest, TwoFieldsSeparatedByCommaAndBlank) {
  const char text[] = "one, two";
  char out[160];
  int32_t position = 0;
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 3);
  EXPECT_STREQ(out, "one");
  EXPECT_EQ(position, 4);
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 4);  // " two" before trimming
  EXPECT_STREQ(out, "two");
  EXPECT_EQ(position, 8);
  // At the end every call yields an empty field and stays.
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 0);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(position, 8);
}

TEST(NextCommaFieldTest, LineEndIsNotSteppedOver) {
  const char text[] = "a\nb";
  char out[16];
  int32_t position = 0;
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 1);
  EXPECT_EQ(position, 1);
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 0);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(position, 1);
}

TEST(NextCommaFieldTest, EmptyFieldsBetweenCommas) {
  const char text[] = ",,x";
  char out[16];
  int32_t position = 0;
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 0);
  EXPECT_EQ(position, 1);
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 0);
  EXPECT_EQ(position, 2);
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 1);
  EXPECT_STREQ(out, "x");
}

TEST(NextCommaFieldTest, LimitStopsTheFieldAndACommaThereIsNotSteppedOver) {
  const char text[] = "abcdef,g";
  char out[16];
  int32_t position = 0;
  EXPECT_EQ(NextCommaField(&position, 4, out, text), 4);
  EXPECT_STREQ(out, "abcd");
  EXPECT_EQ(position, 4);
  position = 0;
  EXPECT_EQ(NextCommaField(&position, 6, out, text), 6);
  EXPECT_EQ(position, 6);  // the comma at the limit stays
  EXPECT_EQ(NextCommaField(&position, 6, out, text), 0);
  EXPECT_EQ(position, 6);
}

TEST(NextCommaFieldTest, FieldIsTrimmed) {
  const char text[] = "   padded name   ,rest";
  char out[32];
  int32_t position = 0;
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 17);
  EXPECT_STREQ(out, "padded name");
  EXPECT_EQ(position, 18);
}

TEST(NextCommaFieldTest, OutMayBeTheTextItself) {
  char text[32] = "first,second";
  int32_t position = 0;
  EXPECT_EQ(NextCommaField(&position, 150, text, text), 5);
  EXPECT_STREQ(text, "first");
}

TEST(NextCommaFieldTest, BadArgumentsYieldAnEmptyField) {
  const char text[] = "abc";
  char out[16] = "junk";
  int32_t position = -1;
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 0);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(position, -1);
  position = 10;  // past the terminator
  std::strcpy(out, "junk");
  EXPECT_EQ(NextCommaField(&position, 150, out, text), 0);
  EXPECT_STREQ(out, "");
  EXPECT_EQ(position, 10);
  EXPECT_EQ(NextCommaField(nullptr, 150, out, text), 0);
  EXPECT_EQ(NextCommaField(&position, 150, nullptr, text), 0);
  position = 0;
  EXPECT_EQ(NextCommaField(&position, 150, out, nullptr), 0);
  EXPECT_EQ(NextCommaField(&position, -5, out, text), 0);
  EXPECT_EQ(position, 0);
}

TEST(CleanTextLineTest, StaysInsideABufferOfTheDocumentedSize) {
  // Exactly 500 bytes on the heap, so a sanitizer sees any overrun.
  std::vector<char> buffer(kCleanLineBufferSize, '\t');
  buffer.back() = '\0';
  EXPECT_EQ(CleanTextLine(buffer.data()), static_cast<int32_t>(kCleanLineBufferSize - 1));
  EXPECT_EQ(std::string(buffer.data()), std::string(kCleanLineBufferSize - 1, ' '));
}

TEST(NextCommaFieldTest, StaysInsideAnOutBufferOfLimitPlusOne) {
  const std::string text(300, 'f');
  const int32_t limit = 150;
  std::vector<char> out(limit + 1);
  int32_t position = 0;
  EXPECT_EQ(NextCommaField(&position, limit, out.data(), text.c_str()), limit);
  EXPECT_EQ(std::string(out.data()), std::string(limit, 'f'));
  EXPECT_EQ(position, limit);
}
