#include "graph/GraphWalk.h"

#include "graph/GraphTypes.h"

namespace {

// Gathers what an iterator yields; a resync means the list changed under
// the iterator, so the snapshot starts again.
template <typename T, typename Ref>
std::vector<Ref> Drain(GstIterator* it) {
  std::vector<Ref> items;
  if (!it) return items;
  GValue item = G_VALUE_INIT;
  bool done = false;
  while (!done) {
    switch (gst_iterator_next(it, &item)) {
      case GST_ITERATOR_OK:
        items.emplace_back(static_cast<T*>(g_value_dup_object(&item)));
        g_value_reset(&item);
        break;
      case GST_ITERATOR_RESYNC:
        items.clear();
        gst_iterator_resync(it);
        break;
      default:
        done = true;
        break;
    }
  }
  g_value_unset(&item);
  gst_iterator_free(it);
  return items;
}

}  // namespace

void EnsureGstInit() {
  if (!gst_is_initialized()) gst_init(nullptr, nullptr);
}

std::vector<ElementRef> CollectElements(GstBin* bin) {
  return Drain<GstElement, ElementRef>(gst_bin_iterate_elements(bin));
}

std::vector<PadRef> CollectPads(GstElement* element) {
  return Drain<GstPad, PadRef>(gst_element_iterate_pads(element));
}

ElementRef PadOwner(GstPad* pad) {
  return ElementRef(gst_pad_get_parent_element(pad));
}

int32_t PadDirection(GstPad* pad) {
  switch (GST_PAD_DIRECTION(pad)) {
    case GST_PAD_SINK:
      return PINDIR_INPUT;
    case GST_PAD_SRC:
      return PINDIR_OUTPUT;
    default:
      return kPinDirUnread;
  }
}
