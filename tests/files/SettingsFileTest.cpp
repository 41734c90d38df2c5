#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "files/SettingsFile.h"
#include "tests/files/TempDirTest.h"

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

class SettingsFileTest : public TempDirTest {
 protected:
  static void Write(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
  }
};

constexpr char kDefault[] = "<default>";

// One string query on one file: by key when `key` isn't null, else by index.
struct LookupCase {
  const char* name;
  std::string text;
  const char* section;
  const char* key;
  int32_t index;
  const char* expected;  // kDefault when the default must come back
};

const std::string kVideo =
    "[Video]\n"
    "Width=1920\n"
    "Height = 1080\n"
    "Name =  Main out  \n"
    "\n"
    ";Rate=50 is what the old files had\n"
    "Rate\t=\t25\n"
    "[Audio]\n"
    "Rate=48000\n";

std::vector<LookupCase> LookupCases() {
  return {
      {"PlainEntry", kVideo, "Video", "Width", 0, "1920"},
      {"BlanksAroundEquals", kVideo, "Video", "Height", 0, "1080"},
      {"TrailingBlanksStay", kVideo, "Video", "Name", 0, "Main out  "},
      {"TabsAroundEquals", kVideo, "Video", "Rate", 0, "25"},
      {"CommentedEntryIsNotSeen", "[S]\n;k=1\nk=2\n", "S", "k", 0, "2"},
      {"SameKeyInAnotherSection", kVideo, "Audio", "Rate", 0, "48000"},
      {"SectionNamesKeepTheirCase", kVideo, "video", "Width", 0, kDefault},
      {"KeyNamesKeepTheirCase", kVideo, "Video", "width", 0, kDefault},
      {"MissingSection", kVideo, "Colour", "Width", 0, kDefault},
      {"MissingKey", kVideo, "Video", "Depth", 0, kDefault},
      {"ShortKeyFindsLongerLine", kVideo, "Video", "Rat", 0, "25"},
      {"CrLfLines", "[Video]\r\nWidth=720\r\nName=PAL\r\n", "Video", "Name", 0, "PAL"},
      {"CrLfFirstEntry", "[Video]\r\nWidth=720\r\nName=PAL\r\n", "Video", "Width", 0, "720"},
      {"KeyIsAPrefixTest", "[Sizes]\nSizeX=5\nSize=7\nSizeY=9\n", "Sizes", "Size", 0, "5"},
      {"LongerKeySkipsShorterLine", "[Sizes]\nSize=7\nSizeY=9\n", "Sizes", "SizeY", 0, "9"},
      {"BracketInValueCutsTheLine", "[Paths]\nFirst=a[b]c\nSecond=2\n", "Paths", "First", 0, "a"},
      {"BracketInValueEndsTheSection", "[Paths]\nFirst=a[b]c\nSecond=2\n", "Paths", "Second", 0,
       kDefault},
      {"BracketInCommentEndsTheSection", "[S]\n;see [1]\nk=1\n", "S", "k", 0, kDefault},
      {"HeadInsideALine", "x[Mid]\nKey=1\n", "Mid", "Key", 0, "1"},
      {"HeadInCommentIsNotAHead", "; [Hidden]\nk=0\n[Shown]\nk=1\n", "Hidden", "k", 0, kDefault},
      {"HeadBehindComment", "; [Hidden]\nk=0\n[Shown]\nk=1\n", "Shown", "k", 0, "1"},
      {"HeadWithSemicolonNeverMatches", "[a;b]\nk=1\n", "a;b", "k", 0, kDefault},
      {"HeadAcrossLinesNeverMatches", "[Sec\ntion]\nk=1\n", "Section", "k", 0, kDefault},
      {"CloseBracketBeforeHead", "x]y\n[S]\nk=1\n", "S", "k", 0, "1"},
      {"FirstOfTwoEqualSections", "[S]\nk=1\n[S]\nk=2\n", "S", "k", 0, "1"},
      {"HeadRightBehindHead", "[A][B]\nk=1\n", "A", "k", 0, "1"},
      {"EmptyValue", "[S]\nk=\nj=1\n", "S", "k", 0, kDefault},
      {"BlankValue", "[S]\nk=   \n", "S", "k", 0, kDefault},
      {"LineWithoutEquals", "[S]\nflag\nk=1\n", "S", "flag", 0, kDefault},
      {"EqualsOnTheNextLineIsNotTaken", "[S]\nkey\nother=v\n", "S", "key", 0, kDefault},
      {"LineAfterLineWithoutEquals", "[S]\nflag\nk=1\n", "S", "k", 0, "1"},
      {"LastLineWithoutLineFeed", "[S]\nk=v", "S", "k", 0, kDefault},
      {"LastLineEndedByCarriageReturn", "[S]\nk=v\r", "S", "k", 0, "v"},
      {"IndentedKeyIsAnotherKey", "[S]\n  k=1\n", "S", "k", 0, kDefault},
      {"ZeroByteEndsTheBody", "[S]\nk=1\n\0\nz=2\n"s, "S", "z", 0, kDefault},
      {"ZeroByteCutsTheValue", "[S]\nk=ab\0cd\n"s, "S", "k", 0, "ab"},
      {"IndexSkipsCommentsAndBlankLines", kVideo, "Video", nullptr, 4, "25"},
      {"IndexOne", kVideo, "Video", nullptr, 1, "1920"},
      {"IndexThree", kVideo, "Video", nullptr, 3, "Main out  "},
      {"IndexPastTheEnd", kVideo, "Video", nullptr, 5, kDefault},
      {"IndexZero", kVideo, "Video", nullptr, 0, kDefault},
      {"IndexNegative", kVideo, "Video", nullptr, -1, kDefault},
      {"IndexOnCrLf", "[V]\r\n\r\na=1\r\nb=2\r\n", "V", nullptr, 2, "2"},
      {"IndexLineWithoutEquals", "[S]\nflag\nk=1\n", "S", nullptr, 1, kDefault},
      {"BlankOnlyLineCountsAsEntry", "[S]\n   \nk=1\n", "S", nullptr, 2, "1"},
  };
}

