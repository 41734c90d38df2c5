#pragma once
// Renderers of a graph: filters with exactly one input pad and no output
// pad, told apart by the major type of their input's link. An unlinked (or
// not yet negotiated) renderer stops a search with its failure.

#include <gst/gst.h>

#include <cstdint>

#include "graph/GraphTypes.h"

// The first renderer of `majorType` into *out (if out is given) with a
// reference. E_NOINTERFACE for a null graph, E_POINTER for a null type.
// S_OK with *out null when there is none.
HRESULT FindRendererOfType(GstBin* graph, const char* majorType, GstElement** out);
HRESULT FindAudioRenderer(GstBin* graph, GstElement** out);
HRESULT FindVideoRenderer(GstBin* graph, GstElement** out);

// The renderers of `majorType` met before the walk ends; 0 for null arguments.
int32_t CountRenderersOfType(GstBin* graph, const char* majorType);

// The index-th renderer of `majorType`. Every match on the way is written to
// *out; past the last match *out keeps the last one. Each match replaced in
// *out gives its reference back, so the caller owns exactly what *out holds.
HRESULT GetRendererOfType(int32_t index, GstBin* graph, const char* majorType, GstElement** out);
