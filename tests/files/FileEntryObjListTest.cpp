// The directory scan: what each mode lists, the paths and times it writes,
// the order it keeps, and the current directory it leaves behind.

#include <dirent.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "files/FileEntryObjList.h"
#include "files/PathParts.h"
#include "tests/core/DataLockTestPeer.h"
#include "tests/files/TempDirTest.h"

namespace {

namespace fs = std::filesystem;

void Touch(const fs::path& path) {
  std::ofstream(path) << "x";
}

std::vector<std::string> Names(FileEntryObjList& list) {
  std::vector<std::string> names;
  for (int32_t i = 0; i < list.GetCount(); ++i) names.push_back(list.GetAt(i)->sFileName);
  return names;
}

// The names of a directory as readdir gives them, filtered by keep.
template <class Keep>
std::vector<std::string> ReaddirOrder(const fs::path& folder, Keep keep) {
  std::vector<std::string> names;
  DIR* dir = opendir(folder.c_str());
  while (const dirent* entry = readdir(dir)) {
    if (keep(std::string(entry->d_name))) names.push_back(entry->d_name);
  }
  closedir(dir);
  return names;
}

int32_t OwnerCode(const CDataLock& lock) {
  return CDataLockTestPeer::OwnerCode(lock);
}

class DirectoryScan : public TempDirTest {
 protected:
  void SetUp() override {
    TempDirTest::SetUp();
    m_Scanned = m_Root / "scanned";
    fs::create_directories(m_Scanned);
  }
  std::string Scanned() const { return m_Scanned.string(); }
  fs::path m_Scanned;
};

TEST_F(DirectoryScan, NullPathGivesMinusOneAndAnEmptyList) {
  Touch(m_Scanned / "a.qzt");
  FileEntryObjList list;
  ASSERT_EQ(list.ScanDirectory(Scanned().c_str(), nullptr, 0), 0);
  ASSERT_EQ(list.GetCount(), 1);
  EXPECT_EQ(list.ScanDirectory(nullptr, "*.*", 0), -1);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.ScanFiles(nullptr, nullptr), -1);
  EXPECT_EQ(list.ScanSubDirectories(nullptr, nullptr), -1);
  EXPECT_EQ(list.DeleteFiles(nullptr, nullptr), -1);
}

TEST_F(DirectoryScan, PatternThatFindsNothingLeavesEmptyListAndSameDirectory) {
  Touch(m_Scanned / "a.qzt");
  const fs::path before = Cwd();
  FileEntryObjList list;
  EXPECT_EQ(list.ScanDirectory(Scanned().c_str(), "*.qzr", 0), 0);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(Cwd(), before);
}

TEST_F(DirectoryScan, MissingPathListsTheCurrentDirectoryUnderTheGivenPath) {
  Touch(m_Root / "here.qzt");
  FileEntryObjList list;
  EXPECT_EQ(list.ScanDirectory("/no/such/folder", "*.qzt", 0), 0);
  ASSERT_EQ(list.GetCount(), 1);
  EXPECT_STREQ(list.GetAt(0)->sFileName, "here.qzt");
  EXPECT_STREQ(list.GetAt(0)->sFullPath, "/no/such/folder/here.qzt");
  EXPECT_EQ(Cwd(), m_Root);
}

TEST_F(DirectoryScan, PathEndingInASeparatorGivesADoubleSeparator) {
  Touch(m_Scanned / "a.qzt");
  FileEntryObjList list;
  const std::string path = Scanned() + "/";
  ASSERT_EQ(list.ScanDirectory(path.c_str(), "*.qzt", 0), 0);
  ASSERT_EQ(list.GetCount(), 1);
  EXPECT_EQ(std::string(list.GetAt(0)->sFullPath), Scanned() + "//a.qzt");
}

