#include "graph/GraphInfo.h"

#include <cstdio>
#include <cstring>

#include "graph/GraphWalk.h"
#include "graph/Renderers.h"

namespace {

constexpr const char* kUnknownServer = "<Unknown>";
constexpr const char* kNoDuration = "<00:00.000>";
constexpr size_t kDurationTextSize = 16;
constexpr int64_t kNanosecondsPerUnit = 100;
constexpr uint32_t kUnitsPerMillisecond = 10000;

void CopyBounded(char* out, size_t size, const char* text) {
  std::snprintf(out, size, "%s", text);
}

bool IsEditable(const GParamSpec* property) {
  const GParamFlags needed = static_cast<GParamFlags>(G_PARAM_READABLE | G_PARAM_WRITABLE);
  return (property->flags & needed) == needed && !(property->flags & G_PARAM_CONSTRUCT_ONLY) &&
         std::strcmp(property->name, "name") != 0 && std::strcmp(property->name, "parent") != 0;
}

}  // namespace

void GetFilterServerPath(const char* factoryName, char* out) {
  if (!factoryName || !out) return;
  EnsureGstInit();
  GstElementFactory* factory = gst_element_factory_find(factoryName);
  if (!factory) return;
  GstPlugin* plugin = gst_plugin_feature_get_plugin(GST_PLUGIN_FEATURE(factory));
  const gchar* file = plugin ? gst_plugin_get_filename(plugin) : nullptr;
  CopyBounded(out, kServerPathSize, file ? file : kUnknownServer);
  if (plugin) gst_object_unref(plugin);
  gst_object_unref(factory);
}

HRESULT FormatDuration(GstElement* seeking, char* out) {
  if (!seeking) return E_NOINTERFACE;
  if (!out) return E_POINTER;
  CopyBounded(out, kDurationTextSize, kNoDuration);
  gint64 nanoseconds = -1;
  if (!gst_element_query_duration(seeking, GST_FORMAT_TIME, &nanoseconds)) return E_NOINTERFACE;
  if (nanoseconds < 0) return E_FAIL;
  // The text keeps only the low 32 bits of the 100 ns count.
  const uint32_t units = static_cast<uint32_t>(nanoseconds / kNanosecondsPerUnit);
  uint32_t ms = units / kUnitsPerMillisecond;
  uint32_t s = ms / 1000;
  ms %= 1000;
  const uint32_t minutes = s / 60;
  s %= 60;
  std::snprintf(out, kDurationTextSize, "%02um:%02u.%03us", minutes, s, ms);
  return S_OK;
}

std::vector<GParamSpec*> EditableProperties(GstObject* object) {
  std::vector<GParamSpec*> editable;
  if (!object || !GST_IS_ELEMENT(object)) return editable;
  guint count = 0;
  GParamSpec** properties = g_object_class_list_properties(G_OBJECT_GET_CLASS(object), &count);
  for (guint i = 0; i < count; ++i) {
    if (IsEditable(properties[i])) editable.push_back(properties[i]);
  }
  g_free(properties);
  return editable;
}

int32_t SupportsPropertyPages(GstObject* object) {
  return EditableProperties(object).empty() ? 0 : 1;
}

int32_t CanFrameStep(GstBin* graph) {
  if (!graph || !GST_IS_PIPELINE(graph)) return 0;
  GstElement* renderer = nullptr;
  const HRESULT hr = FindVideoRenderer(graph, &renderer);
  ElementRef release(renderer);
  return hr == S_OK && renderer ? 1 : 0;
}
