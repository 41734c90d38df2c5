// Pin counting and lookup, audio and video pins, and the climb upstream.
#include <gtest/gtest.h>

#include "graph/PinHelpers.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

namespace {

std::string PadName(GstPad* pad) {
  ElementRef owner = PadOwner(pad);
  return std::string(owner ? GST_OBJECT_NAME(owner.get()) : "?") + "." + GST_OBJECT_NAME(pad);
}

}  // namespace

TEST(PinCountTest, CountsInputsAndOutputsOfRealElements) {
  ElementRef pipeline = Launch(
      "videotestsrc name=src ! tee name=t t. ! queue name=q1 ! fakesink name=s1 "
      "t. ! queue name=q2 ! fakesink name=s2");
  struct Expected {
    const char* name;
    uint32_t inputs;
    uint32_t outputs;
  } expected[] = {{"src", 0, 1}, {"t", 1, 2}, {"q1", 1, 1}, {"s1", 1, 0}};
  for (const Expected& e : expected) {
    ElementRef element = Child(Bin(pipeline), e.name);
    uint32_t inputs = 99;
    uint32_t outputs = 99;
    EXPECT_EQ(CountPinsByDirection(element.get(), &inputs, &outputs), S_OK) << e.name;
    EXPECT_EQ(inputs, e.inputs) << e.name;
    EXPECT_EQ(outputs, e.outputs) << e.name;
    uint32_t all = 0;
    EXPECT_EQ(CountPins(element.get(), &all), S_OK);
    EXPECT_EQ(all, e.inputs + e.outputs) << e.name;
  }
}

TEST(PinCountTest, NullArgumentsArePointerErrors) {
  ElementRef queue(GST_ELEMENT(gst_object_ref_sink(gst_element_factory_make("queue", nullptr))));
  uint32_t a = 0;
  uint32_t b = 0;
  EXPECT_EQ(CountPinsByDirection(nullptr, &a, &b), E_POINTER);
  EXPECT_EQ(CountPinsByDirection(queue.get(), nullptr, &b), E_POINTER);
  EXPECT_EQ(CountPinsByDirection(queue.get(), &a, nullptr), E_POINTER);
  EXPECT_EQ(CountPins(nullptr, &a), E_POINTER);
  EXPECT_EQ(CountPins(queue.get(), nullptr), E_POINTER);
}

TEST(GetPinTest, FindsPadsByDirectionAndIndex) {
  ElementRef pipeline = Launch("videotestsrc ! tee name=t t. ! fakesink t. ! fakesink");
  ElementRef tee = Child(Bin(pipeline), "t");
  GstPad* pad = nullptr;
  ASSERT_EQ(GetPin(tee.get(), PINDIR_INPUT, 0, &pad), S_OK);
  EXPECT_STREQ(GST_OBJECT_NAME(pad), "sink");
  gst_object_unref(pad);
  ASSERT_EQ(GetPin(tee.get(), PINDIR_OUTPUT, 1, &pad), S_OK);
  EXPECT_STREQ(GST_OBJECT_NAME(pad), "src_1");
  gst_object_unref(pad);
}

TEST(GetPinTest, IndexPastTheLastPadOfTheDirectionFails) {
  ElementRef queue(GST_ELEMENT(gst_object_ref_sink(gst_element_factory_make("queue", nullptr))));
  GstPad* pad = reinterpret_cast<GstPad*>(0x1);
  EXPECT_EQ(GetPin(queue.get(), PINDIR_OUTPUT, 1, &pad), E_FAIL);
  EXPECT_EQ(pad, nullptr);
  pad = reinterpret_cast<GstPad*>(0x1);
  EXPECT_EQ(GetPin(nullptr, PINDIR_OUTPUT, 0, &pad), E_POINTER);
  EXPECT_EQ(pad, nullptr);
}

TEST(GetPinTest, InputAndOutputGettersHandOutNoReference) {
  ElementRef queue(GST_ELEMENT(gst_object_ref_sink(gst_element_factory_make("queue", nullptr))));
  GstPad* sink = gst_element_get_static_pad(queue.get(), "sink");
  const int before = GST_OBJECT_REFCOUNT_VALUE(sink);
  EXPECT_EQ(GetInputPin(queue.get(), 0), sink);
  EXPECT_EQ(GST_OBJECT_REFCOUNT_VALUE(sink), before);
  EXPECT_STREQ(GST_OBJECT_NAME(GetOutputPin(queue.get(), 0)), "src");
  EXPECT_EQ(GetInputPin(queue.get(), 1), nullptr);
  EXPECT_EQ(GetOutputPin(nullptr, 0), nullptr);
  gst_object_unref(sink);
}

