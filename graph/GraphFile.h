#pragma once
// Graph files: an OLE2 compound file whose root holds the one stream
// "ActiveMovieGraph" with the graph's text (graph/GraphText.h). A program
// may carry such a file as a GResource.

#include <gst/gst.h>

#include "graph/GraphTypes.h"

// The stream name; stream names of a compound file compare without case.
constexpr const char* kGraphStreamName = "ActiveMovieGraph";

// Writes `graph` to `path` (UTF-8), replacing what was there. E_POINTER for
// null arguments; E_FAIL, with an existing file left alone, when the graph
// can't be written as text or the file can't be written.
HRESULT SaveGraphToFile(GstBin* graph, const char* path);

// Adds the graph saved in `path` to `graph`. E_FAIL, with `graph` as it was,
// for a file that isn't a compound file (read no further than its
// signature) or no file at all, lacks the stream, or describes what can't be
// built; E_POINTER for a null graph.
HRESULT LoadGraphFromFile(GstBin* graph, const char* path);

// As LoadGraphFromFile, from the bytes of the GResource at `resourcePath`.
// E_FAIL for a null argument or a resource that isn't there.
HRESULT LoadGraphFromResource(GstBin* graph, const char* resourcePath);
