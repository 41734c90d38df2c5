// Filter classes by friendly name over device classes and factory klasses.
#include <gtest/gtest.h>

#include "graph/FilterClasses.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

TEST(FindFilterClsidTest, FindsAFactoryByItsLongNameInAnyCategory) {
  std::string clsid;
  EXPECT_EQ(FindFilterClsid(&clsid, "Video test source", nullptr), 1);
  EXPECT_EQ(clsid, "videotestsrc");
}

TEST(FindFilterClsidTest, CaseCountsAndAMissLeavesOutAlone) {
  std::string clsid = "untouched";
  EXPECT_EQ(FindFilterClsid(&clsid, "video test source", nullptr), 0);
  EXPECT_EQ(clsid, "untouched");
  EXPECT_EQ(FindFilterClsid(&clsid, nullptr, nullptr), 0);
}

TEST(FindFilterClsidTest, ACategoryNameLimitsTheSearch) {
  std::string clsid;
  EXPECT_EQ(FindFilterClsid(&clsid, "Video test source", "Source/Video"), 1);
  EXPECT_EQ(clsid, "videotestsrc");
  clsid.clear();
  EXPECT_EQ(FindFilterClsid(&clsid, "Video test source", "Sink/Video"), 0);
  EXPECT_EQ(clsid, "");
}

TEST(FindFilterClsidTest, OverAllCategoriesTheTwinEnumeratedLastWins) {
  // Factory klasses come in name order: Alpha, then Beta.
  std::string clsid;
  EXPECT_EQ(FindFilterClsid(&clsid, kTwinLongName, nullptr), 1);
  EXPECT_EQ(clsid, kTwinBFactory);
  EXPECT_EQ(FindFilterClsid(&clsid, kTwinLongName, "Tachyrun/Test/Alpha"), 1);
  EXPECT_EQ(clsid, kTwinAFactory);
}

TEST(FindFilterClsidTest, DevicesAreFiltersOfTheirDeviceClass) {
  std::string clsid;
  EXPECT_EQ(FindFilterClsid(&clsid, kTwinDeviceName, kTwinDeviceClassA), 1);
  EXPECT_EQ(clsid, "videotestsrc");
  EXPECT_EQ(FindFilterClsid(&clsid, kTwinDeviceName, kTwinDeviceClassB), 1);
  EXPECT_EQ(clsid, "audiotestsrc");
  EXPECT_EQ(FindFilterClsid(&clsid, kTwinDeviceName, nullptr), 1);
  EXPECT_EQ(clsid, "audiotestsrc");
}

TEST(FindFilterClsidTest, AnEmptyCategoryFindsNothing) {
  SetCaptureDevicePresent(false);
  std::string clsid = "untouched";
  EXPECT_EQ(FindFilterClsid(&clsid, "Pinnacle WDM PCTV Video Capture", "Video Capture Sources"), 0);
  EXPECT_EQ(clsid, "untouched");
  SetCaptureDevicePresent(true);
}

TEST(CreateCaptureFilterTest, MakesTheCaptureDevicesFilter) {
  GstElement* filter = nullptr;
  ASSERT_EQ(CreateCaptureFilter(&filter), S_OK);
  ASSERT_NE(filter, nullptr);
  EXPECT_STREQ(GST_OBJECT_NAME(gst_element_get_factory(filter)), "videotestsrc");
  EXPECT_FALSE(g_object_is_floating(filter));
  gst_object_unref(filter);
}

TEST(CreateCaptureFilterTest, WithoutTheDeviceItIsMinusOne) {
  SetCaptureDevicePresent(false);
  GstElement* filter = nullptr;
  EXPECT_EQ(CreateCaptureFilter(&filter), -1);
  EXPECT_EQ(filter, nullptr);
  SetCaptureDevicePresent(true);
}
