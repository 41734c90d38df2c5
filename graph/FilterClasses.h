#pragma once
// Filter classes by friendly name. Categories are the device classes that
// GstDeviceMonitor reports, their filters the devices by display name
// ("Video/Source" is named "Video Capture Sources", "Audio/Source" "Audio
// Capture Sources", "Video/Sink" "Video Renderers", "Audio/Sink" "Audio
// Renderers"; these four stand even when empty). The element factories'
// klass strings follow in name order, their filters the factories by long
// name in factory name order. A filter's class is the factory name that
// makes it.

#include <gst/gst.h>

#include <cstdint>
#include <string>

#include "graph/GraphTypes.h"

// Searches the category named `categoryName` (every category when null) for
// the filter named `filterName`; case counts. The last match in the order
// above wins and its class goes to *out. 1 if found, else 0.
int32_t FindFilterClsid(std::string* out, const char* filterName, const char* categoryName);

// Makes the capture filter "Pinnacle WDM PCTV Video Capture" of the
// category "Video Capture Sources" (devices of class "Video/Source").
// S_OK with the element in *out, E_FAIL when its factory can't make one,
// or -1 when no such filter is found.
HRESULT CreateCaptureFilter(GstElement** out);
