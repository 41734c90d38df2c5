#include "app/CpuTestFamily.h"

#include <array>

#include "app/ControlTable.h"

namespace tachyrun {
namespace {

// The words of some lines do not match what runs (1006 says YUY2 on ARGB
// pictures, 1016 scales SD to SD, 1019 runs on one CPU and scales down);
// users compare figures across versions by these lines, so they stay.
constexpr std::array kCpuTests{
    CpuTestDef{1006, "Test", 720, 576, PIX_ARGB32, 1920, 1080, PIX_ARGB32, 5, CpuCall::Resize, 1,
               false, CpuEngine::One, 100, 1001,
               "Img_Resize YUY2 720x576 1920x1080 Time: %03.3f ms  Res=%d",
               "Img_Resize linear, ARGB 720x576 to 1920x1080, one CPU, ms per frame"},
    CpuTestDef{1007, "Test", 1920, 1080, PIX_YUY2, 1920, 1080, PIX_ARGB32, 4,
               CpuCall::ConvertReversed, 0, true, CpuEngine::Many, 1000, 1002,
               "Img_Convert2 IPPMEM 4P 1920x1080 1920x1080 YUY2 RGB32 Time: %03.3f ms  Res=%d",
               "Img_Convert2 ARGB to YUY2 1920x1080, four CPUs, ms per frame"},
    CpuTestDef{1008, "Test", 1920, 1080, PIX_YUY2, 1920, 1080, PIX_ARGB32, 4, CpuCall::Convert, 0,
               false, CpuEngine::One, 1000, 1003,
               "Img_Convert2 IPPMEM 1P 1920x1080 1920x1080 YUY2 RGB32 Time: %03.3f ms  Res=%d",
               "Img_Convert2 YUY2 to ARGB 1920x1080, one CPU, ms per frame"},
    CpuTestDef{1009, "Test", 1920, 1080, PIX_YUY2, 1920, 1080, PIX_ARGB32, 4, CpuCall::Convert, 0,
               true, CpuEngine::One, 1000, 1004,
               "Img_Convert2 IPPMEM 1P 1920x1080 1920x1080 YUY2 RGB32 Time: %03.3f ms  Res=%d",
               "Img_Convert2 YUY2 to ARGB 1920x1080 with a work buffer, one CPU, ms per frame"},
    CpuTestDef{1015, "SD-HD 1Cpu", 720, 576, PIX_ARGB32, 1920, 1080, PIX_ARGB32, 5,
               CpuCall::ResizeArgb, 0, false, CpuEngine::One, 100, 1010, kResizeArgbLineFormat,
               "Img_ResizeARGB 720x576 to 1920x1080, one CPU, ms per frame"},
    CpuTestDef{1016, "SD-HD NCpu", 720, 576, PIX_ARGB32, 720, 576, PIX_ARGB32, 5,
               CpuCall::ResizeArgb, 0, false, CpuEngine::Many, 100, 1011,
               "Img_ResizeARGB Lin Multi IPPMEM RGB32 720x576 1920x1080 Time: %03.3f ms  Res=%d",
               "Img_ResizeARGB 720x576 to 720x576, four CPUs, ms per frame"},
    CpuTestDef{1019, "HD-SD NCpu", 1920, 1080, PIX_ARGB32, 720, 576, PIX_ARGB32, 5, CpuCall::Resize,
               64, false, CpuEngine::One, 100, 1014,
               "Img_Resize IPPMEM RGB32 720x576 1920x1080 LIN1 Time: %03.3f ms  Res=%d",
               "Img_Resize area, ARGB 1920x1080 to 720x576, one CPU, ms per frame"},
    CpuTestDef{1033, "CPU 1920x1080", 1920, 1080, PIX_ARGB32, 1920, 1080, PIX_ARGB32, 5,
               CpuCall::MemCopy, 0, false, CpuEngine::One, 2000, 1001, kMemCopyLineFormat,
               "memcpy of one 1920x1080 ARGB frame: frames per second, ms per frame, MB/s"},
};

}  // namespace

std::span<const CpuTestDef> CpuTests() {
  return kCpuTests;
}

const CpuTestDef* FindCpuTest(int iControl) {
  return FindByControl(std::span<const CpuTestDef>(kCpuTests), iControl);
}

}  // namespace tachyrun
