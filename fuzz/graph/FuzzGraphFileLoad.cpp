// Loads a graph file from arbitrary bytes. The first byte picks what the
// rest is: the whole file (any compound file, or none), or the text of the
// "ActiveMovieGraph" stream inside a well-formed compound file, so the
// parser of pipeline texts is reached as often as the file reader. A graph
// that loads is written back as text. Loading never changes a state, so no
// element of the text ever runs.

#include <gsf/gsf.h>
#include <gst/gst.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "graph/GraphFile.h"
#include "graph/GraphText.h"

namespace {

std::string g_Path;

void WriteRaw(const uint8_t* data, size_t size) {
  FILE* file = std::fopen(g_Path.c_str(), "wb");
  if (!file) return;
  if (size) std::fwrite(data, 1, size, file);
  std::fclose(file);
}

void WriteAsStream(const uint8_t* data, size_t size) {
  GsfOutput* sink = gsf_output_stdio_new(g_Path.c_str(), nullptr);
  if (!sink) return;
  GsfOutfile* root = gsf_outfile_msole_new(sink);
  GsfOutput* stream = gsf_outfile_new_child(root, kGraphStreamName, FALSE);
  gsf_output_write(stream, size, data);
  gsf_output_close(stream);
  g_object_unref(stream);
  gsf_output_close(GSF_OUTPUT(root));
  g_object_unref(root);
  g_object_unref(sink);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  gst_init(argc, argv);
  gsf_init();
  g_Path = "/tmp/tachyrun_fuzz_graph_" + std::to_string(getpid()) + ".graph";
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  if (data[0] & 1) {
    WriteAsStream(data + 1, size - 1);
  } else {
    WriteRaw(data + 1, size - 1);
  }
  GstElement* graph = GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new(nullptr)));
  if (LoadGraphFromFile(GST_BIN(graph), g_Path.c_str()) == S_OK) {
    std::string text;
    WriteGraphText(GST_BIN(graph), &text);
  }
  gst_object_unref(graph);
  return 0;
}
