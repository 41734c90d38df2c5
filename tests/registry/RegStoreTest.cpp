#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <list>
#include <memory>
#include <string>

#include "registry/RegStore.h"
#include "tests/support/TempStore.h"

namespace {

class RegStoreTest : public TempStoreTest {
 protected:
  void SetUp() override {
    TempStoreTest::SetUp();
    m_reg.SetBase(HKEY_CURRENT_USER, "Software\\Tachyrun");
  }

  uint32_t Dword(const std::string& name, uint32_t dflt = 0xDEADBEEF) const {
    return m_reg.ReadDword("Test", name, dflt);
  }
  std::string String(const std::string& name, const std::string& dflt = "<none>") const {
    std::string out = "<stale>";
    m_reg.ReadString("Test", name, dflt, out);
    return out;
  }

  CRegStore m_reg;
};

TEST_F(RegStoreTest, NewStoreHasCurrentUserRootAndEmptyBase) {
  const CRegStore fresh;
  EXPECT_EQ(fresh.m_hRoot, HKEY_CURRENT_USER);
  EXPECT_EQ(fresh.m_hRoot, 0x80000001u);
  EXPECT_EQ(HKEY_LOCAL_MACHINE, 0x80000002u);
  EXPECT_TRUE(fresh.m_sBasePath.empty());
  EXPECT_EQ(g_AppRegStore.m_hRoot, HKEY_CURRENT_USER);
  EXPECT_EQ(g_UserRegStore.m_hRoot, HKEY_CURRENT_USER);
}

TEST_F(RegStoreTest, SetBaseAddsOneBackslashOnlyWhenMissing) {
  CRegStore reg;
  reg.SetBase(HKEY_LOCAL_MACHINE, "Software");
  EXPECT_EQ(reg.m_sBasePath, "Software\\");
  EXPECT_EQ(reg.m_hRoot, HKEY_LOCAL_MACHINE);
  reg.SetBase(HKEY_CURRENT_USER, "Software\\");
  EXPECT_EQ(reg.m_sBasePath, "Software\\");
  EXPECT_EQ(reg.m_hRoot, HKEY_CURRENT_USER);
}

TEST_F(RegStoreTest, SetBaseWithEmptyPathPutsSubKeysDirectlyUnderTheRoot) {
  CRegStore reg;
  reg.SetBase(HKEY_CURRENT_USER, "");
  EXPECT_EQ(reg.m_sBasePath, "");
  ASSERT_EQ(reg.WriteDword("Top", "v", 5), 1);
  const std::string noBase;
  EXPECT_EQ(m_reg.ReadDword("Top", "v", 0, &noBase), 5u);
}

TEST_F(RegStoreTest, ReadDwordOfMissingValueGivesDefault) {
  EXPECT_EQ(Dword("nothing", 17), 17u);  // no store file at all
  ASSERT_EQ(m_reg.WriteDword("Test", "other", 1), 1);
  EXPECT_EQ(Dword("nothing", 18), 18u);  // key there, value not
  EXPECT_EQ(m_reg.ReadDword("Absent", "other", 19), 19u);
}

TEST_F(RegStoreTest, DwordRoundTripsAllThirtyTwoBits) {
  ASSERT_EQ(m_reg.WriteDword("Test", "v", 0xFFFFFFFFu), 1);
  EXPECT_EQ(Dword("v", 0), 0xFFFFFFFFu);
  ASSERT_EQ(m_reg.WriteDword("Test", "v", 0x12345678u), 1);
  EXPECT_EQ(Dword("v", 0), 0x12345678u);
  EXPECT_EQ(Count("SELECT type FROM reg_values WHERE name = 'v'"), REG_DWORD);
  EXPECT_EQ(Count("SELECT length(data) FROM reg_values WHERE name = 'v'"), 4);
}

TEST_F(RegStoreTest, ReadDwordOfAnotherTypeGivesItsFirstFourBytes) {
  ASSERT_EQ(m_reg.WriteString("Test", "text", "abc"), 1);  // four bytes with its terminator
  EXPECT_EQ(Dword("text", 0xAABBCCDDu), 0x00636261u);     // 'a' 'b' 'c' 0, little-endian
  const uint8_t four[] = {0x01, 0x02, 0x03, 0x04};
  ASSERT_EQ(m_reg.WriteBinary("Test", "bin", four, sizeof four), 1);
  EXPECT_EQ(Dword("bin"), 0x04030201u);
}

TEST_F(RegStoreTest, ReadDwordOfAValueLongerThanFourBytesGivesTheDefault) {
  ASSERT_EQ(m_reg.WriteString("Test", "text", "abcdef"), 1);
  EXPECT_EQ(Dword("text", 0xAABBCCDDu), 0xAABBCCDDu);
}

TEST_F(RegStoreTest, ReadDwordOfShorterValueKeepsDefaultBytesBehindIt) {
  const uint8_t two[] = {0x11, 0x22};
  ASSERT_EQ(m_reg.WriteBinary("Test", "short", two, sizeof two), 1);
  EXPECT_EQ(Dword("short", 0xAABBCCDDu), 0xAABB2211u);
  ASSERT_EQ(m_reg.WriteBinary("Test", "empty", two, 0), 1);
  EXPECT_EQ(Dword("empty", 0xAABBCCDDu), 0xAABBCCDDu);
}

TEST_F(RegStoreTest, ReadStringWithMissingKeyLeavesDefault) {
  EXPECT_EQ(String("name", "fallback"), "fallback");
  std::string out = "stale";
  m_reg.ReadString("No\\Such\\Key", "name", "dflt", out);
  EXPECT_EQ(out, "dflt");
}

TEST_F(RegStoreTest, StringIsStoredWithItsTerminator) {
  ASSERT_EQ(m_reg.WriteString("Test", "s", "hello"), 1);
  EXPECT_EQ(String("s"), "hello");
  EXPECT_EQ(Count("SELECT type FROM reg_values WHERE name = 's'"), REG_SZ);
  EXPECT_EQ(Count("SELECT length(data) FROM reg_values WHERE name = 's'"), 6);
  ASSERT_EQ(m_reg.WriteString("Test", "s", ""), 1);
  EXPECT_EQ(String("s"), "");
}

TEST_F(RegStoreTest, ReadStringOfBinaryStopsAtFirstNulOrEnd) {
  const char bytes[] = {'x', 'y', '\0', 'z'};
  ASSERT_EQ(m_reg.WriteBinary("Test", "b", bytes, sizeof bytes), 1);
  EXPECT_EQ(String("b"), "xy");
  ASSERT_EQ(m_reg.WriteBinary("Test", "b", bytes, 2), 1);  // no terminator at all
  EXPECT_EQ(String("b"), "xy");
}

TEST_F(RegStoreTest, KeyAndValueNamesCompareWithoutCase) {
  ASSERT_EQ(m_reg.WriteDword("Test\\Mixed", "Value", 7), 1);
  const std::string base = "SOFTWARE\\tachyrun\\";
  EXPECT_EQ(m_reg.ReadDword("TEST\\mixed", "vALUE", 0, &base), 7u);
  ASSERT_EQ(m_reg.WriteDword("test\\MIXED", "VALUE", 8), 1);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 1);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys WHERE folded = 'MIXED'"), 1);
  EXPECT_EQ(m_reg.ReadDword("Test\\Mixed", "Value", 0), 8u);
}

