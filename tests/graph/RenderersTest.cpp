// Renderers: one linked input pad, no output pad, told apart by the link's
// major type; an unlinked renderer stops the search.
#include <gtest/gtest.h>

#include "graph/Renderers.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

namespace {

constexpr const char* kAudioAndVideo =
    "videotestsrc ! fakesink name=v audiotestsrc ! fakesink name=a";
constexpr const char* kTwoVideoRenderers =
    "videotestsrc ! tee name=t t. ! queue ! fakesink name=v1 t. ! queue ! fakesink name=v2";

std::string NameOf(GstElement* element) {
  return element ? GST_OBJECT_NAME(element) : "(none)";
}

// A bin with two input pads (each to a fakesink inside) and no output pad.
GstElement* TwoInputSink() {
  GstElement* bin = gst_bin_new("twosinks");
  for (const char* name : {"sink_0", "sink_1"}) {
    GstElement* sink = gst_element_factory_make("fakesink", nullptr);
    gst_bin_add(GST_BIN(bin), sink);
    PadRef target(gst_element_get_static_pad(sink, "sink"));
    gst_element_add_pad(bin, gst_ghost_pad_new(name, target.get()));
  }
  return bin;
}

}  // namespace

TEST(RendererTest, FindsTheRendererOfEachType) {
  PipelineRef pipeline = LaunchIn(kAudioAndVideo, GST_STATE_PAUSED);
  GstElement* found = nullptr;
  ASSERT_EQ(FindVideoRenderer(Bin(pipeline), &found), S_OK);
  EXPECT_EQ(NameOf(found), "v");
  gst_object_unref(found);
  ASSERT_EQ(FindAudioRenderer(Bin(pipeline), &found), S_OK);
  EXPECT_EQ(NameOf(found), "a");
  gst_object_unref(found);
  EXPECT_EQ(CountRenderersOfType(Bin(pipeline), MEDIATYPE_Video), 1);
}

TEST(RendererTest, NoRendererOfTheTypeIsSuccessWithNothingFound) {
  PipelineRef pipeline = LaunchIn("videotestsrc ! fakesink", GST_STATE_PAUSED);
  GstElement* found = reinterpret_cast<GstElement*>(0x1);
  EXPECT_EQ(FindAudioRenderer(Bin(pipeline), &found), S_OK);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(CountRenderersOfType(Bin(pipeline), MEDIATYPE_Audio), 0);
}

TEST(RendererTest, AFilterWithTwoInputsAndNoOutputIsNoRenderer) {
  PipelineRef pipeline(
      Launch("videotestsrc ! tee name=t t. ! queue name=q0 t. ! queue name=q1").release());
  GstElement* twoInputs = TwoInputSink();
  gst_bin_add(Bin(pipeline), twoInputs);
  ElementRef q0 = Child(Bin(pipeline), "q0");
  ElementRef q1 = Child(Bin(pipeline), "q1");
  ASSERT_TRUE(gst_element_link_pads(q0.get(), "src", twoInputs, "sink_0"));
  ASSERT_TRUE(gst_element_link_pads(q1.get(), "src", twoInputs, "sink_1"));
  ASSERT_TRUE(Reach(pipeline.get(), GST_STATE_PAUSED));
  GstElement* found = reinterpret_cast<GstElement*>(0x1);
  EXPECT_EQ(FindVideoRenderer(Bin(pipeline), &found), S_OK);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(CountRenderersOfType(Bin(pipeline), MEDIATYPE_Video), 0);
}

TEST(RendererTest, AnUnlinkedRendererStopsTheSearchWithItsFailure) {
  PipelineRef pipeline = LaunchIn("videotestsrc ! fakesink name=v", GST_STATE_PAUSED);
  // Added last, so the walk meets it first.
  gst_bin_add(Bin(pipeline), gst_element_factory_make("fakesink", "lone"));
  GstElement* found = nullptr;
  EXPECT_EQ(FindVideoRenderer(Bin(pipeline), &found), VFW_E_NOT_CONNECTED);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(CountRenderersOfType(Bin(pipeline), MEDIATYPE_Video), 0);
  EXPECT_EQ(GetRendererOfType(0, Bin(pipeline), MEDIATYPE_Video, &found), VFW_E_NOT_CONNECTED);
  EXPECT_EQ(found, nullptr);
}

TEST(RendererTest, GetRendererOfTypeCountsMatchesInWalkOrder) {
  PipelineRef pipeline = LaunchIn(kTwoVideoRenderers, GST_STATE_PAUSED);
  ASSERT_EQ(CountRenderersOfType(Bin(pipeline), MEDIATYPE_Video), 2);
  GstElement* first = nullptr;
  GstElement* second = nullptr;
  ASSERT_EQ(GetRendererOfType(0, Bin(pipeline), MEDIATYPE_Video, &first), S_OK);
  ASSERT_EQ(GetRendererOfType(1, Bin(pipeline), MEDIATYPE_Video, &second), S_OK);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(first, second);
  // The walk goes most recently added first: v2 before v1.
  EXPECT_EQ(NameOf(first), "v2");
  EXPECT_EQ(NameOf(second), "v1");
  GstElement* found = nullptr;
  ASSERT_EQ(FindVideoRenderer(Bin(pipeline), &found), S_OK);
  EXPECT_EQ(found, first);
  gst_object_unref(found);
  gst_object_unref(second);
  gst_object_unref(first);
}

TEST(RendererTest, PastTheLastMatchOutKeepsTheLastWithOneReference) {
  PipelineRef pipeline = LaunchIn(kTwoVideoRenderers, GST_STATE_PAUSED);
  ElementRef v1 = Child(Bin(pipeline), "v1");
  ElementRef v2 = Child(Bin(pipeline), "v2");
  const int v1Refs = GST_OBJECT_REFCOUNT_VALUE(v1.get());
  const int v2Refs = GST_OBJECT_REFCOUNT_VALUE(v2.get());
  GstElement* found = nullptr;
  EXPECT_EQ(GetRendererOfType(5, Bin(pipeline), MEDIATYPE_Video, &found), S_OK);
  EXPECT_EQ(found, v1.get());
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(v1.get()), v1Refs + 1);
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(v2.get()), v2Refs);
  gst_object_unref(found);
}

TEST(RendererTest, NullArguments) {
  PipelineRef pipeline = LaunchIn("videotestsrc ! fakesink", GST_STATE_PAUSED);
  GstElement* found = nullptr;
  EXPECT_EQ(FindRendererOfType(nullptr, MEDIATYPE_Video, &found), E_NOINTERFACE);
  EXPECT_EQ(FindRendererOfType(Bin(pipeline), nullptr, &found), E_POINTER);
  EXPECT_EQ(GetRendererOfType(0, nullptr, MEDIATYPE_Video, &found), E_NOINTERFACE);
  EXPECT_EQ(GetRendererOfType(0, Bin(pipeline), nullptr, &found), E_POINTER);
  EXPECT_EQ(CountRenderersOfType(nullptr, MEDIATYPE_Video), 0);
  EXPECT_EQ(CountRenderersOfType(Bin(pipeline), nullptr), 0);
  // Without an out the search still runs.
  EXPECT_EQ(FindVideoRenderer(Bin(pipeline), nullptr), S_OK);
}
