// A video mode as a sized record: bytes, shorter and longer records, files.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/support/ByteStreams.h"
#include "tests/support/TempFiles.h"
#include "video/DeviceModeList.h"

namespace {

using namespace testsupport;

TEST(DeviceModeFile, SaveWritesSizeAndRecordAtThePosition) {
  CDeviceModeList list;
  list.BuildModeTable(3);
  CDeviceMode* mode = list.GetAt(40);
  FILE* f = std::tmpfile();
  std::fputs("head", f);  // the record goes where the stream stands
  ASSERT_EQ(mode->Save(f), 0);
  EXPECT_EQ(std::ftell(f), 4 + 4 + 701);
  const Bytes bytes = ReadAll(f);
  std::fclose(f);
  ASSERT_EQ(bytes.size(), 4u + 4 + 701);
  EXPECT_EQ(At<int32_t>(bytes, 4), 701);
  EXPECT_EQ(std::memcmp(bytes.data() + 8, static_cast<CDeviceModeData*>(mode), 701), 0);
  EXPECT_EQ(
      std::strcmp(reinterpret_cast<const char*>(bytes.data()) + 8 + 8, "MODE1920x1080f25.00i"), 0);
  EXPECT_EQ(At<int32_t>(bytes, 8 + 612), 1920);
  EXPECT_EQ(At<int32_t>(bytes, 8 + 628), 1);
  EXPECT_EQ(bytes[8 + 637], 3);
}

TEST(DeviceModeFile, RoundTripGivesTheSameRecord) {
  CDeviceModeList list;
  list.BuildModeTable(0);
  CDeviceMode* source = list.GetAt(2);
  source->dwId0 = 0xDEADBEEF;
  std::strcpy(source->szExtra, "extra");
  const Bytes bytes = SavedBytes(*source);
  FILE* in = StreamOf(bytes);
  CDeviceMode loaded;
  ASSERT_EQ(loaded.Load(in), 0);
  std::fclose(in);
  EXPECT_EQ(std::memcmp(static_cast<CDeviceModeData*>(&loaded),
                        static_cast<CDeviceModeData*>(source), 701),
            0);
}

TEST(DeviceModeFile, ShorterRecordTakesConstructorDefaultsNotFormerValues) {
  CDeviceModeData record;
  std::strcpy(record.szCode, "SHORT");
  record.iWidth = 1280;  // offset 612: outside a record of 612 bytes
  Bytes bytes;
  Put(bytes, int32_t{612});
  PutFirst(bytes, record, 612);
  FILE* in = StreamOf(bytes);
  CDeviceMode mode;
  mode.iWidth = 99;
  mode.iAspectX = 99;
  ASSERT_EQ(mode.Load(in), 0);
  std::fclose(in);
  EXPECT_STREQ(mode.szCode, "SHORT");
  EXPECT_EQ(+mode.iWidth, 720);
  EXPECT_EQ(+mode.iAspectX, 16);
  EXPECT_EQ(mode.cEnabled, 1);
}

TEST(DeviceModeFile, LongerEmptyAndFailedRecordsGiveMinusOneAndChangeNothing) {
  for (int32_t size : {702, 0, -5}) {
    Bytes bytes;
    Put(bytes, size);
    Put(bytes, CDeviceModeData{});
    bytes.push_back(0);
    FILE* in = StreamOf(bytes);
    CDeviceMode mode;
    mode.iHeight = 1080;
    EXPECT_EQ(mode.Load(in), -1) << size;
    std::fclose(in);
    EXPECT_EQ(+mode.iHeight, 1080);
  }
  FILE* empty = StreamOf(Bytes{});
  CDeviceMode mode;
  EXPECT_EQ(mode.Load(empty), -1);
  std::fclose(empty);
  EXPECT_EQ(mode.Load(nullptr), -1);
  EXPECT_EQ(mode.Save(nullptr), -1);
}

TEST(DeviceModeFile, WriteToFileAndReadFromFile) {
  TempDir dir;
  const std::string path = dir.Path("mode.bin");
  CDeviceMode source;
  std::strcpy(source.szDisplay, "Saved mode");
  source.iFrameTime = 333666;
  ASSERT_EQ(source.WriteToFile(path.c_str()), 0);
  EXPECT_EQ(ReadFile(path).size(), 705u);
  CDeviceMode loaded;
  ASSERT_EQ(loaded.ReadFromFile(path.c_str()), 0);
  EXPECT_STREQ(loaded.szDisplay, "Saved mode");
  EXPECT_EQ(+loaded.iFrameTime, 333666);
}

TEST(DeviceModeFile, FileResultsIgnoreTheRecordAndRefuseBadPaths) {
  TempDir dir;
  const std::string path = dir.Path("bad.bin");
  WriteFile(path, Bytes{0xFF, 0xFF, 0xFF, 0x7F});
  CDeviceMode mode;
  EXPECT_EQ(mode.ReadFromFile(path.c_str()), 0);
  EXPECT_EQ(+mode.iWidth, 720);
  EXPECT_EQ(mode.ReadFromFile(nullptr), -1);
  EXPECT_EQ(mode.WriteToFile(nullptr), -1);
  EXPECT_EQ(mode.WriteToFile(dir.Path("no/such/dir/m.bin").c_str()), -1);
  const std::string longPath(300, 'm');
  EXPECT_EQ(mode.WriteToFile(longPath.c_str()), -1);
  EXPECT_EQ(mode.ReadFromFile(longPath.c_str()), -1);
}

}  // namespace
