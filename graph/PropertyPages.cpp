#include "graph/PropertyPages.h"

#include "graph/GraphInfo.h"
#include "graph/GraphWalk.h"
#include "graph/PropertyPage.h"

HRESULT ShowPropertyPages(GstElement* filter, QWidget* parent) {
  if (!filter) return E_NOINTERFACE;
  ElementRef used(filter);
  if (!SupportsPropertyPages(GST_OBJECT(filter))) return E_NOINTERFACE;
  try {
    CPropertyPage page(filter, parent);
    page.exec();
  } catch (...) {
    // A fault inside the page must not take the caller down with it.
  }
  return S_OK;
}
