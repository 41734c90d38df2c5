#include "graph/MediaType.h"

#include <cstring>

namespace {

// Takes over one reference to `caps`, whose first structure names the type.
void FillFromCaps(GstCaps* caps, AM_MEDIA_TYPE* type) {
  const char* name = gst_structure_get_name(gst_caps_get_structure(caps, 0));
  const char* slash = std::strchr(name, '/');
  size_t length = slash ? static_cast<size_t>(slash - name) : std::strlen(name);
  if (length >= sizeof(type->majortype)) length = sizeof(type->majortype) - 1;
  std::memset(type->majortype, 0, sizeof(type->majortype));
  std::memcpy(type->majortype, name, length);
  type->pUnk = nullptr;
  type->cbFormat = gst_caps_get_size(caps);
  type->pbFormat = caps;
}

}  // namespace

void FreeMediaType(AM_MEDIA_TYPE* type) {
  if (type->cbFormat != 0) {
    gst_caps_unref(type->pbFormat);
    type->cbFormat = 0;
    type->pbFormat = nullptr;
  }
  if (type->pUnk) {
    gst_object_unref(type->pUnk);
    type->pUnk = nullptr;
  }
}

void DeleteMediaType(AM_MEDIA_TYPE* type) {
  if (!type) return;
  FreeMediaType(type);
  delete type;
}

AM_MEDIA_TYPE* NewMediaType() {
  return new AM_MEDIA_TYPE();
}

bool FirstMediaType(GstPad* pad, AM_MEDIA_TYPE* type) {
  GstCaps* caps = pad ? gst_pad_query_caps(pad, nullptr) : nullptr;
  if (!caps) return false;
  // ANY and EMPTY caps name no type at all.
  if (gst_caps_is_any(caps) || gst_caps_is_empty(caps)) {
    gst_caps_unref(caps);
    return false;
  }
  GstCaps* first = gst_caps_copy_nth(caps, 0);
  gst_caps_unref(caps);
  FillFromCaps(first, type);
  return true;
}

HRESULT ConnectionMediaType(GstPad* pad, AM_MEDIA_TYPE* type) {
  GstCaps* caps = pad ? gst_pad_get_current_caps(pad) : nullptr;
  if (!caps) return VFW_E_NOT_CONNECTED;
  if (gst_caps_is_any(caps) || gst_caps_is_empty(caps)) {
    gst_caps_unref(caps);
    return VFW_E_NOT_CONNECTED;
  }
  FillFromCaps(caps, type);
  return S_OK;
}

bool IsMajorType(const AM_MEDIA_TYPE& type, const char* majorType) {
  return majorType && std::strcmp(type.majortype, majorType) == 0;
}
