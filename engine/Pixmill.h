// Public interface of the pixmill picture engine: the free functions, the
// records that cross the boundary and class CPixmill. The records are wire
// formats shared with the callers, so their layout is fixed and checked.
#pragma once

#include <cstddef>
#include <cstdint>

#define PIXMILL_API __attribute__((visibility("default")))

// Opaque module handle; the engine never dereferences it.
using HINSTANCE = struct HINSTANCE__*;

// First word of the media subtype: four bytes a pixel, B,G,R,A in memory.
constexpr uint32_t PIX_ARGB32 = 0x773C9AC0u;
// FOURCC "YUY2" in memory order: Y0 U Y1 V, two bytes a pixel.
constexpr uint32_t PIX_YUY2 = 0x32595559u;

#pragma pack(push, 1)

// One picture. Rows are packed: ARGB rows are iWidth * 4 bytes, YUY2 rows
// iWidth * 2 bytes, since no pitch travels with the picture.
struct tagPicProps {
  uint32_t dwFormat;
  int32_t iWidth;
  int32_t iHeight;
  int32_t iReserved0;
};
static_assert(sizeof(tagPicProps) == 16);
static_assert(offsetof(tagPicProps, dwFormat) == 0);
static_assert(offsetof(tagPicProps, iWidth) == 4);
static_assert(offsetof(tagPicProps, iHeight) == 8);
static_assert(offsetof(tagPicProps, iReserved0) == 12);

// Rectangle in pixels; right and bottom are exclusive.
struct tagRECT {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
};
static_assert(sizeof(tagRECT) == 16);
static_assert(offsetof(tagRECT, left) == 0);
static_assert(offsetof(tagRECT, top) == 4);
static_assert(offsetof(tagRECT, right) == 8);
static_assert(offsetof(tagRECT, bottom) == 12);

// Parameters of the four-corner perspective render. The destination
// rectangle's corners (top-left, top-right, bottom-right, bottom-left) are
// scaled about the rectangle's centre by dCornerScale, moved by
// dCornerOffset, rotated by fRotation degrees in a plane stretched to
// fAspect, and shifted by fShiftX/fShiftY; the source rectangle is then
// mapped onto that quadrilateral.
struct PerspectiveParams {
  uint32_t dwFlags;         // PERSPECTIVE_KEEP_OUTSIDE
  int32_t iReserved1;       // 0
  float fShiftX;            // destination pixels
  float fShiftY;            // destination pixels
  float fAspect;            // width / height of the plane that rotation works in
  float fRotation;          // degrees, clockwise on screen
  double dCornerOffset[8];  // x, y per corner, destination pixels
  uint8_t aReserved2[32];   // 0
  double dCornerScale[4];   // per corner, about the rectangle's centre
  uint8_t aReserved3[176];  // 0

  PerspectiveParams();
};
static_assert(sizeof(PerspectiveParams) == 328);
static_assert(offsetof(PerspectiveParams, dwFlags) == 0);
static_assert(offsetof(PerspectiveParams, iReserved1) == 4);
static_assert(offsetof(PerspectiveParams, fShiftX) == 8);
static_assert(offsetof(PerspectiveParams, fShiftY) == 12);
static_assert(offsetof(PerspectiveParams, fAspect) == 16);
static_assert(offsetof(PerspectiveParams, fRotation) == 20);
static_assert(offsetof(PerspectiveParams, dCornerOffset) == 24);
static_assert(offsetof(PerspectiveParams, aReserved2) == 88);
static_assert(offsetof(PerspectiveParams, dCornerScale) == 120);
static_assert(offsetof(PerspectiveParams, aReserved3) == 152);

#pragma pack(pop)

// dwFlags of PerspectiveParams: leave destination pixels outside the
// quadrilateral as they are instead of clearing them to transparent black.
constexpr uint32_t PERSPECTIVE_KEEP_OUTSIDE = 0x1u;

// Sampling of Img_Resize. 1 and 64 are what the benchmark uses.
enum eResizeQuality : int32_t {
  RESIZE_NEAREST = 0,      // nearest neighbour
  RESIZE_LINEAR = 1,       // linear interpolation in both directions
  RESIZE_FAST_LINEAR = 2,  // linear across, nearest down
  RESIZE_AREA = 64,        // average over the covered source area (box)
};

// Status values of the picture calls; 0 is success.
enum ePixmillStatus : int32_t {
  PIXMILL_OK = 0,
  PIXMILL_E_NOT_READY = 1,      // Img_InitConverter has not succeeded
  PIXMILL_E_NULL_BUFFER = 2,    // a buffer, props, rectangle or params pointer is null
  PIXMILL_E_FORMAT = 3,         // unknown or unsupported pixel format (pair)
  PIXMILL_E_SIZE = 4,           // width or height <= 0, too large, or odd YUY2 width
  PIXMILL_E_RECT = 5,           // rectangle empty, outside its picture, or mismatched
  PIXMILL_E_ARGUMENT = 6,       // unknown quality, filter or flag value
  PIXMILL_E_DEVICE = 7,         // the device failed to run the work
  PIXMILL_E_NO_DEVICE = 8,      // no OpenCL platform or device
  PIXMILL_E_NO_MEMORY = 9,      // an allocation failed
  PIXMILL_E_UNKNOWN_TEST = 10,  // MakeTest code not known
};

// Once per process, before any Img_InitConverter; 0 on success.
PIXMILL_API int InitConverterLib();
// Once, before the engines are destroyed; engines stay usable until then.
PIXMILL_API int ReleaseConverterLib();

struct PixmillState;

class PIXMILL_API CPixmill {
 public:
  CPixmill();
  ~CPixmill();
  CPixmill(const CPixmill&) = delete;
  CPixmill& operator=(const CPixmill&) = delete;

  // device -1: CPU, -2: OpenCL. cpus: threads to use on the CPU.
  int Img_InitConverter(int device, int cpus, HINSTANCE instance, int width, int height, int last);

  unsigned char* AllocBuffersRGBA(int width, int height, int pitch);
  void FreeBuffers(unsigned char** buffer);

  int32_t Img_Resize(const unsigned char* source, unsigned char* destination,
                     const tagPicProps* sourceProps, const tagPicProps* destinationProps,
                     const tagRECT* sourceRect, const tagRECT* destinationRect,
                     eResizeQuality quality, unsigned char* work, int last);
  int32_t Img_ResizeARGB(unsigned char* source, unsigned char* destination,
                         tagPicProps* sourceProps, tagPicProps* destinationProps,
                         tagRECT* sourceRect, tagRECT* destinationRect, int first, int second);
  int32_t Img_Convert2(const unsigned char* source, unsigned char* destination,
                       const tagPicProps* sourceProps, const tagPicProps* destinationProps,
                       const tagRECT* sourceRect, const tagRECT* destinationRect, bool flag,
                       unsigned char* work);
  int32_t Img_PerspectiveCoeffARGB(unsigned char* source, const tagPicProps* sourceProps,
                                   const tagRECT* sourceRect, int first, int second, int third,
                                   unsigned char* destination, const tagPicProps* destinationProps,
                                   const tagRECT* destinationRect, PerspectiveParams* params);

  int MakeTest(int code);
  int GetTestMsg(char* buffer, int size);

 private:
  // Everything else lives behind this pointer, so that the class keeps its
  // size whatever the backends hold. Made by the constructor without any
  // library call.
  PixmillState* m_pState;
};