class SettingsLookupTest : public SettingsFileTest,
                           public ::testing::WithParamInterface<LookupCase> {};

}  // namespace

TEST_P(SettingsLookupTest, GivesTheValueOrTheDefault) {
  const LookupCase& c = GetParam();
  Write("settings.ini", c.text);
  CSettingsFile file("settings.ini");
  const char* result = c.key != nullptr ? file.GetString(c.section, c.key, kDefault)
                                        : file.GetStringAt(c.section, c.index, kDefault);
  ASSERT_NE(result, nullptr);
  EXPECT_STREQ(result, c.expected);
  if (c.expected == kDefault) {
    EXPECT_EQ(result, kDefault) << "the default comes back as the same pointer";
  } else {
    EXPECT_EQ(result, file.m_pszResult) << "a value lives in m_pszResult";
  }
}

INSTANTIATE_TEST_SUITE_P(Files, SettingsLookupTest, ::testing::ValuesIn(LookupCases()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(SettingsFileTest, MissingFileGivesDefaultsAndLeavesTheResultAlone) {
  Write("settings.ini", "[S]\nk=kept\nn=5\n");
  CSettingsFile file("settings.ini");
  EXPECT_EQ(file.m_pszResult, nullptr);
  ASSERT_STREQ(file.GetString("S", "k", kDefault), "kept");
  char* const before = file.m_pszResult;
  fs::remove("settings.ini");
  EXPECT_EQ(file.GetString("S", "k", kDefault), kDefault);
  EXPECT_EQ(file.GetStringAt("S", 1, kDefault), kDefault);
  EXPECT_EQ(file.GetInt("S", "n", -3), -3);
  EXPECT_EQ(file.GetBool("S", "n", true), true);
  EXPECT_EQ(file.GetFloat("S", "n", 2.5f), 2.5f);
  EXPECT_STREQ(file.GetKeyName("S", 1), "");
  EXPECT_EQ(file.CountKeys("S"), 0);
  EXPECT_EQ(file.m_pszResult, before);
  EXPECT_STREQ(file.m_pszResult, "kept");
  EXPECT_EQ(file.m_iFile, -1);
}

TEST_F(SettingsFileTest, EveryQueryReadsTheFileAgain) {
  Write("settings.ini", "[S]\nk=old\n");
  CSettingsFile file("settings.ini");
  EXPECT_STREQ(file.GetString("S", "k", kDefault), "old");
  Write("settings.ini", "[S]\nk=new value\nj=2\n");
  EXPECT_STREQ(file.GetString("S", "k", kDefault), "new value");
  EXPECT_EQ(file.CountKeys("S"), 2);
}

TEST_F(SettingsFileTest, LargeFileBelowTheLimitIsReadWhole) {
  std::string text;
  while (text.size() < (size_t{8} << 20)) text += ";padding line of a large settings file\n";
  text += "[Last]\nk=found\n";
  ASSERT_LT(text.size(), kMaxSettingsFileSize);
  Write("large.ini", text);
  CSettingsFile file("large.ini");
  EXPECT_STREQ(file.GetString("Last", "k", kDefault), "found");
  EXPECT_EQ(file.CountKeys("Last"), 1);
}

TEST_F(SettingsFileTest, BlanksAroundEqualsDoNotMatterAndTrailingBlanksStay) {
  Write("settings.ini", "[S]\na=x  \nb =x  \nc\t= \tx  \nd  =  x  \n");
  CSettingsFile file("settings.ini");
  for (const char* key : {"a", "b", "c", "d"}) {
    EXPECT_STREQ(file.GetString("S", key, kDefault), "x  ") << key;
  }
}

TEST_F(SettingsFileTest, EmptyValueLeavesAnEmptyResultAndGivesTheDefault) {
  Write("settings.ini", "[S]\nk=\n");
  CSettingsFile file("settings.ini");
  EXPECT_EQ(file.GetString("S", "k", kDefault), kDefault);
  ASSERT_NE(file.m_pszResult, nullptr);
  EXPECT_STREQ(file.m_pszResult, "");
}

TEST_F(SettingsFileTest, BoolIsTrueOnlyForOnAndTrueWithCase) {
  Write("settings.ini",
        "[B]\nup=ON\nlow=on\nyes=TRUE\nmixed=True\none=1\noff=OFF\nempty=\nspaced=ON \n");
  CSettingsFile file("settings.ini");
  EXPECT_TRUE(file.GetBool("B", "up", false));
  EXPECT_FALSE(file.GetBool("B", "low", true));
  EXPECT_TRUE(file.GetBool("B", "yes", false));
  EXPECT_FALSE(file.GetBool("B", "mixed", true));
  EXPECT_FALSE(file.GetBool("B", "one", true));
  EXPECT_FALSE(file.GetBool("B", "off", true));
  EXPECT_FALSE(file.GetBool("B", "spaced", true)) << "the trailing blank belongs to the value";
  EXPECT_TRUE(file.GetBool("B", "empty", true));
  EXPECT_FALSE(file.GetBool("B", "empty", false));
  EXPECT_TRUE(file.GetBool("B", "missing", true));
  EXPECT_TRUE(file.GetBoolAt("B", 1, false));
  EXPECT_FALSE(file.GetBoolAt("B", 2, true));
  EXPECT_TRUE(file.GetBoolAt("B", 7, true)) << "empty value by index";
  EXPECT_FALSE(file.GetBoolAt("B", 99, false));
}

TEST_F(SettingsFileTest, IntIsAtoiOfTheValue) {
  Write("settings.ini",
        "[N]\nplain=1920\nneg=-7\nlead=  42\ntail=12abc\ntext=abc\nempty=\nbig=99999999999\n");
  CSettingsFile file("settings.ini");
  EXPECT_EQ(file.GetInt("N", "plain", -1), 1920);
  EXPECT_EQ(file.GetInt("N", "neg", -1), -7);
  EXPECT_EQ(file.GetInt("N", "lead", -1), 42);
  EXPECT_EQ(file.GetInt("N", "tail", -1), 12);
  EXPECT_EQ(file.GetInt("N", "text", -1), 0) << "a value that isn't a number is 0, not the default";
  EXPECT_EQ(file.GetInt("N", "empty", -1), -1);
  EXPECT_EQ(file.GetInt("N", "none", -1), -1);
  // Cut to 32 bits: 99999999999 - 23 * 2^32.
  EXPECT_EQ(file.GetInt("N", "big", -1), 1215752191);
  EXPECT_EQ(file.GetIntAt("N", 2, 0), -7);
  EXPECT_EQ(file.GetIntAt("N", 6, 8), 8);
}

TEST_F(SettingsFileTest, FloatIsAtofNarrowedToFloat) {
  Write("settings.ini", "[F]\nhalf=1.5\nexp=2.5e1\ntext=x\nempty=\nhuge=1e300\nfine=0.1\n");
  CSettingsFile file("settings.ini");
  EXPECT_EQ(file.GetFloat("F", "half", -1.0f), 1.5f);
  EXPECT_EQ(file.GetFloat("F", "exp", -1.0f), 25.0f);
  EXPECT_EQ(file.GetFloat("F", "text", -1.0f), 0.0f);
  EXPECT_EQ(file.GetFloat("F", "empty", -1.0f), -1.0f);
  EXPECT_TRUE(std::isinf(file.GetFloat("F", "huge", 0.0f)));
  EXPECT_EQ(file.GetFloat("F", "fine", 0.0f), static_cast<float>(0.1));
  EXPECT_EQ(file.GetFloatAt("F", 1, 0.0f), 1.5f);
  EXPECT_EQ(file.GetFloatAt("F", 9, 3.0f), 3.0f);
}

TEST_F(SettingsFileTest, CommentFirstCountsForKeyNameButNotForIndexLookups) {
  Write("settings.ini", "[K]\n;Comment line\nAlpha = 1\nBeta=2\n\nGamma\t=3\nDelta\n=x\n");
  CSettingsFile file("settings.ini");
  EXPECT_STREQ(file.GetStringAt("K", 1, kDefault), "1");
  EXPECT_STREQ(file.GetKeyName("K", 1), ";Comment");
  EXPECT_STREQ(file.GetKeyName("K", 2), "Alpha");
  EXPECT_STREQ(file.GetKeyName("K", 3), "Beta");
  EXPECT_STREQ(file.GetKeyName("K", 4), "Gamma");
  EXPECT_STREQ(file.GetKeyName("K", 5), "Delta");
  EXPECT_STREQ(file.GetKeyName("K", 6), "");
  EXPECT_STREQ(file.GetKeyName("K", 7), "");
  EXPECT_STREQ(file.GetKeyName("K", 0), "");
  EXPECT_STREQ(file.GetKeyName("Nope", 1), "");
  EXPECT_EQ(file.CountKeys("K"), 5);
}

TEST_F(SettingsFileTest, KeyNameLivesInTheResult) {
  Write("settings.ini", "[K]\nAlpha=1\n");
  CSettingsFile file("settings.ini");
  const char* name = file.GetKeyName("K", 1);
  EXPECT_EQ(name, file.m_pszResult);
  EXPECT_STREQ(name, "Alpha");
}

TEST_F(SettingsFileTest, CountKeysOfCommentsOnlyIsZero) {
  Write("settings.ini", "[Notes]\n;one\n;two\n\n[Next]\na=1\nb=2\n\n;c=3\nc=3\n");
  CSettingsFile file("settings.ini");
  EXPECT_EQ(file.CountKeys("Notes"), 0);
  EXPECT_EQ(file.CountKeys("Next"), 3);
  EXPECT_EQ(file.CountKeys("Missing"), 0);
}

TEST_F(SettingsFileTest, BracketInValueHidesLaterKeysFromEveryQuery) {
  Write("settings.ini", "[P]\nFirst=a[b]c\nSecond=2\n[Q]\nx=1\n");
  CSettingsFile file("settings.ini");
  EXPECT_STREQ(file.GetString("P", "First", kDefault), "a");
  EXPECT_EQ(file.GetString("P", "Second", kDefault), kDefault);
  EXPECT_EQ(file.CountKeys("P"), 1);
  EXPECT_STREQ(file.GetKeyName("P", 2), "");
  EXPECT_STREQ(file.GetString("Q", "x", kDefault), "1");
}

// Bad input: every query kind gives its default and never reads past the
// text it was given.
class SettingsBadInputTest : public SettingsFileTest {
 protected:
  static void ExpectDefaults(const char* path) {
    CSettingsFile file(path);
    EXPECT_EQ(file.GetString("S", "k", kDefault), kDefault);
    EXPECT_EQ(file.GetStringAt("S", 1, kDefault), kDefault);
    EXPECT_EQ(file.GetInt("S", "k", 77), 77);
    EXPECT_EQ(file.GetIntAt("S", 1, 77), 77);
    EXPECT_EQ(file.GetBool("S", "k", true), true);
    EXPECT_EQ(file.GetBoolAt("S", 1, true), true);
    EXPECT_EQ(file.GetFloat("S", "k", 7.5f), 7.5f);
    EXPECT_EQ(file.GetFloatAt("S", 1, 7.5f), 7.5f);
    EXPECT_STREQ(file.GetKeyName("S", 1), "");
    EXPECT_EQ(file.CountKeys("S"), 0);
    EXPECT_EQ(file.m_pszResult, nullptr);
  }
};

TEST_F(SettingsBadInputTest, MissingFile) {
  ExpectDefaults("missing.ini");
}

TEST_F(SettingsBadInputTest, EmptyFile) {
  Write("empty.ini", "");
  ExpectDefaults("empty.ini");
}

TEST_F(SettingsBadInputTest, BinaryFile) {
  std::string bytes;
  for (int i = 0; i < 4096; ++i) bytes.push_back(static_cast<char>((i * 151 + 7) % 256));
  // A head whose body is nothing but a zero byte.
  bytes += "[S]"s + '\0' + "k=1\n";
  Write("binary.ini", bytes);
  ExpectDefaults("binary.ini");
}

TEST_F(SettingsBadInputTest, FileAboveTheSizeLimit) {
  Write("huge.ini", "[S]\nk=1\n");
  fs::resize_file("huge.ini", uintmax_t{4} << 30);  // sparse: no disk is used
  ExpectDefaults("huge.ini");
}

TEST_F(SettingsBadInputTest, HeadAtTheEndOfTheFile) {
  Write("end.ini", "[S]");
  ExpectDefaults("end.ini");
}

TEST_F(SettingsBadInputTest, DirectoryNamedAsFile) {
  fs::create_directory("folder.ini");
  ExpectDefaults("folder.ini");
}

TEST_F(SettingsBadInputTest, PipeNamedAsFileDoesNotBlock) {
  ASSERT_EQ(mkfifo("pipe.ini", 0600), 0);
  ExpectDefaults("pipe.ini");
}

TEST_F(SettingsBadInputTest, PathLongerThanAPathBufferIsNotCut) {
  // The first 259 characters of the long path name a real settings file:
  // a reader that cut the path would find its value.
  const std::string folder = "./" + std::string(200, 'a');
  fs::create_directory(folder);
  const std::string cutPath = folder + "/" + std::string(56, 'b');
  ASSERT_EQ(cutPath.size(), kPathBufferSize - 1);
  Write(cutPath, "[S]\nk=1\n");
  const std::string longPath = cutPath + "bbbb";
  ExpectDefaults(longPath.c_str());
  CSettingsFile file(longPath.c_str());
  EXPECT_STREQ(file.m_szPath, "");
  CSettingsFile fits(cutPath.c_str());
  EXPECT_EQ(fits.GetInt("S", "k", 0), 1);
}

TEST_F(SettingsBadInputTest, NullArguments) {
  Write("settings.ini", "[S]\nk=1\n");
  CSettingsFile file("settings.ini");
  EXPECT_EQ(file.GetString(nullptr, "k", kDefault), kDefault);
  EXPECT_EQ(file.GetString("S", nullptr, kDefault), kDefault);
  EXPECT_EQ(file.GetString("S", "missing", nullptr), nullptr);
  EXPECT_EQ(file.CountKeys(nullptr), 0);
  EXPECT_STREQ(file.GetKeyName(nullptr, 1), "");
  CSettingsFile noPath(nullptr);
  EXPECT_EQ(noPath.GetString("S", "k", kDefault), kDefault);
}
