// Graph files: a compound file with the one stream "ActiveMovieGraph" that
// holds the graph's text; saved, listed, loaded, and refused when bad.
#include <gio/gio.h>
#include <gsf/gsf.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <vector>

#include "graph/GraphFile.h"
#include "graph/GraphText.h"
#include "tests/graph/GraphTestUtil.h"

using namespace graphtest;

namespace {

std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

// A compound file with one root stream of our choosing.
void WriteCompound(const std::string& path, const char* streamName, const std::string& content) {
  GsfOutput* sink = gsf_output_stdio_new(path.c_str(), nullptr);
  ASSERT_NE(sink, nullptr);
  GsfOutfile* root = gsf_outfile_msole_new(sink);
  GsfOutput* stream = gsf_outfile_new_child(root, streamName, FALSE);
  gsf_output_write(stream, content.size(), reinterpret_cast<const guint8*>(content.data()));
  gsf_output_close(stream);
  g_object_unref(stream);
  gsf_output_close(GSF_OUTPUT(root));
  g_object_unref(root);
  g_object_unref(sink);
}

std::string RunCommand(const std::string& command, int* status) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return output;
  char buffer[512];
  while (size_t got = fread(buffer, 1, sizeof(buffer), pipe)) output.append(buffer, got);
  *status = pclose(pipe);
  return output;
}

class GraphFileTest : public TempFolderTest {};

}  // namespace

TEST_F(GraphFileTest, ABranchedPipelineComesBackWithElementsPropertiesAndLinks) {
  ElementRef original = Launch(kBranchedPipeline);
  const std::string path = PathOf("branched.graph");
  ASSERT_EQ(SaveGraphToFile(Bin(original), path.c_str()), S_OK);
  ElementRef loaded = EmptyPipeline();
  ASSERT_EQ(LoadGraphFromFile(Bin(loaded), path.c_str()), S_OK);
  EXPECT_EQ(TextOf(Bin(loaded)), TextOf(Bin(original)));
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(loaded)), 7);
  // Checked on the objects too, not only through the text.
  ElementRef source = Child(Bin(loaded), "src");
  gint pattern = -1;
  g_object_get(source.get(), "pattern", &pattern, nullptr);
  EXPECT_EQ(pattern, 18);  // ball
  ElementRef size = Child(Bin(loaded), "size");
  GstCaps* caps = nullptr;
  g_object_get(size.get(), "caps", &caps, nullptr);
  GstCaps* wanted = gst_caps_from_string("video/x-raw, width=(int)64, height=(int)48");
  EXPECT_TRUE(gst_caps_is_equal(caps, wanted));
  gst_caps_unref(wanted);
  gst_caps_unref(caps);
  ElementRef tee = Child(Bin(loaded), "t");
  ElementRef q2 = Child(Bin(loaded), "q2");
  PadRef branch(gst_element_get_static_pad(tee.get(), "src_1"));
  ASSERT_NE(branch, nullptr);
  PadRef peer(gst_pad_get_peer(branch.get()));
  ASSERT_NE(peer, nullptr);
  EXPECT_EQ(GST_OBJECT_PARENT(peer.get()), GST_OBJECT(q2.get()));
  // And it runs.
  PipelineRef running(loaded.release());
  EXPECT_TRUE(Reach(running.get(), GST_STATE_PAUSED));
}

TEST_F(GraphFileTest, AWavGraphComesBackAndKeepsItsDuration) {
  const std::string wav = PathOf("sound.wav");
  WriteWav(wav, 8000, 8000 * 3);
  PipelineRef original = LaunchIn(
      "filesrc name=file location=\"" + wav + "\" ! wavparse name=parse ! fakesink name=out",
      GST_STATE_PAUSED);
  const std::string path = PathOf("wav.graph");
  ASSERT_EQ(SaveGraphToFile(Bin(original), path.c_str()), S_OK);
  PipelineRef loaded(EmptyPipeline().release());
  ASSERT_EQ(LoadGraphFromFile(Bin(loaded), path.c_str()), S_OK);
  // The parser's output pad appears with data; its link is made then.
  ASSERT_TRUE(Reach(loaded.get(), GST_STATE_PAUSED));
  gint64 duration = -1;
  ASSERT_TRUE(gst_element_query_duration(loaded.get(), GST_FORMAT_TIME, &duration));
  EXPECT_EQ(duration, 3 * GST_SECOND);
  EXPECT_EQ(TextOf(Bin(loaded)), TextOf(Bin(original)));
}

