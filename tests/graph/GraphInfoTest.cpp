// Plugin files, durations as text, property page support, frame stepping.
#include <gtest/gtest.h>

#include <cstring>

#include "graph/GraphInfo.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

namespace {

// A WAV graph of `seconds` (whole milliseconds) at 8000 samples a second,
// paused so that its duration is known.
class DurationTest : public TempFolderTest {
 protected:
  // The text FormatDuration gives for the graph.
  std::string DurationText(double seconds) {
    const std::string path = PathOf("sound.wav");
    WriteWav(path, 8000, static_cast<uint32_t>(seconds * 8000));
    PipelineRef graph =
        LaunchIn("filesrc location=\"" + path + "\" ! wavparse ! fakesink", GST_STATE_PAUSED);
    char out[16] = {};
    EXPECT_EQ(FormatDuration(graph.get(), out), S_OK);
    return out;
  }
};

}  // namespace

TEST(GetFilterServerPathTest, GivesThePluginFile) {
  char out[kServerPathSize] = "untouched";
  GetFilterServerPath("fakesink", out);
  const std::string path = out;
  ASSERT_GT(path.size(), 3u);
  EXPECT_EQ(path.front(), '/');
  EXPECT_NE(path.find("libgstcoreelements"), std::string::npos) << path;
}

TEST(GetFilterServerPathTest, AnUnknownFactoryLeavesOutAsItWas) {
  char out[kServerPathSize] = "untouched";
  GetFilterServerPath("nosuchfactoryanywhere", out);
  EXPECT_STREQ(out, "untouched");
  GetFilterServerPath(nullptr, out);
  EXPECT_STREQ(out, "untouched");
  GetFilterServerPath("fakesink", nullptr);
}

TEST(GetFilterServerPathTest, AFactoryWithoutPluginFileIsUnknown) {
  char out[kServerPathSize] = "untouched";
  GetFilterServerPath(kTwinAFactory, out);
  EXPECT_STREQ(out, "<Unknown>");
}

TEST_F(DurationTest, NinetyAndAHalfSeconds) {
  EXPECT_EQ(DurationText(90.5), "01m:30.500s");
}

TEST_F(DurationTest, FourHundredThirtySecondsWrapsAt32Bits) {
  EXPECT_EQ(DurationText(430), "00m:00.503s");
}

TEST_F(DurationTest, JustBelowTheWrapIsSevenMinutes) {
  EXPECT_EQ(DurationText(429.4), "07m:09.400s");
}

TEST(FormatDurationTest, WithoutADurationThePlaceholderStands) {
  ElementRef queue(GST_ELEMENT(gst_object_ref_sink(gst_element_factory_make("queue", nullptr))));
  char out[16] = "junk";
  EXPECT_EQ(FormatDuration(queue.get(), out), E_NOINTERFACE);
  EXPECT_STREQ(out, "<00:00.000>");
}

TEST(FormatDurationTest, NullArguments) {
  ElementRef queue(GST_ELEMENT(gst_object_ref_sink(gst_element_factory_make("queue", nullptr))));
  char out[16] = "junk";
  EXPECT_EQ(FormatDuration(nullptr, out), E_NOINTERFACE);
  EXPECT_STREQ(out, "junk");
  EXPECT_EQ(FormatDuration(queue.get(), nullptr), E_POINTER);
}

TEST(PropertyPageSupportTest, ElementsWithEditablePropertiesHaveAPage) {
  ElementRef source(
      GST_ELEMENT(gst_object_ref_sink(gst_element_factory_make("videotestsrc", nullptr))));
  EXPECT_EQ(SupportsPropertyPages(GST_OBJECT(source.get())), 1);
  std::vector<GParamSpec*> editable = EditableProperties(GST_OBJECT(source.get()));
  auto has = [&editable](const char* name) {
    for (GParamSpec* property : editable) {
      if (std::strcmp(property->name, name) == 0) return true;
    }
    return false;
  };
  EXPECT_TRUE(has("pattern"));
  EXPECT_TRUE(has("num-buffers"));
  EXPECT_FALSE(has("name"));
  EXPECT_FALSE(has("parent"));
}

TEST(PropertyPageSupportTest, APadOrNothingHasNoPage) {
  PadRef pad(GST_PAD(gst_object_ref_sink(gst_pad_new("loose", GST_PAD_SRC))));
  EXPECT_EQ(SupportsPropertyPages(GST_OBJECT(pad.get())), 0);
  EXPECT_EQ(SupportsPropertyPages(nullptr), 0);
}

TEST(CanFrameStepTest, APausedVideoPipelineStepsAFrame) {
  PipelineRef pipeline = LaunchIn("videotestsrc ! fakesink", GST_STATE_PAUSED);
  ASSERT_EQ(CanFrameStep(Bin(pipeline)), 1);
  // What the answer promises: a step event is answered by STEP_DONE.
  ASSERT_TRUE(gst_element_send_event(pipeline.get(),
                                     gst_event_new_step(GST_FORMAT_BUFFERS, 1, 1.0, TRUE, FALSE)));
  GstBus* bus = gst_element_get_bus(pipeline.get());
  GstMessage* done = gst_bus_timed_pop_filtered(bus, 10 * GST_SECOND, GST_MESSAGE_STEP_DONE);
  EXPECT_NE(done, nullptr);
  if (done) gst_message_unref(done);
  gst_object_unref(bus);
}

TEST(CanFrameStepTest, NoVideoRendererOrNoPipelineCannot) {
  PipelineRef audio = LaunchIn("audiotestsrc ! fakesink", GST_STATE_PAUSED);
  EXPECT_EQ(CanFrameStep(Bin(audio)), 0);
  ElementRef bin(GST_ELEMENT(gst_object_ref_sink(gst_bin_new(nullptr))));
  EXPECT_EQ(CanFrameStep(Bin(bin)), 0);
  EXPECT_EQ(CanFrameStep(nullptr), 0);
}
