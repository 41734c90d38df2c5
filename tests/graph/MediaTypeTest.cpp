// Media types: what they hold and how they give it back.
#include <gtest/gtest.h>

#include "graph/MediaType.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

TEST(MediaTypeTest, FirstMediaTypeNamesTheMajorTypeAndHoldsTheCaps) {
  ElementRef source(
      GST_ELEMENT(gst_object_ref_sink(gst_element_factory_make("audiotestsrc", nullptr))));
  PadRef pad(gst_element_get_static_pad(source.get(), "src"));
  AM_MEDIA_TYPE type;
  ASSERT_TRUE(FirstMediaType(pad.get(), &type));
  EXPECT_STREQ(type.majortype, "audio");
  EXPECT_TRUE(IsMajorType(type, MEDIATYPE_Audio));
  EXPECT_FALSE(IsMajorType(type, MEDIATYPE_Video));
  EXPECT_FALSE(IsMajorType(type, nullptr));
  EXPECT_EQ(type.cbFormat, 1u);
  ASSERT_NE(type.pbFormat, nullptr);
  FreeMediaType(&type);
  EXPECT_EQ(type.cbFormat, 0u);
  EXPECT_EQ(type.pbFormat, nullptr);
}

TEST(MediaTypeTest, AnUnlinkedPadHasNoConnectionType) {
  ElementRef source(
      GST_ELEMENT(gst_object_ref_sink(gst_element_factory_make("audiotestsrc", nullptr))));
  PadRef pad(gst_element_get_static_pad(source.get(), "src"));
  AM_MEDIA_TYPE type;
  EXPECT_EQ(ConnectionMediaType(pad.get(), &type), VFW_E_NOT_CONNECTED);
  EXPECT_EQ(type.pbFormat, nullptr);
  EXPECT_EQ(ConnectionMediaType(nullptr, &type), VFW_E_NOT_CONNECTED);
}

TEST(MediaTypeTest, FreeGivesBackCapsAndObject) {
  GstCaps* caps = gst_caps_from_string("video/x-raw");
  GstObject* held = GST_OBJECT(gst_object_ref_sink(gst_element_factory_make("queue", nullptr)));
  gst_object_ref(held);  // ours, to watch the count
  gst_caps_ref(caps);
  AM_MEDIA_TYPE type;
  type.pUnk = held;
  type.cbFormat = 1;
  type.pbFormat = caps;
  FreeMediaType(&type);
  EXPECT_EQ(type.pUnk, nullptr);
  EXPECT_EQ(type.pbFormat, nullptr);
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(held), 1);
  EXPECT_EQ(GST_MINI_OBJECT_REFCOUNT_VALUE(caps), 1);
  gst_object_unref(held);
  gst_caps_unref(caps);
}

TEST(MediaTypeTest, DeleteFreesTheTypeItselfAndAcceptsNull) {
  AM_MEDIA_TYPE* type = NewMediaType();
  type->pbFormat = gst_caps_from_string("audio/x-raw");
  type->cbFormat = 1;
  DeleteMediaType(type);  // the sanitizer build sees a leak or a double free here
  DeleteMediaType(nullptr);
}
