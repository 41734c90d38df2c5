#pragma once
// Result codes, pin directions and major types of the media graph helpers.
// A graph is a GstBin, a filter a GstElement, a pin a GstPad; results keep
// the 32-bit codes that callers of these helpers test for.

#include <cstdint>

using HRESULT = int32_t;

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002u);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003u);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
// A pad without an agreed media type: not linked, or caps not negotiated yet.
constexpr HRESULT VFW_E_NOT_CONNECTED = static_cast<HRESULT>(0x80040209u);

constexpr bool SUCCEEDED(HRESULT hr) {
  return hr >= 0;
}
constexpr bool FAILED(HRESULT hr) {
  return hr < 0;
}

// Pin directions: a sink pad is an input, a source pad an output. A pad whose
// direction is unknown reads as kPinDirUnread, which counts as an output.
constexpr int32_t PINDIR_INPUT = 0;
constexpr int32_t PINDIR_OUTPUT = 1;
constexpr int32_t kPinDirUnread = 3;

// Major types: the caps structure name up to its "/".
constexpr const char* MEDIATYPE_Audio = "audio";
constexpr const char* MEDIATYPE_Video = "video";
