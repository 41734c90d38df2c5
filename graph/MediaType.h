#pragma once
// A media type of a pad: its major type and the caps it stands for. The
// type owns one reference to its caps (pbFormat, counted by cbFormat) and
// may hold one to an object (pUnk); FreeMediaType gives both back.

#include <gst/gst.h>

#include <cstdint>

#include "graph/GraphTypes.h"

struct AM_MEDIA_TYPE {
  char majortype[32] = {};      // the caps structure name up to "/", cut to fit
  GstObject* pUnk = nullptr;    // an object the type keeps alive, or null
  uint32_t cbFormat = 0;        // structures in pbFormat; 0 when it holds none
  GstCaps* pbFormat = nullptr;  // one caps reference while cbFormat isn't 0
};

// Releases what the type holds and clears those fields.
void FreeMediaType(AM_MEDIA_TYPE* type);

// FreeMediaType, then deletes a type made by NewMediaType; null is accepted.
void DeleteMediaType(AM_MEDIA_TYPE* type);

// A type on the heap, for DeleteMediaType.
AM_MEDIA_TYPE* NewMediaType();

// The first media type the pad offers (the first structure of its caps
// query). False, with `type` untouched, when it offers none.
bool FirstMediaType(GstPad* pad, AM_MEDIA_TYPE* type);

// The type of the pad's link: its current caps. VFW_E_NOT_CONNECTED when
// the pad has none (unlinked, or nothing negotiated yet).
HRESULT ConnectionMediaType(GstPad* pad, AM_MEDIA_TYPE* type);

// Whether the type's major type is `majorType` ("audio", "video"); a null
// major type matches nothing.
bool IsMajorType(const AM_MEDIA_TYPE& type, const char* majorType);
