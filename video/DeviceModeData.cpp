#include "video/DeviceModeData.h"

#include <cstring>

CDeviceModeData::CDeviceModeData() {
  std::memset(static_cast<void*>(this), 0, sizeof(*this));
  iWidth = 720;
  iHeight = 576;
  iFrameTime = 400000;
  iFrameTime2 = 400000;
  iFieldCode = kFieldProgressive;
  cEnabled = 1;
  iAspectX = 16;
  iAspectY = 9;
  iFrameTime3 = 400000;
}
