// The text form of a graph: what it writes, that gst_parse_launch reads it,
// and how a text is built into a graph.
#include <gtest/gtest.h>

#include "graph/GraphText.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

TEST(GraphTextTest, WritesElementsChangedPropertiesAndLinks) {
  ElementRef pipeline = Launch(kBranchedPipeline);
  const std::string text = TextOf(Bin(pipeline));
  EXPECT_EQ(text.find("videotestsrc name=src"), 0u) << text;
  EXPECT_NE(text.find(" pattern=ball"), std::string::npos) << text;
  EXPECT_NE(text.find(" num-buffers=5"), std::string::npos) << text;
  EXPECT_NE(text.find("queue name=q2 max-size-buffers=3\n"), std::string::npos) << text;
  EXPECT_NE(text.find("fakesink name=out2 sync=true\n"), std::string::npos) << text;
  EXPECT_NE(text.find("capsfilter name=size caps=\"video/x-raw, width=(int)64, height=(int)48\"\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find("t.src_0 ! q1.sink\n"), std::string::npos) << text;
  EXPECT_NE(text.find("t.src_1 ! q2.sink\n"), std::string::npos) << text;
  EXPECT_NE(text.find("size.src ! t.sink\n"), std::string::npos) << text;
  // Properties at their defaults stay out.
  EXPECT_EQ(text.find("is-live"), std::string::npos) << text;
  EXPECT_NE(text.find("fakesink name=out1\n"), std::string::npos) << text;
}

TEST(GraphTextTest, GstParseLaunchReadsTheTextBack) {
  ElementRef pipeline = Launch(kBranchedPipeline);
  const std::string text = TextOf(Bin(pipeline));
  ElementRef again = Launch(text);
  ASSERT_NE(again, nullptr);
  EXPECT_EQ(TextOf(Bin(again)), text);
  PipelineRef running(again.release());
  EXPECT_TRUE(Reach(running.get(), GST_STATE_PAUSED));
}

TEST(GraphTextTest, ValuesWithSpacesQuotesAndBangsSurvive) {
  const char* location = "a b\"c\\d!e=f,g 'h' \xC3\xA9";
  ElementRef bin(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("g"))));
  GstElement* source = gst_element_factory_make("filesrc", "file");
  g_object_set(source, "location", location, nullptr);
  gst_bin_add(Bin(bin), source);
  const std::string text = TextOf(Bin(bin));
  ElementRef loaded(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("h"))));
  ASSERT_EQ(LoadGraphText(Bin(loaded), text), S_OK) << text;
  ElementRef file = Child(Bin(loaded), "file");
  ASSERT_NE(file, nullptr);
  gchar* read = nullptr;
  g_object_get(file.get(), "location", &read, nullptr);
  EXPECT_STREQ(read, location);
  g_free(read);
}

TEST(GraphTextTest, AnUnlinkedElementMayHaveAnyName) {
  ElementRef bin(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("g"))));
  gst_bin_add(Bin(bin), gst_element_factory_make("identity", "DV Splitter"));
  const std::string text = TextOf(Bin(bin));
  ElementRef loaded(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("h"))));
  ASSERT_EQ(LoadGraphText(Bin(loaded), text), S_OK) << text;
  EXPECT_NE(Child(Bin(loaded), "DV Splitter"), nullptr);
}

TEST(GraphTextTest, ALinkOfANameALinkCannotReferToIsRefused) {
  ElementRef bin(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("g"))));
  GstElement* splitter = gst_element_factory_make("identity", "DV Splitter");
  GstElement* sink = gst_element_factory_make("fakesink", "out");
  gst_bin_add_many(Bin(bin), splitter, sink, nullptr);
  ASSERT_TRUE(gst_element_link(splitter, sink));
  std::string text = "unchanged";
  EXPECT_FALSE(WriteGraphText(Bin(bin), &text));
  EXPECT_EQ(text, "unchanged");
}

TEST(GraphTextTest, APlainBinHoldingElementsIsRefused) {
  ElementRef graph(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("g"))));
  GstElement* inner = gst_bin_new("inner");
  gst_bin_add(Bin(graph), inner);
  std::string text;
  EXPECT_TRUE(WriteGraphText(Bin(graph), &text));  // empty, it is written
  EXPECT_EQ(text, "bin name=inner\n");
  gst_bin_add(GST_BIN(inner), gst_element_factory_make("fakesink", nullptr));
  EXPECT_FALSE(WriteGraphText(Bin(graph), &text));
}

