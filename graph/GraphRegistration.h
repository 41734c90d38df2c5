#pragma once
// Graphs shown to outside viewers: a registered graph has a file named
// "FilterGraph %08x pid %08x" (the low 32 bits of its address, the process
// id) holding its text in the registration folder, and keeps a reference to
// the graph until it is revoked. The tachyrun-graphs tool lists and prints these files.

#include <gst/gst.h>

#include <cstdint>
#include <string>

#include "graph/GraphTypes.h"

// The name of a registered graph, e.g. "FilterGraph c8a3b2c0 pid 00003039".
std::string GraphRegistrationName(const void* graph, uint32_t processId);

// $XDG_RUNTIME_DIR/tachyrun/graphs, else /tmp/tachyrun-<uid>/graphs.
std::string GraphRegistrationFolder();

// Registers `graph` and gives the cookie that revokes it. E_POINTER for null
// arguments; E_FAIL when the folder or the file can't be written.
HRESULT AddGraphToRot(GstBin* graph, uint32_t* cookie);

// Removes the registration of `cookie`; an unknown cookie is passed over.
void RemoveGraphFromRot(uint32_t cookie);