TEST_F(RegStoreTest, NonAsciiNamesAlsoCompareWithoutCase) {
  ASSERT_EQ(m_reg.WriteDword("Äpfel", "Größe", 3), 1);
  EXPECT_EQ(m_reg.ReadDword("äPFEL", "GRÖßE", 0), 3u);
  EXPECT_EQ(m_reg.ReadDword("Apfel", "Größe", 0), 0u);  // a different letter stays different
}

TEST_F(RegStoreTest, ValueKeepsTheSpellingOfItsFirstWrite) {
  ASSERT_EQ(m_reg.WriteDword("Test", "CamelCase", 1), 1);
  ASSERT_EQ(m_reg.WriteDword("Test", "camelcase", 2), 1);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values WHERE name = 'CamelCase'"), 1);
}

TEST_F(RegStoreTest, ReadsNeverCreateTheStoreOrAKey) {
  std::list<std::string> list;
  uint32_t size = 0;
  EXPECT_EQ(Dword("v", 4), 4u);
  EXPECT_EQ(String("v"), "<none>");
  m_reg.ReadStringList("Test", "L", list);
  EXPECT_EQ(m_reg.ReadBinary("Test", "b", &size), nullptr);
  EXPECT_FALSE(std::filesystem::exists(m_store));

  ASSERT_EQ(m_reg.WriteDword("Other", "v", 1), 1);
  const long long keys = Count("SELECT count(*) FROM reg_keys");
  EXPECT_EQ(m_reg.ReadDword("Deep\\Missing\\Path", "v", 9), 9u);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys"), keys);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 1);
}

TEST_F(RegStoreTest, WriteCreatesTheWholePathWithTheStoreClass) {
  ASSERT_EQ(m_reg.WriteDword("A\\B\\C", "v", 1), 1);
  // Software, Tachyrun, A, B, C below the two roots.
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys WHERE parent IS NOT NULL"), 5);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys WHERE parent IS NOT NULL"
                  " AND class = 'Tessavane Data'"),
            5);
  EXPECT_EQ(m_reg.ReadDword("A\\B\\C", "v", 0), 1u);
}

