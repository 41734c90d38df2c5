#include "graph/GraphText.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <utility>
#include <vector>

#include "graph/GraphWalk.h"

namespace {

// Properties every element has that the description writes itself or that
// belong to the graph, not to the element.
constexpr const char* kSkippedProperties[] = {"name", "parent"};

bool IsSkipped(const char* property) {
  return std::any_of(std::begin(kSkippedProperties), std::end(kSkippedProperties),
                     [property](const char* skipped) { return g_strcmp0(skipped, property) == 0; });
}

bool IsBare(const std::string& value) {
  return !value.empty() && std::all_of(value.begin(), value.end(), [](char c) {
    return g_ascii_isalnum(c) || std::strchr("_-.:/+", c);
  });
}

// A value for the parser: as it stands when it is a plain word, else inside
// double quotes with quotes and backslashes escaped, so spaces, "!" and "="
// in it stay part of the value.
std::string Quoted(const std::string& value) {
  if (IsBare(value)) return value;
  std::string out = "\"";
  for (char c : value) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + "\"";
}

// The serialised value of `property` of `object`; false when it has none.
bool SerializedProperty(GObject* object, GParamSpec* property, std::string* text) {
  GValue value = G_VALUE_INIT;
  g_value_init(&value, property->value_type);
  g_object_get_property(object, property->name, &value);
  // Caps read best in their own text form, which the parser takes as well.
  gchar* serialized = nullptr;
  if (G_VALUE_HOLDS(&value, GST_TYPE_CAPS)) {
    const GstCaps* caps = gst_value_get_caps(&value);
    serialized = caps ? gst_caps_to_string(caps) : nullptr;
  } else {
    serialized = gst_value_serialize(&value);
  }
  g_value_unset(&value);
  if (!serialized) return false;
  *text = serialized;
  g_free(serialized);
  return true;
}

std::string SerializedString(const char* string) {
  GValue value = G_VALUE_INIT;
  g_value_init(&value, G_TYPE_STRING);
  g_value_set_string(&value, string);
  gchar* serialized = gst_value_serialize(&value);
  g_value_unset(&value);
  std::string text = serialized ? serialized : "";
  g_free(serialized);
  return text;
}

// Names a link can refer to: letters, digits and "_-:%".
bool IsReferable(const char* name) {
  if (!name || !*name) return false;
  for (const char* c = name; *c; ++c) {
    if (!g_ascii_isalnum(*c) && !std::strchr("_-:%", *c)) return false;
  }
  return true;
}

// A plain bin or pipeline holds what its user put in, which the text can't
// carry; bins of other factories make their children themselves.
bool HasChildrenOfTheUser(GstElement* element, GstElementFactory* factory) {
  const char* name = GST_OBJECT_NAME(factory);
  return GST_IS_BIN(element) && GST_BIN_NUMCHILDREN(GST_BIN(element)) > 0 &&
         (g_strcmp0(name, "bin") == 0 || g_strcmp0(name, "pipeline") == 0);
}

// "factory name=... property=value ..." with the properties that differ
// from a fresh element of the same factory.
bool DescribeElement(GstElement* element, std::string* text) {
  GstElementFactory* factory = gst_element_get_factory(element);
  if (!factory || HasChildrenOfTheUser(element, factory)) return false;
  ElementRef fresh(gst_element_factory_create(factory, nullptr));
  if (!fresh) return false;
  gst_object_ref_sink(fresh.get());  // the floating reference becomes the one fresh holds

  *text = std::string(GST_OBJECT_NAME(factory)) +
          " name=" + Quoted(SerializedString(GST_OBJECT_NAME(element)));
  guint count = 0;
  GParamSpec** properties = g_object_class_list_properties(G_OBJECT_GET_CLASS(element), &count);
  for (guint i = 0; i < count; ++i) {
    GParamSpec* property = properties[i];
    const GParamFlags needed = static_cast<GParamFlags>(G_PARAM_READABLE | G_PARAM_WRITABLE);
    if ((property->flags & needed) != needed || IsSkipped(property->name)) continue;
    std::string current;
    std::string initial;
    if (!SerializedProperty(G_OBJECT(element), property, &current)) continue;
    if (SerializedProperty(G_OBJECT(fresh.get()), property, &initial) && initial == current) {
      continue;
    }
    *text += std::string(" ") + property->name + "=" + Quoted(current);
  }
  g_free(properties);
  return true;
}

// "source.pad ! sink.pad" for each output of `element` linked inside `graph`.
bool DescribeLinks(GstBin* graph, GstElement* element, std::string* text) {
  for (const PadRef& pad : CollectPads(element)) {
    if (GST_PAD_DIRECTION(pad.get()) != GST_PAD_SRC) continue;
    PadRef peer(gst_pad_get_peer(pad.get()));
    ElementRef target = peer ? PadOwner(peer.get()) : nullptr;
    if (!target || GST_OBJECT_PARENT(target.get()) != GST_OBJECT(graph)) continue;
    const char* names[] = {GST_OBJECT_NAME(element), GST_OBJECT_NAME(pad.get()),
                           GST_OBJECT_NAME(target.get()), GST_OBJECT_NAME(peer.get())};
    if (!std::all_of(std::begin(names), std::end(names), IsReferable)) return false;
    *text += std::string(names[0]) + "." + names[1] + " ! " + names[2] + "." + names[3] + "\n";
  }
  return true;
}

bool IsBlank(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return g_ascii_isspace(c); });
}

