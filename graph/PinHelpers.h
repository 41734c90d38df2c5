#pragma once
// Pin counting and lookup, audio and video pins, and the climb against the
// flow of data to the output pin that carries a given major type.
// Pads are walked in the order their element added them.

#include <gst/gst.h>

#include <cstdint>

#include "graph/GraphTypes.h"

// Counts input (sink) and output pads; a pad whose direction can't be read
// counts as an output. E_POINTER for any null argument.
HRESULT CountPinsByDirection(GstElement* filter, uint32_t* inputs, uint32_t* outputs);

// Counts all pads. E_POINTER for a null argument.
HRESULT CountPins(GstElement* filter, uint32_t* count);

// The index-th pad of `direction` (PINDIR_INPUT/PINDIR_OUTPUT) into *out,
// with a reference for the caller. *out is null first; E_POINTER for a null
// filter, E_FAIL when there are not that many pads of the direction.
HRESULT GetPin(GstElement* filter, int32_t direction, int32_t index, GstPad** out);

// The index-th input or output pad, or null. No reference for the caller:
// the pad lives by its element's own.
GstPad* GetInputPin(GstElement* filter, int32_t index);
GstPad* GetOutputPin(GstElement* filter, int32_t index);

// Whether the pad's first media type is audio or video; null gives false.
bool IsAudioPin(GstPad* pin);
bool IsVideoPin(GstPad* pin);

// From the filter of `start` upwards through the last linked input pad of
// each filter, the index-th output pad (counting over the whole climb) whose
// first media type has `majorType`, into *out with a reference. E_POINTER
// for a null out; S_OK with *out untouched when a pad has no filter to walk;
// E_FAIL when the chain ends, or comes back to a filter it has climbed.
HRESULT FindUpstreamOutputPin(GstPad* start, const char* majorType, int32_t index, GstPad** out);