TEST_F(GraphFileTest, GsfListsTheOneStream) {
  if (std::string(TACHYRUN_GSF_TOOL).empty() ||
      std::string(TACHYRUN_GSF_TOOL).find("NOTFOUND") != std::string::npos) {
    GTEST_SKIP() << "the gsf tool (libgsf-bin) is not installed";
  }
  ElementRef original = Launch(kBranchedPipeline);
  const std::string path = PathOf("listed.graph");
  ASSERT_EQ(SaveGraphToFile(Bin(original), path.c_str()), S_OK);
  int status = -1;
  const std::string listing =
      RunCommand(std::string(TACHYRUN_GSF_TOOL) + " list '" + path + "'", &status);
  EXPECT_EQ(status, 0) << listing;
  // "f <size> <name>" for each stream; the root storage alone besides.
  std::vector<std::string> streams;
  std::istringstream lines(listing);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("f ", 0) == 0) streams.push_back(line);
  }
  const std::string text = TextOf(Bin(original));
  ASSERT_EQ(streams.size(), 1u) << listing;
  std::istringstream entry(streams[0].substr(2));
  size_t size = 0;
  std::string name;
  entry >> size >> name;
  EXPECT_EQ(name, "ActiveMovieGraph");
  EXPECT_EQ(size, text.size());
  const std::string content =
      RunCommand(std::string(TACHYRUN_GSF_TOOL) + " cat '" + path + "' ActiveMovieGraph", &status);
  EXPECT_EQ(content, text);
}

TEST_F(GraphFileTest, TheFileIsACompoundFile) {
  ElementRef original = Launch(kBranchedPipeline);
  const std::string path = PathOf("signature.graph");
  ASSERT_EQ(SaveGraphToFile(Bin(original), path.c_str()), S_OK);
  const std::string bytes = ReadBytes(path);
  ASSERT_GE(bytes.size(), 512u);
  EXPECT_EQ(bytes.substr(0, 8), std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8));
}

TEST_F(GraphFileTest, SavingOverAnExistingFileReplacesIt) {
  const std::string path = PathOf("replaced.graph");
  WriteBytes(path, std::string(100000, 'x'));
  ElementRef first = Launch("audiotestsrc name=a ! fakesink name=b");
  ASSERT_EQ(SaveGraphToFile(Bin(first), path.c_str()), S_OK);
  ElementRef second = Launch("videotestsrc name=v ! fakesink name=w");
  ASSERT_EQ(SaveGraphToFile(Bin(second), path.c_str()), S_OK);
  EXPECT_LT(ReadBytes(path).size(), 100000u);
  ElementRef loaded = EmptyPipeline();
  ASSERT_EQ(LoadGraphFromFile(Bin(loaded), path.c_str()), S_OK);
  EXPECT_EQ(TextOf(Bin(loaded)), TextOf(Bin(second)));
}

TEST_F(GraphFileTest, AGraphWithoutATextFormLeavesTheFileAlone) {
  const std::string path = PathOf("kept.graph");
  WriteBytes(path, "earlier content");
  ElementRef graph = EmptyPipeline();
  GstElement* splitter = gst_element_factory_make("identity", "DV Splitter");
  GstElement* sink = gst_element_factory_make("fakesink", "out");
  gst_bin_add_many(Bin(graph), splitter, sink, nullptr);
  ASSERT_TRUE(gst_element_link(splitter, sink));
  EXPECT_EQ(SaveGraphToFile(Bin(graph), path.c_str()), E_FAIL);
  EXPECT_EQ(ReadBytes(path), "earlier content");
  EXPECT_EQ(SaveGraphToFile(Bin(graph), PathOf("no/such/folder/x.graph").c_str()), E_FAIL);
}

TEST_F(GraphFileTest, StreamNamesCompareWithoutCase) {
  const std::string path = PathOf("lower.graph");
  WriteCompound(path, "activemoviegraph", "fakesink name=lower");
  ElementRef loaded = EmptyPipeline();
  ASSERT_EQ(LoadGraphFromFile(Bin(loaded), path.c_str()), S_OK);
  EXPECT_NE(Child(Bin(loaded), "lower"), nullptr);
}

