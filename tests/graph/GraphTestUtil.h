#pragma once
// Shared pieces of the graph tests: pipelines from gst-launch text brought
// to a state, WAV files of a given length, a temporary folder per test, and
// the test-only element factories and device provider (GraphTestElements.cpp).

#include <gst/gst.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "graph/GraphText.h"
#include "graph/GraphWalk.h"

namespace graphtest {

// Factory names and long names of the test elements.
inline constexpr const char* kTwinAFactory = "tachyruntwina";  // klass "Tachyrun/Test/Alpha"
inline constexpr const char* kTwinBFactory = "tachyruntwinb";  // klass "Tachyrun/Test/Beta"
inline constexpr const char* kTwinLongName = "Tachyrun Twin Filter";
// Devices of the test provider: the capture filter, and a twin name in two
// device classes whose elements come from videotestsrc and audiotestsrc.
inline constexpr const char* kTwinDeviceName = "Tachyrun Twin Device";
inline constexpr const char* kTwinDeviceClassA = "Tachyrun/TestA";
inline constexpr const char* kTwinDeviceClassB = "Tachyrun/TestB";

// Registers the test factories and the test device provider once.
void RegisterTestElements();
// Whether the test provider offers the capture device (switch for tests).
void SetCaptureDevicePresent(bool present);

// A branched pipeline with changed properties and a caps filter.
inline constexpr const char* kBranchedPipeline =
    "videotestsrc name=src pattern=ball num-buffers=5 ! "
    "capsfilter name=size caps=\"video/x-raw, width=(int)64, height=(int)48\" ! tee name=t "
    "t. ! queue name=q1 ! fakesink name=out1 "
    "t. ! queue name=q2 max-size-buffers=3 ! fakesink name=out2 sync=true";

// A pipeline from gst-launch text; fails the test when it doesn't parse.
inline ElementRef Launch(const std::string& text) {
  GError* error = nullptr;
  GstElement* pipeline = gst_parse_launch(text.c_str(), &error);
  EXPECT_EQ(error, nullptr) << text << ": " << (error ? error->message : "");
  if (error) g_error_free(error);
  return ElementRef(pipeline ? GST_ELEMENT(gst_object_ref_sink(pipeline)) : nullptr);
}

// Sets the state and waits for it (10 s at most); true when it got there.
inline bool Reach(GstElement* element, GstState state) {
  if (gst_element_set_state(element, state) == GST_STATE_CHANGE_FAILURE) return false;
  GstState now = GST_STATE_VOID_PENDING;
  return gst_element_get_state(element, &now, nullptr, 10 * GST_SECOND) !=
             GST_STATE_CHANGE_FAILURE &&
         now == state;
}

// Stops a pipeline before it goes away.
struct Stopped {
  void operator()(GstElement* element) const {
    if (!element) return;
    gst_element_set_state(element, GST_STATE_NULL);
    gst_object_unref(element);
  }
};
using PipelineRef = std::unique_ptr<GstElement, Stopped>;

inline PipelineRef LaunchIn(const std::string& text, GstState state) {
  PipelineRef pipeline(Launch(text).release());
  if (pipeline) {
    EXPECT_TRUE(Reach(pipeline.get(), state)) << text;
  }
  return pipeline;
}

inline ElementRef EmptyPipeline() {
  return ElementRef(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr))));
}

// The graph's text; fails the test when it has none.
inline std::string TextOf(GstBin* graph) {
  std::string text;
  EXPECT_TRUE(WriteGraphText(graph, &text));
  return text;
}

inline GstBin* Bin(const PipelineRef& pipeline) {
  return GST_BIN(pipeline.get());
}
inline GstBin* Bin(const ElementRef& pipeline) {
  return GST_BIN(pipeline.get());
}

inline ElementRef Child(GstBin* bin, const char* name) {
  return ElementRef(gst_bin_get_by_name(bin, name));
}

// A mono 8-bit WAV file of `samples` at `rate` samples a second.
inline void WriteWav(const std::string& path, uint32_t rate, uint32_t samples) {
  std::ofstream out(path, std::ios::binary);
  auto u32 = [&out](uint32_t v) { out.write(reinterpret_cast<const char*>(&v), 4); };
  auto u16 = [&out](uint16_t v) { out.write(reinterpret_cast<const char*>(&v), 2); };
  out.write("RIFF", 4);
  u32(36 + samples);
  out.write("WAVEfmt ", 8);
  u32(16);
  u16(1);  // PCM
  u16(1);  // mono
  u32(rate);
  u32(rate);  // bytes a second
  u16(1);     // block align
  u16(8);     // bits a sample
  out.write("data", 4);
  u32(samples);
  std::string silence(samples, static_cast<char>(0x80));
  out.write(silence.data(), static_cast<std::streamsize>(silence.size()));
}

// A fresh folder per test under the system's temporary folder.
class TempFolderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    m_Folder = std::filesystem::temp_directory_path() /
               (std::string("tachyrun_graph_") + std::to_string(getpid()) + "_" +
                info->test_suite_name() + "_" + info->name());
    std::filesystem::remove_all(m_Folder);
    std::filesystem::create_directories(m_Folder);
  }
  void TearDown() override { std::filesystem::remove_all(m_Folder); }
  std::string PathOf(const std::string& name) const { return (m_Folder / name).string(); }

  std::filesystem::path m_Folder;
};

}  // namespace graphtest
