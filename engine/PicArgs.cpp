#include "engine/PicArgs.h"

namespace {

bool KnownFormat(uint32_t format) {
  return format == PIX_ARGB32 || format == PIX_YUY2;
}

int32_t CheckRect(const tagRECT& r, const PicRegion& pic) {
  if (r.left < 0 || r.top < 0 || r.right > pic.width || r.bottom > pic.height) {
    return PIXMILL_E_RECT;
  }
  if (r.left >= r.right || r.top >= r.bottom) return PIXMILL_E_RECT;
  // A YUY2 macro-pixel holds two pixels that share U and V.
  if (pic.format == PIX_YUY2 && ((r.left | r.right) & 1) != 0) return PIXMILL_E_RECT;
  return PIXMILL_OK;
}

}  // namespace

int32_t MakePicRegion(const unsigned char* buffer, const tagPicProps* props, const tagRECT* rect,
                      PicRegion* out) {
  if (buffer == nullptr || props == nullptr) return PIXMILL_E_NULL_BUFFER;
  if (!KnownFormat(props->dwFormat)) return PIXMILL_E_FORMAT;
  if (props->iWidth <= 0 || props->iHeight <= 0 || props->iWidth > kMaxPicSide ||
      props->iHeight > kMaxPicSide) {
    return PIXMILL_E_SIZE;
  }
  if (props->dwFormat == PIX_YUY2 && (props->iWidth & 1) != 0) return PIXMILL_E_SIZE;
  PicRegion pic;
  pic.base = const_cast<uint8_t*>(buffer);
  pic.format = props->dwFormat;
  pic.width = props->iWidth;
  pic.height = props->iHeight;
  pic.stride = pic.width * pic.BytesPerPixel();
  const tagRECT whole{0, 0, pic.width, pic.height};
  const tagRECT& r = rect != nullptr ? *rect : whole;
  if (int32_t status = CheckRect(r, pic); status != PIXMILL_OK) return status;
  pic.x = r.left;
  pic.y = r.top;
  pic.w = r.right - r.left;
  pic.h = r.bottom - r.top;
  *out = pic;
  return PIXMILL_OK;
}

bool PicturesOverlap(const PicRegion& a, const PicRegion& b) {
  const auto a0 = reinterpret_cast<uintptr_t>(a.base);
  const auto b0 = reinterpret_cast<uintptr_t>(b.base);
  return a0 < b0 + b.PictureBytes() && b0 < a0 + a.PictureBytes();
}
