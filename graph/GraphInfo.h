#pragma once
// What a graph and its filters tell about themselves: a filter's plugin
// file, a graph's duration as text, whether a filter has a property page,
// whether a graph can step frames.

#include <gst/gst.h>

#include <cstdint>
#include <vector>

#include "graph/GraphTypes.h"

// Bytes of the path buffer GetFilterServerPath writes, its end included.
constexpr size_t kServerPathSize = 260;

// The file of the plugin that provides `factoryName`, cut to fit 260 bytes.
// An unknown factory (or null arguments) leaves `out` as it was; a factory
// that no plugin file provides gives "<Unknown>".
void GetFilterServerPath(const char* factoryName, char* out);

// The duration of `seeking` (an element or graph, asked in PAUSED) as
// "%02dm:%02d.%03ds". Only the low 32 bits of the duration in 100 ns units
// count, so durations past 429.4967296 s wrap round. `out` (16 bytes are
// enough) is "<00:00.000>" first. E_NOINTERFACE for a null element or one
// that can't tell a duration in time, E_POINTER for a null out, E_FAIL for
// an unknown duration.
HRESULT FormatDuration(GstElement* seeking, char* out);

// The properties a property page edits: readable, writable after
// construction, and neither the name nor the parent.
std::vector<GParamSpec*> EditableProperties(GstObject* object);

// 1 for an element with at least one editable property, else 0.
int32_t SupportsPropertyPages(GstObject* object);

// 1 when the graph is a pipeline with a video renderer, so a step event
// would be answered by a STEP_DONE message; else 0.
int32_t CanFrameStep(GstBin* graph);
