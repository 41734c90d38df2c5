// The fixed table of video modes and BuildModeTable. The rows are the
// product's vocabulary of formats and are data: every oddity in them (row 17
// with the code of row 15, the blank in the code of row 21, field code 1 in
// the 59.94i and the 2K rows, the 16:9 default of the PC and progressive SD
// rows) is kept as it stands.

#include <cstdio>

#include "core/DataLockGuard.h"
#include "video/DeviceModeList.h"

namespace {

struct ModeRow {
  const char* code;
  const char* display;
  int32_t width;
  int32_t height;
  int32_t frameTime;  // 100-nanosecond units
  int32_t fieldCode;
  bool isFourByThree;  // 4:3; all other rows keep the default 16:9
};

constexpr ModeRow kModeRows[kDeviceModeTableRows] = {
    {"PAL720x576f25i43", "PAL  720x576 50.00i Interlaced 4:3", 720, 576, 400000, 1, true},      // 1
    {"PAL720x576f25i169", "PAL  720x576 50.00i Interlaced 16:9", 720, 576, 400000, 1, false},   // 2
    {"NTSC720x486f29.97i43", "NTSC 720x486 59.94i Interlaced 4:3", 720, 486, 333666, 2, true},  // 3
    {"NTSC720x486f29.97i169", "NTSC 720x486 59.94i Interlaced 16:9", 720, 486, 333666, 2,
     false},                                                                                    // 4
    {"NTSC720x486f30i43", "NTSC 720x486 60.00i Interlaced 4:3", 720, 486, 333333, 2, true},     // 5
    {"NTSC720x486f30i169", "NTSC 720x486 60.00i Interlaced 16:9", 720, 486, 333333, 2, false},  // 6
    {"NTSC720x480f29.97i43", "NTSC 720x480 59.94i Interlaced 4:3", 720, 480, 333666, 2, true},  // 7
    {"NTSC720x480f29.97i169", "NTSC 720x480 59.94i Interlaced 16:9", 720, 480, 333666, 2,
     false},                                                                                 // 8
    {"NTSC720x480f30i43", "NTSC 720x480 60.00i Interlaced 4:3", 720, 480, 333333, 2, true},  // 9
    {"NTSC720x480f30i169", "NTSC 720x480 60.00i Interlaced 16:9", 720, 480, 333333, 2,
     false},                                                                                  // 10
    {"PAL720x576f24p", "PAL  720x576 24.00Fps Progressive", 720, 576, 416666, 0, false},      // 11
    {"PAL720x576f25p", "PAL  720x576 25.00Fps Progressive", 720, 576, 400000, 0, false},      // 12
    {"PAL720x576f50p", "PAL  720x576 50.00Fps Progressive", 720, 576, 200000, 0, false},      // 13
    {"NTSC720x486f23.98p", "NTSC 720x486 23.98Fps Progressive", 720, 486, 417083, 0, false},  // 14
    {"NTSC720x486f30p", "NTSC 720x486 30.00Fps Progressive", 720, 486, 333333, 0, false},     // 15
    {"NTSC720x486f60p", "NTSC 720x486 60.00Fps Progressive", 720, 486, 166666, 0, false},     // 16
    {"NTSC720x486f30p", "NTSC 720x480 30.00Fps Progressive", 720, 480, 333333, 0, false},     // 17
    {"PC640x480f25p", "PC 640x480 25.00Fps Progressive", 640, 480, 400000, 0, false},         // 18
    {"PC640x480f30p", "PC 640x480 30.00Fps Progressive", 640, 480, 333333, 0, false},         // 19
    {"PC1024x768f25p", "PC 1024x768 25.00Fps Progressive", 1024, 768, 400000, 0, false},      // 20
    {"PC 1024x768f30p", "PC 1024x768 30.00Fps Progressive", 1024, 768, 333333, 0, false},     // 21
    {"MODE1280x720f23.98p", "HDMode 1280x720 23.98Fps Progressive", 1280, 720, 417083, 0,
     false},  // 22
    {"MODE1280x720f24.00p", "HDMode 1280x720 24.00Fps Progressive", 1280, 720, 416666, 0,
     false},  // 23
    {"MODE1280x720f25.00p", "HDMode 1280x720 25.00Fps Progressive", 1280, 720, 400000, 0,
     false},  // 24
    {"MODE1280x720f29.97p", "HDMode 1280x720 29.97Fps Progressive", 1280, 720, 333666, 0,
     false},  // 25
    {"MODE1280x720f30.00p", "HDMode 1280x720 30.00Fps Progressive", 1280, 720, 333333, 0,
     false},  // 26
    {"MODE1280x720f50.00p", "HDMode 1280x720 50.00Fps Progressive", 1280, 720, 200000, 0,
     false},  // 27
    {"MODE1280x720f59.94p", "HDMode 1280x720 59.94Fps Progressive", 1280, 720, 166833, 0,
     false},  // 28
    {"MODE1280x720f60.00p", "HDMode 1280x720 60.00Fps Progressive", 1280, 720, 166666, 0,
     false},  // 29
    {"MODE1440x1080f23.98p", "HDMode 1440x1080 23.98Fps Progressive", 1440, 1080, 417083, 0,
     false},  // 30
    {"MODE1440x1080f24.00p", "HDMode 1440x1080 24.00Fps Progressive", 1440, 1080, 416666, 0,
     false},  // 31
    {"MODE1440x1080f25.00p", "HDMode 1440x1080 25.00Fps Progressive", 1440, 1080, 400000, 0,
     false},  // 32
    {"MODE1440x1080f30.00p", "HDMode 1440x1080 30.00Fps Progressive", 1440, 1080, 333333, 0,
     false},  // 33
    {"MODE1440x1080f25.00i", "HDMode 1440x1080 50.00i Interlaced", 1440, 1080, 400000, 1,
     false},  // 34
    {"MODE1440x1080f59.94i", "HDMode 1440x1080 59.94i Interlaced", 1440, 1080, 333666, 1,
     false},  // 35
    {"MODE1920x1080f23.98p", "HDMode 1920x1080 23.98Fps Progressive", 1920, 1080, 417083, 0,
     false},  // 36
    {"MODE1920x1080f24.00p", "HDMode 1920x1080 24.00Fps Progressive", 1920, 1080, 416666, 0,
     false},  // 37
    {"MODE1920x1080f25.00p", "HDMode 1920x1080 25.00Fps Progressive", 1920, 1080, 400000, 0,
     false},  // 38
    {"MODE1920x1080f29.97p", "HDMode 1920x1080 29.97Fps Progressive", 1920, 1080, 333666, 0,
     false},  // 39
    {"MODE1920x1080f30.00p", "HDMode 1920x1080 30.00Fps Progressive", 1920, 1080, 333333, 0,
     false},  // 40
    {"MODE1920x1080f25.00i", "HDMode 1920x1080 50.00i Interlaced", 1920, 1080, 400000, 1,
     false},  // 41
    {"MODE1920x1080f59.94i", "HDMode 1920x1080 59.94i Interlaced", 1920, 1080, 333666, 1,
     false},  // 42
    {"MODE2048x1556f23.98psf", "HDMode 2048x1556 23.98Fps Progressive S.Frame", 2048, 1556, 417083,
     1, false},  // 43
    {"MODE2048x1556f24.00psf", "HDMode 2048x1556 24.00Fps Progressive S.Frame", 2048, 1556, 416666,
     1, false},  // 44
    {"MODE2048x1556f25.00p", "HDMode 2048x1556 25.00Fps Progressive", 2048, 1556, 400000, 1,
     false},  // 45
    {"MODE2048x1556f30.00p", "HDMode 2048x1556 30.00Fps Progressive", 2048, 1556, 333333, 1,
     false},  // 46
};

// A mode of the table: defaults, then the row's fields.
CDeviceMode* MakeMode(const ModeRow& row, uint8_t flag) {
  auto* mode = new CDeviceMode;
  mode->iWidth = row.width;
  mode->iHeight = row.height;
  mode->iFieldCode = row.fieldCode;
  mode->iFrameTime = row.frameTime;
  mode->iFrameTime2 = row.frameTime;
  mode->iFrameTime3 = row.frameTime;
  mode->dwReserved632 = 0;
  mode->cTableFlag = flag;
  std::snprintf(mode->szCode, sizeof(mode->szCode), "%s", row.code);
  std::snprintf(mode->szDisplay, sizeof(mode->szDisplay), "%s", row.display);
  if (row.isFourByThree) {
    mode->iAspectX = 4;
    mode->iAspectY = 3;
  }
  return mode;
}

}  // namespace

int32_t CDeviceModeList::BuildModeTable(uint8_t flag) {
  Clear();
  CDataLockGuard inner(m_InnerLock, 0);
  // Appended directly: Add would take the lock held here.
  for (const ModeRow& row : kModeRows) m_aItems.Add(MakeMode(row, flag));
  return 0;
}