TEST(MediaPinTest, TellsAudioFromVideo) {
  ElementRef pipeline = Launch("audiotestsrc name=a ! fakesink videotestsrc name=v ! fakesink");
  ElementRef audio = Child(Bin(pipeline), "a");
  ElementRef video = Child(Bin(pipeline), "v");
  EXPECT_TRUE(IsAudioPin(GetOutputPin(audio.get(), 0)));
  EXPECT_FALSE(IsVideoPin(GetOutputPin(audio.get(), 0)));
  EXPECT_TRUE(IsVideoPin(GetOutputPin(video.get(), 0)));
  EXPECT_FALSE(IsAudioPin(GetOutputPin(video.get(), 0)));
  EXPECT_FALSE(IsAudioPin(nullptr));
  EXPECT_FALSE(IsVideoPin(nullptr));
}

TEST(MediaPinTest, OnlyTheFirstMediaTypeDecides) {
  ElementRef pipeline = Launch(
      "capsfilter name=va caps=\"video/x-raw; audio/x-raw\" "
      "capsfilter name=av caps=\"audio/x-raw; video/x-raw\"");
  ElementRef videoFirst = Child(Bin(pipeline), "va");
  ElementRef audioFirst = Child(Bin(pipeline), "av");
  EXPECT_FALSE(IsAudioPin(GetOutputPin(videoFirst.get(), 0)));
  EXPECT_TRUE(IsVideoPin(GetOutputPin(videoFirst.get(), 0)));
  EXPECT_TRUE(IsAudioPin(GetOutputPin(audioFirst.get(), 0)));
  EXPECT_FALSE(IsVideoPin(GetOutputPin(audioFirst.get(), 0)));
}

TEST(UpstreamPinTest, IndexCountsMatchesOverTheWholeClimb) {
  ElementRef pipeline = Launch("audiotestsrc name=a ! tee name=t ! queue name=q ! fakesink name=s");
  ElementRef sink = Child(Bin(pipeline), "s");
  const char* expected[] = {"q.src", "t.src_0", "a.src"};
  for (int32_t index = 0; index < 3; ++index) {
    GstPad* found = nullptr;
    ASSERT_EQ(FindUpstreamOutputPin(GetInputPin(sink.get(), 0), MEDIATYPE_Audio, index, &found),
              S_OK)
        << index;
    EXPECT_EQ(PadName(found), expected[index]);
    gst_object_unref(found);
  }
  GstPad* found = nullptr;
  EXPECT_EQ(FindUpstreamOutputPin(GetInputPin(sink.get(), 0), MEDIATYPE_Audio, 3, &found), E_FAIL);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(FindUpstreamOutputPin(GetInputPin(sink.get(), 0), MEDIATYPE_Video, 0, &found), E_FAIL);
}

TEST(UpstreamPinTest, TheStartPinsOwnFilterCountsFirst) {
  ElementRef pipeline = Launch("audiotestsrc name=a ! queue name=q ! fakesink");
  ElementRef queue = Child(Bin(pipeline), "q");
  GstPad* found = nullptr;
  ASSERT_EQ(FindUpstreamOutputPin(GetOutputPin(queue.get(), 0), MEDIATYPE_Audio, 0, &found), S_OK);
  EXPECT_EQ(PadName(found), "q.src");
  gst_object_unref(found);
}

TEST(UpstreamPinTest, SourceFilterFailsUnlessItsOutputMatches) {
  ElementRef pipeline = Launch("videotestsrc name=v ! fakesink");
  ElementRef source = Child(Bin(pipeline), "v");
  GstPad* start = GetOutputPin(source.get(), 0);
  GstPad* found = nullptr;
  EXPECT_EQ(FindUpstreamOutputPin(start, MEDIATYPE_Audio, 0, &found), E_FAIL);
  EXPECT_EQ(found, nullptr);
  ASSERT_EQ(FindUpstreamOutputPin(start, MEDIATYPE_Video, 0, &found), S_OK);
  EXPECT_EQ(found, start);
  gst_object_unref(found);
}

TEST(UpstreamPinTest, NullOutIsAPointerErrorAndALoosePadEndsTheClimb) {
  EXPECT_EQ(FindUpstreamOutputPin(nullptr, MEDIATYPE_Audio, 0, nullptr), E_POINTER);
  PadRef loose(GST_PAD(gst_object_ref_sink(gst_pad_new("loose", GST_PAD_SINK))));
  GstPad* found = reinterpret_cast<GstPad*>(0x1);
  EXPECT_EQ(FindUpstreamOutputPin(loose.get(), MEDIATYPE_Audio, 0, &found), S_OK);
  EXPECT_EQ(found, reinterpret_cast<GstPad*>(0x1));
}
