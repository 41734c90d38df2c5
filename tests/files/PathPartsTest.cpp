#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "files/PathParts.h"
#include "platform/Directory.h"

namespace {

constexpr char kSep = platform::kPathSeparator;

// Writes `text` with every backslash replaced by the platform separator, so
// the cases read like the drive-letter paths they model.
std::string P(const char* text) {
  std::string out(text);
  for (char& c : out) {
    if (c == '\\') c = kSep;
  }
  return out;
}

using Splitter = void (*)(const char*, char*);

std::string Split(Splitter split, const std::string& path) {
  char out[kPathBufferSize];
  std::memset(out, 'x', sizeof out);
  split(path.c_str(), out);
  return out;
}

std::string Cut(const std::string& path) {
  char buffer[kPathBufferSize];
  std::strcpy(buffer, path.c_str());
  CutExtension(buffer);
  return buffer;
}

}  // namespace

TEST(PathPartsTest, BareFileNameIsItsOwnNameAndPath) {
  EXPECT_EQ(Split(GetFileNamePart, "file.txt"), "file.txt");
  EXPECT_EQ(Split(GetPathPart, "file.txt"), "file.txt");
}

TEST(PathPartsTest, PathPartKeepsTheSeparator) {
  EXPECT_EQ(Split(GetPathPart, P("C:\\dir\\file")), P("C:\\dir\\"));
  EXPECT_EQ(Split(GetPathPart, P("C:\\a\\b\\c.txt")), P("C:\\a\\b\\"));
}

TEST(PathPartsTest, FileNamePartIsTheTextBehindTheLastSeparator) {
  EXPECT_EQ(Split(GetFileNamePart, P("C:\\dir\\file.txt")), "file.txt");
  EXPECT_EQ(Split(GetFileNamePart, P("C:\\dir\\")), "");
}

TEST(PathPartsTest, IndexZeroIsNeverExamined) {
  // A separator at the very start is not found.
  EXPECT_EQ(Split(GetPathPart, P("\\file")), P("\\file"));
  EXPECT_EQ(Split(GetFileNamePart, P("\\file")), P("\\file"));
  // A separator at index 1 is.
  EXPECT_EQ(Split(GetPathPart, P("a\\b")), P("a\\"));
  EXPECT_EQ(Split(GetFileNamePart, P("a\\b")), "b");
}

TEST(PathPartsTest, OtherSeparatorMeansNothing) {
  const char other[] = {kSep == '/' ? '\\' : '/', '\0'};
  const std::string path = std::string("dir") + other + "file";
  EXPECT_EQ(Split(GetPathPart, path), path);
  EXPECT_EQ(Split(GetFileNamePart, path), path);
}

TEST(PathPartsTest, ExtensionOfDotFileIsEmptyAndCutLeavesItWhole) {
  EXPECT_EQ(Split(GetExtensionPart, ".txt"), "");
  EXPECT_EQ(Cut(".txt"), ".txt");
}

TEST(PathPartsTest, ExtensionIsTheTextFromTheLastDot) {
  EXPECT_EQ(Split(GetExtensionPart, P("C:\\dir\\name.tar.gz")), ".gz");
  EXPECT_EQ(Split(GetExtensionPart, P("C:\\dir\\name")), "");
  EXPECT_EQ(Split(GetExtensionPart, "name."), ".");
  EXPECT_EQ(Cut(P("C:\\dir\\name.Qzt")), P("C:\\dir\\name"));
  EXPECT_EQ(Cut("name"), "name");
}

TEST(PathPartsTest, DotSearchDoesNotStopAtASeparator) {
  EXPECT_EQ(Split(GetExtensionPart, P("C:\\a.b\\c")), P(".b\\c"));
  EXPECT_EQ(Cut(P("C:\\a.b\\c")), P("C:\\a"));
}

TEST(PathPartsTest, EmptyAndOneCharacterPaths) {
  EXPECT_EQ(Split(GetPathPart, ""), "");
  EXPECT_EQ(Split(GetFileNamePart, ""), "");
  EXPECT_EQ(Split(GetExtensionPart, ""), "");
  EXPECT_EQ(Cut(""), "");
  EXPECT_EQ(Split(GetExtensionPart, "."), "");
  EXPECT_EQ(Cut("."), ".");
}

TEST(PathPartsTest, NullArgumentsDoNothing) {
  char out[kPathBufferSize] = "keep";
  GetPathPart(nullptr, out);
  GetFileNamePart(nullptr, out);
  GetExtensionPart(nullptr, out);
  EXPECT_STREQ(out, "keep");
  GetPathPart("a", nullptr);
  GetFileNamePart("a", nullptr);
  GetExtensionPart("a", nullptr);
  CutExtension(nullptr);
  CopyPathText(nullptr, "a");
  CopyPathText(out, nullptr);
  EXPECT_STREQ(out, "keep");
}

TEST(PathPartsTest, OverlongPathsAreCutToAPathBuffer) {
  const std::string longName(400, 'n');
  const std::string path = P("C:\\dir\\") + longName + ".ext";
  const std::string path2 = Split(GetPathPart, path);
  EXPECT_EQ(path2, P("C:\\dir\\"));
  const std::string name = Split(GetFileNamePart, path);
  EXPECT_EQ(name, longName.substr(0, kPathBufferSize - 1));
  const std::string whole = Split(GetPathPart, longName);
  EXPECT_EQ(whole.size(), kPathBufferSize - 1);
  const std::string ext = Split(GetExtensionPart, "." + longName + "." + longName);
  EXPECT_EQ(ext, ("." + longName).substr(0, kPathBufferSize - 1));
}

TEST(PathPartsTest, SplittersWorkInPlace) {
  char buffer[kPathBufferSize];
  std::strcpy(buffer, P("C:\\dir\\file.txt").c_str());
  GetFileNamePart(buffer, buffer);
  EXPECT_STREQ(buffer, "file.txt");
  GetExtensionPart(buffer, buffer);
  EXPECT_STREQ(buffer, ".txt");
}

TEST(PathPartsTest, CopyPathTextCutsAt259) {
  const std::string text(300, 'c');
  char out[kPathBufferSize];
  CopyPathText(out, text.c_str());
  EXPECT_EQ(std::strlen(out), kPathBufferSize - 1);
}