TEST_F(RegStoreTest, RootsAreSeparateTrees) {
  CRegStore machine;
  machine.SetBase(HKEY_LOCAL_MACHINE, "Software\\Tachyrun");
  ASSERT_EQ(m_reg.WriteDword("Test", "v", 1), 1);
  ASSERT_EQ(machine.WriteDword("Test", "v", 2), 1);
  EXPECT_EQ(m_reg.ReadDword("Test", "v", 0), 1u);
  EXPECT_EQ(machine.ReadDword("Test", "v", 0), 2u);
  EXPECT_EQ(m_reg.ReadDword("Test", "v", 0, nullptr, HKEY_LOCAL_MACHINE), 2u);
}

TEST_F(RegStoreTest, BaseAndRootArgumentsReplaceTheStoresOwnForOneCall) {
  const std::string base = "Elsewhere\\";
  ASSERT_EQ(m_reg.WriteString("K", "s", "there", &base, HKEY_LOCAL_MACHINE), 1);
  CRegStore check;
  check.SetBase(HKEY_LOCAL_MACHINE, "Elsewhere");
  std::string out;
  check.ReadString("K", "s", "", out);
  EXPECT_EQ(out, "there");
  EXPECT_EQ(m_reg.m_sBasePath, "Software\\Tachyrun\\");
  EXPECT_EQ(m_reg.m_hRoot, HKEY_CURRENT_USER);
  m_reg.ReadString("K", "s", "none", out);
  EXPECT_EQ(out, "none");
}

TEST_F(RegStoreTest, UnknownRootOrMalformedPathFailsWithoutWriting) {
  CRegStore reg;
  reg.SetBase(0x80000000u, "Software");
  EXPECT_EQ(reg.WriteDword("X", "v", 1), 0);
  EXPECT_EQ(reg.ReadDword("X", "v", 6), 6u);
  EXPECT_EQ(m_reg.WriteDword("\\Lead", "v", 1), 0);
  EXPECT_EQ(m_reg.WriteDword("Double\\\\Sep", "v", 1), 0);
  EXPECT_EQ(m_reg.WriteDword(std::string(256, 'k'), "v", 1), 0);
  EXPECT_EQ(m_reg.WriteDword(std::string(255, 'k'), "v", 1), 1);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 1);
}

TEST_F(RegStoreTest, WriteStringListOfTwoOverFiveLeavesExactlyTwo) {
  const std::list<std::string> five = {"one", "two", "three", "four", "five"};
  ASSERT_EQ(m_reg.WriteStringList("Test", "Item", five), 1);
  std::list<std::string> out;
  m_reg.ReadStringList("Test", "Item", out);
  EXPECT_EQ(out, five);

  ASSERT_EQ(m_reg.WriteStringList("Test", "Item", {"alpha", "beta"}), 1);
  m_reg.ReadStringList("Test", "Item", out);
  EXPECT_EQ(out, (std::list<std::string>{"alpha", "beta"}));
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 2);
  EXPECT_EQ(String("Item3"), "<none>");
}

TEST_F(RegStoreTest, EmptyListRemovesEveryNumberedValue) {
  ASSERT_EQ(m_reg.WriteStringList("Test", "Item", {"a", "b"}), 1);
  ASSERT_EQ(m_reg.WriteDword("Test", "Other", 1), 1);
  ASSERT_EQ(m_reg.WriteStringList("Test", "Item", {}), 1);
  std::list<std::string> out = {"stale"};
  m_reg.ReadStringList("Test", "Item", out);
  EXPECT_TRUE(out.empty());
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 1);
}

TEST_F(RegStoreTest, ReadStringListStopsAtTheFirstGap) {
  ASSERT_EQ(m_reg.WriteString("Test", "N1", "first"), 1);
  ASSERT_EQ(m_reg.WriteString("Test", "N3", "third"), 1);
  std::list<std::string> out = {"stale"};
  m_reg.ReadStringList("Test", "N", out);
  EXPECT_EQ(out, (std::list<std::string>{"first"}));
}

TEST_F(RegStoreTest, ReadBinaryOfStringGivesNullWithSizeFilled) {
  ASSERT_EQ(m_reg.WriteString("Test", "s", "text"), 1);
  uint32_t size = 0;
  EXPECT_EQ(m_reg.ReadBinary("Test", "s", &size), nullptr);
  EXPECT_EQ(size, 5u);
}

TEST_F(RegStoreTest, ReadBinaryOfMissingValueLeavesSizeAlone) {
  uint32_t size = 77;
  EXPECT_EQ(m_reg.ReadBinary("Test", "none", &size), nullptr);
  EXPECT_EQ(size, 77u);
  EXPECT_EQ(m_reg.ReadBinary("Test", "none", nullptr), nullptr);
}