TEST_F(DirectoryScan, EntryWhoseFullPathDoesntFitIsPassedOver) {
  std::string path = Scanned() + "/";
  path += std::string(200 - path.size(), 'd');
  fs::create_directories(path);
  const size_t room = kPathBufferSize - 1 - path.size() - 1;  // name length that just fits
  Touch(fs::path(path) / std::string(room, 'a'));
  Touch(fs::path(path) / std::string(room + 1, 'b'));
  FileEntryObjList list;
  ASSERT_EQ(list.ScanDirectory(path.c_str(), "*.*", 0), 0);
  ASSERT_EQ(list.GetCount(), 1);
  EXPECT_EQ(std::string(list.GetAt(0)->sFileName), std::string(room, 'a'));
  EXPECT_EQ(std::string(list.GetAt(0)->sFullPath), path + "/" + std::string(room, 'a'));
  EXPECT_EQ(list.GetAt(0)->iIndex, 0);
}

TEST_F(DirectoryScan, FilesModeSkipsHiddenFilesDirectoriesAndSystemEntries) {
  Touch(m_Scanned / "plain.txt");
  Touch(m_Scanned / ".hidden.txt");
  fs::create_directory(m_Scanned / "folder");
  ASSERT_EQ(mkfifo((m_Scanned / "pipe").c_str(), 0600), 0);
  FileEntryObjList list;
  ASSERT_EQ(list.ScanDirectory(Scanned().c_str(), nullptr, kScanFiles), 0);
  EXPECT_EQ(Names(list), std::vector<std::string>{"plain.txt"});
  EXPECT_EQ(std::string(list.GetAt(0)->sFullPath), Scanned() + "/plain.txt");
}

TEST_F(DirectoryScan, DirectoriesModeSkipsDotNamesAndOtherModesListNothing) {
  fs::create_directory(m_Scanned / "Visible");
  fs::create_directory(m_Scanned / ".hidden");
  Touch(m_Scanned / "file.qzt");
  FileEntryObjList list;
  ASSERT_EQ(list.ScanDirectory(Scanned().c_str(), "*.*", kScanSubDirectories), 0);
  EXPECT_EQ(Names(list), std::vector<std::string>{"Visible"});
  EXPECT_EQ(list.ScanDirectory(Scanned().c_str(), "*.*", 2), 0);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.ScanDirectory(Scanned().c_str(), "*.*", 255), 0);
  EXPECT_EQ(list.GetCount(), 0);
}

TEST_F(DirectoryScan, SubDirectoriesListsOnlyDirectoriesWithoutFurtherAttributes) {
  fs::create_directory(m_Scanned / "Plain");
  fs::create_directory(m_Scanned / "ReadOnly");
  fs::create_directory(m_Scanned / ".Hidden");
  Touch(m_Scanned / "file");
  fs::permissions(m_Scanned / "ReadOnly", fs::perms::owner_write, fs::perm_options::remove);
  FileEntryObjList list;
  ASSERT_EQ(list.ScanSubDirectories(Scanned().c_str(), nullptr), 0);
  EXPECT_EQ(OwnerCode(list.m_InnerLock), 11);
  EXPECT_EQ(Names(list), std::vector<std::string>{"Plain"});
  fs::permissions(m_Scanned / "ReadOnly", fs::perms::owner_write, fs::perm_options::add);
}

TEST_F(DirectoryScan, PatternsMatchWithoutRegardToCase) {
  Touch(m_Scanned / "Timeline1.Qzt");
  Touch(m_Scanned / "Timeline1.Bk1");
  Touch(m_Scanned / "Other.qzr");
  FileEntryObjList list;
  ASSERT_EQ(list.ScanDirectory(Scanned().c_str(), "*.qzt", 0), 0);
  EXPECT_EQ(Names(list), std::vector<std::string>{"Timeline1.Qzt"});
  ASSERT_EQ(list.ScanDirectory(Scanned().c_str(), "*.BK*", 0), 0);
  EXPECT_EQ(Names(list), std::vector<std::string>{"Timeline1.Bk1"});
}

