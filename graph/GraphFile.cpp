#include "graph/GraphFile.h"

#include <gio/gio.h>
#include <gsf/gsf.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "graph/GraphText.h"

namespace {

// Every compound file starts with these eight bytes.
constexpr unsigned char kCompoundSignature[8] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
// A graph's text is small; a stream claiming more is not one of ours.
constexpr gsf_off_t kMaxGraphText = 16 * 1024 * 1024;
constexpr size_t kReadChunk = 64 * 1024;

struct GObjectUnref {
  void operator()(gpointer object) const {
    if (object) g_object_unref(object);
  }
};
using InputRef = std::unique_ptr<GsfInput, GObjectUnref>;
using OutputRef = std::unique_ptr<GsfOutput, GObjectUnref>;

void EnsureGsfInit() {
  static const bool started = [] {
    gsf_init();
    return true;
  }();
  (void)started;
}

bool HasCompoundSignature(const unsigned char* bytes, size_t size) {
  return size >= sizeof(kCompoundSignature) &&
         std::memcmp(bytes, kCompoundSignature, sizeof(kCompoundSignature)) == 0;
}

bool FileHasCompoundSignature(const char* path) {
  unsigned char head[sizeof(kCompoundSignature)] = {};
  FILE* file = std::fopen(path, "rb");
  if (!file) return false;
  const size_t got = std::fread(head, 1, sizeof(head), file);
  std::fclose(file);
  return HasCompoundSignature(head, got);
}

// A storage (a folder of streams) reports its children; a stream reports -1.
bool IsStorage(GsfInput* child) {
  return GSF_IS_INFILE(child) && gsf_infile_num_children(GSF_INFILE(child)) >= 0;
}

// The root stream named kGraphStreamName, found without regard to case.
InputRef OpenGraphStream(GsfInfile* root) {
  const int count = gsf_infile_num_children(root);
  for (int i = 0; i < count; ++i) {
    const char* name = gsf_infile_name_by_index(root, i);
    if (!name || g_ascii_strcasecmp(name, kGraphStreamName) != 0) continue;
    InputRef child(gsf_infile_child_by_index(root, i));
    if (child && !IsStorage(child.get())) return child;
  }
  return nullptr;
}

bool ReadAll(GsfInput* stream, std::string* text) {
  const gsf_off_t size = gsf_input_size(stream);
  if (size < 0 || size > kMaxGraphText) return false;
  text->clear();
  gsf_off_t left = size;
  while (left > 0) {
    const size_t chunk = static_cast<size_t>(std::min<gsf_off_t>(left, kReadChunk));
    const guint8* bytes = gsf_input_read(stream, chunk, nullptr);
    if (!bytes) return false;
    text->append(reinterpret_cast<const char*>(bytes), chunk);
    left -= static_cast<gsf_off_t>(chunk);
  }
  return true;
}

// From an open compound file on: the stream, its text, the graph.
HRESULT LoadFromInput(GstBin* graph, GsfInput* input) {
  GError* error = nullptr;
  InputRef root(reinterpret_cast<GsfInput*>(gsf_infile_msole_new(input, &error)));
  if (error) g_error_free(error);
  if (!root) return E_FAIL;
  InputRef stream = OpenGraphStream(GSF_INFILE(root.get()));
  std::string text;
  if (!stream || !ReadAll(stream.get(), &text)) return E_FAIL;
  return LoadGraphText(graph, text);
}

bool WriteCompoundFile(const char* path, const std::string& text) {
  GError* error = nullptr;
  OutputRef sink(gsf_output_stdio_new(path, &error));
  if (error) g_error_free(error);
  if (!sink) return false;
  OutputRef root(GSF_OUTPUT(gsf_outfile_msole_new(sink.get())));
  if (!root) return false;
  OutputRef stream(gsf_outfile_new_child(GSF_OUTFILE(root.get()), kGraphStreamName, FALSE));
  bool ok = stream && gsf_output_write(stream.get(), text.size(),
                                       reinterpret_cast<const guint8*>(text.data()));
  // The stream closes before the compound file that holds it.
  if (stream) ok = gsf_output_close(stream.get()) && ok;
  ok = gsf_output_close(root.get()) && ok;
  if (!gsf_output_is_closed(sink.get())) ok = gsf_output_close(sink.get()) && ok;
  return ok;
}

}  // namespace

HRESULT SaveGraphToFile(GstBin* graph, const char* path) {
  if (!graph || !path) return E_POINTER;
  EnsureGsfInit();
  std::string text;
  if (!WriteGraphText(graph, &text)) return E_FAIL;
  return WriteCompoundFile(path, text) ? S_OK : E_FAIL;
}

HRESULT LoadGraphFromFile(GstBin* graph, const char* path) {
  if (!path || !FileHasCompoundSignature(path)) return E_FAIL;
  if (!graph) return E_POINTER;
  EnsureGsfInit();
  GError* error = nullptr;
  InputRef input(gsf_input_stdio_new(path, &error));
  if (error) g_error_free(error);
  if (!input) return E_FAIL;
  return LoadFromInput(graph, input.get());
}

HRESULT LoadGraphFromResource(GstBin* graph, const char* resourcePath) {
  if (!graph || !resourcePath) return E_FAIL;
  EnsureGsfInit();
  GBytes* bytes = g_resources_lookup_data(resourcePath, G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr);
  if (!bytes) return E_FAIL;
  gsize size = 0;
  const auto* data = static_cast<const guint8*>(g_bytes_get_data(bytes, &size));
  HRESULT hr = E_FAIL;
  if (HasCompoundSignature(data, size)) {
    InputRef input(gsf_input_memory_new(data, static_cast<gsf_off_t>(size), FALSE));
    if (input) hr = LoadFromInput(graph, input.get());
  }
  g_bytes_unref(bytes);
  return hr;
}
