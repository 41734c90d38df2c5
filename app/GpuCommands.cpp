#include "app/GpuCommands.h"

#include <array>

#include "app/ControlTable.h"

namespace tachyrun {
namespace {

// Code 2 belongs to no button; 3 to 5 drive the engine's preview window.
// What each code does is the engine's (engine/README.md); only 1021 and
// 1022 show its text.
constexpr std::array kGpuCommands{
    GpuCommandDef{1021, "GPU 720x576", 1, false, 1000,
                  "engine test 1 at 720x576: upload, conversion, scaling, download per frame"},
    GpuCommandDef{1022, "GPU 1920x1080", 1, true, 1001,
                  "engine test 1 at 1920x1080: upload, conversion, scaling, download per frame"},
    GpuCommandDef{1018, "GpuW Show", 3, false, 0, "engine test 3: show the preview"},
    GpuCommandDef{1023, "GpuW Hide", 4, false, 0, "engine test 4: hide the preview"},
    GpuCommandDef{1024, "Tex>GpuW", 5, false, 0, "engine test 5: send a picture to the preview"},
    GpuCommandDef{1025, "GPU Test6", 6, false, 0,
                  "engine test 6: the upload stage of test 1 alone"},
    GpuCommandDef{1026, "GPU Test7", 7, false, 0,
                  "engine test 7: the download stage of test 1 alone"},
    GpuCommandDef{1027, "GPU Test8", 8, false, 0,
                  "engine test 8: the YUY2-to-ARGB stage of test 1 alone"},
    GpuCommandDef{1028, "GPU Test9", 9, false, 0,
                  "engine test 9: the scaling stage of test 1 alone"},
    GpuCommandDef{1029, "GPU Test10", 10, false, 0,
                  "engine test 10: ARGB to YUY2 as a picture call"},
    GpuCommandDef{1030, "GPU Test11", 11, false, 0,
                  "engine test 11: a perspective render as a picture call"},
    GpuCommandDef{1031, "GPU Test12", 12, false, 0, "engine test 12: engine description"},
    GpuCommandDef{1032, "GPU Test13", 13, false, 0, "engine test 13: preview state"},
};

}  // namespace

std::span<const GpuCommandDef> GpuCommands() {
  return kGpuCommands;
}

const GpuCommandDef* FindGpuCommand(int iControl) {
  return FindByControl(std::span<const GpuCommandDef>(kGpuCommands), iControl);
}

}  // namespace tachyrun