TEST_F(RegStoreTest, BinaryRoundTripsEveryByte) {
  uint8_t bytes[256];
  for (int i = 0; i < 256; ++i) bytes[i] = static_cast<uint8_t>(255 - i);
  ASSERT_EQ(m_reg.WriteBinary("Test", "blob", bytes, sizeof bytes), 1);
  uint32_t size = 0;
  std::unique_ptr<uint8_t[]> block(m_reg.ReadBinary("Test", "blob", &size));
  ASSERT_NE(block, nullptr);
  ASSERT_EQ(size, 256u);
  EXPECT_EQ(std::memcmp(block.get(), bytes, sizeof bytes), 0);
  EXPECT_EQ(Count("SELECT type FROM reg_values WHERE name = 'blob'"), REG_BINARY);
  EXPECT_EQ(m_reg.WriteBinary("Test", "null", nullptr, 4), 0);
}

TEST_F(RegStoreTest, FailedWriteLeavesNoKeyBehind) {
  ASSERT_EQ(m_reg.WriteDword("Test", "v", 1), 1);
  EXPECT_EQ(m_reg.WriteBinary("Fresh\\Key", "b", nullptr, 4), 0);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys WHERE name IN ('Fresh', 'Key')"), 0);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 1);
}

TEST_F(RegStoreTest, DeleteKeyTreeWithEmptyKeyDeletesNothing) {
  ASSERT_EQ(m_reg.WriteDword("Test", "v", 1), 1);
  const long long keys = Count("SELECT count(*) FROM reg_keys");
  EXPECT_EQ(m_reg.DeleteKeyTree(HKEY_CURRENT_USER, ""), 0);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys"), keys);
  EXPECT_EQ(Dword("v"), 1u);
}

TEST_F(RegStoreTest, DeleteKeyTreeRemovesChildrenDepthFirst) {
  ASSERT_EQ(m_reg.WriteDword("Test\\A\\A1", "v", 1), 1);
  ASSERT_EQ(m_reg.WriteDword("Test\\A\\A2\\Deep", "v", 2), 1);
  ASSERT_EQ(m_reg.WriteString("Test\\B", "s", "x"), 1);
  ASSERT_EQ(m_reg.WriteDword("Test", "v", 3), 1);
  ASSERT_EQ(m_reg.WriteDword("Keep", "v", 4), 1);
  EXPECT_EQ(m_reg.DeleteKeyTree(HKEY_CURRENT_USER, "software\\tachyrun\\test"), 1);
  EXPECT_EQ(Dword("v", 0), 0u);
  EXPECT_EQ(m_reg.ReadDword("Test\\A\\A2\\Deep", "v", 0), 0u);
  EXPECT_EQ(m_reg.ReadDword("Keep", "v", 0), 4u);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_values"), 1);
  // Left: the two roots, Software, Tachyrun, Keep.
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys"), 5);
}

TEST_F(RegStoreTest, DeleteKeyTreeOfMissingKeyGivesZero) {
  EXPECT_EQ(m_reg.DeleteKeyTree(HKEY_CURRENT_USER, "Software\\Nothing"), 0);
  ASSERT_EQ(m_reg.WriteDword("Test", "v", 1), 1);
  EXPECT_EQ(m_reg.DeleteKeyTree(HKEY_LOCAL_MACHINE, "Software\\Tachyrun\\Test"), 0);
  EXPECT_EQ(Dword("v"), 1u);
}

TEST_F(RegStoreTest, DeleteKeyTreeAcceptsATrailingBackslash) {
  ASSERT_EQ(m_reg.WriteDword("Test\\Child", "v", 1), 1);
  EXPECT_EQ(m_reg.DeleteKeyTree(HKEY_CURRENT_USER, "Software\\Tachyrun\\"), 1);
  EXPECT_EQ(m_reg.ReadDword("Test\\Child", "v", 0), 0u);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys WHERE name = 'Software'"), 1);
}

}  // namespace

namespace {

class RegStoreDepthTest : public TempStoreTest {};

TEST_F(RegStoreDepthTest, DeepestPathIsStoredAndDeletedOneDeeperIsRefused) {
  CRegStore reg;
  reg.SetBase(HKEY_CURRENT_USER, "");
  std::string path = "d";
  for (size_t i = 1; i < 512; ++i) path += "\\d";
  ASSERT_EQ(reg.WriteDword(path, "v", 1), 1);
  EXPECT_EQ(reg.ReadDword(path, "v", 0), 1u);
  EXPECT_EQ(reg.WriteDword(path + "\\d", "v", 1), 0);
  EXPECT_EQ(reg.DeleteKeyTree(HKEY_CURRENT_USER, "d"), 1);
  EXPECT_EQ(Count("SELECT count(*) FROM reg_keys"), 2);  // the roots
}

}  // namespace
