#pragma once
// Property pages of a filter, shown as the modal "Property Page" dialog.

#include <gst/gst.h>

#include "graph/GraphTypes.h"

class QWidget;

// Shows the page of `filter` at (1, 1) of `parent` until it is closed.
// E_NOINTERFACE for a null filter or one without editable properties. The
// caller's reference to a non-null filter is used up in every case.
HRESULT ShowPropertyPages(GstElement* filter, QWidget* parent);
