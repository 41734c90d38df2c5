// Checked views of the pictures handed to the engine. Every picture call
// turns its raw arguments into PicRegion values first, so that the backends
// only ever see buffers, sizes and rectangles that fit together.
#pragma once

#include <cstddef>
#include <cstdint>

#include "engine/Pixmill.h"

// Largest width or height the engine accepts; keeps every byte count of a
// picture far inside size_t and int arithmetic.
constexpr int kMaxPicSide = 16384;

struct PicRegion {
  uint8_t* base = nullptr;  // first byte of the picture (not of the rectangle)
  uint32_t format = 0;
  int width = 0;
  int height = 0;
  int stride = 0;                  // bytes a row: width * 4 (ARGB) or width * 2 (YUY2)
  int x = 0, y = 0, w = 0, h = 0;  // the rectangle, inside the picture

  int BytesPerPixel() const { return format == PIX_YUY2 ? 2 : 4; }
  uint8_t* RectOrigin() const {
    return base + static_cast<size_t>(y) * stride + static_cast<size_t>(x) * BytesPerPixel();
  }
  size_t PictureBytes() const { return static_cast<size_t>(stride) * height; }
};

// Fills out from a buffer, its props and its rectangle (null: whole picture).
// Returns PIXMILL_OK or the status that describes the first fault.
int32_t MakePicRegion(const unsigned char* buffer, const tagPicProps* props, const tagRECT* rect,
                      PicRegion* out);

// Source and destination must not share bytes: the work runs in bands on
// several threads and reads rows that others would already have written.
bool PicturesOverlap(const PicRegion& a, const PicRegion& b);
