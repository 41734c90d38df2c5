// Filters by name, removing them all, cutting outgoing links, linking two.
#include <gtest/gtest.h>

#include "graph/FilterHelpers.h"
#include "graph/PinHelpers.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

namespace {

bool Linked(GstElement* element, const char* pad) {
  PadRef own(gst_element_get_static_pad(element, pad));
  return own && gst_pad_is_linked(own.get());
}

}  // namespace

TEST(FindFilterByNameTest, FindsByExactNameWithAReference) {
  ElementRef pipeline = Launch("videotestsrc name=src ! queue name=Q ! fakesink");
  ElementRef queue = Child(Bin(pipeline), "Q");
  const int refs = GST_OBJECT_REFCOUNT_VALUE(queue.get());
  GstElement* found = FindFilterByName(Bin(pipeline), "Q");
  EXPECT_EQ(found, queue.get());
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(queue.get()), refs + 1);
  gst_object_unref(found);
  EXPECT_EQ(FindFilterByName(Bin(pipeline), "q"), nullptr);  // case counts
  EXPECT_EQ(FindFilterByName(Bin(pipeline), "nothing"), nullptr);
  EXPECT_EQ(FindFilterByName(nullptr, "Q"), nullptr);
}

TEST(FindFilterByNameTest, NamesCompareCutTo254Bytes) {
  ElementRef bin(GST_ELEMENT(gst_object_ref_sink(gst_bin_new("graph"))));
  const std::string longName(300, 'n');
  gst_bin_add(Bin(bin), gst_element_factory_make("identity", longName.c_str()));
  ElementRef cutMatch(FindFilterByName(Bin(bin), longName.substr(0, 254).c_str()));
  EXPECT_NE(cutMatch, nullptr);
  EXPECT_EQ(FindFilterByName(Bin(bin), longName.c_str()), nullptr);
  EXPECT_EQ(FindFilterByName(Bin(bin), longName.substr(0, 253).c_str()), nullptr);
}

TEST(HasDvSplitterTest, LooksForTheFixedNameAndKeepsNoReference) {
  ElementRef bin(GST_ELEMENT(gst_object_ref_sink(gst_bin_new("graph"))));
  EXPECT_FALSE(HasDvSplitter(Bin(bin)));
  gst_bin_add(Bin(bin), gst_element_factory_make("identity", "dv splitter"));
  EXPECT_FALSE(HasDvSplitter(Bin(bin)));
  GstElement* splitter = gst_element_factory_make("identity", "DV Splitter");
  gst_bin_add(Bin(bin), splitter);
  const int refs = GST_OBJECT_REFCOUNT_VALUE(splitter);
  EXPECT_TRUE(HasDvSplitter(Bin(bin)));
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(splitter), refs);
  EXPECT_FALSE(HasDvSplitter(nullptr));
}

TEST(DisconnectFilterTest, CutsOnlyTheLinksTheFilterFeeds) {
  ElementRef pipeline = Launch("videotestsrc name=s ! queue name=q ! fakesink name=f");
  ElementRef queue = Child(Bin(pipeline), "q");
  ElementRef source = Child(Bin(pipeline), "s");
  ElementRef sink = Child(Bin(pipeline), "f");
  DisconnectFilter(Bin(pipeline), queue.get());
  EXPECT_FALSE(Linked(queue.get(), "src"));
  EXPECT_FALSE(Linked(sink.get(), "sink"));
  EXPECT_TRUE(Linked(queue.get(), "sink"));
  EXPECT_TRUE(Linked(source.get(), "src"));
}

TEST(RemoveAllFiltersTest, EmptiesABranchedRunningGraph) {
  PipelineRef pipeline =
      LaunchIn("videotestsrc ! tee name=t t. ! queue name=q1 ! fakesink t. ! queue ! fakesink",
               GST_STATE_PLAYING);
  ElementRef q1 = Child(Bin(pipeline), "q1");
  EXPECT_EQ(RemoveAllFilters(Bin(pipeline)), 0);
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(pipeline)), 0);
  // What was taken out is unlinked and stopped.
  EXPECT_FALSE(Linked(q1.get(), "src"));
  EXPECT_EQ(GST_STATE(q1.get()), GST_STATE_NULL);
  EXPECT_EQ(GST_OBJECT_PARENT(q1.get()), nullptr);
  EXPECT_EQ(RemoveAllFilters(Bin(pipeline)), 0);
  EXPECT_EQ(RemoveAllFilters(nullptr), -1);
}

TEST(ConnectFiltersTest, LinksPadsByIndexWithoutTouchingReferences) {
  ElementRef pipeline = Launch("videotestsrc name=s queue name=q fakesink name=f");
  ElementRef source = Child(Bin(pipeline), "s");
  ElementRef queue = Child(Bin(pipeline), "q");
  GstPad* output = GetOutputPin(source.get(), 0);
  GstPad* input = GetInputPin(queue.get(), 0);
  const int outputRefs = GST_OBJECT_REFCOUNT_VALUE(output);
  const int inputRefs = GST_OBJECT_REFCOUNT_VALUE(input);
  EXPECT_EQ(ConnectFilters(Bin(pipeline), source.get(), 0, queue.get(), 0), 1);
  EXPECT_EQ(gst_pad_get_peer(output), input);
  gst_object_unref(input);  // the peer reference just taken
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(output), outputRefs);
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(input), inputRefs);
}

TEST(ConnectFiltersTest, MissingPadsAndRefusedLinksGiveZero) {
  ElementRef pipeline =
      Launch("audiotestsrc name=a capsfilter name=c caps=video/x-raw fakesink name=f");
  ElementRef audio = Child(Bin(pipeline), "a");
  ElementRef filter = Child(Bin(pipeline), "c");
  ElementRef sink = Child(Bin(pipeline), "f");
  EXPECT_EQ(ConnectFilters(Bin(pipeline), audio.get(), 1, sink.get(), 0), 0);
  EXPECT_EQ(ConnectFilters(Bin(pipeline), audio.get(), 0, sink.get(), 1), 0);
  EXPECT_EQ(ConnectFilters(Bin(pipeline), audio.get(), 0, filter.get(), 0), 0);
  EXPECT_EQ(ConnectFilters(nullptr, audio.get(), 0, sink.get(), 0), 0);
  EXPECT_EQ(ConnectFilters(Bin(pipeline), audio.get(), 0, sink.get(), 0), 1);
}
