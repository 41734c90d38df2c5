#include "graph/FilterHelpers.h"

#include <cstring>
#include <string>

#include "graph/GraphWalk.h"
#include "graph/PinHelpers.h"

namespace {

constexpr const char* kDvSplitterName = "DV Splitter";
// Names are compared as a buffer of 255 bytes holds them.
constexpr size_t kNameLimit = 254;

bool NameIs(GstElement* filter, const char* name) {
  gchar* own = gst_object_get_name(GST_OBJECT(filter));
  std::string cut = own ? own : "";
  g_free(own);
  if (cut.size() > kNameLimit) cut.resize(kNameLimit);
  return cut == name;
}

}  // namespace

int32_t RemoveAllFilters(GstBin* graph) {
  if (!graph) return -1;
  for (;;) {
    std::vector<ElementRef> filters = CollectElements(graph);
    if (filters.empty()) return 0;
    GstElement* first = filters.front().get();
    DisconnectFilter(graph, first);
    // An element must be stopped before it may go away with the bin's reference.
    gst_element_set_state(first, GST_STATE_NULL);
    // A bin that refuses the removal would be asked again for ever.
    if (!gst_bin_remove(graph, first)) return 0;
  }
}

GstElement* FindFilterByName(GstBin* graph, const char* name) {
  if (!graph || !name) return nullptr;
  for (ElementRef& filter : CollectElements(graph)) {
    if (NameIs(filter.get(), name)) return filter.release();
  }
  return nullptr;
}

bool HasDvSplitter(GstBin* graph) {
  ElementRef splitter(FindFilterByName(graph, kDvSplitterName));
  return splitter != nullptr;
}

void DisconnectFilter(GstBin* graph, GstElement* filter) {
  if (!graph || !filter) return;
  for (const PadRef& pad : CollectPads(filter)) {
    PadRef peer(gst_pad_get_peer(pad.get()));
    if (peer && PadDirection(peer.get()) == PINDIR_INPUT) gst_pad_unlink(pad.get(), peer.get());
  }
}

int32_t ConnectFilters(GstBin* graph, GstElement* from, int32_t outputIndex, GstElement* to,
                       int32_t inputIndex) {
  if (!graph) return 0;
  GstPad* output = GetOutputPin(from, outputIndex);
  GstPad* input = GetInputPin(to, inputIndex);
  if (!output || !input) return 0;
  // The pads live by their elements' references and none was taken here, so
  // none is given back.
  return gst_pad_link(output, input) >= 0 ? 1 : 0;
}