TEST_F(DirectoryScan, EntriesComeInDirectoryOrderWithRunningIndexes) {
  for (const char* name : {"c.qzt", "a.qzt", "e.qzt", "b.qzt", "d.qzt"}) Touch(m_Scanned / name);
  FileEntryObjList list;
  ASSERT_EQ(list.ScanFiles(Scanned().c_str(), "*.qzt"), 0);
  const auto expected = ReaddirOrder(m_Scanned, [](const std::string& n) { return n.size() > 4; });
  EXPECT_EQ(Names(list), expected);
  for (int32_t i = 0; i < list.GetCount(); ++i) {
    EXPECT_EQ(list.GetAt(i)->iIndex, i);
    EXPECT_EQ(list.GetAt(i)->iReserved, 0);
  }
  EXPECT_EQ(OwnerCode(list.m_InnerLock), 1002);  // the last GetAt
}

TEST_F(DirectoryScan, SortByNameKeepsTheOrderAndTheIndexesWithNewObjects) {
  for (const char* name : {"zeta", "alpha", "mid"}) Touch(m_Scanned / name);
  FileEntryObjList list;
  ASSERT_EQ(list.ScanFiles(Scanned().c_str(), nullptr), 0);
  ASSERT_EQ(list.GetCount(), 3);
  const std::vector<std::string> before = Names(list);
  std::set<const FileEntryObj*> oldObjects;
  std::vector<int32_t> indexes;
  for (int32_t i = 0; i < 3; ++i) {
    oldObjects.insert(list.GetAt(i));
    indexes.push_back(list.GetAt(i)->iIndex);
  }
  list.GetAt(1)->iIndex = 7;  // a stored value survives as it stands
  indexes[1] = 7;
  EXPECT_EQ(list.SortByName(), 0);
  EXPECT_EQ(Names(list), before);
  for (int32_t i = 0; i < 3; ++i) EXPECT_EQ(list.GetAt(i)->iIndex, indexes[i]);
  EXPECT_EQ(OwnerCode(list.m_InnerLock), 1002);
}

TEST_F(DirectoryScan, GetAtTheCountGivesNullAndANegativeIndexThrows) {
  Touch(m_Scanned / "one");
  FileEntryObjList list;
  ASSERT_EQ(list.ScanFiles(Scanned().c_str(), nullptr), 0);
  EXPECT_NE(list.GetAt(0), nullptr);
  EXPECT_EQ(list.GetAt(1), nullptr);
  EXPECT_EQ(list.GetAt(INT32_MAX), nullptr);
  EXPECT_THROW(list.GetAt(-1), std::out_of_range);
  EXPECT_EQ(CDataLockTestPeer::LockWord(list.m_InnerLock), 0);  // not left held
}

TEST_F(DirectoryScan, DateTimeIsTheLocalWriteTime) {
  const fs::path file = m_Scanned / "dated";
  Touch(file);
  struct tm when {};
  when.tm_year = 2024 - 1900;
  when.tm_mon = 2;  // March
  when.tm_mday = 7;
  when.tm_hour = 9;
  when.tm_min = 5;
  when.tm_sec = 3;
  when.tm_isdst = -1;
  const time_t stamp = mktime(&when);
  const struct timeval times[2] = {{stamp, 0}, {stamp, 0}};
  ASSERT_EQ(utimes(file.c_str(), times), 0);
  FileEntryObjList list;
  ASSERT_EQ(list.ScanFiles(Scanned().c_str(), nullptr), 0);
  ASSERT_EQ(list.GetCount(), 1);
  EXPECT_STREQ(list.GetAt(0)->sDateTime, "07/03/2024  09:05:03");
}

TEST(FileEntryObj, ATimeThatCantBeBrokenDownPrintsZerosAndMinusOnes) {
  FileEntryObj entry;
  entry.SetWriteTime(static_cast<time_t>(LLONG_MAX));
  EXPECT_STREQ(entry.sDateTime, "00/00/0000  -1:-1:-1");
}

