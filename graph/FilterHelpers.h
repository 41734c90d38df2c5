#pragma once
// Filters of a graph: find one by name, take them all out, cut a filter's
// outgoing links, and link two filters by pad index.

#include <gst/gst.h>

#include <cstdint>

#include "graph/GraphTypes.h"

// Takes the graph's filters out one at a time, most recently added first,
// each unlinked and stopped first. 0, or -1 for a null graph.
int32_t RemoveAllFilters(GstBin* graph);

// The first filter whose name (cut to 254 bytes) equals `name`, case
// counting, with a reference for the caller; null when there is none.
GstElement* FindFilterByName(GstBin* graph, const char* name);

// Whether the graph holds a filter named "DV Splitter".
bool HasDvSplitter(GstBin* graph);

// Unlinks each output pad of `filter` from the input it feeds. Links into
// the filter's inputs stay: they belong to the filter upstream.
void DisconnectFilter(GstBin* graph, GstElement* filter);

// Links output pad `outputIndex` of `from` to input pad `inputIndex` of
// `to`. 1 when linked, 0 when a pad is missing or the link is refused.
int32_t ConnectFilters(GstBin* graph, GstElement* from, int32_t outputIndex, GstElement* to,
                       int32_t inputIndex);
