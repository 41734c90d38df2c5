#include "video/DeviceMode.h"

bool CDeviceMode::IsSameMode(CDeviceMode* other) const {
  if (other == nullptr) return false;
  // The aspect ratio is not compared.
  return iWidth == other->iWidth && iHeight == other->iHeight && iFrameTime == other->iFrameTime &&
         iFieldCode == other->iFieldCode;
}