TEST(FileEntryObj, ConstructorClearsTheTextFieldsWhole) {
  FileEntryObj entry;
  EXPECT_EQ(entry.iIndex, -1);
  EXPECT_EQ(entry.iReserved, 0);
  for (char c : entry.sFileName) EXPECT_EQ(c, 0);
  for (char c : entry.sFullPath) EXPECT_EQ(c, 0);
  for (char c : entry.sDateTime) EXPECT_EQ(c, 0);
}

TEST_F(DirectoryScan, CopyFromCopiesEveryFieldIntoNewEntries) {
  Touch(m_Scanned / "a");
  Touch(m_Scanned / "b");
  FileEntryObjList source;
  ASSERT_EQ(source.ScanFiles(Scanned().c_str(), nullptr), 0);
  source.GetAt(1)->iReserved = 42;
  FileEntryObjList copy;
  copy.CopyFrom(source);
  ASSERT_EQ(copy.GetCount(), 2);
  EXPECT_EQ(OwnerCode(copy.m_InnerLock), 1001);
  for (int32_t i = 0; i < 2; ++i) {
    EXPECT_NE(copy.GetAt(i), source.GetAt(i));
    EXPECT_EQ(copy.GetAt(i)->iIndex, source.GetAt(i)->iIndex);
    EXPECT_EQ(copy.GetAt(i)->iReserved, source.GetAt(i)->iReserved);
    EXPECT_STREQ(copy.GetAt(i)->sFileName, source.GetAt(i)->sFileName);
    EXPECT_STREQ(copy.GetAt(i)->sFullPath, source.GetAt(i)->sFullPath);
    EXPECT_STREQ(copy.GetAt(i)->sDateTime, source.GetAt(i)->sDateTime);
  }
  copy.Clear();
  EXPECT_EQ(copy.GetCount(), 0);
  EXPECT_EQ(OwnerCode(copy.m_InnerLock), 1000);
}

TEST_F(DirectoryScan, DeleteFilesRemovesMatchingPlainFilesOnly) {
  Touch(m_Scanned / "a.bk1");
  Touch(m_Scanned / "b.Bk2");
  Touch(m_Scanned / "keep.qzt");
  Touch(m_Scanned / ".hidden.bk1");
  fs::create_directory(m_Scanned / "dir.bk1");
  FileEntryObjList list;
  EXPECT_EQ(list.DeleteFiles(Scanned().c_str(), "*.bk*"), 0);
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(OwnerCode(list.m_InnerLock), 10);
  EXPECT_FALSE(fs::exists(m_Scanned / "a.bk1"));
  EXPECT_FALSE(fs::exists(m_Scanned / "b.Bk2"));
  EXPECT_TRUE(fs::exists(m_Scanned / "keep.qzt"));
  EXPECT_TRUE(fs::exists(m_Scanned / ".hidden.bk1"));
  EXPECT_TRUE(fs::exists(m_Scanned / "dir.bk1"));
  EXPECT_EQ(Cwd(), m_Root);
}

TEST_F(DirectoryScan, ScanOwnerCodesAndTheDirectoryComesBack) {
  Touch(m_Scanned / "a");
  FileEntryObjList list;
  ASSERT_EQ(list.ScanDirectory(Scanned().c_str(), nullptr, 0), 0);
  EXPECT_EQ(OwnerCode(list.m_InnerLock), 10);
  ASSERT_EQ(list.ScanFiles(Scanned().c_str(), nullptr), 0);
  EXPECT_EQ(OwnerCode(list.m_InnerLock), 13);
  EXPECT_EQ(Cwd(), m_Root);
}

TEST_F(DirectoryScan, ARelativePathIsTakenFromTheCurrentDirectory) {
  Touch(m_Scanned / "rel.qzt");
  FileEntryObjList list;
  ASSERT_EQ(list.ScanDirectory("scanned", "*.qzt", 0), 0);
  ASSERT_EQ(list.GetCount(), 1);
  EXPECT_STREQ(list.GetAt(0)->sFullPath, "scanned/rel.qzt");
}

}  // namespace