using PadLink = std::pair<PadRef, PadRef>;

// The links between `elements`, to be made again after a move between bins
// (a bin cuts an element's links when it lets it go).
std::vector<PadLink> LinksAmong(const std::vector<ElementRef>& elements) {
  std::vector<PadLink> links;
  for (const ElementRef& element : elements) {
    for (PadRef& pad : CollectPads(element.get())) {
      if (GST_PAD_DIRECTION(pad.get()) != GST_PAD_SRC) continue;
      PadRef peer(gst_pad_get_peer(pad.get()));
      if (peer) links.emplace_back(std::move(pad), std::move(peer));
    }
  }
  return links;
}

// Whether the parser may build `text` in reasonable time. Every element
// needs a word (a run of letters, digits and "_") or a "(" (a bin), and the
// cost of building grows with the square of their count and faster still
// with the depth of nested bins.
bool IsWithinLimits(const std::string& text) {
  size_t words = 0;
  size_t depth = 0;
  bool inWord = false;
  for (char c : text) {
    const bool wordChar = g_ascii_isalnum(c) || c == '_';
    words += (wordChar && !inWord) || c == '(';
    inWord = wordChar;
    if (c == '(' && ++depth > kMaxGraphDepth) return false;
    if (c == ')' && depth > 0) --depth;
  }
  return words <= kMaxGraphWords;
}

std::set<std::string> ChildNames(GstBin* graph) {
  std::set<std::string> names;
  for (const ElementRef& element : CollectElements(graph))
    names.insert(GST_OBJECT_NAME(element.get()));
  return names;
}

// Moves `elements` (in adding order) from `from` into `graph` with their
// links; on any failure takes out again what it added.
bool MoveElements(GstBin* from, GstBin* graph, const std::vector<ElementRef>& elements) {
  const std::set<std::string> taken = ChildNames(graph);
  for (const ElementRef& element : elements) {
    if (taken.count(GST_OBJECT_NAME(element.get()))) return false;
  }
  std::vector<PadLink> links = LinksAmong(elements);
  std::vector<GstElement*> added;
  bool ok = true;
  for (const ElementRef& element : elements) {
    gst_bin_remove(from, element.get());
    if (!gst_bin_add(graph, element.get())) {
      ok = false;
      break;
    }
    added.push_back(element.get());
  }
  for (const PadLink& link : links) {
    if (!ok) break;
    ok = gst_pad_link(link.first.get(), link.second.get()) == GST_PAD_LINK_OK;
  }
  if (!ok) {
    for (GstElement* element : added) gst_bin_remove(graph, element);
  }
  return ok;
}

}  // namespace

bool WriteGraphText(GstBin* graph, std::string* text) {
  if (!graph || !text) return false;
  std::vector<ElementRef> elements = CollectElements(graph);
  std::reverse(elements.begin(), elements.end());
  std::string out;
  for (const ElementRef& element : elements) {
    std::string description;
    if (!DescribeElement(element.get(), &description)) return false;
    out += description + "\n";
  }
  for (const ElementRef& element : elements) {
    if (!DescribeLinks(graph, element.get(), &out)) return false;
  }
  *text = std::move(out);
  return true;
}

HRESULT LoadGraphText(GstBin* graph, const std::string& text) {
  if (!graph) return E_FAIL;
  if (IsBlank(text)) return S_OK;
  if (!IsWithinLimits(text)) return E_FAIL;
  EnsureGstInit();
  GError* error = nullptr;
  // The parser wraps the description in a bin of its own, so the result is
  // a bin whatever the text holds.
  GstElement* parsed = gst_parse_bin_from_description_full(text.c_str(), FALSE, nullptr,
                                                           GST_PARSE_FLAG_FATAL_ERRORS, &error);
  const bool failed = error != nullptr;
  if (error) g_error_free(error);
  ElementRef holder(parsed ? GST_ELEMENT(gst_object_ref_sink(parsed)) : nullptr);
  if (!holder || failed || !GST_IS_BIN(holder.get())) return E_FAIL;
  std::vector<ElementRef> elements = CollectElements(GST_BIN(holder.get()));
  std::reverse(elements.begin(), elements.end());
  return MoveElements(GST_BIN(holder.get()), graph, elements) ? S_OK : E_FAIL;
}