TEST_F(GraphFileTest, BadFilesFailAndLeaveTheGraphAsItWas) {
  ElementRef graph = Launch("videotestsrc name=src ! fakesink name=out");
  const std::string before = TextOf(Bin(graph));
  ElementRef good = Launch(kBranchedPipeline);
  const std::string saved = PathOf("good.graph");
  ASSERT_EQ(SaveGraphToFile(Bin(good), saved.c_str()), S_OK);
  const std::string goodBytes = ReadBytes(saved);

  WriteBytes(PathOf("plain.txt"), "videotestsrc ! fakesink\n");
  WriteCompound(PathOf("nostream.graph"), "SomethingElse", "fakesink name=x");
  WriteCompound(PathOf("notinstalled.graph"), kGraphStreamName, "nosuchfactory name=x");
  WriteCompound(PathOf("halfbuilt.graph"), kGraphStreamName, "queue name=a ! nosuchfactory");
  WriteCompound(PathOf("clash.graph"), kGraphStreamName, "fakesink name=out");
  WriteBytes(PathOf("truncated.graph"), goodBytes.substr(0, 600));
  WriteBytes(PathOf("signature-only.graph"), goodBytes.substr(0, 8));
  WriteBytes(PathOf("empty.graph"), "");
  const char* files[] = {
      "plain.txt",    "nostream.graph",  "notinstalled.graph",   "halfbuilt.graph",
      "clash.graph",  "truncated.graph", "signature-only.graph", "empty.graph",
      "missing.graph"};
  for (const char* name : files) {
    EXPECT_EQ(LoadGraphFromFile(Bin(graph), PathOf(name).c_str()), E_FAIL) << name;
    EXPECT_EQ(TextOf(Bin(graph)), before) << name;
  }
}

TEST_F(GraphFileTest, NullArguments) {
  ElementRef graph = Launch("videotestsrc ! fakesink");
  const std::string path = PathOf("null.graph");
  EXPECT_EQ(SaveGraphToFile(nullptr, path.c_str()), E_POINTER);
  EXPECT_EQ(SaveGraphToFile(Bin(graph), nullptr), E_POINTER);
  ASSERT_EQ(SaveGraphToFile(Bin(graph), path.c_str()), S_OK);
  EXPECT_EQ(LoadGraphFromFile(Bin(graph), nullptr), E_FAIL);
  EXPECT_EQ(LoadGraphFromFile(nullptr, path.c_str()), E_POINTER);
  EXPECT_EQ(LoadGraphFromFile(nullptr, PathOf("missing").c_str()), E_FAIL);
}

TEST_F(GraphFileTest, LoadsFromAResource) {
  const std::string tool = TACHYRUN_GLIB_COMPILE_RESOURCES;
  if (tool.empty() || tool.find("NOTFOUND") != std::string::npos) {
    GTEST_SKIP() << "glib-compile-resources is not installed";
  }
  ElementRef original = Launch(kBranchedPipeline);
  ASSERT_EQ(SaveGraphToFile(Bin(original), PathOf("branched.graph").c_str()), S_OK);
  WriteBytes(PathOf("plain.txt"), "not a compound file");
  WriteBytes(PathOf("graphs.xml"),
             "<?xml version=\"1.0\"?><gresources><gresource prefix=\"/tachyrun/test\">"
             "<file>branched.graph</file><file>plain.txt</file></gresource></gresources>");
  int status = -1;
  const std::string output =
      RunCommand(tool + " --sourcedir='" + m_Folder.string() + "' --target='" +
                     PathOf("graphs.gresource") + "' '" + PathOf("graphs.xml") + "' 2>&1",
                 &status);
  ASSERT_EQ(status, 0) << output;
  GResource* resource = g_resource_load(PathOf("graphs.gresource").c_str(), nullptr);
  ASSERT_NE(resource, nullptr);
  g_resources_register(resource);

  ElementRef loaded = EmptyPipeline();
  EXPECT_EQ(LoadGraphFromResource(Bin(loaded), "/tachyrun/test/branched.graph"), S_OK);
  EXPECT_EQ(TextOf(Bin(loaded)), TextOf(Bin(original)));
  ElementRef other = EmptyPipeline();
  EXPECT_EQ(LoadGraphFromResource(Bin(other), "/tachyrun/test/plain.txt"), E_FAIL);
  EXPECT_EQ(LoadGraphFromResource(Bin(other), "/tachyrun/test/missing"), E_FAIL);
  EXPECT_EQ(LoadGraphFromResource(Bin(other), nullptr), E_FAIL);
  EXPECT_EQ(LoadGraphFromResource(nullptr, "/tachyrun/test/branched.graph"), E_FAIL);
  EXPECT_EQ(GST_BIN_NUMCHILDREN(Bin(other)), 0);

  g_resources_unregister(resource);
  g_resource_unref(resource);
}
