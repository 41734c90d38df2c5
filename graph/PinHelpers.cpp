#include "graph/PinHelpers.h"

#include <set>

#include "graph/GraphWalk.h"
#include "graph/MediaType.h"

namespace {

bool FirstTypeIs(GstPad* pad, const char* majorType) {
  AM_MEDIA_TYPE type;
  if (!FirstMediaType(pad, &type)) return false;
  const bool match = IsMajorType(type, majorType);
  FreeMediaType(&type);
  return match;
}

bool PinOfType(GstPad* pin, const char* majorType) {
  return pin && FirstTypeIs(pin, majorType);
}

// GetPin through a reference that is dropped at once.
GstPad* BorrowPin(GstElement* filter, int32_t direction, int32_t index) {
  GstPad* pin = nullptr;
  GetPin(filter, direction, index, &pin);
  PadRef release(pin);
  return pin;
}

}  // namespace

HRESULT CountPinsByDirection(GstElement* filter, uint32_t* inputs, uint32_t* outputs) {
  if (!filter || !inputs || !outputs) return E_POINTER;
  *inputs = 0;
  *outputs = 0;
  for (const PadRef& pad : CollectPads(filter)) {
    if (PadDirection(pad.get()) == PINDIR_INPUT) {
      ++*inputs;
    } else {
      ++*outputs;
    }
  }
  return S_OK;
}

HRESULT CountPins(GstElement* filter, uint32_t* count) {
  if (!filter || !count) return E_POINTER;
  *count = static_cast<uint32_t>(CollectPads(filter).size());
  return S_OK;
}

HRESULT GetPin(GstElement* filter, int32_t direction, int32_t index, GstPad** out) {
  if (out) *out = nullptr;
  if (!filter || !out) return E_POINTER;
  for (PadRef& pad : CollectPads(filter)) {
    if (PadDirection(pad.get()) != direction) continue;
    if (index == 0) {
      *out = pad.release();
      return S_OK;
    }
    --index;
  }
  return E_FAIL;
}

GstPad* GetInputPin(GstElement* filter, int32_t index) {
  return BorrowPin(filter, PINDIR_INPUT, index);
}

GstPad* GetOutputPin(GstElement* filter, int32_t index) {
  return BorrowPin(filter, PINDIR_OUTPUT, index);
}

bool IsAudioPin(GstPad* pin) {
  return PinOfType(pin, MEDIATYPE_Audio);
}

bool IsVideoPin(GstPad* pin) {
  return PinOfType(pin, MEDIATYPE_Video);
}

HRESULT FindUpstreamOutputPin(GstPad* start, const char* majorType, int32_t index, GstPad** out) {
  if (!out) return E_POINTER;
  PadRef current(start ? GST_PAD(gst_object_ref(start)) : nullptr);
  // A graph linked in a circle would climb for ever: each filter is walked once.
  std::set<GstElement*> climbed;
  while (current) {
    ElementRef filter = PadOwner(current.get());
    current.reset();
    if (!filter) return S_OK;
    if (!climbed.insert(filter.get()).second) break;
    for (PadRef& pad : CollectPads(filter.get())) {
      if (PadDirection(pad.get()) == PINDIR_INPUT) {
        if (GstPad* peer = gst_pad_get_peer(pad.get())) current.reset(peer);
        continue;
      }
      if (!FirstTypeIs(pad.get(), majorType)) continue;
      if (index == 0) {
        *out = pad.release();
        return S_OK;
      }
      --index;
    }
  }
  return E_FAIL;
}
