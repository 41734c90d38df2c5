#include "graph/FilterClasses.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <vector>

#include "graph/GraphWalk.h"

namespace {

constexpr const char* kCaptureFilterName = "Pinnacle WDM PCTV Video Capture";
constexpr const char* kCaptureCategoryName = "Video Capture Sources";
constexpr int32_t kClassNotFound = -1;

// Friendly names of the device classes that have one; any other class is
// named by its own text.
constexpr std::pair<const char*, const char*> kDeviceCategoryNames[] = {
    {"Video/Source", kCaptureCategoryName},
    {"Audio/Source", "Audio Capture Sources"},
    {"Video/Sink", "Video Renderers"},
    {"Audio/Sink", "Audio Renderers"},
};

struct FilterEntry {
  std::string friendlyName;
  // Reads the filter's class; false when it can't be read.
  std::function<bool(std::string*)> readClass;
};

struct Category {
  std::string name;
  std::vector<FilterEntry> filters;
};

std::string DeviceCategoryName(const std::string& deviceClass) {
  for (const auto& [klass, name] : kDeviceCategoryNames) {
    if (deviceClass == klass) return name;
  }
  return deviceClass;
}

// A device's class is the factory of the element it makes.
bool ReadDeviceClass(GstDevice* device, std::string* out) {
  GstElement* made = gst_device_create_element(device, nullptr);
  ElementRef element(made ? GST_ELEMENT(gst_object_ref_sink(made)) : nullptr);
  GstElementFactory* factory = element ? gst_element_get_factory(element.get()) : nullptr;
  if (!factory) return false;
  *out = GST_OBJECT_NAME(factory);
  return true;
}

Category& CategoryNamed(std::vector<Category>* categories, const std::string& name) {
  for (Category& category : *categories) {
    if (category.name == name) return category;
  }
  categories->push_back(Category{name, {}});
  return categories->back();
}

// The named device categories stand, in their order, even without devices.
void AddDeviceCategories(std::vector<Category>* categories) {
  for (const auto& named : kDeviceCategoryNames) CategoryNamed(categories, named.second);
  GstDeviceMonitor* monitor = gst_device_monitor_new();
  gst_device_monitor_add_filter(monitor, nullptr, nullptr);
  GList* devices = gst_device_monitor_get_devices(monitor);
  for (GList* item = devices; item; item = item->next) {
    GstDevice* device = GST_DEVICE(item->data);
    gchar* klass = gst_device_get_device_class(device);
    gchar* display = gst_device_get_display_name(device);
    std::shared_ptr<GstDevice> held(GST_DEVICE(gst_object_ref(device)), GstObjectUnref());
    CategoryNamed(categories, DeviceCategoryName(klass ? klass : ""))
        .filters.push_back(FilterEntry{display ? display : "", [held](std::string* out) {
                                         return ReadDeviceClass(held.get(), out);
                                       }});
    g_free(klass);
    g_free(display);
  }
  g_list_free_full(devices, gst_object_unref);
  gst_object_unref(monitor);
}

void AddFactoryCategories(std::vector<Category>* categories) {
  // Every factory, whatever its klass says (a factory list by type would
  // leave out klasses such as "Generic").
  GList* factories = gst_registry_get_feature_list(gst_registry_get(), GST_TYPE_ELEMENT_FACTORY);
  std::map<std::string, std::map<std::string, std::string>> byKlass;  // klass -> name -> long name
  for (GList* item = factories; item; item = item->next) {
    GstElementFactory* factory = GST_ELEMENT_FACTORY(item->data);
    const gchar* klass = gst_element_factory_get_metadata(factory, GST_ELEMENT_METADATA_KLASS);
    const gchar* longName =
        gst_element_factory_get_metadata(factory, GST_ELEMENT_METADATA_LONGNAME);
    byKlass[klass ? klass : ""][GST_OBJECT_NAME(factory)] = longName ? longName : "";
  }
  gst_plugin_feature_list_free(factories);
  for (const auto& [klass, members] : byKlass) {
    Category& category = CategoryNamed(categories, klass);
    for (const auto& member : members) {
      const std::string factoryName = member.first;
      category.filters.push_back(FilterEntry{member.second, [factoryName](std::string* out) {
                                               *out = factoryName;
                                               return true;
                                             }});
    }
  }
}

}  // namespace

int32_t FindFilterClsid(std::string* out, const char* filterName, const char* categoryName) {
  if (!filterName) return 0;
  EnsureGstInit();
  std::vector<Category> categories;
  AddDeviceCategories(&categories);
  AddFactoryCategories(&categories);
  int32_t found = 0;
  for (const Category& category : categories) {
    if (categoryName && category.name != categoryName) continue;
    for (const FilterEntry& filter : category.filters) {
      std::string clsid;
      if (filter.friendlyName != filterName || !filter.readClass(&clsid)) continue;
      found = 1;
      if (out) *out = clsid;
    }
  }
  return found;
}

HRESULT CreateCaptureFilter(GstElement** out) {
  std::string clsid;
  if (!FindFilterClsid(&clsid, kCaptureFilterName, kCaptureCategoryName)) return kClassNotFound;
  GstElement* filter = gst_element_factory_make(clsid.c_str(), nullptr);
  if (!filter) return E_FAIL;
  gst_object_ref_sink(filter);
  if (out) {
    *out = filter;
  } else {
    gst_object_unref(filter);
  }
  return S_OK;
}
