// Feeds arbitrary pictures, rectangles, modes and perspective parameters to
// the picture calls. Buffers are exactly as large as their props say, so
// ASan catches any byte the engine touches outside them; props too large to
// back with memory here are left out, props that are invalid get a tiny
// buffer and must be refused.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "engine/Pixmill.h"

namespace {

constexpr int kMaxSide = 48;

struct Reader {
  const uint8_t* data;
  size_t size;
  template <typename T>
  T Take() {
    T value{};
    const size_t n = size < sizeof(T) ? size : sizeof(T);
    std::memcpy(&value, data, n);
    data += n;
    size -= n;
    return value;
  }
};

uint32_t PickFormat(uint8_t b) {
  const uint32_t formats[] = {PIX_ARGB32, PIX_YUY2, 0u, 0x30323449u};
  return formats[b % 4];
}

// Props from the input; small sizes are likely so that calls do real work.
tagPicProps TakeProps(Reader& in) {
  tagPicProps p{};
  p.dwFormat = PickFormat(in.Take<uint8_t>());
  const uint8_t mode = in.Take<uint8_t>();
  if (mode & 1) {
    p.iWidth = in.Take<int32_t>();
    p.iHeight = in.Take<int32_t>();
  } else {
    p.iWidth = in.Take<uint8_t>() % (kMaxSide + 2) - 1;
    p.iHeight = in.Take<uint8_t>() % (kMaxSide + 2) - 1;
  }
  return p;
}

bool Valid(const tagPicProps& p) {
  return (p.dwFormat == PIX_ARGB32 || p.dwFormat == PIX_YUY2) && p.iWidth > 0 && p.iHeight > 0 &&
         p.iWidth <= 16384 && p.iHeight <= 16384 && !(p.dwFormat == PIX_YUY2 && (p.iWidth & 1));
}

// A buffer of exactly the picture's bytes, or a small one for invalid props;
// false when the props are valid but too large to back here.
bool Backing(const tagPicProps& p, std::vector<uint8_t>* buffer) {
  if (!Valid(p)) {
    buffer->assign(16, 0);
    return true;
  }
  if (p.iWidth > kMaxSide || p.iHeight > kMaxSide) return false;
  buffer->assign(static_cast<size_t>(p.iWidth) * p.iHeight * (p.dwFormat == PIX_YUY2 ? 2 : 4),
                 0x5A);
  return true;
}

tagRECT TakeRect(Reader& in, const tagPicProps& p) {
  const uint8_t mode = in.Take<uint8_t>();
  if (mode & 1) return in.Take<tagRECT>();
  tagRECT r{0, 0, p.iWidth, p.iHeight};
  if (mode & 2) {
    r.left = in.Take<uint8_t>() % kMaxSide;
    r.top = in.Take<uint8_t>() % kMaxSide;
    r.right = in.Take<uint8_t>() % (kMaxSide + 1);
    r.bottom = in.Take<uint8_t>() % (kMaxSide + 1);
  }
  return r;
}

CPixmill& Engine(bool many) {
  static CPixmill* engines = [] {
    auto* e = new CPixmill[2];
    e[0].Img_InitConverter(-1, 1, nullptr, 32, 32, 0);
    e[1].Img_InitConverter(-1, 3, nullptr, 32, 32, 0);
    return e;
  }();
  return engines[many ? 1 : 0];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Reader in{data, size};
  const uint8_t call = in.Take<uint8_t>();
  CPixmill& engine = Engine(call & 0x80);
  tagPicProps sp = TakeProps(in), dp = TakeProps(in);
  std::vector<uint8_t> src, dst;
  if (!Backing(sp, &src) || !Backing(dp, &dst)) return 0;
  tagRECT sr = TakeRect(in, sp), dr = TakeRect(in, dp);
  const int32_t a = in.Take<int32_t>(), b = in.Take<int32_t>();
  const bool nullRects = in.Take<uint8_t>() & 1;
  tagRECT* srp = nullRects ? nullptr : &sr;
  tagRECT* drp = nullRects ? nullptr : &dr;
  int32_t status = 0;
  switch (call & 3) {
    case 0:
      status = engine.Img_Resize(src.data(), dst.data(), &sp, &dp, srp, drp,
                                 static_cast<eResizeQuality>(a), nullptr, b);
      break;
    case 1:
      status = engine.Img_ResizeARGB(src.data(), dst.data(), &sp, &dp, srp, drp, a, b);
      break;
    case 2:
      status = engine.Img_Convert2(src.data(), dst.data(), &sp, &dp, srp, drp, a & 1, nullptr);
      break;
    default: {
      PerspectiveParams params;
      if (in.size > 0) {
        const size_t n = in.size < sizeof(params) ? in.size : sizeof(params);
        std::memcpy(&params, in.data, n);
      }
      status = engine.Img_PerspectiveCoeffARGB(src.data(), &sp, srp, a & 1, b & 1, (a >> 1) & 7,
                                               dst.data(), &dp, drp, &params);
    }
  }
  if ((!Valid(sp) || !Valid(dp)) && status == 0) std::abort();  // invalid props must be refused
  return 0;
}
