#include "engine/Pixmill.h"

#include <cstring>

PerspectiveParams::PerspectiveParams() {
  std::memset(static_cast<void*>(this), 0, sizeof(*this));
  fAspect = 1.7777778f;
  for (double& scale : dCornerScale) scale = 1.0;
}

int InitConverterLib() {
  return 0;
}
int ReleaseConverterLib() {
  return 0;
}

CPixmill::CPixmill() : m_pEngine(nullptr), m_szMsg{} {}
CPixmill::~CPixmill() = default;

int CPixmill::Img_InitConverter(int, int, HINSTANCE, int, int, int) {
  return PIXMILL_E_NO_DEVICE;
}
unsigned char* CPixmill::AllocBuffersRGBA(int, int, int) {
  return nullptr;
}
void CPixmill::FreeBuffers(unsigned char**) {}
int32_t CPixmill::Img_Resize(const unsigned char*, unsigned char*, const tagPicProps*,
                             const tagPicProps*, const tagRECT*, const tagRECT*, eResizeQuality,
                             unsigned char*, int) {
  return PIXMILL_E_NOT_READY;
}
int32_t CPixmill::Img_ResizeARGB(unsigned char*, unsigned char*, tagPicProps*, tagPicProps*,
                                 tagRECT*, tagRECT*, int, int) {
  return PIXMILL_E_NOT_READY;
}
int32_t CPixmill::Img_Convert2(const unsigned char*, unsigned char*, const tagPicProps*,
                               const tagPicProps*, const tagRECT*, const tagRECT*, bool,
                               unsigned char*) {
  return PIXMILL_E_NOT_READY;
}
int32_t CPixmill::Img_PerspectiveCoeffARGB(unsigned char*, const tagPicProps*, const tagRECT*, int,
                                           int, int, unsigned char*, const tagPicProps*,
                                           const tagRECT*, PerspectiveParams*) {
  return PIXMILL_E_NOT_READY;
}
int CPixmill::MakeTest(int) {
  return PIXMILL_E_NOT_READY;
}
int CPixmill::GetTestMsg(char* buffer, int size) {
  if (buffer == nullptr || size <= 0) return -1;
  buffer[0] = '\0';
  return 0;
}
