#include "graph/Renderers.h"

#include <functional>

#include "graph/GraphWalk.h"
#include "graph/MediaType.h"
#include "graph/PinHelpers.h"

namespace {

enum class WalkStep { kGoOn, kStop };

// Walks the graph's renderers in the graph's order and hands each whose
// link has `majorType` to `onMatch`. The result is that of the last step
// that could fail: a pad count or a link type.
HRESULT WalkRenderers(GstBin* graph, const char* majorType,
                      const std::function<WalkStep(ElementRef&)>& onMatch) {
  HRESULT hr = S_OK;
  for (ElementRef& filter : CollectElements(graph)) {
    uint32_t inputs = 0;
    uint32_t outputs = 0;
    hr = CountPinsByDirection(filter.get(), &inputs, &outputs);
    if (FAILED(hr)) break;
    if (inputs != 1 || outputs != 0) continue;
    AM_MEDIA_TYPE type;
    hr = ConnectionMediaType(GetInputPin(filter.get(), 0), &type);
    if (FAILED(hr)) break;
    const bool match = IsMajorType(type, majorType);
    FreeMediaType(&type);
    if (match && onMatch(filter) == WalkStep::kStop) break;
  }
  return hr;
}

}  // namespace

HRESULT FindRendererOfType(GstBin* graph, const char* majorType, GstElement** out) {
  if (!graph) return E_NOINTERFACE;
  if (!majorType) return E_POINTER;
  if (out) *out = nullptr;
  return WalkRenderers(graph, majorType, [out](ElementRef& filter) {
    if (out) *out = filter.release();
    return WalkStep::kStop;
  });
}

HRESULT FindAudioRenderer(GstBin* graph, GstElement** out) {
  return FindRendererOfType(graph, MEDIATYPE_Audio, out);
}

HRESULT FindVideoRenderer(GstBin* graph, GstElement** out) {
  return FindRendererOfType(graph, MEDIATYPE_Video, out);
}

int32_t CountRenderersOfType(GstBin* graph, const char* majorType) {
  if (!graph || !majorType) return 0;
  int32_t count = 0;
  WalkRenderers(graph, majorType, [&count](ElementRef&) {
    ++count;
    return WalkStep::kGoOn;
  });
  return count;
}

HRESULT GetRendererOfType(int32_t index, GstBin* graph, const char* majorType, GstElement** out) {
  if (!graph) return E_NOINTERFACE;
  if (!majorType) return E_POINTER;
  if (out) *out = nullptr;
  int32_t matches = 0;
  return WalkRenderers(graph, majorType, [&](ElementRef& filter) {
    if (out) {
      if (*out) gst_object_unref(*out);
      *out = GST_ELEMENT(gst_object_ref(filter.get()));
    }
    if (matches == index) return WalkStep::kStop;
    ++matches;
    return WalkStep::kGoOn;
  });
}
