#pragma once
// Owned references and snapshots of a bin's elements and an element's pads,
// shared by the helpers that walk a graph. A snapshot holds one reference per
// entry, so a walk may change the graph (remove, unlink) as it goes.

#include <gst/gst.h>

#include <memory>
#include <vector>

struct GstObjectUnref {
  void operator()(gpointer object) const {
    if (object) gst_object_unref(object);
  }
};

using ElementRef = std::unique_ptr<GstElement, GstObjectUnref>;
using PadRef = std::unique_ptr<GstPad, GstObjectUnref>;

// Starts GStreamer once for helpers that need its registry.
void EnsureGstInit();

// The bin's elements in the bin's own order (the most recently added first).
std::vector<ElementRef> CollectElements(GstBin* bin);

// The element's pads in the order they were added.
std::vector<PadRef> CollectPads(GstElement* element);

// The element that owns `pad`, with a reference; null for a loose pad.
ElementRef PadOwner(GstPad* pad);

// PINDIR_INPUT for a sink pad, PINDIR_OUTPUT for a source pad, else kPinDirUnread.
int32_t PadDirection(GstPad* pad);
