// The table of video modes and the list around it.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "video/DeviceModeList.h"

namespace {

// The modes as the product documents them: row|code|display|width|height|
// frame time|field code|aspect.
const char* const kExpectedRows[] = {
    "1|PAL720x576f25i43|PAL  720x576 50.00i Interlaced 4:3|720|576|400000|1|4:3",
    "2|PAL720x576f25i169|PAL  720x576 50.00i Interlaced 16:9|720|576|400000|1|16:9",
    "3|NTSC720x486f29.97i43|NTSC 720x486 59.94i Interlaced 4:3|720|486|333666|2|4:3",
    "4|NTSC720x486f29.97i169|NTSC 720x486 59.94i Interlaced 16:9|720|486|333666|2|16:9",
    "5|NTSC720x486f30i43|NTSC 720x486 60.00i Interlaced 4:3|720|486|333333|2|4:3",
    "6|NTSC720x486f30i169|NTSC 720x486 60.00i Interlaced 16:9|720|486|333333|2|16:9",
    "7|NTSC720x480f29.97i43|NTSC 720x480 59.94i Interlaced 4:3|720|480|333666|2|4:3",
    "8|NTSC720x480f29.97i169|NTSC 720x480 59.94i Interlaced 16:9|720|480|333666|2|16:9",
    "9|NTSC720x480f30i43|NTSC 720x480 60.00i Interlaced 4:3|720|480|333333|2|4:3",
    "10|NTSC720x480f30i169|NTSC 720x480 60.00i Interlaced 16:9|720|480|333333|2|16:9",
    "11|PAL720x576f24p|PAL  720x576 24.00Fps Progressive|720|576|416666|0|16:9",
    "12|PAL720x576f25p|PAL  720x576 25.00Fps Progressive|720|576|400000|0|16:9",
    "13|PAL720x576f50p|PAL  720x576 50.00Fps Progressive|720|576|200000|0|16:9",
    "14|NTSC720x486f23.98p|NTSC 720x486 23.98Fps Progressive|720|486|417083|0|16:9",
    "15|NTSC720x486f30p|NTSC 720x486 30.00Fps Progressive|720|486|333333|0|16:9",
    "16|NTSC720x486f60p|NTSC 720x486 60.00Fps Progressive|720|486|166666|0|16:9",
    "17|NTSC720x486f30p|NTSC 720x480 30.00Fps Progressive|720|480|333333|0|16:9",
    "18|PC640x480f25p|PC 640x480 25.00Fps Progressive|640|480|400000|0|16:9",
    "19|PC640x480f30p|PC 640x480 30.00Fps Progressive|640|480|333333|0|16:9",
    "20|PC1024x768f25p|PC 1024x768 25.00Fps Progressive|1024|768|400000|0|16:9",
    "21|PC 1024x768f30p|PC 1024x768 30.00Fps Progressive|1024|768|333333|0|16:9",
    "22|MODE1280x720f23.98p|HDMode 1280x720 23.98Fps Progressive|1280|720|417083|0|16:9",
    "23|MODE1280x720f24.00p|HDMode 1280x720 24.00Fps Progressive|1280|720|416666|0|16:9",
    "24|MODE1280x720f25.00p|HDMode 1280x720 25.00Fps Progressive|1280|720|400000|0|16:9",
    "25|MODE1280x720f29.97p|HDMode 1280x720 29.97Fps Progressive|1280|720|333666|0|16:9",
    "26|MODE1280x720f30.00p|HDMode 1280x720 30.00Fps Progressive|1280|720|333333|0|16:9",
    "27|MODE1280x720f50.00p|HDMode 1280x720 50.00Fps Progressive|1280|720|200000|0|16:9",
    "28|MODE1280x720f59.94p|HDMode 1280x720 59.94Fps Progressive|1280|720|166833|0|16:9",
    "29|MODE1280x720f60.00p|HDMode 1280x720 60.00Fps Progressive|1280|720|166666|0|16:9",
    "30|MODE1440x1080f23.98p|HDMode 1440x1080 23.98Fps Progressive|1440|1080|417083|0|16:9",
    "31|MODE1440x1080f24.00p|HDMode 1440x1080 24.00Fps Progressive|1440|1080|416666|0|16:9",
    "32|MODE1440x1080f25.00p|HDMode 1440x1080 25.00Fps Progressive|1440|1080|400000|0|16:9",
    "33|MODE1440x1080f30.00p|HDMode 1440x1080 30.00Fps Progressive|1440|1080|333333|0|16:9",
    "34|MODE1440x1080f25.00i|HDMode 1440x1080 50.00i Interlaced|1440|1080|400000|1|16:9",
    "35|MODE1440x1080f59.94i|HDMode 1440x1080 59.94i Interlaced|1440|1080|333666|1|16:9",
    "36|MODE1920x1080f23.98p|HDMode 1920x1080 23.98Fps Progressive|1920|1080|417083|0|16:9",
    "37|MODE1920x1080f24.00p|HDMode 1920x1080 24.00Fps Progressive|1920|1080|416666|0|16:9",
    "38|MODE1920x1080f25.00p|HDMode 1920x1080 25.00Fps Progressive|1920|1080|400000|0|16:9",
    "39|MODE1920x1080f29.97p|HDMode 1920x1080 29.97Fps Progressive|1920|1080|333666|0|16:9",
    "40|MODE1920x1080f30.00p|HDMode 1920x1080 30.00Fps Progressive|1920|1080|333333|0|16:9",
    "41|MODE1920x1080f25.00i|HDMode 1920x1080 50.00i Interlaced|1920|1080|400000|1|16:9",
    "42|MODE1920x1080f59.94i|HDMode 1920x1080 59.94i Interlaced|1920|1080|333666|1|16:9",
    "43|MODE2048x1556f23.98psf|HDMode 2048x1556 23.98Fps Progressive "
    "S.Frame|2048|1556|417083|1|16:9",
    "44|MODE2048x1556f24.00psf|HDMode 2048x1556 24.00Fps Progressive "
    "S.Frame|2048|1556|416666|1|16:9",
    "45|MODE2048x1556f25.00p|HDMode 2048x1556 25.00Fps Progressive|2048|1556|400000|1|16:9",
    "46|MODE2048x1556f30.00p|HDMode 2048x1556 30.00Fps Progressive|2048|1556|333333|1|16:9",
};

std::vector<std::string> Fields(const char* row) {
  std::vector<std::string> fields;
  std::stringstream in(row);
  std::string field;
  while (std::getline(in, field, '|')) fields.push_back(field);
  return fields;
}

bool AllZero(const void* bytes, size_t count) {
  const auto* b = static_cast<const uint8_t*>(bytes);
  for (size_t i = 0; i < count; ++i) {
    if (b[i] != 0) return false;
  }
  return true;
}

TEST(DeviceModeList, TableHoldsTheFortySixModesFieldByField) {
  CDeviceModeList list;
  EXPECT_EQ(list.BuildModeTable(7), 0);
  ASSERT_EQ(list.GetCount(), 46);
  for (int32_t i = 0; i < 46; ++i) {
    const std::vector<std::string> f = Fields(kExpectedRows[i]);
    ASSERT_EQ(f.size(), 8u);
    ASSERT_EQ(std::stoi(f[0]), i + 1);
    CDeviceMode* mode = list.GetAt(i);
    ASSERT_NE(mode, nullptr);
    SCOPED_TRACE(f[1]);
    EXPECT_STREQ(mode->szCode, f[1].c_str());
    EXPECT_STREQ(mode->szDisplay, f[2].c_str());
    EXPECT_EQ(+mode->iWidth, std::stoi(f[3]));
    EXPECT_EQ(+mode->iHeight, std::stoi(f[4]));
    EXPECT_EQ(+mode->iFrameTime, std::stoi(f[5]));
    EXPECT_EQ(+mode->iFrameTime2, std::stoi(f[5]));
    EXPECT_EQ(+mode->iFrameTime3, std::stoi(f[5]));
    EXPECT_EQ(+mode->iFieldCode, std::stoi(f[6]));
    const bool fourByThree = f[7] == "4:3";
    EXPECT_EQ(+mode->iAspectX, fourByThree ? 4 : 16);
    EXPECT_EQ(+mode->iAspectY, fourByThree ? 3 : 9);
    EXPECT_EQ(+mode->dwId0, 0u);
    EXPECT_EQ(+mode->dwId1, 0u);
    EXPECT_EQ(+mode->dwReserved608, 0u);
    EXPECT_EQ(+mode->dwReserved632, 0u);
    EXPECT_EQ(+mode->dwReserved638, 0u);
    EXPECT_EQ(mode->cEnabled, 1);
    EXPECT_EQ(mode->cTableFlag, 7);
    EXPECT_EQ(+mode->iOutputA, 0);
    EXPECT_EQ(mode->cOutputB, 0);
    EXPECT_TRUE(AllZero(mode->szExtra, sizeof(mode->szExtra)));
    EXPECT_TRUE(AllZero(mode->abTail, sizeof(mode->abTail)));
  }
}

TEST(DeviceModeList, OdditiesOfTheTableStay) {
  CDeviceModeList list;
  list.BuildModeTable(0);
  // Row 17 has the code of row 15 with 480 lines.
  EXPECT_STREQ(list.GetAt(16)->szCode, "NTSC720x486f30p");
  EXPECT_EQ(+list.GetAt(16)->iHeight, 480);
  EXPECT_STREQ(list.GetAt(20)->szCode, "PC 1024x768f30p");
  EXPECT_EQ(std::strncmp(list.GetAt(0)->szDisplay, "PAL  ", 5), 0);
  EXPECT_EQ(+list.GetAt(34)->iFieldCode, 1);  // 59.94i high definition
  EXPECT_EQ(+list.GetAt(34)->iFrameTime, 333666);
  for (int32_t i = 42; i < 46; ++i) EXPECT_EQ(+list.GetAt(i)->iFieldCode, 1);
  EXPECT_EQ(list.FindByCode("MODE1920x1080f50.00p"), nullptr);
  EXPECT_NE(list.FindByCode("MODE1280x720f50.00p"), nullptr);
}

TEST(DeviceModeList, FindByCodeGivesRowFifteenNeverRowSeventeen) {
  CDeviceModeList list;
  list.BuildModeTable(0);
  CDeviceMode* mode = list.FindByCode("NTSC720x486f30p");
  ASSERT_NE(mode, nullptr);
  EXPECT_EQ(mode, list.GetAt(14));
  EXPECT_EQ(+mode->iHeight, 486);
  EXPECT_EQ(list.FindByCode(nullptr), nullptr);
  EXPECT_EQ(list.FindByCode("nothing"), nullptr);
  EXPECT_EQ(list.FindByCode("PC 1024x768f30p"), list.GetAt(20));
}

TEST(DeviceModeList, FindSameIgnoresTheAspectRatio) {
  CDeviceModeList list;
  list.BuildModeTable(0);
  EXPECT_EQ(list.FindSame(list.GetAt(1)), list.GetAt(0));
  EXPECT_EQ(list.FindSame(nullptr), nullptr);
  CDeviceMode odd;
  odd.iWidth = 1;
  EXPECT_EQ(list.FindSame(&odd), nullptr);
}

TEST(DeviceModeList, FindByIdsZeroZeroGivesTheFirstRow) {
  CDeviceModeList list;
  list.BuildModeTable(0);
  EXPECT_EQ(list.FindByIds(0, 0), list.GetAt(0));
  EXPECT_EQ(list.FindByIds(0, 1), nullptr);
  list.GetAt(5)->dwId0 = 9;
  list.GetAt(5)->dwId1 = 8;
  EXPECT_EQ(list.FindByIds(9, 8), list.GetAt(5));
}

TEST(DeviceModeList, GetAtOutOfRangeOnBothSidesIsNull) {
  CDeviceModeList list;
  list.BuildModeTable(0);
  EXPECT_EQ(list.GetAt(46), nullptr);
  EXPECT_EQ(list.GetAt(-1), nullptr);
  EXPECT_NE(list.GetAt(45), nullptr);
}

TEST(DeviceModeList, RemoveAtOutOfRangeDeletesNothing) {
  CDeviceModeList list;
  list.BuildModeTable(0);
  EXPECT_FALSE(list.RemoveAt(46));
  EXPECT_FALSE(list.RemoveAt(-1));
  EXPECT_EQ(list.GetCount(), 46);
  CDeviceMode* second = list.GetAt(1);
  EXPECT_TRUE(list.RemoveAt(0));
  EXPECT_EQ(list.GetCount(), 45);
  EXPECT_EQ(list.GetAt(0), second);
}

TEST(DeviceModeList, TwoBuildsLeaveFortySixModes) {
  CDeviceModeList list;
  list.Add(new CDeviceMode);
  list.BuildModeTable(1);
  list.BuildModeTable(2);
  EXPECT_EQ(list.GetCount(), 46);
  EXPECT_EQ(list.GetAt(0)->cTableFlag, 2);
}

TEST(DeviceModeList, SetOutputOnEveryModeAndOnAnEmptyList) {
  CDeviceModeList empty;
  EXPECT_EQ(empty.SetOutputA(5, 1), 0);
  EXPECT_EQ(empty.SetOutputB(5, 1), 0);
  EXPECT_EQ(empty.GetCount(), 0);
  CDeviceModeList list;
  list.BuildModeTable(0);
  EXPECT_EQ(list.SetOutputA(11, 2), 0);
  EXPECT_EQ(list.SetOutputB(-3, 4), 0);
  for (int32_t i = 0; i < list.GetCount(); ++i) {
    EXPECT_EQ(+list.GetAt(i)->iOutputA, 11);
    EXPECT_EQ(list.GetAt(i)->cOutputA, 2);
    EXPECT_EQ(+list.GetAt(i)->iOutputB, -3);
    EXPECT_EQ(list.GetAt(i)->cOutputB, 4);
  }
}

TEST(DeviceModeList, AddAppendsAndGivesZero) {
  CDeviceModeList list;
  auto* mode = new CDeviceMode;
  EXPECT_EQ(list.Add(mode), 0);
  EXPECT_EQ(list.GetAt(0), mode);
}

TEST(DeviceMode, ConstructorIsAPalFrame) {
  CDeviceMode mode;
  EXPECT_EQ(+mode.iWidth, 720);
  EXPECT_EQ(+mode.iHeight, 576);
  EXPECT_EQ(+mode.iFrameTime, 400000);
  EXPECT_EQ(+mode.iFrameTime2, 400000);
  EXPECT_EQ(+mode.iFrameTime3, 400000);
  EXPECT_EQ(+mode.iFieldCode, 0);
  EXPECT_EQ(mode.cEnabled, 1);
  EXPECT_EQ(+mode.iAspectX, 16);
  EXPECT_EQ(+mode.iAspectY, 9);
  EXPECT_STREQ(mode.szCode, "");
  EXPECT_STREQ(mode.szDisplay, "");
  EXPECT_EQ(+mode.dwId0, 0u);
}

TEST(DeviceMode, IsSameModeComparesSizeFrameTimeAndFields) {
  CDeviceMode a;
  CDeviceMode b;
  b.iAspectX = 4;
  std::strcpy(b.szCode, "other");
  EXPECT_TRUE(a.IsSameMode(&b));
  EXPECT_FALSE(a.IsSameMode(nullptr));
  CDeviceMode wider, taller, slower, interlaced;
  wider.iWidth += 1;
  taller.iHeight += 1;
  slower.iFrameTime += 1;
  interlaced.iFieldCode = 1;
  for (CDeviceMode* other : {&wider, &taller, &slower, &interlaced}) {
    EXPECT_FALSE(a.IsSameMode(other));
  }
}

TEST(DeviceMode, NextDeviceSerialStartsAtTwoAndCounts) {
  // The first call of this process.
  EXPECT_EQ(NextDeviceSerial(), 2u);
  EXPECT_EQ(NextDeviceSerial(), 3u);
}

}  // namespace