TEST(GraphTextTest, AnEmptyGraphIsAnEmptyText) {
  ElementRef bin(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("g"))));
  EXPECT_EQ(TextOf(Bin(bin)), "");
  EXPECT_EQ(LoadGraphText(Bin(bin), " \n"), S_OK);
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(bin)), 0);
}

TEST(LoadGraphTextTest, BadTextsFailAndLeaveTheGraphAsItWas) {
  ElementRef pipeline = Launch("videotestsrc name=src ! fakesink name=out");
  const std::string before = TextOf(Bin(pipeline));
  const char* bad[] = {
      "nosuchfactory name=x",                          // not installed
      "fakesink name=a ! ! fakesink",                  // does not parse
      "audiotestsrc name=a ! video/x-raw ! fakesink",  // can't be linked
      "queue name=fine nosuchfactory name=late",       // fails after building some
      "queue name=src",                                // a name the graph holds
  };
  for (const char* text : bad) {
    EXPECT_EQ(LoadGraphText(Bin(pipeline), text), E_FAIL) << text;
    EXPECT_EQ(TextOf(Bin(pipeline)), before) << text;
  }
  EXPECT_EQ(LoadGraphText(nullptr, "queue"), E_FAIL);
}

TEST(LoadGraphTextTest, TextOfMoreWordsThanAGraphHasIsRefused) {
  // Building and adding elements costs time that grows with the square of
  // their number: a text of a million bare names would hold the loader for
  // hours, so a text beyond the word limit isn't built at all.
  ElementRef pipeline = Launch("videotestsrc name=src ! fakesink name=out");
  std::string many;
  for (size_t i = 0; i <= kMaxGraphWords; ++i) many += "fakesink ";
  EXPECT_EQ(LoadGraphText(Bin(pipeline), many), E_FAIL);
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(pipeline)), 2);
  std::string chained;
  for (size_t i = 0; i < kMaxGraphWords; ++i) chained += "queue!";
  EXPECT_EQ(LoadGraphText(Bin(pipeline), chained + "fakesink"), E_FAIL);
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(pipeline)), 2);
  std::string bins;
  for (size_t i = 0; i <= kMaxGraphWords; ++i) bins += "( ) ";
  EXPECT_EQ(LoadGraphText(Bin(pipeline), bins), E_FAIL);
  const std::string nested(kMaxGraphDepth + 1, '(');
  EXPECT_EQ(LoadGraphText(Bin(pipeline), nested + "fakesink" + std::string(nested.size(), ')')),
            E_FAIL);
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(pipeline)), 2);
}

TEST(LoadGraphTextTest, AGraphOfHundredsOfElementsIsWithinTheLimit) {
  ElementRef pipeline(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
  std::string text = "fakesrc name=first num-buffers=10";
  for (int i = 0; i < 400; ++i)
    text += " ! queue name=q" + std::to_string(i) + " max-size-buffers=3";
  ASSERT_EQ(LoadGraphText(Bin(pipeline), text + " ! fakesink name=last"), S_OK);
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(pipeline)), 402);
  // Caps with their types, and a bin within a bin, stay well inside the limits.
  const std::string caps =
      "videotestsrc name=v ! capsfilter name=c caps=\"video/x-raw, width=(int)320, "
      "height=(int)240\" ! ( name=outer ( name=inner fakesink name=deep ) )";
  EXPECT_EQ(LoadGraphText(Bin(pipeline), caps), S_OK);
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(pipeline)), 405);
}

TEST(LoadGraphTextTest, AddsToWhatTheGraphHolds) {
  ElementRef pipeline = Launch("videotestsrc name=src ! fakesink name=out");
  ASSERT_EQ(LoadGraphText(Bin(pipeline), "audiotestsrc name=a ! fakesink name=b"), S_OK);
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(pipeline)), 4);
  ElementRef audio = Child(Bin(pipeline), "a");
  ASSERT_NE(audio, nullptr);
  EXPECT_EQ(GST_OBJECT_PARENT(audio.get()), GST_OBJECT(pipeline.get()));
  PadRef pad(gst_element_get_static_pad(audio.get(), "src"));
  EXPECT_TRUE(gst_pad_is_linked(pad.get()));
}
