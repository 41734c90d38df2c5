// Test-only element factories and a device provider, registered without a
// plugin file: two factories that share a long name in two klasses, and
// devices for the capture filter and for a name in two device classes.

#include <gst/gst.h>

#include <atomic>

#include "tests/graph/GraphTestUtil.h"

namespace {

std::atomic<bool> g_CapturePresent{true};

}  // namespace

extern "C" {

// Twin factories: plain bins whose classes differ only in their klass.
typedef struct {
  GstBin parent;
} TachyrunTwinA;
typedef struct {
  GstBinClass parent_class;
} TachyrunTwinAClass;
typedef struct {
  GstBin parent;
} TachyrunTwinB;
typedef struct {
  GstBinClass parent_class;
} TachyrunTwinBClass;

G_DEFINE_TYPE(TachyrunTwinA, tachyrun_twin_a, GST_TYPE_BIN)
G_DEFINE_TYPE(TachyrunTwinB, tachyrun_twin_b, GST_TYPE_BIN)

static void tachyrun_twin_a_init(TachyrunTwinA*) {}
static void tachyrun_twin_b_init(TachyrunTwinB*) {}

static void tachyrun_twin_a_class_init(TachyrunTwinAClass* klass) {
  gst_element_class_set_static_metadata(GST_ELEMENT_CLASS(klass), graphtest::kTwinLongName,
                                        "Tachyrun/Test/Alpha", "Test twin", "Tachyrun");
}
static void tachyrun_twin_b_class_init(TachyrunTwinBClass* klass) {
  gst_element_class_set_static_metadata(GST_ELEMENT_CLASS(klass), graphtest::kTwinLongName,
                                        "Tachyrun/Test/Beta", "Test twin", "Tachyrun");
}

// A device whose element comes from the factory named in its properties.
typedef struct {
  GstDevice parent;
} TachyrunTestDevice;
typedef struct {
  GstDeviceClass parent_class;
} TachyrunTestDeviceClass;

G_DEFINE_TYPE(TachyrunTestDevice, tachyrun_test_device, GST_TYPE_DEVICE)

static void tachyrun_test_device_init(TachyrunTestDevice*) {}

static GstElement* tachyrun_test_device_create_element(GstDevice* device, const gchar* name) {
  GstStructure* properties = gst_device_get_properties(device);
  const gchar* factory = properties ? gst_structure_get_string(properties, "factory") : nullptr;
  GstElement* element = factory ? gst_element_factory_make(factory, name) : nullptr;
  if (properties) gst_structure_free(properties);
  return element;
}

static void tachyrun_test_device_class_init(TachyrunTestDeviceClass* klass) {
  GST_DEVICE_CLASS(klass)->create_element = tachyrun_test_device_create_element;
}

typedef struct {
  GstDeviceProvider parent;
} TachyrunTestProvider;
typedef struct {
  GstDeviceProviderClass parent_class;
} TachyrunTestProviderClass;

G_DEFINE_TYPE(TachyrunTestProvider, tachyrun_test_provider, GST_TYPE_DEVICE_PROVIDER)

static void tachyrun_test_provider_init(TachyrunTestProvider*) {}

static GstDevice* MakeDevice(const char* name, const char* deviceClass, const char* factory,
                             const char* caps) {
  GstStructure* properties =
      gst_structure_new("tachyrun-test", "factory", G_TYPE_STRING, factory, nullptr);
  GstCaps* deviceCaps = gst_caps_from_string(caps);
  GstDevice* device =
      GST_DEVICE(g_object_new(tachyrun_test_device_get_type(), "display-name", name, "device-class",
                              deviceClass, "properties", properties, "caps", deviceCaps, nullptr));
  gst_caps_unref(deviceCaps);
  gst_structure_free(properties);
  return device;
}

static GList* tachyrun_test_provider_probe(GstDeviceProvider*) {
  GList* devices = nullptr;
  if (g_CapturePresent) {
    devices = g_list_append(devices, MakeDevice("Pinnacle WDM PCTV Video Capture", "Video/Source",
                                                "videotestsrc", "video/x-raw"));
  }
  devices =
      g_list_append(devices, MakeDevice(graphtest::kTwinDeviceName, graphtest::kTwinDeviceClassA,
                                        "videotestsrc", "video/x-raw"));
  devices =
      g_list_append(devices, MakeDevice(graphtest::kTwinDeviceName, graphtest::kTwinDeviceClassB,
                                        "audiotestsrc", "audio/x-raw"));
  return devices;
}

static void tachyrun_test_provider_class_init(TachyrunTestProviderClass* klass) {
  GST_DEVICE_PROVIDER_CLASS(klass)->probe = tachyrun_test_provider_probe;
  gst_device_provider_class_set_static_metadata(GST_DEVICE_PROVIDER_CLASS(klass),
                                                "Tachyrun test devices", "Video/Source",
                                                "Devices for the graph tests", "Tachyrun");
}

}  // extern "C"

namespace graphtest {

void RegisterTestElements() {
  static const bool registered = [] {
    gst_element_register(nullptr, kTwinAFactory, GST_RANK_NONE, tachyrun_twin_a_get_type());
    gst_element_register(nullptr, kTwinBFactory, GST_RANK_NONE, tachyrun_twin_b_get_type());
    gst_device_provider_register(nullptr, "tachyruntestprovider", GST_RANK_PRIMARY,
                                 tachyrun_test_provider_get_type());
    return true;
  }();
  (void)registered;
}

void SetCaptureDevicePresent(bool present) {
  g_CapturePresent = present;
}

}  // namespace graphtest
